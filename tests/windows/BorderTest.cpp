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

TEST_F(Border, NamesAreTakenAsTheyAreAndLibrariesByFullPathOnly) {
    const FileVersion version = border.program.version();
    EXPECT_EQ(version.major * 10000 + version.minor * 100 + version.revision, 31415) << "not the product's";
    world->putFolder(path(L"ж ä"));
    const std::wstring file = path(L"ж ä\\ж.ini");
    EXPECT_EQ(border.files.overwrite(file, "[Info]\r\nProgVersion=12.3\r\n"), 0u);
    EXPECT_TRUE(border.profiles.writeString(L"Info", L"Neu", L"1", file));
    EXPECT_EQ(border.profiles.getString(L"Info", L"ProgVersion", L"none", 100, file), L"12.3");

    const std::wstring tail(300, L'x'), system = border.machine.systemDirectory();
    const std::pair<std::wstring, std::wstring> names[] = {
        {L"C:\\a\\..\\b", L"C:\\a\\..\\b"},
        {L"C:\\a\\..\\b/" + tail, L"\\\\?\\C:\\b\\" + tail},
        {L"\\\\server\\share\\" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
        {tail, L"\\\\?\\" + border.files.currentDirectory() + L"\\" + tail}};
    for (const auto& [name, expected] : names)
        EXPECT_EQ(toFileName(name), expected);

    ASSERT_TRUE(hardened && CopyFileW((system + L"\\oleacc.dll").c_str(), L"tarv_planted.dll", FALSE));
    EXPECT_FALSE(LoadLibraryW(L"tarv_planted.dll")) << "from the current folder";
    DeleteFileW(L"tarv_planted.dll");
    const wchar_t* const document = L"{2933BF90-7B36-11D2-B20E-00C04F983E60}";
    EXPECT_TRUE(border.automation.createFromLibrary(system + L"\\msxml3.dll", document));
    for (const std::wstring& library : {std::wstring(L"msxml3.dll"), system + L"\\kernel32.dll"})
        EXPECT_EQ(border.automation.createFromLibrary(library, document).error().number, 429) << library;
}

TEST_F(Border, AppendersDoNotOverwriteEachOther) {
    const std::wstring file = path(L"trace.txt");
    const HANDLE other = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
    DWORD written = 0;
    WriteFile(other, "aa", 2, &written, nullptr);
    EXPECT_EQ(border.files.append(file, "bb"), 0u);
    WriteFile(other, "cc", 2, &written, nullptr);
    EXPECT_EQ(border.files.overwrite(file, "d"), system_code::sharingViolation)
        << "it would cut the other's lines";
    CloseHandle(other);
    EXPECT_EQ(world->bytes(file), "aabbcc");
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

TEST_F(Border, PumpIsBoundedFilteredAndEndsAtQuitAndBoxesBelongToTheForm) {
    WindowsPlatform windows;
    Desktop& desktop = windows.border().desktop;
    const HWND form = CreateWindowW(L"STATIC", L"Test", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr,
                                    GetModuleHandleW(nullptr), nullptr);
    SetActiveWindow(form);
    EXPECT_EQ(desktop.activeForm(), toBorder(form));
    {
        User user(IDNO);
        EXPECT_EQ(desktop.messageBox(L"Text ж", L"Frage ж", message_box::yesNo | message_box::systemModal),
                  message_box::answerNo);
        EXPECT_TRUE(user.texts.starts_with(L"|Frage ж|") && user.texts.find(L"|Text ж|") != user.texts.npos);
        EXPECT_EQ(user.owner, form);
    }
    SetWindowLongPtrW(form, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(countMessages));
    PostMessageW(form, reposted, 0, 0);
    PostMessageW(form, counted, 0, 0);
    const ULONGLONG start = GetTickCount64();
    desktop.pumpMessages();
    EXPECT_LT(GetTickCount64() - start, 5000u) << "messages that post messages";
    EXPECT_EQ(arrived, 1) << "what waited at the start is handled";
    windows.setMessageFilter([](MSG& message) { return filtered += message.message == counted, true; });
    PostMessageW(form, counted, 0, 0);
    desktop.pumpMessages();
    EXPECT_EQ(std::pair(filtered, arrived), std::pair(1, 1));
    PostQuitMessage(7);
    desktop.pumpMessages();
    EXPECT_TRUE(desktop.quitPending());
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u) << "the exit code survives";
    DestroyWindow(form);
}

TEST_F(Border, ErrorObjectConvertsWhatAComponentWrites) {
    const auto record = std::make_shared<ErrorRecord>(ErrorRecord{53, L"", L""});
    const ObjectRef error = border.automation.errorObject(record);
    EXPECT_EQ(*error->get(std::int32_t{0}), Value(53)) << "the number is the default property";
    EXPECT_TRUE(error->put(L"Number", L"-7") && error->put(L"Source", std::int16_t{3}));
    EXPECT_FALSE(error->put(L"Number", L"keine Zahl"));
    EXPECT_EQ(*record, (ErrorRecord{-7, L"", L"3"}));
}

} // namespace
} // namespace tarv
