// Selecting and copying.
#include "editor/edit_selection.h"

#include "document/line.h"
#include "document/markup.h"

#include "editor/latin1.h"

#include "base/text.h"

namespace ostrand::editor {

using document::CharKind;
using document::GraphBase;
using document::Line;
using document::Node;
using document::PrintState;

void select_all (Canvas& canvas) {
    if (canvas.mode == Mode::text) return;
    std::vector<GraphBase*> all;
    for (const auto& n : canvas.network ().nodes ()) all.push_back (n.get ());
    canvas.selection.set (all);
    canvas.mode = Mode::free;
    canvas.tell_selection_count ();
    canvas.redraw ();
}

void select_connected (Canvas& canvas, Node& node) {
    std::vector<GraphBase*> found;
    if (node.network () != nullptr)
        for (GraphBase* const object : node.network ()->mark_connected (node))
            if (object->kind () == CharKind::node && object->selectable ())
                found.push_back (object);
    canvas.selection.set (found);
    canvas.mode = Mode::selection;
    if (!found.empty ()) canvas.finish_selection ();
    canvas.tell_selection_count ();
    canvas.redraw ();
}

void duplicate_selection (Canvas& canvas) {
    std::vector<Node*> nodes = canvas.selection.nodes ();
    std::erase_if (nodes, [&] (const Node* n) { return n->network () != &canvas.network (); });
    if (nodes.empty ()) return;
    canvas.network ().duplicate_selection (nodes);
    for (Node* const copy : nodes) canvas.network ().assign_compart (*copy);
    canvas.selection.set (std::vector<GraphBase*> (nodes.begin (), nodes.end ()));
    canvas.finish_edit (Edit::structure ());
    canvas.tell_selection_count ();
}

std::string serialise_selection (const Canvas& canvas) {
    PrintState state;
    if (const Line* const line = canvas.selection.edit_line ()) {
        line->selected_sprint (state, 0, 0);
        return std::move (state.out);
    }
    const std::vector<Node*> nodes = canvas.selection.nodes ();
    if (nodes.empty ()) return {};
    canvas.network ().selection_sprint (state, nodes);
    state.out += '\n';
    return std::move (state.out);
}

namespace {

/// "[N%d %d %d" stands at the front.
bool is_network_text (std::string_view text) {
    if (!text.starts_with ("[N")) return false;
    text.remove_prefix (2);
    for (int field = 0; field < 3; ++field) {
        while (!text.empty () && is_space (text.front ())) text.remove_prefix (1);
        if (!text.empty () && (text.front () == '-' || text.front () == '+'))
            text.remove_prefix (1);
        if (text.empty () || !is_digit (text.front ())) return false;
        while (!text.empty () && is_digit (text.front ())) text.remove_prefix (1);
    }
    return true;
}

void paste_network (Canvas& canvas, std::string_view text) {
    document::Network& network = canvas.network ();
    const std::size_t before = network.nodes ().size ();
    if (!network.insert_text (text)) return;
    std::vector<GraphBase*> added;
    for (std::size_t i = before; i < network.nodes ().size (); ++i) {
        network.assign_compart (*network.nodes ()[i]);
        added.push_back (network.nodes ()[i].get ());
    }
    if (canvas.mode == Mode::text) canvas.mode = Mode::selection;
    canvas.selection.set (added);
    canvas.finish_edit (Edit::structure ());
    canvas.tell_selection_count ();
}

} // namespace

void copy_selection (Canvas& canvas) {
    std::string text = serialise_selection (canvas);
    const bool is_text = canvas.selection.edit_line () != nullptr;
    canvas.shared ().copied_markup = is_text ? text : std::string ();
    canvas.world ().copy ({.text = std::move (text), .is_network = !is_text});
}

void paste_text (Canvas& canvas, std::string_view text) {
    if (is_network_text (text)) {
        paste_network (canvas, text);
        return;
    }
    Line* const line = canvas.selection.edit_line ();
    if (line == nullptr) return;
    // What was copied from a label is markup; any other text means its letters.
    const bool own = !text.empty () && text == canvas.shared ().copied_markup;
    GraphBase* const owner = line->find_object ();
    if (owner == nullptr) return;
    canvas.edit_labels (*owner, [&] {
        if (own)
            line->paste_markup (text);
        else
            line->paste_letters (utf8_to_latin1 (text));
    });
}

} // namespace ostrand::editor
