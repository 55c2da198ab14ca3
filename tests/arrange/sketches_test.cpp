// Pictures and figures of the real models, made on request.
#include "arrange/arrange.h"
#include "arrange/mains.h"
#include "arrange/plain_crossings.h"
#include "arrange/plain_measures.h"
#include "arrange/plain_sbml.h"
#include "arrange/plain_sketch.h"
#include "support/support.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace ostrand {
namespace {

/// As the reader of SBML draws reactions.
void put_main_reactants_first (arrange::Graph& graph) {
    const std::vector<arrange::MainReactants> mains = arrange::main_reactants (graph);
    const auto to_front = [] (std::vector<int>& side, int index) {
        if (index > 0)
            std::rotate (side.begin (), side.begin () + index, side.begin () + index + 1);
    };
    for (std::size_t r = 0; r < mains.size (); ++r) {
        to_front (graph.reactions[r].substrates, mains[r].substrate);
        to_front (graph.reactions[r].products, mains[r].product);
    }
}

TEST (sketches, are_written_when_OSTRAND_SKETCHES_names_a_folder) {
    const char* const folder = std::getenv ("OSTRAND_SKETCHES");
    if (!folder) GTEST_SKIP () << "OSTRAND_SKETCHES is not set";
    int ours = 0, dot = 0, worse = 0, drawn = 0, through = 0, faults = 0, squares = 0;
    double time = 0, slowest = 0, sides = 1;
    std::vector<double> use;
    for (const auto& path : testing::real_models ()) {
        arrange::Graph graph = testing::graph_of_sbml (testing::file_text (path));
        put_main_reactants_first (graph);
        // As files are opened: boxes stand side by side.
        for (arrange::Compartment& c : graph.compartments) c.parent = -1;
        // And a single one has none.
        if (graph.compartments.size () == 1) {
            graph.compartments.clear ();
            for (arrange::Species& s : graph.species) s.compartment = -1;
        }
        const auto begin = std::chrono::steady_clock::now ();
        const arrange::Layout layout = arrange::arrange (graph);
        const double seconds =
            std::chrono::duration<double> (std::chrono::steady_clock::now () - begin).count ();
        const testing::Measures m = testing::measure (graph, layout);
        const testing::PlainDrawing plain = testing::plain_drawing (layout);
        const int straight = testing::crossings (plain);
        const int by_dot = testing::dot_crossings (plain);
        const int broken = m.overlaps + m.covered + m.outside_box + m.box_faults + m.off_page;
        std::printf ("%-22s %4zu r %4d n  faults %d sq %d over nodes %4d  drawn %4d  crossings %4d "
                     "dot %4d%s use %4.1f %% sides %.2f  %.3f s\n",
                     path.stem ().c_str (), graph.reactions.size (), m.nodes, broken,
                     m.square_overlaps, m.through_nodes, m.crossings, straight, by_dot,
                     straight > by_dot ? " !" : "  ", 100 * m.page_use, m.sides, seconds);
        std::fflush (stdout);
        ours += straight;
        dot += by_dot;
        worse += straight > by_dot;
        drawn += m.crossings;
        through += m.through_nodes;
        faults += broken;
        squares += m.square_overlaps;
        time += seconds;
        slowest = std::max (slowest, seconds);
        if (!graph.reactions.empty ()) use.push_back (m.page_use);
        if (!graph.reactions.empty ()) sides = std::max (sides, m.sides);
        std::ofstream out (std::filesystem::path (folder) / (path.stem ().string () + ".svg"));
        out << testing::sketch (graph, layout);
    }
    if (use.empty ()) return;
    std::sort (use.begin (), use.end ());
    std::printf ("all: faults %d, squares on squares %d, crossings %d, dot %d (worse in %d), drawn "
                 "%d, arcs over nodes %d, page use median %.1f %% least %.1f %%, sides at most "
                 "%.2f, %.2f s, slowest %.2f s\n",
                 faults, squares, ours, dot, worse, drawn, through, 100 * use[use.size () / 2],
                 100 * use[0], sides, time, slowest);
}

} // namespace
} // namespace ostrand
