#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

namespace tarv::program {
namespace {

/// Registers the stand-in under the control's identifier while it lives.
class RegisteredSkin {
public:
    RegisteredSkin() {
        set(progId() + L"\\CLSID", classId());
        set(L"CLSID\\" + classId() + L"\\InprocServer32",
            Installation::testFolder() + L"\\skin\\tarv_skin_stand_in.dll");
    }
    ~RegisteredSkin() {
        for (const std::wstring& key :
             {progId() + L"\\CLSID", progId(), L"CLSID\\" + classId() + L"\\InprocServer32",
              L"CLSID\\" + classId()}) {
            RegDeleteKeyW(HKEY_CLASSES_ROOT, key.c_str());
        }
    }
    RegisteredSkin(const RegisteredSkin&) = delete;
    RegisteredSkin& operator=(const RegisteredSkin&) = delete;

private:
    static std::wstring progId() { return L"XtremeSkinFramework.SkinFramework"; }
    static std::wstring classId() { return L"{5D1E2C7A-3B54-4D2B-9F0B-6B7C4F1D9A31}"; }
    static void set(const std::wstring& key, const std::wstring& value) {
        RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(), 0);
    }
};

std::wstring skinCalls(HWND window) {
    // VT_BSTR 8, VT_I4 3, VT_BOOL 11.
    return L"call 2 8:C:\\Programm\\Styles\\Windows8.cjstyles 8:NormalAero.ini\n"
           L"call 3 3:" +
           std::to_wstring(static_cast<INT32>(reinterpret_cast<INT_PTR>(window))) +
           L"\n"
           L"put 1 3:15\n"
           L"put 5 11:-1\n";
}

TEST(SkinTest, IsAppliedToEachWindowInOrder) {
    const RegisteredSkin skin;
    Installation installation;
    installation.machine("[Directories]\r\nProgrammDirectory=C:\\Programm\r\n");
    const std::wstring log = installation.dataFolder() + L"\\skin.log";
    installation.environment[L"TARV_SKIN_LOG"] = log;
    const auto logged = [&] {
        const std::string bytes = Installation::read(log);
        return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    };

    const auto program = installation.start();
    const HWND mainWindow = program->window(L"frmMain");
    ASSERT_TRUE(mainWindow);
    std::wstring expected = skinCalls(mainWindow);
    EXPECT_EQ(logged(), expected);

    program->command(mainWindow, ID_mnuInfo);
    const HWND window = program->window(L"frmInfo4Prg");
    ASSERT_TRUE(window);
    expected += skinCalls(window);
    EXPECT_EQ(logged(), expected);

    program->command(window, ID_cmdEnd);
    ASSERT_TRUE(program->gone(window));
    expected += skinCalls(mainWindow);
    EXPECT_TRUE(waitUntil([&] { return logged() == expected; })) << "after closing";
    EXPECT_TRUE(program->boxes().empty());
}

} // namespace
} // namespace tarv::program
