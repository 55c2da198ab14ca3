// Which of the three programs a command line asks for.
#include "startup/run_mode.h"

#include "base/disk.h"
#include "base/path.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/version.h"
#include "shell/editor_main.h"
#include "sim/command_line.h"
#include "toolkit/display.h"
#include "toolkit/display_report.h"
#include "viewer/choose_result.h"
#include "viewer/viewer_main.h"

#include <cstdio>
#include <optional>
#include <string_view>
#include <vector>

namespace ostrand::startup {

RunMode choose_mode (std::span<const char* const> words) {
    if (words.empty ()) return RunMode::editor;
    const std::string_view first = words[0];
    if (first == "-v") return RunMode::viewer;
    if (first == "-a") return RunMode::simulator;
    if (first == "--choose-result") return RunMode::choose_result;
    if (first == "--show-display") return RunMode::show_display;
    for (const std::string_view word : words) {
        if (word.starts_with ("-h") || word == "--help") return RunMode::usage;
        if (word == "--version") return RunMode::version;
    }
    return RunMode::editor;
}

std::string general_usage (const std::string& name) {
    const char* n = name.c_str ();
    return format_text (
        "Usage:\n 1. to run as Stochora:\t%s -a model\n\t\t\t    [-v(erbose)]\n"
        "\t\t\t    [-o(ut) output-file]\n\t\t\t    [-d(etrministic)]\n"
        "\t\t\t    [-s(equential)]\n\t\t\t    [-npt (number of cores)]\n\n"
        " 2. to run as Trivex:\t%s -v\n\t\t\t    [- / data_file]\n\t\t\t    [-d(elete)]\n"
        "\t\t\t    [-r(everse video)]\n\n"
        "    . if no data file is specified 'data.gz' is used\n"
        "    . '-' specifies the standard input\n"
        "    . gzipped input data files are welcome\n"
        "    . '-d' removes the data file after loading it\n\n"
        " 3. otherwise the editor is launched with one tab per file:\n"
        "        %s [file_1 [file_2 ... file_N]]\n"
        "    The files arguments are not mandatory: without argument\n"
        "    an empty tab is created\n",
        n, n, n);
}

EditorStart prepare_editor (const char* program) {
    std::error_code error;
    EditorStart start;
    start.starting_directory = std::filesystem::current_path (error);
    start.executable = executable_path ();
    if (start.executable.empty ()) {
        start.executable = absolute_path (start.starting_directory.string (), program);
    }
    const std::filesystem::path home = home_directory ();
    // Where there is no home, or it cannot be entered, the process stays where it was.
    if (!home.empty ()) std::filesystem::current_path (home, error);
    // The dialogs begin where the process is. Only the folder counts, the name behind it is none.
    const std::filesystem::path there = std::filesystem::current_path (error);
    if (!error) set_current_directory ((there / "xxx").string ());
    return start;
}

int show_chosen_result () {
    bool asked = false;
    std::optional<std::string> file = viewer::choose_result (asked);
    if (!file) return asked ? 0 : 1;
    // A name that begins with a dash would be a switch.
    if (file->starts_with ('-')) file->insert (0, "./");
    char name[] = "Trivex";
    char* words[] = {name, file->data (), nullptr};
    return viewer::viewer_main (2, words);
}

int print_display () {
    if (!toolkit::display_is_there ()) {
        std::fputs ("There is no display. Is DISPLAY set?\n", stderr);
        return 1;
    }
    return write_standard_output (toolkit::display_report ()) ? 0 : 1;
}

int start (int argc, char** argv, const char* commit) {
    make_write_failures_errors ();
    const std::span<char*> words (argv, static_cast<std::size_t> (argc));
    switch (choose_mode (words.subspan (argc > 0 ? 1 : 0))) {
    case RunMode::simulator: argv[1] = argv[0]; return sim::simulator_main (argc - 1, argv + 1);
    case RunMode::viewer: {
        static char name[] = "Trivex";
        argv[1] = name;
        return viewer::viewer_main (argc - 1, argv + 1);
    }
    case RunMode::choose_result: return show_chosen_result ();
    case RunMode::show_display: return print_display ();
    case RunMode::usage: std::fputs (general_usage (argv[0]).c_str (), stderr); return 0;
    case RunMode::version: return write_standard_output (version_line ("ostrand", commit)) ? 0 : 1;
    case RunMode::editor: break;
    }
    const std::vector<std::string> files (words.begin () + (argc > 0 ? 1 : 0), words.end ());
    const EditorStart editor = prepare_editor (argc > 0 ? argv[0] : "ostrand");
    return shell::editor_main (files, editor.starting_directory.string (),
                               editor.executable.string ());
}

} // namespace ostrand::startup
