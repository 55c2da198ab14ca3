// A set of enzymes under test: which metabolites enter and leave, what an output depends on, how
// many tokens an input must bring, and the token game.
// Layer: gates.
#pragma once
#include "gates/equation_graph.h"

#include <cstdint>
#include <memory_resource>
#include <span>
#include <vector>

namespace ostrand::gates {

/// Tokens that the output must reach, and the seed of the required levels.
inline constexpr double target_level = 10.0;
/// Tokens given to an element that is held abundant.
inline constexpr int abundant_level = 1000000;
/// Bound of the tokens that a truth table of odd values can ask for, either sign.
inline constexpr int most_tokens = 1000000000;

/// Columns of a circuit, in the circuit's memory.
using Columns = std::pmr::vector<int>;

/// The rows of some enzymes over the columns that they touch. Inside, columns are numbered by their
/// rank among the touched ones ("local"), which keeps their order; the named sets hold columns of
/// the graph.
class Circuit {
  public:
    /// enzymes  their columns, in the order in which their rows are added
    /// memory   for the circuit and all that it answers; a search tries millions of circuits
    Circuit (const EquationGraph& graph, std::span<const int> enzymes,
             std::pmr::memory_resource* memory = std::pmr::get_default_resource ());

    const EquationGraph& graph () const { return *graph_; }
    std::pmr::memory_resource* memory () const { return rows.get_allocator ().resource (); }

    Columns rows;               // row numbers of the graph, in order of addition
    Columns enzymes;            // ascending
    Columns touched;            // every column that takes part, ascending
    Columns primary_substrates; // consumed, made by none of the rows; ascending
    Columns final_products;     // made, consumed by none; ascending
    Columns all_substrates;     // every column with -1 in a row; ascending
    Columns forks;              // consumed by more than one row; ascending
    int firing_limit = 0;       // how often a row may fire

    /// Candidate inputs of a final product: the primary substrates that it depends on, ascending.
    Columns upstream (int output) const;
    /// What the tokens of `output` depend on in a game, by local column: 1 where they do. Rows that
    /// touch none of these columns by 1, -1 or -2 cannot change the output.
    std::pmr::vector<std::uint8_t> backward_closure (int output) const;
    /// Tokens that each column must bring for `output` to reach the target, by local column.
    std::pmr::vector<double> required_levels (int output) const;

    /// Fires the rows until nothing can fire.
    /// tokens    start state, one per column of the graph; gives the end state
    /// multiple  a column loses and gains as many tokens as rows ask for in a pass, else one
    std::vector<int> token_game (std::vector<int> tokens, bool multiple) const;

    /// A row over local columns.
    struct LocalRow {
        int enzyme = 0;          // local
        bool inhibition = false; // consumes its enzyme, where the others need it at its mark
        Columns needs;           // columns with -1
        Columns gains;           // columns with 1
    };
    const std::pmr::vector<LocalRow>& local_rows () const { return local_rows_; }
    /// Rank of a column that is touched.
    int local (int column) const;
    int local_count () const { return static_cast<int> (touched.size ()); }

  private:
    void derive_sets ();

    const EquationGraph* graph_;
    std::pmr::vector<LocalRow> local_rows_;
};

} // namespace ostrand::gates
