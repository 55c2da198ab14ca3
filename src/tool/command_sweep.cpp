// ostrand-tool sweep: all simulations of a model, at the speed of the machine.
#include "base/interruption.h"
#include "sweep/sweep_options.h"
#include "sweep/sweep_run.h"
#include "tool/commands.h"

#include <array>
#include <cstdio>

namespace ostrand::tool {
namespace {

constexpr auto options = [] {
    std::array<ToolOption, sweep::sweep_options.size ()> rows{};
    for (std::size_t i = 0; i < rows.size (); ++i) {
        const sweep::SweepOption& option = sweep::sweep_options[i];
        rows[i] = {option.name, option.value, option.help};
    }
    return rows;
}();

int run (const Arguments& arguments) {
    std::string fault;
    const auto request = sweep::sweep_request (arguments.words[0], arguments.options, fault);
    if (!request) {
        std::fprintf (stderr, "ostrand-tool sweep: %s\n", fault.c_str ());
        return status_usage;
    }
    const InterruptionStop interruption;
    sweep::SweepRun sweep (*request);
    const Outcome outcome = sweep.run (interruption.token ());
    return sweep::tell_sweep_end ("ostrand-tool sweep", outcome, sweep.way_on (), interruption);
}

} // namespace

extern const ToolCommand sweep_command{
    .name = "sweep",
    .words = "MODEL",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "simulate all combinations of a model's concentrations, with replicates",
    .details =
        "The result is what 'ostrand -a MODEL' writes, once unpacked. Replicates are one more\n"
        "varying concentration, \"replicate\", with the values 1 to N; the first one is the plain\n"
        "run unless there is a seed. The same model and options give the same file, byte for "
        "byte,\n"
        "whatever the threads, interruptions and shards were.\n"
        "While it goes on, what is finished is kept in OUT.sweep. After Ctrl-C (status 130), a\n"
        "kill or a full disk the same command with --resume goes on from there.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
