// The gate search in its plainest form: every circuit, every choice, every token game, one after
// the other, on whole rows and ordered sets. The reference that the fast search must equal; it
// shares only the readers and the catalogue with it. Header only, so that a benchmark can use it
// too.
#pragma once
#include "gates/catalogue.h"
#include "gates/equation_graph.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace ostrand::gates::plain {

using Row = std::vector<int>;
using RowNumber = std::size_t; // stands for a row's address: rows are ordered by creation

struct Graph {
    std::size_t columns = 0;
    std::map<int, std::string> names;
    std::vector<Row> rows;
    std::map<int, std::vector<RowNumber>> rows_of_enzyme;
    std::map<RowNumber, int> enzyme_of_row;
    std::map<int, int> partner;
    std::vector<RowNumber> equations;
    std::size_t enzyme_count = 0;
};

inline std::size_t at (int index) { return static_cast<std::size_t> (index); }

/// Numbers and builds from reactions that have their stand-in enzymes.
inline Graph build (const std::vector<Reaction>& reactions,
                    const std::map<std::string, int>& elements) {
    Graph graph;
    std::map<std::string, int> enzymes;
    std::map<std::string, int> metabolites;
    int k = 0;
    for (const Reaction& reaction : reactions) {
        for (const std::string& enzyme : reaction.enzymes) {
            if (enzymes.emplace (enzyme, k).second) ++k;
        }
        for (const std::string& enzyme : reaction.enzymes) {
            if (reaction.reversible && enzymes.emplace (enzyme + "_R", k).second) ++k;
        }
    }
    for (const auto& [name, index] : elements) metabolites[name] = k++;
    for (const auto& [name, number] : enzymes) graph.names[number] = name;
    for (const auto& [name, number] : metabolites) graph.names[number] = name;
    graph.columns = at (k);
    graph.enzyme_count = enzymes.size ();
    const auto add = [&] (Row row, int enzyme, bool seed) {
        const RowNumber number = graph.rows.size ();
        if (seed && graph.rows_of_enzyme[enzyme].empty ()) graph.equations.push_back (number);
        graph.rows.push_back (std::move (row));
        graph.rows_of_enzyme[enzyme].push_back (number);
        graph.enzyme_of_row[number] = enzyme;
    };
    const auto direction = [&] (const Reaction& reaction, int enzyme, int substrate, int product) {
        Row row (graph.columns, 0);
        for (const std::string& name : reaction.substrates) row[at (metabolites[name])] = substrate;
        for (const std::string& name : reaction.products) row[at (metabolites[name])] = product;
        row[at (enzyme)] = 2;
        add (row, enzyme, true);
        for (const std::string& inhibitor : reaction.inhibitors) {
            Row other (graph.columns, 0);
            for (const std::string& name : substrate == 1 ? reaction.substrates : reaction.products)
                other[at (metabolites[name])] = 1;
            other[at (metabolites[inhibitor])] = -1;
            other[at (enzyme)] = -2;
            add (other, enzyme, false);
        }
    };
    for (const Reaction& reaction : reactions) {
        for (const std::string& enzyme : reaction.enzymes) {
            direction (reaction, enzymes[enzyme], -1, 1);
        }
        if (!reaction.reversible) continue;
        for (const std::string& enzyme : reaction.enzymes) {
            const int e = enzymes[enzyme];
            const int r = enzymes[enzyme + "_R"];
            graph.partner[e] = r;
            graph.partner[r] = e;
            direction (reaction, r, 1, -1);
        }
    }
    return graph;
}

struct Gate {
    std::vector<int> inputs;
    int output = 0;
    std::string type;
    std::set<int> needed;
    std::set<int> absent;
    std::set<int> open_forks;
    std::set<RowNumber> rows;
    std::string key;
};

class Circuit {
  public:
    Circuit (const Graph& network, std::vector<RowNumber> row_list)
        : graph (&network), rows (std::move (row_list)) {
        for (const RowNumber number : rows) {
            enzymes.insert (network.enzyme_of_row.at (number));
            const Row& row = network.rows[number];
            for (int x = 0; x < static_cast<int> (network.columns); ++x) {
                const int entry = row[at (x)];
                if (entry == -1) {
                    if (primary.contains (x)) forks.insert (x);
                    primary.insert (x);
                    substrates.insert (x);
                }
                if (entry == 1) products.insert (x);
                if (entry != 0) touched.insert (x);
            }
        }
        std::set<int> between;
        for (const int x : primary) {
            if (products.contains (x)) between.insert (x);
        }
        for (const int x : between) {
            primary.erase (x);
            products.erase (x);
        }
        for (const int output : products) {
            upstream[output] = find_upstream (output);
            find_levels (output);
        }
        firing_limit = static_cast<int> (rows.size ()) + 20;
    }

    std::vector<int> game (const std::vector<int>& tokens, bool multiple) const {
        std::vector<int> state = tokens;
        std::vector<int> firings (rows.size (), 0);
        std::vector<int> consumption (graph->columns, 0);
        std::vector<int> production (graph->columns, 0);
        for (;;) {
            bool fired = false;
            for (std::size_t r = 0; r < rows.size (); ++r) {
                const Row& row = graph->rows[rows[r]];
                bool enabled = true;
                for (std::size_t x = 0; x < graph->columns && enabled; ++x) {
                    if ((row[x] == -1 || row[x] == -2) && state[x] <= 0) enabled = false;
                    if (row[x] == 2 && state[x] != 2) enabled = false;
                }
                if (!enabled || firings[r] == firing_limit) continue;
                fired = true;
                ++firings[r];
                for (std::size_t x = 0; x < graph->columns; ++x) {
                    if (row[x] == -1 || row[x] == -2) ++consumption[x];
                    if (row[x] == 1) ++production[x];
                }
            }
            for (std::size_t x = 0; x < graph->columns; ++x) {
                if (multiple) {
                    state[x] -= consumption[x];
                    state[x] += production[x];
                } else {
                    if (consumption[x] != 0) --state[x];
                    if (production[x] != 0) ++state[x];
                }
                consumption[x] = 0;
                production[x] = 0;
            }
            if (!fired) return state;
        }
    }

    const Graph* graph;
    std::vector<RowNumber> rows;
    std::set<int> primary;
    std::set<int> products;
    std::set<int> touched;
    std::set<int> substrates;
    std::set<int> forks;
    std::set<int> enzymes;
    std::map<int, std::set<int>> upstream;
    std::map<int, std::map<int, double>> required;
    int firing_limit = 0;

  private:
    int value (RowNumber row, int x) const { return graph->rows[row][at (x)]; }

    std::set<int> find_upstream (int output) const {
        std::set<int> found{output};
        for (std::size_t size = 0; size != found.size ();) {
            size = found.size ();
            for (const RowNumber row : rows) {
                bool counts = false;
                for (const int x : found) {
                    const int v = value (row, x);
                    counts = counts || v == 1 || v == -1 || v == -2;
                }
                if (!counts) continue;
                for (const int x : touched) {
                    const int v = value (row, x);
                    if (v == -1 || v == 2 || v == -2) found.insert (x);
                }
            }
        }
        std::set<int> inputs;
        for (const int x : found) {
            if (primary.contains (x)) inputs.insert (x);
        }
        return inputs;
    }

    void find_levels (int output) {
        std::set<int> z{output};
        for (std::size_t size = 0; size != z.size ();) {
            size = z.size ();
            for (const RowNumber row : rows) {
                bool counts = false;
                for (const int x : z) counts = counts || std::abs (value (row, x)) == 1;
                if (!counts) continue;
                for (const int x : touched) {
                    if (value (row, x) == -1) z.insert (x);
                }
            }
        }
        std::map<int, double>& level = required[output];
        std::map<int, double> extra;
        for (const int x : touched) {
            level[x] = 0;
            extra[x] = 0;
        }
        level[output] = 10.0;
        std::set<int> d{output};
        std::set<int> w;
        for (const RowNumber row : rows) {
            if (value (row, output) != 1) continue;
            for (const int x : touched) {
                if (value (row, x) == -1 && z.contains (x)) w.insert (x);
            }
        }
        int forced = -1;
        while (!w.empty ()) {
            std::set<int> next;
            bool progress = false;
            for (const int p : w) {
                bool ready = true;
                for (const RowNumber row : rows) {
                    if (value (row, p) != -1) continue;
                    for (const int q : touched) {
                        if (value (row, q) == 1 && z.contains (q) && !d.contains (q)) ready = false;
                    }
                }
                if (!ready && p != forced) {
                    next.insert (p);
                    continue;
                }
                double sum = 0;
                for (const RowNumber row : rows) {
                    if (value (row, p) != -1) continue;
                    double most = 0;
                    for (const int q : touched) {
                        if (value (row, q) == 1 && d.contains (q) && z.contains (q)) {
                            most = std::max (most, level[q]);
                        }
                    }
                    sum = std::trunc (sum + most);
                }
                std::list<int> a;
                for (const RowNumber row : rows) {
                    if (value (row, p) != -1) continue;
                    for (const int s : touched) {
                        if (value (row, s) != -1 || s == p) continue;
                        if (d.contains (s) || w.contains (s)) continue;
                        next.insert (s);
                        a.push_back (s);
                    }
                }
                for (const RowNumber row : rows) {
                    if (value (row, p) != 1) continue;
                    for (const int s : touched) {
                        if (value (row, s) == -1 && z.contains (s) && !d.contains (s)) {
                            next.insert (s);
                        }
                    }
                }
                level[p] = extra[p] + sum;
                d.insert (p);
                for (const int s : a) extra[s] += sum;
                progress = true;
                forced = -1;
            }
            w = next;
            if (progress) continue;
            int most = -1;
            for (const int p : w) {
                int pairs = 0;
                for (const RowNumber row : rows) {
                    if (value (row, p) != -1) continue;
                    for (const int q : touched) {
                        if (value (row, q) == 1 && d.contains (q) && z.contains (q)) ++pairs;
                    }
                }
                if (pairs >= most) {
                    most = pairs;
                    forced = p;
                }
            }
        }
    }
};

/// One job's search.
class Search {
  public:
    Search (const Graph& network, const Catalogue& gates, int nb_limit, bool forks_too,
            bool several)
        : graph (network), catalogue (gates), limit (nb_limit), evaluate_forks (forks_too),
          multiple_firing (several) {}

    void run () {
        if (graph.enzyme_count - 1 >= 240) return;
        std::set<RowNumber> available;
        for (RowNumber row = 0; row < graph.rows.size (); ++row) available.insert (row);
        for (const RowNumber seed : graph.equations) {
            const std::vector<RowNumber>& list =
                graph.rows_of_enzyme.at (graph.enzyme_of_row.at (seed));
            for (const RowNumber row : list) available.erase (row);
            const Circuit circuit (graph, list);
            evaluate (circuit);
            extend (circuit, available);
        }
    }

    std::uint64_t circuits = 0;
    std::uint64_t evaluated_gates = 0;
    std::uint64_t evaluations = 0;
    std::map<std::string, std::set<std::shared_ptr<Gate>>> store;

    std::size_t gate_count () const {
        std::size_t sum = 0;
        for (const auto& [key, gates] : store) sum += gates.size ();
        return sum;
    }

  private:
    void extend (const Circuit& circuit, std::set<RowNumber> free) {
        ++circuits;
        std::set<int> next;
        for (const int x : circuit.touched) {
            for (const RowNumber row : free) {
                if (graph.rows[row][at (x)] == 0) continue;
                const int enzyme = graph.enzyme_of_row.at (row);
                const auto partner = graph.partner.find (enzyme);
                if (partner != graph.partner.end () && circuit.enzymes.contains (partner->second)) {
                    continue;
                }
                next.insert (enzyme);
            }
        }
        for (const int enzyme : next) {
            std::vector<RowNumber> rows = circuit.rows;
            for (const RowNumber row : graph.rows_of_enzyme.at (enzyme)) {
                rows.push_back (row);
                free.erase (row);
            }
            const Circuit larger (graph, rows);
            evaluate (larger);
            if (limit > static_cast<int> (larger.enzymes.size ())) extend (larger, free);
        }
    }

    void evaluate (const Circuit& circuit) {
        for (const GateGroup& group : catalogue) {
            if (group.arity < 1) continue;
            for (const int output : circuit.products) {
                std::set<int> chosen;
                const std::set<int>& k = circuit.upstream.at (output);
                choose (circuit, group, output, std::vector<int> (k.begin (), k.end ()), k.size (),
                        group.arity - 1, chosen);
            }
        }
    }

    void choose (const Circuit& circuit, const GateGroup& group, int output,
                 const std::vector<int>& k, std::size_t n, int depth, std::set<int>& chosen) {
        for (std::size_t i = 0; i < n; ++i) {
            chosen.insert (k[i]);
            if (depth > 0) {
                choose (circuit, group, output, k, i, depth - 1, chosen);
            } else {
                try_choice (circuit, group, output, chosen);
            }
            chosen.erase (k[i]);
        }
    }

    void try_choice (const Circuit& circuit, const GateGroup& group, int output,
                     const std::set<int>& chosen) {
        std::vector<int> s;
        for (const int x : circuit.substrates) {
            if (!chosen.contains (x)) s.push_back (x);
        }
        for (std::uint64_t k = 0; k < std::uint64_t{1} << s.size (); ++k) {
            ++evaluated_gates;
            Gate gate;
            gate.inputs.assign (chosen.begin (), chosen.end ());
            gate.output = output;
            for (std::size_t j = 0; j < s.size (); ++j) {
                if ((k >> j & 1) != 0) {
                    gate.needed.insert (s[j]);
                } else if (circuit.upstream.at (output).contains (s[j])) {
                    gate.absent.insert (s[j]);
                }
            }
            for (const int x : circuit.forks) {
                if (!gate.needed.contains (x)) gate.open_forks.insert (x);
            }
            if (!evaluate_forks && !gate.open_forks.empty ()) continue;
            for (const GateDefinition& table : group.gates) {
                if (passes (circuit, group.arity, table, gate)) keep (circuit, table, gate);
            }
        }
    }

    bool passes (const Circuit& circuit, int arity, const GateDefinition& table, const Gate& gate) {
        for (std::size_t r = 0; r < std::size_t{1} << arity; ++r) {
            std::vector<int> tokens (graph.columns, 0);
            for (std::size_t u = 0; u < gate.inputs.size (); ++u) {
                const int x = gate.inputs[u];
                const double asked = table.value (r, u) * circuit.required.at (gate.output).at (x);
                tokens[at (x)] = static_cast<int> (std::clamp (asked, -1e9, 1e9));
            }
            for (const RowNumber row : circuit.rows) tokens[at (graph.enzyme_of_row.at (row))] = 2;
            for (const int x : gate.needed) tokens[at (x)] = 1000000;
            ++evaluations;
            const bool on = circuit.game (tokens, multiple_firing)[at (gate.output)] >= 10.0;
            if (table.value (r, at (arity)) != (on ? 1 : 0)) return false;
        }
        return true;
    }

    template <class T>
    static bool is_part (const std::set<T>& part, const std::set<T>& whole) {
        return std::includes (whole.begin (), whole.end (), part.begin (), part.end ());
    }

    void keep (const Circuit& circuit, const GateDefinition& table, Gate gate) {
        gate.type = table.name;
        gate.rows.insert (circuit.rows.begin (), circuit.rows.end ());
        for (const int input : gate.inputs) {
            gate.key += (gate.key.empty () ? "" : "+") + std::to_string (input);
        }
        gate.key += "=" + std::to_string (gate.output);
        const auto added = std::make_shared<Gate> (gate);
        std::set<std::shared_ptr<Gate>>& entry = store[gate.key];
        bool drop = false;
        const std::set<std::shared_ptr<Gate>> copy = entry;
        for (const std::shared_ptr<Gate>& x : copy) {
            if (x->type != gate.type) continue;
            const bool a = is_part (gate.rows, x->rows);
            const bool b = is_part (x->rows, gate.rows);
            if (a && !b) entry.erase (x);
            if (b && !a) drop = true;
            if (!a || !b) continue;
            if (is_part (gate.needed, x->needed)) {
                entry.erase (x);
            } else if (is_part (x->needed, gate.needed)) {
                drop = true;
            }
        }
        if (!drop) entry.insert (added);
    }

    const Graph& graph;
    const Catalogue& catalogue;
    int limit;
    bool evaluate_forks;
    bool multiple_firing;
};

/// A gate in a form that both searches can be compared by.
inline std::string described (const std::string& key, const std::string& type,
                              const std::vector<int>& enzymes, const std::vector<int>& needed,
                              const std::vector<int>& absent, const std::vector<int>& forks) {
    std::string text = key + " " + type;
    for (const std::vector<int>* list : {&enzymes, &needed, &absent, &forks}) {
        text += " |";
        for (const int number : *list) text += " " + std::to_string (number);
    }
    return text;
}

inline std::vector<std::string> described_gates (const Search& search, const Graph& graph) {
    std::vector<std::string> all;
    const auto list = [] (const std::set<int>& set) {
        return std::vector<int> (set.begin (), set.end ());
    };
    for (const auto& [key, gates] : search.store) {
        for (const std::shared_ptr<Gate>& gate : gates) {
            std::set<int> enzymes;
            for (const RowNumber row : gate->rows) enzymes.insert (graph.enzyme_of_row.at (row));
            all.push_back (described (key, gate->type, list (enzymes), list (gate->needed),
                                      list (gate->absent), list (gate->open_forks)));
        }
    }
    std::sort (all.begin (), all.end ());
    return all;
}

} // namespace ostrand::gates::plain
