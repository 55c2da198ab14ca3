// Writing and reading the reaction table.
#include "gates/reaction_table.h"

#include "base/text.h"
#include "gates/text_lines.h"

#include <memory>
#include <random>

namespace ostrand::gates {
namespace {

/// Substrates, and products, that a line has room for.
constexpr std::size_t slots = 4;
/// First fields of the parts of a line.
constexpr std::int64_t substrate_count_field = 3;
constexpr std::int64_t product_count_field = 12;
constexpr std::int64_t inhibitor_count_field = 21;

std::string substrate_coefficient (const RandomNumbers& random) {
    const float tenths = static_cast<float> (random () % 500 + 1);
    return format_g (static_cast<double> (tenths / 10.0F)) + " mM";
}

std::string product_coefficient (const RandomNumbers& random) {
    return std::to_string (random () % 350 + 50);
}

void append_slots (std::string& line, const std::vector<std::string>& names,
                   const std::function<std::string ()>& coefficient) {
    line += std::to_string (names.size ()) + ";";
    for (std::size_t i = 0; i < slots; ++i) {
        if (i < names.size ()) {
            line += names[i] + ";" + coefficient () + ";";
        } else {
            line += ";;";
        }
    }
}

std::string reaction_line (const Reaction& reaction, const RandomNumbers& random) {
    std::string line = "REACBEGIN;";
    line += reaction.reversible ? "1;" : "0;";
    line += "RANDOM_SEQ;";
    append_slots (line, reaction.substrates, [&] { return substrate_coefficient (random); });
    if (reaction.products.size () > reaction.substrates.size ()) {
        // More products than substrates: they share one value.
        const std::string shared = product_coefficient (random);
        append_slots (line, reaction.products,
                      [&shared] () -> const std::string& { return shared; });
    } else {
        append_slots (line, reaction.products, [&] { return product_coefficient (random); });
    }
    line += std::to_string (reaction.inhibitors.size ()) + ";";
    for (const std::string& name : reaction.inhibitors) line += name + ";";
    for (const std::string& name : reaction.enzymes) line += name + ";";
    return line + "\n";
}

/// The fields of a line with safe access.
class Fields {
  public:
    explicit Fields (std::string_view line) : fields_ (split_fields (line)) {}
    bool exists (std::int64_t index) const {
        return index >= 0 && index < static_cast<std::int64_t> (fields_.size ());
    }
    std::string text (std::int64_t index) const {
        return exists (index) ? fields_[static_cast<std::size_t> (index)] : std::string ();
    }
    std::int64_t number (std::int64_t index) const { return parse_atoi (text (index)); }

    /// Names and coefficients in pairs behind a count.
    void read_side (std::int64_t count_field, std::vector<std::string>& names,
                    Reaction& reaction) const {
        const std::int64_t count = number (count_field);
        for (std::int64_t k = 0; k < count; ++k) {
            const std::int64_t field = count_field + 1 + 2 * k;
            if (!exists (field)) return;
            names.push_back (text (field));
            reaction.coefficients[names.back ()] = text (field + 1);
        }
    }

  private:
    std::vector<std::string> fields_;
};

} // namespace

RandomNumbers seeded_numbers (unsigned seed) {
    auto engine = std::make_shared<std::mt19937> (seed);
    return [engine] { return static_cast<int> ((*engine) () >> 1); };
}

std::string reaction_table_text (const std::string& model_path,
                                 const std::vector<Reaction>& reactions,
                                 const RandomNumbers& random) {
    std::string text = "LEGEND;Reseau Metabolique;" + model_path + "\n";
    text += "LEGEND;Reversibilite;TypeCinetique;Nb Substrats;";
    for (std::size_t i = 1; i <= slots; ++i) {
        text += format_text ("Substrat %zu;Coef Cinetique %zu;", i, i);
    }
    text += "Nb Produits;";
    for (std::size_t i = 1; i <= slots; ++i) {
        text += format_text ("Produit %zu;Coef Cinetique %zu;", i, i);
    }
    text += "Nb Inhibiteurs;\n";
    for (const Reaction& reaction : reactions) {
        if (!reaction.enzymes.empty ()) text += reaction_line (reaction, random);
    }
    return text;
}

std::vector<Reaction> read_reaction_table (std::string_view text, const std::stop_token& stop) {
    std::vector<Reaction> reactions;
    TextLines lines (text, stop);
    while (lines.next ()) {
        if (!has (lines.line (), "REACBEGIN")) continue;
        const Fields fields (lines.line ());
        Reaction reaction;
        reaction.reversible = fields.number (1) != 0;
        reaction.kinetic_type = fields.text (2);
        fields.read_side (substrate_count_field, reaction.substrates, reaction);
        fields.read_side (product_count_field, reaction.products, reaction);
        const std::int64_t inhibitors = fields.number (inhibitor_count_field);
        const std::int64_t first = inhibitor_count_field + 1;
        for (std::int64_t k = 0; k < inhibitors && fields.exists (first + k); ++k) {
            reaction.inhibitors.push_back (fields.text (first + k));
        }
        if (!fields.exists (first + inhibitors)) continue;
        reaction.enzymes.push_back (fields.text (first + inhibitors));
        reactions.push_back (std::move (reaction));
    }
    return reactions;
}

std::vector<Reaction> CSVCineticReader (const TextFile& file, const std::stop_token& stop) {
    if (!file.text) {
        write_standard_output ("CSVCineticReader: Impossible d'ouvrir le fichier en lecture.\n");
        return {};
    }
    return read_reaction_table (*file.text, stop);
}

} // namespace ostrand::gates
