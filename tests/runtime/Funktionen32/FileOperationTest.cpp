#include "runtime/Funktionen32/FileOperation.h"

#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

using namespace std::string_literals;

const ErrorRecord failure{-1, L"Datei-Operation fehlgeschlagen", {}};

class FileOperationTest : public testing::Test {
protected:
    /// Quiet, without questions and progress.
    bool run(std::int32_t operation, std::wstring_view source, std::wstring_view target) {
        return FileOperation(rt, operation, source, target, false, true, 0, true, error);
    }
    bool copy(std::wstring_view source, std::wstring_view target) {
        return run(file_operation::copy, source, target);
    }

    /// Lets the error display give these answers, one after the other.
    void answerWith(std::vector<std::int32_t> answers) {
        const auto display = fake.automation.object(L"display");
        display->runs(L"EMW", [answers, asked = std::size_t{0}](auto) mutable -> Automated<Value> {
            return Value{answers.at(asked++)};
        });
        fake.automation.provide(L"rk_Runtime.rk_Fehler", ObjectRef(display));
    }
    std::vector<Value> lastQuestion() const { return fake.automation.log.back().arguments; }

    FakePlatform fake;
    Runtime rt{fake.border};
    ErrorRecord error{99, L"old", {}};
};

TEST_F(FileOperationTest, AsksTheShellForWhatTheCallerWants) {
    const struct {
        bool confirm, quiet, silent;
        std::int32_t flags;
        std::wstring target;
        int expected;
    } cases[]{
        {true, false, false, 0, L"t", 512},        {false, false, false, 0, L"t", 528},
        {true, true, false, 0, L"t", 1536},        {true, false, true, 0, L"t", 516},
        {true, false, false, 64 | 512, L"t", 576}, {false, true, true, 0x10004, L"t\0u"s, 1557},
        {true, false, false, 0, L"t\0"s, 512},
    };
    for (const auto& c : cases) {
        FileOperation(rt, 1, L"a\0b"s, c.target, c.confirm, c.quiet, c.flags, c.silent, error);
        EXPECT_EQ(fake.shell.requests.back().flags, c.expected);
        EXPECT_EQ(fake.shell.requests.back().operation, 1u);
        EXPECT_EQ(fake.shell.requests.back().source, L"a\0b\0\0"s);
    }
    EXPECT_TRUE(run(file_operation::remove, L"\0\0a\0\0ж\0"s, L""));
    EXPECT_EQ(fake.shell.requests.back().source, L"a\0ж\0\0"s)
        << "an empty member would hide those behind it";
    EXPECT_EQ(fake.shell.requests.back().target, L"\0\0"s);
    EXPECT_EQ(error, ErrorRecord());
}

TEST_F(FileOperationTest, ShellDecidesAboutSuccess) {
    const ErrorRecord aborted{-1, L"Abbruch durch den Benutzer", {}};
    const struct {
        ShellFileResult result;
        ErrorRecord error;
    } cases[]{{{0, false}, {}},
              {{7, false}, {}},
              {{0, true}, aborted},
              {{7, true}, aborted},
              {{5, true}, {5, failure.description, {}}},
              {{1026, false}, {1026, failure.description, {}}}};
    for (const auto& c : cases) {
        fake.shell.results = {c.result};
        EXPECT_EQ(run(file_operation::move, L"a", L"b"), c.error.number == 0);
        EXPECT_EQ(error, c.error);
    }
    fake.shell.requests.clear();
    EXPECT_FALSE(run(file_operation::move, L"\0\0"s, L"b"));
    EXPECT_EQ(error, failure);
    EXPECT_TRUE(fake.shell.requests.empty());
}

TEST_F(FileOperationTest, CopiesAreCheckedOnArrival) {
    const ErrorRecord tooFew{9, L"Index außerhalb des gültigen Bereichs", {}};
    fake.disk.addFolder(L"C:\\in\\dir");
    fake.disk.addFile(L"C:\\in\\a.txt", "x");
    fake.disk.addFolder(L"D:\\x\\dir");
    fake.disk.addFile(L"D:\\x\\a.txt", "x");
    fake.disk.addFile(L"D:\\x\\b.txt");
    fake.disk.addFile(L"D:\\x\\file", "a file where a folder should be");
    const struct {
        std::wstring source, target;
        ErrorRecord error;
    } cases[]{
        {L"C:\\in\\a.txt\0C:\\in\\b.txt"s, L"D:\\x", {}},
        {L"C:\\in\\a.txt\0C:\\in\\c.txt"s, L"D:\\x\\", failure},
        {L"C:\\in\\a.txt", L"D:\\x", {}},
        {L"C:\\in\\c.txt", L"D:\\x", failure},
        {L"C:\\in\\c.txt", L"D:\\x\\a.txt", {}},
        {L"C:\\in\\c.txt", L"D:\\x\\c.txt", failure},
        {L"C:\\in\\a.txt\0C:\\in\\b.txt"s, L"D:\\x\\b.txt\0D:\\x\\a.txt"s, {}},
        {L"C:\\in\\a.txt\0C:\\in\\b.txt"s, L"D:\\x\\a.txt\0D:\\x\\c.txt"s, failure},
        {L"C:\\in\\a.txt\0C:\\in\\b.txt\0C:\\in\\c.txt"s, L"D:\\x\\a.txt\0D:\\x\\b.txt"s, tooFew},
        {L"C:\\in\\a.txt\0C:\\in\\b.txt"s, L"", tooFew},
        {L"C:\\in\\dir", L"D:\\x", {}},
        {L"C:\\in\\dir\\", L"D:\\x", {}},
        {L"C:\\in\\dir", L"D:\\x\\file", failure},
        {L"C:\\in\\*.txt", L"D:\\nowhere", {}},
        {L"C:\\in\\?.txt", L"D:\\nowhere", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.source + L" -> " + c.target);
        EXPECT_EQ(copy(c.source, c.target), c.error.number == 0);
        EXPECT_EQ(error, c.error);
    }
    // A folder whose target is not there becomes the target; a file goes into the folder that is made for it.
    fake.shell.onFileOperation = [&](auto&) { fake.disk.addFile(L"D:\\new\\a.txt", "x"); };
    EXPECT_TRUE(copy(L"C:\\in\\dir", L"D:\\new"));
    fake.disk.remove(L"D:\\new");
    EXPECT_TRUE(copy(L"C:\\in\\a.txt", L"D:\\new"));
}

TEST_F(FileOperationTest, FailuresAreReportedAndRetried) {
    answerWith({4, 4, 1});
    fake.shell.results = {{32, false}, {0, true}, {0, false}};
    fake.program.file = L"C:\\p\\Kalk-Ribbon__2.exe";
    const auto report = [&] {
        return FileOperation(rt, file_operation::copy, L"a\0b"s, L"C:\\t", true, false, 0, false, error);
    };
    EXPECT_FALSE(report());
    EXPECT_EQ(error, failure) << "the third run is done, but nothing has arrived";
    ASSERT_EQ(fake.shell.requests.size(), 3u);
    EXPECT_EQ(fake.shell.requests[2].flags, fake.shell.requests[0].flags);
    ASSERT_EQ(lastQuestion().size(), 3u);
    EXPECT_EQ(lastQuestion()[1], Value{L"\n\r\nQuelle: a ; b\r\nZiel:     C:\\t"s});
    EXPECT_EQ(lastQuestion()[2], Value{L"Fehler beim Kopieren von Dateien...   Kalk-Ribbon"s});

    answerWith({4});
    fake.shell.onFileOperation = [&](auto&) {
        if (fake.shell.results.empty()) {
            fake.disk.addFile(L"C:\\t\\a", "x");
            fake.disk.addFile(L"C:\\t\\b", "x");
        }
    };
    fake.shell.results = {{5, false}};
    EXPECT_FALSE(fake.disk.exists(L"C:\\t\\a"));
    EXPECT_TRUE(report());
    EXPECT_EQ(error, ErrorRecord());

    const struct {
        std::int32_t operation;
        std::wstring heading;
    } names[]{{1, L"Verschieben"}, {3, L"Löschen"}, {4, L"Umbenennen"}, {9, L""}};
    for (const auto& c : names) {
        answerWith({2});
        rt.suppressedLocation.clear();
        fake.shell.results = {{5, false}, {5, false}};
        EXPECT_FALSE(FileOperation(rt, c.operation, L"s", L"", true, false, 0, false, error));
        EXPECT_EQ(lastQuestion()[2], Value{L"Fehler beim " + c.heading + L" von Dateien...   Kalk-Ribbon"});
        const auto questions = fake.automation.log.size();
        EXPECT_FALSE(FileOperation(rt, c.operation, L"s", L"", true, false, 0, false, error));
        EXPECT_EQ(fake.automation.log.size(), questions) << "cancelled once, the same is not asked again";
        EXPECT_EQ(error.number, 5);
    }
}

TEST_F(FileOperationTest, QuietFailuresAndAMissingDisplayEndAtOnce) {
    fake.shell.results = {{5, false}, {5, false}};
    EXPECT_FALSE(FileOperation(rt, 1, L"a", L"b", true, true, 0, true, error));
    EXPECT_TRUE(fake.automation.log.empty());
    EXPECT_FALSE(FileOperation(rt, 1, L"a", L"b", true, false, 0, true, error));
    EXPECT_EQ(error, (ErrorRecord{5, L"Datei-Operation fehlgeschlagen", {}}));
    EXPECT_EQ(fake.shell.requests.size(), 2u);
}

} // namespace
} // namespace tarv
