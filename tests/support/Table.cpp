#include "tests/support/Table.h"

#include "runtime/Funktionen32/Errors.h"

#include <algorithm>
#include <charconv>
#include <cwchar>
#include <filesystem>
#include <fstream>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tarv {
namespace {

constexpr const wchar_t* words[] = {L"Empty", L"Null", L"Missing", L"False", L"True"};
const Value wordValues[] = {Empty{}, Null{}, Missing{}, false, true};

Row cells(std::string_view line) {
    Row row;
    row.emplace_back();
    for (std::size_t i = 0; i < line.size();) {
        const auto first = static_cast<unsigned char>(line[i++]);
        const int further = first < 0x80 ? 0 : first < 0xE0 ? 1 : 2;
        auto code = static_cast<wchar_t>(first & (further == 0 ? 0x7F : further == 1 ? 0x1F : 0x0F));
        for (int n = 0; n < further; ++n)
            code = static_cast<wchar_t>(code << 6 | (line[i++] & 0x3F));
        if (code == L'\t')
            row.emplace_back();
        else if (code >= 0x2400 && code <= 0x2420)
            row.back() += static_cast<wchar_t>(code - 0x2400);
        else
            row.back() += code == 0x237D ? L'\xA0' : code;
    }
    return row;
}

void compare(const Row& row, const std::function<std::wstring(const Row&)>& answer) {
    try {
        EXPECT_EQ(answer(row), row.back());
    } catch (const RuntimeError& error) {
        EXPECT_EQ(L"raises " + std::to_wstring(error.record().number), row.back());
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

std::filesystem::path dataFolder() {
#ifdef _WIN32
    // Beside the program, which may have been taken to another machine.
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    return std::filesystem::path(own).parent_path() / "data";
#else
    return TARV_TEST_DATA;
#endif
}

std::wstring shortest(double number) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

} // namespace

void checkTable(const std::string& name, const Answers& answers) {
    std::ifstream file(dataFolder() / name);
    checkTable("tests/data/" + name, file, answers);
}

void checkTable(const std::string& name, std::istream& lines, const Answers& answers) {
    std::map<std::wstring, int> rows;
    std::wstring routine;
    std::size_t columns = 0; // none: the next line begins a block
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        const testing::ScopedTrace place(name.c_str(), ++number, line);
        if (line.empty())
            columns = 0;
        if (line.empty() || line.front() == '#')
            continue;
        Row row = cells(line);
        if (line.ends_with(' ') || std::ranges::count(row, L"") > 0) {
            ADD_FAILURE() << "an empty cell or a blank at the end";
        } else if (columns == 0) {
            routine = row[0].substr(0, row[0].find(L':'));
            columns = row.size();
            EXPECT_TRUE(answers.contains(routine)) << "unknown routine";
        } else if (row.size() != columns) {
            ADD_FAILURE() << row.size() << " cells instead of " << columns;
        } else if (answers.contains(routine)) {
            ++rows[routine];
            std::ranges::replace(row, L"\u2205", L"");
            compare(row, answers.at(routine));
        }
    }
    for (const auto& [known, answer] : answers)
        if (rows[known] == 0)
            ADD_FAILURE_AT(name.c_str(), number) << "no row for " << testing::PrintToString(known);
}

Value valueOf(const std::wstring& cell) {
    for (std::size_t i = 0; i < std::size(words); ++i)
        if (cell == words[i])
            return wordValues[i];
    const double number = std::wcstod(cell.c_str(), nullptr);
    return cell.starts_with(L'"')        ? Value(cell.substr(1, cell.size() - 2))
           : cell.ends_with(L" Integer") ? Value(static_cast<std::int16_t>(number))
           : cell.ends_with(L" Long")    ? Value(static_cast<std::int32_t>(number))
           : cell.ends_with(L" Date")    ? Value(Date{number})
                                         : Value(number);
}

std::wstring shown(const Value& value) {
    for (std::size_t i = 0; i < std::size(words); ++i)
        if (value == wordValues[i])
            return words[i];
    if (const auto* text = std::get_if<std::wstring>(&value))
        return L"\"" + *text + L"\"";
    if (const auto* number = std::get_if<double>(&value))
        return shortest(*number);
    if (const auto* date = std::get_if<Date>(&value))
        return shortest(date->days) + L" Date";
    const auto* number = std::get_if<std::int16_t>(&value);
    return number ? std::to_wstring(*number) + L" Integer"
                  : std::to_wstring(std::get<std::int32_t>(value)) + L" Long";
}

std::wstring shownBoxes(const World& world) {
    std::wstring all;
    for (const ShownMessageBox& box : world.fake.desktop.boxes)
        all += L" " + joined(box.text, box.title, std::to_wstring(box.style));
    return all;
}

} // namespace tarv
