// What arcs paint, as the list of primitives.
#include "document/painting.h"

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::dark;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::painted;
using ostrand::testing::RecordingDevice;

namespace {

// Arcs from (120, 100) to the right.

/// The primitives of an arc of 160 pixels.
template <typename Change>
std::string painted_arc (unsigned type, const Change& change) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100), type);
    PaintStyle style;
    change (a, style);
    drawn.network.layout ();
    RecordingDevice device;
    // Exactly horizontal: the line through the centres has a slope of 1e-6 otherwise.
    a.paint (device, style, 0, 0);
    std::string text;
    for (std::string call : device.calls) {
        for (const std::string_view noise : {"100.000"}) {
            const std::size_t at = call.find (noise);
            if (at != std::string::npos) call.replace (at, call.find (' ', at) - at, "100");
        }
        text += call + "\n";
    }
    return text;
}

std::string painted_arc (unsigned type) {
    return painted_arc (type, [] (Arque&, PaintStyle&) {});
}

TEST (PaintArc, reaction) {
    EXPECT_EQ (painted_arc (arc::reaction), "group\ncolor 0\nline 1\npush 120 100 0\n"
                                            "fill_rect 0 -1 155 2\npop\n"
                                            "push 197.5 100 0\ncolor 0\nfill_rect -7 -7 14 14\n"
                                            "color 7\nfill_rect -5 -5 10 10\npop\n"
                                            "push 280 100 0\ncolor 0\narrow_head 14 10 1\npop\n"
                                            "end_group\n");
}

TEST (PaintArc, reversible_reaction_has_arrows_at_both_ends) {
    const std::string text = painted_arc (arc::reversible_reaction);
    EXPECT_NE (text.find ("fill_rect 0 -1 155 2\n"), std::string::npos) << text;
    EXPECT_NE (text.find ("push 120 100 180\ncolor 0\narrow_head 14 10 1\npop\n"
                          "push 280 100 0\ncolor 0\narrow_head 14 10 1\npop\n"),
               std::string::npos)
        << text;
}

TEST (PaintArc, reversible_arc_without_a_head_is_five_longer) {
    EXPECT_EQ (painted_arc (0x101), "group\ncolor 0\nline 1\npush 120 100 0\n"
                                    "fill_rect 0 -1 165 2\npop\n"
                                    "push 200 100 0\ncolor 0\nfill_rect -7 -7 14 14\n"
                                    "color 7\nfill_rect -5 -5 10 10\npop\n"
                                    "push 120 100 180\ncolor 0\narrow_head 14 10 1\npop\n"
                                    "end_group\n");
    const std::string product = painted_arc (arc::product);
    EXPECT_NE (product.find ("fill_rect 0 -1 160 2\n"), std::string::npos) << product;
    EXPECT_NE (product.find ("push 120 100 180\n"), std::string::npos) << product;
}

TEST (PaintArc, transport_has_a_bar) {
    const std::string text = painted_arc (arc::transport);
    EXPECT_NE (text.find ("push 261 100 90\ncolor 0\nfill_rect -5 -2 10 1.5\npop\nend_group\n"),
               std::string::npos)
        << text;
}

TEST (PaintArc, substrate_link_is_a_line) {
    EXPECT_EQ (painted_arc (arc::substrate),
               "group\ncolor 0\nline 1\npush 120 100 0\nfill_rect 0 -1 160 2\npop\nend_group\n");
}

TEST (PaintArc, catalysis_has_a_circle_that_touches_the_target) {
    // Its end is at 271, the centre 5 on from there, the radius 4.
    const std::string text = painted_arc (arc::catalysis);
    EXPECT_NE (text.find ("fill_rect 0 -1 151 2\npop\ncolor 0\nfill_ellipse 272 95"),
               std::string::npos)
        << text;
    EXPECT_NE (text.find (" 8 8 16\ncolor 7\nfill_ellipse 274 97"), std::string::npos) << text;
}

TEST (PaintArc, inhibition_has_a_flat_head) {
    EXPECT_NE (painted_arc (arc::inhibition)
                   .find ("push 274 100 90\ncolor 0\nfill_rect -6.5 0 12 2\npop\nend_group\n"),
               std::string::npos);
}

TEST (PaintArc, activation_has_a_hollow_triangle) {
    EXPECT_NE (painted_arc (arc::activation)
                   .find ("push 279 100 0\ncolor 0\nfill_triangle_head 16 12 0\n"
                          "color 7\nfill_triangle_head 9 4 -5\npop\nend_group\n"),
               std::string::npos);
}

TEST (PaintArc, necessary_activation_has_a_bar_too) {
    EXPECT_NE (painted_arc (arc::necessary_activation)
                   .find ("fill_triangle_head 9 4 -5\npop\npush 261 100 90\ncolor 0\n"
                          "fill_rect -5 -2 10 1.5\npop\nend_group\n"),
               std::string::npos);
}

TEST (PaintArc, influence_has_a_hollow_diamond) {
    EXPECT_NE (painted_arc (arc::influence)
                   .find ("push 270 100 -45\ncolor 0\nfill_rect -5 -5 9 9\n"
                          "color 7\nfill_rect -3 -3 5 5\npop\nend_group\n"),
               std::string::npos);
}

TEST (PaintArc, selection_and_pointer_make_it_thicker) {
    const std::string both = painted_arc (arc::substrate, [] (Arque& a, PaintStyle& style) {
        a.selected = true;
        style.hover = &a;
    });
    EXPECT_NE (both.find ("color 1\nline 1\npush 120 100 0\nfill_rect 0 -2 160 4\n"),
               std::string::npos)
        << both;
    const std::string dark = painted_arc (arc::reaction, [] (Arque& a, PaintStyle& style) {
        a.selected = true;
        style.dark = true;
    });
    EXPECT_NE (dark.find ("color 3\nfill_rect -7 -7 14 14\ncolor 0\nfill_rect -4 -4 8 8\n"),
               std::string::npos)
        << dark;
}

TEST (PaintArc, thickness_that_fills_the_mark_gives_no_negative_size) {
    const std::string text =
        painted_arc (arc::reaction, [] (Arque& a, PaintStyle&) { a.set_thickness (9); });
    EXPECT_NE (text.find ("fill_rect -7 -7 14 14\npop\n"), std::string::npos) << text;
    EXPECT_EQ (text.find ("fill_rect 2 2"), std::string::npos) << text;
}

TEST (PaintArc, foggy_arc_is_lighter) {
    EXPECT_NE (painted_arc (arc::substrate, [] (Arque& a, PaintStyle&) { a.set_own_fog (true); })
                   .find ("color c8c8c800\n"),
               std::string::npos);
}

TEST (PaintArc, nothing_is_drawn_on_length_zero) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 120));
    EXPECT_EQ (painted (a), "group\nend_group\n");
}

TEST (PaintArc, squared_length_below_three_is_a_line_only) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (100, 121.5F), arc::substrate);
    EXPECT_EQ (painted (a),
               "group\ncolor 0\nline 1\npush 100 110 90\nfill_rect 0 -1 1.5 2\npop\nend_group\n");
    a.set_type (0x300); // would have a mark
    EXPECT_EQ (painted (a),
               "group\ncolor 0\nline 1\npush 100 110 90\nfill_rect 0 -1 1.5 2\npop\nend_group\n");
}

TEST (PaintArc, texts_go_with_their_switches) {
    DrawnNetwork drawn;
    Arque& a = drawn.arc (drawn.node (100, 100), drawn.node (300, 100));
    a.take_label (even_line ("L"));
    a.take_residu (even_line ("R"));
    a.take_stoech_src (even_line ("1"));
    a.take_stoech_dest (even_line ("2"));
    a.label_line ()->set_offset (3, 0);
    drawn.network.layout ();
    PaintStyle style;
    const auto texts = [&] {
        RecordingDevice device;
        a.paint (device, style, 0, 0);
        std::string all;
        for (const std::string& call : device.named ("text 97 '"))
            all += call.substr (9, call.find (' ', 13) - 9) + ";";
        return all;
    };
    EXPECT_EQ (texts (), "L' 147;R' 266.6;");
    style.stoichiometry = true;
    EXPECT_EQ (texts (), "L' 147;R' 266.6;1' 146;2' 268.6;");
    style.kinetics = false;
    EXPECT_EQ (texts (), "1' 146;2' 268.6;");
    style.stoichiometry = false;
    EXPECT_EQ (texts (), "");
}

} // namespace
