// The editor of one process without its windows: the open tabs, the switches, the commands.
// Layer: editor.
#pragma once
#include "editor/canvas.h"
#include "editor/formula_desk.h"
#include "editor/preferences.h"
#include "editor/recent_files.h"
#include "editor/recovery.h"
#include "editor/simulation_desk.h"
#include "editor/tab_list.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::editor {

/// What came of a wish for a new tab.
enum class AddTab {
    no_history = -2, // there is no tab, since its undo file cannot be made, which is reported
    full = -1,       // no slot is free
    unreadable = 0,  // the tab is there, empty
    added = 1
};

/// What the tool bar's style part shows.
struct StyleOnShow {
    unsigned font_word = document::start_font;
    unsigned colour = 0;
};

/// How a command's entry stands.
struct EntryState {
    bool active = true;
    bool checked = false;
};

/// Options of the process that no canvas has.
struct BenchOptions {
    std::string start_directory; // where the process was started, for relative file arguments
    std::string home;            // where undo files lie
    std::string executable;      // of this program, to start the viewer
};

class Workbench {
  public:
    /// Nothing is open yet: `open_first_tab` comes next.
    Workbench (World& world, const Preferences& preferences, BenchOptions options);
    ~Workbench ();
    Workbench (const Workbench&) = delete;
    Workbench& operator= (const Workbench&) = delete;

    World& world () { return world_; }
    const BenchOptions& options () const { return options_; }
    EditorState& shared () { return shared_; }

    // Tabs (workbench_tabs.cpp).
    /// The empty tab of the start. False when its undo file cannot be made.
    bool open_first_tab ();
    /// Opens the files of the command line: the first in the tab that is there, each other in one
    /// of its own, the last on top.
    void open_command_line (const std::vector<std::string>& names);
    /// A new tab on top, with a file when `path` says one (absolute, or from the current
    /// directory).
    AddTab add_tab (const std::optional<std::string>& path);
    void select_tab (int index);
    void next_tab () { select_tab (tabs_.next ()); }
    void previous_tab () { select_tab (tabs_.previous ()); }
    void move_tab (int from, int to);
    /// The cross of a tab. The last one quits.
    void close_tab (int index);
    /// Quits unless something is modified and the user says no.
    void quit_request ();
    /// The process ends, without a question.
    void quit () { world_.end (); }
    /// A run that goes on is stopped, and every canvas goes, with its undo file. The windows call it
    /// at the end.
    void close_all ();
    /// Names that were dropped on the window, a line each, as the desktop gives them.
    void accept_dropped_paths (std::string_view text);
    /// Puts documents that were left behind into tabs of their own, behind the others.
    /// replaces_first  an untouched first tab makes way for them
    void restore (std::vector<Leftover> leftovers, bool replaces_first);
    const TabList& tabs () const { return tabs_; }
    bool has_tab () const { return tabs_.active () >= 0; }
    Canvas& current () { return tabs_.at (tabs_.active ()); }
    const Canvas& current () const { return tabs_.at (tabs_.active ()); }
    /// A file's tab, -1 when none has it.
    int tab_of_file (const std::string& absolute) const;
    std::string window_title () const;
    std::string tab_label (int index) const;
    void set_tab_label (const Canvas& canvas, std::string label);

    // Commands (workbench.cpp).
    void run (Command command);
    EntryState entry (Command command) const;
    /// The set of shortcuts in force.
    ShortcutSet shortcuts () const { return shared_.shortcuts; }

    // Switches of the process.
    bool mouse_help_on = true;
    bool smart_dialog = false;
    bool default_yes = false;
    bool emacs_keys = false;
    bool deterministic = false;
    unsigned background = 0xf0f0f0; // of the window, 0xRRGGBB
    /// The settings as they are now.
    Preferences present_preferences () const;

    // Simulation (workbench_simulation.cpp).
    /// Simulates the tab on top in the background and shows the curves.
    void start_simulation ();
    void stop_simulation () { simulations_.stop (); }
    /// Part of a running simulation that is done; nothing when none runs.
    std::optional<float> simulation_progress () const { return simulations_.progress (); }

    FormulaDesk& formulas () { return formulas_; }

    /// Opens a recent file in a tab of its own.
    void open_recent (const std::string& path);

    // Style of labels to come, and of the text at the cursor (workbench_style.cpp).
    const StyleOnShow& style () const { return style_; }
    void set_font_face (unsigned family);
    void set_font_size (unsigned index);
    void toggle_bold ();
    void toggle_italic ();
    void set_text_colour (unsigned colour);
    /// The colour that "Custom" stands for.
    unsigned custom_colour () const { return custom_colour_; }

    // Dialogs that several commands use (workbench_dialogs.cpp).
    /// "name.net" for "name.xml" and ".net"; "Untitled.net" for a document without a name.
    std::string suggest_name (const Canvas& canvas, std::string_view extension) const;
    /// Asks a question for which "Default yes" decides what Enter means.
    bool yes_no (const std::string& question);
    void concentration_dialog (Canvas& canvas, document::Node& node);
    unsigned pick_colour (unsigned colour);
    /// The extension of a document's name, ".net" for one without.
    static std::string save_extension (const Canvas& canvas);
    /// Says what a file that was just saved does not hold.
    static void tell_what_is_lost (const std::string& path);
    /// Saves a canvas under a name: with a question when another program changed the file, and
    /// with a word when it cannot be written.
    bool save (Canvas& canvas, const std::string& path);

    /// The text of the last search.
    std::string last_search;
    RecentFiles& recent () { return recent_; }
    /// The window has the focus again: files that another program wrote meanwhile get a sign.
    void look_at_files ();

    /// The status line, when a message came.
    void show_status (std::string_view text);
    const std::string& status () const { return status_; }

  private:
    struct OpenTab {
        std::unique_ptr<Canvas> canvas;
        std::string label; // while the document has no name
    };

    /// A canvas in a free slot, attached; null when none is free or its undo file cannot be made.
    Canvas* make_canvas (std::string label);
    Canvas& put_canvas (History history, std::string label);
    bool is_open (const Canvas* canvas) const;
    void attach (Canvas& canvas);
    OpenTab& slot_of (const Canvas& canvas);
    const OpenTab& slot_of (const Canvas& canvas) const;
    bool has_free_slot () const;
    void apply_style (unsigned font_word, unsigned colour);
    void show_style (unsigned font_word, unsigned colour);
    void watch_simulation ();

    World& world_;
    BenchOptions options_;
    Preferences preferences_; // as read at the start, for new tabs
    EditorState shared_;
    std::array<OpenTab, most_tabs> slots_;
    TabList tabs_;
    StyleOnShow style_;
    RecentFiles recent_;
    SimulationDesk simulations_;
    FormulaDesk formulas_;
    unsigned custom_colour_ = 0;
    std::string status_;
};

} // namespace ostrand::editor
