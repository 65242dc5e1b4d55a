#include "scripted/FakeXmlDom.h"

#include <algorithm>

namespace tarv {
namespace {

using Text = Automated<std::wstring>;
using Done = Automated<Empty>;

/// What nodes and documents share: every function asks the plan first. A failure with code 0 is no failure:
/// there is no such node.
struct FakeXmlPart {
    explicit FakeXmlPart(FakeXmlParsers& parsers) : parsers_(parsers) {}

    template <class T>
    Automated<T> answer(const char* function, T value) {
        const auto code = parsers_.faults_.enter(function);
        if (code && *code != 0)
            return refused(*code);
        return code ? T() : std::move(value);
    }
    void note(std::string_view function, std::wstring_view argument) {
        function.remove_prefix(function.find('.') + 1);
        parsers_.log.append(function.begin(), function.end()).append(L"(").append(argument).append(L");");
    }
    Done change(const char* function, std::wstring_view argument = {}) {
        auto done = answer(function, Empty{});
        if (done)
            note(function, argument);
        return done;
    }
    XmlNodeRef node() const;

    FakeXmlParsers& parsers_;
};

struct FakeNode : XmlNode, FakeXmlPart {
    using FakeXmlPart::FakeXmlPart;

    Automated<XmlNodeRef> selectSingleNode(std::wstring_view) override {
        return answer("XmlNode.selectSingleNode", node());
    }
    Automated<std::int32_t> countNodes(std::wstring_view) override {
        return answer("XmlNode.countNodes", std::int32_t{1});
    }
    Text text() override { return answer("XmlNode.text", parsers_.content); }
    Text xml() override { return answer("XmlNode.xml", parsers_.content); }
    Text nodeName() override { return answer("XmlNode.nodeName", parsers_.nodeName); }
    Automated<XmlNodeRef> parentNode() override { return answer("XmlNode.parentNode", node()); }
    Automated<Value> getAttribute(std::wstring_view) override {
        return answer("XmlNode.getAttribute", Value(parsers_.content));
    }
    Done putText(std::wstring_view text) override { return change("XmlNode.putText", text); }
    Done appendChild(XmlNode&) override { return change("XmlNode.appendChild"); }
    Done removeChild(XmlNode&) override { return change("XmlNode.removeChild"); }
    Done setAttribute(std::wstring_view name, const Value&) override {
        return change("XmlNode.setAttribute", name);
    }
    Done removeAttribute(std::wstring_view name) override { return change("XmlNode.removeAttribute", name); }
};

XmlNodeRef FakeXmlPart::node() const {
    return std::make_unique<FakeNode>(parsers_);
}

struct FakeDocument : XmlDocument, FakeXmlPart {
    using FakeXmlPart::FakeXmlPart;

    Done set(const char* function, bool on) { return change(function, on ? L"1" : L"0"); }
    Done putResolveExternals(bool on) override { return set("XmlDocument.putResolveExternals", on); }
    Done putValidateOnParse(bool on) override { return set("XmlDocument.putValidateOnParse", on); }
    Done putAsync(bool on) override { return set("XmlDocument.putAsync", on); }
    Done save(std::wstring_view path) override {
        auto done = answer("XmlDocument.save", Empty{});
        // A save that fails has already emptied its file, as the real one does.
        parsers_.disk.addFile(path, done ? "<neu/>" : "");
        return done;
    }
    Automated<bool> load(std::wstring_view path) override { return parse("XmlDocument.load", path); }
    Automated<bool> loadXml(std::wstring_view text) override { return parse("XmlDocument.loadXml", text); }
    Automated<bool> parse(const char* function, std::wstring_view source) {
        note(function, source);
        return answer(function, parsers_.accepts(source));
    }
    Automated<XmlParseError> parseError() override {
        return answer("XmlDocument.parseError", parsers_.error);
    }
    Text xml() override { return answer("XmlDocument.xml", parsers_.content); }
    Automated<XmlNodeRef> documentElement() override { return answer("XmlDocument.documentElement", node()); }
    Automated<XmlNodeRef> createElement(std::wstring_view) override {
        return answer("XmlDocument.createElement", node());
    }
};

} // namespace

Automated<XmlDocumentRef> FakeXmlParsers::create(std::wstring_view progId) {
    const auto code = faults_.enter("XmlParsers.create");
    if (code || std::ranges::count(known, progId) == 0)
        return refused(code.value_or(429));
    return XmlDocumentRef(std::make_unique<FakeDocument>(*this));
}

} // namespace tarv
