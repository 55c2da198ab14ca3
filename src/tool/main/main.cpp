// ostrand-tool: the program.
#include "base/version.h"
#include "tool/command.h"

int main (int argc, char** argv) {
    return ostrand::tool::tool_main (argc, argv, ostrand::build_commit ());
}
