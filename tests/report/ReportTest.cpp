#include "report/Command.h"
#include "tests/support/World.h"

#include <regex>
#include <vector>

namespace tarv {
namespace {

struct ReportTest : Scripted {
    const std::wstring folder = L"C:\\ProgramData\\TARVENIK\\", file = L"C:\\Texte\\B.txt";
    std::string out, errors;
    bool writable = true;

    ReportTest() {
        fake.disk.addFolder(L"C:\\Texte");
        fake.profiles.fill(folder + L"Q_Machine.INI", L"[Büro]\r\na=1\r\n");
        fake.profiles.fill(folder + L"QV.ini", L"[A]");
    }
    int run(const std::vector<const wchar_t*>& arguments) {
        out.clear();
        errors.clear();
        const auto into = [this](std::string& all) {
            return [this, &all](std::string_view part) {
                all += part;
                return writable;
            };
        };
        return runReport(rt, arguments, into(out), into(errors));
    }
};

TEST_F(ReportTest, SwitchesDecideWhatIsWrittenWhere) {
    const struct {
        std::vector<const wchar_t*> arguments;
        int code;
        const char *out, *file; // how it begins; empty when nothing comes
    } cases[] = {{{}, 0, "[Kundeninfo]", ""},
                 {{L"/JSON"}, 0, "{", ""},
                 {{L"-json", L"-O:C:\\Texte\\B.txt"}, 0, "", "{"},
                 {{L"/o:C:\\Texte\\B.txt"}, 0, "", "\xEF\xBB\xBF[Kundeninfo]"},
                 {{L"/?"}, 0, "TARVENIK Serviceprogramm", ""},
                 {{L"-h", L"/json", L"/o:C:\\Texte\\B.txt"}, 0, "TARVENIK Serviceprogramm", ""},
                 {{L"json"}, 2, "", ""},
                 {{L""}, 2, "", ""},
                 {{L"/"}, 2, "", ""},
                 {{L"/?", L"/x"}, 2, "", ""},
                 {{L"/?", L"-?"}, 2, "", ""},
                 {{L"/json", L"-json"}, 2, "", ""},
                 {{L"/o: "}, 2, "", ""},
                 {{L"/o:C:\\Texte\\B.txt", L"/o:C:\\Texte\\B.txt"}, 2, "", ""},
                 {{L"/o:C:\\Texte"}, 3, "", ""}};
    const std::size_t before = fake.disk.entries.size();
    for (const auto& each : cases) {
        SCOPED_TRACE(testing::PrintToString(each.arguments));
        EXPECT_EQ(run(each.arguments), each.code);
        const std::string written = fake.disk.exists(file) ? fake.disk.bytes(file) : "";
        EXPECT_TRUE(out.starts_with(each.out) && out.empty() == !*each.out) << out;
        EXPECT_TRUE(written.starts_with(each.file) && written.empty() == !*each.file) << written;
        fake.disk.remove(file);
        EXPECT_EQ(fake.disk.entries.size(), before) << "no trace, no half file";
        EXPECT_EQ(errors.empty(), each.code == 0) << errors;
        EXPECT_EQ(errors.find("/?") != errors.npos, each.code == 2) << errors;
    }
}

TEST_F(ReportTest, WhatIsMissingIsNamedAndWhatCannotBeWrittenCountsMore) {
    fake.disk.remove(folder + L"QV.ini");
    fake.disk.addFolder(folder + L"QV.ini");
    EXPECT_EQ(run({}), 1);
    EXPECT_NE(errors.find("fehlt: C:\\ProgramData\\TARVENIK\\QV.ini"), errors.npos);
    fake.faults.fail("FileStore.refusesReading", system_code::sharingViolation);
    EXPECT_EQ(run({L"/json"}), 1);
    EXPECT_NE(errors.find("lesen: C:\\ProgramData\\TARVENIK\\Q_Machine.INI"), errors.npos);
    EXPECT_NE(out.find("\"vorhanden\": true,\n      \"vollstaendig\": false,\n"), out.npos) << out;
    fake.disk.addFile(file, "former");
    fake.faults.fail("FileStore.overwrite", 112);
    EXPECT_EQ(run({L"/json", L"/o:C:\\Texte\\B.txt"}), 3);
    EXPECT_EQ(fake.disk.bytes(file), "former");
    writable = false;
    EXPECT_EQ(run({}), 3);
    EXPECT_EQ(run({L"/?"}), 3);
}

TEST_F(ReportTest, JsonHasAllFactsInOrder) {
    fake.profiles.fill(
        folder + L"Q_Machine.INI",
        L"[\"Büro\"]\r\nPfad=C:\\a\tb=c\r\nnichts\r\nleer=\r\n[X]\r\n[\"Büro\"]\r\nPfad=2\r\n");
    fake.facts.computer = {L'P', L'\xDC00', L'C'};
    fake.facts.user = {L'\xD83D', L'\xDE00', L'\0', L'\x1F'};
    fake.facts.os = {5, 1, 2600, 2, L"SP 3"};
    fake.faults.fail("FileStore.attributes", 2, 2, 2); // of the second file
    EXPECT_EQ(run({L"/json"}), 1);
    EXPECT_TRUE(out.starts_with("{\n  \"format\": 1,\n")) << "each field has a line of its own";
    const auto flat = [](const std::string& text) {
        return std::regex_replace(text, std::regex("\n *"), "");
    };
    EXPECT_EQ(flat(out), flat(R"({"format": 1,
"kundeninfo": {"computername": "P�C","betriebssystem": "Windows XP",
  "betriebssystemZusatz": "Build 2600  SP 3","betriebssystemVersion": "5.1",
  "benutzername": "😀\u0000\u001F","lokaleIpAdresse": "192.168.17.23","windowsOrdner": "C:\\Windows"},
"programm": {"ordner": "C:\\Program Files\\TARVENIK","version": "1.0.0"},
"dateien": [
  {"name": "Q_Machine.INI","pfad": "C:\\ProgramData\\TARVENIK\\Q_Machine.INI","vorhanden": true,"vollstaendig": true,"gruppen": [
    {"name": "\"Büro\"","mehrfach": false,"vollstaendig": true,"eintraege": [
      {"name": "Pfad","wert": "C:\\a\tb=c"},{"name": "nichts","wert": null},{"name": "leer","wert": ""}]},
    {"name": "X","mehrfach": false,"vollstaendig": true,"eintraege": []},{"name": "\"Büro\"","mehrfach": true,"vollstaendig": true,"eintraege": []}]},
  {"name": "QV.INI","pfad": "C:\\ProgramData\\TARVENIK\\QV.ini","vorhanden": false,"vollstaendig": true,"gruppen": [
    {"name": "A","mehrfach": false,"vollstaendig": true,"eintraege": []}]}]})"));
}

} // namespace
} // namespace tarv
