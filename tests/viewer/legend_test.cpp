// The legend: rows, columns, names that are cut.
#include "viewer/legend.h"

#include "base/text.h"
#include "viewer/sample_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::viewer {
namespace {

struct legend : ::testing::Test {
    /// column, columns  how far down they may reach
    void add (float column = 600, float columns = 100) {
        const toolkit::TextWidth width = scaled_width (size.unit);
        LabelPlacer placer (size, width, scene);
        add_legend (data, state, size, {column, columns}, width, scene, placer);
        taken = placer.taken ();
    }
    /// Names of 14 letters, [species 00] with its brackets 12, which is 115.2 wide.
    void name_species (std::uint32_t n) {
        data = sample (n, 2, {});
        for (std::uint32_t s = 0; s < n; ++s) {
            data.names[s] = "species " + std::string (s < 10 ? "0" : "") + std::to_string (s);
        }
    }
    ResultData data = sample (3, 2, {});
    ViewState state;
    ViewSize size = ViewSize::of (900, 600, 1);
    Scene scene;
    std::vector<FlatBox> taken;
};

TEST_F (legend, each_species_has_a_line_and_its_name) {
    add ();
    ASSERT_EQ (scene.texts.size (), 3U);
    ASSERT_EQ (scene.legend_lines.size (), 3U);
    EXPECT_EQ (scene.texts[0].text, "[species 0]");
    EXPECT_EQ (scene.texts[0].at.x, 58);
    EXPECT_EQ (scene.texts[0].at.y, 25);
    EXPECT_EQ (scene.texts[0].font, 1);
    EXPECT_EQ (scene.texts[0].size, 16);
    EXPECT_EQ (scene.texts[2].at.y, 65);
    EXPECT_EQ (scene.legend_lines[1].points[0].x, 20);
    EXPECT_EQ (scene.legend_lines[1].points[1].x, 50);
    EXPECT_EQ (scene.legend_lines[1].points[0].y, 40.5F); // through the middle of pixel row 40
    EXPECT_EQ (scene.legend_lines[1].points[1].y, 40.5F);
    EXPECT_EQ (scene.legend_lines[1].width, 3);
    EXPECT_EQ (scene.legend_lines[1].colour, data.colours[1]);
}

TEST_F (legend, it_bleaches_nothing) {
    add ();
    EXPECT_TRUE (scene.patches.empty ());
}

TEST_F (legend, its_rows_stay_free_of_labels) {
    add ();
    ASSERT_EQ (taken.size (), 3U);
    EXPECT_EQ (taken[1].low.x, 20);
    EXPECT_EQ (taken[1].low.y, 32);
    EXPECT_FLOAT_EQ (taken[1].high.x, 58 + 11 * 9.6F);
    EXPECT_EQ (taken[1].high.y, 48);
}

TEST_F (legend, the_row_of_a_hidden_species_closes_up) {
    state.visible.reset (1);
    add ();
    ASSERT_EQ (scene.texts.size (), 2U);
    EXPECT_EQ (scene.texts[1].text, "[species 2]");
    EXPECT_EQ (scene.texts[1].at.y, 45);
    EXPECT_EQ (scene.legend_lines[1].colour, data.colours[2]);
}

TEST_F (legend, nothing_is_drawn_when_all_are_hidden) {
    state.visible.reset ();
    add ();
    EXPECT_TRUE (scene.texts.empty ());
    EXPECT_TRUE (scene.legend_lines.empty ());
}

TEST_F (legend, one_column_holds_as_many_rows_as_the_window_is_high) {
    name_species (29);
    add ();
    ASSERT_EQ (scene.texts.size (), 29U);
    EXPECT_EQ (scene.texts[28].at.x, 58);
    EXPECT_EQ (scene.texts[28].at.y, 585);
}

TEST_F (legend, more_species_stand_side_by_side) {
    name_species (30);
    add ();
    ASSERT_EQ (scene.texts.size (), 30U);
    // Five columns of 115.2 have room: 58 + 115.2 + 4 x (56 + 115.2) is 858.
    EXPECT_EQ (scene.texts[5].at.x, 58);
    EXPECT_EQ (scene.texts[5].at.y, 125);
    EXPECT_EQ (scene.texts[6].at.x, 58 + 172); // 115.2 + 56, on a whole pixel
    EXPECT_EQ (scene.texts[6].at.y, 25);
    EXPECT_EQ (scene.texts[29].at.y, 125);
    EXPECT_EQ (scene.legend_lines[6].points[0].x, 20 + 172);
    EXPECT_EQ (scene.legend_lines[6].points[1].x, 50 + 172);
    EXPECT_EQ (scene.legend_lines[6].colour, data.colours[6]);
}

TEST_F (legend, columns_end_above_what_they_must_not_cover) {
    name_species (12);
    add (102, 102); // four rows, the last at 80
    EXPECT_EQ (scene.texts[3].at.y, 85);
    EXPECT_EQ (scene.texts[4].at.y, 25);
    EXPECT_EQ (scene.texts[11].at.y, 85);
}

TEST_F (legend, where_no_row_may_be_taken_there_is_one) {
    add (0, 0);
    ASSERT_EQ (scene.texts.size (), 3U);
    for (const FlatText& text : scene.texts) EXPECT_EQ (text.at.y, 25);
}

TEST_F (legend, columns_are_no_higher_than_their_names_need) {
    name_species (22); // five columns of four are not enough
    add (102);
    EXPECT_EQ (scene.texts[4].at.y, 105);
    EXPECT_EQ (scene.texts[5].at.y, 25);
    EXPECT_EQ (scene.texts[21].text, "[species 21]");
}

TEST_F (legend, a_name_that_is_too_long_is_cut_to_the_window) {
    data.names[1] = std::string (200, 'x');
    add ();
    EXPECT_EQ (scene.texts[0].text, "[species 0]");
    EXPECT_EQ (scene.texts[1].text, "[" + std::string (82, 'x') + "...");
    EXPECT_EQ (scene.texts[2].text, "[species 2]");
}

TEST_F (legend, a_name_that_just_fits_is_whole) {
    data.names[1] = std::string (84, 'x'); // 58 + 86 x 9.6 is 883.6, of 888
    add ();
    EXPECT_EQ (scene.texts[1].text, "[" + std::string (84, 'x') + "]");
    data.names[1] += "xx";
    scene = {};
    add ();
    EXPECT_NE (scene.texts[1].text, "[" + data.names[1] + "]");
}

TEST_F (legend, the_longest_names_give_way_first) {
    name_species (60);
    for (std::uint32_t s = 0; s < 29; ++s) data.names[s] = std::string (100, 'y');
    add ();
    // Three columns: the second and the third whole, the first cut to what they leave.
    EXPECT_EQ (scene.texts[29].text, "[species 29]");
    EXPECT_EQ (scene.texts[59].text, "[species 59]");
    EXPECT_TRUE (scene.texts[0].text.ends_with ("yyy..."));
    EXPECT_GT (scene.texts[0].text.size (), 40U);
}

TEST_F (legend, short_names_make_room_for_more_columns) {
    data = sample (200, 2, {});
    for (std::string& name : data.names) name = "ab"; // 38.4 wide, a column 95
    add ();
    ASSERT_EQ (scene.legend_lines.size (), 200U);
    EXPECT_EQ (scene.texts[199].text, "[ab]");
    EXPECT_EQ (scene.texts[22].at.y, 465); // nine columns of 23
    EXPECT_EQ (scene.texts[23].at.y, 25);
}

TEST_F (legend, species_beyond_the_room_are_counted) {
    name_species (400);
    for (std::string& name : data.names) name = std::string (40, 'z');
    add ();
    // Five columns of 29 rows, of which the last tells how many are missing.
    ASSERT_EQ (scene.texts.size (), 145U);
    EXPECT_EQ (scene.legend_lines.size (), 144U);
    EXPECT_EQ (scene.texts.back ().text, "(256 more)");
    EXPECT_EQ (scene.texts.back ().at.y, 585);
    data = sample (30000, 2, {});
    scene = {};
    add ();
    EXPECT_EQ (scene.texts.back ().text,
               format_text ("(%zu more)", 30000 - scene.legend_lines.size ()));
}

TEST_F (legend, it_grows_with_the_display_scale) {
    name_species (40);
    size = ViewSize::of (900, 600, 2);
    add (1200, 200);
    const Scene large = std::exchange (scene, {});
    size = ViewSize::of (900, 600, 1);
    add (600, 100);
    ASSERT_EQ (large.texts.size (), scene.texts.size ());
    for (std::size_t i = 0; i < large.texts.size (); ++i) {
        EXPECT_EQ (large.texts[i].text, scene.texts[i].text);
        EXPECT_NEAR (large.texts[i].at.x, 2 * scene.texts[i].at.x, 8); // columns on whole pixels
        EXPECT_NEAR (large.texts[i].at.y, 2 * scene.texts[i].at.y, 1);
        EXPECT_EQ (large.legend_lines[i].width, 6);
        EXPECT_NEAR (large.legend_lines[i].points[0].x, 2 * scene.legend_lines[i].points[0].x, 8);
        EXPECT_NEAR (large.legend_lines[i].points[1].y, 2 * scene.legend_lines[i].points[1].y, 1);
    }
}

TEST_F (legend, it_never_leaves_the_window_and_no_row_covers_another) {
    std::mt19937 random (3);
    const auto number = [&random] (int least, int most) {
        return std::uniform_int_distribution<int> (least, most) (random);
    };
    for (int round = 0; round < 200; ++round) {
        const float unit = static_cast<float> (number (4, 8)) / 4;
        size = ViewSize::of (number (300, 1600), number (300, 1000), unit);
        data = sample (static_cast<std::uint32_t> (number (1, round % 10 == 0 ? 500 : 40)), 2, {});
        const int longest = number (1, 120);
        for (std::string& name : data.names) {
            name = std::string (static_cast<std::size_t> (number (1, longest)), 'n');
        }
        scene = {};
        add (number (0, 1) == 0 ? size.hp : size.hp / 5, size.hp / 5);
        EXPECT_LE (scene.legend_lines.size (), data.n_displayed);
        for (std::size_t i = 0; i < taken.size (); ++i) {
            EXPECT_GE (taken[i].low.x, 0);
            EXPECT_GE (taken[i].low.y, 0);
            EXPECT_LE (taken[i].high.x, size.w - 4 * unit) << "round " << round;
            EXPECT_LE (taken[i].high.y, size.hp - 4 * unit) << "round " << round;
            for (std::size_t k = 0; k < i; ++k) {
                EXPECT_TRUE (taken[i].low.x >= taken[k].high.x ||
                             taken[k].low.x >= taken[i].high.x ||
                             taken[i].low.y >= taken[k].high.y || taken[k].low.y >= taken[i].high.y)
                    << "round " << round;
            }
        }
    }
}

} // namespace
} // namespace ostrand::viewer
