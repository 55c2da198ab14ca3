// The options of a sweep as words of a command line, and how its end is told.
// Layer: sweep.
#pragma once
#include "base/interruption.h"
#include "base/long_work.h"
#include "sweep/sweep_job.h"

#include <array>
#include <map>
#include <optional>
#include <string>

namespace ostrand::sweep {

struct SweepOption {
    const char* name;
    const char* value; // name of its value; null for a switch
    const char* help;
};

inline constexpr std::array sweep_options{
    SweepOption{"-o", "OUT", "the result (needed); '-' is standard output"},
    SweepOption{"--replicates", "N",
                "simulations of each combination of concentrations, each with random numbers of "
                "its own (1)"},
    SweepOption{"--deterministic", nullptr, "the engine without chance"},
    SweepOption{"--resume", nullptr, "go on with what an interrupted sweep has left beside OUT"},
    SweepOption{"--shard", "I/N", "only part I of N, from 1; 'ostrand-tool merge' joins them"},
    SweepOption{"--threads", "N", "threads that simulate (as many as processors)"},
    SweepOption{"--seed", "N", "other random numbers for all simulations, from 0"},
};

/// Options by name, as a command line has them.
using SweepOptionValues = std::map<std::string, std::string, std::less<>>;

/// Nothing, with the reason in `fault`, when a value is none of its option.
std::optional<SweepRequest> sweep_request (const std::string& model,
                                           const SweepOptionValues& values, std::string& fault);

/// Tells on standard error how a sweep ended, when not well, and gives the exit status.
/// program  what the messages begin with
/// way_on   how to go on; may be empty
int tell_sweep_end (const char* program, const Outcome& outcome, const std::string& way_on,
                    const InterruptionStop& interruption);

} // namespace ostrand::sweep
