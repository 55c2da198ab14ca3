// The 3-D view's pure functions: sizes, scales, ticks, projection.
#include "viewer/series_view.h"

#include "viewer/sample_data.h"

#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

TEST (series_view, window_sizes_are_scaled_and_rounded) {
    const ViewSize size = ViewSize::of (900, 600, 1.25F);
    EXPECT_EQ (size.w, 1125);
    EXPECT_EQ (size.hp, 750);
    EXPECT_EQ (ViewSize::of (901, 601, 1.5F).w, 1352); // 1351.5 rounds up
    EXPECT_EQ (ViewSize::of (900, 600, 1).h (), 560);
}

TEST (series_view, the_scale_fills_the_height_and_is_1_for_a_file_of_zeros) {
    EXPECT_EQ (fitting_scale (560, 1120), 0.5F);
    EXPECT_EQ (fitting_scale (560, 0), 1.0F);
}

TEST (series_view, margin_time_step_and_depth) {
    ViewState state;
    const ViewSize size = ViewSize::of (900, 600, 1);
    state.scale = fitting_scale (size.h (), 1000);
    const ViewLayout layout = layout_of (sample (1, 10, {1, 2, 3}), state, size, plain_width);
    EXPECT_EQ (layout.margin, 4 * 6 + 20); // "1000"
    EXPECT_FLOAT_EQ (layout.dx, (900 - 44 - 50) / 10.0F);
    EXPECT_EQ (layout.depth, 4 * 112); // four of five cells of 112
    EXPECT_EQ (layout.z_of (0), 0);
    EXPECT_EQ (layout.z_of (1), -224);
    EXPECT_EQ (layout.z_of (2), -448);
    EXPECT_EQ (layout.y_of (1000, state.scale), 0);
    EXPECT_EQ (layout.x_of (3), 44 + 3 * layout.dx);
    EXPECT_EQ (layout_of (sample (1, 100000, {}), state, size, plain_width).dx, 0.1F);
}

TEST (series_view, ticks_take_at_least_forty_pixels) {
    EXPECT_EQ (time_tick (40), 1U);
    EXPECT_EQ (time_tick (39), 10U);
    EXPECT_EQ (time_tick (4), 10U);
    EXPECT_EQ (time_tick (2), 20U);
    EXPECT_EQ (time_tick (0.8F), 50U);
    EXPECT_EQ (time_tick (0.4F), 100U);
    EXPECT_EQ (time_tick (0.2F), 200U);
    EXPECT_EQ (time_tick (0.1F), 500U);
    EXPECT_EQ (time_tick (0.01F), 500U);
}

TEST (series_view, concentration_texts) {
    EXPECT_EQ (concentration_text (0), "0 uM");
    EXPECT_EQ (concentration_text (602.252), "1 uM");
    EXPECT_EQ (concentration_text (602.252 * 0.123), "0.12 uM");
    EXPECT_EQ (concentration_text (602.252 * 12.345), "12.3 uM");
    EXPECT_EQ (concentration_text (602.252 * 998.4), "998 uM");
    EXPECT_EQ (concentration_text (602.252 * 999.1), "1 mM");
    EXPECT_EQ (concentration_text (602.252 * 12345), "12 mM");
}

TEST (series_view, the_selection_finds_the_first_simulation_of_its_planes) {
    std::vector<VarConc> vars{swept ("a", {1, 2}), swept ("b", {1, 2, 3}),
                              swept ("c", {1, 2, 3, 4})};
    EXPECT_EQ (offset_of_selection (vars), 0U);
    vars[1].index = 2;
    EXPECT_EQ (offset_of_selection (vars), 8U);
    vars[0].index = 1;
    EXPECT_EQ (offset_of_selection (vars), 20U);
    vars[2].index = 3; // the planes' own variable does not count
    EXPECT_EQ (offset_of_selection (vars), 20U);
    EXPECT_EQ (offset_of_selection ({}), 0U);
}

TEST (series_view, labels_of_time_stand_in_front_or_behind_by_the_rotation) {
    EXPECT_TRUE (time_labels_at_front (-170.5F));
    EXPECT_TRUE (time_labels_at_front (0));
    EXPECT_FALSE (time_labels_at_front (0.25F));
    EXPECT_FALSE (time_labels_at_front (176.75F));
    EXPECT_TRUE (time_labels_at_front (177));
}

TEST (series_view, angles_stay_from_minus_180_to_below_180) {
    EXPECT_EQ (wrap_angle (180), -180);
    EXPECT_EQ (wrap_angle (-180.25F), 179.75F);
    EXPECT_EQ (wrap_angle (-180), -180);
    EXPECT_EQ (wrap_angle (725), 5);
}

TEST (series_view, the_scale_is_never_enlarged_past_its_limit) {
    // At 140 pixels for each molecule (560 + 140) / 140 / 5 is 1.
    EXPECT_EQ (doubled_scale (70, 560), 140);
    EXPECT_EQ (doubled_scale (71, 560), 71);
    float scale = 0.5F;
    for (int i = 0; i < 50; ++i) scale = doubled_scale (scale, 560);
    EXPECT_LE (scale, 140);
    EXPECT_GT (scale, 70);
}

TEST (series_view, the_scale_never_reaches_0) {
    float scale = 1;
    for (int i = 0; i < 400; ++i) scale = halved_scale (scale);
    EXPECT_GT (scale, 0);
    EXPECT_GT (doubled_scale (scale, 560), scale);
    const ViewSize tiny = ViewSize::of (300, 40, 1);
    EXPECT_GT (tiny.h (), 0);
    EXPECT_GT (chart_height (tiny), 0);
}

TEST (series_view, space_resets_the_view) {
    ViewState state;
    state.rot_x = 12;
    state.auto_scale = false;
    state.fov = 3;
    reset_view (state, ViewSize::of (900, 600, 1));
    EXPECT_EQ (state.rot_x, 179.75F);
    EXPECT_EQ (state.rot_y, 0.75F);
    EXPECT_EQ (state.fov, 10);
    EXPECT_EQ (state.dist, -48000);
    EXPECT_EQ (state.pan_x, -490);
    EXPECT_EQ (state.pan_y, 300);
    EXPECT_TRUE (state.auto_scale);
}

/// The scene's middle and corners as the camera of a state sees them.
struct Seen {
    explicit Seen (const ViewState& seen_state, int width = 900, int height = 600, float unit = 1)
        : state (seen_state) {
        const ViewSize size = ViewSize::of (width, height, unit);
        initial_pan (state, size);
        layout = layout_of (sample (1, 10, {1, 2, 3}), state, size, plain_width);
    }
    Point2 at (float x, float y, float z) const {
        return Camera (state, layout).project ({x, y, z}).value (); // throws behind the eye
    }
    Point2 middle () const {
        return at (layout.size.w / 2, layout.size.h () / 2, -layout.depth / 2);
    }
    ViewState state;
    ViewLayout layout;
};

TEST (series_view, the_box_stands_upright_about_the_middle_of_the_window) {
    const Seen seen{ViewState ()};
    const Point2 middle = seen.middle ();
    // 10 units right of the middle at a distance of 5000 of a window 600 high.
    EXPECT_NEAR (middle.x, 450 + 10 * 0.686, 0.5);
    EXPECT_NEAR (middle.y, 300, 0.01);
    EXPECT_LT (seen.at (450, 0, -224).y, seen.at (450, 560, -224).y); // the floor is below
    EXPECT_LT (seen.at (0, 280, -224).x, seen.at (900, 280, -224).x); // time runs to the right
    EXPECT_LT (seen.at (450, 560, 0).y, seen.at (450, 560, -448).y);  // plane 0 is behind
}

TEST (series_view, rotation_turns_the_box_about_its_middle) {
    const Seen before{ViewState ()};
    ViewState turned;
    turned.rot_x = 45;
    turned.rot_y = -100;
    const Seen after (turned);
    EXPECT_NEAR (before.middle ().x, after.middle ().x, 0.01);
    EXPECT_NEAR (before.middle ().y, after.middle ().y, 0.01);
}

TEST (series_view, the_picture_stands_alike_at_every_size_and_scale) {
    const Seen small{ViewState ()};
    const Seen large (ViewState (), 1600, 1000);
    const Seen scaled (ViewState (), 900, 600, 2);
    EXPECT_NEAR (small.middle ().x / 900, large.middle ().x / 1600, 0.001);
    EXPECT_NEAR (large.middle ().y, 500, 0.01);
    EXPECT_NEAR (small.middle ().x * 2, scaled.middle ().x, 0.01);
    EXPECT_NEAR (scaled.middle ().y, 600, 0.01);
}

TEST (series_view, the_near_things_are_larger_and_points_behind_the_eye_have_no_place) {
    ViewState state;
    state.fov = 60;
    state.dist = -100000; // 1667 units of the middle
    const Seen seen (state);
    EXPECT_FALSE (Camera (seen.state, seen.layout).project ({0, 0, -9000}).has_value ());
    const float back = seen.at (900, 0, 0).x - seen.at (0, 0, 0).x;
    const float front = seen.at (900, 0, -448).x - seen.at (0, 0, -448).x;
    EXPECT_GT (front, back);
}

} // namespace
} // namespace ostrand::viewer
