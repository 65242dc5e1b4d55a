#include "runtime/Konstanten.h"

#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "runtime/Funktionen32/Existence.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

namespace tarv {
namespace {

constexpr std::size_t versionSize = 100;
constexpr const wchar_t* unknownVersion = L"2023";

bool isListed(Runtime& rt, const std::wstring& path) {
    std::vector<std::wstring> names;
    return ListFiles(rt, path, names) > 0;
}

} // namespace

std::wstring GetProgVersion(Runtime& rt) {
    const std::wstring path = AddBackslash(ProgramFolder(rt)) + L"Version.INI";
    if (!isListed(rt, path))
        return unknownVersion;

    std::wstring version =
        rt.platform.profiles.getString(L"Info", L"ProgVersion", entryNotFound, versionSize, path);
    if (version.empty() || version == entryNotFound)
        return unknownVersion;
    version.resize(versionSize);
    return version;
}

} // namespace tarv
