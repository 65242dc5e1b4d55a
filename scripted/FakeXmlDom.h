#pragma once

#include "platform/XmlDom.h"
#include "scripted/FakeDisk.h"

#include <functional>
#include <string>
#include <vector>

namespace tarv {

/// A stand-in for the XML component. Its documents do not parse: `accepts` decides about each source, a
/// file's path or a text. In an accepted one every path leads to an element with the same content; by a
/// planned failure with code 0 there is no such node. Saving writes "<neu/>".
class FakeXmlParsers : public XmlParsers, public Planned {
public:
    FakeXmlParsers(FaultPlan& plan, FakeDisk& files) : Planned(plan), disk(files) {}

    Automated<XmlDocumentRef> create(std::wstring_view progId) override;

    std::vector<std::wstring> known{L"Msxml2.DOMDocument.6.0", L"Msxml.DOMDocument"};
    std::function<bool(std::wstring_view source)> accepts = [](auto) { return true; };
    XmlParseError error;
    /// The text of every element and of the document.
    std::wstring content;
    std::wstring nodeName = L"n";
    /// Settings, loads and changes in order: "putAsync(0);load(C:\a.xml);appendChild();". Of what failed,
    /// only loads stand here.
    std::wstring log;

    FakeDisk& disk;
};

} // namespace tarv
