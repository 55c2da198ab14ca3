// What is copied, as a drawing.
#include "editor/copied_drawing.h"

#include "bench.h"

#include "editor/edit_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;
using ::testing::HasSubstr;
using ::testing::Not;

/// The rich drawing with some of its nodes copied.
struct Copied : Bench {
    explicit Copied (const std::vector<const char*>& labels) {
        open_rich ();
        for (const char* const label : labels) click (on (node (label), test::ctrl));
        run (Command::copy);
    }
};

TEST (copied_drawing, the_selection_is_drawn_and_nothing_else) {
    const Copied b ({"glc", "g6p"});
    const std::string svg = copied_svg (b.world.clipboard);
    EXPECT_THAT (svg, HasSubstr ("<svg"));
    EXPECT_THAT (svg, HasSubstr ("glc\n</text>"));
    EXPECT_THAT (svg, HasSubstr ("g6p\n</text>"));
    EXPECT_THAT (svg, Not (HasSubstr ("HK\n</text>")));
}

TEST (copied_drawing, it_begins_at_the_corner_wherever_the_objects_stood) {
    const Copied b ({"f6p"}); // which stands at 560 100
    const auto network = copied_network (b.world.clipboard);
    ASSERT_NE (network, nullptr);
    EXPECT_LT (network->get_width (), 80);
    EXPECT_LT (network->get_height (), 80);
}

/// Width and height, which stand at a fixed place of a PNG.
std::pair<unsigned, unsigned> size_of_png (const std::string& png) {
    const auto number = [&png] (std::size_t at) {
        unsigned value = 0;
        for (std::size_t i = at; i < at + 4; ++i)
            value = value << 8 | static_cast<unsigned char> (png.at (i));
        return value;
    };
    return {number (16), number (20)};
}

TEST (copied_drawing, the_picture_is_twice_as_large_as_the_drawing_unless_that_is_too_much) {
    const Copied b ({"glc", "g6p"});
    const auto [width, height] = size_of_png (copied_png (b.world.clipboard));
    EXPECT_THAT (copied_svg (b.world.clipboard),
                 HasSubstr ("width=\"" + std::to_string (width / 2) + "\" height=\"" +
                            std::to_string (height / 2) + '"'));
    const std::string wide = "[N2 0 2 0 0[S1 0 20 20 0 3 13{a}-][S2 0 9000 20 0 3 13{b}-]]";
    EXPECT_NEAR (size_of_png (copied_png (wide)).first, 4096, 1);
    EXPECT_EQ (copied_png ("glc"), "");
}

TEST (copied_drawing, a_text_that_is_no_network_has_no_drawing) {
    EXPECT_EQ (copied_network ("glc"), nullptr);
    EXPECT_EQ (copied_svg (""), "");
}

TEST (copied_drawing, drawing_a_copy_changes_neither_document_nor_selection) {
    Copied b ({"glc", "HK"});
    const std::string before = b.text ();
    const auto selected = b.selected ();
    copied_svg (b.world.clipboard);
    EXPECT_EQ (b.text (), before);
    EXPECT_EQ (b.selected (), selected);
}

TEST (copied_drawing, a_copy_of_hundreds_of_thousands_of_bytes_is_whole) {
    Bench b;
    std::string text = "[N3000 0 2 8 8\n";
    for (int i = 1; i <= 3000; ++i)
        text += "[S" + std::to_string (i) + " 0 " + std::to_string (60 + i % 50 * 90) + ' ' +
                std::to_string (40 + i / 50 * 60) + " 0 3 13{" + std::string (60, 'm') +
                std::to_string (i) + "}-]\n";
    b.open_text (text + "]");
    b.run (Command::select_all);
    b.run (Command::copy);
    EXPECT_GT (b.world.clipboard.size (), 250000U);
    b.run (Command::new_tab);
    b.run (Command::paste);
    EXPECT_EQ (b.network ().nb_nodes (), 3000);
}

} // namespace
} // namespace ostrand::editor
