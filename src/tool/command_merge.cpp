// ostrand-tool merge: shards of a sweep become its result.
#include "base/interruption.h"
#include "base/progress.h"
#include "base/text.h"
#include "sweep/merge.h"
#include "sweep/sweep_options.h"
#include "tool/commands.h"

#include <array>
#include <cstdio>
#include <limits>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    if (!arguments.has ("-o") || arguments.value ("-o").empty ()) {
        std::fputs ("ostrand-tool merge: -o OUT is missing\n", stderr);
        return status_usage;
    }
    const InterruptionStop interruption;
    sweep::ShardMerge merge (arguments.value ("-o"), arguments.words);
    const ProgressWatch watch (true, [&merge] (double) {
        const double fraction = static_cast<double> (merge.progress ().progress_fraction ());
        return progress_bar (fraction, 24) + format_text (" %3.0f %%", fraction * 100);
    });
    const Outcome outcome = merge.run (interruption.token ());
    return sweep::tell_sweep_end ("ostrand-tool merge", outcome, {}, interruption);
}

constexpr std::array options{
    ToolOption{"-o", "OUT", "the result (needed); '-' is standard output"}};

} // namespace

extern const ToolCommand merge_command{
    .name = "merge",
    .words = "SHARD...",
    .fewest_words = 1,
    .most_words = std::numeric_limits<int>::max (),
    .summary = "join the shards of a sweep to its result",
    .details =
        "All shards of 'ostrand-tool sweep --shard I/N', in any order. The result is the file\n"
        "that the sweep without shards would be, byte for byte. One that is missing, there\n"
        "twice, damaged or of another sweep is refused. The shards stay.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
