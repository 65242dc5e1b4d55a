#include "examples.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/FileOperation.h"

// Copying through the Windows shell, with the promise that everything has arrived.
void fileOperation(tarv::Runtime& rt, const std::wstring& folder) {
    rt.platform.files->overwrite(folder + L"Los 1.x83", "Angebot");
    tarv::ErrorRecord error;
    const bool copied = tarv::FileOperation(rt, tarv::file_operation::copy, folder + L"Los 1.x83",
                                            folder + L"Los 2.x83", false, true, 0, true, error);
    print(L"FileOperation, copy: " + yesNo(copied) + L", " + yesNo(tarv::Uexist(rt, folder + L"Los 2.x83")));

    const bool removed = tarv::FileOperation(rt, tarv::file_operation::remove, folder + L"Los 1.x83", L"",
                                             false, true, 0, true, error);
    print(L"FileOperation, remove: " + yesNo(removed) + L", " +
          yesNo(tarv::Uexist(rt, folder + L"Los 1.x83")));

    const bool nothing =
        tarv::FileOperation(rt, tarv::file_operation::copy, L"", folder, false, true, 0, true, error);
    print(L"FileOperation, empty source: " + yesNo(nothing) + L", " + error.description);
}
