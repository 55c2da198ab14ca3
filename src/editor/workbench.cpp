// The workbench: its making and its switches.
#include "editor/workbench.h"

#include "editor/style_choices.h"

#include "base/report.h"

#include <cmath>

namespace ostrand::editor {

using document::document_state;

Workbench::Workbench (World& world, const Preferences& preferences, BenchOptions options)
    : mouse_help_on (preferences.mouse_help), smart_dialog (preferences.smart_dialog),
      default_yes (preferences.default_yes), emacs_keys (preferences.emacs_keys),
      deterministic (preferences.deterministic ()), background (preferences.background),
      world_ (world), options_ (std::move (options)), preferences_ (preferences),
      recent_ (options_.home), simulations_ (options_.home, options_.executable) {
    document::DocumentState& switches = document_state ();
    switches.dark_mode = preferences.dark_mode;
    switches.show_kinetics = preferences.kinetics;
    switches.show_stoichiometry = preferences.stoichiometry;
    shared_.show_guides = preferences.guides;
    shared_.snap_to_guides = preferences.snap_to_guides;
    shared_.animate = preferences.animate;
    shared_.arrange_opened = preferences.arrange_opened;
    shared_.shortcuts = emacs_keys ? ShortcutSet::emacs : ShortcutSet::standard;
    style_ = style_of_preferences (preferences);
    shared_.style_word = style_.font_word;
    switches.default_color = style_.colour;
    set_status_line ([this] (std::string_view text) { show_status (text); });
}

Workbench::~Workbench () { set_status_line ({}); }

void Workbench::show_status (std::string_view text) {
    status_ = text;
    world_.refresh_status (status_);
}

Preferences Workbench::present_preferences () const {
    Preferences now = preferences_;
    const document::DocumentState& switches = document_state ();
    now.mouse_help = mouse_help_on;
    now.smart_dialog = smart_dialog;
    now.default_yes = default_yes;
    now.emacs_keys = emacs_keys;
    now.simulation = deterministic ? "ODE" : "SSA";
    now.background = background;
    now.guides = shared_.show_guides;
    now.snap_to_guides = shared_.snap_to_guides;
    now.animate = shared_.animate;
    now.arrange_opened = shared_.arrange_opened;
    now.dark_mode = switches.dark_mode;
    now.kinetics = switches.show_kinetics;
    now.stoichiometry = switches.show_stoichiometry;
    take_style (now, style_);
    if (!has_tab ()) return now;
    const Canvas& canvas = current ();
    now.boundary = canvas.show_boundary;
    now.grid = canvas.show_grid;
    now.smart_move = canvas.smart_move;
    now.use_annotation = canvas.use_annotation;
    now.zoom = static_cast<unsigned> (std::lround (canvas.view.zoom () * 100));
    now.lift_always_visible = canvas.view.lift_always_visible;
    now.lift_background = canvas.view.lift_background;
    return now;
}

void Workbench::attach (Canvas& canvas) {
    canvas.show_boundary = preferences_.boundary;
    canvas.show_grid = preferences_.grid;
    canvas.use_annotation = preferences_.use_annotation;
    canvas.smart_move = preferences_.smart_move;
    canvas.view.start_zoom (preferences_.canvas_zoom ());
    canvas.view.lift_always_visible = preferences_.lift_always_visible;
    canvas.view.lift_background = preferences_.lift_background;

    CanvasCallbacks& call = canvas.callbacks;
    call.on_modified = [this] (Canvas&, bool) { world_.refresh (); };
    call.on_message = [this] (Canvas&, const std::string& text) { world_.alert (text); };
    call.on_style = [this] (Canvas&, unsigned word, unsigned colour) {
        if (style_.font_word == word && style_.colour == colour) return;
        show_style (word, colour);
    };
    call.on_selection_count = [this] (Canvas&, int) { world_.refresh (); };
    call.on_set_concentration = [this] (Canvas& on, document::Node& node) {
        concentration_dialog (on, node);
    };
    call.on_mouse_help = [this] (Canvas&, const MouseHelpSlots* slots, int row) {
        if (mouse_help_on) world_.show_mouse_help (slots, row);
    };
    call.on_pick_colour = [this] (unsigned colour) { return pick_colour (colour); };
    call.on_command = [this] (Command command) { run (command); };
    call.on_tab = [this] (int step) { step > 0 ? next_tab () : previous_tab (); };
}

void Workbench::run (Command command) {
    if (!has_tab () || !entry (command).active) return;
    current ().end_drag ();
    if (const auto run = command_row (command).run) run (*this);
}

EntryState Workbench::entry (Command command) const {
    const document::DocumentState& switches = document_state ();
    const bool selected = has_tab () && !current ().selection.is_empty ();
    const auto checked = [] (bool on) { return EntryState{true, on}; };
    switch (command) {
    case Command::cut:
    case Command::copy:
    case Command::duplicate: return {selected, false};
    case Command::use_annotation: return checked (has_tab () && current ().use_annotation);
    case Command::dark_mode: return checked (switches.dark_mode);
    case Command::show_boundary: return checked (has_tab () && current ().show_boundary);
    case Command::show_mouse_help: return checked (mouse_help_on);
    case Command::show_kinetics: return checked (switches.show_kinetics);
    case Command::show_stoichiometry: return checked (switches.show_stoichiometry);
    case Command::default_yes: return checked (default_yes);
    case Command::emacs_keys: return checked (emacs_keys);
    case Command::show_grid: return checked (has_tab () && current ().show_grid);
    case Command::smart_move: return checked (has_tab () && current ().smart_move);
    case Command::smart_dialog: return checked (smart_dialog);
    case Command::show_guides: return checked (shared_.show_guides);
    case Command::snap_to_guides: return checked (shared_.snap_to_guides);
    case Command::animate: return checked (shared_.animate);
    case Command::arrange_opened: return checked (shared_.arrange_opened);
    case Command::stochastic: return checked (!deterministic);
    case Command::deterministic: return checked (deterministic);
    case Command::bold: return checked (document::is_bold (style_.font_word));
    case Command::italic: return checked (document::is_italic (style_.font_word));
    case Command::stop_simulation: return {simulations_.running (), false};
    case Command::start_simulation: return {!simulations_.running (), false};
    case Command::enter_formula: return {formulas_.gates_ready (), false};
    case Command::previous_implementation: return {formulas_.has_previous (), false};
    case Command::next_implementation: return {formulas_.has_next (), false};
    default: return {};
    }
}

} // namespace ostrand::editor
