#pragma once

#include "platform/MachineFacts.h"

namespace tarv {

class WindowsMachineFacts final : public MachineFacts {
public:
    VersionInfo version() override;
    Answer<std::wstring> computerName() override;
    Answer<std::wstring> userName() override;
    std::wstring windowsDirectory(std::uint32_t size) override;
    std::wstring systemDirectory() override;
    Answer<std::wstring> localAddress() override;
};

} // namespace tarv
