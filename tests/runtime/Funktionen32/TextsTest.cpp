#include "runtime/Funktionen32/Texts.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(Texts, CaseMapsOneCharacterToOne) {
    EXPECT_EQ(upperCase(L"straße äöü é ÿ ž ł дя"), L"STRAßE ÄÖÜ É Ÿ Ž Ł ДЯ");
    EXPECT_EQ(lowerCase(L"STRAßE ÄÖÜ É Ÿ Ž Ł ДЯ"), L"straße äöü é ÿ ž ł дя");
}

TEST(Texts, OnlyTheBlankIsTrimmed) {
    EXPECT_EQ(trim(L"  a b  "), L"a b");
    EXPECT_EQ(trim(L"\t a\u00A0 "), L"\t a\u00A0");
}

} // namespace
} // namespace tarv
