#pragma once

#include "tests/windows/ContractWorld.h"
#include "tools/driver/ProgramDriver.h"

#include <map>
#include <memory>
#include <string>

namespace tarv::program {

/// Files of an installation, below its folder.
inline constexpr wchar_t programFile[] = L"Programm\\TarvService.exe";
inline constexpr wchar_t reportFile[] = L"Programm\\TarvReport.exe";
inline constexpr wchar_t versionFile[] = L"Programm\\Version.INI";
inline constexpr wchar_t machineFile[] = L"Daten\\TARVENIK\\Q_Machine.INI";
inline constexpr wchar_t qvFile[] = L"Daten\\TARVENIK\\QV.ini";

/// An installation of its own in the temporary folder: the programs and what a test writes. It goes with it.
class Installation : public ContractWorld {
public:
    Installation();
    ~Installation();

    void write(const std::wstring& name, const std::string& bytes) const {
        border.files->overwrite(path(name), bytes);
    }
    std::string read(const std::wstring& name) const { return bytes(path(name)).value_or(""); }
    std::unique_ptr<ProgramDriver> start() const;

    /// Whether programs would find the stand-in component here, and no user loses his own skin control by it.
    static bool canRegisterStandIn();
    /// The skin control and, under Wine, the management service are the stand-in component, which notes its
    /// calls in "skin.log" and, when `pumping`, handles messages for a while in each.
    void registerStandIn(bool pumping);
    void forgetStandIn() const;

    /// Variables for the program; ProgramData leads to "Daten".
    std::map<std::wstring, std::wstring> environment;
};

} // namespace tarv::program
