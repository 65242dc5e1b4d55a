#include "tests/program/Installation.h"

#include <algorithm>
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace tarv::program {

namespace fs = std::filesystem;

namespace {

void removeAll(const std::wstring& folder) {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(folder, ignored)) {
        SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    fs::remove_all(folder, ignored);
}

} // namespace

std::wstring Installation::testFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return fs::path(path).parent_path().wstring();
}

std::wstring Installation::builtProgram() {
    return (fs::path(testFolder()).parent_path() / L"Programm" / L"TarvService.exe").wstring();
}

Installation::Installation()
    : folder_((fs::temp_directory_path() / (L"tarv" + std::to_wstring(GetCurrentProcessId()))).wstring()) {
    removeAll(folder_);
    fs::create_directories(programFolder());
    fs::create_directories(dataFolder());
    fs::copy_file(builtProgram(), programFolder() + L"\\TarvService.exe");
    // The suite's settings lie in the Windows folder of the test prefix: each test begins without any.
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    fs::remove(fs::path(windows) / L"Pexoran.INI");
    environment[L"ProgramData"] = folder_ + L"\\Daten";
}

Installation::~Installation() {
    removeAll(folder_);
}

std::unique_ptr<ProgramDriver> Installation::start() {
    return std::make_unique<ProgramDriver>(programFolder() + L"\\TarvService.exe", environment);
}

void Installation::write(const std::wstring& file, const std::string& bytes) {
    std::ofstream(fs::path(file), std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string Installation::read(const std::wstring& file) {
    std::ifstream in(fs::path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::wstring Installation::list(const std::wstring& folder) {
    std::vector<std::wstring> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().wstring());
        std::transform(names.back().begin(), names.back().end(), names.back().begin(), ::towlower);
    }
    std::sort(names.begin(), names.end());
    std::wstring all;
    for (const std::wstring& name : names) {
        all += name + L" ";
    }
    return all;
}

} // namespace tarv::program
