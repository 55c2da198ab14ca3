// One whole arrangement of a graph. Several with other chances are made and compared.
// Layer: arrange, internal.
#pragma once
#include "arrange/arrange.h"
#include "arrange/copies.h"
#include "arrange/improve.h"
#include "arrange/parts.h"

#include <cstdint>

namespace ostrand::arrange {

/// What all attempts at a graph begin with.
struct Ground {
    Sketch sketch;
    std::vector<Part> parts;
    std::vector<std::vector<Start>> starts; // of each part
    bool apart = false;                     // some arcs lead from one part to another
};

Ground make_ground (const Graph& graph, const Options& options);

struct Attempt {
    Sketch sketch;          // with places
    std::vector<Box> boxes; // of the compartments, empty for those without a node
    Box page;               // around everything, without a margin
    double cost = 0;        // comparable between attempts on the same ground
};

/// Arranges the graph once.
/// options.effort  of this attempt
/// chance          another number gives another drawing, as good on the average
Attempt attempt (const Graph& graph, const Ground& ground, const Options& options,
                 std::uint64_t chance);

} // namespace ostrand::arrange
