// Which object a point hits, and how compartments follow a drag.
#include "document/drawn_network.h"
#include "document/hit_test.h"

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;

namespace {

/// Points are told in the network's own coordinates.
Hit hit (Network& network, float x, float y, HitQuery query = {}) {
    return network.find_at (x + network.x (), y + network.y (), query);
}

/// The code of the letter that was hit; 0 for another object.
unsigned letter (const Hit& h) {
    if (!h || h.kind () != CharKind::std_char) return 0;
    return h.line->chars ()[static_cast<std::size_t> (h.letter)].code;
}

TEST (HitTest, node_is_its_box_widened_by_four) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 77, 100).object, &n);
    EXPECT_EQ (hit (drawn.network, 75, 100).object, nullptr);
    EXPECT_EQ (hit (drawn.network, 123, 100).object, &n);
    EXPECT_EQ (hit (drawn.network, 125, 100).object, nullptr);
    EXPECT_EQ (hit (drawn.network, 82, 87).object, &n);
    EXPECT_EQ (hit (drawn.network, 100, 85).object, nullptr);
    EXPECT_EQ (hit (drawn.network, 82, 113).object, &n);
    EXPECT_EQ (hit (drawn.network, 100, 115).object, nullptr);
}

TEST (HitTest, molecule_is_its_ellipse_widened_by_four) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, node::molecule);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 77, 100).object, &n);
    EXPECT_EQ (hit (drawn.network, 78, 88).object, nullptr);
    EXPECT_EQ (hit (drawn.network, 100, 87).object, &n);
}

TEST (HitTest, label_that_holds_the_point_wins) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, node::protein, "ABCDE");
    drawn.network.layout ();
    // The label stands at (85, 103), 30 wide, from 94 to 106.
    const Hit h = hit (drawn.network, 98.5F, 100);
    EXPECT_EQ (letter (h), static_cast<unsigned> ('C'));
    EXPECT_EQ (h.owner, &n);
    EXPECT_EQ (h.line, n.label_line ());
    EXPECT_FLOAT_EQ (h.rel_x, 1.5F);
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &n);
}

TEST (HitTest, node_that_is_not_selectable_gives_no_hit) {
    DrawnNetwork drawn;
    drawn.node (100, 100).set_selectable (false);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 100, 100).object, nullptr);
    Node& below = drawn.node (100, 100);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &below);
}

TEST (HitTest, first_node_wins_and_the_dragged_one_is_skipped) {
    DrawnNetwork drawn;
    Node& first = drawn.node (100, 100);
    Node& second = drawn.node (100, 100);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &first);
    EXPECT_EQ (hit (drawn.network, 82, 100, {.skip = &first}).object, &second);
}

TEST (HitTest, residu_comes_before_the_node) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    n.take_residu (even_line ("P"));
    drawn.network.layout ();
    // 24 high now: the residu stands at (90, 88), its box reaches from 78 to 90, 1 wider around.
    const Hit on = hit (drawn.network, 93, 85);
    EXPECT_EQ (letter (on), static_cast<unsigned> ('P'));
    EXPECT_EQ (on.owner, &n);
    EXPECT_EQ (hit (drawn.network, 89.5F, 78).object, &n);
    EXPECT_EQ (hit (drawn.network, 93, 76).object, nullptr);
}

TEST (HitTest, arc_is_hit_near_its_line_and_within_its_box) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 180));
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 200, 140).object, &a);
    EXPECT_EQ (hit (drawn.network, 200, 146).object, &a); // 5.6 away, squared 31
    EXPECT_EQ (hit (drawn.network, 200, 149).object, nullptr);
    Arque& flat = drawn.arc (drawn.node (100, 300), drawn.node (300, 300));
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 200, 303).object, &flat);
    EXPECT_EQ (hit (drawn.network, 200, 305).object, nullptr); // the box ends 4 below
}

TEST (HitTest, nodes_come_before_arcs) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    drawn.arc (from, drawn.node (300, 100));
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 121, 100).object, &from);
}

TEST (HitTest, texts_of_arcs_go_with_their_switches) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.take_label (even_line ("L"));
    a.take_residu (even_line ("R"));
    a.take_stoech_src (even_line ("1"));
    a.take_stoech_dest (even_line ("2"));
    a.label_line ()->set_offset (0, -20);
    a.residu ()->set_offset (0, -20);
    a.stoech_src ()->set_offset (0, -40);
    a.stoech_dest ()->set_offset (0, -40);
    drawn.network.layout ();
    // Label at (144, 93 - 20), residu at (266.6, 94 - 20); stoichiometries 2 off and higher.
    HitQuery query;
    const auto at = [&] (float x, float y) { return letter (hit (drawn.network, x, y, query)); };
    EXPECT_EQ (at (147, 70), static_cast<unsigned> ('L'));
    EXPECT_EQ (at (269, 70), static_cast<unsigned> ('R'));
    EXPECT_EQ (at (149, 52), 0U);
    query.stoichiometry = true;
    EXPECT_EQ (at (149, 52), static_cast<unsigned> ('1'));
    EXPECT_EQ (at (271, 52), static_cast<unsigned> ('2'));
    EXPECT_EQ (hit (drawn.network, 149, 52, query).owner, &a);
    query.kinetics = false;
    EXPECT_EQ (at (147, 70), 0U);
}

TEST (HitTest, arc_of_length_zero_is_never_hit) {
    DrawnNetwork drawn;
    drawn.arc (drawn.node (100, 100, 0, ""), drawn.node (100, 102, 0, ""), arc::substrate);
    drawn.network.layout ();
    const Char* const found = hit (drawn.network, 130, 101).object;
    EXPECT_EQ (found, nullptr);
}

Compart& compartment (DrawnNetwork& drawn, int new_shape) {
    return drawn.network.add_compart (
        std::make_unique<Compart> (new_shape, 100.0F, 100.0F, 200.0F, 100.0F));
}

TEST (HitTest, band_and_grips_of_a_rectangle) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    const auto edge = [&] (float x, float y) {
        return hit (drawn.network, x, y).object == &c
                   ? static_cast<int> (hit (drawn.network, x, y).edge)
                   : -2;
    };
    EXPECT_EQ (edge (97, 150), 0);
    EXPECT_EQ (edge (107, 155), 0);
    EXPECT_EQ (edge (95, 150), -2);
    EXPECT_EQ (edge (109, 150), -2);
    EXPECT_EQ (edge (107, 156), -1);
    EXPECT_EQ (edge (303, 146), 1);
    EXPECT_EQ (edge (200, 97), 2);
    EXPECT_EQ (edge (205, 107), 2);
    EXPECT_EQ (edge (206, 107), -1);
    EXPECT_EQ (edge (195, 203), 3);
    EXPECT_EQ (edge (200, 205), -2);
    EXPECT_EQ (edge (200, 150), -2);
}

TEST (HitTest, ring_and_grips_of_an_ellipse) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::ellipse);
    const auto edge = [&] (float x, float y) {
        return hit (drawn.network, x, y).object == &c
                   ? static_cast<int> (hit (drawn.network, x, y).edge)
                   : -2;
    };
    EXPECT_EQ (edge (102, 150), 0);
    EXPECT_EQ (edge (110, 159), 0);
    EXPECT_EQ (edge (114, 150), -2);
    EXPECT_EQ (edge (99, 150), -2);
    EXPECT_EQ (edge (298, 145), 1);
    EXPECT_EQ (edge (200, 102), 2);
    EXPECT_EQ (edge (209, 195), 3);
    EXPECT_EQ (edge (120, 112), -2);
    EXPECT_EQ (edge (135, 117), -1);
    EXPECT_EQ (edge (200, 150), -2);
}

TEST (HitTest, label_of_a_compartment_comes_first) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    c.take_label (even_line ("ab"));
    drawn.network.layout ();
    // Centred: from 194 to 206, base at 190.
    const Hit h = hit (drawn.network, 196, 192);
    EXPECT_EQ (letter (h), static_cast<unsigned> ('a'));
    EXPECT_EQ (h.owner, &c);
}

TEST (HitTest, compartments_come_last) {
    DrawnNetwork drawn;
    compartment (drawn, shape::rectangle);
    Node& n = drawn.node (100, 130);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 130).object, &n);
}

TEST (HitTest, align_moves_the_network_up) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100); // the network is 110 high
    drawn.network.layout ();
    drawn.network.set_align (0);
    EXPECT_EQ (hit (drawn.network, 82, -10).object, &n);
    EXPECT_EQ (hit (drawn.network, 82, 100).object, nullptr);
    drawn.network.set_align (1);
    EXPECT_EQ (hit (drawn.network, 82, 45).object, &n);
}

TEST (HitTest, nested_network_answers_with_its_own) {
    DrawnNetwork drawn;
    auto inner = std::make_unique<Network> ();
    auto made = std::make_unique<Node> (60.0F, 40.0F, node::gene, 7U);
    made->take_label (even_line ("AA"));
    Node& inner_node = inner->add_node (std::move (made));
    Node& outer = drawn.node (200, 200, node::protein, "");
    outer.take_label (std::move (inner));
    drawn.network.layout ();
    const float left = outer.x () - outer.get_width () / 2;
    const float top = outer.y () - static_cast<float> (outer.get_height ()) / 2;
    const Hit h = hit (drawn.network, left + 5 + 60, top + 4 + 40 + 1);
    EXPECT_NE (letter (h), 0U);
    EXPECT_EQ (h.owner, &inner_node);
    EXPECT_EQ (hit (drawn.network, left + 2, top + 2).object, &outer);
}

TEST (CompartDrag, each_edge_moves_alone) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    const auto box = [&c] { return std::array<float, 4>{c.x (), c.y (), c.width (), c.height ()}; };
    using Box = std::array<float, 4>;
    EXPECT_TRUE (c.drag (Edge::none, 5, 7));
    EXPECT_EQ (box (), (Box{105, 107, 200, 100}));
    EXPECT_TRUE (c.drag (Edge::left, 10, 99));
    EXPECT_EQ (box (), (Box{115, 107, 190, 100}));
    EXPECT_TRUE (c.drag (Edge::right, 10, 99));
    EXPECT_EQ (box (), (Box{115, 107, 200, 100}));
    EXPECT_TRUE (c.drag (Edge::top, 99, 10));
    EXPECT_EQ (box (), (Box{115, 117, 200, 90}));
    EXPECT_TRUE (c.drag (Edge::bottom, 99, 10));
    EXPECT_EQ (box (), (Box{115, 117, 200, 100}));
}

TEST (CompartDrag, smallest_size_is_kept) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    EXPECT_FALSE (c.drag (Edge::right, -171, 0));
    EXPECT_EQ (c.width (), 200);
    EXPECT_TRUE (c.drag (Edge::right, -170, 0));
    EXPECT_EQ (c.width (), 30);
    EXPECT_FALSE (c.drag (Edge::top, 0, 71));
    EXPECT_EQ (c.y (), 100);
    EXPECT_TRUE (c.drag (Edge::top, 0, 70));
    EXPECT_EQ (c.height (), 30);
    c.take_label (even_line ("AAAAA"));
    EXPECT_EQ (c.get_width (), 40);
    EXPECT_FALSE (c.drag (Edge::left, 1, 0));
    EXPECT_TRUE (c.drag (Edge::left, -1, 0));
    EXPECT_EQ (c.width (), 41);
}

} // namespace
