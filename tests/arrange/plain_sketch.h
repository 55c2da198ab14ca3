// A picture of a layout in this program's look, for people to look at.
#pragma once
#include "arrange/graph.h"

#include <string>

namespace ostrand::testing {

/// SVG text: compartments, straight arcs with squares and heads, nodes with names.
std::string sketch (const arrange::Graph& graph, const arrange::Layout& layout);

} // namespace ostrand::testing
