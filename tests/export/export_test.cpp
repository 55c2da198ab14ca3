// Whole drawings: page, origin, dark ground, files, and that both kinds show the same picture.
#include "export/export.h"

#include "document/markup.h"
#include "export/file_raster.h"
#include "export/pdf_device.h"
#include "support/random_document.h"
#include "support/recording_device.h"
#include "support/support.h"
#include "support/svg_page.h"

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
    EXPECT_EQ (drawing::drawing_page (*network).width, 133U);
    EXPECT_EQ (drawing::drawing_page (*network).height, 122U);
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

TEST (Export, WhatIsLeftOfAndAboveThePageMovesThePicture) {
    // A node of 40 by 20 with an outline of 2.
    const auto network = network_of ("[N2 0 2 0 0[S1 0 -500 -300 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 100 80 0 7 5{BBBBB}-]]");
    const std::string text = drawing::svg_text (*network);
    EXPECT_NE (text.find (" width=\"655\" height=\"414\">"), std::string::npos) << text;
    EXPECT_NE (text.find ("x=\"0\" y=\"0\" width=\"44\" height=\"24\""), std::string::npos) << text;
    EXPECT_NE (text.find ("x=\"600\" y=\"380\" width=\"44\""), std::string::npos) << text;
    EXPECT_EQ (ostrand::testing::read_svg_page (text).outside (), "");
    EXPECT_EQ (network->x (), 0);
    EXPECT_EQ (network->y (), 0);
}

TEST (Export, PictureMovesOnlyTheWayThatItHasTo) {
    const auto left = network_of ("[N1 0 2 0 0[S1 0 10 100 0 7 5{<97F>AAAAA}-]]");
    const drawing::DrawingPage moved_right = drawing::drawing_page (*left);
    EXPECT_EQ (moved_right.origin_x, 12);
    EXPECT_EQ (moved_right.origin_y, 0);
    EXPECT_EQ (moved_right.width, 55U);   // 30 + 12 + 13
    EXPECT_EQ (moved_right.height, 122U); // as told by the network
    const auto above = network_of ("[N1 0 2 0 0[S1 0 100 5 0 7 5{<97F>AAAAA}-]]");
    const drawing::DrawingPage moved_down = drawing::drawing_page (*above);
    EXPECT_EQ (moved_down.origin_x, 0);
    EXPECT_EQ (moved_down.origin_y, 7);
    EXPECT_EQ (moved_down.width, 133U);
    EXPECT_EQ (moved_down.height, 34U);
}

TEST (Export, PictureMovesByWholePixelsSoThatItsEdgesStaySharp) {
    const auto network = network_of ("[N1 0 2 0 0[S1 0 21.75 100 0 7 5{<97F>AAAAA}-]]");
    const drawing::DrawingPage page = drawing::drawing_page (*network);
    EXPECT_EQ (page.origin_x, 1); // a quarter of a pixel would be cut
    EXPECT_NE (drawing::svg_text (*network).find ("x=\"0.75\""), std::string::npos);
    const auto touching = network_of ("[N1 0 2 0 0[S1 0 22 100 0 7 5{<97F>AAAAA}-]]");
    EXPECT_EQ (drawing::drawing_page (*touching).origin_x, 0);
    EXPECT_EQ (drawing::drawing_page (*touching).width, 55U);
}

TEST (Export, LabelAloneThatReachesOutMovesThePicture) {
    // The label of the arc is dragged above the page and to the left of it.
    const auto network = network_of ("[N2 0 2 0 0[S1 0 100 100 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 300 100 0 7 5{BBBBB}-]"
                                     "[A3 0 272 2 1 2{<67F>Km}(-200 -150){}]]");
    const std::string text = drawing::svg_text (*network);
    const ostrand::testing::SvgPage page = ostrand::testing::read_svg_page (text);
    EXPECT_EQ (page.outside (), "") << text;
    ASSERT_EQ (page.texts.front ().what, "Km");
    EXPECT_LT (page.texts.front ().left, 1);
    EXPECT_LT (page.texts.front ().top, 1);
    EXPECT_GT (drawing::drawing_page (*network).origin_x, 50);
    document_state ().show_kinetics = false;
    const drawing::DrawingPage bare = drawing::drawing_page (*network);
    document_state ().show_kinetics = true;
    EXPECT_EQ (bare.origin_x, 0); // what is not painted moves nothing
    EXPECT_EQ (bare.origin_y, 0);
}

TEST (Export, PageReachesAsFarAsWhatIsPaintedOnIt) {
    // The stoichiometry is further out than the network counts.
    const auto network = network_of ("[N2 0 2 0 0"
                                     "[S1 0 100 100 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 300 100 0 7 5{BBBBB}-]"
                                     "[A3 0 272 2 1 2{}{}{<67F>2}(300 310)]]");
    document_state ().show_stoichiometry = true;
    const std::string text = drawing::svg_text (*network);
    document_state ().show_stoichiometry = false;
    const ostrand::testing::SvgPage page = ostrand::testing::read_svg_page (text);
    EXPECT_EQ (page.outside (), "") << text;
    EXPECT_GT (page.width, network->get_width () + 13);
    EXPECT_GT (page.height, network->get_height () + 12);
    EXPECT_EQ (drawing::drawing_page (*network).origin_x, 0);
}

TEST (Export, NetworkWhollyOnTheFarSideOfItsOriginHasAPageOfItsOwnSize) {
    const auto network = network_of ("[N1 0 2 0 0[S1 0 -500 -300 0 7 5{<97F>AAAAA}-]]");
    const drawing::DrawingPage page = drawing::drawing_page (*network);
    EXPECT_EQ (page.width, 57U);
    EXPECT_EQ (page.height, 36U);
}

TEST (Export, DarkGroundCoversAPageThatGrew) {
    const auto network = network_of ("[N1 0 2 0 0[S1 0 -500 -300 0 7 5{<97F>AAAAA}-]]");
    const DarkMode dark;
    EXPECT_NE (drawing::svg_text (*network).find ("x=\"0\" y=\"0\" width=\"57\" height=\"38\""),
               std::string::npos);
}

TEST (Export, AlignedNetworkIsMovedFromWhereItStands) {
    for (const char* align : {"0", "1", "2"}) {
        SCOPED_TRACE (align);
        const auto network = network_of ("[N2 0 " + std::string (align) +
                                         " 50 60[S1 0 -20 -30 0 7 5{<97F>AAAAA}-]"
                                         "[S2 0 100 80 0 7 5{BBBBB}-]]");
        const std::string text = drawing::svg_text (*network);
        EXPECT_NE (text.find ("x=\"0\" y=\"0\" width=\"44\""), std::string::npos) << text;
        EXPECT_EQ (network->x (), 50);
        EXPECT_EQ (network->y (), 60);
    }
}

TEST (Export, PdfHasTheSamePageAndTheSamePlaces) {
    const auto network = network_of ("[N2 0 2 0 0[S1 0 -500 -300 0 7 5{<97F>AAAAA}-]"
                                     "[S2 0 100 80 0 7 5{BBBBB}-]]");
    const TemporaryFolder folder;
    std::string error;
    ASSERT_TRUE (drawing::export_pdf (*network, folder / "a.pdf", error)) << error;
    EXPECT_NE (file_text (folder / "a.pdf").find ("/MediaBox [ 0 0 655 414 ]"), std::string::npos);
    const auto pdf = ostrand::testing::pdf_raster (folder / "a.pdf");
    if (!pdf) GTEST_SKIP () << "pdftoppm is not installed";
    EXPECT_GT (pdf->ink (0, 0, 44, 24), 100);
    EXPECT_GT (pdf->ink (600, 380, 644, 404), 100);
}

TEST (Export, NothingOfARandomDocumentIsCut) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE (seed);
        const auto network = ostrand::testing::RandomDocument (seed).network ();
        network->update_shared_nodes ();
        for (const bool all_texts : {false, true}) {
            document_state ().show_stoichiometry = all_texts;
            network->layout ();
            const std::string text = drawing::svg_text (*network);
            EXPECT_EQ (ostrand::testing::read_svg_page (text).outside (), "");
        }
        document_state ().show_stoichiometry = false;
    }
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

TEST (Export, DamagedPictureIsLeftOutOfThePdfAndTheRestIsThere) {
    const TemporaryFolder folder;
    std::string png = ostrand::testing::red_png ();
    const std::string sound = folder.write ("sound.png", png);
    png.resize (40); // header and size, no pixels
    const std::string broken = folder.write ("broken.png", png);
    const auto network = network_of ("[N2 0 2 0 0[S1 0 100 100 0 7 5{[P2 9 9 " + broken +
                                     "]}-][S2 0 200 100 0 7 5{[P2 9 9 " + sound + "]}-]]");
    std::string error;
    const ostrand::testing::CaughtMessages messages;
    EXPECT_TRUE (drawing::export_pdf (*network, folder / "a.pdf", error)) << error;
    EXPECT_EQ (messages.all, std::vector<std::string>{"The picture '" + broken +
                                                      "' cannot be read and is left out."});
    EXPECT_EQ (folder.names (), (std::vector<std::string>{"a.pdf", "broken.png", "sound.png"}));
    const auto pdf = ostrand::testing::pdf_raster (folder / "a.pdf");
    if (!pdf) GTEST_SKIP () << "pdftoppm is not installed";
    int red = 0;
    for (int y = 0; y < pdf->height; ++y)
        for (int x = 0; x < pdf->width; ++x)
            red += pdf->at (x, y) == ostrand::testing::red_pixel ? 1 : 0;
    EXPECT_GE (red, 4); // of the sound picture, two by two
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
        const drawing::DrawingPage page = drawing::drawing_page (*network);
        drawing::PdfDevice pdf (static_cast<float> (page.width), static_cast<float> (page.height));
        drawing::paint_export (*network, pdf, page);
        EXPECT_FALSE (pdf.failed ());

        ostrand::testing::RecordingDevice first;
        drawing::paint_export (*network, first, page);
        EXPECT_EQ (count (first.joined (), "push "), count (first.joined (), "pop\n"));
        EXPECT_EQ (count (first.joined (), "\nclip "), count (first.joined (), "end_clip\n"));
        network->layout ();
        ostrand::testing::RecordingDevice second;
        drawing::paint_export (*network, second, page);
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
