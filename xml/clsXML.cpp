#include "xml/clsXML.h"

#include "platform/Platform.h"
#include "runtime/Runtime.h"
#include "xml/XmlFailure.h"
#include "xml/XmlLoader.h"
#include "xml/XmlSaver.h"
#include "xml/XmlText.h"

namespace tarv {
namespace {

/// An attribute whose name or value is empty counts as none.
bool given(std::optional<std::wstring_view> name, const Value& value) {
    const auto* text = std::get_if<std::wstring>(&value);
    return name && !name->empty() && !std::holds_alternative<Missing>(value) &&
           !std::holds_alternative<Empty>(value) && (!text || !text->empty());
}

bool fits(const Value& value) {
    const auto* text = std::get_if<std::wstring>(&value);
    return !text || isXmlText(*text);
}

bool succeeded(const Automated<Empty>& answer) {
    return static_cast<bool>(answer);
}

/// The document stands above its one element and takes no second.
bool isDocument(XmlNode& node) {
    const auto name = node.nodeName();
    return name && *name == L"#document";
}

} // namespace

XmlDocument& clsXML::document() {
    if (!document_)
        raiseXmlError(error_number::objectNotSet);
    return *document_;
}

/// Fails with 91 without a document or document element; null when nothing matches.
Automated<XmlNodeRef> clsXML::select(std::wstring_view path) {
    if (!document_)
        return Failure{xmlErrorRecord(error_number::objectNotSet)};
    auto root = document_->documentElement();
    if (!root)
        return root;
    if (!*root)
        return Failure{xmlErrorRecord(error_number::objectNotSet)};
    return (*root)->selectSingleNode(path);
}

/// The node at `path`; raises what keeps it from being found.
XmlNodeRef clsXML::existing(std::wstring_view path) {
    document();
    XmlNodeRef node = valueOrRaise(select(path));
    if (!node)
        raiseXmlError(error_number::objectNotSet);
    return node;
}

XmlNodeRef clsXML::GetNode(std::wstring_view path) {
    auto node = select(path);
    return node ? std::move(*node) : nullptr;
}

std::wstring clsXML::ReadNode(std::wstring_view path) {
    const XmlNodeRef node = GetNode(path);
    if (!node)
        return {};
    auto text = node->text();
    return text ? withWindowsLineEnds(std::move(*text)) : std::wstring();
}

std::wstring clsXML::ReadNodeXML(std::wstring_view path) {
    document();
    const XmlNodeRef node = valueOrRaise(select(path));
    return node ? valueOrRaise(node->xml()) : std::wstring();
}

std::wstring clsXML::XML() {
    return withCompleteDeclaration(valueOrRaise(document().xml()));
}

Value clsXML::ReadAttribute(std::wstring_view path, std::wstring_view name) {
    const XmlNodeRef node = GetNode(path);
    if (!node)
        return Empty{};
    auto value = node->getAttribute(name);
    return value ? std::move(*value) : Value(Empty{});
}

bool clsXML::WriteAttribute(std::wstring_view path, std::wstring_view name, const Value& value) {
    const XmlNodeRef node = GetNode(path);
    return node && isXmlName(name) && fits(value) && succeeded(node->setAttribute(name, value));
}

std::int32_t clsXML::NodeCount(std::wstring_view path) {
    if (!document_)
        return 0;
    const auto root = document_->documentElement();
    return root && *root ? (*root)->countNodes(path).valueOr(0) : 0;
}

void clsXML::Save(std::wstring_view file) {
    saveInPlace(document(), rt_.platform, file);
}

void clsXML::DeleteNode(std::wstring_view path) {
    const XmlNodeRef node = GetNode(path);
    if (!node)
        return;
    const auto parent = node->parentNode();
    if (parent && *parent)
        static_cast<void>((*parent)->removeChild(*node));
}

void clsXML::MakeNode(std::wstring_view path, std::wstring_view name, std::optional<std::wstring_view> text,
                      std::optional<std::wstring_view> name1, const Value& value1,
                      std::optional<std::wstring_view> name2, const Value& value2) {
    const XmlNodeRef parent = existing(path);
    if (!isXmlName(name) || (text && !isXmlText(*text)) || isDocument(*parent))
        raiseXmlError(error_number::invalidCall);
    const XmlNodeRef node = valueOrRaise(document().createElement(name));
    if (text)
        valueOrRaise(node->putText(*text));
    valueOrRaise(parent->appendChild(*node));
    const std::wstring address = std::wstring(path) + L"/" + std::wstring(name);
    if (given(name1, value1))
        WriteAttribute(address, *name1, value1);
    if (given(name2, value2))
        WriteAttribute(address, *name2, value2);
}

void clsXML::DeleteAttribute(std::wstring_view path, std::wstring_view name) {
    valueOrRaise(existing(path)->removeAttribute(name));
}

std::int32_t clsXML::GetColorValue(std::wstring_view path) {
    return colorValue(valueOrRaise(existing(path)->text()));
}

bool clsXML::SetColorValue(std::wstring_view path, std::int16_t red, std::int16_t green, std::int16_t blue) {
    return WriteNode(path, colorText(red, green, blue));
}

bool clsXML::WriteNode(std::wstring_view path, std::wstring_view value) {
    const XmlNodeRef node = GetNode(path);
    return node && isXmlText(value) && succeeded(node->putText(value));
}

bool clsXML::InsertNode(std::wstring_view path, std::wstring_view name, std::int16_t mode,
                        std::optional<std::wstring_view> text, std::optional<std::wstring_view> attributeName,
                        const Value& attributeValue) {
    XmlNodeRef parent = GetNode(path);
    if (parent && mode == 0) {
        auto above = parent->parentNode();
        parent = above ? std::move(*above) : nullptr;
    }
    const bool withAttribute = given(attributeName, attributeValue);
    const bool allowed = isXmlName(name) && (!text || isXmlText(*text)) &&
                         (!withAttribute || (isXmlName(*attributeName) && fits(attributeValue)));
    if (!parent || (mode != 0 && mode != 1) || !allowed || isDocument(*parent))
        return false;
    const auto node = document_->createElement(name);
    // Appended last, so that a refusal leaves nothing behind.
    return node && *node && (!text || succeeded((*node)->putText(*text))) &&
           (!withAttribute || succeeded((*node)->setAttribute(*attributeName, attributeValue))) &&
           succeeded(parent->appendChild(**node));
}

std::int16_t clsXML::Initialize(std::int16_t version) {
    version_ = canCreateParser(rt_, version) ? version : std::int16_t{0};
    return *version_;
}

bool clsXML::OpenFromFile(std::wstring_view file, bool showErrors) {
    return open(XmlSource::file, file, showErrors);
}

bool clsXML::OpenFromString(std::wstring_view xml, bool showErrors) {
    return open(XmlSource::string, xml, showErrors);
}

bool clsXML::open(XmlSource kind, std::wstring_view source, bool showErrors) {
    if (!version_)
        Initialize(ChooseParser(rt_));
    document_.reset();
    document_ = OpenXML(rt_, *version_, kind, source, showErrors);
    return document_ != nullptr;
}

} // namespace tarv
