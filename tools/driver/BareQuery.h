#pragma once

#include "win/ComPtr.h"
#include "win/Variant.h"

#include <wbemdisp.h>

namespace tarv {

/// What the info centre asks the management service, by bare calls: `use` gets each element of the answer.
/// How many there were; 0 where the service does not answer.
template <class Use>
int askManagementService(Use use) {
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
        return 0;
    for (int count = 0;; ++count) {
        Variant element;
        if (elements->Next(1, &element.raw(), nullptr) != S_OK)
            return count;
        use(*element.raw().pdispVal);
    }
}

} // namespace tarv
