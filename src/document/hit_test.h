// HitQuery: what a hit test is asked beside the point.
// Layer: document.
#pragma once

namespace ostrand::document {

class Node;

// How far beside an object a point still hits it, in network pixels.
inline constexpr float node_margin = 4;
inline constexpr float arc_margin = 4;
inline constexpr float residu_margin = 1;

struct HitQuery {
    bool kinetics = true;       // labels and residus of arcs are there
    bool stoichiometry = false; // likewise stoichiometries
    const Node* skip = nullptr; // the node of a drag, which is looked through; null for none
};

/// By the process-wide switches.
HitQuery hit_query_of_switches ();

} // namespace ostrand::document
