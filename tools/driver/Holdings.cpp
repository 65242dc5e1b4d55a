#include "tools/driver/Holdings.h"

#include <algorithm>
#include <vector>

#include <psapi.h>
#include <winternl.h>

namespace tarv::program {
namespace {

/// All places of the session's table up to the highest, less those that the menus made here fill: they fill
/// every gap first.
int userObjects() {
    constexpr int firstHandle = 0x20;
    std::vector<HMENU> menus(2000);
    int places = 0;
    for (HMENU& menu : menus) {
        menu = CreateMenu();
        places = std::max(places, (LOWORD(reinterpret_cast<UINT_PTR>(menu)) - firstHandle) / 2 + 1);
    }
    for (const HMENU menu : menus) {
        DestroyMenu(menu);
    }
    return places - static_cast<int>(menus.size());
}

/// Counts the used entries of the table that every process shares with the system.
int gdiObjects(HANDLE process) {
    struct Entry {
        ULONG64 object;
        ULONG owner;
        USHORT unique;
        UCHAR type;
        UCHAR flags;
        ULONG64 userPointer;
    };
    constexpr std::size_t tableInEnvironmentBlock = sizeof(void*) == 8 ? 0xF8 : 0x94;
    PROCESS_BASIC_INFORMATION basic{};
    NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    void* table = nullptr;
    std::vector<Entry> entries(0x4000);
    ReadProcessMemory(process, reinterpret_cast<char*>(basic.PebBaseAddress) + tableInEnvironmentBlock,
                      &table, sizeof table, nullptr);
    ReadProcessMemory(process, table, entries.data(), entries.size() * sizeof(Entry), nullptr);
    return static_cast<int>(
        std::count_if(entries.begin(), entries.end(), [](const Entry& entry) { return entry.type != 0; }));
}

int kernelHandles(HANDLE process) {
    const auto id = reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(GetProcessId(process)));
    std::vector<char> buffer(1 << 20);
    NtQuerySystemInformation(SystemProcessInformation, buffer.data(), 1 << 20, nullptr);
    for (const char* at = buffer.data();;) {
        const auto& each = *reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(at);
        if (each.UniqueProcessId == id) {
            return static_cast<int>(each.HandleCount);
        }
        if (each.NextEntryOffset == 0) {
            return 0;
        }
        at += each.NextEntryOffset;
    }
}

} // namespace

Holdings holdingsOf(HANDLE process) {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(process, &memory, sizeof memory);
    return {userObjects(), gdiObjects(process), kernelHandles(process), memory.PagefileUsage};
}

} // namespace tarv::program
