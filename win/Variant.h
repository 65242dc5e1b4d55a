#pragma once

#include <string>
#include <string_view>
#include <utility>

#include <windows.h>

#include <oleauto.h>

namespace tarv {

/// The text of a BSTR, NULs inside included; a null pointer is the empty text.
inline std::wstring_view view(BSTR text) {
    return {text, SysStringLen(text)};
}

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
    std::wstring text() const { return std::wstring(view(text_)); }
    BSTR detach() { return std::exchange(text_, nullptr); }

    /// Where a call stores the text it hands over; only for an empty one.
    BSTR* receive() { return &text_; }

private:
    BSTR text_ = nullptr;
};

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

} // namespace tarv
