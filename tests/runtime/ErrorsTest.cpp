#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Funktionen32.h"
#include "runtime/Runtime.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct ErrorsCase : World {
    ErrorsCase() { fake.automation.provided.emplace(errorDisplayProgId, display); }
    ErrorRecord error{53, L"Datei nicht gefunden", L"Quelle"};
    std::shared_ptr<FakeObject> display =
        fake.automation.object({{L"ErrorMsg", Empty{}}, {L"NoVisibleNextMsg=", Empty{}}});
};

TEST(Tables, Errors) {
    checkTable<ErrorsCase>("Errors.txt", {{L"AskErrorMsg",
                                           [](auto& w, const Row& row) {
                                               w.display->answers(L"EMW", valueOf(row[0]));
                                               return std::to_wstring(AskErrorMsg(w.rt, w.error, L"Ort", {}));
                                           }},
                                          {L"runtimeErrorRecord", [](auto&, const Row& row) {
                                               return runtimeErrorRecord(row.number(0)).description;
                                           }}});
}

struct Errors : testing::Test, ErrorsCase {};

TEST_F(Errors, TheErrorGoesByReferenceWithBothTexts) {
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
    EXPECT_EQ(fake.automation.log.at(0).arguments.at(0), Value(true)) << "first the setting";
    EXPECT_EQ(error, (ErrorRecord{7, L"angezeigt", L"Quelle"}));
    ShowErrorMsg(rt, error, L"Ort", L"Zusatz");
    EXPECT_EQ(fake.faults.calls("Automation.create"), 2) << "a new display for each report";
    AskErrorMsg(rt, error, L"Ort", {});
    EXPECT_EQ(fake.faults.calls("AutomationObject.put"), 1 + 2) << "no setting where none is asked for";
}

TEST_F(Errors, LibraryBesideTheProgramStandsInForAMissingRegistration) {
    fake.automation.provided = {
        {L"C:\\Program Files\\TARVENIK\\rk_Runtime.dll" + std::wstring(errorDisplayClassId), display}};
    ShowErrorMsg(rt, error, L"Ort", {});
    EXPECT_EQ(fake.automation.log.back().member, L"ErrorMsg");
}

TEST_F(Errors, CancelSilencesTheSameLocationUntilAnotherAnswer) {
    const std::tuple<const wchar_t*, std::int32_t, bool> steps[] = {
        {L"A", 4, true}, {L"A", 2, true},  {L"A", 4, false}, {L"a", 2, true},
        {L"A", 2, true}, {L"A", 4, false}, {L"B", 1, true},  {L"A", 2, true},
        {L"", 2, true},  {L"", 4, true},   {L"A", 4, true}};
    for (const auto& [location, given, asked] : steps) {
        display->answers(L"EMW", given);
        error.number = 53;
        EXPECT_EQ(AskErrorMsg(rt, error, location, {}, false, 8), asked ? given : 2) << location;
        EXPECT_EQ(error.number, asked ? 8 : 53) << location;
    }
}

} // namespace
} // namespace tarv
