#include "platform/Automation.h"
#include "platform/windows/WindowsPlatform.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

namespace tarv {
namespace {

std::wstring text(const Automated<Value>& answer) {
    if (!answer) {
        return L"failed: " + answer.error().description;
    }
    const auto* const value = std::get_if<std::wstring>(&*answer);
    return value != nullptr ? *value : L"not a text: kind " + std::to_wstring(answer->index());
}

ObjectRef object(const Automated<Value>& answer) {
    const auto* const value = answer ? std::get_if<ObjectRef>(&*answer) : nullptr;
    return value != nullptr ? *value : nullptr;
}

class AutomationTest : public testing::Test {
protected:
    AutomationTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~AutomationTest() override { CoUninitialize(); }

    ObjectRef parser() {
        auto document = automation.create(L"Msxml2.DOMDocument.6.0");
        return document ? *document : nullptr;
    }

    WindowsPlatform windows;
    Automation& automation = windows.border().automation;
};

TEST_F(AutomationTest, ManagementServiceAnswersAQueryWithObjects) {
    const auto service = automation.bind(L"winmgmts:");
    ASSERT_TRUE(service);
    const ObjectRef result =
        object((*service)->call(L"ExecQuery", {std::wstring(L"SELECT * FROM Win32_OperatingSystem")}));
    ASSERT_TRUE(result);
    const auto systems = result->items();
    ASSERT_TRUE(systems);
    ASSERT_EQ(systems->size(), 1u);
    EXPECT_NE(text(systems->front()->get(L"Caption")).find(L"Windows"), std::wstring::npos);
}

TEST_F(AutomationTest, ValuesCrossBothWays) {
    const ObjectRef document = parser();
    ASSERT_TRUE(document);
    ASSERT_TRUE(document->put(L"async", false));
    EXPECT_EQ(*document->get(L"ASYNC"), Value(false)) << "names have no case";
    ASSERT_TRUE(document->call(L"loadXML", {std::wstring(L"<r><c>\u0436 \u00e4</c><c/></r>")}));
    const ObjectRef element = object(document->get(L"documentElement"));
    ASSERT_TRUE(element);
    EXPECT_EQ(*element->call(L"getAttribute", {std::wstring(L"none")}), Value(Null{}));
    EXPECT_FALSE(object(element->call(L"selectSingleNode", {std::wstring(L"missing")})));
    const ObjectRef nodes = object(element->call(L"selectNodes", {std::wstring(L"c")}));
    ASSERT_TRUE(nodes);
    EXPECT_EQ(*nodes->get(L"length"), Value(std::int32_t{2}));
    EXPECT_EQ(nodes->items()->size(), 2u);
    const Value first[] = {std::int32_t{0}};
    const ObjectRef node = object(nodes->get(std::int32_t{0}, first));
    ASSERT_TRUE(node) << "the default member by its number, with an argument";

    ASSERT_TRUE(element->call(L"appendChild", {node})) << "an object as an argument";
    EXPECT_EQ(text(object(element->get(L"lastChild"))->get(L"text")), L"\u0436 \u00e4");
    EXPECT_TRUE(document->put(L"documentElement", node)) << "an object is set by reference";
    EXPECT_EQ(text(object(document->get(L"documentElement"))->get(L"text")), L"\u0436 \u00e4");

    const std::pair<Value, const wchar_t*> cases[] = {{std::wstring(), L""},
                                                      {true, L"-1"},
                                                      {std::int16_t{-3}, L"-3"},
                                                      {std::int32_t{70000}, L"70000"},
                                                      {2.0, L"2"}};
    for (const auto& [value, stored] : cases) {
        ASSERT_TRUE(node->call(L"setAttribute", {std::wstring(L"v"), value}));
        EXPECT_EQ(text(node->call(L"getAttribute", {std::wstring(L"v")})), stored);
    }
}

TEST_F(AutomationTest, FailuresCarryWhatTheComponentSays) {
    const ObjectRef document = parser();
    ASSERT_TRUE(document && document->call(L"loadXML", {std::wstring(L"<r/>")}));
    EXPECT_EQ(document->call(L"noSuchMember", {}).error().number, 438);
    const auto query = document->call(L"selectNodes", {std::wstring(L"[[")});
    ASSERT_FALSE(query);
    EXPECT_NE(query.error().number, 0);
    EXPECT_FALSE(query.error().description.empty());
    EXPECT_FALSE(document->call(L"appendChild", {ObjectRef()})) << "no object, but no crash either";
    EXPECT_FALSE(document->call(L"hasChildNodes", {1, 2, 3, 4, 5, 6}));
}

TEST_F(AutomationTest, LibrariesAreTakenByFullPathOnly) {
    wchar_t system[MAX_PATH];
    GetSystemDirectoryW(system, MAX_PATH);
    const std::wstring library = std::wstring(system) + L"\\msxml3.dll";
    // DOMDocument, the version without a number in its name.
    const wchar_t* const classId = L"{2933BF90-7B36-11D2-B20E-00C04F983E60}";
    const auto made = automation.createFromLibrary(library, classId);
    ASSERT_TRUE(made) << made.error().number;
    EXPECT_EQ(*(*made)->call(L"loadXML", {std::wstring(L"<a/>")}), Value(true));

    const std::pair<std::wstring, const wchar_t*> refused[] = {
        {L"msxml3.dll", classId},
        {library, L"{00000000-0000-0000-0000-000000000001}"},
        {std::wstring(system) + L"\\kernel32.dll", classId}};
    for (const auto& [path, id] : refused)
        EXPECT_EQ(automation.createFromLibrary(path, id).error().number, 429) << path;
}

TEST_F(AutomationTest, ErrorObjectConvertsWhatAComponentWrites) {
    const auto record = std::make_shared<ErrorRecord>(ErrorRecord{53, L"", L""});
    const ObjectRef error = automation.errorObject(record);
    EXPECT_EQ(*error->get(std::int32_t{0}), Value(std::int32_t{53})) << "the number is the default property";
    EXPECT_TRUE(error->put(L"Number", std::wstring(L"-7")));
    EXPECT_TRUE(error->put(L"Source", std::int16_t{3}));
    EXPECT_FALSE(error->put(L"Number", std::wstring(L"keine Zahl")));
    EXPECT_EQ(*record, (ErrorRecord{-7, L"", L"3"}));

    EXPECT_TRUE(error->call(L"Clear", {}));
    EXPECT_EQ(*record, ErrorRecord());
}

} // namespace
} // namespace tarv
