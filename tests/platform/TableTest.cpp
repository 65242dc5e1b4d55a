#include "tests/support/Table.h"

#include <gtest/gtest-spi.h>

#include <sstream>

namespace tarv {
namespace {

TEST(Table, FailsWithFileAndLineWhereItIsWrong) {
    const auto check = [](const std::string& text) {
        std::istringstream lines(text);
        checkTable("a.txt", lines, {{L"twice", [](const Row& row) { return row[0] + row[0]; }}});
    };
    const std::string block = "twice: text\ttext\na\taa\n";
    check(block + "# without\n\u2205\t\u2205\n\u2420b\t\u2420b\u2420b\n");
    for (const auto& [line, message] : {std::pair("a\tab", "L\"aa\""),
                                        {"a", "1 cells instead of 2"},
                                        {"a\taa\taa", "3 cells instead of 2"},
                                        {"a\t", "an empty cell or a blank at the end"},
                                        {" \t  ", "an empty cell or a blank at the end"},
                                        {"\ntwise: text\ttext\na\taa", "unknown routine"},
                                        {"\na\taa", "unknown routine"}}) {
        EXPECT_NONFATAL_FAILURE(check(block + line), message);
        EXPECT_NONFATAL_FAILURE(check(block + line), *line == '\n' ? "a.txt:4:" : "a.txt:3:");
    }
    EXPECT_NONFATAL_FAILURE(check(""), "no row for L\"twice\"");
    EXPECT_NONFATAL_FAILURE(check("twice: text\ttext\n"), "no row for L\"twice\"");
}

} // namespace
} // namespace tarv
