// Cutting a text to the room it has.
// Layer: viewer.
#pragma once
#include "viewer/series_view.h"

#include <string>

namespace ostrand::viewer {

/// The text itself where it fits, else as much of its front as fits with "..." behind.
/// room  device pixels
std::string fitted_text (const std::string& text, float room, const TextWidth& text_width, int font,
                         int size);

/// A label as the toolkit has to be given it so that "@" shows as it is.
std::string plain_label (const std::string& text);

} // namespace ostrand::viewer
