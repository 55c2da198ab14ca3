// ostrand: the program.
#include "startup/run_mode.h"

int main (int argc, char** argv) { return ostrand::startup::start (argc, argv); }
