#include "xml/XmlLoader.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/Runtime.h"
#include "xml/XmlEncoding.h"

#include <optional>
#include <string>

namespace tarv {
namespace {

/// Version 1 refuses a text whose declaration names an encoding other than that of wide texts; from a file it
/// takes the same text.
constexpr auto encodingSwitchRefused = static_cast<std::int32_t>(0xC00CE56F);

std::wstring_view programmaticId(std::int16_t version) {
    return version == 6 ? L"Msxml2.DOMDocument.6.0" : version == 1 ? L"Msxml.DOMDocument" : L"";
}

/// What went wrong with a load: the parser's own account, or the record of the call that failed.
XmlParseError reasonOf(XmlDocument& document, const Automated<bool>& loaded) {
    XmlParseError reason = document.parseError().valueOr({});
    if (reason.code == 0 && !loaded) {
        reason.code = loaded.error().number;
        reason.reason = loaded.error().description + L"\r\n";
    }
    return reason;
}

/// Shows why a document could not be loaded. `file` is empty for a text.
void showParseError(Runtime& rt, const XmlParseError& error, std::wstring_view file) {
    const std::wstring lineEnd = L"\r\n";
    std::wstring text = TranslateText(L"Fehler beim Laden von XML");
    if (!file.empty())
        text += L":" + lineEnd + std::wstring(file);
    text += lineEnd + lineEnd + std::to_wstring(error.code) + lineEnd;
    // The reason brings its own line end.
    text += error.reason + TranslateText(L"Line ") + std::to_wstring(error.line) +
            TranslateText(L", Position ") + std::to_wstring(error.linePosition) + lineEnd + lineEnd;
    text += error.sourceText + lineEnd;
    rt.platform.desktop->messageBox(text, TranslateText(L"XML Parse Error"),
                                    message_box::ok | message_box::exclamation | message_box::systemModal);
}

/// Settings in this order, then the load. Externals stay unresolved: a document must not fetch files or
/// addresses that it names, so a parser that refuses this does not load at all.
Automated<bool> load(XmlDocument& document, XmlSource kind, std::wstring_view source) {
    for (const auto& set :
         {document.putResolveExternals(false), document.putValidateOnParse(true), document.putAsync(false)}) {
        if (!set)
            return Failure{set.error()};
    }
    return kind == XmlSource::file ? document.load(source) : document.loadXml(source);
}

XmlDocumentRef openThroughScratchFile(Runtime& rt, std::int16_t version, std::wstring_view xml,
                                      bool showErrors) {
    FileStore& files = *rt.platform.files;
    const std::wstring path = AddBackslash(programFolder(rt)) + L"tempgoxml.xml";
    const std::optional<std::string> bytes = encodedAsDeclared(xml);
    const SystemCode code = bytes ? files.overwrite(path, *bytes) : 0;
    XmlDocumentRef document;
    if (bytes && code == 0) {
        document = OpenXML(rt, version, XmlSource::file, path, showErrors);
    } else if (showErrors) {
        XmlParseError reason;
        reason.code = bytes ? static_cast<std::int32_t>(0x80070000 | code) : encodingSwitchRefused;
        reason.reason =
            TranslateText(bytes                  ? L"Die Hilfsdatei kann nicht geschrieben werden.\r\n"
                          : knowsEncodingOf(xml) ? L"Der Text passt nicht in die Kodierung, die er nennt.\r\n"
                                                 : L"Die Kodierung, die der Text nennt, ist unbekannt.\r\n");
        showParseError(rt, reason, path);
    }
    files.remove(path);
    return document;
}

} // namespace

bool canCreateParser(Runtime& rt, std::int16_t version) {
    const std::wstring_view id = programmaticId(version);
    return !id.empty() && rt.platform.xml->create(id);
}

std::int16_t ChooseParser(Runtime& rt) {
    for (const std::int16_t version : {std::int16_t{6}, std::int16_t{1}})
        if (canCreateParser(rt, version))
            return version;
    return 0;
}

XmlDocumentRef InvokeParser(Runtime& rt, std::int16_t version) {
    const std::wstring_view id = programmaticId(version);
    if (id.empty())
        return nullptr;
    auto created = rt.platform.xml->create(id);
    if (created)
        return std::move(*created);
    if (created.error().number == error_number::cannotCreateObject)
        rt.platform.desktop->messageBox(TranslateText(L"XML-Problem beim Create (").append(id) + L")",
                                        TranslateText(L"clsXml.InvokeParser"),
                                        message_box::ok | message_box::systemModal);
    return nullptr;
}

XmlDocumentRef OpenXML(Runtime& rt, std::int16_t version, XmlSource kind, std::wstring_view source,
                       bool showErrors) {
    XmlDocumentRef document = InvokeParser(rt, version);
    if (!document) {
        rt.platform.desktop->messageBox(
            TranslateText(L"clsXml.OpenXML Fehler"), TranslateText(L"Create the DOMDocument"),
            message_box::ok | message_box::exclamation | message_box::systemModal);
        return nullptr;
    }
    const auto loaded = load(*document, kind, source);
    if (loaded && *loaded)
        return document;
    const XmlParseError reason = reasonOf(*document, loaded);
    if (kind == XmlSource::string && version == 1 && reason.code == encodingSwitchRefused) {
        document.reset();
        return openThroughScratchFile(rt, version, source, showErrors);
    }
    if (showErrors)
        showParseError(rt, reason, kind == XmlSource::file ? source : std::wstring_view());
    return nullptr;
}

} // namespace tarv
