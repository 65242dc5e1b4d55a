#include "xml/XmlSaver.h"

#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/detail/WholeFile.h"
#include "xml/XmlEncoding.h"
#include "xml/XmlFailure.h"

#include <optional>
#include <string>
#include <utility>

namespace tarv {
namespace {

ErrorRecord errorRecord(std::int32_t number, std::wstring description) {
    return {number, std::move(description), L"clsXML"};
}

/// Whether the document's declaration leaves it at UTF-8. Unknown where the component does not say.
std::optional<bool> declaresUtf8(XmlDocument& document) {
    const auto root = document.documentElement();
    if (!root || !*root)
        return std::nullopt;
    const auto declaration = (*root)->selectSingleNode(L"/processing-instruction('xml')");
    if (!declaration)
        return std::nullopt;
    if (!*declaration)
        return true;
    const std::wstring encoding = declaredEncoding((*declaration)->text().valueOr({}));
    return encoding.empty() || encoding == L"utf-8";
}

/// The document's bytes where they have to be converted here; nothing where the component does it.
///
/// Some components write UTF-8 whatever encoding the declaration names. The document's text tells which:
/// theirs names the encoding, that of a component which converts leaves it out. The declaration comes first,
/// since Wine takes half a minute for the text of 50 MB.
std::optional<std::string> convertedHere(XmlDocument& document) {
    if (declaresUtf8(document).value_or(false))
        return std::nullopt;
    const std::wstring text = valueOrRaise(document.xml());
    const std::wstring encoding = declaredEncoding(text);
    if (encoding.empty() || encoding == L"utf-8")
        return std::nullopt;
    auto bytes = encodedWithReferences(text);
    if (!bytes)
        // The component's own number for an encoding that the system does not know.
        throw RuntimeError(errorRecord(static_cast<std::int32_t>(0xC00CE56E),
                                       L"Das Dokument kann in der Kodierung \"" + encoding +
                                           L"\" nicht gespeichert werden."));
    return bytes;
}

ErrorRecord cannotWrite(SystemCode code, std::wstring_view file) {
    // The number that the component itself gives for this system code.
    return errorRecord(static_cast<std::int32_t>(0x80070000 | code),
                       TranslateText(L"Die Datei \"").append(file) +
                           TranslateText(L"\" kann nicht geschrieben werden."));
}

} // namespace

void saveInPlace(XmlDocument& document, const Platform& platform, std::wstring_view file) {
    FileStore& files = *platform.files;
    if (file.empty())
        throw RuntimeError(cannotWrite(system_code::pathNotFound, file));
    const auto bytes = convertedHere(document);
    const std::wstring fresh = freeNameBeside(files, file);
    std::optional<ErrorRecord> failed;
    if (bytes) {
        if (const SystemCode code = files.overwrite(fresh, *bytes); code != 0)
            failed = cannotWrite(code, file);
    } else if (const auto saved = document.save(fresh); !saved) {
        failed = saved.error();
    }
    if (!failed) {
        const SystemCode code = putInPlace(platform, file, fresh);
        if (code == 0)
            return;
        failed = cannotWrite(code, file);
        if (!files.attributes(file)) {
            failed->description += TranslateText(L" Das Dokument liegt vollständig in \"") + fresh + L"\".";
            throw RuntimeError(*failed);
        }
    }
    files.remove(fresh);
    throw RuntimeError(*failed);
}

} // namespace tarv
