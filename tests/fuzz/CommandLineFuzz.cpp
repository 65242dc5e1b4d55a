// The starter splits any text: at most one process starts, from the texts that were given, and nothing stays
// open.
#include "runtime/Funktionen32/Starter.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/World.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    FakePlatform fake;
    Runtime rt{fake.border};
    FuzzInput input(bytes, size);
    const std::uint8_t flags = input.byte();
    const std::wstring text = input.text();
    const auto cut = text.find(L'\n');
    std::wstring arguments = cut == text.npos ? L"" : text.substr(cut + 1);
    std::wstring part;

    const std::intptr_t result = StartExe(rt, text.substr(0, cut), 0, arguments, text.substr(0, cut),
                                          flags & 1, part, flags & 2, WindowHandle::none, flags & 4);
    require(fake.processes.created.size() + fake.processes.shellStarts.size() <= 2);
    if (result != 0 && result != -1)
        fake.processes.close(static_cast<KernelHandle>(result));
    require(fake.processes.open.empty());
    return 0;
}
