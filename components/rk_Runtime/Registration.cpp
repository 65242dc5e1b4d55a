#include "components/rk_Runtime/Registration.h"

#include "platform/windows/Handle.h"
#include "runtime/Funktionen32/ErrorDisplay.h"

#include <objbase.h>

namespace tarv::component {
namespace {

constexpr wchar_t classes[] = L"Software\\Classes\\";
constexpr wchar_t description[] = L"TARVENIK Fehleranzeige";

void closeKey(HKEY key) {
    RegCloseKey(key);
}
using Key = Handle<HKEY, closeKey>;

std::wstring progIdKey() {
    return std::wstring(classes).append(errorDisplayProgId);
}
std::wstring classKey() {
    return std::wstring(classes).append(L"CLSID\\").append(errorDisplayClassId);
}

LSTATUS setValue(HKEY root, const std::wstring& path, const wchar_t* name, const std::wstring& value) {
    HKEY opened = nullptr;
    const LSTATUS status =
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    const Key key(opened);
    return RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring defaultValue(HKEY root, const std::wstring& path) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
        return {};
    const Key key(opened);
    wchar_t text[64] = {};
    DWORD size = sizeof text - sizeof(wchar_t);
    DWORD type = 0;
    if (RegQueryValueExW(key.get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) !=
            ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    return text;
}

bool isOurClass(const std::wstring& id) {
    CLSID parsed;
    return SUCCEEDED(CLSIDFromString(id.c_str(), &parsed)) && IsEqualCLSID(parsed, classId());
}

/// What programs find under the programmatic identifier now, for this user or for all.
bool progIdBelongsToAnother() {
    const std::wstring id = defaultValue(HKEY_CLASSES_ROOT, std::wstring(errorDisplayProgId) + L"\\CLSID");
    return !id.empty() && !isOurClass(id);
}

struct Entry {
    std::wstring path;
    const wchar_t* name;
    std::wstring value;
};

LSTATUS enter(HKEY root, const std::wstring& libraryPath, bool withProgId) {
    const std::wstring server = classKey() + L"\\InprocServer32";
    const Entry ofClass[] = {
        {classKey(), nullptr, description},
        {classKey() + L"\\ProgID", nullptr, std::wstring(errorDisplayProgId)},
        {server, nullptr, libraryPath},
        {server, L"ThreadingModel", L"Apartment"},
    };
    const Entry ofProgId[] = {
        {progIdKey(), nullptr, description},
        {progIdKey() + L"\\CLSID", nullptr, std::wstring(errorDisplayClassId)},
    };
    LSTATUS status = ERROR_SUCCESS;
    for (const Entry& entry : ofClass)
        if (status == ERROR_SUCCESS)
            status = setValue(root, entry.path, entry.name, entry.value);
    for (const Entry& entry : ofProgId)
        if (status == ERROR_SUCCESS && withProgId)
            status = setValue(root, entry.path, entry.name, entry.value);
    return status;
}

LSTATUS deleteTree(HKEY root, const std::wstring& path) {
    const LSTATUS status = RegDeleteTreeW(root, path.c_str());
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

LSTATUS remove(HKEY root) {
    LSTATUS status = ERROR_SUCCESS;
    if (isOurClass(defaultValue(root, progIdKey() + L"\\CLSID")))
        status = deleteTree(root, progIdKey());
    const LSTATUS ofClass = deleteTree(root, classKey());
    return status == ERROR_SUCCESS ? ofClass : status;
}

} // namespace

CLSID classId() {
    CLSID id{};
    CLSIDFromString(std::wstring(errorDisplayClassId).c_str(), &id);
    return id;
}

HRESULT registerClass(const std::wstring& libraryPath) {
    const bool suiteHasIt = progIdBelongsToAnother();
    LSTATUS status = enter(HKEY_LOCAL_MACHINE, libraryPath, !suiteHasIt);
    if (status != ERROR_SUCCESS) {
        remove(HKEY_LOCAL_MACHINE); // no half of an entry stays behind
        status = enter(HKEY_CURRENT_USER, libraryPath, !suiteHasIt);
    }
    if (status != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(static_cast<DWORD>(status));
    return suiteHasIt ? S_FALSE : S_OK;
}

HRESULT unregisterClass() {
    const LSTATUS ofUser = remove(HKEY_CURRENT_USER);
    const LSTATUS ofMachine = remove(HKEY_LOCAL_MACHINE);
    const LSTATUS status = ofUser != ERROR_SUCCESS ? ofUser : ofMachine;
    return status == ERROR_SUCCESS ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

} // namespace tarv::component
