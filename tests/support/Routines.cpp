#include "tests/support/Routines.h"

#include "infocenter/InfoReport.h"
#include "infocenter/IniTree.h"
#include "infocenter/SystemProbes.h"
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
namespace {

std::wstring text(std::intptr_t number) {
    return std::to_wstring(number);
}

std::wstring operate(Workstation& w, std::int32_t operation, const wchar_t* source) {
    const bool done = FileOperation(w.rt, operation, source, L"D:\\out", false, false, 0, false, w.error);
    return text(done) + L" " + text(w.error.number) + L" " + w.error.description;
}

std::wstring start(Workstation& w, bool wait, bool direct) {
    const auto result =
        StartExe(w.rt, L"C:\\t\\exakt", 0, w.a, {}, wait, w.b, false, WindowHandle{2}, direct);
    if (result > 0)
        w.fake.processes.close(static_cast<KernelHandle>(result));
    return result > 0 ? L"started" : text(result);
}

/// Loads a document and uses it.
template <class Use>
Routine withDocument(const char* name, const wchar_t* safe, Use use) {
    return {name, safe, [use](Workstation& w) -> std::wstring {
                clsXML xml(w.rt);
                xml.OpenFromString(L"<r/>", true);
                if constexpr (std::is_same_v<decltype(use(xml)), std::wstring>)
                    return use(xml);
                else if constexpr (std::is_void_v<decltype(use(xml))>)
                    return use(xml), L"";
                else
                    return text(use(xml));
            }};
}

constexpr const wchar_t* raises = L"raises (91|4711)";

const Routine routines[] = {
    {"bIstEntwicklung", L"0", [](auto& w) { return text(bIstEntwicklung(w.rt)); }},
    {"DebugTrace", L"",
     [](auto& w) { return DebugTrace(w.rt, L"x"), DebugTrace(w.rt, L"y", false, true), L""; }},
    {"GetDebugFileName", L".*(d|rkZAL_Debug)(_1)?\\.txt", [](auto& w) { return GetDebugFileName(w.rt); }},
    {"Uexist file", L"0", [](auto& w) { return text(Uexist(w.rt, L"C:\\t\\a.txt")); }},
    {"Uexist folder", L"0", [](auto& w) { return text(Uexist(w.rt, L"C:\\t", true)); }},
    {"Uexist file for folder", L"0", [](auto& w) { return text(Uexist(w.rt, L"C:\\t\\a.txt", true)); }},
    {"Uexist pattern", L"0", [](auto& w) { return text(Uexist(w.rt, L"C:\\t\\*.txt")); }},
    {"Uexist missing", L"1", [](auto& w) { return text(Uexist(w.rt, L"C:\\t\\missing.txt", true)); }},
    {"LoadAccessMode", L"1", [](auto& w) { return LoadAccessMode(w.rt), text(w.rt.accessMode); }},
    {"ListFiles", L"[0-4]", [](auto& w) { return text(ListFiles(w.rt, L"C:\\t\\*", w.names)); }},
    {"copy", L"0 -?\\d+ .+", [](auto& w) { return operate(w, 2, L"C:\\t\\a.txt"); }},
    {"copy pattern", L"0 -?\\d+ .+", [](auto& w) { return operate(w, 2, L"C:\\t\\*.txt"); }},
    {"move", L"0 -?\\d+ .+", [](auto& w) { return operate(w, 1, L"C:\\t\\b.txt"); }},
    {"ShowErrorMsg", L"",
     [](auto& w) { return ShowErrorMsg(w.rt, w.error, L"O", {}, true), w.error.source; }},
    {"AskErrorMsg", L"0", [](auto& w) { return text(AskErrorMsg(w.rt, w.error, L"Ort", {})); }},
    {"GetPCName", L"", [](auto& w) { return GetPCName(w.rt); }},
    {"GetLoginName", L"", [](auto& w) { return GetLoginName(w.rt); }},
    {"GetWinDir", L"", [](auto& w) { return GetWinDir(w.rt); }},
    {"GetWindowsFolder", L"\\\\", [](auto& w) { return GetWindowsFolder(w.rt); }},
    {"ToVal", L"\\d[\\d.]*", [](auto& w) { return shown(ToVal(w.rt, L"1.234,56")); }},
    {"ToVal scientific", L"\\d[\\d.]*", [](auto& w) { return shown(ToVal(w.rt, L"1,5E-3")); }},
    {"RoundValue", L"\\d[\\d.]*", [](auto& w) { return shown(RoundValue(w.rt, w.value, 2, w.flag)); }},
    {"CountOccurrences", L"0", [](auto& w) { return text(CountOccurrences(w.rt, 1.5, L",")); }},
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
    {"startProgram", L"2|3|5|18|740", [](auto& w) { return text(startProgram(w.rt, L"a", L"a", {}, 1)); }},
    {"StartExe", L"", [](auto& w) { return start(w, false, false); }},
    {"StartExe direct", L"0", [](auto& w) { return start(w, false, true); }},
    {"StartExe waiting", L"", [](auto& w) { return start(w, true, false); }},
    {"GetDruckEXE", L"(P:\\\\)?(DotNet\\\\)?(kelvar6|Kelvar\\.Net)\\.exe",
     [](auto& w) { return GetDruckEXE(w.rt); }},
    {"GetEXEmitPfad", L"a\\.exe", [](auto& w) { return GetEXEmitPfad(w.rt, L"a.exe"); }},
    {"GetProgVersion", L"2023", [](auto& w) { return std::wstring(untilNul(GetProgVersion(w.rt))); }},
    {"Tarvwin_Eintrag", L"", [](auto& w) { return shown(Tarvwin_Eintrag(w.rt, L"SYS", L"Neu", 1)); }},
    {"Tarvwin_Eintrag refused", L"",
     [](auto& w) { return shown(Tarvwin_Eintrag(w.rt, L"SYS", L"N", Null{})); }},
    {"Tarvwin_EintragSchreiben", L"-1",
     [](auto& w) { return text(Tarvwin_EintragSchreiben(w.rt, L"SYS", L"Neu", 1)); }},
    {"GetMachineDirectory", L"", [](auto& w) { return GetMachineDirectory(w.rt, L"Programm", false); }},
    {"cls_PathDialog", L"\\\\1",
     [](auto& w) { return w.dialog.StartPathDialog(), w.dialog.sDriveDir() + text(w.dialog.bCancel()); }},
    {"Base64EncodeBytes", L"",
     [](auto& w) {
         ByteArray out; // in place, a long sequence of these grows beyond all memory
         Base64EncodeBytes(w.rt, w.bytes, out);
         return text(out.bytes[0]);
     }},
    {"ApplySkin", L"", [](auto& w) { return ApplySkin(w.rt, w.skin, {}, true, false, false), L""; }},
    {"skinStyle", L"", [](auto& w) { return std::wstring(skinStyle(w.rt, L"P:\\", L"blue").file); }},
    {"BuildInfoReport", L"",
     [](auto& w) { return std::regex_replace(BuildInfoReport(w.rt), std::wregex(L": .*"), L""); }},
    {"GetLocalIP", L"127\\.0\\.0\\.1", [](auto& w) { return GetLocalIP(w.rt); }},
    {"GetOSFromWMI", L"W?", [](auto& w) { return GetOSFromWMI(w.rt, w.a, w.b), w.a; }},
    {"ReadIniTree", L"[0-2]", [](auto& w) { return text(std::ssize(ReadIniTree(w.rt).groups)); }},
    {"openServicesConsole", L"", [](auto& w) { return openServicesConsole(w.rt), L""; }},
    {"startRemoteMaintenance", L"", [](auto& w) { return startRemoteMaintenance(w.rt), L""; }},
    {"clsXML.Initialize", L"0", [](auto& w) { return text(clsXML(w.rt).Initialize(6)); }},
    {"clsXML.OpenFromFile", L"0",
     [](auto& w) { return text(clsXML(w.rt).OpenFromFile(L"C:\\t\\a.xml", true)); }},
    {"clsXML through the scratch file", L"0",
     [](auto& w) {
         w.fake.xml.known = {L"Msxml.DOMDocument"};
         w.fake.xml.accepts = [](bool isFile, auto) { return isFile; };
         return text(clsXML(w.rt).OpenFromString(L"<r/>", true));
     }},
    withDocument("ReadNode", L"", [](auto& xml) { return xml.ReadNode(L"a"); }),
    withDocument("ReadNodeXML", L"|raises (91|4711)", [](auto& xml) { return xml.ReadNodeXML(L"a"); }),
    withDocument("XML", raises, [](auto& xml) { return xml.XML(); }),
    withDocument("ReadAttribute", L"Empty", [](auto& xml) { return shown(xml.ReadAttribute(L"a", L"k")); }),
    withDocument("WriteAttribute", L"0", [](auto& xml) { return xml.WriteAttribute(L"a", L"k", 1); }),
    withDocument("NodeCount", L"0", [](auto& xml) { return xml.NodeCount(L"a"); }),
    withDocument("Save", L"raises (91|4711|-21470\\d+)", [](auto& xml) { return xml.Save(L"C:\\t\\a.xml"); }),
    withDocument("Save as a new document", L"raises (91|4711|-21470\\d+)",
                 [](auto& xml) { return xml.Save(L"C:\\t\\neu.xml"); }),
    withDocument("DeleteNode", L"", [](auto& xml) { return xml.DeleteNode(L"a"); }),
    withDocument("MakeNode", raises,
                 [](auto& xml) { return xml.MakeNode(L"a", L"b", L"t", L"k", 1, L"l", 2); }),
    withDocument("DeleteAttribute", raises, [](auto& xml) { return xml.DeleteAttribute(L"a", L"k"); }),
    withDocument("GetColorValue", raises, [](auto& xml) { return xml.GetColorValue(L"a"); }),
    withDocument("SetColorValue", L"0", [](auto& xml) { return xml.SetColorValue(L"a", 1, 2, 3); }),
    withDocument("InsertNode beside", L"0", [](auto& xml) { return xml.InsertNode(L"a", L"b", 0); }),
    withDocument("InsertNode", L"0", [](auto& xml) { return xml.InsertNode(L"a", L"b", 1, L"t", L"k", 1); }),
};

} // namespace

std::span<const Routine> allRoutines() {
    return routines;
}

std::vector<SystemCode> failuresOf(const std::string& function) {
    if (function == "XmlParsers.create")
        return {429, 70};
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
