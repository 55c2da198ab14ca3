// What lines of letters paint, as the list of primitives.
#include "base/text.h"
#include "document/markup.h"
#include "document/painting.h"
#include "document/picture.h"
#include "support/support.h"

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::dark;
using ostrand::testing::DrawnNetwork;
using ostrand::testing::even_font;
using ostrand::testing::even_line;
using ostrand::testing::painted;
using ostrand::testing::RecordingDevice;

namespace {

std::unique_ptr<Line> line_of (std::string_view markup) {
    MarkupReader reader (markup);
    return read_braced_line (reader);
}

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

} // namespace
