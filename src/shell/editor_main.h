// The editor from the command line to its end.
// Layer: shell.
#pragma once
#include <string>
#include <vector>

namespace ostrand::shell {

/// Opens the editor's window on the files of the command line; gives the exit status. Does not
/// come back when the user quits.
/// words  behind the program's name: --restore or --no-restore, then file names
int editor_main (const std::vector<std::string>& words, const std::string& start_directory,
                 const std::string& executable);

} // namespace ostrand::shell
