// ostrand-mpi: the command line.
#include "base/interruption.h"
#include "base/platform.h"
#include "base/text.h"
#include "base/version.h"
#include "ranks/rank_sweep.h"
#include "ranks/rank_worker.h"
#include "sweep/sweep_options.h"
#include "sweep/sweep_run.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::ranks {
namespace {

constexpr int status_usage = 2;
constexpr const char* usage = "usage: ostrand-mpi [options] MODEL -o OUT\n";

std::string help () {
    std::string text = std::string (usage) +
                       "\nAll simulations of a model on the processes that 'mpirun' starts. The "
                       "result is\nthat of 'ostrand-tool sweep', byte for byte.\n\n";
    for (const sweep::SweepOption& option : sweep::sweep_options) {
        std::string name = option.name;
        if (option.value != nullptr) name += std::string (" ") + option.value;
        const std::string_view own = option.name;
        text += format_text ("  %-16s %s\n", name.c_str (),
                             own == "--threads" ? "threads that simulate, of each process (1)"
                                                : option.help);
    }
    return text;
}

/// A command line, sorted.
struct Words {
    std::vector<std::string> models;
    sweep::SweepOptionValues options;
    bool help = false;
    bool version = false;
    std::string fault;
};

const sweep::SweepOption* find_option (std::string_view name) {
    for (const sweep::SweepOption& option : sweep::sweep_options) {
        if (name == option.name) return &option;
    }
    return nullptr;
}

Words sort_words (int argc, char** argv) {
    Words words;
    bool options_end = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (options_end || (!word.starts_with ("--") && word != "-o")) {
            words.models.emplace_back (word);
            continue;
        }
        const std::size_t equals = word.find ('=');
        const std::string_view name = word.substr (0, equals);
        const sweep::SweepOption* const option = find_option (name);
        if (word == "--") {
            options_end = true;
        } else if (word == "--help") {
            words.help = true;
        } else if (word == "--version") {
            words.version = true;
        } else if (option == nullptr) {
            words.fault = "unknown option '" + std::string (name) + "'";
        } else if (option->value == nullptr) {
            if (equals != std::string_view::npos) {
                words.fault = std::string (name) + " takes no value";
            }
            words.options[std::string (name)];
        } else if (equals != std::string_view::npos) {
            words.options[std::string (name)] = word.substr (equals + 1);
        } else if (i + 1 == argc) {
            words.fault = std::string (name) + " needs a value";
        } else {
            words.options[std::string (name)] = argv[++i];
        }
    }
    if (words.fault.empty () && words.models.size () != 1) {
        words.fault = words.models.empty () ? "too few words" : "too many words";
    }
    return words;
}

/// Rank 0 of several.
int lead (RankLink& link, const sweep::SweepRequest& request) {
    const InterruptionStop interruption;
    RankSweep sweep (link, request);
    const Outcome outcome = sweep.run (interruption.token ());
    const int status =
        sweep::tell_sweep_end ("ostrand-mpi", outcome, sweep.way_on (), interruption);
    if (!sweep.all_answered ()) {
        std::fputs ("ostrand-mpi: some ranks do not answer\n", stderr);
        std::_Exit (status); // to end together would mean to wait for them
    }
    return status;
}

int follow (RankLink& link) {
    const InterruptionStop interruption;
    std::string bytes;
    link.broadcast (bytes);
    const std::optional<Start> start = Start::from_bytes (bytes);
    if (start) work_for_rank_0 (link, *start, interruption.token ());
    return EXIT_SUCCESS;
}

int run_alone (const sweep::SweepRequest& request) {
    const InterruptionStop interruption;
    sweep::SweepRun sweep (request);
    const Outcome outcome = sweep.run (interruption.token ());
    return sweep::tell_sweep_end ("ostrand-mpi", outcome, sweep.way_on (), interruption);
}

} // namespace

int ranks_main (int argc, char** argv, const char* commit) {
    make_write_failures_errors ();
    RankLink link (argc, argv);
    const bool speaks = link.rank () == 0;
    const Words words = sort_words (argc, argv);
    if (words.help || words.version) {
        const std::string text = words.help ? help () : version_line ("ostrand-mpi", commit);
        if (speaks) std::fputs (text.c_str (), stdout);
        return EXIT_SUCCESS;
    }
    std::string fault = words.fault;
    std::optional<sweep::SweepRequest> request;
    if (fault.empty ()) request = sweep::sweep_request (words.models[0], words.options, fault);
    if (request && request->threads > 1 && !link.serves_threads ()) {
        fault = "this MPI serves one thread of a process only";
    }
    if (!fault.empty ()) {
        if (speaks) std::fprintf (stderr, "ostrand-mpi: %s\n%s", fault.c_str (), usage);
        return status_usage;
    }
    if (request->threads == 0) request->threads = 1;
    if (link.size () == 1) return run_alone (*request);
    return speaks ? lead (link, *request) : follow (link);
}

} // namespace ostrand::ranks
