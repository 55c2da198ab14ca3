// Puts scenes and curves on the current OpenGL context.
// Layer: viewer.
#pragma once
#include "viewer/scene.h"

namespace ostrand::viewer {

/// Smooth lines with transparency; wanted once.
void set_line_blending ();

/// Clears to white, or black in reverse video, over a whole window of that size.
void clear_picture (const ViewSize& size, bool reverse_video);

/// Coordinates are device pixels from the top left corner.
void use_flat_projection (const ViewSize& size);
/// Coordinates are those of the scene.
void use_scene_projection (const ViewState& state, const ViewLayout& layout);

void draw_frame (const ViewSize& size);
void draw_grid (const Scene& scene);
/// One line strip for each plane and species that is shown.
void draw_curves (const ResultData& data, const ViewState& state, const ViewLayout& layout);
/// Patches, lines, those of the legend and texts, in this order.
void draw_flat_parts (const Scene& scene, bool reverse_video);

} // namespace ostrand::viewer
