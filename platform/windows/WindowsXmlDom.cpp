#include "platform/XmlDom.h"
#include "platform/windows/AutomationFailure.h"
#include "platform/windows/LateBound.h"
#include "platform/windows/Makers.h"
#include "win/ComPtr.h"
#include "win/NoSystemBoxes.h"
#include "win/Variant.h"

#include <objbase.h>

#include <msxml2.h>

namespace tarv {

namespace {

/// The record of a failed call on `object`, with the words that the component left for it, if any.
Failure<ErrorRecord> failed(HRESULT code, IUnknown* object, REFIID interfaceId) {
    ErrorRecord record = failureOf(code);
    ComPtr<ISupportErrorInfo> support;
    ComPtr<IErrorInfo> info;
    if (SUCCEEDED(object->QueryInterface(IID_ISupportErrorInfo, support.receiveAny())) &&
        support->InterfaceSupportsErrorInfo(interfaceId) == S_OK && GetErrorInfo(0, info.receive()) == S_OK) {
        Bstr description;
        Bstr source;
        if (SUCCEEDED(info->GetDescription(description.receive())) && !description.text().empty())
            record.description = description.text();
        if (SUCCEEDED(info->GetSource(source.receive())))
            record.source = source.text();
    }
    return Failure{std::move(record)};
}

Failure<ErrorRecord> notAnElement() {
    return Failure{ErrorRecord{438, L"Objekt unterstützt diese Eigenschaft oder Methode nicht", L""}};
}

VARIANT_BOOL variantBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

class WindowsXmlNode final : public XmlNode {
public:
    explicit WindowsXmlNode(ComPtr<IXMLDOMNode> node) : node_(std::move(node)) {}

    IXMLDOMNode* get() const { return node_.get(); }

    Automated<XmlNodeRef> selectSingleNode(std::wstring_view path) override;
    Automated<std::int32_t> countNodes(std::wstring_view path) override;
    Automated<std::wstring> text() override { return received(&IXMLDOMNode::get_text); }
    Automated<Empty> putText(std::wstring_view text) override {
        return done(node_->put_text(Bstr(text).get()));
    }
    Automated<std::wstring> xml() override { return received(&IXMLDOMNode::get_xml); }
    Automated<std::wstring> nodeName() override { return received(&IXMLDOMNode::get_nodeName); }
    Automated<XmlNodeRef> parentNode() override;
    Automated<Empty> appendChild(XmlNode& child) override;
    Automated<Empty> removeChild(XmlNode& child) override;
    Automated<Value> getAttribute(std::wstring_view name) override;
    Automated<Empty> setAttribute(std::wstring_view name, const Value& value) override;
    Automated<Empty> removeAttribute(std::wstring_view name) override;

private:
    Failure<ErrorRecord> refused(HRESULT code) const { return failed(code, node_.get(), IID_IXMLDOMNode); }

    Automated<Empty> done(HRESULT code) const {
        if (FAILED(code))
            return refused(code);
        return Empty{};
    }

    Automated<std::wstring> received(HRESULT (STDMETHODCALLTYPE IXMLDOMNode::*property)(BSTR*)) const {
        Bstr text;
        if (const HRESULT result = (node_.get()->*property)(text.receive()); FAILED(result))
            return refused(result);
        return text.text();
    }

    ComPtr<IXMLDOMNode> node_;
};

XmlNodeRef wrapped(ComPtr<IXMLDOMNode> node) {
    return node ? std::make_unique<WindowsXmlNode>(std::move(node)) : nullptr;
}

IXMLDOMNode* interfaceOf(const XmlNode& node) {
    return static_cast<const WindowsXmlNode&>(node).get();
}

Automated<XmlNodeRef> WindowsXmlNode::selectSingleNode(std::wstring_view path) {
    ComPtr<IXMLDOMNode> found;
    if (const HRESULT result = node_->selectSingleNode(Bstr(path).get(), found.receive()); FAILED(result))
        return refused(result);
    return wrapped(std::move(found));
}

Automated<std::int32_t> WindowsXmlNode::countNodes(std::wstring_view path) {
    ComPtr<IXMLDOMNodeList> list;
    if (const HRESULT result = node_->selectNodes(Bstr(path).get(), list.receive()); FAILED(result))
        return refused(result);
    long length = 0;
    if (const HRESULT result = list ? list->get_length(&length) : S_OK; FAILED(result))
        return failed(result, list.get(), IID_IXMLDOMNodeList);
    return std::int32_t{length};
}

Automated<XmlNodeRef> WindowsXmlNode::parentNode() {
    ComPtr<IXMLDOMNode> parent;
    if (const HRESULT result = node_->get_parentNode(parent.receive()); FAILED(result))
        return refused(result);
    return wrapped(std::move(parent));
}

Automated<Empty> WindowsXmlNode::appendChild(XmlNode& child) {
    return done(node_->appendChild(interfaceOf(child), nullptr));
}

Automated<Empty> WindowsXmlNode::removeChild(XmlNode& child) {
    return done(node_->removeChild(interfaceOf(child), nullptr));
}

Automated<Value> WindowsXmlNode::getAttribute(std::wstring_view name) {
    ComPtr<IXMLDOMElement> element;
    if (FAILED(node_->QueryInterface(IID_IXMLDOMElement, element.receiveAny())))
        return notAnElement();
    Variant attribute;
    const HRESULT result = element->getAttribute(Bstr(name).get(), &attribute.raw());
    if (FAILED(result))
        return failed(result, element.get(), IID_IXMLDOMElement);
    Value value = Null{};
    if (!load(value, attribute.raw()))
        return Failure{failureOf(DISP_E_TYPEMISMATCH)};
    return value;
}

Automated<Empty> WindowsXmlNode::setAttribute(std::wstring_view name, const Value& value) {
    ComPtr<IXMLDOMElement> element;
    if (FAILED(node_->QueryInterface(IID_IXMLDOMElement, element.receiveAny())))
        return notAnElement();
    Variant attribute;
    if (!store(attribute.raw(), value))
        return Failure{failureOf(DISP_E_TYPEMISMATCH)};
    const HRESULT result = element->setAttribute(Bstr(name).get(), attribute.raw());
    if (FAILED(result))
        return failed(result, element.get(), IID_IXMLDOMElement);
    return Empty{};
}

Automated<Empty> WindowsXmlNode::removeAttribute(std::wstring_view name) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    if (const HRESULT result = node_->get_attributes(attributes.receive()); FAILED(result))
        return refused(result);
    if (!attributes)
        return Failure{ErrorRecord{91, L"Objektvariable nicht festgelegt", L""}};
    ComPtr<IXMLDOMNode> removed;
    if (const HRESULT result = attributes->removeNamedItem(Bstr(name).get(), removed.receive());
        FAILED(result)) {
        return failed(result, attributes.get(), IID_IXMLDOMNamedNodeMap);
    }
    return Empty{};
}

class WindowsXmlDocument final : public XmlDocument {
public:
    explicit WindowsXmlDocument(ComPtr<IXMLDOMDocument> document) : document_(std::move(document)) {}

    Automated<Empty> putResolveExternals(bool value) override {
        return done(document_->put_resolveExternals(variantBool(value)));
    }
    Automated<Empty> putValidateOnParse(bool value) override {
        return done(document_->put_validateOnParse(variantBool(value)));
    }
    Automated<Empty> putAsync(bool value) override { return done(document_->put_async(variantBool(value))); }

    Automated<bool> load(std::wstring_view path) override;
    Automated<bool> loadXml(std::wstring_view text) override;
    Automated<XmlParseError> parseError() override;
    Automated<std::wstring> xml() override;
    Automated<XmlNodeRef> documentElement() override;
    Automated<XmlNodeRef> createElement(std::wstring_view name) override;
    Automated<Empty> save(std::wstring_view path) override;

private:
    Failure<ErrorRecord> refused(HRESULT code) const {
        return failed(code, document_.get(), IID_IXMLDOMDocument);
    }

    Automated<Empty> done(HRESULT code) const {
        if (FAILED(code))
            return refused(code);
        return Empty{};
    }

    ComPtr<IXMLDOMDocument> document_;
};

Automated<bool> WindowsXmlDocument::load(std::wstring_view path) {
    Variant source;
    if (!store(source.raw(), std::wstring(path)))
        return refused(E_OUTOFMEMORY);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    const NoSystemBoxes silence;
    if (const HRESULT result = document_->load(source.raw(), &loaded); FAILED(result))
        return refused(result);
    return loaded != VARIANT_FALSE;
}

Automated<bool> WindowsXmlDocument::loadXml(std::wstring_view text) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (const HRESULT result = document_->loadXML(Bstr(text).get(), &loaded); FAILED(result))
        return refused(result);
    return loaded != VARIANT_FALSE;
}

Automated<XmlParseError> WindowsXmlDocument::parseError() {
    ComPtr<IXMLDOMParseError> error;
    if (const HRESULT result = document_->get_parseError(error.receive()); FAILED(result))
        return refused(result);
    // A part that the component does not know stays 0 or empty.
    long code = 0;
    long line = 0;
    long linePosition = 0;
    Bstr reason;
    Bstr sourceText;
    error->get_errorCode(&code);
    error->get_reason(reason.receive());
    error->get_line(&line);
    error->get_linepos(&linePosition);
    error->get_srcText(sourceText.receive());
    return XmlParseError{code, reason.text(), line, linePosition, sourceText.text()};
}

Automated<std::wstring> WindowsXmlDocument::xml() {
    Bstr text;
    if (const HRESULT result = document_->get_xml(text.receive()); FAILED(result))
        return refused(result);
    return text.text();
}

Automated<XmlNodeRef> WindowsXmlDocument::documentElement() {
    ComPtr<IXMLDOMElement> element;
    if (const HRESULT result = document_->get_documentElement(element.receive()); FAILED(result))
        return refused(result);
    return wrapped(ComPtr<IXMLDOMNode>::take(element.detach()));
}

Automated<XmlNodeRef> WindowsXmlDocument::createElement(std::wstring_view name) {
    ComPtr<IXMLDOMElement> element;
    if (const HRESULT result = document_->createElement(Bstr(name).get(), element.receive()); FAILED(result))
        return refused(result);
    return wrapped(ComPtr<IXMLDOMNode>::take(element.detach()));
}

Automated<Empty> WindowsXmlDocument::save(std::wstring_view path) {
    Variant target;
    if (!store(target.raw(), std::wstring(path)))
        return refused(E_OUTOFMEMORY);
    const NoSystemBoxes silence;
    return done(document_->save(target.raw()));
}

class WindowsXmlParsers final : public XmlParsers {
public:
    Automated<XmlDocumentRef> create(std::wstring_view progId) override {
        const NoSystemBoxes silence;
        CLSID classId;
        ComPtr<IXMLDOMDocument> document;
        HRESULT result = CLSIDFromProgID(std::wstring(progId).c_str(), &classId);
        if (SUCCEEDED(result)) {
            result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                                      document.receiveAny());
        }
        if (FAILED(result))
            return Failure{cannotCreate(result, progId)};
        return XmlDocumentRef(std::make_unique<WindowsXmlDocument>(std::move(document)));
    }
};

} // namespace

std::unique_ptr<XmlParsers> makeXmlParsers() {
    return std::make_unique<WindowsXmlParsers>();
}

} // namespace tarv
