#pragma once

#include <cstdint>
#include <string>

namespace tarv {

struct FileVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t revision = 0;
};

/// The running executable.
class OwnProgram {
public:
    virtual ~OwnProgram() = default;

    /// Full path of the executable file.
    virtual std::wstring path() = 0;

    /// First three numbers of its version resource; zeros when it has none.
    virtual FileVersion version() = 0;
};

} // namespace tarv
