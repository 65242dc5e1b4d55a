#include "platform/windows/WindowsEnvironment.h"

#include "win/Handle.h"
#include "win/SystemText.h"

namespace tarv {

std::vector<std::wstring> WindowsEnvironment::entries() {
    std::vector<std::wstring> entries;
    const EnvironmentBlock block(GetEnvironmentStringsW());
    if (block) {
        for (const wchar_t* entry = block.get(); *entry != L'\0'; entry += entries.back().size() + 1) {
            entries.emplace_back(entry);
        }
    }
    return entries;
}

std::wstring WindowsEnvironment::value(std::wstring_view name) {
    const std::wstring terminated(name);
    return filledText([&](wchar_t* buffer, DWORD size) {
        return GetEnvironmentVariableW(terminated.c_str(), buffer, size);
    });
}

} // namespace tarv
