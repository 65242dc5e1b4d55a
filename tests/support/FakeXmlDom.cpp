#include "tests/support/FakeXmlDom.h"

namespace tarv {
namespace {

/// What nodes and documents share: every function asks the plan first.
class FakeXmlPart {
public:
    explicit FakeXmlPart(FakeXmlParsers& parsers) : parsers_(parsers) {}

protected:
    template <class T>
    Automated<T> answer(std::string_view function, T value) {
        if (const auto code = parsers_.faults.enter(function))
            return Failure{ErrorRecord{static_cast<std::int32_t>(*code), L"Verweigert", L"Parser"}};
        return value;
    }
    Automated<Empty> change(std::string_view function, std::wstring what) {
        auto done = answer(function, Empty{});
        if (done)
            parsers_.log.push_back(std::move(what));
        return done;
    }

    FakeXmlParsers& parsers_;
};

class FakeXmlNode : public XmlNode, FakeXmlPart {
public:
    using FakeXmlPart::FakeXmlPart;

    Automated<XmlNodeRef> selectSingleNode(std::wstring_view) override {
        return answer("XmlNode.selectSingleNode", parsers_.hasNodes ? another() : nullptr);
    }
    Automated<std::int32_t> countNodes(std::wstring_view) override {
        return answer("XmlNode.countNodes", std::int32_t{parsers_.hasNodes});
    }
    Automated<std::wstring> text() override { return answer("XmlNode.text", parsers_.content); }
    Automated<std::wstring> xml() override { return answer("XmlNode.xml", parsers_.content); }
    Automated<std::wstring> nodeName() override { return answer("XmlNode.nodeName", std::wstring(L"n")); }
    Automated<XmlNodeRef> parentNode() override { return answer("XmlNode.parentNode", another()); }
    Automated<Value> getAttribute(std::wstring_view) override {
        return answer("XmlNode.getAttribute", Value(parsers_.content));
    }
    Automated<Empty> putText(std::wstring_view) override { return change("XmlNode.putText", L"putText"); }
    Automated<Empty> appendChild(XmlNode&) override { return change("XmlNode.appendChild", L"appendChild"); }
    Automated<Empty> removeChild(XmlNode&) override { return change("XmlNode.removeChild", L"removeChild"); }
    Automated<Empty> setAttribute(std::wstring_view, const Value&) override {
        return change("XmlNode.setAttribute", L"setAttribute");
    }
    Automated<Empty> removeAttribute(std::wstring_view) override {
        return change("XmlNode.removeAttribute", L"removeAttribute");
    }

private:
    XmlNodeRef another() const { return std::make_unique<FakeXmlNode>(parsers_); }
};

class FakeXmlDocument : public XmlDocument, FakeXmlPart {
public:
    explicit FakeXmlDocument(FakeXmlParsers& parsers) : FakeXmlPart(parsers) { ++parsers_.openDocuments; }
    ~FakeXmlDocument() override { --parsers_.openDocuments; }

    Automated<Empty> putResolveExternals(bool value) override {
        return change("XmlDocument.putResolveExternals", L"resolveExternals " + std::to_wstring(value));
    }
    Automated<Empty> putValidateOnParse(bool value) override {
        return change("XmlDocument.putValidateOnParse", L"validateOnParse " + std::to_wstring(value));
    }
    Automated<Empty> putAsync(bool value) override {
        return change("XmlDocument.putAsync", L"async " + std::to_wstring(value));
    }
    Automated<Empty> save(std::wstring_view path) override {
        auto done = change("XmlDocument.save", L"save " + std::wstring(path));
        // A save that fails has already emptied its file, as the real one does.
        parsers_.disk.addFile(path, done ? "<neu/>" : "");
        return done;
    }
    Automated<bool> load(std::wstring_view path) override {
        parsers_.log.push_back(L"load " + std::wstring(path));
        return answer("XmlDocument.load", parsers_.accepts(true, path));
    }
    Automated<bool> loadXml(std::wstring_view text) override {
        parsers_.log.push_back(L"loadXML");
        return answer("XmlDocument.loadXml", parsers_.accepts(false, text));
    }
    Automated<XmlParseError> parseError() override {
        return answer("XmlDocument.parseError", parsers_.error);
    }
    Automated<std::wstring> xml() override { return answer("XmlDocument.xml", parsers_.content); }
    Automated<std::wstring> declaration() override {
        return answer("XmlDocument.declaration", parsers_.declaration);
    }
    Automated<XmlNodeRef> documentElement() override {
        return answer("XmlDocument.documentElement", parsers_.hasDocumentElement ? node() : nullptr);
    }
    Automated<XmlNodeRef> createElement(std::wstring_view) override {
        return answer("XmlDocument.createElement", node());
    }

private:
    XmlNodeRef node() const { return std::make_unique<FakeXmlNode>(parsers_); }
};

} // namespace

Automated<XmlDocumentRef> FakeXmlParsers::create(std::wstring_view progId) {
    log.push_back(L"create " + std::wstring(progId));
    const auto code = faults.enter("XmlParsers.create");
    if (code || std::ranges::count(known, progId) == 0)
        return Failure{ErrorRecord{static_cast<std::int32_t>(code.value_or(429)), L"Verweigert", L"Parser"}};
    return XmlDocumentRef(std::make_unique<FakeXmlDocument>(*this));
}

} // namespace tarv
