#include "runtime/Funktionen32/Existence.h"

#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

constexpr SystemCode badNetworkPath = 53;

struct Existence : Scripted {
    Existence() {
        fake.disk.addFile(L"C:\\t\\full.txt", "x");
        fake.disk.addFile(L"C:\\t\\empty.txt");
        fake.disk.addFile(L"C:\\t\\plain.txt", "", attribute::normal);
        fake.disk.addFile(L"C:\\t\\hidden.dat", "x", attribute::hidden);
        fake.disk.addFile(L"C:\\u\\x.datei", "x");
        fake.disk.addFile(L"C:\\u\\x.endung", "x");
        fake.disk.addFolder(L"C:\\t\\folder");
        fake.disk.addFolder(L"C:\\t\\pro.jekt");
        rt.accessMode = 1;
    }

    bool quickly(std::wstring_view path) {
        bool quick = true;
        return Uexist(rt, path, false, quick);
    }

    int reads(std::string_view function) { return fake.faults.calls(function); }
};

TEST_F(Existence, FilesAndFolders) {
    const std::tuple<const wchar_t*, bool, bool> cases[]{
        {L"", false, false},
        {L"C:\\t\\full.txt", true, true}, // a file found for a folder counts when it looks like a file
        {L"C:\\u\\x.datei", true, true},  // a "." among the last six characters
        {L"C:\\u\\x.endung", true, false},
        {L"C:\\t\\full.txt\\", false, false},
        {L"C:\\t\\EMPTY.TXT", true, true},
        {L"C:\\t\\plain.txt", false, false},
        {L"C:\\t\\hidden.dat", true, true},
        {L"C:\\t\\folder", false, true},
        {L"C:\\t\\folder\\", false, true},
        {L"C:\\t\\missing.txt", false, false},
        {L"c", false, true},
        {L"c:", false, true},
        {L"q", false, false},
        {L"C:\\t\\*.txt", true, true},   // a pattern asks for files, even where a folder is wanted
        {L"C:\\t\\*.dat", false, false}, // hidden: a search does not yield it
        {L"C:\\t\\fold*", false, false},
        {L"C:\\t\\full.tx?", true, true},
    };
    for (const auto& [path, asFile, asFolder] : cases) {
        EXPECT_EQ(Uexist(rt, path), asFile) << path;
        EXPECT_EQ(Uexist(rt, path, true), asFolder) << path;
    }
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_EQ(fake.files.openSearches, 0);
}

TEST_F(Existence, RetriesAreBounded) {
    const struct {
        const wchar_t* path;
        bool directory, quick;
        int lengths, attributes, pumps;
        std::vector<std::uint32_t> sleeps;
    } cases[]{
        {L"C:\\t\\full.txt", false, false, 1, 0, 0, {}},
        {L"C:\\t\\empty.txt", false, false, 1, 2, 1, {0}},
        {L"C:\\t\\missing", false, false, 2, 3, 8, {1, 1, 1, 1}},
        {L"C:\\t\\missing", false, true, 2, 0, 2, {1}},
        {L"C:\\t\\missing", true, false, 0, 4, 6, {1, 1, 1}},
        {L"C:\\t\\missing", true, true, 0, 3, 6, {1, 1, 1}},
    };
    rt.accessMode = 2;
    for (const auto& c : cases) {
        SCOPED_TRACE(std::wstring(c.path) + (c.directory ? L" as folder" : L"") +
                     (c.quick ? L" quickly" : L""));
        const int lengths = reads("FileStore.length"), attributes = reads("FileStore.attributes");
        fake.desktop.pumps = 0;
        fake.desktop.sleeps.clear();
        bool quick = c.quick;
        Uexist(rt, c.path, c.directory, quick);
        EXPECT_EQ(reads("FileStore.length") - lengths, c.lengths);
        EXPECT_EQ(reads("FileStore.attributes") - attributes, c.attributes);
        EXPECT_EQ(fake.desktop.pumps, c.pumps);
        EXPECT_EQ(fake.desktop.sleeps, c.sleeps);
    }
}

TEST_F(Existence, ReadsThatFailForAWhile) {
    const struct {
        const char* function;
        std::initializer_list<int> calls;
        const wchar_t* path;
        bool directory, found;
    } cases[]{
        {"FileStore.length", {1}, L"C:\\t\\full.txt", false, true},
        // The second read finds length 0: its folder goes on to the attributes, which have no file bit.
        {"FileStore.length", {1}, L"C:\\t\\folder", false, false},
        {"FileStore.length", {1, 2}, L"C:\\t\\full.txt", false, true},
        {"FileStore.length", {1, 2}, L"C:\\t\\plain.txt", false, false},
        // Length 0 and no attributes: taken for a folder.
        {"FileStore.attributes", {1}, L"C:\\t\\empty.txt", false, false},
        {"FileStore.attributes", {1, 2}, L"C:\\t\\folder", true, true},
        // The fourth read counts whatever it finds.
        {"FileStore.attributes", {1, 2, 3}, L"C:\\t\\plain.txt", true, true},
        {"FileStore.attributes", {1, 2, 3, 4}, L"C:\\t\\folder", true, false},
    };
    for (const auto& c : cases) {
        fake.faults.heal();
        fake.faults.fail(c.function, system_code::accessDenied, c.calls);
        EXPECT_EQ(Uexist(rt, c.path, c.directory), c.found) << c.function << " " << c.path;
    }
    fake.faults.heal();
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.txt", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\late.txt"));
    fake.desktop.onPump = [&] { fake.disk.addFile(L"C:\\t\\late.log", "x"); };
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\*.log"));
}

TEST_F(Existence, AccessModeDecidesAboutQuickAnswers) {
    rt.accessMode = 1;
    EXPECT_FALSE(quickly(L"C:\\t\\hidden.dat"));
    EXPECT_TRUE(quickly(L"C:\\t\\plain.txt"));
    EXPECT_FALSE(quickly(L""));
    rt.accessMode = 2;
    EXPECT_TRUE(quickly(L"C:\\t\\hidden.dat"));
    EXPECT_FALSE(quickly(L"C:\\t\\plain.txt"));

    for (const auto& [mode, expected] : {std::pair{std::int16_t{2}, true}, {std::int16_t{3}, false}}) {
        rt.accessMode = mode;
        bool quick = true;
        Uexist(rt, L"C:\\t\\folder", true, quick);
        EXPECT_EQ(quick, expected);
    }
}

TEST_F(Existence, AccessModeIsLoadedOnceFromTheConfiguration) {
    const std::pair<const wchar_t*, int> cases[]{{L"2", 2},         {L"-3.9", 3},  {L"0.9", 1},  {L"x", 1},
                                                 {L"32767", 32767}, {L"32768", 1}, {L"1e999", 1}};
    for (const auto& [text, mode] : cases) {
        fake.profiles.fill(L"Pexoran.INI", std::wstring(L"[SYS]\r\nZugriff_Slow=") + text);
        LoadAccessMode(rt);
        EXPECT_EQ(rt.accessMode, mode) << text;
    }
    fake.profiles.fill(L"Pexoran.INI", L"");
    rt.accessMode = 0;
    Uexist(rt, L"C:\\t\\full.txt");
    EXPECT_EQ(rt.accessMode, 1);
    EXPECT_EQ(fake.profiles.text(L"Pexoran.INI"), L"[SYS]\r\nZugriff_Slow=1\r\n");
    const int configurationReads = reads("ProfileFiles.getString");
    Uexist(rt, L"C:\\t\\full.txt");
    EXPECT_EQ(reads("ProfileFiles.getString"), configurationReads);
}

TEST_F(Existence, DevelopersSeeWhatLooksWrong) {
    const std::wstring path = L"C:\\t\\full.txt";
    rt.developerMode = true;
    EXPECT_TRUE(Uexist(rt, path, true));
    EXPECT_FALSE(Uexist(rt, L"C:\\t\\full.txt\\", true));
    EXPECT_TRUE(Uexist(rt, L"C:\\t\\pro.jekt", true));
    const std::vector<ShownMessageBox> expected{
        {path + L"\nEs wurde nach einem Dir gesucht - gibts nicht --- richtig?", L"bIstEntwicklung", 4096},
        {path + L"\nAber den File gibt es!\n<Uexist> bringt nun trotzdem True zurück - 2. Param ändern!!!",
         L"bIstEntwicklung", 4096}};
    EXPECT_EQ(fake.desktop.boxes, expected);

    Runtime design{fake.border, true};
    fake.desktop.boxes.clear();
    EXPECT_FALSE(Uexist(design, L"C:\\Temp\\"));
    fake.faults.fail("FileStore.search", badNetworkPath, {1});
    EXPECT_TRUE(Uexist(design, L"C:\\t\\*.txt"));
    const std::vector<ShownMessageBox> inDesign{
        {L"Optionaler Param kam dazu für Directories", L"Design", 0},
        {L"Fehler: 52  in Uexist: \nC:\\t\\*.txt", L"IsDesign", 4096}};
    EXPECT_EQ(fake.desktop.boxes, inDesign);
}

TEST_F(Existence, ListOfPlainFiles) {
    std::vector<std::wstring> names{L"1", L"2", L"3", L"4", L"5"};
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names), 3);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"2", L"4", L"empty.txt", L"full.txt", L"plain.txt"}));

    // Folders and hidden files pass by unseen, so the fifth answer is the second plain file.
    fake.faults.fail("DirectorySearch.next", system_code::accessDenied, {5});
    names.clear();
    EXPECT_EQ(ListFiles(rt, L"C:\\t\\*", names), 1);
    EXPECT_EQ(names, std::vector<std::wstring>{L"empty.txt"});
}

} // namespace
} // namespace tarv
