// Carries out tasks.
// Layer: sweep.
#pragma once
#include "base/long_work.h"
#include "sweep/record.h"
#include "sweep/sweep_plan.h"
#include "sweep/task.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <stop_token>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// Gets what is worth keeping as soon as it is there. False when it could not be kept: then the
/// work ends.
using RecordSink = std::function<bool (RecordKind kind, std::string_view content)>;

/// Work that is in nobody's hands but the worker's: what a kill costs at most.
inline constexpr std::chrono::milliseconds longest_unkept{200};

class Worker {
  public:
    /// The plan is looked at as long as the worker lives.
    /// progress  told of each recorded point of each simulation
    Worker (const SweepPlan& plan, std::span<const sim::LaneKernel> kernels, Progress& progress);

    /// True when all of the task was done and kept. After a stop what was done until then is kept,
    /// up to the last time step.
    bool run (const Task& task, const RecordSink& sink, const std::stop_token& stop);

  private:
    using Clock = std::chrono::steady_clock;
    struct Group;

    bool simulate (const Task& task, const RecordSink& sink, const std::stop_token& stop);
    bool run_group (Group& group, const RecordSink& sink, const std::stop_token& stop);
    bool keep_slice (Group& group, const RecordSink& sink);
    bool keep_finished (const RecordSink& sink);
    bool pack (std::uint64_t unit, std::span<const std::uint32_t> counts, const RecordSink& sink);

    const SweepPlan& plan_;
    std::span<const sim::LaneKernel> kernels_;
    Progress& progress_;
    Clock::time_point kept_;             // when something was last given to the sink
    SeriesRecord finished_;              // whole simulations not yet given to it
    std::vector<std::uint32_t> of_unit_; // counts of a unit that is simulated here
    std::uint64_t unit_begin_ = 0;       // its first simulation
};

} // namespace ostrand::sweep
