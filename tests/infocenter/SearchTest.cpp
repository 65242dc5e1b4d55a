#include "infocenter/Search.h"
#include "infocenter/WholeText.h"
#include "tests/support/Table.h"

namespace tarv {
namespace {

struct SearchCalls : World {
    /// "text" and "tree": what is looked for, from where, "back" and "on" in any order; then the place, after
    /// "*" when the search has gone on at the other end.
    std::wstring answer(const Row& row) {
        const SearchStep step{row[4].find(L"back") != row[4].npos, row[4].find(L"on") != row[4].npos};
        bool wrapped = false;
        std::wstring place = L"none";
        if (row[0] == L"text") {
            if (const auto at = findInText(row[1], row[2], std::stoul(row[3]), step, wrapped))
                place = std::to_wstring(*at);
        } else {
            const IniTree tree{{{L"[Büro]", {L"a=1", L"ÄB=2"}}, {L"[leer]", {}}, {L"[c]", {L"d=büro"}}}};
            const NodePlace from{row[3][0] - std::size_t{L'0'}, row[3][2] - std::size_t{L'0'}};
            if (const auto node = findInTree(tree, row[2], from, step, wrapped))
                place = std::to_wstring(node->group) + L"." + std::to_wstring(node->entry);
        }
        return (wrapped && place != L"none" ? L"*" : L"") + place;
    }
};

TEST(Tables, Search) {
    checkTable<SearchCalls>("Search.txt");
    bool wrapped = false;
    EXPECT_FALSE(findInTree({}, L"x", {}, {}, wrapped));
}

TEST(WholeTextTest, ReportComesBeforeEachGroupWithItsEntries) {
    EXPECT_EQ(wholeText(L"Bericht\r\n\r\n", {{{L"[A]", {L"x=1", L"y"}}, {L"[B]", {}}}}),
              L"Bericht\r\n\r\n[A]\r\n    x=1\r\n    y\r\n[B]\r\n");
}

} // namespace
} // namespace tarv
