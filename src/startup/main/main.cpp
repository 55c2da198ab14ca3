// ostrand: the program.
#include "base/version.h"
#include "startup/run_mode.h"

int main (int argc, char** argv) {
    return ostrand::startup::start (argc, argv, ostrand::build_commit ());
}
