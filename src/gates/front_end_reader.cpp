// The front end's own line scan of a model.
#include "gates/front_end.h"
#include "gates/text_lines.h"

#include <map>
#include <optional>

namespace ostrand::gates {
namespace {

class Reader {
  public:
    std::vector<Reaction> read (std::string_view text, const std::stop_token& stop) {
        TextLines lines (text, stop);
        while (lines.next ()) scan (lines.line ());
        return std::move (reactions_);
    }

  private:
    enum class Section { none, reactants, products, modifiers };
    struct Reference {
        std::string id;
        std::string term; // its sboTerm, empty when it has none
        bool modifier;    // its role comes from a modification line
    };

    void scan (std::string_view line) {
        if (has (line, "<species ")) {
            const std::string id (attribute (line, "id"));
            const std::string_view name = attribute (line, "name");
            names_[id] = name.empty () ? id : std::string (name);
        }
        if (has (line, "<reaction ")) {
            current_.emplace ();
            current_->id = attribute (line, "id");
            current_->reversible = reversible_attribute (line);
        }
        if (has (line, "</reaction")) {
            if (current_) reactions_.push_back (std::move (*current_));
            current_.reset ();
        }
        if (has (line, "<listOfReactants>")) open (Section::reactants);
        if (has (line, "</listOfReactants>")) close (Section::reactants);
        if (has (line, "<listOfProducts>")) open (Section::products);
        if (has (line, "</listOfProducts>")) close (Section::products);
        if (has (line, "<listOfModifiers>")) open (Section::modifiers);
        if (has (line, "</listOfModifiers>")) close (Section::modifiers);
        if (has (line, "<speciesReference ") && section_ != Section::none) {
            add_reference (line, false);
        }
        if (has (line, "<modifierSpeciesReference") && section_ == Section::modifiers) {
            add_reference (line, true);
        }
        if (has (line, "<celldesigner:modification")) {
            types_[std::string (attribute (line, "modifiers"))] = attribute (line, "type");
        }
    }

    void open (Section section) {
        section_ = section;
        references_.clear ();
    }

    void add_reference (std::string_view line, bool modifier) {
        const std::string_view id = attribute (line, "species");
        if (id.empty ()) return;
        const bool has_term = !modifier && has (line, "sboTerm=");
        references_.push_back (
            {std::string (id),
             std::string (has_term ? attribute (line, "sboTerm") : std::string_view ()), modifier});
    }

    void close (Section section) {
        if (section_ == section && current_) {
            for (const Reference& reference : references_) settle (reference);
        }
        section_ = Section::none;
        references_.clear ();
    }

    void settle (const Reference& reference) {
        const auto found = names_.find (reference.id);
        const std::string name = found == names_.end () ? reference.id : found->second;
        std::string_view role = reference.term;
        if (reference.modifier) {
            const auto type = types_.find (reference.id);
            if (type != types_.end ()) role = type->second;
        }
        if (role == (reference.modifier ? "CATALYSIS" : "SBO:0000460")) {
            current_->enzymes.push_back (name);
        }
        if (role == (reference.modifier ? "INHIBITION" : "SBO:0000020")) {
            current_->inhibitors.push_back (name);
        }
        if (section_ == Section::reactants) current_->substrates.push_back (name);
        if (section_ == Section::products) current_->products.push_back (name);
    }

    std::vector<Reaction> reactions_;
    std::map<std::string, std::string, std::less<>> names_; // by species id
    std::map<std::string, std::string, std::less<>> types_; // modification type by species id
    std::optional<Reaction> current_;
    Section section_ = Section::none;
    std::vector<Reference> references_; // of the open section
};

} // namespace

std::vector<Reaction> read_front_end_reactions (std::string_view text,
                                                const std::stop_token& stop) {
    return Reader ().read (text, stop);
}

} // namespace ostrand::gates
