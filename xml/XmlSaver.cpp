#include "xml/XmlSaver.h"

#include "xml/XmlFailure.h"

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

} // namespace

void saveInPlace(XmlDocument& document, FileStore& files, std::wstring_view file) {
    const std::wstring fresh = neighbour(files, file);
    if (const auto saved = document.save(fresh); !saved) {
        files.remove(fresh);
        throw RuntimeError(saved.error());
    }
    if (const SystemCode code = files.replace(file, fresh); code != 0) {
        files.remove(fresh);
        // The number the component itself gives for this system code.
        throw RuntimeError({static_cast<std::int32_t>(0x80070000 | code),
                            L"Die Datei \"" + std::wstring(file) + L"\" kann nicht geschrieben werden.",
                            L"clsXML"});
    }
}

} // namespace tarv
