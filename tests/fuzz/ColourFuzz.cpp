// A colour text gives a number or one of the two documented errors; what we write we read again.
#include "runtime/Funktionen32/Errors.h"
#include "tests/fuzz/FuzzInput.h"
#include "xml/XmlText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tarv;
    FuzzInput input(bytes, size);
    const std::uint8_t red = input.byte(), green = input.byte(), blue = input.byte();
    require(colorValue(colorText(red, green, blue)) == red + 256 * green + 65536 * blue);
    try {
        colorValue(input.text());
    } catch (const RuntimeError& error) {
        const auto number = error.record().number;
        require(number == error_number::overflow || number == error_number::subscriptOutOfRange);
    }
    return 0;
}
