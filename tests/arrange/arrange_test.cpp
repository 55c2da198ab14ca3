// Arranged graphs: the same every time, nothing on anything, boxes near what they are joined to.
#include "arrange/arrange.h"
#include "arrange/attempt.h"
#include "arrange/blocks.h"
#include "arrange/graphviz.h"
#include "arrange/plain_measures.h"
#include "arrange/plan.h"
#include "arrange/rooms.h"
#include "arrange/settle.h"
#include "arrange/squeeze.h"
#include "support/random_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <thread>

namespace ostrand::arrange {
namespace {

/// Species in some compartments, and reactions between any two of them with a modifier each.
Graph random_graph (int species, int reactions, int compartments, unsigned seed) {
    testing::Dice dice (seed);
    Graph graph;
    for (int c = 0; c < compartments; ++c) {
        Compartment one;
        one.name = "c" + std::to_string (c);
        one.label = {20, 12};
        graph.compartments.push_back (one);
    }
    for (int s = 0; s < species; ++s) {
        Species one;
        one.name = "S" + std::to_string (s);
        one.size = {44, 24};
        one.compartment = compartments > 0 ? s % compartments : -1;
        graph.species.push_back (one);
    }
    for (int r = 0; r < reactions; ++r) {
        const int from = dice.below (species);
        Reaction one;
        one.substrates = {from};
        one.products = {(from + 1 + dice.below (species - 1)) % species};
        one.modifiers = {{dice.below (species), ModifierRole::catalysis}};
        graph.reactions.push_back (one);
    }
    return graph;
}

std::vector<Point> places_of (const Layout& layout) {
    std::vector<Point> places;
    for (const NodePlace& node : layout.nodes) places.push_back (node.centre);
    return places;
}

/// Graphviz visits groups in the order of their numbers, which must not be addresses: these follow
/// from what was freed before.
TEST (Graphviz, what_was_freed_before_changes_no_places) {
    testing::Dice dice (1);
    PlainGraph graph;
    for (int n = 0; n < 60; ++n) {
        graph.nodes.push_back ({40, 20});
        graph.group_of.push_back (n % 12);
    }
    graph.group_outer.assign (12, -1);
    for (int e = 0; e < 90; ++e) {
        const int from = dice.below (60);
        graph.edges.push_back ({from, (from + 1 + dice.below (59)) % 60, 1, 1});
    }
    const auto first = place_by_graphviz (graph, Method::layers);
    ASSERT_TRUE (first);
    for (int round = 0; round < 10; ++round) {
        std::vector<std::unique_ptr<char[]>> blocks;
        for (std::size_t i = 0; i < 4000; ++i)
            blocks.push_back (std::make_unique<char[]> (8 + 8 * (i % 8)));
        for (std::size_t i = blocks.size (); i > 1; --i)
            std::swap (blocks[i - 1],
                       blocks[static_cast<std::size_t> (dice.below (static_cast<int> (i)))]);
        blocks.resize (2000);
        EXPECT_EQ (place_by_graphviz (graph, Method::layers), first);
    }
}

TEST (Arrange, two_threads_get_what_one_gets) {
    const Graph graph = random_graph (20, 20, 3, 7);
    const std::vector<Point> alone = places_of (arrange (graph));
    std::vector<Point> first, second;
    std::thread one ([&] { first = places_of (arrange (graph)); });
    std::thread other ([&] { second = places_of (arrange (graph)); });
    one.join ();
    other.join ();
    EXPECT_EQ (first, alone);
    EXPECT_EQ (second, alone);
}

TEST (Arrange, the_best_of_all_attempts_is_taken) {
    const Graph graph = random_graph (12, 14, 0, 3);
    const Options options;
    const Ground ground = make_ground (graph, options);
    const Plan plan = plan_for (ground.sketch.drawing, ground.apart, options.effort);
    ASSERT_GT (plan.attempts, 2U);
    Options each;
    each.effort = plan.effort;
    std::vector<Attempt> attempts;
    for (std::size_t i = 0; i < plan.attempts; ++i)
        attempts.push_back (attempt (graph, ground, each, i));
    const auto [best, worst] =
        std::minmax_element (attempts.begin (), attempts.end (),
                             [] (const Attempt& a, const Attempt& b) { return a.cost < b.cost; });
    EXPECT_LT (best->cost, worst->cost);
    const std::vector<Point> places = places_of (arrange (graph));
    const std::vector<DrawnNode>& nodes = best->sketch.drawing.nodes;
    ASSERT_EQ (places.size (), nodes.size ());
    // Moved onto the page as a whole.
    for (std::size_t n = 0; n < nodes.size (); ++n) {
        EXPECT_EQ (places[n].x - places[0].x, nodes[n].at.x - nodes[0].at.x);
        EXPECT_EQ (places[n].y - places[0].y, nodes[n].at.y - nodes[0].at.y);
    }
}

TEST (Plan, the_smaller_a_drawing_the_more_attempts) {
    const auto plan = [] (int species, int reactions, double effort) {
        const Ground ground = make_ground (random_graph (species, reactions, 0, 5), {});
        return plan_for (ground.sketch.drawing, ground.apart, effort);
    };
    EXPECT_EQ (plan (5, 4, 1).attempts, 16U);
    EXPECT_EQ (plan (5, 4, 1).effort, 1);
    EXPECT_EQ (plan (90, 100, 1).attempts, 2U);
    EXPECT_GE (plan (90, 100, 1).effort, 0.5);
    EXPECT_LT (plan (90, 100, 1).effort, 1);
    EXPECT_EQ (plan (90, 101, 1).attempts, 4U);
    // With little time there is one.
    EXPECT_EQ (plan (5, 4, 0.2).attempts, 1U);
    EXPECT_EQ (plan (5, 4, 0.2).effort, 0.2);
    EXPECT_EQ (plan (5, 0, 1).attempts, 1U);
}

TEST (Arrange, a_tangle_of_compartments_has_nothing_on_anything) {
    for (const unsigned seed : {11U, 12U}) {
        const Graph graph = random_graph (40, 60, 4, seed);
        const Layout layout = arrange (graph);
        const testing::Measures m = testing::measure (graph, layout);
        EXPECT_EQ (m.overlaps + m.covered + m.off_page + m.outside_box + m.box_faults, 0);
        EXPECT_LE (m.sides, 3);
    }
}

/// Nodes without number on a small place: looking for a free place for each took minutes.
TEST (Settle, a_crowd_is_spread) {
    Drawing drawing;
    for (int i = 0; i < 400; ++i) {
        const int row = i / 20;
        DrawnNode node;
        node.at = {10.0 * (i % 20), 6.0 * row};
        node.half_width = 22;
        node.half_height = 12;
        drawing.nodes.push_back (node);
    }
    for (int i = 0; i + 21 < 400; ++i) {
        DrawnReaction reaction;
        reaction.from = i;
        reaction.to = i + 21;
        drawing.reactions.push_back (reaction);
    }
    drawing.index ();
    EXPECT_TRUE (settle (drawing));
    // Side by side, 20 nodes need 1,000 pixels.
    EXPECT_LT (bounds_of (drawing).width (), 5000);
}

/// Nodes all at one place are not parted by spreading.
TEST (Settle, nodes_at_one_place_are_parted) {
    Drawing drawing;
    drawing.nodes.resize (60);
    for (DrawnNode& node : drawing.nodes) node.half_width = node.half_height = 10;
    drawing.index ();
    EXPECT_TRUE (settle (drawing));
    EXPECT_LT (bounds_of (drawing).width (), 1000);
}

class Squeezed : public ::testing::Test {
  protected:
    int add (Point at) {
        DrawnNode node;
        node.at = at;
        node.half_width = 20;
        node.half_height = 12;
        drawing.nodes.push_back (node);
        return static_cast<int> (drawing.nodes.size ()) - 1;
    }
    void react (int from, int to) {
        DrawnReaction reaction;
        reaction.from = from;
        reaction.to = to;
        drawing.reactions.push_back (reaction);
    }
    void run () {
        drawing.index ();
        drawing.set_ideal_lengths ();
        squeeze (drawing);
    }
    Drawing drawing;
};

TEST_F (Squeezed, what_stands_far_away_comes_nearer_and_leaves_its_arc_room) {
    add ({0, 0});
    add ({600, 0});
    react (0, 1);
    run ();
    const double between = drawing.nodes[1].at.x - drawing.nodes[0].at.x - 40;
    EXPECT_LE (between, drawing.reactions[0].ideal + 16);
    EXPECT_GE (between, 30); // a square and its gaps
    EXPECT_EQ (drawing.nodes[0].at, (Point{0, 0}));
}

TEST_F (Squeezed, nodes_keep_their_gaps) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 5; ++column) add ({100.0 * column + 7 * row, 90.0 * row});
    run ();
    const Box page = bounds_of (drawing);
    EXPECT_LT (page.width (), 5 * 40 + 4 * 24);
    EXPECT_LT (page.height (), 4 * 24 + 3 * 24);
    for (std::size_t a = 0; a < drawing.nodes.size (); ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            const Point p = drawing.nodes[a].at;
            const Point q = drawing.nodes[b].at;
            EXPECT_TRUE (std::abs (p.x - q.x) >= 48 || std::abs (p.y - q.y) >= 32);
        }
    }
}

TEST_F (Squeezed, an_arc_comes_up_to_a_node_and_not_over_it) {
    for (const Point at : {Point{0, 150}, Point{200, 150}, Point{400, 0}, Point{400, 300}})
        add (at);
    react (0, 1);
    react (2, 3);
    run ();
    const double edge = drawing.nodes[1].at.x + drawing.nodes[1].half_width;
    EXPECT_GT (drawing.nodes[2].at.x, edge);
    EXPECT_LT (drawing.nodes[2].at.x, 150);
    EXPECT_EQ (drawing.nodes[2].at.x, drawing.nodes[3].at.x);
}

TEST (Rooms, the_nearest_place_is_wholly_inside) {
    const Rooms rooms ({{{100, 100, 200, 180}, {90, 90, 210, 190}, -1}});
    DrawnNode node;
    node.compartment = 0;
    node.half_width = 20;
    node.half_height = 10;
    node.at = {0, 150};
    EXPECT_EQ (rooms.nearest (node), (Point{120, 150}));
    node.at = rooms.nearest (node);
    EXPECT_EQ (rooms.misfit (node), 0);
}

class JoinedBlocks : public ::testing::Test {
  protected:
    /// A box of 200 by 200 with a node in each corner; a small box with one node.
    JoinedBlocks () {
        add_box ({0, 0, 200, 200}, {{20, 20}, {180, 20}, {20, 180}, {180, 180}});
        add_box ({300, 0, 360, 60}, {{330, 30}});
    }
    void add_box (const Box& box, const std::vector<Point>& nodes) {
        Block block;
        block.box = box;
        for (const Point& p : nodes) {
            block.nodes.push_back (static_cast<int> (drawing.nodes.size ()));
            DrawnNode node;
            node.at = p;
            node.half_width = node.half_height = 10;
            drawing.nodes.push_back (node);
        }
        blocks.push_back (block);
    }
    void react (int from, int to) {
        DrawnReaction reaction;
        reaction.from = from;
        reaction.to = to;
        drawing.reactions.push_back (reaction);
    }
    double distance (int a, int b) const {
        const Point p = drawing.nodes[static_cast<std::size_t> (a)].at;
        const Point q = drawing.nodes[static_cast<std::size_t> (b)].at;
        return std::hypot (p.x - q.x, p.y - q.y);
    }

    Drawing drawing;
    std::vector<Block> blocks;
};

TEST_F (JoinedBlocks, a_box_comes_to_the_corner_that_its_arc_leads_to) {
    react (2, 4); // the corner lower left
    drawing.index ();
    join_blocks (drawing, blocks, 40, true);
    // From the node to the edge of its box, the gap, and from the edge to the other node.
    EXPECT_LE (distance (2, 4), 20 + 40 + 30 + 25);
}

TEST_F (JoinedBlocks, boxes_keep_their_gap_and_their_nodes) {
    add_box ({0, 300, 120, 360}, {{30, 330}, {90, 330}});
    react (1, 4);
    react (3, 5);
    react (4, 6);
    drawing.index ();
    for (const bool afresh : {true, false}) {
        join_blocks (drawing, blocks, 40, afresh);
        for (std::size_t b = 0; b < blocks.size (); ++b) {
            const Box& box = blocks[b].box;
            for (const int n : blocks[b].nodes) {
                const Point p = drawing.nodes[static_cast<std::size_t> (n)].at;
                EXPECT_TRUE (p.x - 10 >= box.left && p.x + 10 <= box.right && p.y - 10 >= box.top &&
                             p.y + 10 <= box.bottom);
            }
            for (std::size_t c = 0; c < b; ++c) {
                const Box& other = blocks[c].box;
                EXPECT_TRUE (box.left >= other.right + 40 || other.left >= box.right + 40 ||
                             box.top >= other.bottom + 40 || other.top >= box.bottom + 40);
            }
        }
    }
}

} // namespace
} // namespace ostrand::arrange
