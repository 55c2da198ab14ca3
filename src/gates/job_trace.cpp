// Writing a job's trace.
#include "gates/job_trace.h"

#include "gates/summary_report.h"

#include <algorithm>
#include <chrono>

namespace ostrand::gates {
namespace {

/// Bytes that are gathered before they go to the file.
constexpr std::size_t write_size = std::size_t{1} << 20;
/// Width of a column of the matrices.
constexpr std::size_t cell_width = 8;
/// Width of the enzyme's number in front of a row: the header is "id" and nine blanks.
constexpr std::size_t id_width = 11;

double now () {
    return std::chrono::duration<double> (std::chrono::steady_clock::now ().time_since_epoch ())
        .count ();
}

std::string padded (std::string text, std::size_t width) {
    text.resize (std::max (width, text.size ()), ' ');
    return text;
}

/// A cell of a matrix: a name is cut to the width of its column.
std::string cell (const std::string& text) {
    return padded (text.substr (0, cell_width), cell_width);
}

std::string all_values (const EquationGraph& graph, const EquationRow& row) {
    std::string text;
    for (int column = 0; column < graph.length (); ++column) {
        text += std::to_string (row.value (column)) + " ";
    }
    return text;
}

std::string joined (const std::vector<std::string>& names, const char* joint) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty ()) text += joint;
        text += name;
    }
    return text;
}

std::string listed (std::span<const int> numbers) {
    std::string text;
    for (const int number : numbers) text += std::to_string (number) + ", ";
    return text;
}

std::string reaction_matrix (const SbmlModel& model, const std::vector<Reaction>& reactions) {
    std::string text = "\n\nMatrice des réactions : \n";
    for (const auto& [name, index] : model.elements) text += cell (name);
    text += "\n";
    for (const Reaction& reaction : reactions) {
        std::map<std::string, int> values;
        for (const std::string& name : reaction.substrates) values[name] = substrate_value;
        for (const std::string& name : reaction.products) values[name] = product_value;
        for (const auto& [name, index] : model.elements) {
            const auto value = values.find (name);
            text += cell (std::to_string (value == values.end () ? 0 : value->second));
        }
        for (const std::string& name : reaction.enzymes) text += name + " ";
        if (reaction.enzymes.empty ()) text += "   Pas d'enzyme precise ";
        text += "\n";
    }
    return text;
}

std::string row_matrix (const EquationGraph& graph) {
    std::string text = "\n\nMatrice des interactions : \nid         ";
    for (int column = 0; column < graph.length (); ++column) text += cell (std::to_string (column));
    text += "\n";
    for (const EquationRow& row : graph.rows) {
        text += padded (std::to_string (row.enzyme), id_width);
        for (int column = 0; column < graph.length (); ++column) {
            text += cell (std::to_string (row.value (column)));
        }
        text += "\n";
    }
    return text;
}

} // namespace

JobTrace::JobTrace (const std::string& path, std::stop_token stop)
    : stop_ (stop), file_ (path, std::move (stop)), start_ (now ()) {}

bool JobTrace::finish (std::string& error) {
    const bool whole = file_.write (waiting_) && file_.commit ();
    if (!whole) error = file_.error ();
    return whole;
}

void JobTrace::put (const std::string& text) {
    waiting_ += text;
    if (waiting_.size () < write_size) return;
    file_.write (waiting_);
    waiting_.clear ();
}

void JobTrace::write_model (const GateExtractor& extractor, const GateJob& job,
                            const std::vector<Reaction>& as_read) {
    const std::string rule = "\n\n\n" + dashes () + "\n\n";
    put (rule + "Fichier d'entrée  : " + extractor.request.input_path + "\nFichier de Porte  : " +
         extractor.request.gate_file + "\nFichier de sortie : " + job.stem + ".txt" + rule);
    put ("Parsage fichier : " + extractor.request.input_path +
         "\nListe éléments répertoriés (Code/Nom) \n");
    for (const auto& [id, name] : extractor.model.species) put (id + " " + name + "\n");
    put ("Nb ligne du fichier : " + std::to_string (extractor.model.line_count) + "\n");
    put (reaction_matrix (extractor.model, as_read));
    put ("\nElements inseres (Nom/Code Interne) : \n");
    for (int column = 0; column < extractor.graph.length (); ++column) {
        put (extractor.graph.names[static_cast<std::size_t> (column)] + " = " +
             std::to_string (column) + "\n");
    }
    put ("\nRéactions inserees : \n");
    put_rows (extractor.graph, extractor.model.reactions);
    put (row_matrix (extractor.graph));
}

void JobTrace::put_rows (const EquationGraph& graph, const std::vector<Reaction>& reactions) {
    std::size_t next = 0; // rows were made in this very order
    const auto put_direction = [&] (const Reaction& reaction) {
        const EquationRow& standard = graph.rows[next++];
        put ("Interaction Standard " + std::to_string (standard.enzyme) + ": " +
             all_values (graph, standard) + "\n");
        for (std::size_t i = 0; i < reaction.inhibitors.size (); ++i) {
            const EquationRow& row = graph.rows[next++];
            put ("Interaction Inbibitrice " + std::to_string (row.enzyme) + " : " +
                 all_values (graph, row) + "\n");
        }
    };
    for (const Reaction& reaction : reactions) {
        for (std::size_t i = 0; i < reaction.enzymes.size (); ++i) {
            put ("Nom : " + reaction.id + " Reversibilité : " + (reaction.reversible ? "1" : "0") +
                 "\n");
            put_direction (reaction);
            put ("Inhibiteurs : " + joined (reaction.inhibitors, ",") +
                 "\nEnzymes : " + joined (reaction.enzymes, ",") + "\n");
        }
        if (!reaction.reversible) continue;
        std::vector<std::string> reverse;
        for (const std::string& name : reaction.enzymes) reverse.push_back (name + "_R");
        put ("Enzymes Rev : " + joined (reverse, ",") + "\n");
        for (std::size_t i = 0; i < reaction.enzymes.size (); ++i) put_direction (reaction);
    }
}

std::uint64_t JobTrace::write_search (const GateExtractor& extractor, GateJob& job,
                                      TrialTimes& times, SearchProgress& progress) {
    const ExtractionRequest& request = extractor.request;
    const GatePlan plan = make_gate_plan ({&job.catalogue});
    CircuitTrial trial (plan, {request.evaluate_forks, request.multiple_firing}, stop_);
    const std::size_t seeds = extractor.graph.equations.size ();
    // Gates seen by key, for each circuit on the way from the seed to the present one.
    std::vector<std::map<std::string, Gate>> seen;
    trial.set_observer (
        [&] (int, const Gate& gate) { seen.back ()[gate_key (gate.inputs, gate.output)] = gate; });
    progress.seeds = static_cast<int> (seeds);
    const std::uint64_t gates_before = progress.results ();
    const auto take = [&] (std::span<const int> enzymes, int seed) {
        seen.resize (enzymes.size () - 1);
        seen.push_back (seen.empty () ? std::map<std::string, Gate> () : seen.back ());
        const Circuit circuit (extractor.graph, enzymes);
        trial.evaluate (circuit);
        put (enzymes.size () == 1 ? "\nCreation Primaire " : "Creation Secondaire ");
        put_circuit (circuit, seen.back ());
        progress.seeds_done = seed;
        progress.circuits.fetch_add (1, std::memory_order_relaxed);
        progress.set_results (gates_before + trial.stored ());
        progress.estimate (
            (job.number - 1 + static_cast<double> (seed) / static_cast<double> (seeds)) /
            request.partition_count);
    };
    const auto extend = [&] (int level, std::uint64_t counter, std::span<const int> free) {
        put ("profondeur récursive : " + std::to_string (level) + "\ncompteur de circuit " +
             std::to_string (counter) + "\nEq disp " + listed (free) + "\n");
    };
    const auto seed_done = [&] (int seed) {
        put ("\nEquation primaires utilisées : " + std::to_string (seed + 1) + "/" +
             std::to_string (seeds) + "\n\n\n\n");
    };
    const std::uint64_t extended =
        walk_circuits (extractor.graph, request.depth,
                       {.circuit = take, .extend = extend, .seed_done = seed_done}, stop_);
    job.result.gates = trial.stores[0].take_gates (plan.types[0]);
    job.result.counts = trial.counts[0];
    times = trial.times;
    return extended;
}

void JobTrace::put_circuit (const Circuit& circuit, const std::map<std::string, Gate>& seen) {
    std::string text = "Circuit : \nEquations internes utilisées : \nEntree \n";
    for (const int number : circuit.rows) {
        const EquationRow& row = circuit.graph ().rows[static_cast<std::size_t> (number)];
        text += std::to_string (row.enzyme) + " : ";
        for (const EquationRow::Entry& entry : row.entries) {
            text += std::to_string (entry.value) + " ";
        }
        text += "\n";
    }
    text +=
        listed (circuit.primary_substrates) + "\n" + listed (circuit.final_products) + "\nPred : ";
    for (const int output : circuit.final_products) {
        text += std::to_string (output) + "=[" + listed (circuit.upstream (output)) + "], ";
    }
    text += "\nPortes internes détéctées : \n";
    for (const auto& [key, gate] : seen) text += key + " " + gate.type + "\n";
    put (text);
}

void JobTrace::write_result (const GateExtractor& extractor, const GateJob& job,
                             const TrialTimes& times) {
    put ("\n\nListe portes : \n");
    for (const Gate& gate : job.result.gates) {
        put (listed_gate (extractor.graph, gate, gate_key (gate.inputs, gate.output),
                          " Porte Fourche : ") +
             "\n");
    }
    const auto line = [this] (const char* title, std::uint64_t value) {
        put (title + std::to_string (value) + "\n");
    };
    put ("\n\n\n" + dashes () + "\n\n" + times_block (times, now () - start_, ": ") +
         "\nParametres du graphe: \n");
    line ("Nb Equations Ini \t: ", extractor.graph.equations.size ());
    line ("Nb Elements \t\t: ", static_cast<std::uint64_t> (extractor.graph.element_count ()));
    put ("\nParametres de l'algorithme: \n");
    line ("Nb Limite\t \t\t\t: ", static_cast<std::uint64_t> (extractor.request.depth));
    line ("Nb Circuits \t\t\t: ", extractor.circuit_counter);
    line ("Nb Portes Evaluees \t\t: ", job.result.counts.evaluated_gates);
    line ("Nb Evaluations\t\t\t: ", job.result.counts.evaluations);
    line ("Nb Portes \t\t\t\t: ", job.result.gates.size ());
    line ("Dont Nb Portes fourche  : ", static_cast<std::uint64_t> (job.fork_gate_count ()));
}

} // namespace ostrand::gates
