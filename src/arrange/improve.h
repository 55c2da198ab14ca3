// From first places to good ones: the stages that a connected drawing goes through.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"
#include "arrange/field.h"

namespace ostrand::arrange {

/// A drawing on its way, with what it is wanted to look like.
struct Draft {
    Drawing drawing;
    Wishes wishes;
};

/// Starts the drawing in layers and by stress, improves each start a little, and goes on with the
/// best. `effort` scales the work.
Draft make_draft (const Drawing& drawing, double effort);

/// Links of nodes with other arcs that are so long, or run through so much, that a copy of the node
/// beside the square says it better. Ascending.
std::vector<int> links_to_split (Draft& draft);

/// Improves a draft to its end: first all costs, then what makes it large.
void finish_draft (Draft& draft, double effort);

} // namespace ostrand::arrange
