// What every paint device must do, told in pixels: one body, compiled for each device. A device's
// test gives a type with
//     static std::optional<Raster> paint (const std::function<void (PaintDevice&)>& scene);
// which paints a page of 100 x 100 white pixels; nothing when this machine cannot show it. Then
//     INSTANTIATE_TYPED_TEST_SUITE_P (Name, PaintDeviceContract, Type);
#pragma once
#include "document/paint_device.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace ostrand::testing {

struct Pixel {
    int red = 0;
    int green = 0;
    int blue = 0;
};

inline std::ostream& operator<< (std::ostream& out, const Pixel& p) {
    return out << "(" << p.red << " " << p.green << " " << p.blue << ")";
}

/// Alike but for what smoothing and colour arithmetic may change.
inline bool operator== (const Pixel& a, const Pixel& b) {
    return std::abs (a.red - b.red) <= 3 && std::abs (a.green - b.green) <= 3 &&
           std::abs (a.blue - b.blue) <= 3;
}

inline constexpr Pixel white_pixel{255, 255, 255};
inline constexpr Pixel red_pixel{255, 0, 0};
inline constexpr Pixel blue_pixel{0, 0, 255};

struct Raster {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb; // three bytes a pixel, rows from the top

    Pixel at (int x, int y) const {
        const auto place = 3 * (static_cast<std::size_t> (y) * static_cast<std::size_t> (width) +
                                static_cast<std::size_t> (x));
        return {rgb[place], rgb[place + 1], rgb[place + 2]};
    }
    /// Pixels in a box that are not white.
    int ink (int left, int top, int right, int bottom) const {
        int count = 0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x)
                if (!(at (x, y) == white_pixel)) ++count;
        return count;
    }
};

template <typename Device>
class PaintDeviceContract : public ::testing::Test {
  protected:
    using Scene = std::function<void (document::PaintDevice&)>;

    /// Paints a scene in red; false, with the test marked skipped, where there is nothing to show
    /// it with.
    bool paint (const Scene& scene) {
        const std::optional<Raster> painted =
            Device::paint ([&scene] (document::PaintDevice& device) {
                device.set_color (1);
                scene (device);
            });
        if (!painted) return false;
        raster_ = *painted;
        EXPECT_EQ (raster_.width, 100);
        EXPECT_EQ (raster_.height, 100);
        return raster_.width == 100 && raster_.height == 100;
    }
    Pixel at (int x, int y) const { return raster_.at (x, y); }

    Raster raster_;
};

TYPED_TEST_SUITE_P (PaintDeviceContract);

#define OSTRAND_PAINT(...)                                                                         \
    if (!this->paint (__VA_ARGS__)) {                                                              \
        if (this->HasFailure ()) return;                                                           \
        GTEST_SKIP () << "nothing here shows what the device painted";                             \
    }

TYPED_TEST_P (PaintDeviceContract, FilledRectangleCoversItsBoxAndNothingElse) {
    OSTRAND_PAINT ([] (auto& device) { device.fill_rect (20, 30, 40, 20); });
    EXPECT_EQ (this->at (22, 32), red_pixel);
    EXPECT_EQ (this->at (57, 46), red_pixel);
    EXPECT_EQ (this->at (18, 40), white_pixel);
    EXPECT_EQ (this->at (62, 40), white_pixel);
    EXPECT_EQ (this->at (40, 27), white_pixel);
    EXPECT_EQ (this->at (40, 52), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, ColoursAreIndicesBelow256AndRgbAbove) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_color (4);
        device.fill_rect (0, 0, 20, 20);
        device.set_color (0x12804000);
        device.fill_rect (30, 0, 20, 20);
        device.set_color_rgb (9, 200, 77);
        device.fill_rect (60, 0, 20, 20);
        device.set_color_alpha (200, 100, 0, 255);
        device.fill_rect (0, 30, 20, 20);
        device.set_color (56);
        device.fill_rect (30, 30, 20, 20);
    });
    EXPECT_EQ (this->at (10, 10), blue_pixel);
    EXPECT_EQ (this->at (40, 10), (Pixel{0x12, 0x80, 0x40}));
    EXPECT_EQ (this->at (70, 10), (Pixel{9, 200, 77}));
    EXPECT_EQ (this->at (10, 40), (Pixel{200, 100, 0}));
    EXPECT_EQ (this->at (40, 40), (Pixel{0, 0, 0}));
}

TYPED_TEST_P (PaintDeviceContract, StrokedRectangleIsHollow) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_line (4, document::LineStyle::solid);
        device.stroke_rect (20, 30, 40, 40);
    });
    EXPECT_EQ (this->at (20, 50), red_pixel);
    EXPECT_EQ (this->at (60, 50), red_pixel);
    EXPECT_EQ (this->at (40, 30), red_pixel);
    EXPECT_EQ (this->at (40, 70), red_pixel);
    EXPECT_EQ (this->at (40, 50), white_pixel);
    EXPECT_EQ (this->at (10, 50), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, RoundRectangleLeavesItsCornersFree) {
    OSTRAND_PAINT ([] (auto& device) { device.fill_round_rect (20, 20, 60, 60, 20); });
    EXPECT_EQ (this->at (50, 50), red_pixel);
    EXPECT_EQ (this->at (22, 50), red_pixel);
    EXPECT_EQ (this->at (50, 77), red_pixel);
    EXPECT_EQ (this->at (21, 21), white_pixel);
    EXPECT_EQ (this->at (78, 21), white_pixel);
    EXPECT_EQ (this->at (21, 78), white_pixel);
    EXPECT_EQ (this->at (78, 78), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, StrokedRoundRectangleIsHollow) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_line (4, document::LineStyle::solid);
        device.stroke_round_rect (20, 20, 60, 60, 6);
    });
    EXPECT_EQ (this->at (20, 50), red_pixel);
    EXPECT_EQ (this->at (50, 80), red_pixel);
    EXPECT_EQ (this->at (50, 50), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, EllipseFillsItsBoxButTheCorners) {
    OSTRAND_PAINT ([] (auto& device) { device.fill_ellipse (10, 30, 80, 40, 64); });
    EXPECT_EQ (this->at (50, 50), red_pixel);
    EXPECT_EQ (this->at (13, 50), red_pixel);
    EXPECT_EQ (this->at (87, 50), red_pixel);
    EXPECT_EQ (this->at (50, 32), red_pixel);
    EXPECT_EQ (this->at (50, 67), red_pixel);
    EXPECT_EQ (this->at (14, 33), white_pixel);
    EXPECT_EQ (this->at (86, 66), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, StrokedEllipseIsARing) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_line (4, document::LineStyle::solid);
        device.stroke_ellipse (20, 20, 60, 60, 90);
    });
    EXPECT_EQ (this->at (20, 50), red_pixel);
    EXPECT_EQ (this->at (50, 20), red_pixel);
    EXPECT_EQ (this->at (50, 50), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, TransformMovesThenTurnsClockwise) {
    OSTRAND_PAINT ([] (auto& device) {
        device.push_transform (50, 40, 90);
        device.fill_rect (10, -5, 30, 12);
        device.pop_transform ();
        device.set_color (4);
        device.fill_rect (0, 0, 10, 10);
    });
    EXPECT_EQ (this->at (50, 60), red_pixel);
    EXPECT_EQ (this->at (50, 75), red_pixel);
    EXPECT_EQ (this->at (70, 40), white_pixel);
    EXPECT_EQ (this->at (50, 45), white_pixel);
    EXPECT_EQ (this->at (5, 5), blue_pixel);
}

TYPED_TEST_P (PaintDeviceContract, TransformsNest) {
    OSTRAND_PAINT ([] (auto& device) {
        device.push_transform (50, 50, 0);
        device.push_transform (20, 0, 180);
        device.fill_rect (0, -6, 10, 12);
        device.pop_transform ();
        device.set_color (4);
        device.fill_rect (-40, -6, 10, 12);
        device.pop_transform ();
    });
    EXPECT_EQ (this->at (65, 50), red_pixel);
    EXPECT_EQ (this->at (75, 50), white_pixel);
    EXPECT_EQ (this->at (15, 50), blue_pixel);
}

TYPED_TEST_P (PaintDeviceContract, TriangleHeadPointsAlongTheArc) {
    OSTRAND_PAINT ([] (auto& device) {
        device.push_transform (50, 50, 0);
        device.fill_triangle_head (40, 30, 20);
        device.pop_transform ();
    });
    EXPECT_EQ (this->at (66, 50), red_pixel);
    EXPECT_EQ (this->at (33, 42), red_pixel);
    EXPECT_EQ (this->at (33, 57), red_pixel);
    EXPECT_EQ (this->at (73, 50), white_pixel);
    EXPECT_EQ (this->at (60, 42), white_pixel);
    EXPECT_EQ (this->at (27, 50), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, BarbedHeadHasANotchAQuarterDeep) {
    OSTRAND_PAINT ([] (auto& device) {
        device.push_transform (70, 50, 0);
        device.arrow_head (40, 30, 1);
        device.pop_transform ();
    });
    EXPECT_EQ (this->at (60, 50), red_pixel);
    EXPECT_EQ (this->at (45, 50), red_pixel);
    EXPECT_EQ (this->at (34, 39), red_pixel);
    EXPECT_EQ (this->at (34, 60), red_pixel);
    EXPECT_EQ (this->at (34, 50), white_pixel);
    EXPECT_EQ (this->at (76, 50), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, ChevronBendsTopAndBottomDown) {
    OSTRAND_PAINT ([] (auto& device) { device.fill_chevron (20, 30, 60, 30, 16); });
    EXPECT_EQ (this->at (50, 38), white_pixel);
    EXPECT_EQ (this->at (50, 55), red_pixel);
    EXPECT_EQ (this->at (50, 71), red_pixel);
    EXPECT_EQ (this->at (23, 36), red_pixel);
    EXPECT_EQ (this->at (77, 36), red_pixel);
    EXPECT_EQ (this->at (23, 68), white_pixel);
    EXPECT_EQ (this->at (77, 68), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, TextStandsOnItsBasePoint) {
    const document::FontMetrics& font =
        *document::font_metrics (document::font_key (2, true, false, 6));
    OSTRAND_PAINT ([&font] (auto& device) { device.draw_text (font, "HH", 30, 60); });
    const int width = static_cast<int> (2 * font.width_of ('H'));
    EXPECT_GT (this->raster_.ink (30, 60 - font.ascent, 30 + width, 61), 60);
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 60 - font.ascent - 1), 0);
    EXPECT_EQ (this->raster_.ink (0, 62, 100, 100), 0);
    EXPECT_EQ (this->raster_.ink (0, 0, 28, 100), 0);
    EXPECT_EQ (this->raster_.ink (30 + width + 3, 0, 100, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, EmptyTextDrawsNothing) {
    OSTRAND_PAINT ([] (auto& device) {
        device.draw_text (*document::font_metrics (document::start_font), "", 30, 60);
    });
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, ClipHoldsUntilItEnds) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_clip (0, 0, 50, 100);
        device.fill_ellipse (20, 10, 60, 30, 64);
        device.fill_round_rect (20, 45, 60, 20, 4);
        device.end_clip ();
        device.fill_ellipse (20, 70, 60, 20, 64);
    });
    EXPECT_EQ (this->at (40, 25), red_pixel);
    EXPECT_EQ (this->at (60, 25), white_pixel);
    EXPECT_EQ (this->at (40, 55), red_pixel);
    EXPECT_EQ (this->at (60, 55), white_pixel);
    EXPECT_EQ (this->at (60, 80), red_pixel);
}

TYPED_TEST_P (PaintDeviceContract, SharedBarLiesAtFourFifths) {
    OSTRAND_PAINT ([] (auto& device) { device.shared_bar (20, 20, 60, 50, 6); });
    EXPECT_EQ (this->at (50, 60), red_pixel);
    EXPECT_EQ (this->at (22, 60), red_pixel);
    EXPECT_EQ (this->at (50, 50), white_pixel);
    EXPECT_EQ (this->at (50, 68), white_pixel);
    EXPECT_EQ (this->at (85, 60), white_pixel);
}

/// A PNG of 2 x 2 red pixels.
inline std::string red_png () {
    static constexpr unsigned char bytes[] = {
        0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44,
        0x52, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x08, 0x02, 0x00, 0x00, 0x00, 0xfd,
        0xd4, 0x9a, 0x73, 0x00, 0x00, 0x00, 0x10, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9c, 0x63, 0xf8,
        0xcf, 0xc0, 0x00, 0x44, 0x0c, 0x10, 0x0a, 0x00, 0x1f, 0xee, 0x03, 0xfd, 0x8b, 0x5f, 0x14,
        0xd4, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82};
    return {reinterpret_cast<const char*> (bytes), sizeof bytes};
}

TYPED_TEST_P (PaintDeviceContract, PictureFillsItsBox) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("red.png", red_png ());
    OSTRAND_PAINT ([&path] (auto& device) { device.draw_picture (path, 20, 30, 40, 40); });
    EXPECT_EQ (this->at (40, 50), red_pixel);
    EXPECT_EQ (this->at (24, 34), red_pixel);
    EXPECT_EQ (this->at (56, 66), red_pixel);
    EXPECT_EQ (this->at (15, 50), white_pixel);
    EXPECT_EQ (this->at (40, 75), white_pixel);
}

// Arguments that no device has a form of its own for.

TYPED_TEST_P (PaintDeviceContract, AnyRadiusRoundsACornerByThatMuch) {
    OSTRAND_PAINT ([] (auto& device) {
        device.fill_round_rect (5, 5, 40, 40, 9);
        device.fill_round_rect (55, 5, 40, 40, 17);
        device.fill_round_rect (5, 55, 40, 40, 0);
        device.fill_round_rect (55, 55, 40, 40, -7); // as good as none
    });
    // A corner of radius r leaves 0.29 r of the diagonal free.
    EXPECT_EQ (this->at (5, 5), white_pixel);
    EXPECT_EQ (this->at (9, 9), red_pixel);
    EXPECT_EQ (this->at (57, 7), white_pixel);
    EXPECT_EQ (this->at (61, 11), red_pixel);
    EXPECT_EQ (this->at (75, 6), red_pixel);
    EXPECT_EQ (this->at (92, 42), white_pixel);
    for (const int x : {6, 56}) {
        EXPECT_EQ (this->at (x, 56), red_pixel);
        EXPECT_EQ (this->at (x + 37, 56), red_pixel);
        EXPECT_EQ (this->at (x, 56 + 37), red_pixel);
        EXPECT_EQ (this->at (x + 37, 56 + 37), red_pixel);
    }
}

TYPED_TEST_P (PaintDeviceContract, RadiusBeyondHalfTheBoxRoundsItsEndsAndStaysInside) {
    OSTRAND_PAINT ([] (auto& device) {
        device.fill_round_rect (20, 10, 60, 20, 500);
        device.set_line (2, document::LineStyle::solid);
        device.stroke_round_rect (20, 50, 60, 30, 500);
    });
    EXPECT_EQ (this->at (50, 20), red_pixel);
    EXPECT_EQ (this->at (50, 12), red_pixel);
    EXPECT_EQ (this->at (23, 20), red_pixel);
    EXPECT_EQ (this->at (21, 11), white_pixel);
    EXPECT_EQ (this->at (78, 28), white_pixel);
    EXPECT_EQ (this->at (50, 65), white_pixel);
    EXPECT_EQ (this->at (20, 65), red_pixel);
    EXPECT_EQ (this->at (50, 50), red_pixel);
    EXPECT_EQ (this->at (20, 50), white_pixel);
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 9), 0);
    EXPECT_EQ (this->raster_.ink (0, 32, 100, 48), 0);
    EXPECT_EQ (this->raster_.ink (0, 0, 18, 100) + this->raster_.ink (82, 0, 100, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, AnyNumberOfSidesMakesAnEllipse) {
    OSTRAND_PAINT ([] (auto& device) {
        int x = 0;
        for (const int steps : {-4, 0, 1, 1000000}) {
            device.fill_ellipse (static_cast<float> (x), 20, 20, 60, steps);
            x += 25;
        }
    });
    for (int x = 0; x < 100; x += 25) {
        EXPECT_EQ (this->at (x + 10, 50), red_pixel);
        EXPECT_EQ (this->raster_.ink (x + 21, 0, x + 25, 100), 0);
    }
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 19) + this->raster_.ink (0, 82, 100, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, ShapesWithoutASizeDoNoHarm) {
    OSTRAND_PAINT ([] (auto& device) {
        for (const float size : {0.0F, -5.0F}) {
            device.fill_rect (10, 10, size, 5);
            device.stroke_rect (10, 10, 5, size);
            device.fill_round_rect (10, 10, size, size, 4);
            device.stroke_round_rect (10, 10, size, 5, 4);
            device.fill_ellipse (10, 10, 5, size, 16);
            device.stroke_ellipse (10, 10, size, 5, 16);
        }
        device.fill_rect (50, 50, 30, 30);
    });
    EXPECT_EQ (this->at (65, 65), red_pixel);
    EXPECT_EQ (this->raster_.ink (30, 0, 100, 48), 0);
    EXPECT_EQ (this->raster_.ink (0, 30, 48, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, DashedLineLiesWhereTheSolidOneWouldAndEndsWithItsStyle) {
    OSTRAND_PAINT ([] (auto& device) {
        for (const float width : {1.0F, 5.0F}) {
            device.set_line (width, document::LineStyle::dashed);
            device.stroke_rect (10, 10 + 20 * (width - 1), 80, 4); // a device may draw it solid
        }
        device.set_line (2, document::LineStyle::solid);
        device.stroke_rect (10, 40, 80, 50);
    });
    EXPECT_GT (this->raster_.ink (5, 5, 95, 20), 40);
    EXPECT_GT (this->raster_.ink (5, 85, 95, 100), 40);
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 8) + this->raster_.ink (0, 17, 100, 38), 0);
    for (int x = 12; x < 88; ++x) EXPECT_FALSE (this->at (x, 40) == white_pixel) << x;
    for (int y = 42; y < 84; ++y) EXPECT_FALSE (this->at (10, y) == white_pixel) << y;
}

TYPED_TEST_P (PaintDeviceContract, DashesAreForLinesAndNotForFills) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_line (3, document::LineStyle::dashed);
        device.fill_rect (10, 10, 30, 30);
        device.fill_ellipse (50, 10, 40, 30, 64);
        device.push_transform (50, 70, 0);
        device.fill_triangle_head (40, 30, 20);
        device.pop_transform ();
        device.set_line (1, document::LineStyle::solid);
    });
    EXPECT_EQ (this->raster_.ink (12, 12, 38, 36), 26 * 24);
    EXPECT_EQ (this->at (70, 25), red_pixel);
    EXPECT_EQ (this->at (35, 70), red_pixel);
}

TYPED_TEST_P (PaintDeviceContract, UnreasonableLineWidthsDoNoHarm) {
    OSTRAND_PAINT ([] (auto& device) {
        for (const float width : {-3.0F, 0.0F}) {
            device.set_line (width, document::LineStyle::solid);
            device.stroke_rect (10, 10, 20, 20);
        }
        device.set_line (4, document::LineStyle::solid);
        device.stroke_rect (50, 50, 30, 30);
    });
    EXPECT_EQ (this->at (50, 65), red_pixel);
    EXPECT_EQ (this->at (65, 65), white_pixel);
    EXPECT_EQ (this->at (20, 20), white_pixel);
}

/// A clip counts for what is rounded; other shapes may pass it.
TYPED_TEST_P (PaintDeviceContract, ClipWithoutASizeLetsNothingThrough) {
    OSTRAND_PAINT ([] (auto& device) {
        for (const float size : {0.0F, -30.0F}) {
            device.set_clip (40, 40, size, 40);
            device.fill_ellipse (10, 10, 80, 80, 64);
            device.end_clip ();
            device.set_clip (40, 40, 40, size);
            device.fill_round_rect (10, 10, 80, 80, 7);
            device.end_clip ();
        }
    });
    EXPECT_EQ (this->raster_.ink (0, 0, 100, 100), 0);
}

TYPED_TEST_P (PaintDeviceContract, ClipBesideAShapeAndBeyondThePage) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_clip (70, 70, 20, 20);
        device.fill_ellipse (10, 10, 30, 30, 64); // wholly outside
        device.end_clip ();
        device.set_clip (-500, -500, 2000, 2000);
        device.fill_round_rect (50, 10, 30, 30, 5); // wholly inside
        device.end_clip ();
        device.set_clip (-20, 60, 40.25F, 100); // reaches over the page's edges
        device.fill_ellipse (0, 50, 60, 40, 64);
        device.end_clip ();
    });
    EXPECT_EQ (this->raster_.ink (0, 0, 45, 45), 0);
    EXPECT_EQ (this->at (65, 25), red_pixel);
    EXPECT_EQ (this->at (78, 25), red_pixel);
    EXPECT_EQ (this->at (18, 70), red_pixel);
    EXPECT_EQ (this->at (23, 70), white_pixel);
    EXPECT_EQ (this->at (18, 57), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, ClipsFollowOneAnother) {
    OSTRAND_PAINT ([] (auto& device) {
        for (int i = 0; i < 5; ++i) {
            device.set_clip (static_cast<float> (20 * i), 0, 10, 100);
            device.fill_ellipse (-100, -100, 300, 300, 64);
            device.end_clip ();
        }
    });
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ (this->at (20 * i + 5, 50), red_pixel) << i;
        EXPECT_EQ (this->at (20 * i + 15, 50), white_pixel) << i;
    }
}

TYPED_TEST_P (PaintDeviceContract, TurnedPolygonsStandAsTheyAreTurned) {
    OSTRAND_PAINT ([] (auto& device) {
        device.push_transform (50, 45, 90); // points down
        device.fill_triangle_head (40, 30, 0);
        device.pop_transform ();
        device.push_transform (95, 50, 180); // upside down: bent upwards
        device.fill_chevron (0, 0, 30, 20, 12);
        device.pop_transform ();
        device.push_transform (20, 80, -45); // up to the right
        device.fill_rect (0, -3, 40, 6);
        device.pop_transform ();
        device.push_transform (95, 95, 45);
        device.arrow_head (30, 20, 1);
        device.pop_transform ();
    });
    EXPECT_EQ (this->at (50, 35), red_pixel);
    EXPECT_EQ (this->at (40, 8), red_pixel);
    EXPECT_EQ (this->at (60, 8), red_pixel);
    EXPECT_EQ (this->at (41, 35), white_pixel);
    EXPECT_EQ (this->at (50, 48), white_pixel);
    EXPECT_EQ (this->at (80, 21), red_pixel);
    EXPECT_EQ (this->at (68, 44), red_pixel);
    EXPECT_EQ (this->at (80, 44), white_pixel);
    EXPECT_EQ (this->at (67, 22), white_pixel);
    EXPECT_EQ (this->at (33, 65), red_pixel);
    EXPECT_EQ (this->at (44, 54), red_pixel);
    EXPECT_EQ (this->at (34, 75), white_pixel);
    EXPECT_EQ (this->at (25, 66), white_pixel);
    EXPECT_EQ (this->at (90, 90), red_pixel);
    EXPECT_EQ (this->at (74, 82), red_pixel); // a barb
    EXPECT_EQ (this->at (76, 76), white_pixel);
}

TYPED_TEST_P (PaintDeviceContract, WhatIsSetInsideATransformOrAClipHoldsBehindIt) {
    OSTRAND_PAINT ([] (auto& device) {
        device.set_line (1, document::LineStyle::solid);
        device.push_transform (0, 0, 0);
        device.set_color (4);
        device.set_line (6, document::LineStyle::solid);
        device.pop_transform ();
        device.fill_rect (5, 5, 20, 20);
        device.stroke_rect (40, 10, 40, 20);
        device.set_clip (0, 0, 100, 100);
        device.set_color (1);
        device.end_clip ();
        device.fill_ellipse (5, 50, 30, 30, 64);
    });
    EXPECT_EQ (this->at (15, 15), blue_pixel);
    EXPECT_EQ (this->at (41, 20), blue_pixel);
    EXPECT_EQ (this->at (38, 20), blue_pixel);
    EXPECT_EQ (this->at (20, 65), red_pixel);
}

REGISTER_TYPED_TEST_SUITE_P (PaintDeviceContract, FilledRectangleCoversItsBoxAndNothingElse,
                             ColoursAreIndicesBelow256AndRgbAbove, StrokedRectangleIsHollow,
                             RoundRectangleLeavesItsCornersFree, StrokedRoundRectangleIsHollow,
                             EllipseFillsItsBoxButTheCorners, StrokedEllipseIsARing,
                             TransformMovesThenTurnsClockwise, TransformsNest,
                             TriangleHeadPointsAlongTheArc, BarbedHeadHasANotchAQuarterDeep,
                             ChevronBendsTopAndBottomDown, TextStandsOnItsBasePoint,
                             EmptyTextDrawsNothing, ClipHoldsUntilItEnds, SharedBarLiesAtFourFifths,
                             PictureFillsItsBox, AnyRadiusRoundsACornerByThatMuch,
                             RadiusBeyondHalfTheBoxRoundsItsEndsAndStaysInside,
                             AnyNumberOfSidesMakesAnEllipse, ShapesWithoutASizeDoNoHarm,
                             DashedLineLiesWhereTheSolidOneWouldAndEndsWithItsStyle,
                             DashesAreForLinesAndNotForFills, UnreasonableLineWidthsDoNoHarm,
                             ClipWithoutASizeLetsNothingThrough, ClipBesideAShapeAndBeyondThePage,
                             ClipsFollowOneAnother, TurnedPolygonsStandAsTheyAreTurned,
                             WhatIsSetInsideATransformOrAClipHoldsBehindIt);

#undef OSTRAND_PAINT

} // namespace ostrand::testing
