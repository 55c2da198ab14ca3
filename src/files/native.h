// Whole documents in native text: the header line, one network record, a newline.
// Layer: files.
#pragma once
#include "document/network.h"

#include <memory>
#include <string>
#include <string_view>

namespace ostrand::files {

/// The version that is written.
inline constexpr double native_version = 1.2;

/// True when the first line of a text is one that native files begin with: a comment, or a network
/// record's head.
bool is_native_text (std::string_view text);

/// Likewise for a file that is merged into another: a comment must be the header itself.
bool is_insertable_text (std::string_view text);

/// Reads a native text. Faults inside are reported and leave the network as far as it was read;
/// null, with a message, when the text holds no network at all.
std::unique_ptr<document::Network> read_native (std::string_view text);

/// The native text of a network.
std::string write_native (const document::Network& network);
/// Likewise, and which number each object has in it.
std::string write_native (const document::Network& network, document::Numbering& numbering);

} // namespace ostrand::files
