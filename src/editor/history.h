// The history of one canvas: where it stands in its undo file, and what an undo or a redo replays.
// Layer: editor.
#pragma once
#include "editor/undo_file.h"
#include "editor/undo_records.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::editor {

/// A record in the file. `record` looks into `bytes`.
struct HistoryEntry {
    explicit HistoryEntry (std::string record_bytes) : bytes (std::move (record_bytes)) {}
    std::string bytes;
    Record record;
};

/// What an undo has to do: load a snapshot, then replay records.
struct UndoPlan {
    bool to_empty = false;               // nothing is left: an empty, untitled network
    std::int32_t snapshot = no_snapshot; // to be loaded
    std::vector<std::int32_t> replayed;  // places of the records behind it, in order
    std::int32_t position = 0;           // where the history stands afterwards
    std::optional<ViewOrigin> origin;    // the view when the undone record was written
};

class History {
  public:
    /// Nothing is in it.
    explicit History (UndoFile file) : file_ (std::move (file)) {}
    /// Goes on with the records of a file, behind the last of them.
    static History resumed (UndoFile file, std::int32_t last_snapshot);

    std::int32_t position () const { return position_; } // of the next record to be written
    std::int32_t end () const;                           // behind the last that redo can replay
    std::int32_t snapshot () const { return snapshot_; } // last one at or before the position
    bool can_redo () const { return position_ != end (); }

    /// Writes a record. What was undone is no more. False when the disk did not take it.
    bool push (const std::string& record);
    /// True when a record of this length still has a place: places have 32 bits.
    bool has_room (std::size_t bytes) const;
    /// Everything is forgotten, and the file is empty.
    void clear ();

    /// The record at a place; nothing when there is no whole and sound one.
    std::unique_ptr<HistoryEntry> read (std::int32_t at) const;
    /// What the next undo has to do; nothing when there is nothing to undo, or a record on its way
    /// cannot be read.
    std::optional<UndoPlan> plan_undo () const;
    /// The undo was done.
    void undone (const UndoPlan& plan);
    /// The record at the position was replayed.
    void redone (const Record& record);

    /// The document got another name, which holds for its states before too: undo does not bring
    /// the old one back. No name is an untitled document.
    void rename (std::optional<std::string> old_name, std::string new_name);
    /// The name of the state of a snapshot, whose text says `name`.
    std::optional<std::string> name_at (std::int32_t snapshot,
                                        std::optional<std::string> name) const;

    UndoFile& file () { return file_; }
    const UndoFile& file () const { return file_; }

  private:
    struct Renaming {
        std::int32_t before; // holds for snapshots before this place
        std::optional<std::string> old_name;
        std::string new_name;
    };

    UndoFile file_;
    std::vector<Renaming> renamings_; // oldest first
    std::int32_t position_ = 0;
    std::int32_t snapshot_ = no_snapshot;
};

/// The whole records at the front of a history, as far as they are sound.
struct HistoryScan {
    std::int64_t sound_end = 0; // behind the last whole record
    std::int32_t last_snapshot = no_snapshot;
    bool damaged = false; // something stands behind that is no whole record
};

/// Walks a file's records from the front. What follows a damaged record is not looked at.
HistoryScan scan_history (const UndoFile& file);

} // namespace ostrand::editor
