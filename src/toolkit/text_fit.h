// Texts and the room they have: measuring, cutting, showing every sign as it is.
// Layer: toolkit.
#pragma once
#include <functional>
#include <string>

namespace ostrand::toolkit {

/// Width of a text in one of the toolkit's fonts (0 upright, 1 bold) at a size in units. Whoever
/// makes the function says whether it gives units or device pixels.
using TextWidth = std::function<float (const std::string& text, int font, int size)>;

/// The width in units of a text that a window shows as a label.
float label_width (const std::string& text, int font, int size);

/// The text itself where it fits, else as much of its front as fits with "..." behind.
/// room  in what text_width gives
std::string fitted_text (const std::string& text, float room, const TextWidth& text_width, int font,
                         int size);

/// A label as the toolkit has to be given it so that "@" shows as it is.
std::string plain_label (const std::string& text);

/// A label of a menu item so that "@" and "&" show as they are.
std::string plain_menu_label (const std::string& text);

} // namespace ostrand::toolkit
