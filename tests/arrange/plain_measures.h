// What a layout is worth, counted plainly and by other means than the arranging code.
#pragma once
#include "arrange/graph.h"

namespace ostrand::testing {

struct Measures {
    int nodes = 0;
    int overlaps = 0;        // pairs of nodes that overlap
    int covered = 0;         // squares that a node covers, even by a corner
    int square_overlaps = 0; // pairs of squares that overlap
    int through_nodes = 0;   // arcs that run over a node
    int off_page = 0;        // nodes that are not wholly on the page
    int outside_box = 0;     // nodes outside the box of their compartment, or inside another one's
    int box_faults = 0;  // pairs of compartments whose boxes neither nest as told nor keep apart
    int crossings = 0;   // of arcs that share no end
    double page_use = 0; // sum of the boxes of nodes and squares / area of the page
    double sides = 1;    // longer side / shorter side of the page
};

Measures measure (const arrange::Graph& graph, const arrange::Layout& layout);

} // namespace ostrand::testing
