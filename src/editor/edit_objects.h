// New objects, their removal, their kinds and colours.
// Layer: editor (uses document).
#pragma once
#include "editor/canvas.h"

#include <string_view>

namespace ostrand::editor {

/// Where a new object goes, in network units: in view however the network was scrolled.
document::Point start_position (const document::Network& network);

/// A new node; inside the complex when exactly one is selected.
/// font_word, colour  of its label
/// bg_colour          its fill
void new_species (Canvas& canvas, std::string_view name, unsigned type, unsigned bg_colour,
                  unsigned font_word, unsigned colour);
/// A protein whose label is a network of two.
void new_complex (Canvas& canvas);
/// Substrate, product and enzyme of a reaction; they are selected.
void new_reaction (Canvas& canvas);
/// A further reactant of the one selected reaction.
/// arc_type  arc::substrate or arc::product; a reversible reaction gets the reversible form
void add_reactant (Canvas& canvas, std::string_view name, unsigned arc_type);
/// A compartment as large as the network and some room.
void new_compartment (Canvas& canvas, int shape);

/// Removes what is selected, as far as the pointer may pick it up. True when the key that asked for
/// it has done its work; false for one object that may not be removed, or a letter.
bool delete_selection (Canvas& canvas);

/// Gives a kind (for nodes a place in their menu, else a type) to an object; when it is selected,
/// to all selected objects of its class. The links of a reaction follow when it becomes reversible
/// or irreversible.
void set_type (Canvas& canvas, document::GraphBase& object, int value);
/// Likewise a colour: of a node its fill.
void set_colour (Canvas& canvas, document::GraphBase& object, unsigned value);

/// Asks for a kind or a colour by a menu at the pointer, and sets it.
void choose_kind (Canvas& canvas, document::GraphBase& object);
void choose_colour (Canvas& canvas, document::GraphBase& object);

} // namespace ostrand::editor
