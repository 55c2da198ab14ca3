// Writes the part of a model that some of its reactions make up, from the lines that were read.
// Layer: gates.
#pragma once
#include "gates/sbml_reader.h"

#include <span>
#include <string>
#include <string_view>

namespace ostrand::gates {

/// The SBML text (Level 2 Version 4, with CellDesigner's annotation) of a sub-model: all
/// compartments, species, aliases and proteins of the model, and the reactions listed, in the order
/// of the list. An id that the model does not have is passed over.
std::string sub_model_text (const SbmlModel& model, std::string_view model_name,
                            std::span<const std::string> reaction_ids);

/// Writes it to a file; the model's name is the file's, without folder and extension. A file that
/// cannot be written is told on standard output.
bool sbmlWriter (const SbmlModel& model, const std::string& path,
                 std::span<const std::string> reaction_ids);

} // namespace ostrand::gates
