// Ids and names of what is written.
// Layer: sbml_out, internal.
#pragma once
#include "document/network.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace ostrand::sbml_out {

/// What each object is called in the file.
struct Ids {
    std::map<const document::Compart*, std::string> compartments;
    std::map<const document::Node*, std::string> species; // of masters
    std::map<const document::Arque*, std::string> reactions;
    /// By link; the reaction's own arc stands for its source (false) and destination (true).
    std::map<std::pair<const document::Arque*, bool>, std::string> references;
};

/// A text as an id: letters, digits and "_", no digit first.
std::string valid_id (std::string_view text);
/// A text without the characters that XML cannot hold.
std::string xml_letters (std::string_view text);
/// Likewise as content of an element.
std::string xml_escaped (std::string_view text);
/// What a label shows, in one line; empty without one.
std::string shown_name (const document::GraphBase& object);

} // namespace ostrand::sbml_out
