#include "runtime/RuntimeError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tarv {
namespace {

struct Description {
    std::int32_t number;
    std::wstring_view text;
};

constexpr std::array descriptions{
    Description{error_number::invalidCall, L"Ungültiger Prozeduraufruf oder ungültiges Argument"},
    Description{error_number::overflow, L"Überlauf"},
    Description{error_number::subscriptOutOfRange, L"Index außerhalb des gültigen Bereichs"},
    Description{error_number::typeMismatch, L"Typen unverträglich"},
    Description{error_number::fileNotFound, L"Datei nicht gefunden"},
    Description{error_number::objectNotSet, L"Objektvariable nicht festgelegt"},
    Description{error_number::invalidUseOfNull, L"Unzulässige Verwendung von Null"},
    Description{error_number::cannotCreateObject, L"Objekterstellung durch Komponente nicht möglich"},
};

} // namespace

ErrorRecord runtimeErrorRecord(std::int32_t number) {
    const auto found = std::ranges::find(descriptions, number, &Description::number);
    return {number, std::wstring(found != descriptions.end() ? found->text : L"Laufzeitfehler"), {}};
}

void raise(std::int32_t number) {
    throw RuntimeError(runtimeErrorRecord(number));
}

} // namespace tarv
