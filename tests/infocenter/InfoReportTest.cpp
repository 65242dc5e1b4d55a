#include "infocenter/InfoReport.h"

#include "infocenter/SystemProbes.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct InfoCalls : World {
    void provideManagementService() {
        const auto service = fake.automation.object(L"service"), result = fake.automation.object(L"result");
        for (const auto& [caption, version] : {std::pair{L"\"First\"", L"Null"},
                                               {L"\"Windows 10 Pro\"", L"\"10.0.19045\""},
                                               {L"Null", L"7"}}) {
            const auto system = fake.automation.object(L"system");
            system->answers(L"Caption", valueOf(caption)).answers(L"Version", valueOf(version));
            result->elements.push_back(system);
        }
        result->elements.push_back(nullptr);
        service->runs(L"ExecQuery", [result](std::span<const Value> arguments) {
            EXPECT_EQ(arguments[0], Value(std::wstring(L"SELECT * FROM Win32_OperatingSystem")));
            return Value(ObjectRef(result));
        });
        fake.automation.provided.emplace(L"winmgmts:", service);
    }

    std::wstring answer(const Row& row) {
        if (row[0] == L"CutAtNul")
            return CutAtNul(row[1]);
        provideManagementService();
        fake.facts.major = static_cast<std::uint32_t>(std::stoi(row[1]));
        fake.facts.minor = static_cast<std::uint32_t>(std::stoi(row[2]));
        fake.facts.build = 77;
        fake.facts.servicePack = row[3];
        fake.facts.version = {2, 10, 7};
        if (row[0] == L"report")
            return BuildInfoReport(rt);
        std::wstring name = L"caller's", version, extra = L"old";
        GetOSNameAndVersion(rt, name, version, extra);
        return joined(name, version, extra);
    }
};

TEST(Tables, InfoCentre) {
    checkTable<InfoCalls>("InfoCentre.txt");
}

} // namespace
} // namespace tarv
