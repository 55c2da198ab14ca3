// Makes the library's objects of a network and has them written.
#include "sbml_out/standard_write.h"

#include "sbml_out/drawing.h"
#include "sbml_out/names.h"
#include "sbml_out/reactions.h"

#include "base/disk.h"
#include "base/path.h"
#include "base/text.h"
#include "files/native.h"
#include "files/rates.h"
#include "sbml_in/own_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>

#include <sbml/SBMLTypes.h>
#include <sbml/packages/layout/common/LayoutExtensionTypes.h>
#include <sbml/packages/render/common/RenderExtensionTypes.h>

namespace ostrand::sbml_out {
namespace {

using document::Arque;
using document::Compart;
using document::Network;
using document::Node;

/// The fill of what never runs out.
constexpr unsigned excess_fill = 0xbf91bf00;

constexpr const char* unit_amount = "umol";
constexpr const char* unit_concentration = "uM";
constexpr const char* unit_per_second = "per_s";
constexpr const char* unit_flow = "uM_per_s";
constexpr const char* other_compartment = "default_compartment";

/// Terms of the ontology.
namespace term {
constexpr int simple_chemical = 247;
constexpr int polypeptide = 252;
constexpr int gene = 354;
constexpr int receptor = 252; // a polypeptide: receptors are no branch of their own
constexpr int material_entity = 240;
constexpr int physical_compartment = 290;
constexpr int biochemical_reaction = 176;
constexpr int transport = 185;
constexpr int reactant = 10;
constexpr int product = 11;
constexpr int enzymatic_catalyst = 460;
constexpr int inhibitor = 20;
constexpr int stimulator = 459;
constexpr int essential_activator = 461;
constexpr int dual_activity = 595;
constexpr int mass_action = 12;
constexpr int michaelis_menten = 28;
constexpr int rate_constant = 9;
constexpr int michaelis_constant = 27;
constexpr int turnover = 25;
constexpr int maximal_velocity = 186;
constexpr int inhibitory_constant = 261;
} // namespace term

int species_term (const Node& n) {
    switch (n.group ()) {
    case document::node::molecule_group: return term::simple_chemical;
    case document::node::protein_group: return term::polypeptide;
    case document::node::gene_group: return term::gene;
    case document::node::receptor_group: return term::receptor;
    default: return term::material_entity;
    }
}

int modifier_term (unsigned type) {
    switch (type) {
    case document::arc::inhibition: return term::inhibitor;
    case document::arc::activation: return term::stimulator;
    case document::arc::necessary_activation: return term::essential_activator;
    case document::arc::influence: return term::dual_activity;
    default: return term::enzymatic_catalyst;
    }
}

bool never_runs_out (const Node& n) { return n.bg_color () == excess_fill; }

class Writer {
  public:
    Writer (const Network& network, const std::string& model_id)
        : network_ (network), document_ (make_document ()), model_ (*document_->createModel ()) {
        model_.setId (valid_id (model_id));
        if (!model_id.empty ()) model_.setName (xml_letters (model_id));
    }
    std::string run ();

  private:
    static std::unique_ptr<::SBMLDocument> make_document ();
    void units ();
    void unit (const std::string& id, int amount, int volume, int time);
    void compartments ();
    void species ();
    void reactions ();
    void reaction (const Equation& e, int number);
    void law (const Equation& e, ::Reaction& to);
    void annotate ();
    const std::string& id_of (const Node& n) const {
        return ids_.species.at (n.master () != nullptr ? n.master () : &n);
    }
    std::string power_of (const Part& p) const;
    std::string product_of (const std::vector<Part>& parts) const;
    std::string rate_term (const std::vector<Part>& side, const std::vector<Part>& catalysts,
                           const files::Rate& rate, const std::string& name, ::KineticLaw& law);
    std::string enzyme_term (const Equation& e, const std::vector<Part>& enzymes,
                             const files::Rate& rate, ::KineticLaw& law);
    void constant (::KineticLaw& law, const std::string& id, double value, const std::string& unit,
                   int sbo);
    std::string order_unit (int order);

    const Network& network_;
    std::unique_ptr<::SBMLDocument> document_;
    ::Model& model_;
    Ids ids_;
    std::map<const Compart*, std::string> in_;
    std::vector<Equation> equations_;
    bool has_other_compartment_ = false;
};

std::unique_ptr<::SBMLDocument> Writer::make_document () {
    ::SBMLNamespaces spaces (3, 2);
    spaces.addPackageNamespace ("layout", 1);
    spaces.addPackageNamespace ("render", 1);
    auto document = std::make_unique<::SBMLDocument> (&spaces);
    document->setPackageRequired ("layout", false);
    document->setPackageRequired ("render", false);
    return document;
}

void Writer::unit (const std::string& id, int amount, int volume, int time) {
    ::UnitDefinition& u = *model_.createUnitDefinition ();
    u.setId (id);
    const auto add = [&u] (::UnitKind_t kind, int exponent, int scale) {
        if (exponent == 0) return;
        ::Unit& one = *u.createUnit ();
        one.setKind (kind);
        one.setExponent (exponent);
        one.setScale (scale);
        one.setMultiplier (1);
    };
    add (::UNIT_KIND_MOLE, amount, -6);
    add (::UNIT_KIND_LITRE, volume, 0);
    add (::UNIT_KIND_SECOND, time, 0);
}

void Writer::units () {
    unit (unit_amount, 1, 0, 0);
    unit (unit_concentration, 1, -1, 0);
    unit (unit_per_second, 0, 0, -1);
    unit (unit_flow, 1, -1, -1);
    model_.setSubstanceUnits (unit_amount);
    model_.setExtentUnits (unit_amount);
    model_.setVolumeUnits ("litre");
    model_.setTimeUnits ("second");
}

/// The unit of a rate constant, made when it is first needed.
std::string Writer::order_unit (int order) {
    if (order == 0) return unit_flow;
    if (order == 1) return unit_per_second;
    std::string id = "per_uM" + std::to_string (order - 1) + "_per_s";
    if (model_.getUnitDefinition (id) == nullptr) unit (id, 1 - order, order - 1, -1);
    return id;
}

void Writer::compartments () {
    const auto make = [this] (const std::string& id, const std::string& name) {
        ::Compartment& c = *model_.createCompartment ();
        c.setId (id);
        if (!name.empty ()) c.setName (name);
        c.setSpatialDimensions (3U);
        c.setSize (1);
        c.setUnits ("litre");
        c.setConstant (true);
        c.setSBOTerm (term::physical_compartment);
    };
    int number = 0;
    for (const auto& c : network_.comps ()) {
        const std::string id = "c" + std::to_string (++number);
        ids_.compartments[c.get ()] = id;
        make (id, shown_name (*c));
    }
    has_other_compartment_ =
        std::any_of (network_.nodes ().begin (), network_.nodes ().end (),
                     [] (const auto& n) { return !is_mark (*n) && n->compart () == nullptr; });
    if (has_other_compartment_) make (other_compartment, "");
}

void Writer::species () {
    int number = 0;
    for (const auto& n : network_.nodes ()) {
        // The first of its kind may stand in a network around this one or inside.
        const Node* kind = n->master () != nullptr ? n->master () : n.get ();
        if (ids_.species.contains (kind) || is_mark (*n)) continue;
        const std::string id = "s" + std::to_string (++number);
        ids_.species[kind] = id;
        ::Species& s = *model_.createSpecies ();
        s.setId (id);
        const std::string name = shown_name (*n);
        s.setName (name.empty () ? id : name);
        s.setCompartment (n->compart () != nullptr ? ids_.compartments.at (n->compart ())
                                                   : other_compartment);
        s.setInitialConcentration (first_concentration (n->user_data ()));
        s.setSubstanceUnits (unit_amount);
        s.setHasOnlySubstanceUnits (false);
        s.setBoundaryCondition (never_runs_out (*n));
        s.setConstant (false);
        s.setSBOTerm (species_term (*n));
    }
}

std::string Writer::power_of (const Part& p) const {
    const std::string& id = id_of (*p.node);
    return p.stoichiometry == 1 ? id : id + "^" + format_g (p.stoichiometry, 15);
}

std::string Writer::product_of (const std::vector<Part>& parts) const {
    std::string text;
    for (const Part& p : parts) text += " * " + power_of (p);
    return text;
}

void Writer::constant (::KineticLaw& law, const std::string& id, double value,
                       const std::string& unit, int sbo) {
    ::LocalParameter& p = *law.createLocalParameter ();
    p.setId (id);
    p.setValue (value);
    p.setUnits (unit);
    p.setSBOTerm (sbo);
}

/// "k * A * B": empty when the unit does not fit.
std::string Writer::rate_term (const std::vector<Part>& side, const std::vector<Part>& catalysts,
                               const files::Rate& rate, const std::string& name,
                               ::KineticLaw& law) {
    double order = 0;
    for (const Part& p : side) order += p.stoichiometry;
    std::string text = name + product_of (side);
    if (order != rate.order) {
        order += static_cast<double> (catalysts.size ());
        if (order != rate.order) return {};
        for (const Part& p : catalysts) text += " * " + id_of (*p.node);
    }
    constant (law, name, rate.value, order_unit (rate.order), term::rate_constant);
    return text;
}

/// "kcat * E * S / (Km + S)", an inhibitor of one substrate's reaction in its Km. Empty when a
/// constant is missing.
std::string Writer::enzyme_term (const Equation& e, const std::vector<Part>& enzymes,
                                 const files::Rate& rate, ::KineticLaw& law) {
    for (const Part& p : e.reactants) {
        if (!p.constant || p.stoichiometry != 1) return {};
    }
    if (e.reactants.empty () || (rate.order == 1 && enzymes.empty ())) return {};
    std::string text;
    if (rate.order == 1) {
        constant (law, "kcat", rate.value, unit_per_second, term::turnover);
        text = "kcat * ";
        std::string sum;
        for (const Part& p : enzymes) sum += (sum.empty () ? "" : " + ") + id_of (*p.node);
        text += enzymes.size () == 1 ? sum : "(" + sum + ")";
    } else {
        constant (law, "Vmax", rate.value, unit_flow, term::maximal_velocity);
        text = "Vmax";
    }
    std::string inhibited;
    int number = 0;
    for (const Part& p : e.modifiers) {
        if (p.arc->type () != document::arc::inhibition || !p.constant) continue;
        const std::string id = "Ki" + std::to_string (++number);
        constant (law, id, *p.constant, unit_concentration, term::inhibitory_constant);
        inhibited += " + Km1 * " + id_of (*p.node) + " / " + id;
    }
    number = 0;
    for (const Part& p : e.reactants) {
        const std::string id = "Km" + std::to_string (++number);
        constant (law, id, *p.constant, unit_concentration, term::michaelis_constant);
        const std::string& s = id_of (*p.node);
        const bool with_inhibitors = !inhibited.empty () && e.reactants.size () == 1;
        text += " * " + s + " / (" + id + (with_inhibitors ? inhibited : std::string ()) + " + " +
                s + ")";
    }
    return text;
}

void Writer::law (const Equation& e, ::Reaction& to) {
    const std::string first = letters_of (e.arc->label ());
    const std::string second = letters_of (e.arc->residu ());
    const auto forward = files::parse_rate (first);
    auto backward = files::parse_rate (second);
    std::vector<Part> enzymes;
    std::copy_if (e.modifiers.begin (), e.modifiers.end (), std::back_inserter (enzymes),
                  [] (const Part& p) { return p.arc->type () == document::arc::catalysis; });
    std::vector<Part> other_enzymes; // that the reaction does not use up
    std::copy_if (
        enzymes.begin (), enzymes.end (), std::back_inserter (other_enzymes), [&] (const Part& p) {
            return std::none_of (e.reactants.begin (), e.reactants.end (), [&] (const Part& r) {
                return id_of (*r.node) == id_of (*p.node);
            });
        });
    const double plain = parse_atof (second);
    const bool is_told = !backward && !forward && !enzymes.empty () && plain > 0 &&
                         second.find_first_not_of ("0123456789.e-+") == std::string::npos;
    if (is_told) backward = files::Rate{plain, 1}; // a number beside Km is a turnover
    if (!forward && !backward) return;
    auto law = std::make_unique<::KineticLaw> (to.getSBMLNamespaces ());
    std::string formula;
    if (!forward) {
        formula = enzyme_term (e, other_enzymes, *backward, *law);
        law->setSBOTerm (term::michaelis_menten);
    } else {
        formula = rate_term (e.reactants, enzymes, *forward, "k", *law);
        if (!formula.empty () && backward) {
            const std::string back = rate_term (e.products, enzymes, *backward, "k_reverse", *law);
            formula = back.empty () ? back : formula + " - " + back;
        }
        law->setSBOTerm (term::mass_action);
    }
    if (formula.empty ()) return;
    const Part& where = e.reactants.empty () ? e.products.front () : e.reactants.front ();
    const std::string volume = model_.getSpecies (id_of (*where.node))->getCompartment ();
    const std::unique_ptr<::ASTNode> math (
        ::SBML_parseL3Formula ((volume + " * (" + formula + ")").c_str ()));
    if (!math) return;
    law->setMath (math.get ());
    to.setKineticLaw (law.get ());
}

void Writer::reaction (const Equation& e, int number) {
    if (e.reactants.empty () && e.products.empty ()) return;
    ::Reaction& r = *model_.createReaction ();
    const std::string id = "r" + std::to_string (number);
    ids_.reactions[e.arc] = id;
    r.setId (id);
    r.setReversible (document::is_reversible (e.arc->type ()));
    r.setSBOTerm (e.arc->type () == document::arc::transport ? term::transport
                                                             : term::biochemical_reaction);
    int reference = 0;
    const auto add = [&] (const Part& p, bool is_product) {
        ::SpeciesReference& to = is_product ? *r.createProduct () : *r.createReactant ();
        to.setSpecies (id_of (*p.node));
        to.setStoichiometry (p.stoichiometry);
        to.setConstant (true);
        to.setSBOTerm (is_product ? term::product : term::reactant);
        to.setId (id + "_" + std::to_string (++reference));
        ids_.references[{p.arc, is_product}] = to.getId ();
    };
    for (const Part& p : e.reactants) add (p, false);
    for (const Part& p : e.products) add (p, true);
    for (const Part& p : e.modifiers) {
        ::ModifierSpeciesReference& to = *r.createModifier ();
        to.setSpecies (id_of (*p.node));
        to.setSBOTerm (modifier_term (p.arc->type ()));
        to.setId (id + "_" + std::to_string (++reference));
        ids_.references[{p.arc, false}] = to.getId ();
    }
    law (e, r);
}

void Writer::reactions () {
    int number = 0;
    for (const Arque* a : network_.all_arcs ()) {
        if (!document::is_reaction (a->type ()) || a->dest_node () == nullptr) continue;
        equations_.push_back (equation_of (network_, *a));
        reaction (equations_.back (), ++number);
    }
}

/// The native text, so that nothing of the drawing is lost.
void Writer::annotate () {
    const std::string text =
        "<ostrand:drawing xmlns:ostrand=\"" + std::string (sbml_in::drawing_namespace) + "\">" +
        xml_escaped (sbml_in::packed_drawing (files::write_native (network_))) +
        "</ostrand:drawing>";
    model_.setAnnotation ("<annotation>" + text + "</annotation>");
}

std::string Writer::run () {
    units ();
    compartments ();
    species ();
    reactions ();
    write_drawing (network_, equations_, ids_, model_);
    annotate ();
    const std::unique_ptr<char, decltype (&std::free)> text (::writeSBMLToString (document_.get ()),
                                                             &std::free);
    return text ? std::string (text.get ()) : std::string ();
}

} // namespace

std::string write_standard (const Network& network, const std::string& model_id) {
    try {
        return Writer (network, model_id).run ();
    } catch (...) { // the library has classes of its own
        return {};
    }
}

bool export_standard (const Network& network, const std::filesystem::path& path,
                      std::string& error) {
    const std::string text = write_standard (network, base_name (path.string ()));
    if (!text.empty ()) return write_file (path, text, error);
    error = "the network could not be said in SBML";
    return false;
}

} // namespace ostrand::sbml_out
