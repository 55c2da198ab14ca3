// The drawing in the layout and render packages.
// Layer: sbml_out, internal.
#pragma once
#include "sbml_out/names.h"
#include "sbml_out/reactions.h"

#include <vector>

class Model; // of the library

namespace ostrand::sbml_out {

/// Adds a layout with the places of compartments, nodes and arcs, and a style for each colour.
void write_drawing (const document::Network& network, const std::vector<Equation>& equations,
                    const Ids& ids, ::Model& model);

} // namespace ostrand::sbml_out
