#include "examples.h"

#include "runtime/Funktionen32/Paths.h"
#include "runtime/ModRkIni.h"

// Taking paths apart and finding the usual folders.
void paths(tarv::Runtime& rt) {
    std::wstring drive, folder, file;
    tarv::SplitPath(rt, L"D:\\Bau\\Los 1\\Angebot.x83", drive, folder, file);
    print(L"SplitPath: " + drive + L" | " + folder + L" | " + file);
    print(L"GetFileName: " + tarv::GetFileName(L"D:\\Bau\\Los 1\\Angebot.x83", true));
    print(L"AddBackslash: " + tarv::AddBackslash(L"D:\\Bau"));
    print(L"MakeProgramDataKey: " + tarv::MakeProgramDataKey(L"Kalk", L"D:\\Bau"));
    print(L"StripRibbonSuffix: " + tarv::StripRibbonSuffix(L"Kalk-Ribbon.exe"));

    print(L"ProgramName: " + tarv::programName(rt));
    print(L"GetWinDir: " + tarv::GetWinDir(rt));
    print(L"GetWindowsFolder: " + tarv::GetWindowsFolder(rt));
    print(L"GetEnvValue: " + tarv::GetEnvValue(rt, L"SystemDrive"));
}
