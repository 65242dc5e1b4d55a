#include "tests/support/FakeXmlDom.h"

#include <algorithm>

namespace tarv {
namespace {

using ElementRef = std::shared_ptr<FakeElement>;

void collect(const ElementRef& from, std::wstring_view path, std::vector<ElementRef>& found) {
    const auto slash = path.find(L'/');
    for (const ElementRef& child : from->children) {
        if (child->name != path.substr(0, slash))
            continue;
        if (slash == path.npos)
            found.push_back(child);
        else
            collect(child, path.substr(slash + 1), found);
    }
}

Failure<ErrorRecord> failure(SystemCode number) {
    return Failure{ErrorRecord{static_cast<std::int32_t>(number), L"Verweigert", L"Parser"}};
}

class FakeXmlNode : public XmlNode {
public:
    FakeXmlNode(FakeXmlParsers& parsers, ElementRef element)
        : parsers_(parsers), element_(std::move(element)) {}

    Automated<XmlNodeRef> selectSingleNode(std::wstring_view path) override {
        if (const auto code = parsers_.faults.enter("XmlNode.selectSingleNode"))
            return failure(*code);
        const auto found = select(path);
        return found.empty() ? XmlNodeRef() : wrapped(found.front());
    }
    Automated<std::int32_t> countNodes(std::wstring_view path) override {
        if (const auto code = parsers_.faults.enter("XmlNode.countNodes"))
            return failure(*code);
        return static_cast<std::int32_t>(select(path).size());
    }
    Automated<std::wstring> text() override { return answer("XmlNode.text", element_->text); }
    Automated<std::wstring> xml() override {
        return answer("XmlNode.xml", L"<" + element_->name + L">" + element_->text);
    }
    Automated<std::wstring> nodeName() override { return answer("XmlNode.nodeName", element_->name); }
    Automated<Empty> putText(std::wstring_view text) override {
        return change("XmlNode.putText", [&] { element_->text = text; });
    }
    Automated<XmlNodeRef> parentNode() override {
        if (const auto code = parsers_.faults.enter("XmlNode.parentNode"))
            return failure(*code);
        if (element_->parent == nullptr)
            return XmlNodeRef();
        return wrapped(element_->parent->parent != nullptr ? *position(*element_->parent)
                                                           : parsers_.document);
    }
    Automated<Empty> appendChild(XmlNode& child) override {
        return change("XmlNode.appendChild", [&] {
            element_->children.push_back(static_cast<FakeXmlNode&>(child).element_);
            element_->children.back()->parent = element_.get();
        });
    }
    Automated<Empty> removeChild(XmlNode& child) override {
        return change("XmlNode.removeChild", [&] {
            element_->children.erase(position(*static_cast<FakeXmlNode&>(child).element_));
        });
    }
    Automated<Value> getAttribute(std::wstring_view name) override {
        if (const auto code = parsers_.faults.enter("XmlNode.getAttribute"))
            return failure(*code);
        const auto found = element_->attributes.find(std::wstring(name));
        return found == element_->attributes.end() ? Value(Null{}) : found->second;
    }
    Automated<Empty> setAttribute(std::wstring_view name, const Value& value) override {
        return change("XmlNode.setAttribute", [&] { element_->attributes[std::wstring(name)] = value; });
    }
    Automated<Empty> removeAttribute(std::wstring_view name) override {
        return change("XmlNode.removeAttribute", [&] { element_->attributes.erase(std::wstring(name)); });
    }

private:
    std::vector<ElementRef> select(std::wstring_view path) const {
        std::vector<ElementRef> found;
        const bool fromTop = path.starts_with(L'/');
        collect(fromTop ? parsers_.document : element_, path.substr(fromTop ? 1 : 0), found);
        return found;
    }
    static std::vector<ElementRef>::iterator position(FakeElement& child) {
        return std::ranges::find(child.parent->children, &child, &ElementRef::get);
    }
    XmlNodeRef wrapped(ElementRef element) const {
        return std::make_unique<FakeXmlNode>(parsers_, std::move(element));
    }
    Automated<std::wstring> answer(std::string_view function, std::wstring text) {
        if (const auto code = parsers_.faults.enter(function))
            return failure(*code);
        return text;
    }
    template <class Action>
    Automated<Empty> change(std::string_view function, Action action) {
        if (const auto code = parsers_.faults.enter(function))
            return failure(*code);
        action();
        return Empty{};
    }

    FakeXmlParsers& parsers_;
    ElementRef element_;
};

class FakeXmlDocument : public XmlDocument {
public:
    explicit FakeXmlDocument(FakeXmlParsers& parsers) : parsers_(parsers) { ++parsers_.openDocuments; }
    ~FakeXmlDocument() override { --parsers_.openDocuments; }

    Automated<Empty> putResolveExternals(bool value) override {
        return noted("XmlDocument.putResolveExternals", L"resolveExternals " + std::to_wstring(value));
    }
    Automated<Empty> putValidateOnParse(bool value) override {
        return noted("XmlDocument.putValidateOnParse", L"validateOnParse " + std::to_wstring(value));
    }
    Automated<Empty> putAsync(bool value) override {
        return noted("XmlDocument.putAsync", L"async " + std::to_wstring(value));
    }
    Automated<Empty> save(std::wstring_view path) override {
        auto done = noted("XmlDocument.save", L"save " + std::wstring(path));
        // A save that fails has already emptied its file, as the real one does.
        parsers_.disk.addFile(path, done ? "<neu/>" : "");
        return done;
    }
    Automated<bool> load(std::wstring_view path) override {
        if (const auto done = noted("XmlDocument.load", L"load " + std::wstring(path)); !done)
            return Failure{done.error()};
        return parsers_.accepts(true, path);
    }
    Automated<bool> loadXml(std::wstring_view text) override {
        if (const auto done = noted("XmlDocument.loadXml", L"loadXML"); !done)
            return Failure{done.error()};
        return parsers_.accepts(false, text);
    }
    Automated<XmlParseError> parseError() override {
        if (const auto code = parsers_.faults.enter("XmlDocument.parseError"))
            return failure(*code);
        return parsers_.error;
    }
    Automated<std::wstring> xml() override {
        if (const auto code = parsers_.faults.enter("XmlDocument.xml"))
            return failure(*code);
        return parsers_.root().text;
    }
    Automated<std::wstring> declaration() override {
        if (const auto code = parsers_.faults.enter("XmlDocument.declaration"))
            return failure(*code);
        return parsers_.declaration;
    }
    Automated<XmlNodeRef> documentElement() override {
        if (const auto code = parsers_.faults.enter("XmlDocument.documentElement"))
            return failure(*code);
        if (parsers_.document->children.empty())
            return XmlNodeRef();
        return XmlNodeRef(std::make_unique<FakeXmlNode>(parsers_, parsers_.document->children.front()));
    }
    Automated<XmlNodeRef> createElement(std::wstring_view name) override {
        if (const auto code = parsers_.faults.enter("XmlDocument.createElement"))
            return failure(*code);
        auto element = std::make_shared<FakeElement>();
        element->name = name;
        return XmlNodeRef(std::make_unique<FakeXmlNode>(parsers_, std::move(element)));
    }

private:
    Automated<Empty> noted(std::string_view function, std::wstring what) {
        parsers_.log.push_back(std::move(what));
        if (const auto code = parsers_.faults.enter(function))
            return failure(*code);
        return Empty{};
    }

    FakeXmlParsers& parsers_;
};

} // namespace

std::shared_ptr<FakeElement> FakeElement::add(std::wstring_view childName, std::wstring_view childText) {
    auto child = std::make_shared<FakeElement>();
    child->name = childName;
    child->text = childText;
    child->parent = this;
    children.push_back(child);
    return child;
}

FakeXmlParsers::FakeXmlParsers(FaultPlan& plan, FakeDisk& files)
    : faults(plan), disk(files), document(std::make_shared<FakeElement>()) {
    document->name = L"#document";
    document->add(L"r");
}

Automated<XmlDocumentRef> FakeXmlParsers::create(std::wstring_view progId) {
    log.push_back(L"create " + std::wstring(progId));
    if (const auto code = faults.enter("XmlParsers.create"))
        return failure(*code);
    if (std::ranges::find(known, progId) == known.end())
        return failure(429);
    return XmlDocumentRef(std::make_unique<FakeXmlDocument>(*this));
}

} // namespace tarv
