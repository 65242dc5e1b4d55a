#include "xml/XmlSaver.h"

#include "platform/Desktop.h"
#include "platform/FileStore.h"
#include "platform/Platform.h"
#include "xml/XmlEncoding.h"
#include "xml/XmlFailure.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>

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

ErrorRecord errorRecord(std::int32_t number, std::wstring description) {
    return {number, std::move(description), L"clsXML"};
}

/// The document's bytes where they have to be converted here; nothing where the component does it.
///
/// Some components write UTF-8 whatever encoding the declaration names. The document's text tells which:
/// theirs names the encoding, that of a component which converts leaves it out.
std::optional<std::string> convertedHere(XmlDocument& document) {
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
                       L"Die Datei \"" + std::wstring(file) + L"\" kann nicht geschrieben werden.");
}

bool isOneOf(SystemCode code, std::initializer_list<SystemCode> codes) {
    return std::ranges::find(codes, code) != codes.end();
}

/// Gives `fresh` the name `file`. Scanners and synchronisers open new files for a moment, and an open file
/// cannot take another's place. So it is tried for half a second. Where an attempt removes the old file and
/// then fails, the next one finds nothing to replace and completes it.
SystemCode putInPlace(const Platform& platform, std::wstring_view file, std::wstring_view fresh) {
    using namespace system_code;
    constexpr int attempts = 50;
    constexpr std::uint32_t pause = 10;
    constexpr auto fixed = attribute::readOnly | attribute::directory;
    for (int attempt = 1;; ++attempt) {
        SystemCode code = platform.files->replace(file, fresh);
        // There is nothing to replace, or the file system knows no replacing.
        if (isOneOf(code, {fileNotFound, invalidFunction, notSupported, invalidParameter}))
            code = platform.files->moveOver(fresh, file);
        const bool mayPass =
            isOneOf(code, {accessDenied, sharingViolation, lockViolation, unableToRemoveReplaced,
                           unableToMoveReplacement, unableToMoveReplacement2}) &&
            (platform.files->attributes(file).valueOr(0) & fixed) == 0;
        if (!mayPass || attempt == attempts)
            return code;
        platform.desktop->sleep(pause);
    }
}

} // namespace

void saveInPlace(XmlDocument& document, const Platform& platform, std::wstring_view file) {
    FileStore& files = *platform.files;
    if (file.empty())
        throw RuntimeError(cannotWrite(system_code::pathNotFound, file));
    const auto bytes = convertedHere(document);
    const std::wstring fresh = neighbour(files, file);
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
            failed->description += L" Das Dokument liegt vollständig in \"" + fresh + L"\".";
            throw RuntimeError(*failed);
        }
    }
    files.remove(fresh);
    throw RuntimeError(*failed);
}

} // namespace tarv
