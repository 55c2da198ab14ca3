// The simulator's command line.
// Layer: sim.
#pragma once

namespace ostrand::sim {

/// Runs the simulator on its words; argv[0] is the name for the usage text. Exit status 0, or 1 for
/// wrong usage, a model that cannot be run and a result that was lost.
int simulator_main (int argc, char** argv);

} // namespace ostrand::sim
