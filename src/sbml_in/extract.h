// From the library's objects to what is drawn.
// Layer: sbml_in, internal.
#pragma once
#include "sbml_in/model.h"

#include <string>
#include <vector>

#include <sbml/SBMLTypes.h>

namespace ostrand::sbml_in {

/// Reads a model. What cannot stand in a network is left out alone and named in `notes`, a line
/// each.
Model extract (const ::Model& from, std::vector<std::string>& notes);

/// Places of the first layout that has any.
Places extract_places (const ::Model& from, const Model& model);

/// A name as a label's markup. A script is meant only where "_" or "^" is followed by digits or a
/// brace.
std::string label_markup (const std::string& name);

/// Names of species as labels, in the markup of labels, each different from all others: equal names
/// are told apart by compartment, else by id.
void name_species (Model& model);

} // namespace ostrand::sbml_in
