// Opens and closes the program's windows many times with the recording skin control: nothing may pile up.
// TARV_SOAK says how often (20 times by default); tools/soak runs it at length.

#include "app/resource.h"
#include "tests/program/Installation.h"
#include "tools/driver/BareQuery.h"
#include "tools/driver/Holdings.h"
#include "tools/driver/Surroundings.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

namespace tarv::program {
namespace {

std::wstring skinCalls(HWND window) {
    // VT_BSTR 8, VT_I4 3, VT_BOOL 11.
    return L"call 2 8:C:\\Programm\\Styles\\Windows8.cjstyles 8:NormalAero.ini\ncall 3 3:" +
           std::to_wstring(static_cast<INT32>(reinterpret_cast<INT_PTR>(window))) +
           L"\nput 1 3:15\nput 5 11:-1\n";
}

int rounds() {
    const char* const asked = std::getenv("TARV_SOAK");
    return asked ? std::atoi(asked) : 20;
}

/// What a process holds before and after so many rounds.
std::pair<Holdings, Holdings> soaked(HANDLE process, const std::function<void()>& round) {
    constexpr int warmUp = 10;
    Holdings before;
    for (int i = -warmUp; i < rounds() && !testing::Test::HasFailure(); ++i) {
        if (i == 0)
            before = holdingsOf(process);
        round();
    }
    return {before, holdingsOf(process)};
}

/// Opens a window by its menu entry and closes it.
HWND openAndClose(ProgramDriver& program, HWND mainWindow, int entry, const wchar_t* kind) {
    program.command(mainWindow, entry);
    const HWND window = program.window(kind);
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(window && program.gone(window) && program.ready(mainWindow));
    return window;
}

/// What Wine 8 never frees, also in a bare window with the same controls: for each icon from a resource the
/// path of its file, for each label what it knows of its font. With the heads and gaps of its heaps.
std::size_t memoryKeptByWine(const Installation& installation) {
    constexpr std::size_t icons = 6, labels = 3; // of both windows; a list of pictures copies its two
    const std::size_t icon = installation.path(programFile).size() * sizeof(wchar_t) + 64, label = 48;
    return static_cast<std::size_t>(rounds()) * (icons * icon + labels * label);
}

void expectFlat(const Installation& installation, const std::pair<Holdings, Holdings>& held,
                int keptByTheSystem) {
    const auto& [before, after] = held;
    const std::size_t memoryKept = underWine() ? memoryKeptByWine(installation) : 0;
    std::printf(
        "%d times: user %d -> %d, gdi %d -> %d, kernel %d -> %d (%d kept by the system), memory %zu -> "
        "%zu (at most %zu kept by the system)\n",
        rounds(), before.user, after.user, before.gdi, after.gdi, before.kernel, after.kernel,
        keptByTheSystem, before.memory, after.memory, memoryKept);
    EXPECT_GT(before.user * before.gdi * before.kernel, 0) << "something was measured at all";
    // Windows keeps some for itself, but not one for each time.
    const int allowed = underWine() ? 0 : rounds() / 4;
    EXPECT_LE(after.user, before.user + allowed);
    EXPECT_LE(after.gdi, before.gdi + allowed);
    EXPECT_LE(after.kernel, before.kernel + keptByTheSystem + allowed);
    EXPECT_LT(after.memory, before.memory + memoryKept + (underWine() ? 1 << 18 : 1 << 20));
}

TEST(Soak, NothingPilesUpAndEachSkinCallIsMade) {
    if (!Installation::canRegisterStandIn())
        GTEST_SKIP() << "no place for the stand-in of the skin control";
    Installation installation;
    installation.registerStandIn(false);
    installation.write(machineFile, "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n[A]\r\nB=1\r\n");
    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    ASSERT_TRUE(mainWindow);
    std::wstring expected = skinCalls(mainWindow);
    const auto held = soaked(program->process(), [&] {
        const HWND info = openAndClose(*program, mainWindow, ID_mnuInfo, L"frmInfo4Prg");
        openAndClose(*program, mainWindow, ID_mnuSupportIPAdresse, L"frmLokaleIP");
        expected += skinCalls(info) + skinCalls(mainWindow);
        const std::string log = installation.read(L"skin.log");
        EXPECT_EQ(std::wstring(reinterpret_cast<const wchar_t*>(log.data()), log.size() / 2), expected);
        installation.write(L"skin.log", "");
        expected.clear();
    });
    expectFlat(installation, held, 0);
    EXPECT_TRUE(program->boxes().empty());
}

TEST(Soak, TheManagementServiceItselfLeavesNothingInTheProgram) {
    if (underWine() && sizeof(void*) == 4)
        GTEST_SKIP() << "32-bit Wine keeps windows for each query for a while";
    ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
    Installation installation;
    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    ASSERT_TRUE(mainWindow);
    const auto held =
        soaked(program->process(), [&] { openAndClose(*program, mainWindow, ID_mnuInfo, L"frmInfo4Prg"); });
    // Wine keeps registry keys for each query, whoever asks.
    const auto [before, after] =
        soaked(GetCurrentProcess(), [] { EXPECT_EQ(askManagementService([](IDispatch&) {}), 1); });
    expectFlat(installation, held, after.kernel - before.kernel);
    OleUninitialize();
}

} // namespace
} // namespace tarv::program
