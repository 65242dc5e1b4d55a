#include "xml/clsXML.h"

#include "runtime/Funktionen32/Errors.h"
#include "tests/support/Table.h"
#include "xml/XmlEncoding.h"
#include "xml/XmlText.h"

namespace tarv {
namespace {

TEST(Tables, clsXML) {
    checkTable<World>(
        "clsXML.txt",
        {{L"colorValue", [](auto&, const Row& row) { return std::to_wstring(colorValue(row[0])); }},
         {L"withWindowsLineEnds", [](auto&, const Row& row) { return withWindowsLineEnds(row[0]); }},
         {L"withCompleteDeclaration", [](auto&, const Row& row) { return withCompleteDeclaration(row[0]); }},
         {L"isXmlText", [](auto&, const Row& row) { return std::to_wstring(isXmlText(row[0])); }},
         {L"isXmlName", [](auto&, const Row& row) { return std::to_wstring(isXmlName(row[0])); }},
         {L"declaredEncoding", [](auto&, const Row& row) { return declaredEncoding(row[0]); }},
         {L"encodedAsDeclared", [](auto&, const Row& row) {
              const std::wstring start = L"<?xml version='1.0' encoding = \"" + row[0] + L"\" ?>";
              const auto bytes = encodedAsDeclared(start + row[1]);
              return bytes ? FakeSystemFacts::decode(bytes->substr(start.size())) : L"none";
          }}});
}

TEST(XmlText, HoldsNoHalvesOfPairs) {
    const std::wstring high(1, wchar_t(0xD800)), low(1, wchar_t(0xDC00));
    EXPECT_TRUE(isXmlText(L"ä €" + high + low));
    for (const std::wstring& bad : {high, low, high + L"a", low + high, high + L"\uE000"})
        EXPECT_FALSE(isXmlText(bad) || encodedAsDeclared(bad));
    EXPECT_FALSE(isXmlText(L"\uFFFE"));
    EXPECT_FALSE(isXmlName(L"a" + high));
    EXPECT_EQ(encodedAsDeclared(L"\u00E4" + high + low), "\xC3\xA4\xF0\x90\x80\x80") << "no declaration";
    EXPECT_FALSE(encodedAsDeclared(L"<?xml encoding='windows-1252'?>\u0081"));
    const std::string wide = encodedAsDeclared(L"<?xml encoding='UTF-16'?>" + high + low).value_or("");
    EXPECT_TRUE(wide.starts_with(std::string("\xFF\xFE<\0", 4)));
    EXPECT_TRUE(wide.ends_with(std::string("\x00\xD8\x00\xDC", 4))) << "pair, low byte first";
}

constexpr const wchar_t* scratch = L"C:\\Program Files\\TARVENIK\\tempgoxml.xml";

struct ClsXml : Scripted {
    clsXML xml{rt};

    /// The number that the call raises; 0 when it raises none.
    template <class Call>
    std::int32_t raised(Call call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            said = error.record().description;
            return error.record().number;
        }
        return 0;
    }
    /// The description of what was raised last.
    std::wstring said;
    std::wstring log() { return std::exchange(fake.xml.log, {}); }
};

TEST_F(ClsXml, ChoosesAndTestsParsersSilently) {
    EXPECT_EQ(xml.Initialize(6), 6);
    EXPECT_EQ(xml.Initialize(1), 1);
    EXPECT_EQ(xml.Initialize(4), 0);
    fake.xml.known = {L"Msxml.DOMDocument"};
    EXPECT_EQ(xml.Initialize(6), 0);
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_TRUE(clsXML(rt).OpenFromString(L"<r/>", false)) << "version 1 is taken where 6 is missing";
    EXPECT_EQ(log(), L"putResolveExternals(0);putValidateOnParse(1);putAsync(0);loadXml(<r/>);");
}

TEST_F(ClsXml, ShowsThatNoDocumentCanBeCreated) {
    const std::wstring load = L" clsXml.OpenXML Fehler|Create the DOMDocument|4144";
    xml.Initialize(4);
    EXPECT_FALSE(xml.OpenFromString(L"<r/>", false));
    xml.Initialize(6);
    fake.faults.fail("XmlParsers.create", 70);
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false)) << "only 429 names the class";
    EXPECT_EQ(shownBoxes(*this), load + load);
    fake.desktop.boxes.clear();
    fake.faults.fail("XmlParsers.create", 429);
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_EQ(shownBoxes(*this),
              L" XML-Problem beim Create (Msxml2.DOMDocument.6.0)|clsXml.InvokeParser|4096" + load);
}

TEST_F(ClsXml, ReportsParseErrorsToTheLetter) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", true));
    fake.xml.accepts = [](auto) { return false; };
    fake.xml.error = {-1072896680, L"Ungültig.\r\n", 3, 17, L"<r><a></r>"};
    const std::wstring rest = L"\r\n\r\n-1072896680\r\nUngültig.\r\nLine 3, Position 17\r\n\r\n<r><a></r>\r\n"
                              L"|XML Parse Error|4144";
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", true));
    EXPECT_FALSE(xml.OpenFromString(L"<r><a></r>", true));
    EXPECT_EQ(shownBoxes(*this),
              L" Fehler beim Laden von XML:\r\nC:\\a.xml" + rest + L" Fehler beim Laden von XML" + rest);
    // A call that fails is told where the parser itself says nothing.
    fake.faults.fail("XmlDocument.load", 14);
    for (const auto& [code, told] : {std::pair(0, L"\r\n14\r\nVerweigert\r\nLine 0"), {7, L"\r\n7\r\n"}}) {
        fake.xml.error = {code, L"", 0, 0, L""};
        EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", true));
        EXPECT_NE(fake.desktop.boxes.back().text.find(told), std::wstring::npos);
    }
    EXPECT_EQ(raised([&] { xml.XML(); }), error_number::objectNotSet) << "the former document is gone";
}

TEST_F(ClsXml, ScratchFileHelpsTheOldParserOnly) {
    std::string written;
    fake.xml.error.code = static_cast<std::int32_t>(0xC00CE56F);
    fake.xml.accepts = [&](std::wstring_view source) {
        written = source == scratch ? fake.disk.bytes(source) : "";
        return !written.empty();
    };
    const std::wstring text = L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\u00e4</r>";
    xml.Initialize(6);
    EXPECT_FALSE(xml.OpenFromString(text, false));
    xml.Initialize(1);
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_EQ(fake.faults.calls("FileStore.overwrite"), 0);
    EXPECT_TRUE(xml.OpenFromString(text, true));
    EXPECT_EQ(written, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4</r>");
    EXPECT_FALSE(fake.disk.exists(scratch));
    EXPECT_TRUE(xml.OpenFromString(L"<?xml version='1.0' encoding='x-alt'?><r>a</r>", true));
    EXPECT_EQ(written, "<?xml version='1.0' encoding='x-alt'?><r>a</r>") << "ASCII under any name";
    EXPECT_TRUE(fake.desktop.boxes.empty());

    fake.disk.addFile(scratch, "<fremd/>");
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation, 1, 1);
    EXPECT_FALSE(xml.OpenFromString(L"<r/>", true)) << "what lies there is never loaded";
    EXPECT_TRUE(shownBoxes(*this).starts_with(
        L" Fehler beim Laden von XML:\r\n" + std::wstring(scratch) +
        L"\r\n\r\n-2147024864\r\nDie Hilfsdatei kann nicht geschrieben werden.\r\nLine 0, Position 0\r\n"));
    for (const auto& [encoding, told] : {std::pair(L"US-ASCII", L"Der Text passt nicht in die Kodierung"),
                                         {L"x-alt", L"Die Kodierung, die der Text nennt, ist unbekannt."}}) {
        const std::wstring start = std::wstring(L"<?xml version='1.0' encoding='") + encoding;
        EXPECT_FALSE(xml.OpenFromString(start + L"'?><r>\u00e4</r>", true));
        EXPECT_NE(fake.desktop.boxes.back().text.find(told), std::wstring::npos);
    }
}

TEST_F(ClsXml, ChangesWhatXmlCanHoldAndNothingElse) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    log();
    fake.xml.content = L"1\n2";
    EXPECT_EQ(xml.ReadNode(L"a"), L"1\r\n2");
    EXPECT_EQ(xml.NodeCount(L"a"), 1);
    xml.MakeNode(L"a", L"b", L"t", L"k", 1, L"l", 2);
    xml.MakeNode(L"a", L"b", {}, {}, Missing{}, L"l", 2);
    EXPECT_TRUE(xml.InsertNode(L"a", L"b", 1, L"t", L"k", 1));
    EXPECT_EQ(log(),
              L"putText(t);appendChild();setAttribute(k);setAttribute(l);appendChild();setAttribute(l);"
              L"putText(t);setAttribute(k);appendChild();");
    xml.MakeNode(L"a", L"b", {}, L"", 1, L"l", std::wstring());
    EXPECT_TRUE(xml.InsertNode(L"a", L"b", 1, {}, L"", 1) &&
                xml.InsertNode(L"a", L"b", 1, {}, L"k", Empty{}));
    EXPECT_EQ(log(), L"appendChild();appendChild();appendChild();") << "empty means not given";
    EXPECT_TRUE(xml.WriteNode(L"a", L"t") && xml.SetColorValue(L"a", 1, 2, 3));
    xml.DeleteNode(L"a");
    xml.DeleteAttribute(L"a", L"k");
    EXPECT_EQ(log(), L"putText(t);putText((1, 2, 3));removeChild();removeAttribute(k);");

    fake.faults.fail("XmlNode.parentNode", 5);
    EXPECT_FALSE(xml.InsertNode(L"a", L"b", 0)) << "only this mode asks for the node above";
    EXPECT_TRUE(xml.InsertNode(L"a", L"b", 1));
    log();
    const auto invalid = error_number::invalidCall;
    const std::wstring bell = L"\a";
    EXPECT_FALSE(xml.InsertNode(L"a", L"b", 2) || xml.InsertNode(L"a", L"1", 1) ||
                 xml.InsertNode(L"a", L"b", 1, bell) || xml.InsertNode(L"a", L"b", 1, {}, L"1", 1) ||
                 xml.InsertNode(L"a", L"b", 1, {}, L"k", bell) || xml.WriteNode(L"a", bell) ||
                 xml.WriteAttribute(L"a", L"1", 1) || xml.WriteAttribute(L"a", L"k", bell));
    EXPECT_EQ(raised([&] { xml.MakeNode(L"a", L"1"); }), invalid);
    EXPECT_EQ(raised([&] { xml.MakeNode(L"a", L"b", bell); }), invalid);
    fake.xml.nodeName = L"#document";
    EXPECT_FALSE(xml.InsertNode(L"a", L"b", 1)) << "a document takes no second element";
    EXPECT_EQ(raised([&] { xml.MakeNode(L"a", L"b"); }), invalid);
    EXPECT_EQ(log(), L"");
}

TEST_F(ClsXml, SaveReplacesTheOldFileOnlyByACompleteOne) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    fake.disk.addFile(L"C:\\a.xml", "<alt/>");
    fake.disk.addFile(L"C:\\a.xml.neu", "<fremd/>");
    EXPECT_EQ(raised([&] { xml.Save(L""); }), static_cast<std::int32_t>(0x80070003));
    EXPECT_FALSE(fake.disk.exists(L".neu"));
    xml.Save(L"C:\\a.xml");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), "<neu/>");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml.neu"), "<fremd/>") << "a file of somebody else is left alone";
    EXPECT_FALSE(fake.disk.exists(L"C:\\a.xml.neu1"));

    const std::wstring start = L"<?xml version=\"1.0\" encoding=\"";
    fake.xml.content = start + L"UTF-8\"?><r/>";
    xml.Save(L"C:\\a.xml");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), "<neu/>");
    EXPECT_EQ(fake.faults.calls("XmlDocument.xml"), 0) << "a large document takes half a minute for it";
    fake.xml.content = start + L"ISO-8859-1\"?><r>\u00e4\u20ac</r>";
    const std::string saved = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4&#8364;</r>";
    xml.Save(L"C:\\a.xml");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), saved);
    fake.xml.content = start + L"X-Alt\"?><r/>";
    EXPECT_EQ(raised([&] { xml.Save(L"C:\\a.xml"); }), static_cast<std::int32_t>(0xC00CE56E));
    EXPECT_NE(said.find(L"\"x-alt\""), std::wstring::npos);
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), saved) << "nothing is written";
    EXPECT_FALSE(fake.disk.exists(L"C:\\a.xml.neu1"));
}

TEST_F(ClsXml, SaveLeavesAWholeFileUnderANameThatIsKnown) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    constexpr int always = 1'000'000;
    constexpr const char *old = "<alt/>", *fresh = "<neu/>", *none = "(no file)";
    const struct {
        SystemCode replace, move;
        int failures;
        const char *document, *beside;
        std::size_t pauses;
    } cases[] = {{5, 0, 1, fresh, none, 1},
                 {32, 0, 3, fresh, none, 3},
                 {33, 0, 49, fresh, none, 49},
                 {1175, 0, 1, fresh, none, 1},
                 {1176, 0, 1, fresh, none, 1},
                 {1177, 0, 1, fresh, none, 1},
                 {1, 0, always, fresh, none, 0},
                 {50, 0, always, fresh, none, 0},
                 {87, 0, always, fresh, none, 0},
                 {32, 0, always, old, none, 49},
                 {53, 0, 1, old, none, 0},
                 {50, 32, always, old, none, 49},
                 {1176, 32, always, none, fresh, 49},
                 {1177, 5, always, none, fresh, 49}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.replace);
        fake.disk.remove(L"C:\\b.xml.neu");
        fake.disk.addFile(L"C:\\b.xml", old);
        fake.desktop.sleeps.clear();
        fake.faults.fail("FileStore.replace", each.replace, 1, each.failures);
        fake.faults.fail("FileStore.moveOver", each.move, 1, each.move != 0 ? always : 0);
        said.clear();
        EXPECT_EQ(raised([&] { xml.Save(L"C:\\b.xml"); }) == 0, each.document == fresh);
        EXPECT_EQ(fake.disk.bytes(L"C:\\b.xml"), each.document);
        EXPECT_EQ(fake.disk.bytes(L"C:\\b.xml.neu"), each.beside);
        EXPECT_EQ(said.find(L"vollständig in \"C:\\b.xml.neu\"") != said.npos, each.beside == fresh);
        EXPECT_EQ(fake.desktop.sleeps, std::vector<std::uint32_t>(each.pauses, 10));
    }
    fake.disk.addFile(L"C:\\r.xml", old, attribute::readOnly);
    fake.desktop.sleeps.clear();
    fake.faults.fail("FileStore.replace", 0, 1, 0);
    EXPECT_EQ(raised([&] { xml.Save(L"C:\\r.xml"); }), static_cast<std::int32_t>(0x80070005));
    EXPECT_TRUE(fake.desktop.sleeps.empty()) << "what is read-only stays so";
}

} // namespace
} // namespace tarv
