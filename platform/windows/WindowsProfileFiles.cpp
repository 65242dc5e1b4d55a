#include "platform/windows/WindowsProfileFiles.h"

#include "win/NoSystemBoxes.h"
#include "win/SystemText.h"

namespace tarv {

// An empty group or entry has to arrive as an empty text: a null pointer would ask for the list of names,
// and, when writing, remove the entry or the whole group.

std::wstring WindowsProfileFiles::getString(std::wstring_view group, std::wstring_view entry,
                                            std::wstring_view fallback, std::uint32_t size,
                                            std::wstring_view file) {
    const NoSystemBoxes silence;
    std::string buffer(size, '\0');
    const DWORD length =
        GetPrivateProfileStringA(toAnsi(group).c_str(), toAnsi(entry).c_str(), toAnsi(fallback).c_str(),
                                 buffer.data(), size, toAnsiFileName(file).c_str());
    return fromAnsi(std::string_view(buffer).substr(0, length));
}

bool WindowsProfileFiles::writeString(std::wstring_view group, std::wstring_view entry,
                                      std::wstring_view value, std::wstring_view file) {
    const NoSystemBoxes silence;
    return WritePrivateProfileStringA(toAnsi(group).c_str(), toAnsi(entry).c_str(), toAnsi(value).c_str(),
                                      toAnsiFileName(file).c_str()) != FALSE;
}

std::wstring WindowsProfileFiles::getSectionNames(std::uint32_t size, std::wstring_view file) {
    const NoSystemBoxes silence;
    std::string buffer(size, '\0');
    const DWORD length = GetPrivateProfileSectionNamesA(buffer.data(), size, toAnsiFileName(file).c_str());
    return fromAnsi(std::string_view(buffer).substr(0, length));
}

std::wstring WindowsProfileFiles::getSection(std::wstring_view group, std::uint32_t size,
                                             std::wstring_view file) {
    const NoSystemBoxes silence;
    std::string buffer(size, '\0');
    const DWORD length =
        GetPrivateProfileSectionA(toAnsi(group).c_str(), buffer.data(), size, toAnsiFileName(file).c_str());
    return fromAnsi(std::string_view(buffer).substr(0, length));
}

} // namespace tarv
