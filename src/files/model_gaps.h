// What a model text does not say of a network.
// Layer: files.
#pragma once
#include "document/network.h"

#include <string>
#include <vector>

namespace ostrand::files {

/// One thing that is not said.
struct ModelGap {
    std::string text;                            // Latin-1
    const document::GraphBase* object = nullptr; // where it is, in the network
};

/// One for each thing that write_model leaves out or that the simulator will refuse: reactions
/// without enzyme or source, arcs that are no statement, nodes without label, constants that are no
/// numbers, concentrations that it does not read, nested networks. Empty when the model says all
/// that is drawn.
std::vector<ModelGap> find_model_gaps (const document::Network& network);

/// Their texts.
std::vector<std::string> model_gaps (const document::Network& network);

} // namespace ostrand::files
