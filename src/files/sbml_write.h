// A network as SBML Level 2 Version 4 with its drawing in the annotation.
// Layer: files.
#pragma once
#include "document/network.h"

#include <string>
#include <string_view>

namespace ostrand::files {

/// The whole SBML text, with sharing up to date; the network itself stays as it is.
std::string write_sbml (const document::Network& network, std::string_view model_id);

} // namespace ostrand::files
