// Display scale: units, device pixels, lines that fill whole pixels.
#include "toolkit/pixels.h"

#include <gtest/gtest.h>

namespace ostrand::toolkit {
namespace {

TEST (pixels, lengths_are_scaled_and_rounded) {
    EXPECT_EQ (device_pixels (900, 1), 900);
    EXPECT_EQ (device_pixels (900, 1.25F), 1125);
    EXPECT_EQ (device_pixels (901, 1.5F), 1352); // 1351.5 rounds up
    EXPECT_EQ (device_pixels (3, 1.1F), 3);
}

TEST (pixels, a_line_is_at_least_one_pixel_wide) {
    EXPECT_EQ (line_pixels (1, 1), 1);
    EXPECT_EQ (line_pixels (1, 0.4F), 1);
    EXPECT_EQ (line_pixels (3, 1.5F), 5);
    EXPECT_EQ (line_pixels (1, 2), 2);
}

TEST (pixels, a_line_of_an_odd_width_runs_through_the_middle_of_a_pixel) {
    EXPECT_EQ (line_place (20, 1), 20.5F);
    EXPECT_EQ (line_place (20.9F, 1), 20.5F);
    EXPECT_EQ (line_place (20.2F, 3), 20.5F);
}

TEST (pixels, a_line_of_an_even_width_runs_between_two) {
    EXPECT_EQ (line_place (20, 2), 20);
    EXPECT_EQ (line_place (20.4F, 2), 20);
    EXPECT_EQ (line_place (20.6F, 4), 21);
}

} // namespace
} // namespace ostrand::toolkit
