// Trying gates game by game, in the plain order: for tables that pattern tables cannot serve, and
// where every gate found is to be seen in its turn.
#include "gates/circuit_trial.h"
#include "gates/output_view.h"

#include <algorithm>
#include <chrono>

namespace ostrand::gates {
namespace {

std::size_t at (int index) { return static_cast<std::size_t> (index); }

double now () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

/// Moves `choice` (ascending positions below `count`) to the next one; false behind the last.
bool next_choice (std::vector<std::size_t>& choice, std::size_t count) {
    for (std::size_t i = 0; i < choice.size (); ++i) {
        const std::size_t end = i + 1 < choice.size () ? choice[i + 1] : count;
        if (choice[i] + 1 < end) {
            ++choice[i];
            for (std::size_t k = 0; k < i; ++k) choice[k] = k;
            return true;
        }
    }
    return false;
}

/// Plays the rows of a table until one is wrong; adds the games to `games`.
bool passes (const Circuit& circuit, std::span<const double> levels, const GateDefinition& gate,
             const std::vector<int>& inputs, int output, const std::vector<int>& needed,
             bool multiple, const std::stop_token& stop, std::uint64_t& games) {
    const std::uint64_t rows = saturated_power_of_two (inputs.size ());
    std::vector<int> tokens (at (circuit.graph ().length ()));
    for (std::uint64_t r = 0; r < rows; ++r) {
        if (stop.stop_requested ()) return false;
        std::fill (tokens.begin (), tokens.end (), 0);
        for (std::size_t u = 0; u < inputs.size (); ++u) {
            const double level =
                std::min<double> (levels[at (circuit.local (inputs[u]))], most_tokens);
            const double asked = gate.value (r, u) * level;
            tokens[at (inputs[u])] =
                static_cast<int> (std::clamp<double> (asked, -most_tokens, most_tokens));
        }
        for (const int enzyme : circuit.enzymes) tokens[at (enzyme)] = enzyme_mark;
        for (const int element : needed) tokens[at (element)] = abundant_level;
        games = saturated_sum (games, 1);
        const std::vector<int> end = circuit.token_game (tokens, multiple);
        const int on = end[at (output)] >= target_level ? 1 : 0;
        if (gate.value (r, inputs.size ()) != on) return false;
    }
    return true;
}

} // namespace

void CircuitTrial::evaluate_singly (const OutputView& view, const PlannedGroup& group) {
    const Circuit& circuit = view.circuit;
    std::vector<std::size_t> choice (at (group.arity));
    for (std::size_t i = 0; i < choice.size (); ++i) choice[i] = i;
    const std::shared_ptr<const GateSite> site = view.site ();
    do {
        std::vector<int> inputs;
        for (const std::size_t position : choice) inputs.push_back (view.upstream[position]);
        std::vector<int> others; // ascending
        std::set_difference (circuit.all_substrates.begin (), circuit.all_substrates.end (),
                             inputs.begin (), inputs.end (), std::back_inserter (others));
        const std::uint64_t end = saturated_power_of_two (std::min (others.size (), most_free));
        for (std::uint64_t k = 0; k < end; ++k) {
            if (stopped ()) return;
            std::vector<int> needed;
            for (std::size_t j = 0; j < others.size (); ++j) {
                if (j < most_free && (k >> j & 1) != 0) needed.push_back (others[j]);
            }
            if (!rules_.evaluate_forks && !site->open_forks (needed).empty ()) continue;
            for (const PlannedGate& gate : group.gates) {
                const double start = now ();
                const bool passed =
                    passes (circuit, view.levels, *gate.definition, inputs, view.output, needed,
                            rules_.multiple_firing, stop_, counts[at (gate.job)].evaluations);
                const double played = now ();
                times.model += played - start;
                if (!passed) continue;
                if (observer_) {
                    observer_ (gate.job,
                               Gate{inputs, view.output, plan_.types[at (gate.job)][at (gate.type)],
                                    needed, site->absent (inputs, needed),
                                    site->open_forks (needed), site->enzymes});
                }
                stores[at (gate.job)].add (inputs, view.output, gate.type, site, {needed});
                times.sort += now () - played;
            }
        }
    } while (next_choice (choice, view.upstream.size ()));
}

} // namespace ostrand::gates
