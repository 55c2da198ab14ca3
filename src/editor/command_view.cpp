// The commands of the view menu.
#include "editor/command_functions.h"
#include "editor/workbench.h"

namespace ostrand::editor::run {
namespace {

/// One step of zoom with the middle of the window staying where it is.
void zoom_by (Workbench& bench, float step) {
    Canvas& canvas = bench.current ();
    canvas.zoom_to (canvas.view.stepped_zoom (step), static_cast<float> (canvas.view.width) / 2,
                    static_cast<float> (canvas.view.height) / 2);
}

/// A switch went over: menus and the picture show it.
void flip (Workbench& bench, bool& on) {
    on = !on;
    bench.world ().refresh ();
    bench.current ().redraw ();
}

} // namespace

void zoom_in (Workbench& bench) { zoom_by (bench, menu_zoom_step); }

void zoom_out (Workbench& bench) { zoom_by (bench, -menu_zoom_step); }

void zoom_reset (Workbench& bench) {
    Canvas& canvas = bench.current ();
    canvas.zoom_to (1, static_cast<float> (canvas.view.width) / 2,
                    static_cast<float> (canvas.view.height) / 2);
}

void gui_background (Workbench& bench) {
    const std::optional<unsigned> rgb =
        bench.world ().choose_colour ("Color Selection", bench.background);
    if (!rgb) return;
    bench.background = *rgb;
    bench.world ().refresh ();
    bench.current ().redraw ();
}

void use_annotation (Workbench& bench) { flip (bench, bench.current ().use_annotation); }

void dark_mode (Workbench& bench) { flip (bench, document::document_state ().dark_mode); }

void show_boundary (Workbench& bench) { flip (bench, bench.current ().show_boundary); }

void show_mouse_help (Workbench& bench) { flip (bench, bench.mouse_help_on); }

void show_kinetics (Workbench& bench) { flip (bench, document::document_state ().show_kinetics); }

void show_stoichiometry (Workbench& bench) {
    flip (bench, document::document_state ().show_stoichiometry);
}

void default_yes (Workbench& bench) { flip (bench, bench.default_yes); }

void emacs_keys (Workbench& bench) {
    bench.emacs_keys = !bench.emacs_keys;
    bench.shared ().shortcuts = bench.emacs_keys ? ShortcutSet::emacs : ShortcutSet::standard;
    bench.shared ().key_state = bench.emacs_keys ? KeyState::emacs : KeyState::standard;
    bench.world ().refresh ();
}

void show_grid (Workbench& bench) { flip (bench, bench.current ().show_grid); }

void smart_move (Workbench& bench) { flip (bench, bench.current ().smart_move); }

void smart_dialog (Workbench& bench) { flip (bench, bench.smart_dialog); }

void show_guides (Workbench& bench) { flip (bench, bench.shared ().show_guides); }

void snap_to_guides (Workbench& bench) { flip (bench, bench.shared ().snap_to_guides); }

void animate (Workbench& bench) { flip (bench, bench.shared ().animate); }

void arrange_opened (Workbench& bench) { flip (bench, bench.shared ().arrange_opened); }

} // namespace ostrand::editor::run
