#pragma once

#include "platform/ProfileFiles.h"

namespace tarv {

class WindowsProfileFiles final : public ProfileFiles {
public:
    std::wstring getString(std::wstring_view group, std::wstring_view entry, std::wstring_view fallback,
                           std::uint32_t size, std::wstring_view file) override;
    bool writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                     std::wstring_view file) override;
    std::wstring getSectionNames(std::uint32_t size, std::wstring_view file) override;
    std::wstring getSection(std::wstring_view group, std::uint32_t size, std::wstring_view file) override;
};

} // namespace tarv
