// Automatic alignment against places worked out by hand. Nodes are 40 by 20.
#include "document/drawn_network.h"

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;

namespace {

/// A reaction from (100, 100) to (300, 100): start 120, mark ends 175 and 225, end 275, its mark's
/// corner (190.5, 93).
struct Reaction {
    Reaction () : reaction (drawn.arc (drawn.node (100, 100), drawn.node (300, 100))) {}

    Node& satellite (float x, float y, unsigned arc_type, unsigned type = node::molecule) {
        Node& n = drawn.node (x, y, type);
        drawn.arc (n, reaction, arc_type);
        drawn.network.layout ();
        return n;
    }
    DrawnNetwork drawn;
    Arque& reaction;
};

void expect_at (const Node& n, double x, double y) {
    EXPECT_NEAR (n.x (), x, 0.01);
    EXPECT_NEAR (n.y (), y, 0.01);
}

TEST (Align, catalyst_stands_thirty_beside_the_mark) {
    for (const unsigned type : {arc::catalysis, arc::influence, arc::inhibition, arc::activation}) {
        Reaction r;
        Node& below = r.satellite (197.5F, 200, type, node::protein);
        const Point below_end = below.arcs ()[0]->geometry ().end;
        EXPECT_TRUE (r.drawn.network.align_node (below, false, true));
        // An arc that comes from below (angle 270) has its node below: 90 degrees from the arc.
        expect_at (below, below_end.x + 0.5, below_end.y + 30.5);
        Reaction s;
        Node& above = s.satellite (197.5F, 0, type, node::protein);
        const Point above_end = above.arcs ()[0]->geometry ().end;
        EXPECT_TRUE (s.drawn.network.align_node (above, false, true));
        expect_at (above, above_end.x + 0.5, above_end.y - 30 + 0.5);
    }
}

TEST (Align, catalyst_of_a_steep_reaction_stands_farther_by_its_width) {
    DrawnNetwork drawn;
    Arque& r = drawn.arc (drawn.node (100, 100), drawn.node (100, 300));
    Node& n = drawn.node (300, 200, node::protein);
    Arque& a = drawn.arc (n, r, arc::catalysis);
    drawn.network.layout ();
    const Point end = a.geometry ().end;
    // The arc comes from the right (180); less the reaction's 90 that is 90: side 270, so 0
    // degrees.
    EXPECT_TRUE (drawn.network.align_node (n, false, true));
    expect_at (n, end.x + 40 + 0.5, end.y + 0.5);
    // Upwards, 270 counts as 90 in the test for steepness only.
    DrawnNetwork up;
    Arque& q = up.arc (up.node (100, 300), up.node (100, 100));
    Node& m = up.node (300, 200, node::protein);
    Arque& b = up.arc (m, q, arc::catalysis);
    up.network.layout ();
    const Point b_end = b.geometry ().end;
    EXPECT_TRUE (up.network.align_node (m, false, true));
    // 180 - 270 is 270: side 90, and 90 + 270 is 0 again.
    expect_at (m, b_end.x + 40 + 0.5, b_end.y + 0.5);
}

TEST (Align, substrate_stands_behind_at_forty_five_degrees) {
    Reaction r;
    Node& n = r.satellite (150, 200, arc::substrate);
    const Arque& a = *n.arcs ()[0];
    // From mark end 175 to the start 120: 55 / 1.5 is below 50, so that R is 50 and delta 0.
    ASSERT_NEAR (a.geometry ().end.x, 175, 0.01);
    EXPECT_TRUE (r.drawn.network.align_node (n, false, true));
    // The arc comes from below left, its angle is above 180: 180 - 45 = 135 degrees.
    expect_at (n, 175 + 50 * std::cos (135 * M_PI / 180) + 0.5,
               100 + 50 * std::sin (135 * M_PI / 180) + 0.5);
    Node& m = r.satellite (150, 0, arc::substrate);
    EXPECT_TRUE (r.drawn.network.align_node (m, false, true));
    expect_at (m, 175 + 50 * std::cos (225 * M_PI / 180) + 0.5,
               100 + 50 * std::sin (225 * M_PI / 180) + 0.5);
}

TEST (Align, product_stands_ahead_at_forty_five_degrees) {
    Reaction r;
    Node& n = r.satellite (250, 200, arc::product);
    const Point end = n.arcs ()[0]->geometry ().end;
    EXPECT_TRUE (r.drawn.network.align_node (n, false, true));
    expect_at (n, end.x + 50 * std::cos (45 * M_PI / 180) + 0.5,
               end.y + 50 * std::sin (45 * M_PI / 180) + 0.5);
    Node& m = r.satellite (250, 0, arc::product);
    const Point m_end = m.arcs ()[0]->geometry ().end;
    EXPECT_TRUE (r.drawn.network.align_node (m, false, true));
    expect_at (m, m_end.x + 50 * std::cos (-45 * M_PI / 180) + 0.5,
               m_end.y + 50 * std::sin (-45 * M_PI / 180) + 0.5);
}

TEST (Align, second_substrate_takes_the_next_angle_and_a_larger_radius) {
    Reaction r;
    Node& first = r.satellite (150, 200, arc::substrate);
    r.drawn.network.align_node (first, true, true);
    Node& second = r.satellite (150, 200, arc::substrate);
    EXPECT_TRUE (r.drawn.network.align_node (second, false, true));
    expect_at (second, 175 + 75 * std::cos (110 * M_PI / 180) + 0.5,
               100 + 75 * std::sin (110 * M_PI / 180) + 0.5);
}

TEST (Align, long_reaction_has_a_wider_and_flatter_place) {
    DrawnNetwork drawn;
    Arque& r = drawn.arc (drawn.node (100, 100), drawn.node (700, 100));
    Node& n = drawn.node (300, 300, node::molecule);
    drawn.arc (n, r, arc::substrate);
    drawn.network.layout ();
    const Point end =
        n.arcs ()[0]->geometry ().end; // (375, 100), 255 from the start: R is 100, delta 20
    EXPECT_TRUE (drawn.network.align_node (n, false, true));
    expect_at (n, end.x + 100 * std::cos (155 * M_PI / 180) + 0.5,
               end.y + 100 * std::sin (155 * M_PI / 180) + 0.5);
}

TEST (Align, satellite_within_reach_of_its_place_stays_and_counts_as_unchanged) {
    Reaction r;
    Node& n = r.satellite (150, 200, arc::substrate);
    r.drawn.network.align_node (n, true, true);
    const float x = n.x ();
    const float y = n.y ();
    EXPECT_FALSE (r.drawn.network.align_node (n, true, true));
    EXPECT_EQ (n.x (), x);
    EXPECT_EQ (n.y (), y);
}

TEST (Align, node_with_another_arc_or_other_type_is_no_satellite) {
    Reaction r;
    Node& gene = r.satellite (150, 200, arc::substrate, node::gene);
    EXPECT_FALSE (r.drawn.network.align_node (gene, false, false));
    Node& two = r.satellite (150, 300, arc::substrate);
    r.drawn.arc (two, r.drawn.node (400, 400));
    r.drawn.network.layout ();
    EXPECT_FALSE (r.drawn.network.align_node (two, false, false));
    Node& met = r.satellite (150, 400, arc::substrate);
    r.drawn.arc (r.drawn.node (500, 500), met);
    r.drawn.network.layout ();
    EXPECT_FALSE (r.drawn.network.align_node (met, false, false));
}

TEST (Align, snap_makes_an_arc_straight) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    Node& b = drawn.node (300, 132);
    drawn.arc (a, b);
    drawn.network.layout ();
    EXPECT_TRUE (drawn.network.align_node (a, false, true));
    expect_at (a, 100, 132);
    EXPECT_FALSE (drawn.network.align_node (a, false, true));
}

TEST (Align, snap_takes_distances_from_one_to_thirty_two) {
    for (const auto& [dy, moves] : {std::pair{0.9F, false}, std::pair{1.0F, true},
                                    std::pair{32.0F, true}, std::pair{32.5F, false}}) {
        DrawnNetwork drawn;
        Node& a = drawn.node (100, 100);
        drawn.arc (drawn.node (300, 100 + dy), a);
        drawn.network.layout ();
        EXPECT_EQ (drawn.network.align_node (a, false, true), moves) << dy;
        EXPECT_EQ (a.y (), moves ? 100 + dy : 100);
    }
}

TEST (Align, snap_in_x_comes_first) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    drawn.arc (a, drawn.node (110, 120));
    drawn.network.layout ();
    EXPECT_TRUE (drawn.network.align_node (a, false, true));
    expect_at (a, 110, 100);
}

TEST (Align, receptor_does_not_snap) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100, node::receptor);
    drawn.arc (a, drawn.node (300, 110));
    drawn.network.layout ();
    EXPECT_FALSE (drawn.network.align_node (a, false, true));
}

TEST (Align, node_between_two_that_pull_goes_on_for_six_rounds_at_most) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    drawn.arc (a, drawn.node (300, 110));
    drawn.arc (a, drawn.node (500, 120));
    drawn.network.layout ();
    EXPECT_TRUE (drawn.network.align_node (a, false, true));
    expect_at (a, 100, 120);
}

TEST (Align, without_snap_an_ordinary_node_stays) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    drawn.arc (a, drawn.node (300, 110));
    drawn.network.layout ();
    EXPECT_FALSE (drawn.network.align_node (a, true, false));
    expect_at (a, 100, 100);
}

TEST (AlignAll, comes_to_rest_and_lays_out_the_arcs) {
    Reaction r;
    r.satellite (150, 200, arc::substrate);
    r.satellite (240, 180, arc::product);
    Node& enzyme = r.satellite (197.5F, 20, arc::catalysis, node::protein);
    EXPECT_TRUE (r.drawn.network.align_all ());
    EXPECT_NEAR (enzyme.arcs ()[0]->geometry ().start.y, enzyme.y () + 10, 0.01);
    const float y = enzyme.y ();
    EXPECT_FALSE (r.drawn.network.align_all ());
    EXPECT_EQ (enzyme.y (), y);
}

TEST (AlignAround, moves_the_satellites_of_a_nodes_reactions_only) {
    Reaction r;
    Node& mine = r.satellite (150, 200, arc::substrate);
    Arque& other = r.drawn.arc (r.drawn.node (100, 500), r.drawn.node (300, 500));
    Node& foreign = r.drawn.node (150, 600, node::molecule);
    r.drawn.arc (foreign, other, arc::substrate);
    r.drawn.network.layout ();
    r.drawn.network.align_around (*r.reaction.source ());
    EXPECT_NE (mine.x (), 150);
    expect_at (foreign, 150, 600);
    r.drawn.network.align_around (*other.dest_node ());
    EXPECT_NE (foreign.x (), 150);
}

TEST (AlignAround, more_reactions_than511_are_left_alone) {
    for (const int count : {511, 512}) {
        DrawnNetwork drawn;
        Node& hub = drawn.node (100, 100);
        Arque* first = nullptr;
        for (int i = 0; i < count; ++i) {
            Arque& a = drawn.arc (hub, drawn.node (400, 200 + 30 * static_cast<float> (i)));
            if (!first) first = &a;
        }
        Node& satellite = drawn.node (150, 300, node::molecule);
        drawn.arc (satellite, *first, arc::substrate);
        drawn.network.layout ();
        drawn.network.align_around (hub);
        EXPECT_EQ (satellite.x () == 150, count == 512);
    }
}

} // namespace
