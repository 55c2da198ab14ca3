// Reading a model text into the tables.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <stop_token>
#include <string_view>

namespace ostrand::sim {

/// Reads a whole model. False at its first fault, which has been reported then; the tables hold
/// what was read before it and must be reset. Names, conditions and steps are complete afterwards,
/// empty product slots point at the spare slot behind the last species.
/// A stop that is asked for ends the reading too, and nothing is reported.
bool read_model (std::string_view text, ModelTables& tables, const std::stop_token& stop = {});

} // namespace ostrand::sim
