// Which simulations run together, and on which thread.
#include "base/platform.h"
#include "base/workers.h"
#include "sim/run.h"

#include <algorithm>
#include <cstddef>
#include <stop_token>

namespace ostrand::sim {
namespace {

std::vector<SimulationState> start_states (const LaneModel& model, const Grid& grid,
                                           std::size_t first, std::size_t size) {
    std::vector<SimulationState> states;
    std::vector<std::uint32_t> counts (model.n_species);
    Seeds seeds = grid.seeds;
    seeds.skip (first);
    for (std::size_t i = first; i < first + size; ++i) {
        grid.plan.write_counts (i, counts);
        states.push_back (initial_state (model, counts, seeds.next ()));
    }
    return states;
}

/// Runs the simulations of one group to their last point. What comes behind it nobody sees.
void run_group (const LaneModel& model, Grid& grid, std::size_t first, std::size_t size,
                std::span<const LaneKernel> kernels, Progress* progress,
                const std::stop_token& stop) {
    LaneGroup group (model, kernels, start_states (model, grid, first, size));
    std::uint64_t time_steps = 0;
    for (std::uint32_t point = 0; point < grid.n_points; ++point) {
        while (time_steps < std::uint64_t{point} * stats) {
            if (stop.stop_requested ()) return;
            const std::uint32_t now = next_portion (group, time_steps);
            group.advance (now);
            time_steps += now;
        }
        for (std::size_t i = 0; i < size; ++i) {
            const std::span<std::uint32_t> series = grid.series (first + i);
            for (std::size_t r = 0; r < grid.recorded.size (); ++r) {
                series[r * grid.n_points + point] = group.count (grid.recorded[r], i);
            }
        }
        if (progress != nullptr) progress->add_progress (size);
    }
}

} // namespace

void run_simulations (const LaneModel& model, Grid& grid, bool sequential, Progress* progress,
                      const std::stop_token& stop, std::span<const LaneKernel> kernels) {
    const auto processors = static_cast<std::size_t> (sequential ? 1 : processor_count ());
    const std::size_t threads = std::min<std::size_t> (grid.n_simul, processors);
    // Few simulations are shared out evenly.
    const std::size_t share = (grid.n_simul + threads - 1) / threads;
    const std::size_t width = std::min<std::size_t> (widest (kernels), share);
    // A thread that fails ends the others too.
    std::stop_source end;
    const std::stop_callback with_the_run (stop, [&end] { end.request_stop (); });
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        try {
            for (std::size_t first = next.fetch_add (width);
                 first < grid.n_simul && !end.stop_requested (); first = next.fetch_add (width)) {
                run_group (model, grid, first, std::min (width, grid.n_simul - first), kernels,
                           progress, end.get_token ());
            }
        } catch (...) {
            end.request_stop ();
            throw;
        }
    };
    WorkerThreads helpers;
    for (std::size_t started = 1; started < threads && helpers.start (work);) ++started;
    work (); // with those that could be started, at the least alone
    helpers.join ();
}

} // namespace ostrand::sim
