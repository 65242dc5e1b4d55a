#include "runtime/Funktionen32/ErrorReport.h"

#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Runtime.h"
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

struct ErrorReport : testing::Test {
    FakePlatform fake;
    Runtime rt{fake.border};
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
    ErrorRecord seen;
    display->runs(L"ErrorMsg", [&](std::span<const Value> arguments) {
        AutomationObject& object = *std::get<ObjectByRef>(arguments[0]).object;
        seen = {std::get<std::int32_t>(*object.get(L"Number")),
                std::get<std::wstring>(*object.get(L"Description")),
                std::get<std::wstring>(*object.get(L"Source"))};
        EXPECT_EQ(arguments[1], Value(std::wstring(L"Ort")));
        EXPECT_EQ(arguments[2], Value(std::wstring(L"Zusatz")));
        static_cast<void>(object.put(L"Description", std::wstring(L"angezeigt")));
        return Value();
    });
    ShowErrorMsg(rt, error, L"Ort", L"Zusatz", false, 7);
    EXPECT_EQ(seen, (ErrorRecord{7, L"Datei nicht gefunden", L"Quelle"}));
    EXPECT_EQ(error, (ErrorRecord{7, L"angezeigt", L"Quelle"}));
}

TEST_F(ErrorReport, OnlyTheWishForQuietIsPassedOn) {
    ShowErrorMsg(rt, error, L"Ort", {}, true);
    ShowErrorMsg(rt, error, L"Ort", {});
    const std::wstring creation = L"create rk_Runtime.rk_Fehler";
    EXPECT_EQ(fake.automation.uses(),
              (std::vector<std::wstring>{creation, L"put display.NoVisibleNextMsg", L"call display.ErrorMsg",
                                         creation, L"call display.ErrorMsg"}));
    EXPECT_EQ(error.number, 53);
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
    EXPECT_EQ(AskErrorMsg(rt, error, L"Ort", {}, false, 9), 0);
    EXPECT_EQ(fake.automation.log.size(), 2U) << "both ways tried, nothing called";
    EXPECT_EQ(error.number, 9);
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
    const struct {
        const wchar_t* location;
        std::int32_t answer; // 0: must not be asked
        std::int32_t expected;
    } steps[] = {
        {L"A", 4, 4}, {L"A", 2, 2}, {L"A", 0, 2}, {L"a", 2, 2}, {L"A", 2, 2}, {L"A", 0, 2},
        {L"B", 1, 1}, {L"A", 2, 2}, {L"", 2, 2},  {L"", 4, 4},  {L"A", 4, 4},
    };
    for (const auto& step : steps) {
        answer = step.answer;
        error.number = 53;
        EXPECT_EQ(AskErrorMsg(rt, error, step.location, {}, false, 8), step.expected) << step.location;
        EXPECT_EQ(error.number, step.answer == 0 ? 53 : 8) << step.location;
    }
}

} // namespace
} // namespace tarv
