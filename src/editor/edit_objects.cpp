// Making and removing objects, and changing what they are.
#include "editor/edit_objects.h"

#include "document/line.h"
#include "editor/popup_menus.h"

#include <array>

namespace ostrand::editor {

using document::Arque;
using document::CharKind;
using document::GraphBase;
using document::Line;
using document::Network;
using document::Node;

namespace {

constexpr unsigned protein_fill = 247;
constexpr unsigned molecule_fill = 3;
constexpr float reactant_distance = 40; // of a further reactant below the reaction's source

/// A node with a label in the running style, in a network; it finds its compartment.
Node& put_node (Network& network, float x, float y, unsigned type, unsigned fill,
                std::unique_ptr<document::Char> label) {
    auto made = std::make_unique<Node> (x, y, type, fill);
    made->take_label (std::move (label));
    Node& node = network.add_node (std::move (made));
    network.assign_compart (node);
    return node;
}

std::unique_ptr<Line> plain_label (std::string_view name) {
    return std::make_unique<Line> (name, document::document_state ().default_font, 0);
}

} // namespace

document::Point start_position (const Network& network) {
    const auto place = [] (float wanted) { return wanted > 8 ? wanted : 30.0F; };
    return {place (200 - network.x ()), place (50 - network.y ())};
}

void new_species (Canvas& canvas, std::string_view name, unsigned type, unsigned bg_colour,
                  unsigned font_word, unsigned colour) {
    auto label = std::make_unique<Line> (name, font_word, colour);
    const Node* const complex = canvas.selection.only_node ();
    if (complex != nullptr && complex->nested () != nullptr) {
        put_node (*complex->nested (), 40, 30, type, bg_colour, std::move (label));
    } else {
        const document::Point at = start_position (canvas.network ());
        put_node (canvas.network (), at.x, at.y, type, bg_colour, std::move (label));
    }
    canvas.finish_edit (Edit::structure ());
}

void new_complex (Canvas& canvas) {
    Network& network = canvas.network ();
    auto inner = std::make_unique<Network> ();
    constexpr std::array<std::pair<const char*, float>, 2> parts{{{"A", 20}, {"B", 60}}};
    for (const auto& [name, x] : parts)
        put_node (*inner, x, 20, document::node::protein, protein_fill, plain_label (name))
            .set_selectable (false);
    inner->layout ();
    const float x = 200 - network.x () > 10 ? 200 - network.x () : 30;
    const float y = 100 - network.y () > 10 ? 110 - network.y () : 50;
    put_node (network, x, y, document::node::protein, protein_fill, std::move (inner));
    canvas.finish_edit (Edit::structure ());
}

void new_reaction (Canvas& canvas) {
    Network& network = canvas.network ();
    const auto [x, y] = start_position (network);
    Node& substrate =
        put_node (network, x, y + 46, document::node::molecule, molecule_fill, plain_label ("s"));
    Node& product = put_node (network, x + 133, y + 46, document::node::molecule, molecule_fill,
                              plain_label ("p"));
    Node& enzyme =
        put_node (network, x + 64, y, document::node::protein, protein_fill, plain_label ("E"));
    Arque* const reaction = substrate.connect (product, document::arc::reaction);
    enzyme.connect (*reaction, document::arc::catalysis);
    canvas.selection.set ({&substrate, &product, &enzyme});
    canvas.mode = Mode::free;
    canvas.finish_edit (Edit::structure ());
    canvas.tell_selection_count ();
}

void add_reactant (Canvas& canvas, std::string_view name, unsigned arc_type) {
    Arque* const reaction = canvas.selection.only_arc ();
    if (reaction == nullptr || !document::is_reaction (reaction->type ()) ||
        reaction->owner_network () != &canvas.network ())
        return;
    const bool reversible = document::is_reversible (reaction->type ());
    if (reversible)
        arc_type = arc_type == document::arc::product ? document::arc::reversible_product
                                                      : document::arc::reversible_substrate;
    const Node& source = *reaction->source ();
    Node& node = put_node (canvas.network (), source.x (), source.y () + reactant_distance,
                           document::node::molecule, molecule_fill, plain_label (name));
    node.connect (*reaction, arc_type);
    canvas.finish_edit (Edit::structure ());
}

void new_compartment (Canvas& canvas, int shape) {
    const auto [x, y] = start_position (canvas.network ());
    canvas.network ().add_compart (shape, x, y, 0, 0);
    canvas.assign_nodes ();
    canvas.finish_edit (Edit::structure ());
}

bool delete_selection (Canvas& canvas) {
    if (canvas.selection.edit_line () != nullptr) return false;
    if (GraphBase* const alone = canvas.selection.only ();
        alone != nullptr && !alone->is_selectable ())
        return false;
    bool removed = false;
    // A removal may take others with it: these leave the selection by themselves.
    const std::vector<GraphBase*> chosen = canvas.selection.objects ();
    for (GraphBase* const object : chosen) {
        if (!std::ranges::count (canvas.selection.objects (), object) || !object->is_selectable ())
            continue;
        object->destroy ();
        removed = true;
    }
    if (removed) {
        canvas.selection.clear ();
        if (canvas.mode == Mode::text) canvas.mode = Mode::free;
        canvas.finish_edit (Edit::structure ());
    }
    canvas.tell_selection_count ();
    return removed || chosen.empty () == false;
}

namespace {

/// Where a record of a kind would not give the same back.
bool kind_needs_snapshot (const GraphBase& object, int value) {
    return object.kind () == CharKind::node && value == document::node::kind::with_state &&
           document::document_state ().default_color != 0;
}

/// Sets a kind and writes its record; true when it changed.
bool set_one_type (Canvas& canvas, GraphBase& object, int value) {
    if (!object.set_kind (value)) return false;
    if (object.kind () == CharKind::node) canvas.network ().find_masters ();
    if (object.kind () == CharKind::compart) canvas.assign_nodes ();
    canvas.finish_edit (kind_needs_snapshot (object, value) ? Edit::structure ()
                                                            : Edit::kind (object, value));
    return true;
}

/// The links on both sides of a reaction take the reversible or the irreversible form.
void follow_reaction (Canvas& canvas, const Arque& reaction) {
    std::vector<Arque*> substrates;
    std::vector<Arque*> products;
    if (!reaction.arc_neighbours (substrates, products)) return;
    const bool reversible = reaction.type () == document::arc::reversible_reaction;
    for (Arque* const link : substrates)
        set_one_type (canvas, *link,
                      static_cast<int> (reversible ? document::arc::reversible_substrate
                                                   : document::arc::substrate));
    for (Arque* const link : products)
        set_one_type (canvas, *link,
                      static_cast<int> (reversible ? document::arc::reversible_product
                                                   : document::arc::product));
}

/// The objects that a choice made on one of them is for.
std::vector<GraphBase*> chosen_with (const Canvas& canvas, GraphBase& object) {
    if (!canvas.selection.contains (object)) return {&object};
    std::vector<GraphBase*> chosen;
    for (GraphBase* const other : canvas.selection.objects ())
        if (other->kind () == object.kind ()) chosen.push_back (other);
    return chosen;
}

} // namespace

void set_type (Canvas& canvas, GraphBase& object, int value) {
    for (GraphBase* const each : chosen_with (canvas, object)) {
        const bool was_main =
            each->kind () == CharKind::arque &&
            document::is_main_reaction (static_cast<const Arque*> (each)->type ());
        if (!set_one_type (canvas, *each, value) || !was_main) continue;
        const auto& reaction = static_cast<const Arque&> (*each);
        if (document::is_main_reaction (reaction.type ())) follow_reaction (canvas, reaction);
    }
}

void set_colour (Canvas& canvas, GraphBase& object, unsigned value) {
    for (GraphBase* const each : chosen_with (canvas, object))
        if (each->set_color (value)) canvas.finish_edit (Edit::colour (*each, value));
}

void choose_kind (Canvas& canvas, GraphBase& object) {
    if (const std::optional<int> value = canvas.world ().popup (kind_menu (object)))
        set_type (canvas, object, *value);
}

void choose_colour (Canvas& canvas, GraphBase& object) {
    const unsigned present = object.get_color ();
    const std::optional<int> value = canvas.world ().popup (colour_menu (present));
    if (!value) return;
    auto colour = static_cast<unsigned> (*value);
    if (colour == custom_colour) {
        if (!canvas.callbacks.on_pick_colour) return;
        colour = canvas.callbacks.on_pick_colour (present);
    }
    set_colour (canvas, object, colour);
}

} // namespace ostrand::editor
