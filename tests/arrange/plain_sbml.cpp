#include "arrange/plain_sbml.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace ostrand::testing {
namespace {

using arrange::Graph;
using arrange::SpeciesKind;

/// One tag: its local name, its attributes, and whether it opens, closes or both.
struct Tag {
    std::string name;
    std::map<std::string, std::string> attributes;
    bool closing = false;
    bool empty = false;
};

std::string local (std::string name) {
    const std::size_t colon = name.find (':');
    return colon == std::string::npos ? name : name.substr (colon + 1);
}

std::string decode (std::string text) {
    for (const auto& [entity, letter] : std::map<std::string, std::string>{
             {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}) {
        for (std::size_t p = 0; (p = text.find (entity, p)) != std::string::npos; ++p)
            text.replace (p, entity.size (), letter);
    }
    return text;
}

Tag parse_tag (std::string_view inside) {
    Tag tag;
    if (!inside.empty () && inside.front () == '/') {
        tag.closing = true;
        inside.remove_prefix (1);
    }
    if (!inside.empty () && inside.back () == '/') {
        tag.empty = true;
        inside.remove_suffix (1);
    }
    std::size_t p = 0;
    const auto blank = [&] (std::size_t i) {
        return std::isspace (static_cast<unsigned char> (inside[i])) != 0;
    };
    while (p < inside.size () && !blank (p)) ++p;
    tag.name = local (std::string (inside.substr (0, p)));
    while (p < inside.size ()) {
        while (p < inside.size () && blank (p)) ++p;
        const std::size_t equals = inside.find ('=', p);
        if (equals == std::string_view::npos) break;
        std::string key (inside.substr (p, equals - p));
        while (!key.empty () && std::isspace (static_cast<unsigned char> (key.back ())))
            key.pop_back ();
        const std::size_t open = inside.find_first_of ("\"'", equals);
        if (open == std::string_view::npos) break;
        const std::size_t close = inside.find (inside[open], open + 1);
        if (close == std::string_view::npos) break;
        tag.attributes[key] = decode (std::string (inside.substr (open + 1, close - open - 1)));
        p = close + 1;
    }
    return tag;
}

std::vector<Tag> tags_of (std::string_view text) {
    std::vector<Tag> tags;
    std::size_t p = 0;
    while ((p = text.find ('<', p)) != std::string_view::npos) {
        if (text.substr (p, 4) == "<!--") {
            p = text.find ("-->", p);
            if (p == std::string_view::npos) break;
            continue;
        }
        const std::size_t end = text.find ('>', p);
        if (end == std::string_view::npos) break;
        if (text[p + 1] != '?' && text[p + 1] != '!')
            tags.push_back (parse_tag (text.substr (p + 1, end - p - 1)));
        p = end + 1;
    }
    return tags;
}

const std::string& attribute (const Tag& tag, const std::string& key) {
    static const std::string none;
    const auto found = tag.attributes.find (key);
    return found == tag.attributes.end () ? none : found->second;
}

arrange::ModifierRole role_of (const std::string& sbo) {
    using arrange::ModifierRole;
    static const std::set<std::string> inhibitors{"SBO:0000020", "SBO:0000206", "SBO:0000207",
                                                  "SBO:0000169", "SBO:0000597"};
    static const std::set<std::string> activators{"SBO:0000459", "SBO:0000462", "SBO:0000170"};
    if (inhibitors.contains (sbo)) return ModifierRole::inhibition;
    if (activators.contains (sbo)) return ModifierRole::activation;
    return ModifierRole::catalysis;
}

} // namespace

/// Helvetica's widths of the letters from space to tilde, in thousandths of the size.
constexpr std::array<int, 95> letter_widths = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};

double width_of_text (std::string_view text) {
    int sum = 0;
    for (const char c : text)
        sum += c >= 32 && c < 127 ? letter_widths[static_cast<std::size_t> (c - 32)] : 556;
    return sum * 14 / 1000.0;
}

arrange::Size size_of_label (std::string_view label, SpeciesKind kind, bool shared) {
    if (label.empty ()) return {2, 2};
    const double text = width_of_text (label);
    const bool wide = kind == SpeciesKind::molecule && text > 50;
    return {text + 10 + (wide ? 16 : 0), 24.0 + (wide || shared ? 4 : 0)};
}

Graph graph_of_sbml (std::string_view text) {
    Graph graph;
    std::map<std::string, int> species;
    std::map<std::string, int> compartments;
    std::vector<std::string> outside;
    std::vector<std::string> species_compartment;
    enum class List { none, reactants, products, modifiers } list = List::none;
    bool in_reaction = false;
    int annotation = 0; // depth of what other tools left
    for (const Tag& tag : tags_of (text)) {
        if (tag.name == "annotation" || tag.name == "notes") {
            if (!tag.empty) annotation += tag.closing ? -1 : 1;
            continue;
        }
        if (annotation > 0) continue;
        const std::string& id = attribute (tag, tag.attributes.contains ("id") ? "id" : "name");
        const std::string& name = attribute (tag, attribute (tag, "name").empty () ? "id" : "name");
        if (tag.name == "reaction") {
            in_reaction = !tag.closing && !tag.empty;
            if (!tag.closing) {
                graph.reactions.emplace_back ();
                graph.reactions.back ().reversible = attribute (tag, "reversible") != "false";
            }
        } else if (tag.closing) {
            if (tag.name.starts_with ("listOf")) list = List::none;
        } else if (tag.name == "compartment") {
            compartments[id] = static_cast<int> (graph.compartments.size ());
            outside.push_back (attribute (tag, "outside"));
            graph.compartments.push_back ({name, {width_of_text (name), 16}, -1});
        } else if ((tag.name == "species" || tag.name == "specie") && !in_reaction) {
            species[id] = static_cast<int> (graph.species.size ());
            species_compartment.push_back (attribute (tag, "compartment"));
            arrange::Species s;
            s.name = name;
            graph.species.push_back (s);
        } else if (tag.name == "listOfReactants") {
            list = tag.empty ? List::none : List::reactants;
        } else if (tag.name == "listOfProducts") {
            list = tag.empty ? List::none : List::products;
        } else if (tag.name == "listOfModifiers") {
            list = tag.empty ? List::none : List::modifiers;
        } else if (in_reaction && list != List::none &&
                   tag.name.find ("eference") != std::string::npos) {
            const auto found = species.find (
                attribute (tag, tag.attributes.contains ("species") ? "species" : "specie"));
            if (found == species.end ()) continue;
            arrange::Reaction& reaction = graph.reactions.back ();
            if (list == List::reactants) reaction.substrates.push_back (found->second);
            if (list == List::products) reaction.products.push_back (found->second);
            if (list == List::modifiers)
                reaction.modifiers.push_back (
                    {found->second, role_of (attribute (tag, "sboTerm"))});
        }
    }
    for (std::size_t c = 0; c < outside.size (); ++c) {
        const auto found = compartments.find (outside[c]);
        if (found != compartments.end ()) graph.compartments[c].parent = found->second;
    }
    // What only modifies is taken for a protein, everything else for a molecule.
    std::vector<char> reacts (graph.species.size (), 0);
    std::vector<char> modifies (graph.species.size (), 0);
    for (const arrange::Reaction& r : graph.reactions) {
        for (const int s : r.substrates) reacts[static_cast<std::size_t> (s)] = 1;
        for (const int s : r.products) reacts[static_cast<std::size_t> (s)] = 1;
        for (const arrange::Modifier& m : r.modifiers)
            modifies[static_cast<std::size_t> (m.species)] = 1;
    }
    for (std::size_t s = 0; s < graph.species.size (); ++s) {
        arrange::Species& one = graph.species[s];
        one.kind = modifies[s] && !reacts[s] ? SpeciesKind::protein : SpeciesKind::molecule;
        one.size = size_of_label (one.name, one.kind, false);
        one.shared_size = size_of_label (one.name, one.kind, true);
        const auto found = compartments.find (species_compartment[s]);
        if (found != compartments.end ()) one.compartment = found->second;
    }
    return graph;
}

std::vector<std::filesystem::path> real_models () {
    namespace fs = std::filesystem;
    const char* const told = std::getenv ("OSTRAND_MODELS");
    const fs::path folder =
        told ? fs::path (told) : fs::path (OSTRAND_SOURCE_DIR) / "../shared/data";
    std::vector<fs::path> models;
    std::error_code error;
    for (fs::recursive_directory_iterator it (folder, error), end; !error && it != end;
         it.increment (error)) {
        const std::string extension = it->path ().extension ().string ();
        if (extension == ".xml" || extension == ".sbml") models.push_back (it->path ());
    }
    std::sort (models.begin (), models.end ());
    return models;
}

} // namespace ostrand::testing
