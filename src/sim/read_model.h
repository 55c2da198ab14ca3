// Reading a model text into the tables.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <string_view>

namespace ostrand::sim {

/// Reads a whole model. False at its first fault, which has been reported then; the tables hold
/// what was read before it and must be reset. Names, conditions and steps are complete afterwards,
/// empty product slots point at the spare slot behind the last species.
bool read_model (std::string_view text, ModelTables& tables);

/// Molecules of a concentration in mM, truncated; 2^32 or more when it does not fit a count.
double molecules_of (float milli_molar);

} // namespace ostrand::sim
