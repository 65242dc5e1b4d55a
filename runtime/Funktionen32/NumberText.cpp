#include "runtime/Funktionen32/NumberText.h"

#include "runtime/Funktionen32/Errors.h"
#include "runtime/Funktionen32/Texts.h"
#include "runtime/detail/FormattedNumber.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

namespace tarv {
namespace {

/// The half-way points between doubles have up to 767 significant digits; of what follows only matters
/// whether it is zero.
constexpr int digitLimit = 780;

/// Number of decimal digits that 64 bits always hold.
constexpr int wordDigits = 19;

/// Exponents beyond any text's length; keeps the sums below within their type.
constexpr std::int64_t exponentLimit = 1'000'000'000'000;

/// 10^0 ... 10^22: the powers of ten that a double holds exactly.
constexpr std::array exactPowers{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// The double nearest to `digits` * 10^`exponent` (decimal digits only), half to even; infinity where a
/// double is exceeded.
double nearestDouble(std::string_view digits, int exponent) {
    // Without a point the text means the same in every locale.
    return std::strtod((std::string(digits) + 'e' + std::to_string(exponent)).c_str(), nullptr);
}

/// Walks a text as if it had no blanks.
class Scanner {
public:
    explicit Scanner(std::wstring_view text) : at_(text.data()), end_(text.data() + text.size()) {
        skipBlanks();
    }

    /// The character at hand; NUL at the end, which belongs to no number either.
    wchar_t peek() const { return at_ != end_ ? *at_ : L'\0'; }

    void advance() {
        ++at_;
        skipBlanks();
    }

    bool accept(wchar_t c) {
        if (peek() != c)
            return false;
        advance();
        return true;
    }

private:
    void skipBlanks() {
        while (at_ != end_ && *at_ == L' ')
            ++at_;
    }

    const wchar_t* at_;
    const wchar_t* end_;
};

/// Significant digits (leading zeros left out) with their decimal exponent.
class Digits {
public:
    void read(Scanner& scanner) {
        readPart(scanner, 0);
        if (scanner.accept(L'.'))
            readPart(scanner, -1);
    }

    bool none() const { return count_ == 0; }

    double times10To(std::int64_t exponent) {
        exponent += exponent_;
        // The places before the decimal point say roughly how large the number is.
        const std::int64_t places = count_ + exponent;
        if (places > 310)
            raise(error_number::overflow);
        if (places < -330)
            return 0;
        constexpr int exactLimit = static_cast<int>(exactPowers.size()) - 1;
        if (count_ <= wordDigits && word_ <= std::uint64_t{1} << 53 && exponent >= -exactLimit &&
            exponent <= exactLimit) {
            // Both operands are exact, so the one operation rounds correctly.
            const auto whole = static_cast<double>(static_cast<std::int64_t>(word_));
            return exponent < 0 ? whole / exactPowers[static_cast<std::size_t>(-exponent)]
                                : whole * exactPowers[static_cast<std::size_t>(exponent)];
        }
        if (tail_) {
            // Digits that were not kept: one more digit 1 is as good for rounding.
            digits_[static_cast<std::size_t>(count_++)] = '1';
            --exponent;
        }
        const double number =
            nearestDouble({digits_.data(), static_cast<std::size_t>(count_)}, static_cast<int>(exponent));
        if (std::isinf(number))
            raise(error_number::overflow);
        return number;
    }

private:
    void readPart(Scanner& scanner, int exponentStep) {
        for (wchar_t c = scanner.peek(); isDigit(c); scanner.advance(), c = scanner.peek()) {
            if (count_ == 0 && c == L'0') {
                exponent_ += exponentStep;
            } else if (count_ < digitLimit) {
                if (count_ < wordDigits)
                    word_ = word_ * 10 + static_cast<std::uint64_t>(c - L'0');
                digits_[static_cast<std::size_t>(count_++)] = static_cast<char>(c);
                exponent_ += exponentStep;
            } else {
                tail_ = tail_ || c != L'0';
                exponent_ += exponentStep + 1;
            }
        }
    }

    std::array<char, digitLimit + 1> digits_;
    int count_ = 0;
    std::uint64_t word_ = 0;
    bool tail_ = false;
    std::int64_t exponent_ = 0;
};

std::int64_t readExponent(Scanner& scanner) {
    if (!scanner.accept(L'E') && !scanner.accept(L'e'))
        return 0;
    const bool negative = scanner.accept(L'-');
    if (!negative)
        scanner.accept(L'+');
    std::int64_t exponent = 0;
    for (wchar_t c = scanner.peek(); isDigit(c); scanner.advance(), c = scanner.peek())
        if (exponent < exponentLimit)
            exponent = exponent * 10 + (c - L'0');
    return negative ? -exponent : exponent;
}

} // namespace

double readNumber(std::wstring_view text) {
    Scanner scanner(text);
    const bool negative = scanner.accept(L'-');
    if (!negative)
        scanner.accept(L'+');
    Digits digits;
    digits.read(scanner);
    if (digits.none())
        return 0;
    const double number = digits.times10To(readExponent(scanner));
    return negative ? -number : number;
}

std::wstring numberText(double number, std::wstring_view decimalSeparator) {
    constexpr NumberPicture allDigits{1, true, 0, 400};
    TextBuffer text;
    appendFormatted(text, number, allDigits, L'.');
    const std::size_t point = text.find(L'.');
    std::wstring result(text.view().substr(0, point));
    if (point + 1 < text.size())
        result.append(decimalSeparator).append(text.view().substr(point + 1));
    return result;
}

static bool isNothing(const Value& value) {
    return std::holds_alternative<Empty>(value) || std::holds_alternative<Null>(value) ||
           std::holds_alternative<Missing>(value);
}

std::wstring invariantText(const Value& value, std::wstring_view decimalSeparator) {
    return std::visit(
        [=](const auto& held) -> std::wstring {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::wstring>)
                return held;
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? L"-1" : L"0";
            else if constexpr (std::is_same_v<Held, Date>)
                return numberText(held.days, decimalSeparator);
            else if constexpr (std::is_arithmetic_v<Held>)
                return numberText(held, decimalSeparator);
            else
                return {};
        },
        value);
}

std::wstring textOf(const Value& value, std::wstring_view fallback) {
    return isNothing(value) ? std::wstring(fallback) : invariantText(value);
}

double numberOf(const Value& value, double fallback) {
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return isNothing(value) ? fallback : readNumber(invariantText(value));
}

} // namespace tarv
