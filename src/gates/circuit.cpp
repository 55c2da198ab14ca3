// What a circuit's rows tell of it, and the token game as it is told.
#include "gates/circuit.h"

#include <algorithm>

namespace ostrand::gates {
namespace {

std::size_t at (int index) { return static_cast<std::size_t> (index); }

} // namespace

Circuit::Circuit (const EquationGraph& graph, std::span<const int> with_enzymes,
                  std::pmr::memory_resource* memory)
    : rows (memory), enzymes (with_enzymes.begin (), with_enzymes.end (), memory), touched (memory),
      primary_substrates (memory), final_products (memory), all_substrates (memory), forks (memory),
      graph_ (&graph), local_rows_ (memory) {
    for (const int enzyme : with_enzymes) {
        const std::vector<int>& more = graph.rows_of_enzyme[at (enzyme)];
        rows.insert (rows.end (), more.begin (), more.end ());
    }
    std::sort (enzymes.begin (), enzymes.end ());
    firing_limit = static_cast<int> (rows.size ()) + 20;
    for (const int row : rows) {
        for (const EquationRow::Entry& entry : graph.rows[at (row)].entries) {
            touched.push_back (entry.column);
        }
    }
    std::sort (touched.begin (), touched.end ());
    touched.erase (std::unique (touched.begin (), touched.end ()), touched.end ());
    derive_sets ();
}

void Circuit::derive_sets () {
    Columns consumers (touched.size (), memory ());
    std::pmr::vector<std::uint8_t> made (touched.size (), memory ());
    local_rows_.reserve (rows.size ());
    for (const int number : rows) {
        const EquationRow& row = graph_->rows[at (number)];
        LocalRow& compact = local_rows_.emplace_back (
            LocalRow{.needs = Columns (memory ()), .gains = Columns (memory ())});
        for (const EquationRow::Entry& entry : row.entries) {
            const int column = local (entry.column);
            if (entry.column == row.enzyme) {
                compact.enzyme = column;
                compact.inhibition = entry.value == inhibited_value;
            } else if (entry.value == substrate_value) {
                compact.needs.push_back (column);
                ++consumers[at (column)];
            } else {
                compact.gains.push_back (column);
                made[at (column)] = 1;
            }
        }
    }
    for (std::size_t i = 0; i < touched.size (); ++i) {
        const bool consumed = consumers[i] > 0;
        if (consumed) all_substrates.push_back (touched[i]);
        if (consumers[i] > 1) forks.push_back (touched[i]);
        if (consumed && made[i] == 0) primary_substrates.push_back (touched[i]);
        if (!consumed && made[i] != 0) final_products.push_back (touched[i]);
    }
}

int Circuit::local (int column) const {
    return static_cast<int> (std::lower_bound (touched.begin (), touched.end (), column) -
                             touched.begin ());
}

std::pmr::vector<std::uint8_t> Circuit::backward_closure (int output) const {
    std::pmr::vector<std::uint8_t> in (touched.size (), memory ());
    std::pmr::vector<std::uint8_t> counted (local_rows_.size (), memory ());
    in[at (local (output))] = 1;
    const auto is_in = [&] (int column) { return in[at (column)] != 0; };
    for (bool grown = true; grown;) {
        grown = false;
        for (std::size_t r = 0; r < local_rows_.size (); ++r) {
            const LocalRow& row = local_rows_[r];
            if (counted[r] != 0) continue;
            const bool counts = std::any_of (row.needs.begin (), row.needs.end (), is_in) ||
                                std::any_of (row.gains.begin (), row.gains.end (), is_in) ||
                                (row.inhibition && is_in (row.enzyme));
            if (!counts) continue;
            counted[r] = 1;
            grown = true;
            for (const int column : row.needs) in[at (column)] = 1;
            in[at (row.enzyme)] = 1;
        }
    }
    return in;
}

Columns Circuit::upstream (int output) const {
    const std::pmr::vector<std::uint8_t> in = backward_closure (output);
    Columns found (memory ());
    for (const int column : primary_substrates) {
        if (in[at (local (column))] != 0) found.push_back (column);
    }
    return found;
}

std::vector<int> Circuit::token_game (std::vector<int> tokens, bool multiple) const {
    std::vector<int> state (touched.size ());
    for (std::size_t i = 0; i < touched.size (); ++i) state[i] = tokens[at (touched[i])];
    std::vector<int> consumption (touched.size ());
    std::vector<int> production (touched.size ());
    std::vector<int> firings (local_rows_.size ());
    const auto present = [&] (int column) { return state[at (column)] > 0; };
    for (bool fired = true; fired;) {
        fired = false;
        for (std::size_t r = 0; r < local_rows_.size (); ++r) {
            const LocalRow& row = local_rows_[r];
            const bool enabled =
                std::all_of (row.needs.begin (), row.needs.end (), present) &&
                (row.inhibition ? present (row.enzyme) : state[at (row.enzyme)] == enzyme_mark);
            if (!enabled || firings[r] >= firing_limit) continue;
            fired = true;
            ++firings[r];
            for (const int column : row.needs) ++consumption[at (column)];
            if (row.inhibition) ++consumption[at (row.enzyme)];
            for (const int column : row.gains) ++production[at (column)];
        }
        for (std::size_t i = 0; i < touched.size (); ++i) {
            state[i] -= multiple ? consumption[i] : std::min (consumption[i], 1);
            state[i] += multiple ? production[i] : std::min (production[i], 1);
            consumption[i] = 0;
            production[i] = 0;
        }
    }
    for (std::size_t i = 0; i < touched.size (); ++i) tokens[at (touched[i])] = state[i];
    return tokens;
}

} // namespace ostrand::gates
