#pragma once

#include "platform/Automation.h"
#include "platform/windows/ComPtr.h"

#include <string_view>

#include <windows.h>

#include <oleauto.h>

namespace tarv {

/// Owner of an automation text.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    BSTR get() const { return text_; }
    BSTR detach() { return std::exchange(text_, nullptr); }

private:
    BSTR text_ = nullptr;
};

/// The text of a BSTR, NULs inside included; a null pointer is the empty text.
inline std::wstring_view view(BSTR text) {
    return {text, SysStringLen(text)};
}

/// Owner of one VARIANT.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&value_); }

    VARIANT& raw() { return value_; }
    const VARIANT& raw() const { return value_; }
    VARTYPE type() const { return value_.vt; }

private:
    VARIANT value_;
};

/// Stores a copy of `value` in the empty `out`. False, leaving it empty, for an object that is not ours
/// or when memory runs out. By-reference objects become plain ones: see Arguments.
bool store(VARIANT& out, const Value& value);

/// The nearest of our kinds: wider and fractional numbers become a double, small integers an int32. False
/// for an array and whatever else a Value cannot hold.
bool load(Value& out, const VARIANT& value);

} // namespace tarv
