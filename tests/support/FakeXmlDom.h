#pragma once

#include "platform/XmlDom.h"
#include "tests/support/FakeDisk.h"
#include "tests/support/FaultPlan.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarv {

struct FakeElement {
    std::wstring name;
    std::wstring text;
    std::map<std::wstring, Value> attributes;
    std::vector<std::shared_ptr<FakeElement>> children;
    FakeElement* parent = nullptr;

    std::shared_ptr<FakeElement> add(std::wstring_view childName, std::wstring_view childText = {});
};

/// A stand-in for the XML component. Its documents do not parse: `accepts` decides about each source, and
/// every accepted one shows the same small tree. Paths are element names joined by "/", a leading "/" begins
/// above the document element; "#document" stands there. Saving writes "<neu/>".
class FakeXmlParsers : public XmlParsers {
public:
    FakeXmlParsers(FaultPlan& plan, FakeDisk& files);

    Automated<XmlDocumentRef> create(std::wstring_view progId) override;

    /// The element "r", without content.
    FakeElement& root() { return *document->children.front(); }

    std::vector<std::wstring> known{L"Msxml2.DOMDocument.6.0", L"Msxml.DOMDocument"};
    std::function<bool(bool isFile, std::wstring_view source)> accepts = [](bool, std::wstring_view) {
        return true;
    };
    XmlParseError error;
    std::wstring declaration;

    /// Creations and settings in order: "create Msxml.DOMDocument", "async 0", "load C:\a.xml", "save ...".
    std::vector<std::wstring> log;
    int openDocuments = 0;

    FaultPlan& faults;
    FakeDisk& disk;
    std::shared_ptr<FakeElement> document;
};

} // namespace tarv
