// Counts as decimal lines.
#include "sim/decimal_lines.h"

#include <array>
#include <cstring>

namespace ostrand::sim {
namespace {

constexpr std::uint32_t ten_thousand = 10000;

/// The numbers below 10000 with all four digits.
struct FourDigits {
    std::array<char, 4 * ten_thousand> digits{};
    constexpr FourDigits () {
        for (std::uint32_t i = 0; i < ten_thousand; ++i) {
            std::uint32_t rest = i;
            for (std::uint32_t place = 4; place-- > 0; rest /= 10) {
                digits[4 * i + place] = static_cast<char> ('0' + rest % 10);
            }
        }
    }
};

/// Likewise without leading zeros and with a line end, in entries of eight bytes.
struct ShortLines {
    std::array<char, 8 * ten_thousand> lines{};
    std::array<std::uint8_t, ten_thousand> digits{};
    constexpr ShortLines () {
        for (std::uint32_t i = 0; i < ten_thousand; ++i) {
            std::uint8_t length = 1;
            for (std::uint32_t rest = i / 10; rest != 0; rest /= 10) ++length;
            digits[i] = length;
            std::uint32_t rest = i;
            for (std::uint32_t place = length; place-- > 0; rest /= 10) {
                lines[8 * i + place] = static_cast<char> ('0' + rest % 10);
            }
            lines[8 * i + length] = '\n';
        }
    }
};

constexpr FourDigits four_digits;
constexpr ShortLines short_lines;

char* put_leading (char* to, std::uint32_t number) {
    std::memcpy (to, &short_lines.lines[8 * std::size_t{number}], 8);
    return to + short_lines.digits[number];
}

char* put_four (char* to, std::uint32_t number) {
    std::memcpy (to, &four_digits.digits[4 * std::size_t{number}], 4);
    return to + 4;
}

} // namespace

char* put_line (char* to, std::uint32_t count) {
    if (count < ten_thousand) return put_leading (to, count) + 1;
    const std::uint32_t high = count / ten_thousand;
    if (high < ten_thousand) {
        to = put_leading (to, high);
    } else {
        to = put_leading (to, high / ten_thousand);
        to = put_four (to, high % ten_thousand);
    }
    to = put_four (to, count % ten_thousand);
    *to = '\n';
    return to + 1;
}

} // namespace ostrand::sim
