#include "platform/ProfileFiles.h"
#include "platform/windows/Makers.h"
#include "win/NoSystemBoxes.h"
#include "win/SystemText.h"

namespace tarv {

namespace {

class WindowsProfileFiles final : public ProfileFiles {
public:
    // An empty group or entry has to arrive as an empty text: a null pointer would ask for the list of names,
    // and, when writing, remove the entry or the whole group.

    std::wstring getString(std::wstring_view group, std::wstring_view entry, std::wstring_view fallback,
                           std::uint32_t size, std::wstring_view file) override {
        const NoSystemBoxes silence;
        std::string buffer(size, '\0');
        const DWORD length =
            GetPrivateProfileStringA(toAnsi(group).c_str(), toAnsi(entry).c_str(), toAnsi(fallback).c_str(),
                                     buffer.data(), size, toAnsiFileName(file).c_str());
        return fromAnsi(std::string_view(buffer).substr(0, length));
    }

    bool writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                     std::wstring_view file) override {
        const NoSystemBoxes silence;
        return WritePrivateProfileStringA(toAnsi(group).c_str(), toAnsi(entry).c_str(), toAnsi(value).c_str(),
                                          toAnsiFileName(file).c_str()) != FALSE;
    }

    std::wstring getSectionNames(std::uint32_t size, std::wstring_view file) override {
        const NoSystemBoxes silence;
        std::string buffer(size, '\0');
        const DWORD length =
            GetPrivateProfileSectionNamesA(buffer.data(), size, toAnsiFileName(file).c_str());
        return fromAnsi(std::string_view(buffer).substr(0, length));
    }

    std::wstring getSection(std::wstring_view group, std::uint32_t size, std::wstring_view file) override {
        const NoSystemBoxes silence;
        std::string buffer(size, '\0');
        const DWORD length = GetPrivateProfileSectionA(toAnsi(group).c_str(), buffer.data(), size,
                                                       toAnsiFileName(file).c_str());
        return fromAnsi(std::string_view(buffer).substr(0, length));
    }
};

} // namespace

std::unique_ptr<ProfileFiles> makeProfileFiles() {
    return std::make_unique<WindowsProfileFiles>();
}

} // namespace tarv
