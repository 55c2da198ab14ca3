// Sweeps on threads.
#include "sweep/sweep_run.h"

#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "base/workers.h"

#include <chrono>
#include <utility>

namespace ostrand::sweep {

std::string sweep_progress_text (std::uint64_t done, std::uint64_t total, std::uint64_t there,
                                 double seconds) {
    const double fraction =
        total == 0 ? 1.0 : static_cast<double> (done) / static_cast<double> (total);
    std::string text = progress_bar (fraction, 24) + format_text (" %3.0f %%", fraction * 100);
    if (done >= total) return text + "  writing";
    if (done <= there || seconds <= 0) return text;
    const double speed = static_cast<double> (done - there) / seconds;
    text += "  " + format_g (speed, 3) + " simulated s/s";
    return text + "  " + format_duration (static_cast<double> (total - done) / speed) + " left";
}

void work_on_tasks (Coordinator& coordinator, Worker& worker, const std::stop_token& stop) {
    const auto keep = [&coordinator] (RecordKind kind, std::string_view content) {
        return coordinator.take (kind, content);
    };
    while (const std::optional<NumberedTask> task = coordinator.wait_for_next (stop)) {
        const auto start = std::chrono::steady_clock::now ();
        const bool done = worker.run (task->task, keep, stop);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now () - start;
        if (done) coordinator.done (task->number, elapsed.count ());
    }
}

Outcome end_sweep (SweepJob& job, const Coordinator& coordinator, const std::stop_token& stop) {
    if (!coordinator.failure ().empty ()) {
        return Outcome::failure ("Cannot write '" + job.journal ().path ().string () +
                                 "': " + coordinator.failure ());
    }
    if (!coordinator.finished ()) return Outcome::stop ();
    return job.write (stop);
}

SweepRun::SweepRun (SweepRequest request, std::span<const sim::LaneKernel> kernels)
    : job_ (std::move (request)), kernels_ (kernels) {}

void SweepRun::simulate (Coordinator& coordinator, unsigned threads, const std::stop_token& stop) {
    const std::uint64_t there = coordinator.points_there ();
    progress_.expect (coordinator.points_in_all ());
    progress_.add_progress (there);
    const ProgressWatch watch (job_.request ().show_progress, [this, there] (double seconds) {
        return sweep_progress_text (progress_.amount_done (), progress_.amount_expected (), there,
                                    seconds);
    });
    const auto work = [&] {
        try {
            Worker worker (job_.plan (), kernels_, progress_);
            work_on_tasks (coordinator, worker, stop);
        } catch (...) {
            coordinator.fail (out_of_memory); // the others end too
            throw;
        }
    };
    WorkerThreads helpers;
    for (unsigned started = 1; started < threads && helpers.start (work);) ++started;
    work (); // with those that could be started, at the least alone
    helpers.join ();
}

Outcome SweepRun::work (const std::stop_token& stop) {
    if (Outcome outcome = job_.open (stop); !outcome.done ()) return outcome;
    const unsigned threads = job_.request ().threads != 0
                                 ? job_.request ().threads
                                 : static_cast<unsigned> (processor_count ());
    Coordinator coordinator (job_.plan (), job_.journal (), job_.ledger (), sim::widest (kernels_),
                             threads);
    simulate (coordinator, threads, stop);
    return end_sweep (job_, coordinator, stop);
}

} // namespace ostrand::sweep
