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
        // Every run is compared as the first of a process.
        SimulatorState& state = simulator_state ();
        state.seeds = {};
        const int number = state.tables.complex_counter + 1;
        ASSERT_TRUE (run_model (path.c_str (), out.c_str (), sequential, false, false, stochastic))
            << model.text ();
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
