// What is a whole drawing with its page worth?
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"

namespace ostrand::arrange {

inline constexpr double good_sides = 2; // longer side / shorter one of a page

/// Around all nodes and all boxes that hold something (those have a width).
Box page_of (const Drawing& drawing, const std::vector<Box>& boxes);

/// What a drawing costs where it stands, in the same measure as a field (field.h), with the page
/// that it needs: for each element, what of the page is empty, and sides that are too unlike.
double cost_on_page (Drawing& drawing, const Box& page);

} // namespace ostrand::arrange
