#include "runtime/Funktionen32/FileOperation.h"

#include "platform/FileStore.h"
#include "runtime/Runtime.h"
#include "tests/support/ContractWorld.h"

#include <filesystem>
#include <set>

#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;
using Tree = std::set<std::wstring>;

/// The real shell on real files: each test starts with "in" (files and a folder) and an empty "out". A file
/// holds its first name.
class RealFileOperation : public Contract {
protected:
    RealFileOperation() {
        for (const wchar_t* folder : {L"in", L"in\\sub", L"in\\sub\\tief", L"out", L"many"})
            world->putFolder(path(folder));
        for (const std::wstring& name : original)
            put(L"in\\" + name);
    }
    void put(const std::wstring& name) {
        const std::wstring own = name.substr(name.rfind(L'\\') + 1);
        world->putFile(path(name), {reinterpret_cast<const char*>(own.data()), own.size() * sizeof(wchar_t)});
    }
    /// The files of a folder, deep: "name", or "name=first name" where it is another one.
    Tree tree(const std::wstring& folder) {
        Tree found;
        for (const auto& entry : fs::recursive_directory_iterator(path(folder)))
            if (const auto bytes = world->bytes(entry.path().wstring()); entry.is_regular_file()) {
                const std::wstring first(reinterpret_cast<const wchar_t*>(bytes->data()), bytes->size() / 2);
                const std::wstring name = fs::relative(entry.path(), path(folder)).wstring();
                found.insert(entry.path().filename() == first ? name : name + L"=" + first);
            }
        return found;
    }
    /// Both names may be lists, parted by "|".
    bool run(std::int32_t operation, std::wstring sources, std::wstring targets = {}) {
        for (std::wstring* names : {&sources, &targets})
            for (std::size_t at = names->empty() ? names->npos : 0; at != names->npos;
                 at = names->find(L'|', at))
                names->replace(at, at > 0, at > 0 ? L'\0' + path(L"") : path(L""));
        const bool done = FileOperation(rt, operation, sources, targets, false, true, 0, true, error);
        EXPECT_EQ(done, error.number == 0) << error.description;
        return done;
    }

    const Tree original{L"ж.txt", L"a.txt", L"b.txt", L"Straße äö.dat", L"sub\\tief\\c.txt"};
    Runtime rt{border};
    ErrorRecord error;
};

TEST_F(RealFileOperation, ArriveAsThemselvesAndNothingElseIsTouched) {
    std::wstring many;
    Tree manyFiles;
    for (int i = 0; i < 150; ++i) {
        const std::wstring name = std::to_wstring(i) + L" ü.txt";
        manyFiles.insert(name);
        put(L"many\\" + name);
        many += L"|many\\" + name;
    }
    Tree withoutRussian = original;
    withoutRussian.erase(L"ж.txt");
    const std::wstring longName = L"out\\" + std::wstring(250 - path(L"out\\").size(), L'x');
    using namespace file_operation;
    const struct {
        std::int32_t operation;
        std::wstring sources, targets, seen;
        Tree there;
    } steps[] = {
        {copy, L"in\\ж.txt", L"out", L"out", {L"ж.txt"}},
        {rename, L"out\\ж.txt", L"out\\щ.txt", L"out", {L"щ.txt=ж.txt"}},
        {remove, L"in\\ж.txt", L"", L"in", withoutRussian},
        {move, L"out\\щ.txt", L"in\\ж.txt", L"in", original},
        {copy, L"in\\*.txt", L"out\\1", L"out\\1", {L"ж.txt", L"a.txt", L"b.txt"}},
        {copy, L"in", L"out\\1", L"out\\1\\in", original},
        {copy, L"in", L"out\\new name", L"out\\new name", original},
        {copy, L"in\\a.txt|in\\sub", L"out\\2", L"out\\2", {L"a.txt", L"sub\\tief\\c.txt"}},
        {copy,
         L"in\\a.txt|in\\b.txt",
         L"out\\2\\a.txt|out\\2\\sub\\2",
         L"out\\2\\sub",
         {L"2=b.txt", L"tief\\c.txt"}},
        {move, L"out\\2\\sub", L"out\\3", L"out\\3", {L"2=b.txt", L"tief\\c.txt"}},
        {copy, many.substr(1), L"out\\4", L"out\\4", manyFiles},
        {copy, L"in\\a.txt", longName, L"in", original},
        {remove, longName + L"|out\\1|out\\new name|out\\2|out\\3", L"", L"out\\4", manyFiles},
    };
    for (const auto& [operation, sources, targets, seen, there] : steps) {
        EXPECT_TRUE(run(operation, sources, targets)) << sources << L" -> " << targets;
        EXPECT_EQ(tree(seen), there) << sources << L" -> " << targets;
        EXPECT_EQ(fs::exists(path(longName)), targets == longName);
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
}

} // namespace
} // namespace tarv
