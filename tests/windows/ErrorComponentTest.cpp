// The error display: the built DLL as a component, its window, its registration.

#include "components/rk_Runtime/ErrorDialog.h"
#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/ErrorDisplay.h"
#include "platform/SystemFacts.h"
#include "platform/windows/LateBound.h"
#include "tests/windows/ContractWorld.h"
#include "tests/windows/User.h"
#include "tools/driver/ProgramDriver.h"
#include "tools/driver/Surroundings.h"
#include "win/ComPtr.h"
#include "win/CountedObject.h"
#include "win/Variant.h"

#include <filesystem>

#include <objbase.h>

namespace tarv {
namespace {

const std::wstring progId(errorDisplayProgId), classId(errorDisplayClassId), classes = L"Software\\Classes\\";

std::wstring registered(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[MAX_PATH] = L"";
    DWORD size = sizeof text;
    RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

class ErrorComponentTest : public OnWindows {
protected:
    ErrorComponentTest() {
        const auto tests = std::filesystem::path(border.facts->programPath()).parent_path();
        file = (tests.parent_path() / L"Programm" / errorDisplayLibrary).wstring();
        library = LoadLibraryW(file.c_str());
        display = border.automation->createFromLibrary(file, classId).valueOr(nullptr);
    }
    ~ErrorComponentTest() override {
        if (underWine()) {
            call("DllUnregisterServer");
            RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + progId).c_str());
        }
    }
    void SetUp() override { ASSERT_TRUE(display); }

    HRESULT call(const char* name) {
        const auto entry = reinterpret_cast<void*>(GetProcAddress(library, name));
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(entry)();
    }
    Value error(ErrorRecord record) {
        return ObjectByRef{border.automation->errorObject(std::make_shared<ErrorRecord>(std::move(record)))};
    }

    /// The only reference to another display.
    ComPtr<IDispatch> component() {
        VARIANT made{};
        store(made, border.automation->createFromLibrary(file, classId).valueOr(nullptr));
        return ComPtr<IDispatch>::take(made.pdispVal);
    }

    std::wstring file;
    HMODULE library = nullptr;
    ObjectRef display;
};

TEST_F(ErrorComponentTest, SaysEverythingThatIsKnownAndAnswersWhatTheUserDoes) {
    const std::vector<Value> known{error({53, L"xyz", L"M"}), L"beim\nStart", L"Start"},
        odd{error({-2147221005, L"a\r\nb\rc\n\n", L" "}), std::wstring(L"vor\0nach", 8),
            L"Ort K\r\n\r\nmehr"};
    const std::wstring nothing =
        L"Modul:    Unbekannt\r\nRoutine: Unbekannt\r\nNummer: 0\r\n\r\nKeine Beschreibung verfügbar";
    const std::wstring oddReport =
        L"Modul:    Unbekannt\r\nRoutine: Ort K\r\nNummer: -2147221005 (0x800401F3)"
        L"\r\n\r\na\r\nb\r\nc\r\n\r\nvor nach\r\n\r\nmehr";
    const struct {
        bool question;
        std::vector<Value> arguments;
        WPARAM key;
        int control; // that has the focus; 0: the one that has it at first
        Value answer;
        std::wstring report;
    } cases[] = {
        {false, known, VK_RETURN, 0, Empty{},
         L"Modul:    M\r\nRoutine: Start\r\nNummer: 53\r\n\r\nxyz\r\n\r\nbeim\r\nStart"},
        {false, {}, VK_ESCAPE, 0, Empty{}, nothing},
        {true, odd, VK_RETURN, 0, 4, oddReport},
        {true, {Value(), 17}, VK_ESCAPE, 0, 2, nothing + L"\r\n\r\n17"},
        {true, odd, VK_RETURN, component::IDC_REPORT, 4, oddReport},
    };
    const HWND owner = makeOwner();
    for (const auto& [question, arguments, key, control, answer, report] : cases) {
        SetActiveWindow(owner);
        User user([&](HWND dialog) {
            EXPECT_FALSE(IsWindowEnabled(owner));
            if (control)
                SetFocus(GetDlgItem(dialog, control));
            PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
        });
        EXPECT_EQ(display->call(question ? L"EMW" : L"errormsg", arguments).valueOr(Null{}), answer);
        std::erase(user.texts, L'\t'); // puts the values on the screen into a column
        EXPECT_NE(user.texts.find(L"|" + report + L"|"), user.texts.npos) << user.texts;
        EXPECT_TRUE(user.texts.starts_with(L"|Fehlermeldung...|")) << user.texts;
        EXPECT_EQ(user.texts.find(L"|&Wiederholen|&Abbrechen|") != user.texts.npos, question);
        EXPECT_TRUE(IsWindowEnabled(owner) && GetActiveWindow() == owner);
    }
    DestroyWindow(owner);
}

TEST_F(ErrorComponentTest, CopiesTheWholeReportInItsOwnLines) {
    const std::wstring endless(20'000, L'x'); // broken into lines on the screen only
    BYTE keys[256] = {};
    User user([&](HWND dialog) {
        keys[VK_CONTROL] = 0x80;
        SetKeyboardState(keys);
        PostMessageW(GetFocus(), WM_KEYDOWN, 'C', 0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    EXPECT_TRUE(display->call(L"ErrorMsg", {error({53, endless, L"M"}), L"Ort", L"Start"}));
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
    const std::wstring whole =
        L"Modul:    M\r\nRoutine: Start\r\nNummer: 53\r\n\r\n" + endless + L"\r\n\r\nOrt";
    EXPECT_TRUE(program::ProgramDriver::copied(whole));
}

TEST_F(ErrorComponentTest, IsDrawnWholeAfterItHasGrown) {
    User user([this](HWND dialog) {
        SetWindowPos(dialog, nullptr, 0, 0, 700, 500, SWP_NOZORDER);
        border.desktop->pumpMessages();
        const auto shown = program::ProgramDriver::picture(dialog);
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        border.desktop->pumpMessages();
        EXPECT_TRUE(shown == program::ProgramDriver::picture(dialog));
        User::press(dialog, IDOK);
    });
    EXPECT_TRUE(display->call(L"ErrorMsg", {error({53, L"xyz", L"M"})}));
}

TEST_F(ErrorComponentTest, ShowsTheSameReportOnlyOnceWhereAsked) {
    User user(IDRETRY);
    const struct {
        bool quiet;
        const wchar_t* location;
        std::int32_t answer, dialogs;
    } steps[] = {{true, L"A", 4, 1}, {true, L"A", 2, 1}, {false, L"A", 4, 2}, {true, L"B", 4, 3}};
    for (const auto& [quiet, location, answer, dialogs] : steps) {
        EXPECT_TRUE(display->put(L"NoVisibleNextMsg", quiet));
        EXPECT_EQ(display->call(L"EMW", {error({}), location, L""}).valueOr({}), Value(answer)) << location;
        EXPECT_EQ(user.dialogs, dialogs) << "the same report only once";
    }
}

TEST_F(ErrorComponentTest, TakesTextsByReferenceAndNamedOnesAndStaysOnceUsed) {
    ComPtr<IDispatch> component = this->component();
    wchar_t name[] = L"ErrorMsg", routine[] = L"ZUSATZ";
    LPOLESTR names[] = {name, routine};
    DISPID ids[2];
    ASSERT_EQ(component->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
    const Bstr text(L"by reference");
    BSTR place = text.get();
    VARIANT arguments[2]{}; // the second one is broken
    arguments[0].vt = arguments[1].vt = VT_BYREF | VT_BSTR;
    arguments[0].pbstrVal = &place;
    DISPPARAMS parameters{arguments, &ids[1], 2, 1};
    User user(IDOK);
    EXPECT_EQ(component->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_NE(user.texts.find(L"Routine: \tby reference\r\n"), std::wstring::npos) << user.texts;
    EXPECT_FALSE(display->call(L"ErrorMsg", {1, 2, 3, 4}));

    display = nullptr;
    component = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE) << "every load would cost the host a TLS slot";
    for (int uses = 0; uses < 100; ++uses)
        FreeLibrary(library);
    EXPECT_TRUE(GetModuleHandleW(file.c_str())) << "CoUninitialize does not ask";
    library = LoadLibraryW(file.c_str());
}

/// An error object of the host. Its code releases the display that asks for the number.
struct HostError : DispatchObject {
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
        *id = 1;
        return wcscmp(*names, L"Number") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        *result = number;
        referencesLeft = asking->Release();
        return S_OK;
    }

    VARIANT number{};
    IDispatch* asking = nullptr;
    ULONG referencesLeft = 0;
};

TEST_F(ErrorComponentTest, ReadsCodesInEveryFormAndOutlivesItsLastReference) {
    const std::wstring denied = L"-2147024891 (0x80070005)";
    VARIANT scode{}, positive{}, tooLarge{}, argument{};
    scode.vt = VT_ERROR;
    scode.scode = E_ACCESSDENIED;
    positive.vt = tooLarge.vt = VT_R8;
    positive.dblVal = 2147942405.0;
    tooLarge.dblVal = 4294967296.0;
    argument.vt = VT_DISPATCH;
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    User user(IDOK);
    for (const auto& [number, shown] : {std::pair(scode, denied), {positive, denied}, {tooLarge, L"0"}}) {
        HostError error;
        error.number = number;
        error.asking = component().detach();
        argument.pdispVal = &error;
        EXPECT_EQ(
            error.asking->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            S_OK);
        EXPECT_EQ(error.referencesLeft, 1u) << "the call holds one of its own";
        EXPECT_NE(user.texts.find(L"\r\nNummer: \t" + shown + L"\r\n"), std::wstring::npos) << user.texts;
    }
}

TEST_F(ErrorComponentTest, HostStaysDisabledUntilTheLastOfNestedWindowsIsGone) {
    const HWND owner = makeOwner();
    SetActiveWindow(owner);
    HWND outer = nullptr;
    User user([&](HWND dialog) {
        if (!outer) {
            outer = dialog;
            EXPECT_TRUE(display->call(L"ErrorMsg", {error({}), L"inner"}));
            EXPECT_TRUE(IsWindowEnabled(owner)) << "both are closed";
            return;
        }
        SendMessageW(outer, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(!IsWindowEnabled(owner) && !IsWindowVisible(outer) && IsWindowVisible(dialog));
        User::press(dialog, IDOK);
    });
    EXPECT_TRUE(display->call(L"ErrorMsg", {error({}), L"outer"}));
    EXPECT_EQ(user.dialogs, 2);
    EXPECT_EQ(GetActiveWindow(), owner);
    DestroyWindow(owner);
}

TEST_F(ErrorComponentTest, IsRegisteredForAllAndLeavesTheSuitesClassAsItIs) {
    if (!underWine())
        GTEST_SKIP() << "registers classes for all users";
    EXPECT_FALSE(border.automation->create(progId));
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(border.automation->create(progId));
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(border.automation->create(progId));

    const std::wstring key = classes + progId + L"\\CLSID", suite = L"{5D1E2C7A-3B54-4D2B-9F0B-6B7C4F1D9A31}";
    RegSetValueW(HKEY_LOCAL_MACHINE, key.c_str(), REG_SZ, suite.c_str(), 0);
    EXPECT_EQ(call("DllRegisterServer"), S_FALSE) << "the identifier stays with the suite";
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    RegSetValueW(HKEY_CURRENT_USER, key.c_str(), REG_SZ, classId.c_str(), 0);
    EXPECT_EQ(call("DllRegisterServer"), S_FALSE) << "the suite's is hidden from this user, but there";
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registered(HKEY_LOCAL_MACHINE, key), suite);
}

TEST_F(ErrorComponentTest, IsRegisteredForTheUserWhereTheMachineRefuses) {
    CLSID installed;
    if (SUCCEEDED(CLSIDFromProgID(progId.c_str(), &installed)))
        GTEST_SKIP() << "an error display is registered here";
    // Lasting keys cannot be made below a passing one: the machine's part of the registry refuses.
    constexpr wchar_t passing[] = L"Software\\tarvErrorComponentTest";
    const std::wstring server = classes + L"CLSID\\" + classId + L"\\InprocServer32";
    HKEY refusing = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, passing, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &refusing, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, refusing);
    for (const bool foreign : {false, true}) {
        if (foreign) // somebody's version, without the identifier
            RegSetValueW(HKEY_CURRENT_USER, (classes + progId + L"\\CurVer").c_str(), REG_SZ, L"later", 0);
        EXPECT_EQ(call("DllRegisterServer"), foreign ? S_FALSE : S_OK);
        EXPECT_EQ(registered(HKEY_CURRENT_USER, server), file);
        EXPECT_EQ(registered(HKEY_CURRENT_USER, server, L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(registered(HKEY_CURRENT_USER, classes + progId + L"\\CLSID"), foreign ? L"" : classId);
        EXPECT_EQ(call("DllUnregisterServer"), S_OK);
        EXPECT_EQ(registered(HKEY_CURRENT_USER, server) + registered(HKEY_CURRENT_USER, classes + progId),
                  L"");
        EXPECT_EQ(registered(HKEY_CURRENT_USER, classes + progId + L"\\CurVer"), foreign ? L"later" : L"");
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, (classes + progId).c_str());
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(refusing);
    RegDeleteKeyW(HKEY_CURRENT_USER, passing);
}

} // namespace
} // namespace tarv
