// What all canvases of the process share beside the document's own switches.
// Layer: editor (uses document).
#pragma once
#include "document/font.h"
#include "editor/commands.h"

#include <string>

namespace ostrand::editor {

/// Which keys are prefixes, and which prefix waits for its key.
enum class KeyState {
    standard = 0,
    emacs = 1, // Emacs keys, no prefix pending
    after_control_x = 2,
    after_escape = 3
};

/// The last press of a mouse button, to tell double and triple clicks. A series that begins in one
/// tab goes on in the tab that gets the next press.
struct PressSeries {
    int button = 0; // 0: the next press begins a series
    int count = 0;
    double time = 0; // seconds
    float x = 0;
    float y = 0;

    /// Takes a press in and gives its place in the series: 1, 2 or 3. A press goes on with a series
    /// when it comes within a quarter of a second, with the same button, within 4 pixels.
    int take (int new_button, double now, float new_x, float new_y);
};

struct EditorState {
    /// At the start prefixes work under the standard keys too, until the option was switched.
    KeyState key_state = KeyState::emacs;
    ShortcutSet shortcuts = ShortcutSet::standard; // the set in force
    PressSeries presses;
    unsigned style_word = document::start_font; // font key of labels to come
    int next_undo_number = 0;
    bool show_guides = true;     // lines while nodes are dragged in line with others
    bool snap_to_guides = false; // and the nodes go there when they are near
    bool animate = true;         // arranged objects are seen on their way
    bool arrange_opened = true;  // SBML without places is arranged when it is opened
    std::string copied_markup;   // of letters that were copied last
};

} // namespace ostrand::editor
