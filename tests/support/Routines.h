#pragma once

#include "infocenter/InfoReport.h"
#include "infocenter/IniTree.h"
#include "infocenter/SystemProbes.h"
#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Funktionen32.h"
#include "runtime/ModRkIni.h"
#include "runtime/cls_PathDialog.h"
#include "runtime/modBase64.h"
#include "runtime/modProgDebug.h"
#include "runtime/modSkinOnly.h"
#include "shell/SupportActions.h"
#include "tests/support/Table.h"
#include "xml/clsXML.h"

#include <regex>

namespace tarv {

/// A busy workstation, on which every routine has something to do.
struct Workstation : World {
    /// What routines read and write.
    std::wstring a, b, c;
    std::vector<std::wstring> names;
    ErrorRecord error{53, L"x", L"y"};
    Value value = 12.991;
    bool flag = true;
    ByteArray bytes{0, {'M', 'a', 'n'}}, digits;
    cls_PathDialog dialog{rt};
    SkinControl skin{nullptr, WindowHandle{7}};
    clsXML xml{rt};

    Workstation() {
        fake.profiles.fill(L"Pexoran.INI",
                           L"[Debug]\nEntwicklung=1\nSaveDebugIN=C:\\t\\d.txt\nDebugDateiZusatz=_1\n"
                           L"[SYS]\nZugriff_Slow=2\n[DRUCKOPT]\nPROGRAMM=Choose\n");
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\Q_Machine.ini",
                           L"[Directories]\nProgramm=P:\\\nProgrammDirectory=P:\\\n[Directories]\n");
        fake.profiles.fill(L"C:\\ProgramData\\TARVENIK\\QV.ini", L"[A]\nx=1\n");
        fake.profiles.fill(L"C:\\Program Files\\TARVENIK\\Version.INI", L"[Info]\nProgVersion=12.3\n");
        for (const wchar_t* file : {L"C:\\t\\a.txt", L"C:\\t\\b.txt", L"C:\\t\\exakt", L"C:\\t\\a.xml"})
            fake.disk.addFile(file, "alt");
        fake.disk.addFolder(L"D:\\out");
        fake.disk.addFolder(L"C:\\PROGRA~1").name = L"Program Files";
        fake.disk.addFolder(L"C:\\PROGRA~1\\TARVENIK");
        fake.processes.waits.assign(3, wait_result::timeout);
        fake.processes.idleWaits.assign(2, wait_result::timeout);
        fake.desktop.windows = {fake.desktop.active = WindowHandle{1}, fake.desktop.form = WindowHandle{2}};
        fake.desktop.answers = {message_box::answerNo};
        fake.shell.chosenFolder = L"C:\\t";
        fake.shell.onFileOperation = [this](const ShellFileResult& result) {
            fake.disk.addFile(L"D:\\out\\a.txt", "alt");
            if (result.code == 0 && !result.aborted)
                fake.disk.addFile(L"D:\\out\\b.txt", "alt");
        };
        const Value done = Empty{};
        skin.object = fake.automation.object({{L"#1=", done}, {L"#2", done}, {L"#3", done}, {L"#5=", done}});
        // The user wants one retry.
        const auto display = fake.automation.object({{L"ErrorMsg", done}, {L"NoVisibleNextMsg=", done}});
        display->runs(L"EMW", [left = 1](auto) mutable { return Value(left-- > 0 ? 4 : 2); });
        fake.automation.provided.emplace(errorDisplayProgId, display);
        const auto systems = fake.automation.object();
        systems->elements = {
            fake.automation.object({{L"Caption", std::wstring(L"W")}, {L"Version", std::wstring(L"10")}})};
        fake.automation.provided.emplace(L"winmgmts:",
                                         fake.automation.object({{L"ExecQuery", ObjectRef(systems)}}));
        fake.xml.content = L"(1, 2, 3)";
        fake.xml.error.code = static_cast<std::int32_t>(0xC00CE56F);
    }
    clsXML& opened() {
        xml.OpenFromString(L"<r/>", true);
        return xml;
    }
    std::wstring operate(std::int32_t operation, const wchar_t* source) {
        const bool done = FileOperation(rt, operation, source, L"D:\\out", false, false, 0, false, error);
        return joined(std::to_wstring(done), std::to_wstring(error.number), error.description);
    }
    std::intptr_t start(bool wait, bool direct) {
        const auto result = StartExe(rt, L"C:\\t\\exakt", 0, a, {}, wait, b, false, WindowHandle{2}, direct);
        if (result > 0)
            fake.processes.close(static_cast<KernelHandle>(result));
        return std::min<std::intptr_t>(result, 1);
    }
};

struct Routine {
    template <class Use>
    Routine(const char* routine, const wchar_t* answers, Use use)
        : name(routine), safe(answers), run([use](Workstation& w) -> std::wstring {
              using Answer = decltype(use(w));
              if constexpr (std::is_void_v<Answer>)
                  return use(w), L"";
              else if constexpr (std::is_constructible_v<std::wstring, Answer>)
                  return std::wstring(use(w));
              else if constexpr (std::is_integral_v<Answer>)
                  return std::to_wstring(use(w));
              else
                  return shown(use(w));
          }) {}

    const char* name;
    /// A pattern of what it may answer on failure, beside its ordinary answer;
    /// "raises ..." where it may raise.
    const wchar_t* safe;
    std::function<std::wstring(Workstation&)> run;
};

/// Every public routine that reaches the border.
inline const Routine allRoutines[] = {
    {"bIstEntwicklung", L"0", [](auto& w) { return bIstEntwicklung(w.rt); }},
    {"DebugTrace", L"", [](auto& w) { DebugTrace(w.rt, L"x"), DebugTrace(w.rt, L"y", false, true); }},
    {"GetDebugFileName", L".*(d|rkZAL_Debug)(_1)?\\.txt", [](auto& w) { return GetDebugFileName(w.rt); }},
    {"Uexist file", L"0", [](auto& w) { return Uexist(w.rt, L"C:\\t\\a.txt"); }},
    {"Uexist folder", L"0", [](auto& w) { return Uexist(w.rt, L"C:\\t", true); }},
    {"Uexist file for folder", L"0", [](auto& w) { return Uexist(w.rt, L"C:\\t\\a.txt", true); }},
    {"Uexist pattern", L"0", [](auto& w) { return Uexist(w.rt, L"C:\\t\\*.txt"); }},
    {"Uexist missing", L"1", [](auto& w) { return Uexist(w.rt, L"C:\\t\\missing.txt", true); }},
    {"LoadAccessMode", L"1", [](auto& w) { return LoadAccessMode(w.rt), w.rt.accessMode; }},
    {"ListFiles", L"[0-4]", [](auto& w) { return ListFiles(w.rt, L"C:\\t\\*", w.names); }},
    {"copy", L"0\\|-?\\d+\\|.+", [](auto& w) { return w.operate(2, L"C:\\t\\a.txt"); }},
    {"copy pattern", L"0\\|-?\\d+\\|.+", [](auto& w) { return w.operate(2, L"C:\\t\\*.txt"); }},
    {"move", L"0\\|-?\\d+\\|.+", [](auto& w) { return w.operate(1, L"C:\\t\\b.txt"); }},
    {"ShowErrorMsg", L"",
     [](auto& w) { return ShowErrorMsg(w.rt, w.error, L"O", {}, true), w.error.source; }},
    {"AskErrorMsg", L"0", [](auto& w) { return AskErrorMsg(w.rt, w.error, L"Ort", {}); }},
    {"GetPCName", L"", [](auto& w) { return GetPCName(w.rt); }},
    {"GetLoginName", L"", [](auto& w) { return GetLoginName(w.rt); }},
    {"GetWinDir", L"", [](auto& w) { return GetWinDir(w.rt); }},
    {"GetWindowsFolder", L"\\\\", [](auto& w) { return GetWindowsFolder(w.rt); }},
    {"ToVal", L"\\d[\\d.]*", [](auto& w) { return ToVal(w.rt, L"1.234,56"); }},
    {"RoundValue", L"\\d[\\d.]*", [](auto& w) { return RoundValue(w.rt, w.value, 2, w.flag); }},
    {"CountOccurrences", L"0", [](auto& w) { return CountOccurrences(w.rt, 1.5, L","); }},
    {"PadLeft", L"..1\\.5", [](auto& w) { return PadLeft(w.rt, 1.5, 5, L".", false); }},
    {"SplitPath", L"(C:)?\\|.*\\|x",
     [](auto& w) { return SplitPath(w.rt, L"x", w.a, w.b, w.c), joined(w.a, w.b, w.c); }},
    {"File_getLongPath", L"C:\\\\PROGRA~1\\\\TARVENIK\\\\x|C:\\\\Program Files\\\\TARVENIK\\\\",
     [](auto& w) { return File_getLongPath(w.rt, L"C:\\PROGRA~1\\TARVENIK\\x"); }},
    {"GetEnvValue", L"", [](auto& w) { return GetEnvValue(w.rt, L"TEMP"); }},
    {"GetTempFolder", L"\\\\", [](auto& w) { return GetTempFolder(w.rt, true); }},
    {"ProgramName", L"(C:.*)?(TarvService)?",
     [](auto& w) { return programFolder(w.rt) + programName(w.rt); }},
    {"programFile", L"C:\\\\t\\\\exakt\\.exe", [](auto& w) { return programFile(w.rt, L"C:\\t\\exakt"); }},
    {"startProgram", L"2|3|5|18|740", [](auto& w) { return startProgram(w.rt, L"a", L"a", {}, 1); }},
    {"StartExe", L"", [](auto& w) { return w.start(false, false); }},
    {"StartExe direct", L"0", [](auto& w) { return w.start(false, true); }},
    {"StartExe waiting", L"", [](auto& w) { return w.start(true, false); }},
    {"GetDruckEXE", L"(P:\\\\)?(DotNet\\\\)?(kelvar6|Kelvar\\.Net)\\.exe",
     [](auto& w) { return GetDruckEXE(w.rt); }},
    {"GetEXEmitPfad", L"a\\.exe", [](auto& w) { return GetEXEmitPfad(w.rt, L"a.exe"); }},
    {"GetProgVersion", L"2023", [](auto& w) { return std::wstring(untilNul(GetProgVersion(w.rt))); }},
    {"Tarvwin_Eintrag", L"", [](auto& w) { return Tarvwin_Eintrag(w.rt, L"SYS", L"Neu", 1); }},
    {"Tarvwin_Eintrag refused", L"", [](auto& w) { return Tarvwin_Eintrag(w.rt, L"SYS", L"N", Null{}); }},
    {"Tarvwin_EintragSchreiben", L"-1",
     [](auto& w) { return Tarvwin_EintragSchreiben(w.rt, L"SYS", L"Neu", 1); }},
    {"GetMachineDirectory", L"", [](auto& w) { return GetMachineDirectory(w.rt, L"Programm", false); }},
    {"cls_PathDialog", L"\\\\1",
     [](auto& w) {
         return w.dialog.StartPathDialog(), w.dialog.sDriveDir() + std::to_wstring(w.dialog.bCancel());
     }},
    {"Base64EncodeBytes", L"",
     [](auto& w) { return Base64EncodeBytes(w.rt, w.bytes, w.digits), w.digits.bytes[0]; }},
    {"ApplySkin", L"", [](auto& w) { ApplySkin(w.rt, w.skin, {}, true, false, false); }},
    {"skinStyle", L"", [](auto& w) { return skinStyle(w.rt, L"P:\\", L"blue").file; }},
    {"BuildInfoReport", L"",
     [](auto& w) { return std::regex_replace(BuildInfoReport(w.rt), std::wregex(L": .*"), L""); }},
    {"GetLocalIP", L"127\\.0\\.0\\.1", [](auto& w) { return GetLocalIP(w.rt); }},
    {"GetOSFromWMI", L"W?", [](auto& w) { return GetOSFromWMI(w.rt, w.a, w.b), w.a; }},
    {"ReadIniTree", L"[0-2]", [](auto& w) { return std::ssize(ReadIniTree(w.rt).groups); }},
    {"openServicesConsole", L"", [](auto& w) { openServicesConsole(w.rt); }},
    {"startRemoteMaintenance", L"", [](auto& w) { startRemoteMaintenance(w.rt); }},
    {"clsXML.Initialize", L"0", [](auto& w) { return w.xml.Initialize(6); }},
    {"clsXML.OpenFromFile", L"0", [](auto& w) { return w.xml.OpenFromFile(L"C:\\t\\a.xml", true); }},
    {"clsXML through the scratch file", L"0",
     [](auto& w) {
         w.fake.xml.known = {L"Msxml.DOMDocument"};
         w.fake.xml.accepts = [](auto source) { return source.starts_with(L"C:\\"); };
         return w.xml.OpenFromString(L"<r/>", true);
     }},
    {"ReadNode", L"", [](auto& w) { return w.opened().ReadNode(L"a"); }},
    {"ReadNodeXML", L"|raises (91|4711)", [](auto& w) { return w.opened().ReadNodeXML(L"a"); }},
    {"XML", L"raises (91|4711)", [](auto& w) { return w.opened().XML(); }},
    {"ReadAttribute", L"Empty", [](auto& w) { return w.opened().ReadAttribute(L"a", L"k"); }},
    {"WriteAttribute", L"0", [](auto& w) { return w.opened().WriteAttribute(L"a", L"k", 1); }},
    {"NodeCount", L"0", [](auto& w) { return w.opened().NodeCount(L"a"); }},
    {"Save", L"raises (91|4711|-21470\\d+)", [](auto& w) { return w.opened().Save(L"C:\\t\\a.xml"); }},
    {"Save as a new document", L"raises (91|4711|-21470\\d+)",
     [](auto& w) { return w.opened().Save(L"C:\\t\\neu.xml"); }},
    {"DeleteNode", L"", [](auto& w) { return w.opened().DeleteNode(L"a"); }},
    {"MakeNode", L"raises (91|4711)",
     [](auto& w) { return w.opened().MakeNode(L"a", L"b", L"t", L"k", 1, L"l", 2); }},
    {"DeleteAttribute", L"raises (91|4711)", [](auto& w) { return w.opened().DeleteAttribute(L"a", L"k"); }},
    {"GetColorValue", L"raises (91|4711)", [](auto& w) { return w.opened().GetColorValue(L"a"); }},
    {"SetColorValue", L"0", [](auto& w) { return w.opened().SetColorValue(L"a", 1, 2, 3); }},
    {"InsertNode beside", L"0", [](auto& w) { return w.opened().InsertNode(L"a", L"b", 0); }},
    {"InsertNode", L"0", [](auto& w) { return w.opened().InsertNode(L"a", L"b", 1, L"t", L"k", 1); }},
};

/// What a function of the border answers when it fails.
inline std::vector<SystemCode> failuresOf(const std::string& function) {
    if (function == "XmlParsers.create")
        return {429, 70};
    if (function.ends_with(".selectSingleNode") || function.ends_with(".documentElement") ||
        function.ends_with(".parentNode"))
        return {0, 4711};
    if (function.starts_with("Xml"))
        return {4711};
    if (function == "ShellOperations.fileOperation")
        return {0, 7, 1026};
    if (function == "Processes.create" || function.ends_with("earch.next") || function.ends_with(".search"))
        return {2, 3, 5, 18, 740};
    if (function == "FileStore.replace")
        return {1, 5, 32, 1175, 1176, 1177};
    return function.starts_with("FileStore") ? std::vector<SystemCode>{2, 5, 32, 112}
                                             : std::vector<SystemCode>{5};
}

} // namespace tarv
