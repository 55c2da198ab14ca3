// The order of tabs.
#include "editor/canvas.h"
#include "editor/tab_list.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace ostrand::editor {
namespace {

/// Canvases that nobody looks into.
struct Tabs {
    struct alignas (Canvas) Place {
        char nothing;
    };
    std::array<Place, 8> places{};
    TabList list;

    Canvas& canvas (int i) {
        return reinterpret_cast<Canvas&> (places[static_cast<std::size_t> (i)]);
    }
    explicit Tabs (int count) {
        for (int i = 0; i < count; ++i) list.add (canvas (i));
    }
    std::string order () {
        std::string text;
        for (int i = 0; i < list.count (); ++i)
            for (int c = 0; c < 8; ++c)
                if (&list.at (i) == &canvas (c)) text += static_cast<char> ('a' + c);
        return text;
    }
};

TEST (tab_list, the_first_tab_is_on_top) {
    Tabs tabs (3);
    EXPECT_EQ (tabs.list.active (), 0);
    EXPECT_EQ (TabList ().active (), -1);
}

TEST (tab_list, next_and_previous_go_round) {
    Tabs tabs (3);
    EXPECT_EQ (tabs.list.next (), 1);
    EXPECT_EQ (tabs.list.previous (), 2);
    tabs.list.select (2);
    EXPECT_EQ (tabs.list.next (), 0);
}

TEST (tab_list, a_closed_tab_gives_way_to_the_one_behind_it_the_last_to_the_one_before) {
    Tabs tabs (4);
    tabs.list.select (1);
    EXPECT_EQ (tabs.list.heir_of (1), 2);
    tabs.list.remove (1);
    EXPECT_EQ (tabs.order (), "acd");
    EXPECT_EQ (&tabs.list.at (tabs.list.active ()), &tabs.canvas (2));
    tabs.list.select (2);
    tabs.list.remove (2);
    EXPECT_EQ (&tabs.list.at (tabs.list.active ()), &tabs.canvas (2));
    // Another one closed leaves the tab on top.
    tabs.list.remove (0);
    EXPECT_EQ (tabs.order (), "c");
    EXPECT_EQ (tabs.list.active (), 0);
    tabs.list.remove (0);
    EXPECT_EQ (tabs.list.active (), -1);
}

TEST (tab_list, a_moved_tab_stays_on_top) {
    Tabs tabs (4);
    tabs.list.select (1);
    tabs.list.move (1, 3);
    EXPECT_EQ (tabs.order (), "acdb");
    EXPECT_EQ (tabs.list.active (), 3);
    tabs.list.move (0, 2);
    EXPECT_EQ (tabs.order (), "cdab");
    EXPECT_EQ (tabs.list.active (), 3);
}

TEST (tab_list, a_dragged_tab_goes_where_a_left_half_holds_the_pointer) {
    const std::array<TabSpan, 3> spans{{{0, 100}, {100, 100}, {200, 100}}};
    EXPECT_EQ (drop_index (spans, 0, 120), 1);
    EXPECT_EQ (drop_index (spans, 0, 149), 1);
    EXPECT_EQ (drop_index (spans, 0, 150), std::nullopt);
    EXPECT_EQ (drop_index (spans, 0, 20), std::nullopt);
    EXPECT_EQ (drop_index (spans, 2, 20), 0);
    EXPECT_EQ (drop_index (spans, 2, 350), std::nullopt);
}

TEST (tab_list, a_drag_of_less_than_6_pixels_is_a_click) {
    EXPECT_TRUE (is_click_distance (5, -5));
    EXPECT_FALSE (is_click_distance (6, 0));
    EXPECT_FALSE (is_click_distance (0, -6));
}

} // namespace
} // namespace ostrand::editor
