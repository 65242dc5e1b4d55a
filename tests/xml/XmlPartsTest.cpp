#include "runtime/RuntimeError.h"
#include "xml/XmlColor.h"
#include "xml/XmlEncoding.h"
#include "xml/XmlText.h"

#include <gtest/gtest.h>

namespace tarv {
namespace {

TEST(XmlColor, TextBecomesValueOrError) {
    const std::pair<const wchar_t*, std::int32_t> values[] = {
        {L"(255, 128, 0)", 33023},
        {L"(1, 2, 3, 4)", 1 + 512}, // the third part loses its last character all the same
        {L"[ 7 x, 1e1, 2.5]", 7 + 2560 + 2 * 65536},
        {L"(0.5, 1.5, -1)", 0 + 512 - 65536},
        {L", , ", 0},
        {L"(65535, 0, 32767)", 2147483647}};
    for (const auto& [text, value] : values)
        EXPECT_EQ(colorValue(text), value) << text;
    const std::pair<const wchar_t*, std::int32_t> errors[] = {
        {L"(65536, 0, 32767)", error_number::overflow},  {L"(0, 0, -32769)", error_number::overflow},
        {L"(1e999, 0, 0)", error_number::overflow},      {L"", error_number::subscriptOutOfRange},
        {L"(1,2,3)", error_number::subscriptOutOfRange}, {L"(1, 2)", error_number::subscriptOutOfRange}};
    for (const auto& [text, number] : errors)
        try {
            ADD_FAILURE() << text << " is " << colorValue(text);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.record().number, number) << text;
        }
    EXPECT_EQ(colorText(255, -1, 32767), L"(255, -1, 32767)");
}

TEST(XmlText, LineEndsAndDeclarations) {
    EXPECT_EQ(withWindowsLineEnds(L"a\nb\r\nc\n"), L"a\r\nb\r\r\nc\r\n");
    const std::wstring full = L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"<?xml version=\"1.0\"?><r/>", full + L"<r/>"},
        {L"<?XML Version=\"1.0\"?><r/>", full + L"<r/>"},
        {L"<?a?><?xml version=\"1.0\"?><?xml version=\"1.0\"?>", L"<?a?>" + full + full},
        {L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>",
         L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"},
        {L"<r/><?xml version=\"1.0\"?", L"<r/><?xml version=\"1.0\"?"},
    };
    for (const auto& [before, after] : cases)
        EXPECT_EQ(withCompleteDeclaration(before), after);
}

TEST(XmlText, WhatXmlCannotHold) {
    for (wchar_t unit = 0; unit < 0x20; ++unit)
        EXPECT_EQ(isXmlText(std::wstring(L"a") + unit), unit == 9 || unit == 10 || unit == 13) << int(unit);
    const std::wstring high(1, wchar_t(0xD83D)), low(1, wchar_t(0xDE00));
    EXPECT_TRUE(isXmlText(L"ä €" + high + low));
    for (const std::wstring& bad : {high, low, high + L"a", low + high, std::wstring(1, wchar_t(0xFFFE))})
        EXPECT_FALSE(isXmlText(bad));

    for (const wchar_t* name : {L"a", L"_x", L"ns:teil", L"Länge", L"a-b.c1", L"\u00D6ffnung"})
        EXPECT_TRUE(isXmlName(name)) << name;
    for (const wchar_t* name : {L"", L"1a", L"-a", L".", L"a b", L"a<b", L"a/b", L"a\u00D7", L"a\x01"})
        EXPECT_FALSE(isXmlName(name)) << name;
    EXPECT_FALSE(isXmlName(L"a" + high));
}

TEST(XmlEncoding, BytesFollowTheDeclaration) {
    const std::wstring smile{wchar_t(0xD83D), wchar_t(0xDE00)};
    const auto with = [](std::wstring_view encoding, std::wstring_view text) {
        return encodedAsDeclared(L"<?xml version='1.0' encoding = \"" + std::wstring(encoding) + L"\" ?>" +
                                 std::wstring(text));
    };
    const auto ending = [](const std::optional<std::string>& bytes) {
        return bytes ? bytes->substr(bytes->find("?>") + 2) : "none";
    };
    EXPECT_EQ(encodedAsDeclared(L"<r>\u00e4</r>"), "<r>\xC3\xA4</r>");
    EXPECT_EQ(encodedAsDeclared(L"<r encoding='ISO-8859-1'>\u00e4</r>"),
              "<r encoding='ISO-8859-1'>\xC3\xA4</r>");
    EXPECT_EQ(ending(with(L"UTF-8", L"\u00e4\u20ac" + smile)), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(ending(with(L"iso-8859-1", L"\u00e4\u00ff")), "\xE4\xFF");
    EXPECT_EQ(ending(with(L"Windows-1252", L"\u20ac\u0178\u00e4")), "\x80\x9F\xE4");
    EXPECT_EQ(ending(with(L"US-ASCII", L"a")), "a");
    for (const auto& [encoding, text] : {std::pair{L"ISO-8859-1", L"\u20ac"},
                                         {L"US-ASCII", L"\u00e4"},
                                         {L"windows-1252", L"\u0141"},
                                         {L"windows-1252", L"\u0081"},
                                         {L"EBCDIC-DE", L"a"},
                                         {L"UTF-8", L"\xDC00"}})
        EXPECT_FALSE(with(encoding, text)) << encoding;
    const auto wide = with(L"UTF-16", smile).value_or("");
    EXPECT_TRUE(wide.starts_with(std::string("\xFF\xFE<\0", 4)));
    EXPECT_TRUE(wide.ends_with(std::string("\x3D\xD8\x00\xDE", 4))) << "pair, low byte first";
}

} // namespace
} // namespace tarv
