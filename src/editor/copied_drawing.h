// A copied part of a network as a drawing, for programs that do not know networks.
// Layer: editor (uses document, export).
#pragma once
#include "document/network.h"

#include <memory>
#include <string>
#include <string_view>

namespace ostrand::editor {

/// The network of a copied text, laid out, with its upper left corner at the origin. Null for a
/// text that is none.
std::unique_ptr<document::Network> copied_network (std::string_view text);

/// It as SVG, as an export has it. Empty for a text that is no network.
std::string copied_svg (std::string_view text);

/// It as PNG, twice as large as on the canvas at 100 %, and smaller when it would have more than 4096
/// pixels on a side. Empty for a text that is no network.
std::string copied_png (std::string_view text);

} // namespace ostrand::editor
