// The gate file of a plain search, put together the plain way: every reaction compared with every
// record of the table, every list collected anew for every gate. The reference for the bytes of the
// gate file.
#pragma once
#include "gates/plain_search.h"
#include "gates/reaction.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace ostrand::gates::plain {

struct GateFile {
    const Graph& graph;
    const std::vector<Reaction>& reactions; // with their stand-in enzymes
    const std::vector<Reaction>& table;

    static std::string head (const std::string& path) { return "metabolism;" + path + "\n"; }

    /// The lines of one job.
    std::string lines (const Search& search, const Catalogue& share) const {
        std::string text;
        for (const auto& [key, gates] : search.store) {
            std::vector<const Gate*> ordered;
            for (const std::shared_ptr<Gate>& gate : gates) ordered.push_back (gate.get ());
            std::sort (ordered.begin (), ordered.end (), [&] (const Gate* a, const Gate* b) {
                return std::tuple (place_of_type (share, a->type), enzymes_of (*a), a->needed) <
                       std::tuple (place_of_type (share, b->type), enzymes_of (*b), b->needed);
            });
            for (const Gate* gate : ordered) text += line (*gate);
        }
        return text;
    }

  private:
    static int place_of_type (const Catalogue& share, const std::string& type) {
        int place = 0;
        for (const GateGroup& group : share) {
            for (const GateDefinition& gate : group.gates) {
                if (gate.name == type) return place;
                ++place;
            }
        }
        return place;
    }

    std::set<int> enzymes_of (const Gate& gate) const {
        std::set<int> enzymes;
        for (const RowNumber row : gate.rows) enzymes.insert (graph.enzyme_of_row.at (row));
        return enzymes;
    }

    static std::string number (std::size_t value) { return std::to_string (value) + ";"; }

    std::string elements (const std::set<int>& columns) const {
        std::string text = number (columns.size ());
        for (const int column : columns) text += graph.names.at (column) + ";";
        return text;
    }

    std::string line (const Gate& gate) const {
        std::string text = "E/S;" + number (gate.inputs.size ());
        for (const int input : gate.inputs) text += graph.names.at (input) + ";";
        text += "1;" + graph.names.at (gate.output) + ";" + gate.type + ";";
        std::set<std::string> enzymes;
        for (const RowNumber row : gate.rows) {
            const int enzyme = graph.enzyme_of_row.at (row);
            std::string name = graph.names.at (enzyme);
            const auto partner = graph.partner.find (enzyme);
            if (partner != graph.partner.end () &&
                name == graph.names.at (partner->second) + "_R") {
                name = graph.names.at (partner->second);
            }
            enzymes.insert (name);
        }
        text += "ENZ;" + number (enzymes.size ());
        for (const std::string& name : enzymes) text += name + ";";
        text += "ELNEC;" + elements (gate.needed) + "ELABS;" + elements (gate.absent);
        std::string blocks;
        std::size_t count = 0;
        for (const Reaction& reaction : reactions) {
            const bool takes_part =
                std::any_of (reaction.enzymes.begin (), reaction.enzymes.end (),
                             [&] (const std::string& name) { return enzymes.contains (name); });
            if (!takes_part) continue;
            ++count;
            blocks += block (reaction);
        }
        return text + "REACTIONS;" + number (count) + blocks + "\n";
    }

    static bool alike (std::vector<std::string> a, std::vector<std::string> b) {
        std::sort (a.begin (), a.end ());
        std::sort (b.begin (), b.end ());
        return a == b;
    }

    std::string block (const Reaction& reaction) const {
        const Reaction* partner = nullptr;
        for (const Reaction& record : table) {
            if (alike (reaction.substrates, record.substrates) &&
                alike (reaction.products, record.products) &&
                alike (reaction.enzymes, record.enzymes) &&
                alike (reaction.inhibitors, record.inhibitors)) {
                partner = &record;
            }
        }
        const auto side = [&] (const std::vector<std::string>& names) {
            std::string text = number (names.size ());
            for (const std::string& name : names) {
                text += name + ";";
                if (partner != nullptr && partner->coefficients.contains (name)) {
                    text += partner->coefficients.at (name);
                }
                text += ";";
            }
            return text;
        };
        std::string text = "REACBEGIN;" + reaction.id + ";" + (reaction.reversible ? "1;" : "0;") +
                           (partner != nullptr ? partner->kinetic_type : "") + ";";
        text += "SUBS;" + side (reaction.substrates) + "PROD;" + side (reaction.products);
        text += "ENZY;" + number (reaction.enzymes.size ());
        for (const std::string& name : reaction.enzymes) text += name + ";";
        text += "INHI;" + number (reaction.inhibitors.size ());
        for (const std::string& name : reaction.inhibitors) text += name + ";";
        return text + "REACEND;";
    }
};

} // namespace ostrand::gates::plain
