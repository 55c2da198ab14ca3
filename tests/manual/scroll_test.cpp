// The position of the view and its scroll bar.
#include "manual/scroll.h"

#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

/// A page of 2000 pixels in a window of 850 x 500.
PageScroll long_page () {
    PageScroll scroll;
    scroll.set_extent (850, 500, 2000);
    return scroll;
}

TEST (scroll, arrows_and_wheel_go_by_twenty_pixels) {
    PageScroll scroll = long_page ();
    scroll.key (ScrollKey::down);
    EXPECT_EQ (scroll.scroll_y (), 20);
    scroll.wheel (2);
    EXPECT_EQ (scroll.scroll_y (), 60);
    scroll.key (ScrollKey::up);
    EXPECT_EQ (scroll.scroll_y (), 40);
    scroll.wheel (-1);
    EXPECT_EQ (scroll.scroll_y (), 20);
}

TEST (scroll, page_keys_leave_twenty_pixels_in_view) {
    PageScroll scroll = long_page ();
    scroll.key (ScrollKey::page_down);
    EXPECT_EQ (scroll.scroll_y (), 480);
    scroll.key (ScrollKey::page_up);
    EXPECT_EQ (scroll.scroll_y (), 0);
}

TEST (scroll, home_and_end_go_to_the_ends_of_the_page) {
    PageScroll scroll = long_page ();
    scroll.key (ScrollKey::end);
    EXPECT_EQ (scroll.scroll_y (), 1500);
    scroll.key (ScrollKey::home);
    EXPECT_EQ (scroll.scroll_y (), 0);
}

TEST (scroll, stays_within_the_page) {
    PageScroll scroll = long_page ();
    scroll.key (ScrollKey::up);
    EXPECT_EQ (scroll.scroll_y (), 0);
    scroll.scroll_to (99999);
    EXPECT_EQ (scroll.scroll_y (), 1500);
    scroll.scroll_to (-5);
    EXPECT_EQ (scroll.scroll_y (), 0);
}

TEST (scroll, a_page_that_fits_does_not_scroll) {
    PageScroll scroll;
    scroll.set_extent (850, 500, 400);
    scroll.key (ScrollKey::end);
    EXPECT_EQ (scroll.scroll_y (), 0);
    EXPECT_TRUE (scroll.geometry ().hidden);
    EXPECT_FALSE (scroll.press (849, 10));
}

TEST (scroll, a_page_that_just_fits_has_no_lift) {
    PageScroll scroll;
    scroll.set_extent (850, 500, 500);
    EXPECT_TRUE (scroll.geometry ().hidden);
    scroll.set_extent (850, 500, 501);
    EXPECT_FALSE (scroll.geometry ().hidden);
}

TEST (scroll, a_shorter_page_keeps_the_view_within_it) {
    PageScroll scroll = long_page ();
    scroll.key (ScrollKey::end);
    scroll.set_extent (850, 500, 1000);
    EXPECT_EQ (scroll.scroll_y (), 500);
    scroll.set_extent (850, 2000, 1000);
    EXPECT_EQ (scroll.scroll_y (), 0);
}

TEST (scroll, in_a_window_lower_than_what_stays_a_page_key_still_moves) {
    PageScroll scroll;
    scroll.set_extent (850, 10, 2000);
    scroll.key (ScrollKey::page_down);
    EXPECT_EQ (scroll.scroll_y (), 20);
}

TEST (lift, has_the_length_and_place_of_a_canvas_lift) {
    PageScroll scroll = long_page ();
    scroll.scroll_to (1000);
    const auto lift = scroll.geometry ();
    EXPECT_FLOAT_EQ (lift.view, 488);
    EXPECT_FLOAT_EQ (lift.length, 488.0F * 488 / 2000);
    EXPECT_FLOAT_EQ (lift.position, 1000.0F * 488 / 2000);
}

TEST (lift, a_thumb_that_is_dragged_follows_the_pointer) {
    PageScroll scroll = long_page ();
    ASSERT_TRUE (scroll.press (845, 10)); // on the thumb, which begins at 0
    EXPECT_EQ (scroll.scroll_y (), 0);
    EXPECT_TRUE (scroll.drag (10 + 122)); // a quarter of 488
    EXPECT_EQ (scroll.scroll_y (), 500);
    EXPECT_TRUE (scroll.drag (99999));
    EXPECT_EQ (scroll.scroll_y (), 1500);
    EXPECT_TRUE (scroll.drag (-99999));
    EXPECT_EQ (scroll.scroll_y (), 0);
    EXPECT_TRUE (scroll.release ());
    EXPECT_FALSE (scroll.drag (50));
    EXPECT_FALSE (scroll.release ());
}

TEST (lift, a_press_beside_the_thumb_jumps_a_page_towards_it) {
    PageScroll scroll = long_page ();
    ASSERT_TRUE (scroll.press (845, 400));
    EXPECT_EQ (scroll.scroll_y (), 488); // the thumb's length on the bar
    scroll.release ();
    ASSERT_TRUE (scroll.press (845, 5));
    EXPECT_EQ (scroll.scroll_y (), 0);
}

TEST (lift, its_column_is_twelve_pixels_wide) {
    PageScroll scroll = long_page ();
    EXPECT_FALSE (scroll.press (837, 10));
    EXPECT_TRUE (scroll.press (838, 10));
}

TEST (lift, a_short_thumb_can_be_grabbed_beside_it_and_is_marked) {
    PageScroll scroll;
    scroll.set_extent (850, 100, 20000);
    ASSERT_LT (scroll.geometry ().length, 30);
    ASSERT_TRUE (scroll.press (845, 25)); // in the extended zone
    EXPECT_EQ (scroll.scroll_y (), 0);
    ASSERT_TRUE (scroll.lift ());
    EXPECT_TRUE (scroll.lift ()->marked);
}

TEST (lift, appears_from_a_hundred_and_fifty_pixels_to_the_right_edge) {
    PageScroll scroll = long_page ();
    scroll.pointer_moved (850 - 151);
    EXPECT_FALSE (scroll.lift ());
    scroll.pointer_moved (850 - 150);
    EXPECT_FALSE (scroll.lift ());
    EXPECT_TRUE (scroll.pointer_moved (850 - 75));
    ASSERT_TRUE (scroll.lift ());
    EXPECT_EQ (scroll.lift ()->alpha, 127);
    EXPECT_TRUE (scroll.pointer_moved (850));
    EXPECT_EQ (scroll.lift ()->alpha, 255);
    EXPECT_TRUE (scroll.pointer_left ());
    EXPECT_FALSE (scroll.lift ());
    EXPECT_FALSE (scroll.pointer_left ());
}

TEST (lift, has_a_colour_for_each_state) {
    PageScroll scroll = long_page ();
    scroll.pointer_moved (800);
    EXPECT_EQ (scroll.lift ()->colour, 0xf0101000U);
    scroll.pointer_moved (840);
    EXPECT_EQ (scroll.lift ()->colour, 0x30ff3000U);
    scroll.press (840, 10);
    EXPECT_EQ (scroll.lift ()->colour, 0x5050ff00U);
    EXPECT_EQ (scroll.lift ()->alpha, 255);
    scroll.release ();
    EXPECT_EQ (scroll.lift ()->colour, 0xf0101000U);
}

TEST (lift, is_eight_wide_with_a_margin_of_two) {
    PageScroll scroll = long_page ();
    scroll.pointer_moved (850);
    EXPECT_EQ (scroll.lift ()->x, 850 - 12 + 2);
    EXPECT_EQ (scroll.lift ()->width, 8);
}

TEST (lift, a_scroll_shows_it_and_lets_it_fade) {
    PageScroll scroll = long_page ();
    EXPECT_FALSE (scroll.fading ());
    scroll.wheel (1);
    EXPECT_TRUE (scroll.fading ());
    ASSERT_TRUE (scroll.lift ());
    EXPECT_EQ (scroll.lift ()->alpha, 255);
    int ticks = 1;
    while (scroll.tick ()) ++ticks;
    EXPECT_EQ (ticks, 11); // 255 by 25
    EXPECT_FALSE (scroll.fading ());
    EXPECT_FALSE (scroll.lift ());
}

TEST (lift, dragging_it_fades_nothing) {
    PageScroll scroll = long_page ();
    scroll.press (845, 10);
    scroll.drag (100);
    EXPECT_FALSE (scroll.fading ());
}

} // namespace
} // namespace ostrand::manual
