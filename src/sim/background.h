// A run in the background that ends in the curve viewer.
// Layer: sim.
#pragma once
#include <string>
#include <thread>

namespace ostrand::sim {

/// Runs `model` on a thread of its own, which is returned at once: the model file is deleted
/// whatever comes of it, then `done (done_arg)` is called on that thread, then, when the run went
/// well, the viewer is started on the result as a new process of `executable` and waited for; it
/// deletes the result when its window closes. Arguments are copied.
std::thread run_model_async (const char* model, const char* out, const char* executable,
                             void (*done) (void*), void* done_arg, bool stochastic,
                             bool reverse_video);

} // namespace ostrand::sim
