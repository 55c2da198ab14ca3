// Drawings as pictures of pixels.
#include "export/png_export.h"

#include "document/document_state.h"
#include "document/markup.h"
#include "export/export.h"
#include "export/file_raster.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace ostrand::testing {
namespace {

using document::Network;

/// A species 40 by 20 with an outline of 2 around (x, 100); at 100 on a page of 133 by 122.
std::unique_ptr<Network> species_at (int x) {
    auto network = document::read_network ("[N1 0 2 0 0[S1 0 " + std::to_string (x) +
                                           " 100 0 7 5{<97F>AAAAA}-]]");
    network->update_shared_nodes ();
    network->layout ();
    return network;
}

constexpr Pixel black_pixel{0, 0, 0};

TEST (PngExport, is_the_svg_in_pixels_at_the_scale_asked_for) {
    const auto network = species_at (100);
    std::string error;
    for (const double scale : {1.0, 2.0, 0.5}) {
        const Raster picture = png_raster (drawing::png_bytes (*network, scale, error));
        EXPECT_EQ (error, "");
        EXPECT_EQ (picture.width, std::ceil (133 * scale));
        EXPECT_EQ (picture.height, std::ceil (122 * scale));
        const auto at = [&] (double x, double y) {
            return picture.at (static_cast<int> (x * scale), static_cast<int> (y * scale));
        };
        EXPECT_TRUE (at (5, 5) == white_pixel) << scale;      // the ground
        EXPECT_TRUE (at (100, 88.8) == black_pixel) << scale; // the outline
        EXPECT_TRUE (at (82, 108) == white_pixel) << scale;   // the species
    }
}

TEST (PngExport, scale_1_is_what_the_svg_shows) {
    const TemporaryFolder folder;
    const auto network = species_at (100);
    std::string error;
    ASSERT_TRUE (drawing::export_svg (*network, folder / "a.svg", error));
    const std::optional<Raster> expected = svg_raster (folder / "a.svg");
    if (!expected) GTEST_SKIP () << "rsvg-convert is not installed";
    EXPECT_EQ (png_raster (drawing::png_bytes (*network, 1, error)).rgb, expected->rgb);
}

TEST (PngExport, a_dark_drawing_has_a_dark_ground) {
    const auto network = species_at (100);
    document::document_state ().dark_mode = true;
    std::string error;
    const Raster picture = png_raster (drawing::png_bytes (*network, 1, error));
    document::document_state ().dark_mode = false;
    EXPECT_TRUE (picture.at (5, 5) == black_pixel);
}

TEST (PngExport, a_picture_that_is_too_large_is_refused_in_words) {
    const TemporaryFolder folder;
    const auto network = species_at (40000);
    std::string error;
    EXPECT_FALSE (drawing::export_png (*network, folder / "a.png", 1, error));
    EXPECT_EQ (error, "40033 x 122 pixels are too many");
    EXPECT_FALSE (std::filesystem::exists (folder / "a.png"));
}

TEST (PngExport, a_file_that_cannot_be_written_is_told_with_the_reason) {
    const auto network = species_at (100);
    std::string error;
    EXPECT_FALSE (drawing::export_png (*network, "/nowhere/a.png", 1, error));
    EXPECT_NE (error, "");
}

TEST (PngExport, a_scale_is_a_number_in_bounds) {
    std::string error;
    EXPECT_EQ (drawing::read_png_scale ("0.1", error), 0.1);
    EXPECT_EQ (drawing::read_png_scale ("20", error), 20);
    for (const char* wrong : {"", "0", "0.09", "20.1", "-1", "2x", " 2", "nan", "inf", "1e99"}) {
        error.clear ();
        EXPECT_FALSE (drawing::read_png_scale (wrong, error)) << wrong;
        EXPECT_EQ (error, "a scale is a number from 0.1 to 20");
    }
}

} // namespace
} // namespace ostrand::testing
