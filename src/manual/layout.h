// Places of a page's blocks for a width.
// Layer: manual.
#pragma once
#include "manual/document.h"

namespace ostrand::manual {

inline constexpr int left_margin = 8;  // pixels
inline constexpr int list_indent = 40; // of a block quote and of each level of lists
inline constexpr int item_hang = 16;   // an item's mark stands this far left of its text
inline constexpr int bar_width = 12;   // kept free for the scroll bar

/// Takes the sizes of all blocks; once for a page, before its first layout.
void measure_page (Document& page, const PageMeasure& measure);

/// Places all blocks, makes the list of lines and the height.
/// width  of the window in pixels, scroll bar included
void layout_page (Document& page, const PageMeasure& measure, int width);

} // namespace ostrand::manual
