// The history of a canvas: what is written to it, and how an undo and a redo bring a state back.
#include "editor/canvas.h"

#include "document/line.h"
#include "document/markup.h"

#include "base/report.h"

#include <algorithm>
#include <utility>

namespace ostrand::editor {

using document::CharKind;
using document::GraphBase;
using document::Line;
using document::MarkupReader;
using document::Network;
using document::PrintState;

namespace {

/// FNV-1a, 64 bits.
std::uint64_t hash_of (std::string_view text) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text) {
        hash ^= static_cast<unsigned char> (c);
        hash *= 1099511628211U;
    }
    return hash;
}

} // namespace

std::string Canvas::text_without_view () const {
    PrintState state;
    network ().fprint (state, 0);
    // "[N" and five numbers, of which the last two are the place in the window.
    std::size_t at = state.out.find ("[N") + 2;
    for (int field = 0; field < 3; ++field) at = state.out.find (' ', at) + 1;
    const std::size_t end = state.out.find_first_of ("\n]", at);
    state.out.erase (at, end - at);
    return std::move (state.out);
}

void Canvas::push (const std::string& record) {
    if (history_.push (record)) return;
    report_message ("The undo file cannot be written: %s. Editing goes on.",
                    history_.file ().error ().c_str ());
}

void Canvas::push_snapshot () {
    network ().settle ();
    PrintState state;
    network ().fprint (state, 0);
    network ().adopt_numbering (state.numbering);
    const std::string text = snapshot_text (file_name_, modified_, state.out);
    recorded_selection_ = selection.ids ();
    std::string record =
        snapshot_record (origin (), history_.snapshot (), text, recorded_selection_);
    if (!history_.has_room (record.size ())) {
        history_.clear ();
        report_message ("The undo history is full: it begins anew.");
        record = snapshot_record (origin (), no_snapshot, text, recorded_selection_);
    }
    push (record);
}

void Canvas::push_selection_if_new () {
    const std::vector<std::int32_t> ids = selection.ids ();
    if (ids == recorded_selection_) return;
    recorded_selection_ = ids;
    push (selection_record (origin (), ids));
}

void Canvas::note_saved () {
    saved_hash_ = hash_of (text_without_view ());
    told_of_change = false;
    file_stamp_ = file_name_ ? ostrand::file_stamp (*file_name_) : std::nullopt;
}

void Canvas::rename_history (const std::optional<std::string>& old_name,
                             const std::string& new_name) {
    history_.rename (old_name, new_name);
}

std::string Canvas::labels_text (const GraphBase& object) const {
    PrintState state;
    const bool is_arc = object.kind () == CharKind::arque;
    const auto field = [&] (const document::Char* text) {
        if (text == nullptr) {
            state.out += "{}";
            return;
        }
        text->sprint (state, 0, 0);
        if (is_arc && (text->x () != 0 || text->y () != 0))
            state.out += '(' + document::number_text (text->x ()) + ' ' +
                         document::number_text (text->y ()) + ')';
    };
    field (object.label ());
    field (object.residu ());
    if (is_arc) {
        const auto& arc = static_cast<const document::Arque&> (object);
        field (arc.stoech_src ());
        field (arc.stoech_dest ());
    }
    return std::move (state.out);
}

namespace {

/// "(x y)" behind a field, if it is there.
std::optional<document::Point> read_offset (MarkupReader& reader) {
    if (reader.peek () != '(') return std::nullopt;
    reader.skip ();
    const float x = document::read_number (reader);
    reader.skip_blanks ();
    const float y = document::read_number (reader);
    if (reader.peek () == ')') reader.skip ();
    return document::Point{x, y};
}

/// One field of a label record: a line, or nothing for "{}", which may have an offset too.
std::unique_ptr<Line> read_field (MarkupReader& reader) {
    if (reader.rest ().starts_with ("{}")) {
        reader.skip (2);
        read_offset (reader);
        return nullptr;
    }
    if (reader.peek () != '{') return nullptr;
    std::unique_ptr<Line> line = document::read_braced_line (reader);
    if (const std::optional<document::Point> offset = read_offset (reader))
        line->set_offset (offset->x, offset->y);
    return line;
}

} // namespace

void Canvas::apply_labels (GraphBase& object, std::string_view text) {
    MarkupReader reader (text);
    const bool is_arc = object.kind () == CharKind::arque;
    const bool had_label = object.label () != nullptr;
    const bool had_residu = object.residu () != nullptr;
    // Where a node or a compartment had a line, an empty one stays: it is a label all the same.
    const auto filled = [&] (std::unique_ptr<Line> line, bool had) {
        if (!line && had && !is_arc) line = std::make_unique<Line> ("", reader.font, reader.color);
        if (line && object.foggy ()) line->set_fog (true);
        return line;
    };
    object.take_label (filled (read_field (reader), had_label));
    object.take_residu (filled (read_field (reader), had_residu));
    if (!is_arc) return;
    auto& arc = static_cast<document::Arque&> (object);
    arc.take_stoech_src (filled (read_field (reader), false));
    arc.take_stoech_dest (filled (read_field (reader), false));
}

namespace {

/// A state that a node gets has the colour of labels to come. Where that was another one than
/// black, a snapshot tells it; so a record means black, whatever the colour is by now.
void replay_kind (GraphBase& object, int value) {
    unsigned& colour = document::document_state ().default_color;
    const unsigned present = std::exchange (colour, 0U);
    object.set_kind (value);
    colour = present;
}

} // namespace

void Canvas::restore_selection (const std::vector<std::int32_t>& ids) {
    std::vector<GraphBase*> objects;
    for (const std::int32_t id : ids)
        if (GraphBase* const object = network ().find_by_id (id)) objects.push_back (object);
    selection.set (objects);
    recorded_selection_ = selection.ids ();
    tell_selection_count ();
}

void Canvas::apply_record (const Record& record) {
    GraphBase* const object = record.ids.empty () || record.header.type == RecordType::selection
                                  ? nullptr
                                  : network ().find_by_id (record.ids.front ());
    network ().set_origin (record.header.origin.x, record.header.origin.y);
    switch (record.header.type) {
    case RecordType::snapshot: return;
    case RecordType::selection: restore_selection (record.ids); return;
    case RecordType::move:
        for (GraphBase* const moved : selection.objects ())
            moved->set_position (moved->x () + static_cast<float> (record.dx),
                                 moved->y () + static_cast<float> (record.dy));
        settle_after_move ();
        break;
    case RecordType::kind:
        if (object != nullptr) replay_kind (*object, static_cast<int> (record.value));
        break;
    case RecordType::colour:
        if (object != nullptr) object->set_color (record.value);
        break;
    case RecordType::labels:
        if (object == nullptr) break;
        apply_labels (*object, record.text);
        // A long text makes its compartment wider, and a shorter one behind it not narrower again.
        if (object->kind () == CharKind::compart) network ().layout ();
        break;
    }
    modified_ = true;
}

bool Canvas::load_state (const HistoryEntry& entry, std::int32_t at) {
    const std::optional<SnapshotText> text = read_snapshot_text (entry.record.text);
    if (!text) return false;
    std::unique_ptr<Network> read;
    {
        // What a reader remarks about a text of our own is no news to the user.
        const MessageScope silence ([] (std::string_view) {});
        read = document::read_network (text->network);
    }
    if (!read) return false;
    file_name_ = history_.name_at (at, text->file_name);
    modified_ = text->modified;
    replace_network (std::move (read));
    network ().set_origin (entry.record.header.origin.x, entry.record.header.origin.y);
    restore_selection (entry.record.ids);
    return true;
}

void Canvas::finish_replay () {
    network ().find_masters ();
    network ().layout ();
    assign_nodes (); // a text may have made a compartment wider
    // A text that is edited ends with it.
    if (mode == Mode::text) mode = Mode::selection;
    // The flag of the records says whether something was done; the file may hold another state.
    if (!modified_ && file_name_ && saved_hash_)
        modified_ = hash_of (text_without_view ()) != *saved_hash_;
    set_modified (modified_);
    tell_selection_count ();
    redraw ();
}

bool Canvas::restore_last_state () {
    const std::unique_ptr<HistoryEntry> snapshot = history_.read (history_.snapshot ());
    if (!snapshot || !load_state (*snapshot, history_.snapshot ())) return false;
    std::int64_t at = history_.snapshot () + snapshot->record.header.length ();
    while (const std::unique_ptr<HistoryEntry> entry =
               history_.read (static_cast<std::int32_t> (at))) {
        apply_record (entry->record);
        at += entry->record.header.length ();
    }
    modified_ = true; // nobody saved it
    finish_replay ();
    return true;
}

void Canvas::undo () {
    end_drag ();
    const std::optional<UndoPlan> plan = history_.plan_undo ();
    if (!plan) return;
    if (plan->to_empty) {
        replace_network (std::make_unique<Network> ());
        mode = Mode::selection;
        file_name_ = history_.name_at (0, std::nullopt);
        modified_ = false;
        recorded_selection_.clear ();
    } else {
        const std::unique_ptr<HistoryEntry> snapshot = history_.read (plan->snapshot);
        if (!snapshot || !load_state (*snapshot, plan->snapshot)) return;
        for (const std::int32_t at : plan->replayed)
            if (const std::unique_ptr<HistoryEntry> entry = history_.read (at))
                apply_record (entry->record);
        if (plan->origin) network ().set_origin (plan->origin->x, plan->origin->y);
    }
    history_.undone (*plan);
    finish_replay ();
}

void Canvas::redo () {
    end_drag ();
    if (!history_.can_redo ()) return;
    const std::int32_t at = history_.position ();
    const std::unique_ptr<HistoryEntry> entry = history_.read (at);
    if (!entry) return;
    if (entry->record.header.type == RecordType::snapshot) {
        if (!load_state (*entry, at)) return;
    } else {
        // Records follow the selection that was recorded, whatever is selected by now.
        if (selection.edit_line () != nullptr || selection.ids () != recorded_selection_)
            restore_selection (std::vector<std::int32_t> (recorded_selection_));
        if (mode == Mode::text) mode = Mode::selection;
        apply_record (entry->record);
    }
    history_.redone (entry->record);
    finish_replay ();
}

} // namespace ostrand::editor
