// A run in the background that ends in the curve viewer.
// Layer: sim.
#pragma once
#include "base/background_work.h"
#include "base/process.h"

#include <memory>
#include <string>

namespace ostrand::sim {

struct BackgroundRequest {
    std::string model;          // path of the model text; the file is deleted whatever comes of it
    std::string out;            // path of the result; the viewer deletes it when its window closes
    std::string executable;     // of this program, which is started again as the viewer
    bool stochastic = true;     // else the deterministic engine
    bool reverse_video = false; // for the viewer
};

/// A run on a thread of its own, then the viewer on its result, which is not waited for. A stopped
/// run leaves no result and starts no viewer. Several may go on at once as long as their files have
/// different names. See BackgroundWork for how it is watched, stopped and ended.
class BackgroundRun : public BackgroundWork {
  public:
    explicit BackgroundRun (BackgroundRequest request, WorkListener listener = {});

    /// Part of the simulated time that is done, 0 to 1.
    float progress_fraction () const { return progress ().progress_fraction (); }

    /// The viewer, to be asked when the outcome is there: whether it was started, whether it still
    /// runs.
    const ChildProcess& viewer () const;

  private:
    class Work;
    BackgroundRun (const std::shared_ptr<Work>& work, WorkListener listener);

    std::shared_ptr<Work> work_;
};

/// The same in one call; gives the run's handle at once.
/// done  called with `done_arg` ON THE RUN'S THREAD when the outcome is there; may be null
std::unique_ptr<BackgroundRun> run_model_async (const char* model, const char* out,
                                                const char* executable, void (*done) (void*),
                                                void* done_arg, bool stochastic,
                                                bool reverse_video);

} // namespace ostrand::sim
