#include "examples.h"

#include "runtime/Funktionen32/Existence.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"
#include "scripted/FakePlatform.h"

// A test of one's own program needs no Windows, no network drive and no luck: the border is played.
void scripted() {
    tarv::FakePlatform fake;
    tarv::Runtime rt(fake.border);

    fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini", L"[Directories]\nDaten=N:\\Daten\n");
    fake.disk.addFile(L"N:\\Daten\\Los 1.x83", "<lv/>");
    const std::wstring file = tarv::GetMachineDirectory(rt, L"Daten", false) + L"Los 1.x83";
    print(L"scripted, " + file + L": " + yesNo(tarv::Uexist(rt, file)));

    // The drive goes: every call fails with "network path not found".
    fake.faults.fail("FileStore.attributes", 53);
    fake.faults.fail("FileStore.search", 53);
    fake.faults.fail("FileStore.length", 53);
    print(L"scripted, drive gone: " + yesNo(tarv::Uexist(rt, file)));
    print(L"scripted, it was asked: " + yesNo(fake.faults.calls("FileStore.attributes") > 0));
}
