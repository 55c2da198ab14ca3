// Styles and pictures in the text that is edited.
// Layer: editor (uses document).
#pragma once
#include "editor/canvas.h"

#include <string>

namespace ostrand::editor {

/// Font and colour of the selected letters, without any of the letter at the cursor; no_font and
/// no_color leave them.
void apply_style (Canvas& canvas, unsigned font_word, unsigned colour);

/// True when a letter of a text is at the cursor, so that a picture can be put before it.
bool can_insert_picture (const Canvas& canvas);
/// Puts a picture before the letter at the cursor. False when it cannot be loaded.
bool insert_picture (Canvas& canvas, const std::string& path);

} // namespace ostrand::editor
