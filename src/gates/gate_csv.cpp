// Writing the gate file.
#include "gates/gate_csv.h"

#include <algorithm>
#include <set>

namespace ostrand::gates {
namespace {

bool same_names (std::vector<std::string> a, std::vector<std::string> b) {
    if (a.size () != b.size ()) return false;
    std::sort (a.begin (), a.end ());
    std::sort (b.begin (), b.end ());
    return a == b;
}

bool match (const Reaction& model, const Reaction& table) {
    return same_names (model.substrates, table.substrates) &&
           same_names (model.products, table.products) &&
           same_names (model.enzymes, table.enzymes) &&
           same_names (model.inhibitors, table.inhibitors);
}

void append_names (std::string& out, const char* head, const std::vector<std::string>& names) {
    out += head + std::to_string (names.size ()) + ";";
    for (const std::string& name : names) out += name + ";";
}

void append_side (std::string& out, const char* head, const std::vector<std::string>& names,
                  const Reaction* partner) {
    out += head + std::to_string (names.size ()) + ";";
    for (const std::string& name : names) {
        out += name + ";";
        if (partner != nullptr) {
            const auto coefficient = partner->coefficients.find (name);
            if (coefficient != partner->coefficients.end ()) out += coefficient->second;
        }
        out += ";";
    }
}

/// partner  the reaction's record in the table, null when it has none
std::string reaction_block (const Reaction& reaction, const Reaction* partner) {
    std::string block = "REACBEGIN;" + reaction.id + (reaction.reversible ? ";1;" : ";0;");
    if (partner != nullptr) block += partner->kinetic_type;
    block += ";";
    append_side (block, "SUBS;", reaction.substrates, partner);
    append_side (block, "PROD;", reaction.products, partner);
    append_names (block, "ENZY;", reaction.enzymes);
    append_names (block, "INHI;", reaction.inhibitors);
    return block + "REACEND;";
}

} // namespace

GateLines::GateLines (const EquationGraph& graph, const std::vector<Reaction>& reactions,
                      const std::vector<Reaction>& table)
    : graph_ (graph) {
    // Only records with the same first substrate in sorted order can match; the rest of the test
    // decides, and of several partners the last counts.
    std::map<std::string, std::vector<const Reaction*>> by_first;
    const auto first = [] (const Reaction& reaction) {
        const auto least =
            std::min_element (reaction.substrates.begin (), reaction.substrates.end ());
        return least == reaction.substrates.end () ? std::string () : *least;
    };
    for (const Reaction& record : table) by_first[first (record)].push_back (&record);
    for (std::size_t i = 0; i < reactions.size (); ++i) {
        const Reaction* partner = nullptr;
        const auto candidates = by_first.find (first (reactions[i]));
        if (candidates != by_first.end ()) {
            for (const Reaction* record : candidates->second) {
                if (match (reactions[i], *record)) partner = record;
            }
        }
        blocks_.push_back (reaction_block (reactions[i], partner));
        for (const std::string& enzyme : reactions[i].enzymes) {
            reactions_of_[enzyme].push_back (i);
        }
    }
}

void GateLines::append (std::string& out, const Gate& gate) const {
    const auto names_of = [this] (const std::vector<int>& columns) {
        std::vector<std::string> names;
        for (const int column : columns) {
            names.push_back (graph_.names[static_cast<std::size_t> (column)]);
        }
        return names;
    };
    const std::vector<std::string> enzymes = enzyme_names (graph_, gate);
    append_names (out, "E/S;", names_of (gate.inputs));
    out += "1;" + graph_.names[static_cast<std::size_t> (gate.output)] + ";" + gate.type + ";";
    append_names (out, "ENZ;", enzymes);
    append_names (out, "ELNEC;", names_of (gate.needed));
    append_names (out, "ELABS;", names_of (gate.absent));
    std::set<std::size_t> reactions;
    for (const std::string& enzyme : enzymes) {
        const auto found = reactions_of_.find (enzyme);
        if (found == reactions_of_.end ()) continue;
        reactions.insert (found->second.begin (), found->second.end ());
    }
    out += "REACTIONS;" + std::to_string (reactions.size ()) + ";";
    for (const std::size_t reaction : reactions) out += blocks_[reaction];
    out += "\n";
}

std::vector<std::string> enzyme_names (const EquationGraph& graph, const Gate& gate) {
    std::set<std::string> names;
    for (const int enzyme : gate.enzymes) names.insert (graph.written_name (enzyme));
    return {names.begin (), names.end ()};
}

std::string gate_csv_text (const GateExtractor& extractor, const std::vector<Reaction>& table,
                           const std::stop_token& stop) {
    std::string text = "metabolism;" + extractor.request.input_path + "\n";
    const GateLines lines (extractor.graph, extractor.model.reactions, table);
    for (const GateJob& job : extractor.jobs) {
        for (const Gate& gate : job.result.gates) {
            if (stop.stop_requested ()) return text;
            lines.append (text, gate);
        }
    }
    return text;
}

} // namespace ostrand::gates
