// Which simulation runs on which thread.
#include "base/platform.h"
#include "base/workers.h"
#include "sim/run.h"

#include <algorithm>
#include <cstddef>
#include <stop_token>

namespace ostrand::sim {

void run_simulations (const EngineModel& model, std::vector<Simulation>& simulations,
                      bool sequential, bool stochastic) {
    const auto engine = stochastic ? run_stochastic : run_deterministic;
    // A thread that fails ends the others too.
    std::stop_source end;
    const std::stop_callback with_the_run (model.stop, [&end] { end.request_stop (); });
    EngineModel stoppable = model;
    stoppable.stop = end.get_token ();
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        try {
            for (std::size_t i = next.fetch_add (1);
                 i < simulations.size () && !stoppable.stop.stop_requested ();
                 i = next.fetch_add (1)) {
                engine (stoppable, simulations[i]);
            }
        } catch (...) {
            end.request_stop ();
            throw;
        }
    };
    const std::size_t threads =
        sequential ? 1
                   : std::min (simulations.size (), static_cast<std::size_t> (processor_count ()));
    WorkerThreads helpers;
    for (std::size_t started = 1; started < threads && helpers.start (work);) ++started;
    work (); // with those that could be started, at the least alone
    helpers.join ();
}

} // namespace ostrand::sim
