// What the editor asks of whoever shows it: the windows, a test, a fuzzer.
// Layer: editor (uses base).
#pragma once
#include "editor/mouse_help.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {
class BackgroundWork;
}

namespace ostrand::editor {

class Canvas;

/// The hint of a question whose default is No whatever the settings say.
inline constexpr const char* overwrite_hint = "[y/N]: ";

/// Shapes of the mouse pointer over a canvas.
enum class PointerShape { arrow, cross, insert };

/// One entry of a menu that pops up at the pointer.
struct PopupEntry {
    std::string label;
    int value = 0;
    bool active = true;
    bool divider = false; // a line behind it
};

/// A file name that is asked for.
struct FileQuestion {
    std::string prompt = {};        // in the line above the canvas
    std::string filter = {};        // patterns divided by blanks, for the line
    std::string title = {};         // of the native chooser
    std::string native_filter = {}; // as the toolkit's chooser takes it
    std::string initial = {};       // the name to begin with, selected; empty: none
    bool saving = false;            // a file that is there is taken only after a question
    bool several = false;           // several files may be chosen at once, in the native chooser
};

/// What a field of a dialog takes.
enum class FieldType { text = 0, number = 1, whole_number = 2 };

/// A value that is asked for.
struct ValueQuestion {
    std::string prompt; // in the line above the canvas
    std::string title;  // of the dialog window
    std::string initial;
    FieldType type = FieldType::text;
    /// Whether the dialog takes a value; the reason why not, empty when it does. Not asked by the
    /// line above the canvas. May be empty.
    std::function<std::string (const std::string&)> fault;
};

/// A search that goes on with each key, until it ends.
struct SearchQuestion {
    std::string prompt;
    std::string title;
    std::string initial;
    std::function<void (const std::string&)> changed;
    std::function<void (bool forward)> step;
    std::function<void (const std::string& last)> ended;
};

/// What is copied.
struct ClipboardContent {
    std::string text;        // always offered
    bool is_network = false; // native text of a network, of which drawings can be offered too
};

/// A document that can be restored: its name, empty for one without, and the time of its last edit
/// in seconds since 1970.
struct RecoveryItem {
    std::string name;
    std::int64_t time = 0;
};

enum class RecoveryAnswer { restore, remove, later };

using TimerId = int;

/// The other side of the editor. All calls come from the thread of the interface. Calls that ask
/// wait for the answer, while events go on; nothing means that the user gave up.
class World {
  public:
    World () = default;
    World (const World&) = delete;
    World& operator= (const World&) = delete;
    virtual ~World () = default;

    // Showing.
    /// The canvas's picture is stale.
    virtual void redraw (Canvas& canvas) = 0;
    virtual void show_pointer (PointerShape shape) = 0;
    /// Titles, tabs, menus, tool bar or zoom show something else now; they are asked for anew.
    virtual void refresh () = 0;
    /// Only the text of the status line changed.
    virtual void refresh_status (const std::string& text) = 0;
    /// The words of the mouse help, null to leave them, and what of it is lit; see mouse_help.h.
    virtual void show_mouse_help (const MouseHelpSlots* slots, int row) = 0;

    // Asking.
    /// A window with a text and the button "Close".
    virtual void alert (const std::string& text) = 0;
    virtual bool yes_no (const std::string& question, const std::string& hint,
                         const std::string& tail) = 0;
    virtual std::vector<std::string> ask_files (const FileQuestion& question) = 0;
    /// The answer comes through `taken`, now or later; never when the user gives up.
    virtual void ask_value (const ValueQuestion& question,
                            std::function<void (const std::string&)> taken) = 0;
    virtual void search (const SearchQuestion& question) = 0;
    /// What is to be done with documents that were left behind.
    virtual RecoveryAnswer ask_recovery (const std::vector<RecoveryItem>& items) = 0;
    /// The value of the entry that was chosen.
    virtual std::optional<int> popup (const std::vector<PopupEntry>& entries) = 0;
    /// 0xRRGGBB in, 0xRRGGBB out.
    virtual std::optional<unsigned> choose_colour (const std::string& title, unsigned rgb) = 0;

    /// Waits until long work has ended, with a window that says so, how far it is, and can stop it.
    virtual void wait_for (const std::string& text, BackgroundWork& work) = 0;
    /// The dialog of formulas offers these metabolites from now on; Ok calls `entered`.
    virtual void fill_formula_dialog (
        const std::vector<std::string>& inputs, const std::vector<std::string>& outputs,
        std::function<void (const std::string& formula, const std::string& output)> entered) = 0;
    virtual void show_formula_dialog () = 0;

    // Help.
    virtual void show_about () = 0;
    virtual void show_manual () = 0;
    /// Writes the manual to a file; a failure is reported.
    virtual void save_manual (const std::string& path) = 0;

    // Clipboard.
    virtual void copy (ClipboardContent content) = 0;
    /// The text on the clipboard; it comes to Canvas::paste_text, now or later.
    virtual void request_paste (Canvas& canvas) = 0;

    // Time.
    /// Seconds since some moment; never goes back.
    virtual double now () const = 0;
    /// Calls `what` once, after `seconds`.
    virtual TimerId call_later (double seconds, std::function<void ()> what) = 0;
    virtual void cancel (TimerId timer) = 0;

    /// The process is to end with status 0: Workbench::close_all comes first.
    virtual void end () = 0;
};

} // namespace ostrand::editor
