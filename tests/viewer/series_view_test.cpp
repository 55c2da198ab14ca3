// The 3-D view's pure functions: sizes, scales, ticks, projection.
#include "viewer/scene.h"
#include "viewer/series_view.h"
#include "viewer/text_fit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

/// Every letter is as wide as 0.6 of its size.
float plain_width (const std::string& text, int, int size) {
    return static_cast<float> (text.size ()) * 0.6F * static_cast<float> (size);
}

VarConc swept (std::string name, std::vector<std::uint32_t> values) {
    VarConc var;
    var.name = std::move (name);
    var.nb = static_cast<std::uint32_t> (values.size ());
    var.values = std::move (values);
    return var;
}

/// Species of constant counts, one variable with the given values as planes.
ResultData sample (std::uint32_t species, std::uint32_t points, std::vector<std::uint32_t> values) {
    ResultData data;
    data.n_displayed = species;
    data.n_points = points;
    data.n_simul = values.empty () ? 1 : static_cast<std::uint32_t> (values.size ());
    for (std::uint32_t s = 0; s < species; ++s) {
        data.names.push_back ("species " + std::to_string (s));
        data.colours.push_back (0x10000000U * (s + 1));
    }
    for (std::uint32_t i = 0; i < data.n_simul * species * points; ++i) data.counts.push_back (500);
    data.max = 1000;
    if (!values.empty ()) {
        data.vars.push_back (swept ("glucose", std::move (values)));
        data.n_var = 1;
    }
    return data;
}

TEST (series_view, window_sizes_are_scaled_and_rounded) {
    const ViewSize size = ViewSize::of (900, 600, 1.25F);
    EXPECT_EQ (size.w, 1125);
    EXPECT_EQ (size.hp, 750);
    EXPECT_EQ (ViewSize::of (901, 601, 1.5F).w, 1352); // 1351.5 rounds up
    EXPECT_EQ (ViewSize::of (900, 600, 1).h (), 560);
}

TEST (series_view, planes_are_the_values_of_the_last_variable) {
    EXPECT_EQ (count_planes (sample (1, 5, {})), 1U);
    EXPECT_EQ (count_planes (sample (1, 5, {1, 2, 3})), 3U);
    EXPECT_EQ (count_planes (sample (1, 5, {1, 2})), 2U);
}

TEST (series_view, a_sweep_with_two_equal_values_draws_one_plane) {
    EXPECT_EQ (count_planes (sample (1, 5, {7, 7})), 1U);
    EXPECT_EQ (count_planes (sample (1, 5, {7, 7, 7})), 3U);
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

struct Picture {
    int width;
    int height;
    float unit;
};
struct scene_pictures : ::testing::TestWithParam<Picture> {};

/// Boxes of all texts, with which the pictures are checked for overlaps.
std::vector<FlatPatch> boxes (const Scene& scene, float unit) {
    std::vector<FlatPatch> all;
    for (const FlatText& text : scene.texts) {
        const float size = static_cast<float> (text.size) * unit;
        all.push_back ({{text.at.x, text.at.y - 0.75F * size},
                        {text.at.x + plain_width (text.text, text.font, text.size) * unit,
                         text.at.y + 0.1F * size}});
    }
    return all;
}

TEST_P (scene_pictures, no_label_overlaps_another_or_is_clipped) {
    const auto [width, height, unit] = GetParam ();
    const ViewSize size = ViewSize::of (width, height, unit);
    const TextWidth wide = [unit = unit] (const std::string& text, int font, int letters) {
        return plain_width (text, font, letters) * unit;
    };
    const ResultData data = sample (12, 500, {602, 6022, 60225, 602252, 6022520, 12045040});
    for (const bool flat : {false, true}) {
        for (const float rot_x : {-170.5F, 179.75F, 120.0F, 60.0F, -90.0F}) {
            for (const float fov : {10.0F, 1.0F}) {
                ViewState state;
                state.rot_x = rot_x;
                state.fov = fov;
                initial_pan (state, size);
                state.scale = fitting_scale (flat ? chart_height (size) : size.h (), data.max);
                const ViewLayout layout = layout_of (data, state, size, wide);
                const Scene scene = flat ? scene_of_chart (data, state, layout, wide)
                                         : scene_of_box (data, state, layout, wide);
                const auto all = boxes (scene, unit);
                EXPECT_GT (all.size (), 20U);
                for (std::size_t i = 0; i < all.size (); ++i) {
                    EXPECT_GE (all[i].low.x, 0) << scene.texts[i].text;
                    EXPECT_GE (all[i].low.y, 0) << scene.texts[i].text;
                    EXPECT_LE (all[i].high.x, size.w) << scene.texts[i].text;
                    EXPECT_LE (all[i].high.y, size.hp) << scene.texts[i].text;
                    for (std::size_t j = 0; j < i; ++j) {
                        const bool apart =
                            all[i].high.x <= all[j].low.x || all[j].high.x <= all[i].low.x ||
                            all[i].high.y <= all[j].low.y || all[j].high.y <= all[i].low.y;
                        EXPECT_TRUE (apart) << scene.texts[i].text << " / " << scene.texts[j].text;
                    }
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P (sizes, scene_pictures,
                          ::testing::Values (Picture{900, 600, 1}, Picture{1600, 1000, 1},
                                             Picture{900, 600, 2}, Picture{900, 600, 1.5F}));

std::vector<std::string> texts (const Scene& scene) {
    std::vector<std::string> all;
    for (const FlatText& text : scene.texts) all.push_back (text.text);
    return all;
}

struct scenes : ::testing::Test {
    Scene box () {
        initial_pan (state, size);
        state.scale = fitting_scale (size.h (), data.max);
        return scene_of_box (data, state, layout_of (data, state, size, plain_width), plain_width);
    }
    Scene chart () {
        state.scale = fitting_scale (chart_height (size), data.max);
        return scene_of_chart (data, state, layout_of (data, state, size, plain_width),
                               plain_width);
    }
    ResultData data = sample (3, 10, {602, 1204, 6022});
    ViewState state;
    ViewSize size = ViewSize::of (900, 600, 1);
};

TEST_F (scenes, the_legend_stands_where_it_is_told) {
    const Scene scene = box ();
    EXPECT_EQ (scene.texts[0].text, "[species 0]");
    EXPECT_EQ (scene.texts[0].at.x, 58);
    EXPECT_EQ (scene.texts[0].at.y, 25);
    EXPECT_EQ (scene.texts[0].font, 1);
    EXPECT_EQ (scene.texts[0].size, 16);
    EXPECT_EQ (scene.texts[2].at.y, 65);
    EXPECT_EQ (scene.lines[1].points[0].x, 20);
    EXPECT_EQ (scene.lines[1].points[1].x, 50);
    EXPECT_EQ (scene.lines[1].points[0].y, 40);
    EXPECT_EQ (scene.lines[1].width, 3);
    EXPECT_EQ (scene.lines[1].colour, data.colours[1]);
}

TEST_F (scenes, the_row_of_a_hidden_species_closes_up) {
    state.visible.reset (1);
    const Scene scene = box ();
    EXPECT_EQ (scene.texts[1].text, "[species 2]");
    EXPECT_EQ (scene.texts[1].at.y, 45);
    const Scene flat = chart ();
    int curves = 0;
    for (const FlatLine& line : flat.lines) {
        curves += line.points.size () == 3 && line.colour == data.colours[1] ? 1 : 0;
    }
    EXPECT_EQ (curves, 0);
}

TEST_F (scenes, the_depth_axis_names_what_is_swept_and_each_value) {
    const auto all = texts (box ());
    EXPECT_THAT (all, ::testing::IsSupersetOf ({"[glucose]", "1 uM", "2 uM", "10 uM"}));
    data.vars.clear ();
    EXPECT_THAT (texts (box ()), ::testing::Not (::testing::Contains ("[glucose]")));
}

TEST_F (scenes, molecule_counts_stand_at_the_right_when_the_opening_is_exactly_1) {
    EXPECT_THAT (texts (box ()), ::testing::Not (::testing::Contains ("800")));
    state.fov = 1;
    EXPECT_THAT (texts (box ()), ::testing::IsSupersetOf ({"200", "400", "600", "800", "1000"}));
}

TEST_F (scenes, the_grid_has_its_divisions_on_the_wall_and_across_the_floor) {
    const Scene scene = box ();
    int wall = 0;
    int floor = 0;
    int ticks = 0;
    for (const SceneLine& line : scene.grid) {
        EXPECT_EQ (line.colour, 0xC0C0C000U);
        if (line.a.x == line.b.x) {
            ticks += line.a.z != line.b.z ? 1 : 0;
        } else {
            wall += line.a.z == 0 ? 1 : 0;
            floor += line.a.y == size.h () ? 1 : 0;
        }
    }
    EXPECT_EQ (wall, 7);  // heights 0 to 5, and the floor's edge
    EXPECT_EQ (floor, 6); // depths 0 to 4, and the wall's foot
    EXPECT_EQ (ticks, 11);
}

TEST_F (scenes, the_flat_chart_shows_each_plane_at_its_second) {
    data.counts[1 * 30 + 2 * 10 + 7] = 1000; // plane 1, species 2, second 7
    state.time_point = 7;
    const Scene scene = chart ();
    const FlatLine& curve = scene.lines.back ();
    ASSERT_EQ (curve.points.size (), 3U);
    EXPECT_EQ (curve.colour, data.colours[2]);
    EXPECT_EQ (curve.points[0].x, 80);
    EXPECT_EQ (curve.points[1].x, 450);
    EXPECT_EQ (curve.points[2].x, 820);
    EXPECT_FLOAT_EQ (curve.points[1].y, 120);
    EXPECT_FLOAT_EQ (curve.points[0].y, 320);
    EXPECT_THAT (texts (scene), ::testing::IsSupersetOf ({"[glucose]", "1000", "1 uM", "10 uM"}));
}

TEST_F (scenes, the_flat_chart_reads_the_selected_simulations) {
    data = sample (1, 2, {});
    data.n_simul = 4;
    data.counts = {0, 0, 0, 0, 100, 100, 1000, 1000};
    data.vars = {swept ("a", {1, 2}), swept ("b", {1, 2})};
    data.n_var = 2;
    state.selected_offset = 2;
    const Scene scene = chart ();
    EXPECT_FLOAT_EQ (scene.lines.back ().points[0].y, 520 - 100 * 0.4F);
    EXPECT_FLOAT_EQ (scene.lines.back ().points[1].y, 120);
}

TEST (text_fit, long_texts_are_cut_to_their_room) {
    EXPECT_EQ (fitted_text ("short", 100, plain_width, 0, 10), "short");
    EXPECT_EQ (fitted_text ("a long text", 60, plain_width, 0, 10), "a long ...");
    EXPECT_EQ (fitted_text ("\xc3\xa4\xc3\xa4\xc3\xa4\xc3\xa4\xc3\xa4", 36, plain_width, 0, 10),
               "\xc3\xa4...");
}

TEST (text_fit, signs_of_the_toolkit_show_as_they_are) {
    EXPECT_EQ (plain_label ("a@b & c"), "a@@b & c");
}

} // namespace
} // namespace ostrand::viewer
