#include "platform/SystemFacts.h"
#include "platform/windows/Makers.h"
#include "win/Handle.h"
#include "win/LateEntry.h"
#include "win/SystemText.h"

#include <cstddef>
#include <cstring>
#include <iterator>

// Before windows.h would be the usual order; WIN32_LEAN_AND_MEAN keeps the old socket header out of it.
#include <winsock2.h>
#include <ws2tcpip.h>

namespace tarv {

namespace {

namespace late {
constexpr wchar_t sockets[] = L"ws2_32.dll";
const LateEntry<decltype(&::WSAStartup)> WSAStartup{sockets, "WSAStartup", WSASYSNOTREADY};
const LateEntry<decltype(&::WSACleanup)> WSACleanup{sockets, "WSACleanup", SOCKET_ERROR};
const LateEntry<decltype(&::WSAGetLastError)> WSAGetLastError{sockets, "WSAGetLastError", WSASYSNOTREADY};
const LateEntry<decltype(&::gethostname)> gethostname{sockets, "gethostname", SOCKET_ERROR};
const LateEntry<decltype(&::getaddrinfo)> getaddrinfo{sockets, "getaddrinfo", WSASYSNOTREADY};
const LateEntry<decltype(&::freeaddrinfo)> freeaddrinfo{sockets, "freeaddrinfo"};
} // namespace late

constexpr DWORD nameBufferSize = 255;

/// The socket library for the length of one look-up.
class SocketLibrary {
public:
    SocketLibrary() { code_ = late::WSAStartup(MAKEWORD(2, 2), &data_); }
    SocketLibrary(const SocketLibrary&) = delete;
    SocketLibrary& operator=(const SocketLibrary&) = delete;
    ~SocketLibrary() {
        if (code_ == 0)
            late::WSACleanup();
    }
    int code() const { return code_; }

private:
    WSADATA data_{};
    int code_;
};

using AddressList = Handle<addrinfo*, late::freeaddrinfo>;

std::wstring dotted(const sockaddr_in& address) {
    const auto* const part = reinterpret_cast<const unsigned char*>(&address.sin_addr);
    return std::to_wstring(part[0]) + L"." + std::to_wstring(part[1]) + L"." + std::to_wstring(part[2]) +
           L"." + std::to_wstring(part[3]);
}

std::wstring localeText(LCTYPE type) {
    wchar_t buffer[16]; // the system keeps at most three characters and the NUL
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer, static_cast<int>(std::size(buffer)));
    return length > 0 ? std::wstring(buffer) : std::wstring();
}

class WindowsSystemFacts final : public SystemFacts {
public:
    std::vector<std::wstring> environment() override {
        std::vector<std::wstring> all;
        const EnvironmentBlock block(GetEnvironmentStringsW());
        if (block)
            for (const wchar_t* entry = block.get(); *entry != L'\0'; entry += all.back().size() + 1)
                all.emplace_back(entry);
        return all;
    }

    std::wstring variable(std::wstring_view name) override {
        const std::wstring terminated(name);
        return filledText([&](wchar_t* buffer, DWORD size) {
            return GetEnvironmentVariableW(terminated.c_str(), buffer, size);
        });
    }

    std::wstring programPath() override {
        return filledText(
            [](wchar_t* buffer, DWORD size) { return GetModuleFileNameW(nullptr, buffer, size); });
    }

    FileVersion programVersion() override {
        // Read from the loaded resource itself: the version functions would need one more DLL, and one that
        // Windows takes from the program folder when somebody puts it there.
        const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
        const HGLOBAL loaded = found ? LoadResource(nullptr, found) : nullptr;
        const void* const data = loaded ? LockResource(loaded) : nullptr;
        // Three words and the key "VS_VERSION_INFO" with its NUL, filled up to the next 32-bit boundary.
        constexpr std::size_t fixedInfoOffset = 40;
        VS_FIXEDFILEINFO info{};
        if (!data || SizeofResource(nullptr, found) < fixedInfoOffset + sizeof info)
            return {};
        std::memcpy(&info, static_cast<const std::byte*>(data) + fixedInfoOffset, sizeof info);
        if (info.dwSignature != VS_FFI_SIGNATURE)
            return {};
        return {HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS), HIWORD(info.dwFileVersionLS)};
    }

    VersionInfo windowsVersion() override {
        OSVERSIONINFOA record{};
        static_assert(sizeof record == 148);
        record.dwOSVersionInfoSize = sizeof record;
        std::memset(record.szCSDVersion, ' ', sizeof record.szCSDVersion);
#ifdef _MSC_VER
#pragma warning(suppress : 4996) // what the report shows is what this call says, compatibility included
#endif
        GetVersionExA(&record);
        return {record.dwMajorVersion, record.dwMinorVersion, record.dwBuildNumber, record.dwPlatformId,
                tarv::fromAnsi({record.szCSDVersion, sizeof record.szCSDVersion})};
    }

    Answer<std::wstring> computerName() override {
        std::string buffer(nameBufferSize, ' ');
        DWORD size = nameBufferSize;
        if (!GetComputerNameA(buffer.data(), &size))
            return Failure{SystemCode{GetLastError()}};
        return tarv::fromAnsi(buffer.substr(0, size));
    }

    Answer<std::wstring> userName() override {
        std::string buffer(nameBufferSize, ' ');
        DWORD size = nameBufferSize;
        if (!GetUserNameA(buffer.data(), &size))
            return Failure{SystemCode{GetLastError()}};
        return tarv::fromAnsi(
            buffer.substr(0, size > 0 ? size - 1 : 0)); // this call counts the terminating NUL
    }

    std::wstring windowsDirectory(std::uint32_t size) override {
        std::string buffer(size, ' ');
        const UINT length = GetWindowsDirectoryA(buffer.data(), size);
        return length < size ? tarv::fromAnsi(buffer.substr(0, length)) : std::wstring();
    }

    std::wstring systemDirectory() override {
        return filledText([](wchar_t* buffer, DWORD size) { return GetSystemDirectoryW(buffer, size); });
    }

    Answer<std::wstring> localAddress() override {
        const SocketLibrary library;
        if (library.code() != 0)
            return Failure{static_cast<SystemCode>(library.code())};
        char host[256]; // NI_MAXHOST is longer than any name the system gives
        if (late::gethostname(host, static_cast<int>(sizeof host)) != 0)
            return Failure{static_cast<SystemCode>(late::WSAGetLastError())};
        addrinfo wanted{};
        wanted.ai_family = AF_INET;
        wanted.ai_socktype = SOCK_STREAM;
        addrinfo* found = nullptr;
        // The host's own name is answered by the socket library itself, so a missing network does not delay
        // it.
        if (const int code = late::getaddrinfo(host, nullptr, &wanted, &found); code != 0)
            return Failure{static_cast<SystemCode>(code)};
        const AddressList addresses(found);
        if (!addresses || found->ai_addrlen < sizeof(sockaddr_in))
            return Failure{SystemCode{WSANO_DATA}};
        return dotted(*reinterpret_cast<const sockaddr_in*>(found->ai_addr));
    }

    std::wstring decimalSeparator() override { return localeText(LOCALE_SDECIMAL); }

    std::wstring thousandsSeparator() override { return localeText(LOCALE_STHOUSAND); }

    std::string toAnsi(std::wstring_view text) override { return tarv::toAnsi(text); }

    std::wstring fromAnsi(std::string_view bytes) override { return tarv::fromAnsi(bytes); }
};

} // namespace

std::unique_ptr<SystemFacts> makeSystemFacts() {
    return std::make_unique<WindowsSystemFacts>();
}

} // namespace tarv
