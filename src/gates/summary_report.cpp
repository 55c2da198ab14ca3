// Writing the statistics of an extraction. The table and the text differ in what stands between a
// title and its value.
#include "gates/summary_report.h"

#include "base/text.h"
#include "gates/gate_csv.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ostrand::gates {
namespace {

/// Zero divided by zero and the like, as a stream shows them.
std::string number (double value) {
    if (std::isnan (value)) return std::signbit (value) ? "-nan" : "nan";
    return format_g (value);
}

std::string name_of (const EquationGraph& graph, int column) {
    return graph.names[static_cast<std::size_t> (column)];
}

/// A catalogue gate as a column of the tables.
struct TypeColumn {
    const GateDefinition* definition;
    int arity;
};

/// Counts by row name (or number) and type column.
class Tables {
  public:
    explicit Tables (const GateExtractor& extractor) : extractor_ (extractor) {
        for (const GateJob& job : extractor.jobs) {
            for (const GateGroup& group : job.catalogue) {
                for (const GateDefinition& definition : group.gates) {
                    columns_.push_back ({&definition, group.arity});
                }
            }
        }
    }

    /// separator  what ends a field
    std::string text (const std::string& separator) const {
        return by_enzyme_count (separator) + "\n" + by_enzyme (separator) + "\n" +
               by_metabolite (separator);
    }

  private:
    template <class Visit>
    void for_each_gate (const Visit& visit) const {
        for (const GateJob& job : extractor_.jobs) {
            for (const Gate& gate : job.result.gates) visit (gate);
        }
    }

    /// A gate counts in every column of its name and number of inputs.
    template <class Row>
    void count (Row& row, const Gate& gate) const {
        row.resize (columns_.size ());
        for (std::size_t c = 0; c < columns_.size (); ++c) {
            if (columns_[c].definition->name == gate.type &&
                columns_[c].arity == static_cast<int> (gate.inputs.size ())) {
                ++row[c];
            }
        }
    }

    std::string line (const std::string& title, std::vector<int> counts,
                      const std::string& separator) const {
        counts.resize (columns_.size ());
        std::string text = title + separator;
        for (const int one : counts) text += std::to_string (one) + separator;
        return text + "\n";
    }

    std::string header (const std::string& title, const std::string& separator) const {
        std::string text = title + separator;
        for (const TypeColumn& column : columns_) text += column.definition->name + separator;
        return text + "\n";
    }

    std::string by_enzyme_count (const std::string& separator) const {
        std::map<std::size_t, std::vector<int>> counts;
        for_each_gate ([&] (const Gate& gate) {
            count (counts[enzyme_names (extractor_.graph, gate).size ()], gate);
        });
        std::string text =
            "Nombre d'enzymes par type de portes \n" + header ("Nb Enzymes", separator);
        const std::size_t most = counts.empty () ? 0 : counts.rbegin ()->first;
        for (std::size_t n = 1; n <= most; ++n) {
            text += line (std::to_string (n), counts[n], separator);
        }
        return text;
    }

    std::string by_enzyme (const std::string& separator) const {
        std::map<std::string, std::vector<int>> counts;
        for (const auto& [name, column] : extractor_.graph.enzymes) {
            counts[extractor_.graph.written_name (column)];
        }
        for_each_gate ([&] (const Gate& gate) {
            for (const std::string& name : enzyme_names (extractor_.graph, gate)) {
                count (counts[name], gate);
            }
        });
        std::string text =
            "Nombre de portes par enzymes et type \n" + header ("Nom Enzyme", separator);
        for (const auto& [name, row] : counts) text += line (name, row, separator);
        return text;
    }

    std::string by_metabolite (const std::string& separator) const {
        struct Row {
            std::vector<int> total;
            std::vector<int> input;
            std::vector<int> output;
        };
        std::map<std::string, Row> counts;
        for (const auto& [name, index] : extractor_.model.elements) counts[name];
        for_each_gate ([&] (const Gate& gate) {
            for (const int column : gate.inputs) {
                Row& row = counts[name_of (extractor_.graph, column)];
                count (row.total, gate);
                count (row.input, gate);
            }
            // An output is never an input of the same gate.
            Row& row = counts[name_of (extractor_.graph, gate.output)];
            count (row.total, gate);
            count (row.output, gate);
        });
        std::string text = "Nombre de portes par composant et type \nNom Composant" + separator;
        for (const TypeColumn& column : columns_) {
            for (const char* title : {" Total", " Entree", " Sortie"}) {
                text += column.definition->name + title + separator;
            }
        }
        text += "\n";
        for (auto& [name, row] : counts) {
            for (std::vector<int>* values : {&row.total, &row.input, &row.output}) {
                values->resize (columns_.size ());
            }
            text += name + separator;
            for (std::size_t c = 0; c < columns_.size (); ++c) {
                text += std::to_string (row.total[c]) + separator + std::to_string (row.input[c]) +
                        separator + std::to_string (row.output[c]) + separator;
            }
            text += "\n";
        }
        return text;
    }

    const GateExtractor& extractor_;
    std::vector<TypeColumn> columns_;
};

/// All blocks behind the times.
/// end        what stands behind a title that ends in ": ": ";" in the table, nothing in the text
/// separator  what ends every other field
/// share      what a line of a job begins with
std::string parameter_blocks (const GateExtractor& extractor, const std::string& end,
                              const std::string& separator, const std::string& share) {
    std::uint64_t evaluated = 0;
    for (const GateJob& job : extractor.jobs) {
        evaluated = saturated_sum (evaluated, job.result.counts.evaluated_gates);
    }
    std::string text = "\nParametres du graphe" + separator + "\n";
    text += "Nb Enzymes \t: " + end + std::to_string (extractor.graph.enzyme_count ()) + "\n";
    text += "Nb Elements \t\t: " + end + std::to_string (extractor.graph.element_count ()) + "\n";
    text += "\nParametres de l'algorithme" + separator + "\n";
    text += "Nb Limite\t \t\t\t: " + end + std::to_string (extractor.request.depth) + "\n";
    text += "Nb Circuits \t\t\t: " + end + std::to_string (extractor.circuit_counter) + "\n";
    text += "Nb Portes Evaluees \t\t: " + end + std::to_string (evaluated) + "\n";
    text += "Nb Portes \t\t\t\t: " + end + std::to_string (extractor.gate_count ()) + "\n";
    text +=
        "Dont Nb Portes fourche  : " + end + std::to_string (extractor.fork_gate_count ()) + "\n";
    text += "\nRepartition des portes" + separator + "\n";
    for (const GateJob& job : extractor.jobs) {
        text += share;
        for (const GateGroup& group : job.catalogue) {
            for (const GateDefinition& gate : group.gates) text += gate.name + " ";
        }
        text += ": " + end + std::to_string (job.gate_count ()) + "\n";
    }
    return text + "\n" + Tables (extractor).text (separator);
}

std::string joined_names (const EquationGraph& graph, const std::vector<int>& columns,
                          const char* joint) {
    std::string text;
    for (const int column : columns) {
        if (!text.empty ()) text += joint;
        text += name_of (graph, column);
    }
    return text;
}

std::string line_of_names (const char* title, const std::vector<std::string>& names) {
    std::string text = title;
    for (const std::string& name : names) text += name + " ";
    return text + "\n";
}

} // namespace

std::string dashes () { return std::string (46, '-'); }

std::string times_block (const TrialTimes& times, double total_time, const char* separator) {
    const auto line = [&] (const char* title, double value) {
        return std::string (title) + separator + number (value) + "\n";
    };
    return std::string ("Temps") + separator + "\n" + line ("Temps total(s)  ", total_time) + "\n" +
           line ("Temps portes(s) ", times.gate) +
           line ("Temps fraction   ", times.gate / total_time) + "\n" +
           line ("Temps model(s) ", times.model) +
           line ("Temps fraction   ", times.model / total_time) + "\n" +
           line ("Temps tri(s)   ", times.sort) +
           line ("Temps fraction   ", times.sort / total_time) + "\n" +
           line ("Temps reel (s)   ", total_time) + line ("Temps reel (h)   ", total_time / 3600);
}

std::string listed_gate (const EquationGraph& graph, const Gate& gate, const std::string& signature,
                         const char* fork_title) {
    const auto names_of = [&] (const std::vector<int>& columns) {
        std::vector<std::string> names;
        for (const int column : columns) names.push_back (name_of (graph, column));
        return names;
    };
    std::string text = "E/S : " + signature + "\nType " + gate.type + "\n";
    if (!gate.open_forks.empty ()) text += line_of_names (fork_title, names_of (gate.open_forks));
    text += line_of_names ("Enzymes presents : ", enzyme_names (graph, gate));
    text += line_of_names ("Elements necessaires : ", names_of (gate.needed));
    text += line_of_names ("Elements absents : ", names_of (gate.absent));
    return text;
}

std::string summary_csv (const GateExtractor& extractor) {
    return "Fichier d'entree;" + extractor.request.input_path + "\nFichier de sortie;" +
           extractor.request.output_base + ".txt\n\n" +
           times_block (extractor.times, extractor.total_time, ";") +
           parameter_blocks (extractor, ";", ";", "");
}

std::string summary_text (const GateExtractor& extractor) {
    const std::string rule = "\n\n" + dashes () + "\n\n";
    std::string text = rule + "Fichier d'entree  : " + extractor.request.input_path +
                       "\nFichier de Porte  : " + extractor.request.gate_file +
                       "\nFichier de sortie : " + extractor.request.output_base + ".txt" + rule +
                       "\n\nListe portes : \n";
    for (const GateJob& job : extractor.jobs) {
        for (const Gate& gate : job.result.gates) {
            const std::string signature = joined_names (extractor.graph, gate.inputs, "+") + "=" +
                                          name_of (extractor.graph, gate.output);
            text += listed_gate (extractor.graph, gate, signature, "Porte Fourche : ") + ";\n";
        }
    }
    return text + rule + times_block (extractor.times, extractor.total_time, ": ") +
           parameter_blocks (extractor, "", ": ", "#Portes  ");
}

std::string console_summary (const GateExtractor& extractor, const GateJob& job) {
    std::string text = "Portes : ";
    for (const GateGroup& group : job.catalogue) {
        const char* joint = "[";
        for (const GateDefinition& gate : group.gates) {
            text += joint + gate.name;
            joint = " , ";
        }
        text += "]";
    }
    text += "\nNb Circuits\t\t: " + std::to_string (extractor.circuit_counter);
    text += "\nNb Portes Evaluées\t: " + std::to_string (job.result.counts.evaluated_gates);
    text += "\nNb Evaluations\t\t: " + std::to_string (job.result.counts.evaluations);
    text += "\nNb Portes\t\t: " + std::to_string (job.gate_count ());
    text += "\nTemps reel (s)\t\t: " + number (extractor.total_time);
    return text + "\nFin\n";
}

} // namespace ostrand::gates
