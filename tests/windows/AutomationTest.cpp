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

    /// The root element of a document of its own.
    ObjectRef root(const wchar_t* xml) {
        const ObjectRef document = parser();
        return document && document->call(L"loadXML", {std::wstring(xml)})
                   ? object(document->get(L"documentElement"))
                   : nullptr;
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
    EXPECT_NE(text(systems->front()->get(L"Version")).find(L'.'), std::wstring::npos);
}

TEST_F(AutomationTest, ValuesCrossBothWays) {
    const ObjectRef document = parser();
    ASSERT_TRUE(document);
    ASSERT_TRUE(document->put(L"async", false));
    EXPECT_EQ(*document->get(L"ASYNC"), Value(false)) << "names have no case";

    EXPECT_EQ(*document->call(L"loadXML", {std::wstring(L"<r a='1'><c>\u0436 \u00e4</c><c/></r>")}),
              Value(true));
    const ObjectRef element = object(document->get(L"documentElement"));
    ASSERT_TRUE(element);
    EXPECT_EQ(text(element->call(L"getAttribute", {std::wstring(L"a")})), L"1");
    EXPECT_EQ(*element->call(L"getAttribute", {std::wstring(L"none")}), Value(Null{}));

    const ObjectRef none = object(element->call(L"selectSingleNode", {std::wstring(L"missing")}));
    EXPECT_FALSE(none) << "no object is an empty reference";
    const ObjectRef nodes = object(element->call(L"selectNodes", {std::wstring(L"c")}));
    ASSERT_TRUE(nodes);
    EXPECT_EQ(*nodes->get(L"length"), Value(std::int32_t{2}));
    EXPECT_EQ(nodes->items()->size(), 2u);
    const Value first[] = {std::int32_t{0}};
    const ObjectRef node = object(nodes->get(std::int32_t{0}, first));
    ASSERT_TRUE(node) << "the default member by its number, with an argument";
    EXPECT_EQ(text(node->get(L"text")), L"\u0436 \u00e4");

    // An object as an argument: the node moves to the end.
    ASSERT_TRUE(element->call(L"appendChild", {node}));
    EXPECT_EQ(text(object(element->get(L"lastChild"))->get(L"text")), L"\u0436 \u00e4");
    EXPECT_TRUE(document->put(L"documentElement", node)) << "an object is set by reference";
    EXPECT_EQ(text(object(document->get(L"documentElement"))->get(L"text")), L"\u0436 \u00e4");
}

TEST_F(AutomationTest, FailuresCarryWhatTheComponentSays) {
    const ObjectRef document = parser();
    ASSERT_TRUE(document);
    const auto member = document->call(L"noSuchMember", {});
    ASSERT_FALSE(member);
    EXPECT_EQ(member.error().number, 438);

    const ObjectRef element = root(L"<r/>");
    ASSERT_TRUE(element);
    const auto query = element->call(L"selectNodes", {std::wstring(L"[[")});
    ASSERT_FALSE(query);
    EXPECT_NE(query.error().number, 0);
    EXPECT_FALSE(query.error().description.empty());
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

    const struct {
        std::wstring path, classId;
    } refused[] = {{L"msxml3.dll", classId},
                   {std::wstring(system) + L"\\none.dll", classId},
                   {library, L"{00000000-0000-0000-0000-000000000001}"},
                   {library, L"no class"},
                   {std::wstring(system) + L"\\kernel32.dll", classId}};
    for (const auto& attempt : refused) {
        const auto answer = automation.createFromLibrary(attempt.path, attempt.classId);
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error().number, 429);
    }
}

TEST_F(AutomationTest, ErrorObjectConvertsWhatAComponentWrites) {
    const auto record = std::make_shared<ErrorRecord>(ErrorRecord{53, L"", L""});
    const ObjectRef error = automation.errorObject(record);
    EXPECT_EQ(*error->get(std::int32_t{0}), Value(std::int32_t{53})) << "the number is the default property";
    EXPECT_TRUE(error->put(L"Number", std::wstring(L"-7")));
    EXPECT_TRUE(error->put(L"Source", std::int16_t{3}));
    EXPECT_FALSE(error->put(L"Number", std::wstring(L"keine Zahl")));
    EXPECT_EQ(*record, (ErrorRecord{-7, L"", L"3"}));

    const ObjectRef other = automation.errorObject(std::make_shared<ErrorRecord>(ErrorRecord{76, L"", L""}));
    EXPECT_TRUE(error->put(L"Number", ObjectByRef{other})) << "read through the reference";
    EXPECT_EQ(record->number, 76);

    EXPECT_TRUE(error->call(L"Clear", {}));
    EXPECT_EQ(*record, ErrorRecord());
}

TEST_F(AutomationTest, ArgumentsOfEveryKindArrive) {
    const ObjectRef element = root(L"<r/>");
    ASSERT_TRUE(element);
    const struct {
        Value value;
        const wchar_t* stored;
    } cases[] = {{std::wstring(L""), L""},  {std::wstring(L"\u0436"), L"\u0436"}, {true, L"-1"},
                 {std::int16_t{-3}, L"-3"}, {std::int32_t{70000}, L"70000"},      {2.0, L"2"}};
    for (const auto& one : cases) {
        ASSERT_TRUE(element->call(L"setAttribute", {std::wstring(L"v"), one.value}));
        EXPECT_EQ(text(element->call(L"getAttribute", {std::wstring(L"v")})), one.stored);
    }
    EXPECT_FALSE(element->call(L"appendChild", {ObjectRef()})) << "no object, but no crash either";
    EXPECT_FALSE(element->call(L"hasChildNodes", {1, 2, 3, 4, 5, 6}));
}

} // namespace
} // namespace tarv
