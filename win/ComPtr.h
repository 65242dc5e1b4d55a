#pragma once

#include <utility>

#include <unknwn.h>

namespace tarv {

/// Counted reference to a COM object.
template <class T>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(const ComPtr& other) : ComPtr(share(other.object_)) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_)
            object_->Release();
    }

    /// Takes over a reference that the caller already counted.
    static ComPtr take(T* object) {
        ComPtr reference;
        reference.object_ = object;
        return reference;
    }
    /// Counts a reference of its own.
    static ComPtr share(T* object) {
        if (object)
            object->AddRef();
        return take(object);
    }

    explicit operator bool() const { return object_ != nullptr; }
    T* get() const { return object_; }
    T* operator->() const { return object_; }

    /// Gives the reference away; the receiver releases it.
    T* detach() { return std::exchange(object_, nullptr); }

    /// Where a call stores the reference it hands over; only for an empty one.
    T** receive() { return &object_; }
    void** receiveAny() { return reinterpret_cast<void**>(&object_); }

private:
    T* object_ = nullptr;
};

} // namespace tarv
