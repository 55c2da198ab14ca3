// Places of arcs that hang on how two arcs or a slant meet: opposite arcs, corners, slanted texts.
#include "document/drawn_network.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::expect_point;

namespace {

TEST (ArcPlaces, the_opposite_arc_of_the_earlier_node_is_offset_first) {
    DrawnNetwork drawn;
    Node& right = drawn.node (300, 100);
    Node& left = drawn.node (100, 100);
    Arque& there = drawn.arc (left, right);
    Arque& back = drawn.arc (right, left);
    drawn.network.layout ();
    EXPECT_EQ (back.side (), 1);
    EXPECT_EQ (there.side (), -1);
    // Both step to the same hand as seen along them, so they part.
    expect_point (back.geometry ().start, 280, 108);
    expect_point (back.geometry ().head, 120, 108);
    expect_point (there.geometry ().start, 120, 92);
    expect_point (there.geometry ().head, 280, 92);
}

TEST (ArcPlaces, all_opposite_arcs_are_looked_at) {
    DrawnNetwork drawn;
    Node& left = drawn.node (100, 100);
    Node& right = drawn.node (300, 100);
    Arque& there = drawn.arc (left, right);
    Arque& first = drawn.arc (right, left);
    Arque& second = drawn.arc (right, left);
    drawn.network.layout ();
    EXPECT_EQ (there.side (), 1);
    EXPECT_EQ (first.side (), -2); // it has one beside it, which counts before the opposite one
    EXPECT_EQ (second.side (), -1);
}

TEST (ArcPlaces, arcs_of_other_pairs_are_not_parallel) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    Node& b = drawn.node (300, 100);
    Node& c = drawn.node (200, 300);
    Arque& ab = drawn.arc (a, b);
    Arque& bc = drawn.arc (b, c);
    Arque& ca = drawn.arc (c, a);
    drawn.network.layout ();
    for (const Arque* one : {&ab, &bc, &ca}) EXPECT_EQ (one->side (), 0);
}

TEST (ArcPlaces, lower_edge_ends_one_before_its_right_corner) {
    DrawnNetwork drawn;
    // Two letters make a node 22 by 20: a line at 45 degrees crosses its lower edge at 10 of 11.
    Node& corner = drawn.node (100, 100, node::protein, "AA");
    Arque& away = drawn.arc (corner, drawn.node (200, 200));
    drawn.network.layout ();
    expect_point (away.geometry ().start, 111, 111);
    Arque& towards = drawn.arc (drawn.node (300, 300), drawn.node (200, 200, node::protein, "AA"));
    drawn.network.layout ();
    expect_point (towards.geometry ().head, 211, 211);
    Arque& inside = drawn.arc (drawn.node (598, 600), drawn.node (500, 500, node::protein, "AA"));
    drawn.network.layout ();
    expect_point (inside.geometry ().head, 509.8, 511);
}

/// Each way that an arc may slant has places of its own; u is the way that it runs.
TEST (ArcPlaces, label_places_of_slanted_arcs) {
    DrawnNetwork drawn;
    const double w = 12; // of two letters
    for (const auto& [dx, dy] :
         {std::pair{150.0F, -200.0F}, std::pair{-150.0F, -200.0F}, std::pair{150.0F, 200.0F},
          std::pair{-150.0F, 200.0F}, std::pair{300.0F, -40.0F}, std::pair{-300.0F, 40.0F}}) {
        Arque& a = drawn.arc (drawn.node (500, 500), drawn.node (500 + dx, 500 + dy));
        a.take_label (even_line ("ab"));
        a.take_residu (even_line ("cd"));
        drawn.network.layout ();
        SCOPED_TRACE (::testing::Message () << dx << " " << dy);
        const double px = a.geometry ().start.x;
        const double py = a.geometry ().start.y;
        const double qx = a.geometry ().end.x;
        const double qy = a.geometry ().end.y;
        const double length = std::hypot (qx - px, qy - py);
        const double ux = (qx - px) / length;
        const double uy = (qy - py) / length;
        if (dy < 0 && dx > 0) {
            expect_point (a.geometry ().label_pos, px + 12 + 11 * ux, py - 17 + 28 * ux);
            expect_point (a.geometry ().residu_pos, qx + 4 - 1.3 * w * ux * ux, qy + 20 - 3 * ux);
        } else if (dy < 0) {
            expect_point (a.geometry ().label_pos, px + 8 + 1.4 * w * ux * ux * ux,
                          py - 10 + 10 * uy);
            expect_point (a.geometry ().residu_pos, qx + 4 - 20 * ux, qy - 6 - 25 * uy);
        } else if (dx > 0) {
            expect_point (a.geometry ().label_pos, px + 4 + 20 * ux, py - 7 + 25 * uy);
            expect_point (a.geometry ().residu_pos, qx - 1.4 * w * ux * ux, qy - 6 - 8 * uy);
        } else {
            expect_point (a.geometry ().label_pos, px + 4 - 1.3 * w * ux * ux, py + 16 - 3 * ux);
            expect_point (a.geometry ().residu_pos, qx + 4 - 11 * ux, qy - 17 - 32 * ux);
        }
    }
}

} // namespace
