// The search for nodes by their labels.
// Layer: editor (uses document).
#pragma once
#include "editor/canvas.h"

#include <string_view>

namespace ostrand::editor {

/// Marks the nodes whose label holds the pattern, shows the first, and says how many there are.
/// pattern  markup, as it is typed
void find_reactant (Canvas& canvas, std::string_view pattern);
/// Shows the next or the previous one; stays at either end.
void next_occurrence (Canvas& canvas, bool forward);
/// The marks go.
void clear_search (Canvas& canvas);

} // namespace ostrand::editor
