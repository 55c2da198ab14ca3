// The commands of the help menu, and the manual as a file.
#include "editor/command_functions.h"
#include "editor/workbench.h"

#include "base/path.h"

namespace ostrand::editor::run {

void about (Workbench& bench) { bench.world ().show_about (); }

void documentation (Workbench& bench) { bench.world ().show_manual (); }

void save_user_manual (Workbench& bench) {
    const std::vector<std::string> names =
        bench.world ().ask_files ({.prompt = "Save User Manual: ",
                                   .filter = "*.html *.htm",
                                   .title = "Save User Manual",
                                   .native_filter = "HTML\t*.{htm,html}\n",
                                   .initial = "OST-User-Manual.html",
                                   .saving = true});
    if (names.empty ()) return;
    bench.world ().save_manual (absolute_path ("", names.front ()));
}

} // namespace ostrand::editor::run
