// Records as bytes.
#include "sweep/record.h"

#include <climits>
#include <utility>
#include <zlib.h>

namespace ostrand::sweep {
namespace {

std::uint32_t checksum (std::string_view bytes) {
    return static_cast<std::uint32_t> (crc32_z (
        crc32_z (0, nullptr, 0), reinterpret_cast<const Bytef*> (bytes.data ()), bytes.size ()));
}

} // namespace

void put_state (ByteWriter& writer, const sim::SimulationState& state) {
    writer.put_words (state.counts);
    writer.put_long (state.amounts.size ());
    for (const double amount : state.amounts) writer.put_double (amount);
    writer.put_long (state.random.rd_state0);
    writer.put_long (state.random.rd_state1);
}

sim::SimulationState take_state (ByteReader& reader) {
    sim::SimulationState state;
    state.counts = reader.take_words ();
    const std::uint64_t amounts = reader.take_long ();
    for (std::uint64_t i = 0; i < amounts && reader.well (); ++i) {
        state.amounts.push_back (reader.take_double ());
    }
    state.random.rd_state0 = reader.take_long ();
    state.random.rd_state1 = reader.take_long ();
    return state;
}

std::string SeriesRecord::to_bytes () const {
    ByteWriter writer;
    writer.put_long (first_simulation);
    writer.put_word (simulations);
    writer.put_word (first_point);
    writer.put_word (points);
    writer.put_long (time_steps);
    writer.put_words (counts);
    writer.put_word (static_cast<std::uint32_t> (states.size ()));
    for (const sim::SimulationState& state : states) put_state (writer, state);
    return std::move (writer.bytes);
}

std::optional<SeriesRecord> SeriesRecord::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    SeriesRecord record;
    record.first_simulation = reader.take_long ();
    record.simulations = reader.take_word ();
    record.first_point = reader.take_word ();
    record.points = reader.take_word ();
    record.time_steps = reader.take_long ();
    record.counts = reader.take_words ();
    const std::uint32_t states = reader.take_word ();
    for (std::uint32_t i = 0; i < states && reader.well (); ++i) {
        record.states.push_back (take_state (reader));
    }
    const bool sound = reader.finished () && record.simulations > 0 &&
                       (states == 0 || states == record.simulations);
    if (!sound) return std::nullopt;
    return record;
}

std::string UnitRecord::to_bytes () const {
    ByteWriter writer;
    writer.put_long (index);
    writer.put_long (text.bits);
    writer.put_long (text.text_size);
    writer.put_word (text.crc);
    writer.put_text (text.bytes);
    return std::move (writer.bytes);
}

std::optional<UnitRecord> UnitRecord::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    UnitRecord record;
    record.index = reader.take_long ();
    record.text.bits = reader.take_long ();
    record.text.text_size = reader.take_long ();
    record.text.crc = reader.take_word ();
    record.text.bytes = reader.take_text ();
    const bool sound = reader.finished () && record.text.bits > 0 &&
                       (record.text.bits + CHAR_BIT - 1) / CHAR_BIT == record.text.bytes.size ();
    if (!sound) return std::nullopt;
    return record;
}

UnitRecord deflated_unit (const SweepIdentity& identity, std::uint64_t index,
                          std::span<const std::uint32_t> counts) {
    return {index, sim::deflate_unit (counts, index == 0 ? std::string_view (identity.head)
                                                         : std::string_view ())};
}

std::string framed (RecordKind kind, std::string_view content) {
    ByteWriter writer;
    writer.put_word (static_cast<std::uint32_t> (kind));
    writer.put_long (content.size ());
    writer.put_word (checksum (writer.bytes));
    writer.bytes += content;
    writer.put_word (checksum (content));
    return std::move (writer.bytes);
}

std::optional<FrameHead> read_frame_head (std::string_view head) {
    ByteReader reader (head);
    FrameHead result;
    result.kind = static_cast<RecordKind> (reader.take_word ());
    result.size = reader.take_long ();
    const std::uint32_t sum = reader.take_word ();
    if (!reader.well () || sum != checksum (head.substr (0, frame_head - 4))) return std::nullopt;
    return result;
}

bool is_sound_body (std::string_view body) {
    if (body.size () < frame_tail) return false;
    const std::size_t size = body.size () - frame_tail;
    return ByteReader (body.substr (size)).take_word () == checksum (body.substr (0, size));
}

} // namespace ostrand::sweep
