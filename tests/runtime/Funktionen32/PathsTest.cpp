#include "runtime/Funktionen32/Paths.h"

#include "runtime/Funktionen32/Starter.h"
#include "runtime/Funktionen32/Texts.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct Paths : World {
    std::wstring answer(const Row& row) {
        const std::wstring &routine = row[0], &text = row[1];
        fake.disk.shortNames = {{L"PROGRA~1", L"Program Files"}, {L"LANGED~1.TXT", L"Lange Datei.txt"}};
        fake.disk.addFile(L"C:\\Program Files\\Lange Datei.txt", "", attribute::hidden);
        if (routine == L"AddBackslash")
            return AddBackslash(text);
        if (routine == L"GetFileName")
            return GetFileName(text, row[2] == L"1");
        if (routine == L"MakeProgramDataKey")
            return MakeProgramDataKey(text, row[2]);
        if (routine == L"StripRibbonSuffix")
            return StripRibbonSuffix(text);
        if (routine == L"upperCase")
            return upperCase(text);
        if (routine == L"lowerCase")
            return lowerCase(text);
        if (routine == L"trim")
            return std::wstring(trim(text));
        if (routine == L"OwnProgram") {
            fake.facts.program = text;
            return joined(programFolder(rt), programName(rt));
        }
        if (routine == L"SplitPath") {
            fake.disk.currentDirectory = text;
            std::wstring drive = L"-", folder = L"-", file = L"-";
            SplitPath(rt, row[2], drive, folder, file);
            return joined(drive, folder, file);
        }
        if (routine == L"LongPath") {
            rt.developerMode = text == L"1";
            const std::wstring found = File_getLongPath(rt, row[2]);
            EXPECT_EQ(fake.files.openSearches, 0);
            return found + shownBoxes(*this);
        }
        if (routine == L"programFile") {
            fake.disk.addFile(L"C:\\exakt", "MZ");
            fake.disk.addFolder(L"C:\\Ordner");
            return programFile(rt, text);
        }
        fake.facts.variables = {L""};
        for (const wchar_t c : row[2])
            c == L'|' ? void(fake.facts.variables.emplace_back()) : void(fake.facts.variables.back() += c);
        return routine == L"GetEnvValue" ? GetEnvValue(rt, text) : GetTempFolder(rt, text == L"1");
    }
};

TEST(Tables, Paths) {
    checkTable<Paths>("Paths.txt");
}

} // namespace
} // namespace tarv
