// The curve viewer's command line.
// Layer: viewer.
#pragma once

namespace ostrand::viewer {

/// Shows a result file: argv[0] is the name for the usage line. Exit status 0 once the window was
/// closed, 1 for wrong usage and for a file that cannot be shown.
int viewer_main (int argc, char** argv);

} // namespace ostrand::viewer
