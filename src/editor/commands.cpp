// The rows of the command table.
#include "editor/commands.h"

#include "editor/command_functions.h"

#include <algorithm>
#include <array>

namespace ostrand::editor {
namespace {

constexpr Shortcut ctrl (int key) { return {.ctrl = true, .key = key}; }
constexpr Shortcut ctrl_shift (int key) { return {.ctrl = true, .shift = true, .key = key}; }
constexpr Shortcut tab{.key = tab_key};

constexpr std::array<CommandRow, command_count> rows{{
    // File
    {.code = Command::load_file,
     .menu = Menu::file,
     .label = "&Load...",
     .name = "load-file",
     .key_text = "^X^R",
     .standard = ctrl ('l'),
     .help = "Open a file in a new tab. Native networks (.net, .mto), SBML (.xml) and model texts "
             "(.ssa) can be read; a model text and an SBML file without a drawing of their own are "
             "laid out automatically. A file that is open in another tab is not opened twice.",
     .run = run::load_file},
    {.code = Command::open_file,
     .menu = Menu::file,
     .label = "&Open...",
     .name = "open-file",
     .key_text = "^X^F",
     .standard = ctrl ('o'),
     .help = "Open a file in the current tab, in place of the bio-network that is there. A "
             "confirmation is asked for when that one is modified, and undo brings it back.",
     .run = run::open_file},
    {.code = Command::reopen_file,
     .menu = Menu::file,
     .label = "&ReOpen",
     .name = "reopen-file",
     .key_text = "^X^V",
     .standard = ctrl_shift ('o'),
     .help = "Read the file of the current tab again, as it is on the disk now. A confirmation is "
             "asked for when the bio-network is modified.",
     .run = run::reopen_file},
    {.code = Command::insert_file,
     .menu = Menu::file,
     .label = "&Insert...",
     .name = "insert-file",
     .key_text = "^X^I",
     .standard = ctrl ('i'),
     .help = "Merge the bio-network of a file into the current one, to the right of it.",
     .run = run::insert_file},
    {.code = Command::insert_picture,
     .menu = Menu::file,
     .label = "&Insert Picture",
     .name = "insert-image",
     .key_text = "^X^P",
     .standard = ctrl_shift ('i'),
     .help = "Put a picture (PNG, JPEG or GIF) into a label, before the character at the cursor. "
             "Click on a character of the label first.",
     .run = run::insert_picture},
    {.code = Command::save_file,
     .menu = Menu::file,
     .label = "&Save",
     .name = "save-file",
     .key_text = "^X^S",
     .standard = ctrl ('s'),
     .help = "Save the current bio-network under its name; the ending of the name decides the "
             "format: .xml is SBML with the drawing inside, .ssa a model text, anything else the "
             "native format. A bio-network without a name asks for one.",
     .run = run::save_file},
    {.code = Command::save_as,
     .menu = Menu::file,
     .label = "Save &as...",
     .name = "save-as",
     .key_text = "^X^W",
     .standard = ctrl_shift ('s'),
     .divider = true,
     .help = "Save the current bio-network under another name, which becomes its name. A file of "
             "that name is overwritten after a confirmation only.",
     .run = run::save_as},
    {.code = Command::save_settings,
     .menu = Menu::file,
     .label = "Sa&ve settings",
     .name = "save-settings",
     .help = "Save the present settings; they hold at the next start. These are:<ul>"
             "<li>Default font face [Arial]</li>"
             "<li>Default font size [14]</li>"
             "<li>Default colour [black]</li>"
             "<li>Default zoom factor [100%]</li>"
             "<li>Show boundary [yes]</li>"
             "<li>Show mouse help [yes]</li>"
             "<li>Show kinetics [yes]</li>"
             "<li>Show stoichiometry [no]</li>"
             "<li>Show grid [no]</li>"
             "<li>Dark mode [no]</li>"
             "<li>SBML annotation [yes]</li>"
             "<li>Default yes [no]</li>"
             "<li>Emacs keys [no]</li>"
             "<li>Smart move [yes]</li>"
             "<li>Smart dialogbox [no]</li>"
             "<li>Alignment guides [yes]</li>"
             "<li>Snap to guides [no]</li>"
             "<li>Animate [yes]</li>"
             "<li>Arrange opened SBML [yes]</li>"
             "<li>Scroll bars always visible [no]</li>"
             "<li>Simulation engine [stochastic]</li>"
             "<li>Background of the window [light grey]</li></ul>",
     .run = run::save_settings},
    {.code = Command::save_user_manual,
     .menu = Menu::file,
     .label = "Save &User Manual",
     .name = "save-user-manual",
     .divider = true,
     .help = "Save this manual as a web page that any browser shows.",
     .run = run::save_user_manual},
    {.code = Command::export_pdf,
     .menu = Menu::file,
     .label = "E&xport to PDF...",
     .name = "export-to-pdf",
     .key_text = "Esc-Z",
     .standard = ctrl_shift ('p'),
     .help = "Write the drawing of the current bio-network to a PDF file of one page.",
     .run = run::export_pdf},
    {.code = Command::export_svg,
     .menu = Menu::file,
     .label = "Export to S&VG...",
     .name = "export-to-svg",
     .key_text = "Esc-S",
     .standard = ctrl ('g'),
     .help = "Write the drawing of the current bio-network to an SVG file, for web pages and "
             "drawing programs.",
     .run = run::export_svg},
    {.code = Command::quit,
     .menu = Menu::file,
     .label = "&Quit",
     .name = "quit",
     .key_text = "^X^C",
     .standard = ctrl ('q'),
     .help = "Quit <b>Ostrand</b>. If the current bio-network is modified but not saved, the "
             "confirmation box is popped.",
     .run = run::quit},
    {.code = Command::export_png,
     .menu = Menu::file,
     .label = "Export to P&NG...",
     .name = "export-to-png",
     .help = "Write the drawing of the current bio-network to a PNG file, a picture of pixels, for "
             "slides and messages. You are asked how many pixels of the picture stand for one of "
             "the drawing: 1 is the size on screen at 100%, 3 prints well.",
     .run = run::export_png},
    {.code = Command::export_all_tabs,
     .menu = Menu::file,
     .label = "Export all &tabs...",
     .name = "export-all-tabs",
     .help =
         "Write the drawings of all open tabs, each to a file of its own. The ending of the name "
         "that you give decides the format, .pdf, .svg or .png; the name of each tab is put "
         "behind it.",
     .run = run::export_all_tabs},
    {.code = Command::close_tab,
     .menu = Menu::file,
     .label = "&Close tab",
     .name = "close-tab",
     .help = "Close the current tab, as its cross does: a modified bio-network is asked about, and "
             "the last tab quits.",
     .run = run::close_tab},
    {.code = Command::export_standard_sbml,
     .menu = Menu::file,
     .label = "Export as SBML Level 3 ...",
     .name = "export-to-sbml",
     .help =
         "Write the current bio-network to an SBML file that other programs understand: Level 3 "
         "Version 2, with units, concentrations, kinetic laws, places and colours. "
         "<b>Ostrand</b> reads the very same drawing back from it.",
     .run = run::export_standard_sbml},

    // Edit
    {.code = Command::undo,
     .menu = Menu::edit,
     .label = "&Undo",
     .name = "undo-command",
     .key_text = "^-",
     .standard = ctrl ('z'),
     .emacs = ctrl ('-'),
     .help =
         "Undo the previous commands that modified the currently edited bio-network. Everything "
         "is undoable, even loading a new file!",
     .run = run::undo},
    {.code = Command::redo,
     .menu = Menu::edit,
     .label = "&Redo",
     .name = "redo-commandd",
     .key_text = "^+",
     .standard = ctrl ('y'),
     .emacs = ctrl ('+'),
     .divider = true,
     .help = "Do again what was undone, one command at a time, until something else is changed.",
     .run = run::redo},
    {.code = Command::find_reactant,
     .menu = Menu::edit,
     .label = "&Find Reactant...",
     .name = "search-reactant",
     .key_text = "^S",
     .standard = ctrl ('f'),
     .emacs = ctrl ('s'),
     .help = "Find the molecules whose label holds the text typed. The search goes on with each "
             "letter; Down and Up step through the occurrences, the present one is highlighted and "
             "brought into view, Escape ends the search.",
     .run = run::find_reactant},
    {.code = Command::select_all,
     .menu = Menu::edit,
     .label = "Select &all",
     .name = "select-all-nodes",
     .key_text = "^A",
     .standard = ctrl ('a'),
     .emacs = ctrl ('a'),
     .help = "Select all molecules of the current bio-network.",
     .run = run::select_all},
    {.code = Command::cut,
     .menu = Menu::edit,
     .label = "C&ut",
     .name = "cut-selection",
     .key_text = "^W",
     .standard = ctrl ('x'),
     .emacs = ctrl ('w'),
     .off_at_start = true,
     .help = "Copy the selection to the clipboard and delete it. With a text being edited, cut the "
             "selected characters.",
     .run = run::cut},
    {.code = Command::copy,
     .menu = Menu::edit,
     .label = "&Copy",
     .name = "copy-selection",
     .key_text = "Esc-K",
     .standard = ctrl ('c'),
     .off_at_start = true,
     .help = "Copy the selected molecules and the reactions among them to the clipboard, or the "
             "selected characters of the text that is being edited. Another tab, another Ostrand "
             "and any text editor can take them.",
     .run = run::copy},
    {.code = Command::paste,
     .menu = Menu::edit,
     .label = "&Paste",
     .name = "paste",
     .key_text = "^Y",
     .standard = ctrl ('v'),
     .emacs = ctrl ('y'),
     .help = "Paste to the right of the currently edited bio-network the subnetwork stored in the "
             "clipboard. If there is only text in the clipboard, it can be pasted only into a "
             "label.",
     .run = run::paste},
    {.code = Command::duplicate,
     .menu = Menu::edit,
     .label = "&Duplicate",
     .name = "duplicate-selection",
     .key_text = "esc-D",
     .standard = ctrl_shift ('c'),
     .divider = true,
     .off_at_start = true,
     .help = "Make a copy of the selected molecules and of the reactions among them, a little to "
             "the right and below. The copies are selected.@duplicate.png@",
     .run = run::duplicate},
    {.code = Command::align_nodes,
     .menu = Menu::edit,
     .label = "&Align nodes",
     .name = "align-nodes",
     .key_text = "^J",
     .standard = ctrl ('j'),
     .emacs = ctrl ('j'),
     .help = "Straighten the drawing: nodes that are nearly in line with their neighbours are put "
             "in line, enzymes and further reactants take their places beside the reaction. "
             "Before:@align-before.png@and after:@align-after.png@",
     .run = run::align_nodes},
    {.code = Command::share_clones,
     .menu = Menu::edit,
     .label = "&Share clones",
     .name = "share-clones",
     .key_text = "^C",
     .standard = ctrl ('k'),
     .emacs = ctrl ('c'),
     .help = "Find, in the currently edited bio-network, the nodes that represent the same "
             "biochemical species and change their type and graphical shape (according to the SBNG "
             "standards) to explicitely represent the same species. Conversely, the species "
             "appearing only once get their type and shape reset to normal.",
     .run = run::share_clones},
    {.code = Command::color_reactants,
     .menu = Menu::edit,
     .label = "C&olor reactants",
     .name = "color-reactants",
     .standard = ctrl ('r'),
     .help = "Change the background colour of the substrate / product metabolites according to "
             "their status: input, internal, or output. ",
     .run = run::color_reactants},
    {.code = Command::fog_selection,
     .menu = Menu::edit,
     .label = "F&og selection",
     .name = "fog-selection",
     .help = "Dim the selected molecules and reactions, and what hangs on them alone, so that the "
             "rest stands out.@fog.png@",
     .run = run::fog_selection},
    {.code = Command::unfog_selection,
     .menu = Menu::edit,
     .label = "&Unfog selection",
     .name = "unfog-selection",
     .help = "Show the selected molecules and reactions clearly again, with what hangs on them.",
     .run = run::unfog_selection},
    {.code = Command::arrange,
     .menu = Menu::edit,
     .label = "&Arrange",
     .name = "arrange",
     .help = "Give the selected molecules better places near where they stand, or all molecules "
             "and compartments new ones when nothing is selected: no two molecules overlap, no "
             "reaction is covered, a molecule that many reactions use gets clones beside them. One "
             "undo brings everything back.",
     .run = run::arrange},

    // View
    {.code = Command::zoom_in,
     .menu = Menu::view,
     .label = "Zoom &in",
     .name = "zoom-in",
     .key_text = "Esc +",
     .standard = ctrl ('+'),
     .help = "Enlarge by 5% steps (max 200%), the display of the current bio-network.",
     .run = run::zoom_in},
    {.code = Command::zoom_out,
     .menu = Menu::view,
     .label = "Zoom &out",
     .name = "zoom-out",
     .key_text = "Esc -",
     .standard = ctrl ('-'),
     .help = "Reduce by 5% steps (min 10%), the display of the current bio-network.",
     .run = run::zoom_out},
    {.code = Command::zoom_reset,
     .menu = Menu::view,
     .label = "Zoom &reset",
     .name = "reset-zoom",
     .key_text = "Esc-0",
     .standard = ctrl ('0'),
     .divider = true,
     .help = "Display the current bio-network at its natural size (100%).",
     .run = run::zoom_reset},
    {.code = Command::gui_background,
     .menu = Menu::view,
     .label = "&Gui background",
     .standard = ctrl_shift ('b'),
     .emacs = ctrl_shift ('b'),
     .divider = true,
     .run = run::gui_background},
    {.code = Command::use_annotation,
     .menu = Menu::view,
     .label = "&SBML annotation",
     .name = "SBML annotation",
     .form = CommandForm::toggle,
     .help =
         "Open SBML files with the drawing that they carry, where they carry one. Switched off, "
         "every SBML file is laid out automatically.",
     .run = run::use_annotation},
    {.code = Command::dark_mode,
     .menu = Menu::view,
     .label = "&dark mode",
     .name = "Dark mode",
     .key_text = "^X^D",
     .standard = ctrl_shift ('d'),
     .form = CommandForm::toggle,
     .help = "Toggle dark mode profile: dark gray background and orange lines instead of white "
             "background and black lines.",
     .run = run::dark_mode},
    {.code = Command::show_boundary,
     .menu = Menu::view,
     .label = "Show &boundary",
     .name = "show-boundary",
     .form = CommandForm::toggle,
     .help = "Show/Hide a red frame around the current bio-network.",
     .run = run::show_boundary},
    {.code = Command::show_mouse_help,
     .menu = Menu::view,
     .label = "Show &mouse help   ",
     .name = "show-mouse-help",
     .form = CommandForm::toggle,
     .help =
         "Show/Hide, at the top right of the window, what each button of the mouse does at the "
         "present place of the pointer, alone and with the Shift and Ctrl keys.@mouse-help.png@",
     .run = run::show_mouse_help},
    {.code = Command::show_kinetics,
     .menu = Menu::view,
     .label = "Show &kinetics   ",
     .name = "show-kinetics",
     .form = CommandForm::toggle,
     .help = "Show/Hide the kinetic labels of reactions and of their regulations.",
     .run = run::show_kinetics},
    {.code = Command::show_stoichiometry,
     .menu = Menu::view,
     .label = "Show &stoichiometry ",
     .name = "show-stoichiometry",
     .form = CommandForm::toggle,
     .help = "Show/Hide the stoichiometry labels of reactions.",
     .run = run::show_stoichiometry},
    {.code = Command::default_yes,
     .menu = Menu::view,
     .label = "Default yes",
     .name = "default-to-yes",
     .form = CommandForm::toggle,
     .help = "Choose whether Enter answers a question with yes or with no. Overwriting a file is "
             "never the default.",
     .run = run::default_yes},
    {.code = Command::emacs_keys,
     .menu = Menu::view,
     .label = "Emacs keys",
     .name = "emacs-keys",
     .form = CommandForm::toggle,
     .help = "Switch between the standard shortcuts and those of Emacs.",
     .run = run::emacs_keys},
    {.code = Command::show_grid,
     .menu = Menu::view,
     .label = "Show &grid",
     .name = "show-grid",
     .form = CommandForm::toggle,
     .help = "Show/Hide a grid that helps the user to align the nodes of the current bio-network. "
             "When moving a node, its center snaps to the grid edges.",
     .run = run::show_grid},
    {.code = Command::smart_move,
     .menu = Menu::view,
     .label = "Smar&t move",
     .name = "smart-move",
     .form = CommandForm::toggle,
     .help = "Let the enzymes and further reactants of a reaction follow when one of its main "
             "reactants is moved.",
     .run = run::smart_move},
    {.code = Command::smart_dialog,
     .menu = Menu::view,
     .label = "Smart &dialogbox",
     .name = "smart-dialog-box",
     .form = CommandForm::toggle,
     .help =
         "Switch between the standard popup dialog boxes and a faster keyboard-only version that "
         "uses a textfield inserted at the top of bio-network window. When used for a file "
         "selection a <i>ls</i> style window is displayed below it as soon as several names "
         "begin with the text typed: Tab completes a name as far as it is unique, Enter takes "
         "it or goes down into a folder, a click takes a name of the list, and Escape gives "
         "up.@file-selection-box.png@",
     .run = run::smart_dialog},
    {.code = Command::show_guides,
     .menu = Menu::view,
     .label = "Show &alignment guides",
     .name = "show-alignment-guides",
     .form = CommandForm::toggle,
     .help =
         "Show/Hide lines while molecules are dragged: where their edges or centres are in line "
         "with others, and where the gaps between them are equal.",
     .run = run::show_guides},
    {.code = Command::snap_to_guides,
     .menu = Menu::view,
     .label = "Sna&p to guides",
     .name = "snap-to-guides",
     .form = CommandForm::toggle,
     .help = "Let dragged molecules go into line with others when they are within 3 pixels of it.",
     .run = run::snap_to_guides},
    {.code = Command::animate,
     .menu = Menu::view,
     .label = "A&nimate",
     .name = "animate",
     .form = CommandForm::toggle,
     .help = "Show how molecules go to their new places when the drawing is arranged. Escape, or "
             "whatever is done next, ends the movement.",
     .run = run::animate},
    {.code = Command::arrange_opened,
     .menu = Menu::view,
     .label = "Arrange &opened SBML",
     .name = "arrange-opened-sbml",
     .form = CommandForm::toggle,
     .help = "Arrange SBML files of other programs that do not tell where their molecules stand, "
             "when they are opened. Switched off, the molecules stand on a plain grid.",
     .run = run::arrange_opened},

    // Simulation
    {.code = Command::stochastic,
     .menu = Menu::simulation,
     .label = "&Stochastic",
     .name = "SSA-engine",
     .form = CommandForm::radio_off,
     .help = "Simulate with the stochastic engine, which works in whole molecules.",
     .run = run::stochastic},
    {.code = Command::deterministic,
     .menu = Menu::simulation,
     .label = "&Deterministic",
     .name = "Deterministic-engine",
     .form = CommandForm::radio_off,
     .divider = true,
     .help = "Simulate with the deterministic engine, which follows the mean.",
     .run = run::deterministic},
    {.code = Command::start_simulation,
     .menu = Menu::simulation,
     .label = "S&tart simulation  ",
     .name = "start-simulation",
     .key_text = "Tab",
     .standard = tab,
     .emacs = tab,
     .help =
         "Simulate the current bio-network in the background and show the curves of the "
         "displayed molecules in a window of their own. A bar in place of the zoom slider shows "
         "how far it is; a click on it stops the simulation.@Trivex.png@",
     .run = run::start_simulation},
    {.code = Command::set_duration,
     .menu = Menu::simulation,
     .label = "Set d&uration ...",
     .name = "simulation-length",
     .key_text = "^D",
     .standard = ctrl ('d'),
     .emacs = ctrl ('d'),
     .help = "Set how many seconds a simulation lasts.",
     .run = run::set_duration},
    {.code = Command::stop_simulation,
     .menu = Menu::simulation,
     .label = "Sto&p simulation",
     .name = "stop-simulation",
     .help = "Stop the simulation that is running, as a click on its bar does.",
     .run = run::stop_simulation},
    {.code = Command::show_left_out,
     .menu = Menu::simulation,
     .label = "Show what is &left out",
     .name = "show-left-out",
     .help =
         "Go to the next object that a simulation does without: a reaction that nothing "
         "catalyses, a constant that is no number, a molecule without a name. When a simulation "
         "starts, a line above the drawing tells of such objects.",
     .run = run::show_left_out},

    // Formula
    {.code = Command::reactions_per_gate,
     .menu = Menu::formula,
     .label = "&Reactions/gate...",
     .name = "fornix-set-depth",
     .help = "Set the largest number of reactions that a logic gate may be made of, 1 to 7.",
     .run = run::reactions_per_gate},
    {.code = Command::extract_gates,
     .menu = Menu::formula,
     .label = "&Extract Gates...",
     .name = "fornix-extract-gates",
     .help = "Find the enzymatic logic gates of a metabolic network in an SBML file. They are kept "
             "beside the file, so that the next time they are at hand at once.",
     .run = run::extract_gates},
    {.code = Command::enter_formula,
     .menu = Menu::formula,
     .label = "Enter &Formula...",
     .name = "tectrix-bool-to-network-translate",
     .off_at_start = true,
     .help = "Enter a boolean formula over metabolites of the network whose gates were extracted, "
             "and build the bio-networks that compute it. The first is opened in a tab of its "
             "own.@formula-box.png@",
     .run = run::enter_formula},
    {.code = Command::previous_implementation,
     .menu = Menu::formula,
     .label = "&Previous Implementation",
     .name = "tectrix-next-implementation",
     .off_at_start = true,
     .help = "Show the implementation of the formula before the present one.",
     .run = run::previous_implementation},
    {.code = Command::next_implementation,
     .menu = Menu::formula,
     .label = "&Next Implementation",
     .name = "tectrix-previous-implementation",
     .off_at_start = true,
     .help = "Show the implementation of the formula behind the present one.",
     .run = run::next_implementation},

    // Help
    {.code = Command::about,
     .menu = Menu::help,
     .label = "&About Ostrand",
     .name = "about-Ostrand",
     .help = "Show the version of Ostrand and who made it.",
     .run = run::about},
    {.code = Command::documentation,
     .menu = Menu::help,
     .label = "&Documentation",
     .name = "pop-help-box",
     .key_text = "Esc-esc",
     .help = "Show this manual.",
     .run = run::documentation},

    // Tool bar
    {.code = Command::new_protein,
     .menu = Menu::tool_bar,
     .label = "new protein",
     .name = "new-protein",
     .image = "oval.png",
     .help = "Add a protein to the current bio-network, or to the complex that is selected.",
     .run = run::new_protein},
    {.code = Command::new_molecule,
     .menu = Menu::tool_bar,
     .label = "new molecule",
     .name = "new-molecule",
     .image = "molecule.png",
     .help = "Add a molecule to the current bio-network, or to the complex that is selected.",
     .run = run::new_molecule},
    {.code = Command::new_gene,
     .menu = Menu::tool_bar,
     .label = "new gene",
     .name = "new-gene",
     .image = "rect.png",
     .help = "Add a gene to the current bio-network, or to the complex that is selected.",
     .run = run::new_gene},
    {.code = Command::new_receptor,
     .menu = Menu::tool_bar,
     .label = "new membrane receptor",
     .name = "new-membrane-receptor",
     .image = "recep.png",
     .help = "Add a membrane receptor to the current bio-network, or to the complex that is "
             "selected.",
     .run = run::new_receptor},
    {.code = Command::new_complex,
     .menu = Menu::tool_bar,
     .label = "new complex",
     .name = "new-complex",
     .image = "complex.png",
     .help = "Add a complex: a protein that holds a small network of two proteins.",
     .run = run::new_complex},
    {.code = Command::font_face,
     .menu = Menu::tool_bar,
     .label = "Font face",
     .name = "font-face",
     .form = CommandForm::choice,
     .help = "Choose the font of the selected characters and of the labels to come."},
    {.code = Command::font_size,
     .menu = Menu::tool_bar,
     .label = "Font size",
     .name = "font-size",
     .form = CommandForm::choice,
     .help = "Choose the size of the selected characters and of the labels to come."},
    {.code = Command::bold,
     .menu = Menu::tool_bar,
     .label = "Bold",
     .name = "bold",
     .form = CommandForm::toggle,
     .image = "bold.png",
     .help = "Make the selected characters, and the labels to come, bold or plain.",
     .run = run::bold},
    {.code = Command::italic,
     .menu = Menu::tool_bar,
     .label = "Italic",
     .name = "italic",
     .form = CommandForm::toggle,
     .image = "italic.png",
     .help = "Make the selected characters, and the labels to come, italic or upright.",
     .run = run::italic},
    {.code = Command::text_colour,
     .menu = Menu::tool_bar,
     .label = "Colour",
     .name = "text-colour",
     .form = CommandForm::choice,
     .help = "Choose the colour of the selected characters and of the objects to come."},
    {.code = Command::new_round_compartment,
     .menu = Menu::tool_bar,
     .label = "new round compartment",
     .name = "new-round-compartment",
     .image = "memb_ellipse.png",
     .help = "Add a compartment around the current bio-network: a rectangle with round corners.",
     .run = run::new_round_compartment},
    {.code = Command::new_oval_compartment,
     .menu = Menu::tool_bar,
     .label = "new oval compartment",
     .name = "new-oval-compartment",
     .image = "memb_rect.png",
     .help = "Add an oval compartment around the current bio-network.",
     .run = run::new_oval_compartment},
    {.code = Command::new_reaction,
     .menu = Menu::tool_bar,
     .label = "new reaction",
     .name = "new-reaction",
     .image = "reaction.png",
     .help = "Add a reaction with its substrate, its product and its enzyme.",
     .run = run::new_reaction},
    {.code = Command::add_substrate,
     .menu = Menu::tool_bar,
     .label = "add substrate",
     .name = "add-substrate",
     .image = "metabolite.png",
     .help = "Add a further substrate to the selected reaction.",
     .run = run::add_substrate},
    {.code = Command::add_product,
     .menu = Menu::tool_bar,
     .label = "add product",
     .name = "add-product",
     .image = "metabolite.png",
     .help = "Add a further product to the selected reaction.",
     .run = run::add_product},
    {.code = Command::new_tab,
     .menu = Menu::tool_bar,
     .label = "new tab",
     .image = "plus.png",
     .help = "Open an empty tab.",
     .run = run::new_tab},
}};

} // namespace

std::string_view menu_title (Menu menu) {
    switch (menu) {
    case Menu::file: return "&File";
    case Menu::edit: return "&Edit";
    case Menu::view: return "&View";
    case Menu::simulation: return "&Simulation";
    case Menu::formula: return "&Formula";
    case Menu::help: return "&Help";
    case Menu::tool_bar: break;
    }
    return "";
}

std::span<const CommandRow> command_rows () { return rows; }

const CommandRow& command_row (Command command) { return rows[static_cast<std::size_t> (command)]; }

const Shortcut& shortcut_of (const CommandRow& row, ShortcutSet set) {
    return set == ShortcutSet::emacs ? row.emacs : row.standard;
}

std::optional<Command> command_for (const Shortcut& pressed, ShortcutSet set) {
    const auto* const found = std::ranges::find_if (rows, [&] (const CommandRow& row) {
        const Shortcut& shortcut = shortcut_of (row, set);
        return shortcut.is_set () && shortcut == pressed;
    });
    if (found == rows.end ()) return std::nullopt;
    return found->code;
}

} // namespace ostrand::editor
