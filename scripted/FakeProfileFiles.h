#pragma once

#include "platform/ProfileFiles.h"
#include "scripted/FakeDisk.h"

namespace tarv {

/// The private-profile functions over the scripted disk.
class FakeProfileFiles : public ProfileFiles, Planned {
public:
    FakeProfileFiles(FaultPlan& faults, FakeDisk& disk) : Planned(faults), disk_(disk) {}

    std::wstring getString(std::wstring_view group, std::wstring_view entry, std::wstring_view fallback,
                           std::uint32_t size, std::wstring_view file) override;
    bool writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                     std::wstring_view file) override;
    std::wstring getSectionNames(std::uint32_t size, std::wstring_view file) override;
    std::wstring getSection(std::wstring_view group, std::uint32_t size, std::wstring_view file) override;

    /// Makes an INI file of 8-bit text; a bare name goes to the Windows folder.
    void fill(std::wstring_view file, std::wstring_view text);
    /// The text of an INI file as it is on the disk; empty when it is missing.
    std::wstring text(std::wstring_view file);

private:
    FakeDisk& disk_;
};

} // namespace tarv
