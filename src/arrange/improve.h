// From first places to good ones: the stages that a connected drawing goes through.
// Layer: arrange, internal.
#pragma once
#include "arrange/drawing.h"
#include "arrange/field.h"
#include "arrange/start.h"

#include <cstdint>
#include <vector>

namespace ostrand::arrange {

/// A drawing on its way, with what it is wanted to look like.
struct Draft {
    Drawing drawing;
    Wishes wishes;
};

struct Start {
    StartKind kind;
    Drawing drawing; // with first places
};

/// Starts a connected drawing in layers and by stress, as far as Graphviz answers; by stress only
/// when there is little effort to spend. None for a drawing without reactions.
std::vector<Start> make_starts (const Drawing& drawing, double effort);

/// Improves each start of a drawing a little and gives the best. `effort` scales the work; another
/// `chance` gives another draft.
Draft make_draft (const Drawing& drawing, const std::vector<Start>& starts, double effort,
                  std::uint64_t chance);

/// Links of nodes with other arcs that are so long, or run through so much, that a copy of the node
/// beside the square says it better. Ascending.
std::vector<int> links_to_split (Draft& draft);

/// Improves a draft to its end: first all costs, then what makes it large.
void finish_draft (Draft& draft, double effort, std::uint64_t chance);

} // namespace ostrand::arrange
