#include "xml/clsXML.h"
#include "runtime/RuntimeError.h"
#include "tests/support/FakePlatform.h"

namespace tarv {
namespace {

constexpr auto encodingRefused = static_cast<std::int32_t>(0xC00CE56F);
constexpr const wchar_t* scratch = L"C:\\Program Files\\TARVENIK\\tempgoxml.xml";

struct ClsXml : Scripted {
    clsXML xml{rt};

    /// The number that the call raises; 0 when it raises none.
    template <class Call>
    std::int32_t raised(Call call) {
        try {
            call();
        } catch (const RuntimeError& error) {
            return error.record().number;
        }
        return 0;
    }
};

using Boxes = std::vector<ShownMessageBox>;
using Log = std::vector<std::wstring>;

TEST_F(ClsXml, ChoosesAndTestsParsersSilently) {
    EXPECT_EQ(xml.Initialize(6), 6);
    EXPECT_EQ(xml.Initialize(1), 1);
    EXPECT_EQ(xml.Initialize(4), 0);
    fake.xml.known = {L"Msxml.DOMDocument"};
    EXPECT_EQ(xml.Initialize(6), 0);
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_EQ(fake.xml.openDocuments, 0);

    fake.xml.log.clear();
    clsXML second(rt);
    EXPECT_TRUE(second.OpenFromString(L"<r/>", false)) << "version 1 is taken where 6 is missing";
    EXPECT_EQ(fake.xml.log, (Log{L"create Msxml2.DOMDocument.6.0", L"create Msxml.DOMDocument",
                                 L"create Msxml.DOMDocument", L"create Msxml.DOMDocument",
                                 L"resolveExternals 0", L"validateOnParse 1", L"async 0", L"loadXML"}));
}

TEST_F(ClsXml, ShowsThatNoDocumentCanBeCreated) {
    const ShownMessageBox load{L"clsXml.OpenXML Fehler", L"Create the DOMDocument", 4144};
    xml.Initialize(4);
    EXPECT_FALSE(xml.OpenFromString(L"<r/>", false));
    EXPECT_EQ(fake.desktop.boxes, (Boxes{load}));

    fake.desktop.boxes.clear();
    xml.Initialize(6);
    fake.xml.known.clear();
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_EQ(
        fake.desktop.boxes,
        (Boxes{{L"XML-Problem beim Create (Msxml2.DOMDocument.6.0)", L"clsXml.InvokeParser", 4096}, load}));

    fake.desktop.boxes.clear();
    fake.faults.fail("XmlParsers.create", 70);
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_EQ(fake.desktop.boxes, (Boxes{load})) << "only 429 names the class";
}

TEST_F(ClsXml, ReportsParseErrorsToTheLetter) {
    fake.xml.accepts = [](bool, std::wstring_view) { return false; };
    fake.xml.error = {-1072896680, L"Ungültig.\r\n", 3, 17, L"<r><a></r>"};
    const std::wstring rest =
        L"\r\n\r\n-1072896680\r\nUngültig.\r\nLine 3, Position 17\r\n\r\n<r><a></r>\r\n";
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", true));
    EXPECT_FALSE(xml.OpenFromString(L"<r><a></r>", true));
    EXPECT_EQ(fake.desktop.boxes,
              (Boxes{{L"Fehler beim Laden von XML:\r\nC:\\a.xml" + rest, L"XML Parse Error", 4144},
                     {L"Fehler beim Laden von XML" + rest, L"XML Parse Error", 4144}}));
    EXPECT_EQ(fake.xml.openDocuments, 0);
}

TEST_F(ClsXml, AFailedLoadLeavesNoDocumentButAUsableInstance) {
    for (const auto* call : {"XmlDocument.putResolveExternals", "XmlDocument.putValidateOnParse",
                             "XmlDocument.putAsync", "XmlDocument.load"}) {
        ASSERT_TRUE(xml.OpenFromFile(L"C:\\a.xml", true));
        fake.faults.fail(call, 14);
        EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", true)) << call;
        EXPECT_EQ(fake.desktop.boxes.back().text, L"Fehler beim Laden von XML:\r\nC:\\a.xml\r\n\r\n14\r\n"
                                                  L"Verweigert\r\nLine 0, Position 0\r\n\r\n\r\n");
        EXPECT_EQ(raised([&] { xml.XML(); }), error_number::objectNotSet);
        fake.faults.heal();
    }
    EXPECT_TRUE(xml.OpenFromFile(L"C:\\a.xml", true));
    EXPECT_EQ(fake.xml.openDocuments, 1);
}

TEST_F(ClsXml, ScratchFileHelpsTheOldParserOnly) {
    std::string written;
    fake.xml.error.code = encodingRefused;
    fake.xml.accepts = [&](bool isFile, std::wstring_view source) {
        if (!isFile || source != scratch)
            return false;
        written = fake.disk.bytes(source);
        return true;
    };
    const std::wstring text = L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\u00e4</r>";
    xml.Initialize(6);
    EXPECT_FALSE(xml.OpenFromString(text, false));
    xml.Initialize(1);
    EXPECT_FALSE(xml.OpenFromFile(L"C:\\a.xml", false));
    EXPECT_EQ(fake.faults.calls("FileStore.overwrite"), 0);
    EXPECT_TRUE(xml.OpenFromString(text, true));
    EXPECT_EQ(written, "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4</r>");
    EXPECT_EQ(fake.xml.log.back(), std::wstring(L"load ") + scratch);
    EXPECT_FALSE(fake.disk.exists(scratch));
    EXPECT_TRUE(fake.desktop.boxes.empty());
    EXPECT_EQ(fake.xml.openDocuments, 1);
}

TEST_F(ClsXml, ScratchFileThatCannotBeWrittenFailsTheLoad) {
    fake.xml.error = {encodingRefused, L"Kodierung.\r\n", 1, 2, L""};
    fake.xml.accepts = [](bool isFile, std::wstring_view) { return isFile; };
    xml.Initialize(1);
    fake.disk.addFile(scratch, "<fremd/>");
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation);
    fake.faults.fail("FileStore.remove", system_code::sharingViolation);
    EXPECT_FALSE(xml.OpenFromString(L"<r/>", false)) << "what lies there is never loaded";
    EXPECT_FALSE(xml.OpenFromString(L"<r/>", true));
    fake.faults.heal();
    EXPECT_FALSE(xml.OpenFromString(L"<?xml version='1.0' encoding='US-ASCII'?><r>\u00e4</r>", true));
    ASSERT_EQ(fake.desktop.boxes.size(), 2u);
    EXPECT_EQ(fake.desktop.boxes[0].text,
              L"Fehler beim Laden von XML:\r\n" + std::wstring(scratch) +
                  L"\r\n\r\n-2147024864\r\nDie Hilfsdatei kann nicht geschrieben werden.\r\n"
                  L"Line 0, Position 0\r\n\r\n\r\n");
    EXPECT_NE(fake.desktop.boxes[1].text.find(L"Der Text passt nicht in die Kodierung"), std::wstring::npos);
}

TEST_F(ClsXml, WithoutADocumentTrappedMembersAnswerAndOthersRaise) {
    const auto check = [&](const char* state) {
        SCOPED_TRACE(state);
        EXPECT_EQ(xml.ReadNode(L"a"), L"");
        EXPECT_EQ(xml.GetNode(L"a"), nullptr);
        EXPECT_EQ(xml.ReadAttribute(L"a", L"x"), Value(Empty{}));
        EXPECT_FALSE(xml.WriteAttribute(L"a", L"x", 1));
        EXPECT_EQ(xml.NodeCount(L"a"), 0);
        EXPECT_FALSE(xml.WriteNode(L"a", L"x"));
        EXPECT_FALSE(xml.SetColorValue(L"a", 1, 2, 3));
        EXPECT_FALSE(xml.InsertNode(L"a", L"b", 1));
        EXPECT_NO_THROW(xml.DeleteNode(L"a"));
        EXPECT_EQ(raised([&] { xml.MakeNode(L"a", L"b"); }), error_number::objectNotSet);
        EXPECT_EQ(raised([&] { xml.DeleteAttribute(L"a", L"x"); }), error_number::objectNotSet);
        EXPECT_EQ(raised([&] { xml.GetColorValue(L"a"); }), error_number::objectNotSet);
    };
    check("never loaded");
    for (const auto& call : {std::function([&] { xml.ReadNodeXML(L"a"); }), std::function([&] { xml.XML(); }),
                             std::function([&] { xml.Save(L"C:\\a.xml"); })})
        EXPECT_EQ(raised(call), error_number::objectNotSet);
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    fake.xml.hasNodes = false;
    check("no such node");
    EXPECT_EQ(xml.ReadNodeXML(L"a"), L"");
    fake.xml.hasDocumentElement = false;
    check("no document element");
    EXPECT_EQ(raised([&] { xml.ReadNodeXML(L"a"); }), error_number::objectNotSet);
}

/// Every failing call of the component: trapped members answer, the others raise its own number.
TEST_F(ClsXml, EachFailureOfTheComponentIsTrappedOrPassedOn) {
    fake.xml.content = L"(1, 2, 3)";
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    const struct {
        const char* function;
        std::function<bool()> quiet;
        std::function<void()> loud;
    } cases[] = {
        {"XmlDocument.documentElement", [&] { return xml.NodeCount(L"c") == 0; },
         [&] { xml.ReadNodeXML(L"c"); }},
        {"XmlNode.selectSingleNode", [&] { return !xml.GetNode(L"c"); }, [&] { xml.MakeNode(L"c", L"d"); }},
        {"XmlNode.countNodes", [&] { return xml.NodeCount(L"c") == 0; }, {}},
        {"XmlNode.text", [&] { return xml.ReadNode(L"c").empty(); }, [&] { xml.GetColorValue(L"c"); }},
        {"XmlNode.xml", {}, [&] { xml.ReadNodeXML(L"c"); }},
        {"XmlDocument.xml", {}, [&] { xml.XML(); }},
        {"XmlDocument.save", {}, [&] { xml.Save(L"C:\\a.xml"); }},
        {"XmlNode.getAttribute", [&] { return xml.ReadAttribute(L"c", L"k") == Value(Empty{}); }, {}},
        {"XmlNode.setAttribute", [&] { return !xml.WriteAttribute(L"c", L"k", 1); }, {}},
        {"XmlNode.setAttribute", [&] { return !xml.InsertNode(L"c", L"d", 1, {}, L"k", 1); }, {}},
        {"XmlNode.putText", [&] { return !xml.WriteNode(L"c", L"t"); },
         [&] { xml.MakeNode(L"c", L"d", L"t"); }},
        {"XmlNode.putText", [&] { return !xml.InsertNode(L"c", L"d", 1, L"t"); }, {}},
        {"XmlNode.parentNode", [&] { return !xml.InsertNode(L"c", L"d", 0); }, {}},
        {"XmlNode.parentNode", [&] { return xml.DeleteNode(L"c"), true; }, {}},
        {"XmlNode.removeChild", [&] { return xml.DeleteNode(L"c"), true; }, {}},
        {"XmlNode.appendChild", [&] { return !xml.InsertNode(L"c", L"d", 1); },
         [&] { xml.MakeNode(L"c", L"d"); }},
        {"XmlDocument.createElement", [&] { return !xml.InsertNode(L"c", L"d", 1); },
         [&] { xml.MakeNode(L"c", L"d"); }},
        {"XmlNode.removeAttribute", {}, [&] { xml.DeleteAttribute(L"c", L"k"); }},
    };
    for (const auto& one : cases) {
        fake.xml.log.clear();
        fake.faults.fail(one.function, 4711);
        EXPECT_TRUE(!one.quiet || one.quiet()) << one.function;
        EXPECT_EQ(one.loud ? raised(one.loud) : 4711, 4711) << one.function;
        fake.faults.heal();
        for (const wchar_t* change : {L"appendChild", L"removeChild"})
            EXPECT_EQ(std::ranges::count(fake.xml.log, change), 0)
                << one.function << " leaves nothing behind";
    }
}

TEST_F(ClsXml, SaveReplacesTheOldFileOnlyByACompleteOne) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    fake.disk.addFile(L"C:\\a.xml", "<alt/>");
    fake.disk.addFile(L"C:\\a.xml.neu", "<fremd/>");
    fake.faults.fail("XmlDocument.save", 4711, {1});
    fake.faults.fail("FileStore.replace", system_code::accessDenied, {1});
    EXPECT_EQ(raised([&] { xml.Save(L"C:\\a.xml"); }), 4711);
    EXPECT_EQ(raised([&] { xml.Save(L"C:\\a.xml"); }), static_cast<std::int32_t>(0x80070005));
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), "<alt/>");
    xml.Save(L"C:\\a.xml");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), "<neu/>");
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml.neu"), "<fremd/>") << "a file of somebody else is left alone";
    EXPECT_FALSE(fake.disk.exists(L"C:\\a.xml.neu1"));
}

TEST_F(ClsXml, SaveKeepsTheDeclaredEncodingWhereTheComponentDoesNot) {
    ASSERT_TRUE(xml.OpenFromString(L"<r/>", false));
    const std::wstring latin = L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\u00e4\u20ac</r>";
    const std::string inLatin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4&#8364;</r>";
    const std::tuple<const wchar_t*, std::wstring, std::string> cases[] = {
        {L"", L"<r/>", "<neu/>"},
        {L"version=\"1.0\" encoding=\"UTF-8\"", L"<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>", "<neu/>"},
        {L"version=\"1.0\" encoding=\"ISO-8859-1\"", L"<?xml version=\"1.0\"?><r/>", "<neu/>"},
        {L"version=\"1.0\" encoding=\"ISO-8859-1\"", latin, inLatin},
    };
    for (const auto& [declaration, text, saved] : cases) {
        fake.xml.declaration = declaration;
        fake.xml.content = text;
        xml.Save(L"C:\\a.xml");
        EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), saved);
    }
    fake.faults.fail("FileStore.overwrite", system_code::sharingViolation);
    EXPECT_EQ(raised([&] { xml.Save(L"C:\\a.xml"); }), static_cast<std::int32_t>(0x80070020));
    EXPECT_EQ(fake.disk.bytes(L"C:\\a.xml"), inLatin);
}

} // namespace
} // namespace tarv
