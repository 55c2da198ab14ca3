// Starting the editor and running its event loop.
#include "shell/editor_main.h"

#include "desktop/first_look.h"
#include "document/font.h"
#include "editor/recovery.h"
#include "shell/application.h"
#include "shell/images.h"
#include "shell/screen.h"
#include "toolkit/display.h"
#include "toolkit/font_metrics.h"
#include "toolkit/interface_queue.h"
#include "toolkit/window_memory.h"

#include "base/platform.h"

#include <FL/Fl.H>
#include <FL/Fl_Shared_Image.H>
#include <csetjmp>
#include <csignal>
#include <cstdio>
#include <filesystem>

namespace ostrand::shell {
namespace {

/// Where a broken command comes back to.
sigjmp_buf event_loop;

/// Containment of a crash: the command that broke is left where it stands, the editor goes on.
void signal_trap (int number) {
    std::signal (number, signal_trap);
    std::fprintf (stderr, "Signal: %d trapped...\n", number);
    siglongjmp (event_loop, 1);
}

} // namespace

int editor_main (const std::vector<std::string>& words, const std::string& start_directory,
                 const std::string& executable) {
    std::vector<std::string> files = words;
    editor::RecoveryMode recovery = editor::RecoveryMode::ask;
    while (!files.empty ()) {
        if (files.front () == "--restore")
            recovery = editor::RecoveryMode::restore_all;
        else if (files.front () == "--no-restore")
            recovery = editor::RecoveryMode::leave_all;
        else
            break;
        files.erase (files.begin ());
    }
    if (!toolkit::display_is_there ()) {
        std::fprintf (stderr, "The editor needs a display. Is DISPLAY set?\n");
        return 1;
    }
    if (!toolkit::opengl_is_there ()) {
        std::fprintf (stderr, "The editor needs OpenGL, which this display does not have.\n");
        return 1;
    }
    // What the desktop says counts until the user has saved preferences.
    std::error_code ignored;
    const bool first_start = !std::filesystem::exists (editor::preferences_path (), ignored);
    editor::Preferences preferences = editor::read_preferences ();
    desktop::FirstLook look;
    if (first_start) {
        look = desktop::first_look (desktop::read_desktop_facts (home_directory ()));
        preferences.dark_mode = look.dark;
    }
    toolkit::follow_text_scale (toolkit::remembered_scale ().value_or (look.text_scale));
    toolkit::interface_queue ();
    fl_register_images ();
    set_window_icons ();
    toolkit::find_fonts ();
    static const toolkit::ToolkitMetrics metrics;
    document::set_metrics_provider (metrics);

    Application application (preferences, {.start_directory = start_directory,
                                           .home = home_directory ().string (),
                                           .executable = executable});
    editor::Workbench& bench = application.bench ();
    if (!bench.open_first_tab ()) return 1;
    application.build ();
    bench.open_command_line (files);
    application.window ().refresh ();
    fit_to_screen (application.window ());
    toolkit::restore_place (application.window (), editor_window);
    char name[] = "ostrand";
    char* argument[] = {name, nullptr};
    application.window ().show (1, argument);
    application.window ().focus_canvas ();
    editor::recover (bench, recovery, !files.empty ());

    std::signal (SIGSEGV, signal_trap);
    sigsetjmp (event_loop, 1);
    Fl::run ();
    return 0;
}

} // namespace ostrand::shell
