#include "components/rk_Runtime/Registration.h"

#include "platform/ErrorDisplay.h"
#include "win/Handle.h"

#include <objbase.h>

namespace tarv::component {
namespace {

constexpr wchar_t classes[] = L"Software\\Classes\\";
constexpr wchar_t description[] = L"TARVENIK Fehleranzeige";

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
    const RegistryKey key(opened);
    return RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

/// True also when the key cannot be opened for another reason than that it is missing.
bool exists(HKEY root, const std::wstring& path, REGSAM view = 0) {
    HKEY opened = nullptr;
    const LSTATUS status = RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE | view, &opened);
    const RegistryKey key(opened);
    return status != ERROR_FILE_NOT_FOUND;
}

/// Empty also when the value is not of the type that we write.
std::wstring defaultValue(HKEY root, const std::wstring& path) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS)
        return {};
    const RegistryKey key(opened);
    wchar_t text[64] = {};
    DWORD size = sizeof text - sizeof(wchar_t);
    DWORD type = 0;
    if (RegQueryValueExW(key.get(), nullptr, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) !=
            ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    return text;
}

bool progIdIsOurs(HKEY root) {
    CLSID id;
    return SUCCEEDED(CLSIDFromString(defaultValue(root, progIdKey() + L"\\CLSID").c_str(), &id)) &&
           IsEqualCLSID(id, classId());
}

bool progIdBelongsToAnother(HKEY root) {
    return exists(root, progIdKey()) && !progIdIsOurs(root);
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
        {progIdKey() + L"\\CLSID", nullptr, std::wstring(errorDisplayClassId)}, // makes the key ours
        {progIdKey(), nullptr, description},
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

/// Takes away what we entered, and the key itself when nothing of others is in it.
LSTATUS removeProgId(HKEY root) {
    HKEY opened = nullptr;
    LSTATUS status = RegOpenKeyExW(root, progIdKey().c_str(), 0, KEY_QUERY_VALUE | KEY_SET_VALUE, &opened);
    const RegistryKey key(opened);
    if (status == ERROR_SUCCESS)
        status = deleteTree(root, progIdKey() + L"\\CLSID");
    if (status == ERROR_SUCCESS)
        RegDeleteValueW(key.get(), nullptr);
    DWORD keys = 0;
    DWORD values = 0;
    if (status == ERROR_SUCCESS)
        status = RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                  nullptr, nullptr, nullptr, nullptr);
    return status == ERROR_SUCCESS && keys + values == 0 ? RegDeleteKeyW(root, progIdKey().c_str()) : status;
}

LSTATUS remove(HKEY root) {
    const LSTATUS status = deleteTree(root, classKey());
    // Since Windows 7 each width has a CLSID key of its own, but both share the programmatic identifier. On
    // 32-bit Windows both views are the same.
    const bool otherWidthLeft =
        exists(root, classKey(), KEY_WOW64_32KEY) || exists(root, classKey(), KEY_WOW64_64KEY);
    return status == ERROR_SUCCESS && !otherWidthLeft && progIdIsOurs(root) ? removeProgId(root) : status;
}

} // namespace

CLSID classId() {
    CLSID id{};
    CLSIDFromString(std::wstring(errorDisplayClassId).c_str(), &id);
    return id;
}

HRESULT registerClass(const std::wstring& libraryPath) {
    const bool suiteHasIt =
        progIdBelongsToAnother(HKEY_LOCAL_MACHINE) || progIdBelongsToAnother(HKEY_CURRENT_USER);
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
