#include "examples.h"

#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"

// Entries of the suite's configuration: typed by their default, which is written back where the entry is
// missing.
void configuration(tarv::Runtime& rt) {
    tarv::Tarvwin_EintragSchreiben(rt, L"DRUCKOPT", L"Rand", 12.5);
    const tarv::Value margin = tarv::Tarvwin_Eintrag(rt, L"DRUCKOPT", L"Rand", 20.0);
    print(L"Tarvwin_Eintrag, number: " + std::to_wstring(tarv::numberOf(margin, 20)));

    print(L"suiteText, missing: " + tarv::suiteText(rt, L"DRUCKOPT", L"PROGRAMM", L"NET"));
    print(L"suiteText, written back: " + tarv::suiteText(rt, L"DRUCKOPT", L"PROGRAMM", L""));

    // The quiet form: without it the user is told that the installation lacks the entry.
    print(L"GetMachineDirectoryQuiet: \"" + tarv::GetMachineDirectoryQuiet(rt, L"Beispiel") + L"\"");
    // The answer is a buffer of 100 characters, the version and NULs behind it.
    print(L"GetProgVersion: " + std::wstring(tarv::GetProgVersion(rt).c_str()));
    print(L"TranslateText: " + tarv::TranslateText(L"Schließen", 4711));
}
