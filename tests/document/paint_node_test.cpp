// What nodes paint, as the list of primitives.
#include "document/painting.h"

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_line;
using ostrand::testing::painted;

namespace {

// Nodes of 40 by 20 at (100, 100): corner (80, 90), label at (85, 90 + 13).

constexpr std::string_view label = "color 0\ntext 97 'AAAAA' 85 103\n";

/// A node's primitives; `change` is made on it first.
template <typename Change>
std::string painted_node (unsigned type, const Change& change) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, type);
    n.set_color (0xAABBCC00);
    PaintStyle style;
    change (n, style);
    return painted (n, style);
}

std::string painted_node (unsigned type) {
    return painted_node (type, [] (Node&, PaintStyle&) {});
}

TEST (PaintNode, without_border_is_text_only) { EXPECT_EQ (painted_node (0), label); }

TEST (PaintNode, without_border_has_a_frame_when_selected) {
    EXPECT_EQ (painted_node (0, [] (Node& n, PaintStyle&) { n.selected = true; }),
               "color 1\nfill_rect 78.5 88.5 43 23\ncolor 7\nfill_rect 81.5 91.5 37 17\n" +
                   std::string (label));
}

TEST (PaintNode, gene) {
    EXPECT_EQ (painted_node (5), "color 0\nfill_rect 78 88 44 24\n"
                                 "color aabbcc00\nfill_rect 80 90 40 20\n" +
                                     std::string (label));
}

TEST (PaintNode, gene_of_thickness_zero_has_no_outline) {
    EXPECT_EQ (painted_node (5, [] (Node& n, PaintStyle&) { n.set_thickness (0); }),
               "color aabbcc00\nfill_rect 80 90 40 20\n" + std::string (label));
}

// Shared nodes are 4 higher: corner (80, 88), 24 high, label at 88 + 11.
constexpr std::string_view shared_label = "color 0\ntext 97 'AAAAA' 85 99\n";

TEST (PaintNode, shared_gene_has_a_bar) {
    EXPECT_EQ (painted_node (7), "color 0\nfill_rect 78 86 44 28\n"
                                 "color aabbcc00\nfill_rect 80 88 40 24\n"
                                 "color 0\nfill_rect 79 107.2 42 6.8\n" +
                                     std::string (shared_label));
    EXPECT_EQ (painted_node (6), "color 0\nfill_rect 78 86 44 28\n"
                                 "color aabbcc00\nfill_rect 80 88 40 24\n"
                                 "color 0\nshared_bar 80 88 40 24 2\n" +
                                     std::string (shared_label));
}

TEST (PaintNode, protein) {
    EXPECT_EQ (painted_node (9), "color 0\nfill_round_rect 78 88 44 24 9\n"
                                 "color aabbcc00\nfill_round_rect 80 90 40 20 7\n" +
                                     std::string (label));
}

TEST (PaintNode, shared_protein_keeps_the_outlines_colour_in_its_lower_fifth) {
    EXPECT_EQ (painted_node (11), "color 0\nfill_round_rect 78 86 44 28 9\n"
                                  "color aabbcc00\nclip 80 88 40 19.2\n"
                                  "fill_round_rect 80 88 40 24 7\nend_clip\n" +
                                      std::string (shared_label));
    EXPECT_EQ (painted_node (10), "color 0\nfill_round_rect 78 86 44 28 9\n"
                                  "color aabbcc00\nfill_round_rect 80 88 40 24 7\n"
                                  "clip 80 107.2 40 4.8\ncolor 0\nshared_bar 80 88 40 24 2\n"
                                  "end_clip\n" +
                                      std::string (shared_label));
}

TEST (PaintNode, molecule) {
    EXPECT_EQ (painted_node (13), "color 0\nfill_ellipse 78 88 44 24 64\n"
                                  "color aabbcc00\nfill_ellipse 80 90 40 20 64\n" +
                                      std::string (label));
}

TEST (PaintNode, shared_molecule_has_a_band_in_its_lower_quarter) {
    EXPECT_EQ (painted_node (15), "color 0\nfill_ellipse 78 86 44 28 64\n"
                                  "color aabbcc00\nfill_ellipse 80 88 40 24 64\n"
                                  "color 0\nclip 78 106 44 10\nfill_ellipse 80 88 40 24 64\n"
                                  "end_clip\n" +
                                      std::string (shared_label));
    EXPECT_EQ (painted_node (14), "color 0\nfill_ellipse 78 86 44 28 64\n"
                                  "color aabbcc00\nfill_ellipse 80 88 40 24 64\n"
                                  "color 0\nshared_bar 84 88 32 24 2\n" +
                                      std::string (shared_label));
}

TEST (PaintNode, receptor) {
    EXPECT_EQ (painted_node (17), "color 0\nfill_chevron 78 88 44 24 10\n"
                                  "color aabbcc00\nfill_chevron 80 90 40 20 10\n"
                                  "color 0\ntext 97 'AAAAA' 85 110\n");
}

TEST (PaintNode, wide_molecule_moves_its_label) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, 13, "AAAAAAAAAA"); // 60 wide: 86 by 24
    const std::string text = painted (n);
    EXPECT_TRUE (text.ends_with ("text 97 'AAAAAAAAAA' 70 103\n")) << text;
    EXPECT_EQ (n.get_width (), 86);
    EXPECT_EQ (n.get_height (), 24);
}

TEST (PaintNode, label_of_fifty_is_not_wide_yet) {
    DrawnNetwork drawn;
    const unsigned font = font_key (2, false, false, 1); // a "c" of Arial is 5 wide in it
    for (const auto& [letters, x] :
         {std::pair{"cccccccccc", 5.0F}, std::pair{"ccccccccccc", 13.0F}}) {
        Node& n = drawn.node (100, 100, node::molecule, "");
        n.take_label (std::make_unique<Line> (letters, font, 0U));
        drawn.network.layout ();
        EXPECT_EQ (n.label ()->x (), x) << n.label ()->get_width ();
    }
}

TEST (PaintNode, residu_stands_on_the_upper_edge) {
    const std::string text =
        painted_node (9, [] (Node& n, PaintStyle&) { n.take_residu (even_line ("P")); });
    // 24 high now: corner (80, 88). The text is 6 by 12 at (90, 88), its ground 14 by 14.
    EXPECT_EQ (text, "color 0\nfill_round_rect 78 86 44 28 9\n"
                     "color aabbcc00\nfill_round_rect 80 88 40 24 7\n"
                     "color 0\ntext 97 'AAAAA' 85 103\n"
                     "color 0\nfill_ellipse 86 78 14 14 16\n"
                     "color 7\nfill_ellipse 87 79 12 12 16\n"
                     "color 0\ntext 97 'P' 90 88\n");
}

TEST (PaintNode, residu_on_a_wide_molecule_adds_no_offset_in_x) {
    DrawnNetwork drawn;
    Node& n = drawn.node (100, 100, 13, "AAAAAAAAAA");
    n.take_residu (even_line ("P"));
    drawn.network.layout ();
    EXPECT_EQ (n.label ()->x (), 5);
    EXPECT_EQ (n.label ()->y (), 15);
    EXPECT_EQ (n.get_height (), 24);
    EXPECT_EQ (n.residu ()->x (), 67);
    EXPECT_EQ (n.residu ()->y (), 88);
}

TEST (PaintNode, marks_change_colour_and_thickness) {
    const auto outline = [] (auto change) {
        const std::string text = painted_node (5, change);
        return text.substr (0, text.find ("\n", text.find ('\n') + 1));
    };
    EXPECT_EQ (outline ([] (Node& n, PaintStyle&) { n.set_calyx_display (true); }),
               "color 4\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle&) { n.set_multi_conc (true); }),
               "color 5\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle&) { n.selected = true; }),
               "color 1\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle& style) { style.hover = &n; }),
               "color 0\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle&) { n.highlight = 239; }),
               "color 5\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle& style) {
                   n.highlight = 239;
                   n.set_calyx_display (true);
                   n.set_multi_conc (true);
                   n.selected = true;
                   style.hover = &n;
               }),
               "color 1\nfill_rect 73 83 54 34");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle& style) {
                   style.dark = true;
                   n.set_calyx_display (true);
               }),
               "color 6\nfill_rect 77 87 46 26");
    EXPECT_EQ (outline ([] (Node& n, PaintStyle& style) {
                   style.dark = true;
                   n.selected = true;
               }),
               "color 3\nfill_rect 77 87 46 26");
}

TEST (PaintNode, highlight_has_a_triple_shadow) {
    const auto highlight = [] (Node& n, PaintStyle&) { n.highlight = find_highlight; };
    EXPECT_TRUE (painted_node (9, highlight)
                     .starts_with ("color 48\nfill_round_rect 83 93 46 26 10\n"
                                   "color a0a0a000\nfill_round_rect 82 92 46 26 10\n"
                                   "color 30\nfill_round_rect 81 91 46 26 10\n"
                                   "color 5\nfill_round_rect 77 87 46 26 10\n"
                                   "color 239\nfill_round_rect 80 90 40 20 7\n"));
    EXPECT_TRUE (painted_node (13,
                               [] (Node& n, PaintStyle& style) {
                                   n.highlight = find_highlight;
                                   style.dark = true;
                               })
                     .starts_with ("color 48\nfill_ellipse 83 93 46 26 64\n"
                                   "color a0a0a000\nfill_ellipse 82 92 46 26 64\n"
                                   "color 48\nfill_ellipse 81 91 46 26 64\n"
                                   "color 5\nfill_ellipse 77 87 46 26 64\n"));
}

TEST (PaintNode, foggy_node_is_lighter) {
    const std::string text = painted_node (5, [] (Node& n, PaintStyle&) { n.set_own_fog (true); });
    EXPECT_TRUE (text.starts_with ("color c8c8c800\nfill_rect 78 88 44 24\n"
                                   "color ffffff00\nfill_rect 80 90 40 20\n"
                                   "color c8c8c800\ntext 97 'A' 85 103\n"))
        << text;
}

TEST (PaintNode, dark_canvas_turns_colours) {
    EXPECT_EQ (painted_node (9,
                             [] (Node& n, PaintStyle& style) {
                                 n.set_color (7);
                                 style.dark = true;
                             }),
               "color 7\nfill_round_rect 78 88 44 24 9\ncolor 0\nfill_round_rect 80 90 40 20 7\n"
               "color 7\ntext 97 'AAAAA' 85 103\n");
}

TEST (PaintNode, type_without_background_is_painted_filled) {
    EXPECT_EQ (painted_node (8), painted_node (9));
    EXPECT_EQ (painted_node (16), painted_node (17));
}

} // namespace
