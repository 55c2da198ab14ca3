// Loading, saving and the update of shared species for networks of growing size, shaped like
// metabolic maps: chains of reactions with an enzyme and a feedback each, carriers as clones.
#include "files/native.h"
#include "support/random_document.h"

#include <benchmark/benchmark.h>

namespace {

using namespace ostrand;

void load (benchmark::State& state) {
    const auto network = testing::metabolic_network (static_cast<int> (state.range (0)));
    const std::string text = files::write_native (*network);
    for (auto _ : state) benchmark::DoNotOptimize (files::read_native (text));
    state.counters["arcs"] = network->count_arcs ();
    state.SetComplexityN (state.range (0));
}

void save (benchmark::State& state) {
    const auto network = testing::metabolic_network (static_cast<int> (state.range (0)));
    for (auto _ : state) benchmark::DoNotOptimize (files::write_native (*network));
    state.SetComplexityN (state.range (0));
}

void update_shared_nodes (benchmark::State& state) {
    const auto network = testing::metabolic_network (static_cast<int> (state.range (0)));
    for (auto _ : state) benchmark::DoNotOptimize (network->update_shared_nodes ());
    state.SetComplexityN (state.range (0));
}

void sizes (benchmark::internal::Benchmark* b) {
    for (const int nodes : {100, 1000, 10000, 20000, 40000, 100000}) b->Arg (nodes);
    b->Unit (benchmark::kMillisecond);
}

BENCHMARK (load)->Apply (sizes)->Complexity ();
BENCHMARK (save)->Apply (sizes)->Complexity ();
BENCHMARK (update_shared_nodes)->Apply (sizes)->Complexity ();

} // namespace
