// Walks over the records of an undo file.
#include "editor/history.h"

#include <algorithm>
#include <limits>

namespace ostrand::editor {
namespace {

constexpr std::int64_t most_bytes = std::numeric_limits<std::int32_t>::max ();

std::int32_t place (std::int64_t at) { return static_cast<std::int32_t> (at); }

/// The record at a place of a file, when all of it is there and sound.
std::unique_ptr<HistoryEntry> read_entry (const UndoFile& file, std::int64_t at) {
    const std::optional<RecordHeader> header =
        read_record_header (file.read (at, snapshot_header_size));
    if (!header || at + header->length () > file.size ()) return nullptr;
    auto entry = std::make_unique<HistoryEntry> (file.read (at, header->length ()));
    std::optional<Record> record = read_record (entry->bytes);
    if (!record) return nullptr;
    entry->record = std::move (*record);
    return entry;
}

} // namespace

History History::resumed (UndoFile file, std::int32_t last_snapshot) {
    History history (std::move (file));
    history.position_ = history.end ();
    history.snapshot_ = last_snapshot;
    return history;
}

std::int32_t History::end () const { return place (file_.size ()); }

bool History::has_room (std::size_t bytes) const {
    return position_ + static_cast<std::int64_t> (bytes) < most_bytes;
}

bool History::push (const std::string& record) {
    file_.cut (position_);
    for (Renaming& renaming : renamings_) renaming.before = std::min (renaming.before, position_);
    const bool written = file_.append (record);
    const std::optional<RecordHeader> header = read_record_header (record);
    if (header && header->type == RecordType::snapshot) snapshot_ = position_;
    position_ = end ();
    return written;
}

void History::rename (std::optional<std::string> old_name, std::string new_name) {
    if (old_name == new_name) return;
    renamings_.push_back ({position_, std::move (old_name), std::move (new_name)});
}

std::optional<std::string> History::name_at (std::int32_t snapshot,
                                             std::optional<std::string> name) const {
    for (const Renaming& renaming : renamings_)
        if (snapshot < renaming.before && name == renaming.old_name) name = renaming.new_name;
    return name;
}

void History::clear () {
    file_.cut (0);
    renamings_.clear ();
    position_ = 0;
    snapshot_ = no_snapshot;
}

std::unique_ptr<HistoryEntry> History::read (std::int32_t at) const {
    return read_entry (file_, at);
}

std::optional<UndoPlan> History::plan_undo () const {
    if (snapshot_ == no_snapshot || position_ == 0) return std::nullopt;
    UndoPlan plan;
    std::unique_ptr<HistoryEntry> start = read (snapshot_);
    if (!start) return std::nullopt;
    plan.snapshot = snapshot_;
    if (position_ == snapshot_ + start->record.header.length ()) {
        // The last thing done was the snapshot itself.
        if (snapshot_ == 0) {
            plan.to_empty = true;
            plan.snapshot = no_snapshot;
            return plan;
        }
        plan.snapshot = start->record.header.previous_snapshot;
        if (plan.snapshot < 0 || plan.snapshot >= snapshot_) return std::nullopt;
        start = read (plan.snapshot);
        if (!start || start->record.header.type != RecordType::snapshot) return std::nullopt;
    }
    std::int64_t at = plan.snapshot + start->record.header.length ();
    while (true) {
        const std::optional<RecordHeader> header =
            read_record_header (file_.read (at, snapshot_header_size));
        if (!header) return std::nullopt;
        const std::int64_t next = at + header->length ();
        if (next > position_) return std::nullopt;
        if (next == position_) {
            plan.origin = header->origin;
            break;
        }
        plan.replayed.push_back (place (at));
        at = next;
    }
    plan.position = place (at);
    return plan;
}

void History::undone (const UndoPlan& plan) {
    position_ = plan.position;
    snapshot_ = plan.snapshot;
}

void History::redone (const Record& record) {
    if (record.header.type == RecordType::snapshot) snapshot_ = position_;
    position_ = place (position_ + record.header.length ());
}

HistoryScan scan_history (const UndoFile& file) {
    HistoryScan scan;
    while (scan.sound_end < file.size ()) {
        const std::unique_ptr<HistoryEntry> entry = read_entry (file, scan.sound_end);
        const bool begins_well =
            entry && (scan.sound_end > 0 || entry->record.header.type == RecordType::snapshot);
        const bool chained =
            begins_well && (entry->record.header.type != RecordType::snapshot ||
                            entry->record.header.previous_snapshot == scan.last_snapshot);
        if (!chained || (entry->record.header.type == RecordType::snapshot &&
                         !read_snapshot_text (entry->record.text))) {
            scan.damaged = true;
            break;
        }
        if (entry->record.header.type == RecordType::snapshot)
            scan.last_snapshot = place (scan.sound_end);
        scan.sound_end += entry->record.header.length ();
    }
    return scan;
}

} // namespace ostrand::editor
