// A sweep on the processes of an MPI program, as its rank 0 sees it.
// Layer: ranks.
#pragma once
#include "base/long_work.h"
#include "ranks/rank_link.h"
#include "sweep/coordinator.h"
#include "sweep/sweep_job.h"

#include <stop_token>
#include <string>

namespace ostrand::ranks {

/// With so many ranks rank 0 has enough to do with handing out and keeping; with fewer it simulates
/// too.
inline constexpr int ranks_to_serve_only = 16;

/// Rank 0's part, on at least two ranks. Progress as a sweep on threads has it.
class RankSweep : public LongWork {
  public:
    RankSweep (RankLink& link, sweep::SweepRequest request);

    /// How to go on when it did not come to its end; see SweepJob.
    std::string way_on () const { return job_.way_on (); }
    /// False when some rank did not answer: then the processes cannot end together.
    bool all_answered () const { return all_answered_; }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    void simulate (sweep::Coordinator& coordinator, unsigned threads, std::stop_source stop);

    RankLink& link_;
    sweep::SweepJob job_;
    bool all_answered_ = true;
    std::string interrupted_;
};

/// The program's whole command line, on any rank; gives the exit status of this one.
int ranks_main (int argc, char** argv, const char* commit);

} // namespace ostrand::ranks
