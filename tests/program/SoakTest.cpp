// Opens and closes the program's windows many times with the recording skin control: nothing may pile up.
// TARV_SOAK says how often (20 times by default); tools/soak runs it at length.

#include "app/resource.h"
#include "tests/program/Installation.h"
#include "tools/driver/Holdings.h"
#include "tools/driver/Surroundings.h"
#include "win/ComPtr.h"
#include "win/Variant.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <wbemdisp.h>

namespace tarv::program {
namespace {

std::wstring skinCalls(HWND window) {
    // VT_BSTR 8, VT_I4 3, VT_BOOL 11.
    return L"call 2 8:C:\\Programm\\Styles\\Windows8.cjstyles 8:NormalAero.ini\ncall 3 3:" +
           std::to_wstring(static_cast<INT32>(reinterpret_cast<INT_PTR>(window))) +
           L"\nput 1 3:15\nput 5 11:-1\n";
}

/// What the info centre asks the management service, without the program: the elements of the answer.
int askManagementService() {
    ComPtr<ISWbemServices> service;
    ComPtr<ISWbemObjectSet> answer;
    ComPtr<IUnknown> all;
    ComPtr<IEnumVARIANT> elements;
    const Bstr query(L"SELECT * FROM Win32_OperatingSystem"), language(L"WQL");
    if (FAILED(CoGetObject(L"winmgmts:", nullptr, __uuidof(ISWbemServices), service.receiveAny())) ||
        FAILED(service->ExecQuery(query.get(), language.get(), wbemFlagReturnImmediately, nullptr,
                                  answer.receive())) ||
        FAILED(answer->get__NewEnum(all.receive())) ||
        FAILED(all->QueryInterface(IID_IEnumVARIANT, elements.receiveAny())))
        return 0;
    for (int count = 0;; ++count) {
        Variant element;
        if (elements->Next(1, &element.raw(), nullptr) != S_OK)
            return count;
    }
}

TEST(Soak, NothingPilesUpAndEachSkinCallIsMade) {
    ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
    const char* const asked = std::getenv("TARV_SOAK");
    const int rounds = asked ? std::atoi(asked) : 20, warmUp = 10;
    Installation installation;
    const bool recorded = Installation::canRegisterStandIn();
    if (recorded)
        installation.registerStandIn(false);
    installation.write(machineFile, "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n[A]\r\nB=1\r\n");
    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    ASSERT_TRUE(mainWindow);
    std::wstring expected = skinCalls(mainWindow);
    Holdings before;
    for (int i = -warmUp; i < rounds; ++i) {
        if (i == 0)
            before = holdingsOf(program->process());
        for (const auto& [command, kind] :
             {std::pair(ID_mnuInfo, L"frmInfo4Prg"), {ID_mnuSupportIPAdresse, L"frmLokaleIP"}}) {
            program->command(mainWindow, command);
            const HWND window = program->window(kind);
            ASSERT_TRUE(window);
            if (command == ID_mnuInfo)
                expected += skinCalls(window) + skinCalls(mainWindow);
            PostMessageW(window, WM_CLOSE, 0, 0);
            ASSERT_TRUE(program->gone(window));
            ASSERT_TRUE(program->ready(mainWindow));
        }
        const std::string log = installation.read(L"skin.log");
        const std::wstring calls(reinterpret_cast<const wchar_t*>(log.data()), log.size() / 2);
        ASSERT_EQ(calls, recorded ? expected : L"") << i;
        installation.write(L"skin.log", "");
        expected.clear();
    }
    const Holdings after = holdingsOf(program->process());
    EXPECT_TRUE(program->boxes().empty());

    // Wine keeps registry keys for each query, and windows in its 32-bit form, whoever asks.
    Holdings bare;
    for (int i = -warmUp; i < rounds; ++i) {
        if (i == 0)
            bare = holdingsOf(GetCurrentProcess());
        ASSERT_EQ(askManagementService(), 1);
    }
    const Holdings queried = holdingsOf(GetCurrentProcess());
    const int keptUser = queried.user - bare.user, kept = queried.kernel - bare.kernel;
    OleUninitialize();
    std::printf("%d times: user %d -> %d (%d kept by the system), gdi %d -> %d, kernel %d -> %d (%d), memory "
                "%zu -> %zu\n",
                rounds, before.user, after.user, keptUser, before.gdi, after.gdi, before.kernel, after.kernel,
                kept, before.memory, after.memory);
    EXPECT_GT(before.user * before.gdi * before.kernel, 0) << "something was measured at all";
    // Some are the system's own, but not one for each time.
    const int allowed = underWine() ? 4 : rounds / 4;
    EXPECT_LE(after.user, before.user + keptUser + allowed);
    EXPECT_LE(after.gdi, before.gdi + allowed);
    EXPECT_LE(after.kernel, before.kernel + kept + allowed);
    EXPECT_LT(after.memory, before.memory + (1 << 20));
}

} // namespace
} // namespace tarv::program
