#pragma once

#include "platform/FileStore.h"
#include "platform/windows/WindowsPlatform.h"
#include "tools/driver/Surroundings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include <objbase.h>

namespace tarv {

/// What a test needs besides the border itself: a folder and what may be changed there. The contract tests
/// have the same of the fakes (tests/platform/ContractWorld.h).
class ContractWorld {
public:
    ContractWorld() {
        std::filesystem::create_directories(folder_);
        (void)OleInitialize(nullptr);
    }
    ~ContractWorld() {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_))
            setAttributes(entry.path(), FILE_ATTRIBUTE_NORMAL);
        std::error_code busy; // an ended program keeps its file for a moment
        for (int attempt = 0; attempt < 100; ++attempt, Sleep(20))
            if (std::filesystem::remove_all(folder_, busy); !busy)
                break;
        OleUninitialize();
    }
    ContractWorld(const ContractWorld&) = delete;
    ContractWorld& operator=(const ContractWorld&) = delete;

    WindowsPlatform border;
    /// In a folder of its own, which goes with the world.
    std::wstring path(std::wstring_view name) const { return folder_ + std::wstring(name); }
    void putFolder(const std::wstring& path) { std::filesystem::create_directory(path); }
    void setAttributes(const std::wstring& path, std::uint32_t attributes) {
        SetFileAttributesW(path.c_str(), attributes);
    }
    /// None when there is no such file.
    std::optional<std::string> bytes(const std::wstring& path) const {
        std::ifstream file(std::filesystem::path(path), std::ios::binary);
        return file ? std::optional(std::string(std::istreambuf_iterator(file), {})) : std::nullopt;
    }
    /// Whether files of the tests may come into the Windows folder.
    const bool ownsWindowsFolder = underWine();

private:
    static inline int worlds = 0;
    const std::wstring folder_ =
        std::filesystem::temp_directory_path() /
        (L"tarv" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++worlds) + L"\\");
};

struct OnWindows : testing::Test, ContractWorld {};

} // namespace tarv
