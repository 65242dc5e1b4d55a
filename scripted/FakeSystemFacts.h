#pragma once

#include "platform/SystemFacts.h"
#include "scripted/Capitals.h"
#include "scripted/FaultPlan.h"

#include <algorithm>
#include <vector>

namespace tarv {

/// A German Windows with code page 1252 unless a test says otherwise. What the code page cannot hold becomes
/// "?"; the system's lookalikes (an L for a Polish one) are left out.
struct FakeSystemFacts : SystemFacts, Planned {
    using Planned::Planned;

    std::vector<std::wstring> environment() override {
        return faults_.value("SystemFacts.environment", variables);
    }
    std::wstring variable(std::wstring_view name) override {
        const auto entry = find(name);
        return faults_.value("SystemFacts.variable",
                             entry == variables.end() ? L"" : entry->substr(name.size() + 1));
    }
    std::wstring programPath() override { return faults_.value("SystemFacts.programPath", program); }
    FileVersion programVersion() override { return faults_.value("SystemFacts.programVersion", version); }
    VersionInfo windowsVersion() override {
        VersionInfo info = faults_.value("SystemFacts.windowsVersion", os);
        info.servicePack.resize(128, L' ');
        return info;
    }
    Answer<std::wstring> computerName() override { return answer("SystemFacts.computerName", computer); }
    Answer<std::wstring> userName() override { return answer("SystemFacts.userName", user); }
    std::wstring windowsDirectory(std::uint32_t size) override {
        return faults_.value("SystemFacts.windowsDirectory", windows.size() < size ? windows : L"");
    }
    std::wstring systemDirectory() override { return faults_.value("SystemFacts.systemDirectory", system); }
    Answer<std::wstring> localAddress() override { return answer("SystemFacts.localAddress", address); }
    std::wstring decimalSeparator() override {
        return faults_.value("SystemFacts.decimalSeparator", decimal);
    }
    std::wstring thousandsSeparator() override {
        return faults_.value("SystemFacts.thousandsSeparator", thousands);
    }
    std::string toAnsi(std::wstring_view text) override {
        return faults_.value("SystemFacts.toAnsi", encode(text));
    }
    std::wstring fromAnsi(std::string_view bytes) override {
        return faults_.value("SystemFacts.fromAnsi", decode(bytes));
    }

    /// Replaces the variable in its place or adds it at the end.
    void setVariable(std::wstring_view name, std::wstring_view text) {
        const auto entry = find(name);
        (entry == variables.end() ? variables.emplace_back() : *entry) =
            std::wstring(name) + L"=" + std::wstring(text);
    }

    /// The entries of the environment as they stand, in order.
    std::vector<std::wstring> variables{L"=C:=C:\\Program Files\\TARVENIK", L"ProgramData=C:\\ProgramData",
                                        L"SystemRoot=C:\\Windows", L"TEMP=C:\\Temp"};
    std::wstring program = L"C:\\Program Files\\TARVENIK\\TarvService.exe";
    FileVersion version{1, 0, 0};
    /// The service pack without its padding.
    VersionInfo os{6, 2, 9200, 2, std::wstring(1, L'\0')};
    std::wstring computer = L"BAUBUERO-7";
    std::wstring user = L"Mustermann";
    std::wstring windows = L"C:\\Windows";
    std::wstring system = L"C:\\Windows\\System32";
    std::wstring address = L"192.168.17.23";
    std::wstring decimal = L",", thousands = L".";

    static std::string encode(std::wstring_view text) {
        std::string bytes;
        for (const wchar_t character : text) {
            const auto upper = upperControls.find(character);
            const bool own = character < 0x80 || (character > 0x9F && character < 0x100);
            const wchar_t code = own ? character : L'?';
            bytes += static_cast<char>(upper != upperControls.npos ? 0x80 + static_cast<int>(upper) : code);
        }
        return bytes;
    }
    static std::wstring decode(std::string_view bytes) {
        std::wstring text;
        for (const char byte : bytes) {
            const auto code = static_cast<unsigned char>(byte);
            text += code >= 0x80 && code < 0xA0 ? upperControls[code - 0x80u] : static_cast<wchar_t>(code);
        }
        return text;
    }

private:
    std::vector<std::wstring>::iterator find(std::wstring_view name) {
        return std::ranges::find_if(variables, [key = capitals(name) + L"="](const auto& entry) {
            return capitals(entry).starts_with(key);
        });
    }
    Answer<std::wstring> answer(const char* function, const std::wstring& text) {
        const auto code = faults_.enter(function);
        return code ? Answer<std::wstring>(Failure{*code}) : text;
    }

    /// Characters of the codes 0x80 to 0x9F; all others are the same as in Unicode.
    static constexpr std::wstring_view upperControls =
        L"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
        L"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178";
};

} // namespace tarv
