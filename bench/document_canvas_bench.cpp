// What a canvas asks of a large document many times a second: a step of a drag, a frame, what lies
// under the pointer, the network's size, an object by its number. Each stands beside the plain way
// in the same run: `ratio` is its time over that of a layout, a frame or a walk over everything.
#include "document/hit_test.h"
#include "document/markup.h"
#include "document/network.h"
#include "document/paint_device.h"
#include "document/paint_style.h"
#include "support/random_document.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <utility>

namespace {

using namespace ostrand;
using namespace ostrand::document;

/// 20,000 nodes with 29,000 arcs, laid out.
Network& large_network () {
    static const auto network = [] {
        auto made = testing::metabolic_network (20000);
        PrintState to;
        made->fprint (to, 0);
        return read_network (to.out); // with the numbers of its text
    }();
    return *network;
}

template <class Work>
double seconds_of (const Work& work) {
    const auto start = std::chrono::steady_clock::now ();
    work ();
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - start).count ();
}

/// Runs `step` as often as the benchmark asks, and `plain` a few times before.
template <class Step, class Plain>
void compare (benchmark::State& state, const Step& step, const Plain& plain) {
    double least = 1e9;
    for (int i = 0; i < 3; ++i) least = std::min (least, seconds_of (plain));
    double total = 0;
    for (auto _ : state) {
        const double seconds = seconds_of (step);
        state.SetIterationTime (seconds);
        total += seconds;
    }
    state.counters["plain_ms"] = least * 1e3;
    state.counters["ratio"] = total / static_cast<double> (state.iterations ()) / least;
}

void lay_out_all (Network& network) {
    set_metrics_provider (headless_metrics ()); // as if fonts were others: all is laid out anew
    network.layout ();
}

/// A step of a drag: nodes in the middle go back and forth.
/// range  nodes that move
void drag_step (benchmark::State& state) {
    Network& network = large_network ();
    const auto count = static_cast<std::size_t> (state.range (0));
    float by = 3;
    compare (
        state,
        [&] {
            by = -by;
            for (std::size_t i = 0; i < count; ++i) {
                Node& n = *network.nodes ()[10000 + i];
                n.set_position (n.x () + by, n.y ());
            }
            network.layout ();
        },
        [&] { lay_out_all (network); });
}

/// A letter typed into a label: it becomes wider, and its node and arcs follow.
void typed_letter (benchmark::State& state) {
    Network& network = large_network ();
    Line& line = *network.nodes ()[10000]->label_line ();
    compare (
        state,
        [&] {
            if (line.count () > 20) line.replace (10, 20, "");
            line.insert_before (0, StdChar ('n', start_font, 0));
            network.layout ();
        },
        [&] { lay_out_all (network); });
}

/// A device that draws nothing.
class NoDevice : public PaintDevice {
  public:
    std::size_t calls = 0;

    void set_color (unsigned) override { ++calls; }
    void set_color_rgb (int, int, int) override { ++calls; }
    void set_color_alpha (int, int, int, int) override { ++calls; }
    void set_line (float, LineStyle) override { ++calls; }
    void push_transform (float, float, float) override { ++calls; }
    void pop_transform () override { ++calls; }
    void fill_rect (float, float, float, float) override { ++calls; }
    void stroke_rect (float, float, float, float) override { ++calls; }
    void fill_round_rect (float, float, float, float, float) override { ++calls; }
    void stroke_round_rect (float, float, float, float, float) override { ++calls; }
    void fill_ellipse (float, float, float, float, int) override { ++calls; }
    void stroke_ellipse (float, float, float, float, int) override { ++calls; }
    void fill_triangle_head (float, float, float) override { ++calls; }
    void arrow_head (float, float, float) override { ++calls; }
    void fill_chevron (float, float, float, float, float) override { ++calls; }
    void draw_text (const FontMetrics&, std::string_view, float, float) override { ++calls; }
    void draw_picture (std::string_view, float, float, float, float) override { ++calls; }
    void set_clip (float, float, float, float) override { ++calls; }
    void end_clip () override { ++calls; }
    void shared_bar (float, float, float, float, float) override { ++calls; }
    void begin_group () override { ++calls; }
    void end_group () override { ++calls; }
};

/// What a window of 1200 x 800 shows in the middle of the document at 100 %, against all of it.
void visible_frame (benchmark::State& state) {
    Network& network = large_network ();
    network.layout ();
    NoDevice device;
    PaintStyle style;
    const float x = network.get_width () / 2;
    const float y = static_cast<float> (network.get_height ()) / 2;
    style.clip = Extent{x, y, x + 1200, y + 800};
    network.paint_contents (device, style, 0, 0);
    const std::size_t seen = std::exchange (device.calls, 0);
    compare (
        state, [&] { network.paint_contents (device, style, 0, 0); },
        [&] { network.paint_contents (device, {}, 0, 0); });
    state.counters["calls"] = static_cast<double> (seen);
}

/// A step of a drag and the frame that shows it.
void drag_and_frame (benchmark::State& state) {
    Network& network = large_network ();
    network.layout ();
    Node& n = *network.nodes ()[10000];
    NoDevice device;
    PaintStyle style;
    style.clip = Extent{n.x () - 600, n.y () - 400, n.x () + 600, n.y () + 400};
    float by = 3;
    compare (
        state,
        [&] {
            by = -by;
            n.set_position (n.x () + by, n.y ());
            network.layout ();
            network.paint_contents (device, style, 0, 0);
        },
        [&] {
            lay_out_all (network);
            network.paint_contents (device, {}, 0, 0);
        });
}

/// What lies under the pointer, at places all over the document.
void under_the_pointer (benchmark::State& state) {
    Network& network = large_network ();
    network.layout ();
    const auto width = static_cast<int> (network.get_width ());
    const int height = network.get_height ();
    testing::Dice dice (1);
    for (auto _ : state) {
        const auto x = static_cast<float> (dice.below (width));
        const auto y = static_cast<float> (dice.below (height));
        benchmark::DoNotOptimize (network.find_at (x, y, {}));
    }
}

/// The size of the network while a node is dragged, the layout not counted in.
void size_of_the_network (benchmark::State& state) {
    Network& network = large_network ();
    network.layout ();
    for (auto _ : state) {
        benchmark::DoNotOptimize (network.get_width ());
        benchmark::DoNotOptimize (network.get_height ());
    }
}

void find_by_id (benchmark::State& state) {
    Network& network = large_network ();
    const auto last = static_cast<int> (network.nb_nodes () + network.count_arcs ());
    network.find_by_id (1);
    testing::Dice dice (1);
    for (auto _ : state) {
        benchmark::DoNotOptimize (network.find_by_id (1 + dice.below (last)));
    }
}

/// Between two snapshots: objects are made and go, and each time one is looked for.
void find_by_id_while_objects_come_and_go (benchmark::State& state) {
    Network& network = large_network ();
    const auto last = static_cast<int> (network.nb_nodes () + network.count_arcs ());
    testing::Dice dice (1);
    for (auto _ : state) {
        Node& made = network.add_node (std::make_unique<Node> (50.0F, 50.0F, node::molecule, 3U));
        benchmark::DoNotOptimize (network.find_by_id (1 + dice.below (last)));
        made.destroy ();
        benchmark::DoNotOptimize (network.find_by_id (1 + dice.below (last)));
    }
}

BENCHMARK (drag_step)->Arg (1)->Arg (100)->UseManualTime ()->Unit (benchmark::kMicrosecond);
BENCHMARK (typed_letter)->UseManualTime ()->Unit (benchmark::kMicrosecond);
BENCHMARK (visible_frame)->UseManualTime ()->Unit (benchmark::kMicrosecond);
BENCHMARK (drag_and_frame)->UseManualTime ()->Unit (benchmark::kMicrosecond);
BENCHMARK (under_the_pointer)->Unit (benchmark::kNanosecond);
BENCHMARK (size_of_the_network)->Unit (benchmark::kNanosecond);
BENCHMARK (find_by_id)->Unit (benchmark::kNanosecond);
BENCHMARK (find_by_id_while_objects_come_and_go)->Unit (benchmark::kNanosecond);

/// What an editor does behind each edit that is not a record of its own: the text is written, the
/// numbers become those of the objects, and the document settles. Against a new reading.
void snapshot (benchmark::State& state) {
    Network& network = large_network ();
    compare (
        state,
        [&] {
            PrintState to;
            network.fprint (to, 0);
            network.settle ();
            network.adopt_numbering (to.numbering);
            benchmark::DoNotOptimize (to.out);
        },
        [&] {
            PrintState to;
            network.fprint (to, 0);
            benchmark::DoNotOptimize (read_network (to.out));
        });
}

void settle (benchmark::State& state) {
    Network& network = large_network ();
    PrintState to;
    network.fprint (to, 0);
    compare (
        state, [&] { network.settle (); },
        [&] { benchmark::DoNotOptimize (read_network (to.out)); });
}

BENCHMARK (snapshot)->UseManualTime ()->Unit (benchmark::kMillisecond);
BENCHMARK (settle)->UseManualTime ()->Unit (benchmark::kMillisecond);

} // namespace
