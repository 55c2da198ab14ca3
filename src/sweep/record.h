// The records that sweeps are kept in while they go on, and that shards are made of.
// Layer: sweep.
#pragma once
#include "sim/deflated_text.h"
#include "sim/lane_group.h"
#include "sweep/bytes.h"
#include "sweep/sweep_plan.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

enum class RecordKind : std::uint32_t {
    identity = 1, // whose file this is: the first record
    series = 2,
    unit = 3,
    seal = 4,   // the last record of a shard: nothing is missing
    result = 5, // of a journal: the unfinished file that the result was being written to
};

/// A simulation's state among other values.
void put_state (ByteWriter& writer, const sim::SimulationState& state);
sim::SimulationState take_state (ByteReader& reader);

/// Recorded points of some simulations that went on together.
struct SeriesRecord {
    std::uint64_t first_simulation = 0;
    std::uint32_t simulations = 0;
    std::uint32_t first_point = 0;
    std::uint32_t points = 0;
    std::uint64_t time_steps = 0;             // that the simulations have done
    std::vector<std::uint32_t> counts;        // by simulation, displayed species, point
    std::vector<sim::SimulationState> states; // where they stand; empty when they are finished

    bool finished () const { return states.empty (); }
    std::string to_bytes () const;
    static std::optional<SeriesRecord> from_bytes (std::string_view bytes);
};

/// A compressed unit of the result.
struct UnitRecord {
    std::uint64_t index = 0;
    sim::DeflatedText text;

    std::string to_bytes () const;
    static std::optional<UnitRecord> from_bytes (std::string_view bytes);
};

/// Compresses a unit; the first one has the head of the result in front of it.
UnitRecord deflated_unit (const SweepIdentity& identity, std::uint64_t index,
                          std::span<const std::uint32_t> counts);

/// Bytes of a record as it stands in a file: kind, length, their checksum, content, its checksum.
std::string framed (RecordKind kind, std::string_view content);

/// Bytes in front of and behind a record's content.
inline constexpr std::size_t frame_head = 16;
inline constexpr std::size_t frame_tail = 4;

struct FrameHead {
    RecordKind kind{};
    std::uint64_t size = 0; // of the content
};

/// Nothing when the checksum is another one.
/// head  the first `frame_head` bytes of a record
std::optional<FrameHead> read_frame_head (std::string_view head);
/// body  content and checksum
bool is_sound_body (std::string_view body);

} // namespace ostrand::sweep
