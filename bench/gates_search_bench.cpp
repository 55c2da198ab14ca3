// The gate search against the plain one, on networks of the size of real metabolic maps: built-in
// catalogue, 8 jobs, depth 3. The models are read from ../shared/data and skipped when not there.
#include "base/disk.h"
#include "gates/gate_extractor.h"
#include "gates/plain_search.h"

#include <benchmark/benchmark.h>

namespace ostrand::gates {
namespace {

constexpr int jobs = 8;
constexpr const char* models[] = {"small", "medium", "large"};

struct Loaded {
    SbmlModel model;
    std::vector<Catalogue> catalogues;
};

bool load (benchmark::State& state, Loaded& loaded) {
    const std::string path = std::string (OSTRAND_SOURCE_DIR "/../shared/data/gates-") +
                             models[state.range (0)] + ".xml";
    const auto text = read_text_file (path);
    if (!text) {
        state.SkipWithError ("the model is not there");
        return false;
    }
    loaded.model = read_sbml_lines (*text);
    add_stand_in_enzymes (loaded.model.reactions);
    for (int job = 1; job <= jobs; ++job) {
        loaded.catalogues.push_back (load_catalogue (builtin_catalogue_text (), jobs, job));
    }
    return true;
}

/// Arguments: model (0 to 2), depth, threads.
void fast_search (benchmark::State& state) {
    Loaded loaded;
    if (!load (state, loaded)) return;
    std::vector<const Catalogue*> shares;
    for (const Catalogue& catalogue : loaded.catalogues) shares.push_back (&catalogue);
    std::size_t gates = 0;
    for (auto _ : state) {
        const EquationGraph graph =
            build_equation_graph (loaded.model.reactions, loaded.model.elements);
        const SearchOutcome outcome =
            search_gates (graph, shares,
                          {.limit = static_cast<int> (state.range (1)),
                           .rules = {},
                           .threads = static_cast<int> (state.range (2))});
        gates = 0;
        for (const SearchResult& job : outcome.jobs) gates += job.gates.size ();
    }
    state.counters["gates"] = static_cast<double> (gates);
}

void plain_search (benchmark::State& state) {
    Loaded loaded;
    if (!load (state, loaded)) return;
    std::size_t gates = 0;
    for (auto _ : state) {
        const plain::Graph graph = plain::build (loaded.model.reactions, loaded.model.elements);
        gates = 0;
        for (const Catalogue& catalogue : loaded.catalogues) {
            plain::Search search (graph, catalogue, 3, true, true);
            search.run ();
            gates += search.gate_count ();
        }
    }
    state.counters["gates"] = static_cast<double> (gates);
}

BENCHMARK (plain_search)->Arg (0)->Arg (1)->Arg (2)->Unit (benchmark::kMillisecond)->UseRealTime ();
BENCHMARK (fast_search)
    ->ArgsProduct ({{0, 1, 2}, {3}, {1, 2}})
    ->Args ({2, 4, 1})
    ->Args ({2, 4, 2})
    ->Unit (benchmark::kMillisecond)
    ->UseRealTime ();

} // namespace
} // namespace ostrand::gates
