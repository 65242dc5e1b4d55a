#include "runtime/Funktionen32/FileOperation.h"

#include "platform/FileStore.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Runtime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include <objbase.h>
#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Tree = std::map<std::wstring, std::string>;

/// The real shell on real files: each test starts with "in" (files and a folder) and an empty "out".
class RealFileOperation : public testing::Test {
protected:
    RealFileOperation() {
        OleInitialize(nullptr);
        clear();
        for (const auto& [name, bytes] : original)
            put(L"in\\" + name, bytes);
        fs::create_directories(root / L"out");
    }
    ~RealFileOperation() override {
        clear();
        OleUninitialize();
    }

    void clear() {
        std::error_code ignored;
        if (fs::exists(root, ignored))
            for (const auto& entry : fs::recursive_directory_iterator(root, ignored))
                SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
        fs::remove_all(root, ignored);
    }
    void put(const std::wstring& name, std::string_view bytes) {
        fs::create_directories((root / name).parent_path());
        std::ofstream(root / name, std::ios::binary) << bytes;
    }
    std::wstring at(const std::wstring& name) const { return (root / name).wstring(); }

    /// The files of a folder with their contents, deep.
    Tree tree(const std::wstring& folder) const {
        Tree found;
        for (const auto& entry : fs::recursive_directory_iterator(root / folder))
            if (entry.is_regular_file()) {
                std::ifstream file(entry.path(), std::ios::binary);
                found[fs::relative(entry.path(), root / folder).wstring()] =
                    std::string(std::istreambuf_iterator(file), {});
            }
        return found;
    }

    bool run(std::int32_t operation, const std::wstring& source, const std::wstring& target) {
        return FileOperation(rt, operation, source, target, false, true, 0, true, error);
    }

    const Tree original{{L"ж.txt", "zh"},
                        {L"a.txt", "a"},
                        {L"b.txt", "b"},
                        {L"Straße äöü.dat", "drei"},
                        {L"sub\\tief\\c.txt", "c"}};
    const fs::path root = fs::temp_directory_path() / (L"tarvfile" + std::to_wstring(GetCurrentProcessId()));
    WindowsPlatform windows;
    Runtime rt{windows.border()};
    ErrorRecord error;
};

TEST_F(RealFileOperation, NamesOutsideTheCodePageAreNeverPatterns) {
    Tree rest = original;
    rest.erase(L"ж.txt");

    EXPECT_TRUE(run(file_operation::copy, at(L"in\\ж.txt"), at(L"out")));
    EXPECT_EQ(tree(L"out"), (Tree{{L"ж.txt", "zh"}}));
    EXPECT_EQ(tree(L"in"), original);

    EXPECT_TRUE(run(file_operation::rename, at(L"out\\ж.txt"), at(L"out\\щ.txt")));
    EXPECT_EQ(tree(L"out"), (Tree{{L"щ.txt", "zh"}}));

    EXPECT_TRUE(run(file_operation::remove, at(L"in\\ж.txt"), L""));
    EXPECT_EQ(tree(L"in"), rest);

    EXPECT_TRUE(run(file_operation::move, at(L"out\\щ.txt"), at(L"in\\ж.txt")));
    EXPECT_EQ(tree(L"in"), original);
    EXPECT_TRUE(tree(L"out").empty());
}

TEST_F(RealFileOperation, FoldersListsAndPatterns) {
    EXPECT_TRUE(run(file_operation::copy, at(L"in\\*.txt"), at(L"out\\pattern")));
    EXPECT_EQ(tree(L"out\\pattern"), (Tree{{L"ж.txt", "zh"}, {L"a.txt", "a"}, {L"b.txt", "b"}}));

    EXPECT_TRUE(run(file_operation::copy, at(L"in"), at(L"out"))) << error.number;
    EXPECT_EQ(tree(L"out\\in"), original);
    EXPECT_TRUE(run(file_operation::copy, at(L"in"), at(L"out\\new name"))) << error.number;
    EXPECT_EQ(tree(L"out\\new name"), original);

    const std::wstring two = at(L"in\\a.txt") + L'\0' + at(L"in\\sub");
    EXPECT_TRUE(run(file_operation::copy, two, at(L"out\\list"))) << error.number;
    EXPECT_EQ(tree(L"out\\list"), (Tree{{L"a.txt", "a"}, {L"sub\\tief\\c.txt", "c"}}));

    const std::wstring files = at(L"in\\a.txt") + L"\0\0"s + at(L"in\\b.txt");
    EXPECT_TRUE(run(file_operation::copy, files, at(L"out\\1.txt") + L'\0' + at(L"out\\2.txt")))
        << error.number;
    EXPECT_EQ(tree(L"out")[L"2.txt"], "b");

    EXPECT_TRUE(run(file_operation::move, at(L"in\\sub"), at(L"out\\moved")));
    EXPECT_EQ(tree(L"out\\moved"), (Tree{{L"tief\\c.txt", "c"}}));
    EXPECT_FALSE(fs::exists(root / L"in\\sub"));
    EXPECT_TRUE(run(file_operation::remove, at(L"out"), L""));
    EXPECT_FALSE(fs::exists(root / L"out"));
}

TEST_F(RealFileOperation, ManyFilesAndALongPath) {
    std::wstring sources;
    for (int i = 0; i < 150; ++i) {
        put(L"many\\" + std::to_wstring(i) + L" ü.txt", std::to_string(i));
        sources += at(L"many\\" + std::to_wstring(i) + L" ü.txt") + L'\0';
    }
    EXPECT_TRUE(run(file_operation::copy, sources, at(L"out")));
    EXPECT_EQ(tree(L"out"), tree(L"many"));

    const std::wstring longName(250 - at(L"out\\.txt").size(), L'x');
    const std::wstring target = at(L"out\\" + longName + L".txt");
    ASSERT_EQ(target.size(), 250u);
    EXPECT_TRUE(run(file_operation::copy, at(L"in\\a.txt"), target)) << error.number;
    EXPECT_EQ(tree(L"out")[longName + L".txt"], "a");
    EXPECT_TRUE(run(file_operation::remove, target, L""));
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(RealFileOperation, WhateverFailsNoSourceIsLost) {
    const HANDLE locked =
        CreateFileW(at(L"in\\b.txt").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(locked, INVALID_HANDLE_VALUE);
    const std::wstring sources = at(L"in\\a.txt") + L'\0' + at(L"in\\b.txt");
    EXPECT_FALSE(run(file_operation::copy, sources, at(L"out")));
    EXPECT_NE(error.number, 0);
    EXPECT_EQ(error.description, L"Datei-Operation fehlgeschlagen");
    EXPECT_FALSE(run(file_operation::remove, at(L"in\\b.txt"), L""));
    EXPECT_NE(error.number, 0);
    // What becomes of a move is the shell's word alone, and not every shell tells the truth; nothing may be
    // lost.
    run(file_operation::move, at(L"in\\b.txt"), at(L"out\\b.txt"));
    CloseHandle(locked);
    EXPECT_EQ(tree(L"in"), original);

    EXPECT_FALSE(run(file_operation::copy, at(L"in\\none.txt"), at(L"out")));
    EXPECT_NE(error.number, 0);
    EXPECT_FALSE(run(file_operation::copy, at(L"in\\a.txt") + L'\0' + at(L"in\\none.txt"), at(L"out")));
    fs::remove_all(root / L"out");
    fs::create_directories(root / L"out");
    run(file_operation::move, sources, at(L"out\\1") + L'\0' + at(L"out\\2") + L'\0' + at(L"out\\3"));
    run(file_operation::move, sources + L'\0' + at(L"in\\ж.txt"), at(L"out\\1") + L'\0' + at(L"out\\2"));
    Tree everywhere = tree(L"in");
    everywhere.merge(tree(L"out"));
    for (const auto& [name, bytes] : original)
        EXPECT_TRUE(std::ranges::any_of(everywhere, [&](const auto& file) { return file.second == bytes; }))
            << bytes;
}

TEST_F(RealFileOperation, ReadOnlyFilesAreGoneOrReported) {
    SetFileAttributesW(at(L"in\\a.txt").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(run(file_operation::copy, at(L"in\\a.txt"), at(L"out")));
    // Shells differ in whether "no confirmation" covers such a file.
    const bool done = run(file_operation::remove, at(L"in\\a.txt"), L"");
    EXPECT_EQ(done, !fs::exists(root / L"in\\a.txt"));
    EXPECT_EQ(done, error.number == 0);
    EXPECT_EQ(tree(L"out"), (Tree{{L"a.txt", "a"}}));
}

} // namespace
} // namespace tarv
