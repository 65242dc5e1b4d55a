#include "platform/FileStore.h"
#include "tests/support/ContractWorld.h"

#include <algorithm>
#include <vector>

namespace tarv {
namespace {

class FileStoreContract : public Contract {
protected:
    FileStoreContract() {
        for (const wchar_t* name : {L"a.txt", L"B.TXT", L"cc.txt", L"ohne", L"d.txt.bak", L"ж.txt"})
            world->putFile(path(name), "abc");
        world->putFolder(path(L"folder.txt"));
        world->putFile(path(L"folder.txt\\inner.dat"), "");
    }

    /// All names of a search, joined; the code of its end stands last.
    std::wstring found(std::wstring_view pattern) {
        const auto search = files.search(path(pattern));
        std::vector<std::wstring> names;
        auto entry = search->next();
        for (; entry; entry = search->next())
            names.push_back(entry->name);
        std::ranges::sort(names);
        std::wstring joined;
        for (const std::wstring& name : names)
            joined += name + L" ";
        return joined + std::to_wstring(entry.error());
    }

    FileStore& files = border.files;
};

TEST_F(FileStoreContract, ReadsLengthAndAttributes) {
    for (const wchar_t* name : {L"a.txt", L"A.TXT", L"ж.txt", L"folder.txt\\..\\a.txt", L"a.txt. "}) {
        EXPECT_EQ(files.length(path(name)).valueOr(-1), 3) << name;
        EXPECT_EQ(files.attributes(path(name)).valueOr(~0u) & attribute::directory, 0u) << name;
    }
    for (const wchar_t* name : {L"folder.txt", L"folder.txt\\"}) {
        EXPECT_EQ(files.length(path(name)).valueOr(-1), 0) << name;
        EXPECT_TRUE(files.attributes(path(name)).valueOr(0) & attribute::directory) << name;
    }
    world->setAttributes(path(L"a.txt"), attribute::readOnly | attribute::archive);
    EXPECT_EQ(files.attributes(path(L"a.txt")).valueOr(0), attribute::readOnly | attribute::archive);
}

TEST_F(FileStoreContract, NamesTheReasonWhereThereIsNothing) {
    constexpr SystemCode invalidName = 123;
    const std::pair<std::wstring, SystemCode> cases[] = {{path(L"none"), system_code::fileNotFound},
                                                         {path(L"none\\none"), system_code::pathNotFound},
                                                         {path(L"a.txt\\x"), system_code::pathNotFound},
                                                         {L"", system_code::pathNotFound},
                                                         {path(L"?.txt"), invalidName}};
    for (const auto& [path, code] : cases) {
        SCOPED_TRACE(testing::PrintToString(path));
        EXPECT_EQ(files.length(path).error(), code);
        EXPECT_EQ(files.attributes(path).error(), code);
        EXPECT_EQ(files.remove(path), code);
    }
    EXPECT_FALSE(files.length(path(L"a.txt\\")));
}

TEST_F(FileStoreContract, SearchesByPattern) {
    // Left out: "??.txt" (on Windows a "?" in front of the "." may stand for nothing, under Wine not) and
    // "*." (names without an extension on Windows, all names under Wine).
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"*.txt", L"B.TXT a.txt cc.txt folder.txt ж.txt 18"},
        {L"?.TXT", L"B.TXT a.txt ж.txt 18"},
        {L"A.TXT", L"a.txt 18"},
        {L"folder.txt\\*", L". .. inner.dat 18"},
        {L"*.txt.*", L"B.TXT a.txt cc.txt d.txt.bak folder.txt ж.txt 18"},
        {L"ohne.*", L"ohne 18"},
        {L"b*t", L"B.TXT 18"},
        {L"none*", L"2"},
        {L"", L"2"},
        {L"folder.txt\\", L"2"},
        {L"none\\*", L"3"},
    };
    for (const auto& [pattern, names] : cases)
        EXPECT_EQ(found(pattern), names) << pattern;
}

TEST_F(FileStoreContract, EverySearchHasItsOwnState) {
    const auto outer = files.search(path(L"folder.txt"));
    const auto inner = files.search(path(L"folder.txt\\i*"));
    const auto folder = outer->next();
    ASSERT_TRUE(folder);
    EXPECT_NE(folder->attributes & attribute::directory, 0u);
    EXPECT_TRUE(inner->next());
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(outer->next().error(), system_code::noMoreFiles);
}

TEST_F(FileStoreContract, AppendsOverwritesAndRemoves) {
    EXPECT_EQ(files.append(path(L"new ж.txt"), "1\r\n"), 0u);
    EXPECT_EQ(files.append(path(L"new ж.txt"), "2\r\n"), 0u);
    EXPECT_EQ(world->bytes(path(L"new ж.txt")), "1\r\n2\r\n");
    EXPECT_EQ(files.overwrite(path(L"new ж.txt"), "3"), 0u);
    EXPECT_EQ(files.overwrite(path(L"newer.txt"), "4"), 0u);
    EXPECT_EQ(*world->bytes(path(L"new ж.txt")) + *world->bytes(path(L"newer.txt")), "34");
    EXPECT_EQ(files.remove(path(L"NEW ж.txt")), 0u);
    EXPECT_EQ(world->bytes(path(L"new ж.txt")), std::nullopt);
}

TEST_F(FileStoreContract, RefusesToChangeWhatItCannot) {
    world->setAttributes(path(L"a.txt"), attribute::readOnly);
    for (const auto& [name, code] : {std::pair(L"none\\x.txt", system_code::pathNotFound),
                                     std::pair(L"folder.txt", system_code::accessDenied)}) {
        EXPECT_EQ(files.append(path(name), "1"), code);
        EXPECT_EQ(files.overwrite(path(name), "1"), code);
    }
    EXPECT_EQ(files.remove(path(L"folder.txt")), system_code::accessDenied);
    EXPECT_EQ(files.remove(path(L"a.txt")), system_code::accessDenied);
    EXPECT_EQ(world->bytes(path(L"a.txt")), "abc");
}

TEST_F(FileStoreContract, ReplacesInOneStep) {
    world->putFile(path(L"fresh.neu"), "new");
    world->setAttributes(path(L"a.txt"), attribute::readOnly);
    EXPECT_EQ(files.replace(path(L"none\\x.txt"), path(L"fresh.neu")), system_code::pathNotFound);
    EXPECT_NE(files.replace(path(L"folder.txt"), path(L"fresh.neu")), 0u);
    EXPECT_NE(files.replace(path(L"a.txt"), path(L"fresh.neu")), 0u);
    EXPECT_NE(files.replace(path(L"B.TXT"), path(L"none")), 0u);
    EXPECT_EQ(world->bytes(path(L"a.txt")), "abc");
    EXPECT_EQ(world->bytes(path(L"B.TXT")), "abc");
    EXPECT_EQ(world->bytes(path(L"fresh.neu")), "new");

    EXPECT_EQ(files.replace(path(L"B.TXT"), path(L"fresh.neu")), 0u);
    EXPECT_EQ(files.replace(path(L"newer.txt"), path(L"cc.txt")), 0u);
    EXPECT_EQ(world->bytes(path(L"B.TXT")), "new");
    EXPECT_EQ(world->bytes(path(L"newer.txt")), "abc");
    EXPECT_EQ(world->bytes(path(L"fresh.neu")), std::nullopt);
    EXPECT_EQ(world->bytes(path(L"cc.txt")), std::nullopt);
}

TEST_F(FileStoreContract, KnowsTheCurrentDirectory) {
    const std::wstring current = files.currentDirectory();
    EXPECT_TRUE(current.size() == 3 || !current.ends_with(L'\\'));
    EXPECT_EQ(files.overwrite(L"tarv_contract.tmp", "1"), 0u);
    EXPECT_EQ(world->bytes(current + L"\\tarv_contract.tmp"), "1");
    EXPECT_EQ(files.replace(L"tarv_contract2.tmp", L"tarv_contract.tmp"), 0u);
    EXPECT_EQ(files.replace(L"tarv_contract.tmp", L"tarv_contract2.tmp"), 0u);
    EXPECT_EQ(world->bytes(current + L"\\tarv_contract.tmp"), "1");
    EXPECT_EQ(files.remove(current + L"\\tarv_contract.tmp"), 0u);
}

} // namespace
} // namespace tarv
