// Label markup: reading, writing and what each edge of it does.
#include "document/document_state.h"
#include "document/line.h"
#include "document/markup.h"
#include "document/network.h"
#include "document/picture.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

std::unique_ptr<Line> line_of (std::string_view text) { return line_from_item (read_text (text)); }

std::string written (const Char& c) {
    PrintState to;
    c.fprint (to, 0);
    return to.out;
}

const StdChar& letter (const Line& line, std::size_t i) { return line.chars ()[i]; }

TEST (Markup, subscript_belongs_to_the_letter_before_and_leaves_the_font) {
    const auto line = line_of ("{a_{b}c}");
    ASSERT_EQ (line->count (), 3);
    EXPECT_EQ (letter (*line, 0).code, 'a');
    ASSERT_TRUE (letter (*line, 0).sub ());
    EXPECT_EQ (letter (*line, 0).sub ()->chars_only (), "b");
    EXPECT_EQ (letter (*letter (*line, 0).sub (), 0).font, reduced_font (67));
    EXPECT_EQ (letter (*line, 0).sub ()->parent (), line.get ());
    EXPECT_EQ (letter (*line, 1).code, 'c');
    EXPECT_EQ (letter (*line, 1).font, 67U);
}

TEST (Markup, script_mark_first_in_a_line_is_a_letter) {
    EXPECT_EQ (line_of ("{_a}")->chars_only (), "_a");
    EXPECT_EQ (line_of ("{^a}")->chars_only (), "^a");
    EXPECT_FALSE (letter (*line_of ("{_a}"), 0).sub ());
}

TEST (Markup, script_without_braces_takes_one_item) {
    const auto line = line_of ("{a_bc^d}");
    ASSERT_EQ (line->count (), 3);
    EXPECT_EQ (letter (*line, 0).sub ()->chars_only (), "b");
    EXPECT_EQ (letter (*line, 1).sup ()->chars_only (), "d");
}

TEST (Markup, a_second_script_takes_the_place_of_the_first) {
    const auto line = line_of ("{a_{b}_{c}}");
    ASSERT_EQ (line->count (), 2);
    EXPECT_EQ (letter (*line, 0).sub ()->chars_only (), "c");
}

TEST (Markup, script_keeps_its_colour_change_and_drops_its_font_change) {
    const auto line = line_of ("{a_{<74F><4C>b}c}");
    EXPECT_EQ (letter (*line, 1).font, 67U);
    EXPECT_EQ (letter (*line, 1).color, 4U);
}

TEST (Markup, scripted_letter_of_a_record_is_read_as_it_stands) {
    const auto read = line_of ("{[E\\_{b}-]}");
    EXPECT_EQ (letter (*read, 0).code, '\\');
    ASSERT_TRUE (letter (*read, 0).sub ());
    EXPECT_EQ (letter (*read, 0).sub ()->chars_only (), "_");
    ASSERT_TRUE (letter (*read, 0).sup ());
    EXPECT_EQ (letter (*read, 0).sup ()->chars_only (), "b");
}

TEST (Markup, scripted_marks_are_written_with_marks_and_read_back) {
    Line line ("_", 67, 0);
    line.set_script (0, false, std::make_unique<Line> ("b", reduced_font (67), 0));
    EXPECT_EQ (written (line), "{\\__{b}}");
    EXPECT_TRUE (line_of (written (line))->equals (line));
}

TEST (Markup, scripts_of_letters_beyond_a_byte_read_back) {
    for (unsigned code = 256; code < 320; ++code) {
        Line line ("", 67, 0);
        line.insert_before (0, StdChar (code, 67, 0));
        line.set_script (0, true, std::make_unique<Line> ("2", reduced_font (67), 0));
        const auto read = line_of (written (line));
        EXPECT_TRUE (read->equals (line)) << code;
        EXPECT_EQ (written (*read), written (line));
    }
}

TEST (Markup, scripted_marks_that_would_break_the_line_are_written_without_the_record) {
    for (const char* markup : {"{\\__{a}^{b}c}", "{\\}^{a}c}", "{\\{_{a}c}", "{\\[^{a_{b}}c}",
                               "{\\<_{<74F>a}^{<4C>b}c}"}) {
        const auto line = line_of (markup);
        const std::string text = written (*line);
        const auto read = line_of (text);
        EXPECT_TRUE (read->equals (*line)) << text;
        EXPECT_EQ (written (*read), text);
        EXPECT_EQ (read->chars ().back ().font, 67U);
    }
}

TEST (Markup, no_font_and_no_colour_never_appear_in_a_file) {
    Line line ("", 67, 0);
    line.insert_before (-1, StdChar ('a', no_font, no_color));
    EXPECT_EQ (written (line), "{a}");
    const auto read = line_of ("{<74F><9C>b}");
    PrintState to;
    read->fprint (to, 0);
    line.fprint (to, 0);
    EXPECT_EQ (to.out, "{<74F><9C>b}{a}");
}

TEST (Markup, bare_backslash_escapes_on_reading_and_is_written_doubled) {
    EXPECT_EQ (line_of ("{a\\b}")->chars_only (), "ab");
    const Line line ("a\\b", 67, 0);
    EXPECT_EQ (written (line), "{a\\\\b}");
    EXPECT_EQ (line_of (written (line))->chars_only (), "a\\b");
    // A letter with scripts is told by its byte as it stands.
    Line scripted ("\\", 67, 0);
    scripted.set_script (0, false, std::make_unique<Line> ("b", 67, 0));
    EXPECT_EQ (written (scripted), "{[E\\{b}-]}");
    EXPECT_TRUE (line_of (written (scripted))->equals (scripted));
}

TEST (Markup, backslash_never_breaks_what_holds_the_text_together) {
    for (const char* markup : {"{a\xC2\\}", "{\xC2\\<74F>b}", "{\xC2\\\xC2\\}", "{\xC2\\\\{}",
                               "{\xC2\\[Ea{b}-]}", "{\xC2\\\xC3\x80}"}) {
        const auto line = line_of (markup);
        EXPECT_EQ (letter (*line, markup[1] == 'a' ? 1 : 0).code, '\\') << markup;
        EXPECT_TRUE (line_of (written (*line))->equals (*line)) << markup;
    }
    EXPECT_EQ (written (Line ("a\\", 67, 0)), "{a\\\\}");
}

TEST (Markup, every_code_reads_back_in_every_place_of_a_label) {
    for (unsigned code = 1; code < 320; ++code) {
        if (code == end_mark) continue; // is never written
        Line line ("", 67, 0);
        line.insert_before (-1, StdChar (code, 67, 0));
        line.insert_before (-1, StdChar ('a', 67, 0));
        line.insert_before (-1, StdChar (code, 74, 4));
        line.set_script (1, false, std::make_unique<Line> ("", reduced_font (67), 0));
        line.sub (1)->insert_before (-1, StdChar (code, reduced_font (67), 0));
        line.set_script (2, true, std::make_unique<Line> ("x", reduced_font (74), 4));
        line.insert_before (-1, StdChar (code, 74, 4));
        const auto read = line_of (written (line));
        EXPECT_TRUE (read->equals (line)) << code << ": " << written (line);
        EXPECT_EQ (written (*read), written (line)) << code;
    }
}

TEST (Markup, style_mark_with_another_letter_sets_nothing) {
    const testing::CaughtMessages messages;
    const auto line = line_of ("{<12X>a}");
    EXPECT_EQ (letter (*line, 0).font, 67U);
    EXPECT_EQ (letter (*line, 0).color, 0U);
    EXPECT_TRUE (messages.all.empty ());
}

TEST (Markup, style_mark_that_is_not_closed_swallows_a_letter_and_reports) {
    const testing::CaughtMessages messages;
    const auto line = line_of ("{<12Fab}");
    EXPECT_EQ (messages.all, std::vector<std::string>{"syntax error: '>' expected."});
    EXPECT_EQ (line->chars_only (), "b");
    EXPECT_EQ (letter (*line, 0).font, 12U);
}

TEST (Markup, bytes_from_128_up_round_trip_in_two_bytes) {
    std::string letters;
    for (int code = 128; code < 256; ++code) letters += static_cast<char> (code);
    const Line line (letters, 67, 0);
    const std::string text = written (line);
    EXPECT_EQ (text.size (), 2 + 2 * letters.size ());
    EXPECT_EQ (text.substr (1, 4), "\xC2\x80\xC2\x81");
    EXPECT_EQ (line_of (text)->chars_only (), letters);
}

TEST (Markup, empty_braces_are_a_line_of_its_end_mark) {
    EXPECT_EQ (line_of ("{}")->count (), 1);
    EXPECT_EQ (line_of ("{\t\n}")->count (), 1);
}

TEST (Markup, bracket_with_another_letter_is_text) {
    EXPECT_EQ (line_of ("{[x]}")->chars_only (), "[x]");
}

TEST (Markup, number_sign_inside_a_line_is_a_letter_and_outside_a_comment) {
    EXPECT_EQ (line_of ("{a#b}")->chars_only (), "a#b");
    EXPECT_EQ (line_of ("# told\n\t{a}")->chars_only (), "a");
}

TEST (Markup, white_space_before_the_closing_brace_is_skipped) {
    EXPECT_EQ (line_of ("{a\n\t}")->chars_only (), "a");
    EXPECT_EQ (line_of ("{a\n_b}")->chars_only (), "a_b"); // behind it a mark is a letter
}

TEST (Markup, the_six_marks_are_escaped_letters) {
    const Line line ("<[^_{}", 67, 0);
    EXPECT_EQ (written (line), "{\\<\\[\\^\\_\\{\\}}");
    EXPECT_EQ (line_of (written (line))->chars_only (), "<[^_{}");
}

TEST (Markup, style_survives_the_end_of_a_line) {
    MarkupReader reader ("{<74F><#ff8000C>a}{b}");
    const auto first = read_item (reader);
    const auto second = read_item (reader);
    const auto& b = letter (static_cast<const Line&> (*second), 0);
    EXPECT_EQ (b.font, 74U);
    EXPECT_EQ (b.color, 0xff800000U);
    PrintState to;
    first->fprint (to, 0);
    second->fprint (to, 0);
    EXPECT_EQ (to.out, "{<74F><#ff8000C>a}{b}");
}

TEST (Markup, a_text_that_breaks_off_ends_every_item) {
    for (const char* text : {"{a", "{a_", "{a_{b", "{<", "{<1", "{<12F", "[E", "[Ea", "[Ea{", "[P",
                             "[P1 2", "\\", "{\\", "\xC3", "{\xC2", "#", "# Lattrix:", "[", "{["}) {
        const testing::CaughtMessages messages;
        const auto item = read_text (text);
        if (item) written (*item);
    }
    EXPECT_EQ (read_text ("\\"), nullptr);
    EXPECT_EQ (line_of ("{\\")->count (), 1);
}

TEST (Markup, letters_behind_a_nul_are_not_read) {
    EXPECT_EQ (line_of (std::string_view ("{a\0b}", 5))->chars_only (), "a");
}

TEST (Markup, deep_nesting_ends_with_a_message_and_no_harm) {
    for (const char* step : {"{", "[Ea", "a_{", "[N1 0 2[S1 0 0 0 0 0 9"}) {
        const testing::CaughtMessages messages;
        std::string text = "{";
        for (int i = 0; i < 100000; ++i) text += step;
        const auto item = read_text (text);
        ASSERT_TRUE (item);
        ASSERT_FALSE (messages.all.empty ()) << step;
        EXPECT_EQ (messages.all[0], "Nesting deeper than 200 levels: the rest is not read.");
        item->get_width ();
        item->get_height ();
    }
}

TEST (Markup, number_field_forms) {
    const auto number = [] (std::string_view text, std::size_t& at) {
        MarkupReader reader (text);
        const float value = read_number (reader);
        at = reader.at;
        return value;
    };
    std::size_t at = 0;
    EXPECT_EQ (number ("-12.5 7", at), -12.5F);
    EXPECT_EQ (at, 5U);
    EXPECT_EQ (number ("#ff8000C", at), 4286578688.0F);
    EXPECT_EQ (at, 7U);
    EXPECT_EQ (number ("#FF80001", at), 4286578688.0F);
    EXPECT_EQ (at, 7U);
    EXPECT_EQ (number ("#1g", at), 256.0F);
    EXPECT_EQ (number ("1e-5 ", at), 1e-5F);
    EXPECT_EQ (at, 2U); // stays on the "-5"
    EXPECT_EQ (number ("1e3 ", at), 1000.0F);
    EXPECT_EQ (at, 3U);
    EXPECT_EQ (number ("x", at), 0.0F);
    EXPECT_EQ (at, 0U);
    EXPECT_EQ (number ("0x10", at), 0.0F);
    EXPECT_EQ (number ("inf", at), 0.0F);
    EXPECT_EQ (number ("", at), 0.0F);
}

TEST (Markup, the_top_colour_survives_the_float) {
    MarkupReader reader ("#ffffff #800000");
    EXPECT_EQ (read_word (reader), 0xFFFFFF00U);
    reader.skip_blanks ();
    EXPECT_EQ (read_word (reader), 0x80000000U);
    EXPECT_EQ (color_text (0xFFFFFF00U), "#ffffff");
    EXPECT_EQ (color_text (0x100U), "#000001");
    EXPECT_EQ (color_text (255U), "255");
}

TEST (Markup, xml_form_has_scripts_as_markup_and_no_braces) {
    const auto line = line_of ("{a_{b^{c}} \\^x\\<}");
    PrintState to;
    to.font = 0;
    line->xml_print (to);
    EXPECT_EQ (to.out, "<67F>a_{<66F>b^{<65F>c}}<67F>\\ \\^x<");
    std::string plain;
    line->print_plain (plain);
    EXPECT_EQ (plain, "a_{b^{c}}\\ \\^x<");
    EXPECT_EQ (line->name (), plain);
}

TEST (Markup, old_version_is_warned_of_and_current_one_is_not) {
    const testing::CaughtMessages messages;
    read_text ("# Lattrix: 1.2\n{a}");
    EXPECT_TRUE (messages.all.empty ());
    read_text ("# Lattrix: 1.1\n{a}");
    EXPECT_EQ (messages.all, std::vector<std::string>{
                                 "Old file version (1.1) you are advised to save this network."});
    read_text ("# Lattrix\n{a}");
    EXPECT_EQ (messages.all.size (), 1U);
}

TEST (Picture, path_and_size_of_a_missing_file_are_kept) {
    const auto line = line_of ("{[P1 30 21 a b.png]}");
    const auto& picture = static_cast<const Picture&> (*line->chars ()[0].item ());
    EXPECT_FALSE (picture.image ());
    EXPECT_EQ (picture.get_width (), 30.0F);
    EXPECT_EQ (picture.get_height (), 21);
    EXPECT_EQ (picture.get_ascent (), 10);
    EXPECT_EQ (picture.get_descent (), 10);
    EXPECT_EQ (written (*line), "{[P1 30 21 a b.png]}");
}

TEST (Picture, align_shares_the_height_out) {
    Picture picture ("none", 10, 21);
    EXPECT_EQ (picture.align (), 0);
    EXPECT_EQ (picture.get_ascent (), 21);
    EXPECT_EQ (picture.get_descent (), 0);
    picture.set_align (2);
    EXPECT_EQ (picture.get_ascent (), 0);
    EXPECT_EQ (picture.get_descent (), 21);
}

TEST (Picture, sizes_come_from_the_first_bytes_of_the_three_formats) {
    const std::string png ("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x20\0\0\0\x10", 24);
    const std::string gif ("GIF89a\x20\0\x10\x01", 10);
    const std::string jpeg ("\xFF\xD8\xFF\xE0\0\4\0\0\xFF\xC0\0\x11\x08\0\x10\0\x20", 17);
    for (const auto& [bytes, format, height] :
         {std::tuple (png, PictureFormat::png, 16), std::tuple (gif, PictureFormat::gif, 272),
          std::tuple (jpeg, PictureFormat::jpeg, 16)}) {
        const auto image = probe_picture (bytes);
        ASSERT_TRUE (image);
        EXPECT_EQ (image->format, format);
        EXPECT_EQ (image->width, 32);
        EXPECT_EQ (image->height, height);
        for (std::size_t cut = 0; cut < bytes.size () - 3; ++cut) {
            probe_picture (bytes.substr (0, cut)); // must not read behind the end
        }
    }
    EXPECT_FALSE (probe_picture ("BM no picture of ours"));
}

TEST (Picture, size_of_a_jpeg_stands_in_a_frame_and_in_nothing_that_looks_like_one) {
    // Tables and reserved marks lie among the marks of frames.
    for (const char mark : {'\xC4', '\xC8', '\xCC'}) {
        std::string bytes ("\xFF\xD8\xFF?\0\x0B\x08\0\1\0\2\0\0\0\0", 15);
        bytes[3] = mark;
        bytes += std::string ("\xFF\xFF\xC2\0\x11\x08\0\x10\0\x20\0", 12); // a fill byte before it
        const auto image = probe_picture (bytes);
        ASSERT_TRUE (image);
        EXPECT_EQ (image->width, 32);
        EXPECT_EQ (image->height, 16);
    }
}

TEST (Picture, own_size_wins_over_the_file) {
    const testing::TemporaryFolder folder;
    const std::string path = folder.write ("a.gif", std::string_view ("GIF89a\x20\0\x10\0", 10));
    const Picture picture (path, 5, 5);
    ASSERT_TRUE (picture.image ());
    EXPECT_EQ (picture.get_width (), 32.0F);
    EXPECT_EQ (picture.get_height (), 16);
    const auto copy = picture.clone (nullptr);
    EXPECT_EQ (static_cast<const Picture&> (*copy).image (), picture.image ());
}

TEST (Markup, random_lines_read_back_as_they_were_written) {
    for (std::uint32_t seed = 0; seed < 400; ++seed) {
        testing::RandomDocument random (seed);
        const auto line = random.line (20);
        const std::string text = written (*line);
        const auto read = read_text (text);
        ASSERT_TRUE (read) << text;
        ASSERT_EQ (written (*read), text) << seed;
        const bool has_picture = text.find ("[P") != std::string::npos;
        ASSERT_EQ (line->equals (*read), !has_picture) << text;
    }
}

TEST (FontKey, packs_family_style_and_size) {
    EXPECT_EQ (font_key (2, false, false, 3), 67U);
    EXPECT_EQ (font_key (2, false, false, 2), 66U);
    EXPECT_EQ (font_key (2, true, false, 2), 74U);
    for (unsigned key = 0; key < 0x800; ++key) {
        EXPECT_EQ (font_key (font_family (key), is_bold (key), is_italic (key), size_index (key)),
                   key);
    }
    EXPECT_EQ (size_index (0x703), 59U);
    EXPECT_EQ (font_size_text (3), "14");
}

TEST (FontKey, scripts_are_one_two_or_three_sizes_smaller) {
    const auto step = [] (unsigned index) { return index - reduced_index (index); };
    EXPECT_EQ (reduced_index (0), 0U);
    EXPECT_EQ (step (4), 1U);  // 16
    EXPECT_EQ (step (5), 2U);  // 18
    EXPECT_EQ (step (11), 2U); // 30
    EXPECT_EQ (step (12), 3U); // 32
    EXPECT_EQ (reduced_font (74), 73U);
    EXPECT_EQ (size_index (reduced_font (font_key (7, true, true, 31))), 28U);
}

} // namespace
} // namespace ostrand::document
