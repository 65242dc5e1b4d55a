// What the real border does beyond the contract that it shares with the scripted one.

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/MachineFacts.h"
#include "platform/OwnProgram.h"
#include "platform/ProfileFiles.h"
#include "platform/windows/Handle.h"
#include "platform/windows/ProcessHardening.h"
#include "platform/windows/SystemText.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/support/ContractWorld.h"
#include "tests/windows/User.h"

namespace tarv {
namespace {

using Border = Contract;

/// Every test of this program runs hardened, as the product does: the components used elsewhere show that
/// they still load.
const bool hardened = (hardenProcess(), true);

TEST_F(Border, OwnVersionAndLibrariesFromTheSystemFolderOnly) {
    const FileVersion version = border.program.version();
    EXPECT_EQ(version.major * 10000 + version.minor * 100 + version.revision, 31415) << "not the product's";
    const std::wstring program = border.program.path();
    for (const std::wstring& folder : {std::wstring(), program.substr(0, program.rfind(L'\\') + 1)}) {
        const std::wstring planted = folder + L"tarv_planted.dll";
        ASSERT_TRUE(
            CopyFileW((border.machine.systemDirectory() + L"\\oleacc.dll").c_str(), planted.c_str(), FALSE));
        EXPECT_FALSE(LoadLibraryW(L"tarv_planted.dll")) << "beside the program or in the current folder";
        EXPECT_TRUE(DeleteFileW(planted.c_str()) && hardened);
    }
}

TEST_F(Border, NamesAreTakenAsTheyAre) {
    world->putFolder(path(L"ж ä"));
    const std::wstring file = path(L"ж ä\\ж.ini");
    EXPECT_EQ(border.files.overwrite(file, "[Info]\r\nProgVersion=12.3\r\n"), 0u);
    EXPECT_EQ(border.profiles.getString(L"Info", L"ProgVersion", L"none", 100, file), L"12.3");
    EXPECT_TRUE(border.profiles.writeString(L"Info", L"Neu", L"1", file));
    EXPECT_EQ(border.profiles.getString(L"Info", L"Neu", L"none", 100, file), L"1");

    const std::wstring tail(300, L'x');
    const std::pair<std::wstring, std::wstring> longNames[] = {
        {L"C:\\a\\..\\b", L"C:\\a\\..\\b"},
        {L"C:\\a\\..\\b/" + tail, L"\\\\?\\C:\\b\\" + tail},
        {L"\\\\server\\share\\" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
        {L"\\\\?\\C:\\" + tail, L"\\\\?\\C:\\" + tail},
        {tail, L"\\\\?\\" + border.files.currentDirectory() + L"\\" + tail}};
    for (const auto& [name, expected] : longNames)
        EXPECT_EQ(toFileName(name), expected);
}

TEST_F(Border, AppendersDoNotOverwriteEachOther) {
    const std::wstring file = path(L"trace.txt");
    const HANDLE other = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
    DWORD written = 0;
    WriteFile(other, "aa", 2, &written, nullptr);
    EXPECT_EQ(border.files.append(file, "bb"), 0u);
    WriteFile(other, "cc", 2, &written, nullptr);
    EXPECT_EQ(world->bytes(file), "aabbcc");
    EXPECT_EQ(border.files.overwrite(file, "d"), system_code::sharingViolation)
        << "it would cut the other's lines";
    CloseHandle(other);
    EXPECT_EQ(border.files.overwrite(file, "d"), 0u) << "a hidden file is no obstacle";
    EXPECT_EQ(world->bytes(file), "d");
}

constexpr UINT counted = WM_APP + 1, reposted = WM_APP + 2;
int arrived = 0, filtered = 0;

LRESULT CALLBACK countMessages(HWND window, UINT message, WPARAM first, LPARAM second) {
    arrived += message == counted;
    if (message == reposted)
        PostMessageW(window, reposted, 0, 0);
    return DefWindowProcW(window, message, first, second);
}

TEST_F(Border, PumpIsBoundedFilteredAndEndsAtQuit) {
    WindowsPlatform windows;
    Desktop& desktop = windows.border().desktop;
    const HWND window =
        CreateWindowW(L"STATIC", L"Test", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(countMessages));
    PostMessageW(window, reposted, 0, 0);
    PostMessageW(window, counted, 0, 0);
    const ULONGLONG start = GetTickCount64();
    desktop.pumpMessages();
    EXPECT_LT(GetTickCount64() - start, 5000u) << "messages that post messages";
    EXPECT_EQ(arrived, 1) << "what waited at the start is handled";

    windows.setMessageFilter([](MSG& message) { return filtered += message.message == counted, true; });
    PostMessageW(window, counted, 0, 0);
    desktop.pumpMessages();
    EXPECT_EQ(filtered, 1);
    EXPECT_EQ(arrived, 1);
    PostQuitMessage(7);
    for (int again = 0; again < 2; ++again) {
        desktop.pumpMessages();
        EXPECT_TRUE(desktop.quitPending());
    }
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u) << "the exit code survives";
    DestroyWindow(window);
}

TEST_F(Border, MessageBoxBelongsToTheActiveFormAndGivesTheButton) {
    const HWND form = CreateWindowW(L"STATIC", L"Test", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr,
                                    GetModuleHandleW(nullptr), nullptr);
    SetActiveWindow(form);
    EXPECT_EQ(border.desktop.activeForm(), toBorder(form));
    User user(IDNO);
    EXPECT_EQ(border.desktop.messageBox(L"Text ж", L"Frage ж", message_box::yesNo | message_box::systemModal),
              message_box::answerNo);
    EXPECT_EQ(user.owner, form);
    EXPECT_TRUE(user.texts.starts_with(L"|Frage ж|") && user.texts.find(L"|Text ж|") != user.texts.npos);
    DestroyWindow(form);
}

TEST_F(Border, ValuesAndFailuresCrossToComponents) {
    const ObjectRef document = border.automation.create(L"Msxml2.DOMDocument.6.0").valueOr(nullptr);
    ASSERT_TRUE(document && document->put(L"async", false));
    EXPECT_EQ(*document->get(L"ASYNC"), Value(false)) << "names have no case";
    ASSERT_TRUE(document->call(L"loadXML", {L"<r><c>ж ä</c><c/></r>"}));
    const auto object = [](const Automated<Value>& answer) { return std::get<ObjectRef>(*answer); };
    const ObjectRef element = object(document->get(L"documentElement"));
    EXPECT_EQ(*element->call(L"getAttribute", {L"none"}), Value(Null{}));
    EXPECT_EQ(object(element->call(L"selectSingleNode", {L"missing"})), nullptr);
    const ObjectRef nodes = object(element->call(L"selectNodes", {L"c"}));
    EXPECT_EQ(nodes->items()->size(), 2u);
    const Value first[] = {std::int32_t{0}};
    const ObjectRef node = object(nodes->get(std::int32_t{0}, first)); // the default member, by number
    ASSERT_TRUE(element->call(L"appendChild", {node}) && document->put(L"documentElement", node));
    EXPECT_EQ(*object(document->get(L"documentElement"))->get(L"text"), Value(L"ж ä"));
    const std::pair<Value, const wchar_t*> values[] = {
        {L"", L""}, {true, L"-1"}, {std::int16_t{-3}, L"-3"}, {70000, L"70000"}, {2.0, L"2"}};
    for (const auto& [value, stored] : values) {
        ASSERT_TRUE(node->call(L"setAttribute", {L"v", value}));
        EXPECT_EQ(*node->call(L"getAttribute", {L"v"}), Value(stored));
    }
    EXPECT_EQ(document->call(L"noSuchMember", {}).error().number, 438);
    EXPECT_FALSE(document->call(L"selectNodes", {L"[["}).error().description.empty());
    EXPECT_FALSE(document->call(L"appendChild", {ObjectRef()})) << "no object, but no crash either";
    EXPECT_FALSE(document->call(L"hasChildNodes", {1, 2, 3, 4, 5, 6}));

    const auto record = std::make_shared<ErrorRecord>(ErrorRecord{53, L"", L""});
    const ObjectRef error = border.automation.errorObject(record);
    EXPECT_EQ(*error->get(std::int32_t{0}), Value(53)) << "the number is the default property";
    EXPECT_TRUE(error->put(L"Number", L"-7") && error->put(L"Source", std::int16_t{3}));
    EXPECT_FALSE(error->put(L"Number", L"keine Zahl"));
    EXPECT_EQ(*record, (ErrorRecord{-7, L"", L"3"}));
}

TEST_F(Border, LibrariesAreTakenByFullPathOnly) {
    const std::wstring system = border.machine.systemDirectory();
    const wchar_t *document = L"{2933BF90-7B36-11D2-B20E-00C04F983E60}", *none = L"{1}";
    EXPECT_TRUE(border.automation.createFromLibrary(system + L"\\msxml3.dll", document));
    for (const auto& [file, id] : {std::pair(std::wstring(L"msxml3.dll"), document),
                                   {system + L"\\msxml3.dll", none},
                                   {system + L"\\kernel32.dll", document}})
        EXPECT_EQ(border.automation.createFromLibrary(file, id).error().number, 429) << file;
}

} // namespace
} // namespace tarv
