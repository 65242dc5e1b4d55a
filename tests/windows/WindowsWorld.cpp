#include "platform/SystemFacts.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/support/ContractWorld.h"
#include "tools/driver/Surroundings.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <objbase.h>
#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;

class WindowsWorld : public ContractWorld {
public:
    WindowsWorld() {
        static int worlds = 0;
        folder_ = fs::temp_directory_path() /
                  (L"tarv" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++worlds));
        fs::create_directories(folder_);
        (void)OleInitialize(nullptr);
    }
    ~WindowsWorld() override {
        for (const auto& entry : fs::recursive_directory_iterator(folder_))
            SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
        std::error_code busy; // an ended program keeps its file for a moment
        for (int attempt = 0; attempt < 100; ++attempt, Sleep(20))
            if (fs::remove_all(folder_, busy); !busy)
                break;
        OleUninitialize();
    }

    Platform& border() override { return platform_; }
    std::wstring folder() override { return folder_.wstring() + L"\\"; }
    void putFile(const std::wstring& path, std::string_view bytes) override {
        std::ofstream(fs::path(path), std::ios::binary) << bytes;
    }
    void putFolder(const std::wstring& path) override { fs::create_directory(path); }
    void setAttributes(const std::wstring& path, std::uint32_t attributes) override {
        SetFileAttributesW(path.c_str(), attributes);
    }
    std::optional<std::string> bytes(const std::wstring& path) override {
        std::ifstream file(fs::path(path), std::ios::binary);
        return file ? std::optional(std::string(std::istreambuf_iterator(file), {})) : std::nullopt;
    }
    bool ownsWindowsFolder() override { return underWine(); }
    void setVariable(const std::wstring& name, const std::wstring& text) override {
        SetEnvironmentVariableW(name.c_str(), text.c_str());
    }
    ProcessRequest sleeper() override {
        return {platform_.facts->programPath(), L"sleeper", false, CREATE_SUSPENDED, {}};
    }
    void endSleeper(KernelHandle process) override { TerminateProcess(reinterpret_cast<HANDLE>(process), 0); }
    std::wstring missingProgram() override { return folder() + L"none.exe"; }

private:
    WindowsPlatform platform_;
    fs::path folder_;
};

} // namespace

std::unique_ptr<ContractWorld> ContractWorld::make() {
    return std::make_unique<WindowsWorld>();
}

} // namespace tarv
