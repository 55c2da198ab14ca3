// Token games of one circuit and output side by side: 32 games in the lanes of vectors, in whatever
// width the processor has.
// Layer: gates.
#pragma once
#include "gates/circuit.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ostrand::gates {

/// Games of one run.
inline constexpr int lane_count = 32;

/// The part of a circuit that decides about one output, as index lists that a run walks. State
/// columns are the circuit's local columns of that part, numbered anew. Lives in the circuit's
/// memory.
struct LaneProgram {
    using Indices = std::pmr::vector<std::uint32_t>;

    LaneProgram (const Circuit& circuit, const std::pmr::vector<std::uint8_t>& closure, int output,
                 bool multiple);

    int column_count = 0;
    int row_count = 0;
    int output = 0;
    int firing_limit = 0;
    bool multiple = true;
    /// What an abundant element holds: more tokens than any column can lose, or the abundant level
    /// where that is less.
    std::int64_t plenty = 0;
    /// What an input holds at most. More would make no difference.
    std::int64_t most_level = 0;
    /// Whether every count fits 16 bits.
    bool narrow = false;
    Columns state_column; // by local column; -1 where it plays no part
    Indices need_begin;   // by row, and the end of the last
    Indices needs;        // state columns that must hold a token
    Columns mark;         // by row: state column that must stand at the mark, or -1
    Indices loss_begin;   // by state column, and the end of the last
    Indices losses;       // rows that take from it
    Indices gain_begin;
    Indices gains;  // rows that add to it
    Indices marked; // state columns that are enzymes
};

/// A start column whose tokens differ between lanes: `plenty` where bit `rank` of the lane's
/// assignment is set, else the level of the input where it is one that is fed, else nothing.
struct LaneElement {
    int column = 0; // of the state
    std::int64_t level = 0;
};

/// One run: lanes are cut into slots of 2 to the power `slot_shift` (at most 5). Lane l plays the
/// assignment `base` plus its place in its slot; slot s feeds the elements of fed[s].
struct LaneRun {
    std::uint64_t base = 0;
    int slot_shift = 5;
    const std::uint64_t* fed = nullptr;
    int slot_count = 1;
};

/// Plays games. Holds the vectors of a run, so that one player serves a thread.
class LanePlayer {
  public:
    LanePlayer ();
    ~LanePlayer ();
    LanePlayer (const LanePlayer&) = delete;
    LanePlayer& operator= (const LanePlayer&) = delete;

    /// Makes ready for a program, which must outlive the runs. `abundant` are state columns that
    /// always hold plenty.
    void set_program (const LaneProgram& program, std::span<const LaneElement> elements,
                      std::span<const int> abundant);
    /// Bit l: the output of lane l reached its target.
    std::uint32_t play (const LaneRun& run);

  private:
    struct Buffers;
    std::unique_ptr<Buffers> buffers_;
};

} // namespace ostrand::gates
