#pragma once

#include <windows.h>

#include <atomic>
#include <type_traits>

namespace tarv {

/// The system's library of that name, for good; null with a last error when there is none. What a manifest
/// redirects (comctl32) comes from where the manifest says, everything else from the system folder alone.
HMODULE systemLibrary(const wchar_t* name);

/// The same where no search can be narrowed: on Windows 7 without its update KB2533623. Apart for the tests.
HMODULE systemLibraryOnOldWindows7(const wchar_t* name);

/// A function of a system library; null with a last error when there is none. Keeps the last error otherwise.
FARPROC lateAddress(const wchar_t* library, const char* function);

template <class Function>
class LateEntry;

/// A function of Windows whose library is loaded at the first call instead of at the program's start: called
/// like the function itself, as LateEntry<decltype(&::Function)>. Where library or function is missing, the
/// call answers the value that the function answers on failure, and the last error says why.
template <class Result, class... Arguments>
class LateEntry<Result(WINAPI*)(Arguments...)> {
    using Function = Result(WINAPI*)(Arguments...);
    using Failure = std::conditional_t<std::is_void_v<Result>, int, Result>;

public:
    constexpr LateEntry(const wchar_t* library, const char* name, Failure failure = {})
        : library_(library), name_(name), failure_(failure) {}

    Result operator()(Arguments... arguments) const {
        if (!function_)
            function_ = reinterpret_cast<Function>(reinterpret_cast<void*>(lateAddress(library_, name_)));
        const Function function = function_;
        return function ? function(arguments...) : static_cast<Result>(failure_);
    }

private:
    const wchar_t* library_;
    const char* name_;
    Failure failure_;
    mutable std::atomic<Function> function_{nullptr};
};

} // namespace tarv
