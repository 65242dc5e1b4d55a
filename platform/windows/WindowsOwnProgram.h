#pragma once

#include "platform/OwnProgram.h"

namespace tarv {

class WindowsOwnProgram final : public OwnProgram {
public:
    std::wstring path() override;
    FileVersion version() override;
};

} // namespace tarv
