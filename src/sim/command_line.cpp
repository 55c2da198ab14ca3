// The simulator's command line.
#include "sim/command_line.h"

#include "base/platform.h"
#include "base/report.h"
#include "sim/run.h"

#include <array>
#include <cstdio>
#include <optional>
#include <string_view>

namespace ostrand::sim {
namespace {

int usage (const char* name) {
    std::fprintf (
        stderr,
        "usage: %s model\t[-v(erbose)]\n\t\t\t[-o(ut) output-file]\n\t\t\t[-d(etrministic)]"
        "\n\t\t\t[-s(equential)]\n\t\t\t[-npt (number of cores)]\n",
        name);
    return 1;
}

enum class Switch { out, verbose, compile, deterministic, npt, sequential };

struct SwitchName {
    std::string_view name;
    Switch meaning;
};

/// In the order in which an abbreviation finds them.
constexpr std::array<SwitchName, 6> switches{{
    {"-out", Switch::out},
    {"-verbose", Switch::verbose},
    {"-compile", Switch::compile},
    {"-deterministic", Switch::deterministic},
    {"-npt", Switch::npt},
    {"-sequential", Switch::sequential},
}};

/// The first switch that the word is a beginning of.
std::optional<Switch> find_switch (std::string_view word) {
    for (const SwitchName& row : switches) {
        if (row.name.starts_with (word)) return row.meaning;
    }
    return std::nullopt;
}

} // namespace

int simulator_main (int argc, char** argv) {
    if (argc < 2) return usage (argv[0]);
    RunRequest request{.model = {}, .out = "data.gz", .show_progress = true};
    bool model_given = false;
    bool compile = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (!word.starts_with ('-')) {
            request.model = word;
            model_given = true;
            continue;
        }
        const std::optional<Switch> found = find_switch (word);
        if (!found) {
            std::fprintf (stderr, "unknown switch: '%s'\n", argv[i]);
            return usage (argv[0]);
        }
        switch (*found) {
        case Switch::out:
            if (++i == argc) return usage (argv[0]);
            request.out = argv[i];
            break;
        case Switch::verbose: request.verbose = true; break;
        case Switch::compile: compile = true; break;
        case Switch::deterministic: request.stochastic = false; break;
        case Switch::npt: std::fprintf (stderr, "%d parallel threads\n", processor_count ()); break;
        case Switch::sequential: request.sequential = true; break;
        }
    }
    if (!model_given) return usage (argv[0]);
    if (compile) {
        std::fputs ("compile_model has been removed.\n", stderr);
        return 1;
    }
    SimulationRun run (request);
    const Outcome outcome = run.run ();
    if (!outcome.failed ()) return 0;
    switch (run.fault ()) {
    case RunFault::model_not_opened:
    case RunFault::result_not_created: break; // the latter is no failure here
    case RunFault::model_refused:
    case RunFault::result_lost: report_message ("%s", outcome.reason.c_str ()); break;
    case RunFault::none:
        report_message ("The simulation ended early: %s", outcome.reason.c_str ());
        break;
    }
    if (run.fault () == RunFault::model_not_opened || run.fault () == RunFault::model_refused) {
        std::fprintf (stderr, "Cannot open '%s'\n", request.model.c_str ());
    }
    return 1;
}

} // namespace ostrand::sim
