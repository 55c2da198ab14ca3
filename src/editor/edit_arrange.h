// How the drawing is arranged and shown: alignment, shared species, colours by status, fog.
// Layer: editor (uses document, tidy).
#pragma once
#include "editor/canvas.h"

namespace ostrand::editor {

/// Aligns all nodes; true, and a step of the history, when one moved.
bool align_nodes (Canvas& canvas);
/// Aligns one node with its neighbours.
void align_one (Canvas& canvas, document::Node& node);
/// What hangs on the reactions of a moved node follows it; true when a node other than that one
/// moved.
bool smart_move (Canvas& canvas, document::Node& node);
/// Arranges what is selected, with the nodes of selected arcs and compartments, or the whole
/// network when nothing is; true, and a step of the history, when something changed.
bool arrange (Canvas& canvas);
/// Finds which nodes are one species.
void share_clones (Canvas& canvas);
/// Fills molecules by whether they are only consumed, only produced, or both.
void color_reactants (Canvas& canvas);
/// Shows what is selected faintly, or clearly again.
void fog_selection (Canvas& canvas, bool on);

} // namespace ostrand::editor
