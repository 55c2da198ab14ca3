// Keys of the manual's window.
#include "manual/viewer_keys.h"

namespace ostrand::manual {

std::optional<std::variant<ScrollKey, ManualAction>> page_action (int key, bool ctrl) {
    switch (key) {
    case up_key: return ScrollKey::up;
    case down_key: return ScrollKey::down;
    case page_up_key: return ScrollKey::page_up;
    case page_down_key: return ScrollKey::page_down;
    case home_key: return ScrollKey::home;
    case end_key: return ScrollKey::end;
    case '/': return ManualAction::open_search;
    case 'f':
    case 's':
        if (ctrl) return ManualAction::open_search;
        return std::nullopt;
    default: return std::nullopt;
    }
}

std::optional<ManualAction> search_action (int key, bool ctrl) {
    switch (key) {
    case enter_key:
    case keypad_enter_key:
    case escape_key: return ManualAction::end_search;
    case 'g':
        if (ctrl) return ManualAction::end_search;
        return std::nullopt;
    case down_key: return ManualAction::next_match;
    case up_key: return ManualAction::previous_match;
    default: return std::nullopt;
    }
}

} // namespace ostrand::manual
