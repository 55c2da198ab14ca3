// A canvas: its document, what it tells the application, how edits end.
#include "editor/canvas.h"

#include "document/line.h"
#include "document/settle.h"

#include <algorithm>

namespace ostrand::editor {

using document::CharKind;
using document::GraphBase;
using document::Network;

namespace {

/// The origin of a network in a canvas when its text tells none.
constexpr float read_origin = 10;

} // namespace

Canvas::Canvas (EditorState& shared, World& world, History history)
    : shared_ (shared), world_ (world), history_ (std::move (history)) {
    document_.network = std::make_unique<Network> ();
    network ().set_listener (this);
}

Canvas::~Canvas () {
    if (fade_timer_ != 0) world_.cancel (fade_timer_);
    stop_border_scroll ();
    if (flight_timer_ != 0) world_.cancel (flight_timer_);
    selection.clear ();
    network ().set_listener (nullptr);
    if (!keep_history_) history_.file ().remove ();
}

void Canvas::set_modified (bool on) {
    modified_ = on;
    if (callbacks.on_modified) callbacks.on_modified (*this, on);
}

void Canvas::set_file_name (std::optional<std::string> name) {
    file_name_ = std::move (name);
    if (callbacks.on_modified) callbacks.on_modified (*this, modified_);
}

void Canvas::replace_network (std::unique_ptr<Network> network) {
    end_flight ();
    selection.clear ();
    set_selected_field (nullptr);
    hover_ = nullptr;
    fuse_shown_ = nullptr;
    stop_border_scroll ();
    gesture = Gesture ();
    told_selection_count_ = 0;
    mode = Mode::selection;
    document_.network->set_listener (nullptr);
    document_.network = std::move (network);
    document_.network->set_listener (this);
    if (document_.network->x () == 0 && document_.network->y () == 0)
        document_.network->set_origin (read_origin, read_origin);
    view.invalidate_anchor ();
    document_.network->layout ();
}

void Canvas::object_leaves (GraphBase& object) {
    selection.forget (object);
    if (hover_ == &object) hover_ = nullptr;
    if (gesture.fuse_target == &object) gesture.fuse_target = nullptr;
    if (fuse_shown_ == &object) fuse_shown_ = nullptr;
    if (asked_node == &object) asked_node = nullptr;
}

void Canvas::text_leaves (document::Char& text) {
    if (selection.edit_line () == &text && mode == Mode::text) mode = Mode::free;
    selection.forget (text);
    if (selected_field_ == &text) selected_field_ = nullptr;
    if (gesture.label == &text) gesture.label = nullptr;
}

void Canvas::set_hover (GraphBase* object, document::Edge edge) {
    if (hover_ == object && hover_edge_ == edge) return;
    hover_ = object;
    hover_edge_ = edge;
    redraw ();
}

void Canvas::set_fuse_shown (document::Node* node) {
    if (fuse_shown_ == node) return;
    fuse_shown_ = node;
    redraw ();
}

void Canvas::set_selected_field (document::Line* field) {
    if (selected_field_ == field) return;
    selected_field_ = field;
    redraw ();
}

void Canvas::message (const std::string& text) {
    if (callbacks.on_message) callbacks.on_message (*this, text);
}

void Canvas::tell_style (unsigned font_word, unsigned colour) {
    if (callbacks.on_style) callbacks.on_style (*this, font_word, colour);
}

void Canvas::tell_selection_count () {
    const int count = selection.count ();
    if (count == told_selection_count_) return;
    told_selection_count_ = count;
    if (callbacks.on_selection_count) callbacks.on_selection_count (*this, count);
}

void Canvas::start_fade () {
    if (view.lift_always_visible) return;
    if (fade_timer_ != 0) world_.cancel (fade_timer_);
    view.fade.start ();
    const auto tick = [this] (const auto& again) -> void {
        fade_timer_ = 0;
        if (view.fade.tick ())
            fade_timer_ = world_.call_later (Fade::next_wait, [again] { again (again); });
        redraw ();
    };
    fade_timer_ = world_.call_later (Fade::first_wait, [tick] { tick (tick); });
    redraw ();
}

const Network& Canvas::shown () const {
    return flight_ ? flight_->picture (network ()) : network ();
}

void Canvas::start_flight (const FlightStart& start) {
    end_flight ();
    if (!shared_.animate) return;
    flight_ = std::make_unique<Flight> (network (), start, world_.now ());
    const auto tick = [this] (const auto& again) -> void {
        flight_timer_ = 0;
        if (flight_->advance (world_.now ()))
            flight_timer_ = world_.call_later (Flight::next_wait, [again] { again (again); });
        else
            flight_.reset ();
        redraw ();
    };
    flight_timer_ = world_.call_later (Flight::next_wait, [tick] { tick (tick); });
    redraw ();
}

void Canvas::end_flight () {
    if (!flight_) return;
    if (flight_timer_ != 0) world_.cancel (flight_timer_);
    flight_timer_ = 0;
    flight_.reset ();
    redraw ();
}

document::Hit Canvas::find_at (float px, float py, const document::Node* skip) {
    document::HitQuery query = document::hit_query_of_switches ();
    query.skip = skip;
    return network ().find_at (px / view.zoom (), py / view.zoom (), query);
}

void Canvas::assign_nodes () {
    for (const auto& n : network ().nodes ()) network ().assign_compart (*n);
}

bool Canvas::settle_after_move () {
    bool comparts_moved = false;
    for (GraphBase* const object : selection.objects ()) {
        if (object->kind () == CharKind::compart) comparts_moved = true;
        if (object->kind () != CharKind::node) continue;
        auto& node = static_cast<document::Node&> (*object);
        if (node.network () != nullptr) node.network ()->assign_compart (node);
    }
    if (!comparts_moved) return false;
    std::vector<const document::Compart*> before;
    for (const auto& c : network ().comps ()) before.push_back (c.get ());
    network ().check_compartments ();
    return !std::ranges::equal (before, network ().comps (), {}, {},
                                [] (const auto& c) { return c.get (); });
}

namespace {

/// A label record could not give this object's texts back: a network as a label has objects of its
/// own, and an empty stoichiometry reads back as none.
bool needs_snapshot (const GraphBase& object) {
    if (object.nested () != nullptr) return true;
    if (object.kind () != CharKind::arque) return false;
    const auto& arc = static_cast<const document::Arque&> (object);
    return (arc.stoech_src () != nullptr && arc.stoech_src ()->is_empty ()) ||
           (arc.stoech_dest () != nullptr && arc.stoech_dest ()->is_empty ());
}

} // namespace

/// The texts of an object become what the replay of its label record makes of them. A text that is
/// edited and empty keeps its style for the letters to come.
void Canvas::settle_texts (GraphBase& object) {
    document::Line* const edited = selection.edit_line ();
    const bool is_empty = edited != nullptr && edited->is_empty ();
    const unsigned font = is_empty ? edited->chars ().front ().font : document::no_font;
    const unsigned color = is_empty ? edited->chars ().front ().color : document::no_color;
    document::settle_texts (object);
    if (is_empty) edited->set_style (font, color);
}

void Canvas::finish_edit (const Edit& edit) {
    end_flight ();
    Edit::Kind what = edit.what;
    if (what == Edit::Kind::labels) {
        // Two nodes may have come to be one species by it, or no longer be.
        const bool shared =
            edit.object->kind () == CharKind::node && network ().update_shared_nodes ();
        if (shared || needs_snapshot (*edit.object)) what = Edit::Kind::structure;
    }
    if (gesture.changed) {
        // Something is dragged meanwhile: one snapshot tells of both.
        gesture.forget_drag ();
        set_fuse_shown (nullptr);
        what = Edit::Kind::structure;
    }
    set_modified (true);
    if (what == Edit::Kind::labels) settle_texts (*edit.object);
    network ().layout ();
    if (edit.object != nullptr && edit.object->kind () == CharKind::compart) assign_nodes ();
    switch (what) {
    case Edit::Kind::structure: push_snapshot (); break;
    case Edit::Kind::move:
        push_selection_if_new ();
        push (move_record (origin (), edit.dx, edit.dy));
        break;
    case Edit::Kind::kind:
        push (kind_record (origin (), edit.object->id (), static_cast<int> (edit.value)));
        break;
    case Edit::Kind::colour:
        push (colour_record (origin (), edit.object->id (), edit.value));
        break;
    case Edit::Kind::labels:
        push (labels_record (origin (), edit.object->id (), labels_text (*edit.object)));
        break;
    }
    redraw ();
}

void Canvas::edit_labels (GraphBase& owner, const std::function<void ()>& edit) {
    const std::string before = labels_text (owner);
    edit ();
    if (labels_text (owner) != before) finish_edit (Edit::labels (owner));
    redraw ();
}

void Canvas::finish_selection () {
    recorded_selection_ = selection.ids ();
    push (selection_record (origin (), recorded_selection_));
    tell_selection_count ();
    redraw ();
}

} // namespace ostrand::editor
