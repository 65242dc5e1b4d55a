#include "platform/Automation.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Variant.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/ErrorDisplay.h"
#include "runtime/Funktionen32/ErrorReport.h"
#include "tests/support/FakePlatform.h"

#include <functional>

#include <windows.h>

#include <objbase.h>

namespace tarv {
namespace {

constexpr int reportControl = 102;
const std::wstring progId(errorDisplayProgId);
const std::wstring classes = L"Software\\Classes\\";
const std::wstring classKey = L"CLSID\\" + std::wstring(errorDisplayClassId);

/// The finished program folder beside the folder of this test program.
std::wstring programFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    folder.resize(folder.rfind(L'\\'));
    folder.resize(folder.rfind(L'\\'));
    return folder + L"\\Programm\\";
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

CLSID classOf(std::wstring_view text) {
    CLSID id{};
    CLSIDFromString(std::wstring(text).c_str(), &id);
    return id;
}

/// The user at the error window: notes what it says, then does what he is told. He comes by a timer of this
/// thread, which the window's own message loop serves.
class User {
public:
    explicit User(std::function<void(HWND)> act) : act_(std::move(act)) {
        current = this;
        timer_ = SetTimer(nullptr, 0, 10, look);
    }
    /// Presses a button.
    explicit User(int button)
        : User([button](HWND window) { SendDlgItemMessageW(window, button, BM_CLICK, 0, 0); }) {}
    ~User() {
        KillTimer(nullptr, timer_);
        current = nullptr;
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    int windows = 0;
    std::wstring report;
    std::wstring buttons;
    bool othersDisabled = false;
    HWND other = nullptr;

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
        EnumThreadWindows(GetCurrentThreadId(), visit, 0);
    }

    static BOOL CALLBACK visit(HWND window, LPARAM) {
        if (!current || !IsWindowVisible(window) || textOf(window) != L"Fehlermeldung..." ||
            GetPropW(window, L"visited"))
            return TRUE;
        SetPropW(window, L"visited", reinterpret_cast<HANDLE>(1));
        ++current->windows;
        current->report = textOf(GetDlgItem(window, reportControl));
        current->othersDisabled = current->other && !IsWindowEnabled(current->other);
        current->buttons.clear();
        for (const int id : {IDOK, IDRETRY, IDCANCEL})
            if (IsWindowVisible(GetDlgItem(window, id)))
                current->buttons += textOf(GetDlgItem(window, id)) + L";";
        current->act_(window);
        return FALSE;
    }

    static inline User* current = nullptr;
    std::function<void(HWND)> act_;
    UINT_PTR timer_ = 0;
};

std::wstring registered(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[MAX_PATH] = L"";
    DWORD size = sizeof text;
    RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

class ErrorComponentTest : public testing::Test {
protected:
    ErrorComponentTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~ErrorComponentTest() override {
        if (library)
            call("DllUnregisterServer");
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, (classes + progId).c_str());
        display = nullptr;
        CoUninitialize();
    }
    void SetUp() override {
        ASSERT_TRUE(library) << "build the target rk_Runtime first";
        const auto created = automation.createFromLibrary(libraryPath, errorDisplayClassId);
        ASSERT_TRUE(created);
        display = *created;
        fake.program.file = programFolder() + L"TarvService.exe";
    }

    template <class Function>
    Function* entry(const char* name) {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    }
    HRESULT call(const char* name) { return entry<HRESULT STDAPICALLTYPE()>(name)(); }
    HRESULT classObject(std::wstring_view id, REFIID interfaceId, void** object) {
        return entry<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject")(
            classOf(id), interfaceId, object);
    }
    ComPtr<IDispatch> rawDisplay() {
        ComPtr<IClassFactory> factory;
        ComPtr<IDispatch> object;
        if (SUCCEEDED(classObject(errorDisplayClassId, IID_IClassFactory, factory.receiveAny())))
            factory->CreateInstance(nullptr, IID_IDispatch, object.receiveAny());
        return object;
    }
    Value error(ErrorRecord record) {
        return ObjectByRef{automation.errorObject(std::make_shared<ErrorRecord>(std::move(record)))};
    }
    /// Asks through the runtime, whose program folder is `fake.program`'s.
    std::int32_t ask() {
        Platform border{fake.profiles,  fake.files,   fake.environment, fake.program,
                        fake.processes, fake.desktop, fake.regional,    fake.machine,
                        fake.shell,     automation,   fake.codePage,    fake.xml};
        Runtime rt{border};
        ErrorRecord record{53, L"Datei nicht gefunden", L"Test"};
        return AskErrorMsg(rt, record, L"beim Test", L"Ort");
    }

    WindowsPlatform windows;
    Automation& automation = windows.border().automation;
    FakePlatform fake;
    std::wstring libraryPath = programFolder() + std::wstring(errorDisplayLibrary);
    HMODULE library = LoadLibraryW(libraryPath.c_str());
    ObjectRef display;
};

TEST_F(ErrorComponentTest, ReportSaysEverythingThatIsKnown) {
    const struct {
        ErrorRecord error;
        std::wstring location, extra, report;
    } cases[] = {
        {{53, L"Datei nicht gefunden", L"Funktionen32"},
         L"Fehler beim Start\nc:\\größe.exe",
         L"Start Exe",
         L"Modul:    Funktionen32\r\nRoutine: Start Exe\r\nNummer: 53\r\n\r\nDatei nicht gefunden\r\n\r\n"
         L"Fehler beim Start\r\nc:\\größe.exe"},
        {{-2147221005, L"a\r\nb\rc\n\n", L" "},
         std::wstring(L"vor\0nach", 8),
         L"Ort   KELVAR\r\n\r\nmehr",
         L"Modul:    Unbekannt\r\nRoutine: Ort   KELVAR\r\nNummer: -2147221005 "
         L"(0x800401F3)\r\n\r\na\r\nb\r\nc\r\n\r\n"
         L"vor nach\r\n\r\nmehr"},
    };
    for (const auto& shown : cases) {
        User user(IDOK);
        const auto answer = display->call(L"ErrorMsg", {error(shown.error), shown.location, shown.extra});
        EXPECT_EQ(answer.valueOr(true), Value(Empty{}));
        EXPECT_EQ(user.report, shown.report);
        EXPECT_EQ(user.buttons, L"OK;");
    }
}

TEST_F(ErrorComponentTest, QuestionAnswersTheButtonAndHoldsTheCallersWindows) {
    const auto key = [](WPARAM code) {
        return [code](HWND) { PostMessageW(GetFocus(), WM_KEYDOWN, code, 0); };
    };
    const std::pair<std::function<void(HWND)>, std::int32_t> cases[] = {
        {[](HWND window) { SendDlgItemMessageW(window, IDRETRY, BM_CLICK, 0, 0); }, 4},
        {[](HWND window) { SendDlgItemMessageW(window, IDCANCEL, BM_CLICK, 0, 0); }, 2},
        {[](HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); }, 2},
        {key(VK_ESCAPE), 2},
        {key(VK_RETURN), 4},
    };
    const auto made = [] {
        return CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                             nullptr, nullptr, nullptr);
    };
    const HWND owner = made(), second = made();
    SetActiveWindow(owner);
    for (const auto& [act, expected] : cases) {
        User user(act);
        user.other = second;
        const auto answer = display->call(L"EMW", {error({}), std::wstring(L"Ort"), std::wstring()});
        EXPECT_EQ(answer.valueOr({}), Value(expected));
        EXPECT_EQ(user.buttons, L"&Wiederholen;&Abbrechen;");
        EXPECT_TRUE(user.othersDisabled);
        EXPECT_TRUE(IsWindowEnabled(owner) && IsWindowEnabled(second));
        EXPECT_EQ(GetActiveWindow(), owner);
    }
    DestroyWindow(second);
    DestroyWindow(owner);
}

TEST_F(ErrorComponentTest, CtrlCCopiesTheSelectionElseEverything) {
    const auto copied = [&](WPARAM selectTo, const std::wstring& description) {
        std::wstring text;
        User user([&](HWND window) {
            SendDlgItemMessageW(window, reportControl, EM_SETSEL, 0, static_cast<LPARAM>(selectTo));
            BYTE keys[256] = {};
            keys[VK_CONTROL] = 0x80;
            SetKeyboardState(keys);
            SendMessageW(GetFocus(), WM_KEYDOWN, 'C', 0); // the focus is on a button
            keys[VK_CONTROL] = 0;
            SetKeyboardState(keys);
            if (OpenClipboard(window)) {
                if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
                    text = static_cast<const wchar_t*>(GlobalLock(data));
                    GlobalUnlock(data);
                }
                CloseClipboard();
            }
            SendDlgItemMessageW(window, IDOK, BM_CLICK, 0, 0);
        });
        EXPECT_TRUE(display->call(L"ErrorMsg", {error({5, description, L"M"})}));
        return text;
    };
    const std::wstring head = L"Modul:    M\r\nRoutine: Unbekannt\r\nNummer: 5\r\n\r\n";
    const std::wstring endless(20'000, L'x');
    EXPECT_EQ(copied(0, L"Text"), head + L"Text");
    EXPECT_EQ(copied(5, L"Text"), L"Modul");
    EXPECT_TRUE(copied(0, endless) == head + endless) << "without the line breaks of the screen";
}

TEST_F(ErrorComponentTest, NoVisibleNextMsgShowsTheSameReportOnce) {
    User user(IDRETRY);
    const auto emw = [&](bool quiet, const wchar_t* location) {
        EXPECT_TRUE(display->put(L"NoVisibleNextMsg", quiet));
        EXPECT_EQ(*display->get(L"novisiblenextmsg"), Value(quiet));
        return *display->call(L"EMW", {error({}), std::wstring(location), std::wstring()});
    };
    EXPECT_EQ(emw(true, L"A"), Value(std::int32_t{4}));
    EXPECT_EQ(emw(true, L"A"), Value(std::int32_t{2})) << "silently, and no endless repetition";
    EXPECT_EQ(emw(false, L"A"), Value(std::int32_t{4}));
    EXPECT_EQ(emw(true, L"B"), Value(std::int32_t{4}));
    EXPECT_EQ(user.windows, 3);
    EXPECT_FALSE(display->put(L"NoVisibleNextMsg", std::wstring(L"vielleicht")));
}

TEST_F(ErrorComponentTest, ArgumentsMayComeInEveryForm) {
    const ComPtr<IDispatch> object = rawDisplay();
    ASSERT_TRUE(object);
    wchar_t name[] = L"errormsg", extraName[] = L"ZUSATZ";
    LPOLESTR names[] = {name, extraName};
    DISPID ids[2];
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);

    Bstr text(L"by reference");
    BSTR place = text.get();
    VARIANT byRef{}, number{}, missing{}, broken{};
    byRef.vt = VT_BYREF | VT_BSTR, byRef.pbstrVal = &place;
    number.vt = VT_I4, number.lVal = 17;
    missing.vt = VT_ERROR, missing.scode = DISP_E_PARAMNOTFOUND;
    broken.vt = VT_BYREF | VT_BSTR;
    struct {
        std::vector<VARIANT> arguments; // the last one first
        std::vector<DISPID> named;
        HRESULT result;
        const wchar_t *routine, *location;
    } cases[] = {
        {{byRef, number, missing}, {}, S_OK, L"by reference", L"\r\n\r\n17"},
        {{byRef, missing}, {ids[1]}, S_OK, L"by reference", L""},
        {{broken, byRef, missing}, {}, S_OK, L"Unbekannt", L"\r\n\r\nby reference"},
        {{}, {}, S_OK, L"Unbekannt", L""},
        {{byRef, byRef, byRef, byRef}, {}, DISP_E_BADPARAMCOUNT, nullptr, nullptr},
        {{byRef}, {9}, DISP_E_PARAMNOTFOUND, nullptr, nullptr},
    };
    for (auto& [arguments, named, result, routine, location] : cases) {
        User user(IDOK);
        DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(named.size())};
        EXPECT_EQ(
            object->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            result);
        EXPECT_EQ(user.windows, result == S_OK ? 1 : 0);
        if (result == S_OK) {
            EXPECT_EQ(user.report, std::wstring(L"Modul:    Unbekannt\r\nRoutine: ") + routine +
                                       L"\r\nNummer: 0\r\n\r\nKeine Beschreibung verfügbar" + location);
        }
    }
}

TEST_F(ErrorComponentTest, RuntimeTakesTheRegisteredClassElseTheOneBesideTheProgram) {
    User user(IDRETRY);
    EXPECT_EQ(ask(), 4) << "unregistered, beside the program";
    fake.program.file = L"C:\\leer\\TarvService.exe";
    EXPECT_EQ(ask(), 0) << "missing";
    EXPECT_EQ(user.windows, 1);
    ASSERT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_EQ(ask(), 4) << "registered";
    ASSERT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(ask(), 0) << "no longer registered";
    EXPECT_EQ(user.windows, 2);
}

TEST_F(ErrorComponentTest, SuitesOwnClassWins) {
    // A class without the members asked for stands in for the suite's: no answer, and none of our windows.
    const std::wstring suite = registered(HKEY_CLASSES_ROOT, L"Msxml.DOMDocument\\CLSID");
    const auto ours = [&] { return registered(HKEY_CLASSES_ROOT, progId + L"\\CLSID"); };
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, (classes + progId + L"\\CLSID").c_str(), nullptr, REG_SZ,
                    suite.c_str(), static_cast<DWORD>((suite.size() + 1) * sizeof(wchar_t)));
    User user(IDRETRY);
    EXPECT_EQ(call("DllRegisterServer"), S_FALSE) << "the identifier stays with the suite";
    EXPECT_EQ(ask(), 0);
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(ours(), suite);
    EXPECT_EQ(user.windows, 0);
}

TEST_F(ErrorComponentTest, RegistersForTheMachineElseForTheUser) {
    const std::wstring server = classes + classKey + L"\\InprocServer32";
    const auto enteredIn = [&](HKEY root) {
        return registered(root, server) == libraryPath &&
               registered(root, server, L"ThreadingModel") == L"Apartment" &&
               registered(root, classes + progId + L"\\CLSID") == errorDisplayClassId;
    };
    ASSERT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(enteredIn(HKEY_LOCAL_MACHINE));
    EXPECT_FALSE(enteredIn(HKEY_CURRENT_USER));
    ASSERT_EQ(call("DllUnregisterServer"), S_OK);

    // Lasting keys cannot be made below a passing one: the machine's part of the registry refuses.
    const wchar_t* const passing = L"Software\\tarvErrorComponentTest";
    HKEY refusing = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, passing, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                              nullptr, &refusing, nullptr),
              ERROR_SUCCESS);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, refusing);
    EXPECT_EQ(call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(enteredIn(HKEY_CURRENT_USER));
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(enteredIn(HKEY_CURRENT_USER));
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(refusing);
    RegDeleteKeyW(HKEY_CURRENT_USER, passing);
}

TEST_F(ErrorComponentTest, LibraryStaysWhileItIsNeeded) {
    display = nullptr;
    EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(classObject(L"{00000000-0000-0000-0000-000000000001}", IID_IClassFactory, factory.receiveAny()),
              CLASS_E_CLASSNOTAVAILABLE);
    ASSERT_EQ(classObject(errorDisplayClassId, IID_IClassFactory, factory.receiveAny()), S_OK);
    void* object = nullptr;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    factory->LockServer(TRUE);
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE) << "locked";
    ComPtr<IDispatch> kept = rawDisplay();
    factory->LockServer(FALSE);
    factory = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_FALSE) << "an object lives";
    kept = {};
    EXPECT_EQ(call("DllCanUnloadNow"), S_OK);
}

} // namespace
} // namespace tarv
