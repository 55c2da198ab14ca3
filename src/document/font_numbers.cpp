// The family table.
#include "document/font_numbers.h"

namespace ostrand::document {
namespace {

constexpr int courier_first = 4;
constexpr int times_first = 8;
constexpr std::size_t verdana_slot = 4; // Comic Sans MS stands before it

struct FontNumbers {
    std::array<int, 8> found{8, 9, 10, 11, 8, 9, 10, 11};
};

FontNumbers& font_numbers () {
    static FontNumbers numbers;
    return numbers;
}

} // namespace

int font_number (unsigned key) {
    const unsigned style = style_index (key);
    switch (static_cast<FontFamily> (font_family (key))) {
    case FontFamily::verdana: return font_numbers ().found[verdana_slot + style];
    case FontFamily::comic: return font_numbers ().found[style];
    case FontFamily::arial: return static_cast<int> (style);
    case FontFamily::courier: return courier_first + static_cast<int> (style);
    case FontFamily::symbol: return symbol_font_number;
    case FontFamily::times: break;
    }
    return times_first + static_cast<int> (style);
}

void set_found_font (FontFamily family, unsigned style, int number) {
    if (style > 3) return;
    if (family == FontFamily::verdana) font_numbers ().found[verdana_slot + style] = number;
    if (family == FontFamily::comic) font_numbers ().found[style] = number;
}

const std::array<int, 8>& found_fonts () { return font_numbers ().found; }

} // namespace ostrand::document
