// One circuit with one output, as a trial looks at it. Inside this folder's trial files only.
// Layer: gates.
#pragma once
#include "gates/circuit_trial.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ostrand::gates {

/// An assignment is a bit set over the free elements: a set bit means held abundant, the others are
/// not supplied. Elements that the output does not depend on are left out; they multiply counts.
struct CircuitTrial::OutputView {
    const Circuit& circuit;
    int output;
    std::pmr::vector<std::uint8_t> closure = circuit.backward_closure (output);
    Columns upstream{circuit.memory ()};                // candidate inputs, ascending
    std::pmr::vector<double> levels{circuit.memory ()}; // by local column

    Columns free{circuit.memory ()}; // columns of the free elements, by rank
    Columns choosable{
        circuit.memory ()};          // ranks of those that may be inputs; ascending, columns too
    Columns held{circuit.memory ()}; // columns that every assignment holds abundant, ascending
    std::uint64_t weight = 1;        // assignments that one assignment stands for
    int block_bits = 0;              // low ranks that one block of tables covers
    std::size_t block_words = 1;
    int most_inputs = 0; // of the groups that are tried by pattern

    std::shared_ptr<const GateSite> site () const {
        const auto copy = [] (const Columns& columns) {
            return std::vector<int> (columns.begin (), columns.end ());
        };
        return std::make_shared<const GateSite> (
            GateSite{copy (circuit.enzymes), copy (upstream), copy (circuit.forks)});
    }
};

/// Ranks within one block of tables at most: a block of one set of fed inputs is 512 bytes.
inline constexpr int most_block_bits = 12;
/// Words of all tables of a block at most (where more than one word a table): 128 MiB.
inline constexpr std::uint64_t most_table_words = std::uint64_t{1} << 24;
/// Assignments are numbered in 64 bits. More free elements than this would outlast any patience.
inline constexpr std::size_t most_free = 62;

} // namespace ostrand::gates
