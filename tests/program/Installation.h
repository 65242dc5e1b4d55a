#pragma once

#include "tools/driver/ProgramDriver.h"

#include <map>
#include <memory>
#include <string>

namespace tarv::program {

/// An installation of its own for one test, in the temporary folder: program folder and configuration files.
/// Everything goes with it.
class Installation {
public:
    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    std::wstring programFolder() const { return folder_ + L"\\Programm"; }
    std::wstring dataFolder() const { return folder_ + L"\\Daten\\TARVENIK"; }

    /// The folder of the test programs of this build.
    static std::wstring testFolder();
    static std::wstring builtProgram();

    void version(const std::string& content) { write(programFolder() + L"\\Version.INI", content); }
    void machine(const std::string& content) { write(dataFolder() + L"\\Q_Machine.INI", content); }
    void qv(const std::string& content) { write(dataFolder() + L"\\QV.ini", content); }

    /// Variables for the program; ProgramData leads to dataFolder().
    std::map<std::wstring, std::wstring> environment;

    std::unique_ptr<ProgramDriver> start();

    static void write(const std::wstring& file, const std::string& bytes);
    static std::string read(const std::wstring& file);
    /// Names in a folder, in alphabetical order and lower case, each followed by a blank.
    static std::wstring list(const std::wstring& folder);

private:
    std::wstring folder_;
};

} // namespace tarv::program
