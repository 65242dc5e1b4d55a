#include "runtime/Funktionen32/FileOperation.h"

#include "platform/FileStore.h"
#include "runtime/Runtime.h"
#include "tests/support/ContractWorld.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;
using Tree = std::map<std::wstring, std::string>;

/// The real shell on real files: each test starts with "in" (files and a folder) and an empty "out".
class RealFileOperation : public Contract {
protected:
    RealFileOperation() {
        for (const wchar_t* folder : {L"in", L"in\\sub", L"in\\sub\\tief", L"out", L"many"})
            world->putFolder(path(folder));
        for (const auto& [name, bytes] : original)
            world->putFile(path(L"in\\" + name), bytes);
    }
    /// The files of a folder with their contents, deep.
    Tree tree(const std::wstring& folder) {
        Tree found;
        for (const auto& entry : fs::recursive_directory_iterator(path(folder)))
            if (entry.is_regular_file())
                found[fs::relative(entry.path(), path(folder)).wstring()] =
                    *world->bytes(entry.path().wstring());
        return found;
    }
    /// Both names may be lists, parted by "|".
    bool run(std::int32_t operation, const std::wstring& sources, const std::wstring& targets = {}) {
        const auto list = [&](const std::wstring& names) {
            std::wstring paths;
            for (std::size_t from = 0; from < names.size(); from = names.find(L'|', from) + 1) {
                paths += path(names.substr(from, names.find(L'|', from) - from)) + L'\0';
                if (names.find(L'|', from) == names.npos)
                    return paths.substr(0, paths.size() - 1);
            }
            return paths;
        };
        const bool done =
            FileOperation(rt, operation, list(sources), list(targets), false, true, 0, true, error);
        EXPECT_EQ(done, error.number == 0) << error.description;
        return done;
    }

    const Tree original{{L"ж.txt", "zh"},
                        {L"a.txt", "a"},
                        {L"b.txt", "b"},
                        {L"Straße äö.dat", "d"},
                        {L"sub\\tief\\c.txt", "c"}};
    Runtime rt{border};
    ErrorRecord error;
};

TEST_F(RealFileOperation, ArriveAsThemselvesAndNothingElseIsTouched) {
    Tree rest = original;
    rest.erase(L"ж.txt");
    std::wstring many;
    Tree manyFiles;
    for (int i = 0; i < 150; ++i) {
        manyFiles[std::to_wstring(i) + L" ü.txt"] = std::to_string(i);
        world->putFile(path(L"many\\" + std::to_wstring(i) + L" ü.txt"), std::to_string(i));
        many += L"|many\\" + std::to_wstring(i) + L" ü.txt";
    }
    const std::wstring longName(250 - path(L"out\\.txt").size(), L'x');
    using namespace file_operation;
    const struct {
        std::int32_t operation;
        std::wstring sources, targets, seen;
        Tree there;
    } steps[] = {
        {copy, L"in\\ж.txt", L"out", L"out", {{L"ж.txt", "zh"}}},
        {rename, L"out\\ж.txt", L"out\\щ.txt", L"out", {{L"щ.txt", "zh"}}},
        {remove, L"in\\ж.txt", L"", L"in", rest},
        {move, L"out\\щ.txt", L"in\\ж.txt", L"in", original},
        {copy, L"in\\*.txt", L"out\\1", L"out\\1", {{L"ж.txt", "zh"}, {L"a.txt", "a"}, {L"b.txt", "b"}}},
        {copy, L"in", L"out\\1", L"out\\1\\in", original},
        {copy, L"in", L"out\\new name", L"out\\new name", original},
        {copy, L"in\\a.txt|in\\sub", L"out\\2", L"out\\2", {{L"a.txt", "a"}, {L"sub\\tief\\c.txt", "c"}}},
        {copy,
         L"in\\a.txt|in\\b.txt",
         L"out\\2\\1|out\\2\\sub\\2",
         L"out\\2\\sub",
         {{L"2", "b"}, {L"tief\\c.txt", "c"}}},
        {move, L"out\\2\\sub", L"out\\3", L"out\\3", {{L"2", "b"}, {L"tief\\c.txt", "c"}}},
        {copy, many.substr(1), L"out\\4", L"out\\4", manyFiles},
        {copy, L"in\\a.txt", L"out\\" + longName + L".txt", L"in", original},
        {move, L"out\\" + longName + L".txt", L"out\\4\\0 ü.txt", L"in", original},
        {remove, L"out\\1|out\\new name|out\\2|out\\3", L"", L"out\\4",
         (manyFiles[L"0 ü.txt"] = "a", manyFiles)},
    };
    for (const auto& [operation, sources, targets, seen, there] : steps) {
        EXPECT_TRUE(run(operation, sources, targets)) << sources << L" -> " << targets;
        EXPECT_EQ(tree(seen), there) << sources << L" -> " << targets;
    }
    EXPECT_EQ(tree(L"in"), original);
    EXPECT_EQ(tree(L"out").size(), 150u);
}

TEST_F(RealFileOperation, WhateverFailsNoSourceIsLost) {
    const HANDLE locked =
        CreateFileW(path(L"in\\b.txt").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(run(file_operation::copy, L"in\\a.txt|in\\b.txt", L"out"));
    EXPECT_EQ(error.description, L"Datei-Operation fehlgeschlagen");
    EXPECT_FALSE(run(file_operation::remove, L"in\\b.txt"));
    // What becomes of a move is the shell's word alone, and not every shell tells the truth.
    run(file_operation::move, L"in\\b.txt", L"out\\b.txt");
    CloseHandle(locked);
    EXPECT_EQ(tree(L"in"), original);

    EXPECT_FALSE(run(file_operation::copy, L"in\\none.txt", L"out"));
    EXPECT_FALSE(run(file_operation::copy, L"in\\a.txt|in\\none.txt", L"out"));
    fs::remove_all(path(L"out"));
    world->putFolder(path(L"out"));
    run(file_operation::move, L"in\\a.txt|in\\b.txt", L"out\\1|out\\2|out\\3");
    run(file_operation::move, L"in\\a.txt|in\\b.txt|in\\ж.txt", L"out\\1|out\\2");
    Tree everywhere = tree(L"in");
    everywhere.merge(tree(L"out"));
    for (const auto& [name, bytes] : original)
        EXPECT_TRUE(std::ranges::any_of(everywhere, [&](const auto& file) { return file.second == bytes; }))
            << bytes;

    world->putFile(path(L"in\\alt.txt"), "alt");
    world->setAttributes(path(L"in\\alt.txt"), attribute::readOnly);
    EXPECT_TRUE(run(file_operation::copy, L"in\\alt.txt", L"out"));
    // Shells differ in whether "no confirmation" covers such a file.
    EXPECT_EQ(run(file_operation::remove, L"in\\alt.txt"), !fs::exists(path(L"in\\alt.txt")));
    EXPECT_EQ(tree(L"out")[L"alt.txt"], "alt");
}

} // namespace
} // namespace tarv
