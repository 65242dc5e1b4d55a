#include "runtime/Funktionen32/Errors.h"
#include "runtime/Runtime.h"
#include "tests/support/World.h"
#include "tests/windows/ContractWorld.h"
#include "xml/XmlEncoding.h"
#include "xml/clsXML.h"

namespace tarv {
namespace {

/// The system's XML component and real files; message boxes are only noted. The component differs under Wine:
/// it names every fault 80004005 "error" at line 0, takes document type declarations and does not validate.
class Xml : public OnWindows, public testing::WithParamInterface<std::int16_t> {
protected:
    Xml() {
        rt.platform.desktop = &fake.desktop;
        EXPECT_EQ(xml.Initialize(GetParam()), GetParam());
    }

    FakePlatform fake;
    Runtime rt{border};
    clsXML xml{rt};
};

INSTANTIATE_TEST_SUITE_P(Versions, Xml, testing::Values(std::int16_t{6}, std::int16_t{1}),
                         [](const auto& test) { return "Version" + std::to_string(test.param); });

TEST_P(Xml, EveryStepOnTheDocument) {
    ASSERT_TRUE(xml.OpenFromString(L"<r><a k='v'>1\n2</a><b/><c l='v'/></r>", true));
    EXPECT_EQ(xml.ReadNode(L"a"), L"1\r\n2");
    EXPECT_EQ(xml.ReadAttribute(L"a", L"none"), Value(Null{}));
    EXPECT_EQ(xml.ReadAttribute(L"a/text()", L"k"), Value(Empty{})) << "a text has no attributes";
    EXPECT_THROW(xml.DeleteAttribute(L"a/text()", L"k"), RuntimeError);
    xml.WriteNode(L"a", L"ä <&>");
    xml.WriteAttribute(L"a", L"k", std::int16_t{7});
    xml.DeleteNode(L"b");
    xml.DeleteAttribute(L"c", L"l");
    xml.MakeNode(L"/r", L"c", L"x", L"p", 1, L"q", true); // the attributes go to the first of that name
    EXPECT_TRUE(xml.InsertNode(L"c", L"e", 0, L"t", L"k", 2));
    EXPECT_FALSE(xml.InsertNode(L"/r", L"s", 0)) << "a second document element";
    std::wstring now = xml.ReadNodeXML(L"/r");
    std::erase_if(now, [](wchar_t character) { return character < L' '; }); // the component indents
    EXPECT_EQ(now, L"<r><a k=\"7\">ä &lt;&amp;&gt;</a><c p=\"1\" q=\"-1\"/><c>x</c><e k=\"2\">t</e></r>");
    EXPECT_EQ(xml.NodeCount(L"c"), 2);
    const XmlNodeRef kept = xml.GetNode(L"e");
    EXPECT_FALSE(xml.OpenFromString(L"<r>", false));
    EXPECT_EQ(kept->text().valueOr(L""), L"t") << "a node outlives its document";
}

TEST_P(Xml, DocumentsOfManyKindsSurviveSavingAndLoading) {
    for (const wchar_t* encoding : {L"UTF-8", L"ISO-8859-1", L"UTF-16"}) {
        const std::wstring text =
            std::wstring(L"<?xml version=\"1.0\" encoding=\"") + encoding +
            L"\"?>\n<?ausgabe breite=\"80\"?>\n<lv xmlns:p=\"urn:preise\" k='&lt;&quot;&#252;'>"
            L"\n <pos nr=\"1\"><![CDATA[<kein> &amp; Element]]></pos><ende>Wände &#8364; 1<b>b</b>&lt;"
            L"<!-- Rand --><p:preis p:einheit='qm'/></ende></lv>\n<!-- Ende -->";
        border.files->overwrite(path(L"a.xml"), encodedAsDeclared(text).value_or(""));
        ASSERT_TRUE(xml.OpenFromFile(path(L"a.xml"), true)) << text;
        const std::wstring first = xml.XML();
        for (int overTheOld = 0; overTheOld < 2; ++overTheOld)
            xml.Save(path(L"b.xml"));
        ASSERT_TRUE(xml.OpenFromFile(path(L"b.xml"), true)) << text;
        EXPECT_TRUE(xml.XML() == first) << xml.XML();
        EXPECT_EQ(xml.ReadNode(L"ende"), L"Wände € 1b<");
    }
}

TEST_P(Xml, HostileFilesEndInAnErrorAndFetchNothing) {
    std::string bomb = "<!DOCTYPE r [<!ENTITY a0 \"aaaaaaaaaaaaaaaaaaaa\">";
    for (int i = 1; i < 10; ++i) {
        const std::string inner = "&a" + std::to_string(i - 1) + ";", twice = inner + inner;
        bomb += "<!ENTITY a" + std::to_string(i) + " \"" + twice + twice + twice + twice + twice + "\">";
    }
    for (const std::string& bytes :
         {bomb + "]><r>&a9;</r>", bomb + "]><r k='&a9;'/>", std::string("<r>\xE4</r>"),
          std::string("<?xml version='1.0' encoding='UTF-16'?><r/>"),
          std::string("<?xml version='1.0' encoding='x-unbekannt'?><r/>"), std::string("<r><a k='1"),
          std::string("\xFF\xFE<\0r\0", 6), std::string("<r>\0</r>", 8), std::string()}) {
        border.files->overwrite(path(L"a.xml"), bytes);
        fake.desktop.boxes.clear();
        EXPECT_FALSE(xml.OpenFromFile(path(L"a.xml"), true)) << bytes.substr(0, 60);
        ASSERT_EQ(fake.desktop.boxes.size(), 1u);
        EXPECT_TRUE(
            fake.desktop.boxes[0].text.starts_with(L"Fehler beim Laden von XML:\r\n" + path(L"a.xml")));
    }
    EXPECT_FALSE(xml.OpenFromFile(path(L""), false) || xml.OpenFromFile(path(L"none.xml"), false));
    border.files->overwrite(path(L"secret.txt"), "GEHEIM");
    border.files->overwrite(path(L"ext.dtd"), "<!ENTITY a 'GEHEIM'>");
    for (const char* declaration : {"[<!ENTITY a SYSTEM 'secret.txt'>]", "SYSTEM 'ext.dtd'"}) {
        border.files->overwrite(path(L"a.xml"),
                                std::string("<!DOCTYPE r ") + declaration + "><r><c>&a;</c></r>");
        xml.OpenFromFile(path(L"a.xml"), false); // version 6 refuses the declaration on Windows
        EXPECT_EQ(xml.ReadNode(L"c"), L"");
    }
}

} // namespace
} // namespace tarv
