// The error display: the built DLL as a component, its window, its registration.

#include "platform/Automation.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"
#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Funktionen32/ErrorReport.h"
#include "tests/support/ContractWorld.h"
#include "scripted/FakePlatform.h"
#include "tests/windows/User.h"

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

class ErrorComponentTest : public Contract {
protected:
    ErrorComponentTest() {
        wchar_t own[MAX_PATH];
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        folder = std::filesystem::path(own).parent_path().parent_path().wstring() + L"\\Programm\\";
        file = folder + std::wstring(errorDisplayLibrary);
        library = LoadLibraryW(file.c_str());
        display = border.automation.createFromLibrary(file, classId).valueOr(nullptr);
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
    Value error(ErrorRecord record) {
        return ObjectByRef{border.automation.errorObject(std::make_shared<ErrorRecord>(std::move(record)))};
    }

    FakePlatform fake;
    std::wstring folder, file;
    HMODULE library = nullptr;
    ObjectRef display;
};

/// Presses Ctrl+C while the focus is on a button, and tells what has been copied.
std::wstring copied() {
    BYTE keys[256] = {};
    for (const BYTE state : {BYTE{0x80}, BYTE{0}}) {
        keys[VK_CONTROL] = state;
        SetKeyboardState(keys);
        SendMessageW(GetFocus(), WM_KEYDOWN, state ? 'C' : VK_CONTROL, 0);
    }
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
    const std::vector<Value> known{error({53, endless, L"M"}), L"beim\nStart", L"Start"},
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
         L"Modul:    M\r\nRoutine: Start\r\nNummer: 53\r\n\r\n" + endless + L"\r\n\r\nbeim\r\nStart"},
        {false, {}, press(IDOK), Empty{}, nothing},
        {true, odd, press(IDRETRY), 4, oddReport},
        {true, odd, press(IDCANCEL), 2, oddReport},
        {true, {Value(), 17}, key(VK_ESCAPE), 2, nothing + L"\r\n\r\n17"},
        {true, odd, key(VK_RETURN), 4, oddReport},
    };
    const HWND owner =
                   CreateWindowW(L"STATIC", L"", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr),
               second =
                   CreateWindowW(L"STATIC", L"", WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    for (const auto& [question, arguments, act, answer, report] : cases) {
        SetActiveWindow(owner);
        bool held = false;
        std::wstring copy;
        User user([&](HWND dialog) {
            held = !IsWindowEnabled(owner) && !IsWindowEnabled(second);
            copy = copied();
            act(dialog);
        });
        EXPECT_EQ(display->call(question ? L"EMW" : L"errormsg", arguments).valueOr(Null{}), answer);
        EXPECT_TRUE(copy == report) << copy.substr(0, 300);
        EXPECT_TRUE(user.texts.starts_with(L"|Fehlermeldung...|")) << user.texts;
        EXPECT_EQ(user.texts.find(L"|&Wiederholen|&Abbrechen|") != user.texts.npos, question);
        EXPECT_TRUE(held && IsWindowEnabled(owner) && IsWindowEnabled(second) && GetActiveWindow() == owner);
    }
    DestroyWindow(second);
    DestroyWindow(owner);

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

TEST_F(ErrorComponentTest, TakesTextsByReferenceAndNamedOnesAndStaysWhileItIsNeeded) {
    CLSID id;
    CLSIDFromString(classId.c_str(), &id);
    const auto factory = [&] {
        ComPtr<IClassFactory> made;
        call<REFCLSID, REFIID, void**>("DllGetClassObject", id, IID_IClassFactory, made.receiveAny());
        return made;
    };
    ComPtr<IDispatch> component;
    factory()->CreateInstance(nullptr, IID_IDispatch, component.receiveAny());
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
    EXPECT_NE(user.texts.find(L"Routine: by reference\r\n"), std::wstring::npos) << user.texts;
    EXPECT_FALSE(display->call(L"ErrorMsg", {1, 2, 3, 4}));

    display = nullptr;
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE) << "an object lives";
    component = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
    factory()->LockServer(TRUE);
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE) << "locked";
    factory()->LockServer(FALSE);
    EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
}

TEST_F(ErrorComponentTest, RuntimeTakesTheRegisteredClassElseTheOneBesideTheProgram) {
    User user(IDRETRY);
    Platform mixed{fake.profiles,  fake.files,        fake.environment, fake.program,
                   fake.processes, fake.desktop,      fake.regional,    fake.machine,
                   fake.shell,     border.automation, fake.codePage,    fake.xml};
    const auto ask = [&](const std::wstring& programFolder) {
        fake.program.file = programFolder + L"TarvService.exe";
        Runtime rt{mixed};
        ErrorRecord record{53, L"Datei nicht gefunden", L"Test"};
        return AskErrorMsg(rt, record, L"beim Test", L"Ort");
    };
    const auto enteredIn = [&](HKEY root) {
        const std::wstring server = classes + L"CLSID\\" + classId + L"\\InprocServer32";
        return registered(root, server) == file &&
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
    RegDeleteKeyW(refusing, L"");

    // A class without the members asked for stands in for the suite's: no answer, and none of our windows.
    const std::wstring suite = registered(HKEY_CLASSES_ROOT, L"Msxml.DOMDocument\\CLSID");
    RegSetValueW(HKEY_LOCAL_MACHINE, (classes + progId + L"\\CLSID").c_str(), REG_SZ, suite.c_str(), 0);
    EXPECT_EQ(call("DllRegisterServer"), S_FALSE) << "the identifier stays with the suite";
    EXPECT_EQ(ask(folder), 0);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(registered(HKEY_CLASSES_ROOT, progId + L"\\CLSID"), suite);
    EXPECT_EQ(user.dialogs, 2);
}

} // namespace
} // namespace tarv
