// Links and reactants.
#include "editor/edit_reactants.h"

#include "document/line.h"
#include "document/link_rules.h"

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::GraphBase;
using document::Line;
using document::Network;
using document::Node;

void link_nodes (Canvas& canvas, GraphBase& target) {
    Node* const from = canvas.selection.only_node ();
    if (from == nullptr) return;
    const document::LinkOutcome outcome = document::link_objects (*from, target);
    if (outcome.refusal != nullptr) canvas.message (outcome.refusal);
    if (outcome.arc != nullptr) canvas.finish_edit (Edit::structure ());
}

bool can_be_main_product (const Arque& reaction, const Node& node) {
    const Node* const old = reaction.dest_node ();
    const auto kind_of = [] (const Node& n) { return n.type () & ~document::node::shared_bit; };
    return document::is_reaction (reaction.type ()) && old != nullptr && old != &node &&
           reaction.source () != &node && reaction.owner_network () == node.network () &&
           kind_of (*old) == kind_of (node);
}

bool can_swap_main_reactant (const Arque& reaction, const Node& node) {
    const Arque* const link = Network::arc_from_to (node, reaction);
    if (link == nullptr) return false;
    if (document::is_substrate_link (link->type ())) return true;
    return document::is_product_link (link->type ()) && reaction.dest_node () != nullptr &&
           reaction.source () != &node;
}

void change_main_product (Canvas& canvas, Node& node) {
    Arque* const reaction = canvas.selection.only_arc ();
    if (reaction == nullptr || !can_be_main_product (*reaction, node)) return;
    if (!node.network ()->change_main_product (*reaction, node)) return;
    canvas.set_hover (nullptr);
    canvas.finish_edit (Edit::structure ());
}

void swap_main_reactant (Canvas& canvas, Node& node) {
    Arque* const reaction = canvas.selection.only_arc ();
    if (reaction == nullptr || !can_swap_main_reactant (*reaction, node)) return;
    if (!node.network ()->swap_main_reactant (*reaction, node)) return;
    canvas.set_hover (nullptr);
    canvas.finish_edit (Edit::structure ());
}

void detach_from_reaction (Canvas& canvas, Arque& arc, Node& node) {
    Network* const network = node.network ();
    if (network == nullptr || !network->can_detach (arc, node)) return;
    network->clone_node_for_arc (arc, node);
    canvas.finish_edit (Edit::structure ());
}

void fuse_test (Canvas& canvas, Node& dragged) {
    const document::Hit hit =
        canvas.find_at (canvas.gesture.pointer_x, canvas.gesture.pointer_y, &dragged);
    GraphBase* under = nullptr;
    if (hit)
        under =
            hit.owner != nullptr ? static_cast<GraphBase*> (hit.owner) : hit.object->find_object ();
    Node* target = nullptr;
    if (under != nullptr && under->kind () == CharKind::node && under != &dragged) {
        auto& candidate = static_cast<Node&> (*under);
        if (candidate.group () == dragged.group () && candidate.network () == dragged.network () &&
            Network::can_fuse (dragged, candidate))
            target = &candidate;
    }
    canvas.gesture.fuse_target = target;
    canvas.set_fuse_shown (target);
}

void fuse_selected (Canvas& canvas, Node& target, Node& dragged) {
    if (target.network () == nullptr) return;
    target.network ()->fuse_nodes (target, dragged);
    canvas.selection.clear ();
    canvas.finish_edit (Edit::structure ());
    canvas.tell_selection_count ();
}

bool move_label (Arque& arc, Line& text, float x, float y) {
    if (text.is_empty ()) return false; // no file holds the place of a text without letters
    const bool near_source = &text == arc.label () || &text == arc.stoech_src ();
    const document::Point place =
        near_source ? arc.geometry ().label_pos : arc.geometry ().residu_pos;
    return text.set_offset (x, y, -place.x, static_cast<int> (-place.y) + text.get_ascent ());
}

void remove_field (Canvas& canvas, Arque& arc, Line& text) {
    if (&text == arc.label ())
        arc.take_label (nullptr);
    else if (&text == arc.residu ())
        arc.take_residu (nullptr);
    else if (&text == arc.stoech_src ())
        arc.take_stoech_src (nullptr);
    else if (&text == arc.stoech_dest ())
        arc.take_stoech_dest (nullptr);
    else
        return;
    canvas.finish_edit (Edit::labels (arc));
}

} // namespace ostrand::editor
