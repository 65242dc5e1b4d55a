#include "xml/ParseErrorReport.h"

#include "platform/Desktop.h"
#include "platform/Platform.h"
#include "runtime/Runtime.h"

#include <string>

namespace tarv {

void showParseError(Runtime& rt, const XmlParseError& error, std::wstring_view file) {
    const std::wstring lineEnd = L"\r\n";
    std::wstring text = L"Fehler beim Laden von XML";
    if (!file.empty())
        text += L":" + lineEnd + std::wstring(file);
    text += lineEnd + lineEnd + std::to_wstring(error.code) + lineEnd;
    // The reason brings its own line end.
    text += error.reason + L"Line " + std::to_wstring(error.line) + L", Position " +
            std::to_wstring(error.linePosition) + lineEnd + lineEnd;
    text += error.sourceText + lineEnd;
    rt.platform.desktop->messageBox(text, L"XML Parse Error",
                                    message_box::ok | message_box::exclamation | message_box::systemModal);
}

} // namespace tarv
