// ostrand-tool gates: extracts the logic gates of a metabolic network.
#include "base/disk.h"
#include "base/platform.h"
#include "base/progress.h"
#include "base/text.h"
#include "gates/front_end.h"
#include "tool/commands.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <memory>

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

/// Shows how far a search is, at most ten times a second.
class SearchLine {
  public:
    bool active () const { return line_.active (); }
    void show (const gates::SearchProgress& progress) {
        const auto now = std::chrono::steady_clock::now ();
        if (now - shown_ < std::chrono::milliseconds (100)) return;
        shown_ = now;
        const double passed = std::chrono::duration<double> (now - start_).count ();
        std::string left = "?";
        if (progress.fraction > 0) {
            left = format_duration (passed / progress.fraction * (1 - progress.fraction));
        }
        const std::string size =
            progress.size > 0 ? format_text (" enzymes %d/%d,", progress.size, progress.largest)
                              : "";
        line_.show (progress_bar (progress.fraction, 10) +
                    format_text (" %s left,%s seeds %d/%d, circuits %llu, gates %zu", left.c_str (),
                                 size.c_str (), progress.seeds_done, progress.seeds,
                                 static_cast<unsigned long long> (progress.circuits),
                                 progress.gates));
    }
    void clear () { line_.clear (); }

  private:
    ProgressLine line_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now ();
    std::chrono::steady_clock::time_point shown_ = start_;
};

/// What a user should know of a search that found less than it could.
void tell_shortcomings (const gates::GateExtractor& extractor) {
    const auto tell = [] (const std::string& text) {
        std::fprintf (stderr, "ostrand-tool gates: %s\n", text.c_str ());
    };
    if (!extractor.gate_file_opened) {
        tell ("cannot open the gate file '" + extractor.gate_file + "', no gate is looked for");
    }
    if (!extractor.kinetics_opened) {
        tell ("cannot open the reaction table '" + extractor.kinetics_path +
              "', the gates have no kinetics");
    }
    const int enzymes = extractor.graph.enzyme_count ();
    if (enzymes > gates::most_enzymes) {
        tell (format_text ("the model has %d enzymes, more than the %d of a search, "
                           "no gate is looked for",
                           enzymes, gates::most_enzymes));
    }
}

int extract (const Arguments& arguments, const Numbers& numbers,
             const gates::GateFrontEnd& front_end) {
    gates::GateExtractor extractor;
    extractor.input_path = front_end.model_path;
    extractor.model_file = front_end.model_file;
    extractor.output_base = arguments.value ("--output", front_end.base);
    extractor.gate_file = arguments.value ("--gate-file", gates::builtin_gate_file);
    extractor.kinetics_path = arguments.value ("--kinetics", gates::temporary_kinetics);
    extractor.partition_count = numbers.jobs;
    extractor.depth = numbers.depth;
    extractor.threads = numbers.threads;
    extractor.evaluate_forks = !arguments.has ("--no-forks");
    extractor.multiple_firing = !arguments.has ("--single-firing");
    extractor.verbose = arguments.has ("--verbose");
    extractor.trace = arguments.has ("--trace");
    extractor.console = arguments.has ("--console");

    std::unique_ptr<gates::GateFrontEnd::TableScope> table;
    if (!arguments.has ("--kinetics")) {
        table = std::make_unique<gates::GateFrontEnd::TableScope> (
            front_end, gates::seeded_numbers (static_cast<unsigned> (numbers.seed)));
        if (!table->ok ()) {
            std::fprintf (stderr, "ostrand-tool gates: cannot write '%s': %s\n",
                          gates::temporary_kinetics, table->error ().c_str ());
        }
    }
    SearchLine line;
    if (line.active ()) {
        extractor.progress = [&] (const gates::SearchProgress& now) { line.show (now); };
    }
    std::string error;
    const bool written = extractor.run (error);
    line.clear ();
    tell_shortcomings (extractor);
    if (!written) {
        std::fprintf (stderr, "ostrand-tool gates: cannot write '%s': %s\n",
                      extractor.gate_csv_path ().c_str (), error.c_str ());
        return status_failure;
    }
    const std::string told = format_text (
        "%s: %d gates, %d of them fork gates, %llu circuits\n", extractor.gate_csv_path ().c_str (),
        extractor.gate_count (), extractor.fork_gate_count (),
        static_cast<unsigned long long> (extractor.circuit_counter));
    const int printed = print_result (told);
    return table != nullptr && !table->ok () ? status_failure : printed;
}

int run (const Arguments& arguments) {
    Numbers numbers;
    if (!read_numbers (arguments, numbers)) return status_usage;
    // A reader of our output that goes away must not end us between two files: it is a failed
    // write.
    std::signal (SIGPIPE, SIG_IGN);
    const gates::GateFrontEnd front_end (arguments.words[0]);
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
