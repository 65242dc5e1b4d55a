#pragma once

#include <objbase.h>

namespace tarv {

/// The thread's single-threaded apartment, as long as this lives.
struct ComApartment {
    ComApartment() : entered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComApartment() {
        if (entered)
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

    const bool entered;
};

} // namespace tarv
