// SBML of other tools as a model text.
// Layer: files.
#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::files {

/// The concentrations and reactions of an SBML text as a model text: with rates where the laws are
/// understood, otherwise as plain statements, which the simulator asks rates for. What is left out
/// is reported. Nothing when the text is refused.
std::optional<std::string> foreign_sbml_to_model (std::string_view text);

} // namespace ostrand::files
