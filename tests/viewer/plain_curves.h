// The plain drawing of curves, every point of every series: what the fast one is held against.
#pragma once
#include "viewer/series_view.h"

namespace ostrand::viewer {

/// Draws on the current context; the projection is that of the scene.
void draw_plain_curves (const ResultData& data, const ViewState& state, const ViewLayout& layout);

} // namespace ostrand::viewer
