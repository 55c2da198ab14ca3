// Looks whether a model text says all that an SBML text says.
#include "files/sbml_road.h"

#include "files/sbml_to_model.h"
#include "files/xml_scan.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <string>

namespace ostrand::files {
namespace {

bool is_one_of (std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find (names.begin (), names.end (), name) != names.end ();
}

bool has_only (const XmlTag& tag, std::initializer_list<std::string_view> names) {
    return std::all_of (tag.attributes.begin (), tag.attributes.end (),
                        [&] (const auto& one) { return is_one_of (one.first, names); });
}

/// Walks over a text as long as a model text could say it.
class PlainText {
  public:
    explicit PlainText (std::string_view text) : scanner_ (text) {}

    bool run () {
        for (XmlTag tag = scanner_.next (); tag.kind != XmlTag::Kind::none;
             tag = scanner_.next ()) {
            if (tag.kind == XmlTag::Kind::end) {
                if (tag.name == "reaction" && !reaction_is_plain ()) return false;
                if (tag.name == "listOfModifiers") in_modifiers_ = false;
                continue;
            }
            if (is_one_of (tag.name, {"notes", "listOfUnitDefinitions", "listOfCompartments"})) {
                if (!scanner_.skip_content (tag)) return true; // whose fault the told reader names
                continue;
            }
            if (!element (tag)) return false;
        }
        return true;
    }

  private:
    bool element (const XmlTag& tag);
    bool reference (const XmlTag& tag);
    bool reaction_is_plain () const { return reactants_ > 0 && products_ > 0 && modifiers_ <= 1; }

    XmlScanner scanner_;
    std::set<std::string_view> names_;
    std::set<std::string_view> ids_;
    std::set<std::string_view> here_; // species on this side of the reaction
    bool in_modifiers_ = false;
    bool in_products_ = false;
    int reactants_ = 0;
    int products_ = 0;
    int modifiers_ = 0;
};

bool PlainText::reference (const XmlTag& tag) {
    if (!has_only (tag, {"species", "sboTerm", "metaid"})) return false;
    const std::string_view* species = tag.attribute ("species");
    if (species == nullptr || !ids_.contains (*species)) return false;
    if (!here_.insert (*species).second) return false; // a stoichiometry
    int& count = in_modifiers_ ? modifiers_ : in_products_ ? products_ : reactants_;
    if (++count > static_cast<int> (most_references)) return false;
    const std::string_view* term = tag.attribute ("sboTerm");
    return !in_modifiers_ || term == nullptr || *term == "SBO:0000460" || *term == "SBO:0000013";
}

bool PlainText::element (const XmlTag& tag) {
    if (tag.name == "sbml") {
        const std::string_view* level = tag.attribute ("level");
        return level != nullptr && *level == "2";
    }
    if (tag.name == "species") {
        if (!has_only (tag, {"id", "name", "metaid", "compartment"})) return false;
        const std::string_view* id = tag.attribute ("id");
        const std::string_view* name = tag.attribute ("name");
        if (id == nullptr || !ids_.insert (*id).second) return false;
        const std::string_view shown = name != nullptr ? *name : *id;
        // Of a name with "_" every next letter is a script for us, not for others.
        return !shown.empty () && names_.insert (shown).second &&
               shown.find_first_of ("_^\\") == std::string_view::npos;
    }
    if (tag.name == "reaction") {
        if (tag.is_empty || !has_only (tag, {"id", "name", "metaid", "reversible"})) return false;
        const std::string_view* reversible = tag.attribute ("reversible");
        reactants_ = products_ = modifiers_ = 0;
        return reversible != nullptr && *reversible == "false";
    }
    if (is_one_of (tag.name, {"listOfReactants", "listOfProducts", "listOfModifiers"})) {
        here_.clear ();
        in_modifiers_ = tag.name == "listOfModifiers" && !tag.is_empty;
        in_products_ = tag.name == "listOfProducts";
        return true;
    }
    if (is_one_of (tag.name, {"speciesReference", "modifierSpeciesReference"})) {
        return reference (tag);
    }
    return is_one_of (tag.name, {"model", "listOfSpecies", "listOfReactions"});
}

/// Every SBML file but ours and mere fragments has the namespace and a compartment for each
/// species.
bool is_whole_sbml (std::string_view text) {
    XmlScanner scanner (text);
    const XmlTag root = scanner.find (
        [] (std::string_view name, bool is_end) { return !is_end && local_name (name) == "sbml"; });
    if (root.kind == XmlTag::Kind::none) return false;
    const bool has_namespace =
        std::any_of (root.attributes.begin (), root.attributes.end (), [] (const auto& one) {
            return one.first.starts_with ("xmlns") &&
                   one.second.find ("sbml.org/sbml/level") != std::string_view::npos;
        });
    if (!has_namespace) return false;
    const std::string_view prefix =
        prefix_of (root.name); // annotations have elements of such names
    const XmlTag species = scanner.find ([prefix] (std::string_view name, bool is_end) {
        return !is_end && prefix_of (name) == prefix &&
               (local_name (name) == "species" || local_name (name) == "specie" ||
                local_name (name) == "reaction");
    });
    const bool is_species =
        species.kind != XmlTag::Kind::none && local_name (species.name) != "reaction";
    return !is_species || species.attribute ("compartment") != nullptr;
}

bool is_ours (std::string_view text) {
    for (const std::string_view mark :
         {"<lattrix:", "mainsubstract=", "mainsubstrate=", "mainproduct="}) {
        if (text.find (mark) != std::string_view::npos) return true;
    }
    return false;
}

} // namespace

bool is_plain_sbml (std::string_view text) {
    return is_ours (text) || !is_whole_sbml (text) || PlainText (text).run ();
}

bool looks_like_xml (std::string_view text) {
    if (text.starts_with ("\xEF\xBB\xBF")) text.remove_prefix (3);
    const std::size_t first = text.find_first_not_of (" \t\r\n");
    if (first == std::string_view::npos) return false;
    text.remove_prefix (first);
    for (const std::string_view start : {"<?xml", "<sbml", "<!DOCTYPE sbml", "<!--"}) {
        if (text.starts_with (start)) return true;
    }
    return text.starts_with ("<") && text.substr (0, 200).find (":sbml") != std::string_view::npos;
}

} // namespace ostrand::files
