// The records of an undo file: their bytes, made and read.
//
// Another program may read the file while the editor runs, so every byte is fixed. Integers and
// floats have four bytes, little-endian, without padding; there is no file header. A record is
//     type, size, origin x, origin y          16 bytes
// and then, for a snapshot (type 0),
//     previous snapshot, selection size       8 bytes; the latter is 4 x count + 4
//     text                                    `size` bytes
//     count, ids                              `selection size` bytes
// and for the others `size` bytes of payload.
// Layer: editor (uses base).
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::editor {

enum class RecordType : std::int32_t {
    snapshot = 0,  // the whole network as native text
    selection = 1, // the ids of the selected objects
    move = 2,      // all selected objects by (dx, dy)
    kind = 3,      // another type of one node, arc or compartment
    colour = 4,    // another colour of one object
    labels = 5     // all texts of one object
};

/// Offset that means "no snapshot".
inline constexpr std::int32_t no_snapshot = -1;

/// Bytes that every record begins with.
inline constexpr std::int32_t record_header_size = 16;

/// View origin of the network when a record was written, in network units.
struct ViewOrigin {
    float x = 0;
    float y = 0;
};

/// Makers of whole records. Ids are those of the last snapshot's text.
std::string snapshot_record (ViewOrigin origin, std::int32_t previous_snapshot,
                             std::string_view text, const std::vector<std::int32_t>& selection);
std::string selection_record (ViewOrigin origin, const std::vector<std::int32_t>& ids);
std::string move_record (ViewOrigin origin, std::int32_t dx, std::int32_t dy);
std::string kind_record (ViewOrigin origin, std::int32_t id, std::int32_t value);
std::string colour_record (ViewOrigin origin, std::int32_t id, std::uint32_t value);
/// text  the object's fields, each "{...}" with its offset, as the labels are written
std::string labels_record (ViewOrigin origin, std::int32_t id, std::string_view text);

/// The front of a record, from which its length is known.
struct RecordHeader {
    RecordType type = RecordType::snapshot;
    std::int32_t size = 0;
    ViewOrigin origin;
    std::int32_t previous_snapshot = no_snapshot; // of a snapshot
    std::int32_t selection_size = 0;              // of a snapshot

    /// Bytes of the whole record. A header that was read is sound, so this is no less than 16.
    std::int64_t length () const;
};

/// Bytes that a snapshot's header takes, the longest there is.
inline constexpr std::int32_t snapshot_header_size = record_header_size + 8;

/// The header at the front of `bytes`; nothing when they are too few or no record begins so.
std::optional<RecordHeader> read_record_header (std::string_view bytes);

/// What a whole record says, by its type; fields that it lacks are empty. Nothing when the payload
/// does not fit the type.
struct Record {
    RecordHeader header;
    std::string_view text;         // snapshot: its text; labels: the fields
    std::vector<std::int32_t> ids; // snapshot, selection: the selected; kind, colour, labels: one
    std::int32_t dx = 0;           // move
    std::int32_t dy = 0;
    std::uint32_t value = 0; // kind, colour
};

/// Reads one whole record; `bytes` are exactly its length. `text` looks into `bytes`.
std::optional<Record> read_record (std::string_view bytes);

/// A snapshot's text: two lines for the document, then the native text.
struct SnapshotText {
    std::optional<std::string> file_name; // nothing: untitled
    bool modified = false;
    std::string_view network;
};

/// "#name", "#modified = n", the network and a line end. A document without a name is "::::".
std::string snapshot_text (const std::optional<std::string>& file_name, bool modified,
                           std::string_view network);

/// Takes such a text apart; the name is the whole first line, blanks included. Nothing when the two
/// lines are missing.
std::optional<SnapshotText> read_snapshot_text (std::string_view text);

} // namespace ostrand::editor
