#include "runtime/Funktionen32/Paths.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

#include <algorithm>

namespace tarv {
namespace {

/// Whether an entry is that of the variable `capitalName`. Some entries carry a blank behind the name.
bool entryNames(std::wstring_view capitalEntry, std::wstring_view capitalName) {
    if (!capitalEntry.starts_with(capitalName) || capitalEntry.size() == capitalName.size())
        return false;
    const wchar_t behind = capitalEntry[capitalName.size()];
    return behind == L'=' || behind == L' ';
}

/// The first non-empty value in environment order of an entry that `names` accepts in capital letters. An
/// empty entry is the end of the environment.
template <class Names>
std::wstring firstValue(Runtime& rt, Names names) {
    for (const std::wstring& entry : rt.platform.facts->environment()) {
        if (entry.empty())
            break;
        const auto equals = entry.find(L'=');
        if (equals == entry.npos || !names(upperCase(entry)))
            continue;
        if (const auto value = trim(std::wstring_view(entry).substr(equals + 1)); !value.empty())
            return std::wstring(value);
    }
    return {};
}

/// Walks the path component by component. Raises fileNotFound when a component other than the last is
/// missing.
std::wstring longPath(Runtime& rt, std::wstring_view path) {
    std::wstring shortPrefix;
    std::wstring result;
    std::size_t start = 0;
    for (;;) {
        const auto end = path.find(L'\\', start);
        const bool isLast = end == path.npos;
        shortPrefix = AddBackslash(shortPrefix).append(path.substr(start, end - start));
        result = AddBackslash(result);

        // "C:" is no file to look up, and neither are the empty parts in front of a share name.
        const bool behindDrivePart = start >= 3 || (!isLast && end >= 4);
        if (!behindDrivePart)
            result += shortPrefix;
        else if (const auto found = rt.platform.files->search(shortPrefix)->next())
            result += found->name;
        else if (!isLast)
            raise(error_number::fileNotFound);

        if (isLast)
            return result;
        start = end + 1;
    }
}

} // namespace

std::wstring AddBackslash(std::wstring_view path) {
    std::wstring result(path);
    if (!result.empty() && result.back() != L'\\')
        result += L'\\';
    return result;
}

std::wstring GetFileName(std::wstring_view path, bool stripExtension) {
    auto cut = path.rfind(L'\\');
    if (cut == path.npos)
        cut = path.rfind(L':');
    const auto name = path.substr(cut + 1);
    return std::wstring(stripExtension ? name.substr(0, name.rfind(L'.')) : name);
}

void SplitPath(Runtime& rt, std::wstring_view path, std::wstring& drive, std::wstring& folder,
               std::wstring& file) {
    std::wstring whole(path);
    if (path.find(L'\\') == path.npos)
        whole = AddBackslash(rt.platform.files->currentDirectory()).append(path);

    // Length of the drive part, 0 without one.
    const auto driveLength = whole.find(L':') + 1;
    if (driveLength > 0) {
        drive = whole.substr(0, driveLength);
    } else if (!whole.starts_with(L"\\\\")) {
        const std::wstring current = rt.platform.files->currentDirectory();
        drive = current.substr(0, current.find(L':') + 1);
    }

    const auto fileStart = std::max(whole.rfind(L'\\') + 1, driveLength);
    file = whole.substr(fileStart);
    folder = whole.substr(driveLength, fileStart - driveLength);
    if (folder.size() >= 2 && folder.back() == L'\\')
        folder.pop_back();
}

std::wstring File_getLongPath(Runtime& rt, std::wstring_view path) {
    if (path.find(L'~') == path.npos)
        return std::wstring(path);
    try {
        return longPath(rt, path);
    } catch (const RuntimeError& error) {
        if (bIstEntwicklung(rt)) {
            const std::wstring text = TranslateText(L"Fehler: ") + std::to_wstring(error.record().number) +
                                      L" " + error.record().description +
                                      TranslateText(L"\nin File_getLongPath");
            rt.platform.desktop->messageBox(text, TranslateText(L"bIstEntwicklung"),
                                            message_box::ok | message_box::systemModal);
        }
        return std::wstring(path);
    }
}

std::wstring GetEnvValue(Runtime& rt, std::wstring_view name) {
    if (name.empty())
        return {};
    const std::wstring capitalName = upperCase(name);
    return firstValue(rt, [&](std::wstring_view entry) { return entryNames(entry, capitalName); });
}

std::wstring GetTempFolder(Runtime& rt, bool longPath) {
    std::wstring folder = firstValue(
        rt, [](std::wstring_view entry) { return entryNames(entry, L"TEMP") || entryNames(entry, L"TMP"); });
    if (!folder.ends_with(L'\\'))
        folder += L'\\';
    return longPath ? File_getLongPath(rt, folder) : folder;
}

std::wstring MakeProgramDataKey(std::wstring_view program, std::wstring_view dataPath) {
    return (L"PRG:" + upperCase(trim(program)) + L" DATA:").append(trim(dataPath));
}

std::wstring StripRibbonSuffix(std::wstring_view name) {
    auto cut = name.find(L"__");
    if (cut == name.npos)
        cut = upperCase(name).find(L"-RIBBON");
    return std::wstring(name.substr(0, cut));
}

std::wstring programFolder(Runtime& rt) {
    const std::wstring path = rt.platform.facts->programPath();
    const auto cut = path.rfind(L'\\');
    return cut == path.npos ? std::wstring() : path.substr(0, cut);
}

std::wstring programName(Runtime& rt) {
    return GetFileName(rt.platform.facts->programPath(), true);
}

std::wstring GetPCName(Runtime& rt) {
    return rt.platform.facts->computerName().valueOr({});
}

std::wstring GetLocalIP(Runtime& rt) {
    return rt.platform.facts->localAddress().valueOr(L"127.0.0.1");
}

std::wstring GetLoginName(Runtime& rt) {
    return rt.platform.facts->userName().valueOr({});
}

std::wstring GetWinDir(Runtime& rt) {
    return rt.platform.facts->windowsDirectory(256);
}

} // namespace tarv
