// The ranks other than 0: ask for tasks, carry them out, send what they have finished.
// Layer: ranks.
#pragma once
#include "ranks/rank_link.h"
#include "ranks/rank_words.h"

#include <stop_token>

namespace ostrand::ranks {

/// Works until rank 0 says that all is over. After an interruption rank 0 is told, and what was
/// done until then is sent.
void work_for_rank_0 (RankLink& link, const Start& start, const std::stop_token& interruption);

} // namespace ostrand::ranks
