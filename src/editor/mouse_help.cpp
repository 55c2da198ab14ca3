// The rules of the mouse help.
#include "editor/mouse_help.h"

#include "editor/bindings.h"
#include "editor/canvas.h"
#include "editor/edit_reactants.h"

#include "sim/concentration.h"

namespace ostrand::editor {
namespace {

using document::Arque;
using document::CharKind;
using document::Node;

/// Fills slots by button and row.
struct Slots {
    MouseHelpSlots slots{};
    std::string_view& operator() (int button, int row) {
        return slots[mouse_help_slot (button, row)];
    }
};

constexpr int plain = 0;
constexpr int shift = 1;
constexpr int ctrl = 2;
constexpr int both = 3;

void background (Slots& at, const Canvas& canvas) {
    const bool nothing = canvas.selection.is_empty ();
    at (3, plain) = word::scroll_network;
    if (nothing) {
        at (1, plain) = word::rubber_band;
        return;
    }
    // A press beside everything lets the selection go, and a drag makes a band from there.
    at (1, plain) = canvas.mode == Mode::text ? word::rubber_band : word::clear_selection;
}

/// What the second button does on an arc.
std::string_view detach_word (const Canvas& canvas, const Arque& arc) {
    const Node* const node = canvas.selection.only_node ();
    const document::Network* const network = node == nullptr ? nullptr : node->network ();
    return network != nullptr && network->can_detach (arc, *node) ? word::detach_reactant
                                                                  : word::none;
}

/// A text is edited with the first button; other presses are for what it belongs to.
void text_of (Slots& at, const Canvas& canvas, const document::GraphBase& owner) {
    at (1, plain) = word::edit_text;
    switch (owner.kind ()) {
    case CharKind::arque:
        at (2, plain) = detach_word (canvas, static_cast<const Arque&> (owner));
        at (3, plain) = word::move_label;
        break;
    case CharKind::node:
        if (has_concentration (static_cast<const Node&> (owner)))
            at (2, plain) = word::set_concentration;
        at (3, plain) = word::change_species;
        at (3, ctrl) = word::set_node_colour;
        break;
    default:
        at (3, plain) = word::set_comp_shape;
        at (3, ctrl) = word::set_comp_colour;
        break;
    }
}

void arc (Slots& at, const Canvas& canvas, const Arque& arc) {
    const bool catalysis = arc.type () == document::arc::catalysis;
    at (1, plain) = word::select_reaction;
    at (3, plain) = word::change_arc_type;
    if (!catalysis) at (3, shift) = word::show_kinetics;
    at (3, ctrl) = word::set_arc_colour;
    if (canvas.selection.is_empty ()) {
        if (!catalysis) at (1, shift) = word::show_stoichiometry;
        return;
    }
    at (1, ctrl) = word::add_to_selection;
    const Node* const node = canvas.selection.only_node ();
    if (node == nullptr) return;
    if (node->group () == document::node::protein_group)
        at (1, shift) = word::add_a_catalyser;
    else if (document::is_reaction (arc.type ()))
        at (1, shift) = word::add_sub_prod;
    at (2, plain) = detach_word (canvas, arc);
}

/// What Shift and a click on a node do with the selection.
std::string_view shift_word (const Canvas& canvas, const Node& node) {
    const Selection& selection = canvas.selection;
    if (const Node* const other = selection.only_node ()) {
        return other == &node ? word::align_node : word::add_reaction;
    }
    if (const Arque* const reaction = selection.only_arc ()) {
        if (!document::is_reaction (reaction->type ())) return word::none;
        const Arque* const link = document::Network::arc_from_to (node, *reaction);
        const bool reactant = link != nullptr && (document::is_product_link (link->type ()) ||
                                                  document::is_substrate_link (link->type ()));
        if (reactant)
            return can_swap_main_reactant (*reaction, node) ? word::swap_main_reactant : word::none;
        return can_be_main_product (*reaction, node) ? word::change_main_prod : word::none;
    }
    return selection.is_empty () ? word::align_node : word::none;
}

void node (Slots& at, const Canvas& canvas, const Node& node) {
    at (1, plain) = word::select_reactant;
    at (1, shift) = shift_word (canvas, node);
    at (1, ctrl) = word::add_to_selection;
    at (3, plain) = word::change_species;
    at (3, shift) = word::display_molecule;
    at (3, ctrl) = word::set_node_colour;
    if (has_concentration (node)) {
        at (2, plain) = word::set_concentration;
        at (2, ctrl) = word::set_concentration;
    }
    if (!canvas.selection.is_empty ()) return;
    if (has_several_concentrations (node)) at (1, both) = word::multiple_conc;
    if (node.is_shared ()) {
        at (2, shift) =
            node.highlight == document::no_highlight ? word::show_clones : word::hide_clones;
    }
}

} // namespace

bool has_concentration (const Node& node) { return node.label () != nullptr; }

bool has_several_concentrations (const Node& node) {
    return node.user_data () && sim::concentration_count (*node.user_data ()) > 1;
}

MouseHelpSlots mouse_help_slots (const Canvas& canvas, const document::Hit& hit) {
    Slots at;
    const bool copies = !canvas.selection.nodes ().empty ();
    if (!hit) {
        background (at, canvas);
        if (copies) at (2, plain) = word::duplicate_selection;
    } else if (hit.line != nullptr && hit.owner != nullptr) {
        text_of (at, canvas, static_cast<const document::GraphBase&> (*hit.owner));
    } else {
        switch (hit.kind ()) {
        case CharKind::arque: arc (at, canvas, static_cast<const Arque&> (*hit.object)); break;
        case CharKind::node: node (at, canvas, static_cast<const Node&> (*hit.object)); break;
        case CharKind::compart:
            at (1, plain) = word::select_comp;
            at (3, plain) = word::set_comp_shape;
            at (3, ctrl) = word::set_comp_colour;
            break;
        case CharKind::std_char:
        case CharKind::line:
        case CharKind::picture:
        case CharKind::network: break;
        }
    }
    return at.slots;
}

} // namespace ostrand::editor
