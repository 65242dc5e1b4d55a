#include "xml/XmlSaver.h"

#include "xml/XmlEncoding.h"
#include "xml/XmlFailure.h"

#include <optional>
#include <string>

namespace tarv {
namespace {

/// A name beside `file` that is not taken.
std::wstring neighbour(FileStore& files, std::wstring_view file) {
    constexpr int attempts = 100;
    std::wstring name = std::wstring(file) + L".neu";
    for (int i = 1; i < attempts && files.attributes(name); ++i)
        name = std::wstring(file) + L".neu" + std::to_wstring(i);
    return name;
}

/// The bytes of a document that its component would not save as declared; nothing where it does so itself.
///
/// Not every component converts to the encoding that the declaration names: some write UTF-8 under it. Those
/// tell the encoding in the document's text too, while the others, whose text knows none, leave it out there.
std::optional<std::string> convertedHere(XmlDocument& document) {
    const std::wstring encoding = declaredEncoding(document.declaration().valueOr(L""));
    if (encoding.empty() || encoding == L"utf-8")
        return std::nullopt;
    const std::wstring text = valueOrRaise(document.xml());
    return declaredEncoding(text).empty() ? std::nullopt : encodedWithReferences(text);
}

ErrorRecord cannotWrite(SystemCode code, std::wstring_view file) {
    // The number that the component itself gives for this system code.
    return {static_cast<std::int32_t>(0x80070000 | code),
            L"Die Datei \"" + std::wstring(file) + L"\" kann nicht geschrieben werden.", L"clsXML"};
}

} // namespace

void saveInPlace(XmlDocument& document, FileStore& files, std::wstring_view file) {
    const std::wstring fresh = neighbour(files, file);
    std::optional<ErrorRecord> failure;
    SystemCode code = 0;
    if (const auto bytes = convertedHere(document))
        code = files.overwrite(fresh, *bytes);
    else if (const auto saved = document.save(fresh); !saved)
        failure = saved.error();
    if (!failure && code == 0)
        code = files.replace(file, fresh);
    if (!failure && code == 0)
        return;
    files.remove(fresh);
    throw RuntimeError(failure ? *failure : cannotWrite(code, file));
}

} // namespace tarv
