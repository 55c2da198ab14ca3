// Helpers of the tests of sweeps.
#pragma once
#include "sim/plain_simulator.h"
#include "support/support.h"
#include "sweep/sweep_run.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// A model of quick simulations with 12 combinations, three displayed species and five points.
inline constexpr std::string_view small_model =
    "duration = 5; [a] = 1 uM, 2 uM, 3 uM; [b] = 1 uM, 5 uM, 9 uM, 20 uM; [e] = 0.1 uM;"
    "e : a -> c | 5 uM - 30; a + b -> d | 0.5; d -> a | 0.0001; display (a #ff0000, c, d);";

inline std::unique_ptr<SweepPlan> plan_of (std::string_view text, const SweepChoice& choice = {}) {
    std::string fault;
    std::unique_ptr<SweepPlan> plan = SweepPlan::read (text, choice, fault);
    if (!plan) throw std::runtime_error ("no plan: " + fault);
    return plan;
}

/// A request for a model in a folder, "m.ssa", with the result "r.gz" there.
inline SweepRequest request_in (const testing::TemporaryFolder& folder,
                                const SweepChoice& choice = {}, unsigned threads = 2) {
    SweepRequest request;
    request.model = (folder / "m.ssa").string ();
    request.out = (folder / "r.gz").string ();
    request.choice = choice;
    request.threads = threads;
    return request;
}

/// The bytes of the result of a sweep that goes through; "(failed: why)" when it does not.
inline std::string bytes_of (const SweepRequest& request,
                             std::span<const sim::LaneKernel> kernels = sim::lane_kernels ()) {
    SweepRun run (request, kernels);
    const Outcome outcome = run.run ();
    if (!outcome.done ()) return "(failed: " + outcome.reason + ")";
    return testing::file_text (request.out);
}

/// What the plain simulator, as the first run of a process, makes of a model's text, unpacked.
std::string plain_result (const testing::TemporaryFolder& folder, const std::string& model,
                          bool stochastic);

/// Text of a gzip file that has exactly one member.
std::string unpacked (const std::string& bytes);

} // namespace ostrand::sweep
