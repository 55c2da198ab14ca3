// The box around what is painted, for each primitive, held against the ink of a picture.
#include "export/bounds_device.h"
#include "export/export.h"
#include "export/file_raster.h"
#include "export/svg_device.h"
#include "support/random_document.h"
#include "support/support.h"
#include "support/svg_page.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace ostrand::drawing {

std::ostream& operator<< (std::ostream& out, const Bounds& b) {
    if (b.empty) return out << "nothing";
    return out << b.left << " " << b.top << " " << b.right << " " << b.bottom;
}

namespace {

using document::PaintDevice;
using Scene = std::function<void (PaintDevice&)>;

Bounds bounds_of (const Scene& scene) {
    BoundsDevice device;
    scene (device);
    return device.bounds ();
}

void expect_box (const Scene& scene, float left, float top, float right, float bottom) {
    const Bounds box = bounds_of (scene);
    EXPECT_FALSE (box.empty);
    EXPECT_NEAR (box.left, left, 0.01);
    EXPECT_NEAR (box.top, top, 0.01);
    EXPECT_NEAR (box.right, right, 0.01);
    EXPECT_NEAR (box.bottom, bottom, 0.01);
}

TEST (BoundsDevice, nothing_painted_has_no_bounds) {
    EXPECT_TRUE (bounds_of ([] (auto&) {}).empty);
    EXPECT_TRUE (bounds_of ([] (auto& device) {
                     device.set_color (1);
                     device.set_line (40, document::LineStyle::solid);
                     device.fill_rect (3, 4, 0, 10);
                     device.fill_ellipse (3, 4, 10, -1, 16);
                     device.draw_text (*document::font_metrics (67), "", 5, 5);
                     device.begin_group ();
                     device.end_group ();
                 }).empty);
}

TEST (BoundsDevice, fills_are_their_boxes_and_lines_half_their_width_more) {
    expect_box ([] (auto& device) { device.fill_rect (-3, 4, 10, 20); }, -3, 4, 7, 24);
    expect_box ([] (auto& device) { device.fill_round_rect (-3, 4, 10, 20, 5); }, -3, 4, 7, 24);
    expect_box ([] (auto& device) { device.fill_ellipse (-3, 4, 10, 20, 16); }, -3, 4, 7, 24);
    expect_box ([] (auto& device) { device.fill_chevron (-3, 4, 10, 20, 6); }, -3, 4, 7, 30);
    expect_box ([] (auto& device) { device.draw_picture ("x.png", -3, 4, 10, 20); }, -3, 4, 7, 24);
    expect_box ([] (auto& device) { device.shared_bar (-3, 4, 10, 20, 6); }, -3, 17, 7, 23);
    for (const auto& stroke : std::initializer_list<Scene>{
             [] (auto& device) { device.stroke_rect (-3, 4, 10, 20); },
             [] (auto& device) { device.stroke_round_rect (-3, 4, 10, 20, 5); },
             [] (auto& device) { device.stroke_ellipse (-3, 4, 10, 20, 16); }}) {
        expect_box (
            [&stroke] (auto& device) {
                device.set_line (4, document::LineStyle::solid);
                stroke (device);
            },
            -5, 2, 9, 26);
    }
}

TEST (BoundsDevice, text_has_the_height_of_its_font_and_the_width_of_its_letters) {
    const document::FontMetrics& font = *document::font_metrics (67);
    expect_box ([&font] (auto& device) { device.draw_text (font, "\xe9l", -2, 10); }, -2,
                static_cast<float> (10 - font.ascent),
                -2 + font.width_of (0xe9) + font.width_of ('l'),
                static_cast<float> (10 + font.descent));
}

TEST (BoundsDevice, a_letter_without_a_measure_counts_as_an_n) {
    const document::FontMetrics& font = *document::font_metrics (67);
    ASSERT_EQ (font.width_of (0xff), 0);
    expect_box ([&font] (auto& device) { device.draw_text (font, "\xff", -2, 10); }, -2,
                static_cast<float> (10 - font.ascent), -2 + font.width_of ('n'),
                static_cast<float> (10 + font.descent));
}

TEST (BoundsDevice, transforms_nest_and_end) {
    expect_box (
        [] (auto& device) {
            device.push_transform (100, 50, 90);
            device.push_transform (10, 0, 90);
            device.fill_rect (0, 0, 3, 2); // goes left and up from (100, 60)
            device.pop_transform ();
            device.pop_transform ();
        },
        97, 58, 100, 60);
    expect_box (
        [] (auto& device) {
            device.push_transform (100, 50, 90);
            device.pop_transform ();
            device.pop_transform (); // one too many does no harm
            device.fill_rect (1, 2, 3, 4);
        },
        1, 2, 4, 6);
}

TEST (BoundsDevice, turned_shapes_reach_as_far_as_they_do) {
    const auto turned = [] (const Scene& scene) {
        return [scene] (PaintDevice& device) {
            device.push_transform (0, 0, 45);
            scene (device);
            device.pop_transform ();
        };
    };
    const float root = std::sqrt (2.0F);
    expect_box (turned ([] (auto& device) { device.fill_rect (-5, -5, 10, 10); }), -5 * root,
                -5 * root, 5 * root, 5 * root);
    // A circle is as wide whichever way it is turned; round corners take a part of the reach.
    expect_box (turned ([] (auto& device) { device.fill_ellipse (-5, -5, 10, 10, 64); }), -5, -5, 5,
                5);
    const float reach = 3 * root + 2;
    expect_box (turned ([] (auto& device) { device.fill_round_rect (-5, -5, 10, 10, 2); }), -reach,
                -reach, reach, reach);
    expect_box (turned ([] (auto& device) { device.fill_triangle_head (10, 8, 0); }), -14 / root,
                -14 / root, 0, 0);
}

TEST (BoundsDevice, a_clip_takes_away_from_rounded_fills_until_it_ends) {
    expect_box (
        [] (auto& device) {
            device.set_clip (0, 10, 100, 5);
            device.fill_round_rect (-20, 0, 40, 40, 7);
            device.fill_ellipse (50, 50, 10, 10, 16); // wholly outside
            device.end_clip ();
        },
        0, 10, 20, 15);
    expect_box (
        [] (auto& device) {
            device.set_clip (0, 10, 100, 0); // lets nothing through
            device.fill_ellipse (-20, 0, 40, 40, 16);
            device.end_clip ();
            device.fill_ellipse (1, 2, 3, 4, 16);
        },
        1, 2, 4, 6);
}

TEST (BoundsDevice, places_that_are_no_numbers_are_passed_over) {
    const float infinite = std::numeric_limits<float>::infinity ();
    expect_box (
        [infinite] (auto& device) {
            device.fill_rect (infinite, 0, 10, 10);
            device.fill_rect (0, std::nanf (""), 10, 10);
            device.push_transform (0, 0, infinite);
            device.fill_rect (0, 0, 10, 10);
            device.pop_transform ();
            device.fill_rect (1, 2, 3, 4);
        },
        1, 2, 4, 6);
}

/// The box of the pixels that are not white.
Bounds ink_box (const ostrand::testing::Raster& raster) {
    Bounds box;
    for (int y = 0; y < raster.height; ++y)
        for (int x = 0; x < raster.width; ++x)
            if (!(raster.at (x, y) == ostrand::testing::white_pixel))
                box.join ({static_cast<float> (x), static_cast<float> (y),
                           static_cast<float> (x + 1), static_cast<float> (y + 1), false});
    return box;
}

/// Turned by many angles, an SVG of a scene has its ink where the device says, to the pixel.
void expect_ink (const Scene& scene) {
    for (const float angle : {0.0F, 17.0F, 45.0F, 90.0F, 160.0F, 233.0F, 301.0F}) {
        SCOPED_TRACE (angle);
        const Scene turned = [&scene, angle] (PaintDevice& device) {
            device.set_color (0);
            device.push_transform (100, 100, angle);
            scene (device);
            device.pop_transform ();
        };
        SvgDevice svg (200, 200);
        turned (svg);
        svg.end ();
        const ostrand::testing::TemporaryFolder folder;
        const auto raster = ostrand::testing::svg_raster (folder.write ("a.svg", svg.text ()));
        if (!raster) GTEST_SKIP () << "rsvg-convert is not installed";
        const Bounds ink = ink_box (*raster);
        const Bounds told = bounds_of (turned);
        ASSERT_FALSE (ink.empty);
        EXPECT_NEAR (ink.left, told.left, 1.2) << ink << " / " << told;
        EXPECT_NEAR (ink.top, told.top, 1.2) << ink << " / " << told;
        EXPECT_NEAR (ink.right, told.right, 1.2) << ink << " / " << told;
        EXPECT_NEAR (ink.bottom, told.bottom, 1.2) << ink << " / " << told;
    }
}

TEST (BoundsDevice, boxes_are_where_the_ink_is) {
    expect_ink ([] (auto& device) { device.fill_rect (-30, -10, 70, 25); });
    expect_ink ([] (auto& device) { device.fill_round_rect (-30, -10, 70, 25, 9); });
    expect_ink ([] (auto& device) { device.fill_ellipse (-30, -10, 70, 25, 64); });
    expect_ink ([] (auto& device) { device.fill_chevron (-30, -10, 70, 25, 12); });
    expect_ink ([] (auto& device) { device.fill_triangle_head (40, 30, 7); });
    expect_ink ([] (auto& device) {
        device.set_line (6, document::LineStyle::solid);
        device.stroke_rect (-30, -10, 70, 25);
    });
    expect_ink ([] (auto& device) {
        device.set_line (6, document::LineStyle::solid);
        device.stroke_ellipse (-30, -10, 70, 25, 64);
    });
}

TEST (BoundsDevice, corners_of_a_heads_outline_count) {
    expect_ink ([] (auto& device) { device.arrow_head (14, 10, 1); });
    expect_ink ([] (auto& device) { device.arrow_head (56, 40, 8); });
    expect_ink ([] (auto& device) { device.arrow_head (60, 18, 6); }); // too sharp for a corner
    // The tip of an ordinary head stands one and a half pixels beyond its point.
    EXPECT_NEAR (bounds_of ([] (auto& device) { device.arrow_head (14, 10, 1); }).right, 1.487,
                 0.001);
}

/// What the device says of whole pictures is what is read off their text.
TEST (BoundsDevice, random_pictures_have_the_bounds_that_their_text_has) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE (seed);
        const auto network = ostrand::testing::RandomDocument (seed).network ();
        network->update_shared_nodes ();
        network->layout ();
        BoundsDevice device;
        paint_export (*network, device, {});
        SvgDevice svg (0, 0);
        paint_export (*network, svg, {});
        Bounds read;
        const ostrand::testing::SvgPage page = ostrand::testing::read_svg_page (svg.text ());
        for (const auto* list : {&page.texts, &page.shapes})
            for (const auto& box : *list)
                if (box.left < box.right || list == &page.shapes) // a letter may have no shape
                    read.join ({static_cast<float> (box.left), static_cast<float> (box.top),
                                static_cast<float> (box.right), static_cast<float> (box.bottom),
                                false});
        // Half an outline of a head is not read off the text.
        EXPECT_NEAR (device.bounds ().left, read.left, 2);
        // Of a Greek label without a Greek letter the text only tells the lower Arial.
        EXPECT_GE (device.bounds ().top, read.top - 13);
        EXPECT_LE (device.bounds ().top, read.top + 0.02F);
        EXPECT_NEAR (device.bounds ().right, read.right, 2);
        EXPECT_NEAR (device.bounds ().bottom, read.bottom, 2);
    }
}

} // namespace
} // namespace ostrand::drawing
