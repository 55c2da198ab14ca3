// Joining shards to the result of their sweep.
// Layer: sweep.
#pragma once
#include "base/long_work.h"

#include <stop_token>
#include <string>
#include <vector>

namespace ostrand::sweep {

/// Progress counts units of the result. The shards may come in any order; they stay as they are. A
/// shard that is missing, there twice, damaged, unfinished or of another sweep is refused in words,
/// and the output is as it was.
class ShardMerge : public LongWork {
  public:
    ShardMerge (std::string out, std::vector<std::string> shards);

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    std::string out_;
    std::vector<std::string> shards_;
};

} // namespace ostrand::sweep
