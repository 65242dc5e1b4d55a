#include "examples.h"

#include "runtime/Funktionen32/Errors.h"

// A failing routine raises one exception, whose record goes to the suite's error display.
void errors(tarv::Runtime& rt) {
    try {
        tarv::raise(tarv::error_number::fileNotFound);
    } catch (const tarv::RuntimeError& error) {
        tarv::ErrorRecord record = error.record();
        print(L"Record: " + std::to_wstring(record.number) + L", " + record.description);

        // This program has no rk_Runtime.dll beside it and the suite's is not installed: the report is
        // skipped and the answer is 0. With the component a window appears; 2 then stands for "Abbrechen", 4
        // for "Wiederholen".
        const std::int32_t answer = tarv::AskErrorMsg(rt, record, L"Angebot laden", L"D:\\Bau\\Angebot.x83");
        print(L"AskErrorMsg: " + std::to_wstring(answer));
        tarv::ShowErrorMsg(rt, record, L"Angebot laden", L"D:\\Bau\\Angebot.x83");
    }
}
