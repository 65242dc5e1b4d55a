// The error display: the built DLL as a component, its window, its registration.

#include "platform/Automation.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"
#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Funktionen32/ErrorReport.h"
#include "tests/support/ContractWorld.h"
#include "tests/support/FakePlatform.h"
#include "tests/windows/User.h"

#include <filesystem>

#include <objbase.h>

namespace tarv {
namespace {

const std::wstring progId(errorDisplayProgId), classId(errorDisplayClassId);
const std::wstring classes = L"Software\\Classes\\",
                   server = classes + L"CLSID\\" + classId + L"\\InprocServer32";

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
        folder = std::filesystem::path(own).parent_path().parent_path().wstring() + L"\\Programm\\";
        library = LoadLibraryW((folder + std::wstring(errorDisplayLibrary)).c_str());
        display = object();
    }
    ~ErrorComponentTest() override {
        call("DllUnregisterServer");
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + progId).c_str());
    }
    void SetUp() override { ASSERT_TRUE(display); }

    template <class... Arguments>
    HRESULT call(const char* name, Arguments... arguments) {
        const auto entry = reinterpret_cast<void*>(GetProcAddress(library, name));
        return reinterpret_cast<HRESULT(STDAPICALLTYPE*)(Arguments...)>(entry)(arguments...);
    }
    ObjectRef object() {
        const std::wstring file = folder + std::wstring(errorDisplayLibrary);
        return border.automation.createFromLibrary(file, classId).valueOr(nullptr);
    }
    Value error(ErrorRecord record) {
        return ObjectByRef{border.automation.errorObject(std::make_shared<ErrorRecord>(std::move(record)))};
    }
    /// Asks through the runtime of a program in that folder.
    std::int32_t ask(const std::wstring& programFolder) {
        fake.program.file = programFolder + L"TarvService.exe";
        Platform mixed{fake.profiles,  fake.files,        fake.environment, fake.program,
                       fake.processes, fake.desktop,      fake.regional,    fake.machine,
                       fake.shell,     border.automation, fake.codePage,    fake.xml};
        Runtime rt{mixed};
        ErrorRecord record{53, L"Datei nicht gefunden", L"Test"};
        return AskErrorMsg(rt, record, L"beim Test", L"Ort");
    }

    FakePlatform fake;
    std::wstring folder;
    HMODULE library = nullptr;
    ObjectRef display;
};

/// What Ctrl+C copies while the focus is on a button.
std::wstring copied() {
    BYTE keys[256] = {};
    keys[VK_CONTROL] = 0x80;
    SetKeyboardState(keys);
    SendMessageW(GetFocus(), WM_KEYDOWN, 'C', 0);
    keys[VK_CONTROL] = 0;
    SetKeyboardState(keys);
    OpenClipboard(nullptr);
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const std::wstring text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : L"";
    CloseClipboard();
    return text;
}

TEST_F(ErrorComponentTest, SaysEverythingThatIsKnownAndAnswersWhatTheUserDoes) {
    const auto press = [](int button) { return [button](HWND dialog) { User::press(dialog, button); }; };
    const auto key = [](WPARAM code) {
        return [code](HWND) { PostMessageW(GetFocus(), WM_KEYDOWN, code, 0); };
    };
    const std::wstring endless(20'000, L'x'); // broken into lines on the screen only
    const Value known = error({53, endless, L"Funktionen32"}),
                odd = error({-2147221005, L"a\r\nb\rc\n\n", L" "});
    const std::wstring knownReport = L"Modul:    Funktionen32\r\nRoutine: Start Exe\r\nNummer: 53\r\n\r\n" +
                                     endless + L"\r\n\r\nbeim\r\nStart";
    const std::wstring oddReport = L"Modul:    Unbekannt\r\nRoutine: Ort   KELVAR\r\nNummer: -2147221005 "
                                   L"(0x800401F3)\r\n\r\na\r\nb\r\nc\r\n\r\n"
                                   L"vor nach\r\n\r\nmehr";
    const std::vector<Value> knownCall{known, L"beim\nStart", L"Start Exe"};
    const std::vector<Value> oddCall{odd, std::wstring(L"vor\0nach", 8), L"Ort   KELVAR\r\n\r\nmehr"};
    const std::wstring nothing =
        L"Modul:    Unbekannt\r\nRoutine: Unbekannt\r\nNummer: 0\r\n\r\nKeine Beschreibung verfügbar";
    const struct {
        const wchar_t* member;
        std::vector<Value> arguments;
        std::function<void(HWND)> act;
        std::wstring report;
        Value answer;
    } cases[] = {
        {L"ErrorMsg", knownCall, press(IDOK), knownReport, Empty{}},
        {L"errormsg", {}, press(IDOK), nothing, Empty{}},
        {L"EMW", oddCall, press(IDRETRY), oddReport, 4},
        {L"EMW", oddCall, press(IDCANCEL), oddReport, 2},
        {L"EMW", {Value(), 17}, key(VK_ESCAPE), nothing + L"\r\n\r\n17", 2},
        {L"EMW", knownCall, key(VK_RETURN), knownReport, 4},
    };
    HWND windows[2];
    for (HWND& window : windows)
        window =
            CreateWindowW(L"STATIC", L"", WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(windows[0]);
    for (const auto& [member, arguments, act, report, answer] : cases) {
        bool held = false;
        std::wstring copy;
        User user([&](HWND dialog) {
            held = !IsWindowEnabled(windows[0]) && !IsWindowEnabled(windows[1]);
            copy = copied();
            act(dialog);
        });
        EXPECT_EQ(display->call(member, arguments).valueOr(Null{}), answer);
        EXPECT_TRUE(copy == report) << copy.substr(0, 300);
        EXPECT_EQ(user.texts.starts_with(L"|Fehlermeldung...|"), true) << user.texts;
        EXPECT_EQ(user.texts.find(L"|OK|") == std::wstring::npos, member == std::wstring(L"EMW"));
        EXPECT_EQ(user.texts.find(L"|&Wiederholen|&Abbrechen|") != std::wstring::npos,
                  member == std::wstring(L"EMW"));
        EXPECT_TRUE(held && IsWindowEnabled(windows[0]) && IsWindowEnabled(windows[1]));
        EXPECT_EQ(GetActiveWindow(), windows[0]);
    }
    EXPECT_FALSE(display->call(L"ErrorMsg", {1, 2, 3, 4}));
    for (const HWND window : windows)
        DestroyWindow(window);
}

TEST_F(ErrorComponentTest, TakesNamedArgumentsAndTextsByReference) {
    wchar_t name[] = L"ErrorMsg", routine[] = L"ZUSATZ";
    LPOLESTR names[] = {name, routine};
    DISPID ids[2], unknown = 9;
    const Bstr text(L"by reference");
    BSTR place = text.get();
    VARIANT arguments[2]{};
    arguments[0].vt = VT_BYREF | VT_BSTR, arguments[0].pbstrVal = &place;
    arguments[1].vt = VT_BYREF | VT_BSTR; // a broken one
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> component;
    CLSID id;
    CLSIDFromString(classId.c_str(), &id);
    call<REFCLSID, REFIID, void**>("DllGetClassObject", id, IID_IClassFactory, factory.receiveAny());
    factory->CreateInstance(nullptr, IID_IDispatch, component.receiveAny());
    ASSERT_EQ(component->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
    User user(IDOK);
    const auto invoke = [&](DISPID* named) {
        DISPPARAMS parameters{arguments, named, 2, 1};
        return component->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                                 nullptr);
    };
    EXPECT_EQ(invoke(&ids[1]), S_OK);
    EXPECT_NE(user.texts.find(L"Routine: by reference\r\n"), std::wstring::npos) << user.texts;
    EXPECT_EQ(invoke(&unknown), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(user.dialogs, 1);

    // Factory, object and lock each keep the library.
    display = nullptr;
    factory->LockServer(TRUE);
    component = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE);
    factory->LockServer(FALSE);
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, component.receiveAny()),
              CLASS_E_NOAGGREGATION);
    factory = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
    display = object();
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE);
}

TEST_F(ErrorComponentTest, NoVisibleNextMsgShowsTheSameReportOnce) {
    User user(IDRETRY);
    const struct {
        bool quiet;
        const wchar_t* location;
        std::int32_t answer, dialogs;
    } steps[] = {{true, L"A", 4, 1}, {true, L"A", 2, 1}, {false, L"A", 4, 2}, {true, L"B", 4, 3}};
    for (const auto& [quiet, location, answer, dialogs] : steps) {
        EXPECT_TRUE(display->put(L"NoVisibleNextMsg", quiet));
        EXPECT_EQ(display->get(L"novisiblenextmsg").valueOr({}), Value(quiet));
        EXPECT_EQ(display->call(L"EMW", {error({}), location, L""}).valueOr({}), Value(answer)) << location;
        EXPECT_EQ(user.dialogs, dialogs);
    }
}

TEST_F(ErrorComponentTest, RuntimeTakesTheRegisteredClassElseTheOneBesideTheProgram) {
    User user(IDRETRY);
    const auto enteredIn = [&](HKEY root) {
        return registered(root, server) == folder + std::wstring(errorDisplayLibrary) &&
               registered(root, server, L"ThreadingModel") == L"Apartment" &&
               registered(root, classes + progId + L"\\CLSID") == classId;
    };
    EXPECT_EQ(ask(folder), 4) << "unregistered";
    EXPECT_EQ(ask(L"C:\\leer\\"), 0) << "missing";
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(enteredIn(HKEY_LOCAL_MACHINE) && !enteredIn(HKEY_CURRENT_USER));
    EXPECT_EQ(ask(L"C:\\leer\\"), 4) << "registered";
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(ask(L"C:\\leer\\"), 0);
    EXPECT_EQ(user.dialogs, 2);

    // Lasting keys cannot be made below a passing one: the machine's part of the registry refuses.
    HKEY refusing = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\tarvErrorComponentTest", 0, nullptr, REG_OPTION_VOLATILE,
                    KEY_ALL_ACCESS, nullptr, &refusing, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, refusing);
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(enteredIn(HKEY_CURRENT_USER));
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(enteredIn(HKEY_CURRENT_USER));
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(refusing);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\tarvErrorComponentTest");

    // A class without the members asked for stands in for the suite's: no answer, and none of our windows.
    const std::wstring suite = registered(HKEY_CLASSES_ROOT, L"Msxml.DOMDocument\\CLSID");
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, (classes + progId + L"\\CLSID").c_str(), nullptr, REG_SZ,
                    suite.c_str(), static_cast<DWORD>((suite.size() + 1) * sizeof(wchar_t)));
    EXPECT_EQ(call("DllRegisterServer"), S_FALSE) << "the identifier stays with the suite";
    EXPECT_EQ(ask(folder), 0);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registered(HKEY_CLASSES_ROOT, progId + L"\\CLSID"), suite);
    EXPECT_EQ(user.dialogs, 2);
}

} // namespace
} // namespace tarv
