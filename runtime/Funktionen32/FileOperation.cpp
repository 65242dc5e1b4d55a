#include "runtime/Funktionen32/FileOperation.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/ShellOperations.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <array>
#include <string>
#include <vector>

namespace tarv {
namespace {

constexpr std::int32_t multipleTargets = 1;
constexpr std::int32_t noProgress = 4;
constexpr std::int32_t noConfirmation = 16;
constexpr std::int32_t noFolderQuestion = 512;
constexpr std::int32_t noErrorWindow = 1024;

/// Number of the routine's own failures.
constexpr std::int32_t ownFailure = -1;

/// A result that counts as success beside 0.
constexpr std::int32_t alsoSuccess = 7;

constexpr std::wstring_view nul(L"\0", 1);

ErrorRecord failed(std::int32_t number) {
    return {number, L"Datei-Operation fehlgeschlagen", {}};
}

/// The members of a list. An empty one would end the shell's list before its time.
std::vector<std::wstring> members(std::wstring_view list) {
    std::vector<std::wstring> result;
    while (!list.empty()) {
        const auto end = list.find(L'\0');
        if (const auto member = list.substr(0, end); !member.empty())
            result.emplace_back(member);
        list.remove_prefix(end == list.npos ? list.size() : end + 1);
    }
    return result;
}

/// What the caller wants, and what it comes to.
struct Job {
    std::int32_t operation;
    std::wstring_view source;
    std::wstring_view target;
    std::int32_t flags;
    std::vector<std::wstring> sources = members(source);
    std::vector<std::wstring> targets = members(target);
    bool checksArrival = operation == file_operation::copy && source.find_first_of(L"*?") == source.npos;
};

std::wstring shellList(const std::vector<std::wstring>& paths) {
    std::wstring list;
    for (const std::wstring& path : paths)
        list.append(path).append(nul);
    return list.append(paths.empty() ? 2 : 1, L'\0');
}

bool isFolder(Runtime& rt, std::wstring_view path) {
    return (rt.platform.files->attributes(path).valueOr(0) & attribute::directory) != 0;
}

/// Whether the one target is a folder into which the sources went. Asked after the operation; `wasFolder` is
/// how it was before.
bool targetIsFolder(Runtime& rt, const Job& job, bool wasFolder) {
    if (job.targets.size() != 1)
        return false;
    if (job.sources.size() > 1 || wasFolder)
        return true;
    // A single folder whose target was not there has become the target.
    return isFolder(rt, job.targets[0]) && !isFolder(rt, job.sources[0]);
}

/// The name under which a source arrives in a folder; a folder may be written with a "\" behind it.
std::wstring arrivalName(std::wstring_view source) {
    while (source.ends_with(L'\\'))
        source.remove_suffix(1);
    return GetFileName(source, false);
}

ErrorRecord checkArrival(Runtime& rt, const Job& job, bool targetWasFolder) {
    const bool intoFolder = targetIsFolder(rt, job, targetWasFolder);
    for (std::size_t i = 0; i < job.sources.size(); ++i) {
        if (!intoFolder && i >= job.targets.size())
            return runtimeErrorRecord(error_number::subscriptOutOfRange);
        const std::wstring expected =
            intoFolder ? AddBackslash(job.targets[0]) + arrivalName(job.sources[i]) : job.targets[i];
        const bool asFolder = isFolder(rt, job.sources[i]);
        // The existence check would take a file whose name has an extension for a folder.
        if (!Uexist(rt, expected, asFolder) || (asFolder && !isFolder(rt, expected)))
            return failed(ownFailure);
    }
    return {};
}

/// One run through the shell. Number 0 when it is done and everything has arrived.
ErrorRecord run(Runtime& rt, const Job& job) {
    // The shell would take the current folder for a missing target.
    if (job.sources.empty() || (job.targets.empty() && job.operation != file_operation::remove))
        return failed(ownFailure);
    const bool targetWasFolder = job.checksArrival && job.targets.size() == 1 && isFolder(rt, job.targets[0]);
    const std::int32_t flags = job.flags | (job.targets.size() > 1 ? multipleTargets : 0);
    const ShellFileResult result =
        rt.platform.shell->fileOperation({static_cast<std::uint32_t>(job.operation), shellList(job.sources),
                                          shellList(job.targets), static_cast<std::uint16_t>(flags)});
    if (result.code != 0 && result.code != alsoSuccess)
        return failed(result.code);
    if (result.aborted)
        return {ownFailure, L"Abbruch durch den Benutzer", {}};
    return job.checksArrival ? checkArrival(rt, job, targetWasFolder) : ErrorRecord{};
}

std::wstring forDisplay(std::wstring_view list) {
    std::wstring text(list);
    ReplaceAll(text, nul, L" ; ", CompareMode::binary);
    return text;
}

/// The error display may clear its error; the caller's stays.
bool userWantsRetry(Runtime& rt, const Job& job, ErrorRecord error) {
    static constexpr std::array<std::wstring_view, 5> names{L"", L"Verschieben", L"Kopieren", L"Löschen",
                                                            L"Umbenennen"};
    const auto operation = static_cast<std::size_t>(job.operation);
    const std::wstring location =
        L"\n\r\nQuelle: " + forDisplay(job.source) + L"\r\nZiel:     " + forDisplay(job.target);
    const std::wstring heading = TranslateText(std::wstring(L"Fehler beim ")
                                                   .append(operation < names.size() ? names[operation] : L"")
                                                   .append(L" von Dateien..."));
    const std::wstring extra = heading + L"   " + StripRibbonSuffix(programName(rt));
    return AskErrorMsg(rt, error, location, extra) == message_box::answerRetry;
}

} // namespace

bool FileOperation(Runtime& rt, std::int32_t operation, std::wstring_view source, std::wstring_view target,
                   bool confirm, bool quiet, std::int32_t flags, bool silent, ErrorRecord& error) {
    // New folders are made without asking, whatever the caller wants.
    flags |= noFolderQuestion;
    if (!confirm)
        flags |= noConfirmation;
    if (quiet)
        flags |= noErrorWindow;
    if (silent)
        flags |= noProgress;
    const Job job{operation, source, target, flags};
    do {
        error = run(rt, job);
        if (error.number == 0)
            return true;
    } while (!quiet && userWantsRetry(rt, job, error));
    return false;
}

} // namespace tarv
