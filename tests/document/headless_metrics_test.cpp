// The tables of widths and colours against the libraries that they describe.
#include "document/base14_widths.h"
#include "document/colors.h"
#include "document/font.h"
#include "document/greek.h"
#include "document/paint_style.h"

#include <FL/Fl.H>
#include <gtest/gtest.h>
#include <hpdf.h>

using namespace ostrand::document;

namespace {

struct Face {
    unsigned family;
    bool bold;
    bool italic;
    const char* name;
};

TEST (HeadlessMetrics, widths_are_those_of_the_pdf_library) {
    HPDF_Doc pdf = HPDF_New (nullptr, nullptr);
    for (const Face& face :
         {Face{2, false, false, "Helvetica"}, Face{2, true, false, "Helvetica-Bold"},
          Face{2, false, true, "Helvetica-Oblique"}, Face{2, true, true, "Helvetica-BoldOblique"},
          Face{3, false, false, "Courier"}, Face{3, true, false, "Courier-Bold"},
          Face{3, false, true, "Courier-Oblique"}, Face{3, true, true, "Courier-BoldOblique"},
          Face{1, false, false, "Times-Roman"}, Face{1, true, false, "Times-Bold"},
          Face{1, false, true, "Times-Italic"}, Face{1, true, true, "Times-BoldItalic"},
          Face{7, false, false, "Symbol"}}) {
        HPDF_Font font =
            HPDF_GetFont (pdf, face.name, face.family == 7 ? nullptr : "WinAnsiEncoding");
        const FontMetrics metrics =
            headless_metrics ().measure (font_key (face.family, face.bold, face.italic, 3), 14);
        for (unsigned code = 0; code < 256; ++code) {
            const auto byte = static_cast<HPDF_BYTE> (code);
            const bool has_entry = code >= 32 && code <= 252 && code != 128;
            const float expected =
                has_entry
                    ? static_cast<float> (HPDF_Font_TextWidth (font, &byte, 1).width * 14) / 1000.0F
                    : 0.0F;
            EXPECT_EQ (metrics.width_of (code), expected) << face.name << " " << code;
        }
    }
    HPDF_Free (pdf);
}

TEST (HeadlessMetrics, families_of_a_screen_are_measured_as_times) {
    for (const unsigned family : {0U, 4U, 5U, 6U}) {
        for (const unsigned style : {0U, 1U, 2U, 3U}) {
            const bool bold = (style & 1U) != 0;
            const bool italic = (style & 2U) != 0;
            const FontMetrics times =
                headless_metrics ().measure (font_key (1, bold, italic, 5), 18);
            const FontMetrics other =
                headless_metrics ().measure (font_key (family, bold, italic, 5), 18);
            EXPECT_EQ (other.widths, times.widths);
            EXPECT_EQ (other.ascent, times.ascent);
        }
    }
}

TEST (HeadlessMetrics, heights_are_rounded_outwards) {
    const FontMetrics arial = headless_metrics ().measure (start_font, 14);
    EXPECT_EQ (arial.ascent, 13); // 12.67
    EXPECT_EQ (arial.descent, 3); // 2.97
    EXPECT_EQ (arial.height, 16);
    EXPECT_EQ (arial.key, start_font);
    EXPECT_EQ (arial.pixel_size, 14);
    const FontMetrics courier = headless_metrics ().measure (font_key (3, false, false, 1), 10);
    EXPECT_EQ (courier.ascent, 9);
    EXPECT_EQ (courier.descent, 3);
    EXPECT_EQ (courier.width_of ('i'), 6.0F);
    const FontMetrics symbol = headless_metrics ().measure (font_key (7, false, false, 1), 10);
    EXPECT_EQ (symbol.ascent, 11);
    EXPECT_EQ (symbol.descent, 3);
    const FontMetrics times = headless_metrics ().measure (font_key (1, false, false, 1), 10);
    EXPECT_EQ (times.ascent, 9);
    EXPECT_EQ (times.descent, 3);
}

TEST (Colors, map_is_the_toolkits) {
    for (unsigned i = 0; i < 256; ++i)
        EXPECT_EQ (color_rgb (i), Fl::get_color (static_cast<Fl_Color> (i))) << i;
    EXPECT_EQ (color_rgb (0x12345600), 0x12345600U);
    EXPECT_EQ (color_rgb (0x123456ff), 0x12345600U);
}

TEST (Colors, dark_map_turns_these_and_leaves_the_others) {
    const std::pair<unsigned, unsigned> pairs[] = {{0, 7},
                                                   {3, 82},
                                                   {6, 0x1040C000},
                                                   {58, 207},
                                                   {159, 100},
                                                   {204, 192},
                                                   {7, 0},
                                                   {4, 6},
                                                   {72, 5},
                                                   {207, 58},
                                                   {173, 113},
                                                   {247, 178},
                                                   {0x7FFFBF00, 100},
                                                   {0xBF91BF00, 192},
                                                   {0xFFB67F00, 113},
                                                   {0xFFFF0000, 82}};
    for (const auto& [from, to] : pairs) EXPECT_EQ (dark_color (from), to) << from;
    for (const unsigned same : {1U, 2U, 5U, 8U, 56U, 100U, 255U, 0xFF000000U, 0x12345600U})
        EXPECT_EQ (dark_color (same), same);
    PaintStyle style;
    EXPECT_EQ (style.color (0), 0U);
    style.dark = true;
    EXPECT_EQ (style.color (0), 7U);
}

TEST (Colors, lighten_adds_to_each_part_and_clamps) {
    EXPECT_EQ (lighten (0x10203000, 16), 0x20304000U);
    EXPECT_EQ (lighten (0xF0203000, 200), 0xFFE8F800U);
    EXPECT_EQ (lighten (1, 200), 0xFFC8C800U);
    EXPECT_EQ (lighten (0, 200), 0xC8C8C800U);
    EXPECT_EQ (lighten (0, 0), 56U);
    EXPECT_EQ (lighten (0x10101000, -255), 56U);
}

TEST (Colors, fogged_is_lighter_and_one_colour_in_the_dark) {
    PaintStyle style;
    EXPECT_EQ (style.fogged (0), 0xC8C8C800U);
    style.dark = true;
    EXPECT_EQ (style.fogged (0), 100U);
    EXPECT_EQ (style.fogged (1), 100U);
}

TEST (Colors, band_of_a_compartment_is_its_hue_at_full_value) {
    EXPECT_EQ (light_band_color (4), 0xC0C0FF00U);
    EXPECT_EQ (light_band_color (0x80000000), 0xFFC0C000U);
    EXPECT_EQ (light_band_color (0), 0xE0E0E000U);
    EXPECT_EQ (light_band_color (7), 0xFFFFFF00U);
}

TEST (Greek, letters_only) {
    EXPECT_EQ (greek_code_point ('a'), 0x3b1U);
    EXPECT_EQ (greek_code_point ('f'), 0x3d5U);
    EXPECT_EQ (greek_code_point ('j'), 0x3c6U);
    EXPECT_EQ (greek_code_point ('v'), 0x3d6U);
    EXPECT_EQ (greek_code_point ('J'), 0x3d1U);
    EXPECT_EQ (greek_code_point ('V'), 0x3c2U);
    for (const unsigned code :
         {32U, 49U, 63U, 64U, 91U, 92U, 93U, 94U, 95U, 96U, 123U, 124U, 125U, 126U, 127U, 200U})
        EXPECT_EQ (greek_code_point (code), code);
}

} // namespace
