#pragma once

#include "platform/Automation.h"

namespace tarv {

class WindowsAutomation final : public Automation {
public:
    Automated<ObjectRef> create(std::wstring_view progId) override;
    Automated<ObjectRef> createFromLibrary(std::wstring_view libraryPath, std::wstring_view classId) override;
    Automated<ObjectRef> bind(std::wstring_view moniker) override;
    ObjectRef errorObject(std::shared_ptr<ErrorRecord> record) override;
};

} // namespace tarv
