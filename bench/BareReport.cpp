// What TarvReport asks Windows for, and nothing else: the query to the management service, and all groups of
// both configuration files.
#include "tools/driver/BareQuery.h"
#include "win/ComApartment.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace tarv;

void readProperty(IDispatch& object, const wchar_t* name) {
    DISPID id = 0;
    Variant value;
    DISPPARAMS none{};
    auto* text = const_cast<wchar_t*>(name);
    if (SUCCEEDED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)))
        object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none,
                      &value.raw(), nullptr, nullptr);
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
    const int systems = askManagementService([](IDispatch& system) {
        for (const wchar_t* name : {L"Caption", L"Version"})
            readProperty(system, name);
    });
    return systems > 0 && read > 0 ? 0 : 1;
}
