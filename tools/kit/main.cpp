// tarv_kit [/kurz | TESTS]: runs the test programs of the check kit suite by suite, takes the pictures of the
// program's windows, and writes ergebnis.txt beside the kit's pruefen.cmd. /kurz takes a few tests of each
// kind, TESTS those that a GoogleTest filter names, both without what takes long. Exit code 0: nothing
// failed.

#include "platform/ErrorDisplay.h"
#include "tools/kit/Machine.h"

#include <windows.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using tarv::kit::toUtf8;

constexpr DWORD longestSuite = 300'000; // milliseconds
constexpr wchar_t shortSelection[] =
    L"Tables.*:Border.*:ErrorComponentTest.*:StarterProcesses.*:ProgramWindows.Main*:Soak.*";

std::atomic<HANDLE> running; // the job of what is running now
std::atomic<bool> stopped;   // by the user

/// The window is closed, or Ctrl+C: what is running ends, and the main thread clears away before it ends us.
BOOL WINAPI stop(DWORD) {
    stopped = true;
    TerminateJobObject(running, 1);
    Sleep(10'000);
    return TRUE;
}

void print(const std::wstring& text) {
    const HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0, written = 0;
    const std::string bytes = toUtf8(text);
    if (GetConsoleMode(out, &mode))
        WriteConsoleW(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    else
        WriteFile(out, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

fs::path ownFolder() {
    std::wstring own(32768, L'\0');
    own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
    return fs::path(own).parent_path();
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(in), {});
    std::erase(content, '\r');
    return content;
}

/// A folder in the temporary one that takes everything the tests write, and goes with all that is in it.
class Workshop {
public:
    Workshop() {
        // Not the short form that the variable may hold: paths are compared.
        std::wstring temporary(32768, L'\0');
        temporary.resize(GetLongPathNameW(fs::temp_directory_path().c_str(), temporary.data(),
                                          static_cast<DWORD>(temporary.size())));
        folder = fs::path(temporary) / (L"tarv_pruefung_" + std::to_wstring(GetCurrentProcessId()));
        fs::create_directories(folder / L"t");
        for (const wchar_t* variable : {L"TEMP", L"TMP"})
            SetEnvironmentVariableW(variable, (folder / L"t").c_str());
    }
    ~Workshop() {
        std::error_code busy; // an ended program keeps its file for a moment
        for (int attempt = 0; attempt < 50 && (fs::remove_all(folder, busy), fs::exists(folder)); ++attempt)
            Sleep(100);
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// What a test has left in its temporary folder; takes it away.
    std::wstring leftovers() const {
        std::wstring names;
        std::error_code busy;
        for (const auto& entry : fs::directory_iterator(folder / L"t")) {
            names += L" " + entry.path().filename().wstring();
            fs::remove_all(entry.path(), busy);
        }
        return names;
    }

    fs::path folder;
};

struct Ended {
    DWORD code = 0;
    std::string output;
};

/// Runs a program in the workshop. What it has started ends with it.
Ended run(const std::wstring& commandLine, const Workshop& workshop) {
    const fs::path outputFile = workshop.folder / L"ausgabe.txt";
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    const HANDLE output = CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable,
                                      CREATE_ALWAYS, 0, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    PROCESS_INFORMATION process{};
    std::wstring line = commandLine;
    Ended ended{ERROR_INVALID_FUNCTION, {}};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                       (workshop.folder / L"t").c_str(), &startup, &process)) {
        const HANDLE job = CreateJobObjectW(nullptr, nullptr);
        running = job;
        // Windows 7 refuses where we are in a job ourselves: then only the program itself is ended.
        const bool inJob = AssignProcessToJobObject(job, process.hProcess);
        ResumeThread(process.hThread);
        if (WaitForSingleObject(process.hProcess, longestSuite) != WAIT_OBJECT_0 && !inJob)
            TerminateProcess(process.hProcess, WAIT_TIMEOUT);
        TerminateJobObject(job, WAIT_TIMEOUT);
        WaitForSingleObject(process.hProcess, 10'000);
        GetExitCodeProcess(process.hProcess, &ended.code);
        running = nullptr;
        CloseHandle(job);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(output);
    ended.output = contentOf(outputFile);
    return ended;
}

struct Suite {
    std::string name;
    std::vector<std::string> tests; // with the suite's name
};

std::vector<Suite> suitesIn(const std::string& listed) {
    std::vector<Suite> suites;
    std::istringstream lines(listed);
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find(" ", line.find_first_not_of(' ')));
        if (name.ends_with(".") && !name.starts_with(" "))
            suites.push_back({name, {}});
        else if (name.starts_with("  ") && !suites.empty())
            suites.back().tests.push_back(suites.back().name + name.substr(2));
    }
    return suites;
}

/// Whatever becomes of the tests, counted and told.
class Protocol {
public:
    explicit Protocol(const fs::path& file) : file_(file, std::ios::binary) {}

    bool open() const { return file_.is_open(); }
    void write(std::string text) {
        for (std::size_t at = 0; (at = text.find('\n', at)) != text.npos; at += 2)
            text.insert(at, 1, '\r');
        file_ << text << std::flush;
    }

    void pass() { ++passed; }
    void fail(const std::string& test, const std::string& text) { note(failed, failures_, test, text); }
    void leaveOut(const std::string& test, const std::string& why) { note(skipped, leftOut_, test, why); }

    /// The tests of one run, by what GoogleTest has written: not always in the order of its list.
    void take(const Suite& suite, const Ended& ended) {
        std::set<std::string> left(suite.tests.begin(), suite.tests.end());
        std::istringstream lines(ended.output);
        std::string begun, text;
        bool suiteFailed = false;
        for (std::string line; std::getline(lines, line);) {
            constexpr std::size_t wordLength = 13; // "[       OK ] "
            const std::string word = line.substr(0, wordLength);
            const std::string test =
                line.substr(word.size(), line.find_first_of(" ,", wordLength) - wordLength);
            if (!left.contains(test)) {
                text += line + "\n";
                continue;
            }
            if (word == "[ RUN      ] ") {
                begun = test;
                text.clear();
                continue;
            }
            left.erase(test);
            if (word == "[       OK ] ")
                pass();
            else if (word == "[  SKIPPED ] ")
                leaveOut(test, text);
            else
                suiteFailed = true, fail(test, text);
        }
        const std::string end = stopped                      ? "vom Benutzer abgebrochen"
                                : ended.code == WAIT_TIMEOUT ? "wird nicht fertig und ist beendet worden"
                                                             : "endet mit Code " + std::to_string(ended.code);
        const bool brokenOff = !left.empty() || (ended.code != 0 && !suiteFailed);
        if (brokenOff && !left.contains(begun))
            fail(suite.name, text + end + "\n");
        for (const std::string& test : suite.tests)
            if (left.contains(test))
                fail(test, test == begun ? text + end + "\n" : "nicht gelaufen\n");
    }

    void writeDetails() {
        if (failed)
            write("\nFehlgeschlagen\n--------------\n" + failures_);
        if (skipped)
            write("\nAusgelassen\n-----------\n" + leftOut_);
    }

    int passed = 0, failed = 0, skipped = 0;

private:
    static void note(int& count, std::string& where, const std::string& test, const std::string& text) {
        constexpr std::size_t most = 8000; // a table may fail in each of its rows
        ++count;
        where += test + "\n";
        std::istringstream lines(text.substr(0, most));
        for (std::string line; std::getline(lines, line);)
            if (!line.empty())
                where += "    " + line + "\n";
        if (text.size() > most)
            where += "    ...\n";
    }

    std::ofstream file_;
    std::string failures_, leftOut_;
};

/// One line of the table of results; made as soon as it is known what runs, finished with its result.
class ResultLine {
public:
    ResultLine(Protocol& protocol, const std::string& what) : protocol_(protocol), before_(counts()) {
        text_ = what + std::string(what.size() < 50 ? 50 - what.size() : 1, ' ');
        print(std::wstring(text_.begin(), text_.end()));
    }
    ~ResultLine() {
        const auto tenths = (GetTickCount64() - begin_ + 50) / 100;
        const auto after = counts();
        constexpr const char* names[] = {" bestanden", " fehlgeschlagen", " ausgelassen"};
        std::string result;
        for (std::size_t i = 0; i < 3; ++i)
            if (const int count = after[i] - before_[i])
                result += std::to_string(count) + names[i] + ", ";
        result += std::to_string(tenths / 10) + "," + std::to_string(tenths % 10) + " s\n";
        protocol_.write(text_ + result);
        print(std::wstring(result.begin(), result.end()));
    }
    ResultLine(const ResultLine&) = delete;
    ResultLine& operator=(const ResultLine&) = delete;

private:
    std::vector<int> counts() const { return {protocol_.passed, protocol_.failed, protocol_.skipped}; }

    Protocol& protocol_;
    std::vector<int> before_;
    std::string text_;
    ULONGLONG begin_ = GetTickCount64();
};

/// The user's own text comes back into the clipboard when the tests have used it.
class Clipboard {
public:
    Clipboard() {
        if (!OpenClipboard(nullptr))
            return;
        if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
            text_ = static_cast<const wchar_t*>(GlobalLock(data));
            GlobalUnlock(data);
        }
        CloseClipboard();
    }
    ~Clipboard() {
        const std::size_t size = (text_.size() + 1) * sizeof(wchar_t);
        const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(data), text_.c_str(), size);
        GlobalUnlock(data);
        if (!OpenClipboard(nullptr))
            return;
        EmptyClipboard();
        if (!text_.empty())
            SetClipboardData(CF_UNICODETEXT, data);
        CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

private:
    std::wstring text_;
};

/// The keys of this user that tests make, and take away again unless they are ended before. Those that are
/// there at the start are none of ours.
class RegistryKeys {
public:
    RegistryKeys() {
        const std::wstring classes = L"Software\\Classes\\", id(tarv::errorDisplayClassId);
        for (const std::wstring& key :
             {classes + L"XtremeSkinFramework.SkinFramework",
              classes + L"CLSID\\{5D1E2C7A-3B54-4D2B-9F0B-6B7C4F1D9A31}",
              classes + std::wstring(tarv::errorDisplayProgId), classes + L"CLSID\\" + id,
              std::wstring(L"Software\\tarvErrorComponentTest")})
            if (!exists(key))
                absent_.push_back(key);
    }
    std::wstring leftovers() const {
        std::wstring found;
        for (const std::wstring& key : absent_)
            if (exists(key)) {
                found += L" " + key;
                RegDeleteTreeW(HKEY_CURRENT_USER, key.c_str());
            }
        return found;
    }

private:
    static bool exists(const std::wstring& key) {
        return RegQueryValueW(HKEY_CURRENT_USER, key.c_str(), nullptr, nullptr) != ERROR_FILE_NOT_FOUND;
    }
    std::vector<std::wstring> absent_;
};

class Check {
public:
    Check(const fs::path& kit, Protocol& protocol) : kit_(kit), protocol_(protocol), parts_(parts()) {}
    /// The tests' children and traces write beside their programs.
    ~Check() {
        std::error_code busy;
        for (const fs::path& file : parts())
            if (!parts_.contains(file))
                fs::remove(file, busy);
    }
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;

    void testProgram(const wchar_t* name, const std::wstring& filter, const std::string& obstacle) {
        const std::wstring program = L"\"" + (kit_ / L"Dateien\\tests" / name).wstring() + L".exe\" ";
        const Ended listed = run(program + L"--gtest_list_tests --gtest_filter=" + filter, workshop_);
        if (listed.code != 0)
            protocol_.fail(toUtf8(name), "startet nicht, Code " + std::to_string(listed.code));
        for (const Suite& suite : suitesIn(listed.output)) {
            if (stopped)
                return;
            const ResultLine line(protocol_,
                                  toUtf8(name) + "  " + suite.name.substr(0, suite.name.size() - 1));
            std::wstring tests;
            for (const std::string& test : suite.tests) {
                tests += std::wstring(test.begin(), test.end()) + L":";
                if (!obstacle.empty())
                    protocol_.leaveOut(test, obstacle);
            }
            if (obstacle.empty())
                protocol_.take(suite, run(program + L"--gtest_color=no --gtest_filter=" + tests, workshop_));
            expectNothingLeft(suite.name);
        }
    }

    /// All windows, with the settings of an example.
    void takePictures(const std::string& obstacle) {
        const ResultLine line(protocol_, "Bilder");
        if (!obstacle.empty())
            return protocol_.leaveOut("Bilder", obstacle);
        const fs::path from = kit_ / L"Dateien", example = workshop_.folder / L"Daten";
        const fs::path program = workshop_.folder / L"Programm", pictures = kit_ / L"Bilder";
        fs::copy(from / L"Programm", program);
        fs::create_directories(example);
        fs::copy(from / L"Beispiel", example / L"TARVENIK");
        fs::create_directory(pictures);
        SetEnvironmentVariableW(L"ProgramData", example.c_str());
        const Ended ended =
            run(L"\"" + (from / L"tarv_screenshots.exe").wstring() + L"\" \"" +
                    (program / L"TarvService.exe").wstring() + L"\" \"" + pictures.wstring() + L"\"",
                workshop_);
        if (ended.code == 0 && ended.output.ends_with("screenshots complete\n"))
            protocol_.pass();
        else
            protocol_.fail("Bilder", ended.output);
        expectNothingLeft("Bilder");
    }

private:
    void expectNothingLeft(const std::string& test) {
        const std::wstring left = workshop_.leftovers() + keys_.leftovers();
        if (newSettings_) {
            std::error_code none;
            fs::remove(tarv::kit::suiteSettings(), none);
        }
        if (!left.empty() && !stopped)
            protocol_.fail(test, "hat hinterlassen:" + toUtf8(left) + "\n");
    }

    std::set<fs::path> parts() const {
        const fs::recursive_directory_iterator all(kit_ / L"Dateien");
        return {begin(all), end(all)};
    }

    fs::path kit_;
    Protocol& protocol_;
    const std::set<fs::path> parts_;
    const bool newSettings_ = !fs::exists(tarv::kit::suiteSettings());
    const Workshop workshop_;
    const RegistryKeys keys_;
    const Clipboard clipboard_;
};

} // namespace

int wmain(int count, wchar_t** arguments) {
    const fs::path kit = ownFolder().parent_path();
    const std::wstring argument = count > 1 ? arguments[1] : L"";
    const bool complete = argument.empty(), withPictures = complete || argument == L"/kurz";
    if (FindWindowW(L"frmMain", nullptr)) {
        print(L"Bitte beenden Sie zuerst das TARVENIK Serviceprogramm und starten Sie die Prüfung dann noch "
              L"einmal.\n");
        return 2;
    }
    Protocol protocol(kit / L"ergebnis.txt");
    if (!protocol.open()) {
        print(L"In diesen Ordner kann nichts geschrieben werden:\n" + kit.wstring() +
              L"\nBitte entpacken Sie das ZIP-Archiv an eine andere Stelle, zum Beispiel auf den Desktop.\n");
        return 2;
    }
    if (complete)
        print(L"Die Prüfung dauert einige Minuten. Fenster gehen dabei von selbst auf und zu.\n"
              L"Bitte benutzen Sie Maus und Tastatur nicht, bis hier steht, dass sie fertig ist.\n\n");
    protocol.write(
        "\xEF\xBB\xBFTARVENIK Serviceprogramm, Prüfung auf diesem Rechner\n\nProgramm:       " TARV_VERSION
        ", " +
        std::to_string(sizeof(void*) * 8) + " Bit\n" + tarv::kit::describeMachine() +
        (complete ? "" : "Auswahl:        " + toUtf8(argument) + "\n") + "\n");

    SetConsoleCtrlHandler(stop, TRUE);
    // Inherited by all that we start: no box for a crash, no question because the files came by mail.
    SetErrorMode(SEM_NOGPFAULTERRORBOX);
    SetEnvironmentVariableW(L"SEE_MASK_NOZONECHECKS", L"1");
    AllowSetForegroundWindow(ASFW_ANY);
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
    const std::string obstacle = tarv::kit::obstacleForTheProgram();
    const std::wstring filter = complete ? L"*" : argument == L"/kurz" ? shortSelection : argument;
    {
        Check check(kit, protocol);
        check.testProgram(L"tarv_tests", filter, {});
        check.testProgram(L"tarv_windows_tests", filter, {});
        check.testProgram(L"tarv_program_tests", filter, obstacle);
        if (withPictures && !stopped)
            check.takePictures(obstacle);
    }
    protocol.writeDetails();
    if (stopped)
        protocol.write("\nVom Benutzer abgebrochen.\n");
    const std::string sum = std::to_string(protocol.passed) + " passed, " + std::to_string(protocol.failed) +
                            " failed" +
                            (protocol.skipped ? ", " + std::to_string(protocol.skipped) + " skipped" : "");
    protocol.write("\n" + sum + "\n");
    print(L"\n" + std::wstring(sum.begin(), sum.end()) +
          L"\n\nDie Prüfung ist fertig. Das Ergebnis steht in der Datei\n    " +
          (kit / L"ergebnis.txt").wstring() + L"\n");
    if (withPictures && fs::exists(kit / L"Bilder"))
        print(L"Bilder der Fenster liegen im Ordner\n    " + (kit / L"Bilder").wstring() + L"\n");
    return protocol.failed == 0 && protocol.passed > 0 && !stopped ? 0 : 1;
}
