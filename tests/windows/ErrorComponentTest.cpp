// The error display: the built DLL as a component, its window, its registration.

#include "components/rk_Runtime/ErrorDialog.h"
#include "platform/Automation.h"
#include "platform/ErrorDisplay.h"
#include "tests/support/ContractWorld.h"
#include "tests/windows/User.h"
#include "tools/driver/ProgramDriver.h"
#include "tools/driver/Surroundings.h"
#include "win/ComPtr.h"
#include "win/CountedObject.h"
#include "win/Variant.h"

#include <filesystem>
#include <thread>

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

class ErrorComponentTest : public Contract {
protected:
    ErrorComponentTest() {
        wchar_t own[MAX_PATH];
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        const auto build = std::filesystem::path(own).parent_path().parent_path();
        file = (build / L"Programm" / errorDisplayLibrary).wstring();
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

    template <class... Arguments>
    HRESULT call(const char* name, Arguments... arguments) {
        const auto entry = reinterpret_cast<void*>(GetProcAddress(library, name));
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)(Arguments...)>(entry)(arguments...);
    }
    Value error(ErrorRecord record) {
        return ObjectByRef{border.automation->errorObject(std::make_shared<ErrorRecord>(std::move(record)))};
    }

    ComPtr<IClassFactory> factory() {
        CLSID id;
        CLSIDFromString(classId.c_str(), &id);
        ComPtr<IClassFactory> made;
        call<REFCLSID, REFIID, void**>("DllGetClassObject", id, IID_IClassFactory, made.receiveAny());
        return made;
    }
    ComPtr<IDispatch> component() {
        ComPtr<IDispatch> made;
        factory()->CreateInstance(nullptr, IID_IDispatch, made.receiveAny());
        return made;
    }

    std::wstring file;
    HMODULE library = nullptr;
    ObjectRef display;
};

void pressControl(bool down) {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

TEST_F(ErrorComponentTest, SaysEverythingThatIsKnownAndAnswersWhatTheUserDoes) {
    const auto press = [](int button) { return [button](HWND dialog) { User::press(dialog, button); }; };
    const auto escape = [](HWND) { PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0); };
    const auto enterInReport = [](HWND dialog) {
        SetFocus(GetDlgItem(dialog, component::IDC_REPORT));
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
    };
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
        std::function<void(HWND)> act;
        Value answer;
        std::wstring report;
    } cases[] = {
        {false, known, press(IDOK), Empty{},
         L"Modul:    M\r\nRoutine: Start\r\nNummer: 53\r\n\r\nxyz\r\n\r\nbeim\r\nStart"},
        {false, {}, press(IDOK), Empty{}, nothing},
        {true, odd, press(IDRETRY), 4, oddReport},
        {true, {Value(), 17}, escape, 2, nothing + L"\r\n\r\n17"},
        {true, odd, enterInReport, 4, oddReport},
    };
    const HWND owner = makeOwner();
    for (const auto& [question, arguments, act, answer, report] : cases) {
        SetActiveWindow(owner);
        bool held = false;
        User user([&](HWND dialog) {
            held = !IsWindowEnabled(owner);
            act(dialog);
        });
        EXPECT_EQ(display->call(question ? L"EMW" : L"errormsg", arguments).valueOr(Null{}), answer);
        std::erase(user.texts, L'\t'); // puts the values on the screen into a column
        EXPECT_NE(user.texts.find(L"|" + report + L"|"), user.texts.npos) << user.texts;
        EXPECT_TRUE(user.texts.starts_with(L"|Fehlermeldung...|")) << user.texts;
        EXPECT_EQ(user.texts.find(L"|&Wiederholen|&Abbrechen|") != user.texts.npos, question);
        EXPECT_TRUE(held && IsWindowEnabled(owner) && GetActiveWindow() == owner);
    }
    DestroyWindow(owner);
}

TEST_F(ErrorComponentTest, CopiesTheWholeReportInItsOwnLines) {
    const std::wstring endless(20'000, L'x'); // broken into lines on the screen only
    User user([](HWND dialog) {
        pressControl(true);
        PostMessageW(GetFocus(), WM_KEYDOWN, 'C', 0);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    EXPECT_TRUE(display->call(L"ErrorMsg", {error({53, endless, L"M"}), L"Ort", L"Start"}));
    pressControl(false);
    const std::wstring whole =
        L"Modul:    M\r\nRoutine: Start\r\nNummer: 53\r\n\r\n" + endless + L"\r\n\r\nOrt";
    EXPECT_TRUE(program::ProgramDriver::copied(whole));
}

TEST_F(ErrorComponentTest, IsDrawnWholeAfterItHasGrown) {
    std::thread driver;
    bool whole = false;
    User user([&](HWND dialog) {
        driver = std::thread([&whole, dialog] {
            SetWindowPos(dialog, nullptr, 0, 0, 700, 500, SWP_NOZORDER);
            const auto shown = program::ProgramDriver::picture(dialog);
            RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
            whole = shown == program::ProgramDriver::picture(dialog);
            PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        });
    });
    EXPECT_TRUE(display->call(L"ErrorMsg", {error({53, L"xyz", L"M"})}));
    driver.join();
    EXPECT_TRUE(whole);
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

/// An error object of the host, whose number is asked for by a call into the host's own code.
class HostError : public DispatchObject {
public:
    explicit HostError(std::function<void(VARIANT&)> number) : number_(std::move(number)) {}
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* id) override {
        *id = 1;
        return wcscmp(*names, L"Number") == 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        number_(*result);
        return S_OK;
    }

private:
    std::function<void(VARIANT&)> number_;
};

HRESULT showErrorMsg(IDispatch& component, std::function<void(VARIANT&)> number) {
    const auto error = ComPtr<HostError>::take(new HostError(std::move(number)));
    VARIANT argument{};
    argument.vt = VT_DISPATCH;
    argument.pdispVal = error.get();
    DISPPARAMS parameters{&argument, nullptr, 1, 0};
    return component.Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
}

TEST_F(ErrorComponentTest, ReadsCodesInEveryFormThatHostsGiveThem) {
    const std::wstring denied = L"-2147024891 (0x80070005)";
    VARIANT scode{}, positive{}, tooLarge{};
    scode.vt = VT_ERROR;
    scode.scode = E_ACCESSDENIED;
    positive.vt = tooLarge.vt = VT_R8;
    positive.dblVal = 2147942405.0;
    tooLarge.dblVal = 4294967296.0;
    User user(IDOK);
    for (const auto& [number, shown] : {std::pair(scode, denied), {positive, denied}, {tooLarge, L"0"}}) {
        EXPECT_EQ(showErrorMsg(*component().get(), [&](VARIANT& asked) { asked = number; }), S_OK);
        EXPECT_NE(user.texts.find(L"\r\nNummer: \t" + shown + L"\r\n"), std::wstring::npos) << user.texts;
    }
}

TEST_F(ErrorComponentTest, OutlivesItsLastReferenceWhileItShowsAnError) {
    ULONG left = 0;
    for (const bool inHandler : {false, true}) {
        IDispatch* last = component().detach();
        User user([&](HWND dialog) {
            left = inHandler ? last->Release() : left;
            User::press(dialog, IDOK);
        });
        EXPECT_EQ(showErrorMsg(*last, [&](VARIANT&) { left = inHandler ? 0 : last->Release(); }), S_OK);
        EXPECT_EQ(left, 1u) << "the call holds one of its own, by the handler: " << inHandler;
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
