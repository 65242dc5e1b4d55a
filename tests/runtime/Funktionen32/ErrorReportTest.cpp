#include "runtime/Funktionen32/ErrorReport.h"

#include "runtime/Funktionen32/ErrorDisplay.h"
#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

struct ErrorReport : Scripted {
    ErrorRecord error{53, L"Datei nicht gefunden", L"Quelle"};
    /// What the display answers to "EMW".
    Value answer;
    std::shared_ptr<FakeObject> display = fake.automation.object(L"display");

    ErrorReport() {
        display->property(L"NoVisibleNextMsg").answers(L"ErrorMsg", Empty{});
        display->runs(L"EMW", [this](std::span<const Value>) { return answer; });
        fake.automation.provide(errorDisplayProgId, display);
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
    ShowErrorMsg(rt, error, L"Ort", L"Zusatz");
    const std::wstring creation = L"create rk_Runtime.rk_Fehler", call = L"call display.ErrorMsg";
    std::vector<std::wstring> uses = fake.automation.uses();
    std::erase_if(uses, [](const auto& use) { return use.find(L"error.") != use.npos; });
    EXPECT_EQ(uses,
              (std::vector{creation, std::wstring(L"put display.NoVisibleNextMsg"), call, creation, call}));
}

TEST_F(ErrorReport, LibraryBesideTheProgramStandsInForAMissingRegistration) {
    const std::wstring library =
        L"C:\\Program Files\\TARVENIK\\rk_Runtime.dll" + std::wstring(errorDisplayClassId);
    fake.automation.forget(errorDisplayProgId);
    fake.automation.provide(library, display);
    ShowErrorMsg(rt, error, L"Ort", {});
    EXPECT_EQ(fake.automation.uses().back(), L"call display.ErrorMsg");

    fake.automation.forget(library);
    fake.automation.log.clear();
    EXPECT_EQ(AskErrorMsg(rt, error, L"Ort", {}), 0);
    EXPECT_EQ(fake.automation.log.size(), 2U) << "both ways tried, nothing called";
    EXPECT_TRUE(fake.desktop.boxes.empty());
}

TEST_F(ErrorReport, AnswerIsAMessageBoxCode) {
    const std::pair<Value, std::int32_t> cases[] = {
        {std::int32_t{4}, 4}, {std::int16_t{4}, 4},       {4.0, 4},
        {1e300, 0},           {std::wstring(L"vier"), 0}, {Empty{}, 0}};
    for (const auto& [given, expected] : cases) {
        answer = given;
        EXPECT_EQ(AskErrorMsg(rt, error, L"Ort", {}), expected) << answer.index();
    }
    fake.faults.fail("AutomationObject.call", 5);
    EXPECT_EQ(AskErrorMsg(rt, error, L"Ort", {}), 0);
}

TEST_F(ErrorReport, CancelSilencesTheSameLocationUntilAnotherAnswer) {
    const std::tuple<const wchar_t*, std::int32_t, bool> steps[] = {
        {L"A", 4, true}, {L"A", 2, true},  {L"A", 4, false}, {L"a", 2, true},
        {L"A", 2, true}, {L"A", 4, false}, {L"B", 1, true},  {L"A", 2, true},
        {L"", 2, true},  {L"", 4, true},   {L"A", 4, true}};
    for (const auto& [location, given, asked] : steps) {
        answer = given;
        error.number = 53;
        EXPECT_EQ(AskErrorMsg(rt, error, location, {}, false, 8), asked ? given : 2) << location;
        EXPECT_EQ(error.number, asked ? 8 : 53) << location;
    }
}

} // namespace
} // namespace tarv
