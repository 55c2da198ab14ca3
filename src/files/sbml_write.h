// A network as SBML Level 2 Version 4 with its drawing in the annotation.
// Layer: files.
#pragma once
#include "document/network.h"

#include <string>
#include <string_view>

namespace ostrand::files {

/// The whole SBML text. Sharing is brought up to date, and compartments, species and reactions get
/// the numbers of their SBML ids.
std::string write_sbml (document::Network& network, std::string_view model_id);

} // namespace ostrand::files
