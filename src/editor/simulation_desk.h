// Simulations that the editor starts, and the viewers that show their results.
// Layer: editor (uses sim).
#pragma once
#include "sim/background.h"

#include "base/file_lock.h"

#include <memory>
#include <optional>
#include <string>

namespace ostrand::editor {

/// The files of one run: the model text and its result. They lie in one folder.
struct RunFiles {
    std::string model;  // "_tmp_.ssa", "_tmp_2.ssa" and so on
    std::string result; // "_data_.gz", "_data_2.gz" and so on
};

/// The names of the k-th pair, from 1.
RunFiles run_files (const std::string& folder, int k);

/// One run at a time; the viewers of earlier ones stay open beside it. Files are in use while they
/// are locked: the model's by the desk that runs it, the result's by its viewer.
class SimulationDesk {
  public:
    /// folder      where the files of runs lie
    /// executable  of this program, which is started again as the viewer
    SimulationDesk (std::string folder, std::string executable);
    /// Stops a run that goes on.
    ~SimulationDesk ();

    /// Simulates a model text in the background. False, with the reason in `error`, when its file
    /// cannot be written or a run goes on.
    bool start (const std::string& model_text, bool deterministic, bool reverse_video,
                std::string& error);
    void stop ();
    /// Stops a run that goes on and waits until nothing of it is left.
    void end ();
    bool running () const { return run_ != nullptr; }
    /// Part of the run that is done, 0 to 1; nothing when none goes on.
    std::optional<float> progress () const;
    /// Looks whether the run has ended; true when it just has. What went wrong is reported.
    bool poll ();

  private:
    std::string folder_;
    std::string executable_;
    std::unique_ptr<sim::BackgroundRun> run_;
    FileLock run_lock_; // of its model file
};

} // namespace ostrand::editor
