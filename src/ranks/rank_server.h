// Rank 0: hands out a sweep's tasks to the other ranks and keeps what they send.
// Layer: ranks.
#pragma once
#include "base/long_work.h"
#include "ranks/rank_link.h"
#include "ranks/rank_words.h"
#include "sweep/coordinator.h"

#include <chrono>
#include <cstdint>
#include <set>
#include <stop_token>
#include <string>
#include <utility>

namespace ostrand::ranks {

/// How long the others have to end after a stop, before it is said that they do not answer. Who
/// starts and ends ranks gives them about a second until it kills them.
inline constexpr std::chrono::milliseconds patience{600};

class RankServer {
  public:
    /// All are looked at as long as this lives.
    /// threads   of each rank
    /// progress  told of the points that the other ranks record
    RankServer (RankLink& link, sweep::Coordinator& coordinator, unsigned threads,
                Progress& progress);

    /// Serves until every thread of the other ranks has been told to end: when all is there, after
    /// a failure, after a stop, and when one of them was interrupted.
    /// stop  asked for here when a rank was interrupted; looked at too
    /// False when some did not answer in time after a stop: they may be dead.
    bool serve (std::stop_source stop);
    /// Who was interrupted on its own, in words; empty when nobody was.
    const std::string& interrupted () const { return interrupted_; }

  private:
    using Place = std::pair<int, std::uint32_t>; // rank and thread

    bool take_message ();
    bool answer_waiting ();
    bool is_over () const;
    void stop_others ();
    void end (const Place& place);

    RankLink& link_;
    sweep::Coordinator& coordinator_;
    Progress& progress_;
    std::stop_source stop_{std::nostopstate};
    std::set<Place> active_;  // not yet told to end
    std::set<Place> waiting_; // for a task
    bool stop_told_ = false;
    std::string interrupted_;
};

} // namespace ostrand::ranks
