#pragma once

#include "platform/XmlDom.h"
#include "scripted/FakeDisk.h"

#include <functional>
#include <string>
#include <vector>

namespace tarv {

/// A stand-in for the XML component. Its documents do not parse: `accepts` decides about each source. In an
/// accepted one every path leads to an element with the same content. Saving writes "<neu/>".
class FakeXmlParsers : public XmlParsers, public Planned {
public:
    FakeXmlParsers(FaultPlan& plan, FakeDisk& files) : Planned(plan), disk(files) {}

    Automated<XmlDocumentRef> create(std::wstring_view progId) override;

    std::vector<std::wstring> known{L"Msxml2.DOMDocument.6.0", L"Msxml.DOMDocument"};
    std::function<bool(bool isFile, std::wstring_view source)> accepts = [](auto...) { return true; };
    XmlParseError error;
    bool hasDocumentElement = true;
    bool hasNodes = true;
    /// The text of every element and of the document.
    std::wstring content;
    std::wstring nodeName = L"n";
    /// Creations, settings, loads and changes in order: "create Msxml.DOMDocument", "async 0", "load
    /// C:\a.xml", "appendChild"; what failed does not stand here, apart from creations and loads.
    std::vector<std::wstring> log;
    int openDocuments = 0;

    FakeDisk& disk;
};

} // namespace tarv
