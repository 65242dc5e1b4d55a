#include "components/rk_Runtime/LastReport.h"

#include <windows.h>

namespace tarv::component {

bool rememberReport(const std::wstring& text) {
    static SRWLOCK lock = SRWLOCK_INIT; // the objects of a process may live in several apartments
    static std::wstring last;
    std::wstring copy(text);
    AcquireSRWLockExclusive(&lock);
    const bool repeated = last == copy;
    last.swap(copy);
    ReleaseSRWLockExclusive(&lock);
    return repeated;
}

} // namespace tarv::component
