// Arc geometry against places worked out by hand. Nodes are 40 by 20 unless said otherwise.
#include "document/drawn_network.h"

#include <vector>

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::expect_point;

namespace {

TEST (ArcGeometry, horizontal_arc_to_the_right) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().angle, 0);
    expect_point (a.geometry ().start, 120, 100);
    expect_point (a.geometry ().head, 280, 100);
    expect_point (a.geometry ().end, 275, 100);
    expect_point (a.geometry ().mark_a, 175, 100);
    expect_point (a.geometry ().mark_b, 225, 100);
    expect_point (a.geometry ().inner, 261, 100);
    EXPECT_FLOAT_EQ (a.x (), 190.5F);
    EXPECT_NEAR (a.y (), 93, 0.002);
    EXPECT_FLOAT_EQ (a.geometry ().line_a, 155);
    EXPECT_NEAR (a.geometry ().line_b, 0, 0.002);
    // Slope 1e-6 of a horizontal line.
    EXPECT_NEAR ((a.geometry ().head.y - a.geometry ().start.y) / 160, 1e-6, 1e-7);
}

TEST (ArcGeometry, horizontal_arc_to_the_left) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (300, 100), drawn.node (100, 100));
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().angle, 180);
    expect_point (a.geometry ().start, 280, 100);
    expect_point (a.geometry ().head, 120, 100);
    expect_point (a.geometry ().end, 125, 100);
}

TEST (ArcGeometry, vertical_arc_downwards) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 200));
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().angle, 90);
    expect_point (a.geometry ().start, 100, 110);
    expect_point (a.geometry ().head, 100, 190);
    expect_point (a.geometry ().end, 100, 185);
}

TEST (ArcGeometry, vertical_arc_upwards) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 200), drawn.node (100, 100));
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().angle, 270);
    expect_point (a.geometry ().start, 100, 190);
    expect_point (a.geometry ().head, 100, 111);
    expect_point (a.geometry ().end, 100, 116);
}

TEST (ArcGeometry, vertical_arc_between_different_widths_is_exactly_vertical) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100.25F, 100), drawn.node (100.25F, 200, 9, "AAAAAAAB"));
    drawn.network.layout ();
    EXPECT_EQ (a.geometry ().start.x, 100.25F);
    EXPECT_EQ (a.geometry ().end.x, 100.25F);
    EXPECT_EQ (a.geometry ().mark_a.x, 100.25F);
}

TEST (ArcGeometry, vertical_arc_from_a_node_without_label_starts_at_it) {
    DrawnNetwork drawn;
    Node& small = drawn.node (100, 100, 0, "");
    Arque& down = drawn.arc (small, drawn.node (100, 200));
    Arque& up = drawn.arc (small, drawn.node (100, 0));
    drawn.network.layout ();
    expect_point (down.geometry ().start, 100, 101);
    expect_point (up.geometry ().start, 100, 99);
    Arque& back = drawn.arc (drawn.node (100, 300), small, arc::substrate);
    drawn.network.layout ();
    expect_point (back.geometry ().end, 100, 102);
}

TEST (ArcGeometry, slanted_arc_leaves_and_meets_the_sides) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 180));
    drawn.network.layout ();
    EXPECT_NEAR (a.geometry ().angle, 21.8014, 0.001);
    expect_point (a.geometry ().start, 120, 108);
    expect_point (a.geometry ().head, 280, 172);
    Arque& b = drawn.arc (drawn.node (300, 480), drawn.node (100, 400));
    drawn.network.layout ();
    EXPECT_NEAR (b.geometry ().angle, 201.8014, 0.001);
    expect_point (b.geometry ().start, 280, 472);
    expect_point (b.geometry ().head, 120, 408);
}

TEST (ArcGeometry, steep_arc_leaves_and_meets_top_and_bottom) {
    DrawnNetwork drawn;
    Arque& down = drawn.arc (drawn.node (100, 100), drawn.node (150, 300));
    drawn.network.layout ();
    EXPECT_NEAR (down.geometry ().angle, 75.9638, 0.001);
    expect_point (down.geometry ().start, 102.5, 110);
    expect_point (down.geometry ().head, 147.5, 290);
    Arque& up = drawn.arc (drawn.node (300, 300), drawn.node (200, 100));
    drawn.network.layout ();
    EXPECT_NEAR (up.geometry ().angle, 243.4349, 0.001);
    expect_point (up.geometry ().start, 295, 290);
    expect_point (up.geometry ().head, 205, 111);
}

TEST (ArcGeometry, head_moves_end_and_head_by_its_code) {
    struct Case {
        unsigned type;
        double end;
        double head;
    };
    for (const Case& c :
         {Case{arc::substrate, 280, 280}, Case{arc::product, 275, 280},
          Case{arc::reversible_product, 275, 280}, Case{arc::reversible_substrate, 275, 280},
          Case{arc::reaction, 275, 280}, Case{arc::reversible_reaction, 275, 280},
          Case{arc::transport, 275, 280}, Case{arc::catalysis, 271, 271},
          Case{arc::inhibition, 274, 274}, Case{arc::activation, 264, 279},
          Case{arc::influence, 264, 270}, Case{arc::necessary_activation, 264, 279},
          Case{0x60, 275, 280}, Case{0x70, 275, 280}, Case{0x400, 280, 280}}) {
        DrawnNetwork drawn;
        Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), c.type);
        drawn.network.layout ();
        SCOPED_TRACE (c.type);
        expect_point (a.geometry ().start, 120, 100);
        expect_point (a.geometry ().end, c.end, 100);
        expect_point (a.geometry ().head, c.head, 100);
        expect_point (a.geometry ().mark_a, 175, 100);
    }
}

TEST (ArcGeometry, two_arcs_in_the_same_direction_are_offset_by_eight_and_minus_eight) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    Node& to = drawn.node (300, 100);
    Arque& a = drawn.arc (from, to);
    Arque& b = drawn.arc (from, to);
    drawn.network.layout ();
    EXPECT_EQ (a.side (), -2);
    EXPECT_EQ (b.side (), 2);
    expect_point (a.geometry ().start, 120, 108);
    expect_point (a.geometry ().head, 280, 108);
    expect_point (b.geometry ().start, 120, 92);
    expect_point (b.geometry ().head, 280, 92);
    a.destroy ();
    EXPECT_EQ (b.side (), 0);
    drawn.network.layout ();
    expect_point (b.geometry ().start, 120, 100);
}

TEST (ArcGeometry, one_arc_each_way_is_offset) {
    DrawnNetwork drawn;
    Node& left = drawn.node (100, 100);
    Node& right = drawn.node (300, 100);
    Arque& there = drawn.arc (left, right);
    Arque& back = drawn.arc (right, left);
    drawn.network.layout ();
    EXPECT_EQ (there.side (), 1);
    EXPECT_EQ (back.side (), -1);
    expect_point (there.geometry ().start, 120, 92);
    expect_point (there.geometry ().head, 280, 92);
    expect_point (back.geometry ().start, 280, 108);
    expect_point (back.geometry ().head, 120, 108);
}

TEST (ArcGeometry, offsets_of_vertical_arcs) {
    DrawnNetwork drawn;
    Node& high = drawn.node (100, 100);
    Node& low = drawn.node (100, 200);
    Arque& down = drawn.arc (high, low);
    Arque& up = drawn.arc (low, high);
    drawn.network.layout ();
    expect_point (down.geometry ().start, 108, 110);
    expect_point (down.geometry ().head, 108, 190);
    expect_point (up.geometry ().start, 92, 190);
    expect_point (up.geometry ().head, 92, 111);
}

TEST (ArcGeometry, three_parallel_arcs) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    Node& to = drawn.node (300, 100);
    Arque& a = drawn.arc (from, to);
    Arque& b = drawn.arc (from, to);
    Arque& c = drawn.arc (from, to);
    drawn.network.layout ();
    EXPECT_EQ (a.side (), -2);
    EXPECT_EQ (b.side (), -2);
    EXPECT_EQ (c.side (), 2);
}

TEST (ArcGeometry, sides_follow_from_the_arcs_that_are_there_not_from_how_they_came) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    Node& to = drawn.node (300, 100);
    Arque& a = drawn.arc (from, to);
    Arque& b = drawn.arc (from, to);
    drawn.network.layout ();
    EXPECT_EQ (a.side (), -2);
    EXPECT_EQ (b.side (), 2);
    Arque& c = drawn.arc (from, to); // as if all three had come at once
    drawn.network.layout ();
    EXPECT_EQ (a.side (), -2);
    EXPECT_EQ (b.side (), -2);
    EXPECT_EQ (c.side (), 2);
    b.destroy ();
    drawn.network.layout ();
    EXPECT_EQ (a.side (), -2);
    EXPECT_EQ (c.side (), 2);
}

TEST (ArcGeometry, two_arcs_one_way_and_one_back_take_three_lines) {
    DrawnNetwork drawn;
    Node& left = drawn.node (100, 100);
    Node& right = drawn.node (300, 100);
    Arque& there = drawn.arc (left, right);
    Arque& too = drawn.arc (left, right);
    Arque& back = drawn.arc (right, left);
    drawn.network.layout ();
    EXPECT_EQ (there.side (), -2);
    EXPECT_EQ (too.side (), -1);
    EXPECT_EQ (back.side (), 1);
}

TEST (ArcGeometry, the_arc_of_the_first_node_is_the_first_of_two_opposite_ones) {
    DrawnNetwork drawn;
    Node& left = drawn.node (100, 100);
    Node& right = drawn.node (300, 100);
    Arque& back = drawn.arc (right, left); // made first, but of the later node
    Arque& there = drawn.arc (left, right);
    drawn.network.layout ();
    EXPECT_EQ (there.side (), 1);
    EXPECT_EQ (back.side (), -1);
    back.set_dest (&drawn.node (500, 100));
    drawn.network.layout ();
    EXPECT_EQ (there.side (), 0);
    EXPECT_EQ (back.side (), 0);
}

TEST (ArcGeometry, arc_from_a_node_to_itself_finds_itself) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, n);
    drawn.network.layout ();
    EXPECT_EQ (a.side (), 1);
    EXPECT_EQ (a.geometry ().angle, 90);
    expect_point (a.geometry ().start, 108, 110);
    expect_point (a.geometry ().head, 108, 90);
}

TEST (ArcGeometry, two_equal_boxes_on_one_centre_follow_the_steps) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 100), arc::substrate);
    drawn.network.layout ();
    expect_point (a.geometry ().start, 100, 110);
    expect_point (a.geometry ().end, 100, 90);
}

TEST (ArcGeometry, zero_length_uses_the_fixed_parameters) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 120));
    a.take_label (even_line ("ab"));
    a.take_residu (even_line ("cd"));
    drawn.network.layout ();
    for (const Point& p : {a.geometry ().start, a.geometry ().end, a.geometry ().head,
                           a.geometry ().mark_a, a.geometry ().mark_b, a.geometry ().inner})
        expect_point (p, 100, 110);
    EXPECT_EQ (a.geometry ().line_a, 0);
    EXPECT_EQ (a.geometry ().line_b, 0);
    expect_point (a.geometry ().label_pos, 104, 103);
    expect_point (a.geometry ().residu_pos, 100, 104);
}

TEST (ArcGeometry, links_meet_the_mark_of_their_reaction) {
    DrawnNetwork drawn;
    Arque& r = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    Arque& substrate = drawn.arc (drawn.node (175, 200), r, arc::substrate);
    Arque& product = drawn.arc (drawn.node (225, 0), r, arc::product);
    Arque& catalysis = drawn.arc (drawn.node (197.5F, 200), r, arc::catalysis);
    drawn.network.layout ();
    expect_point (substrate.geometry ().end, 175, 100);
    expect_point (product.geometry ().head, 225, 100);
    expect_point (product.geometry ().end, 225, 95);
    // Bottom of the mark, whose corner is (190.5, 93); the head stands 9 back.
    expect_point (catalysis.geometry ().end, 197.5, 117);
}

TEST (ArcGeometry, arc_on_an_arc_that_comes_later_in_the_walk_is_right) {
    DrawnNetwork drawn;
    Node& first = drawn.node (200, 300);
    Node& from = drawn.node (100, 100);
    Arque& r = drawn.arc (from, drawn.node (300, 100));
    Arque& substrate = drawn.arc (first, r, arc::substrate);
    drawn.network.layout ();
    EXPECT_NEAR (substrate.geometry ().end.x, r.geometry ().mark_a.x, 0.01);
    EXPECT_NEAR (substrate.geometry ().end.y, r.geometry ().mark_a.y, 0.01);
}

TEST (ArcGeometry, long_chain_of_arcs_on_arcs_is_right) {
    DrawnNetwork drawn;
    constexpr int length = 3000;
    // The nodes stand in the order that is worst for a walk: each arc ends on that of a later node.
    std::vector<Node*> nodes;
    for (int i = 0; i < length; ++i)
        nodes.push_back (&drawn.node (300, 100 + 50 * static_cast<float> (i % 7), 0, ""));
    Arque* on = &drawn.arc (*nodes.back (), drawn.node (100, 100));
    for (int i = length - 2; i >= 0; --i)
        on = &drawn.arc (*nodes[static_cast<std::size_t> (i)], *on, arc::substrate);
    drawn.network.layout ();
    for (const Node* n : nodes) {
        const Arque& a = *n->arcs ().front ();
        if (!a.dest_arc ()) continue;
        ASSERT_NEAR (a.geometry ().end.x, a.dest_arc ()->geometry ().mark_a.x, 0.01);
        ASSERT_NEAR (a.geometry ().end.y, a.dest_arc ()->geometry ().mark_a.y, 0.01);
    }
}

TEST (ArcGeometry, arcs_in_a_circle_come_to_an_end) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, drawn.node (300, 100), arc::substrate);
    Arque& b = drawn.arc (drawn.node (200, 300), a, arc::substrate);
    a.set_dest (&b);
    drawn.network.layout ();
    EXPECT_EQ (a.dest_arc (), &b);
    EXPECT_EQ (b.dest_arc (), &a);
}

TEST (ArcGeometry, hub_with_many_arcs_is_laid_out_at_once) {
    DrawnNetwork drawn;
    Node& hub = drawn.node (100, 100);
    Node& other = drawn.node (100, 900);
    for (int i = 0; i < 20000; ++i) {
        drawn.arc (hub, drawn.node (400, static_cast<float> (i), 0, ""));
        drawn.arc (hub, other);
    }
    drawn.network.layout ();
    EXPECT_EQ (hub.arcs ()[1]->side (), -2);
    EXPECT_EQ (hub.arcs ().back ()->side (), 2);
    EXPECT_EQ (hub.arcs ()[2]->side (), 0);
}

TEST (ArcGeometry, label_places_to_the_right_and_left) {
    DrawnNetwork drawn;
    Arque& right = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    Arque& left = drawn.arc (drawn.node (300, 200), drawn.node (100, 200));
    for (Arque* a : {&right, &left}) {
        a->take_label (even_line ("ab"));
        a->take_residu (even_line ("cd"));
        drawn.network.layout ();
    }
    expect_point (right.geometry ().label_pos, 144, 93);
    expect_point (right.geometry ().residu_pos, 275 - 12 * 1.4, 94);
    // The slope of 1e-6 makes a horizontal line to the left one that goes up.
    EXPECT_LT (left.geometry ().end.y, left.geometry ().start.y);
    expect_point (left.geometry ().label_pos, 280 + 8 - 12 * 1.4, 190);
    expect_point (left.geometry ().residu_pos, 125 + 4 + 20, 194);
}

TEST (ArcGeometry, label_places_down_and_up) {
    DrawnNetwork drawn;
    Arque& down_left = drawn.arc (drawn.node (200, 100), drawn.node (100, 300));
    Arque& up = drawn.arc (drawn.node (400, 200), drawn.node (400, 100));
    Arque& up_left = drawn.arc (drawn.node (700, 300), drawn.node (600, 100));
    for (Arque* a : {&down_left, &up, &up_left}) {
        a->take_label (even_line ("ab"));
        a->take_residu (even_line ("cd"));
        drawn.network.layout ();
    }
    // Start (195, 110), end before its move (105, 290): 201.246 long, direction (-0.44721,
    // 0.89443).
    expect_point (down_left.geometry ().start, 195, 110);
    expect_point (down_left.geometry ().label_pos, 195 + 4 - 12 * 1.3 * 0.2,
                  110 + 16 + 3 * 0.447214);
    expect_point (down_left.geometry ().residu_pos, 107.23607 + 4 + 11 * 0.447214,
                  285.52786 - 17 + 32 * 0.447214);
    expect_point (up.geometry ().label_pos, 412, 173);
    expect_point (up.geometry ().residu_pos, 404, 136);
    expect_point (up_left.geometry ().label_pos, 701.4772, 271.0657);
    expect_point (up_left.geometry ().residu_pos, 620.2304, 131.8029);
}

TEST (ArcGeometry, label_of_a_catalysis_and_an_influence_stands_by_the_target) {
    for (const unsigned type : {arc::catalysis, arc::influence}) {
        DrawnNetwork drawn;
        // Ends left of and above the target's corner, then right of and below it.
        Arque& near = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), type);
        Arque& far = drawn.arc (drawn.node (500, 200), drawn.node (300, 200), type);
        near.take_label (even_line ("ab"));
        far.take_label (even_line ("ab"));
        drawn.network.layout ();
        expect_point (near.geometry ().label_pos, 294, 85);
        expect_point (far.geometry ().label_pos, 280 - 12, 185);
        Arque& below = drawn.arc (drawn.node (300, 0), drawn.node (300, 300), type);
        below.take_label (even_line ("ab"));
        drawn.network.layout ();
        expect_point (below.geometry ().label_pos, 268, 318);
    }
}

TEST (ArcGeometry, stoichiometry_alone_has_the_place_too) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.take_stoech_src (even_line ("2"));
    a.take_stoech_dest (even_line ("3"));
    drawn.network.layout ();
    expect_point (a.geometry ().label_pos, 144, 93);
    expect_point (a.geometry ().residu_pos, 275 - 6 * 1.4, 94);
}

TEST (ArcGeometry, text_without_a_place_stays_at_zero) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), arc::substrate);
    a.take_stoech_src (even_line ("2"));
    a.take_stoech_dest (even_line ("3"));
    a.take_residu (even_line ("x"));
    Arque& bare = drawn.arc (drawn.node (100, 200), drawn.node (300, 200));
    drawn.network.layout ();
    expect_point (a.geometry ().label_pos, 144, 93);
    expect_point (a.geometry ().residu_pos, 0, 0);
    expect_point (bare.geometry ().label_pos, 0, 0);
    expect_point (bare.geometry ().residu_pos, 0, 0);
}

TEST (ArcGeometry, numbers_without_end_do_no_harm) {
    DrawnNetwork drawn;
    Node& far = drawn.node (std::numeric_limits<float>::infinity (), 100);
    Arque& a = drawn.arc (far, drawn.node (300, 100));
    Arque& b = drawn.arc (drawn.node (1e30F, -1e30F), far, arc::catalysis);
    drawn.network.layout ();
    EXPECT_EQ (a.source (), &far);
    EXPECT_EQ (b.dest_node (), &far);
}

} // namespace
