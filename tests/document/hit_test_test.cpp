// Which object a point hits, and how compartments follow a drag.
#include "document/drawn_network.h"

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;

namespace {

struct Hit {
    Char* object;
    HitPlace place;
};

Hit hit (Network& network, float x, float y) {
    Hit result{};
    // Points are told in the network's own coordinates.
    result.object = network.find_at (x + network.x, y + network.y, result.place);
    return result;
}

/// The code of the letter that was hit; 0 for another object.
unsigned letter (const Hit& h) {
    return h.object && h.object->kind () == CharKind::std_char
               ? static_cast<const StdChar*> (h.object)->code
               : 0;
}

TEST (HitTest, NodeIsItsBoxWidenedByFour) {
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

TEST (HitTest, MoleculeIsItsEllipseWidenedByFour) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, node::molecule);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 77, 100).object, &n);
    EXPECT_EQ (hit (drawn.network, 78, 88).object, nullptr);
    EXPECT_EQ (hit (drawn.network, 100, 87).object, &n);
}

TEST (HitTest, LabelThatHoldsThePointWins) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, node::protein, "ABCDE");
    drawn.network.layout ();
    // The label stands at (85, 103), 30 wide, from 94 to 106.
    const Hit h = hit (drawn.network, 98.5F, 100);
    EXPECT_EQ (letter (h), static_cast<unsigned> ('C'));
    EXPECT_EQ (h.place.owner, &n);
    EXPECT_EQ (h.place.line, n.label_line ());
    EXPECT_FLOAT_EQ (h.place.rel_x, 1.5F);
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &n);
}

TEST (HitTest, NodeThatIsNotSelectableGivesNoHit) {
    DrawnNetwork drawn;
    drawn.node (100, 100).selectable = false;
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 100, 100).object, nullptr);
    Node& below = drawn.node (100, 100);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &below);
}

TEST (HitTest, FirstNodeWinsAndTheDraggedOneIsSkipped) {
    DrawnNetwork drawn;
    Node& first = drawn.node (100, 100);
    Node& second = drawn.node (100, 100);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &first);
    drawn.network.under_mouse = &first;
    EXPECT_EQ (hit (drawn.network, 82, 100).object, &second);
}

TEST (HitTest, ResiduComesBeforeTheNode) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    n.take_residu (even_line ("P"));
    drawn.network.layout ();
    // 24 high now: the residu stands at (90, 88), its box reaches from 78 to 90, 1 wider around.
    const Hit on = hit (drawn.network, 93, 85);
    EXPECT_EQ (letter (on), static_cast<unsigned> ('P'));
    EXPECT_EQ (on.place.owner, &n);
    EXPECT_EQ (hit (drawn.network, 89.5F, 78).object, &n);
    EXPECT_EQ (hit (drawn.network, 93, 76).object, nullptr);
}

TEST (HitTest, ArcIsHitNearItsLineAndWithinItsBox) {
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

TEST (HitTest, NodesComeBeforeArcs) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    drawn.arc (from, drawn.node (300, 100));
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 121, 100).object, &from);
}

TEST (HitTest, TextsOfArcsGoWithTheirSwitches) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.take_label (even_line ("L"));
    a.take_residu (even_line ("R"));
    a.take_stoech_src (even_line ("1"));
    a.take_stoech_dest (even_line ("2"));
    a.label->y = -20;
    a.residu->y = -20;
    a.stoech_src->y = -40;
    a.stoech_dest->y = -40;
    drawn.network.layout ();
    // Label at (144, 93 - 20), residu at (266.6, 94 - 20); stoichiometries 2 off and higher.
    const auto at = [&drawn] (float x, float y) {
        const Hit h = hit (drawn.network, x, y);
        return letter (h);
    };
    EXPECT_EQ (at (147, 70), static_cast<unsigned> ('L'));
    EXPECT_EQ (at (269, 70), static_cast<unsigned> ('R'));
    EXPECT_EQ (at (149, 52), 0U);
    document_state ().show_stoichiometry = true;
    EXPECT_EQ (at (149, 52), static_cast<unsigned> ('1'));
    EXPECT_EQ (at (271, 52), static_cast<unsigned> ('2'));
    EXPECT_EQ (hit (drawn.network, 149, 52).place.owner, &a);
    document_state ().show_kinetics = false;
    EXPECT_EQ (at (147, 70), 0U);
}

TEST (HitTest, ArcOfLengthZeroIsNeverHit) {
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

TEST (HitTest, BandAndGripsOfARectangle) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    const auto edge = [&] (float x, float y) {
        return hit (drawn.network, x, y).object == &c ? static_cast<int> (c.edge) : -2;
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

TEST (HitTest, RingAndGripsOfAnEllipse) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::ellipse);
    const auto edge = [&] (float x, float y) {
        return hit (drawn.network, x, y).object == &c ? static_cast<int> (c.edge) : -2;
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

TEST (HitTest, LabelOfACompartmentComesFirst) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    c.take_label (even_line ("ab"));
    drawn.network.layout ();
    // Centred: from 194 to 206, base at 190.
    const Hit h = hit (drawn.network, 196, 192);
    EXPECT_EQ (letter (h), static_cast<unsigned> ('a'));
    EXPECT_EQ (h.place.owner, &c);
}

TEST (HitTest, CompartmentsComeLast) {
    DrawnNetwork drawn;
    compartment (drawn, shape::rectangle);
    Node& n = drawn.node (100, 130);
    drawn.network.layout ();
    EXPECT_EQ (hit (drawn.network, 82, 130).object, &n);
}

TEST (HitTest, AlignMovesTheNetworkUp) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100); // the network is 110 high
    drawn.network.layout ();
    drawn.network.align = 0;
    EXPECT_EQ (hit (drawn.network, 82, -10).object, &n);
    EXPECT_EQ (hit (drawn.network, 82, 100).object, nullptr);
    drawn.network.align = 1;
    EXPECT_EQ (hit (drawn.network, 82, 45).object, &n);
}

TEST (HitTest, NestedNetworkAnswersWithItsOwn) {
    DrawnNetwork drawn;
    auto inner = std::make_unique<Network> ();
    auto made = std::make_unique<Node> (60.0F, 40.0F, node::gene, 7U);
    made->take_label (even_line ("AA"));
    Node& inner_node = inner->add_node (std::move (made));
    Node& outer = drawn.node (200, 200, node::protein, "");
    outer.take_label (std::move (inner));
    drawn.network.layout ();
    const float left = outer.x - outer.get_width () / 2;
    const float top = outer.y - static_cast<float> (outer.get_height ()) / 2;
    const Hit h = hit (drawn.network, left + 5 + 60, top + 4 + 40 + 1);
    EXPECT_NE (letter (h), 0U);
    EXPECT_EQ (h.place.owner, &inner_node);
    EXPECT_EQ (hit (drawn.network, left + 2, top + 2).object, &outer);
}

TEST (CompartDrag, EachEdgeMovesAlone) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    const auto box = [&c] { return std::array<float, 4>{c.x, c.y, c.width, c.height}; };
    using Box = std::array<float, 4>;
    EXPECT_TRUE (c.drag (5, 7));
    EXPECT_EQ (box (), (Box{105, 107, 200, 100}));
    c.edge = Edge::left;
    EXPECT_TRUE (c.drag (10, 99));
    EXPECT_EQ (box (), (Box{115, 107, 190, 100}));
    c.edge = Edge::right;
    EXPECT_TRUE (c.drag (10, 99));
    EXPECT_EQ (box (), (Box{115, 107, 200, 100}));
    c.edge = Edge::top;
    EXPECT_TRUE (c.drag (99, 10));
    EXPECT_EQ (box (), (Box{115, 117, 200, 90}));
    c.edge = Edge::bottom;
    EXPECT_TRUE (c.drag (99, 10));
    EXPECT_EQ (box (), (Box{115, 117, 200, 100}));
}

TEST (CompartDrag, SmallestSizeIsKept) {
    DrawnNetwork drawn;
    Compart& c = compartment (drawn, shape::rectangle);
    c.edge = Edge::right;
    EXPECT_FALSE (c.drag (-171, 0));
    EXPECT_EQ (c.width, 200);
    EXPECT_TRUE (c.drag (-170, 0));
    EXPECT_EQ (c.width, 30);
    c.edge = Edge::top;
    EXPECT_FALSE (c.drag (0, 71));
    EXPECT_EQ (c.y, 100);
    EXPECT_TRUE (c.drag (0, 70));
    EXPECT_EQ (c.height, 30);
    c.take_label (even_line ("AAAAA"));
    EXPECT_EQ (c.get_width (), 40);
    c.edge = Edge::left;
    EXPECT_FALSE (c.drag (1, 0));
    EXPECT_TRUE (c.drag (-1, 0));
    EXPECT_EQ (c.width, 41);
}

} // namespace
