// What does a gate file say, and which species does each gate claim?
#include "base/report.h"
#include "base/text.h"
#include "formula/library.h"

#include <algorithm>
#include <utility>

namespace ostrand::formula {
namespace {

/// The fields of one line, taken in order; behind the last one each is empty.
class Fields {
  public:
    explicit Fields (std::string_view line) : fields_ (split_fields (line)) {}

    std::string next () {
        return next_ < fields_.size () ? std::move (fields_[next_++]) : std::string ();
    }
    void skip (std::size_t count = 1) { next_ += count; }
    bool at_end () const { return next_ >= fields_.size (); }
    /// A count field.
    int count () { return parse_atoi (next ()); }
    /// A count and as many names, as far as the line goes.
    std::vector<std::string> names () {
        std::vector<std::string> all;
        for (int left = count (); left > 0 && !at_end (); --left) all.push_back (next ());
        return all;
    }

  private:
    std::vector<std::string> fields_;
    std::size_t next_ = 0;
};

void read_side (Fields& fields, std::vector<std::string>& names,
                std::map<std::string, std::string>& coefficients) {
    for (int left = fields.count (); left > 0 && !fields.at_end (); --left) {
        names.push_back (fields.next ());
        coefficients[names.back ()] = fields.next ();
    }
}

std::unique_ptr<LibReaction> read_reaction (Fields& fields) {
    auto reaction = std::make_unique<LibReaction> ();
    fields.skip (); // REACBEGIN
    reaction->id = fields.next ();
    reaction->reversible = fields.count () != 0;
    reaction->kinetics = fields.next ();
    fields.skip (); // SUBS
    read_side (fields, reaction->substrates, reaction->substrate_coefficients);
    fields.skip (); // PROD
    read_side (fields, reaction->products, reaction->product_coefficients);
    fields.skip (); // ENZY
    reaction->enzymes = fields.names ();
    fields.skip (); // INHI
    reaction->inhibitors = fields.names ();
    fields.skip (); // REACEND
    return reaction;
}

std::set<std::string> as_set (std::vector<std::string> names) {
    return {std::make_move_iterator (names.begin ()), std::make_move_iterator (names.end ())};
}

} // namespace

bool Lib_v1::load (const std::string& base) {
    Input file;
    if (load (base, {}, file)) return true;
    if (!file.fault.empty ()) report_message ("%s", file.fault.c_str ());
    return false;
}

bool Lib_v1::load (const std::string& base, const std::stop_token& stop, Input& file) {
    file = read_input (base + "_gates.csv", {.text_mode = true, .stop = stop});
    if (file.whole ()) {
        read (file.bytes, stop);
    } else if (file.end == ReadEnd::not_opened || file.end == ReadEnd::failed) {
        write_standard_output ("CSVReader: Impossible d'ouvrir le fichier en lecture.\n");
    }
    return file.whole ();
}

void Lib_v1::read (std::string_view text, const std::stop_token& stop) {
    while (!text.empty () && !stop.stop_requested ()) {
        const std::size_t end = text.find ('\n');
        const std::string_view line = text.substr (0, end);
        text.remove_prefix (end == std::string_view::npos ? text.size () : end + 1);
        if (line.find ("metabolism") != std::string_view::npos) {
            const auto fields = split_fields (line);
            metabolism_ = fields.size () > 1 ? fields[1] : std::string ();
        }
        if (line.find ("E/S") != std::string_view::npos) read_gate (line);
    }
    // One species can feed two places of a circuit.
    for (const std::string& name : species_) {
        if (stop.stop_requested ()) return;
        auto gate = std::make_unique<LibGate> ();
        gate->inputs = {name};
        gate->output = name;
        gate->type = "OR";
        gate->text = "DEMUTIPLICATOR " + name;
        gate->metabolism = metabolism_;
        claim_species (*gate, {});
        add_gate (std::move (gate));
    }
}

void Lib_v1::read_gate (std::string_view line) {
    Fields fields (line);
    auto gate = std::make_unique<LibGate> ();
    gate->text = line;
    gate->metabolism = metabolism_;
    fields.skip (); // E/S
    gate->inputs = fields.names ();
    fields.skip (); // number of outputs, always 1
    gate->output = fields.next ();
    gate->type = fields.next ();
    fields.skip (); // ENZ
    gate->enzymes = fields.names ();
    fields.skip (); // ELNEC
    gate->needed = as_set (fields.names ());
    fields.skip (); // ELABS
    gate->absent = as_set (fields.names ());
    fields.skip (); // REACTIONS
    std::vector<std::unique_ptr<LibReaction>> read;
    for (int left = fields.count (); left > 0 && !fields.at_end (); --left) {
        read.push_back (read_reaction (fields));
    }
    claim_species (*gate, read);
    for (auto& reaction : read) {
        if (gate->reactions.insert (reaction.get ()).second) {
            reactions_.push_back (std::move (reaction));
        }
    }
    file (std::move (gate));
}

void claim_species (LibGate& gate, std::span<const std::unique_ptr<LibReaction>> reactions) {
    std::map<std::string, int> reversible; // how often each occurs
    std::set<std::string> substrates;
    std::set<std::string> products;
    std::set<std::string> inhibitors;
    for (const auto& reaction : reactions) {
        if (reaction->reversible) {
            for (const std::string& name : reaction->substrates) ++reversible[name];
            for (const std::string& name : reaction->products) ++reversible[name];
        } else {
            substrates.insert (reaction->substrates.begin (), reaction->substrates.end ());
            products.insert (reaction->products.begin (), reaction->products.end ());
        }
        inhibitors.insert (reaction->inhibitors.begin (), reaction->inhibitors.end ());
        gate.reaction_enzymes.insert (reaction->enzymes.begin (), reaction->enzymes.end ());
    }
    std::set<std::string>& owned = gate.owned;
    // What an inhibitor acts on is the gate's own too.
    if (!inhibitors.empty ()) {
        owned.insert (gate.reaction_enzymes.begin (), gate.reaction_enzymes.end ());
    }
    for (const std::string& input : gate.inputs) {
        substrates.erase (input);
        inhibitors.erase (input);
        reversible.erase (input);
        owned.insert (input);
    }
    products.erase (gate.output);
    inhibitors.erase (gate.output);
    reversible.erase (gate.output);
    // What the gate both makes and uses is its own.
    for (const std::string& name : substrates) {
        if (products.contains (name) || reversible.contains (name)) owned.insert (name);
    }
    for (const std::string& name : products) {
        if (substrates.contains (name) || reversible.contains (name)) owned.insert (name);
    }
    for (const auto& [name, count] : reversible) {
        if (count > 1) owned.insert (name);
    }
    owned.insert (inhibitors.begin (), inhibitors.end ());
    const auto share = [&] (const std::string& name) {
        if (!owned.contains (name)) gate.shared.insert (name);
    };
    for (const std::string& name : substrates) share (name);
    for (const auto& [name, count] : reversible) share (name);
    for (const std::string& name : products) share (name);
}

} // namespace ostrand::formula
