// What compartments and whole networks paint, as the list of primitives.
#include "base/text.h"
#include "document/markup.h"
#include "document/painting.h"

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::dark;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::painted;
using ostrand::testing::RecordingDevice;

namespace {

/// Seeing a part of a network.
PaintStyle seeing (float x, float y, float right, float bottom) {
    PaintStyle style;
    style.clip = Extent{x, y, right, bottom};
    return style;
}

TEST (PaintCompart, rectangle_has_four_bands) {
    DrawnNetwork drawn;
    Compart c (shape::rectangle, 10, 20, 100, 60);
    c.set_own_color (4);
    c.take_label (even_line ("ab"));
    EXPECT_EQ (painted (c), "color 4\nfill_round_rect 10 20 100 60 9\n"
                            "color c0c0ff00\nfill_round_rect 12 22 96 56 7\n"
                            "color 4\nfill_round_rect 18 28 84 44 4\n"
                            "color 7\nfill_round_rect 20 30 80 40 3\n"
                            "color 0\ntext 97 'ab' 54 70\n");
}

TEST (PaintCompart, ellipse_has_the_same_bands) {
    DrawnNetwork drawn;
    Compart c (shape::ellipse, 10, 20, 100, 60);
    c.set_own_color (4);
    EXPECT_EQ (painted (c), "color 4\nfill_ellipse 10 20 100 60 180\n"
                            "color c0c0ff00\nfill_ellipse 12 22 96 56 180\n"
                            "color 4\nfill_ellipse 18 28 84 44 180\n"
                            "color 7\nfill_ellipse 20 30 80 40 180\n");
}

TEST (PaintCompart, smaller_than_its_bands_and_thick_gives_no_negative_sizes) {
    DrawnNetwork drawn;
    Compart c (shape::rectangle, 0, 0, 12, 10);
    c.set_own_color (4);
    c.set_thickness (9);
    EXPECT_EQ (painted (c), "color 4\nfill_round_rect -7 -7 26 24 16\n"
                            "color c0c0ff00\nfill_round_rect 2 2 8 6 7\n");
}

TEST (PaintCompart, without_a_line_nothing_but_the_name_is_there) {
    DrawnNetwork drawn;
    Compart c (shape::rectangle, 0, 0, 100, 60);
    c.set_thickness (0);
    EXPECT_EQ (painted (c), "");
}

TEST (PaintCompart, dark_canvas_has_its_own_colours) {
    DrawnNetwork drawn;
    Compart c (shape::rectangle, 0, 0, 100, 60);
    c.set_own_color (4);
    const std::string text = painted (c, dark ());
    EXPECT_TRUE (text.starts_with ("color eeaa0000\n")) << text;
    EXPECT_NE (text.find ("color 56\nfill_round_rect 10 10 80 40 3\n"), std::string::npos) << text;
    c.selected = true;
    EXPECT_TRUE (painted (c, dark ()).starts_with ("color ee29ff00\n"));
}

TEST (PaintCompart, selected_has_four_handles) {
    DrawnNetwork drawn;
    Compart c (shape::rectangle, 10, 20, 100, 60);
    c.selected = true;
    PaintStyle style;
    style.hover = &c;
    style.hot_edge = Edge::right;
    const std::string text = painted (c, style);
    EXPECT_TRUE (text.starts_with ("color 1\nfill_round_rect 7 17 106 66 12\n")) << text;
    EXPECT_TRUE (text.ends_with ("color 0\nfill_rect 6 42 16 16\ncolor 7\nfill_rect 8 44 12 12\n"
                                 "color 0\nfill_rect 99 42 16 16\n"
                                 "color a0a0a000\nfill_rect 101 44 12 12\n"
                                 "color 0\nfill_rect 52 16 16 16\ncolor 7\nfill_rect 54 18 12 12\n"
                                 "color 0\nfill_rect 52 68 16 16\n"
                                 "color 7\nfill_rect 54 70 12 12\n"))
        << text;
}

/// The kinds of things in the order in which they are painted, by their telling primitives.
std::string painting_order (const RecordingDevice& device) {
    std::string order;
    for (const std::string& call : device.calls) {
        if (call.starts_with ("fill_round_rect") && call.ends_with (" 4")) order += "compartment ";
        if (call.starts_with ("arrow_head")) order += "reaction ";
        if (call.starts_with ("fill_triangle_head 16")) order += "activation ";
        if (call.starts_with ("text")) order += "node ";
    }
    return order;
}

TEST (PaintNetwork, nodes_are_on_top_of_arcs_and_reactions_under_links) {
    DrawnNetwork drawn;
    Node& a = drawn.node (100, 100);
    Node& b = drawn.node (300, 100);
    drawn.arc (a, b, arc::activation);
    drawn.arc (b, a);
    auto c = std::make_unique<Compart> (shape::rectangle, 0.0F, 0.0F, 400.0F, 200.0F);
    drawn.network.add_compart (std::move (c));
    drawn.network.layout ();
    for (const PaintStyle& style : {PaintStyle{}, seeing (0, 0, 1000, 1000)}) {
        RecordingDevice device;
        drawn.network.paint (device, style, 0, 0);
        EXPECT_EQ (painting_order (device), "compartment reaction activation node node ");
    }
}

TEST (PaintNetwork, everything_stands_beside_the_origin) {
    DrawnNetwork drawn;
    Network& network = drawn.network;
    network.add_compart (std::make_unique<Compart> (shape::rectangle, 50.F, 60.F, 300.F, 200.F));
    Node& from = drawn.node (100, 100, 5);
    drawn.arc (from, drawn.node (300, 100, 5));
    network.set_origin (7, 1000);
    network.layout ();
    RecordingDevice device;
    network.paint (device, PaintStyle{}, 20, 4);
    // The origin is at (27, 1004).
    EXPECT_TRUE (device.has ("fill_round_rect 79 1066 296 196 7")) << device.joined ();
    EXPECT_TRUE (device.has ("fill_rect 107 1094 40 20")) << device.joined ();
    EXPECT_EQ (device.named ("push 147 1104").size (), 1U) << device.joined ();
    EXPECT_TRUE (device.has ("text 97 'AAAAA' 112 1107")) << device.joined ();
}

TEST (PaintNetwork, what_cannot_be_seen_is_not_painted) {
    DrawnNetwork drawn;
    for (const auto& [x, y] : {std::pair{100, 100}, std::pair{900, 100}, std::pair{100, 900},
                               std::pair{-100, 100}, std::pair{100, -100}}) {
        drawn.node (static_cast<float> (x), static_cast<float> (y), 9,
                    x == 100 && y == 100 ? "in" : "out");
    }
    drawn.network.set_origin (0, 0);
    drawn.network.layout ();
    const auto texts = [&drawn] (const PaintStyle& style) {
        RecordingDevice device;
        drawn.network.paint (device, style, 0, 0);
        return device.named ("text").size ();
    };
    EXPECT_EQ (texts (seeing (0, 0, 500, 500)), 1U);
    EXPECT_EQ (texts (seeing (700, 0, 1200, 500)), 1U);
    EXPECT_EQ (texts (seeing (300, 300, 500, 500)), 0U);
    EXPECT_EQ (texts ({}), 5U);
}

TEST (PaintNetwork, what_touches_the_edge_of_the_view_is_painted) {
    DrawnNetwork drawn;
    drawn.node (100, 100); // from (80, 90) to (120, 110)
    drawn.network.set_origin (0, 0);
    drawn.network.layout ();
    const auto is_seen = [&drawn] (float x, float y, float right, float bottom) {
        RecordingDevice device;
        drawn.network.paint (device, seeing (x, y, right, bottom), 0, 0);
        return !device.calls.empty ();
    };
    EXPECT_TRUE (is_seen (120, 0, 300, 300));
    EXPECT_FALSE (is_seen (120.5F, 0, 300, 300));
    EXPECT_TRUE (is_seen (0, 110, 300, 300));
    EXPECT_FALSE (is_seen (0, 110.5F, 300, 300));
    EXPECT_TRUE (is_seen (0, 0, 80, 300));
    EXPECT_FALSE (is_seen (0, 0, 79.5F, 300));
    EXPECT_TRUE (is_seen (0, 0, 300, 90));
    EXPECT_FALSE (is_seen (0, 0, 300, 89.5F));
}

TEST (PaintNetwork, align_moves_it_up) {
    DrawnNetwork drawn;
    drawn.node (100, 100, 5); // reaches down to 110
    drawn.network.set_origin (0, 0);
    for (const auto& [align, y] : {std::pair{2, "90"}, std::pair{1, "35"}, std::pair{0, "-20"}}) {
        drawn.network.set_align (align);
        drawn.network.layout ();
        RecordingDevice device;
        drawn.network.paint (device, {}, 0, 0);
        EXPECT_TRUE (device.has ("fill_rect 80 " + std::string (y) + " 40 20")) << align;
        RecordingDevice alone;
        drawn.network.paint_contents (alone, {}, 0, 0);
        EXPECT_TRUE (alone.has ("fill_rect 80 90 40 20"));
    }
}

TEST (PaintNetwork, nested_network_stands_in_its_node) {
    DrawnNetwork drawn;
    const auto read = read_network ("[N1 0 2 0 0[S1 0 200 150 0 7 9"
                                    "[N1 0 2 0 0[S2 0 30 20 0 7 5{<97F>AA}-]]-]]");
    ASSERT_NE (read, nullptr);
    Node& outer = *read->nodes ()[0];
    Network& inner = *outer.nested ();
    // The inner node is 22 by 20: 41 from the left, 30 from the top.
    EXPECT_EQ (inner.get_width (), 41);
    EXPECT_EQ (outer.get_width (), 51);
    EXPECT_EQ (outer.get_height (), 38);
    RecordingDevice device;
    read->paint (device, seeing (0, 0, 1000, 1000), 0, 0);
    // Corner of the outer node (174.5, 131), then 5 and 4 to the inner origin.
    EXPECT_TRUE (device.has ("fill_rect 198.5 145 22 20")) << device.joined ();
    RecordingDevice left_part;
    read->paint (left_part, seeing (0, 0, 190, 1000), 0, 0);
    EXPECT_EQ (left_part.named ("fill_round_rect").size (), 2U); // the outer node is seen
    EXPECT_TRUE (left_part.named ("fill_rect").empty ());        // the inner one is not
}

TEST (PaintNetwork, network_in_a_line_is_painted_where_it_stands) {
    DrawnNetwork drawn;
    const auto read = read_network ("[N1 0 2 0 0[S1 0 200 150 0 7 9"
                                    "{<97F>AB[N1 0 2 0 0[S2 0 30 20 0 7 5{AA}-]]}-]]");
    ASSERT_NE (read, nullptr);
    const Node& outer = *read->nodes ()[0];
    const float left = outer.x () - outer.get_width () / 2 + 5 + 12; // behind two letters
    RecordingDevice device;
    read->paint (device, {}, 0, 0);
    EXPECT_FALSE (device.named ("fill_rect " + format_g (left + 19)).empty ()) << device.joined ();
}

TEST (PaintNetwork, layout_of_deep_nesting_takes_no_time) {
    DrawnNetwork drawn;
    std::string text = "{x}";
    for (int depth = 0; depth < 60; ++depth)
        text = "[N1 0 2 0 0[S" + std::to_string (depth + 1) + " 0 30 20 0 7 9" + text + "-]]";
    const auto read = read_network (text);
    ASSERT_NE (read, nullptr);
    // Each node is as wide as 30 + half of the next inner one + 10, which comes to 80.
    EXPECT_NEAR (read->get_width (), 70, 0.01);
}

} // namespace
