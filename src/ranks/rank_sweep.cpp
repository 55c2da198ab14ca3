// Sweeps on ranks.
#include "ranks/rank_sweep.h"

#include "base/progress.h"
#include "base/workers.h"
#include "ranks/rank_server.h"
#include "sim/lane_kernels.h"
#include "sweep/sweep_run.h"

#include <algorithm>
#include <utility>

namespace ostrand::ranks {

RankSweep::RankSweep (RankLink& link, sweep::SweepRequest request)
    : link_ (link), job_ (std::move (request)) {}

void RankSweep::simulate (sweep::Coordinator& coordinator, unsigned threads,
                          std::stop_source stop) {
    const std::uint64_t there = coordinator.points_there ();
    progress_.expect (coordinator.points_in_all ());
    progress_.add_progress (there);
    const ProgressWatch watch (job_.request ().show_progress, [this, there] (double seconds) {
        return sweep::sweep_progress_text (progress_.amount_done (), progress_.amount_expected (),
                                           there, seconds);
    });
    const auto work = [&] {
        try {
            sweep::Worker worker (job_.plan (), sim::lane_kernels (), progress_);
            work_on_tasks (coordinator, worker, stop.get_token ());
        } catch (...) {
            coordinator.fail (out_of_memory);
            throw;
        }
    };
    WorkerThreads helpers; // as many as can be had; the other ranks work in any case
    const unsigned own = link_.size () < ranks_to_serve_only ? threads : 0;
    for (unsigned started = 0; started < own && helpers.start (work);) ++started;
    RankServer server (link_, coordinator, threads, progress_);
    all_answered_ = server.serve (stop);
    interrupted_ = server.interrupted ();
    helpers.join ();
}

Outcome RankSweep::work (const std::stop_token& stop) {
    const unsigned threads = std::max (job_.request ().threads, 1U);
    std::string start; // nothing: there is nothing to do
    Outcome outcome = job_.open (stop);
    if (outcome.done ()) {
        start = Start{job_.model_text (), job_.request ().choice, threads}.to_bytes ();
    }
    link_.broadcast (start);
    if (!outcome.done ()) return outcome;
    sweep::Coordinator coordinator (job_.plan (), job_.journal (), job_.ledger (),
                                    sim::widest (sim::lane_kernels ()),
                                    static_cast<unsigned> (link_.size ()) * threads);
    std::stop_source own;
    const std::stop_callback pass_on (stop, [&own] { own.request_stop (); });
    simulate (coordinator, threads, own);
    outcome = end_sweep (job_, coordinator, stop);
    // One that was interrupted alone ends all.
    if (outcome.stopped () && !interrupted_.empty ()) outcome = Outcome::failure (interrupted_);
    if (!all_answered_) return outcome;
    for (int rank = 1; rank < link_.size (); ++rank) link_.send (rank, goodbye_tag, {});
    return outcome;
}

} // namespace ostrand::ranks
