// What the real border does beyond the contract that it shares with the scripted one.

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"
#include "platform/XmlDom.h"
#include "platform/windows/BorderHandles.h"
#include "platform/windows/ProcessHardening.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/windows/ContractWorld.h"
#include "tests/windows/User.h"
#include "win/LateEntry.h"
#include "win/SystemText.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include <winsock2.h>

#include <objbase.h>
#include <shellapi.h>

namespace tarv {
namespace {

using Border = OnWindows;

/// Every test of this program runs hardened, as the product does: the components used elsewhere show that
/// they still load.
const bool hardened = (hardenProcess(), true);

/// In msxml3.dll.
constexpr wchar_t document[] = L"{2933BF90-7B36-11D2-B20E-00C04F983E60}";

TEST_F(Border, NamesAreTakenAsTheyAreAndLibrariesByFullPathOnly) {
    const FileVersion version = border.facts->programVersion();
    EXPECT_EQ(version.major * 10000 + version.minor * 100 + version.revision, 31415) << "not the product's";
    const std::wstring file = path(L"ж ä.ini");
    EXPECT_EQ(border.files->overwrite(file, "[Info]\r\nProgVersion=12.3\r\n"), 0u);
    EXPECT_TRUE(border.profiles->writeString(L"Info", L"Neu", L"1", file));
    EXPECT_EQ(border.profiles->getString(L"Info", L"ProgVersion", L"none", 100, file), L"12.3");
    const std::wstring tail(300, L'x'), system = border.facts->systemDirectory();
    EXPECT_EQ(toFileName(L"C:\\a\\..\\b"), L"C:\\a\\..\\b");
    EXPECT_EQ(toFileName(L"C:\\a\\..\\b/" + tail), L"\\\\?\\C:\\b\\" + tail);
    EXPECT_EQ(toFileName(L"\\\\server\\share\\" + tail), L"\\\\?\\UNC\\server\\share\\" + tail);
    const std::wstring current = border.files->currentDirectory() + L"\\";
    EXPECT_EQ(toShellName(L"*."), current + L"*.");
    EXPECT_EQ(toShellName(L".\\x/../a b"), current + L"a b");
    EXPECT_EQ(toShellName(current.substr(0, 2) + L"x.txt "), current + L"x.txt ");
    EXPECT_EQ(toShellName(L"C:\\Ordner\\..\\?*."), L"C:\\?*.");
    for (const wchar_t* name : {L"C:\\a\\b\\..", L"C:\\a\\.", L"C:/a"})
        EXPECT_EQ(toShellName(name), L"C:\\a");

    ASSERT_TRUE(hardened && CopyFileW((system + L"\\oleacc.dll").c_str(), L"tarv_planted.dll", FALSE));
    EXPECT_FALSE(LoadLibraryW(L"tarv_planted.dll")) << "from the current folder";
    EXPECT_FALSE(systemLibraryOnOldWindows7(L"tarv_planted.dll"));
    EXPECT_TRUE(systemLibraryOnOldWindows7(L"msxml3.dll"));
    DeleteFileW(L"tarv_planted.dll");
    EXPECT_TRUE(border.automation->createFromLibrary(system + L"\\msxml3.dll", document));
    for (const std::wstring& library : {std::wstring(L"msxml3.dll"), system + L"\\kernel32.dll"})
        EXPECT_EQ(border.automation->createFromLibrary(library, document).error().number, 429) << library;
}

TEST_F(Border, EnvironmentIsReadAsItStands) {
    SetEnvironmentVariableW(L"TarvVertrag", L" ж = 1 ");
    EXPECT_EQ(border.facts->variable(L"TARVVERTRAG"), L" ж = 1 ");
    EXPECT_EQ(border.facts->variable(L"TarvFehlt"), L"");
    EXPECT_EQ(std::ranges::count(border.facts->environment(), L"TarvVertrag= ж = 1 "), 1);
}

using RegionalNumbers = OnWindows;

TEST_F(RegionalNumbers, SeparatorsAreThoseOfTheUser) {
    wchar_t text[32] = L"";
    GetNumberFormatW(LOCALE_USER_DEFAULT, 0, L"1234.5", nullptr, text, 32);
    const std::wstring shown =
        L"1" + border.facts->thousandsSeparator() + L"234" + border.facts->decimalSeparator() + L"5";
    EXPECT_TRUE(std::wstring_view(text).starts_with(shown)) << text;
}

TEST_F(Border, AppendersDoNotOverwriteEachOther) {
    const std::wstring file = path(L"trace.txt");
    const HANDLE other = CreateFileW(file.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN, nullptr);
    DWORD written = 0;
    WriteFile(other, "aa", 2, &written, nullptr);
    EXPECT_EQ(border.files->append(file, "bb"), 0u);
    WriteFile(other, "cc", 2, &written, nullptr);
    EXPECT_EQ(border.files->overwrite(file, "d"), system_code::sharingViolation)
        << "it would cut the other's lines";
    EXPECT_EQ(border.files->refusesReading(file), 0u);
    border.files->overwrite(path(L"new"), "e");
    EXPECT_NE(border.files->replace(file, path(L"new")), 0u);
    CloseHandle(other);
    EXPECT_EQ(bytes(file), "aabbcc");
    EXPECT_EQ(border.files->overwrite(file, "d"), 0u) << "a hidden file is no obstacle";
    EXPECT_EQ(bytes(file), "d");
}

/// The thread's error modes that the border has set.
std::vector<DWORD> modesSet;

BOOL WINAPI lookAndSet(DWORD mode, DWORD* before) {
    static const auto setThreadErrorMode = reinterpret_cast<decltype(&SetThreadErrorMode)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), "SetThreadErrorMode")));
    modesSet.push_back(mode);
    return setThreadErrorMode(mode, before);
}

/// The place through which this program calls the function: ours goes before the import library's.
#ifdef _WIN64
extern "C" decltype(&SetThreadErrorMode) importedSetThreadErrorMode asm("__imp_SetThreadErrorMode");
#else
extern "C" decltype(&SetThreadErrorMode) importedSetThreadErrorMode asm("__imp__SetThreadErrorMode@8");
#endif
decltype(&SetThreadErrorMode) importedSetThreadErrorMode = lookAndSet;

TEST_F(Border, CallsToFilesAndLibrariesShowNoBoxesAndOthersKeepTheirMode) {
    const std::wstring file = path(L"a.ini");
    const auto search = border.files->search(path(L"*"));
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"length", [&] { (void)border.files->length(file); }},
        {"attributes", [&] { (void)border.files->attributes(file); }},
        {"refusesReading", [&] { (void)border.files->refusesReading(file); }},
        {"search", [&] { (void)border.files->search(file); }},
        {"next", [&] { (void)search->next(); }},
        {"append", [&] { (void)border.files->append(file, "a"); }},
        {"overwrite", [&] { (void)border.files->overwrite(file, "a"); }},
        {"replace", [&] { (void)border.files->replace(path(L"b"), file); }},
        {"moveOver", [&] { (void)border.files->moveOver(path(L"b"), file); }},
        {"remove", [&] { (void)border.files->remove(file); }},
        {"getString", [&] { (void)border.profiles->getString(L"a", L"b", L"", 9, file); }},
        {"writeString", [&] { (void)border.profiles->writeString(L"a", L"b", L"c", file); }},
        {"getSection", [&] { (void)border.profiles->getSection(L"a", 9, file); }},
        {"getSectionNames", [&] { (void)border.profiles->getSectionNames(9, file); }},
        {"component", [&] { (void)border.automation->create(L"Msxml2.DOMDocument"); }},
        {"parser", [&] { (void)border.xml->create(L"Msxml2.DOMDocument"); }},
        {"bind", [&] { (void)border.automation->bind(L"gibtesnicht:"); }},
        {"library", [&] { (void)border.automation->createFromLibrary(file, document); }},
    };
    DWORD before = 0;
    SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &before);
    for (const auto& [name, call] : calls) {
        modesSet.clear();
        call();
        ASSERT_GE(modesSet.size(), 2u) << name;
        EXPECT_EQ(modesSet.front(), DWORD{SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS}) << name;
        EXPECT_EQ(modesSet.back(), DWORD{SEM_NOGPFAULTERRORBOX}) << name << " puts it back";
    }
    modesSet.clear();
    (void)border.processes->create({path(L"none.exe"), L"a", false, 0, {}});
    EXPECT_TRUE(modesSet.empty()) << "a started program would inherit it";
    SetThreadErrorMode(before, nullptr);
}

TEST(LateEntry, AnswersTheFunctionsFailureWhereItIsMissingElseKeepsTheLastErrorForIt) {
    using Function = decltype(&::SHFileOperationW);
    SHFILEOPSTRUCTW nothing{};
    EXPECT_EQ((LateEntry<Function>{L"tarv_missing.dll", "SHFileOperationW", 126}(&nothing)), 126);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    LateEntry<decltype(&::SetLastError)>{L"kernel32.dll", "TarvMissing"}(0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND}) << "nothing to answer, nothing done";
    SetLastError(WSANO_DATA);
    EXPECT_EQ((LateEntry<decltype(&::WSAGetLastError)>{L"ws2_32.dll", "WSAGetLastError"}()), WSANO_DATA);
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
    Desktop& desktop = *border.desktop;
    const HWND form = makeOwner();
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
    const WindowsPlatform filtering(
        [](MSG& message) { return filtered += message.message == counted, true; });
    PostMessageW(form, counted, 0, 0);
    filtering.desktop->pumpMessages();
    EXPECT_EQ(std::pair(filtered, arrived), std::pair(1, 1));
    PostQuitMessage(7);
    desktop.pumpMessages();
    EXPECT_TRUE(desktop.quitPending());
    MSG message;
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 7u) << "the exit code survives";
    DestroyWindow(form);
}

} // namespace
} // namespace tarv
