#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarv {

/// The process environment, read in wide characters.
class Environment {
public:
    virtual ~Environment() = default;

    /// All entries "NAME=value" in the system's order, hidden ones ("=C:=C:\x") included.
    virtual std::vector<std::wstring> entries() = 0;

    /// The value as it stands; the name is looked up without regard to case. Empty when missing.
    virtual std::wstring value(std::wstring_view name) = 0;
};

} // namespace tarv
