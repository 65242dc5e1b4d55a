#pragma once

#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/MachineFacts.h"
#include "platform/OwnProgram.h"
#include "platform/RegionalSettings.h"
#include "tests/support/FaultPlan.h"

namespace tarv {

class FakeEnvironment : public Environment, Planned {
public:
    using Planned::Planned;

    std::vector<std::wstring> entries() override { return faults_.value("Environment.entries", list); }
    std::wstring value(std::wstring_view name) override;

    /// Replaces the entry in its place or adds it at the end.
    void set(std::wstring_view name, std::wstring_view text);

    /// The entries as they stand, in order.
    std::vector<std::wstring> list{L"=C:=C:\\Program Files\\TARVENIK", L"ProgramData=C:\\ProgramData",
                                   L"TEMP=C:\\Temp", L"windir=C:\\Windows"};

private:
    std::vector<std::wstring>::iterator find(std::wstring_view name);
};

class FakeOwnProgram : public OwnProgram, Planned {
public:
    using Planned::Planned;

    std::wstring path() override { return faults_.value("OwnProgram.path", file); }
    FileVersion version() override { return faults_.value("OwnProgram.version", number); }

    std::wstring file = L"C:\\Program Files\\TARVENIK\\TarvService.exe";
    FileVersion number{1, 0, 0};
};

class FakeMachineFacts : public MachineFacts, Planned {
public:
    using Planned::Planned;

    VersionInfo version() override;
    Answer<std::wstring> computerName() override { return answer("MachineFacts.computerName", computer); }
    Answer<std::wstring> userName() override { return answer("MachineFacts.userName", user); }
    std::wstring windowsDirectory(std::uint32_t size) override {
        return faults_.enter("MachineFacts.windowsDirectory") || windows.size() >= size ? std::wstring()
                                                                                        : windows;
    }
    std::wstring systemDirectory() override { return faults_.value("MachineFacts.systemDirectory", system); }
    Answer<std::wstring> localAddress() override { return answer("MachineFacts.localAddress", address); }

    std::uint32_t major = 6;
    std::uint32_t minor = 2;
    std::uint32_t build = 9200;
    /// Without NUL and padding.
    std::wstring servicePack;
    std::wstring computer = L"BAUBUERO-7";
    std::wstring user = L"Mustermann";
    std::wstring windows = L"C:\\Windows";
    std::wstring system = L"C:\\Windows\\System32";
    std::wstring address = L"192.168.17.23";

private:
    Answer<std::wstring> answer(std::string_view function, const std::wstring& text) {
        return faults_.answer(function, [&] { return Answer(text); });
    }
};

/// German unless a test says otherwise.
class FakeRegionalSettings : public RegionalSettings, Planned {
public:
    using Planned::Planned;

    std::wstring decimalSeparator() override {
        return faults_.value("RegionalSettings.decimalSeparator", decimal_);
    }
    std::wstring thousandsSeparator() override {
        return faults_.value("RegionalSettings.thousandsSeparator", thousands_);
    }

    /// English "." and ",", Swiss "." and U+2019, Austrian and French "," and U+00A0.
    void set(std::wstring_view decimal, std::wstring_view thousands) {
        decimal_ = decimal;
        thousands_ = thousands;
    }

private:
    std::wstring decimal_ = L",";
    std::wstring thousands_ = L".";
};

/// Code page 1252. What it cannot hold becomes "?"; the system's lookalikes (an L for a Polish one) are left
/// out.
class FakeCodePage : public CodePage, Planned {
public:
    using Planned::Planned;

    std::string toAnsi(std::wstring_view text) override {
        return faults_.value("CodePage.toAnsi", encode(text));
    }
    std::wstring fromAnsi(std::string_view bytes) override {
        return faults_.value("CodePage.fromAnsi", decode(bytes));
    }

    static std::string encode(std::wstring_view text);
    static std::wstring decode(std::string_view bytes);
};

} // namespace tarv
