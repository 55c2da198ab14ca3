// Pictures before they are drawn: grid, axes, labels of the 3-D view and the flat chart.
#include "viewer/scene.h"

#include "viewer/sample_data.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

using ::testing::Contains;
using ::testing::IsSupersetOf;
using ::testing::Not;

struct Picture {
    int width;
    int height;
    float unit;
};
struct scene_pictures : ::testing::TestWithParam<Picture> {};

/// Boxes of all texts, with which the pictures are checked for overlaps.
std::vector<FlatBox> boxes (const Scene& scene, float unit) {
    std::vector<FlatBox> all;
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
    const toolkit::TextWidth wide = scaled_width (unit);
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
                const Scene scene = flat ? scene_of_chart (data, state, layout, wide, false)
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

/// The text of an axis, not of the legend.
const FlatText* find_label (const Scene& scene, const std::string& wanted) {
    const auto found =
        std::find_if (scene.texts.begin (), scene.texts.end (), [&] (const FlatText& text) {
            return text.text == wanted && text.size != 16;
        });
    return found == scene.texts.end () ? nullptr : &*found;
}

/// The labels of the vertical axis for a largest count of 1000 molecules.
const std::vector<std::string> concentrations{"0 uM", "0.33 uM", "0.66 uM",
                                              "1 uM", "1.33 uM", "1.66 uM"};

struct scenes : ::testing::Test {
    Scene box () { return sketch.box (); }
    Scene chart () { return sketch.chart (); }
    Sketch sketch{sample (3, 10, {602, 1204, 6022})};
    ResultData& data = sketch.data;
    ViewState& state = sketch.state;
    ViewSize& size = sketch.size;
};

TEST_F (scenes, the_depth_axis_names_what_is_swept_and_each_value) {
    const auto all = texts (box ());
    EXPECT_THAT (all, IsSupersetOf ({"[glucose]", "1 uM", "2 uM", "10 uM"}));
    data.vars.clear ();
    EXPECT_THAT (texts (box ()), Not (Contains ("[glucose]")));
}

TEST_F (scenes, the_name_of_what_is_swept_is_bold_and_the_values_are_not) {
    const Scene scene = box ();
    EXPECT_EQ (find_label (scene, "[glucose]")->font, 1);
    EXPECT_EQ (find_label (scene, "[glucose]")->size, 12);
    EXPECT_EQ (find_label (scene, "10 uM")->font, 0);
    EXPECT_EQ (find_label (scene, "10 uM")->size, 10);
}

TEST_F (scenes, molecule_counts_stand_at_the_right_when_the_opening_is_exactly_1) {
    EXPECT_THAT (texts (box ()), Not (Contains ("800")));
    state.fov = 1;
    const Scene scene = box ();
    EXPECT_THAT (texts (scene), IsSupersetOf ({"200", "400", "600", "800", "1000"}));
    const Point2 end = *Camera (state, sketch.layout (560))
                            .project ({sketch.layout (560).x_of (10), 560.0F * 0.2F, 0});
    EXPECT_NEAR (find_label (scene, "800")->at.x, end.x + 6, 1);
    EXPECT_NEAR (find_label (scene, "800")->at.y, end.y + 3.5F, 1);
}

TEST_F (scenes, the_grid_has_its_divisions_on_the_wall_and_across_the_floor) {
    const Scene scene = box ();
    int wall = 0;
    int floor = 0;
    int ticks = 0;
    for (const SceneLine& line : scene.grid) {
        EXPECT_EQ (line.colour, 0xC0C0C000U);
        if (line.a.x == line.b.x && line.a.z != line.b.z) {
            ++ticks; // across the whole floor
            EXPECT_EQ (line.a.z, 0);
            EXPECT_EQ (line.b.z, -sketch.layout (560).depth);
            EXPECT_EQ (line.a.y, 560);
            EXPECT_EQ (line.b.y, 560);
        } else if (line.a.x == line.b.x) {
            EXPECT_EQ (line.a.z, 0); // the ends of the wall
        } else {
            wall += line.a.z == 0 ? 1 : 0;
            floor += line.a.y == size.h () ? 1 : 0;
            EXPECT_EQ (line.a.y, line.b.y);
            EXPECT_EQ (line.a.z, line.b.z);
        }
    }
    EXPECT_EQ (wall, 7);  // heights 0 to 5, and the floor's edge
    EXPECT_EQ (floor, 6); // depths 0 to 4, and the wall's foot
    EXPECT_EQ (ticks, 11);
}

TEST_F (scenes, the_grid_is_as_wide_as_time_and_as_high_as_the_drawing) {
    const Scene scene = box ();
    const ViewLayout layout = sketch.layout (560);
    float left = 1e9F;
    float right = 0;
    float top = 1e9F;
    float depth = 0;
    for (const SceneLine& line : scene.grid) {
        left = std::min ({left, line.a.x, line.b.x});
        right = std::max ({right, line.a.x, line.b.x});
        top = std::min ({top, line.a.y, line.b.y});
        depth = std::min ({depth, line.a.z, line.b.z});
    }
    EXPECT_EQ (left, layout.margin);
    EXPECT_EQ (right, layout.x_of (10));
    EXPECT_EQ (top, 0);
    EXPECT_EQ (depth, -layout.depth);
}

/// Where the left end of the wall's line k stands in the window.
Point2 axis_place (Sketch& sketch, int k) {
    const ViewLayout layout = sketch.layout (sketch.size.h ());
    const float height = static_cast<float> (k) * sketch.size.h () / 5;
    return *Camera (sketch.state, layout).project ({layout.margin, sketch.size.h () - height, 0});
}

TEST_F (scenes, concentrations_stand_left_of_their_lines) {
    const Scene scene = box ();
    for (int k = 1; k <= 5; ++k) {
        const FlatText* label = find_label (scene, concentrations[static_cast<std::size_t> (k)]);
        ASSERT_NE (label, nullptr) << k;
        const Point2 place = axis_place (sketch, k);
        EXPECT_NEAR (label->at.x + plain_width (label->text, 0, 10), place.x - 6, 1);
        EXPECT_NEAR (label->at.y, place.y + 3.5F, 1);
    }
}

TEST_F (scenes, times_stand_below_their_ticks) {
    const Scene scene = box ();
    const ViewLayout layout = sketch.layout (560);
    for (std::uint32_t t = 0; t <= 10; ++t) {
        const FlatText* label = find_label (scene, std::to_string (t));
        ASSERT_NE (label, nullptr) << t;
        const Point2 place = *Camera (state, layout).project ({layout.x_of (t), 560, 0});
        EXPECT_NEAR (label->at.x + plain_width (label->text, 0, 10) / 2, place.x, 1);
        EXPECT_NEAR (label->at.y, place.y + 3 + 8.5F, 1);
    }
}

TEST_F (scenes, times_stand_at_the_other_side_of_the_floor_when_that_is_in_front) {
    state.rot_x = 170;
    const Scene scene = box ();
    const ViewLayout layout = sketch.layout (560);
    const Point2 place = *Camera (state, layout).project ({layout.x_of (5), 560, -layout.depth});
    EXPECT_NEAR (find_label (scene, "5")->at.x + 3, place.x, 1);
}

// The opening view of eight species: the last label stands beside the legend.
TEST_F (scenes, no_label_of_an_axis_is_lost_beside_the_legend) {
    for (std::uint32_t species = 1; species <= 23; ++species) {
        for (const std::size_t letters : {1U, 3U, 8U, 12U, 30U}) {
            for (const float unit : {1.0F, 2.0F}) {
                Sketch opening (sample (species, 90, {602, 3011, 6022}), 900, 600, unit);
                for (std::string& name : opening.data.names) name = std::string (letters, 'n');
                const auto all = texts (opening.box ());
                EXPECT_THAT (all, IsSupersetOf (concentrations)) << species << ' ' << letters;
                EXPECT_THAT (all, IsSupersetOf ({"1 uM", "5 uM", "10 uM", "[glucose]"}));
                EXPECT_THAT (all, IsSupersetOf ({"0", "10", "20", "50", "90"}));
            }
        }
    }
}

TEST_F (scenes, one_label_without_room_stands_inside_near_its_place) {
    data = sample (8, 10, {});
    for (std::string& name : data.names) name = "GAPDH"; // [GAPDH] ends 125 from the left
    const Scene scene = box ();
    const FlatText* highest = find_label (scene, "1.66 uM");
    ASSERT_NE (highest, nullptr);
    const Point2 place = axis_place (sketch, 5);
    EXPECT_NEAR (highest->at.x, place.x + 6, 1);
    EXPECT_NEAR (highest->at.y, place.y - 3 - 1.5F, 1);
    const FlatText* next = find_label (scene, "1.33 uM");
    EXPECT_LT (next->at.x, axis_place (sketch, 4).x);
}

TEST_F (scenes, a_label_under_the_columns_of_the_legend_stands_below_its_line) {
    data = sample (24, 10, {});
    for (std::string& name : data.names) name = "8letters";
    for (const float unit : {1.0F, 2.0F}) {
        Sketch sketched (data, 900, 600, unit);
        const Scene scene = sketched.box ();
        const FlatText* highest = find_label (scene, "1.66 uM");
        ASSERT_NE (highest, nullptr);
        EXPECT_GT (highest->at.y - 8.5F * unit, axis_place (sketched, 5).y);
        EXPECT_LT (highest->at.y - 8.5F * unit, axis_place (sketched, 5).y + 13 * unit);
    }
}

TEST_F (scenes, when_the_legend_takes_the_left_the_labels_stand_at_the_right_end) {
    data = sample (20, 10, {});
    for (std::string& name : data.names) name = "a longer name";
    const Scene scene = box ();
    const ViewLayout layout = sketch.layout (560);
    for (int k = 0; k <= 5; ++k) {
        const FlatText* label = find_label (scene, concentrations[static_cast<std::size_t> (k)]);
        ASSERT_NE (label, nullptr) << k;
        const Point2 end =
            *Camera (state, layout)
                 .project ({layout.x_of (10), 560 - static_cast<float> (k) * 112, 0});
        EXPECT_NEAR (label->at.x, end.x + 6, 1);
    }
}

TEST_F (scenes, concentrations_at_the_right_end_leave_the_molecules_their_place) {
    data = sample (20, 10, {});
    for (std::string& name : data.names) name = "a longer name";
    state.fov = 1;
    const Scene scene = box ();
    EXPECT_THAT (texts (scene), IsSupersetOf (concentrations));
    EXPECT_THAT (texts (scene), IsSupersetOf ({"0", "200", "400", "600", "800", "1000"}));
    EXPECT_GT (find_label (scene, "1.66 uM")->at.x, find_label (scene, "1000")->at.x + 4 * 6 + 6);
}

TEST_F (scenes, the_corner_of_the_three_axes_is_not_crowded) {
    for (const float unit : {1.0F, 1.5F, 2.0F}) {
        for (const std::size_t planes : {2U, 5U, 64U}) {
            std::vector<std::uint32_t> values;
            for (std::size_t i = 0; i < planes; ++i)
                values.push_back (602252 * static_cast<std::uint32_t> (i + 1));
            Sketch sketched (sample (2, 60, values), 900, 600, unit);
            const Scene scene = sketched.box ();
            std::vector<FlatBox> corner;
            for (const char* text : {"0", "0 uM", "1 mM"}) {
                const FlatText* label = find_label (scene, text);
                ASSERT_NE (label, nullptr) << text;
                const float top = label->at.y - 8.5F * unit;
                corner.push_back (
                    {{label->at.x, top},
                     {label->at.x + plain_width (text, 0, 10) * unit, top + 10 * unit}});
            }
            for (std::size_t i = 0; i < 3; ++i) {
                for (std::size_t k = 0; k < i; ++k) {
                    const float beside = std::max (corner[i].low.x - corner[k].high.x,
                                                   corner[k].low.x - corner[i].high.x);
                    const float above = std::max (corner[i].low.y - corner[k].high.y,
                                                  corner[k].low.y - corner[i].high.y);
                    EXPECT_TRUE (beside >= 6 * unit || above >= 1.5F * unit)
                        << beside << ' ' << above << ' ' << planes << ' ' << unit;
                }
            }
        }
    }
}

TEST_F (scenes, planes_are_labelled_on_the_outer_side_of_the_depth_axis) {
    data = sample (1, 60, {602, 1204, 6022});
    Scene scene = box ();
    const auto place = [this] (std::uint32_t plane) {
        const ViewLayout layout = sketch.layout (560);
        return *Camera (state, layout).project ({layout.margin, 560, layout.z_of (plane)});
    };
    const FlatText* last = find_label (scene, "10 uM");
    EXPECT_LT (last->at.x + 30, place (2).x);
    EXPECT_GT (last->at.y, place (2).y);
    EXPECT_GT (find_label (scene, "[glucose]")->at.y, last->at.y + 9);
    // From behind, time runs to the left and the axis stands at the right.
    state.rot_y = 170;
    scene = box ();
    last = find_label (scene, "10 uM");
    ASSERT_NE (last, nullptr);
    EXPECT_GT (last->at.x, place (2).x);
    EXPECT_GT (find_label (scene, "1.66 uM")->at.x, axis_place (sketch, 5).x);
}

TEST_F (scenes, the_name_of_what_is_swept_stands_beyond_the_last_plane) {
    data = sample (1, 60, {602, 1204, 6022});
    state.rot_y = 0;
    EXPECT_GT (find_label (box (), "[glucose]")->at.y, find_label (box (), "10 uM")->at.y + 9);
    state.rot_y = 170; // the last plane is the highest
    EXPECT_LT (find_label (box (), "[glucose]")->at.y, find_label (box (), "10 uM")->at.y - 9);
}

TEST_F (scenes, at_the_lower_edge_the_name_of_what_is_swept_stands_beside_the_planes) {
    data = sample (1, 60, {602, 1204, 1806, 2408, 6022});
    for (float pan = 0; pan < 60; ++pan) {
        initial_pan (state, size);
        state.pan_y += pan;
        const Scene scene = box ();
        const ViewLayout layout = sketch.layout (560);
        const auto last = Camera (state, layout).project ({layout.margin, 560, -layout.depth});
        if (last->y > 600) break;
        EXPECT_NE (find_label (scene, "[glucose]"), nullptr) << pan;
        EXPECT_NE (find_label (scene, "10 uM"), nullptr) << pan;
    }
}

TEST_F (scenes, a_long_name_of_what_is_swept_is_cut_to_the_window) {
    data.vars[0].name = std::string (200, 's');
    const auto all = texts (box ());
    EXPECT_THAT (all, Contains ("[" + std::string (118, 's') + "..."));
    EXPECT_THAT (texts (chart ()), Contains ("[" + std::string (42, 's') + "..."));
}

/// The first of a scene's lines that begins there.
const FlatLine* line_from (const Scene& scene, float x, float y) {
    for (const FlatLine& line : scene.lines) {
        if (std::abs (line.points[0].x - x) < 1 && std::abs (line.points[0].y - y) < 1)
            return &line;
    }
    return nullptr;
}

TEST_F (scenes, the_flat_chart_shows_each_plane_at_its_second) {
    data.counts[1 * 30 + 2 * 10 + 7] = 1000; // plane 1, species 2, second 7
    state.time_point = 7;
    const Scene scene = chart ();
    const FlatLine& curve = scene.lines.back ();
    ASSERT_EQ (curve.points.size (), 3U);
    EXPECT_EQ (curve.colour, data.colours[2]);
    EXPECT_EQ (curve.width, 2);
    EXPECT_EQ (curve.points[0].x, 80);
    EXPECT_EQ (curve.points[1].x, 450);
    EXPECT_EQ (curve.points[2].x, 820);
    EXPECT_FLOAT_EQ (curve.points[1].y, 120);
    EXPECT_FLOAT_EQ (curve.points[0].y, 320);
    EXPECT_THAT (texts (scene), IsSupersetOf ({"[glucose]", "1000", "1 uM", "10 uM"}));
}

TEST_F (scenes, the_flat_chart_keeps_to_the_seconds_that_there_are) {
    data.counts[9] = 1000; // the last second of species 0 in plane 0
    const auto first_count = [this] {
        const Scene scene = chart ();
        return scene.lines[scene.lines.size () - 3].points[0].y; // of three curves
    };
    state.time_point = 9;
    EXPECT_FLOAT_EQ (first_count (), 120);
    state.time_point = 1000;
    EXPECT_FLOAT_EQ (first_count (), 120);
    state.time_point = -1;
    EXPECT_FLOAT_EQ (first_count (), 320);
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

TEST_F (scenes, a_hidden_species_leaves_the_flat_chart) {
    state.visible.reset (1);
    const Scene scene = chart ();
    int curves = 0;
    for (const FlatLine& line : scene.lines) curves += line.colour == data.colours[1] ? 1 : 0;
    EXPECT_EQ (curves, 0);
}

TEST_F (scenes, the_flat_chart_has_its_lines_where_the_axes_are) {
    const Scene scene = chart ();
    for (int k = 0; k <= 5; ++k) {
        const auto y = static_cast<float> (520 - 80 * k);
        const FlatLine* line = line_from (scene, 80, y);
        ASSERT_NE (line, nullptr) << k;
        EXPECT_EQ (line->colour, grid_colour);
        EXPECT_NEAR (line->points[1].x, 820, 1);
    }
    int ticks = 0;
    for (const FlatLine& line : scene.lines) {
        const bool down = line.points[0].x == line.points[1].x && line.points[0].y == 520;
        ticks += down && line.points[1].y == 526 ? 1 : 0;
    }
    EXPECT_EQ (ticks, 3);
}

TEST_F (scenes, the_axes_of_the_flat_chart_end_in_arrows) {
    const auto heads = [this] (float unit) {
        Sketch sketched (data, 900, 600, unit);
        std::vector<std::vector<Point2>> found;
        for (const FlatLine& line : sketched.chart ().lines) {
            if (line.colour == frame_colour && line.points.size () == 3)
                found.push_back (line.points);
        }
        return found;
    };
    const auto small = heads (1);
    ASSERT_EQ (small.size (), 2U);
    const auto expect = [] (Point2 point, float x, float y) {
        EXPECT_EQ (point.x, x);
        EXPECT_EQ (point.y, y);
    };
    expect (small[0][0], 77.5F, 108);
    expect (small[0][1], 80.5F, 102);
    expect (small[0][2], 83.5F, 108);
    expect (small[1][0], 832, 517.5F);
    expect (small[1][1], 838, 520.5F);
    expect (small[1][2], 832, 523.5F);
    const auto large = heads (2);
    expect (large[0][1], 160, 204);
    expect (large[0][0], 154, 216);
    expect (large[1][2], 1664, 1046);
}

TEST_F (scenes, the_flat_chart_has_both_labels_at_each_line) {
    const Scene scene = chart ();
    for (int k = 0; k <= 5; ++k) {
        const float base = static_cast<float> (520 - 80 * k) + 3.5F;
        const FlatText* left = find_label (scene, concentrations[static_cast<std::size_t> (k)]);
        ASSERT_NE (left, nullptr) << k;
        EXPECT_NEAR (left->at.x + plain_width (left->text, 0, 10), 74, 1);
        EXPECT_NEAR (left->at.y, base, 1);
        const FlatText* right = find_label (scene, std::to_string (200 * k));
        ASSERT_NE (right, nullptr) << k;
        EXPECT_EQ (right->at.x, 844);
        EXPECT_NEAR (right->at.y, base, 1);
    }
}

TEST_F (scenes, the_flat_chart_labels_each_value_below_its_tick) {
    const Scene scene = chart ();
    const std::vector<std::string> values{"1 uM", "2 uM", "10 uM"};
    for (std::size_t i = 0; i < 3; ++i) {
        bool found = false;
        for (const FlatText& text : scene.texts) {
            const float middle = text.at.x + plain_width (text.text, 0, text.size) / 2;
            const float place = 80 + 370 * static_cast<float> (i);
            found = found || (text.text == values[i] && std::abs (middle - place) <= 1 &&
                              std::abs (text.at.y - 538.5F) <= 1);
        }
        EXPECT_TRUE (found) << values[i];
    }
    const auto name = std::find_if (scene.texts.begin (), scene.texts.end (),
                                    [] (const FlatText& text) { return text.text == "[glucose]"; });
    ASSERT_NE (name, scene.texts.end ());
    EXPECT_EQ (name->font, 1);
    EXPECT_EQ (name->size, 16);
    EXPECT_NEAR (name->at.x + plain_width (name->text, 1, 16), 890, 1);
}

TEST_F (scenes, the_flat_chart_grows_with_the_display_scale) {
    for (const std::uint32_t most : {1000U, 3011260U, 4294967295U}) {
        ResultData result = sample (4, 10, {602252, 1204504, 1806756, 2409008, 3011260});
        result.max = most;
        Sketch plain (result);
        Sketch large (result, 900, 600, 2);
        const Scene small_scene = plain.chart ();
        const Scene large_scene = large.chart ();
        ASSERT_EQ (texts (small_scene), texts (large_scene));
        EXPECT_EQ (small_scene.texts.size (), 4 + 6 + 6 + 5 + 1U); // none is missing
        for (std::size_t i = 0; i < small_scene.texts.size (); ++i) {
            EXPECT_NEAR (large_scene.texts[i].at.x, 2 * small_scene.texts[i].at.x, 2);
            EXPECT_NEAR (large_scene.texts[i].at.y, 2 * small_scene.texts[i].at.y, 2);
        }
        ASSERT_EQ (small_scene.lines.size (), large_scene.lines.size ());
        for (std::size_t i = 0; i < small_scene.lines.size (); ++i) {
            const FlatLine& line = small_scene.lines[i];
            EXPECT_EQ (large_scene.lines[i].width, 2 * line.width);
            for (std::size_t k = 0; k < line.points.size (); ++k) {
                EXPECT_NEAR (large_scene.lines[i].points[k].x, 2 * line.points[k].x, 2);
                EXPECT_NEAR (large_scene.lines[i].points[k].y, 2 * line.points[k].y, 2);
            }
        }
    }
}

TEST_F (scenes, counts_of_the_flat_chart_never_run_into_its_grid) {
    for (const float unit : {1.0F, 1.25F, 1.5F, 2.0F}) {
        ResultData result = sample (4, 10, {602252, 3011260});
        result.max = 4294967295;
        Sketch sketched (result, 900, 600, unit);
        const Scene scene = sketched.chart ();
        int counts = 0;
        for (const FlatText& text : scene.texts) {
            if (text.text.size () < 9 || text.text.find_first_not_of ("0123456789") < 10) continue;
            ++counts;
            EXPECT_GE (text.at.x, (900 - 80) * unit) << text.text;
            EXPECT_LE (text.at.x + plain_width (text.text, 0, 10) * unit, 896 * unit + 1);
        }
        EXPECT_EQ (counts, 5);
    }
}

TEST_F (scenes, lines_of_the_flat_chart_fill_whole_pixels) {
    for (const float unit : {1.0F, 1.25F, 1.5F, 1.75F, 2.0F}) {
        Sketch sketched (sample (2, 10, {602, 1204, 6022, 12044}), 901, 607, unit);
        const Scene scene = sketched.chart ();
        int straight = 0;
        for (const FlatLine& line : scene.lines) {
            if (line.points.size () != 2) continue;
            const bool across = line.points[0].y == line.points[1].y;
            const bool down = line.points[0].x == line.points[1].x;
            if (!across && !down) continue;
            ++straight;
            const float place = across ? line.points[0].y : line.points[0].x;
            EXPECT_EQ (line.width, std::round (line.width));
            EXPECT_EQ (place - line.width / 2, std::round (place - line.width / 2)) << unit;
        }
        EXPECT_GE (straight, 6 + 2 + 4); // grid, axes, ticks
    }
}

TEST_F (scenes, all_letters_stand_on_whole_pixels) {
    for (const float unit : {1.0F, 1.25F, 1.5F, 2.0F}) {
        Sketch sketched (sample (5, 90, {602, 1204, 6022}), 901, 607, unit);
        for (const Scene& scene : {sketched.box (), sketched.chart ()}) {
            for (const FlatText& text : scene.texts) {
                EXPECT_EQ (text.at.x, std::round (text.at.x)) << text.text;
                EXPECT_EQ (text.at.y, std::round (text.at.y)) << text.text;
            }
        }
    }
}

TEST_F (scenes, the_axes_of_the_flat_chart_are_seen_in_reverse_video) {
    const auto axis = [] (const Scene& scene) {
        for (const FlatLine& line : scene.lines) {
            if (line.points[0].x == line.points[1].x && line.points[1].y < 103) return line.colour;
        }
        return 0U;
    };
    EXPECT_EQ (axis (sketch.chart (false)), frame_colour);
    const std::uint32_t reversed = axis (sketch.chart (true));
    EXPECT_GE (reversed >> 24, 0x60U);
    EXPECT_GE (reversed >> 16 & 0xFF, 0x60U);
    EXPECT_GE (reversed >> 8 & 0xFF, 0x60U);
}

TEST_F (scenes, the_legend_of_the_flat_chart_stands_above_it) {
    for (std::uint32_t species = 1; species <= 20; ++species) {
        data = sample (species, 10, {602, 1204, 6022});
        for (std::uint32_t s = 0; s < species; ++s) data.names[s] = "NADPH" + std::to_string (s);
        const Scene scene = chart ();
        EXPECT_THAT (texts (scene), IsSupersetOf (concentrations));
        for (std::uint32_t s = 0; s < species; ++s) EXPECT_LE (scene.texts[s].at.y, 85);
    }
}

TEST_F (scenes, a_concentration_behind_the_legend_stands_on_its_line) {
    data = sample (60, 10, {602, 1204, 6022}); // more than there is room for above the chart
    const Scene scene = chart ();
    EXPECT_THAT (texts (scene), IsSupersetOf ({"0 uM", "0.33 uM", "0.66 uM", "1 uM"}));
}

} // namespace
} // namespace ostrand::viewer
