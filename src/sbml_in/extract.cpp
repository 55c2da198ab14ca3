// Which species, reactions and compartments a model has, and what of it cannot be drawn.
#include "sbml_in/extract.h"

#include "sbml_in/law.h"
#include "sbml_in/quantities.h"

#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>

#include <sbml/SBO.h>

namespace ostrand::sbml_in {
namespace {

/// Terms of the ontology.
namespace term {
constexpr unsigned inhibitor = 20;
constexpr unsigned catalyst = 13;
constexpr unsigned catalysis = 172;
constexpr unsigned enzymatic_catalyst = 460;
constexpr unsigned inhibition = 169;
constexpr unsigned stimulator = 459;
constexpr unsigned stimulation = 170;
constexpr unsigned potentiator = 21;
constexpr unsigned essential_activator = 461;
constexpr unsigned necessary_stimulation = 171;
constexpr unsigned dual_activity = 595;
constexpr unsigned gene = 243;
constexpr unsigned receptor = 244;
constexpr unsigned macromolecule = 245;
constexpr unsigned nucleic_acid = 246;
constexpr unsigned deoxyribonucleic = 251;
constexpr unsigned polypeptide = 252;
constexpr unsigned gene_coding_region = 335;
constexpr unsigned gene_unit = 354;
} // namespace term

/// The library keeps this question to classes of its own family.
struct Ontology : ::SBO {
    using ::SBO::isChildOf;
};

bool is_below (int sbo, unsigned wanted) {
    if (sbo < 0) return false;
    const auto own = static_cast<unsigned> (sbo);
    return own == wanted || Ontology::isChildOf (own, wanted);
}

bool is_below_any (int sbo, std::initializer_list<unsigned> wanted) {
    return std::any_of (wanted.begin (), wanted.end (),
                        [sbo] (unsigned one) { return is_below (sbo, one); });
}

std::optional<Role> role_of_term (int sbo) {
    if (is_below_any (sbo, {term::inhibitor, term::inhibition})) return Role::inhibition;
    if (is_below_any (sbo, {term::catalyst, term::catalysis, term::enzymatic_catalyst})) {
        return Role::catalysis;
    }
    if (is_below_any (sbo, {term::essential_activator, term::necessary_stimulation})) {
        return Role::necessary_activation;
    }
    if (is_below_any (sbo, {term::stimulator, term::stimulation, term::potentiator})) {
        return Role::activation;
    }
    if (is_below (sbo, term::dual_activity)) return Role::influence;
    return std::nullopt;
}

/// The words of diagram editors' modification lines.
std::optional<Role> role_of_word (const std::string& word) {
    if (word.ends_with ("INHIBITION")) return Role::inhibition;
    if (word.ends_with ("CATALYSIS")) return Role::catalysis;
    if (word == "TRIGGER") return Role::necessary_activation;
    if (word.ends_with ("MODULATION")) return Role::influence;
    if (word.ends_with ("STIMULATION") || word.ends_with ("ACTIVATION")) return Role::activation;
    return std::nullopt;
}

/// Roles by species id that an annotation tells.
void find_modifications (const ::XMLNode& node, std::map<std::string, Role>& roles, int depth = 0) {
    if (depth > 60) return;
    if (node.getName () == "modification" && node.hasAttr ("modifiers")) {
        if (const auto role = role_of_word (node.getAttrValue ("type"))) {
            for (const std::string& id : split_fields (node.getAttrValue ("modifiers"), ',')) {
                roles.try_emplace (id, *role);
            }
        }
    }
    for (unsigned i = 0; i < node.getNumChildren (); ++i) {
        find_modifications (node.getChild (i), roles, depth + 1);
    }
}

SpeciesSort sort_of (int sbo) {
    if (is_below_any (sbo, {term::gene, term::nucleic_acid, term::deoxyribonucleic,
                            term::gene_coding_region, term::gene_unit})) {
        return SpeciesSort::gene;
    }
    if (is_below (sbo, term::receptor)) return SpeciesSort::receptor;
    if (is_below_any (sbo, {term::macromolecule, term::polypeptide})) return SpeciesSort::protein;
    return SpeciesSort::molecule;
}

class Extractor {
  public:
    Extractor (const ::Model& from, std::vector<std::string>& notes)
        : from_ (from), notes_ (notes) {}
    Model run ();

  private:
    void compartments ();
    void species ();
    void reactions ();
    void reaction (const ::Reaction& r);
    void references (const ::Reaction& r, bool products, std::vector<Reference>& out);
    void modifiers (const ::Reaction& r, ModelReaction& out);
    void stoichiometry (const ::SpeciesReference& from, Reference& to);
    void laws ();
    bool silence_idle_modifiers (ModelReaction& r, const ::Reaction& from) const;
    void count (std::string& text, unsigned n, const char* one, const char* many);
    void tell_the_rest ();
    void note (int line, const std::string& what);

    const ::Model& from_;
    std::vector<std::string>& notes_;
    Model model_;
    std::map<std::string, int> compartment_;
    std::map<std::string, int> species_;
    std::vector<const ::Reaction*> taken_;
};

void Extractor::note (int line, const std::string& what) {
    notes_.push_back (line > 0 ? format_text ("SBML, line %d: %s.", line, what.c_str ())
                               : "SBML: " + what + ".");
}

int line_of (const ::SBase& s) { return static_cast<int> (s.getLine ()); }

void Extractor::compartments () {
    for (unsigned i = 0; i < from_.getNumCompartments (); ++i) {
        const ::Compartment& c = *from_.getCompartment (i);
        ModelCompartment out;
        out.id = c.getId ();
        out.name = c.getName ();
        out.line = line_of (c);
        if (c.isSetSize () && c.getSize () > 0 && std::isfinite (c.getSize ())) {
            out.size = c.getSize ();
        }
        if (!compartment_.try_emplace (out.id, static_cast<int> (i)).second) {
            note (out.line, "compartment '" + out.id + "' stands twice, the first is taken");
        }
        model_.compartments.push_back (std::move (out));
    }
    for (unsigned i = 0; i < from_.getNumCompartments (); ++i) {
        const auto around = compartment_.find (from_.getCompartment (i)->getOutside ());
        if (around == compartment_.end ()) continue;
        // A ring of compartments holds nothing.
        int steps = 0;
        int c = around->second;
        while (c >= 0 && c != static_cast<int> (i) && ++steps < 1000) {
            c = model_.compartments[static_cast<std::size_t> (c)].outside;
        }
        if (c < 0) model_.compartments[i].outside = around->second;
    }
}

void Extractor::species () {
    for (unsigned i = 0; i < from_.getNumSpecies (); ++i) {
        const ::Species& s = *from_.getSpecies (i);
        ModelSpecies out;
        out.id = s.getId ();
        out.name = s.isSetName () ? s.getName () : std::string ();
        out.line = line_of (s);
        const auto inside = compartment_.find (s.getCompartment ());
        if (inside != compartment_.end ()) {
            out.compartment = inside->second;
        } else if (s.isSetCompartment ()) {
            note (out.line, "species '" + out.id + "' is in an unknown compartment '" +
                                s.getCompartment () + "'");
        }
        out.sort = sort_of (s.getSBOTerm ());
        out.held = s.getBoundaryCondition () || s.getConstant ();
        out.amount = s.getHasOnlySubstanceUnits ();
        if (out.id.empty ()) note (out.line, "a species has no id");
        if (!species_.try_emplace (out.id, static_cast<int> (i)).second) {
            note (out.line, "species '" + out.id + "' stands twice, the first is taken");
        }
        model_.species.push_back (std::move (out));
    }
}

void Extractor::stoichiometry (const ::SpeciesReference& from, Reference& to) {
    if (from.isSetStoichiometryMath () && from.getStoichiometryMath ()->isSetMath ()) {
        const ::ASTNode& math = *from.getStoichiometryMath ()->getMath ();
        if (math.isNumber ()) {
            to.stoichiometry = math.getType () == ::AST_INTEGER
                                   ? static_cast<double> (math.getInteger ())
                                   : math.getReal ();
            return;
        }
        char* text = ::SBML_formulaToString (&math);
        to.stoichiometry_text = text != nullptr ? text : "?";
        std::free (text);
        return;
    }
    const bool by_rule = !from.getId ().empty () && from_.getLevel () >= 3 &&
                         (from_.getRule (from.getId ()) != nullptr ||
                          from_.getInitialAssignment (from.getId ()) != nullptr);
    if (by_rule) {
        to.stoichiometry_text = from.getId ();
        return;
    }
    double value = from.getStoichiometry ();
    if (from.getDenominator () > 1) value /= from.getDenominator ();
    if (!std::isfinite (value)) value = 1; // not set from Level 3 on
    to.stoichiometry = value;
}

void Extractor::references (const ::Reaction& r, bool products, std::vector<Reference>& out) {
    const unsigned n = products ? r.getNumProducts () : r.getNumReactants ();
    for (unsigned i = 0; i < n; ++i) {
        const ::SpeciesReference& from = products ? *r.getProduct (i) : *r.getReactant (i);
        const auto at = species_.find (from.getSpecies ());
        if (at == species_.end ()) {
            note (line_of (from), "reaction '" + r.getId () + "' names an unknown species '" +
                                      from.getSpecies () + "', which is left out");
            continue;
        }
        Reference to;
        to.species = at->second;
        stoichiometry (from, to);
        // Two entries of one species are one with the sum.
        const auto before = std::find_if (out.begin (), out.end (), [&to] (const Reference& one) {
            return one.species == to.species && one.stoichiometry_text.empty () &&
                   to.stoichiometry_text.empty ();
        });
        if (before != out.end ()) {
            before->stoichiometry += to.stoichiometry;
        } else {
            out.push_back (std::move (to));
        }
    }
}

void Extractor::modifiers (const ::Reaction& r, ModelReaction& out) {
    std::map<std::string, Role> told;
    if (r.isSetAnnotation ()) {
        if (const ::XMLNode* annotation = const_cast<::Reaction&> (r).getAnnotation ()) {
            find_modifications (*annotation, told);
        }
    }
    for (unsigned i = 0; i < r.getNumModifiers (); ++i) {
        const ::ModifierSpeciesReference& from = *r.getModifier (i);
        const auto at = species_.find (from.getSpecies ());
        if (at == species_.end ()) {
            note (line_of (from), "reaction '" + r.getId () + "' names an unknown modifier '" +
                                      from.getSpecies () + "', which is left out");
            continue;
        }
        const bool twice =
            std::any_of (out.modifiers.begin (), out.modifiers.end (),
                         [&at] (const ModelModifier& one) { return one.species == at->second; });
        if (twice) continue;
        ModelModifier to;
        to.species = at->second;
        auto role = role_of_term (from.getSBOTerm ());
        if (!role) {
            const auto by_line = told.find (from.getSpecies ());
            if (by_line != told.end ()) role = by_line->second;
        }
        to.role_is_told = role.has_value ();
        to.role = role.value_or (Role::catalysis);
        out.modifiers.push_back (to);
    }
}

void Extractor::reaction (const ::Reaction& r) {
    ModelReaction out;
    out.id = r.getId ();
    out.name = r.getName ();
    out.line = line_of (r);
    out.reversible = r.getReversible ();
    references (r, false, out.reactants);
    references (r, true, out.products);
    modifiers (r, out);
    if (out.reactants.empty () && out.products.empty ()) {
        note (out.line,
              "reaction '" + out.id + "' has neither reactants nor products and is left out");
        return;
    }
    model_.reactions.push_back (std::move (out));
    taken_.push_back (&r);
}

/// A law as the user may know it, cut when it is long.
std::string formula_of (const ::Reaction& r) {
    char* text = ::SBML_formulaToL3String (r.getKineticLaw ()->getMath ());
    std::string formula = text != nullptr ? text : "";
    std::free (text);
    constexpr std::size_t longest = 80;
    if (formula.size () > longest) formula = formula.substr (0, longest) + " ...";
    return formula;
}

/// Kinetics, once every species is known.
void Extractor::laws () {
    const UnitFactors units = unit_factors (from_);
    Quantities quantities (from_, model_, units);
    for (ModelCompartment& c : model_.compartments) {
        c.fixed = quantities.is_fixed (c.id) && from_.getAssignmentRule (c.id) == nullptr;
        if (from_.getInitialAssignment (c.id) == nullptr &&
            from_.getAssignmentRule (c.id) == nullptr) {
            continue;
        }
        const ::InitialAssignment* first = from_.getInitialAssignment (c.id);
        const ::ASTNode* math =
            first != nullptr ? first->getMath () : from_.getAssignmentRule (c.id)->getMath ();
        const auto size = math != nullptr ? quantities.at_start (*math) : std::nullopt;
        if (size && *size > 0) c.size = *size;
    }
    for (std::size_t i = 0; i < model_.species.size (); ++i) {
        ModelSpecies& s = model_.species[i];
        s.by_rule = from_.getAssignmentRule (s.id) != nullptr;
        s.concentration = quantities.start_concentration (static_cast<int> (i));
    }
    for (std::size_t i = 0; i < model_.reactions.size (); ++i) {
        ModelReaction& r = model_.reactions[i];
        std::string why;
        r.law = understand (*taken_[i], r, model_, quantities, why);
        if (r.law.kind == LawKind::other) {
            // Some tools list every symbol of a law as a modifier, reactants too.
            ModelReaction plainer = r;
            std::string ignored;
            if (silence_idle_modifiers (plainer, *taken_[i])) {
                plainer.law = understand (*taken_[i], plainer, model_, quantities, ignored);
                if (plainer.law.kind != LawKind::other) r = std::move (plainer);
            }
        }
        if (r.law.kind == LawKind::other) {
            note (r.line, "the rate law of reaction '" + r.id + "' is not taken over (" +
                              formula_of (*taken_[i]) + "): " + why);
        }
        for (const auto& [m, constant] : r.law.inhibitors) {
            ModelModifier& modifier = r.modifiers[static_cast<std::size_t> (m)];
            modifier.role = Role::inhibition;
            modifier.constant = constant;
        }
    }
}

namespace {

void collect_names (const ::ASTNode& node, std::set<std::string>& names) {
    if (node.isName () && node.getName () != nullptr) names.insert (node.getName ());
    for (unsigned i = 0; i < node.getNumChildren (); ++i) collect_names (*node.getChild (i), names);
}

} // namespace

/// Modifiers whose role only the law can tell, and of which it tells none, become influences: those
/// that it does not name, that are reactants, or that stand there a second time. False when there
/// are none.
bool Extractor::silence_idle_modifiers (ModelReaction& r, const ::Reaction& from) const {
    std::set<std::string> names;
    collect_names (*from.getKineticLaw ()->getMath (), names);
    std::set<int> seen;
    for (const Reference& reactant : r.reactants) seen.insert (reactant.species);
    bool found = false;
    for (ModelModifier& m : r.modifiers) {
        if (m.role_is_told) continue;
        const bool is_named =
            names.contains (model_.species[static_cast<std::size_t> (m.species)].id);
        if (is_named && seen.insert (m.species).second) continue;
        m.role = Role::influence;
        m.role_is_told = true;
        found = true;
    }
    return found;
}

void Extractor::count (std::string& text, unsigned n, const char* one, const char* many) {
    if (n == 0) return;
    if (!text.empty ()) text += ", ";
    text += std::to_string (n) + ' ' + (n == 1 ? one : many);
}

/// What a model says beyond reactions.
void Extractor::tell_the_rest () {
    unsigned assignments = 0;
    unsigned rates = 0;
    unsigned algebraic = 0;
    for (unsigned i = 0; i < from_.getNumRules (); ++i) {
        const ::Rule& rule = *from_.getRule (i);
        (rule.isRate () ? rates : rule.isAssignment () ? assignments : algebraic) += 1;
    }
    std::string text;
    count (text, assignments, "assignment rule", "assignment rules");
    count (text, rates, "rate rule", "rate rules");
    count (text, algebraic, "algebraic rule", "algebraic rules");
    count (text, from_.getNumEvents (), "event", "events");
    count (text, from_.getNumConstraints (), "constraint", "constraints");
    if (!text.empty ()) note (0, "a drawing has no place for " + text);
    if (from_.getNumReactions () == 0) {
        note (0, "the model has no reactions" +
                     std::string (model_.species.empty () ? " and no species" : ""));
    }
}

Model Extractor::run () {
    compartments ();
    species ();
    for (unsigned i = 0; i < from_.getNumReactions (); ++i) reaction (*from_.getReaction (i));
    laws ();
    tell_the_rest ();
    return std::move (model_);
}

} // namespace

Model extract (const ::Model& from, std::vector<std::string>& notes) {
    return Extractor (from, notes).run ();
}

} // namespace ostrand::sbml_in
