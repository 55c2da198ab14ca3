// The sliders under the view: one for each varying concentration but the last, and one for time.
// Layer: viewer.
#pragma once
#include "viewer/curve_widget.h"

namespace ostrand::viewer {

/// Height of the room under the view, units.
int slider_room (const ResultData& data);

/// Makes the sliders in a group at that place, 900 wide, and connects them with the view.
Fl_Group* make_sliders (CurveWidget& view, int x, int y);

} // namespace ostrand::viewer
