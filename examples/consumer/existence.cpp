#include "examples.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Existence.h"

#include <vector>

// Is it there? Asked in a way that survives slow network drives.
void existence(tarv::Runtime& rt, const std::wstring& folder) {
    rt.platform.files->overwrite(folder + L"Los A.txt", "12,5 m2");
    rt.platform.files->overwrite(folder + L"Los B.txt", "7,5 m2");

    print(L"Uexist, file: " + yesNo(tarv::Uexist(rt, folder + L"Los A.txt")));
    print(L"Uexist, folder: " + yesNo(tarv::Uexist(rt, folder, true)));
    print(L"Uexist, wildcard: " + yesNo(tarv::Uexist(rt, folder + L"*.txt")));
    print(L"Uexist, missing: " + yesNo(tarv::Uexist(rt, folder + L"Los C.txt")));

    std::vector<std::wstring> names;
    const int found = tarv::ListFiles(rt, folder + L"Los *.txt", names);
    print(L"ListFiles: " + std::to_wstring(found));
    for (const std::wstring& name : names)
        print(L"  " + name);
}
