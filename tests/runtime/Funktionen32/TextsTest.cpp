#include "runtime/Funktionen32/Texts.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(Texts, CaseMapsOneCharacterToOne) {
    EXPECT_EQ(upperCase(L"straße äöü é ÿ ž ł дя"), L"STRAßE ÄÖÜ É Ÿ Ž Ł ДЯ");
    EXPECT_EQ(lowerCase(L"STRAßE ÄÖÜ É Ÿ Ž Ł ДЯ"), L"straße äöü é ÿ ž ł дя");
    EXPECT_EQ(upperCase(L"×÷123_"), L"×÷123_");
}

TEST(Texts, OnlyTheBlankIsTrimmed) {
    EXPECT_EQ(trim(L"  a b  "), L"a b");
    EXPECT_EQ(trim(L"\t a\u00A0 "), L"\t a\u00A0");
    EXPECT_EQ(trim(L"   "), L"");
    EXPECT_EQ(trimLeft(L"  a "), L"a ");
}

TEST(Texts, NamePartStandsBehindTheLastBackslashOrElseColon) {
    EXPECT_EQ(fileNamePart(L"C:\\a:b\\c.d"), L"c.d");
    EXPECT_EQ(fileNamePart(L"X:file.txt"), L"file.txt");
    EXPECT_EQ(fileNamePart(L"a/b"), L"a/b");
    EXPECT_EQ(fileNamePart(L"C:\\"), L"");
}

} // namespace
} // namespace tarv
