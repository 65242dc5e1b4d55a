#pragma once

#include "platform/Desktop.h"
#include "platform/Platform.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tarv {

struct Base64Tables;

/// The suite configuration file. Without a folder: Windows looks it up in the Windows folder.
inline constexpr std::wstring_view suiteIniName = L"Pexoran.INI";

/// What the debug trace remembers within a process.
struct TraceState {
    /// For programs that leave nothing behind: no line is written, no configuration read for it.
    bool off = false;
    bool switchValue = false;
    bool switchRead = false;
    std::wstring fileName;
    std::int32_t lineCounter = 0;
};

/// Whether a program started by the suite is being waited for, and its name.
struct ExternalProgramMarker {
    bool running = false;
    std::wstring name;
};

/// The runtime library's process state and its way to Windows. One lives as long as the process; every
/// routine gets it as its first argument. Used on the user-interface thread only.
struct Runtime {
    explicit Runtime(const Platform& border, bool insideDevelopmentEnvironment = false)
        : platform(border), developmentEnvironment(insideDevelopmentEnvironment) {}

    Platform platform;

    /// Never true in a built program; tests switch it on.
    const bool developmentEnvironment;

    /// Suite configuration file; "Pexoran.INI" while empty.
    std::wstring suiteIniFile;

    /// Cached by bIstEntwicklung on first use.
    std::optional<bool> developerMode;

    /// "Zugriff_Slow"; 0 until the first existence check loads it.
    std::int16_t accessMode = 0;

    /// While set, PumpMessages does nothing.
    bool pumpSuppressed = false;

    /// First location text of the last error that the user answered with Cancel.
    std::wstring suppressedLocation;

    TraceState trace;

    /// Process that WaitForProcessEnd is waiting for; 0 when none.
    std::uint32_t runningChildId = 0;
    ExternalProgramMarker externalProgram;

    /// Built by the first conversion.
    std::shared_ptr<const Base64Tables> base64;
};

/// Handles the waiting window messages, unless they are suppressed.
inline void PumpMessages(Runtime& rt) {
    if (!rt.pumpSuppressed)
        rt.platform.desktop->pumpMessages();
}

} // namespace tarv
