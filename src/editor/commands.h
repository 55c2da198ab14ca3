// The commands of the editor: one row each, which menus, shortcuts, tool bar, mouse help, manual
// and tests all read.
// Layer: editor.
#pragma once
#include <optional>
#include <span>
#include <string_view>

namespace ostrand::editor {

class Workbench;

/// Every command that a menu or the tool bar offers. Menu commands come first, in menu order.
enum class Command {
    // File
    load_file,
    open_file,
    reopen_file,
    insert_file,
    insert_picture,
    save_file,
    save_as,
    save_settings,
    save_user_manual,
    export_pdf,
    export_svg,
    quit,
    export_png,
    export_all_tabs,
    close_tab,
    export_standard_sbml,
    // Edit
    undo,
    redo,
    find_reactant,
    select_all,
    cut,
    copy,
    paste,
    duplicate,
    align_nodes,
    share_clones,
    color_reactants,
    fog_selection,
    unfog_selection,
    arrange,
    // View
    zoom_in,
    zoom_out,
    zoom_reset,
    gui_background,
    use_annotation,
    dark_mode,
    show_boundary,
    show_mouse_help,
    show_kinetics,
    show_stoichiometry,
    default_yes,
    emacs_keys,
    show_grid,
    smart_move,
    smart_dialog,
    show_guides,
    snap_to_guides,
    animate,
    arrange_opened,
    // Simulation
    stochastic,
    deterministic,
    start_simulation,
    set_duration,
    stop_simulation,
    show_left_out,
    // Formula
    reactions_per_gate,
    extract_gates,
    enter_formula,
    previous_implementation,
    next_implementation,
    // Help
    about,
    documentation,
    // Tool bar
    new_protein,
    new_molecule,
    new_gene,
    new_receptor,
    new_complex,
    font_face,
    font_size,
    bold,
    italic,
    text_colour,
    new_round_compartment,
    new_oval_compartment,
    new_reaction,
    add_substrate,
    add_product,
    new_tab,
};

/// Number of commands.
inline constexpr int command_count = static_cast<int> (Command::new_tab) + 1;

/// The menus of the bar, in order, and the tool bar.
enum class Menu { file, edit, view, simulation, formula, help, tool_bar };

/// Titles of the menus as the bar shows them.
std::string_view menu_title (Menu menu);

/// How an entry behaves in a menu.
enum class CommandForm {
    plain,
    toggle,    // has a check mark
    radio_off, // one of a group
    choice     // of the tool bar: has a list
};

/// A key with what is held down; a key of 0 means no shortcut.
struct Shortcut {
    bool ctrl = false;
    bool shift = false;
    int key = 0; // a character in lower case, or the toolkit's number of a key

    bool operator== (const Shortcut&) const = default;
    bool is_set () const { return key != 0; }
};

/// The two sets of shortcuts; a set holds what a row says for it and nothing else.
enum class ShortcutSet { standard, emacs };

/// The Tab key as the toolkit numbers it.
inline constexpr int tab_key = 0xff09;

/// One command.
struct CommandRow {
    Command code;
    Menu menu;
    std::string_view label;     // in the menu, with the mark of its letter; of the tool bar its tip
    std::string_view name = {}; // in the manual; empty: the manual has no row for it
    std::string_view key_text = {}; // keys that reach it under the Emacs set beside the shortcut
    Shortcut standard = {};
    Shortcut emacs = {};
    CommandForm form = CommandForm::plain;
    bool divider = false;        // a line behind the entry
    bool off_at_start = false;   // cannot be chosen until something enables it
    std::string_view image = {}; // of the tool bar
    std::string_view help = {};  // for the manual; "@NAME@" stands for the picture NAME
    void (*run) (Workbench&) = nullptr;
};

/// All rows, in the order of Command.
std::span<const CommandRow> command_rows ();

/// The row of a command.
const CommandRow& command_row (Command command);

/// The shortcut of a row in a set.
const Shortcut& shortcut_of (const CommandRow& row, ShortcutSet set);

/// The command that a key reaches in a set; nothing when none does.
std::optional<Command> command_for (const Shortcut& pressed, ShortcutSet set);

} // namespace ostrand::editor
