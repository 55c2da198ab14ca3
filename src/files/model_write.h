// A network as model text, ready for the simulator, and the check of what users type into it.
// Layer: files.
#pragma once
#include "document/network.h"

#include <string>
#include <string_view>

namespace ostrand::files {

/// The whole model text. Sharing must be up to date: a species is written once, for the node
/// without a master.
/// duration    seconds; 0 and below give no duration statement
/// multi_name  the species whose concentration line comes last; empty for none
std::string write_model (const document::Network& network, int duration,
                         std::string_view multi_name = {});

/// Appends the statement of one concentration. A list of three or more evenly spaced values is
/// written as a series, in mM when it begins and ends at 500 uM or above.
/// species  the name as the text has it, without its quotes
void write_concentration (std::string& out, std::string_view species, std::string_view text);

/// Checks an entered text; a fault is reported and gives false, the text stays.
/// concentration  what the simulator reads: a value, a list, a series, with units; otherwise a
///                kinetic constant. Either may be missing
bool check_field (const document::Line& field, bool concentration);

} // namespace ostrand::files
