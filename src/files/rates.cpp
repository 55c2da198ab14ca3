// How is a reaction with known rates said in elementary reactions?
#include "files/rates.h"

#include "files/label_text.h"

#include "base/text.h"
#include "sim/lexer.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Network;
using document::Node;

/// The fill of what never runs out, as the import gives it.
constexpr unsigned excess_fill = 0xbf91bf00;

/// Of the simulator: steps in a second, molecules in one uM, the factor of two molecules' meeting.
constexpr double steps_per_second = 10000;
constexpr double molecules_per_um = 602.252;
constexpr double meeting = 7.4e-7;
/// What a constant source holds, uM: so much that nothing changes it.
constexpr double source_content = 1e6;

/// An enzyme that the text brings along: how much of Km it may be, its bounds in uM, and how often
/// it may turn over in a second.
constexpr double enzyme_of_km = 0.005;
constexpr double least_enzyme = 0.05;
constexpr double fastest_turnover = 500;

/// A place that binds and lets go again: how much there is of it, of Km and in uM, and how often it
/// lets go in a second.
constexpr double least_place = 0.05;
constexpr double most_place = 1;
constexpr double letting_go = 100;
/// Of a debt that is paid at once: two molecules' meeting.
constexpr double paying = 1000;

double constant_of_meeting (double per_um_and_second) {
    return per_um_and_second / (molecules_per_um * steps_per_second * meeting);
}

std::string letters_of (const document::Char* field) {
    if (field == nullptr || field->kind () != document::CharKind::line) return {};
    return static_cast<const document::Line*> (field)->chars_only ();
}

std::string name_of (const Node& n) {
    return n.label () != nullptr ? model_name_text (*n.label ()) : std::string ();
}

bool never_runs_out (const Node& n) {
    const Node* const original = n.master ();
    const Node& master = original != nullptr ? *original : n;
    return master.bg_color () == excess_fill;
}

/// A number as the model language reads it: without "+", and with its digits.
std::string language_number (double value) {
    std::string text = format_g (value, 9);
    std::erase (text, '+');
    return text;
}

/// A value with its unit, uM.
std::optional<double> parse_um (std::string_view text) {
    const std::size_t blank = text.find_first_of (" um");
    if (blank == std::string_view::npos || blank == 0) return std::nullopt;
    const double value = parse_atof (text);
    if (text.ends_with ("uM")) return value;
    if (text.ends_with ("mM")) return value * 1000;
    return std::nullopt;
}

double stoichiometry_of (const document::Line* line) {
    if (line == nullptr) return 1;
    const std::string letters = line->chars_only ();
    const double value = parse_atof (letters);
    return value > 0 ? value : 1;
}

/// A reaction with its numbers.
struct Parts {
    std::map<std::string, double> substrates; // by name
    std::map<std::string, double> products;
    std::vector<std::string> substrate_order;
    std::vector<std::string> product_order;
    std::vector<double> km; // of the substrates in order, uM; not a number where there is none
    std::vector<std::string> catalysts;
    std::vector<std::pair<std::string, std::string>> inhibitors; // and the letters of the constant
    std::map<std::string, bool> held;
};

double km_of (const Arque& arc) {
    return parse_um (letters_of (arc.label ())).value_or (std::nan (""));
}

class Collector {
  public:
    explicit Collector (Parts& parts) : parts_ (parts) {}

    void substrate (const Node& n, const document::Line* count, double km) {
        if (!take (n)) return;
        const std::string name = name_of (n);
        if (!parts_.substrates.contains (name)) {
            parts_.substrate_order.push_back (name);
            parts_.km.push_back (km);
        }
        parts_.substrates[name] += stoichiometry_of (count);
    }
    void product (const Node& n, const document::Line* count) {
        if (!take (n)) return;
        const std::string name = name_of (n);
        if (!parts_.products.contains (name)) parts_.product_order.push_back (name);
        parts_.products[name] += stoichiometry_of (count);
    }
    bool take (const Node& n) {
        if (n.label () == nullptr) return false;
        parts_.held[name_of (n)] = never_runs_out (n);
        return true;
    }

  private:
    Parts& parts_;
};

Parts parts_of (const Network& network, const Arque& r) {
    Parts parts;
    Collector collect (parts);
    collect.substrate (*r.source (), r.stoech_src (), km_of (r));
    if (r.dest_node () != nullptr) collect.product (*r.dest_node (), r.stoech_dest ());
    for (const Arque* a : network.arcs_to (r)) {
        if (document::is_substrate_link (a->type ())) {
            collect.substrate (*a->source (), a->stoech_src (), km_of (*a));
        } else if (document::is_product_link (a->type ())) {
            collect.product (*a->source (), a->stoech_src ());
        } else if (a->type () >> 4 == 2 && collect.take (*a->source ())) {
            parts.catalysts.push_back (name_of (*a->source ()));
        } else if (a->type () >> 4 == 3 && collect.take (*a->source ())) {
            parts.inhibitors.emplace_back (name_of (*a->source ()), letters_of (a->label ()));
        }
    }
    return parts;
}

/// Elementary reactions of one reactant or of two that add up to a change of `target` with each
/// firing.
class Elementary {
  public:
    Elementary (std::vector<std::string> reactants, std::map<std::string, double> target,
                double constant, std::string& out)
        : reactants_ (std::move (reactants)), target_ (std::move (target)), constant_ (constant),
          out_ (out) {}

    bool write ();

  private:
    struct Statement {
        std::vector<std::string> products;
        double weight;
        std::size_t free_slots () const { return 2 - products.size (); }
    };

    bool split ();
    bool return_reactants ();
    void emit (const Statement& s, double weight, const std::vector<std::string>& back);

    std::vector<std::string> reactants_;
    std::map<std::string, double> target_;
    double constant_;
    std::string& out_;
    std::vector<std::string> distinct_;
    std::vector<Statement> statements_;
};

/// Products that are no reactants: two in a statement where that goes.
bool Elementary::split () {
    std::vector<std::pair<std::string, double>> made;
    for (const auto& [name, change] : target_) {
        if (std::count (distinct_.begin (), distinct_.end (), name) > 0) continue;
        if (change < 0) return false; // consumed by what does not depend on it
        if (change > 0) made.emplace_back (name, change);
    }
    std::stable_sort (made.begin (), made.end (),
                      [] (const auto& a, const auto& b) { return a.second > b.second; });
    // The largest with each other as long as there are two.
    while (made.size () >= 2) {
        const double weight = made[1].second;
        statements_.push_back ({{made[0].first, made[1].first}, weight});
        made[0].second -= weight;
        made.erase (made.begin () + 1);
        if (made[0].second < 1e-12) made.erase (made.begin ());
    }
    if (!made.empty ()) statements_.push_back ({{made[0].first}, made[0].second});
    return true;
}

void Elementary::emit (const Statement& s, double weight, const std::vector<std::string>& back) {
    if (!(weight > 1e-9)) return;
    for (std::size_t i = 0; i < reactants_.size (); ++i) {
        out_ += (i > 0 ? " + " : "") + sim::quoted (reactants_[i]);
    }
    out_ += " -> ";
    std::vector<std::string> products = s.products;
    products.insert (products.end (), back.begin (), back.end ());
    if (products.empty ()) products.emplace_back ("gone");
    for (std::size_t i = 0; i < products.size (); ++i) {
        out_ += (i > 0 ? " + " : "") + sim::quoted (products[i]);
    }
    out_ += " | " + language_number (constant_ * weight) + " ;\n";
}

/// A firing takes one of each reactant, or gives one when it is among the products: so each comes
/// back in as many firings as its change asks, in statements that have room for it.
bool Elementary::return_reactants () {
    double total = 0;
    for (const Statement& s : statements_) total += s.weight;
    std::vector<double> change;
    for (const std::string& name : distinct_) {
        const auto at = target_.find (name);
        change.push_back (at == target_.end () ? 0 : at->second);
    }
    const auto slots = [&] (double all) {
        // Room in statements with one product, then in ones that only take and give.
        double room = 0;
        for (const Statement& s : statements_) {
            room += s.weight * static_cast<double> (s.free_slots ());
        }
        return room + 2 * (all - total);
    };
    double all = total;
    const auto back_of = [&] (std::size_t i) { return (all + change[i]) / 2; };
    const auto fits = [&] {
        double needed = 0;
        double single = 0; // what statements with one free place must hold at least
        for (std::size_t i = 0; i < distinct_.size (); ++i) {
            const double back = back_of (i);
            if (back < -1e-12 || back > all + 1e-12) return false;
            needed += back;
            single += std::max (0.0, back - (all - total));
        }
        double room = 0;
        for (const Statement& s : statements_) {
            if (s.free_slots () == 1) room += s.weight;
        }
        return needed <= slots (all) + 1e-12 && single <= room + 1e-12;
    };
    constexpr double step = 0.125;
    constexpr double most = 200;
    while (!fits ()) {
        all = std::floor (all / step + 1e-9) * step + step;
        if (all > most) return false;
    }
    std::vector<double> back;
    for (std::size_t i = 0; i < distinct_.size (); ++i)
        back.push_back (std::max (0.0, back_of (i)));
    // First into statements without products: each reactant as far as they go.
    const double empty = all - total;
    std::vector<double> in_empty;
    for (double& b : back) {
        in_empty.push_back (std::min (b, empty));
        b -= in_empty.back ();
    }
    for (const Statement& s : statements_) {
        double left = s.weight;
        if (s.free_slots () == 1) {
            for (std::size_t i = 0; i < distinct_.size (); ++i) {
                const double now = std::min (left, back[i]);
                emit (s, now, {distinct_[i]});
                back[i] -= now;
                left -= now;
            }
        }
        emit (s, left, {});
    }
    const Statement nothing{{}, 0};
    if (distinct_.size () == 1) {
        emit (nothing, in_empty[0], {distinct_[0]});
        emit (nothing, empty - in_empty[0], {});
    } else if (distinct_.size () == 2) {
        const double both = std::min (in_empty[0], in_empty[1]);
        emit (nothing, both, {distinct_[0], distinct_[1]});
        const std::size_t more = in_empty[0] > in_empty[1] ? 0 : 1;
        const double rest = std::max (in_empty[0], in_empty[1]) - both;
        emit (nothing, rest, {distinct_[more]});
        emit (nothing, empty - both - rest, {});
    }
    return true;
}

bool Elementary::write () {
    for (const std::string& r : reactants_) {
        if (std::count (distinct_.begin (), distinct_.end (), r) == 0) distinct_.push_back (r);
    }
    return split () && return_reactants ();
}

double amount_of_place (double km) {
    return std::clamp (enzyme_of_km * km, least_place, most_place);
}

class Rated {
  public:
    Rated (const Parts& parts, int number) : parts_ (parts), number_ (number) {}

    RatedText mass_action (const std::optional<Rate>& forward, const std::optional<Rate>& reverse) {
        if (forward) direction (parts_.substrates, parts_.products, *forward);
        if (reverse) direction (parts_.products, parts_.substrates, *reverse);
        return std::move (out_);
    }
    /// Michaelis-Menten: a statement for each enzyme; what uses itself up is none.
    RatedText enzyme (const Rate& rate);

  private:
    void direction (const std::map<std::string, double>& from,
                    const std::map<std::string, double>& to, const Rate& rate);
    bool through_complex (const std::vector<std::string>& reactants,
                          const std::map<std::string, double>& target, double constant);
    void fail (const std::string& why) {
        if (out_.fault.empty ()) out_.fault = why;
    }
    void enzyme_statement (const std::string& enzyme, double kcat);
    bool each_for_itself () const;
    void independent_substrates (const std::vector<std::string>& enzymes, double kcat);
    void binding (const std::string& place, std::size_t substrate, const std::string& bound);
    std::string filled_places ();
    std::string brought_along (const std::string& name, double amount);
    void multiply (std::string& text, const std::map<std::string, double>& side,
                   const std::vector<std::string>& order);

    const Parts& parts_;
    int number_;
    int complexes_ = 0; // brought along so far
    RatedText out_;
};

/// What a complex of the reactants gives back: those that stay, then what is made. Empty when that
/// cannot be said by whole numbers, or when no reactant stays.
std::vector<std::string> given_back (const std::vector<std::string>& reactants,
                                     const std::map<std::string, double>& target) {
    constexpr double most = 12;
    if (reactants.size () == 2 && reactants[0] == reactants[1]) return {};
    std::vector<std::string> back;
    const auto add = [&back] (const std::string& name, double n) {
        if (n != std::floor (n) || n < 0 || n > most) return false;
        back.insert (back.end (), static_cast<std::size_t> (n), name);
        return true;
    };
    bool some_stays = false;
    for (const std::string& name : reactants) {
        const auto at = target.find (name);
        const double change = at == target.end () ? 0 : at->second;
        some_stays = some_stays || change == 0;
        if (!add (name, 1 + change)) return {};
    }
    if (!some_stays) return {};
    for (const auto& [name, change] : target) {
        if (std::count (reactants.begin (), reactants.end (), name) > 0) continue;
        if (!add (name, change)) return {};
    }
    return back;
}

void Rated::direction (const std::map<std::string, double>& from,
                       const std::map<std::string, double>& to, const Rate& rate) {
    std::vector<std::string> reactants;
    double order = 0;
    for (const auto& [name, n] : from) {
        if (n != std::floor (n) || n > 8) return fail ("a substrate's number is not whole");
        reactants.insert (reactants.end (), static_cast<std::size_t> (n), name);
        order += n;
    }
    if (order != rate.order) {
        reactants.insert (reactants.end (), parts_.catalysts.begin (), parts_.catalysts.end ());
        if (reactants.size () != static_cast<std::size_t> (rate.order)) {
            return fail ("the unit of its rate does not fit its substrates");
        }
    }
    std::map<std::string, double> target;
    for (const auto& [name, n] : to) target[name] += n;
    for (const auto& [name, n] : from) target[name] -= n;
    for (auto& [name, n] : target) {
        const auto held = parts_.held.find (name);
        if (held != parts_.held.end () && held->second) n = 0;
    }
    double constant = 0;
    switch (rate.order) {
    case 0: {
        const std::string source = "source " + std::to_string (number_);
        out_.concentrations +=
            "[" + sim::quoted (source) + "] = " + language_number (source_content) + " uM;\n";
        reactants = {source};
        constant = rate.value / source_content / steps_per_second;
        break;
    }
    case 1: constant = rate.value / steps_per_second; break;
    case 2: constant = constant_of_meeting (rate.value); break;
    default: return fail ("more than two molecules would have to meet");
    }
    if (!(constant >= 0)) return fail ("its rate is negative");
    if (constant == 0 || through_complex (reactants, target, constant)) return;
    if (!Elementary (reactants, std::move (target), constant, out_.statements).write ()) {
        fail ("it uses up what its rate does not depend on");
    }
}

/// A reactant that stays, a catalyst or a gene, is bound and let go within one time step. Written as
/// a statement that makes one more of it beside one that takes one, its number would wander: a single
/// gene would be lost by chance. Letting go stands before and behind the binding, for every other
/// time step goes through the statements backwards.
bool Rated::through_complex (const std::vector<std::string>& reactants,
                             const std::map<std::string, double>& target, double constant) {
    const std::vector<std::string> back = given_back (reactants, target);
    if (back.empty ()) return false;
    const auto complex = [this] (std::size_t i) {
        return sim::quoted ("complex " + std::to_string (number_) + "." +
                            std::to_string (complexes_ + static_cast<int> (i)));
    };
    std::string let_go;
    std::size_t at = 0;
    for (std::size_t i = 1; at < back.size (); ++i) {
        let_go += complex (i) + " -> " + sim::quoted (back[at++]);
        // Two of the same would count as one.
        const bool is_last = at == back.size ();
        const bool ends = at + 1 == back.size () && back[at] != back[at - 1];
        if (ends) {
            let_go += " + " + sim::quoted (back[at++]);
        } else if (!is_last) {
            let_go += " + " + complex (i + 1);
        }
        let_go += " | 1 ;\n";
    }
    out_.statements += let_go;
    for (std::size_t i = 0; i < reactants.size (); ++i)
        out_.statements += (i > 0 ? " + " : "") + sim::quoted (reactants[i]);
    out_.statements += " -> " + complex (1) + " | " + language_number (constant) + " ;\n" + let_go;
    complexes_ += static_cast<int> (back.size ());
    return true;
}

void Rated::multiply (std::string& text, const std::map<std::string, double>& side,
                      const std::vector<std::string>& order) {
    bool first = true;
    for (const std::string& name : order) {
        const double n = side.at (name);
        if (n != std::floor (n)) fail ("a number of molecules is not whole");
        for (int i = 0; i < std::clamp (static_cast<int> (n), 1, 8); ++i) {
            text += (first ? "" : " + ") + sim::quoted (name);
            first = false;
        }
    }
}

RatedText Rated::enzyme (const Rate& rate) {
    double km = 0;
    for (const double k : parts_.km) {
        if (!(k > 0)) fail ("a Km is missing");
        km = km == 0 ? k : std::min (km, k);
    }
    std::vector<std::string> enzymes;
    double kcat = rate.value;
    if (rate.order == 1) {
        for (const std::string& name : parts_.catalysts) {
            if (!parts_.substrates.contains (name)) enzymes.push_back (name);
        }
        if (enzymes.empty ()) fail ("it has a turnover but no enzyme");
    } else {
        double amount = std::max ({least_enzyme, std::min (enzyme_of_km * km, rate.value),
                                   rate.value / fastest_turnover});
        if (each_for_itself ()) amount = amount_of_place (parts_.km.front ());
        kcat = rate.value / amount;
        enzymes.push_back (brought_along ("enzyme " + std::to_string (number_), amount));
    }
    if (each_for_itself ()) {
        independent_substrates (enzymes, kcat);
    } else {
        for (const std::string& enzyme : enzymes) enzyme_statement (enzyme, kcat);
    }
    return std::move (out_);
}

/// A species of the text's own, with its amount in uM; gives its name.
std::string Rated::brought_along (const std::string& name, double amount) {
    out_.concentrations += "[" + sim::quoted (name) + "] = " + language_number (amount) + " uM;\n";
    return name;
}

/// Several substrates, one of each, and nothing else that binds.
bool Rated::each_for_itself () const {
    return parts_.substrates.size () > 1 && parts_.inhibitors.empty () &&
           std::all_of (parts_.substrates.begin (), parts_.substrates.end (),
                        [] (const auto& substrate) { return substrate.second == 1; });
}

/// Binding of a substrate and letting it go: half of the places are filled at Km.
void Rated::binding (const std::string& place, std::size_t substrate, const std::string& bound) {
    const std::string name = sim::quoted (parts_.substrate_order[substrate]);
    out_.statements += sim::quoted (place) + " + " + name + " -> " + sim::quoted (bound) + " | " +
                       language_number (constant_of_meeting (letting_go / parts_.km[substrate])) +
                       " ;\n" + sim::quoted (bound) + " -> " + sim::quoted (place) + " + " + name +
                       " | " + language_number (letting_go / steps_per_second) + " ;\n";
}

/// Places for all substrates but the first, each bound independently of the others. Gives the name
/// of those with all of them.
std::string Rated::filled_places () {
    const std::size_t sites = parts_.km.size () - 1;
    const double km = *std::min_element (parts_.km.begin () + 1, parts_.km.end ());
    const std::string empty =
        brought_along ("places " + std::to_string (number_), amount_of_place (km));
    const auto state = [&] (std::size_t filled) {
        return filled == 0 ? empty : empty + "." + std::to_string (filled);
    };
    const std::size_t all = (std::size_t{1} << sites) - 1;
    for (std::size_t filled = 0; filled < all; ++filled) {
        for (std::size_t i = 0; i < sites; ++i) {
            const std::size_t more = filled | std::size_t{1} << i;
            if (more != filled) binding (state (filled), i + 1, state (more));
        }
    }
    return state (all);
}

/// The law that is a product of saturations, S1 / (K1 + S1) * S2 / (K2 + S2) ...: the enzyme binds
/// the first substrate, places that take no part bind the others, and the reaction is as fast as
/// filled ones meet. An enzyme statement of several substrates has another law, up to twenty times as
/// fast where they are scarce, as its complexes fall apart slowly. Nothing that is bound is used up, so
/// that binding stays in balance: each firing owes its substrates, and free ones pay at once.
void Rated::independent_substrates (const std::vector<std::string>& enzymes, double kcat) {
    std::map<std::string, double> target = parts_.products;
    for (const auto& [name, n] : parts_.substrates) target[name] -= n;
    for (auto& [name, n] : target)
        if (parts_.held.at (name)) n = 0;
    std::map<std::string, double> change;
    for (const auto& [name, n] : target) {
        if (n >= 0) {
            change[name] = n;
            continue;
        }
        const std::string debt = "owed " + std::to_string (number_) + " " + name;
        change[debt] = -n;
        out_.statements += sim::quoted (debt) + " + " + sim::quoted (name) + " -> " +
                           sim::quoted ("gone") + " | " + language_number (paying) + " ;\n";
    }
    const std::string places = filled_places ();
    const double km = *std::min_element (parts_.km.begin () + 1, parts_.km.end ());
    for (const std::string& enzyme : enzymes) {
        const std::string bound = enzyme + " filled " + std::to_string (number_);
        binding (enzyme, 0, bound);
        if (!through_complex ({bound, places}, change,
                              constant_of_meeting (kcat / amount_of_place (km))))
            fail ("a number of molecules is not whole");
    }
}

void Rated::enzyme_statement (const std::string& enzyme, double kcat) {
    std::string& text = out_.statements;
    text += sim::quoted (enzyme) + " : ";
    multiply (text, parts_.substrates, parts_.substrate_order);
    text += " -> ";
    if (parts_.products.empty ()) {
        text += sim::quoted ("gone");
    } else {
        multiply (text, parts_.products, parts_.product_order);
    }
    for (std::size_t i = 0; i < parts_.km.size (); ++i) {
        text += (i == 0 ? " | " : ", ") + language_number (parts_.km[i]) + " uM";
    }
    text += " - " + language_number (kcat) + " ;\n";
    for (const auto& [name, constant] : parts_.inhibitors) {
        const std::optional<double> ki = parse_um (constant);
        if (!ki || !(*ki > 0)) continue;
        text += sim::quoted (enzyme) + " : " + sim::quoted (name) + " | " + language_number (*ki) +
                " uM ;\n";
    }
}

} // namespace

std::optional<Rate> parse_rate (std::string_view text) {
    std::size_t at = 0;
    while (at < text.size () && (is_digit (text[at]) || text[at] == '.' || text[at] == '-' ||
                                 text[at] == '+' || text[at] == 'e')) {
        ++at;
    }
    if (at == 0) return std::nullopt;
    Rate rate;
    rate.value = parse_atof (text.substr (0, at));
    while (at < text.size () && text[at] == ' ') ++at;
    const std::string_view unit = text.substr (at);
    if (unit == "uM/s") {
        rate.order = 0;
    } else if (unit == "/s") {
        rate.order = 1;
    } else if (unit == "/uM/s") {
        rate.order = 2;
    } else if (unit.size () == 6 && unit.starts_with ("/uM") && unit.ends_with ("/s") &&
               unit[3] >= '2' && unit[3] <= '9') {
        rate.order = unit[3] - '0' + 1;
    } else {
        return std::nullopt;
    }
    return rate;
}

bool is_rated (const Arque& reaction) {
    return document::is_reaction (reaction.type ()) &&
           (parse_rate (letters_of (reaction.label ())) ||
            parse_rate (letters_of (reaction.residu ())));
}

bool is_any_rated (const Network& network) {
    return std::any_of (network.nodes ().begin (), network.nodes ().end (), [] (const auto& n) {
        return std::any_of (n->arcs ().begin (), n->arcs ().end (),
                            [] (const auto& a) { return is_rated (*a); });
    });
}

RatedText rated_text (const Network& network, const Arque& reaction, int number) {
    const Parts parts = parts_of (network, reaction);
    Rated rated (parts, number);
    const std::optional<Rate> forward = parse_rate (letters_of (reaction.label ()));
    const std::optional<Rate> second = parse_rate (letters_of (reaction.residu ()));
    if (!forward && second && parse_um (letters_of (reaction.label ()))) {
        return rated.enzyme (*second);
    }
    return rated.mass_action (forward, second);
}

} // namespace ostrand::files
