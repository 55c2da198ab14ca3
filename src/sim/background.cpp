// A run in the background.
#include "sim/background.h"

#include "base/platform.h"
#include "base/report.h"
#include "sim/run.h"

#include <exception>
#include <filesystem>
#include <vector>

namespace ostrand::sim {
namespace {

struct BackgroundRun {
    std::string model;
    std::string out;
    std::string executable;
    void (*done) (void*);
    void* done_arg;
    bool stochastic;
    bool reverse_video;
};

void run_in_background (const BackgroundRun& request) {
    bool went_well = false;
    try {
        went_well = run_model (request.model.c_str (), request.out.c_str (), false, false, false,
                               request.stochastic);
    } catch (const std::exception& fault) { // memory ran out: the editor goes on
        report_message ("The simulation ended early: %s", fault.what ());
    }
    std::error_code ignored;
    std::filesystem::remove (request.model, ignored);
    if (request.done != nullptr) request.done (request.done_arg);
    if (!went_well) return;
    std::vector<std::string> words{request.executable, "-v", request.out, "-d"};
    if (request.reverse_video) words.emplace_back ("-r");
    run_process (words);
}

} // namespace

std::thread run_model_async (const char* model, const char* out, const char* executable,
                             void (*done) (void*), void* done_arg, bool stochastic,
                             bool reverse_video) {
    return std::thread (run_in_background, BackgroundRun{model, out, executable, done, done_arg,
                                                         stochastic, reverse_video});
}

} // namespace ostrand::sim
