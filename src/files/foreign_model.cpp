// What can a model text say of a network that came from SBML?
#include "files/foreign_model.h"

#include "files/label_text.h"
#include "files/model_write.h"
#include "files/rates.h"
#include "files/sbml_to_model.h"

#include "base/report.h"
#include "base/text.h"
#include "sbml_in/read_sbml.h"
#include "sim/lexer.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Node;

/// More of one species than this are written once.
constexpr double most_copies = 16;

class Side {
  public:
    void add (const Node& n, const document::Line* count) {
        if (n.label () == nullptr) return;
        const double number = count == nullptr ? 1 : parse_atof (count->chars_only ());
        const bool is_whole = number == std::floor (number) && number >= 1 && number <= most_copies;
        for (int i = 0; i < (is_whole ? static_cast<int> (number) : 1); ++i) {
            text_ += (text_.empty () ? "" : " + ") + sim::quoted (model_name_text (*n.label ()));
        }
    }
    std::string text (const char* nothing) const {
        return text_.empty () ? sim::quoted (nothing) : text_;
    }

  private:
    std::string text_;
};

/// A reaction that the model writer passes over, as statements without rates.
void write_plain (std::string& out, const document::Network& network, const Arque& r) {
    Side substrates;
    Side products;
    std::vector<std::string> enzymes;
    substrates.add (*r.source (), r.stoech_src ());
    if (r.dest_node () != nullptr) products.add (*r.dest_node (), r.stoech_dest ());
    for (const Arque* a : network.arcs_to (r)) {
        if (document::is_substrate_link (a->type ())) {
            substrates.add (*a->source (), a->stoech_src ());
        } else if (document::is_product_link (a->type ())) {
            products.add (*a->source (), a->stoech_src ());
        } else if (a->type () == document::arc::catalysis && a->source ()->label () != nullptr) {
            enzymes.push_back (sim::quoted (model_name_text (*a->source ()->label ())));
        }
    }
    if (enzymes.empty ()) enzymes.push_back (sim::quoted (no_enzyme_name));
    for (const std::string& enzyme : enzymes) {
        out += enzyme + " : " + substrates.text (no_substrate_name) + " -> " +
               products.text (no_product_name) + " ;\n";
    }
}

/// The model writer has a statement of its own for it.
bool is_stated (const document::Network& network, const Arque& r) {
    if (is_rated (r)) return true;
    const std::vector<Arque*> links = network.arcs_to (r);
    return r.source ()->label () != nullptr &&
           std::any_of (links.begin (), links.end (),
                        [] (const Arque* a) { return a->type () == document::arc::catalysis; });
}

} // namespace

std::optional<std::string> foreign_sbml_to_model (std::string_view text) {
    const sbml_in::Reading reading = sbml_in::read_sbml (text, false);
    for (const std::string& note : reading.notes) report_message ("%s", note.c_str ());
    if (!reading.network) return std::nullopt;
    document::Network& network = *reading.network;
    network.update_shared_nodes ();
    std::string out = write_model (network, 0, {});
    for (const Arque* a : network.all_arcs ()) {
        if (document::is_reaction (a->type ()) && !is_stated (network, *a)) {
            write_plain (out, network, *a);
        }
    }
    return out;
}

} // namespace ostrand::files
