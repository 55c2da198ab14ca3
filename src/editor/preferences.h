// The settings that outlive a run: their table, their file.
// Layer: editor (uses base).
#pragma once
#include <string>
#include <string_view>

namespace ostrand::editor {

/// What the preferences file keeps, with the defaults that hold until it is read.
struct Preferences {
    bool boundary = true;             // the network's box is shown
    bool kinetics = true;             // kinetic labels are shown
    bool mouse_help = true;           // the mouse help is shown
    bool grid = false;                // the grid is shown
    bool smart_move = true;           // reactants follow a moved node
    unsigned zoom = 100;              // percent
    std::string simulation = "SSA";   // "ODE" is the deterministic engine, all else the stochastic
    bool stoichiometry = false;       // stoichiometries are shown
    bool smart_dialog = false;        // questions are asked in the line above the canvas
    bool use_annotation = true;       // SBML files open with the drawing they carry
    bool dark_mode = false;           // light on dark
    bool lift_always_visible = false; // scroll bars never fade
    unsigned lift_background = 0;     // toolkit colour behind a scroll bar, 0 none
    bool default_yes = false;         // Enter answers a question with yes
    bool emacs_keys = false;          // the Emacs set of shortcuts
    unsigned background = 0xf0f0f0;   // of the window, 0xRRGGBB
    bool guides = true;               // lines while nodes are dragged in line with others
    bool snap_to_guides = false;      // and the nodes go there when they are near
    bool animate = true;              // arranged objects are seen on their way
    bool arrange_opened = true;       // SBML without places is arranged when it is opened
    std::string face = "Arial";       // labels of items of the tool bar's choices
    std::string size = "14";
    std::string colour = "Black";

    /// True when the simulation runs with the deterministic engine.
    bool deterministic () const { return simulation == "ODE"; }
    /// The zoom in percent within what a canvas allows, 10 to 200.
    unsigned canvas_zoom () const;
};

/// Settings from the text of a preferences file. A text that does not begin as one leaves the
/// defaults; unknown keys are ignored; a value that does not fit its key leaves what is there.
Preferences preferences_from_text (std::string_view text);

/// The file's text. Rows that were added to the first ones are written only when they differ from
/// their defaults.
/// seconds  the time of writing, since 1970
std::string preferences_text (const Preferences& preferences, long seconds);

/// Where the file lies: ".lattrix_rc" in the home directory.
std::string preferences_path ();

/// Reads the file; the defaults, without a word, when it is missing or foreign.
Preferences read_preferences ();

/// Writes the file. False with the reason in `error` when it cannot be written.
bool write_preferences (const Preferences& preferences, std::string& error);

} // namespace ostrand::editor
