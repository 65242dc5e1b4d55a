// The console companion of the service program: its report and tree for scripts and administrators. It may
// run where nobody sees a window: under the system account, in the session of services, without a profile.

#include "platform/windows/ProcessHardening.h"
#include "platform/windows/WindowsPlatform.h"
#include "report/Command.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/Unicode.h"
#include "win/ComApartment.h"

#include <algorithm>
#include <string>

#include <windows.h>

#ifdef __MINGW32__
// The start code of some builds of this compiler takes "/?" for a pattern of file names.
extern "C" {
int _dowildcard = 0;
}
#endif

namespace tarv {
namespace {

/// Until Windows 8 a console takes the text of one call through a heap of 64 KB. What a pipe's reader takes
/// at once is his affair, too.
constexpr std::size_t largestPiece = 16384;

template <class Text, class Write>
bool writeAll(Text text, Write write) {
    while (!text.empty()) {
        const auto piece = static_cast<DWORD>(std::min(text.size(), largestPiece));
        DWORD written = 0;
        if (!write(text.data(), piece, &written) || written == 0)
            return false;
        text.remove_prefix(written);
    }
    return true;
}

std::wstring wide(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    result.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), length)));
    return result;
}

/// A console shows characters whatever its code page is; everything else gets the bytes. Without a handle, or
/// with one that is closed already, the system refuses.
Output outputTo(DWORD which) {
    return [stream = GetStdHandle(which)](std::string_view text) {
        DWORD mode = 0;
        if (!GetConsoleMode(stream, &mode))
            return writeAll(text, [&](auto... part) { return WriteFile(stream, part..., nullptr); });
        const std::wstring characters = wide(text);
        return writeAll(std::wstring_view(characters),
                        [&](auto... part) { return WriteConsoleW(stream, part..., nullptr); });
    };
}

int run(std::span<const wchar_t* const> arguments) {
    const Output errors = outputTo(STD_ERROR_HANDLE);
    try {
        const ComApartment apartment;
        WindowsPlatform platform;
        Runtime rt{platform};
        return runReport(rt, arguments, outputTo(STD_OUTPUT_HANDLE), errors);
    } catch (...) {
        errors(utf8(TranslateText(L"Windows stellt nicht genügend Speicher bereit.\r\n")));
        return exit_code::notWritable;
    }
}

} // namespace
} // namespace tarv

int wmain(int count, wchar_t** arguments) {
    // No box of the system's either, not even for a crash.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    tarv::hardenProcess();
    return tarv::run({arguments + std::min(count, 1), arguments + count});
}
