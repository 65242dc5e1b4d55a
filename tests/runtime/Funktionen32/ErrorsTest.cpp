#include "runtime/Funktionen32/Errors.h"

#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/FileOperation.h"
#include "tests/support/Scripted.h"

#include <tuple>

namespace tarv {
namespace {

struct ErrorReport : Scripted {
    ErrorRecord error{53, L"Datei nicht gefunden", L"Quelle"};
    /// What the display answers to "EMW", one after the other; then Empty.
    std::deque<Value> answers;
    bool clears = false;
    std::vector<Value> lastQuestion;
    std::shared_ptr<FakeObject> display = fake.automation.object(L"display");

    ErrorReport() {
        display->answers(L"ErrorMsg", Empty{}).answers(L"NoVisibleNextMsg=", Empty{});
        display->runs(L"EMW", [this](std::span<const Value> arguments) {
            lastQuestion.assign(arguments.begin(), arguments.end());
            if (clears)
                static_cast<void>(std::get<ObjectByRef>(arguments[0]).object->put(L"Number", 0));
            return nextOf(answers, Value());
        });
        fake.automation.provided.emplace(errorDisplayProgId, display);
    }
};

TEST_F(ErrorReport, HandsTheErrorByReferenceWithBothTexts) {
    display->runs(L"ErrorMsg", [&](std::span<const Value> arguments) {
        AutomationObject& object = *std::get<ObjectByRef>(arguments[0]).object;
        EXPECT_EQ(*object.get(L"Number"), Value(std::int32_t{7}));
        EXPECT_EQ(*object.get(L"Source"), Value(std::wstring(L"Quelle")));
        EXPECT_EQ(arguments[1], Value(std::wstring(L"Ort")));
        EXPECT_EQ(arguments[2], Value(std::wstring(L"Zusatz")));
        static_cast<void>(object.put(L"Description", std::wstring(L"angezeigt")));
        return Value();
    });
    ShowErrorMsg(rt, error, L"Ort", L"Zusatz", true, 7);
    EXPECT_EQ(error, (ErrorRecord{7, L"angezeigt", L"Quelle"}));
    EXPECT_EQ(fake.automation.log.at(1).what, L"put display.NoVisibleNextMsg=");
    ShowErrorMsg(rt, error, L"Ort", L"Zusatz");
    EXPECT_EQ(fake.faults.calls("Automation.create"), 2) << "a new display for each report";
    EXPECT_EQ(fake.faults.calls("AutomationObject.put"), 1 + 2) << "the setting is not asked for again";
}

TEST_F(ErrorReport, LibraryBesideTheProgramStandsInForAMissingRegistration) {
    fake.automation.provided = {
        {L"C:\\Program Files\\TARVENIK\\rk_Runtime.dll" + std::wstring(errorDisplayClassId), display}};
    ShowErrorMsg(rt, error, L"Ort", {});
    EXPECT_EQ(fake.automation.log.back().what, L"call display.ErrorMsg");
    fake.automation.provided.clear();
    EXPECT_EQ(AskErrorMsg(rt, error, L"Ort", {}), 0);
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(ErrorReport, CancelSilencesTheSameLocationUntilAnotherAnswer) {
    const std::tuple<const wchar_t*, std::int32_t, bool> steps[] = {
        {L"A", 4, true}, {L"A", 2, true},  {L"A", 4, false}, {L"a", 2, true},
        {L"A", 2, true}, {L"A", 4, false}, {L"B", 1, true},  {L"A", 2, true},
        {L"", 2, true},  {L"", 4, true},   {L"A", 4, true}};
    for (const auto& [location, given, asked] : steps) {
        answers = {given};
        error.number = 53;
        EXPECT_EQ(AskErrorMsg(rt, error, location, {}, false, 8), asked ? given : 2) << location;
        EXPECT_EQ(error.number, asked ? 8 : 53) << location;
    }
}

TEST_F(ErrorReport, FileOperationsAreRetriedAsLongAsTheUserWants) {
    fake.facts.program = L"C:\\p\\Kalk-Ribbon__2.exe";
    const auto run = [&](std::int32_t operation) {
        return FileOperation(rt, operation, std::wstring_view(L"a\0b", 3), L"C:\\t", true, false, 0, false,
                             error);
    };
    answers = {4, 4, 1};
    clears = true;
    fake.shell.results = {{32, false}, {0, true}, {0, false}};
    EXPECT_FALSE(run(file_operation::copy));
    EXPECT_EQ(error.number, -1) << "the third run is done, but nothing has arrived";
    EXPECT_EQ(fake.shell.requests.size(), 3u);
    EXPECT_EQ(lastQuestion.at(1), Value(std::wstring(L"\n\r\nQuelle: a ; b\r\nZiel:     C:\\t")));
    fake.shell.onFileOperation = [&] {
        if (fake.shell.results.empty())
            fake.disk.addFile(L"C:\\t\\a"), fake.disk.addFile(L"C:\\t\\b");
    };
    answers = {4};
    fake.shell.results = {{5, false}};
    EXPECT_TRUE(run(file_operation::copy));
    EXPECT_EQ(error, ErrorRecord());

    const std::pair<std::int32_t, const wchar_t*> names[]{
        {1, L"Verschieben"}, {2, L"Kopieren"}, {3, L"Löschen"}, {4, L"Umbenennen"}, {9, L""}};
    for (const auto& [operation, name] : names) {
        answers = {2};
        rt.suppressedLocation.clear();
        fake.shell.results = {{5, false}, {5, false}};
        EXPECT_FALSE(run(operation));
        const std::wstring extra = std::wstring(L"Fehler beim ") + name + L" von Dateien...   Kalk-Ribbon";
        EXPECT_EQ(lastQuestion.at(2), Value(extra));
        const auto questions = fake.automation.log.size();
        EXPECT_FALSE(run(operation));
        EXPECT_EQ(fake.automation.log.size(), questions) << "cancelled once, the same is not asked again";
        EXPECT_EQ(error.number, 5);
    }
}

} // namespace
} // namespace tarv
