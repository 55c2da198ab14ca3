// A run in the background.
#include "sim/background.h"

#include "base/disk.h"
#include "base/file_lock.h"
#include "sim/run.h"

#include <filesystem>
#include <utility>
#include <vector>

namespace ostrand::sim {
class BackgroundRun::Work : public LongWork {
  public:
    explicit Work (BackgroundRequest request)
        : request_ (std::move (request)),
          run_ ({.model = request_.model, .out = request_.out, .stochastic = request_.stochastic}) {
    }
    void tidy () override { run_.tidy (); }
    const Progress& progress () const override { return run_.progress (); }
    const ChildProcess& viewer () const { return viewer_; }
    void remove_model () { remove_file (model_); }

  protected:
    Outcome work (const std::stop_token& stop) override {
        Outcome outcome = run_.begin (stop);
        // Nobody else takes or removes a result that is looked at, even when this process has
        // ended. It is locked before the model, whose name keeps others away so far, is gone.
        const FileLock lock (out_, FileLock::Missing::stays_missing);
        remove_model ();
        if (!outcome.done ()) return outcome;
        if (stop.stop_requested ()) { // too late for the run, not for the user
            remove_file (request_.out);
            return Outcome::stop ();
        }
        std::vector<std::string> words{request_.executable, "-v", request_.out, "-d"};
        if (request_.reverse_video) words.emplace_back ("-r");
        viewer_ = ChildProcess (words, {.shared_lock = &lock});
        if (run_.fault () == RunFault::result_not_created)
            return Outcome::failure (run_.no_result_because ());
        if (viewer_.started ()) return outcome;
        return Outcome::failure ("Cannot start '" + request_.executable + "': " + viewer_.error ());
    }

  private:
    BackgroundRequest request_;
    // Made beforehand: what has to be done behind a run needs no memory.
    std::filesystem::path model_ = request_.model;
    std::filesystem::path out_ = request_.out;
    SimulationRun run_;
    ChildProcess viewer_;
};

BackgroundRun::BackgroundRun (BackgroundRequest request, WorkListener listener)
    : BackgroundRun (std::make_shared<Work> (std::move (request)), std::move (listener)) {}

BackgroundRun::BackgroundRun (const std::shared_ptr<Work>& work, WorkListener listener)
    : BackgroundWork (work, std::move (listener)), work_ (work) {
    if (!has_thread ()) work_->remove_model ();
}

const ChildProcess& BackgroundRun::viewer () const { return work_->viewer (); }

std::unique_ptr<BackgroundRun> run_model_async (const char* model, const char* out,
                                                const char* executable, void (*done) (void*),
                                                void* done_arg, bool stochastic,
                                                bool reverse_video) {
    WorkListener listener;
    if (done != nullptr) listener.on_end = [done, done_arg] { done (done_arg); };
    return std::make_unique<BackgroundRun> (BackgroundRequest{.model = model,
                                                              .out = out,
                                                              .executable = executable,
                                                              .stochastic = stochastic,
                                                              .reverse_video = reverse_video},
                                            std::move (listener));
}

} // namespace ostrand::sim
