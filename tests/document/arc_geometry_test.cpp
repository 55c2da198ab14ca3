// Arc geometry against places worked out by hand. Nodes are 40 by 20 unless said otherwise.
#include "document/drawn_network.h"

#include <vector>

using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::expect_point;

namespace {

TEST (ArcGeometry, HorizontalArcToTheRight) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.compute_geometry ();
    EXPECT_EQ (a.angle, 0);
    expect_point (a.start, 120, 100);
    expect_point (a.head, 280, 100);
    expect_point (a.end, 275, 100);
    expect_point (a.mark_a, 175, 100);
    expect_point (a.mark_b, 225, 100);
    expect_point (a.inner, 261, 100);
    EXPECT_FLOAT_EQ (a.x, 190.5F);
    EXPECT_NEAR (a.y, 93, 0.002);
    EXPECT_FLOAT_EQ (a.line_a, 155);
    EXPECT_NEAR (a.line_b, 0, 0.002);
    // Slope 1e-6 of a horizontal line.
    EXPECT_NEAR ((a.head.y - a.start.y) / 160, 1e-6, 1e-7);
}

TEST (ArcGeometry, HorizontalArcToTheLeft) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (300, 100), drawn.node (100, 100));
    a.compute_geometry ();
    EXPECT_EQ (a.angle, 180);
    expect_point (a.start, 280, 100);
    expect_point (a.head, 120, 100);
    expect_point (a.end, 125, 100);
}

TEST (ArcGeometry, VerticalArcDownwards) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 200));
    a.compute_geometry ();
    EXPECT_EQ (a.angle, 90);
    expect_point (a.start, 100, 110);
    expect_point (a.head, 100, 190);
    expect_point (a.end, 100, 185);
}

TEST (ArcGeometry, VerticalArcUpwards) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 200), drawn.node (100, 100));
    a.compute_geometry ();
    EXPECT_EQ (a.angle, 270);
    expect_point (a.start, 100, 190);
    expect_point (a.head, 100, 111);
    expect_point (a.end, 100, 116);
}

TEST (ArcGeometry, VerticalArcBetweenDifferentWidthsIsExactlyVertical) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100.25F, 100), drawn.node (100.25F, 200, 9, "AAAAAAAB"));
    a.compute_geometry ();
    EXPECT_EQ (a.start.x, 100.25F);
    EXPECT_EQ (a.end.x, 100.25F);
    EXPECT_EQ (a.mark_a.x, 100.25F);
}

TEST (ArcGeometry, VerticalArcFromANodeWithoutLabelStartsAtIt) {
    DrawnNetwork drawn;
    Node& small = drawn.node (100, 100, 0, "");
    Arque& down = drawn.arc (small, drawn.node (100, 200));
    Arque& up = drawn.arc (small, drawn.node (100, 0));
    down.compute_geometry ();
    up.compute_geometry ();
    expect_point (down.start, 100, 101);
    expect_point (up.start, 100, 99);
    Arque& back = drawn.arc (drawn.node (100, 300), small, arc::substrate);
    back.compute_geometry ();
    expect_point (back.end, 100, 102);
}

TEST (ArcGeometry, SlantedArcLeavesAndMeetsTheSides) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 180));
    a.compute_geometry ();
    EXPECT_NEAR (a.angle, 21.8014, 0.001);
    expect_point (a.start, 120, 108);
    expect_point (a.head, 280, 172);
    Arque& b = drawn.arc (drawn.node (300, 480), drawn.node (100, 400));
    b.compute_geometry ();
    EXPECT_NEAR (b.angle, 201.8014, 0.001);
    expect_point (b.start, 280, 472);
    expect_point (b.head, 120, 408);
}

TEST (ArcGeometry, SteepArcLeavesAndMeetsTopAndBottom) {
    DrawnNetwork drawn;
    Arque& down = drawn.arc (drawn.node (100, 100), drawn.node (150, 300));
    down.compute_geometry ();
    EXPECT_NEAR (down.angle, 75.9638, 0.001);
    expect_point (down.start, 102.5, 110);
    expect_point (down.head, 147.5, 290);
    Arque& up = drawn.arc (drawn.node (300, 300), drawn.node (200, 100));
    up.compute_geometry ();
    EXPECT_NEAR (up.angle, 243.4349, 0.001);
    expect_point (up.start, 295, 290);
    expect_point (up.head, 205, 111);
}

TEST (ArcGeometry, HeadMovesEndAndHeadByItsCode) {
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
        a.compute_geometry ();
        SCOPED_TRACE (c.type);
        expect_point (a.start, 120, 100);
        expect_point (a.end, c.end, 100);
        expect_point (a.head, c.head, 100);
        expect_point (a.mark_a, 175, 100);
    }
}

TEST (ArcGeometry, TwoArcsInTheSameDirectionAreOffsetByEightAndMinusEight) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    Node& to = drawn.node (300, 100);
    Arque& a = drawn.arc (from, to);
    Arque& b = drawn.arc (from, to);
    drawn.network.layout ();
    EXPECT_EQ (a.side, -2);
    EXPECT_EQ (b.side, 2);
    expect_point (a.start, 120, 108);
    expect_point (a.head, 280, 108);
    expect_point (b.start, 120, 92);
    expect_point (b.head, 280, 92);
    a.destroy ();
    EXPECT_EQ (b.side, 0);
    b.compute_geometry ();
    expect_point (b.start, 120, 100);
}

TEST (ArcGeometry, OneArcEachWayIsOffset) {
    DrawnNetwork drawn;
    Node& left = drawn.node (100, 100);
    Node& right = drawn.node (300, 100);
    Arque& there = drawn.arc (left, right);
    Arque& back = drawn.arc (right, left);
    drawn.network.layout ();
    EXPECT_EQ (there.side, 1);
    EXPECT_EQ (back.side, -1);
    expect_point (there.start, 120, 92);
    expect_point (there.head, 280, 92);
    expect_point (back.start, 280, 108);
    expect_point (back.head, 120, 108);
}

TEST (ArcGeometry, OffsetsOfVerticalArcs) {
    DrawnNetwork drawn;
    Node& high = drawn.node (100, 100);
    Node& low = drawn.node (100, 200);
    Arque& down = drawn.arc (high, low);
    Arque& up = drawn.arc (low, high);
    drawn.network.layout ();
    expect_point (down.start, 108, 110);
    expect_point (down.head, 108, 190);
    expect_point (up.start, 92, 190);
    expect_point (up.head, 92, 111);
}

TEST (ArcGeometry, ThreeParallelArcs) {
    DrawnNetwork drawn;
    Node& from = drawn.node (100, 100);
    Node& to = drawn.node (300, 100);
    Arque& a = drawn.arc (from, to);
    Arque& b = drawn.arc (from, to);
    Arque& c = drawn.arc (from, to);
    a.compute_geometry ();
    EXPECT_EQ (a.side, -2);
    EXPECT_EQ (c.side, 2);
    b.compute_geometry ();
    c.compute_geometry ();
    EXPECT_EQ (b.side, -2);
    EXPECT_EQ (a.side, -2);
    EXPECT_EQ (c.side, 2);
}

TEST (ArcGeometry, ArcFromANodeToItselfFindsItself) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, n);
    a.compute_geometry ();
    EXPECT_EQ (a.side, 1);
    EXPECT_EQ (a.angle, 90);
    expect_point (a.start, 108, 110);
    expect_point (a.head, 108, 90);
}

TEST (ArcGeometry, TwoEqualBoxesOnOneCentreFollowTheSteps) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 100), arc::substrate);
    a.compute_geometry ();
    expect_point (a.start, 100, 110);
    expect_point (a.end, 100, 90);
}

TEST (ArcGeometry, ZeroLengthUsesTheFixedParameters) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 120));
    a.take_label (even_line ("ab"));
    a.take_residu (even_line ("cd"));
    a.compute_geometry ();
    for (const Point& p : {a.start, a.end, a.head, a.mark_a, a.mark_b, a.inner})
        expect_point (p, 100, 110);
    EXPECT_EQ (a.line_a, 0);
    EXPECT_EQ (a.line_b, 0);
    expect_point (a.label_pos, 104, 103);
    expect_point (a.residu_pos, 100, 104);
}

TEST (ArcGeometry, LinksMeetTheMarkOfTheirReaction) {
    DrawnNetwork drawn;
    Arque& r = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    Arque& substrate = drawn.arc (drawn.node (175, 200), r, arc::substrate);
    Arque& product = drawn.arc (drawn.node (225, 0), r, arc::product);
    Arque& catalysis = drawn.arc (drawn.node (197.5F, 200), r, arc::catalysis);
    drawn.network.layout ();
    expect_point (substrate.end, 175, 100);
    expect_point (product.head, 225, 100);
    expect_point (product.end, 225, 95);
    // Bottom of the mark, whose corner is (190.5, 93); the head stands 9 back.
    expect_point (catalysis.end, 197.5, 117);
}

TEST (ArcGeometry, ArcOnAnArcThatComesLaterInTheWalkIsRight) {
    DrawnNetwork drawn;
    Node& first = drawn.node (200, 300);
    Node& from = drawn.node (100, 100);
    Arque& r = drawn.arc (from, drawn.node (300, 100));
    Arque& substrate = drawn.arc (first, r, arc::substrate);
    drawn.network.layout ();
    EXPECT_NEAR (substrate.end.x, r.mark_a.x, 0.01);
    EXPECT_NEAR (substrate.end.y, r.mark_a.y, 0.01);
}

TEST (ArcGeometry, LongChainOfArcsOnArcsIsRight) {
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
        ASSERT_NEAR (a.end.x, a.dest_arc ()->mark_a.x, 0.01);
        ASSERT_NEAR (a.end.y, a.dest_arc ()->mark_a.y, 0.01);
    }
}

TEST (ArcGeometry, ArcsInACircleComeToAnEnd) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100);
    Arque& a = drawn.arc (n, drawn.node (300, 100), arc::substrate);
    Arque& b = drawn.arc (drawn.node (200, 300), a, arc::substrate);
    a.set_dest (&b);
    drawn.network.layout ();
    EXPECT_EQ (a.dest_arc (), &b);
    EXPECT_EQ (b.dest_arc (), &a);
}

TEST (ArcGeometry, HubWithManyArcsIsLaidOutAtOnce) {
    DrawnNetwork drawn;
    Node& hub = drawn.node (100, 100);
    Node& other = drawn.node (100, 900);
    for (int i = 0; i < 20000; ++i) {
        drawn.arc (hub, drawn.node (400, static_cast<float> (i), 0, ""));
        drawn.arc (hub, other);
    }
    drawn.network.layout ();
    EXPECT_EQ (hub.arcs ()[1]->side, -2);
    EXPECT_EQ (hub.arcs ().back ()->side, 2);
    EXPECT_EQ (hub.arcs ()[2]->side, 0);
}

TEST (ArcGeometry, LabelPlacesToTheRightAndLeft) {
    DrawnNetwork drawn;
    Arque& right = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    Arque& left = drawn.arc (drawn.node (300, 200), drawn.node (100, 200));
    for (Arque* a : {&right, &left}) {
        a->take_label (even_line ("ab"));
        a->take_residu (even_line ("cd"));
        a->compute_geometry ();
    }
    expect_point (right.label_pos, 144, 93);
    expect_point (right.residu_pos, 275 - 12 * 1.4, 94);
    // The slope of 1e-6 makes a horizontal line to the left one that goes up.
    EXPECT_LT (left.end.y, left.start.y);
    expect_point (left.label_pos, 280 + 8 - 12 * 1.4, 190);
    expect_point (left.residu_pos, 125 + 4 + 20, 194);
}

TEST (ArcGeometry, LabelPlacesDownAndUp) {
    DrawnNetwork drawn;
    Arque& down_left = drawn.arc (drawn.node (200, 100), drawn.node (100, 300));
    Arque& up = drawn.arc (drawn.node (400, 200), drawn.node (400, 100));
    Arque& up_left = drawn.arc (drawn.node (700, 300), drawn.node (600, 100));
    for (Arque* a : {&down_left, &up, &up_left}) {
        a->take_label (even_line ("ab"));
        a->take_residu (even_line ("cd"));
        a->compute_geometry ();
    }
    // Start (195, 110), end before its move (105, 290): 201.246 long, direction (-0.44721,
    // 0.89443).
    expect_point (down_left.start, 195, 110);
    expect_point (down_left.label_pos, 195 + 4 - 12 * 1.3 * 0.2, 110 + 16 + 3 * 0.447214);
    expect_point (down_left.residu_pos, 107.23607 + 4 + 11 * 0.447214,
                  285.52786 - 17 + 32 * 0.447214);
    expect_point (up.label_pos, 412, 173);
    expect_point (up.residu_pos, 404, 136);
    expect_point (up_left.label_pos, 701.4772, 271.0657);
    expect_point (up_left.residu_pos, 620.2304, 131.8029);
}

TEST (ArcGeometry, LabelOfACatalysisAndAnInfluenceStandsByTheTarget) {
    for (const unsigned type : {arc::catalysis, arc::influence}) {
        DrawnNetwork drawn;
        // Ends left of and above the target's corner, then right of and below it.
        Arque& near = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), type);
        Arque& far = drawn.arc (drawn.node (500, 200), drawn.node (300, 200), type);
        near.take_label (even_line ("ab"));
        far.take_label (even_line ("ab"));
        near.compute_geometry ();
        far.compute_geometry ();
        expect_point (near.label_pos, 294, 85);
        expect_point (far.label_pos, 280 - 12, 185);
        Arque& below = drawn.arc (drawn.node (300, 0), drawn.node (300, 300), type);
        below.take_label (even_line ("ab"));
        below.compute_geometry ();
        expect_point (below.label_pos, 268, 318);
    }
}

TEST (ArcGeometry, StoichiometryAloneHasThePlaceToo) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.take_stoech_src (even_line ("2"));
    a.take_stoech_dest (even_line ("3"));
    a.compute_geometry ();
    expect_point (a.label_pos, 144, 93);
    expect_point (a.residu_pos, 275 - 6 * 1.4, 94);
}

TEST (ArcGeometry, TextWithoutAPlaceStaysAtZero) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), arc::substrate);
    a.take_stoech_src (even_line ("2"));
    a.take_stoech_dest (even_line ("3"));
    a.take_residu (even_line ("x"));
    Arque& bare = drawn.arc (drawn.node (100, 200), drawn.node (300, 200));
    a.compute_geometry ();
    bare.compute_geometry ();
    expect_point (a.label_pos, 144, 93);
    expect_point (a.residu_pos, 0, 0);
    expect_point (bare.label_pos, 0, 0);
    expect_point (bare.residu_pos, 0, 0);
}

TEST (ArcGeometry, NumbersWithoutEndDoNoHarm) {
    DrawnNetwork drawn;
    Node& far = drawn.node (std::numeric_limits<float>::infinity (), 100);
    Arque& a = drawn.arc (far, drawn.node (300, 100));
    Arque& b = drawn.arc (drawn.node (1e30F, -1e30F), far, arc::catalysis);
    drawn.network.layout ();
    EXPECT_EQ (a.source (), &far);
    EXPECT_EQ (b.dest_node (), &far);
}

} // namespace
