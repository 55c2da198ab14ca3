// Texts and the room they have.
#include "toolkit/text_fit.h"

#include <FL/fl_draw.H>

namespace ostrand::toolkit {

float label_width (const std::string& text, int font, int size) {
    fl_font (font, size);
    return static_cast<float> (fl_width (text.data (), static_cast<int> (text.size ())));
}

std::string fitted_text (const std::string& text, float room, const TextWidth& text_width, int font,
                         int size) {
    if (text_width (text, font, size) <= room) return text;
    std::size_t low = 0; // longest front known to fit
    std::size_t high = text.size ();
    const auto cut = [&text] (std::size_t length) {
        // Not through the bytes of one UTF-8 letter.
        while (length > 0 && (static_cast<unsigned char> (text[length]) & 0xC0) == 0x80) --length;
        return text.substr (0, length) + "...";
    };
    while (low + 1 < high) {
        const std::size_t middle = (low + high) / 2;
        (text_width (cut (middle), font, size) <= room ? low : high) = middle;
    }
    return cut (low);
}

std::string plain_label (const std::string& text) {
    std::string label;
    for (const char c : text) label.append (c == '@' ? 2 : 1, c);
    return label;
}

std::string plain_menu_label (const std::string& text) {
    std::string label;
    for (const char c : text) label.append (c == '@' || c == '&' ? 2 : 1, c);
    return label;
}

} // namespace ostrand::toolkit
