// The starter against real child processes.

#include "runtime/Funktionen32/Starter.h"
#include "platform/SystemFacts.h"
#include "platform/windows/BorderHandles.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "tests/windows/ContractWorld.h"

#include <filesystem>

#include <windows.h>

namespace tarv {
namespace {

namespace fs = std::filesystem;

class StarterProcesses : public OnWindows {
protected:
    StarterProcesses() { fs::create_directories(folder); }
    /// Puts the test's child there under that name.
    std::wstring install(const std::wstring& file) {
        const std::wstring own = border.facts->programPath();
        fs::copy_file(own.substr(0, own.rfind(L'\\')) + L"\\tarv_child_console.exe", file);
        return file;
    }
    /// The command line, folder and show command of a started child, one line each; empty when it does not
    /// start.
    std::wstring report(const std::wstring& file, int milliseconds = 10000) {
        std::optional<std::string> found;
        for (; !found && milliseconds >= 0; milliseconds -= 20, Sleep(20))
            found = bytes(file + L".txt");
        fs::remove(file + L".txt");
        const std::string text = found.value_or("");
        return {reinterpret_cast<const wchar_t*>(text.data()), text.size() / sizeof(wchar_t)};
    }
    std::intptr_t start(std::wstring_view file, std::wstring arguments, bool direct) {
        std::wstring part;
        return StartExe(rt, file, 0, arguments, {}, false, part, false, WindowHandle::none, direct);
    }

    /// The program lies in another folder than the one that runs the tests.
    const std::wstring folder = path(L"Program Files (x86)\\TARVENIK\\"),
                       current = fs::current_path().wstring();
    Runtime rt{border};
};

TEST_F(StarterProcesses, NoDecoyStartsInsteadOfTheClient) {
    const std::wstring decoy = install(path(L"Program.exe")), client = install(folder + L"FastClient.exe");
    start(client, L"PRG: DATA:", false);
    EXPECT_EQ(report(client), lowerCase(client) + L" PRG: DATA:\n" + current + L"\n1") << "shown normally";
    fs::remove(client);
    start(client, L"PRG: DATA:", false);
    EXPECT_TRUE(report(decoy, 300).empty()) << "not even where the client is missing";
    CloseHandle(reinterpret_cast<HANDLE>(start(client, L"", true)));
    EXPECT_FALSE(report(decoy).empty()) << "the direct start leaves the search to the system";
}

TEST_F(StarterProcesses, CommandLineFolderAndHandlesArrive) {
    const std::wstring child = install(folder + L"Größe Ü.exe");
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const HANDLE event = CreateEventW(&inheritable, TRUE, FALSE, nullptr);
    const std::wstring signal = L"set=" + std::to_wstring(reinterpret_cast<UINT_PTR>(event));
    for (const std::wstring& arguments : {std::wstring(32000, L'ä'), std::wstring(L"\"a b\" ж"), signal}) {
        EXPECT_EQ(start(child, arguments, false), -1);
        EXPECT_EQ(report(child), lowerCase(child) + L" " + arguments + L"\n" + current + L"\n1");
    }
    Processes& processes = *border.processes;
    EXPECT_EQ(processes.waitForObject(toBorder(event), 300), wait_result::timeout)
        << "only the direct start inherits handles";
    const auto process = static_cast<KernelHandle>(start(child, signal, true));
    EXPECT_EQ(processes.waitForObject(process, 10000), wait_result::signaled);
    EXPECT_EQ(processes.waitForObject(toBorder(event), 0), wait_result::signaled);
    EXPECT_TRUE(CloseHandle(toSystem(process)) && CloseHandle(event));
}

TEST_F(StarterProcesses, BatchFilesRunWithTheirArguments) {
    const std::wstring child = install(folder + L"kind.exe");
    for (const wchar_t* name : {L"Prüfung & 1.bat", L"lauf.CMD"}) {
        const std::wstring batch = folder + name;
        border.files->overwrite(batch, "@\"%~dp0kind.exe\" %1_%~2_%3\r\n");
        EXPECT_EQ(start(batch + L" /a \"b c\"", L"d", false), -1);
        EXPECT_NE(report(child).find(L" /a_b c_d\n"), std::wstring::npos) << batch;
    }
}

TEST_F(StarterProcesses, RefusedStartNamesTheReason) {
    const std::wstring batch = folder + L"fehlt.bat", program = folder + L"none.exe";
    Processes& processes = *border.processes;
    for (const auto& [file, line] : {std::pair(batch, batch + L" x"), {program, program}, {L"", program}})
        EXPECT_EQ(processes.create({file, line, false, 0, {}}).error(), system_code::fileNotFound) << line;
    EXPECT_EQ(processes.startThroughShell(program, L"", 1), system_code::fileNotFound);
    EXPECT_EQ(processes.waitForObject(KernelHandle::none, 0), wait_result::failed);
    EXPECT_EQ(processes.waitForInputIdle(KernelHandle::none, 0), wait_result::failed);
}

} // namespace
} // namespace tarv
