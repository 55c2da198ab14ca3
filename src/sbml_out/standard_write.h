// A network as SBML that every tool reads: Level 3 Version 2 with the layout and render packages.
// Layer: sbml_out.
#pragma once
#include "document/network.h"

#include <filesystem>
#include <string>

namespace ostrand::sbml_out {

/// The text of a network. Amounts are umol, volumes litres, so concentrations are uM; times are
/// seconds. Kinetics are those that the simulator has: mass action, and Michaelis-Menten with one
/// factor a substrate. The model's own annotation holds the native text, so that our reader gets
/// the very same network back. Nothing is thrown; an empty result means that the library failed.
/// The network must be laid out.
/// model_id  what the model is called; letters that an id may not have become "_"
std::string write_standard (const document::Network& network, const std::string& model_id);

/// The same into a file, whose name names the model. False with the reason in `error` when that
/// fails; then nothing is left.
bool export_standard (const document::Network& network, const std::filesystem::path& path,
                      std::string& error);

} // namespace ostrand::sbml_out
