// Arithmetic of scroll bars and of their vanishing.
#include "editor/lift.h"

#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

TEST (lift, is_hidden_while_all_is_in_view) {
    EXPECT_TRUE (lift_geometry (500, 0, 8, 1).hidden);
    EXPECT_TRUE (lift_geometry (500, 488, 8, 1).hidden);
    EXPECT_FALSE (lift_geometry (500, 489, 8, 1).hidden);
    EXPECT_TRUE (lift_geometry (500, 976, 8, 0.5F).hidden);
    EXPECT_FALSE (lift_geometry (500, 400, 8, 2).hidden);
}

TEST (lift, thumb_is_the_part_in_view_at_its_place) {
    const LiftGeometry lift = lift_geometry (512, 1000, -100, 1);
    EXPECT_FLOAT_EQ (lift.view, 500);
    EXPECT_FLOAT_EQ (lift.length, 250);
    EXPECT_FLOAT_EQ (lift.position, 50);
    EXPECT_FLOAT_EQ (lift_geometry (512, 1000, -100, 2).length, 125);
}

TEST (lift, short_thumb_can_be_grabbed_thirty_pixels_beside_it) {
    const LiftGeometry tall = lift_geometry (512, 1000, -100, 1);
    EXPECT_TRUE (tall.can_grab (50));
    EXPECT_FALSE (tall.can_grab (49));
    EXPECT_FALSE (tall.can_grab (300));
    const LiftGeometry tiny = lift_geometry (512, 100000, -20000, 1);
    EXPECT_LT (tiny.length, short_thumb);
    EXPECT_TRUE (tiny.can_grab (tiny.position - 30));
    EXPECT_FALSE (tiny.can_grab (tiny.position - 30.5F));
    EXPECT_TRUE (tiny.can_grab (tiny.position + tiny.length + 29));
    EXPECT_FALSE (tiny.can_grab (tiny.position + tiny.length + 30));
}

TEST (lift, origin_follows_the_thumb_from_0_to_the_end) {
    const LiftGeometry lift = lift_geometry (512, 1000, -100, 1);
    EXPECT_EQ (lift.origin_at (-5), 0);
    EXPECT_EQ (lift.origin_at (0), 0);
    EXPECT_EQ (lift.origin_at (50), -100);
    EXPECT_EQ (lift.origin_at (50.4F), -100);
    EXPECT_EQ (lift.origin_at (250), -500);
    EXPECT_EQ (lift.origin_at (10000), -500);
}

TEST (lift, a_page_is_a_thumb_towards_the_press) {
    const LiftGeometry lift = lift_geometry (512, 1000, -400, 1);
    EXPECT_FLOAT_EQ (lift.position, 200);
    EXPECT_FLOAT_EQ (lift.page_towards (10), -50);
    EXPECT_FLOAT_EQ (lift.page_towards (490), 450);
}

TEST (lift, shows_within_255_pixels_of_the_edge) {
    EXPECT_EQ (alpha_for_pointer (1000, 1000), 255);
    EXPECT_EQ (alpha_for_pointer (900, 1000), 155);
    EXPECT_EQ (alpha_for_pointer (745, 1000), 0);
    EXPECT_EQ (alpha_for_pointer (100, 1000), 0);
    EXPECT_EQ (alpha_for_pointer (1200, 1000), 255);
}

TEST (fade, goes_down_by_25_until_nothing_is_left) {
    Fade fade;
    EXPECT_FALSE (fade.running ());
    EXPECT_FALSE (fade.tick ());
    fade.start ();
    EXPECT_EQ (fade.alpha (), 255);
    int ticks = 0;
    int before = fade.alpha ();
    while (fade.tick ()) {
        ++ticks;
        EXPECT_EQ (before - fade.alpha (), 25);
        before = fade.alpha ();
    }
    EXPECT_EQ (ticks, 10); // 255 - 250 is left, the next one ends it
    EXPECT_FALSE (fade.running ());
    EXPECT_EQ (fade.alpha (), 0);
}

} // namespace
} // namespace ostrand::editor
