// What a model text does not say of a network.
// Layer: files.
#pragma once
#include "document/network.h"

#include <string>
#include <vector>

namespace ostrand::files {

/// One line for each thing that write_model leaves out or that the simulator will refuse: reactions
/// without enzyme or source, arcs that are no statement, nodes without label, constants that are no
/// numbers, concentrations that it does not read, nested networks. Empty when the model says all
/// that is drawn.
std::vector<std::string> model_gaps (const document::Network& network);

} // namespace ostrand::files
