// Where labels go: inside the window, never over one another, in the way with the most room.
#include "viewer/label_placer.h"

#include "viewer/sample_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::viewer {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A window of 900 x 600 and letters 6 wide at size 10.
struct labels : ::testing::Test {
    /// A label of four letters, 24 x 10.
    static Label at (float x, float y, float along = 0, float down = 0) {
        return {{x, y}, {0, 0}, along, down, "four"};
    }
    /// The box of the label that was put last.
    FlatBox last () const { return scene.patches.back (); }
    void expect_last_at (float x, float y) const {
        EXPECT_EQ (last ().low.x, x);
        EXPECT_EQ (last ().low.y, y);
        EXPECT_EQ (last ().high.x, x + 24);
        EXPECT_EQ (last ().high.y, y + 10);
        EXPECT_EQ (scene.texts.back ().at.x, x);
    }

    ViewSize size = ViewSize::of (900, 600, 1);
    toolkit::TextWidth width = plain_width;
    Scene scene;
    LabelPlacer placer{size, width, scene};
};

TEST_F (labels, the_told_point_of_the_box_stands_at_the_place) {
    ASSERT_TRUE (placer.put (at (100, 100)));
    expect_last_at (100, 100);
    ASSERT_TRUE (placer.put (at (200, 100, 1, 0)));
    expect_last_at (176, 100);
    ASSERT_TRUE (placer.put (at (300, 100, 0.5F, 1)));
    expect_last_at (288, 90);
    ASSERT_TRUE (placer.put ({{400, 100}, {7, -9}, 0, 0.5F, "four"}));
    expect_last_at (407, 86);
}

TEST_F (labels, font_and_size_are_those_of_the_label) {
    ASSERT_TRUE (placer.put ({{100, 100}, {0, 0}, 0, 0, "four", 1, 20}));
    EXPECT_EQ (scene.texts[0].font, 1);
    EXPECT_EQ (scene.texts[0].size, 20);
    EXPECT_EQ (scene.texts[0].text, "four");
    EXPECT_EQ (last ().high.x, 148);
    EXPECT_EQ (last ().high.y, 120);
    EXPECT_EQ (scene.texts[0].at.y, 117); // the base line
}

TEST_F (labels, letters_stand_on_whole_pixels) {
    ASSERT_TRUE (placer.put (at (100.3F, 100.6F)));
    EXPECT_EQ (scene.texts[0].at.x, 100);
    EXPECT_EQ (scene.texts[0].at.y, 110); // 109.5, rounded
    ASSERT_TRUE (placer.put (at (200.5F, 100.2F)));
    EXPECT_EQ (scene.texts[1].at.x, 201);
    EXPECT_EQ (scene.texts[1].at.y, 109);
}

TEST_F (labels, a_label_near_the_border_is_moved_inside) {
    ASSERT_TRUE (placer.put (at (0, 300, 1, 0)));
    expect_last_at (4, 300);
    ASSERT_TRUE (placer.put (at (900, 300)));
    expect_last_at (872, 300);
    ASSERT_TRUE (placer.put (at (300, 0, 0, 1)));
    expect_last_at (300, 4);
    ASSERT_TRUE (placer.put (at (300, 600)));
    expect_last_at (300, 586);
}

TEST_F (labels, a_label_wider_than_the_window_begins_at_its_left_edge) {
    ASSERT_TRUE (placer.put ({{450, 300}, {0, 0}, 0.5F, 0, std::string (200, 'm')}));
    EXPECT_EQ (last ().low.x, 4);
}

TEST_F (labels, what_has_its_point_outside_the_window_has_no_label) {
    EXPECT_FALSE (placer.put (at (-0.1F, 300)));
    EXPECT_FALSE (placer.put (at (900.1F, 300)));
    EXPECT_FALSE (placer.put (at (300, -0.1F)));
    EXPECT_FALSE (placer.put (at (300, 600.1F)));
    EXPECT_FALSE (placer.put ({{-1, 300}, {50, 0}, 0, 0, "four"})); // wherever the text goes
    EXPECT_THAT (scene.texts, IsEmpty ());
    EXPECT_THAT (scene.patches, IsEmpty ());
    EXPECT_TRUE (placer.put ({{899, 300}, {50, 0}, 0, 0, "four"}));
}

TEST_F (labels, labels_side_by_side_stay_three_units_apart) {
    ASSERT_TRUE (placer.put (at (100, 100)));
    EXPECT_FALSE (placer.put (at (126, 100)));
    EXPECT_FALSE (placer.put (at (74, 100)));
    EXPECT_TRUE (placer.put (at (127, 100)));
    EXPECT_TRUE (placer.put (at (73, 100)));
}

TEST_F (labels, labels_above_one_another_may_touch) {
    ASSERT_TRUE (placer.put (at (100, 100)));
    EXPECT_FALSE (placer.put (at (100, 109)));
    EXPECT_FALSE (placer.put (at (100, 91)));
    EXPECT_TRUE (placer.put (at (100, 110)));
    EXPECT_TRUE (placer.put (at (100, 90)));
}

TEST_F (labels, what_is_reserved_stays_free) {
    placer.reserve ({{100, 100}, {200, 200}});
    EXPECT_FALSE (placer.put (at (150, 150)));
    EXPECT_FALSE (placer.put (at (90, 195)));
    EXPECT_TRUE (placer.put (at (203, 150)));
    EXPECT_TRUE (placer.put (at (150, 200)));
}

TEST_F (labels, the_way_with_the_most_room_is_taken) {
    placer.reserve ({{0, 90}, {900, 110}});
    const LabelRow above{at (100, 100), at (200, 100), at (300, 300)};
    const LabelRow below{at (100, 200), at (200, 100), at (300, 200)};
    EXPECT_THAT (placer.put_row ({above, below}), ElementsAre (1));
    ASSERT_EQ (scene.texts.size (), 2U);
    EXPECT_EQ (scene.patches[0].low.y, 200);
    EXPECT_EQ (scene.patches[1].low.x, 300);
}

TEST_F (labels, of_equal_ways_the_first_is_taken) {
    EXPECT_THAT (placer.put_row ({{at (100, 100)}, {at (100, 200)}}), IsEmpty ());
    ASSERT_EQ (scene.texts.size (), 1U);
    expect_last_at (100, 100);
}

TEST_F (labels, the_first_way_may_lack_as_many_labels_as_are_spared) {
    placer.reserve ({{0, 90}, {150, 110}});
    const LabelRow first{at (100, 100), at (200, 100), at (300, 100)};
    const LabelRow second{at (100, 200), at (200, 200), at (300, 200)};
    EXPECT_THAT (placer.put_row ({first, second}, {.spared = 1}), ElementsAre (0));
    EXPECT_EQ (scene.texts.size (), 2U);
    expect_last_at (300, 100);
}

TEST_F (labels, a_vital_label_counts_more_than_all_others) {
    placer.reserve ({{0, 90}, {150, 110}});    // takes the first label of the first way
    placer.reserve ({{150, 190}, {900, 210}}); // and all but the first of the second
    const LabelRow first{at (100, 100), at (200, 100), at (300, 100)};
    const LabelRow second{at (100, 200), at (200, 200), at (300, 200)};
    EXPECT_THAT (placer.put_row ({first, second}, {.vital = 1}), ElementsAre (1, 2));
    expect_last_at (100, 200);
}

TEST_F (labels, labels_of_different_axes_keep_more_distance) {
    placer.put_row ({{at (100, 100)}});
    EXPECT_FALSE (placer.put (at (131, 100)));
    EXPECT_FALSE (placer.put (at (69, 100)));
    EXPECT_FALSE (placer.put (at (100, 111)));
    EXPECT_FALSE (placer.put (at (100, 89)));
    EXPECT_TRUE (placer.put (at (132, 100)));
    EXPECT_TRUE (placer.put (at (68, 100)));
    EXPECT_TRUE (placer.put (at (100, 112)));
    EXPECT_TRUE (placer.put (at (100, 88)));
}

TEST_F (labels, distances_grow_with_the_display_scale) {
    const ViewSize large = ViewSize::of (900, 600, 2);
    const toolkit::TextWidth wide = scaled_width (2);
    LabelPlacer scaled (large, wide, scene);
    ASSERT_TRUE (scaled.put (at (100, 100)));
    EXPECT_EQ (last ().high.x, 148);
    EXPECT_EQ (last ().high.y, 120);
    EXPECT_FALSE (scaled.put (at (153, 100)));
    EXPECT_TRUE (scaled.put (at (154, 100)));
    ASSERT_TRUE (scaled.put (at (1800, 1200)));
    EXPECT_EQ (last ().high.x, 1792);
    EXPECT_EQ (last ().high.y, 1192);
}

} // namespace
} // namespace ostrand::viewer
