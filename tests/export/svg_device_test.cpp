// The elements that the SVG device writes, letter by letter.
#include "document/document_state.h"
#include "export/svg_device.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using namespace ostrand;
using namespace ostrand::document;
using drawing::SvgDevice;

namespace {

constexpr std::string_view head =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
    "<svg version=\"1.0\" xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" height=\"480\">\n";

/// What a scene writes behind the head, in red with a line of width 2.
std::string written (const std::function<void (SvgDevice&)>& scene) {
    SvgDevice device (640, 480);
    EXPECT_EQ (device.text (), head);
    device.set_color (1);
    device.set_line (2, LineStyle::solid);
    scene (device);
    return device.text ().substr (head.size ());
}

/// With the number of each clip path replaced by N, N + 1 and so on from the first one.
std::string without_clip_numbers (std::string text) {
    const std::size_t at = text.find ("id=\"c");
    if (at == std::string::npos) return text;
    const std::string number = text.substr (at + 5, text.find ('"', at + 5) - at - 5);
    for (const std::string& form : {"c" + number + "\"", "c" + number + ")"}) {
        for (std::size_t place = text.find (form); place != std::string::npos;
             place = text.find (form))
            text.replace (place, form.size (), form.ends_with (")") ? "cN)" : "cN\"");
    }
    return text;
}

TEST (SvgDevice, PictureBeginsWithItsSizeAndEndsWithItsTag) {
    SvgDevice device (640, 480);
    EXPECT_TRUE (device.end ());
    EXPECT_EQ (device.text (), std::string (head) + "</svg>\n");
}

TEST (SvgDevice, RotatedGroupWritesTheAngleAndZeroDegreesTheShortForm) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.push_transform (1.5F, -2, 90);
                   device.pop_transform ();
                   device.push_transform (3, 4, 0);
                   device.pop_transform ();
               }),
               "<g transform=\"translate(1.5 -2) rotate(90 0 0)\">\n</g>\n"
               "<g transform=\"translate(3 4)\">\n</g>\n");
}

TEST (SvgDevice, GroupOfAnObjectHasNoTransform) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.begin_group ();
                   device.end_group ();
               }),
               "<g>\n</g>\n");
}

TEST (SvgDevice, Line) {
    EXPECT_EQ (written ([] (auto& device) { device.line (1, 2, 3.25F, 4); }),
               "<line stroke=\"#ff0000\" stroke-width=\"2\" x1=\"1\" y1=\"2\" x2=\"3.25\" "
               "y2=\"4\" />\n");
}

TEST (SvgDevice, Rectangles) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.stroke_rect (1, 2, 3, 4);
                   device.fill_rect (1, 2, 3, 4);
                   device.stroke_round_rect (1, 2, 3, 4, 9);
                   device.fill_round_rect (1, 2, 3, 4, 9);
               }),
               "<rect style=\"fill:none\" stroke-width=\"2\" stroke=\"#ff0000\" x=\"1\" y=\"2\" "
               "width=\"3\" height=\"4\"/>\n"
               "<rect fill=\"#ff0000\" stroke-width=\"0\" x=\"1\" y=\"2\" width=\"3\" "
               "height=\"4\"/>\n"
               "<rect style=\"fill:none\" stroke-width=\"2\" stroke=\"#ff0000\" rx=\"6\" ry=\"6\" "
               "x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>\n"
               "<rect fill=\"#ff0000\" stroke-width=\"0\" rx=\"9\" ry=\"9\" x=\"1\" y=\"2\" "
               "width=\"3\" height=\"4\" />\n");
}

TEST (SvgDevice, EllipsesAreGivenByTheirBoxes) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.stroke_ellipse (10, 20, 30, 40, 64);
                   device.fill_ellipse (10, 20, 30, 41, 64);
               }),
               "<ellipse style=\"fill:none\" stroke-width=\"2\" stroke=\"#ff0000\" rx=\"15\" "
               "ry=\"20\" cx=\"25\" cy=\"40\"/>\n"
               "<ellipse fill=\"#ff0000\" stroke-width=\"0\" rx=\"15\" ry=\"20.5\" cx=\"25\" "
               "cy=\"40.5\" />\n");
}

TEST (SvgDevice, PolygonsAndPaths) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.fill_triangle_head (16, 12, 0);
                   device.arrow_head (14, 10, 1);
                   device.fill_chevron (0, 0, 20, 30, 10);
               }),
               "<polygon style=\"fill:#ff0000;stroke:none;\" points=\"0,0 -16,-6 -16,6 \" />\n"
               "<polygon style=\"fill:#ff0000;stroke:none;\" points=\"0,0 -14,-5 -10.5,0 -14,5 "
               "\" />\n"
               "<path style=\"fill:none;stroke:#ff0000;stroke-width:1\" d=\"M0,0 L -14,-5 "
               "L -10.5,0 L -14,5  Z\" />\n"
               "<polygon style=\"fill:#ff0000;stroke:none;\" points=\"0,0 10,10 20,0 20,30 10,40 "
               "0,30 \" />\n");
}

TEST (SvgDevice, ArcPolygonTurnsFromItsFirstAngle) {
    EXPECT_EQ (written ([] (auto& device) { device.arc_polygon (10, 10, 4, 0, 90, 2); }),
               "<polygon style=\"fill:#ff0000;stroke:none;\" points=\"14,10 10,14 \" />\n");
    EXPECT_EQ (written ([] (auto& device) { device.arc_polygon (10, 10, 4, 0, 90, 1); }), "");
}

TEST (SvgDevice, SharedBarIsALineAtFourFifths) {
    EXPECT_EQ (written ([] (auto& device) { device.shared_bar (10, 20, 30, 40, 3); }),
               "<line stroke=\"#ff0000\" stroke-width=\"3\" x1=\"10\" y1=\"52\" x2=\"40\" "
               "y2=\"52\" />\n");
}

TEST (SvgDevice, OnlyRoundRectanglesAndEllipsesTakeTheClip) {
    EXPECT_EQ (without_clip_numbers (written ([] (auto& device) {
                   device.set_clip (1, 2, 3, 4);
                   device.fill_rect (0, 0, 9, 9);
                   device.fill_round_rect (0, 0, 9, 9, 1);
                   device.fill_ellipse (0, 0, 8, 8, 16);
                   device.end_clip ();
                   device.fill_ellipse (0, 0, 8, 8, 16);
               })),
               "<defs><clipPath id=\"cN\"><rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" />"
               "</clipPath></defs>\n"
               "<rect fill=\"#ff0000\" stroke-width=\"0\" x=\"0\" y=\"0\" width=\"9\" "
               "height=\"9\"/>\n"
               "<rect fill=\"#ff0000\" stroke-width=\"0\" rx=\"1\" ry=\"1\" x=\"0\" y=\"0\" "
               "width=\"9\" height=\"9\" clip-path=\"url(#cN)\"/>\n"
               "<ellipse fill=\"#ff0000\" stroke-width=\"0\" rx=\"4\" ry=\"4\" cx=\"4\" cy=\"4\" "
               "clip-path=\"url(#cN)\"/>\n"
               "<ellipse fill=\"#ff0000\" stroke-width=\"0\" rx=\"4\" ry=\"4\" cx=\"4\" cy=\"4\" "
               "/>\n");
}

TEST (SvgDevice, ClipIdIsNeverReused) {
    const auto clip = [] (auto& device) {
        device.set_clip (1, 2, 3, 4);
        device.end_clip ();
    };
    const std::string first = written (clip);
    const std::string second = written (clip);
    EXPECT_NE (first, second);
    EXPECT_EQ (without_clip_numbers (first), without_clip_numbers (second));
}

TEST (SvgDevice, ColoursComeFromTheMapOrAreTheirOwn) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.set_color (72);
                   device.fill_rect (0, 0, 1, 1);
                   device.set_color (0x0000A100);
                   device.fill_rect (0, 0, 1, 1);
                   device.set_color_rgb (1, 2, 255);
                   device.fill_rect (0, 0, 1, 1);
               }),
               "<rect fill=\"#7f0000\" stroke-width=\"0\" x=\"0\" y=\"0\" width=\"1\" "
               "height=\"1\"/>\n"
               "<rect fill=\"#0000a1\" stroke-width=\"0\" x=\"0\" y=\"0\" width=\"1\" "
               "height=\"1\"/>\n"
               "<rect fill=\"#0102ff\" stroke-width=\"0\" x=\"0\" y=\"0\" width=\"1\" "
               "height=\"1\"/>\n");
}

std::string text_of (unsigned font, std::string_view letters) {
    return written ([&] (auto& device) { device.draw_text (*font_metrics (font), letters, 5, 6); });
}

std::string text_element (std::string_view family, std::string_view weight, std::string_view style,
                          int size, std::string_view utf8) {
    return "<text style=\"font-family:" + std::string (family) +
           ";font-weight:" + std::string (weight) + ";font-style:" + std::string (style) +
           ";font-size:" + std::to_string (size) + "px;fill:#ff0000;\" x=\"5\" y=\"6\">\n" +
           std::string (utf8) + "\n</text>\n";
}

TEST (SvgDevice, TextNamesItsFamilySizeWeightAndStyle) {
    EXPECT_EQ (text_of (67, "ATP"), text_element ("Arial", "medium", "normal", 14, "ATP"));
    EXPECT_EQ (text_of (74, "ATP"), text_element ("Arial", "bold", "normal", 12, "ATP"));
    EXPECT_EQ (text_of (font_key (0, false, true, 0), "x"),
               text_element ("Verdana", "medium", "italic", 8, "x"));
    EXPECT_EQ (text_of (font_key (1, true, true, 9), "x"),
               text_element ("Times", "bold", "italic", 26, "x"));
    EXPECT_EQ (text_of (font_key (3, false, false, 31), "x"),
               text_element ("Courier", "medium", "normal", 70, "x"));
    EXPECT_EQ (text_of (font_key (4, false, false, 3), "x"),
               text_element ("Comic Sans MS", "medium", "normal", 14, "x"));
    EXPECT_EQ (text_of (font_key (5, false, false, 3), "x"),
               text_element ("Times", "medium", "normal", 14, "x"));
}

TEST (SvgDevice, TextIsUtf8AndEscaped) {
    EXPECT_EQ (text_of (67, "a<b & \xe9\x80\x01>"),
               text_element ("Arial", "medium", "normal", 14, "a&lt;b &amp; \xc3\xa9\xc2\x80>"));
    const std::string letters (3000, '\xe9');
    EXPECT_NE (text_of (67, letters).find ("\xc3\xa9\n</text>"), std::string::npos);
    EXPECT_GT (text_of (67, letters).size (), 6000U);
}

TEST (SvgDevice, SymbolTextIsGreekAndItsDigitsStay) {
    const unsigned symbol = font_key (7, false, false, 3);
    EXPECT_EQ (text_of (symbol, "1"), text_element ("Arial", "medium", "normal", 14, "1"));
    EXPECT_EQ (text_of (symbol, "abcdefghijklmnopqrstuvwxyz"),
               text_element ("Arial", "medium", "normal", 14, "αβχδεϕγηιφκλμνοπθρστυϖωξψζ"));
    EXPECT_EQ (text_of (symbol, "ABCDEFGHIJKLMNOPQRSTUVWXYZ"),
               text_element ("Arial", "medium", "normal", 14, "ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ"));
    EXPECT_EQ (text_of (symbol, "@[]~_"), text_element ("Arial", "medium", "normal", 14, "@[]~_"));
}

TEST (SvgDevice, EmptyTextWritesNothing) { EXPECT_EQ (text_of (67, ""), ""); }

TEST (SvgDevice, NumbersSurviveReadingAndHaveNoNegativeZero) {
    EXPECT_EQ (written ([] (auto& device) {
                   device.push_transform (0.1F, 123456.7F, 1e-20F);
                   device.push_transform (-0.0F, std::numeric_limits<float>::infinity (), 0);
               }),
               "<g transform=\"translate(0.1 123457) rotate(1e-20 0 0)\">\n"
               "<g transform=\"translate(0 0)\">\n");
}

TEST (SvgDevice, PicturesStandInTheDrawingWithTheirBytes) {
    const ostrand::testing::TemporaryFolder folder;
    for (const auto& [bytes, type] :
         {std::pair{std::string ("\x89PNG"), "png"}, std::pair{std::string ("\xff\xd8z"), "jpeg"},
          std::pair{std::string ("GIF89a"), "gif"}}) {
        const std::string path = folder.write ("picture", bytes);
        EXPECT_EQ (written ([&] (auto& device) { device.draw_picture (path, 1, 2, 3, 4); }),
                   "<image xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                   "preserveAspectRatio=\"none\" x=\"1\" y=\"2\" width=\"3\" height=\"4\" "
                   "xlink:href=\"data:image/" +
                       std::string (type) + ";base64," + drawing::base64 (bytes) + "\"/>\n");
    }
    EXPECT_EQ (written ([&] (auto& device) {
                   device.draw_picture ((folder / "none.png").string (), 1, 2, 3, 4);
               }),
               "");
}

TEST (SvgDevice, Base64) {
    EXPECT_EQ (drawing::base64 (""), "");
    EXPECT_EQ (drawing::base64 ("f"), "Zg==");
    EXPECT_EQ (drawing::base64 ("fo"), "Zm8=");
    EXPECT_EQ (drawing::base64 ("foo"), "Zm9v");
    EXPECT_EQ (drawing::base64 ("foob\xff"), "Zm9vYv8=");
}

TEST (SvgDevice, LargeDrawingGoesToItsFileInPieces) {
    const ostrand::testing::TemporaryFolder folder;
    OutputFile file (folder / "large.svg");
    SvgDevice device (640, 480, &file);
    for (int i = 0; i < 30000; ++i) device.fill_rect (1, 2, 3, 4);
    EXPECT_LT (device.text ().size (), std::size_t{2} << 20);
    EXPECT_TRUE (device.end ());
    EXPECT_TRUE (file.commit ());
    const std::string text = ostrand::testing::file_text (folder / "large.svg");
    EXPECT_TRUE (text.starts_with (head));
    EXPECT_TRUE (text.ends_with ("height=\"4\"/>\n</svg>\n"));
    EXPECT_GT (text.size (), std::size_t{2} << 20);
}

} // namespace
