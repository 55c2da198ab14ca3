// The vector form of the token game. A pass of all games at once: each row's lanes that can fire,
// then what each column loses and gains. A game is over in a lane when nothing fires there, or when
// its output has reached the target, for no row consumes an output.
#include "gates/lane_games.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace ostrand::gates {
namespace {

// Vectors of exactly the processor's width, 16 and 32 bytes: wider ones are not reliably lowered by
// every compiler. A run of 32 lanes is played in as many parts as it takes.
using Narrow16 = std::int16_t __attribute__ ((vector_size (16)));
using Narrow32 = std::int16_t __attribute__ ((vector_size (32)));
using Wide16 = std::int32_t __attribute__ ((vector_size (16)));
using Wide32 = std::int32_t __attribute__ ((vector_size (32)));

/// The type of one lane.
template <class Lanes>
struct CountOf;
template <>
struct CountOf<Narrow16> {
    using type = std::int16_t;
};
template <>
struct CountOf<Narrow32> {
    using type = std::int16_t;
};
template <>
struct CountOf<Wide16> {
    using type = std::int32_t;
};
template <>
struct CountOf<Wide32> {
    using type = std::int32_t;
};
template <class Lanes>
using Count = typename CountOf<Lanes>::type;

/// Lanes of one vector.
template <class Lanes>
inline constexpr int width = static_cast<int> (sizeof (Lanes) / sizeof (Count<Lanes>));

std::size_t at (int index) { return static_cast<std::size_t> (index); }

/// Sorts pairs (list, item) into one array with the place where each list begins.
void flatten (const std::pmr::vector<Columns>& lists, LaneProgram::Indices& begin,
              LaneProgram::Indices& items) {
    for (const Columns& list : lists) {
        begin.push_back (static_cast<std::uint32_t> (items.size ()));
        for (const int item : list) items.push_back (static_cast<std::uint32_t> (item));
    }
    begin.push_back (static_cast<std::uint32_t> (items.size ()));
}

/// Two vectors are played together, which halves the work of walking the index lists.
template <class Lanes>
inline constexpr int pair_width = 2 * width<Lanes>;
/// Pairs that make up a run.
template <class Lanes>
inline constexpr unsigned parts = static_cast<unsigned> (lane_count / pair_width<Lanes>);

/// A pair in an array. The alignment is told here, for without the processor's own option a
/// compiler may take less for granted.
template <class Lanes>
struct alignas (sizeof (Lanes)) Track {
    Lanes v;
    Lanes w; // the lanes behind those of v
};
template <class Lanes>
using TrackList = std::vector<Track<Lanes>>;

/// The vectors of a program's games.
template <class Lanes>
struct Tracks {
    TrackList<Lanes> state;   // by state column
    TrackList<Lanes> masks;   // by row: -1 in the lanes where it fires in this pass
    TrackList<Lanes> fuel;    // by row: how often it may still fire
    TrackList<Lanes> pattern; // by rank below 5 and part: -1 in lanes with that bit
    TrackList<Lanes> fixed;   // start of the columns that are alike in all lanes
};

/// True when a lane is set.
template <class Lanes>
[[gnu::always_inline]] inline bool any_lane (const Lanes& lanes) {
    std::uint64_t words[sizeof (Lanes) / 8]; // NOLINT: std::array is not inlined with a target
    __builtin_memcpy (words, &lanes, sizeof (Lanes));
    std::uint64_t all = 0;
    for (const std::uint64_t word : words) all |= word;
    return all != 0;
}

template <class Lanes>
[[gnu::always_inline]] inline std::uint32_t lane_bits (const Lanes& lanes) {
    Count<Lanes> counts[width<Lanes>]; // NOLINT: as above
    __builtin_memcpy (counts, &lanes, sizeof (Lanes));
    std::uint32_t bits = 0;
    for (int l = 0; l < width<Lanes>; ++l) bits |= (counts[l] != 0 ? 1U : 0U) << l;
    return bits;
}

template <class Lanes>
[[gnu::always_inline]] inline void
set_start (const LaneProgram& program, const LaneElement* elements, std::size_t element_count,
           const LaneRun& run, int part, Tracks<Lanes>& tracks) {
    const Lanes none{};
    Track<Lanes>* state = tracks.state.data ();
    const Track<Lanes>* fixed = tracks.fixed.data ();
    for (int c = 0; c < program.column_count; ++c) state[c] = fixed[c];
    const Count<Lanes> plenty = static_cast<Count<Lanes>> (program.plenty);
    for (std::size_t rank = 0; rank < element_count; ++rank) {
        const LaneElement& element = elements[rank];
        const Count<Lanes> level = static_cast<Count<Lanes>> (element.level);
        Lanes low = none;
        Lanes low_w = none;
        if (run.slot_count == 1) {
            if ((run.fed[0] >> rank & 1) != 0) low = low_w = none + level;
        } else {
            const int first = part * pair_width<Lanes>;
            for (int l = 0; l < width<Lanes>; ++l) {
                const int slot = (first + l) >> run.slot_shift;
                if (slot < run.slot_count && (run.fed[slot] >> rank & 1) != 0) low[l] = level;
                const int slot_w = (first + width<Lanes> + l) >> run.slot_shift;
                if (slot_w < run.slot_count && (run.fed[slot_w] >> rank & 1) != 0) {
                    low_w[l] = level;
                }
            }
        }
        Track<Lanes>& start = state[element.column];
        if (rank < 5) {
            const Track<Lanes>& pattern =
                tracks.pattern[rank * parts<Lanes> + static_cast<unsigned> (part)];
            start.v = (pattern.v & (none + plenty)) | (~pattern.v & low);
            start.w = (pattern.w & (none + plenty)) | (~pattern.w & low_w);
        } else if ((run.base >> rank & 1) != 0) {
            start.v = start.w = none + plenty;
        } else {
            start.v = low;
            start.w = low_w;
        }
    }
    const Count<Lanes> limit = static_cast<Count<Lanes>> (program.firing_limit);
    Track<Lanes>* fuel = tracks.fuel.data ();
    for (int r = 0; r < program.row_count; ++r) fuel[r].v = fuel[r].w = none + limit;
}

template <class Lanes>
[[gnu::always_inline]] inline std::uint32_t
play_games (const LaneProgram& program, const LaneElement* elements, std::size_t element_count,
            const LaneRun& run, int part, Tracks<Lanes>& tracks) {
    set_start (program, elements, element_count, run, part, tracks);
    const Lanes none{};
    const Lanes target = none + static_cast<Count<Lanes>> (target_level);
    const Lanes mark = none + static_cast<Count<Lanes>> (enzyme_mark);
    Track<Lanes>* state = tracks.state.data ();
    Track<Lanes>* masks = tracks.masks.data ();
    Track<Lanes>* fuel = tracks.fuel.data ();
    const std::uint32_t* needs = program.needs.data ();
    const std::uint32_t* need_begin = program.need_begin.data ();
    const std::uint32_t* losses = program.losses.data ();
    const std::uint32_t* loss_begin = program.loss_begin.data ();
    const std::uint32_t* gains = program.gains.data ();
    const std::uint32_t* gain_begin = program.gain_begin.data ();
    const int* marks = program.mark.data ();
    for (;;) {
        Lanes any = none;
        Lanes any_w = none;
        for (int r = 0; r < program.row_count; ++r) {
            Lanes fires = fuel[r].v > none;
            Lanes fires_w = fuel[r].w > none;
            for (unsigned k = need_begin[r]; k < need_begin[r + 1]; ++k) {
                fires &= state[needs[k]].v > none;
                fires_w &= state[needs[k]].w > none;
            }
            if (marks[r] >= 0) {
                fires &= state[marks[r]].v == mark;
                fires_w &= state[marks[r]].w == mark;
            }
            masks[r].v = fires;
            masks[r].w = fires_w;
            fuel[r].v += fires;
            fuel[r].w += fires_w;
            any |= fires;
            any_w |= fires_w;
        }
        for (int c = 0; c < program.column_count; ++c) {
            // As negative counts, like the masks.
            Lanes lost = none;
            Lanes lost_w = none;
            Lanes gained = none;
            Lanes gained_w = none;
            for (unsigned k = loss_begin[c]; k < loss_begin[c + 1]; ++k) {
                const Track<Lanes>& fired = masks[losses[k]];
                lost = program.multiple ? lost + fired.v : lost | fired.v;
                lost_w = program.multiple ? lost_w + fired.w : lost_w | fired.w;
            }
            for (unsigned k = gain_begin[c]; k < gain_begin[c + 1]; ++k) {
                const Track<Lanes>& fired = masks[gains[k]];
                gained = program.multiple ? gained + fired.v : gained | fired.v;
                gained_w = program.multiple ? gained_w + fired.w : gained_w | fired.w;
            }
            state[c].v += lost - gained;
            state[c].w += lost_w - gained_w;
        }
        const Lanes reached = state[program.output].v >= target;
        const Lanes reached_w = state[program.output].w >= target;
        if (!any_lane ((any & ~reached) | (any_w & ~reached_w))) {
            return lane_bits (reached) | lane_bits (reached_w) << width<Lanes>;
        }
    }
}

template <class Lanes>
[[gnu::always_inline]] inline std::uint32_t
play_parts (const LaneProgram& program, const LaneElement* elements, std::size_t element_count,
            const LaneRun& run, Tracks<Lanes>& tracks) {
    std::uint32_t bits = 0;
    const int lanes = run.slot_count << run.slot_shift;
    for (int part = 0; part * pair_width<Lanes> < lanes; ++part) {
        bits |= play_games (program, elements, element_count, run, part, tracks)
                << (part * pair_width<Lanes>);
    }
    return bits;
}

template <class Lanes>
std::uint32_t play (const LaneProgram& program, const LaneElement* elements,
                    std::size_t element_count, const LaneRun& run, Tracks<Lanes>& tracks) {
    return play_parts (program, elements, element_count, run, tracks);
}

#if defined(__x86_64__)
template <class Lanes>
__attribute__ ((target ("avx2"))) std::uint32_t
play_avx2 (const LaneProgram& program, const LaneElement* elements, std::size_t element_count,
           const LaneRun& run, Tracks<Lanes>& tracks) {
    return play_parts (program, elements, element_count, run, tracks);
}
bool has_avx2 () { return __builtin_cpu_supports ("avx2") != 0; }
#else
template <class Lanes>
std::uint32_t play_avx2 (const LaneProgram& program, const LaneElement* elements,
                         std::size_t element_count, const LaneRun& run, Tracks<Lanes>& tracks) {
    return play_parts (program, elements, element_count, run, tracks);
}
bool has_avx2 () { return false; }
#endif

template <class Lanes>
void prepare (Tracks<Lanes>& tracks, const LaneProgram& program, std::span<const int> abundant) {
    const Lanes none{};
    tracks.state.assign (at (program.column_count), {none, none});
    tracks.fixed.assign (at (program.column_count), {none, none});
    tracks.masks.assign (at (program.row_count), {none, none});
    tracks.fuel.assign (at (program.row_count), {none, none});
    for (const std::uint32_t column : program.marked) {
        tracks.fixed[column].v = tracks.fixed[column].w =
            none + static_cast<Count<Lanes>> (enzyme_mark);
    }
    for (const int column : abundant) {
        tracks.fixed[at (column)].v = tracks.fixed[at (column)].w =
            none + static_cast<Count<Lanes>> (program.plenty);
    }
    if (!tracks.pattern.empty ()) return;
    for (int rank = 0; rank < 5; ++rank) {
        for (int first = 0; first < lane_count; first += pair_width<Lanes>) {
            Track<Lanes>& pattern = tracks.pattern.emplace_back (Track<Lanes>{none, none});
            for (int l = 0; l < width<Lanes>; ++l) {
                pattern.v[l] = ((first + l) >> rank & 1) != 0 ? -1 : 0;
                pattern.w[l] = ((first + width<Lanes> + l) >> rank & 1) != 0 ? -1 : 0;
            }
        }
    }
}

} // namespace

LaneProgram::LaneProgram (const Circuit& circuit, const std::pmr::vector<std::uint8_t>& closure,
                          int output_column, bool multiple_firing)
    : firing_limit (circuit.firing_limit), multiple (multiple_firing),
      state_column (at (circuit.local_count ()), -1, circuit.memory ()),
      need_begin (circuit.memory ()), needs (circuit.memory ()), mark (circuit.memory ()),
      loss_begin (circuit.memory ()), losses (circuit.memory ()), gain_begin (circuit.memory ()),
      gains (circuit.memory ()), marked (circuit.memory ()) {
    const auto in_closure = [&] (int column) { return closure[at (column)] != 0; };
    std::pmr::memory_resource* const memory = circuit.memory ();
    std::pmr::vector<const Circuit::LocalRow*> rows (memory);
    std::pmr::vector<std::uint8_t> can_lose (closure.size (),
                                             memory); // enzymes that an inhibitor disables
    for (const Circuit::LocalRow& row : circuit.local_rows ()) {
        // The closure holds all that a row needs when it holds anything that the row changes.
        const bool counts = std::any_of (row.needs.begin (), row.needs.end (), in_closure) ||
                            std::any_of (row.gains.begin (), row.gains.end (), in_closure) ||
                            (row.inhibition && in_closure (row.enzyme));
        if (!counts) continue;
        rows.push_back (&row);
        if (row.inhibition) can_lose[at (row.enzyme)] = 1;
    }
    row_count = static_cast<int> (rows.size ());
    const auto place = [&] (int column) {
        if (state_column[at (column)] < 0) state_column[at (column)] = column_count++;
        return state_column[at (column)];
    };
    output = place (circuit.local (output_column));
    std::pmr::vector<Columns> row_needs (memory);
    std::pmr::vector<Columns> column_losses (closure.size (), memory);
    std::pmr::vector<Columns> column_gains (closure.size (), memory);
    for (int r = 0; r < row_count; ++r) {
        const Circuit::LocalRow& row = *rows[at (r)];
        Columns& need = row_needs.emplace_back ();
        for (const int column : row.needs) {
            need.push_back (place (column));
            column_losses[at (place (column))].push_back (r);
        }
        for (const int column : row.gains) {
            if (in_closure (column)) column_gains[at (place (column))].push_back (r);
        }
        mark.push_back (-1);
        if (can_lose[at (row.enzyme)] == 0) continue; // stands at its mark for ever
        const int enzyme = place (row.enzyme);
        if (row.inhibition) {
            need.push_back (enzyme);
            column_losses[at (enzyme)].push_back (r);
        } else {
            mark.back () = enzyme;
        }
    }
    for (int column = 0; column < circuit.local_count (); ++column) {
        if (can_lose[at (column)] != 0) {
            marked.push_back (static_cast<std::uint32_t> (state_column[at (column)]));
        }
    }
    column_losses.resize (at (column_count));
    column_gains.resize (at (column_count));
    flatten (row_needs, need_begin, needs);
    flatten (column_losses, loss_begin, losses);
    flatten (column_gains, gain_begin, gains);
    const std::int64_t most_lost = std::int64_t{row_count} * firing_limit;
    plenty = std::min<std::int64_t> (most_lost + 1, abundant_level);
    most_level = std::min<std::int64_t> (most_lost + 1, most_tokens);
    narrow = 2 * most_lost + 1 <= std::numeric_limits<std::int16_t>::max ();
}

struct LanePlayer::Buffers {
    const LaneProgram* program = nullptr;
    std::vector<LaneElement> elements;
    Tracks<Narrow16> narrow16;
    Tracks<Narrow32> narrow32;
    Tracks<Wide16> wide16;
    Tracks<Wide32> wide32;
    bool avx2 = has_avx2 ();

    /// Calls `use` with the tracks that serve the program on this processor.
    template <class Use>
    auto with_tracks (const Use& use) {
        if (program->narrow) return avx2 ? use (narrow32) : use (narrow16);
        return avx2 ? use (wide32) : use (wide16);
    }
};

LanePlayer::LanePlayer () : buffers_ (std::make_unique<Buffers> ()) {}
LanePlayer::~LanePlayer () = default;

void LanePlayer::set_program (const LaneProgram& program, std::span<const LaneElement> elements,
                              std::span<const int> abundant) {
    buffers_->program = &program;
    buffers_->elements.assign (elements.begin (), elements.end ());
    for (LaneElement& element : buffers_->elements) {
        element.level = std::min (element.level, program.most_level);
    }
    buffers_->with_tracks ([&] (auto& tracks) { prepare (tracks, program, abundant); });
}

std::uint32_t LanePlayer::play (const LaneRun& run) {
    const LaneElement* elements = buffers_->elements.data ();
    const std::size_t count = buffers_->elements.size ();
    const LaneProgram& program = *buffers_->program;
    return buffers_->with_tracks ([&]<class Lanes> (Tracks<Lanes>& tracks) {
        return sizeof (Lanes) == 32 ? play_avx2 (program, elements, count, run, tracks)
                                    : gates::play (program, elements, count, run, tracks);
    });
}

} // namespace ostrand::gates
