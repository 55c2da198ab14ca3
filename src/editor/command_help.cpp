// The commands of the help menu, and the manual as a file.
#include "editor/command_functions.h"
#include "editor/workbench.h"

#include "base/path.h"
#include "base/report.h"
#include "base/text.h"

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
    const std::string path = absolute_path ("", names.front ());
    if (!bench.world ().save_manual (path))
        report_message ("Cannot save the user manual to '%s'\n", path.c_str ());
}

} // namespace ostrand::editor::run
