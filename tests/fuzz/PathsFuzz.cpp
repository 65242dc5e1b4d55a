// Paths and command lines are any text: what the routines cut off they leave unchanged, at most one process
// starts, and nothing stays open.
#include "runtime/Funktionen32/Paths.h"

#include "runtime/Funktionen32/Starter.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    World w;
    FuzzInput input(bytes, size);
    const std::uint8_t flags = input.byte();
    const std::wstring path = input.text();
    std::wstring drive, folder, file, part;

    const std::wstring folderPath = AddBackslash(path);
    require(path.empty() ? folderPath.empty() : folderPath.ends_with(L'\\') && folderPath.starts_with(path));
    require(path.ends_with(GetFileName(path, false)));
    require(GetFileName(path, false).starts_with(GetFileName(path, true)));
    SplitPath(w.rt, path, drive, folder, file);
    require(path.ends_with(file));
    File_getLongPath(w.rt, path);
    require(path.starts_with(StripRibbonSuffix(path)));
    MakeProgramDataKey(path, path);

    const auto cut = path.find(L'\n');
    const std::wstring program = path.substr(0, cut);
    std::wstring arguments = cut == path.npos ? L"" : path.substr(cut + 1);
    const std::intptr_t process = StartExe(w.rt, program, 0, arguments, program, flags & 1, part, flags & 2,
                                           WindowHandle::none, flags & 4);
    require(w.fake.processes.created.size() + w.fake.processes.shellStarts.size() <= 2);
    if (process != 0 && process != -1)
        w.fake.processes.close(static_cast<KernelHandle>(process));
    require(w.fake.processes.open.empty());

    w.fake.facts.setVariable(L"TEMP", path);
    require(GetTempFolder(w.rt, flags & 1).ends_with(L'\\'));
    return 0;
}
