// What TarvReport asks Windows for, and nothing else: the query to the management service, and all groups of
// both configuration files.
#include "win/ComApartment.h"
#include "win/ComPtr.h"
#include "win/Variant.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <wbemdisp.h>

namespace {

using namespace tarv;

void readProperty(IDispatch& object, const wchar_t* name) {
    DISPID id = 0;
    Variant value;
    DISPPARAMS none{};
    auto* text = const_cast<wchar_t*>(name);
    if (SUCCEEDED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)))
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value.raw(), nullptr,
                      nullptr);
}

bool askManagementService() {
    ComPtr<ISWbemServices> service;
    ComPtr<ISWbemObjectSet> answer;
    ComPtr<IUnknown> all;
    ComPtr<IEnumVARIANT> elements;
    const Bstr query(L"SELECT * FROM Win32_OperatingSystem"), language(L"WQL");
    if (FAILED(CoGetObject(L"winmgmts:", nullptr, __uuidof(ISWbemServices), service.receiveAny())) ||
        FAILED(service->ExecQuery(query.get(), language.get(), wbemFlagReturnImmediately, nullptr,
                                  answer.receive())) ||
        FAILED(answer->get__NewEnum(all.receive())) ||
        FAILED(all->QueryInterface(IID_IEnumVARIANT, elements.receiveAny())))
        return false;
    for (;;) {
        Variant element;
        if (elements->Next(1, &element.raw(), nullptr) != S_OK)
            return true;
        for (const wchar_t* name : {L"Caption", L"Version"})
            readProperty(*element.raw().pdispVal, name);
    }
}

std::size_t readFile(const std::string& file) {
    std::vector<char> names(16384), lines(16384);
    std::size_t read = 0;
    GetPrivateProfileSectionNamesA(names.data(), 16384, file.c_str());
    for (const char* name = names.data(); *name; name += std::strlen(name) + 1)
        read += GetPrivateProfileSectionA(name, lines.data(), 16384, file.c_str());
    return read;
}

} // namespace

int main() {
    const ComApartment apartment;
    char folder[MAX_PATH] = "";
    GetEnvironmentVariableA("ProgramData", folder, MAX_PATH);
    std::size_t read = 0;
    for (const char* name : {"\\TARVENIK\\Q_Machine.INI", "\\TARVENIK\\QV.ini"})
        read += readFile(std::string(folder) + name);
    return askManagementService() && read > 0 ? 0 : 1;
}
