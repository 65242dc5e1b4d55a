#include "runtime/Funktionen32/Funktionen32.h"
#include "tests/support/Table.h"

#include <sstream>

namespace tarv {
namespace {

struct PathsCase : World {
    PathsCase() {
        fake.disk.addFolder(L"C:\\PROGRA~1").name = L"Program Files";
        fake.disk.addFile(L"C:\\PROGRA~1\\LANGED~1.TXT", "", attribute::hidden).name = L"Lange Datei.txt";
    }
    /// Each entry ends at a ";".
    void setEnvironment(const std::wstring& cell) {
        fake.facts.variables.clear();
        std::wistringstream entries(cell);
        for (std::wstring entry; std::getline(entries, entry, L';');)
            fake.facts.variables.push_back(entry);
    }
};

TEST(Tables, Paths) {
    checkTable<PathsCase>(
        "Paths.txt",
        {{L"AddBackslash", [](auto&, const Row& row) { return AddBackslash(row[0]); }},
         {L"GetFileName", [](auto&, const Row& row) { return GetFileName(row[0], row.on(1)); }},
         {L"MakeProgramDataKey", [](auto&, const Row& row) { return MakeProgramDataKey(row[0], row[1]); }},
         {L"StripRibbonSuffix", [](auto&, const Row& row) { return StripRibbonSuffix(row[0]); }},
         {L"upperCase", [](auto&, const Row& row) { return upperCase(row[0]); }},
         {L"lowerCase", [](auto&, const Row& row) { return lowerCase(row[0]); }},
         {L"trim", [](auto&, const Row& row) { return std::wstring(trim(row[0])); }},
         {L"OwnProgram",
          [](auto& w, const Row& row) {
              w.fake.facts.program = row[0];
              return joined(programFolder(w.rt), programName(w.rt));
          }},
         {L"SplitPath",
          [](auto& w, const Row& row) {
              w.fake.disk.currentDirectory = row[0];
              std::wstring drive = L"-", folder = L"-", file = L"-";
              SplitPath(w.rt, row[1], drive, folder, file);
              return joined(drive, folder, file);
          }},
         {L"File_getLongPath",
          [](auto& w, const Row& row) {
              w.rt.developerMode = row.on(0);
              return File_getLongPath(w.rt, row[1]);
          }},
         {L"GetEnvValue",
          [](auto& w, const Row& row) {
              w.setEnvironment(row[1]);
              return GetEnvValue(w.rt, row[0]);
          }},
         {L"GetTempFolder", [](auto& w, const Row& row) {
              w.setEnvironment(row[1]);
              return GetTempFolder(w.rt, row.on(0));
          }}});
}

} // namespace
} // namespace tarv
