// Collects what takes part in a reaction.
#include "sbml_out/reactions.h"

#include "base/text.h"

#include <algorithm>
#include <cmath>

namespace ostrand::sbml_out {

using document::Arque;
using document::Node;

namespace {

double stoichiometry_of (const document::Line* line) {
    const double value = parse_atof (letters_of (line));
    return value > 0 && std::isfinite (value) ? value : 1;
}

} // namespace

std::string letters_of (const document::Char* field) {
    if (field == nullptr || field->kind () != document::CharKind::line) return {};
    return static_cast<const document::Line*> (field)->chars_only ();
}

std::optional<double> constant_um (const document::Char* field) {
    const std::string text = letters_of (field);
    const double value = parse_atof (text);
    if (!(value > 0) || !std::isfinite (value)) return std::nullopt;
    if (text.ends_with ("uM")) return value;
    if (text.ends_with ("mM")) return value * 1000;
    return std::nullopt;
}

double first_concentration (const std::string* text) {
    if (text == nullptr) return 0;
    const double value = parse_atof (*text);
    if (!(value > 0) || !std::isfinite (value)) return 0;
    const std::size_t unit = text->find ('M');
    return unit != std::string::npos && unit > 0 && (*text)[unit - 1] == 'm' ? value * 1000 : value;
}

bool is_mark (const Node& n) {
    if (n.label () != nullptr || n.arcs ().size () + n.incoming ().size () != 1) return false;
    const Arque& arc = n.arcs ().empty () ? *n.incoming ().front () : *n.arcs ().front ();
    const Node* other = arc.source () == &n ? arc.dest_node () : arc.source ();
    return document::is_reaction (arc.type ()) && other != nullptr && other->label () != nullptr;
}

Equation equation_of (const document::Network& network, const Arque& reaction) {
    Equation e;
    e.arc = &reaction;
    if (!is_mark (*reaction.source ())) {
        e.reactants.push_back ({&reaction, reaction.source (),
                                stoichiometry_of (reaction.stoech_src ()),
                                constant_um (reaction.label ())});
    }
    if (reaction.dest_node () != nullptr && !is_mark (*reaction.dest_node ())) {
        e.products.push_back (
            {&reaction, reaction.dest_node (), stoichiometry_of (reaction.stoech_dest ()), {}});
    }
    for (const Arque* a : network.arcs_to (reaction)) {
        const Part part{a, a->source (), stoichiometry_of (a->stoech_src ()),
                        constant_um (a->label ())};
        if (document::is_substrate_link (a->type ())) {
            e.reactants.push_back (part);
        } else if (document::is_product_link (a->type ())) {
            e.products.push_back (part);
        } else {
            e.modifiers.push_back (part);
        }
    }
    return e;
}

} // namespace ostrand::sbml_out
