// The lane kernels beside the plain engine on the same simulations, in turns, on one thread; and
// all threads beside one. Times are processor time of the thread, for one application of one
// elementary step to one simulation; `plain_ratio` says how many times faster than the plain engine
// a core is.
#include "base/disk.h"
#include "base/platform.h"
#include "measure.h"
#include "sim/lane_group.h"
#include "sim/read_model.h"
#include "sim/run.h"

#include <benchmark/benchmark.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace ostrand::sim {
namespace {

constexpr std::uint32_t seconds_simulated = 2;

std::string example (const std::string& name) {
    return read_text_file (std::string (OSTRAND_SOURCE_DIR "/examples/") + name + ".ssa")
        .value_or ("");
}

/// A chain of enzyme reactions with all molecules at its head.
std::string chain (int reactions) {
    std::string text = "[s0x] = 1 mM;";
    for (int i = 0; i < reactions; ++i) {
        const std::string n = std::to_string (i);
        text += " [e" + n + "x] = 1 uM; e" + n + "x : s" + n + "x -> s" + std::to_string (i + 1) +
                "x | 100 uM - 100;";
    }
    return text;
}

/// A gene that is switched, its messenger and its protein: few molecules, most steps quiet.
std::string gene () {
    return "[off] = 0.002 uM; off -> on | 0.00001 ; on -> off | 0.00002 ; on -> on2 + rna | 0.0005 "
           ";"
           " on2 -> on | 1 ; rna -> rna2 + protein | 0.002 ; rna2 -> rna | 1 ; rna -> gone | "
           "0.0001 ;"
           " protein -> gone | 0.00001 ;";
}

struct BenchModel {
    const char* name;
    std::string text;
};

const std::vector<BenchModel>& models () {
    static const std::vector<BenchModel> all{{"upper_glycolysis", example ("upper-glycolysis")},
                                             {"mapk_cascade", example ("mapk-cascade")},
                                             {"two_substrates", example ("two-substrate-sweep")},
                                             {"chain_of_20", chain (20)},
                                             {"gene", gene ()}};
    return all;
}

/// So many simulations of a model: its combinations in turns, seeds of a plain run.
struct Prepared {
    Prepared (const std::string& text, std::size_t simulations, bool stochastic) {
        if (!read_model (text, tables)) throw std::runtime_error ("model does not read");
        plan = GridPlan (tables);
        model = {tables.steps, tables.n_species (), stochastic};
        Seeds seeds;
        std::vector<std::uint32_t> counts (tables.n_species ());
        for (std::size_t i = 0; i < simulations; ++i) {
            plan.write_counts (i % plan.n_simul (), counts);
            states.push_back (initial_state (model, counts, seeds.next ()));
        }
    }
    ModelTables tables;
    GridPlan plan;
    LaneModel model;
    std::vector<SimulationState> states;
};

void run_plainly (const Prepared& prepared, bool stochastic) {
    const std::uint32_t n_species = prepared.model.n_species;
    std::vector<std::uint32_t> points (std::size_t{n_species} * seconds_simulated);
    for (const SimulationState& state : prepared.states) {
        std::vector<std::uint32_t> counts = state.counts;
        if (!stochastic) counts.assign (state.amounts.begin (), state.amounts.end ());
        counts.push_back (0);
        Simulation simulation{points, counts, state.random};
        const EngineModel model{prepared.tables.steps, n_species, seconds_simulated * stats,
                                seconds_simulated};
        (stochastic ? run_stochastic : run_deterministic) (model, simulation);
        benchmark::DoNotOptimize (points.data ());
    }
}

void lanes (benchmark::State& state, const BenchModel& model, const LaneKernel& kernel,
            bool stochastic) {
    const Prepared prepared (model.text, kernel.width, stochastic);
    bench::Least lane;
    bench::Least plain;
    for (auto _ : state) {
        plain.add (bench::thread_seconds, [&] { run_plainly (prepared, stochastic); });
        lane.add (bench::thread_seconds, [&] {
            LaneGroup group (prepared.model, {&kernel, 1}, prepared.states);
            for (std::uint32_t second = 0; second < seconds_simulated; ++second) {
                group.advance (stats);
            }
            benchmark::DoNotOptimize (group.count (0, 0));
        });
    }
    const double applications = static_cast<double> (seconds_simulated) * stats * kernel.width *
                                static_cast<double> (prepared.tables.steps.size ());
    state.counters["lanes"] = kernel.width;
    state.counters["ns_per_step"] = lane.seconds () * 1e9 / applications;
    state.counters["plain_ns_per_step"] = plain.seconds () * 1e9 / applications;
    state.counters["plain_ratio"] = plain.seconds () / lane.seconds ();
}

/// All threads beside one, wall time.
void threads (benchmark::State& state, const BenchModel& model) {
    ModelTables tables;
    SeedSequence seeds;
    std::string text = model.text;
    text += " [many] = 1 uM -> 64 uM : 1 uM; duration = 40;";
    Grid grid;
    if (!read_model (text, tables) || !prepare_run (tables, seeds, std::uint64_t{1} << 30, grid)) {
        state.SkipWithError ("model does not read");
        return;
    }
    const LaneModel view{tables.steps, tables.n_species (), true};
    bench::Least one;
    bench::Least all;
    for (auto _ : state) {
        one.add (bench::wall_seconds, [&] { run_simulations (view, grid, true); });
        all.add (bench::wall_seconds, [&] { run_simulations (view, grid, false); });
    }
    state.counters["threads"] = processor_count ();
    state.counters["one_ratio"] = one.seconds () / all.seconds ();
}

const int registered = [] {
    for (const BenchModel& model : models ()) {
        for (const bool stochastic : {true, false}) {
            for (const LaneKernel& kernel : lane_kernels ()) {
                const std::string name =
                    std::string (stochastic ? "stochastic/" : "deterministic/") + model.name + "/" +
                    kernel.target + "/" + std::to_string (kernel.width);
                benchmark::RegisterBenchmark (
                    name.c_str (),
                    [&model, &kernel, stochastic] (benchmark::State& state) {
                        lanes (state, model, kernel, stochastic);
                    })
                    ->Unit (benchmark::kMillisecond)
                    ->Iterations (5);
            }
        }
    }
    benchmark::RegisterBenchmark ("threads/chain_of_20",
                                  [] (benchmark::State& state) { threads (state, models ()[3]); })
        ->Unit (benchmark::kMillisecond)
        ->Iterations (5)
        ->UseRealTime ();
    return 0;
}();

} // namespace
} // namespace ostrand::sim
