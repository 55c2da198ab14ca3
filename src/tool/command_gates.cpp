// ostrand-tool gates: extracts the logic gates of a metabolic network.
#include "base/disk.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "gates/front_end.h"
#include "gates/reaction_table.h"
#include "gates/temporary_table.h"
#include "tool/commands.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>

namespace ostrand::tool {
namespace {

/// Jobs at most: a catalogue has no use for more, and each has its files.
constexpr int most_jobs = 4096;

struct Numbers {
    int depth = 3;
    int jobs = 8;
    int threads = 1;
    int seed = 1;
};

/// The numbers among the options; false, with the message told, when one is none.
bool read_numbers (const Arguments& arguments, Numbers& numbers) {
    const auto depth = arguments.number ("--depth", numbers.depth, 1);
    const auto jobs = arguments.number ("--jobs", numbers.jobs, 1);
    const auto threads = arguments.number ("--threads", processor_count (), 1);
    const auto seed = arguments.number ("--seed", numbers.seed, 0);
    if (!depth || !jobs || !threads || !seed) return false;
    if (*jobs > most_jobs) {
        std::fprintf (stderr, "ostrand-tool: --jobs takes at most %d\n", most_jobs);
        return false;
    }
    numbers = {*depth, *jobs, std::min (*threads, 1024), *seed};
    return true;
}

/// The line that shows how far a search is.
std::string progress_line (const gates::SearchProgress& progress, double seconds) {
    const double fraction = static_cast<double> (progress.progress_fraction ());
    std::string left = "?";
    if (fraction > 0) left = format_duration (seconds / fraction * (1 - fraction));
    const std::string size =
        progress.size > 0
            ? format_text (" enzymes %d/%d,", progress.size.load (), progress.largest.load ())
            : "";
    return progress_bar (fraction, 10) +
           format_text (" %s left,%s seeds %d/%d, circuits %llu, gates %llu", left.c_str (),
                        size.c_str (), progress.seeds_done.load (), progress.seeds.load (),
                        static_cast<unsigned long long> (progress.circuits.load ()),
                        static_cast<unsigned long long> (progress.results ()));
}

void tell (const std::string& text) {
    std::fprintf (stderr, "ostrand-tool gates: %s\n", text.c_str ());
}

/// What a user should know of a search that found less than it could.
void tell_shortcomings (const gates::GateExtractor& extractor) {
    if (!extractor.gate_file_opened) {
        tell ("cannot open the gate file '" + extractor.request.gate_file +
              "', no gate is looked for");
    }
    if (!extractor.kinetics_opened) {
        tell ("cannot open the reaction table '" + extractor.request.kinetics_path +
              "', the gates have no kinetics");
    }
    const int enzymes = extractor.graph.enzyme_count ();
    if (enzymes > gates::most_enzymes) {
        tell (format_text ("the model has %d enzymes, more than the %d of a search, "
                           "no gate is looked for",
                           enzymes, gates::most_enzymes));
    }
}

int extract (const Arguments& arguments, const Numbers& numbers, gates::GateFrontEnd& front_end) {
    gates::GateExtractor extractor (
        {.input_path = front_end.model_path,
         .model_file = std::move (front_end.model_file),
         .output_base = arguments.value ("--output", front_end.base),
         .gate_file = arguments.value ("--gate-file", gates::builtin_gate_file),
         .kinetics_path = arguments.value ("--kinetics", ""),
         .partition_count = numbers.jobs,
         .depth = numbers.depth,
         .evaluate_forks = !arguments.has ("--no-forks"),
         .multiple_firing = !arguments.has ("--single-firing"),
         .verbose = arguments.has ("--verbose"),
         .trace = arguments.has ("--trace"),
         .console = arguments.has ("--console"),
         .threads = numbers.threads,
         .tell_progress = is_terminal (2)});

    std::optional<gates::TemporaryTable> table;
    if (!arguments.has ("--kinetics")) {
        table.emplace (gates::reaction_table_text (
            front_end.model_path, front_end.reactions,
            gates::seeded_numbers (static_cast<unsigned> (numbers.seed))));
        extractor.request.kinetics_path = table->name ();
        if (!table->ok ()) {
            std::fprintf (stderr, "ostrand-tool gates: cannot write '%s': %s\n",
                          table->name ().c_str (), table->error ().c_str ());
        }
    }
    Outcome outcome;
    {
        const ProgressWatch line (true, [&extractor] (double seconds) {
            return progress_line (extractor.progress (), seconds);
        });
        outcome = extractor.run ();
    }
    if (outcome.failed () && extractor.lost.empty ()) {
        tell (outcome.reason);
        return status_failure;
    }
    tell_shortcomings (extractor);
    for (const std::string& message : extractor.lost) tell (message);
    if (!extractor.gate_csv_written) return status_failure;
    const std::string told = format_text (
        "%s: %d gates, %d of them fork gates, %llu circuits\n", extractor.gate_csv_path ().c_str (),
        extractor.gate_count (), extractor.fork_gate_count (),
        static_cast<unsigned long long> (extractor.circuit_counter));
    const int printed = print_result (told);
    const bool all_written = outcome.done () && (!table || table->ok ());
    return all_written ? printed : status_failure;
}

int run (const Arguments& arguments) {
    Numbers numbers;
    if (!read_numbers (arguments, numbers)) return status_usage;
    gates::GateFrontEnd front_end (arguments.words[0]);
    if (!front_end.model_file.fault.empty ()) {
        tell (front_end.model_file.fault);
        return status_failure;
    }
    if (!front_end.parsed) {
        write_standard_output ("sbmlReader: Impossible d'ouvrir le fichier en lecture.\n");
        std::fprintf (stderr, "'%s': format error\n", arguments.words[0].c_str ());
        return status_failure;
    }
    return extract (arguments, numbers, front_end);
}

constexpr std::array options{
    ToolOption{"--depth", "D", "enzymes of a gate at most (3); two are always tried"},
    ToolOption{"--jobs", "P", "jobs that share the catalogue (8)"},
    ToolOption{"--output", "BASE", "stem of the files written (the model without its extension)"},
    ToolOption{"--gate-file", "FILE", "the gate catalogue (builtin)"},
    ToolOption{"--kinetics", "TABLE", "the reaction table; without it one is drawn at random"},
    ToolOption{"--seed", "N", "seed of the drawn reaction table (1)"},
    ToolOption{"--verbose", nullptr, "write the summaries BASE.txt and BASE.csv too"},
    ToolOption{"--trace", nullptr, "write each job's trace BASE_N<P>_N<J>.txt; slow"},
    ToolOption{"--console", nullptr, "print each job's short summary"},
    ToolOption{"--no-forks", nullptr, "only gates whose forks are all held abundant"},
    ToolOption{"--single-firing", nullptr, "a metabolite changes by one token in a step at most"},
    ToolOption{"--threads", "N", "threads of the search (as many as processors)"},
};

} // namespace

extern const ToolCommand gates_command{
    .name = "gates",
    .words = "MODEL.xml",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "extract the logic gates of a metabolic network",
    .details = "Writes BASE_gates.csv. Without --kinetics the reaction table tmp_kinetics.csv is\n"
               "written in the current directory and deleted afterwards.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
