#include "platform/FileStore.h"

#include "ContractWorld.h"
#include "tests/support/Table.h"

#include <set>

namespace tarv {
namespace {

struct FileStoreCase : ContractWorld {
    FileStoreCase() {
        for (const wchar_t* name : {L"a.txt", L"B.TXT", L"cc.txt", L"ohne", L"d.txt.bak", L"ж.txt"})
            files.overwrite(path(name), "abc");
        putFolder(path(L"folder.txt"));
        files.overwrite(path(L"folder.txt\\inner.dat"), "");
        setAttributes(path(L"a.txt"), attribute::readOnly);
    }

    std::wstring at(const Row& row) const { return path(row[0]); }
    /// The code and the bytes of the file afterwards.
    std::wstring done(const Row& row, SystemCode code) {
        const std::string now = bytes(at(row)).value_or("none");
        return std::to_wstring(code) + L" " + std::wstring(now.begin(), now.end());
    }
    std::wstring found(const std::wstring& pattern) {
        const auto search = files.search(pattern);
        std::set<std::wstring> names;
        auto entry = search->next();
        for (; entry; entry = search->next())
            names.insert(entry->name + L" ");
        EXPECT_EQ(search->next().error(), entry.error()) << "the end stays the end";
        std::wstring joined;
        for (const std::wstring& name : names)
            joined += name;
        return joined + std::to_wstring(entry.error());
    }

    FileStore& files = *border.files;
};

template <class Number>
std::wstring numberOrError(const Answer<Number>& answer) {
    return answer ? std::to_wstring(*answer) : L"error " + std::to_wstring(answer.error());
}

TEST(Tables, FileStore) {
    checkTable<FileStoreCase>(
        "FileStore.txt",
        {{L"length", [](auto& w, const Row& row) { return numberOrError(w.files.length(w.at(row))); }},
         {L"attributes",
          [](auto& w, const Row& row) {
              auto found = w.files.attributes(w.at(row));
              if (found)
                  *found &= attribute::readOnly | attribute::directory;
              return numberOrError(found);
          }},
         {L"search", [](auto& w, const Row& row) { return w.found(w.at(row)); }},
         {L"refusesReading",
          [](auto& w, const Row& row) { return std::to_wstring(w.files.refusesReading(w.at(row))); }},
         {L"append", [](auto& w, const Row& row) { return w.done(row, w.files.append(w.at(row), "1")); }},
         {L"overwrite",
          [](auto& w, const Row& row) { return w.done(row, w.files.overwrite(w.at(row), "1")); }},
         {L"replace by \"ohne\"",
          [](auto& w, const Row& row) { return w.done(row, w.files.replace(w.at(row), w.path(L"ohne"))); }},
         {L"moveOver of \"ohne\"",
          [](auto& w, const Row& row) { return w.done(row, w.files.moveOver(w.path(L"ohne"), w.at(row))); }},
         {L"remove", [](auto& w, const Row& row) { return w.done(row, w.files.remove(w.at(row))); }}});
}

struct FileStoreContract : testing::Test, FileStoreCase {};

TEST_F(FileStoreContract, ReplacesInOneStepOrNotAtAll) {
    for (const wchar_t* kept : {L"a.txt", L"folder.txt", L"none\\x.txt"})
        EXPECT_NE(files.replace(path(kept), path(L"ohne")), 0u) << kept;
    EXPECT_NE(files.replace(path(L"B.TXT"), path(L"none")), 0u);
    for (const wchar_t* kept : {L"a.txt", L"B.TXT", L"ohne"})
        EXPECT_EQ(bytes(path(kept)), "abc") << kept;
    EXPECT_EQ(files.length(L"").error(), system_code::pathNotFound);
    EXPECT_FALSE(files.length(path(L"B.TXT\\")));
    EXPECT_EQ(files.moveOver(path(L"none"), path(L"B.TXT")), system_code::fileNotFound);
    EXPECT_EQ(files.replace(path(L"B.TXT"), path(L"ohne")), 0u);
    EXPECT_EQ(files.moveOver(path(L"B.TXT"), path(L"new.txt")), 0u);
    for (const wchar_t* moved : {L"ohne", L"B.TXT"})
        EXPECT_EQ(bytes(path(moved)), std::nullopt) << moved;

    EXPECT_EQ(files.overwrite(L"tarv_contract2.tmp", "1"), 0u);
    EXPECT_EQ(files.overwrite(L"tarv_contract.tmp", "2"), 0u);
    EXPECT_EQ(files.replace(L"tarv_contract.tmp", L"tarv_contract2.tmp"), 0u) << "bare names";
    EXPECT_EQ(bytes(files.currentDirectory() + L"\\tarv_contract.tmp"), "1");
    EXPECT_EQ(files.remove(L"tarv_contract.tmp"), 0u);
}

} // namespace
} // namespace tarv
