#include "report/Command.h"
#include "report/Json.h"
#include "tests/support/World.h"

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

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
    for (const auto& each : cases) {
        SCOPED_TRACE(testing::PrintToString(each.arguments));
        fake.disk.remove(file);
        EXPECT_EQ(run(each.arguments), each.code);
        const std::string written = fake.disk.exists(file) ? fake.disk.bytes(file) : "";
        EXPECT_TRUE(out.starts_with(each.out) && out.empty() == !*each.out) << out;
        EXPECT_TRUE(written.starts_with(each.file) && written.empty() == !*each.file) << written;
        EXPECT_EQ(errors.empty(), each.code == 0) << errors;
        EXPECT_EQ(errors.find("/?") != errors.npos, each.code == 2) << errors;
    }
}

TEST_F(ReportTest, WhatIsMissingIsNamedAndWhatCannotBeWrittenCountsMore) {
    fake.disk.remove(folder + L"QV.ini");
    fake.disk.addFolder(folder + L"QV.ini");
    EXPECT_EQ(run({}), 1);
    EXPECT_NE(errors.find("C:\\ProgramData\\TARVENIK\\QV.ini"), errors.npos);
    EXPECT_EQ(errors.find("Q_Machine"), errors.npos);
    fake.disk.addFile(file, "former");
    fake.faults.fail("FileStore.overwrite", 112);
    EXPECT_EQ(run({L"/json", L"/o:C:\\Texte\\B.txt"}), 3);
    EXPECT_EQ(fake.disk.bytes(file), "former");
    writable = false;
    EXPECT_EQ(run({}), 3);
    EXPECT_EQ(run({L"/?"}), 3);
}

/// Read by a parser that takes nothing but valid JSON in valid UTF-8, and written without blanks.
std::string compact(const std::string& json) {
    rapidjson::StringStream stream(json.c_str());
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    rapidjson::Reader().Parse<rapidjson::kParseValidateEncodingFlag>(stream, writer);
    return text.GetString();
}

TEST_F(ReportTest, JsonHasAllFactsInOrder) {
    fake.profiles.fill(
        folder + L"Q_Machine.INI",
        L"[\"Büro\"]\r\nPfad=C:\\a\tb=c\r\nnichts\r\nleer=\r\n[X]\r\n[\"Büro\"]\r\nPfad=2\r\n");
    const InfoFacts facts{.computer = {L'P', L'\xDC00', L'C'},
                          .system = {L'\xD83D', L'\xDE00'},
                          .systemExtra = {L'a', L'\0', L'\x1F'},
                          .systemVersion = L"10.0",
                          .user = L"u",
                          .localAddress = L"1.2.3.4",
                          .windowsFolder = L"W",
                          .programFolder = L"O",
                          .programVersion = L"1.0.0"};
    const auto files = iniFiles(rt);
    const std::string json = jsonText(facts, {{files[0], true}, {files[1], false}}, ReadIniTree(rt));
    EXPECT_EQ(compact(json), compact(R"({"format":1,
"kundeninfo":{"computername":"P\uFFFDC","betriebssystem":"\uD83D\uDE00","betriebssystemZusatz":"a\u0000\u001F",
  "betriebssystemVersion":"10.0","benutzername":"u","lokaleIpAdresse":"1.2.3.4","windowsOrdner":"W"},
"programm":{"ordner":"O","version":"1.0.0"},
"dateien":[{"name":"Q_Machine.INI","pfad":"C:\\ProgramData\\TARVENIK\\Q_Machine.INI","vorhanden":true,"gruppen":[
    {"name":"\"B\u00FCro\"","mehrfach":false,"eintraege":[
      {"name":"Pfad","wert":"C:\\a\tb=c"},{"name":"nichts","wert":null},{"name":"leer","wert":""}]},
    {"name":"X","mehrfach":false,"eintraege":[]},{"name":"\"B\u00FCro\"","mehrfach":true,"eintraege":[]}]},
  {"name":"QV.INI","pfad":"C:\\ProgramData\\TARVENIK\\QV.ini","vorhanden":false,"gruppen":[
    {"name":"A","mehrfach":false,"eintraege":[]}]}]})"));
    EXPECT_TRUE(json.starts_with("{\n  \"format\": 1,\n")) << "each field has a line of its own";
}

} // namespace
} // namespace tarv
