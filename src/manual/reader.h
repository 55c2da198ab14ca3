// From HTML to blocks.
// Layer: manual.
#pragma once
#include "manual/document.h"

#include <string_view>

namespace ostrand::manual {

/// Pixels that a paragraph leaves below itself.
inline constexpr int paragraph_gap = 10;

/// The letters of "font size=N", in pixels: 12 and 2 more for each step, 1 to 7.
int size_of_step (int step);

/// Reads a page: "html", a head, a body with its elements. Whatever is wrong is told in `faults`,
/// and what could be read is there. Tags of other names say nothing.
Document read_html (std::string_view source);

} // namespace ostrand::manual
