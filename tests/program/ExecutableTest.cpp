#include "app/resource.h"
#include "tests/program/Installation.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include <tlhelp32.h>

namespace tarv::program {
namespace {

namespace fs = std::filesystem;

std::wstring builtFile(const std::wstring& name) {
    return fs::path(Installation::testFolder()).replace_filename(L"Programm").wstring() + L"\\" + name;
}

/// A program or library as the loader would lay it out in memory, without running any of it.
class Image {
public:
    explicit Image(const std::wstring& file)
        : base_(reinterpret_cast<const char*>(
              LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES))) {}

    const IMAGE_NT_HEADERS& headers() const {
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base_);
        return *reinterpret_cast<const IMAGE_NT_HEADERS*>(base_ + dos->e_lfanew);
    }

    const IMAGE_DATA_DIRECTORY& directory(int entry) const {
        return headers().OptionalHeader.DataDirectory[entry];
    }

    std::set<std::wstring> importedLibraries() const {
        std::set<std::wstring> names;
        if (!base_ || directory(IMAGE_DIRECTORY_ENTRY_IMPORT).Size == 0) {
            return names;
        }
        const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
            base_ + directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
        for (; import->Name; ++import) {
            std::string name = base_ + import->Name;
            CharLowerA(name.data());
            names.insert(std::wstring(name.begin(), name.end()));
        }
        return names;
    }

    /// The fixed part and one text of the version resource.
    std::pair<VS_FIXEDFILEINFO, std::wstring> version(const std::wstring& text) const {
        const auto module = reinterpret_cast<HMODULE>(const_cast<char*>(base_));
        const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
        const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
        std::vector<char> copy(bytes, bytes + SizeofResource(module, resource));
        void* fixed = nullptr;
        void* value = nullptr;
        UINT size = 0;
        VerQueryValueW(copy.data(), L"\\", &fixed, &size);
        VerQueryValueW(copy.data(), (L"\\StringFileInfo\\040704B0\\" + text).c_str(), &value, &size);
        return {*static_cast<VS_FIXEDFILEINFO*>(fixed), value ? static_cast<wchar_t*>(value) : L""};
    }

private:
    const char* base_;
};

/// Everything that is loaded before the first line of the program runs.
void addStaticImports(const std::wstring& file, std::set<std::wstring>& all) {
    for (const std::wstring& name : Image(file).importedLibraries()) {
        if (all.insert(name).second) {
            addStaticImports(name, all);
        }
    }
}

std::set<std::wstring> loadedLibraries(HWND windowOfProcess) {
    DWORD process = 0;
    GetWindowThreadProcessId(windowOfProcess, &process);
    std::set<std::wstring> names;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, process);
    MODULEENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Module32FirstW(snapshot, &entry); more; more = Module32NextW(snapshot, &entry)) {
        CharLowerW(entry.szModule);
        names.insert(entry.szModule);
    }
    CloseHandle(snapshot);
    return names;
}

struct ShippedFile {
    std::wstring name;
    std::wstring description;
    WORD subsystem;
    std::uintmax_t largest;
};

class ExecutableTest : public testing::TestWithParam<ShippedFile> {
protected:
    const std::wstring path = builtFile(GetParam().name);
    const Image image{path};
};

INSTANTIATE_TEST_SUITE_P(, ExecutableTest,
                         testing::Values(ShippedFile{L"TarvService.exe", L"TARVENIK Serviceprogramm",
                                                     IMAGE_SUBSYSTEM_WINDOWS_GUI, 700u * 1024},
                                         ShippedFile{L"rk_Runtime.dll", L"TARVENIK Fehleranzeige",
                                                     IMAGE_SUBSYSTEM_WINDOWS_CUI, 350u * 1024}),
                         [](const auto& test) { return fs::path(test.param.name).stem().string(); });

TEST_P(ExecutableTest, NeedsNothingButWindowsOwnLibraries) {
    // Known to Windows by name: taken from its own folder whatever lies beside the program. comctl32 comes
    // from the side-by-side store, as the manifest says.
    const std::set<std::wstring> allowed = {
        L"advapi32.dll", L"comctl32.dll", L"comdlg32.dll", L"gdi32.dll",   L"kernel32.dll", L"msvcrt.dll",
        L"ole32.dll",    L"oleaut32.dll", L"shell32.dll",  L"shlwapi.dll", L"user32.dll",   L"ws2_32.dll"};
    const std::set<std::wstring> imported = image.importedLibraries();
    EXPECT_GT(imported.size(), 3u);
    for (const std::wstring& library : imported) {
        EXPECT_TRUE(allowed.count(library)) << fs::path(library);
    }
}

TEST_P(ExecutableTest, IsSmallAndHardened) {
    EXPECT_LT(fs::file_size(path), GetParam().largest);
    const IMAGE_NT_HEADERS& headers = image.headers();
    const bool program = !(headers.FileHeader.Characteristics & IMAGE_FILE_DLL);
    const int wanted = IMAGE_DLLCHARACTERISTICS_NX_COMPAT | IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                       (program ? IMAGE_DLLCHARACTERISTICS_TERMINAL_SERVER_AWARE : 0) |
                       (sizeof(void*) == 8 ? 0x20 : 0); // high-entropy addresses
    EXPECT_EQ(headers.OptionalHeader.DllCharacteristics & wanted, wanted);
    EXPECT_EQ(headers.OptionalHeader.Subsystem, GetParam().subsystem);

    // Without relocations the file would always lie at the same address, whatever the flags say.
    EXPECT_FALSE(headers.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
    EXPECT_GT(image.directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 100u);

    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(&headers);
    for (int i = 0; i < headers.FileHeader.NumberOfSections; ++i) {
        const DWORD both = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
        EXPECT_NE(section[i].Characteristics & both, both) << section[i].Name;
    }
}

TEST_P(ExecutableTest, SaysWhatItIs) {
    const auto& [fixed, version] = image.version(L"FileVersion");
    EXPECT_EQ(version, TARVENIK_VERSION L".0");
    EXPECT_EQ(image.version(L"ProductVersion").second, version);
    EXPECT_EQ(std::to_wstring(HIWORD(fixed.dwFileVersionMS)) + L"." +
                  std::to_wstring(LOWORD(fixed.dwFileVersionMS)) + L"." +
                  std::to_wstring(HIWORD(fixed.dwFileVersionLS)) + L"." +
                  std::to_wstring(LOWORD(fixed.dwFileVersionLS)),
              version);
    EXPECT_EQ(image.version(L"CompanyName").second, L"TARVENIK");
    EXPECT_EQ(image.version(L"FileDescription").second, GetParam().description);
    EXPECT_EQ(image.version(L"OriginalFilename").second, GetParam().name);
}

/// Wine prefers its own libraries to files of the same name, whatever the search finds; not those named here.
class PreferFilesOverWinesOwn {
public:
    explicit PreferFilesOverWinesOwn(const std::set<std::wstring>& names) {
        for (const std::wstring& name : names) {
            const std::wstring value =
                L"*" + (name.ends_with(L".dll") ? name.substr(0, name.size() - 4) : name);
            RegSetKeyValueW(HKEY_CURRENT_USER, key, value.c_str(), REG_SZ, L"native,builtin", 30);
        }
    }
    ~PreferFilesOverWinesOwn() { RegDeleteKeyW(HKEY_CURRENT_USER, key); }

private:
    static constexpr wchar_t key[] = L"Software\\Wine\\DllOverrides";
};

/// Under names of everything that the program has loaded by the time both of its further windows were open,
/// and of what Windows is known to load late, libraries lie in the program folder and in the current one.
///
/// In the program folder some are left out. Static imports with all that they import are there before the
/// program's first line; Windows knows them by name (see above) and takes them from its own folder, Wine does
/// not. Wine loads imm32 (known by name, too) and its screen driver as early, and looks for what its own
/// libraries import on demand as if the program had not narrowed the search.
TEST(PlantedLibraries, AreNotLoaded) {
    const std::wstring planted = Installation::testFolder() + L"\\tarv_planted_library.dll";
    Installation installation;
    installation.write(machineFile, "[Directories]\r\nProgrammDirectory=C:\\Programm\r\n");
    const std::wstring current = installation.path(L"Programm\\Aktuell");
    fs::create_directory(current);

    const auto useProgram = [&] {
        const auto program = installation.start();
        const HWND mainWindow = program->window(L"frmMain");
        program->command(mainWindow, ID_mnuSupportIPAdresse);
        const HWND address = program->window(L"frmLokaleIP");
        program->command(address, ID_cmdClose);
        EXPECT_TRUE(program->gone(address));
        program->command(mainWindow, ID_mnuInfo);
        const HWND window = program->window(L"frmInfo4Prg");
        EXPECT_NE(ProgramDriver::text(GetDlgItem(window, ID_txtInfo)), L"");
        return loadedLibraries(window);
    };
    std::set<std::wstring> names = {
        L"apphelp.dll",     L"bcrypt.dll",   L"clbcatq.dll",       L"comctl32.dll", L"cryptbase.dll",
        L"cryptsp.dll",     L"dnsapi.dll",   L"dwmapi.dll",        L"fastprox.dll", L"iphlpapi.dll",
        L"msimg32.dll",     L"mswsock.dll",  L"msxml3.dll",        L"msxml6.dll",   L"netapi32.dll",
        L"ntmarta.dll",     L"oleacc.dll",   L"profapi.dll",       L"propsys.dll",  L"rasadhlp.dll",
        L"riched20.dll",    L"rsaenh.dll",   L"secur32.dll",       L"shfolder.dll", L"sspicli.dll",
        L"textshaping.dll", L"userenv.dll",  L"uxtheme.dll",       L"version.dll",  L"wbemcomn.dll",
        L"wbemdisp.dll",    L"wbemprox.dll", L"windowscodecs.dll", L"winmm.dll",    L"wldp.dll",
        L"wtsapi32.dll"};
    names.merge(useProgram());
    names.erase(L"tarvservice.exe");
    std::set<std::wstring> early = {L"ntdll.dll", L"imm32.dll", L"winex11.drv", L"uxtheme.dll",
                                    L"msimg32.dll"};
    addStaticImports(builtFile(L"TarvService.exe"), early);

    std::set<std::wstring> late;
    std::vector<std::wstring> files;
    for (const std::wstring& name : names) {
        files.push_back(current + L"\\" + name);
        if (!early.count(name)) {
            late.insert(name);
            files.push_back(installation.path(L"Programm\\" + name));
        }
    }
    for (const std::wstring& file : files) {
        ASSERT_TRUE(CopyFileW(planted.c_str(), file.c_str(), FALSE));
    }
    const PreferFilesOverWinesOwn preference(late);
    SetCurrentDirectoryW(current.c_str());
    useProgram();
    SetCurrentDirectoryW(Installation::testFolder().c_str());
    EXPECT_GT(late.size(), 30u) << "too few names to prove anything";
    for (const std::wstring& file : files) {
        EXPECT_FALSE(fs::exists(file + L".loaded")) << fs::path(file);
    }

    // A program that does ask for one leaves the mark that was looked for.
    const std::wstring wanted = current + L"\\winmm.dll";
    std::wstring commandLine = L"rundll32.exe " + wanted + L",Nothing";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION loader{};
    ASSERT_TRUE(CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &loader));
    EXPECT_TRUE(waitUntil([&] { return fs::exists(wanted + L".loaded"); }));
    TerminateProcess(loader.hProcess, 0);
    WaitForSingleObject(loader.hProcess, 5000);
    CloseHandle(loader.hThread);
    CloseHandle(loader.hProcess);
}

} // namespace
} // namespace tarv::program
