// What is common to both ways of trying gates: which outputs, which elements matter, the counts.
#include "gates/circuit_trial.h"

#include "gates/output_view.h"

#include <algorithm>
#include <chrono>

namespace ostrand::gates {
namespace {

bool holds (std::span<const int> sorted, int column) {
    return std::binary_search (sorted.begin (), sorted.end (), column);
}

double now () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

} // namespace

CircuitTrial::CircuitTrial (const GatePlan& plan, const TrialRules& rules, std::stop_token stop)
    : counts (static_cast<std::size_t> (plan.job_count)),
      stores (static_cast<std::size_t> (plan.job_count)), plan_ (plan), rules_ (rules),
      stop_ (std::move (stop)), found_ (plan.groups.size ()) {}

std::size_t CircuitTrial::stored () const {
    std::size_t sum = 0;
    for (const GateStore& store : stores) sum += store.size ();
    return sum;
}

void CircuitTrial::evaluate (const Circuit& circuit) {
    const double start = now ();
    for (const int output : circuit.final_products) {
        if (stopped ()) break;
        OutputView view{.circuit = circuit, .output = output};
        for (const int column : circuit.primary_substrates) {
            if (view.closure[static_cast<std::size_t> (circuit.local (column))] != 0) {
                view.upstream.push_back (column);
            }
        }
        evaluate_output (view);
    }
    times.gate += now () - start;
}

void CircuitTrial::evaluate_output (OutputView& view) {
    const std::size_t inputs = view.upstream.size ();
    const std::size_t substrates = view.circuit.all_substrates.size ();
    bool any = false;
    for (const PlannedGroup& group : plan_.groups) {
        const auto arity = static_cast<std::size_t> (group.arity);
        if (arity > inputs) continue;
        any = true;
        const std::uint64_t tried = saturated_product (subset_count (inputs, arity),
                                                       saturated_power_of_two (substrates - arity));
        for (const int job : group.jobs) {
            std::uint64_t& count = counts[static_cast<std::size_t> (job)].evaluated_gates;
            count = saturated_sum (count, tried);
        }
    }
    if (!any) return;
    view.levels = view.circuit.required_levels (view.output);
    for (const PlannedGroup& group : plan_.groups) {
        const bool fits = static_cast<std::size_t> (group.arity) <= inputs;
        if (fits && group.by_pattern && !observer_) {
            view.most_inputs = std::max (view.most_inputs, group.arity);
        } else if (fits) {
            evaluate_singly (view, group);
        }
    }
    if (view.most_inputs == 0) return;

    // Without fork gates every fork has to be held abundant, so it is neither free nor an input.
    Columns candidates (view.circuit.memory ());
    std::uint64_t beside = 0; // free elements that the output does not depend on
    for (const int column : view.circuit.all_substrates) {
        if (!rules_.evaluate_forks && holds (view.circuit.forks, column)) {
            view.held.push_back (column);
        } else if (view.closure[static_cast<std::size_t> (view.circuit.local (column))] == 0) {
            ++beside;
        } else if (holds (view.upstream, column)) {
            candidates.push_back (column);
        } else {
            view.free.push_back (column);
        }
    }
    view.weight = saturated_power_of_two (beside);
    // Those that are never inputs come first: within a word of assignments a fed input wastes the
    // lanes in which it would be abundant.
    for (const int column : candidates) {
        if (view.free.size () >= most_free) break;
        view.choosable.push_back (static_cast<int> (view.free.size ()));
        view.free.push_back (column);
    }
    if (view.free.size () > most_free) view.free.resize (most_free);
    const int free_count = static_cast<int> (view.free.size ());
    view.block_bits = std::min (free_count, most_block_bits);
    std::uint64_t fed_sets = 0;
    for (int size = 0; size <= view.most_inputs; ++size) {
        fed_sets += subset_count (view.choosable.size (), static_cast<std::uint64_t> (size));
    }
    while (view.block_bits > 6 && (fed_sets << (view.block_bits - 6)) > most_table_words) {
        --view.block_bits;
    }
    view.block_words = view.block_bits > 6 ? std::size_t{1} << (view.block_bits - 6) : 1;

    const double start = now ();
    LaneProgram program (view.circuit, view.closure, view.output, rules_.multiple_firing);
    std::pmr::vector<LaneElement> elements (view.circuit.memory ());
    for (const int column : view.free) {
        const int local = view.circuit.local (column);
        const double level =
            std::min<double> (view.levels[static_cast<std::size_t> (local)], most_tokens);
        elements.push_back ({program.state_column[static_cast<std::size_t> (local)],
                             static_cast<std::int64_t> (level)});
    }
    Columns abundant (view.circuit.memory ());
    for (const int column : view.held) {
        const int state =
            program.state_column[static_cast<std::size_t> (view.circuit.local (column))];
        if (state >= 0) abundant.push_back (state);
    }
    player_.set_program (program, elements, abundant);
    for (std::vector<std::vector<std::uint64_t>>& group : found_) {
        for (std::vector<std::uint64_t>& least : group) least.clear ();
    }
    const std::uint64_t blocks = std::uint64_t{1} << (free_count - view.block_bits);
    for (std::uint64_t block = 0; block < blocks && !stopped (); ++block) {
        play_block (view, block);
        for (std::size_t group = 0; group < plan_.groups.size () && !stopped (); ++group) {
            test_group (view, group, block);
        }
    }
    const double stored_from = now ();
    times.model += stored_from - start;
    store_found (view);
    times.sort += now () - stored_from;
}

} // namespace ostrand::gates
