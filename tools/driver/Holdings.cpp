#include "tools/driver/Holdings.h"

#include "tools/driver/Surroundings.h"

#include <algorithm>
#include <memory>
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
    for (const HMENU menu : menus)
        DestroyMenu(menu);
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

/// Counts them one by one: what the list of processes gives is, under Wine, the size of their handle table.
int kernelHandles(HANDLE process) {
    struct Entry {
        ULONG process;
        UCHAR type;
        UCHAR flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    struct Table {
        ULONG count;
        Entry entries[1 << 16];
    };
    constexpr auto everyHandle = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    const auto table = std::make_unique<Table>();
    NtQuerySystemInformation(everyHandle, table.get(), sizeof(Table), nullptr);
    return static_cast<int>(
        std::count_if(table->entries, table->entries + table->count,
                      [id = GetProcessId(process)](const Entry& entry) { return entry.process == id; }));
}

} // namespace

Holdings holdingsOf(HANDLE process) {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(process, &memory, sizeof memory);
    if (!underWine()) {
        DWORD handles = 0;
        GetProcessHandleCount(process, &handles);
        return {static_cast<int>(GetGuiResources(process, GR_USEROBJECTS)),
                static_cast<int>(GetGuiResources(process, GR_GDIOBJECTS)), static_cast<int>(handles),
                memory.PagefileUsage};
    }
    return {userObjects(), gdiObjects(process), kernelHandles(process), memory.PagefileUsage};
}

} // namespace tarv::program
