#include "platform/windows/WindowsOwnProgram.h"

#include "win/SystemText.h"

#include <cstddef>
#include <cstring>

namespace tarv {

std::wstring WindowsOwnProgram::path() {
    return filledText([](wchar_t* buffer, DWORD size) { return GetModuleFileNameW(nullptr, buffer, size); });
}

FileVersion WindowsOwnProgram::version() {
    // Read from the loaded resource itself: the version functions would need one more DLL, and one that
    // Windows takes from the program folder when somebody puts it there.
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    const HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
    const void* const data = loaded != nullptr ? LockResource(loaded) : nullptr;
    // Three words and the key "VS_VERSION_INFO" with its NUL, filled up to the next 32-bit boundary.
    constexpr std::size_t fixedInfoOffset = 40;
    VS_FIXEDFILEINFO info{};
    if (data == nullptr || SizeofResource(nullptr, found) < fixedInfoOffset + sizeof info) {
        return {};
    }
    std::memcpy(&info, static_cast<const std::byte*>(data) + fixedInfoOffset, sizeof info);
    if (info.dwSignature != VS_FFI_SIGNATURE) {
        return {};
    }
    return {HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS), HIWORD(info.dwFileVersionLS)};
}

} // namespace tarv
