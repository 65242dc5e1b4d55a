#include "infocenter/WholeText.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/Unicode.h"
#include "runtime/detail/WholeFile.h"

#include <algorithm>
#include <cwchar>

namespace tarv {
namespace {

constexpr std::wstring_view lineEnd = L"\r\n";

/// Why a file could not be written, as a user understands it.
std::wstring reason(SystemCode code) {
    constexpr SystemCode writeProtected = 19, handleDiskFull = 39, diskFull = 112;
    switch (code) {
    case system_code::accessDenied:
    case writeProtected:
        return TranslateText(L"Hier darf nicht geschrieben werden, oder die Datei ist schreibgeschützt.");
    case system_code::sharingViolation:
    case system_code::lockViolation:
        return TranslateText(L"Ein anderes Programm hat die Datei geöffnet.");
    case handleDiskFull:
    case diskFull:
        return TranslateText(L"Der Datenträger ist voll.");
    case system_code::fileNotFound:
    case system_code::pathNotFound:
        return TranslateText(L"Der Ordner ist nicht zu erreichen.");
    default:
        return TranslateText(L"Windows meldet den Fehler ") + std::to_wstring(code) + L".";
    }
}

} // namespace

std::wstring groupText(const IniGroupNode& group) {
    std::wstring text = group.text;
    text.append(lineEnd);
    for (const std::wstring& entry : group.entries)
        text.append(L"    ").append(entry).append(lineEnd);
    return text;
}

std::wstring wholeText(std::wstring_view report, const IniTree& tree) {
    std::wstring text(report);
    for (const IniGroupNode& group : tree.groups)
        text += groupText(group);
    return text;
}

std::wstring wholeTextFileName(std::wstring_view computer, int year, int month, int day) {
    std::wstring name(computer);
    std::ranges::replace_if(
        name,
        [](wchar_t c) {
            return c < L' ' || std::wstring_view(L"\\/:*?\"<>|").find(c) != std::wstring_view::npos;
        },
        L'_');
    wchar_t date[40];
    static_cast<void>(std::swprintf(date, std::size(date), L"_%04d-%02d-%02d.txt", year, month, day));
    return L"Infocenter_" + name + date;
}

std::string markedUtf8(std::wstring_view text) {
    return "\xEF\xBB\xBF" + utf8(text);
}

std::optional<std::wstring> saveWhole(Runtime& rt, const std::wstring& file, std::string_view bytes) {
    FileStore& files = *rt.platform.files;
    const std::wstring fresh = freeNameBeside(files, file);
    SystemCode code = files.overwrite(fresh, bytes);
    const bool written = code == 0;
    if (written)
        code = putInPlace(rt.platform, file, fresh);
    if (code == 0)
        return std::nullopt;
    std::wstring message = TranslateText(L"Der Bericht kann hier nicht gespeichert werden:");
    message.append(lineEnd).append(file).append(lineEnd).append(lineEnd).append(reason(code));
    if (written && !files.attributes(file))
        message.append(lineEnd).append(TranslateText(L"Er liegt vollständig in ")).append(fresh);
    else if (written || code != system_code::sharingViolation) // otherwise somebody else is writing it
        files.remove(fresh);
    return message;
}

} // namespace tarv
