// Layout, painting, hit test and alignment of networks from 100 to 100,000 nodes. Degrees as in
// drawn metabolic networks: each reaction has one substrate and one product, every second one an
// enzyme of its own, so that there are about as many arcs as nodes.
#include "document/hit_test.h"
#include "document/network.h"
#include "export/export.h"
#include "export/pdf_device.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace ostrand;
using namespace ostrand::document;

namespace {

std::unique_ptr<Network> grid_network (int nodes) {
    auto network = std::make_unique<Network> ();
    const int columns = std::max (2, static_cast<int> (std::sqrt (nodes)));
    Node* before = nullptr;
    Arque* reaction = nullptr;
    for (int i = 0; i < nodes; ++i) {
        const auto x = 60.0F + 120.0F * static_cast<float> (i % columns);
        const auto y = 60.0F + 80.0F * static_cast<float> (i / columns);
        const bool enzyme = i % 3 == 2;
        auto made = std::make_unique<Node> (x, y, enzyme ? node::protein : node::molecule, 7);
        made->set_label ((enzyme ? "enzyme" : "species") + std::to_string (i));
        Node& n = network->add_node (std::move (made));
        if (enzyme && reaction) {
            n.connect (*reaction, arc::catalysis);
        } else {
            if (before) {
                reaction = before->connect (n, arc::reaction);
                reaction->kinetic_labels (false);
            }
            before = &n;
        }
    }
    network->layout ();
    return network;
}

void layout (benchmark::State& state) {
    const auto network = grid_network (static_cast<int> (state.range (0)));
    for (auto _ : state) {
        set_metrics_provider (headless_metrics ()); // other fonts: all is laid out anew
        network->layout ();
    }
    state.SetComplexityN (state.range (0));
}

void svg_paint (benchmark::State& state) {
    const auto network = grid_network (static_cast<int> (state.range (0)));
    std::size_t bytes = 0;
    for (auto _ : state) bytes = drawing::svg_text (*network).size ();
    state.counters["bytes"] = static_cast<double> (bytes);
    state.SetComplexityN (state.range (0));
}

void pdf_paint (benchmark::State& state) {
    const auto network = grid_network (static_cast<int> (state.range (0)));
    for (auto _ : state) {
        const drawing::DrawingPage page = drawing::drawing_page (*network);
        drawing::PdfDevice device (static_cast<float> (page.width),
                                   static_cast<float> (page.height));
        drawing::paint_export (*network, device, page);
        benchmark::DoNotOptimize (device.failed ());
    }
    state.SetComplexityN (state.range (0));
}

/// The dearest hit test: a point where nothing is. The index is there.
void hit_test (benchmark::State& state) {
    const auto network = grid_network (static_cast<int> (state.range (0)));
    network->find_at (0, 0, {});
    for (auto _ : state) {
        benchmark::DoNotOptimize (network->find_at (-50, -50, {}));
    }
    state.SetComplexityN (state.range (0));
}

void align (benchmark::State& state) {
    const int nodes = static_cast<int> (state.range (0));
    for (auto _ : state) {
        state.PauseTiming ();
        const auto network = grid_network (nodes);
        state.ResumeTiming ();
        network->align_all ();
    }
    state.SetComplexityN (state.range (0));
}

BENCHMARK (layout)->RangeMultiplier (10)->Range (100, 100000)->Unit (benchmark::kMillisecond);
BENCHMARK (svg_paint)->RangeMultiplier (10)->Range (100, 100000)->Unit (benchmark::kMillisecond);
BENCHMARK (pdf_paint)->RangeMultiplier (10)->Range (100, 100000)->Unit (benchmark::kMillisecond);
BENCHMARK (hit_test)->RangeMultiplier (10)->Range (100, 100000)->Unit (benchmark::kMicrosecond);
BENCHMARK (align)->RangeMultiplier (10)->Range (100, 100000)->Unit (benchmark::kMillisecond);

} // namespace
