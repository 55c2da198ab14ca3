// ostrand-tool: the program.
#include "tool/command.h"

int main (int argc, char** argv) { return ostrand::tool::tool_main (argc, argv); }
