// The commands of the edit menu.
#include "document/line.h"
#include "editor/command_functions.h"
#include "editor/edit_arrange.h"
#include "editor/edit_search.h"
#include "editor/edit_selection.h"
#include "editor/workbench.h"

#include "base/report.h"

namespace ostrand::editor::run {

void undo (Workbench& bench) { bench.current ().undo (); }

void redo (Workbench& bench) { bench.current ().redo (); }

void find_reactant (Workbench& bench) {
    // The tab on top may change while the search goes on.
    const auto on_top = [&bench] () -> Canvas& { return bench.current (); };
    bench.world ().search (
        {.prompt = "Find Reactant: ",
         .title = "Search Reactant",
         .initial = bench.last_search,
         .changed = [on_top] (const std::string& text) { editor::find_reactant (on_top (), text); },
         .step = [on_top] (bool forward) { next_occurrence (on_top (), forward); },
         .ended =
             [on_top, &bench] (const std::string& last) {
                 bench.last_search = last;
                 clear_search (on_top ());
                 report_message (nullptr);
             }});
}

void select_all (Workbench& bench) {
    Canvas& canvas = bench.current ();
    editor::select_all (canvas);
}

void cut (Workbench& bench) {
    Canvas& canvas = bench.current ();
    copy_selection (canvas);
    canvas.key_down ({.key = document::keys::delete_code, .text = {}, .modifiers = {}});
}

void copy (Workbench& bench) { copy_selection (bench.current ()); }

void paste (Workbench& bench) { bench.world ().request_paste (bench.current ()); }

void duplicate (Workbench& bench) { duplicate_selection (bench.current ()); }

void align_nodes (Workbench& bench) { editor::align_nodes (bench.current ()); }

void share_clones (Workbench& bench) { editor::share_clones (bench.current ()); }

void color_reactants (Workbench& bench) { editor::color_reactants (bench.current ()); }

void fog_selection (Workbench& bench) { editor::fog_selection (bench.current (), true); }

void unfog_selection (Workbench& bench) { editor::fog_selection (bench.current (), false); }

void arrange (Workbench& bench) { editor::arrange (bench.current ()); }

} // namespace ostrand::editor::run
