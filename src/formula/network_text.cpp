// How does an implementation read as SBML, and where do its thresholds come from?
#include "formula/network_text.h"

#include "base/disk.h"
#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace ostrand::formula {
namespace {

constexpr std::string_view sbml_namespace = "http://www.sbml.org/sbml/level2/version4";
constexpr std::string_view enzyme_term = "SBO:0000460";
constexpr std::string_view inhibitor_term = "SBO:0000020";

/// A text inside an attribute. Names come out of an XML file with their entities as they stood
/// there, so "&" is left alone.
std::string attribute (std::string_view text) {
    std::string out;
    out.reserve (text.size ());
    for (const char c : text) {
        switch (c) {
        case '"': out += "&quot;"; break;
        case '<': out += "&lt;"; break;
        default: out += c;
        }
    }
    return out;
}

/// Writes the text, an element a line.
class NetworkWriter {
  public:
    explicit NetworkWriter (const Implementation& implementation) : from_ (implementation) {}

    std::string run () {
        line ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        line ("<sbml xmlns=\"" + std::string (sbml_namespace) + "\" level=\"2\" version=\"4\">");
        line ("<model id=\"untitled\">");
        units ();
        line ("<listOfCompartments>");
        line ("<compartment id=\"default\" size=\"1\" units=\"volume\">");
        line ("</compartment>");
        line ("</listOfCompartments>");
        line ("<listOfSpecies>");
        for (const std::string& name : from_.species) species (name);
        line ("</listOfSpecies>");
        line ("<listOfReactions>");
        for (const LibReaction* one : from_.reactions) reaction (*one);
        line ("</listOfReactions>");
        line ("</model>");
        line ("</sbml>");
        return std::move (out_);
    }

  private:
    void line (std::string_view text) { out_.append (text) += '\n'; }

    void units () {
        line ("<listOfUnitDefinitions>");
        unit ("substance", "<unit kind=\"mole\"/>");
        unit ("volume", "<unit kind=\"litre\"/>");
        unit ("area", "<unit kind=\"metre\" exponent=\"2\"/>");
        unit ("length", "<unit kind=\"metre\"/>");
        unit ("time", "<unit kind=\"second\"/>");
        line ("</listOfUnitDefinitions>");
    }

    void unit (const std::string& id, std::string_view element) {
        line ("<unitDefinition id=\"" + id + "\" name=\"" + id + "\">");
        line ("<listOfUnits>");
        line (element);
        line ("</listOfUnits>");
        line ("</unitDefinition>");
    }

    void species (const std::string& name) {
        const std::string id = "s" + std::to_string (++last_id_);
        ids_[name] = id;
        line ("<species id=\"" + id + "\" name=\"" + attribute (name) +
              "\" compartment=\"default\" initialAmount=\"0\">");
        if (from_.inputs.contains (name)) role (name, "INPUT");
        if (from_.output == name) role (name, "OUTPUT");
        if (from_.excess.contains (name)) role (name, "EXCESS");
        if (from_.forbidden.contains (name)) role (name, "FORBIDDEN");
        line ("</species>");
    }

    void role (const std::string& name, const std::string& type) {
        const auto found = from_.thresholds.find (name);
        const auto [s1, s2] =
            found == from_.thresholds.end () ? std::pair<double, double> () : found->second;
        line ("<annotation>");
        line ("<lattrix:logic type=\"" + type + "\" />");
        line ("<lattrix:thresholds s1=\"" + format_g (s1) + "\" s2=\"" + format_g (s2) + "\" />");
        line ("</annotation>");
    }

    void reaction (const LibReaction& one) {
        line ("<reaction id=\"" + attribute (one.id) + "\" reversible=\"" +
              (one.reversible ? "true" : "false") + "\">");
        line ("<annotation>");
        line ("<lattrix:reactionkinetics type=\"" + attribute (one.kinetics) + "\" />");
        line ("</annotation>");
        line ("<listOfReactants>");
        side (one.substrates, one.substrate_coefficients, " mainsubstrate=\"true\"");
        line ("</listOfReactants>");
        line ("<listOfProducts>");
        side (one.products, one.product_coefficients, " mainproduct=\"true\"");
        line ("</listOfProducts>");
        line ("<listOfModifiers>");
        for (const std::string& enzyme : one.enzymes) modifier (enzyme, enzyme_term);
        for (const std::string& inhibitor : one.inhibitors) modifier (inhibitor, inhibitor_term);
        line ("</listOfModifiers>");
        line ("</reaction>");
    }

    void side (const std::vector<std::string>& names,
               const std::map<std::string, std::string>& coefficients, std::string main_mark) {
        for (const std::string& name : names) {
            line ("<speciesReference species=\"" + ids_[name] + "\"" + main_mark + " >");
            main_mark.clear (); // the first one only
            const auto found = coefficients.find (name);
            line ("<annotation>");
            line ("<lattrix:kinetics cc=\"" +
                  attribute (found == coefficients.end () ? std::string () : found->second) +
                  "\" />");
            line ("</annotation>");
            line ("</speciesReference>");
        }
    }

    void modifier (const std::string& name, std::string_view term) {
        line ("<speciesReference species=\"" + ids_[name] + "\" sboTerm=\"" + std::string (term) +
              "\" />");
    }

    const Implementation& from_;
    std::string out_;
    int last_id_ = 0;
    std::unordered_map<std::string, std::string> ids_; // species name to id
};

} // namespace

std::string reaction_line (const Implementation& implementation) {
    std::string line;
    std::string_view gap;
    for (const std::string& id : implementation.reaction_ids) {
        line.append (gap).append (id);
        gap = " ";
    }
    return line;
}

void set_thresholds (Implementation& implementation, double s1, double s2) {
    auto& thresholds = implementation.thresholds;
    thresholds.clear ();
    thresholds[implementation.output] = {s1, s2};
    std::set<std::string> front{implementation.output};
    ReactionSet waiting = implementation.reactions;
    while (!front.empty () && !waiting.empty ()) {
        std::set<std::string> next;
        for (const std::string& name : front) {
            std::vector<const LibReaction*> makers;
            for (const LibReaction* reaction : waiting) {
                const auto& products = reaction->products;
                if (std::find (products.begin (), products.end (), name) != products.end ()) {
                    makers.push_back (reaction);
                }
            }
            const auto [low, high] = thresholds[name];
            for (const LibReaction* reaction : makers) {
                for (const std::string& substrate : reaction->substrates) {
                    next.insert (substrate);
                    thresholds[substrate] = {low / static_cast<double> (makers.size ()), high};
                }
                waiting.erase (reaction);
            }
        }
        front = std::move (next);
    }
}

void write_network (Implementation& implementation) {
    implementation.text = NetworkWriter (implementation).run ();
}

bool write_network (Implementation& implementation, int index,
                    const std::filesystem::path& folder) {
    write_network (implementation);
    const std::filesystem::path path = folder / ("reseau_" + std::to_string (index) + ".xml");
    std::string error;
    if (write_file (path, implementation.text, error)) return true;
    report_message ("%s: %s", path.string ().c_str (), error.c_str ());
    return false;
}

} // namespace ostrand::formula
