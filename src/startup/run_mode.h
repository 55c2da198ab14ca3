// Which of the three programs a command line asks for, and how the process starts as that one.
// Layer: startup.
#pragma once
#include <filesystem>
#include <span>
#include <string>

namespace ostrand::startup {

enum class RunMode { editor, simulator, viewer, choose_result, show_display, usage, version };

/// Looks at the words behind argv[0]: a first word that is exactly -a or -v chooses simulator or
/// viewer, one that is --choose-result the viewer behind a dialog, one that is --show-display the
/// report of the display; otherwise the first word that begins with -h or is --help asks for the
/// usage text, one that is --version for the version; the rest is the editor's.
RunMode choose_mode (std::span<const char* const> words);

/// The usage text of the three modes, `name` being what the program was called by.
std::string general_usage (const std::string& name);

/// Where the curves of a double click come from: asks for a result and shows it. Gives the exit
/// status.
int show_chosen_result ();

/// Prints what the display offers. Gives the exit status: 1, with a message, when there is none.
int print_display ();

/// What the editor has to know of the process's start.
struct EditorStart {
    std::filesystem::path starting_directory; // file arguments are relative to it
    std::filesystem::path executable;         // absolute; starts the viewer after a run
};

/// Notes where the process was started and by which file, then moves to the user's home.
EditorStart prepare_editor (const char* program);

/// The whole program; gives the exit status.
/// commit  that it was built from, for --version
int start (int argc, char** argv, const char* commit);

} // namespace ostrand::startup
