#pragma once

#include <string>

namespace tarv {

/// Number format of the regional settings in force. Read at every use, so that a change in the control
/// panel counts at once.
class RegionalSettings {
public:
    virtual ~RegionalSettings() = default;

    /// As the system stores it: usually one character, empty or longer where a user made it so.
    virtual std::wstring decimalSeparator() = 0;
    virtual std::wstring thousandsSeparator() = 0;
};

} // namespace tarv
