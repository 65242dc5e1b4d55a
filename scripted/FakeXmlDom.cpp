#include "scripted/FakeXmlDom.h"

#include <algorithm>

namespace tarv {
namespace {

using Text = Automated<std::wstring>;
using Done = Automated<Empty>;

/// What nodes and documents share: every function asks the plan first.
struct FakeXmlPart {
    explicit FakeXmlPart(FakeXmlParsers& parsers) : parsers_(parsers) {}

    template <class T>
    Automated<T> answer(const char* function, T value) {
        if (const auto code = parsers_.faults_.enter(function))
            return Failure{ErrorRecord{static_cast<std::int32_t>(*code), L"Verweigert", L"Parser"}};
        return value;
    }
    Done change(const char* function, std::wstring what) {
        auto done = answer(function, Empty{});
        if (done)
            parsers_.log.push_back(std::move(what));
        return done;
    }
    template <class Node>
    XmlNodeRef node() const {
        return std::make_unique<Node>(parsers_);
    }

    FakeXmlParsers& parsers_;
};

struct FakeNode : XmlNode, FakeXmlPart {
    using FakeXmlPart::FakeXmlPart;

    Automated<XmlNodeRef> selectSingleNode(std::wstring_view) override {
        return answer("XmlNode.selectSingleNode", parsers_.hasNodes ? node<FakeNode>() : nullptr);
    }
    Automated<std::int32_t> countNodes(std::wstring_view) override {
        return answer("XmlNode.countNodes", std::int32_t{parsers_.hasNodes});
    }
    Text text() override { return answer("XmlNode.text", parsers_.content); }
    Text xml() override { return answer("XmlNode.xml", parsers_.content); }
    Text nodeName() override { return answer("XmlNode.nodeName", parsers_.nodeName); }
    Automated<XmlNodeRef> parentNode() override { return answer("XmlNode.parentNode", node<FakeNode>()); }
    Automated<Value> getAttribute(std::wstring_view) override {
        return answer("XmlNode.getAttribute", Value(parsers_.content));
    }
    Done putText(std::wstring_view text) override {
        return change("XmlNode.putText", L"putText " + std::wstring(text));
    }
    Done appendChild(XmlNode&) override { return change("XmlNode.appendChild", L"appendChild"); }
    Done removeChild(XmlNode&) override { return change("XmlNode.removeChild", L"removeChild"); }
    Done setAttribute(std::wstring_view name, const Value&) override {
        return change("XmlNode.setAttribute", L"setAttribute " + std::wstring(name));
    }
    Done removeAttribute(std::wstring_view) override {
        return change("XmlNode.removeAttribute", L"removeAttribute");
    }
};

struct FakeDocument : XmlDocument, FakeXmlPart {
    explicit FakeDocument(FakeXmlParsers& parsers) : FakeXmlPart(parsers) { ++parsers_.openDocuments; }
    ~FakeDocument() override { --parsers_.openDocuments; }

    Done putResolveExternals(bool on) override {
        return change("XmlDocument.putResolveExternals", L"resolveExternals " + std::to_wstring(on));
    }
    Done putValidateOnParse(bool on) override {
        return change("XmlDocument.putValidateOnParse", L"validateOnParse " + std::to_wstring(on));
    }
    Done putAsync(bool on) override {
        return change("XmlDocument.putAsync", L"async " + std::to_wstring(on));
    }
    Done save(std::wstring_view path) override {
        auto done = answer("XmlDocument.save", Empty{});
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
    Text xml() override { return answer("XmlDocument.xml", parsers_.content); }
    Automated<XmlNodeRef> documentElement() override {
        return answer("XmlDocument.documentElement",
                      parsers_.hasDocumentElement ? node<FakeNode>() : nullptr);
    }
    Automated<XmlNodeRef> createElement(std::wstring_view) override {
        return answer("XmlDocument.createElement", node<FakeNode>());
    }
};

} // namespace

Automated<XmlDocumentRef> FakeXmlParsers::create(std::wstring_view progId) {
    log.push_back(L"create " + std::wstring(progId));
    const auto code = faults_.enter("XmlParsers.create");
    if (code || std::ranges::count(known, progId) == 0)
        return Failure{ErrorRecord{static_cast<std::int32_t>(code.value_or(429)), L"Verweigert", L"Parser"}};
    return XmlDocumentRef(std::make_unique<FakeDocument>(*this));
}

} // namespace tarv
