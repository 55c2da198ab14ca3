// The table of colours: what it accepts, what it finds, what it makes dark.
#include "image_maker/palette.h"

#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::image_maker {
namespace {

Palette palette_of (std::string_view text) {
    std::string error;
    const auto palette = Palette::read (text, error);
    EXPECT_TRUE (palette) << error;
    return palette.value_or (Palette ());
}

const std::string_view two_colors = "# a comment\n"
                                    "\n"
                                    "ink    #111111 #eeeeee  outlines\n"
                                    "paper  #ffffff #000000\n";

TEST (palette, colors_become_their_dark_ones) {
    const Palette palette = palette_of (two_colors);
    EXPECT_EQ (palette.darkened ("<a fill=\"#111111\" stroke=\"#ffffff\"/>"
                                 "<stop offset=\"0\" stop-color=\"#111111\"/>"),
               "<a fill=\"#eeeeee\" stroke=\"#000000\"/>"
               "<stop offset=\"0\" stop-color=\"#eeeeee\"/>");
}

TEST (palette, a_color_that_became_another_is_not_changed_again) {
    const Palette palette = palette_of ("a #111111 #222222\nb #222222 #111111\n");
    EXPECT_EQ (palette.darkened ("<a fill=\"#111111\" stroke=\"#222222\"/>"),
               "<a fill=\"#222222\" stroke=\"#111111\"/>");
}

TEST (palette, texts_and_references_stay) {
    const Palette palette = palette_of ("a #facade #111111\n");
    const std::string svg = "<a fill=\"url(#facade)\" stroke=\"none\"/><text>fill #facade</text>";
    EXPECT_EQ (palette.darkened (svg), svg);
    EXPECT_EQ (palette.unknown_color (svg), "");
}

TEST (palette, another_color_is_found_however_it_is_written) {
    const Palette palette = palette_of (two_colors);
    EXPECT_EQ (palette.unknown_color ("<a fill=\"#111111\"/>"), "");
    EXPECT_EQ (palette.unknown_color ("<a fill=\"#111111\"/><b stroke=\"#111112\"/>"), "#111112");
    EXPECT_EQ (palette.unknown_color ("<a fill=\"white\"/>"), "white");
    EXPECT_EQ (palette.unknown_color ("<a fill=\"#fff\"/>"), "#fff");
    EXPECT_EQ (palette.unknown_color ("<stop stop-color=\"#111111 \"/>"), "#111111 ");
}

TEST (palette, an_attribute_without_its_end_ends_the_search) {
    const Palette palette = palette_of (two_colors);
    EXPECT_EQ (palette.unknown_color ("<a fill=\"#111111"), "");
    EXPECT_EQ (palette.unknown_color ("<a fill=\""), "");
    EXPECT_EQ (palette.darkened ("<a fill=\""), "<a fill=\"");
}

TEST (palette, a_line_of_another_form_is_told) {
    for (const std::string line : {"ink #111111", "ink #111 #eee", "ink #11111g #eeeeee",
                                   "ink #AAAAAA #eeeeee", "ink 111111 eeeeee", " "}) {
        std::string error;
        EXPECT_FALSE (Palette::read (line + "\n", error)) << line;
        EXPECT_NE (error.find (line), std::string::npos) << error;
    }
}

TEST (palette, a_light_color_has_one_dark_one) {
    std::string error;
    EXPECT_FALSE (Palette::read ("a #111111 #222222\nb #111111 #333333\n", error));
    EXPECT_NE (error.find ("b #111111 #333333"), std::string::npos);
}

} // namespace
} // namespace ostrand::image_maker
