// Arranged graphs: the same every time, nothing on anything, boxes near what they are joined to.
#include "arrange/arrange.h"
#include "arrange/blocks.h"
#include "arrange/graphviz.h"
#include "arrange/plain_measures.h"
#include "arrange/rooms.h"
#include "arrange/settle.h"
#include "support/random_document.h"

#include <gtest/gtest.h>

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
