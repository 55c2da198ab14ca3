// The model text of a network: concentrations, display, duration, reactions.
#include "files/model_write.h"

#include "files/label_text.h"
#include "files/rates.h"
#include "sim/lexer.h"

#include "base/report.h"
#include "base/text.h"
#include "sim/concentration.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Network;
using document::Node;

/// More reactants, enzymes or inhibitors than this of one reaction are not written.
constexpr std::size_t most_names = 15;
/// Longest list of concentrations that is looked at as a series.
constexpr std::size_t most_values = 16;
/// A series is written in mM from here on, in uM.
constexpr float milli_from = 500;

/// A decimal number at `at`, behind white space, as scanf's "%g" takes it; the place goes behind
/// it.
std::optional<float> scan_float (std::string_view text, std::size_t& at) {
    std::size_t i = at;
    while (i < text.size () && is_space (text[i])) ++i;
    const std::size_t start = i;
    if (i < text.size () && (text[i] == '-' || text[i] == '+')) ++i;
    const auto digits = [&text, &i] {
        const std::size_t from = i;
        while (i < text.size () && is_digit (text[i])) ++i;
        return i - from;
    };
    std::size_t count = digits ();
    if (i < text.size () && text[i] == '.') {
        ++i;
        count += digits ();
    }
    if (count == 0) return std::nullopt;
    if (i < text.size () && (text[i] | 0x20) == 'e') {
        const std::size_t mantissa = i;
        ++i;
        if (i < text.size () && (text[i] == '-' || text[i] == '+')) ++i;
        if (digits () == 0) i = mantissa;
    }
    at = i;
    return static_cast<float> (parse_atof (text.substr (start, i - start)));
}

/// The values in uM of a list "value unit separator value unit ...", as far as the text is one.
/// Nothing when there are more values than a series may be made of.
std::vector<float> scan_list (std::string_view text) {
    std::vector<float> values;
    std::size_t at = 0;
    while (at < text.size ()) {
        const std::optional<float> value = scan_float (text, at);
        if (!value) break;
        while (at < text.size () && is_space (text[at])) ++at;
        if (at >= text.size ()) break;
        const char unit = text[at++];
        values.push_back (unit == 'm' ? *value * 1000 : *value);
        if (at >= text.size () || text[at] != 'M') break;
        at += 2; // the letter and the separator, whatever it is
    }
    if (values.size () > most_values) return {};
    return values;
}

/// True when a comma comes before any colon.
bool is_list (std::string_view text) {
    const std::size_t comma = text.find (',');
    return comma != std::string_view::npos && comma < text.find (':');
}

/// A node's name in the text.
std::string model_name_of (const Node& n) {
    return n.label () != nullptr ? model_name_text (*n.label ()) : std::string ();
}

/// The same with its quotes.
std::string quoted_name (const Node& n) { return sim::quoted (model_name_of (n)); }

void write_concentrations (std::string& out, const Network& network, std::string_view multi_name) {
    const Node* last = nullptr;
    for (const auto& n : network.nodes ()) {
        if (n->master () != nullptr || !n->user_data () || *n->user_data () == "0 uM") continue;
        if (last == nullptr && !multi_name.empty () && n->name () == multi_name) {
            last = n.get ();
            continue;
        }
        write_concentration (out, model_name_of (*n), *n->user_data ());
    }
    if (last != nullptr) write_concentration (out, model_name_of (*last), *last->user_data ());
}

void write_display (std::string& out, const Network& network) {
    bool first = true;
    for (const auto& n : network.nodes ()) {
        if (n->master () != nullptr || !n->calyx_display ()) continue;
        out += (first ? "\ndisplay (" : ", ") + quoted_name (*n);
        first = false;
    }
    if (!first) out += ");\n";
}

/// The letters of a field, empty when it has none.
std::string letters_of (const document::Char* field) {
    if (field == nullptr || field->kind () != document::CharKind::line) return {};
    return static_cast<const document::Line*> (field)->chars_only ();
}

/// What takes part in one reaction; names between their quotes.
struct Reaction {
    std::vector<std::string> kinetics;
    std::string reverse;
    std::vector<std::string> substrates;
    std::vector<std::string> products;
    std::vector<std::string> enzymes;
    struct Inhibitor {
        std::string name;
        std::string constant; // empty for none
    };
    std::vector<Inhibitor> inhibitors;
};

template <class Item>
void add_bounded (std::vector<Item>& list, Item item) {
    if (list.size () < most_names) list.push_back (std::move (item));
}

void add_kinetic (Reaction& reaction, const Arque& a) {
    std::string letters = letters_of (a.label ());
    if (!letters.empty ()) reaction.kinetics.push_back (std::move (letters));
}

Reaction collect (const Network& network, const Arque& r) {
    Reaction reaction;
    add_kinetic (reaction, r);
    reaction.reverse = letters_of (r.residu ());
    const Node* source = r.source ();
    const Node* dest = r.dest_node ();
    reaction.substrates.push_back (quoted_name (*source));
    if (dest != nullptr && dest->label () != nullptr) {
        reaction.products.push_back (quoted_name (*dest));
    }
    const Node* substrate = nullptr; // whose first link of the kind was taken
    const Node* product = nullptr;
    for (const Arque* b : network.arcs_to (r)) { // node by node
        const Node* m = b->source ();
        if (m->label () == nullptr) continue;
        if (document::is_substrate_link (b->type ()) && m != source && m != substrate) {
            substrate = m;
            if (reaction.substrates.size () < most_names) {
                reaction.substrates.push_back (quoted_name (*m));
                add_kinetic (reaction, *b);
            }
        }
        if (document::is_product_link (b->type ()) && m != dest && m != product) {
            product = m;
            add_bounded (reaction.products, quoted_name (*m));
        }
        if (m == source) continue;
        if (document::is_catalysis (b->type ())) add_bounded (reaction.enzymes, quoted_name (*m));
        if (document::is_inhibition (b->type ())) {
            add_bounded (reaction.inhibitors, {quoted_name (*m), letters_of (b->label ())});
        }
    }
    return reaction;
}

void write_joined (std::string& out, const std::vector<std::string>& parts, const char* separator) {
    for (std::size_t i = 0; i < parts.size (); ++i) {
        if (i > 0) out += separator;
        out += parts[i];
    }
}

void write_reaction (std::string& out, const Reaction& reaction) {
    for (const std::string& enzyme : reaction.enzymes) {
        out += enzyme + " : ";
        write_joined (out, reaction.substrates, " + ");
        out += " -> ";
        write_joined (out, reaction.products, " + ");
        if (!reaction.kinetics.empty ()) {
            out += " | ";
            write_joined (out, reaction.kinetics, ", ");
        }
        if (!reaction.reverse.empty ()) out += " - " + reaction.reverse;
        out += " ;\n";
    }
    if (reaction.enzymes.empty ()) return;
    bool constants = true; // until one is missing: no later one may be told
    for (const Reaction::Inhibitor& inhibitor : reaction.inhibitors) {
        constants = constants && !inhibitor.constant.empty ();
        out += reaction.enzymes.front () + " : " + inhibitor.name;
        out += constants ? " | " + inhibitor.constant + ";\n" : " ;\n";
    }
}

} // namespace

void write_concentration (std::string& out, std::string_view species, std::string_view text) {
    out += '[' + sim::quoted (species) + "] = ";
    const std::vector<float> values = is_list (text) ? scan_list (text) : std::vector<float> ();
    bool series = values.size () >= 3;
    for (std::size_t i = 2; i < values.size () && series; ++i) {
        const float step = values[i] - values[i - 1];
        series = step == values[1] - values[0];
    }
    if (!series) {
        out.append (text).append (";\n");
        return;
    }
    const float a = values.front ();
    const float b = values.back ();
    const float step = values[1] - values[0];
    const bool milli = a >= milli_from && b >= milli_from;
    const char* unit = milli ? " mM" : " uM";
    const auto number = [milli] (float value) { return format_g (milli ? value / 1000 : value); };
    out += number (a) + unit + " -> " + number (b) + unit + " : " + number (step) + unit + ";\n";
}

std::string write_model (const Network& network, int duration, std::string_view multi_name) {
    std::string out;
    std::string reactions;
    std::string more_concentrations;
    int number = 0;
    const bool has_rates = is_any_rated (network);
    for (const auto& n : network.nodes ()) {
        for (const auto& a : n->arcs ()) {
            if (!document::is_reaction (a->type ())) continue;
            if (is_rated (*a)) {
                RatedText rated = rated_text (network, *a, ++number);
                if (!rated.fault.empty ()) continue;
                more_concentrations += rated.concentrations;
                reactions += rated.statements;
            } else if (n->label () != nullptr) {
                const Reaction reaction = collect (network, *a);
                // Beside known rates the simulator should run: it refuses a statement without any.
                if (has_rates && reaction.kinetics.empty ()) continue;
                write_reaction (reactions, reaction);
            }
        }
    }
    write_concentrations (out, network, multi_name);
    out += more_concentrations;
    write_display (out, network);
    if (duration > 0) out += format_text ("duration = %d;\n\n", duration);
    return out + reactions;
}

bool check_field (const document::Line& field, bool concentration) {
    const std::string text = field.chars_only ();
    std::size_t at = 0;
    const bool number = scan_float (text, at).has_value ();
    if (!concentration) {
        if (text.empty () || number) return true;
        report_message ("Number expected: %s.", text.c_str ());
        return false;
    }
    if (text.empty () || !sim::concentration_fault (text)) return true;
    while (number && at < text.size () && is_space (text[at])) ++at;
    std::string unit;
    while (number && at < text.size () && !is_space (text[at]) && unit.size () < 15) {
        unit += text[at++];
    }
    if (unit.size () == 2 && unit[1] == 'M' && unit[0] != 'u' && unit[0] != 'm') {
        report_message ("Invalid concentration unit: expected mM or uM, got: %s.", unit.c_str ());
    } else {
        report_message ("Invalid concentration spec: %s.", text.c_str ());
    }
    return false;
}

} // namespace ostrand::files
