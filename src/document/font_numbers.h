// Fonts by the toolkit's numbers, in which screen and PDF agree.
// Layer: document.
#pragma once
#include "document/font.h"

#include <array>

namespace ostrand::document {

/// Number of the Symbol font; 0 to 11 are Helvetica, Courier and Times, four styles each.
inline constexpr int symbol_font_number = 12;

/// Styles in the order of the tables.
constexpr unsigned style_index (unsigned key) {
    return (is_bold (key) ? 1U : 0U) | (is_italic (key) ? 2U : 0U);
}

/// The toolkit's font number of a key: plain, bold, italic and bold italic of its family in a row.
/// Verdana and Comic Sans MS have the numbers that a screen found for them; until then, and where
/// there are none, they are the Times faces.
int font_number (unsigned key);

/// A screen found the face of a family that it has to look for.
/// family  verdana or comic; others are not looked for
/// style   as style_index gives it
void set_found_font (FontFamily family, unsigned style, int number);

/// The numbers found, Comic Sans MS first, then Verdana, four styles each; faces that nobody found
/// have those of Times.
const std::array<int, 8>& found_fonts ();

} // namespace ostrand::document
