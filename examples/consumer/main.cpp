#include "examples.h"

#include "platform/windows/ProcessHardening.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Paths.h"

#include <windows.h>

#include <objbase.h>

void print(std::wstring_view line) {
    std::string bytes(line.size() * 3 + 1, '\n');
    const int length = WideCharToMultiByte(CP_UTF8, 0, line.data(), static_cast<int>(line.size()),
                                           bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(length) + 1, &written,
              nullptr);
}

std::wstring yesNo(bool value) {
    return value ? L"ja" : L"nein";
}

int wmain(int count, wchar_t** arguments) {
    if (count != 2)
        return 2;
    const std::wstring folder = tarv::AddBackslash(arguments[1]);

    // What every program of the suite does first: harden the process, enter COM, open the border to Windows
    // and make the one runtime that lives as long as the process.
    tarv::hardenProcess();
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    tarv::WindowsPlatform windows;
    tarv::Runtime rt(windows);

    // A configuration file of our own instead of Pexoran.INI in the Windows folder, from which only the
    // switches of group "Debug" still come.
    rt.suiteIniFile = folder + L"Beispiel.INI";

    try {
        numbers(rt);
        paths(rt);
        existence(rt, folder);
        configuration(rt);
        trace(rt, folder);
        errors(rt);
        starter(rt);
        fileOperation(rt, folder);
        base64(rt);
        skins(rt);
        folderDialog(rt);
        xml(rt, folder);
        scripted();
    } catch (const tarv::RuntimeError& error) {
        print(L"Fehler " + std::to_wstring(error.record().number) + L": " + error.record().description);
        return 1;
    }
    print(L"Ende");
    return 0;
}
