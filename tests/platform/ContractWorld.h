#pragma once

#include "scripted/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {

/// The scripted world of the contract tests. That of the running Windows has the same members
/// (tests/windows/ContractWorld.h); each test program takes its own, so that a fake cannot drift from what it
/// stands for.
struct ContractWorld {
    ContractWorld() { putFolder(path(L"")); }

    std::wstring path(std::wstring_view name) const { return L"C:\\Vertrag\\" + std::wstring(name); }
    void putFolder(const std::wstring& folder) { fake.disk.addFolder(folder); }
    void setAttributes(const std::wstring& file, std::uint32_t attributes) {
        fake.disk.find(file)->attributes = attributes;
    }
    std::optional<std::string> bytes(const std::wstring& file) {
        const FakeEntry* entry = fake.disk.find(file);
        return entry && !entry->isFolder() ? std::optional(entry->bytes) : std::nullopt;
    }

    FakePlatform fake;
    Platform& border = fake.border;
    const bool ownsWindowsFolder = true;
};

} // namespace tarv
