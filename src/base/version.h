// Which version of the programs this is.
// Layer: base.
#pragma once
#include <string>
#include <string_view>

namespace ostrand {

/// The line that --version prints: "ostrand 0.1.0, commit 0123456789ab".
/// commit  of the tree that the program was built from, "unknown" when nobody knows; the programs
///         get it from build_commit
std::string version_line (std::string_view program, std::string_view commit);

/// The commit of the tree, found when the programs are linked. Defined in a file that the build
/// writes, and linked into the programs only, so that a commit does not relink every test.
const char* build_commit ();

} // namespace ostrand
