// The 3-D view of series as pure functions.
#include "viewer/series_view.h"

#include "toolkit/pixels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ostrand::viewer {
namespace {

constexpr double far_plane = 100000;

/// The window for which the distances were chosen, in units.
constexpr float reference_width = 900;
constexpr float reference_height = 600;

Matrix multiply (const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t k = 0; k < 4; ++k) {
                product[column * 4 + row] += a[k * 4 + row] * b[column * 4 + k];
            }
        }
    }
    return product;
}

Matrix translation (double x, double y, double z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

double radians (double degrees) { return degrees * std::numbers::pi / 180; }

Matrix rotation_about_x (double degrees) {
    const double c = std::cos (radians (degrees));
    const double s = std::sin (radians (degrees));
    return {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1};
}

Matrix rotation_about_y (double degrees) {
    const double c = std::cos (radians (degrees));
    const double s = std::sin (radians (degrees));
    return {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1};
}

} // namespace

ViewSize ViewSize::of (int width, int height, float unit) {
    const auto pixels = [unit] (int length) {
        return toolkit::line_pixels (static_cast<float> (length), unit);
    };
    return {pixels (width), pixels (height), unit};
}

float halved_scale (float scale) {
    constexpr float least = 1e-20F; // far below one pixel for the largest count
    return std::max (scale * 0.5F, least);
}

float fitting_scale (float height, std::uint32_t max) {
    return max == 0 ? 1.0F : height / static_cast<float> (max);
}

ViewLayout layout_of (const ResultData& data, const ViewState& state, const ViewSize& size,
                      const toolkit::TextWidth& text_width) {
    ViewLayout layout;
    layout.size = size;
    const auto top = static_cast<long long> (
        std::clamp (static_cast<double> (size.h () / state.scale) + 0.5, -1e15, 1e15));
    layout.margin = text_width (std::to_string (top), 0, 10) + 20;
    layout.dx = std::max (
        (size.w - layout.margin - 50) / static_cast<float> (std::max (data.n_points, 1U)), 0.1F);
    const float cell = size.h () / 5;
    layout.depth = std::trunc ((size.hp - 100) / cell) * cell;
    layout.planes = count_planes (data);
    return layout;
}

std::uint32_t time_tick (float dx) {
    for (const std::uint32_t tick : {1U, 10U, 20U, 50U, 100U, 200U}) {
        if (static_cast<float> (tick) * dx >= 40) return tick;
    }
    return 500;
}

std::uint32_t offset_of_selection (const std::vector<VarConc>& vars) {
    if (vars.empty ()) return 0;
    std::uint32_t offset = 0;
    std::uint32_t f = vars.back ().nb;
    for (std::size_t k = vars.size () - 1; k-- > 0;) {
        offset += vars[k].index * f;
        f *= vars[k].nb;
    }
    return offset;
}

bool time_labels_at_front (float rot_x) { return !(rot_x > 0 && rot_x < 177); }

float wrap_angle (float degrees) {
    while (degrees < -180) degrees += 360;
    while (degrees >= 180) degrees -= 360;
    return degrees;
}

float doubled_scale (float scale, float height) {
    const float doubled = scale * 2;
    return (height + doubled) / doubled / 5 < 1 ? scale : doubled;
}

void initial_pan (ViewState& state, const ViewSize& size) {
    state.pan_x = size.w * -490 / reference_width;
    state.pan_y = size.hp * 300 / reference_height;
}

void reset_view (ViewState& state, const ViewSize& size) {
    state.rot_x = 179.75F;
    state.rot_y = 0.75F;
    state.fov = 10;
    state.dist = -48000;
    state.auto_scale = true;
    initial_pan (state, size);
}

Matrix projection_matrix (const ViewState& state, const ViewSize& size) {
    const double f = 1 / std::tan (radians (static_cast<double> (state.fov)) / 2);
    const double aspect = static_cast<double> (size.w) / static_cast<double> (size.hp);
    const double range = near_plane - far_plane;
    return {f / aspect,
            0,
            0,
            0,
            0,
            f,
            0,
            0,
            0,
            0,
            (far_plane + near_plane) / range,
            -1,
            0,
            0,
            2 * far_plane * near_plane / range,
            0};
}

Matrix modelview_matrix (const ViewState& state, const ViewLayout& layout) {
    const auto w = static_cast<double> (layout.size.w);
    const auto hp = static_cast<double> (layout.size.hp);
    const Matrix place = translation (
        static_cast<double> (state.pan_x) + w * 500 / static_cast<double> (reference_width),
        hp / 2 - static_cast<double> (state.pan_y),
        hp / static_cast<double> (reference_height) * static_cast<double> (state.dist) /
            static_cast<double> (state.fov));
    const Matrix centre = translation (-w / 2, -static_cast<double> (layout.size.h ()) / 2,
                                       static_cast<double> (layout.depth) / 2);
    return multiply (place,
                     multiply (multiply (rotation_about_x (static_cast<double> (state.rot_x)),
                                         rotation_about_y (-static_cast<double> (state.rot_y))),
                               centre));
}

Camera::Camera (const ViewState& state, const ViewLayout& layout)
    : whole_ (multiply (projection_matrix (state, layout.size), modelview_matrix (state, layout))),
      size_ (layout.size) {}

Homogeneous Camera::at (const Point3& point) const {
    const auto x = static_cast<double> (point.x);
    const auto y = static_cast<double> (point.y);
    const auto z = static_cast<double> (point.z);
    const auto row = [&] (std::size_t r) {
        return whole_[r] * x + whole_[4 + r] * y + whole_[8 + r] * z + whole_[12 + r];
    };
    const double w = row (3);
    return {(row (0) + w) / 2 * static_cast<double> (size_.w),
            (w - row (1)) / 2 * static_cast<double> (size_.hp), w};
}

std::optional<Point2> Camera::project (const Point3& point) const {
    const Homogeneous place = at (point);
    if (place.w <= 0) return std::nullopt;
    return Point2{static_cast<float> (place.x / place.w), static_cast<float> (place.y / place.w)};
}

} // namespace ostrand::viewer
