// What keys do in the manual's window.
#include "manual/viewer_keys.h"

#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

TEST (page_keys, scroll) {
    const std::pair<int, ScrollKey> keys[] = {
        {0xff52, ScrollKey::up},        {0xff54, ScrollKey::down}, {0xff55, ScrollKey::page_up},
        {0xff56, ScrollKey::page_down}, {0xff50, ScrollKey::home}, {0xff57, ScrollKey::end}};
    for (const auto& [key, wanted] : keys) {
        const auto action = page_action (key, false);
        ASSERT_TRUE (action) << key;
        EXPECT_EQ (std::get<ScrollKey> (*action), wanted) << key;
    }
}

TEST (page_keys, open_the_search) {
    for (const int key : {'f', 's'}) {
        EXPECT_EQ (std::get<ManualAction> (*page_action (key, true)), ManualAction::open_search);
        EXPECT_FALSE (page_action (key, false));
    }
    EXPECT_EQ (std::get<ManualAction> (*page_action ('/', false)), ManualAction::open_search);
}

TEST (page_keys, others_do_nothing) {
    for (const int key : std::initializer_list<int>{'a', ' ', 0xff1b, 0xff0d})
        EXPECT_FALSE (page_action (key, false)) << key;
}

TEST (search_keys, end_the_search_or_step_through_it) {
    EXPECT_EQ (search_action (0xff0d, false), ManualAction::end_search); // Enter
    EXPECT_EQ (search_action (0xff8d, false), ManualAction::end_search); // of the number pad
    EXPECT_EQ (search_action ('g', true), ManualAction::end_search);     // the bell
    EXPECT_EQ (search_action (0xff1b, false), ManualAction::end_search); // Escape
    EXPECT_EQ (search_action (0xff54, false), ManualAction::next_match);
    EXPECT_EQ (search_action (0xff52, false), ManualAction::previous_match);
}

TEST (search_keys, letters_are_typed) {
    for (const int key : {'g', 'f', ' ', '/'}) {
        EXPECT_EQ (search_action (key, false), std::nullopt) << key;
    }
}

} // namespace
} // namespace ostrand::manual
