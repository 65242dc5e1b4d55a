// Copying through FileOperation, the configuration and the trace against the system calls that each stands
// on; and saving beside a scanner, which opens every fresh file.
#include "bench/Comparison.h"
#include "bench/TimedBorder.h"
#include "platform/windows/WindowsPlatform.h"
#include "runtime/Funktionen32/FileOperation.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"
#include "runtime/modProgDebug.h"
#include "xml/clsXML.h"

#include <array>
#include <cstdlib>
#include <string>
#include <thread>

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

namespace {

using namespace tarv;
using namespace tarv::bench;

void check(bool good, const char* what) {
    if (!good) {
        std::printf("failed: %s\n", what);
        std::exit(1);
    }
}

std::wstring makeFolder(const std::wstring& path) {
    check(CreateDirectoryW(path.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS, "folder");
    return path;
}

std::wstring workFolder() {
    std::array<wchar_t, MAX_PATH> folder{};
    GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return makeFolder(std::wstring(folder.data()) + L"tarvenik-bench");
}

/// Opens, writes at the end and closes.
void appendBare(const std::wstring& path, std::string_view line) {
    const HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

constexpr DWORD silent = FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_NOCONFIRMMKDIR;

int shellCall(UINT what, const std::wstring& from, const std::wstring& to) {
    SHFILEOPSTRUCTW operation{};
    operation.wFunc = what;
    operation.pFrom = from.c_str();
    operation.pTo = to.c_str();
    operation.fFlags = silent;
    return SHFileOperationW(&operation);
}

void compareCopies(Runtime& rt, const std::wstring& folder) {
    const std::wstring from = makeFolder(folder + L"\\von");
    std::wstring list;
    for (int i = 0; i < 1000; ++i) {
        const std::wstring file = from + L"\\" + std::to_wstring(i) + L".txt";
        appendBare(file, "Angebot");
        list.append(file).push_back(L'\0');
    }
    list.push_back(L'\0');
    const std::wstring to = makeFolder(folder + L"\\nach");
    // Each copies into an empty folder; emptying it is not measured, so this is not left to byTurns.
    const auto emptied = [&] {
        shellCall(FO_DELETE, to + L'\0', {});
        makeFolder(to);
    };
    std::vector<double> own, bare;
    for (int round = 0; round < 5; ++round) {
        emptied();
        own.push_back(0);
        {
            const Lap lap(own.back());
            ErrorRecord error;
            check(FileOperation(rt, file_operation::copy, list, to, false, true, 0, true, error), "copy");
        }
        emptied();
        bare.push_back(0);
        const Lap lap(bare.back());
        check(shellCall(FO_COPY, list, to + L'\0') == 0, "bare copy");
    }
    printRow("`FileOperation`: 1,000 small files copied and checked", "SHFileOperation", "ms",
             perCall({median(own), median(bare)}, 1000), "<= 1.1");
}

void compareConfiguration(Runtime& rt, const std::wstring& folder) {
    constexpr int calls = 100;
    rt.suiteIniFile = folder + L"\\Pexoran.INI";
    Tarvwin_EintragSchreiben(rt, L"Pfade", L"Daten", std::wstring(L"N:\\TARVENIK\\Daten"));
    Sleep(3000); // until then Wine takes the file for one that may still be written, and parses it at every
                 // call
    std::size_t length = 0;
    const std::wstring fallback = L"C:\\";
    const Pair reads = byTurns(
        301,
        [&] {
            for (int i = 0; i < calls; ++i)
                length += suiteText(rt, L"Pfade", L"Daten", fallback).size();
        },
        [&] {
            std::array<char, 256> text;
            const std::string file(rt.suiteIniFile.begin(), rt.suiteIniFile.end());
            for (int i = 0; i < calls; ++i)
                length -= GetPrivateProfileStringA("Pfade", "Daten", "C:\\", text.data(), text.size(),
                                                   file.c_str());
        });
    check(static_cast<std::ptrdiff_t>(length) == 0, "same entries");
    printRow("`Tarvwin_Eintrag` of a text", "GetPrivateProfileString", "us", perCall(reads, calls), "<= 1.2");
}

void compareTrace(Runtime& rt, const std::wstring& folder) {
    constexpr int calls = 20;
    const std::wstring line = L"Angebot 4711 geladen";
    const std::wstring bareFile = folder + L"\\bare.txt";
    Tarvwin_EintragSchreiben(rt, L"Debug", L"SaveDebugIN", folder + L"\\trace.txt");
    DebugTrace(rt, line, true, false);
    const Pair traced = byTurns(
        301,
        [&] {
            for (int i = 0; i < calls; ++i)
                DebugTrace(rt, line, false, true);
        },
        [&] {
            for (int i = 0; i < calls; ++i)
                appendBare(bareFile, "1 - bench_files\tAngebot 4711 geladen\r\n");
        });
    printRow("`DebugTrace` of a line", "open, append, close", "us", perCall(traced, calls), "<= 1.2");
}

/// A virus scanner: it opens each fresh file once, just before that is to take its place, and keeps it for a
/// while.
class Scanner : public TimedFileStore {
public:
    explicit Scanner(FileStore& inner) : TimedFileStore(inner, ignored_) {}

    SystemCode replace(std::wstring_view path, std::wstring_view by) override {
        if (!scanned_) {
            scanned_ = true;
            const HANDLE file =
                CreateFileW(std::wstring(by).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
            check(file != INVALID_HANDLE_VALUE, "a fresh file to scan");
            thread_ = std::jthread([file] {
                Sleep(20);
                CloseHandle(file);
            });
        }
        return TimedFileStore::replace(path, by);
    }
    void expectNext() { scanned_ = false; }

private:
    double ignored_ = 0;
    bool scanned_ = false;
    std::jthread thread_;
};

void compareSaves(const Platform& border, const std::wstring& folder) {
    Scanner scanner(*border.files);
    Platform scanned = border;
    scanned.files = &scanner;
    Runtime disturbed{scanned};
    Runtime undisturbed{border};
    const auto document = [](Runtime& rt) {
        clsXML xml(rt);
        xml.Initialize(6);
        check(xml.OpenFromString(L"<lv><titel>Wände</titel></lv>", false), "document");
        return xml;
    };
    clsXML own = document(disturbed), yardstick = document(undisturbed);
    const Pair saves = byTurns(
        31,
        [&] {
            scanner.expectNext();
            own.Save(folder + L"\\gescannt.xml");
        },
        [&] { yardstick.Save(folder + L"\\angebot.xml"); });
    printRow("`Save` while a scanner holds each fresh file for 20 ms", "`Save` undisturbed", "ms",
             perCall(saves, 1000), "");
}

} // namespace

int main() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        const std::wstring folder = workFolder();
        WindowsPlatform windows;
        Runtime rt{windows};
        compareCopies(rt, folder);
        compareConfiguration(rt, folder);
        compareTrace(rt, folder);
        compareSaves(windows, folder);
        shellCall(FO_DELETE, folder + L'\0', {});
    }
    CoUninitialize();
    return 0;
}
