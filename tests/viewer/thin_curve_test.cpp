// Thin curves against whole ones: nowhere farther apart than a pixel, and cheap.
#include "viewer/thin_curve.h"

#include "viewer/sample_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::viewer {
namespace {

using Counts = std::vector<std::uint32_t>;

/// A view of one series.
struct View {
    explicit View (Counts series, std::uint32_t shown_planes = 1)
        : counts (std::move (series)), planes (shown_planes) {
        data = sample (1, static_cast<std::uint32_t> (counts.size ()), {});
        data.max = *std::max_element (counts.begin (), counts.end ());
        initial_pan (state, size);
    }
    const std::vector<CurvePiece>& thin (std::uint32_t plane = 0) {
        layout = layout_of (data, state, size, scaled_width (size.unit));
        layout.planes = planes;
        thinner.emplace (state, layout);
        return thinner->thin (counts, plane);
    }
    void fit () { state.scale = fitting_scale (size.h (), data.max); }

    Counts counts;
    ResultData data;
    ViewState state;
    ViewSize size = ViewSize::of (900, 600, 1);
    std::uint32_t planes;
    ViewLayout layout;
    std::optional<CurveThinner> thinner;
};

Counts constant (std::size_t points, std::uint32_t count) { return Counts (points, count); }

/// Counts that wander about a mean, as those of a stochastic run do.
Counts noisy (std::size_t points, double mean, double step, std::uint32_t seed = 1) {
    std::mt19937 random (seed);
    std::normal_distribution<double> normal;
    Counts counts;
    double count = mean;
    for (std::size_t i = 0; i < points; ++i) {
        count = std::max (count + 0.05 * (mean - count) + step * normal (random), 0.0);
        counts.push_back (static_cast<std::uint32_t> (count));
    }
    return counts;
}

TEST (thin_curve, a_straight_series_is_one_piece_in_512_seconds) {
    View view (constant (1025, 700));
    view.fit ();
    const auto pieces = view.thin ();
    ASSERT_EQ (pieces.size (), 2U);
    EXPECT_EQ (pieces[0].a.x, view.layout.x_of (0));
    EXPECT_EQ (pieces[0].b.x, view.layout.x_of (512));
    EXPECT_EQ (pieces[1].a.x, view.layout.x_of (512));
    EXPECT_EQ (pieces[1].b.x, view.layout.x_of (1024));
    EXPECT_EQ (pieces[1].b.y, view.layout.y_of (700, view.state.scale));
    Counts slope;
    for (std::uint32_t i = 0; i < 513; ++i) slope.push_back (3 * i);
    View rising (slope);
    rising.fit ();
    EXPECT_EQ (rising.thin ().size (), 1U);
}

TEST (thin_curve, a_corner_is_kept) {
    Counts counts = constant (300, 100);
    for (std::size_t i = 200; i < 300; ++i) counts[i] = 1000;
    View view (counts);
    view.fit ();
    const auto pieces = view.thin ();
    ASSERT_EQ (pieces.size (), 3U);
    EXPECT_EQ (pieces[0].b.x, view.layout.x_of (199));
    EXPECT_EQ (pieces[1].b.x, view.layout.x_of (200));
    EXPECT_EQ (pieces[1].b.y, view.layout.y_of (1000, view.state.scale));
}

TEST (thin_curve, points_that_stand_apart_are_drawn_as_they_are) {
    Counts counts;
    for (std::uint32_t i = 0; i < 200; ++i) counts.push_back (i % 2 == 0 ? 1000 : 2500 + i);
    View view (counts);
    view.fit ();
    const auto pieces = view.thin ();
    ASSERT_EQ (pieces.size (), 199U);
    for (std::uint32_t i = 0; i < 199; ++i) {
        EXPECT_EQ (pieces[i].a.x, view.layout.x_of (i));
        EXPECT_EQ (pieces[i].a.y, view.layout.y_of (counts[i], view.state.scale));
        EXPECT_EQ (pieces[i].b.x, view.layout.x_of (i + 1));
    }
}

TEST (thin_curve, less_than_two_points_are_no_line) {
    View one (constant (1, 5));
    one.fit ();
    EXPECT_TRUE (one.thin ().empty ());
    EXPECT_TRUE (one.thinner->thin ({}, 0).empty ());
    View two (constant (2, 5));
    two.fit ();
    EXPECT_EQ (two.thin ().size (), 1U);
}

TEST (thin_curve, a_noisy_series_costs_by_the_pixels_that_it_covers) {
    for (const double step : {2.0, 40.0, 300.0}) {
        View view (noisy (10000, 3000, step));
        view.fit ();
        const std::size_t pieces = view.thin ().size ();
        const Camera camera (view.state, view.layout);
        const float width = camera.project ({view.layout.x_of (9999), 300, 0})->x -
                            camera.project ({view.layout.x_of (0), 300, 0})->x;
        EXPECT_LT (static_cast<float> (pieces), 2 * width) << step;
        EXPECT_GT (static_cast<float> (pieces), 0.5F * width) << step;
    }
}

TEST (thin_curve, what_lies_outside_the_window_is_one_piece_in_512_seconds) {
    const Counts counts = noisy (5000, 3000, 100);
    for (const Point2 pan :
         {Point2{4000, 0}, Point2{-4000, 0}, Point2{0, 4000}, Point2{0, -4000}}) {
        View view (counts);
        view.fit ();
        view.state.pan_x += pan.x;
        view.state.pan_y += pan.y;
        EXPECT_EQ (view.thin ().size (), 10U) << pan.x << ' ' << pan.y;
    }
    View just_one (noisy (513, 3000, 100));
    just_one.fit ();
    just_one.state.pan_x += 4000;
    EXPECT_EQ (just_one.thin ().size (), 1U);
    View behind (counts);
    behind.fit ();
    behind.state.dist = 90000;
    EXPECT_EQ (behind.thin ().size (), 10U);
}

TEST (thin_curve, a_curve_beside_the_window_is_fine_as_far_as_its_line_may_reach) {
    Counts counts;
    for (std::uint32_t i = 0; i < 512; ++i) counts.push_back (i % 2);
    for (const float unit : {1.0F, 2.0F}) {
        // Seen from the front, level; the highest point so many units over the window's top.
        const auto pieces = [&] (float over) {
            View view (counts);
            view.size = ViewSize::of (900, 600, unit);
            initial_pan (view.state, view.size);
            view.state.rot_x = 180;
            view.state.rot_y = 0;
            view.state.scale = 1;
            view.thin ();
            const float wanted = -over * unit;
            for (int i = 0; i < 20; ++i) {
                const Camera camera (view.state, view.layout);
                const float top = camera.project ({450, view.layout.y_of (0, 1), 0})->y;
                view.state.pan_y += (wanted - top);
            }
            return view.thin ().size ();
        };
        EXPECT_GT (pieces (7), 100U) << unit;
        EXPECT_EQ (pieces (9), 1U) << unit;
    }
}

TEST (thin_curve, a_curve_that_reaches_behind_the_eye_is_whole_there) {
    View view (noisy (20000, 3000, 100)); // 2000 pixels long
    view.fit ();
    view.state.fov = 90;
    view.state.dist = -20000;
    view.state.rot_y = -100;
    EXPECT_GT (view.thin ().size (), 1000U);
}

double distance_to_segment (Point2 p, Point2 a, Point2 b) {
    const auto x = static_cast<double> (b.x - a.x);
    const auto y = static_cast<double> (b.y - a.y);
    const auto px = static_cast<double> (p.x - a.x);
    const auto py = static_cast<double> (p.y - a.y);
    const double square = x * x + y * y;
    const double part = square > 0 ? std::clamp ((px * x + py * y) / square, 0.0, 1.0) : 0;
    return std::hypot (px - part * x, py - part * y);
}

/// Pieces of a curve as they stand in the window; those near or behind the eye are left out.
std::vector<CurvePiece> in_window (const std::vector<CurvePiece>& pieces, const Camera& camera,
                                   float z) {
    std::vector<CurvePiece> seen;
    for (const CurvePiece& piece : pieces) {
        const Point3 a{piece.a.x, piece.a.y, z};
        const Point3 b{piece.b.x, piece.b.y, z};
        if (camera.at (a).w < 1 || camera.at (b).w < 1) continue;
        seen.push_back ({*camera.project (a), *camera.project (b)});
    }
    return seen;
}

/// The largest distance of points of these lines inside the window from the nearest of the others.
double farthest (const std::vector<CurvePiece>& lines, const std::vector<CurvePiece>& others,
                 const ViewSize& size) {
    double most = 0;
    std::size_t near = 0; // the nearest of the last point is tried first
    for (const CurvePiece& line : lines) {
        const double length = std::hypot (static_cast<double> (line.b.x - line.a.x),
                                          static_cast<double> (line.b.y - line.a.y));
        const int steps = static_cast<int> (std::clamp (length / 0.7, 1.0, 2000.0));
        for (int k = 0; k <= steps; ++k) {
            const float part = static_cast<float> (k) / static_cast<float> (steps);
            const Point2 p{line.a.x + part * (line.b.x - line.a.x),
                           line.a.y + part * (line.b.y - line.a.y)};
            if (p.x < 0 || p.y < 0 || p.x > size.w || p.y > size.hp) continue;
            double least = 1e9;
            const std::size_t start = near;
            for (std::size_t i = 0; i < others.size () && least > most; ++i) {
                const std::size_t at = (start + i) % others.size ();
                const double distance = distance_to_segment (p, others[at].a, others[at].b);
                if (distance >= least) continue;
                least = distance;
                near = at;
            }
            most = std::max (most, least);
        }
    }
    return most;
}

/// A series of some kind: smooth, noisy, in steps, with spikes.
Counts random_series (std::mt19937& random) {
    const auto number = [&random] (double least, double most) {
        return std::uniform_real_distribution<double> (least, most) (random);
    };
    const auto points = static_cast<std::size_t> (std::exp (number (0.7, 9)));
    const double mean = std::exp (number (1, 12));
    Counts counts;
    switch (random () % 4) {
    case 0: {
        const double period = number (5, 2000);
        for (std::size_t i = 0; i < points; ++i) {
            counts.push_back (static_cast<std::uint32_t> (
                mean * (1 + std::sin (static_cast<double> (i) / period))));
        }
        break;
    }
    case 1:
        counts = noisy (points, mean, mean * std::exp (number (-6, 0)),
                        static_cast<std::uint32_t> (random ()));
        break;
    case 2: {
        std::uint32_t level = 0;
        for (std::size_t i = 0; i < points; ++i) {
            if (random () % 20 == 0) level = static_cast<std::uint32_t> (number (0, mean));
            counts.push_back (level);
        }
        break;
    }
    default:
        for (std::size_t i = 0; i < points; ++i) {
            const double count = random () % 10 == 0 ? number (0, mean) : mean / 2;
            counts.push_back (static_cast<std::uint32_t> (count));
        }
    }
    return counts;
}

TEST (thin_curve, no_curve_and_no_view_makes_a_difference_of_more_than_a_pixel) {
    std::mt19937 random (7);
    const auto number = [&random] (float least, float most) {
        return std::uniform_real_distribution<float> (least, most) (random);
    };
    std::size_t whole_pieces = 0;
    std::size_t thin_pieces = 0;
    for (int round = 0; round < 300; ++round) {
        View view (random_series (random), 4);
        view.size = ViewSize::of (static_cast<int> (number (300, 1600)),
                                  static_cast<int> (number (300, 1000)), number (1, 2));
        initial_pan (view.state, view.size);
        view.fit ();
        if (round % 3 != 0) {
            view.state.scale *= number (0.3F, 3);
            view.state.rot_x = number (-180, 180);
            view.state.rot_y = number (-180, 180);
            view.state.fov = number (1, 40);
            view.state.dist = number (-90000, -20000);
            view.state.pan_x += number (-100, 100);
            view.state.pan_y += number (-100, 100);
        }
        const std::uint32_t plane = round % 4;
        const auto thin = view.thin (plane);
        std::vector<CurvePiece> whole;
        for (std::uint32_t i = 0; i + 1 < view.counts.size (); ++i) {
            const auto point = [&view] (std::uint32_t k) {
                return Point2{view.layout.x_of (k),
                              view.layout.y_of (view.counts[k], view.state.scale)};
            };
            whole.push_back ({point (i), point (i + 1)});
        }
        whole_pieces += whole.size ();
        thin_pieces += thin.size ();
        const Camera camera (view.state, view.layout);
        const float z = view.layout.z_of (plane);
        const auto whole_seen = in_window (whole, camera, z);
        const auto thin_seen = in_window (thin, camera, z);
        if (whole_seen.size () != whole.size ()) continue; // partly behind the eye
        constexpr double rounding = 0.01;
        EXPECT_LT (farthest (whole_seen, thin_seen, view.size), CurveThinner::most_error + rounding)
            << "round " << round;
        EXPECT_LT (farthest (thin_seen, whole_seen, view.size), CurveThinner::most_error + rounding)
            << "round " << round;
    }
    EXPECT_LT (thin_pieces, whole_pieces / 4);
}

} // namespace
} // namespace ostrand::viewer
