// Which kinetics a rate law is.
// Layer: sbml_in, internal.
#pragma once
#include "sbml_in/quantities.h"

namespace ostrand::sbml_in {

/// Understands the law of a reaction: mass action of its reactants, one way or both, with the
/// modifiers that it multiplies by, or Michaelis-Menten kinetics with one factor a substrate and
/// competitive inhibitors. `why` tells what stood against it.
Law understand (const ::Reaction& reaction, const ModelReaction& read, const Model& model,
                Quantities& quantities, std::string& why);

} // namespace ostrand::sbml_in
