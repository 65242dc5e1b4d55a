#pragma once

#include "platform/ErrorDisplay.h"
#include "runtime/Funktionen32/Funktionen32.h"
#include "runtime/cls_PathDialog.h"
#include "runtime/modBase64.h"
#include "runtime/modSkinOnly.h"
#include "tests/support/World.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace tarv {

/// A busy workstation, on which every routine has something to do.
struct Workstation : World {
    /// What routines read and write.
    std::wstring a, b, c;
    std::vector<std::wstring> names;
    ErrorRecord error{53, L"x", L"y"};
    Value value = 12.991;
    bool flag = true;
    ByteArray bytes{0, {'M', 'a', 'n'}};
    cls_PathDialog dialog{rt};
    SkinControl skin{nullptr, WindowHandle{7}};

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
        fake.disk.shortNames = {{L"PROGRA~1", L"Program Files"}};
        fake.facts.setVariable(L"SystemRoot", L"C:\\Windows");
        fake.processes.waits.assign(3, wait_result::timeout);
        fake.processes.idleWaits.assign(2, wait_result::timeout);
        fake.desktop.windows = {fake.desktop.active = WindowHandle{1}, fake.desktop.form = WindowHandle{2}};
        fake.desktop.answers = {message_box::answerNo};
        fake.shell.chosenFolder = L"C:\\t";
        fake.shell.onStopped = [this] { fake.disk.addFile(L"D:\\out\\a.txt", "alt"); };
        fake.shell.onFileOperation = [this] {
            fake.disk.addFile(L"D:\\out\\a.txt", "alt");
            fake.disk.addFile(L"D:\\out\\b.txt", "alt");
        };
        const Value done = Empty{};
        skin.object =
            fake.automation.object(L"skin", {{L"#1=", done}, {L"#2", done}, {L"#3", done}, {L"#5=", done}});
        // The user wants one retry.
        const auto display =
            fake.automation.object(L"display", {{L"ErrorMsg", done}, {L"NoVisibleNextMsg=", done}});
        display->runs(L"EMW", [left = 1](auto) mutable { return Value(left-- > 0 ? 4 : 2); });
        fake.automation.provided.emplace(errorDisplayProgId, display);
        const auto systems = fake.automation.object(L"systems");
        systems->elements = {fake.automation.object(
            L"system", {{L"Caption", std::wstring(L"W")}, {L"Version", std::wstring(L"10")}})};
        fake.automation.provided.emplace(
            L"winmgmts:", fake.automation.object(L"service", {{L"ExecQuery", ObjectRef(systems)}}));
        fake.xml.content = L"(1, 2, 3)";
        fake.xml.error.code = static_cast<std::int32_t>(0xC00CE56F);
    }

    std::map<std::wstring, std::string> files() const {
        std::map<std::wstring, std::string> all;
        for (const auto& [key, entry] : fake.disk.entries)
            if (!entry.isFolder())
                all[key] = entry.bytes;
        return all;
    }
    bool allClosed() const {
        return fake.processes.open.empty() && fake.files.openSearches == 0 && fake.xml.openDocuments == 0;
    }
};

struct Routine {
    const char* name;
    /// A pattern of what it may answer on failure, beside its ordinary answer;
    /// "raises ..." where it may raise.
    const wchar_t* safe;
    std::function<std::wstring(Workstation&)> run;
};

/// Every public routine that reaches the border.
std::span<const Routine> allRoutines();

/// What a function of the border answers when it fails.
std::vector<SystemCode> failuresOf(const std::string& function);

} // namespace tarv
