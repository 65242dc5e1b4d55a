// The path routines take any text; what they cut off they leave unchanged.
#include "runtime/Funktionen32/Paths.h"

#include "runtime/Runtime.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    FakePlatform fake;
    Runtime rt{fake.border};
    FuzzInput input(bytes, size);
    const bool flag = input.byte() % 2 != 0;
    const std::wstring path = input.text();

    const std::wstring folderPath = AddBackslash(path);
    require(path.empty() ? folderPath.empty() : folderPath.ends_with(L'\\') && folderPath.starts_with(path));
    require(path.ends_with(GetFileName(path, false)));
    require(GetFileName(path, false).starts_with(GetFileName(path, true)));
    std::wstring drive;
    std::wstring folder;
    std::wstring file;
    SplitPath(rt, path, drive, folder, file);
    require(path.ends_with(file));
    File_getLongPath(rt, path);
    require(path.starts_with(StripRibbonSuffix(path)));
    MakeProgramDataKey(path, path);
    fake.facts.setVariable(L"TEMP", path);
    require(GetTempFolder(rt, flag).ends_with(L'\\'));
    return 0;
}
