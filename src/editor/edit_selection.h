// What is selected as a whole: all, what hangs together, copies, the clipboard.
// Layer: editor (uses document).
#pragma once
#include "editor/canvas.h"

#include <string>
#include <string_view>

namespace ostrand::editor {

/// Selects all nodes; not while a text is edited. No step of the history.
void select_all (Canvas& canvas);
/// Selects all nodes that hang together with one.
void select_connected (Canvas& canvas, document::Node& node);
/// Copies the selected nodes and the arcs among them; the copies are selected.
void duplicate_selection (Canvas& canvas);

/// The selected letters as markup, or the selected nodes and the arcs among them as native text.
/// Empty when nothing of the kind is selected.
std::string serialise_selection (const Canvas& canvas);
/// Gives that text to the clipboard, with pictures of it.
void copy_selection (Canvas& canvas);
/// What comes from the clipboard: a network is merged to the right and selected, any other text
/// goes into the text that is edited. Nothing else takes it.
void paste_text (Canvas& canvas, std::string_view text);

} // namespace ostrand::editor
