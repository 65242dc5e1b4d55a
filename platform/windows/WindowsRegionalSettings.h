#pragma once

#include "platform/RegionalSettings.h"

namespace tarv {

class WindowsRegionalSettings final : public RegionalSettings {
public:
    std::wstring decimalSeparator() override;
    std::wstring thousandsSeparator() override;
};

} // namespace tarv
