// Bytes of the undo file's records.
#include "editor/undo_records.h"

#include "base/text.h"

#include <bit>
#include <cmath>

namespace ostrand::editor {
namespace {

constexpr std::string_view untitled = "::::";

void put (std::string& out, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) out += static_cast<char> (word >> shift & 255U);
}

void put (std::string& out, std::int32_t word) { put (out, static_cast<std::uint32_t> (word)); }

void put (std::string& out, float number) { put (out, std::bit_cast<std::uint32_t> (number)); }

std::uint32_t word_at (std::string_view bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i > 0; --i) {
        word = word << 8 | static_cast<unsigned char> (bytes[at + i - 1]);
    }
    return word;
}

std::int32_t int_at (std::string_view bytes, std::size_t at) {
    return static_cast<std::int32_t> (word_at (bytes, at));
}

float float_at (std::string_view bytes, std::size_t at) {
    return std::bit_cast<float> (word_at (bytes, at));
}

std::int32_t selection_size (std::size_t count) {
    return static_cast<std::int32_t> (4 * count + 4);
}

std::string header (RecordType type, std::int32_t size, ViewOrigin origin) {
    std::string out;
    put (out, static_cast<std::int32_t> (type));
    put (out, size);
    put (out, origin.x);
    put (out, origin.y);
    return out;
}

void put_ids (std::string& out, const std::vector<std::int32_t>& ids) {
    put (out, static_cast<std::int32_t> (ids.size ()));
    for (const std::int32_t id : ids) put (out, id);
}

/// Count and ids that fill `bytes` exactly.
std::optional<std::vector<std::int32_t>> read_ids (std::string_view bytes) {
    if (bytes.size () < 4 || bytes.size () % 4 != 0) return std::nullopt;
    const std::size_t count = bytes.size () / 4 - 1;
    if (int_at (bytes, 0) < 0 || static_cast<std::size_t> (int_at (bytes, 0)) != count) {
        return std::nullopt;
    }
    std::vector<std::int32_t> ids (count);
    for (std::size_t i = 0; i < count; ++i) ids[i] = int_at (bytes, 4 + 4 * i);
    return ids;
}

} // namespace

std::string snapshot_record (ViewOrigin origin, std::int32_t previous_snapshot,
                             std::string_view text, const std::vector<std::int32_t>& selection) {
    std::string out =
        header (RecordType::snapshot, static_cast<std::int32_t> (text.size ()), origin);
    out.reserve (out.size () + text.size () + 4 * selection.size () + 12);
    put (out, previous_snapshot);
    put (out, selection_size (selection.size ()));
    out += text;
    put_ids (out, selection);
    return out;
}

std::string selection_record (ViewOrigin origin, const std::vector<std::int32_t>& ids) {
    std::string out = header (RecordType::selection, selection_size (ids.size ()), origin);
    put_ids (out, ids);
    return out;
}

std::string move_record (ViewOrigin origin, std::int32_t dx, std::int32_t dy) {
    std::string out = header (RecordType::move, 8, origin);
    put (out, dx);
    put (out, dy);
    return out;
}

std::string kind_record (ViewOrigin origin, std::int32_t id, std::int32_t value) {
    std::string out = header (RecordType::kind, 8, origin);
    put (out, id);
    put (out, value);
    return out;
}

std::string colour_record (ViewOrigin origin, std::int32_t id, std::uint32_t value) {
    std::string out = header (RecordType::colour, 8, origin);
    put (out, id);
    put (out, value);
    return out;
}

std::string labels_record (ViewOrigin origin, std::int32_t id, std::string_view text) {
    std::string out =
        header (RecordType::labels, static_cast<std::int32_t> (text.size () + 4), origin);
    put (out, id);
    out += text;
    return out;
}

std::int64_t RecordHeader::length () const {
    if (type != RecordType::snapshot) return std::int64_t{record_header_size} + size;
    return std::int64_t{snapshot_header_size} + size + selection_size;
}

std::optional<RecordHeader> read_record_header (std::string_view bytes) {
    if (bytes.size () < static_cast<std::size_t> (record_header_size)) return std::nullopt;
    const std::int32_t type = int_at (bytes, 0);
    if (type < static_cast<std::int32_t> (RecordType::snapshot) ||
        type > static_cast<std::int32_t> (RecordType::labels)) {
        return std::nullopt;
    }
    RecordHeader read;
    read.type = static_cast<RecordType> (type);
    read.size = int_at (bytes, 4);
    read.origin = {float_at (bytes, 8), float_at (bytes, 12)};
    if (read.size < 0 || !std::isfinite (read.origin.x) || !std::isfinite (read.origin.y)) {
        return std::nullopt;
    }
    if (read.type == RecordType::snapshot) {
        if (bytes.size () < static_cast<std::size_t> (snapshot_header_size)) return std::nullopt;
        read.previous_snapshot = int_at (bytes, 16);
        read.selection_size = int_at (bytes, 20);
        if (read.selection_size < 4 || read.selection_size % 4 != 0 ||
            read.previous_snapshot < no_snapshot) {
            return std::nullopt;
        }
    }
    return read;
}

std::optional<Record> read_record (std::string_view bytes) {
    const std::optional<RecordHeader> front = read_record_header (bytes);
    if (!front || static_cast<std::int64_t> (bytes.size ()) != front->length ())
        return std::nullopt;
    Record record;
    record.header = *front;
    if (front->type == RecordType::snapshot) {
        const auto size = static_cast<std::size_t> (front->size);
        record.text = bytes.substr (static_cast<std::size_t> (snapshot_header_size), size);
        std::optional<std::vector<std::int32_t>> ids =
            read_ids (bytes.substr (static_cast<std::size_t> (snapshot_header_size) + size));
        if (!ids) return std::nullopt;
        record.ids = std::move (*ids);
        return record;
    }
    const std::string_view payload = bytes.substr (static_cast<std::size_t> (record_header_size));
    switch (front->type) {
    case RecordType::selection: {
        std::optional<std::vector<std::int32_t>> ids = read_ids (payload);
        if (!ids) return std::nullopt;
        record.ids = std::move (*ids);
        break;
    }
    case RecordType::move:
        if (payload.size () != 8) return std::nullopt;
        record.dx = int_at (payload, 0);
        record.dy = int_at (payload, 4);
        break;
    case RecordType::kind:
    case RecordType::colour:
        if (payload.size () != 8) return std::nullopt;
        record.ids = {int_at (payload, 0)};
        record.value = word_at (payload, 4);
        break;
    case RecordType::labels:
        if (payload.size () < 4) return std::nullopt;
        record.ids = {int_at (payload, 0)};
        record.text = payload.substr (4);
        break;
    case RecordType::snapshot: break;
    }
    return record;
}

std::string snapshot_text (const std::optional<std::string>& file_name, bool modified,
                           std::string_view network) {
    std::string text = "#";
    text += file_name ? *file_name : untitled;
    text += format_text ("\n#modified = %d\n", modified ? 1 : 0);
    text += network;
    text += '\n';
    return text;
}

std::optional<SnapshotText> read_snapshot_text (std::string_view text) {
    static constexpr std::string_view flag_front = "#modified = ";
    const std::size_t name_end = text.find ('\n');
    if (!text.starts_with ('#') || name_end == std::string_view::npos) return std::nullopt;
    const std::string_view name = text.substr (1, name_end - 1);
    text.remove_prefix (name_end + 1);
    const std::size_t flag_end = text.find ('\n');
    if (!text.starts_with (flag_front) || flag_end == std::string_view::npos) return std::nullopt;
    SnapshotText read;
    if (name != untitled) read.file_name = std::string (name);
    read.modified = parse_atoi (text.substr (flag_front.size (), flag_end)) == 1;
    read.network = text.substr (flag_end + 1);
    return read;
}

} // namespace ostrand::editor
