// Short ways to make networks for tests of gate extraction.
#pragma once
#include "gates/gate_extractor.h"
#include "gates/gate_search.h"
#include "support/support.h"

#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace ostrand::gates::testing_builders {

using Names = std::vector<std::string>;

/// An irreversible reaction.
inline Reaction reaction (const std::string& id, Names substrates, Names products, Names enzymes,
                          Names inhibitors = {}, bool reversible = false) {
    Reaction made;
    made.id = id;
    made.substrates = std::move (substrates);
    made.products = std::move (products);
    made.enzymes = std::move (enzymes);
    made.inhibitors = std::move (inhibitors);
    made.reversible = reversible;
    return made;
}

inline std::map<std::string, int> elements_of (const std::vector<Reaction>& reactions) {
    std::map<std::string, int> elements;
    for (const Reaction& one : reactions) {
        for (const Names* names : {&one.substrates, &one.products, &one.inhibitors}) {
            for (const std::string& name : *names) elements[name] = 0;
        }
    }
    int number = 0;
    for (auto& [name, index] : elements) index = number++;
    return elements;
}

inline EquationGraph graph_of (std::vector<Reaction> reactions) {
    add_stand_in_enzymes (reactions);
    return build_equation_graph (reactions, elements_of (reactions));
}

/// The column of an element; an enzyme's is graph.enzymes.at (name).
inline int column (const EquationGraph& graph, const std::string& name) {
    return graph.columns.at (name);
}

/// A circuit of all enzymes of a graph.
inline Circuit whole_circuit (const EquationGraph& graph) {
    std::vector<int> enzymes;
    for (int enzyme = 0; enzyme < graph.enzyme_count (); ++enzyme) enzymes.push_back (enzyme);
    return {graph, enzymes};
}

inline Names names_of (const EquationGraph& graph, std::span<const int> columns) {
    Names names;
    for (const int one : columns) names.push_back (graph.names[static_cast<std::size_t> (one)]);
    return names;
}

/// The level that an element must bring, by name.
inline double level (const EquationGraph& graph, const Circuit& circuit, const std::string& output,
                     const std::string& element) {
    return circuit.required_levels (
        column (graph, output))[static_cast<std::size_t> (circuit.local (column (graph, element)))];
}

/// The text of a model in the dialect whose references carry the roles of enzymes and inhibitors as
/// CellDesigner modifications.
inline std::string model_text (const std::vector<Reaction>& reactions) {
    std::map<std::string, std::string> ids;
    const auto id_of = [&] (const std::string& name) -> const std::string& {
        return ids.try_emplace (name, "s" + std::to_string (ids.size () + 1)).first->second;
    };
    std::string lines;
    for (const Reaction& one : reactions) {
        lines += "<reaction id=\"" + one.id + "\" reversible=\"" +
                 (one.reversible ? "true" : "false") + "\">\n";
        for (const std::string& name : one.enzymes) {
            lines += "<celldesigner:modification type=\"CATALYSIS\" modifiers=\"" + id_of (name) +
                     "\">\n</celldesigner:modification>\n";
        }
        for (const std::string& name : one.inhibitors) {
            lines += "<celldesigner:modification type=\"INHIBITION\" modifiers=\"" + id_of (name) +
                     "\">\n</celldesigner:modification>\n";
        }
        lines += "<listOfReactants>\n";
        for (const std::string& name : one.substrates) {
            lines += "<speciesReference species=\"" + id_of (name) + "\"/>\n";
        }
        lines += "</listOfReactants>\n<listOfProducts>\n";
        for (const std::string& name : one.products) {
            lines += "<speciesReference species=\"" + id_of (name) + "\"/>\n";
        }
        lines += "</listOfProducts>\n<listOfModifiers>\n";
        for (const Names* names : {&one.enzymes, &one.inhibitors}) {
            for (const std::string& name : *names) {
                lines += "<modifierSpeciesReference species=\"" + id_of (name) + "\"/>\n";
            }
        }
        lines += "</listOfModifiers>\n</reaction>\n";
    }
    std::string text = "<sbml>\n<model>\n<listOfSpecies>\n";
    for (const auto& [name, id] : ids) {
        text += "<species id=\"" + id + "\" name=\"" + name + "\">\n</species>\n";
    }
    return text + "</listOfSpecies>\n<listOfReactions>\n" + lines +
           "</listOfReactions>\n</model>\n</sbml>\n";
}

/// A random small network. Names are drawn from few, so that reactions share them; now and then a
/// metabolite stands twice, on both sides, or is an enzyme too.
inline std::vector<Reaction> random_network (std::mt19937& random) {
    const auto draw = [&] (int count) {
        return static_cast<int> (random () % static_cast<unsigned> (count));
    };
    const int metabolites = 3 + draw (5);
    const auto metabolite = [&] {
        return std::string (1, static_cast<char> ('A' + draw (metabolites)));
    };
    const auto some = [&] (int least, int most) {
        Names names;
        for (int i = least + draw (most - least + 1); i > 0; --i) names.push_back (metabolite ());
        return names;
    };
    std::vector<Reaction> reactions;
    const int count = 1 + draw (5);
    for (int i = 0; i < count; ++i) {
        Names enzymes;
        if (draw (6) != 0) enzymes.push_back ("E" + std::to_string (draw (count) + 1));
        if (draw (10) == 0) enzymes.push_back ("E" + std::to_string (draw (count) + 1));
        if (draw (40) == 0) enzymes.push_back (metabolite ());
        reactions.push_back (reaction (
            "r" + std::to_string (i + 1), some (draw (20) == 0 ? 0 : 1, 2),
            some (draw (20) == 0 ? 0 : 1, 2), enzymes, some (0, draw (2)), draw (4) == 0));
    }
    return reactions;
}

} // namespace ostrand::gates::testing_builders
