#include "runtime/Funktionen32/Existence.h"

#include "tests/support/Table.h"

namespace tarv {
namespace {

struct ExistenceCase : World {
    ExistenceCase() {
        for (const wchar_t* file : {L"C:\\t\\full.txt", L"C:\\u\\x.datei", L"C:\\u\\x.endung", L"C:\\a.b",
                                    L"A:\\x", L"Z:\\x", L"_:\\x"})
            fake.disk.addFile(file, "x");
        fake.disk.addFile(L"C:\\t\\empty.txt");
        fake.disk.addFile(L"C:\\u\\byte", "x", attribute::normal);
        fake.disk.addFile(L"C:\\t\\plain.txt", "", attribute::normal);
        fake.disk.addFile(L"C:\\t\\hidden.dat", "x", attribute::hidden);
        fake.disk.addFile(L"C:\\t\\system.dat", "x", attribute::system);
        for (const wchar_t* folder : {L"C:\\t\\folder", L"C:\\t\\pro.jekt"})
            fake.disk.addFolder(folder);
        rt.accessMode = 1;
    }
};

TEST(Tables, Existence) {
    checkTable<ExistenceCase>("Existence.txt",
                              {{L"Uexist",
                                [](auto& w, const Row& row) {
                                    const bool asFile = Uexist(w.rt, row[0]),
                                               asFolder = Uexist(w.rt, row[0], true);
                                    return std::to_wstring(asFile) + L" " + std::to_wstring(asFolder);
                                }},
                               {L"Uexist quickly",
                                [](auto& w, const Row& row) {
                                    w.rt.accessMode = static_cast<std::int16_t>(row.number(0));
                                    bool quick = true;
                                    return std::to_wstring(Uexist(w.rt, row[1], false, quick));
                                }},
                               {L"Uexist patiently",
                                [](auto& w, const Row& row) {
                                    const std::string function(row[0].begin(), row[0].end());
                                    w.fake.faults.fail(function, system_code::accessDenied, 1, row.number(1));
                                    return std::to_wstring(Uexist(w.rt, row[2], row.on(3)));
                                }},
                               {L"Uexist for developers",
                                [](auto& w, const Row& row) {
                                    Runtime developing{w.fake.border, row.on(0)};
                                    developing.developerMode = !row.on(0);
                                    w.fake.faults.fail("FileStore.search", 53, 1, 1);
                                    return std::to_wstring(Uexist(developing, row[1], row.on(2))) + L":";
                                }},
                               {L"LoadAccessMode", [](auto& w, const Row& row) {
                                    w.fake.profiles.fill(L"Pexoran.INI", L"[SYS]\r\nZugriff_Slow=" + row[0]);
                                    LoadAccessMode(w.rt);
                                    return std::to_wstring(w.rt.accessMode);
                                }}});
}

struct Existence : testing::Test, ExistenceCase {};

TEST_F(Existence, WorldMayChangeBetweenTheReads) {
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.txt", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\late.txt"));
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.log", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\*.log"));
    Runtime developing{fake.border, true};
    EXPECT_FALSE(Uexist(developing, L"C:\\t\\*.none"));
    EXPECT_TRUE(fake.desktop.boxes.empty()) << "no failure to report";
    for (rt.accessMode = 2; rt.accessMode < 4; ++rt.accessMode) {
        bool quick = true;
        Uexist(rt, L"C:\\t", true, quick);
        EXPECT_EQ(quick, rt.accessMode == 2);
    }
}

TEST_F(Existence, AccessModeIsLoadedOnceFromTheConfiguration) {
    rt.accessMode = 0;
    Uexist(rt, L"C:\\x");
    EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), L"[SYS]\r\nZugriff_Slow=1\r\n");
    fake.faults.fail("ProfileFiles.getString", 0);
    Uexist(rt, L"C:\\x");
    EXPECT_EQ(fake.faults.calls("ProfileFiles.getString"), 1);
}

TEST_F(Existence, ListOfPlainFiles) {
    std::vector<std::wstring> names{L"1", L"2", L"3", L"4", L"5"};
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names), 3);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"2", L"4", L"empty.txt", L"full.txt", L"plain.txt"}));
    // Folders and hidden files pass by unseen, so the fifth answer is the second plain file.
    fake.faults.fail("DirectorySearch.next", system_code::accessDenied, 5, 5);
    names.clear();
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names), 1);
    EXPECT_EQ(names, std::vector<std::wstring>{L"empty.txt"});
}

} // namespace
} // namespace tarv
