// Measuring the toolkit's fonts.
#include "toolkit/font_metrics.h"

#include "document/font_numbers.h"
#include "document/greek.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <string_view>

namespace ostrand::toolkit {

using document::FontFamily;
using document::FontMetrics;

namespace {

constexpr unsigned first_code = 32;
constexpr unsigned last_code = 252;
constexpr unsigned no_code = 128;
constexpr unsigned first_greek = 64;
constexpr unsigned last_greek = 127;
constexpr int probe_size = 24;

float width_of (const std::string& utf8) {
    return static_cast<float> (fl_width (utf8.data (), static_cast<int> (utf8.size ())));
}

float symbol_width (unsigned key, bool greek) {
    float total = 0;
    for (unsigned code = first_greek; code <= last_greek; ++code)
        total += width_of (letter_text (key, code, greek));
    return total;
}

/// The styles of a family whose faces the toolkit lists by name.
unsigned style_of (int attributes) {
    return ((attributes & FL_BOLD) != 0 ? 1U : 0U) | ((attributes & FL_ITALIC) != 0 ? 2U : 0U);
}

} // namespace

void find_fonts () {
    const Fl_Font count = Fl::set_fonts ("*-");
    bool verdana[4] = {};
    bool comic[4] = {};
    for (Fl_Font font = 0; font < count; ++font) {
        int attributes = 0;
        const char* const listed = Fl::get_font_name (font, &attributes);
        if (listed == nullptr) continue;
        const std::string_view name = listed;
        const unsigned style = style_of (attributes);
        if (name.starts_with ("Comic Sans MS") && !comic[style]) {
            comic[style] = true;
            document::set_found_font (FontFamily::comic, style, font);
        }
        if (name.starts_with ("Verdana") && !verdana[style]) {
            verdana[style] = true;
            document::set_found_font (FontFamily::verdana, style, font);
        }
    }
}

std::string letter_text (unsigned key, unsigned code, bool greek) {
    const char letter = static_cast<char> (code);
    const std::string_view one (&letter, 1);
    return document::is_symbol (key) && greek ? document::symbol_to_utf8 (one)
                                              : document::latin1_to_utf8 (one);
}

bool symbol_is_greek () {
    static const bool greek = [] {
        const unsigned key =
            document::font_key (static_cast<unsigned> (FontFamily::symbol), false, false, 0);
        fl_font (document::symbol_font_number, probe_size);
        return symbol_width (key, true) > symbol_width (key, false);
    }();
    return greek;
}

FontMetrics ToolkitMetrics::measure (unsigned key, int pixel_size) const {
    const bool greek = document::is_symbol (key) && symbol_is_greek ();
    FontMetrics metrics;
    metrics.key = key;
    metrics.pixel_size = pixel_size;
    const int number = document::font_number (key);
    fl_font (number, pixel_size);
    metrics.descent = fl_descent ();
    metrics.height = fl_height ();
    metrics.ascent = metrics.height - metrics.descent;
    for (unsigned code = first_code; code <= last_code; ++code) {
        if (code == no_code) continue;
        metrics.widths[code] = width_of (letter_text (key, code, greek));
    }
    return metrics;
}

} // namespace ostrand::toolkit
