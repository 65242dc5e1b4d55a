#include "runtime/Funktionen32/Existence.h"

#include "runtime/Funktionen32/FileOperation.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct Files : World {
    Files() {
        for (const wchar_t* file :
             {L"C:\\t\\full.txt", L"C:\\u\\x.datei", L"C:\\u\\x.endung", L"C:\\a.b", L"D:\\x\\full.txt",
              L"D:\\x\\new.txt", L"D:\\x\\file", L"A:\\x", L"Z:\\x"})
            fake.disk.addFile(file, "x");
        fake.disk.addFile(L"C:\\t\\empty.txt");
        fake.disk.addFile(L"C:\\t\\plain.txt", "", attribute::normal);
        fake.disk.addFile(L"C:\\t\\hidden.dat", "x", attribute::hidden);
        fake.disk.addFile(L"C:\\t\\system.dat", "x", attribute::system);
        for (const wchar_t* folder : {L"C:\\t\\folder", L"C:\\t\\pro.jekt", L"D:\\x\\folder"})
            fake.disk.addFolder(folder);
        rt.accessMode = 1;
    }

    std::wstring operate(std::int32_t operation, const std::wstring& source, const std::wstring& target) {
        ErrorRecord error{99, L"old", {}};
        const bool done = FileOperation(rt, operation, source, target, false, true, 0, true, error);
        EXPECT_EQ(done, error.number == 0);
        return std::to_wstring(error.number) + L" " + error.description;
    }

    std::wstring answer(const Row& row) {
        const std::wstring& routine = row[0];
        const auto on = [&](std::size_t cell) { return row[cell] == L"1"; };
        const auto number = [&](std::size_t cell) { return std::stoi(row[cell]); };
        if (routine == L"Uexist") {
            const bool asFile = Uexist(rt, row[1]), asFolder = Uexist(rt, row[1], true);
            EXPECT_EQ(fake.files.openSearches, 0);
            return std::to_wstring(asFile) + L" " + std::to_wstring(asFolder) + shownBoxes(*this);
        }
        if (routine == L"quickly") {
            rt.accessMode = static_cast<std::int16_t>(number(1));
            bool quick = true;
            return std::to_wstring(Uexist(rt, row[2], false, quick));
        }
        if (routine == L"cost") {
            rt.accessMode = 2;
            bool quick = on(3);
            Uexist(rt, row[1], on(2), quick);
            std::wstring cost;
            for (const int count : {fake.faults.calls("FileStore.length"),
                                    fake.faults.calls("FileStore.attributes"), fake.desktop.pumps})
                cost += std::to_wstring(count) + L" ";
            for (const std::uint32_t pause : fake.desktop.sleeps)
                cost += std::to_wstring(pause);
            return cost;
        }
        if (routine == L"patiently") {
            fake.faults.fail({row[1].begin(), row[1].end()}, system_code::accessDenied, 1, number(2));
            return std::to_wstring(Uexist(rt, row[3], on(4)));
        }
        if (routine == L"toDevelopers") {
            Runtime developing{fake.border, on(1)};
            developing.developerMode = !on(1);
            fake.faults.fail("FileStore.search", 53, 1, 1);
            const std::wstring found = std::to_wstring(Uexist(developing, row[2], on(3)));
            return found + L":" + shownBoxes(*this);
        }
        if (routine == L"accessMode") {
            fake.profiles.fill(L"Pexoran.INI", L"[SYS]\r\nZugriff_Slow=" + row[1]);
            LoadAccessMode(rt);
            return std::to_wstring(rt.accessMode);
        }
        if (routine == L"copy") {
            if (row[2] == L"D:\\made")
                fake.shell.onFileOperation = [&] { fake.disk.addFile(L"D:\\made\\full.txt", "x"); };
            return operate(file_operation::copy, row[1], row[2]);
        }
        if (routine == L"refused") {
            const std::wstring outcome = operate(number(1), row[2], row[3]);
            return outcome + (fake.shell.requests.empty() ? L"" : L", but the shell was asked");
        }
        if (routine == L"shellResult") {
            fake.shell.results = {{number(1), on(2)}};
            return operate(file_operation::move, L"a", L"b");
        }
        ErrorRecord error;
        FileOperation(rt, 3, row[5], row[6], on(1), on(2), number(4), on(3), error);
        const ShellFileRequest& request = fake.shell.requests.at(0);
        EXPECT_EQ(request.operation, 3u);
        std::wstring lists = joined(std::to_wstring(request.flags), request.source, request.target);
        std::ranges::replace(lists, L'\0', L';');
        return lists;
    }
};

TEST(Tables, Existence) {
    checkTable<Files>("Existence.txt");
}

struct Existence : testing::Test, Files {};

TEST_F(Existence, WorldMayChangeBetweenTheReads) {
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.txt", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\late.txt"));
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.log", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\*.log"));
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
    const int reads = fake.faults.calls("ProfileFiles.getString");
    Uexist(rt, L"C:\\x");
    EXPECT_EQ(fake.faults.calls("ProfileFiles.getString"), reads);
}

TEST_F(Existence, ListOfPlainFiles) {
    std::vector<std::wstring> names{L"1", L"2", L"3", L"4", L"5"};
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names), 3);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"2", L"4", L"empty.txt", L"full.txt", L"plain.txt"}));
    // Folders and hidden files pass by unseen, so the fifth answer is the second plain file.
    fake.faults.fail("DirectorySearch.next", system_code::accessDenied, 5, 5);
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names = {}), 1);
    EXPECT_EQ(names, std::vector<std::wstring>{L"empty.txt"});
}

} // namespace
} // namespace tarv
