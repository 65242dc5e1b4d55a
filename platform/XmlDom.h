#pragma once

#include "platform/Automation.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tarv {

class XmlNode;
class XmlDocument;

/// Null stands for "no such node". A node keeps its document alive.
using XmlNodeRef = std::unique_ptr<XmlNode>;
using XmlDocumentRef = std::unique_ptr<XmlDocument>;

/// What the parser says about the last load; code 0 when it went well.
struct XmlParseError {
    std::int32_t code = 0;
    /// With its own line end.
    std::wstring reason;
    std::int32_t line = 0;
    std::int32_t linePosition = 0;
    std::wstring sourceText;
};

/// One node of a document tree. Every failure carries the component's own error record.
class XmlNode {
public:
    XmlNode() = default;
    XmlNode(const XmlNode&) = delete;
    XmlNode& operator=(const XmlNode&) = delete;
    virtual ~XmlNode() = default;

    virtual Automated<XmlNodeRef> selectSingleNode(std::wstring_view path) = 0;
    /// Length of the list that the component's selectNodes delivers.
    virtual Automated<std::int32_t> countNodes(std::wstring_view path) = 0;

    virtual Automated<std::wstring> text() = 0;
    virtual Automated<Empty> putText(std::wstring_view text) = 0;
    virtual Automated<std::wstring> xml() = 0;
    virtual Automated<std::wstring> nodeName() = 0;
    virtual Automated<XmlNodeRef> parentNode() = 0;

    /// `child` comes from the same implementation.
    virtual Automated<Empty> appendChild(XmlNode& child) = 0;
    virtual Automated<Empty> removeChild(XmlNode& child) = 0;

    /// Null when the element has no such attribute. Both fail with 438 for a node that is no element.
    virtual Automated<Value> getAttribute(std::wstring_view name) = 0;
    virtual Automated<Empty> setAttribute(std::wstring_view name, const Value& value) = 0;
    /// Removes it from the attributes collection, also when it is not there. Fails with 91 for a node without
    /// such a collection.
    virtual Automated<Empty> removeAttribute(std::wstring_view name) = 0;
};

/// A document of the system's XML component.
class XmlDocument {
public:
    XmlDocument() = default;
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    virtual ~XmlDocument() = default;

    virtual Automated<Empty> putResolveExternals(bool value) = 0;
    virtual Automated<Empty> putValidateOnParse(bool value) = 0;
    virtual Automated<Empty> putAsync(bool value) = 0;

    /// Both answer false when the parser refuses; parseError says why.
    virtual Automated<bool> load(std::wstring_view path) = 0;
    virtual Automated<bool> loadXml(std::wstring_view text) = 0;
    virtual Automated<XmlParseError> parseError() = 0;

    virtual Automated<std::wstring> xml() = 0;
    virtual Automated<XmlNodeRef> documentElement() = 0;
    virtual Automated<XmlNodeRef> createElement(std::wstring_view name) = 0;
    virtual Automated<Empty> save(std::wstring_view path) = 0;
};

/// The XML component installed on this machine. COM has to be initialised by the program.
///
/// A border of its own beside Automation: through the component's dual interfaces a read by path costs no
/// more than the component itself takes, while late-bound calls add a tenth.
class XmlParsers {
public:
    virtual ~XmlParsers() = default;

    /// A document by programmatic identifier. Fails with number 429 when the class is not registered or
    /// cannot be created.
    virtual Automated<XmlDocumentRef> create(std::wstring_view progId) = 0;
};

} // namespace tarv
