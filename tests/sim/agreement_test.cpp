// The engines, the expansion and the grid against the plain second simulator, bit for bit.
#include "sim/plain_simulator.h"
#include "sim/run.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::sim {
namespace {

constexpr unsigned models_each = 150;

void compare (unsigned first_seed, bool stochastic, bool sequential) {
    const testing::TemporaryFolder folder;
    for (unsigned seed = first_seed; seed < first_seed + models_each; ++seed) {
        const plain::Model model = plain::random_model (seed);
        const std::string path = folder.write ("model.ssa", model.text ());
        const std::string out = (folder / "data.gz").string ();
        SimulatorState state; // every run is the first of a process
        constexpr int number = 1;
        SimulationRun run (
            {.model = path, .out = out, .sequential = sequential, .stochastic = stochastic}, state);
        ASSERT_TRUE (run.run ().done ()) << model.text ();
        const plain::Result expected = plain::simulate (model, stochastic, number);
        ASSERT_EQ (testing::unzipped_file (out), plain::result_text (model, expected, number))
            << "seed " << seed << "\n"
            << model.text ();
    }
}

TEST (agreement, stochastic_counts_equal_the_plain_simulators) { compare (1, true, true); }
TEST (agreement, deterministic_counts_equal_the_plain_simulators) { compare (1001, false, true); }
TEST (agreement, threads_change_no_count) { compare (2001, true, false); }

} // namespace
} // namespace ostrand::sim
