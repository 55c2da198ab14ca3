// Networks whose shape could make reading or removing quadratic, beside the same records in a plain
// shape in the same run: a hub on which every arc ends, many arcs on a large nested network, and
// twice the network. `ratio` is the shape's time over the plain one's; a quadratic step would show
// as hundreds.
#include "document/node.h"
#include "files/native.h"
#include "support/random_document.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <string>

namespace {

using namespace ostrand;
using document::Network;

template <class Work>
double seconds_of (const Work& work) {
    const auto start = std::chrono::steady_clock::now ();
    work ();
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - start).count ();
}

std::string node (int id) { return "[S" + std::to_string (id) + " 0 9 9 0 3 13{n}-]"; }
std::string arc (int id, int from, int to) {
    return "[A" + std::to_string (id) + " 0 272 2 " + std::to_string (from) + " " +
           std::to_string (to) + "]";
}

/// So many nodes and as many arcs, all from the first node or each from its own.
std::string arcs_of (int count, bool from_a_hub) {
    std::string text = "[N" + std::to_string (count + 1) + " 0 2 8 8";
    for (int i = 1; i <= count + 1; ++i) text += node (i);
    for (int i = 2; i <= count + 1; ++i) {
        text += arc (count + i, from_a_hub ? 1 : i - 1, i);
    }
    return text + "]";
}

/// Arcs that end on a node, which holds a large network or stands beside as many nodes.
std::string arcs_on_one (int arcs, int nodes, bool nested) {
    std::string inner;
    for (int i = 3; i < nodes + 3; ++i) inner += node (i);
    const std::string count = std::to_string (nodes);
    std::string text =
        nested ? "[N2 0 2 8 8[S1 0 9 9 0 3 9[N" + count + " 0 2" + inner + "]-]"
               : "[N" + std::to_string (nodes + 2) + " 0 2 8 8" + inner + "[S1 0 9 9 0 3 13{n}-]";
    text += "[S2 0 900 9 0 3 13{m}-]";
    for (int i = 0; i < arcs; ++i) text += arc (nodes + 10 + i, 2, 1);
    return text + "]";
}

double seconds_to_load (const std::string& text) {
    return seconds_of ([&text] { benchmark::DoNotOptimize (files::read_native (text)); });
}

/// Times both in turn and gives the ratio of the sums.
template <class Shape, class Plain>
void compare (benchmark::State& state, const Shape& shape, const Plain& plain) {
    double ours = 0;
    double reference = 0;
    for (auto _ : state) {
        const double seconds = shape ();
        state.SetIterationTime (seconds);
        ours += seconds;
        reference += plain ();
    }
    state.counters["ratio"] = ours / reference;
}

void load_of_a_hub (benchmark::State& state) {
    const auto count = static_cast<int> (state.range (0));
    const std::string hub = arcs_of (count, true);
    const std::string chain = arcs_of (count, false);
    compare (
        state, [&] { return seconds_to_load (hub); }, [&] { return seconds_to_load (chain); });
}

/// The hub takes all arcs with it; of the chain the whole network goes.
void removal_of_a_hub (benchmark::State& state) {
    const auto count = static_cast<int> (state.range (0));
    const auto seconds = [] (const std::string& text, bool only_the_hub) {
        std::unique_ptr<Network> network = files::read_native (text);
        return seconds_of ([&] {
            if (only_the_hub) {
                network->nodes ()[0]->destroy ();
            } else {
                network.reset ();
            }
        });
    };
    const std::string hub = arcs_of (count, true);
    const std::string chain = arcs_of (count, false);
    compare (
        state, [&] { return seconds (hub, true); }, [&] { return seconds (chain, false); });
}

void load_of_arcs_on_a_nested_network (benchmark::State& state) {
    const std::string nested = arcs_on_one (10000, 5000, true);
    const std::string flat = arcs_on_one (10000, 5000, false);
    compare (
        state, [&] { return seconds_to_load (nested); }, [&] { return seconds_to_load (flat); });
}

/// Load, update of shared species and save of 20,000 nodes over those of 10,000: 2 is linear.
void twice_the_network (benchmark::State& state) {
    const auto all_steps = [] (const std::string& text) {
        return seconds_of ([&text] {
            const std::unique_ptr<Network> network = files::read_native (text);
            network->update_shared_nodes ();
            benchmark::DoNotOptimize (files::write_native (*network));
        });
    };
    const std::string large = files::write_native (*testing::metabolic_network (20000));
    const std::string small = files::write_native (*testing::metabolic_network (10000));
    compare (
        state, [&] { return all_steps (large); }, [&] { return all_steps (small); });
}

BENCHMARK (load_of_a_hub)
    ->Arg (3000)
    ->Arg (30000)
    ->UseManualTime ()
    ->Unit (benchmark::kMillisecond);
BENCHMARK (removal_of_a_hub)
    ->Arg (3000)
    ->Arg (30000)
    ->UseManualTime ()
    ->Iterations (5)
    ->Unit (benchmark::kMillisecond);
BENCHMARK (load_of_arcs_on_a_nested_network)->UseManualTime ()->Unit (benchmark::kMillisecond);
BENCHMARK (twice_the_network)->UseManualTime ()->Iterations (5)->Unit (benchmark::kMillisecond);

} // namespace
