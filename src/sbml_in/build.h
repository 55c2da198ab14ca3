// From a model to the network that draws it.
// Layer: sbml_in, internal.
#pragma once
#include "sbml_in/model.h"

#include "document/network.h"

#include <memory>

namespace ostrand::sbml_in {

/// The network of a model: each species a node, each reaction one arc with its links, compartments
/// that hold a species as boxes. Nodes stand where the model's places say, else on a plain grid.
std::unique_ptr<document::Network> build_network (const Model& model);

} // namespace ostrand::sbml_in
