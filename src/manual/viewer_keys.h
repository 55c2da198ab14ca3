// What keys do in the window of the manual.
// Layer: manual.
#pragma once
#include "manual/scroll.h"

#include <optional>
#include <variant>

namespace ostrand::manual {

/// Keys as the toolkit numbers them.
inline constexpr int home_key = 0xff50;
inline constexpr int up_key = 0xff52;
inline constexpr int down_key = 0xff54;
inline constexpr int page_up_key = 0xff55;
inline constexpr int page_down_key = 0xff56;
inline constexpr int end_key = 0xff57;
inline constexpr int enter_key = 0xff0d;
inline constexpr int keypad_enter_key = 0xff8d;
inline constexpr int escape_key = 0xff1b;

enum class ManualAction {
    open_search, // show the line of the search and give it the focus
    end_search,  // hide it and give the focus back
    next_match,
    previous_match
};

/// Of the page: arrows, page keys, Home and End scroll; Ctrl+F, Ctrl+S and "/" open the search.
/// Nothing for any other key.
std::optional<std::variant<ScrollKey, ManualAction>> page_action (int key, bool ctrl);

/// Of the search's line: Enter, Ctrl+G (the bell) and Escape end it, Down and Up step through the
/// matches. Nothing for a key that edits the line.
std::optional<ManualAction> search_action (int key, bool ctrl);

} // namespace ostrand::manual
