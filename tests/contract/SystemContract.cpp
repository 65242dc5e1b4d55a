#include "ContractWorld.h"
#include "platform/Automation.h"
#include "platform/FileStore.h"
#include "platform/SystemFacts.h"

namespace tarv {
namespace {

struct SystemContract : testing::Test, ContractWorld {};

TEST_F(SystemContract, CodePageIsTheWesternOne) {
    // The five codes without a character pass through as control characters.
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    EXPECT_EQ(border.facts->toAnsi(border.facts->fromAnsi(all)), all);
    EXPECT_EQ(border.facts->fromAnsi("\x80\x84\xE4\xDF"), L"€„äß");
    EXPECT_EQ(border.facts->toAnsi(L"Länge 5 € ж"), "L\xE4nge 5 \x80 ?");
}

TEST_F(SystemContract, MachineFactsHaveTheirForm) {
    const VersionInfo version = border.facts->windowsVersion();
    EXPECT_GT(version.major, 0u);
    EXPECT_EQ(version.servicePack.size(), 128u);
    EXPECT_NE(version.servicePack.find(L'\0'), std::wstring::npos);
    const std::wstring windows = border.facts->windowsDirectory(256);
    for (const std::wstring& folder : {windows, border.facts->systemDirectory()}) {
        EXPECT_TRUE(border.files->attributes(folder).valueOr(0) & attribute::directory);
        EXPECT_FALSE(folder.ends_with(L'\\'));
    }
    EXPECT_EQ(border.facts->windowsDirectory(static_cast<std::uint32_t>(windows.size())), L"");
    EXPECT_EQ(border.facts->windowsDirectory(static_cast<std::uint32_t>(windows.size()) + 1), windows);
}

TEST_F(SystemContract, AutomationNamesItsFailuresAndWritesIntoErrorRecords) {
    EXPECT_EQ(border.automation->create(L"Tarvenik.GibtEsNicht").error().number, 429);
    EXPECT_FALSE(border.automation->bind(L"gibtesnicht:"));
    const auto record = std::make_shared<ErrorRecord>(ErrorRecord{53, L"Datei nicht gefunden", L"Prüfung"});
    const ObjectRef object = border.automation->errorObject(record);
    EXPECT_EQ(object->get(L"number").valueOr({}), Value(std::int32_t{53}));
    EXPECT_EQ(object->get(L"Source").valueOr({}), Value(L"Prüfung"));
    EXPECT_TRUE(object->put(L"Number", std::int32_t{-1}) && object->put(L"Description", Value(L"neu")));
    EXPECT_EQ(*record, (ErrorRecord{-1, L"neu", L"Prüfung"}));
    EXPECT_EQ(object->get(L"Farbe").error().number, 438);
    EXPECT_EQ(object->put(L"Farbe", true).error().number, 438);
}

} // namespace
} // namespace tarv
