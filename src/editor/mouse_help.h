// What the mouse would do at the pointer: the words of the mouse help.
// Layer: editor (uses document, sim).
#pragma once
#include "document/char.h"
#include "document/node.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace ostrand::editor {

class Canvas;

/// A word for each button (1 to 3) and row of modifiers (0 none, 1 Shift, 2 Ctrl, 3 both), at
/// (button - 1) * 4 + row. No word: the button does nothing there.
using MouseHelpSlots = std::array<std::string_view, 12>;

constexpr std::size_t mouse_help_slot (int button, int row) {
    return static_cast<std::size_t> ((button - 1) * 4 + row);
}

/// Rows for on_mouse_help beside those of the modifiers: a button that went down, the release.
constexpr int lit_button_row (int button) { return button << 4; }
inline constexpr int no_button_row = 64;

/// The words for what lies under the pointer, by the selection and the mode of the canvas.
MouseHelpSlots mouse_help_slots (const Canvas& canvas, const document::Hit& hit);

/// True when the node has a concentration that can be edited: every node with a label has.
bool has_concentration (const document::Node& node);
/// True when its concentration is a list or a series of more than one value.
bool has_several_concentrations (const document::Node& node);

} // namespace ostrand::editor
