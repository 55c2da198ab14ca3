// Load, layout and save of native text against a plain reader and writer of the same records, which
// only cuts the text into tokens and writes them back: how much does the document cost beside what
// any program has to do with such a file? Networks are shaped like metabolic maps.
#include "document/hit_test.h"
#include "document/markup.h"
#include "document/network.h"
#include "support/random_document.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <charconv>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrand;

// The plain reader and writer.

struct PlainNode {
    int id = 0;
    int arcs = 0;
    float x = 0;
    float y = 0;
    unsigned color = 0;
    unsigned bg_color = 0;
    unsigned type = 0;
    std::string rest; // label, residu, flags and user data as they stand
};

struct PlainArc {
    int id = 0;
    unsigned color = 0;
    unsigned type = 0;
    int thickness = 0;
    int source = 0;
    int dest = 0;
    std::string rest;
};

struct PlainNetwork {
    std::array<int, 5> head{};
    std::vector<PlainNode> nodes;
    std::vector<PlainArc> arcs;
};

template <typename Number>
void take (const char*& at, const char* end, Number& value) {
    while (at < end && *at <= ' ') ++at;
    at = std::from_chars (at, end, value).ptr;
}

/// The rest of a record to its "]".
std::string take_rest (const char*& at, const char* end) {
    const char* const from = at;
    while (at < end && *at != ']') ++at;
    std::string rest (from, at);
    ++at;
    return rest;
}

PlainNetwork plain_read (const std::string& text) {
    PlainNetwork network;
    const char* at = text.data ();
    const char* const end = at + text.size ();
    while (at < end && *at != 'N') ++at;
    ++at;
    for (int& value : network.head) take (at, end, value);
    network.nodes.reserve (static_cast<std::size_t> (network.head[0]));
    while (at < end) {
        while (at < end && *at != '[') ++at;
        if (++at >= end) break;
        const char kind = *at++;
        if (kind == 'S') {
            PlainNode& n = network.nodes.emplace_back ();
            take (at, end, n.id);
            take (at, end, n.arcs);
            take (at, end, n.x);
            take (at, end, n.y);
            take (at, end, n.color);
            take (at, end, n.bg_color);
            take (at, end, n.type);
            n.rest = take_rest (at, end);
        } else {
            PlainArc& a = network.arcs.emplace_back ();
            take (at, end, a.id);
            take (at, end, a.color);
            take (at, end, a.type);
            take (at, end, a.thickness);
            take (at, end, a.source);
            take (at, end, a.dest);
            a.rest = take_rest (at, end);
        }
    }
    return network;
}

template <typename Number>
void put (std::string& out, Number value) {
    std::array<char, 32> buffer;
    char* end = nullptr;
    if constexpr (std::is_floating_point_v<Number>) {
        end = std::to_chars (buffer.data (), buffer.data () + buffer.size (), value,
                             std::chars_format::general, 6)
                  .ptr;
    } else {
        end = std::to_chars (buffer.data (), buffer.data () + buffer.size (), value).ptr;
    }
    *end++ = ' ';
    out.append (buffer.data (), static_cast<std::size_t> (end - buffer.data ()));
}

std::string plain_write (const PlainNetwork& network) {
    std::string out = "# Lattrix: 1.2\n[N";
    for (const int value : network.head) put (out, value);
    for (const PlainNode& n : network.nodes) {
        out += "\n[S";
        put (out, n.id);
        put (out, n.arcs);
        put (out, n.x);
        put (out, n.y);
        put (out, n.color);
        put (out, n.bg_color);
        put (out, n.type);
        out += n.rest;
        out += ']';
    }
    for (const PlainArc& a : network.arcs) {
        out += "\n[A";
        put (out, a.id);
        put (out, a.color);
        put (out, a.type);
        put (out, a.thickness);
        put (out, a.source);
        put (out, a.dest);
        out += a.rest;
        out += ']';
    }
    out += "]\n";
    return out;
}

std::string written (const document::Network& network) {
    document::PrintState to;
    to.out = "# Lattrix: 1.2\n";
    network.fprint (to, 0);
    return std::move (to.out);
}

/// Of the processor, so that it does not matter what else the machine does.
double seconds () { return static_cast<double> (std::clock ()) / CLOCKS_PER_SEC; }

/// Both one after the other in each iteration, so that both meet the machine in the same state.
/// What was read goes after the clock was stopped.
void load_layout_save (benchmark::State& state) {
    const std::string text =
        written (*testing::metabolic_network (static_cast<int> (state.range (0))));
    double plain = 1e9;
    double whole = 1e9;
    double removal = 1e9;
    double objects = 1;
    for (auto _ : state) {
        {
            const double start = seconds ();
            const PlainNetwork network = plain_read (text);
            benchmark::DoNotOptimize (plain_write (network));
            plain = std::min (plain, seconds () - start);
        }
        double start = seconds ();
        auto network = document::read_network (text); // which lays it out
        benchmark::DoNotOptimize (written (*network));
        const double one = seconds () - start;
        whole = std::min (whole, one);
        state.SetIterationTime (one);
        objects = network->nb_nodes () + network->count_arcs ();
        start = seconds ();
        network.reset ();
        removal = std::min (removal, seconds () - start);
    }
    state.counters["ms"] = whole * 1e3;
    state.counters["plain_ms"] = plain * 1e3;
    state.counters["ratio"] = whole / plain;
    state.counters["ns_an_object"] = whole * 1e9 / objects;
    state.counters["removal_ms"] = removal * 1e3;
}

/// Bytes on the heap of a node or arc, all that belongs to it counted in.
void memory (benchmark::State& state) {
    const std::string text =
        written (*testing::metabolic_network (static_cast<int> (state.range (0))));
    const auto used = [] {
        const struct mallinfo2 info = mallinfo2 ();
        return static_cast<double> (info.uordblks + info.hblkhd);
    };
    for (auto _ : state) {
        const double before = used ();
        const auto network = document::read_network (text);
        const double objects = network->nb_nodes () + network->count_arcs ();
        state.counters["bytes_an_object"] = (used () - before) / objects;
        network->find_at (0, 0, {});
        network->find_by_id (1);
        state.counters["with_indexes"] = (used () - before) / objects;
    }
}

BENCHMARK (load_layout_save)
    ->ArgsProduct ({{1000, 2000, 4000, 8000, 16000, 32000, 64000, 100000, 128000, 200000}})
    ->UseManualTime ()
    ->Unit (benchmark::kMillisecond);
BENCHMARK (memory)->Arg (100000)->Iterations (1)->Unit (benchmark::kMillisecond);

} // namespace
