// The plain engines beside the plain second simulator on the same model, and the reader's speed.
// Times are for one application of one elementary step ("items"); the ratio to the plain simulator
// of the same run is in the counter `plain_ratio` (how many times faster than it).
#include "sim/engine.h"
#include "sim/grid.h"
#include "sim/plain_simulator.h"
#include "sim/read_model.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace ostrand::sim {
namespace {

/// Two enzymes of two substrates, one of one, an inhibitor and three mass actions: 26 steps, about
/// the mix of the shipped examples.
plain::Model sample () {
    using S = plain::Statement;
    plain::Model model;
    model.statements = {
        {S::enzyme, {"hk", "glc", "atp"}, {"g6p", "adp"}, {0.08F, 0.15F, 37.7F}},
        {S::enzyme, {"pgi", "g6p"}, {"f6p"}, {1.4F, 28.3F}},
        {S::enzyme, {"pfk", "f6p", "atp"}, {"fbp", "adp"}, {0.1F, 0.71F, 15.2F}},
        {S::inhibitor, {"hk", "g6p"}, {}, {0.02F}},
        {S::mass_action, {"fbp"}, {"dhap", "gap"}, {0.0002F}},
        {S::mass_action, {"gap", "adp"}, {"bpg", "atp"}, {0.05F}},
        {S::mass_action, {"bpg"}, {"pyr"}, {0.0005F}},
        {S::values, {"glc"}, {}, {2.0F}},
        {S::values, {"atp"}, {}, {4.0F}},
        {S::values, {"adp"}, {}, {0.5F}},
        {S::values, {"hk"}, {}, {0.01F}},
        {S::values, {"pgi"}, {}, {0.02F}},
        {S::values, {"pfk"}, {}, {0.02F}},
    };
    model.seconds = 3;
    return model;
}

/// Of as many seconds as the engines simulate: the plain simulator leaves the last one out, which
/// nobody sees.
double seconds_of_plain (plain::Model model, bool stochastic) {
    ++model.seconds;
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        const auto start = std::chrono::steady_clock::now ();
        benchmark::DoNotOptimize (plain::simulate (model, stochastic, 1));
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        best = std::min (best, elapsed.count ());
    }
    return best;
}

void engine (benchmark::State& state, bool stochastic) {
    const plain::Model model = sample ();
    const double plain_seconds = seconds_of_plain (model, stochastic);
    ModelTables tables;
    SeedSequence seeds;
    Grid grid;
    if (!read_model (model.text (), tables) ||
        !prepare_run (tables, seeds, std::uint64_t{1} << 30, grid)) {
        state.SkipWithError ("model does not read");
        return;
    }
    const EngineModel view{tables.steps, tables.n_species (), tables.nb_gen, grid.n_points,
                           nullptr};
    std::vector<std::uint32_t> points (std::size_t{tables.n_species ()} * grid.n_points);
    std::vector<std::uint32_t> counts (tables.n_species () + 1);
    grid.plan.write_counts (0, counts);
    double seconds = 0;
    for (auto _ : state) {
        Simulation simulation{points, counts, grid.seed (0)};
        const auto start = std::chrono::steady_clock::now ();
        (stochastic ? run_stochastic : run_deterministic) (view, simulation);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        seconds += elapsed.count ();
    }
    const double applications = static_cast<double> (tables.nb_gen) * tables.n_reactions ();
    state.SetItemsProcessed (
        static_cast<std::int64_t> (applications * static_cast<double> (state.iterations ())));
    const double mean = seconds / static_cast<double> (state.iterations ());
    state.counters["ns_per_step"] = mean * 1e9 / applications;
    state.counters["plain_ns_per_step"] = plain_seconds * 1e9 / applications;
    state.counters["plain_ratio"] = plain_seconds / mean;
}
void stochastic_engine (benchmark::State& state) { engine (state, true); }
void deterministic_engine (benchmark::State& state) { engine (state, false); }
BENCHMARK (stochastic_engine)->Unit (benchmark::kMillisecond);
BENCHMARK (deterministic_engine)->Unit (benchmark::kMillisecond);

void reader (benchmark::State& state) {
    std::string text;
    for (int i = 0; i < 400; ++i) {
        const std::string n = std::to_string (i);
        text += "[sugar" + n + "] = 1.25 mM; // a comment as models have them\n\"enzyme " + n +
                "\" : sugar" + n + " -> acid" + n + " | 0.35 mM - 120;\n";
    }
    for (auto _ : state) {
        ModelTables tables;
        benchmark::DoNotOptimize (read_model (text, tables));
    }
    state.SetBytesProcessed (static_cast<std::int64_t> (text.size ()) *
                             static_cast<std::int64_t> (state.iterations ()));
}
BENCHMARK (reader)->Unit (benchmark::kMillisecond);

} // namespace
} // namespace ostrand::sim
