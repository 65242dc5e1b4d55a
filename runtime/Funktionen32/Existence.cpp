#include "runtime/Funktionen32/Existence.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

namespace tarv {
namespace {

constexpr std::uint32_t notPlain = attribute::hidden | attribute::system | attribute::directory;

bool meansNoName(SystemCode code) {
    return code == system_code::fileNotFound || code == system_code::pathNotFound ||
           code == system_code::noMoreFiles;
}

/// Any of these makes a file count as there. A file without all of them ("normal") counts as missing: callers
/// rely on it.
constexpr std::uint32_t fileBits =
    attribute::readOnly | attribute::hidden | attribute::system | attribute::archive;

bool hasWildcard(std::wstring_view path) {
    return path.find_first_of(L"*?") != path.npos;
}

void pumpAndSleep(Runtime& rt, std::uint32_t milliseconds) {
    PumpMessages(rt);
    rt.platform.desktop->sleep(milliseconds);
}

/// The next name that is neither hidden nor system nor a folder.
Answer<DirectoryEntry> nextPlainFile(DirectorySearch& search) {
    auto entry = search.next();
    while (entry && (entry->attributes & notPlain) != 0)
        entry = search.next();
    return entry;
}

bool existsBySearch(Runtime& rt, std::wstring_view path) {
    if (path.empty())
        return false;
    bool failed = false;
    const auto searchYieldsName = [&] {
        const auto search = rt.platform.files->search(path);
        const auto found = nextPlainFile(*search);
        failed = failed || (!found && !meansNoName(found.error()));
        return static_cast<bool>(found);
    };
    bool found = searchYieldsName();
    if (!found) {
        PumpMessages(rt);
        found = searchYieldsName();
    }
    // 52 is the run-time error of a search that the system refuses.
    if (failed && IsDesign(rt))
        rt.platform.desktop->messageBox(TranslateText(L"Fehler: 52  in Uexist: \n").append(path),
                                        TranslateText(L"IsDesign"),
                                        message_box::ok | message_box::systemModal);
    return found;
}

/// What the read of the file length tells.
enum class Probe {
    there,
    notThere,
    inconclusive,
    notTried
};

Probe probeAgain(Runtime& rt, std::wstring_view path, bool quick) {
    pumpAndSleep(rt, 1);
    PumpMessages(rt);
    if (const auto length = rt.platform.files->length(path))
        return *length >= 1 ? Probe::there : Probe::inconclusive;
    return quick ? Probe::notThere : Probe::inconclusive;
}

Probe probeLength(Runtime& rt, std::wstring_view path, bool directory, bool quick) {
    if (hasWildcard(path) || path.size() <= 2 || directory)
        return Probe::notTried;
    const auto length = rt.platform.files->length(path);
    if (!length)
        return probeAgain(rt, path, quick);
    if (*length >= 1)
        return Probe::there;

    // A folder has length 0 as well; one whose attributes cannot be read is taken for one.
    const auto attributes = rt.platform.files->attributes(path);
    if (!attributes || (*attributes & attribute::directory) != 0)
        return Probe::notThere;
    pumpAndSleep(rt, 0);
    return Probe::inconclusive;
}

/// Small letters; a drive letter, alone or with ":", becomes the drive's root. The two-character range is a
/// plain comparison of texts, so "ab" gets its "\" as well.
std::wstring normalised(std::wstring_view path) {
    std::wstring lower = lowerCase(path);
    if (lower.size() == 1 && lower >= L"a" && lower <= L"z")
        return std::wstring(path) + L":\\";
    if (lower.size() == 2 && lower >= L"a:" && lower <= L"z:")
        return std::wstring(path) + L"\\";
    return lower;
}

std::optional<std::uint32_t> readAttributesPatiently(Runtime& rt, std::wstring_view path) {
    for (int attempt = 1; attempt <= 3; ++attempt) {
        if (const auto attributes = rt.platform.files->attributes(path))
            return *attributes;
        pumpAndSleep(rt, 1);
        PumpMessages(rt);
    }
    return std::nullopt;
}

void showToDeveloper(Runtime& rt, std::wstring_view path, std::wstring_view remark) {
    if (bIstEntwicklung(rt))
        rt.platform.desktop->messageBox(std::wstring(path).append(TranslateText(remark)),
                                        TranslateText(L"bIstEntwicklung"),
                                        message_box::ok | message_box::systemModal);
}

/// A file found where a folder was asked for counts as there when its name looks like a file's.
bool fileStandsForFolder(Runtime& rt, std::wstring_view path, std::uint32_t attributes) {
    if (path.ends_with(L'\\'))
        return false;
    showToDeveloper(rt, path, L"\nEs wurde nach einem Dir gesucht - gibts nicht --- richtig?");
    const bool looksLikeFile = path.size() > 6 && path.substr(path.size() - 6).find(L'.') != path.npos;
    if ((attributes & fileBits) == 0 || !looksLikeFile)
        return false;
    showToDeveloper(
        rt, path, L"\nAber den File gibt es!\n<Uexist> bringt nun trotzdem True zurück - 2. Param ändern!!!");
    return true;
}

bool existsPatiently(Runtime& rt, std::wstring_view path, bool directory, bool quick) {
    if (path.empty())
        return false;
    const Probe probe = probeLength(rt, path, directory, quick);
    if (probe == Probe::there || probe == Probe::notThere)
        return probe == Probe::there;

    const std::wstring normal = normalised(path);
    if (const auto attributes = readAttributesPatiently(rt, normal)) {
        if (!directory)
            return (*attributes & fileBits) != 0;
        return (*attributes & attribute::directory) != 0 || fileStandsForFolder(rt, path, *attributes);
    }
    if (quick || (probe == Probe::inconclusive && !hasWildcard(normal)))
        return false;
    // The last resort after all reads have failed.
    std::vector<std::wstring> names;
    return hasWildcard(normal) ? ListFiles(rt, normal, names) >= 1
                               : static_cast<bool>(rt.platform.files->attributes(normal));
}

} // namespace

bool Uexist(Runtime& rt, std::wstring_view path, bool directory, bool& quick) {
    if (!directory && (path.ends_with(L'\\') || path.ends_with(L':'))) {
        if (IsDesign(rt))
            rt.platform.desktop->messageBox(TranslateText(L"Optionaler Param kam dazu für Directories"),
                                            TranslateText(L"Design"), message_box::ok);
        return false;
    }
    if (rt.accessMode == 0)
        LoadAccessMode(rt);

    const bool mayBeSearched = path.find(L'*') != path.npos || (quick && rt.accessMode <= 1);
    if (mayBeSearched && !directory)
        return existsBySearch(rt, path);
    if (rt.accessMode > 2)
        quick = false;
    return existsPatiently(rt, path, directory, quick);
}

bool Uexist(Runtime& rt, std::wstring_view path, bool directory) {
    bool quick = false;
    return Uexist(rt, path, directory, quick);
}

void LoadAccessMode(Runtime& rt) {
    double mode = 0;
    try {
        mode = std::floor(std::abs(readNumber(suiteText(rt, L"SYS", L"Zugriff_Slow", L"1"))));
    } catch (const RuntimeError&) {
        // A number that no double holds is outside the range like any other.
    }
    const bool inRange = mode >= 1 && mode <= std::numeric_limits<std::int16_t>::max();
    rt.accessMode = inRange ? static_cast<std::int16_t>(mode) : std::int16_t{1};
}

int ListFiles(Runtime& rt, std::wstring_view pattern, std::vector<std::wstring>& names) {
    // Removing by ascending index shifts the rest, so the second, fourth ... name stays. Callers know.
    std::vector<std::wstring> kept;
    for (std::size_t i = 1; i < names.size(); i += 2)
        kept.push_back(std::move(names[i]));
    names = std::move(kept);

    int found = 0;
    const auto search = rt.platform.files->search(pattern);
    for (auto file = nextPlainFile(*search); file; file = nextPlainFile(*search)) {
        names.push_back(std::move(file->name));
        ++found;
    }
    return found;
}

} // namespace tarv
