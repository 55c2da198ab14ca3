// Simulations started from the editor, files that come back.
#include "editor/workbench.h"

#include "editor/document_files.h"
#include "files/model_write.h"

#include "base/report.h"

namespace ostrand::editor {
namespace {

constexpr double poll_seconds = 0.01;

} // namespace

void Workbench::start_simulation () {
    if (!has_tab () || simulations_.running ()) return;
    Canvas& canvas = current ();
    // A copy is brought up to date: the document stays as it is.
    const std::unique_ptr<document::Network> network = canvas.network ().copy (nullptr);
    network->update_shared_nodes ();
    const std::string model =
        files::write_model (*network, canvas.duration (), network->multi_name ());
    std::string error;
    if (!simulations_.start (model, deterministic, document::document_state ().dark_mode, error)) {
        report_message ("The simulation cannot be started: %s", error.c_str ());
        return;
    }
    canvas.gaps.look (canvas);
    world_.refresh ();
    watch_simulation ();
}

void Workbench::watch_simulation () {
    world_.call_later (poll_seconds, [this] {
        const bool ended = simulations_.poll ();
        world_.refresh ();
        if (!ended && simulations_.running ()) watch_simulation ();
    });
}

void Workbench::open_recent (const std::string& path) {
    if (tab_of_file (path) >= 0) {
        select_tab (tab_of_file (path));
        return;
    }
    switch (add_tab (path)) {
    case AddTab::full: report_message ("no more than 32 tabs"); break;
    case AddTab::unreadable: report_message ("Cannot load %s", path.c_str ()); break;
    case AddTab::no_history:
    case AddTab::added: break;
    }
}

void Workbench::look_at_files () {
    for (int i = 0; i < tabs_.count (); ++i) {
        Canvas& canvas = tabs_.at (i);
        if (!changed_on_disk (canvas) || canvas.told_of_change) continue;
        canvas.told_of_change = true;
        report_message ("'%s' was changed by another program: ReOpen reads it anew",
                        canvas.file_name ()->c_str ());
    }
    world_.refresh ();
}

} // namespace ostrand::editor
