#include "runtime/Funktionen32/FileOperation.h"

#include "platform/ErrorDisplay.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct FileOperationCase : World {
    FileOperationCase() {
        for (const wchar_t* file :
             {L"C:\\t\\full.txt", L"D:\\x\\full.txt", L"D:\\x\\new.txt", L"D:\\x\\file"})
            fake.disk.addFile(file, "x");
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
};

TEST(Tables, FileOperation) {
    checkTable<FileOperationCase>(
        "FileOperation.txt",
        {{L"copy",
          [](auto& w, const Row& row) {
              if (row[1] == L"D:\\made")
                  w.fake.shell.onFileOperation = [&w](auto&) {
                      w.fake.disk.addFile(L"D:\\made\\full.txt", "x");
                  };
              return w.operate(file_operation::copy, row[0], row[1]);
          }},
         {L"refused",
          [](auto& w, const Row& row) {
              const std::wstring outcome = w.operate(row.number(0), row[1], row[2]);
              EXPECT_TRUE(w.fake.shell.requests.empty());
              return outcome;
          }},
         {L"shellResult",
          [](auto& w, const Row& row) {
              w.fake.shell.results = {{row.number(0), row.on(1)}};
              return w.operate(file_operation::move, L"a", L"b");
          }},
         {L"request", [](auto& w, const Row& row) {
              ErrorRecord error;
              FileOperation(w.rt, 3, row[4], row[5], row.on(0), row.on(1), row.number(3), row.on(2), error);
              const ShellFileRequest& request = w.fake.shell.requests.at(0);
              EXPECT_EQ(request.operation, 3u);
              std::wstring lists = joined(std::to_wstring(request.flags), request.source, request.target);
              std::ranges::replace(lists, L'\0', L';');
              return lists;
          }}});
}

TEST(FileOperation, IsRetriedAsLongAsTheUserWants) {
    World w;
    FakePlatform& fake = w.fake;
    ErrorRecord error;
    std::deque<Value> answers{4, 4, 1};
    const auto display = fake.automation.object();
    display->runs(L"EMW", [&](auto) { return nextOf(answers, Value()); });
    fake.automation.provided.emplace(errorDisplayProgId, display);
    fake.facts.program = L"C:\\p\\Kalk-Ribbon__2.exe";
    const auto run = [&](std::int32_t operation) {
        const std::wstring_view sources(L"a\0b", 3);
        return FileOperation(w.rt, operation, sources, L"C:\\t", true, false, 0, false, error);
    };
    const auto told = [&](std::size_t argument) {
        return std::get<std::wstring>(fake.automation.log.back().arguments.at(argument));
    };
    fake.shell.results = {{32, false}, {0, true}, {0, false}};
    EXPECT_FALSE(run(file_operation::copy));
    EXPECT_EQ(error.number, -1) << "the third run is done, but nothing has arrived";
    EXPECT_EQ(fake.shell.requests.size(), 3u);
    EXPECT_EQ(told(1), L"\n\r\nQuelle: a ; b\r\nZiel:     C:\\t");
    for (const wchar_t* arrived : {L"C:\\t\\a", L"C:\\t\\b"})
        fake.disk.addFile(arrived);
    answers = {4};
    fake.shell.results = {{5, false}};
    EXPECT_TRUE(run(file_operation::copy));
    EXPECT_EQ(error, ErrorRecord());

    for (const auto& [operation, name] :
         {std::pair(1, L"Verschieben"), {2, L"Kopieren"}, {3, L"Löschen"}, {4, L"Umbenennen"}, {9, L""}}) {
        answers = {2};
        w.rt.suppressedLocation.clear();
        fake.shell.results = {{5, false}};
        EXPECT_FALSE(run(operation));
        EXPECT_EQ(told(2), std::wstring(L"Fehler beim ") + name + L" von Dateien...   Kalk-Ribbon");
        EXPECT_EQ(error.number, 5);
    }
}

} // namespace
} // namespace tarv
