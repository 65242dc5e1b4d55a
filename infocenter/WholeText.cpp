#include "infocenter/WholeText.h"

namespace tarv {
namespace {

constexpr std::wstring_view lineEnd = L"\r\n";

}

std::wstring groupText(const IniGroupNode& group) {
    std::wstring text = group.text;
    text.append(lineEnd);
    for (const std::wstring& entry : group.entries)
        text.append(L"    ").append(entry).append(lineEnd);
    return text;
}

std::wstring wholeText(std::wstring_view report, const IniTree& tree) {
    std::wstring text(report);
    for (const IniGroupNode& group : tree.groups)
        text += groupText(group);
    return text;
}

} // namespace tarv
