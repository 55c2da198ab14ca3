// What each command does, by the menus it stands in: command_file.cpp, command_edit.cpp and so on.
// All act on the tab on top and are called with one open.
// Layer: editor (for this folder only).
#pragma once

namespace ostrand::editor {

class Workbench;

namespace run {

// command_file.cpp
void load_file (Workbench& bench);
void open_file (Workbench& bench);
void reopen_file (Workbench& bench);
void insert_file (Workbench& bench);
void insert_picture (Workbench& bench);
void save_file (Workbench& bench);
void save_as (Workbench& bench);
void save_settings (Workbench& bench);
void save_user_manual (Workbench& bench);
void export_pdf (Workbench& bench);
void export_svg (Workbench& bench);
void export_png (Workbench& bench);
void export_all_tabs (Workbench& bench);
void quit (Workbench& bench);
void close_tab (Workbench& bench);
void export_standard_sbml (Workbench& bench);
void new_tab (Workbench& bench);

// command_edit.cpp
void undo (Workbench& bench);
void redo (Workbench& bench);
void find_reactant (Workbench& bench);
void select_all (Workbench& bench);
void cut (Workbench& bench);
void copy (Workbench& bench);
void paste (Workbench& bench);
void duplicate (Workbench& bench);
void align_nodes (Workbench& bench);
void share_clones (Workbench& bench);
void color_reactants (Workbench& bench);
void fog_selection (Workbench& bench);
void unfog_selection (Workbench& bench);
void arrange (Workbench& bench);

// command_view.cpp
void zoom_in (Workbench& bench);
void zoom_out (Workbench& bench);
void zoom_reset (Workbench& bench);
void gui_background (Workbench& bench);
void use_annotation (Workbench& bench);
void dark_mode (Workbench& bench);
void show_boundary (Workbench& bench);
void show_mouse_help (Workbench& bench);
void show_kinetics (Workbench& bench);
void show_stoichiometry (Workbench& bench);
void default_yes (Workbench& bench);
void emacs_keys (Workbench& bench);
void show_grid (Workbench& bench);
void smart_move (Workbench& bench);
void smart_dialog (Workbench& bench);
void show_guides (Workbench& bench);
void snap_to_guides (Workbench& bench);
void animate (Workbench& bench);
void arrange_opened (Workbench& bench);

// command_simulation.cpp
void stochastic (Workbench& bench);
void deterministic (Workbench& bench);
void start_simulation (Workbench& bench);
void set_duration (Workbench& bench);
void stop_simulation (Workbench& bench);
void show_left_out (Workbench& bench);

// command_formula.cpp
void reactions_per_gate (Workbench& bench);
void extract_gates (Workbench& bench);
void enter_formula (Workbench& bench);
void previous_implementation (Workbench& bench);
void next_implementation (Workbench& bench);

// command_help.cpp
void about (Workbench& bench);
void documentation (Workbench& bench);

// command_tool_bar.cpp
void new_protein (Workbench& bench);
void new_molecule (Workbench& bench);
void new_gene (Workbench& bench);
void new_receptor (Workbench& bench);
void new_complex (Workbench& bench);
void bold (Workbench& bench);
void italic (Workbench& bench);
void new_round_compartment (Workbench& bench);
void new_oval_compartment (Workbench& bench);
void new_reaction (Workbench& bench);
void add_substrate (Workbench& bench);
void add_product (Workbench& bench);

} // namespace run
} // namespace ostrand::editor
