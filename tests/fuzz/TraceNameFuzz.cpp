// Whatever name and suffix the configuration gives the trace file: the name keeps its extension, and every
// line arrives whole or not at all.
#include "runtime/modProgDebug.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    FakePlatform fake;
    Runtime rt{fake.border};
    fake.disk.addFile(L"C:\\Windows\\Pexoran.INI", "[Debug]\r\n" + std::string(bytes, bytes + size));

    const std::wstring name = GetDebugFileName(rt);
    DebugTrace(rt, L"eins");
    DebugTrace(rt, L"zwei", false, true);
    require(!name.empty() && rt.trace.lineCounter == 2);
    if (const FakeEntry* written = fake.disk.find(name);
        written && !written->isFolder() && !written->bytes.starts_with("[Debug]"))
        require(written->bytes.ends_with("zwei\r\n"));
    return 0;
}
