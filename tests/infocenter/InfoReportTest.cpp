#include "infocenter/InfoReport.h"

#include "infocenter/SystemProbes.h"
#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

using namespace std::string_literals;

struct InfoReport : Scripted {
    ObjectRef system(Value caption, Value version) {
        const auto made = fake.automation.object(L"system");
        made->property(L"Caption", std::move(caption)).property(L"Version", std::move(version));
        return made;
    }

    void provideService(std::vector<ObjectRef> systems) {
        const auto service = fake.automation.object(L"service");
        const auto result = fake.automation.object(L"result");
        result->elements = std::move(systems);
        service->answers(L"ExecQuery", ObjectRef(result));
        fake.automation.provide(L"winmgmts:", ObjectRef(service));
    }
};

TEST_F(InfoReport, IsLaidOutToTheBlank) {
    fake.machine.major = 5;
    fake.machine.minor = 1;
    fake.machine.build = 2600;
    fake.machine.servicePack = L"Service Pack 3";
    fake.program.number = {2, 10, 7};
    EXPECT_EQ(BuildInfoReport(rt), L"[Kundeninfo]\r\n\r\n"
                                   L"  Computername:      BAUBUERO-7\r\n"
                                   L"  Betriebssystem:    Windows XP  Build 2600  Service Pack 3\r\n"
                                   L"     Version:        5.1\r\n\r\n"
                                   L"  Benutzername:      Mustermann\r\n"
                                   L"  Lokale IP-Adresse: 192.168.17.23\r\n"
                                   L"  Windows Ordner:    C:\\Windows\r\n\r\n"
                                   L"[Programm]\r\n"
                                   L"  Ordner: C:\\Program Files\\TARVENIK\r\n"
                                   L"  Version: 2.10.7\r\n\r\n");
}

TEST_F(InfoReport, IsProducedWhenEveryProbeFails) {
    for (const char* function :
         {"MachineFacts.version", "MachineFacts.computerName", "MachineFacts.userName", "Automation.bind",
          "MachineFacts.windowsDirectory", "MachineFacts.localAddress", "OwnProgram.version"})
        fake.faults.fail(function, system_code::accessDenied);
    EXPECT_EQ(BuildInfoReport(rt), L"[Kundeninfo]\r\n\r\n"
                                   L"  Computername:      \r\n"
                                   L"  Betriebssystem:      \r\n"
                                   L"     Version:        0.0\r\n\r\n"
                                   L"  Benutzername:      \r\n"
                                   L"  Lokale IP-Adresse: 127.0.0.1\r\n"
                                   L"  Windows Ordner:    \r\n\r\n"
                                   L"[Programm]\r\n"
                                   L"  Ordner: C:\\Program Files\\TARVENIK\r\n"
                                   L"  Version: 0.0.0\r\n\r\n");
}

TEST_F(InfoReport, SystemIsNamedByItsVersion) {
    provideService({system(L"First"s, L"1"s), system(L"Windows 10 Pro"s, L"10.0.19045"s)});
    using Expected = std::vector<std::wstring>;
    const std::tuple<std::uint32_t, std::uint32_t, Expected> cases[]{
        {3, 51, {L"Windows NT 3/3.51", L"3.51", L"Build 77  "}},
        {4, 10, {L"Windows NT 4.0", L"4.10", L"Build 77  "}},
        {5, 0, {L"Windows 2000", L"5.0", L"Build 77  "}},
        {5, 2, {L"caller's", L"5.2", L"Build 77  "}},
        {2, 0, {L"Windows 10 Pro", L"10.0.19045", L""}},
        {6, 1, {L"Windows 10 Pro", L"10.0.19045", L""}},
    };
    fake.machine.build = 77;
    for (const auto& [major, minor, expected] : cases) {
        fake.machine.major = major;
        fake.machine.minor = minor;
        std::wstring name = L"caller's", version, extra = L"old";
        GetOSNameAndVersion(rt, name, version, extra);
        EXPECT_EQ((Expected{name, version, extra}), expected);
    }
    EXPECT_EQ(fake.automation.log[1].arguments, std::vector<Value>{L"SELECT * FROM Win32_OperatingSystem"s});
}

TEST_F(InfoReport, ManagementServiceMayFailAnywhere) {
    const auto ask = [&] {
        std::wstring name = L"name", version = L"version";
        GetOSFromWMI(rt, name, version);
        return name + L" " + version;
    };
    EXPECT_EQ(ask(), L"name version");
    provideService({system(Null{}, L"10.0"s), nullptr});
    EXPECT_EQ(ask(), L"name 10.0");
    for (const auto function : {"AutomationObject.call", "AutomationObject.items", "AutomationObject.get"}) {
        fake.faults.heal();
        fake.faults.fail(function, 5);
        EXPECT_EQ(ask(), L"name version") << function;
    }
    fake.automation.provide(L"winmgmts:", ObjectRef());
    EXPECT_EQ(ask(), L"name version");
}

TEST_F(InfoReport, ServicePackTextIsCutAtItsNul) {
    EXPECT_EQ(CutAtNul(L" a \0b"s), L" a ");
    EXPECT_EQ(CutAtNul(L"\0 b\0c "s), L"b c");
    EXPECT_EQ(CutAtNul(L"  a "s), L"a");
    EXPECT_EQ(CutAtNul(L""), L"");
}

} // namespace
} // namespace tarv
