#include "examples.h"

#include "runtime/ModRkIni.h"
#include "runtime/modProgDebug.h"

#include <fstream>

// Lines in the trace file, which support reads when something went wrong.
void trace(tarv::Runtime& rt, const std::wstring& folder) {
    tarv::Tarvwin_EintragSchreiben(rt, L"Debug", L"SaveDebugIN", folder + L"Spur.txt");
    print(L"DebugTraceEnabled: " + yesNo(tarv::DebugTraceEnabled(rt)));

    tarv::DebugTrace(rt, L"Angebot geladen", true);
    tarv::DebugTrace(rt, L"126 Positionen", false, true);

    std::ifstream file(tarv::GetDebugFileName(rt).c_str());
    for (std::string line; std::getline(file, line);)
        print(L"  " + std::wstring(line.begin(), line.end()));
}
