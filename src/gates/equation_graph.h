// A metabolic network as numbers: rows, the firing rules of a token game, over common columns, the
// enzymes and the metabolites.
// Layer: gates.
#pragma once
#include "gates/reaction.h"

#include <map>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::gates {

/// What stands in a row.
inline constexpr int substrate_value = -1; // needs a token and consumes one
inline constexpr int product_value = 1;    // gains a token
inline constexpr int enzyme_mark = 2;      // the enzyme must hold exactly this many; not consumed
inline constexpr int inhibited_value = -2; // the enzyme is consumed like a substrate

/// One firing rule. Only the columns that take part are kept.
struct EquationRow {
    struct Entry {
        int column;
        int value;
    };
    int enzyme = 0;
    std::vector<Entry> entries; // ascending columns, no zero among them

    /// The value at a column, 0 where it takes no part.
    int value (int column) const;
};

/// The rows of a network in the order of their creation; row numbers index `rows`. Columns are
/// numbered with all enzymes first, in the order in which the reactions bring them, then the
/// metabolites in name order.
struct EquationGraph {
    std::map<std::string, int> enzymes; // "Nb Enzymes" is its size
    std::map<std::string, int> columns; // "Nb Elements" is its size; an element hides an enzyme of
                                        // the same name here, each has its own column all the same
    std::vector<std::string> names;     // by column; its size is the length of a row
    std::vector<EquationRow> rows;
    std::vector<std::vector<int>> rows_of_enzyme; // by enzyme column
    std::vector<int> partner;   // by enzyme column: the other direction's enzyme, -1 when none
    std::vector<int> equations; // seed rows: the first row of each enzyme, in order of creation

    int length () const { return static_cast<int> (names.size ()); }
    int enzyme_count () const { return static_cast<int> (enzymes.size ()); }
    int element_count () const { return static_cast<int> (columns.size ()); }
    /// The name under which an enzyme is written: a reverse enzyme ("_R") goes by its partner's.
    const std::string& written_name (int enzyme) const;
};

/// The search runs for this many enzymes at most.
inline constexpr int most_enzymes = 240;

/// Gives each reaction without an enzyme its own id as one, as the graph needs it.
void add_stand_in_enzymes (std::vector<Reaction>& reactions);

/// Numbers the columns and makes all rows. Every substrate, product and inhibitor is in `elements`.
/// stop  ends it early; the graph is then of no use
EquationGraph build_equation_graph (const std::vector<Reaction>& reactions,
                                    const std::map<std::string, int>& elements,
                                    const std::stop_token& stop = {});

} // namespace ostrand::gates
