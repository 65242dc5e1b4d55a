#pragma once

#include <windows.h>

#include <string>

namespace tarv::program {

/// Memory inside another process: controls fill buffers in their own address space only.
class RemoteMemory {
public:
    RemoteMemory(HANDLE process, std::size_t size)
        : process_(process),
          address_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)) {}
    ~RemoteMemory() { VirtualFreeEx(process_, address_, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

protected:
    HANDLE process_;
    void* address_;
};

class RemoteText : public RemoteMemory {
public:
    RemoteText(HANDLE process, std::size_t characters)
        : RemoteMemory(process, (characters + 256) * sizeof(wchar_t)), characters_(characters) {}

    wchar_t* address() const { return static_cast<wchar_t*>(address_); }

    std::wstring read() const {
        std::wstring text;
        // Mostly a line: read piece by piece until its end.
        constexpr std::size_t piece = 256;
        for (std::size_t at = 0; at < characters_ && text.find(L'\0') == text.npos; at += piece) {
            text.resize(at + piece);
            ReadProcessMemory(process_, address() + at, text.data() + at, piece * sizeof(wchar_t), nullptr);
        }
        return text.substr(0, text.find(L'\0'));
    }

private:
    std::size_t characters_;
};

template <class T>
class RemoteCopy : public RemoteMemory {
public:
    RemoteCopy(HANDLE process, const T& value) : RemoteMemory(process, sizeof value) { write(value); }
    void write(const T& value) { WriteProcessMemory(process_, address_, &value, sizeof value, nullptr); }
    LPARAM address() const { return reinterpret_cast<LPARAM>(address_); }
};

} // namespace tarv::program
