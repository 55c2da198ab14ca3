// ostrand-tool check: what a reader says about a file, and what the file holds.
#include "base/report.h"
#include "base/text.h"
#include "tool/commands.h"
#include "tool/open_input.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

struct Counts {
    int nodes = 0;
    int arcs = 0;
    int compartments = 0;
    int species = 0; // nodes that stand for one of their own
    int reactions = 0;
};

/// Counts a network and those nested in it.
void count (const document::Network& network, Counts& counts) {
    counts.compartments += network.nb_comp ();
    for (const auto& n : network.nodes ()) {
        ++counts.nodes;
        if (n->master () == nullptr) ++counts.species;
        counts.arcs += n->nb_arcs ();
        for (const auto& a : n->arcs ()) {
            if (document::is_reaction (a->type ())) ++counts.reactions;
        }
        if (const document::Network* inner = n->nested ()) count (*inner, counts);
    }
}

int run (const Arguments& arguments) {
    bool reported = false;
    const MessageScope scope ([&reported] (std::string_view text) {
        if (text.empty ()) return;
        reported = true;
        std::fprintf (stderr, "%s\n", std::string (text).c_str ());
    });
    files::Document document;
    if (!open_input ("check", arguments.words[0], document)) return status_failure;
    tell_model_gaps (document);
    Counts counts;
    count (*document.network, counts);
    const std::string text = format_text (
        "nodes: %d\narcs: %d\ncompartments: %d\nspecies: %d\nreactions: %d\n", counts.nodes,
        counts.arcs, counts.compartments, counts.species, counts.reactions);
    if (print_result (text) != status_success) return status_failure;
    return reported ? status_failure : status_success;
}

} // namespace

extern const ToolCommand check_command{
    .name = "check",
    .words = "FILE",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "read a network and tell faults and counts",
    .details = "Exit status 1 when the reader reported anything. Nested networks count with the\n"
               "one around them. What a model text of the network leaves out is named on standard\n"
               "error, item by item.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
