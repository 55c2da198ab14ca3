// Who takes part in which reaction: links, main reactants, detaching, fusing; texts of arcs moved.
// Layer: editor (uses document).
#pragma once
#include "editor/canvas.h"

namespace ostrand::editor {

/// Links the one selected node with an object. A refusal goes to the canvas's message.
void link_nodes (Canvas& canvas, document::GraphBase& target);

/// A node of the kind of the reaction's product, which is neither that one nor its source.
bool can_be_main_product (const document::Arque& reaction, const document::Node& node);
/// A further reactant of the reaction; its own source cannot become its product.
bool can_swap_main_reactant (const document::Arque& reaction, const document::Node& node);
/// The node becomes the main product of the one selected reaction.
void change_main_product (Canvas& canvas, document::Node& node);
/// The node, a further reactant of the one selected reaction, and the main one change places.
void swap_main_reactant (Canvas& canvas, document::Node& node);
/// The node's part in an arc goes to a copy of the node, when it has another part elsewhere.
void detach_from_reaction (Canvas& canvas, document::Arque& arc, document::Node& node);

/// While a node is dragged: the node under the pointer that it would be fused with.
void fuse_test (Canvas& canvas, document::Node& dragged);
/// The dragged node is fused with the target.
void fuse_selected (Canvas& canvas, document::Node& target, document::Node& dragged);

/// Moves a text of an arc to an offset from its own place, not beyond the network's left and top
/// edge. True when it moved.
bool move_label (document::Arque& arc, document::Line& text, float x, float y);

/// Takes a text off an arc.
void remove_field (Canvas& canvas, document::Arque& arc, document::Line& text);

} // namespace ostrand::editor
