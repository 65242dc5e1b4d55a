#include "report/Command.h"

#include "infocenter/WholeText.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "report/Json.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "runtime/detail/Unicode.h"

#include <optional>
#include <utility>

namespace tarv {
namespace {

constexpr std::wstring_view help =
    L"TARVENIK Serviceprogramm: Bericht und Konfigurationsdateien dieses Rechners\r\n"
    L"\r\n"
    L"TarvReport [/json] [/o:DATEI]\r\n"
    L"\r\n"
    L"  (ohne)    als Text, wie \"Alles kopieren\" im Infocenter\r\n"
    L"  /json     für Programme (JSON in UTF-8)\r\n"
    L"  /o:DATEI  in diese Datei, ganz oder gar nicht, statt auf die Konsole\r\n"
    L"  /?        diese Hilfe\r\n"
    L"\r\n"
    L"Rückgabewert: 0 fertig; 1 fertig, aber eine Konfigurationsdatei fehlt oder ist\r\n"
    L"nicht zu lesen;\r\n"
    L"2 falscher Aufruf; 3 der Bericht lässt sich nicht schreiben\r\n";

struct Call {
    bool help = false;
    bool json = false;
    std::wstring_view file;
};

/// False when the switch is unknown, incomplete or there already.
bool take(std::wstring_view argument, Call& call) {
    if (!argument.starts_with(L'/') && !argument.starts_with(L'-'))
        return false;
    const std::wstring name = lowerCase(argument.substr(1));
    if (name == L"?" || name == L"h")
        return !std::exchange(call.help, true);
    if (name == L"json")
        return !std::exchange(call.json, true);
    if (!name.starts_with(L"o:") || !call.file.empty())
        return false;
    call.file = trim(argument.substr(3));
    return !call.file.empty();
}

std::string line(std::wstring_view text) {
    return utf8(text) + "\r\n";
}

FoundFile found(Runtime& rt, const IniFile& file) {
    FileStore& files = *rt.platform.files;
    const auto attributes = files.attributes(file.path);
    const bool present = attributes && (*attributes & attribute::directory) == 0;
    return {file, present, present && files.refusesReading(file.path) != 0};
}

/// Nothing when the bytes are written, else why not.
std::optional<std::wstring> write(Runtime& rt, const Call& call, const std::string& bytes,
                                  const Output& out) {
    if (!call.file.empty())
        return saveWhole(rt, std::wstring(call.file), bytes);
    if (out(bytes))
        return std::nullopt;
    return TranslateText(L"Der Bericht lässt sich nicht ausgeben.");
}

} // namespace

int runReport(Runtime& rt, std::span<const wchar_t* const> arguments, const Output& out,
              const Output& errors) {
    Call call;
    for (const std::wstring_view argument : arguments)
        if (!take(argument, call)) {
            errors(
                line(TranslateText(L"TarvReport: Dieser Schalter ist unbekannt, unvollständig oder doppelt: ")
                         .append(argument)
                         .append(TranslateText(L" (TarvReport /? zeigt die Hilfe)"))));
            return exit_code::wrongCall;
        }
    if (call.help)
        return out(utf8(TranslateText(help))) ? exit_code::done : exit_code::notWritable;

    rt.trace.off = true;
    const InfoFacts facts = readInfoFacts(rt);
    const IniTree tree = ReadIniTree(rt);
    std::vector<FoundFile> files;
    for (const IniFile& file : iniFiles(rt))
        files.push_back(found(rt, file));

    std::string bytes;
    if (call.json)
        bytes = jsonText(facts, files, tree);
    else if (const std::wstring text = wholeText(reportText(facts), tree); call.file.empty())
        bytes = utf8(text);
    else
        bytes = markedUtf8(text);
    if (const auto failure = write(rt, call, bytes, out)) {
        errors(line(*failure));
        return exit_code::notWritable;
    }
    int code = exit_code::done;
    for (const FoundFile& each : files)
        if (!each.present || each.refused) {
            errors(line(TranslateText(each.present ? L"Diese Konfigurationsdatei lässt sich nicht lesen: "
                                                   : L"Diese Konfigurationsdatei fehlt: ") +
                        each.file.path));
            code = exit_code::fileMissing;
        }
    return code;
}

} // namespace tarv
