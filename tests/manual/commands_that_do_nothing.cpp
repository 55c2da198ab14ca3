// The rows of the command table name functions that the editor's library does not have yet; a
// program that uses the rows must define them. Here they do nothing, for these tests never run a
// command. To be removed once the library holds them all.
#include "editor/command_functions.h"

namespace ostrand::editor::run {

void load_file (Workbench&) {}
void open_file (Workbench&) {}
void reopen_file (Workbench&) {}
void insert_file (Workbench&) {}
void insert_picture (Workbench&) {}
void save_file (Workbench&) {}
void save_as (Workbench&) {}
void save_settings (Workbench&) {}
void save_user_manual (Workbench&) {}
void export_pdf (Workbench&) {}
void export_svg (Workbench&) {}
void quit (Workbench&) {}
void new_tab (Workbench&) {}
void undo (Workbench&) {}
void redo (Workbench&) {}
void find_reactant (Workbench&) {}
void select_all (Workbench&) {}
void cut (Workbench&) {}
void copy (Workbench&) {}
void paste (Workbench&) {}
void duplicate (Workbench&) {}
void align_nodes (Workbench&) {}
void share_clones (Workbench&) {}
void color_reactants (Workbench&) {}
void fog_selection (Workbench&) {}
void unfog_selection (Workbench&) {}
void zoom_in (Workbench&) {}
void zoom_out (Workbench&) {}
void zoom_reset (Workbench&) {}
void gui_background (Workbench&) {}
void use_annotation (Workbench&) {}
void dark_mode (Workbench&) {}
void show_boundary (Workbench&) {}
void show_mouse_help (Workbench&) {}
void show_kinetics (Workbench&) {}
void show_stoichiometry (Workbench&) {}
void default_yes (Workbench&) {}
void emacs_keys (Workbench&) {}
void show_grid (Workbench&) {}
void smart_move (Workbench&) {}
void smart_dialog (Workbench&) {}
void stochastic (Workbench&) {}
void deterministic (Workbench&) {}
void start_simulation (Workbench&) {}
void set_duration (Workbench&) {}
void reactions_per_gate (Workbench&) {}
void extract_gates (Workbench&) {}
void enter_formula (Workbench&) {}
void previous_implementation (Workbench&) {}
void next_implementation (Workbench&) {}
void about (Workbench&) {}
void documentation (Workbench&) {}
void new_protein (Workbench&) {}
void new_molecule (Workbench&) {}
void new_gene (Workbench&) {}
void new_receptor (Workbench&) {}
void new_complex (Workbench&) {}
void bold (Workbench&) {}
void italic (Workbench&) {}
void new_round_compartment (Workbench&) {}
void new_oval_compartment (Workbench&) {}
void new_reaction (Workbench&) {}
void add_substrate (Workbench&) {}
void add_product (Workbench&) {}

} // namespace ostrand::editor::run
