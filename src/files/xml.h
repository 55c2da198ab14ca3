// The drawing of a network as a block of XML elements, one to a line, for the annotation of an SBML
// file. It is XML in appearance only: templates over lines, labels with raw markup.
// Layer: files.
#pragma once
#include "document/markup.h"
#include "document/network.h"

#include <memory>
#include <string_view>

namespace ostrand::files {

/// Appends the block. Numbers start at 1.
/// depth  below 0 the block starts without a line break; above 0 with one and tabs, and the
///        elements inside stand one deeper; 0: at the margin
void write_xml_block (const document::Network& network, document::PrintState& to, int depth);

/// The network of a text that starts at "<lattrix:network". Faults are reported and leave it as far
/// as it was read.
std::unique_ptr<document::Network> read_xml_block (std::string_view text);

/// The block inside a text: from a line that starts with its first tag to the end of its last tag.
/// Empty when the text has none.
std::string_view find_xml_block (std::string_view text);

} // namespace ostrand::files
