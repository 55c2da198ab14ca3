// The operators that the PDF device makes libHaru write.
#include "export/pdf_device.h"

#include "base/disk.h"
#include "contract/paint_device_contract.h"
#include "document/font_numbers.h"
#include "support/support.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <functional>
#include <limits>

using namespace ostrand;
using namespace ostrand::document;
using drawing::PdfDevice;

namespace {

std::string saved (PdfDevice& device) {
    const ostrand::testing::TemporaryFolder folder;
    OutputFile file (folder / "page.pdf");
    EXPECT_TRUE (device.write_to (file));
    EXPECT_TRUE (file.commit ());
    return ostrand::testing::file_text (folder / "page.pdf");
}

/// All streams of a document that unpack, one behind another.
std::string unpacked (const std::string& pdf) {
    std::string all;
    for (std::size_t at = pdf.find ("stream"); at != std::string::npos;
         at = pdf.find ("stream", at + 1)) {
        if (at >= 3 && pdf.compare (at - 3, 3, "end") == 0) continue;
        std::size_t begin = at + 6;
        while (begin < pdf.size () && (pdf[begin] == '\r' || pdf[begin] == '\n')) ++begin;
        std::string text (std::size_t{1} << 20, '\0');
        uLongf size = text.size ();
        if (uncompress (reinterpret_cast<Bytef*> (text.data ()), &size,
                        reinterpret_cast<const Bytef*> (pdf.data () + begin),
                        pdf.size () - begin) == Z_OK)
            all.append (text, 0, size);
    }
    return all;
}

/// The operators of a page of 200 x 100, behind the matrix that puts y = 0 at the top.
std::string operators (const std::function<void (PdfDevice&)>& scene) {
    PdfDevice device (200, 100);
    EXPECT_TRUE (device.begin ());
    scene (device);
    const std::string all = unpacked (saved (device));
    const std::string top = "1 0 0 1 0 100 cm\n";
    const std::size_t at = all.find (top);
    EXPECT_NE (at, std::string::npos) << all;
    return at == std::string::npos ? all : all.substr (at + top.size ());
}

std::size_t count (const std::string& text, std::string_view what) {
    std::size_t found = 0;
    for (std::size_t at = text.find (what); at != std::string::npos; at = text.find (what, at + 1))
        ++found;
    return found;
}

TEST (PdfDevice, ZeroWidthOrHeightGivesAnA4Page) {
    for (const auto& [w, h] : {std::pair{0.0F, 100.0F}, std::pair{100.0F, 0.0F}}) {
        const PdfDevice device (w, h);
        EXPECT_NEAR (device.page_width (), 595.276, 0.01);
        EXPECT_NEAR (device.page_height (), 841.89, 0.01);
    }
    const PdfDevice device (200, 100);
    EXPECT_EQ (device.page_width (), 200);
    EXPECT_EQ (device.page_height (), 100);
}

TEST (PdfDevice, DrawingLargerThanAPageMayBeIsScaledToFit) {
    PdfDevice device (28800, 100);
    EXPECT_EQ (device.page_width (), 14400);
    EXPECT_EQ (device.page_height (), 50);
    device.begin ();
    device.set_line (4, LineStyle::solid);
    device.stroke_rect (28000, 10, 600, 20);
    device.draw_text (*font_metrics (start_font), "far", 28000, 50);
    const std::string all = unpacked (saved (device));
    EXPECT_NE (all.find ("14000 -5 300 -10 re"), std::string::npos) << all;
    EXPECT_NE (all.find ("2 w"), std::string::npos) << all;
    EXPECT_NE (all.find (" 7 Tf"), std::string::npos) << all;
}

TEST (PdfDevice, ColourIsSetForLinesAndFills) {
    EXPECT_EQ (operators ([] (auto& device) { device.set_color (1); }), "1 0 0 RG\n1 0 0 rg\n");
    EXPECT_EQ (operators ([] (auto& device) { device.set_color_rgb (0, 51, 255); }),
               "0 0.2 1 RG\n0 0.2 1 rg\n");
    EXPECT_EQ (operators ([] (auto& device) { device.set_color_rgb (-5, 300, 256); }),
               "0 1 1 RG\n0 1 1 rg\n");
    EXPECT_EQ (operators ([] (auto& device) { device.set_color_rgb (256, -5, 255); }),
               "1 0 1 RG\n1 0 1 rg\n");
}

TEST (PdfDevice, FilledRectangleIsTwoShorterAtItsBottom) {
    EXPECT_EQ (operators ([] (auto& device) { device.fill_rect (10, 20, 30, 40); }),
               "10 -20 m\n40 -20 l\n40 -58 l\n10 -58 l\nf\n");
}

TEST (PdfDevice, LineOfAnArcKeepsItsHeight) {
    EXPECT_EQ (operators ([] (auto& device) { device.fill_rect (0, -1, 30, 2); }),
               "0 1 m\n30 1 l\n30 -1 l\n0 -1 l\nf\n");
}

TEST (PdfDevice, StrokedRectangle) {
    EXPECT_EQ (operators ([] (auto& device) { device.stroke_rect (10, 20, 30, 40); }),
               "10 -20 30 -40 re\nS\n");
}

TEST (PdfDevice, RoundRectangleHasFourLinesAndFourCorners) {
    EXPECT_EQ (operators ([] (auto& device) { device.fill_round_rect (10, 20, 30, 40, 5); }),
               "15 -20 m\n35 -20 l\n40 -20 40 -25 y\n40 -55 l\n40 -60 35 -60 y\n15 -60 l\n"
               "10 -60 10 -55 y\n10 -25 l\n10 -20 15 -20 y\nf\n");
    EXPECT_EQ (
        count (operators ([] (auto& device) { device.stroke_round_rect (10, 20, 30, 40, 50); }),
               " y\n"),
        4U);
}

TEST (PdfDevice, HeadsAndChevronArePaths) {
    EXPECT_EQ (operators ([] (auto& device) { device.fill_triangle_head (16, 12, 0); }),
               "0 0 m\n-16 6 l\n-16 -6 l\nf\n");
    EXPECT_EQ (operators ([] (auto& device) { device.arrow_head (14, 10, 1); }),
               "0 0 m\n-14 5 l\n-10.5 0 l\n-14 -5 l\nf\n1 w\n[] 0 d\n"
               "0 0 m\n-14 5 l\n-10.5 0 l\n-14 -5 l\ns\n");
    EXPECT_EQ (operators ([] (auto& device) { device.fill_chevron (0, 0, 20, 30, 10); }),
               "0 0 m\n10 -10 l\n20 0 l\n20 -30 l\n10 -40 l\n0 -30 l\nf\n");
}

TEST (PdfDevice, WidthAndDashAreSetWhenTheyChange) {
    EXPECT_EQ (operators ([] (auto& device) {
                   device.set_line (2, LineStyle::solid);
                   device.set_line (2, LineStyle::solid);
                   device.set_line (3, LineStyle::solid);
                   device.set_line (3, LineStyle::dashed);
                   device.set_line (3, LineStyle::dashed);
               }),
               "2 w\n[] 0 d\n3 w\n[1 ] 1 d\n");
}

TEST (PdfDevice, GroupMovesThenTurnsTheOtherWay) {
    const std::string text = operators ([] (auto& device) {
        device.push_transform (10, 20, 90);
        device.pop_transform ();
    });
    EXPECT_TRUE (text.starts_with ("q\n1 0 0 1 10 -20 cm\n")) << text;
    EXPECT_NE (text.find (" -1 1 "), std::string::npos) << text;
    EXPECT_TRUE (text.ends_with (" 0 0 cm\nQ\n")) << text;
}

TEST (PdfDevice, StyleOfAGroupIsSaidAgainOnlyWhereSomethingIsPaintedWithIt) {
    const std::string text = operators ([] (auto& device) {
        device.set_color (1);
        device.push_transform (0, 0, 0);
        device.set_color (4);
        device.set_line (2, LineStyle::dashed);
        device.pop_transform ();
        device.push_transform (0, 0, 0);
        device.set_color (1);
        device.set_line (1, LineStyle::solid);
        device.pop_transform ();
        device.set_color (1);
        device.fill_rect (0, 0, 1, 1);
    });
    EXPECT_EQ (count (text, " rg\n"), 4U) << text; // each as it was set
    const std::string again = operators ([] (auto& device) {
        device.set_clip (0, 0, 50, 50);
        device.set_color (4);
        device.set_line (2, LineStyle::dashed);
        device.end_clip ();
        device.stroke_rect (0, 0, 1, 1);
        device.stroke_rect (0, 0, 1, 1);
    });
    EXPECT_TRUE (again.ends_with ("Q\n0 0 1 RG\n0 0 1 rg\n2 w\n[1 ] 1 d\n0 0 1 -1 re\nS\n"
                                  "0 0 1 -1 re\nS\n"))
        << again;
}

TEST (PdfDevice, ClipIsARectangleInAStateOfItsOwn) {
    EXPECT_EQ (operators ([] (auto& device) {
                   device.set_clip (10, 20, 30, 40);
                   device.end_clip ();
               }),
               "q\n10 -20 30 -40 re\nW\nn\nQ\n");
}

TEST (PdfDevice, TwoTextsInTheSameFontAndSizeSelectTheFontOnce) {
    const std::string text = operators ([] (auto& device) {
        device.draw_text (*font_metrics (67), "one", 10, 20);
        device.draw_text (*font_metrics (67), "two", 10, 40);
    });
    EXPECT_EQ (count (text, " Tf"), 1U) << text;
    EXPECT_NE (text.find ("(one) Tj"), std::string::npos) << text;
    EXPECT_NE (text.find ("(two) Tj"), std::string::npos) << text;
    EXPECT_EQ (count (operators ([] (auto& device) {
                          device.draw_text (*font_metrics (67), "one", 10, 20);
                          device.draw_text (*font_metrics (66), "two", 10, 40);
                          device.draw_text (*font_metrics (67), "three", 10, 60);
                      }),
                      " Tf"),
               3U);
}

TEST (PdfDevice, FontThatAGroupChoseEndsWithIt) {
    const std::string text = operators ([] (auto& device) {
        device.draw_text (*font_metrics (67), "one", 10, 20);
        device.push_transform (0, 0, 0);
        device.draw_text (*font_metrics (66), "two", 10, 40);
        device.pop_transform ();
        device.draw_text (*font_metrics (67), "three", 10, 60);
    });
    EXPECT_EQ (count (text, " Tf"), 2U) << text;
}

TEST (PdfDevice, EveryStandardFaceHasItsSlot) {
    PdfDevice device (200, 100);
    device.begin ();
    for (int number = 0; number <= 12; ++number) {
        device.set_font (number, 14);
        EXPECT_EQ (device.font_slot (), number);
    }
    const std::string pdf = saved (device);
    for (const char* face :
         {"Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique", "Courier",
          "Courier-Bold", "Courier-Oblique", "Courier-BoldOblique", "Times-Roman", "Times-Bold",
          "Times-Italic", "Times-BoldItalic", "Symbol"})
        EXPECT_NE (pdf.find ("/BaseFont /" + std::string (face) + "\n"), std::string::npos) << face;
    EXPECT_EQ (count (pdf, "/WinAnsiEncoding"), 12U);
}

TEST (PdfDevice, FontNumbersWithoutAFontChangeNothing) {
    PdfDevice device (200, 100);
    device.set_font (4, 14);
    device.set_font (-1, 14);
    EXPECT_EQ (device.font_slot (), 4);
    device.set_font (99, 14);
    EXPECT_EQ (device.font_slot (), 4);
    device.set_ttf ("comic.ttf", 14);
    EXPECT_EQ (device.font_slot (), 4);
    EXPECT_FALSE (device.failed ());
}

TEST (PdfDevice, FoundFontsHaveTheirFiles) {
    const std::array<int, 8> before = found_fonts ();
    for (unsigned style = 0; style < 4; ++style) {
        set_found_font (FontFamily::comic, style, 40 + static_cast<int> (style));
        set_found_font (FontFamily::verdana, style, 50 + static_cast<int> (style));
    }
    EXPECT_EQ (drawing::ttf_file_name (40), "comic.ttf");
    EXPECT_EQ (drawing::ttf_file_name (41), "comicbd.ttf");
    EXPECT_EQ (drawing::ttf_file_name (42), "");
    EXPECT_EQ (drawing::ttf_file_name (43), "");
    EXPECT_EQ (drawing::ttf_file_name (50), "verdana.ttf");
    EXPECT_EQ (drawing::ttf_file_name (51), "verdanab.ttf");
    EXPECT_EQ (drawing::ttf_file_name (52), "verdanai.ttf");
    EXPECT_EQ (drawing::ttf_file_name (53), "verdanaz.ttf");
    EXPECT_EQ (drawing::ttf_file_name (60), "");
    EXPECT_EQ (font_number (font_key (4, true, false, 3)), 41);
    EXPECT_EQ (font_number (font_key (0, true, true, 3)), 53);
    for (unsigned style = 0; style < 4; ++style) {
        set_found_font (FontFamily::comic, style, before[style]);
        set_found_font (FontFamily::verdana, style, before[4 + style]);
    }
}

TEST (PdfDevice, TrueTypeFileIsEmbeddedOnce) {
    const std::string path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    if (!std::filesystem::exists (path)) GTEST_SKIP () << "no DejaVu Sans here";
    PdfDevice device (200, 100);
    device.begin ();
    device.set_ttf (path, 14);
    EXPECT_EQ (device.font_slot (), 13);
    EXPECT_GT (device.font_ascent (), 0);
    EXPECT_LT (device.font_descent (), 0);
    device.set_font (0, 14);
    device.set_ttf (path, 14);
    EXPECT_EQ (device.font_slot (), 13);
    const std::string pdf = saved (device);
    EXPECT_EQ (count (pdf, "/FontFile2"), 1U);
}

TEST (PdfDevice, FamiliesThatNobodyFoundAreTimes) {
    EXPECT_EQ (font_number (font_key (0, false, false, 3)), 8);
    EXPECT_EQ (font_number (font_key (4, true, true, 3)), 11);
    EXPECT_EQ (font_number (font_key (2, true, false, 3)), 1);
    EXPECT_EQ (font_number (font_key (3, false, true, 3)), 6);
    EXPECT_EQ (font_number (font_key (7, true, true, 3)), 12);
    EXPECT_EQ (font_number (font_key (6, false, false, 3)), 8);
}

TEST (PdfDevice, TextWidthIsThatOfTheFont) {
    PdfDevice device (200, 100);
    EXPECT_EQ (device.text_width ("abc"), 0);
    device.set_font (0, 10);
    EXPECT_FLOAT_EQ (device.text_width ("abc"), (556 + 556 + 500) / 100.0F);
    const FontMetrics& metrics = *font_metrics (67);
    device.set_font (0, 14);
    EXPECT_FLOAT_EQ (device.text_width ("K"), metrics.width_of ('K'));
}

TEST (PdfDevice, SymbolTextGoesThroughAsBytes) {
    EXPECT_NE (operators ([] (auto& device) {
                   device.draw_text (*font_metrics (font_key (7, false, false, 3)), "abG", 10, 20);
               }).find ("(abG) Tj"),
               std::string::npos);
}

TEST (PdfDevice, LongTextIsShownInPieces) {
    const std::string letters (100000, 'x');
    PdfDevice device (200, 100);
    device.begin ();
    device.draw_text (*font_metrics (67), letters, 0, 20);
    EXPECT_FALSE (device.failed ());
    EXPECT_EQ (count (unpacked (saved (device)), " Tj"), 4U);
}

TEST (PdfDevice, PictureThatIsNeitherPngNorJpgIsLeftOut) {
    const ostrand::testing::TemporaryFolder folder;
    EXPECT_EQ (operators ([&folder] (auto& device) {
                   device.draw_picture (folder.write ("a.gif", "GIF89a"), 0, 0, 10, 10);
                   device.draw_picture (folder.write ("a.jpeg", "\xff\xd8"), 0, 0, 10, 10);
               }),
               "");
}

TEST (PdfDevice, NumbersBeyondReasonDoNoHarm) {
    const ostrand::testing::CaughtMessages messages;
    const float infinite = std::numeric_limits<float>::infinity ();
    const std::string text = operators ([infinite] (auto& device) {
        device.stroke_rect (1e30F, infinite, -infinite, nanf (""));
        device.set_line (1e9F, LineStyle::solid);
        device.fill_ellipse (0, 0, 0, 5, 16);
        device.fill_ellipse (0, 0, nanf (""), 5, 16);
        device.stroke_ellipse (0, 0, 5, 0, 16);
        device.stroke_ellipse (0, 0, 0, 5, 16);
        device.draw_picture ("/nowhere/a.png", 0, 0, 0, 5);
        device.draw_picture ("/nowhere/a.png", 0, 0, 5, 0);
    });
    EXPECT_EQ (text, "32767 0 0 0 re\nS\n100 w\n[] 0 d\n");
    EXPECT_TRUE (messages.all.empty ()); // not even looked for
}

TEST (PdfDevice, FirstErrorIsToldAndEndsThePaint) {
    const ostrand::testing::TemporaryFolder folder;
    PdfDevice device (200, 100);
    device.begin ();
    ::testing::internal::CaptureStderr ();
    for (int i = 0; i < 2; ++i) device.pop_transform (); // of which none was pushed
    device.draw_text (*font_metrics (67), "x", 0, 20);
    const std::string told = ::testing::internal::GetCapturedStderr ();
    EXPECT_TRUE (device.failed ());
    EXPECT_TRUE (told.starts_with ("ERROR: error_no=")) << told;
    EXPECT_EQ (count (told, "\n"), 1U) << told;
    OutputFile file (folder / "page.pdf");
    EXPECT_FALSE (device.write_to (file));
}

TEST (PdfDevice, DamagedPictureIsLeftOutToldOnceAndThePaintGoesOn) {
    const ostrand::testing::TemporaryFolder folder;
    for (const auto& [name, bytes] :
         {std::pair{"broken.png", std::string ("\x89PNG\r\n\x1a\nnothing")},
          std::pair{"cut.png", ostrand::testing::red_png ().substr (0, 45)},
          std::pair{"broken.jpg", std::string ("\xff\xd8\xff\xc0nothing")},
          std::pair{"empty.jpg", std::string ()}}) {
        SCOPED_TRACE (name);
        const std::string path = folder.write (name, bytes);
        const ostrand::testing::CaughtMessages messages;
        ::testing::internal::CaptureStderr ();
        const std::string text = operators ([&path] (auto& device) {
            device.draw_picture (path, 0, 0, 10, 10);
            device.fill_rect (0, 0, 1, 1);
            device.draw_picture (path, 20, 0, 10, 10);
            device.draw_text (*font_metrics (67), "x", 0, 20);
        });
        EXPECT_EQ (::testing::internal::GetCapturedStderr (), "");
        EXPECT_EQ (messages.all, std::vector<std::string>{"The picture '" + path +
                                                          "' cannot be read and is left out."});
        EXPECT_EQ (count (text, " Do"), 0U);
        EXPECT_EQ (count (text, "\nf\n"), 1U);
        EXPECT_EQ (count (text, "(x) Tj"), 1U);
    }
}

TEST (PdfDevice, PictureThatIsGoneIsLeftOutToo) {
    const ostrand::testing::CaughtMessages messages;
    EXPECT_EQ (operators ([] (auto& device) {
                   device.draw_picture ("/nowhere/a.jpg", 0, 0, 10, 10);
                   device.draw_picture ("/nowhere/a.png", 0, 0, 10, 10);
               }),
               "");
    EXPECT_EQ (messages.all.size (), 2U);
}

} // namespace
