// What is painted, as the list of primitives.
#include "base/text.h"
#include "document/drawn_network.h"
#include "document/markup.h"
#include "document/paint_style.h"
#include "document/picture.h"
#include "support/recording_device.h"
#include "support/support.h"

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_font;
using ostrand::testing::even_line;
using ostrand::testing::RecordingDevice;

namespace {

/// The primitives of one object, laid out and painted at (0, 0), a line each.
std::string painted (Char& object, const PaintStyle& style = {}) {
    GraphBase* const g = object.find_object ();
    if (g != nullptr && g->owner_network () != nullptr) {
        g->owner_network ()->layout ();
    } else {
        object.lay_out ();
    }
    RecordingDevice device;
    object.paint (device, style, 0, 0);
    return device.joined ();
}

PaintStyle dark () {
    PaintStyle style;
    style.dark = true;
    return style;
}

/// Seeing a part of a network.
PaintStyle seeing (float x, float y, float right, float bottom) {
    PaintStyle style;
    style.clip = Extent{x, y, right, bottom};
    return style;
}

std::unique_ptr<Line> line_of (std::string_view markup) {
    MarkupReader reader (markup);
    return read_braced_line (reader);
}

// Lines

TEST (PaintLine, uniform_line_is_one_text) {
    DrawnNetwork drawn;
    const auto line = even_line ("abc", 4);
    line->set_offset (5, 0);
    EXPECT_EQ (painted (*line), "color 4\ntext 97 'abc' 5 0\n");
}

TEST (PaintLine, mixed_line_is_one_text_a_letter) {
    DrawnNetwork drawn;
    const auto line = line_of ("{<97F>a<1C>b}");
    EXPECT_EQ (painted (*line), "color 0\ntext 97 'a' 0 0\ncolor 1\ntext 97 'b' 6 0\n");
}

TEST (PaintLine, empty_line_paints_nothing) {
    DrawnNetwork drawn;
    const auto line = even_line ("");
    PaintStyle style;
    style.framed = line.get ();
    style.frame = 2;
    EXPECT_EQ (painted (*line, style), "");
}

TEST (PaintLine, scripts_stand_above_and_below) {
    DrawnNetwork drawn;
    // Courier 14 is 8.4 wide and 12 above its base, its scripts are Courier 12: 10 above, 4 below.
    const auto line = line_of ("{<99F>a_{b}^{c}}");
    EXPECT_EQ (painted (*line), "color 0\ntext 99 'a' 0 0\ncolor 0\ntext 98 'b' 9.4 2\n"
                                "color 0\ntext 98 'c' 9.4 -5\n");
}

TEST (PaintLine, whole_lines_go_out_as_one_text_where_the_style_allows_it) {
    DrawnNetwork drawn;
    const auto line = even_line ("ab");
    PaintStyle style;
    EXPECT_EQ (painted (*line, style), "color 0\ntext 97 'ab' 0 0\n");
    style.whole_lines = false;
    EXPECT_EQ (painted (*line, style), "color 0\ntext 97 'a' 0 0\ncolor 0\ntext 97 'b' 6 0\n");
}

TEST (PaintLine, letters_that_cannot_be_read_are_left_out) {
    DrawnNetwork drawn;
    const auto line = even_line ("ab"); // 10 pixels
    PaintStyle style;
    style.smallest_text = 10;
    EXPECT_NE (painted (*line, style), "");
    style.smallest_text = 10.5F;
    EXPECT_EQ (painted (*line, style), "");
    const auto mixed = line_of ("{<97F>a<99F>b}");
    EXPECT_EQ (painted (*mixed, style), "color 0\ntext 99 'b' 6 0\n");
}

TEST (PaintLine, selected_letter_has_a_block_behind_it) {
    DrawnNetwork drawn;
    const auto line = even_line ("ab");
    line->sel_start = line->sel_end = 1;
    line->select_range ();
    EXPECT_EQ (painted (*line), "color 0\ntext 97 'a' 0 0\n"
                                "color 72\nfill_rect 6 -9 6 12\ncolor 0\ntext 97 'b' 6 0\n");
    EXPECT_EQ (painted (*line, dark ()),
               "color 7\ntext 97 'a' 0 0\n"
               "color 3\nfill_rect 6 -9 6 12\ncolor 7\ntext 97 'b' 6 0\n");
    PaintStyle file;
    file.marks = false;
    EXPECT_EQ (painted (*line, file), "color 0\ntext 97 'ab' 0 0\n");
}

TEST (PaintLine, selected_letter_with_a_script_has_a_block_as_large_as_both) {
    DrawnNetwork drawn;
    const auto line = line_of ("{<99F>a_{b}c}");
    line->sel_start = line->sel_end = 0;
    line->select_range ();
    const TextSize size = line->size_at (0);
    RecordingDevice device;
    line->paint (device, {}, 0, 0);
    EXPECT_EQ (device.named ("fill_rect").front (),
               format_text ("fill_rect 0 %d ", -size.ascent) + format_g (size.width) +
                   format_text (" %d", size.ascent + size.descent));
}

TEST (PaintLine, cursor_is_a_block_wherever_it_stands) {
    DrawnNetwork drawn;
    const auto line = even_line ("ab");
    PaintStyle style;
    style.edited = line.get ();
    EXPECT_EQ (painted (*line, style), "color 0\ntext 97 'ab' 0 0\n"); // none yet
    line->cursor = 1;
    EXPECT_EQ (painted (*line, style),
               "color 72\nfill_rect 6 -9 6 12\ncolor 0\ntext 97 'ab' 0 0\n");
    line->cursor = 2; // behind the last letter, as wide as an n
    EXPECT_EQ (painted (*line, style),
               "color 72\nfill_rect 12 -9 6 12\ncolor 0\ntext 97 'ab' 0 0\n");
    const auto empty = even_line ("");
    style.edited = empty.get ();
    empty->cursor = 0;
    EXPECT_EQ (painted (*empty, style), "color 72\nfill_rect 0 -9 6 12\n");
    style.dark = true;
    EXPECT_EQ (painted (*empty, style), "color 3\nfill_rect 0 -9 6 12\n");
    style.focus = false; // keys go elsewhere
    EXPECT_EQ (painted (*empty, style), "color 3\nline 1\nstroke_rect 0 -9 6 12\n");
    style.marks = false;
    EXPECT_EQ (painted (*empty, style), "");
}

TEST (PaintLine, cursor_in_a_script_stands_in_the_script) {
    DrawnNetwork drawn;
    const auto line = line_of ("{<99F>a_{}}");
    PaintStyle style;
    style.edited = line->sub (0);
    line->sub (0)->cursor = 0;
    const Point place = line->script_place (0, false);
    EXPECT_NE (painted (*line, style).find ("fill_rect " + format_g (place.x)), std::string::npos);
}

TEST (PaintLine, foggy_letter_is_lighter) {
    DrawnNetwork drawn;
    const auto line = even_line ("a", 1);
    line->set_fog (true);
    EXPECT_EQ (painted (*line), "color ffc8c800\ntext 97 'a' 0 0\n");
    EXPECT_EQ (painted (*line, dark ()), "color 100\ntext 97 'a' 0 0\n");
}

TEST (PaintLine, frame_is_around_the_line) {
    DrawnNetwork drawn;
    const auto line = even_line ("ab");
    PaintStyle style;
    style.framed = line.get ();
    style.frame = 2;
    EXPECT_EQ (painted (*line, style),
               "color 0\ntext 97 'ab' 0 0\ncolor 72\nline 2\nstroke_rect 0 -9 12 12\n");
    style.dark = true;
    EXPECT_EQ (painted (*line, style),
               "color 7\ntext 97 'ab' 0 0\ncolor 3\nline 2\nstroke_rect 0 -9 12 12\n");
    style.marks = false;
    EXPECT_EQ (painted (*line, style), "color 7\ntext 97 'ab' 0 0\n");
}

TEST (PaintLine, picture_that_cannot_be_read_shows_the_placeholder) {
    DrawnNetwork drawn;
    const auto line = line_of ("{[P0 20 10 none.png]}");
    EXPECT_EQ (painted (*line),
               "color 45\nline 1\nstroke_rect 0 -10 20 10\nfill_ellipse 5 -7.5 10 5 16\n");
}

TEST (PaintLine, picture_is_drawn_by_its_align) {
    DrawnNetwork drawn;
    const ostrand::testing::TemporaryFolder folder;
    // The front of a GIF of 8 by 6.
    const std::string path =
        folder.write ("a.gif", std::string_view ("GIF89a\x08\0\x06\0\0\0\0", 13));
    for (const auto& [align, y] :
         {std::pair{"0", "-6"}, std::pair{"1", "-3"}, std::pair{"2", "0"}}) {
        const auto line = line_of ("{[P" + std::string (align) + " 1 1 " + path + "]}");
        static_cast<Picture&> (*line->chars ()[0].item ()).set_align (align[0] - '0');
        EXPECT_EQ (painted (*line), "picture " + path + " 0 " + y + " 8 6\n");
    }
}

TEST (PaintDevice, format_goes_through_the_text_primitive) {
    RecordingDevice device;
    device.draw_format (even_font, 1, 2, "%d%%", 42);
    EXPECT_EQ (device.joined (), "text 97 '42%' 1 2\n");
}

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

// Compartments

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

// Networks

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
