// The finished parts of a drawing put together: compartments as boxes that hold theirs, all on one
// page.
// Layer: arrange, internal.
#pragma once
#include "arrange/arrange.h"
#include "arrange/copies.h"
#include "arrange/improve.h"
#include "arrange/parts.h"

namespace ostrand::arrange {

/// Sets the places of all nodes of the sketch from those of the parts' drafts; gives the boxes of
/// the compartments, empty for those without a node.
std::vector<Box> place_parts (const Graph& graph, Sketch& sketch, const std::vector<Part>& parts,
                              const std::vector<Draft>& drafts, const Options& options,
                              std::uint64_t chance);

} // namespace ostrand::arrange
