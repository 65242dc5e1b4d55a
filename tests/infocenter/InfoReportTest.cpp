#include "infocenter/InfoReport.h"

#include "infocenter/SystemProbes.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct InfoReportCase : World {
    InfoReportCase() {
        const auto service = fake.automation.object(), result = fake.automation.object();
        for (const auto& [caption, version] : {std::pair{L"\"First\"", L"Null"},
                                               {L"\"Windows 10 Pro\"", L"\"10.0.19045\""},
                                               {L"Null", L"7"}}) {
            result->elements.push_back(
                fake.automation.object({{L"Caption", valueOf(caption)}, {L"Version", valueOf(version)}}));
        }
        result->elements.push_back(nullptr);
        service->runs(L"ExecQuery", [result](std::span<const Value> arguments) {
            EXPECT_EQ(arguments[0], Value(std::wstring(L"SELECT * FROM Win32_OperatingSystem")));
            return Value(ObjectRef(result));
        });
        fake.automation.provided.emplace(L"winmgmts:", service);
    }
    void use(const Row& row) {
        const auto major = static_cast<std::uint32_t>(row.number(0));
        fake.facts.os = {major, static_cast<std::uint32_t>(row.number(1)), 77, 2, row[2] + L'\0'};
        fake.facts.version = {2, 10, 7};
    }
};

TEST(Tables, InfoReport) {
    checkTable<InfoReportCase>("InfoReport.txt",
                               {{L"CutAtNul", [](auto&, const Row& row) { return CutAtNul(row[0]); }},
                                {L"BuildInfoReport",
                                 [](auto& w, const Row& row) {
                                     w.use(row);
                                     return BuildInfoReport(w.rt);
                                 }},
                                {L"GetOSNameAndVersion", [](auto& w, const Row& row) {
                                     w.use(row);
                                     std::wstring name = L"caller's", version, extra = L"old";
                                     GetOSNameAndVersion(w.rt, name, version, extra);
                                     return joined(name, version, extra);
                                 }}});
}

} // namespace
} // namespace tarv
