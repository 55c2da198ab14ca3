// What `ostrand-tool doctor` makes of what it found on a machine.
// Layer: tool.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::tool {

/// How another program answered.
struct Answer {
    enum class End {
        not_there, // no such program
        no_answer, // it had to be ended
        ended,     // with `status`
        not_asked, // the question itself failed: `error`
    };
    End end = End::not_there;
    int status = 0; // exit status, or 128 + the signal's number
    std::string out;
    std::string error;
};

/// The history of an open document, or of one that was left behind.
struct HistoryFile {
    std::string name;
    bool held = false; // by an editor that runs
};

/// Everything that was looked at. Nothing here is judged.
struct MachineFacts {
    std::string version;                   // of this program, as version_line writes it
    Answer editor;                         // `ostrand --version`
    Answer display;                        // `ostrand --show-display`
    Answer ranks;                          // `ostrand-mpi --version`
    bool has_mpirun = false;               // PATH has it
    std::string home;                      // empty when there is none
    std::optional<std::string> home_fault; // why it cannot be written; nothing when it can
    std::vector<HistoryFile> histories;    // in the home
};

/// A line of the report.
struct Finding {
    std::string subject;
    std::string text;
    bool fine = true;
    std::string package = {}; // Debian's, that brings what is missing
};

/// Judges the facts, in the order of the report.
std::vector<Finding> examine (const MachineFacts& facts);

/// The report's text: a line for each finding, what to install, and how many things are wrong.
std::string doctor_text (const std::vector<Finding>& findings);

/// The Debian package of a shared library that a program of ours is linked with; empty when it is
/// none of them.
/// library  its file's name, "libGL.so.1"
std::string package_of_library (std::string_view library);

} // namespace ostrand::tool
