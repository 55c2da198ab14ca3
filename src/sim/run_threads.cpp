// Which simulation runs on which thread.
#include "base/platform.h"
#include "sim/run.h"

#include <algorithm>
#include <exception>
#include <thread>

namespace ostrand::sim {

void run_simulations (const EngineModel& model, std::vector<Simulation>& simulations,
                      bool sequential, bool stochastic) {
    const auto engine = stochastic ? run_stochastic : run_deterministic;
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next.fetch_add (1); i < simulations.size (); i = next.fetch_add (1)) {
            engine (model, simulations[i]);
        }
    };
    std::vector<std::thread> helpers;
    const std::size_t wanted =
        sequential ? 1
                   : std::min (simulations.size (), static_cast<std::size_t> (processor_count ()));
    try {
        helpers.reserve (wanted);
        while (helpers.size () + 1 < wanted) helpers.emplace_back (work);
    } catch (const std::exception&) {
        // The threads that could be started, at the least this one, do it all.
    }
    work ();
    for (std::thread& helper : helpers) helper.join ();
}

} // namespace ostrand::sim
