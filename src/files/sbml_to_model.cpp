// What do the lists of an SBML model say? Species get names, reactions become statements.
#include "files/sbml_to_model.h"

#include "base/disk.h"
#include "base/report.h"
#include "base/text.h"
#include "names/species_names.h"
#include "files/xml_scan.h"
#include "sim/lexer.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace ostrand::files {
namespace {

/// `role` of a modifier.
enum class Role { plain, catalyst, inhibitor };

/// The two terms that our own files use, and those below inhibition in the ontology.
constexpr std::array catalyst_terms{"SBO:0000460"};
constexpr std::array inhibitor_terms{"SBO:0000020", "SBO:0000206", "SBO:0000207",
                                     "SBO:0000536", "SBO:0000537", "SBO:0000596",
                                     "SBO:0000597", "SBO:0000639", "SBO:0000640"};

struct Species {
    std::string id;
    std::string display; // as the file has it
    std::string name;    // as the model text has it
    bool used = false;   // by a reaction
};

struct Reference {
    Species* species = nullptr; // null: unknown, an empty name
    bool is_main = false;
    Role role = Role::plain;
};

struct Reaction {
    std::string id;
    int line = 0;
    std::vector<Reference> reactants;
    std::vector<Reference> products;
    std::vector<Reference> modifiers;
};

class SbmlReader {
  public:
    SbmlReader (std::string_view text, std::string& out) : scanner_ (text), out_ (out) {}

    bool read ();

  private:
    using Element = bool (SbmlReader::*) (const XmlTag&);

    bool fault (int line, const std::string& what);
    bool is (const XmlTag& tag, std::string_view local) const {
        return prefix_of (tag.name) == prefix_ && local_name (tag.name) == local;
    }
    bool skip (const XmlTag& tag);
    bool list (const XmlTag& opened, std::string_view child, Element element);
    bool species (const XmlTag& tag);
    void take_logic (const Species& s, const XmlTag& tag);
    bool reaction (const XmlTag& tag);
    bool references (const XmlTag& opened, std::vector<Reference>& entries);
    bool annotation (const XmlTag& opened);
    Reference reference (const XmlTag& tag);
    void emit (Reaction& r);
    void statement (const std::string& enzyme, const Reaction& r);
    void side (const std::vector<Reference>& entries, const char* nothing);
    void tell_what_is_left_out ();

    XmlScanner scanner_;
    std::string& out_;
    std::string_view prefix_; // of the elements of the core
    std::vector<std::unique_ptr<Species>> all_species_;
    std::map<std::string, Species*, std::less<>> by_id_;
    std::map<std::string, Species*, std::less<>> by_name_;
    names::ModelNames names_;
    std::set<std::string, std::less<>> marked_inhibitors_; // of this reaction, by its annotation
    int without_reactants_ = 0;
    int without_products_ = 0;
};

bool SbmlReader::fault (int line, const std::string& what) {
    report_message ("SBML, line %d: %s.", line, what.c_str ());
    return false;
}

bool SbmlReader::skip (const XmlTag& tag) {
    return scanner_.skip_content (tag) ||
           fault (tag.line, "<" + std::string (tag.name) + "> is not closed");
}

/// The children of a list; notes and annotations may stand among them.
bool SbmlReader::list (const XmlTag& opened, std::string_view child, Element element) {
    if (opened.is_empty) {
        return true;
    }
    for (;;) {
        const XmlTag tag = scanner_.next ();
        if (tag.ends (opened.name)) {
            return true;
        }
        if (tag.kind == XmlTag::Kind::start && is (tag, child)) {
            if (!(this->*element) (tag)) {
                return false;
            }
        } else if (tag.kind == XmlTag::Kind::start &&
                   (is (tag, "notes") || is (tag, "annotation"))) {
            if (!skip (tag)) {
                return false;
            }
        } else if (tag.kind == XmlTag::Kind::none) {
            return fault (opened.line, "<" + std::string (opened.name) + "> is not closed");
        } else {
            return fault (tag.line, std::string (tag.kind == XmlTag::Kind::end ? "</" : "<") +
                                        std::string (tag.name) + "> where <" + std::string (child) +
                                        "> is expected");
        }
    }
}

bool SbmlReader::read () {
    const XmlTag model = scanner_.find ([] (std::string_view name, bool is_end) {
        return !is_end && local_name (name) == "model";
    });
    if (model.kind == XmlTag::Kind::none) {
        return fault (model.line, "no <model> was found");
    }
    prefix_ = prefix_of (model.name);
    if (model.is_empty) {
        return true;
    }
    for (;;) {
        const XmlTag tag = scanner_.next ();
        if (tag.ends (model.name)) {
            break;
        }
        bool good = true;
        if (tag.kind == XmlTag::Kind::none) {
            return fault (model.line, "<" + std::string (model.name) + "> is not closed");
        }
        if (tag.kind == XmlTag::Kind::end) {
            return fault (tag.line, "</" + std::string (tag.name) + "> closes nothing");
        }
        if (is (tag, "listOfCompartments")) {
            good = list (tag, "compartment", &SbmlReader::skip);
        } else if (is (tag, "listOfSpecies")) {
            good = list (tag, "species", &SbmlReader::species);
        } else if (is (tag, "listOfReactions")) {
            good = list (tag, "reaction", &SbmlReader::reaction);
        } else {
            good = skip (tag);
        }
        if (!good) {
            return false;
        }
    }
    tell_what_is_left_out ();
    return true;
}

bool SbmlReader::species (const XmlTag& tag) {
    all_species_.push_back (std::make_unique<Species> ());
    Species& s = *all_species_.back ();
    if (const std::string_view* id = tag.attribute ("id")) {
        s.id = decode_attribute (*id);
    }
    // Level 1 has names only, which are what others refer to.
    const std::string_view* name = tag.attribute ("name");
    std::vector<bool> by_number;
    s.display = name != nullptr ? decode_attribute (*name, &by_number) : s.id;
    if (tag.attribute ("id") == nullptr) {
        s.id = s.display;
    }
    s.name = names_.take (names::model_name (s.display, by_number), s.display, s.id);
    if (!by_id_.try_emplace (s.id, &s).second) {
        report_message ("SBML, line %d: species '%s' stands twice, the first is taken.", tag.line,
                        s.id.c_str ());
    }
    const auto [same, is_new] = by_name_.try_emplace (s.name, &s);
    if (!is_new) {
        report_message (
            "SBML, line %d: species '%s' and '%s' have the same name '%s' and are drawn "
            "as one.",
            tag.line, same->second->id.c_str (), s.id.c_str (), s.display.c_str ());
    }
    if (tag.is_empty) {
        return true;
    }
    const std::string_view end_name = tag.name;
    for (;;) {
        const XmlTag inner = scanner_.find ([end_name] (std::string_view found, bool is_end) {
            return is_end ? found == end_name : found == "lattrix:logic";
        });
        if (inner.kind == XmlTag::Kind::none) {
            return fault (tag.line, "<" + std::string (tag.name) + "> is not closed");
        }
        if (inner.kind == XmlTag::Kind::end) {
            return true;
        }
        take_logic (s, inner);
    }
}

void SbmlReader::take_logic (const Species& s, const XmlTag& tag) {
    const std::string_view* type = tag.attribute ("type");
    if (type == nullptr) {
        return;
    }
    const char* keyword = *type == "EXCESS"   ? "excess"
                          : *type == "INPUT"  ? "input"
                          : *type == "OUTPUT" ? "output"
                                              : nullptr;
    if (keyword == nullptr) {
        return;
    }
    out_ += keyword;
    out_ += " [" + sim::quoted (s.name) + "] ;\n";
}

Reference SbmlReader::reference (const XmlTag& tag) {
    Reference entry;
    const std::string_view* wanted = tag.attribute ("species");
    const std::string id = wanted != nullptr ? decode_attribute (*wanted) : std::string ();
    const auto found = by_id_.find (id);
    if (found != by_id_.end ()) {
        entry.species = found->second;
        entry.species->used = true;
    } else {
        report_message ("SBML, line %d: unknown species '%s'.", tag.line, id.c_str ());
    }
    entry.is_main =
        tag.attribute ("mainsubstract") != nullptr || tag.attribute ("mainproduct") != nullptr;
    if (const std::string_view* term = tag.attribute ("sboTerm")) {
        const auto is_term = [term] (const char* t) { return *term == t; };
        if (std::any_of (catalyst_terms.begin (), catalyst_terms.end (), is_term)) {
            entry.role = Role::catalyst;
        } else if (std::any_of (inhibitor_terms.begin (), inhibitor_terms.end (), is_term)) {
            entry.role = Role::inhibitor;
        }
    }
    return entry;
}

bool SbmlReader::references (const XmlTag& opened, std::vector<Reference>& entries) {
    if (opened.is_empty) {
        return true;
    }
    for (;;) {
        const XmlTag tag = scanner_.next ();
        if (tag.ends (opened.name)) {
            return true;
        }
        if (tag.kind == XmlTag::Kind::none) {
            return fault (opened.line, "<" + std::string (opened.name) + "> is not closed");
        }
        const bool is_start = tag.kind == XmlTag::Kind::start;
        if (is_start && (is (tag, "notes") || is (tag, "annotation"))) {
            if (!skip (tag)) {
                return false;
            }
            continue;
        }
        if (!is_start || (!is (tag, "speciesReference") && !is (tag, "modifierSpeciesReference") &&
                          !is (tag, "specieReference"))) {
            return fault (tag.line, std::string (is_start ? "<" : "</") + std::string (tag.name) +
                                        "> where <speciesReference> is expected");
        }
        if (entries.size () >= most_references) {
            return fault (tag.line, format_text ("too many entries of <%s> (max = %d)",
                                                 std::string (opened.name).c_str (),
                                                 static_cast<int> (most_references)));
        }
        entries.push_back (reference (tag));
        if (!skip (tag)) {
            return false;
        }
    }
}

/// Some tools tell the role of a modifier in an annotation of the reaction only.
bool SbmlReader::annotation (const XmlTag& opened) {
    if (opened.is_empty) {
        return true;
    }
    const std::string_view end_name = opened.name;
    for (;;) {
        const XmlTag tag = scanner_.find ([end_name] (std::string_view found, bool is_end) {
            return is_end ? found == end_name : found == "celldesigner:modification";
        });
        if (tag.kind == XmlTag::Kind::none) {
            return fault (opened.line, "<" + std::string (opened.name) + "> is not closed");
        }
        if (tag.kind == XmlTag::Kind::end) {
            return true;
        }
        const std::string_view* type = tag.attribute ("type");
        const std::string_view* modifiers = tag.attribute ("modifiers");
        if (type != nullptr && modifiers != nullptr && type->ends_with ("INHIBITION")) {
            for (const std::string& id : split_fields (std::string (*modifiers), ',')) {
                marked_inhibitors_.insert (id);
            }
        }
    }
}

bool SbmlReader::reaction (const XmlTag& opened) {
    Reaction r;
    r.line = opened.line;
    if (const std::string_view* id = opened.attribute ("id")) {
        r.id = decode_attribute (*id);
    }
    marked_inhibitors_.clear ();
    while (!opened.is_empty) {
        const XmlTag tag = scanner_.next ();
        if (tag.ends (opened.name)) {
            break;
        }
        if (tag.kind == XmlTag::Kind::none) {
            return fault (opened.line, "<" + std::string (opened.name) + "> is not closed");
        }
        if (tag.kind == XmlTag::Kind::end) {
            return fault (tag.line, "</" + std::string (tag.name) + "> where </" +
                                        std::string (opened.name) + "> is expected");
        }
        bool good = true;
        if (is (tag, "listOfReactants")) {
            good = references (tag, r.reactants);
        } else if (is (tag, "listOfProducts")) {
            good = references (tag, r.products);
        } else if (is (tag, "listOfModifiers")) {
            good = references (tag, r.modifiers);
        } else if (is (tag, "annotation")) {
            good = annotation (tag);
        } else {
            good = skip (tag);
        }
        if (!good) {
            return false;
        }
    }
    emit (r);
    return true;
}

/// The main species comes first.
void put_main_first (std::vector<Reference>& entries) {
    if (entries.empty () || entries.front ().is_main) {
        return;
    }
    const auto main = std::find_if (entries.begin (), entries.end (),
                                    [] (const Reference& entry) { return entry.is_main; });
    if (main != entries.end ()) {
        std::swap (*main, entries.front ());
    }
}

std::string quoted (const Reference& entry) {
    return sim::quoted (entry.species != nullptr ? entry.species->name : std::string ());
}

void SbmlReader::side (const std::vector<Reference>& entries, const char* nothing) {
    if (entries.empty ()) {
        out_ += '"' + std::string (nothing) + '"';
    }
    for (std::size_t i = 0; i < entries.size (); ++i) {
        if (i > 0) {
            out_ += " + ";
        }
        out_ += quoted (entries[i]);
    }
}

void SbmlReader::statement (const std::string& enzyme, const Reaction& r) {
    out_ += enzyme + " : ";
    side (r.reactants, no_substrate_name);
    out_ += " -> ";
    side (r.products, no_product_name);
    out_ += " ;\n";
}

void SbmlReader::emit (Reaction& r) {
    if (r.reactants.empty () && r.products.empty ()) {
        report_message (
            "SBML, line %d: reaction '%s' has neither reactants nor products and is left "
            "out.",
            r.line, r.id.c_str ());
        return;
    }
    without_reactants_ += r.reactants.empty () ? 1 : 0;
    without_products_ += r.products.empty () ? 1 : 0;
    put_main_first (r.reactants);
    put_main_first (r.products);
    bool has_enzyme = r.modifiers.empty ();
    for (Reference& m : r.modifiers) {
        if (m.role == Role::plain && m.species != nullptr &&
            marked_inhibitors_.count (m.species->id) > 0) {
            m.role = Role::inhibitor;
        }
        has_enzyme = has_enzyme || m.role != Role::inhibitor;
    }
    if (!has_enzyme) {
        report_message (
            "SBML, line %d: reaction '%s' has inhibitors but no enzyme and is left out.", r.line,
            r.id.c_str ());
    }
    if (r.modifiers.empty ()) {
        statement ('"' + std::string (no_enzyme_name) + '"', r);
    }
    for (const Reference& m : r.modifiers) {
        if (m.role != Role::inhibitor) {
            statement (quoted (m), r);
            continue;
        }
        for (const Reference& enzyme : r.modifiers) {
            if (enzyme.role == Role::inhibitor) {
                continue;
            }
            out_ += quoted (enzyme) + " : " + quoted (m) + " ;\n";
        }
    }
}

void SbmlReader::tell_what_is_left_out () {
    if (without_reactants_ > 0) {
        report_message ("SBML: %d reactions without reactants start from '%s'.", without_reactants_,
                        no_substrate_name);
    }
    if (without_products_ > 0) {
        report_message ("SBML: %d reactions without products end on '%s'.", without_products_,
                        no_product_name);
    }
    std::string unused;
    int count = 0;
    for (const auto& s : all_species_) {
        if (s->used) {
            continue;
        }
        ++count;
        unused += (count > 1 ? ", '" : "'") + s->display + "'";
    }
    if (count > 0) {
        report_message ("SBML: %d species take part in no reaction and are not drawn: %s.", count,
                        unused.c_str ());
    }
}

} // namespace

bool sbml_to_model (std::string_view sbml_text, std::string& out) {
    out.clear ();
    if (sbml_text.starts_with ("\xFF\xFE") || sbml_text.starts_with ("\xFE\xFF")) {
        report_message ("SBML, line 1: the text is UTF-16, UTF-8 is expected.");
        return false;
    }
    return SbmlReader (sbml_text, out).read ();
}

bool sbml_file_to_model (const std::filesystem::path& path, std::string& out) {
    const std::optional<std::string> text = read_text_file (path);
    return text && sbml_to_model (*text, out);
}

} // namespace ostrand::files
