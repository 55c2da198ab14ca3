// Alignment, sharing, colours and fog.
#include "editor/edit_arrange.h"

#include "tidy/tidy.h"

#include <algorithm>
#include <unordered_set>

namespace ostrand::editor {

using document::GraphBase;
using document::Network;
using document::Node;

namespace {

constexpr unsigned input_colour = 0xffc77500;
constexpr unsigned output_colour = 0xffa5ff00;
constexpr unsigned internal_colour = 3;

/// The places of all nodes, to see whether something moved them.
std::vector<document::Point> places (const Network& network) {
    std::vector<document::Point> all;
    all.reserve (network.nodes ().size ());
    for (const auto& n : network.nodes ()) all.push_back ({n->x (), n->y ()});
    return all;
}

} // namespace

bool align_nodes (Canvas& canvas) {
    Network& network = canvas.network ();
    const std::vector<document::Point> before = places (network);
    network.align_all ();
    if (places (network) == before) return false;
    canvas.assign_nodes ();
    canvas.finish_edit (Edit::structure ());
    return true;
}

void align_one (Canvas& canvas, Node& node) {
    Network* const network = node.network ();
    if (network == nullptr) return;
    const document::Point before{node.x (), node.y ()};
    network->align_node (node, false, true);
    if (before == document::Point{node.x (), node.y ()}) return;
    network->assign_compart (node);
    canvas.finish_edit (Edit::structure ());
}

bool smart_move (Canvas&, Node& node) {
    Network* const network = node.network ();
    if (network == nullptr) return false;
    network->layout ();
    std::vector<document::Point> before = places (*network);
    network->align_around (node);
    const std::vector<document::Point> after = places (*network);
    before[network->place_of (node)] = {node.x (), node.y ()};
    if (after == before) return false;
    for (const auto& n : network->nodes ()) network->assign_compart (*n);
    return true;
}

namespace {

/// The nodes of the network itself that the selection means, each once.
std::vector<Node*> chosen_nodes (const Canvas& canvas) {
    std::vector<Node*> chosen;
    std::unordered_set<const Node*> seen;
    const auto add = [&] (Node* n) {
        if (n != nullptr && n->network () == &canvas.network () && seen.insert (n).second)
            chosen.push_back (n);
    };
    for (GraphBase* const object : canvas.selection.objects ()) {
        if (object->kind () == document::CharKind::node) {
            add (static_cast<Node*> (object));
        } else if (object->kind () == document::CharKind::arque) {
            add (static_cast<document::Arque*> (object)->source ());
            add (static_cast<document::Arque*> (object)->dest_node ());
        } else {
            for (const auto& n : canvas.network ().nodes ())
                if (n->compart () == object) add (n.get ());
        }
    }
    return chosen;
}

} // namespace

bool arrange (Canvas& canvas) {
    Network& network = canvas.network ();
    if (canvas.mode == Mode::text) canvas.selection.clear ();
    canvas.mode = Mode::selection;
    const std::vector<Node*> chosen = chosen_nodes (canvas);
    const bool whole = canvas.selection.is_empty () || chosen.size () == network.nodes ().size ();
    const std::string before = canvas.text_without_view ();
    const FlightStart start (network);
    if (whole) {
        tidy::arrange_network (network);
    } else if (tidy::arrange_nodes (network, chosen)) {
        canvas.assign_nodes ();
    }
    if (canvas.text_without_view () == before) return false;
    canvas.finish_edit (Edit::structure ());
    canvas.tell_selection_count ();
    canvas.start_flight (start);
    return true;
}

void share_clones (Canvas& canvas) {
    if (canvas.network ().update_shared_nodes ()) canvas.finish_edit (Edit::structure ());
}

void color_reactants (Canvas& canvas) {
    if (canvas.network ().color_species (input_colour, output_colour, internal_colour))
        canvas.finish_edit (Edit::structure ());
}

void fog_selection (Canvas& canvas, bool on) {
    if (canvas.selection.is_empty ()) return;
    if (canvas.mode == Mode::text) canvas.selection.clear ();
    canvas.mode = Mode::selection;
    bool changed = false;
    for (GraphBase* const object : canvas.selection.objects ())
        if (object->kind () != document::CharKind::compart)
            changed = object->set_fog (on) || changed;
    if (changed) canvas.finish_edit (Edit::structure ());
    canvas.redraw ();
}

} // namespace ostrand::editor
