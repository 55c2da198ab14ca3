// Curves on OpenGL: where they stand, in which order, and that thin ones make the picture of whole
// ones.
#include "viewer/curve_draw.h"

#include "support/off_screen.h"
#include "toolkit/gl_picture.h"
#include "viewer/plain_curves.h"
#include "viewer/sample_data.h"

#include <FL/gl.h>
#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::viewer {
namespace {

constexpr int width = 600;
constexpr int height = 400;

/// How much of each pixel's blue and green is gone: 0 paper, 255 the pure red of a curve.
struct Ink {
    std::vector<unsigned char> pixels;

    int at (int x, int y) const {
        return pixels[static_cast<std::size_t> (y) * width + static_cast<std::size_t> (x)];
    }
    /// The most within a pixel.
    int near (int x, int y) const {
        int most = 0;
        for (int py = std::max (y - 1, 0); py <= std::min (y + 1, height - 1); ++py) {
            for (int px = std::max (x - 1, 0); px <= std::min (x + 1, width - 1); ++px) {
                most = std::max (most, at (px, py));
            }
        }
        return most;
    }
};

struct curves : ::testing::Test {
    void SetUp () override {
        if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
        set_line_blending ();
    }
    Ink picture (const std::function<void ()>& draw) {
        clear_picture (sketch.size, false);
        use_scene_projection (sketch.state, layout);
        draw ();
        glFinish ();
        EXPECT_EQ (glGetError (), static_cast<GLenum> (GL_NO_ERROR));
        const std::vector<unsigned char> rgb = toolkit::read_gl_pixels (width, height);
        Ink ink;
        for (std::size_t i = 0; i < rgb.size (); i += 3) {
            ink.pixels.push_back (static_cast<unsigned char> (255 - rgb[i + 1]));
        }
        return ink;
    }
    Ink thin () {
        return picture ([this] { draw_curves (sketch.data, sketch.state, layout); });
    }
    Ink whole () {
        return picture ([this] { draw_plain_curves (sketch.data, sketch.state, layout); });
    }
    void prepare (ResultData data) {
        sketch = Sketch (std::move (data), width, height);
        std::fill (sketch.data.colours.begin (), sketch.data.colours.end (), 0xFF000000U);
        layout = sketch.layout (sketch.size.h ());
    }
    testing::OffScreen screen{width, height, 4};
    Sketch sketch{sample (1, 2, {}), width, height};
    ViewLayout layout;
};

/// Counts that wander, of so many species at as many values.
ResultData wandering (std::uint32_t species, std::uint32_t planes, std::uint32_t points,
                      double step) {
    std::vector<std::uint32_t> values;
    for (std::uint32_t p = 0; p < planes; ++p) values.push_back (602 * (p + 1));
    ResultData data = sample (species, points, values);
    std::mt19937 random (5);
    std::normal_distribution<double> normal;
    data.max = 0;
    double count = 0;
    for (std::size_t i = 0; i < data.counts.size (); ++i) {
        const double t = static_cast<double> (i % points) / points;
        const double mean = 3000 + 2500 * std::sin (7 * t + static_cast<double> (i / points));
        if (i % points == 0) count = mean;
        count = std::max (count + 0.05 * (mean - count) + step * normal (random), 0.0);
        data.counts[i] = static_cast<std::uint32_t> (count);
        data.max = std::max (data.max, data.counts[i]);
    }
    return data;
}

/// How far each pixel's middle is from the nearest point of a curve, up to 3.
std::vector<float> distances (const Sketch& sketch, const ViewLayout& layout) {
    std::vector<float> nearest (std::size_t{width} * height, 3.0F);
    const Camera camera (sketch.state, layout);
    const auto mark = [&nearest] (float x, float y) {
        for (int py = std::max (static_cast<int> (y) - 3, 0);
             py <= std::min (static_cast<int> (y) + 3, height - 1); ++py) {
            for (int px = std::max (static_cast<int> (x) - 3, 0);
                 px <= std::min (static_cast<int> (x) + 3, width - 1); ++px) {
                float& least =
                    nearest[static_cast<std::size_t> (py) * width + static_cast<std::size_t> (px)];
                least = std::min (least, std::hypot (static_cast<float> (px) + 0.5F - x,
                                                     static_cast<float> (py) + 0.5F - y));
            }
        }
    };
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        const std::uint32_t* counts = sketch.data.series (plane, 0);
        for (std::uint32_t t = 0; t + 1 < sketch.data.n_points; ++t) {
            const auto place = [&] (std::uint32_t at) {
                return *camera.project ({layout.x_of (at),
                                         layout.y_of (counts[at], sketch.state.scale),
                                         layout.z_of (plane)});
            };
            const Point2 a = place (t);
            const Point2 b = place (t + 1);
            const float steps = std::ceil (std::hypot (b.x - a.x, b.y - a.y) * 3) + 1;
            for (float k = 0; k <= steps; ++k) {
                mark (a.x + (b.x - a.x) * k / steps, a.y + (b.y - a.y) * k / steps);
            }
        }
    }
    return nearest;
}

TEST_F (curves, thin_ones_make_the_picture_of_whole_ones_within_a_pixel) {
    for (const double step : {0.0, 2.0, 20.0, 200.0}) {
        for (const std::uint32_t points : {50U, 400U, 3000U}) {
            for (const float turned : {0.0F, 70.0F, 160.0F}) {
                prepare (wandering (1, 3, points, step));
                sketch.state.rot_x += turned / 4;
                sketch.state.rot_y += turned;
                const Ink plain = whole ();
                const Ink fast = thin ();
                const std::vector<float> distance = distances (sketch, layout);
                int inked = 0;
                int lost = 0;
                int added = 0;
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < width; ++x) {
                        const float off = distance[static_cast<std::size_t> (y) * width +
                                                   static_cast<std::size_t> (x)];
                        // The plain drawing leaves gaps where pieces are far shorter than a
                        // pixel, and lines end sharply at peaks.
                        const bool on_curve = off < 0.5F && plain.near (x, y) > 0;
                        inked += on_curve;
                        lost += (on_curve || plain.at (x, y) > 200) && fast.near (x, y) < 120;
                        added += fast.at (x, y) > 200 && off > 2.4F;
                    }
                }
                EXPECT_GT (inked, 500);
                EXPECT_EQ (lost, 0) << step << ' ' << points << ' ' << turned;
                EXPECT_EQ (added, 0) << step << ' ' << points << ' ' << turned;
            }
        }
    }
}

TEST_F (curves, nearer_planes_are_drawn_over_farther_ones) {
    prepare (sample (1, 5, {602, 1204}));
    sketch.data.colours = {0x0000FF00};
    sketch.state.rot_x = 179.75F; // both planes stand on one line
    sketch.state.rot_y = 0;
    layout.depth = 0.001F;
    sketch.data.n_displayed = 2;
    sketch.data.colours = {0x00FF0000, 0xFF000000};
    sketch.data.names.push_back ("on top");
    sketch.data.counts.assign (20, 500);
    const Ink ink = thin ();
    int red = 0;
    for (const unsigned char pixel : ink.pixels) red += pixel > 200;
    EXPECT_GT (red, 300); // the species drawn last covers the first
}

TEST_F (curves, their_lines_are_two_units_wide) {
    for (const float unit : {1.0F, 1.5F, 2.0F}) {
        prepare (sample (1, 5, {}));
        sketch.state.rot_x = 180; // seen from the front, level
        sketch.state.rot_y = 0;
        layout.size.unit = unit;
        const Ink ink = thin ();
        float strength = 0;
        for (int y = 0; y < height; ++y) strength += static_cast<float> (ink.at (300, y)) / 255;
        EXPECT_NEAR (strength, 2 * unit, 0.3);
    }
}

TEST_F (curves, a_hidden_species_is_not_drawn) {
    prepare (sample (1, 5, {602, 1204}));
    sketch.state.visible.reset (0);
    const Ink ink = thin ();
    EXPECT_EQ (std::count_if (ink.pixels.begin (), ink.pixels.end (),
                              [] (unsigned char pixel) { return pixel > 20; }),
               0);
}

TEST_F (curves, the_selected_simulations_are_drawn) {
    prepare (wandering (1, 4, 50, 0));
    sketch.data.vars[0].nb = 2; // two planes of four simulations
    layout = sketch.layout (sketch.size.h ());
    const Ink first = thin ();
    sketch.state.selected_offset = 2;
    const Ink second = thin ();
    sketch.data.counts.erase (sketch.data.counts.begin (), sketch.data.counts.begin () + 100);
    sketch.state.selected_offset = 0;
    EXPECT_EQ (second.pixels, thin ().pixels);
    EXPECT_NE (first.pixels, second.pixels);
}

TEST_F (curves, smooth_edges_stay_where_a_pixel_has_one_sample_only) {
    const testing::OffScreen plain (width, height);
    if (!plain.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
    set_line_blending ();
    prepare (wandering (1, 1, 50, 0));
    const Ink ink = thin ();
    const auto between = std::count_if (ink.pixels.begin (), ink.pixels.end (),
                                        [] (unsigned char p) { return p > 40 && p < 200; });
    EXPECT_GT (between, 200);
    EXPECT_TRUE (glIsEnabled (GL_BLEND));
}

TEST_F (curves, a_patch_lets_a_third_of_what_is_behind_it_through) {
    prepare (sample (1, 5, {602, 1204}));
    const Ink ink = picture ([this] {
        use_flat_projection (sketch.size);
        glColor3ub (255, 0, 0);
        glRectf (0, 0, 100, 100);
        Scene scene;
        scene.patches.push_back ({{20, 20}, {40, 40}});
        draw_flat_parts (scene, false);
    });
    EXPECT_EQ (ink.at (50, 50), 255);
    EXPECT_NEAR (ink.at (30, 30), 255 * 0.3, 2);
    EXPECT_EQ (ink.at (19, 30), 255);
    EXPECT_EQ (ink.at (40, 30), 255);
}

TEST_F (curves, the_legend_stands_over_all_other_lines) {
    const Ink ink = picture ([this] {
        use_flat_projection (sketch.size);
        Scene scene;
        scene.legend_lines.push_back ({{{10, 20.5F}, {50, 20.5F}}, 0xFF000000, 3});
        scene.lines.push_back ({{{0, 20.5F}, {500, 20.5F}}, 0xC0C0C000, 1});
        draw_flat_parts (scene, false);
    });
    EXPECT_EQ (ink.at (30, 20), 255);
    EXPECT_EQ (ink.at (60, 20), 255 - 0xC0);
}

TEST_F (curves, lines_along_an_axis_are_at_full_strength) {
    const Ink ink = picture ([this] {
        use_flat_projection (sketch.size);
        Scene scene;
        scene.lines.push_back ({{{10, 20.5F}, {500, 20.5F}}, 0xFF000000, 3});
        scene.lines.push_back ({{{30.5F, 40}, {30.5F, 200}}, 0xFF000000, 1});
        draw_flat_parts (scene, false);
    });
    for (int x = 10; x < 500; ++x) {
        for (const int y : {19, 20, 21}) ASSERT_EQ (ink.at (x, y), 255) << x;
        EXPECT_EQ (ink.at (x, 18), 0);
        EXPECT_EQ (ink.at (x, 22), 0);
    }
    for (int y = 40; y < 200; ++y) {
        EXPECT_EQ (ink.at (30, y), 255);
        EXPECT_EQ (ink.at (29, y), 0);
        EXPECT_EQ (ink.at (31, y), 0);
    }
}

TEST_F (curves, the_frame_is_two_units_inside_the_window_and_sharp) {
    for (const float unit : {1.0F, 2.0F}) {
        sketch.size.unit = unit;
        const Ink ink = picture ([this] {
            use_flat_projection (sketch.size);
            draw_frame (sketch.size);
        });
        const int begin = static_cast<int> (2 * unit);
        const int end = static_cast<int> (3 * unit);
        for (int y = 0; y < 8; ++y) {
            const int strength = 255 - 0x4B;
            const bool inside = y >= begin && y < end;
            EXPECT_EQ (ink.at (300, y), inside ? strength : 0) << y << ' ' << unit;
            EXPECT_EQ (ink.at (300, height - 1 - y), inside ? strength : 0) << y;
            EXPECT_EQ (ink.at (y, 200), inside ? strength : 0) << y;
            EXPECT_EQ (ink.at (width - 1 - y, 200), inside ? strength : 0) << y;
        }
    }
}

} // namespace
} // namespace ostrand::viewer
