#include "tests/program/Installation.h"

#include "tools/driver/Surroundings.h"

#include <filesystem>
#include <stdexcept>

namespace tarv::program {

namespace fs = std::filesystem;

namespace {

const std::wstring standInClass = L"{5D1E2C7A-3B54-4D2B-9F0B-6B7C4F1D9A31}";
const std::wstring managementClass = L"{172BDDF8-CEEA-11D1-8B05-00600806D9B6}"; // Windows' own
const std::wstring classes = L"Software\\Classes\\";
constexpr wchar_t skinKey[] = L"XtremeSkinFramework.SkinFramework";

/// Wine knows no classes of the user; on Windows nobody else gets to see ours.
HKEY classesRoot() {
    return underWine() ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}
void enter(const std::wstring& key, const std::wstring& value) {
    RegSetValueW(classesRoot(), (classes + key).c_str(), REG_SZ, value.c_str(), 0);
}
void forget(const std::wstring& key) {
    RegDeleteTreeW(classesRoot(), (classes + key).c_str());
}

/// The folder of the test programs of this build.
fs::path testFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path();
}

} // namespace

Installation::Installation() {
    // The suite's settings lie in the Windows folder. Those of a user are none of ours; what the program
    // writes there, where it may, goes before the next test.
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    const fs::path settings = fs::path(windows) / L"Pexoran.INI";
    static const bool usersOwn = !underWine() && fs::exists(settings);
    if (usersOwn)
        throw std::runtime_error("the suite is installed here");
    std::error_code ignored;
    fs::remove(settings, ignored);
    for (const wchar_t* folder : {L"Programm", L"Daten", L"Daten\\TARVENIK"})
        putFolder(path(folder));
    for (const wchar_t* program : {programFile, reportFile})
        fs::copy_file(testFolder().parent_path() / program, path(program));
    environment[L"ProgramData"] = path(L"Daten");
}

Installation::~Installation() {
    forgetStandIn();
}

std::unique_ptr<ProgramDriver> Installation::start() const {
    return std::make_unique<ProgramDriver>(path(programFile), environment);
}

bool Installation::canRegisterStandIn() {
    // Who runs with all his rights is shown no classes of the user.
    return underWine() || (!elevated() && RegQueryValueW(HKEY_CLASSES_ROOT, skinKey, nullptr, nullptr) ==
                                              ERROR_FILE_NOT_FOUND);
}

void Installation::registerStandIn(bool pumping) {
    enter(L"CLSID\\" + standInClass + L"\\InprocServer32", testFolder() / L"skin\\tarv_skin_stand_in.dll");
    enter(std::wstring(skinKey) + L"\\CLSID", standInClass);
    if (underWine())
        enter(L"winmgmts\\CLSID", standInClass);
    environment[L"TARV_SKIN_LOG"] = path(L"skin.log");
    environment[L"TARV_SKIN_PUMPS"] = pumping ? L"1" : L"";
}

void Installation::forgetStandIn() const {
    forget(skinKey);
    forget(L"CLSID\\" + standInClass);
    if (underWine())
        enter(L"winmgmts\\CLSID", managementClass);
}

} // namespace tarv::program
