#include "runtime/ModRkIni.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "platform/SystemFacts.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/NumberText.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"

namespace tarv {
namespace {

/// The default of every read: a result equal to it means that the entry is missing.
constexpr std::wstring_view entryNotFound = L"Entry Not Found";

constexpr std::uint32_t suiteValueSize = 2000;
constexpr std::uint32_t machineValueSize = 255;
constexpr std::uint32_t folderSize = 255;

std::wstring_view suiteFile(const Runtime& rt) {
    return rt.suiteIniFile.empty() ? suiteIniName : std::wstring_view(rt.suiteIniFile);
}

/// Raises a type mismatch for what has no text form and so can neither be compared nor written.
bool isEmptyText(const Value& value) {
    if (const auto* text = std::get_if<std::wstring>(&value))
        return text->empty();
    if (std::holds_alternative<Null>(value) || std::holds_alternative<Missing>(value) ||
        std::holds_alternative<ObjectRef>(value) || std::holds_alternative<ObjectByRef>(value))
        raise(error_number::typeMismatch);
    return std::holds_alternative<Empty>(value);
}

Value readSuiteEntry(Runtime& rt, std::wstring_view group, std::wstring_view entry, const Value& fallback) {
    std::wstring value =
        rt.platform.profiles->getString(group, entry, entryNotFound, suiteValueSize, suiteFile(rt));
    if (value.empty() || value == entryNotFound) {
        if (isEmptyText(fallback))
            return std::wstring();
        Tarvwin_EintragSchreiben(rt, group, entry, fallback);
        return fallback;
    }
    if (std::holds_alternative<std::wstring>(fallback))
        return value;
    return readNumber(value);
}

std::wstring machineFile(Runtime& rt) {
    std::wstring folder = GetEnvValue(rt, L"ProgramData");
    if (folder.empty())
        folder = L"C:\\Programdata";
    return AddBackslash(folder) + L"TARVENIK\\Q_Machine.ini";
}

constexpr std::uint32_t versionSize = 100;
constexpr const wchar_t* unknownVersion = L"2023";

} // namespace

Value Tarvwin_Eintrag(Runtime& rt, std::wstring_view group, std::wstring_view entry, const Value& fallback) {
    try {
        return readSuiteEntry(rt, group, entry, fallback);
    } catch (const RuntimeError& error) {
        ErrorRecord record = error.record();
        ShowErrorMsg(rt, record, TranslateText(L"beim Tarvwin_Eintrag"), {});
        return Empty{};
    }
}

std::wstring suiteText(Runtime& rt, std::wstring_view group, std::wstring_view entry,
                       std::wstring_view fallback) {
    const Value value = Tarvwin_Eintrag(rt, group, entry, std::wstring(fallback));
    const auto* text = std::get_if<std::wstring>(&value);
    return text ? *text : std::wstring();
}

std::int16_t Tarvwin_EintragSchreiben(Runtime& rt, std::wstring_view group, std::wstring_view entry,
                                      const Value& value) {
    const auto* text = std::get_if<std::wstring>(&value);
    const std::wstring written = text ? *text : std::wstring(trim(invariantText(value)));
    return rt.platform.profiles->writeString(group, entry, written, suiteFile(rt)) ? 0 : -1;
}

std::wstring GetMachineDirectory(Runtime& rt, std::wstring_view key, bool quiet) {
    constexpr std::wstring_view group = L"Directories";
    const std::wstring file = machineFile(rt);
    key = trim(key);

    std::wstring folder = rt.platform.profiles->getString(group, key, entryNotFound, machineValueSize, file);
    if (folder != entryNotFound) {
        if (!folder.ends_with(L':') && !folder.ends_with(L'\\'))
            folder += L'\\';
        return folder;
    }
    if (!quiet) {
        const std::wstring text =
            TranslateText(L"Eintrag '").append(key) + TranslateText(L"'=.. oder Gruppe [").append(group) +
            TranslateText(L"] oder Datei '") + file + TranslateText(L"' Nicht gefunden !");
        rt.platform.desktop->messageBox(text, TranslateText(L"INSTALLATIONS-FEHLER"),
                                        message_box::critical + message_box::systemModal);
    }
    return {};
}

std::wstring GetMachineDirectoryQuiet(Runtime& rt, std::wstring_view key) {
    return GetMachineDirectory(rt, key, true);
}

std::wstring GetWindowsFolder(Runtime& rt) {
    return rt.platform.facts->windowsDirectory(folderSize) + L'\\';
}

std::wstring GetFileNameFromPath(std::wstring_view path, bool stripExtension) {
    return GetFileName(path, stripExtension);
}

std::wstring GetDotNetFolderName() {
    return L"DotNet\\";
}

std::wstring GetProgVersion(Runtime& rt) {
    const std::wstring path = AddBackslash(programFolder(rt)) + L"Version.INI";
    constexpr auto notPlain = attribute::hidden | attribute::system | attribute::directory;
    if ((rt.platform.files->attributes(path).valueOr(notPlain) & notPlain) != 0)
        return unknownVersion;

    std::wstring version =
        rt.platform.profiles->getString(L"Info", L"ProgVersion", entryNotFound, versionSize, path);
    if (version.empty() || version == entryNotFound)
        return unknownVersion;
    version.resize(versionSize);
    return version;
}

} // namespace tarv
