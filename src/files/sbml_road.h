// By which road does an SBML text come in?
// Layer: files.
#pragma once
#include <string_view>

namespace ostrand::files {

/// True for texts that the model text can say whole, and for those that our own programs write or
/// that are no complete SBML at all: they become a model text that the import lays out. All others
/// are read by the library for SBML.
bool is_plain_sbml (std::string_view text);

/// True when the text begins like XML.
bool looks_like_xml (std::string_view text);

} // namespace ostrand::files
