#include "platform/windows/WindowsMachineFacts.h"

#include "win/Handle.h"
#include "win/LateEntry.h"
#include "win/SystemText.h"

#include <cstring>

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
        if (code_ == 0) {
            late::WSACleanup();
        }
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

} // namespace

VersionInfo WindowsMachineFacts::version() {
    OSVERSIONINFOA record{};
    static_assert(sizeof record == 148);
    record.dwOSVersionInfoSize = sizeof record;
    std::memset(record.szCSDVersion, ' ', sizeof record.szCSDVersion);
#ifdef _MSC_VER
#pragma warning(suppress : 4996) // what the report shows is what this call says, compatibility included
#endif
    GetVersionExA(&record);
    return {record.dwMajorVersion, record.dwMinorVersion, record.dwBuildNumber, record.dwPlatformId,
            fromAnsi({record.szCSDVersion, sizeof record.szCSDVersion})};
}

Answer<std::wstring> WindowsMachineFacts::computerName() {
    std::string buffer(nameBufferSize, ' ');
    DWORD size = nameBufferSize;
    if (!GetComputerNameA(buffer.data(), &size)) {
        return Failure{SystemCode{GetLastError()}};
    }
    return fromAnsi(buffer.substr(0, size));
}

Answer<std::wstring> WindowsMachineFacts::userName() {
    std::string buffer(nameBufferSize, ' ');
    DWORD size = nameBufferSize;
    if (!GetUserNameA(buffer.data(), &size)) {
        return Failure{SystemCode{GetLastError()}};
    }
    return fromAnsi(buffer.substr(0, size > 0 ? size - 1 : 0)); // this call counts the terminating NUL
}

std::wstring WindowsMachineFacts::windowsDirectory(std::uint32_t size) {
    std::string buffer(size, ' ');
    const UINT length = GetWindowsDirectoryA(buffer.data(), size);
    return length < size ? fromAnsi(buffer.substr(0, length)) : std::wstring();
}

std::wstring WindowsMachineFacts::systemDirectory() {
    return filledText([](wchar_t* buffer, DWORD size) { return GetSystemDirectoryW(buffer, size); });
}

Answer<std::wstring> WindowsMachineFacts::localAddress() {
    const SocketLibrary library;
    if (library.code() != 0) {
        return Failure{static_cast<SystemCode>(library.code())};
    }
    char host[256]; // NI_MAXHOST is longer than any name the system gives
    if (late::gethostname(host, static_cast<int>(sizeof host)) != 0) {
        return Failure{static_cast<SystemCode>(late::WSAGetLastError())};
    }
    addrinfo wanted{};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    // The host's own name is answered by the socket library itself, so a missing network does not delay it.
    if (const int code = late::getaddrinfo(host, nullptr, &wanted, &found); code != 0) {
        return Failure{static_cast<SystemCode>(code)};
    }
    const AddressList addresses(found);
    if (!addresses || found->ai_addrlen < sizeof(sockaddr_in)) {
        return Failure{SystemCode{WSANO_DATA}};
    }
    return dotted(*reinterpret_cast<const sockaddr_in*>(found->ai_addr));
}

} // namespace tarv
