// Entries of the running editor's menus, chosen by clicks.
#pragma once
#include "shell/running_editor.h"

#include "editor/commands.h"

namespace ostrand::testing {

/// Where the titles of the menus stand, in the order of Menu; the last one is "Tools".
inline constexpr int title_x[] = {21, 63, 110, 180, 264, 326, 378};
inline constexpr int title_y = 14;
inline constexpr int first_entry_y = 39;
inline constexpr int entry_height = 21;

inline int place_in_menu (editor::Command command) {
    int place = 0;
    for (const editor::CommandRow& row : editor::command_rows ()) {
        if (row.code == command) return place;
        if (row.menu == editor::command_row (command).menu) ++place;
    }
    return -1;
}

inline void choose_entry (const Editor& editor, editor::Command command) {
    const int x = title_x[static_cast<int> (editor::command_row (command).menu)];
    editor.click (x, title_y);
    pause (100);
    editor.click (x + 5, first_entry_y + entry_height * place_in_menu (command));
    pause (60);
}

} // namespace ostrand::testing
