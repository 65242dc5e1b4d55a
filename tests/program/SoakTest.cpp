// Opens and closes the program's windows many times with the recording skin control: nothing may pile up.
// TARV_SOAK says how often (20 times by default); tools/soak runs it at length.

#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <psapi.h>
#include <winternl.h>

namespace tarv::program {
namespace {

/// What a program holds. GetGuiResources, GetProcessHandleCount and PrivateUsage would be the usual
/// questions; Wine answers 0 to each, whatever the program holds.
struct Holdings {
    int user = 0, gdi = 0, kernel = 0;
    std::size_t memory = 0;
};

/// The session's windows, menus, icons, cursors: all places of the table up to the highest, less those that
/// the menus made here fill.
int userObjects() {
    std::vector<HMENU> menus(2000);
    int places = 0;
    for (HMENU& menu : menus) {
        menu = CreateMenu();
        places = std::max(places, (LOWORD(reinterpret_cast<UINT_PTR>(menu)) - 0x20) / 2 + 1);
    }
    for (const HMENU menu : menus)
        DestroyMenu(menu);
    return places - static_cast<int>(menus.size());
}

int gdiObjects(HANDLE process) {
    struct Entry {
        ULONG64 object;
        ULONG owner;
        USHORT unique;
        UCHAR type, flags;
        ULONG64 userPointer;
    };
    constexpr std::size_t tableInPeb = sizeof(void*) == 8 ? 0xF8 : 0x94;
    PROCESS_BASIC_INFORMATION basic{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    void* table = nullptr;
    std::vector<Entry> entries(0x4000);
    ReadProcessMemory(process, reinterpret_cast<char*>(basic.PebBaseAddress) + tableInPeb, &table,
                      sizeof table, nullptr);
    ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr);
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [](const Entry& entry) { return entry.type != 0; }));
}

int kernelHandles(DWORD process) {
    std::vector<char> buffer(1 << 20);
    NtQuerySystemInformation(SystemProcessInformation, buffer.data(), 1 << 20, nullptr);
    for (const char* at = buffer.data();;) {
        const auto& each = *reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(at);
        if (each.UniqueProcessId == reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(process)))
            return static_cast<int>(each.HandleCount);
        if (!each.NextEntryOffset)
            return 0;
        at += each.NextEntryOffset;
    }
}

Holdings holdings(HANDLE process) {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(process, &memory, sizeof memory);
    return {userObjects(), gdiObjects(process), kernelHandles(GetProcessId(process)), memory.PagefileUsage};
}

std::wstring skinCalls(HWND window) {
    // VT_BSTR 8, VT_I4 3, VT_BOOL 11.
    return L"call 2 8:C:\\Programm\\Styles\\Windows8.cjstyles 8:NormalAero.ini\ncall 3 3:" +
           std::to_wstring(static_cast<INT32>(reinterpret_cast<INT_PTR>(window))) +
           L"\nput 1 3:15\nput 5 11:-1\n";
}

TEST(Soak, NothingPilesUpAndEachSkinCallIsMade) {
    Installation installation;
    installation.registerStandIn(false);
    installation.write(machineFile, "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n[A]\r\nB=1\r\n");
    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    ASSERT_TRUE(mainWindow);
    std::wstring expected = skinCalls(mainWindow);
    const auto round = [&](int command, const wchar_t* kind) {
        installation.write(L"skin.log", "");
        program->command(mainWindow, command);
        const HWND window = program->window(kind);
        ASSERT_TRUE(window);
        if (command == ID_mnuInfo)
            expected = skinCalls(window) + skinCalls(mainWindow);
        PostMessageW(window, WM_CLOSE, 0, 0);
        ASSERT_TRUE(program->gone(window));
        ASSERT_TRUE(waitUntil([&] { return IsWindowEnabled(mainWindow) && IsWindowVisible(mainWindow); }));
    };
    const char* const asked = std::getenv("TARV_SOAK");
    const int times = asked ? std::atoi(asked) : 20;
    constexpr int warmUp = 10;
    Holdings before;
    for (int i = -warmUp; i < times; ++i) {
        if (i == 0)
            before = holdings(program->process());
        round(ID_mnuInfo, L"frmInfo4Prg");
        const std::string log = installation.read(L"skin.log");
        ASSERT_EQ(std::wstring(reinterpret_cast<const wchar_t*>(log.data()), log.size() / 2), expected) << i;
        round(ID_mnuSupportIPAdresse, L"frmLokaleIP");
    }
    const Holdings after = holdings(program->process());
    std::printf("%d times: user %d -> %d, gdi %d -> %d, kernel %d -> %d, memory %zu -> %zu\n", times,
                before.user, after.user, before.gdi, after.gdi, before.kernel, after.kernel, before.memory,
                after.memory);
    EXPECT_GT(before.user * before.gdi * before.kernel, 0) << "something was measured at all";
    EXPECT_EQ(after.user, before.user);
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_EQ(after.kernel, before.kernel);
    EXPECT_LT(after.memory, before.memory + (1 << 20));
    EXPECT_TRUE(program->boxes().empty());
}

} // namespace
} // namespace tarv::program
