// The legend: which line is which species.
// Layer: viewer.
#pragma once
#include "viewer/label_placer.h"
#include "viewer/scene.h"

namespace ostrand::viewer {

/// What a legend should leave free, device pixels from the top.
struct LegendRoom {
    float column = 0;  // one column may reach down to here
    float columns = 0; // several columns should end above this
};

/// Adds a row for each species that is shown, a piece of line in its colour and "[name]", and keeps
/// the rows' places free of labels.
///
/// One column where there is room. Otherwise columns side by side, no higher than it takes to show
/// whole names, or as high as the window with names cut to its width. Where the window has no room
/// for all, a last row tells how many are missing.
void add_legend (const ResultData& data, const ViewState& state, const ViewSize& size,
                 const LegendRoom& room, const toolkit::TextWidth& text_width, Scene& scene,
                 LabelPlacer& placer);

} // namespace ostrand::viewer
