// How do placed reactions stand in native text?
#include "base/report.h"
#include "base/text.h"
#include "files/import_steps.h"
#include "names/name_markup.h"

#include <algorithm>
#include <tuple>

namespace ostrand::files {
namespace {

constexpr std::size_t least_room = 2048; // that must be left before a reaction is written
constexpr const char* enzyme_colour = "247";
constexpr int main_type = 13;  // molecule
constexpr int enzyme_type = 9; // protein
constexpr int arc_reaction = 272;
constexpr int arc_catalysis = 32;
constexpr int arc_inhibition = 48;
constexpr int arc_substrate = 512;
constexpr int arc_product = 1025;
constexpr int inhibition_colour = 89;

const char* role_colour (SpeciesRole role) {
    switch (role) {
    case SpeciesRole::input: return "#7fffbf";
    case SpeciesRole::output: return "#ffb67f";
    case SpeciesRole::excess: return "#bf91bf";
    case SpeciesRole::neither: return "#ffff00";
    }
    return "#ffff00";
}

/// A concentration or constant given in mM.
std::string quantity_text (float millimolar) {
    if (millimolar >= 1.0F) {
        return format_g (millimolar) + " mM";
    }
    return format_g (millimolar * 1000.0F) + " uM";
}

/// What stands in a text field of an arc: small letters in blue.
std::string field_text (const std::string& text) { return "<66F><4C>" + text + "<67F><0C>"; }

std::string constant_text (float millimolar) {
    return millimolar > 0 ? field_text (quantity_text (millimolar)) : std::string ();
}

std::string rate_text (float rate) {
    return rate > 0 ? field_text (format_g (rate)) : std::string ();
}

std::string concentration_text (const ImportSpecies& species) {
    // A list ends at its first 0.
    const std::size_t count = static_cast<std::size_t> (
        std::find (species.conc.begin (), species.conc.end (), 0.0F) - species.conc.begin ());
    const std::vector<float>& c = species.conc;
    if (count == 0) {
        return quantity_text (0);
    }
    std::string out = quantity_text (c[0]);
    if (count == 1) {
        return out;
    }
    const float step = c[1] - c[0];
    bool is_series = count >= 3 && step != 0; // downwards too, with a negative step
    for (std::size_t i = 2; i < count && is_series; ++i) {
        is_series = c[i] - c[i - 1] == step;
    }
    if (is_series) {
        return out + " -> " + quantity_text (c[count - 1]) + " : " + quantity_text (step);
    }
    for (std::size_t i = 1; i < count; ++i) {
        out += ", " + quantity_text (c[i]);
    }
    return out;
}

class ReactionWriter {
  public:
    ReactionWriter (ImportTables& tables, std::string& out) : tables_ (tables), out_ (out) {}

    void write (const ImportReaction& r, std::string& written);

  private:
    void species (int id, int first_field, long long x, long long y, const char* colour, int type,
                  const ImportSpecies& s);
    void molecule (int id, int first_field, long long x, long long y, const ImportSpecies& s) {
        species (id, first_field, x, y, role_colour (s.role), main_type, s);
    }
    int arc (int colour, int type, int from, int to, const std::string& first,
             const std::string& second = {});
    void main_species (int id, int first_field, long long x, long long y, const ImportSpecies& s,
                       std::string& written);

    ImportTables& tables_;
    std::string& out_;
};

void ReactionWriter::species (int id, int first_field, long long x, long long y, const char* colour,
                              int type, const ImportSpecies& s) {
    out_ += format_text ("[S%u %d %lld %lld 0 %s %d{", static_cast<unsigned> (id), first_field, x,
                         y, colour, type);
    out_ += names::name_markup (s.name);
    out_ += s.displayed ? "}-%" : "}-";
    out_ += concentration_text (s);
    out_ += "]\n";
    ++tables_.species_records;
}

int ReactionWriter::arc (int colour, int type, int from, int to, const std::string& first,
                         const std::string& second) {
    const int id = ++tables_.last_node;
    out_ += format_text ("[A%u %d %d 2 %d %d{", static_cast<unsigned> (id), colour, type, from, to);
    out_ += first + "}{" + second + "}{}{}]\n";
    return id;
}

void ReactionWriter::main_species (int id, int first_field, long long x, long long y,
                                   const ImportSpecies& s, std::string& written) {
    const std::size_t place = static_cast<std::size_t> (id);
    if (written.size () <= place) {
        written.resize (place + 1, '\0');
    }
    if (written[place] != '\0') {
        return;
    }
    written[place] = 1;
    molecule (id, first_field, x, y, s);
}

void ReactionWriter::write (const ImportReaction& r, std::string& written) {
    const long long shift = tables_.min_x - 60; // the leftmost point lands at 60
    const long long x1 = r.x1 - shift;
    const long long x2 = r.x2 - shift;
    const long long y1 = r.y1;
    const long long y2 = r.y2;
    const long long mx = (x1 + x2) / 2;
    const long long my = (y1 + y2) / 2;
    const SideOffsets& o = side_offsets (r.direction);

    main_species (r.substrate_id, 1, x1, y1, *r.substrate (), written);
    main_species (r.product_id, 0, x2, y2, *r.product (), written);
    const int enzyme = ++tables_.last_node;
    species (enzyme, 1, mx + o.enzyme.x, my + o.enzyme.y, enzyme_colour, enzyme_type, *r.enzyme);
    const std::string km = r.km.empty () ? std::string () : constant_text (r.km[0]);
    const int reaction =
        arc (0, arc_reaction, r.substrate_id, r.product_id, km, rate_text (r.kcat));
    arc (0, arc_catalysis, enzyme, reaction, {});
    for (std::size_t k = 0; k < r.inhibitors.size (); ++k) {
        const int id = ++tables_.last_node;
        molecule (id, 1, mx - o.enzyme.x, my - o.enzyme.y, *r.inhibitors[k]);
        arc (inhibition_colour, arc_inhibition, id, enzyme, constant_text (r.inhibitor_rate[k]));
    }
    for (std::size_t k = 1; k < r.substrates.size (); ++k) {
        const int id = ++tables_.last_node;
        const int n = static_cast<int> (k);
        molecule (id, 1, x1 + o.substrate.x, y1 + o.substrate.y * n, *r.substrates[k]);
        arc (0, arc_substrate, id, reaction,
             k < r.km.size () ? constant_text (r.km[k]) : std::string ());
    }
    for (std::size_t k = 1; k < r.products.size (); ++k) {
        const int id = ++tables_.last_node;
        const int n = static_cast<int> (k);
        molecule (id, 1, x2 + o.product.x, y2 + o.product.y * n, *r.products[k]);
        arc (0, arc_product, id, reaction, {});
    }
}

} // namespace

void write_reaction (ImportTables& tables, const ImportReaction& r, std::string& written,
                     std::string& out) {
    ReactionWriter (tables, out).write (r, written);
}

bool place_and_write (ImportTables& tables, std::string& out, std::size_t most) {
    place_reactions (tables);
    std::vector<ImportReaction*>& list = tables.reactions;
    std::sort (list.begin (), list.end (), [] (const ImportReaction* a, const ImportReaction* b) {
        return std::tuple (a->component, a->index) < std::tuple (b->component, b->index);
    });
    std::string body;
    std::string written;
    int component = -1;
    for (const ImportReaction* r : list) {
        if (tables.is_virtual (*r)) {
            continue;
        }
        if (most < body.size () + least_room) {
            report_message ("Internal buffer overload");
            return false;
        }
        if (r->component != component) {
            component = r->component;
            written.clear ();
        }
        write_reaction (tables, *r, written, body);
    }
    out = format_text ("# Lattrix: %s\n[N%d 0 2 10 10\n", format_g (1.2).c_str (),
                       tables.species_records);
    out += body;
    out += "]\n";
    return true;
}

} // namespace ostrand::files
