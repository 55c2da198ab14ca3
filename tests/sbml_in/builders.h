// Small SBML models for tests, Level 3 Version 1.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::testing {

/// A whole model. Amounts are umol, volumes litres, times seconds.
inline std::string sbml_model (const std::string& inside) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<sbml xmlns=\"http://www.sbml.org/sbml/level3/version1/core\" level=\"3\" "
           "version=\"1\">\n<model id=\"m\" substanceUnits=\"umol\" extentUnits=\"umol\" "
           "volumeUnits=\"litre\" timeUnits=\"second\">\n"
           "<listOfUnitDefinitions><unitDefinition id=\"umol\"><listOfUnits><unit kind=\"mole\" "
           "exponent=\"1\" scale=\"-6\" multiplier=\"1\"/></listOfUnits></unitDefinition>"
           "</listOfUnitDefinitions>\n" +
           inside + "</model></sbml>\n";
}

inline std::string sbml_compartment (const std::string& id, const std::string& more = "") {
    return "<compartment id=\"" + id + "\" size=\"1\" spatialDimensions=\"3\" constant=\"true\"" +
           more + "/>\n";
}

inline std::string sbml_species (const std::string& id, const std::string& concentration = "0",
                                 const std::string& more = "",
                                 const std::string& compartment = "cell") {
    const bool held = more.find ("boundaryCondition") != std::string::npos;
    return "<species id=\"" + id + "\" compartment=\"" + compartment +
           "\" initialConcentration=\"" + concentration + "\" hasOnlySubstanceUnits=\"false\"" +
           (held ? "" : " boundaryCondition=\"false\"") + " constant=\"false\"" + more + "/>\n";
}

/// "A 2*B": references with stoichiometries.
inline std::string sbml_references (std::string_view words) {
    std::string out;
    while (!words.empty ()) {
        const std::size_t end = words.find (' ');
        std::string_view word = words.substr (0, end);
        words = end == std::string_view::npos ? std::string_view () : words.substr (end + 1);
        std::string count = "1";
        if (const std::size_t star = word.find ('*'); star != std::string_view::npos) {
            count = word.substr (0, star);
            word = word.substr (star + 1);
        }
        out += "<speciesReference species=\"" + std::string (word) + "\" stoichiometry=\"" + count +
               "\" constant=\"true\"/>";
    }
    return out;
}

struct SbmlReaction {
    std::string id;
    std::string reactants = {}; // "A 2*B"
    std::string products = {};
    std::string modifiers = {};  // elements
    std::string math = {};       // of the law, MathML; empty: none
    std::string parameters = {}; // local ones
    bool reversible = false;
};

inline std::string sbml_reaction (const SbmlReaction& r) {
    std::string out = "<reaction id=\"" + r.id + "\" reversible=\"" +
                      (r.reversible ? "true" : "false") + "\" fast=\"false\">\n";
    if (!r.reactants.empty ()) {
        out += "<listOfReactants>" + sbml_references (r.reactants) + "</listOfReactants>\n";
    }
    if (!r.products.empty ()) {
        out += "<listOfProducts>" + sbml_references (r.products) + "</listOfProducts>\n";
    }
    if (!r.modifiers.empty ()) out += "<listOfModifiers>" + r.modifiers + "</listOfModifiers>\n";
    if (!r.math.empty ()) {
        out += "<kineticLaw><math xmlns=\"http://www.w3.org/1998/Math/MathML\">" + r.math +
               "</math>" +
               (r.parameters.empty ()
                    ? ""
                    : "<listOfLocalParameters>" + r.parameters + "</listOfLocalParameters>") +
               "</kineticLaw>\n";
    }
    return out + "</reaction>\n";
}

inline std::string sbml_modifier (const std::string& id, const std::string& sbo = "") {
    return "<modifierSpeciesReference species=\"" + id + "\"" +
           (sbo.empty () ? "" : " sboTerm=\"SBO:" + sbo + "\"") + "/>";
}

inline std::string sbml_local (const std::string& id, const std::string& value) {
    return "<localParameter id=\"" + id + "\" value=\"" + value + "\"/>";
}

/// "(* a b (/ c d) 2)" as MathML.
inline std::string mathml (std::string_view& text) {
    while (!text.empty () && text.front () == ' ') text.remove_prefix (1);
    if (text.starts_with ('(')) {
        text.remove_prefix (1);
        const std::size_t end = text.find (' ');
        const std::string_view head = text.substr (0, end);
        text.remove_prefix (end);
        std::string out = "<apply>";
        out += head == "*"   ? "<times/>"
               : head == "/" ? "<divide/>"
               : head == "+" ? "<plus/>"
               : head == "-" ? "<minus/>"
               : head == "^" ? "<power/>"
                             : "<ci>" + std::string (head) + "</ci>";
        for (;;) {
            while (text.starts_with (' ')) text.remove_prefix (1);
            if (text.starts_with (')')) break;
            out += mathml (text);
        }
        text.remove_prefix (1);
        return out + "</apply>";
    }
    const std::size_t end = text.find_first_of (" )");
    const std::string word (text.substr (0, end));
    text = end == std::string_view::npos ? std::string_view () : text.substr (end);
    const bool is_number = word[0] >= '0' && word[0] <= '9';
    return is_number ? "<cn>" + word + "</cn>" : "<ci>" + word + "</ci>";
}
inline std::string mathml_of (std::string_view text) { return mathml (text); }

inline std::string sbml_lists (const std::string& species, const std::string& reactions,
                               const std::string& more = "") {
    return sbml_model ("<listOfCompartments>" + sbml_compartment ("cell") +
                       "</listOfCompartments>\n<listOfSpecies>\n" + species + "</listOfSpecies>\n" +
                       more + "<listOfReactions>\n" + reactions + "</listOfReactions>\n");
}

} // namespace ostrand::testing
