// A sweep on the threads of one process.
// Layer: sweep.
#pragma once
#include "base/long_work.h"
#include "sim/lane_kernels.h"
#include "sweep/coordinator.h"
#include "sweep/sweep_job.h"
#include "sweep/worker.h"

#include <span>
#include <stop_token>
#include <string>

namespace ostrand::sweep {

/// Progress counts recorded points of all simulations, one for each simulated second.
class SweepRun : public LongWork {
  public:
    /// kernels  what to simulate with; those of this machine
    explicit SweepRun (SweepRequest request,
                       std::span<const sim::LaneKernel> kernels = sim::lane_kernels ());

    /// How to go on when it did not come to its end; see SweepJob.
    std::string way_on () const { return job_.way_on (); }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    void simulate (Coordinator& coordinator, unsigned threads, const std::stop_token& stop);

    SweepJob job_;
    std::span<const sim::LaneKernel> kernels_;
};

/// What is left to do when nobody works any more: writes the result, or says why it cannot be.
Outcome end_sweep (SweepJob& job, const Coordinator& coordinator, const std::stop_token& stop);

/// Works on tasks until there are no more: what each thread of a sweep does.
void work_on_tasks (Coordinator& coordinator, Worker& worker, const std::stop_token& stop);

/// What the progress line says.
/// done, total  recorded points
/// there        of them, those that were finished at the beginning
/// seconds      since then
std::string sweep_progress_text (std::uint64_t done, std::uint64_t total, std::uint64_t there,
                                 double seconds);

} // namespace ostrand::sweep
