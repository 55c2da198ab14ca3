// Painting on a dark canvas: ink, hollows, marks and handles.
#include "document/arque.h"
#include "document/compart.h"
#include "document/drawn_network.h"
#include "document/paint_style.h"
#include "support/recording_device.h"

#include <gtest/gtest.h>

#include <string>

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::RecordingDevice;

namespace {

/// What an object paints on a dark canvas.
std::string painted_dark (Network& network, const Char& object, Edge hot_edge = Edge::none) {
    network.layout ();
    PaintStyle style;
    style.dark = true;
    style.hover = &object;
    style.hot_edge = hot_edge;
    if (hot_edge == Edge::none) style.hover = nullptr;
    RecordingDevice device;
    object.paint (device, style, 0, 0);
    return device.joined ();
}

/// A node of 40 by 20 around (100, 100).
template <typename Change>
std::string dark_node (unsigned type, const Change& change) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, type);
    n.set_color (0xAABBCC00);
    change (n);
    return painted_dark (drawn.network, n);
}

/// An arc from (120, 100) to the right.
template <typename Change>
std::string dark_arc (unsigned type, const Change& change) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), type);
    change (a);
    return painted_dark (drawn.network, a);
}

TEST (DarkPaint, marks_of_nodes_have_their_own_colours) {
    EXPECT_TRUE (dark_node (5, [] (Node& n) { n.selected = true; }).starts_with ("color 3\n"));
    EXPECT_TRUE (
        dark_node (5, [] (Node& n) { n.set_calyx_display (true); }).starts_with ("color 6\n"));
    EXPECT_TRUE (
        dark_node (5, [] (Node& n) { n.set_multi_conc (true); }).starts_with ("color 5\n"));
    // Fogged, everything has one colour but the fill, on which the label has to show.
    EXPECT_TRUE (dark_node (5, [] (Node& n) { n.set_own_fog (true); })
                     .starts_with ("color 100\nfill_rect 78 88 44 24\ncolor aabbcc00\n"
                                   "fill_rect 80 90 40 20\ncolor 100\ntext 97 'A' 85 103\n"));
    EXPECT_TRUE (dark_node (0, [] (Node& n) {
                     n.selected = true;
                 }).starts_with ("color 3\nfill_rect 78.5 88.5 43 23\ncolor 0\n"));
}

/// Black lines are white and what is hollow is black.
TEST (DarkPaint, arcs_turn_ink_and_hollows) {
    const auto nothing = [] (Arque&) {};
    for (const auto& [type, part] :
         {std::pair{arc::reaction,
                    "color 7\nfill_rect -7 -7 14 14\ncolor 0\nfill_rect -5 -5 10 10\n"},
          std::pair{arc::activation,
                    "color 7\nfill_triangle_head 16 12 0\ncolor 0\nfill_triangle_head 9 4 -5\n"},
          std::pair{arc::influence, "color 7\nfill_rect -5 -5 9 9\ncolor 0\nfill_rect -3 -3 5 5\n"},
          std::pair{arc::inhibition, "color 7\nfill_rect -6.5 0 12 2\n"},
          std::pair{arc::transport, "color 7\narrow_head 14 10 1\n"}}) {
        const std::string text = dark_arc (type, nothing);
        EXPECT_NE (text.find (part), std::string::npos) << text;
        EXPECT_NE (text.find ("color 7\nline 1\npush 120 100 0\n"), std::string::npos) << text;
    }
    const std::string circle = dark_arc (arc::catalysis, nothing);
    EXPECT_LT (circle.find ("color 7\nfill_ellipse"), circle.find ("color 0\nfill_ellipse"));
    const std::string foggy = dark_arc (arc::substrate, [] (Arque& a) { a.set_own_fog (true); });
    EXPECT_NE (foggy.find ("color 100\nline 1\n"), std::string::npos) << foggy;
    const std::string blue = dark_arc (arc::substrate, [] (Arque& a) { a.set_own_color (4); });
    EXPECT_NE (blue.find ("color 6\nline 1\n"), std::string::npos) << blue;
}

TEST (DarkPaint, handles_of_a_compartment_are_turned_too) {
    DrawnNetwork drawn;
    Compart& c = drawn.network.add_compart (
        std::make_unique<Compart> (shape::rectangle, 10.F, 20.F, 100.F, 60.F));
    c.selected = true;
    const std::string text = painted_dark (drawn.network, c, Edge::top);
    EXPECT_NE (text.find ("color 7\nfill_rect 6 42 16 16\ncolor 0\nfill_rect 8 44 12 12\n"),
               std::string::npos)
        << text;
    EXPECT_NE (
        text.find ("color 7\nfill_rect 52 16 16 16\ncolor a0a0a000\nfill_rect 54 18 12 12\n"),
        std::string::npos)
        << text;
}

} // namespace
