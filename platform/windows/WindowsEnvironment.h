#pragma once

#include "platform/Environment.h"

namespace tarv {

class WindowsEnvironment final : public Environment {
public:
    std::vector<std::wstring> entries() override;
    std::wstring value(std::wstring_view name) override;
};

} // namespace tarv
