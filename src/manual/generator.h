// The user manual as HTML, made from the rows of commands and bindings each time it is needed, so
// that labels, shortcuts and bindings in it are always the live ones.
// Layer: manual (uses editor's rows).
#pragma once
#include "editor/commands.h"

#include <string>

namespace ostrand::manual {

/// What the text depends on.
struct ManualOptions {
    bool dark = false; // light letters on a dark ground
    editor::ShortcutSet shortcuts = editor::ShortcutSet::standard;
    std::string image_directory = {}; // where the pictures lie; empty: beside the manual

    bool operator== (const ManualOptions&) const = default;
};

/// The whole document: head, introduction and chapters, menus, mouse, keyboard, tail.
std::string generate_manual (const ManualOptions& options);

} // namespace ostrand::manual
