// Ends by an access violation in a function with a name of its own, for tools/symbolize.
#include <windows.h>

#include <cstdio>

[[gnu::noinline]] void writeToNowhere(volatile int* target) {
    *target = 1; // the line that crashes
}

int main() {
    std::printf("base %p\n", static_cast<void*>(GetModuleHandleW(nullptr)));
    std::fflush(stdout);
    writeToNowhere(nullptr);
}
