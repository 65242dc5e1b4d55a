#include "runtime/Konstanten.h"

#include "platform/Platform.h"
#include "platform/ProfileFiles.h"
#include "runtime/Funktionen32/Paths.h"
#include "runtime/Funktionen32/PlainFiles.h"
#include "runtime/ModRkIni.h"
#include "runtime/Runtime.h"

namespace tarv {
namespace {

constexpr std::size_t versionSize = 100;
constexpr const wchar_t* unknownVersion = L"2023";

} // namespace

std::wstring GetProgVersion(Runtime& rt) {
    const std::wstring path = AddBackslash(ProgramFolder(rt)) + L"Version.INI";
    if (!PlainFiles(rt, path).next())
        return unknownVersion;

    std::wstring version =
        rt.platform.profiles->getString(L"Info", L"ProgVersion", entryNotFound, versionSize, path);
    if (version.empty() || version == entryNotFound)
        return unknownVersion;
    version.resize(versionSize);
    return version;
}

} // namespace tarv
