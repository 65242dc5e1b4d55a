#include "examples.h"

#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Starter.h"

// Starting another program and waiting for its end while the own windows stay alive.
void starter(tarv::Runtime& rt) {
    const std::wstring shell = tarv::GetWinDir(rt) + L"\\system32\\cmd.exe";
    std::wstring arguments = L"/c exit 3", programPart;
    const std::intptr_t answer = tarv::StartExe(rt, shell, 0, arguments, L"", true, programPart, false,
                                                tarv::WindowHandle::none, false);
    print(L"StartExe: " + std::to_wstring(answer));

    std::wstring name = L"G2K_Pruefung.exe";
    bool running = true;
    tarv::MarkExternalProgram(rt, running, true, name);
    print(L"MarkExternalProgram: " + yesNo(tarv::MarkExternalProgram(rt, running, false, name)) + L", " +
          name);

    print(L"GetEXEmitPfad: " + tarv::GetEXEmitPfad(rt, L"Bericht.pdf"));
}
