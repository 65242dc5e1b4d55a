#include "tests/program/Installation.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tarv::program {

namespace fs = std::filesystem;

namespace {

const std::wstring standInClass = L"{5D1E2C7A-3B54-4D2B-9F0B-6B7C4F1D9A31}";
const std::wstring managementClass = L"{172BDDF8-CEEA-11D1-8B05-00600806D9B6}"; // Windows' own
constexpr wchar_t skinKey[] = L"XtremeSkinFramework.SkinFramework";

void enter(const std::wstring& key, const std::wstring& value) {
    RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(), 0);
}

} // namespace

std::wstring Installation::testFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path().wstring();
}

Installation::Installation()
    : folder_(fs::temp_directory_path().wstring() + L"tarv" + std::to_wstring(GetCurrentProcessId())) {
    std::error_code ignored;
    fs::remove_all(folder_, ignored); // of a test that was ended
    for (const wchar_t* folder : {L"Programm", L"Daten\\TARVENIK"})
        fs::create_directories(path(folder));
    fs::copy_file(fs::path(testFolder()).parent_path() / programFile, path(programFile));
    // The suite's settings lie in the Windows folder of the test prefix: each test begins without any.
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    fs::remove(fs::path(windows) / L"Pexoran.INI");
    environment[L"ProgramData"] = path(L"Daten");
}

Installation::~Installation() {
    forgetStandIn();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::unique_ptr<ProgramDriver> Installation::start() const {
    return std::make_unique<ProgramDriver>(path(programFile), environment);
}

void Installation::write(const std::wstring& name, const std::string& bytes) const {
    std::ofstream(fs::path(path(name)), std::ios::binary) << bytes;
}

std::string Installation::read(const std::wstring& name) const {
    std::ifstream in(fs::path(path(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Installation::registerStandIn(bool pumping) {
    enter(L"CLSID\\" + standInClass + L"\\InprocServer32", testFolder() + L"\\skin\\tarv_skin_stand_in.dll");
    enter(std::wstring(skinKey) + L"\\CLSID", standInClass);
    enter(L"winmgmts\\CLSID", standInClass);
    environment[L"TARV_SKIN_LOG"] = path(L"skin.log");
    environment[L"TARV_SKIN_PUMPS"] = pumping ? L"1" : L"";
}

void Installation::forgetStandIn() const {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, skinKey);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"CLSID\\" + standInClass).c_str());
    enter(L"winmgmts\\CLSID", managementClass);
}

} // namespace tarv::program
