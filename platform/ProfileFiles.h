#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarv {

/// INI files as Windows reads and writes them (the private-profile functions in their ANSI form).
///
/// Group and entry names are looked up without regard to case; a file name without a folder means the
/// Windows folder. Sizes are buffer sizes in characters, with the terminating NUL; texts cross the border
/// in the system code page, so a character outside it arrives as "?".
class ProfileFiles {
public:
    virtual ~ProfileFiles() = default;

    /// The value, or `fallback` without its trailing blanks when the entry is missing; at most size - 1
    /// characters.
    virtual std::wstring getString(std::wstring_view group, std::wstring_view entry,
                                   std::wstring_view fallback, std::uint32_t size,
                                   std::wstring_view file) = 0;

    /// False when the file cannot be written.
    virtual bool writeString(std::wstring_view group, std::wstring_view entry, std::wstring_view value,
                             std::wstring_view file) = 0;

    /// All group names in file order, each followed by a NUL. A list that does not fit is cut to size - 2
    /// characters.
    virtual std::wstring getSectionNames(std::uint32_t size, std::wstring_view file) = 0;

    /// The lines of the first group of that name, each followed by a NUL, blanks around name and value
    /// removed, comment lines left out. A list that does not fit is cut to size - 2 characters.
    virtual std::wstring getSection(std::wstring_view group, std::uint32_t size, std::wstring_view file) = 0;
};

} // namespace tarv
