// The commands of the file menu.
#include "editor/command_functions.h"
#include "editor/document_files.h"
#include "editor/edit_text.h"
#include "editor/workbench.h"

#include "base/path.h"
#include "base/report.h"
#include "base/text.h"

#include <cstdio>

namespace ostrand::editor::run {
namespace {

constexpr const char* open_filter = "*.net *.xml *.mto *.ssa";
constexpr const char* open_native_filter = "Models\t*.{net,xml,mto,ssa}\n";

/// One name, absolute; empty when the user gives up.
std::string ask_name (Workbench& bench, const FileQuestion& question) {
    const std::vector<std::string> names = bench.world ().ask_files (question);
    return names.empty () ? std::string () : absolute_path ("", names.front ());
}

void tell_loaded_already (Workbench& bench) {
    static constexpr const char* text = "File already loaded in another tab...";
    if (bench.smart_dialog)
        report_message (text);
    else
        bench.world ().alert (text);
}

/// Whether a file may be opened in the current tab.
bool is_open_elsewhere (Workbench& bench, const std::string& path) {
    const int tab = bench.tab_of_file (path);
    if (tab < 0) return false;
    tell_loaded_already (bench);
    return true;
}

} // namespace

void load_file (Workbench& bench) {
    const std::vector<std::string> names =
        bench.world ().ask_files ({.prompt = "Load File: ",
                                   .filter = open_filter,
                                   .title = "Load",
                                   .native_filter = open_native_filter,
                                   .several = true});
    for (const std::string& name : names) {
        const std::string path = absolute_path ("", name);
        if (is_open_elsewhere (bench, path)) continue;
        switch (bench.add_tab (path)) {
        case AddTab::full: report_message ("no more than 32 tabs"); break;
        case AddTab::unreadable: report_message ("Cannot load %s", path.c_str ()); break;
        case AddTab::no_history:
        case AddTab::added: break;
        }
    }
}

void open_file (Workbench& bench) {
    Canvas& canvas = bench.current ();
    if (canvas.modified () && !bench.yes_no ("Modified network, still want to open a new one"))
        return;
    const std::string path = ask_name (bench, {.prompt = "Open File: ",
                                               .filter = open_filter,
                                               .title = "Open",
                                               .native_filter = open_native_filter});
    if (path.empty () || is_open_elsewhere (bench, path)) return;
    report_message (nullptr);
    if (!editor::open_file (canvas, path)) {
        report_message ("Cannot load %s", path.c_str ());
        return;
    }
    set_current_directory (path);
    bench.recent ().add (path);
}

void reopen_file (Workbench& bench) {
    Canvas& canvas = bench.current ();
    if (!canvas.file_name ()) return;
    if (canvas.modified () && !bench.yes_no ("Modified network, still want to reopen it")) return;
    const std::string path = *canvas.file_name ();
    if (!editor::open_file (canvas, path)) report_message ("Cannot reload %s", path.c_str ());
}

void insert_file (Workbench& bench) {
    Canvas& canvas = bench.current ();
    const std::string path = ask_name (bench, {.prompt = "Insert File: ",
                                               .filter = "*.net *.xml *.mto",
                                               .title = "Insert",
                                               .native_filter = "Models\t*.{net,xml,mto}\n"});
    if (path.empty ()) return;
    if (!editor::insert_file (canvas, path)) report_message ("Cannot load %s", path.c_str ());
    canvas.redraw ();
}

void insert_picture (Workbench& bench) {
    Canvas& canvas = bench.current ();
    if (!can_insert_picture (canvas)) {
        bench.world ().alert ("Pictures can only be put in a label.\n"
                              "Select a character in a line before.");
        return;
    }
    const std::string path = ask_name (bench, {.prompt = "Insert Picture: ",
                                               .filter = "*.gif *.jpg *.png",
                                               .title = "Insert Picture",
                                               .native_filter = "Image files\t*.{jpg,gif,png}\n"});
    if (path.empty () || !can_insert_picture (canvas)) return;
    if (editor::insert_picture (canvas, path)) return;
    bench.world ().alert (format_text (
        "Picture '%s'\ncannot be loaded (bad format or unreadable file)", path.c_str ()));
    std::fprintf (stderr, "pix = %p\n", static_cast<void*> (nullptr)); // there is none
}

void save_as (Workbench& bench) {
    Canvas& canvas = bench.current ();
    const std::string path = ask_name (
        bench, {.prompt = "Save as: ",
                .filter = "*.net *.xml *.ssa",
                .title = "Save as",
                .native_filter = "Models\t*.{net,xml,ssa}\n",
                .initial = bench.suggest_name (canvas, Workbench::save_extension (canvas)),
                .saving = true});
    if (path.empty ()) return;
    if (bench.save (canvas, path)) {
        set_current_directory (path);
        bench.recent ().add (path);
        Workbench::tell_what_is_lost (path);
    }
}

void save_file (Workbench& bench) {
    Canvas& canvas = bench.current ();
    if (!canvas.file_name ()) {
        save_as (bench);
        return;
    }
    const std::string path = absolute_path ("", *canvas.file_name ());
    if (bench.save (canvas, path)) {
        set_current_directory (path);
        bench.recent ().add (path);
        Workbench::tell_what_is_lost (path);
    }
}

void save_settings (Workbench& bench) {
    std::string error;
    if (!write_preferences (bench.present_preferences (), error))
        report_message ("Cannot save the settings: %s", error.c_str ());
}

void quit (Workbench& bench) { bench.quit_request (); }

void close_tab (Workbench& bench) { bench.close_tab (bench.tabs ().active ()); }

void new_tab (Workbench& bench) {
    if (bench.add_tab (std::nullopt) == AddTab::full) report_message ("no more than 32 tabs");
}

} // namespace ostrand::editor::run
