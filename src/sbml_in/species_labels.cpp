// How do names of other tools stand in labels?
#include "sbml_in/extract.h"

#include "base/text.h"
#include "names/name_markup.h"
#include "names/species_names.h"

#include <map>
#include <set>

namespace ostrand::sbml_in {
namespace {

/// The name with "_" and "^" as letters where no script is meant: one is where digits or a brace
/// follow. All digits belong to it.
std::string with_scripts (const std::string& name) {
    std::string out;
    for (std::size_t i = 0; i < name.size (); ++i) {
        const char c = name[i];
        if (c == '\\' && i + 1 < name.size ()) {
            out += c;
            out += name[++i];
        } else if ((c == '_' || c == '^') && !(i + 1 < name.size () && name[i + 1] == '{')) {
            std::size_t end = i + 1;
            while (end < name.size () && is_digit (name[end])) ++end;
            if (end == i + 1 || i == 0) {
                out += '\\';
                out += c;
                continue;
            }
            out += c;
            out += '{' + name.substr (i + 1, end - i - 1) + '}';
            i = end - 1;
        } else {
            out += c;
        }
    }
    return out;
}

std::string shown_name (const ModelSpecies& s) { return s.name.empty () ? s.id : s.name; }

} // namespace

std::string label_markup (const std::string& name) {
    return names::name_markup (with_scripts (names::model_name (name)));
}

void name_species (Model& model) {
    std::map<std::string, std::vector<ModelSpecies*>> groups;
    for (ModelSpecies& s : model.species) groups[label_markup (shown_name (s))].push_back (&s);
    std::set<std::string> taken;
    for (const auto& [text, group] : groups) {
        if (group.size () == 1) taken.insert (text);
    }
    for (auto& [text, group] : groups) {
        if (group.size () == 1) {
            group.front ()->text = text;
            continue;
        }
        std::map<int, int> in_compartment;
        for (const ModelSpecies* s : group) ++in_compartment[s->compartment];
        for (ModelSpecies* s : group) {
            const std::string name = shown_name (*s);
            std::string wanted;
            if (in_compartment[s->compartment] == 1 && s->compartment >= 0) {
                const ModelCompartment& c =
                    model.compartments[static_cast<std::size_t> (s->compartment)];
                wanted = label_markup (name + " (" + (c.name.empty () ? c.id : c.name) + ")");
            } else {
                wanted = label_markup (name + " (" + s->id + ")");
            }
            if (!taken.insert (wanted).second) {
                wanted = label_markup (name + " (" + s->id + ")");
                for (int n = 2; !taken.insert (wanted).second; ++n) {
                    wanted = label_markup (name + " (" + s->id + ", " + std::to_string (n) + ")");
                }
            }
            s->text = wanted;
        }
    }
}

} // namespace ostrand::sbml_in
