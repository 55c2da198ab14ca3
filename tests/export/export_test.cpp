// Whole drawings: page, origin, dark ground, files, and that both kinds show the same picture.
#include "export/export.h"

#include "document/markup.h"
#include "export/file_raster.h"
#include "export/pdf_device.h"
#include "support/random_document.h"
#include "support/recording_device.h"
#include "support/support.h"

#include <gtest/gtest.h>

using namespace ostrand;
using namespace ostrand::document;
using ostrand::testing::file_text;
using ostrand::testing::Raster;
using ostrand::testing::TemporaryFolder;

namespace {

struct DarkMode {
    DarkMode () { document_state ().dark_mode = true; }
    ~DarkMode () { document_state ().dark_mode = false; }
};

std::unique_ptr<Network> network_of (std::string_view text) {
    auto network = read_network (text);
    EXPECT_NE (network, nullptr);
    network->update_shared_nodes ();
    network->layout ();
    return network;
}

/// Every shape, every head, scripts, Greek, colours, both compartments, clones.
std::unique_ptr<Network> rich_network () {
    return network_of ("[N9 2 2 10 20"
                       "[C1 8 10 10 460 300 4 {Cytosol}{80:40+0+0+0}]"
                       "[C2 12 250 40 200 180 1 {<1C>Nucleus<0C>}{80:40+0+0+0}]"
                       "[S3 0 90 70 0 #ffe0a0 13{Glucose}-]"
                       "[S4 0 90 210 0 #ffe0a0 13{G6P}-]"
                       "[S5 0 190 120 0 #a0e0ff 9{Hexokinase}{<66F>P<67F>}]"
                       "[S6 0 340 100 0 #d0d0ff 11{<235F>abG<67F>-x}-]"
                       "[S7 0 340 170 0 #d0d0ff 11{<235F>abG<67F>-x}-]"
                       "[S8 0 60 270 0 #ffc0c0 17{Receptor}-]"
                       "[S9 0 190 270 0 #e0c0ff 5{Gene_{1}^{+}}-]"
                       "[S10 0 290 265 0 7 15{ATP}-]"
                       "[S11 0 350 265 0 7 15{ATP}-]"
                       "[A12 0 272 2 3 4{<66F><4C>K_{m}}{K_{cat}<67F><0C>}]"
                       "[A13 0 32 2 5 12]"
                       "[A14 0 400 2 4 6]"
                       "[A15 89 48 2 9 14]"
                       "[A16 68 64 2 8 12]"
                       "[A17 0 80 2 10 14]"
                       "]");
}

TEST (Export, PageIsTheNetworkAndAMarginAndTheOriginItsCorner) {
    const auto network = network_of ("[N1 0 2 50 60[S1 0 100 100 0 7 5{<97F>AAAAA}-]]");
    EXPECT_EQ (network->get_width (), 120);
    EXPECT_EQ (network->get_height (), 110);
    EXPECT_EQ (drawing::drawing_size (*network).width, 133U);
    EXPECT_EQ (drawing::drawing_size (*network).height, 122U);
    EXPECT_EQ (drawing::svg_text (*network),
               "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
               "<svg version=\"1.0\" xmlns=\"http://www.w3.org/2000/svg\" width=\"133\" "
               "height=\"122\">\n"
               "<rect fill=\"#000000\" stroke-width=\"0\" x=\"78\" y=\"88\" width=\"44\" "
               "height=\"24\"/>\n"
               "<rect fill=\"#ffffff\" stroke-width=\"0\" x=\"80\" y=\"90\" width=\"40\" "
               "height=\"20\"/>\n"
               "<text style=\"font-family:Courier;font-weight:medium;font-style:normal;"
               "font-size:10px;fill:#000000;\" x=\"85\" y=\"103\">\nAAAAA\n</text>\n"
               "</svg>\n");
    EXPECT_EQ (network->x (), 50);
    EXPECT_EQ (network->y (), 60);
}

TEST (Export, ArcIsOneGroup) {
    const auto network = network_of ("[N2 0 2 0 0[S1 0 100 100 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 100 200 0 7 5{BBBBB}-][A3 0 512 2 1 2]]");
    EXPECT_NE (drawing::svg_text (*network).find (
                   "<g>\n<g transform=\"translate(100 110) rotate(90 0 0)\">\n"
                   "<rect fill=\"#000000\" stroke-width=\"0\" x=\"0\" y=\"-1\" "
                   "width=\"80\" height=\"2\"/>\n</g>\n</g>\n"),
               std::string::npos);
}

TEST (Export, MixedLabelIsOneTextALetterAndAUniformOneIsOne) {
    const auto network = network_of ("[N2 0 2 0 0[S1 0 100 100 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 100 200 0 7 5{B<98F>C}-]]");
    const std::string text = drawing::svg_text (*network);
    std::size_t texts = 0;
    for (std::size_t at = text.find ("<text"); at != std::string::npos;
         at = text.find ("<text", at + 1))
        ++texts;
    EXPECT_EQ (texts, 3U);
}

TEST (Export, DarkPictureHasADarkGround) {
    const auto network = network_of ("[N1 0 2 0 0[S1 0 100 100 0 7 5{<97F>AAAAA}-]]");
    const DarkMode dark;
    EXPECT_NE (drawing::svg_text (*network).find (
                   "height=\"122\">\n<rect fill=\"#000000\" stroke-width=\"0\" x=\"0\" "
                   "y=\"0\" width=\"133\" height=\"124\"/>\n"
                   "<rect fill=\"#ffffff\" stroke-width=\"0\" x=\"78\" "),
               std::string::npos);
}

TEST (Export, WhatIsLeftOfAndAboveZeroIsPaintedAtItsPlace) {
    const auto network = network_of ("[N1 0 2 0 0[S1 0 -500 -300 0 7 5{<97F>AAAAA}-]]");
    EXPECT_NE (drawing::svg_text (*network).find ("x=\"-520\" y=\"-310\""), std::string::npos);
}

TEST (Export, EmptyNetworkIsAnEmptyPage) {
    Network network;
    EXPECT_NE (drawing::svg_text (network).find (" width=\"13\" height=\"12\">\n</svg>\n"),
               std::string::npos);
    const TemporaryFolder folder;
    std::string error;
    EXPECT_TRUE (drawing::export_pdf (network, folder / "a.pdf", error));
    EXPECT_NE (file_text (folder / "a.pdf").find ("/MediaBox [ 0 0 13 12 ]"), std::string::npos);
}

TEST (Export, FileThatCannotBeOpenedIsToldAndNothingIsLeft) {
    Network network;
    std::string error;
    EXPECT_FALSE (drawing::export_svg (network, "/nowhere/a.svg", error));
    EXPECT_NE (error, "");
    error.clear ();
    EXPECT_FALSE (drawing::export_pdf (network, "/nowhere/a.pdf", error));
    EXPECT_NE (error, "");
}

TEST (Export, FullDiskLeavesTheOldFileWhole) {
    if (!std::filesystem::exists ("/dev/full")) GTEST_SKIP () << "no device that is always full";
    const auto network = rich_network ();
    std::string error;
    EXPECT_FALSE (drawing::export_svg (*network, "/dev/full", error));
    EXPECT_NE (error, "");
    EXPECT_FALSE (drawing::export_pdf (*network, "/dev/full", error));
}

TEST (Export, TheSameNetworkGivesTheSameBytes) {
    const TemporaryFolder folder;
    std::string error;
    for (const char* name : {"a.pdf", "b.pdf"}) {
        const auto network = rich_network ();
        ASSERT_TRUE (drawing::export_pdf (*network, folder / name, error)) << error;
    }
    EXPECT_EQ (file_text (folder / "a.pdf"), file_text (folder / "b.pdf"));
}

TEST (Export, BrokenPictureEndsThePdfAndLeavesNothing) {
    const TemporaryFolder folder;
    std::string png = ostrand::testing::red_png ();
    png.resize (40); // header and size, no pixels
    const std::string path = folder.write ("broken.png", png);
    const auto network = network_of ("[N1 0 2 0 0[S1 0 100 100 0 7 5{[P2 9 9 " + path + "]}-]]");
    std::string error;
    ::testing::internal::CaptureStderr ();
    EXPECT_FALSE (drawing::export_pdf (*network, folder / "a.pdf", error));
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "ERROR: error_no=103B, detail_no=0\n");
    EXPECT_EQ (folder.names (), std::vector<std::string>{"broken.png"});
}

/// Share of pixels that differ clearly.
double difference (const Raster& a, const Raster& b) {
    if (a.width != b.width || a.height != b.height || a.rgb.empty ()) return 1;
    std::size_t different = 0;
    for (std::size_t i = 0; i < a.rgb.size (); i += 3) {
        int sum = 0;
        for (std::size_t j = 0; j < 3; ++j) sum += std::abs (a.rgb[i + j] - b.rgb[i + j]);
        if (sum > 150) ++different;
    }
    return static_cast<double> (different) / static_cast<double> (a.rgb.size () / 3);
}

TEST (Export, SvgAndPdfShowTheSamePicture) {
    for (const bool dark : {false, true}) {
        const auto network = rich_network ();
        document_state ().dark_mode = dark;
        const TemporaryFolder folder;
        std::string error;
        const bool written = drawing::export_svg (*network, folder / "a.svg", error) &&
                             drawing::export_pdf (*network, folder / "a.pdf", error);
        document_state ().dark_mode = false;
        ASSERT_TRUE (written) << error;
        const auto svg = ostrand::testing::svg_raster (folder / "a.svg");
        const auto pdf = ostrand::testing::pdf_raster (folder / "a.pdf");
        if (!svg || !pdf) GTEST_SKIP () << "rsvg-convert or pdftoppm is not installed";
        ASSERT_EQ (svg->width, pdf->width);
        ASSERT_EQ (svg->height, pdf->height);
        // Letters of another font and the edges of shapes differ, areas do not.
        EXPECT_LT (difference (*svg, *pdf), 0.03) << (dark ? "dark" : "light");
    }
}

std::size_t count (const std::string& text, std::string_view what) {
    std::size_t found = 0;
    for (std::size_t at = text.find (what); at != std::string::npos; at = text.find (what, at + 1))
        ++found;
    return found;
}

TEST (Export, RandomDocumentsPaintWhollyAndAgainTheSame) {
    document_state ().show_stoichiometry = true;
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE (seed);
        const auto network = ostrand::testing::RandomDocument (seed).network ();
        network->update_shared_nodes ();
        network->layout ();
        const std::string svg = drawing::svg_text (*network);
        EXPECT_EQ (count (svg, "<g"), count (svg, "</g>"));
        EXPECT_EQ (count (svg, "<text"), count (svg, "</text>"));
        EXPECT_EQ (count (svg, "\"nan\"") + count (svg, "\"inf\""), 0U);
        EXPECT_EQ (count (svg, "width=\"-"), 0U);
        const drawing::DrawingSize size = drawing::drawing_size (*network);
        drawing::PdfDevice pdf (static_cast<float> (size.width), static_cast<float> (size.height));
        drawing::paint_export (*network, pdf);
        EXPECT_FALSE (pdf.failed ());

        ostrand::testing::RecordingDevice first;
        drawing::paint_export (*network, first);
        EXPECT_EQ (count (first.joined (), "push "), count (first.joined (), "pop\n"));
        EXPECT_EQ (count (first.joined (), "\nclip "), count (first.joined (), "end_clip\n"));
                network->layout ();
        ostrand::testing::RecordingDevice second;
        drawing::paint_export (*network, second);
        EXPECT_EQ (first.joined (), second.joined ());
    }
    document_state ().show_stoichiometry = false;
}

TEST (Export, TwoDifferentPicturesAreSeenAsDifferent) {
    const Raster black{2, 1, std::vector<std::uint8_t> (6, 0)};
    const Raster half{2, 1, {0, 0, 0, 255, 255, 255}};
    EXPECT_EQ (difference (black, black), 0);
    EXPECT_EQ (difference (black, half), 0.5);
    EXPECT_EQ (difference (black, Raster{}), 1);
}

/// Ink of a colour at the outermost pixels: something would be cut there.
TEST (Export, NothingIsCutAtTheRightAndBottom) {
    const auto network = rich_network ();
    const TemporaryFolder folder;
    std::string error;
    ASSERT_TRUE (drawing::export_svg (*network, folder / "a.svg", error)) << error;
    const auto svg = ostrand::testing::svg_raster (folder / "a.svg");
    if (!svg) GTEST_SKIP () << "rsvg-convert is not installed";
    EXPECT_EQ (svg->ink (svg->width - 2, 0, svg->width, svg->height), 0);
    EXPECT_EQ (svg->ink (0, svg->height - 2, svg->width, svg->height), 0);
}

} // namespace
