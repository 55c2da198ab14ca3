// Colours of the curves.
#include "sim/colours.h"
#include "sim/sim_support.h"

#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

TEST (colours, sectors_of_the_hue_wheel) {
    EXPECT_EQ (hue_colour (0), 0xE50B0B00U);
    EXPECT_EQ (hue_colour (1), 0xE5E50B00U);
    EXPECT_EQ (hue_colour (2), 0x0BE50B00U);
    EXPECT_EQ (hue_colour (3), 0x0BE5E500U);
    EXPECT_EQ (hue_colour (4), 0x0B0BE500U);
    EXPECT_EQ (hue_colour (5), 0xE50BE500U);
    EXPECT_EQ (hue_colour (6), 0xE50B0B00U);
    EXPECT_EQ (hue_colour (0.5F), 0xE5780B00U);
    EXPECT_EQ (hue_colour (1.5F), 0x78E50B00U);
}

TEST (colours, displayed_species_without_one_are_spread_evenly) {
    ReadModel model ("display (a, b #123456, c, d); e -> f | 1;");
    assign_colours (model.tables);
    EXPECT_EQ (model.species ("a").colour, hue_colour (0));
    EXPECT_EQ (model.species ("b").colour, 0x12345600U);
    EXPECT_EQ (model.species ("c").colour, hue_colour (2));
    EXPECT_EQ (model.species ("d").colour, hue_colour (4));
    EXPECT_EQ (model.species ("e").colour, no_colour);
}

TEST (colours, nothing_happens_without_a_displayed_species) {
    ReadModel model ("a -> b | 1;");
    model.tables.species[0]->colour = 0x12345600;
    assign_colours (model.tables);
    EXPECT_EQ (model.species ("a").colour, 0x12345600U);
}

TEST (colours, a_colour_of_a_species_that_is_not_displayed_is_dropped) {
    ReadModel model ("display (a, b); c -> d | 1;");
    model.tables.species[2]->colour = 0x12345600;
    assign_colours (model.tables);
    EXPECT_EQ (model.species ("c").colour, no_colour);
    // It was counted among those that have a colour, so the wheel is one step short.
    EXPECT_EQ (model.species ("b").colour, hue_colour (6));
}

} // namespace
} // namespace ostrand::sim
