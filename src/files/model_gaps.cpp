// Walks a network as the model writer does and notes what it passes over.
#include "files/model_gaps.h"

#include "base/text.h"
#include "files/model_write.h"
#include "files/rates.h"
#include "sim/concentration.h"

#include <algorithm>

namespace ostrand::files {
namespace {

using document::Arque;
using document::GraphBase;
using document::Network;
using document::Node;

std::string name_of (const GraphBase* g);

std::string reaction_name (const Arque& r) {
    return name_of (r.source ()) + " -> " + name_of (r.dest ());
}

std::string name_of (const GraphBase* g) {
    if (g == nullptr) {
        return "nothing";
    }
    if (g->kind () == document::CharKind::arque) {
        return "the arc from " + name_of (static_cast<const Arque*> (g)->source ());
    }
    if (g->label () != nullptr) {
        return '"' + g->name () + '"';
    }
    return "the node without label at (" + format_g (g->x ()) + ", " + format_g (g->y ()) + ")";
}

bool is_number (const std::string& text) {
    const std::size_t first = text.find_first_not_of (" \t");
    if (first == std::string::npos) {
        return true;
    }
    std::size_t i = first;
    if (text[i] == '-' || text[i] == '+') {
        ++i;
    }
    if (i < text.size () && text[i] == '.') {
        ++i;
    }
    return i < text.size () && is_digit (text[i]);
}

class GapFinder {
  public:
    explicit GapFinder (const Network& network)
        : network_ (network), has_rates_ (is_any_rated (network)) {}

    std::vector<ModelGap> find ();

  private:
    void node (const Node& n);
    void concentration (const Node& n);
    void arc (const Arque& a);
    void reaction (const Arque& r);
    void constant (const document::Char* field, const std::string& what);
    bool is_stated (const Arque& r) const;
    void tell (std::string text) { gaps_.push_back ({std::move (text), object_}); }

    const Network& network_;
    bool has_rates_;
    std::vector<ModelGap> gaps_;
    const GraphBase* object_ = nullptr; // that is looked at
};

bool is_enzyme_of (const Arque& a, const Arque& r) {
    return document::is_catalysis (a.type ()) && a.source () != r.source () &&
           a.source ()->label () != nullptr;
}

bool GapFinder::is_stated (const Arque& r) const {
    const std::vector<Arque*> incoming = network_.arcs_to (r);
    return r.source ()->label () != nullptr &&
           std::any_of (incoming.begin (), incoming.end (),
                        [&r] (const Arque* a) { return is_enzyme_of (*a, r); });
}

void GapFinder::constant (const document::Char* field, const std::string& what) {
    if (field == nullptr || field->kind () != document::CharKind::line) {
        return;
    }
    const std::string letters = static_cast<const document::Line*> (field)->chars_only ();
    if (!letters.empty () && !is_number (letters)) {
        tell ("no number: \"" + letters + "\", " + what);
    }
}

void GapFinder::reaction (const Arque& r) {
    const std::string name = "reaction " + reaction_name (r);
    if (is_rated (r)) {
        const RatedText rated = rated_text (network_, r, 0);
        if (!rated.fault.empty ()) tell ("left out: " + name + ", " + rated.fault);
        return;
    }
    if (r.source ()->label () == nullptr) {
        tell ("left out: " + name + ", its source has no label");
    } else if (!is_stated (r)) {
        tell ("left out: " + name + ", nothing catalyses it");
    } else if (has_rates_ && r.label () == nullptr) {
        tell ("left out: " + name + ", it has no rate");
    } else {
        for (const Arque* a : network_.arcs_to (r)) {
            // As the import draws a reaction that nothing catalyses.
            if (is_enzyme_of (*a, r) && a->source ()->name ().empty ()) {
                tell ("no name: the enzyme of " + name + ", which the simulator refuses");
            }
        }
        constant (r.label (), "label of " + name);
        constant (r.residu (), "second label of " + name);
    }
}

void GapFinder::arc (const Arque& a) {
    object_ = &a;
    if (document::is_reaction (a.type ())) {
        reaction (a);
        return;
    }
    const Arque* r = a.dest_arc ();
    const bool on_reaction = r != nullptr && document::is_reaction (r->type ());
    const bool is_link =
        document::is_substrate_link (a.type ()) || document::is_product_link (a.type ());
    const bool catalyses = document::is_catalysis (a.type ());
    const bool inhibits = document::is_inhibition (a.type ());
    if (on_reaction && (is_link || catalyses || inhibits)) {
        // Said where the reaction is, which has told its own gap.
        if (is_stated (*r) && !document::is_product_link (a.type ()) && !catalyses) {
            constant (a.label (), "label of the arc from " + name_of (a.source ()) +
                                      " to reaction " + reaction_name (*r));
        }
        return;
    }
    const std::string name = name_of (a.source ()) + " to " + name_of (a.dest ());
    if (inhibits) {
        tell ("left out: inhibition from " + name + ", it ends on no reaction");
    } else {
        tell ("left out: arc from " + name + ", a model text has no word for it");
    }
}

/// Evenly spaced values are written as a series, which the simulator reads upwards only.
void GapFinder::concentration (const Node& n) {
    if (n.master () != nullptr || n.label () == nullptr || !n.user_data () ||
        *n.user_data () == "0 uM") {
        return;
    }
    std::string statement;
    write_concentration (statement, {}, *n.user_data ());
    constexpr std::string_view before = "[\"\"] = ";
    constexpr std::string_view behind = ";\n";
    const std::string value =
        statement.substr (before.size (), statement.size () - before.size () - behind.size ());
    if (sim::concentration_fault (value)) {
        tell ("no concentration that the simulator reads: \"" + value + "\", of " + name_of (&n));
    }
}

/// A source or a sink of a reaction whose rate tells all.
bool is_end_of_rated (const Node& n) {
    if (n.arcs ().size () + n.incoming ().size () != 1) return false;
    const Arque& a = n.arcs ().empty () ? *n.incoming ().front () : *n.arcs ().front ();
    return is_rated (a);
}

void GapFinder::node (const Node& n) {
    object_ = &n;
    concentration (n);
    if (n.label () == nullptr) {
        if (!is_end_of_rated (n)) tell ("left out: " + name_of (&n));
    } else if (const Network* nested = n.nested ()) {
        tell (format_text ("left out: the network inside the node at (%s, %s), %d nodes",
                           format_g (n.x ()).c_str (), format_g (n.y ()).c_str (),
                           nested->nb_nodes ()));
    }
    for (const auto& a : n.arcs ()) {
        arc (*a);
    }
}

std::vector<ModelGap> GapFinder::find () {
    for (const auto& n : network_.nodes ()) {
        node (*n);
    }
    return std::move (gaps_);
}

} // namespace

std::vector<ModelGap> find_model_gaps (const Network& network) {
    return GapFinder (network).find ();
}

std::vector<std::string> model_gaps (const Network& network) {
    std::vector<std::string> texts;
    for (ModelGap& gap : find_model_gaps (network)) texts.push_back (std::move (gap.text));
    return texts;
}

} // namespace ostrand::files
