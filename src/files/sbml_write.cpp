// What does a foreign tool see of a network? Compartments, species, reactions.
#include "files/sbml_write.h"

#include "files/label_text.h"
#include "files/xml.h"

#include "base/text.h"

#include <array>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Network;
using document::Node;

constexpr const char* sbml_namespace = "http://www.sbml.org/sbml/level2/version4";

struct Unit {
    const char* name;
    const char* kind;
};
constexpr std::array<Unit, 4> units{
    {{"substance", "mole"}, {"volume", "litre"}, {"length", "metre"}, {"time", "second"}}};

class SbmlWriter {
  public:
    explicit SbmlWriter (const Network& network) : network_ (network) {}

    std::string write (std::string_view model_id);

  private:
    void head (std::string_view model_id);
    void compartments ();
    void species ();
    void reactions ();
    void reaction (const Arque& r);
    void reference (const Node& n, const char* flag);
    void modifiers (const std::vector<Arque*>& incoming, const Arque& r);

    const Network& network_;
    document::PrintState to_;
};

const Node& master_of (const Node& n) {
    const Node* const master = n.master ();
    return master != nullptr ? *master : n;
}

void SbmlWriter::head (std::string_view model_id) {
    std::string& out = to_.out;
    out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<sbml xmlns=\"";
    out += sbml_namespace;
    out += "\" level=\"2\" version=\"4\">\n<model id=\"";
    out += model_id;
    out += "\">\n<listOfUnitDefinitions>\n";
    for (const Unit& unit : units) {
        out += format_text ("<unitDefinition id=\"%s\" name=\"%s\">\n<listOfUnits>\n"
                            "<unit kind=\"%s\"/>\n</listOfUnits>\n</unitDefinition>\n",
                            unit.name, unit.name, unit.kind);
    }
    out += "</listOfUnitDefinitions>\n";
}

void SbmlWriter::compartments () {
    std::string& out = to_.out;
    out += "<listOfCompartments>\n<compartment id=\"default\" size=\"1\" units=\"volume\">\n"
           "</compartment>\n";
    for (const auto& c : network_.comps ()) {
        out += format_text ("<compartment id=\"c%d\" name=\"", to_.numbering.add (*c));
        out += c->label () != nullptr ? sbml_name_text (*c->label ()) : "defcomp";
        out += "\" outside=\"default\" size=\"1\" units=\"volume\">\n</compartment>\n";
    }
    out += "</listOfCompartments>\n";
}

void SbmlWriter::species () {
    std::string& out = to_.out;
    out += "<listOfSpecies>\n";
    for (const auto& n : network_.nodes ()) {
        if (n->master () != nullptr) {
            continue;
        }
        const int id = to_.numbering.add (*n);
        std::string name = n->label () != nullptr ? sbml_name_text (*n->label ()) : std::string ();
        if (name.empty ()) {
            name = format_text ("s%d", id);
        }
        out += format_text ("<species id=\"s%d\" name=\"", id) + name + "\" compartment=\"";
        out += n->compart () != nullptr ? format_text ("c%d", to_.numbering.of (n->compart ()))
                                        : "default";
        out += "\">\n</species>\n";
    }
    out += "</listOfSpecies>\n";
}

void SbmlWriter::reference (const Node& n, const char* flag) {
    to_.out += format_text ("<speciesReference species=\"s%d\"%s>\n</speciesReference>\n",
                            to_.numbering.of (&master_of (n)), flag);
}

void SbmlWriter::modifiers (const std::vector<Arque*>& incoming, const Arque& r) {
    const Node* last = nullptr;
    bool any = false;
    for (const Arque* a : incoming) {
        const Node* n = a->source ();
        const bool catalyses = document::is_catalysis (a->type ());
        if (n == r.source () || n == last ||
            (!catalyses && !document::is_inhibition (a->type ()))) {
            continue;
        }
        last = n;
        if (!any) {
            to_.out += "<listOfModifiers>\n";
        }
        any = true;
        to_.out += format_text ("<speciesReference species=\"s%d\" sboTerm=\"%s\" />\n",
                                to_.numbering.of (&master_of (*n)),
                                catalyses ? "SBO:0000460" : "SBO:0000020");
    }
    if (any) {
        to_.out += "</listOfModifiers>\n";
    }
}

void SbmlWriter::reaction (const Arque& r) {
    std::string& out = to_.out;
    out += format_text ("<reaction id=\"re%d\" reversible=\"%s\">\n", to_.numbering.take (),
                        r.type () == document::arc::reversible_reaction ? "true" : "false");
    // By the network's nodes, and of each node the first arc of a kind.
    const std::vector<Arque*> incoming = network_.arcs_to (r);
    out += "<listOfReactants>\n";
    reference (*r.source (), " mainsubstract=\"true\"");
    const Node* last = nullptr;
    for (const Arque* a : incoming) {
        const Node* n = a->source ();
        if (n == r.source () || n == last || !document::is_substrate_link (a->type ())) {
            continue;
        }
        last = n;
        reference (*n, "");
    }
    out += "</listOfReactants>\n<listOfProducts>\n";
    if (r.dest_node () != nullptr) {
        reference (*r.dest_node (), " mainproduct=\"true\"");
    }
    last = nullptr;
    for (const Arque* a : incoming) {
        const Node* n = a->source ();
        if (n == r.dest_node () || n == last || !document::is_product_link (a->type ())) {
            continue;
        }
        last = n;
        reference (*n, "");
    }
    out += "</listOfProducts>\n";
    modifiers (incoming, r);
    out += "</reaction>\n";
}

void SbmlWriter::reactions () {
    to_.out += "<listOfReactions>\n";
    for (const auto& n : network_.nodes ()) {
        for (const auto& a : n->arcs ()) {
            if (document::is_reaction (a->type ())) {
                reaction (*a);
            }
        }
    }
    to_.out += "</listOfReactions>\n";
}

std::string SbmlWriter::write (std::string_view model_id) {
    head (model_id);
    to_.out += "<annotation>\n";
    write_xml_block (network_, to_, 0);
    to_.out += "</annotation>\n";
    to_.numbering.restart ();
    compartments ();
    species ();
    reactions ();
    to_.out += "</model>\n</sbml>\n";
    return std::move (to_.out);
}

} // namespace

std::string write_sbml (const Network& network, std::string_view model_id) {
    // Sharing is brought up to date on a copy: writing changes nothing.
    const std::unique_ptr<Network> copy = network.copy (nullptr);
    copy->update_shared_nodes ();
    return SbmlWriter (*copy).write (model_id);
}

} // namespace ostrand::files
