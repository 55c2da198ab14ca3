// ostrand-mpi: the program.
#include "base/version.h"
#include "ranks/rank_sweep.h"

int main (int argc, char** argv) {
    return ostrand::ranks::ranks_main (argc, argv, ostrand::build_commit ());
}
