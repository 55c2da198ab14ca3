// The menus that pop up on objects, and the colours on offer.
// Layer: editor (uses document).
#pragma once
#include "document/graph_object.h"
#include "editor/world.h"

#include <span>
#include <string_view>
#include <vector>

namespace ostrand::editor {

/// The value of "Custom": a colour is asked for.
inline constexpr unsigned custom_colour = 255;

/// A colour with a name, as a toolkit colour.
struct NamedColour {
    std::string_view label;
    unsigned value;
};

/// The named colours, in the order of every list that offers them.
std::span<const NamedColour> named_colours ();

/// "#%06x" of a colour that is no entry of the colour map, else "Custom".
std::string custom_label (unsigned colour);

/// Kinds that an object can have, by its class. Of an arc, a reaction can only become a reaction of
/// another kind, a link only another link.
std::vector<PopupEntry> kind_menu (const document::GraphBase& object);

/// "Custom", which shows the present colour when it is one, and the named colours.
std::vector<PopupEntry> colour_menu (unsigned present);

} // namespace ostrand::editor
