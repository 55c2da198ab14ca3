// The line scan of a model.
#include "gates/sbml_reader.h"

#include "base/disk.h"
#include "gates/text_lines.h"

#include <array>
#include <optional>

namespace ostrand::gates {
namespace {

/// An element whose raw lines are kept, from its opening tag to its closing one.
struct Kept {
    std::string_view open;
    std::string_view close;
    std::vector<std::string> RawElements::*list;
};
constexpr std::array kept_elements{
    Kept{"<species ", "</species>", &RawElements::species},
    Kept{"<celldesigner:protein ", "</celldesigner:protein>", &RawElements::proteins},
    Kept{"<compartment ", "</compartment>", &RawElements::compartments},
    Kept{"<celldesigner:speciesAlias ", "</celldesigner:speciesAlias>",
         &RawElements::species_aliases},
    Kept{"<celldesigner:compartmentAlias ", "</celldesigner:compartmentAlias>",
         &RawElements::compartment_aliases}};

/// The raw lines of one element while it is open.
class RawRecorder {
  public:
    RawRecorder (std::string_view open, std::string_view close) : open_ (open), close_ (close) {}

    /// Takes a line. Gives the whole text when the element ends in it: at its closing tag, or in
    /// the line that opens it when it closes itself there.
    std::optional<std::string> take (std::string_view line) {
        const std::size_t at = line.find (open_);
        if (at != std::string_view::npos) {
            lines_.clear ();
            recording_ = true;
        }
        if (!recording_) return std::nullopt;
        lines_.append (line).append ("\n");
        const std::size_t end = at == std::string_view::npos ? at : line.find ('>', at);
        const bool closes_itself = end != std::string_view::npos && line[end - 1] == '/';
        if (!closes_itself && !has (line, close_)) return std::nullopt;
        recording_ = false;
        return lines_;
    }

  private:
    std::string_view open_;
    std::string_view close_;
    std::string lines_;
    bool recording_ = false;
};

class Reader {
  public:
    SbmlModel read (std::string_view text, const std::stop_token& stop) {
        for (const Kept& kept : kept_elements) recorders_.emplace_back (kept.open, kept.close);
        TextLines lines (text, stop);
        while (lines.next ()) {
            scan (lines.line ());
            record_raw (lines.line ());
        }
        model_.line_count = lines.count ();
        int number = 0;
        for (auto& [name, index] : model_.elements) index = number++;
        return std::move (model_);
    }

  private:
    void scan (std::string_view line) {
        if (has (line, "<species ")) scan_species (line);
        if (has (line, "<reaction ")) {
            current_.emplace ();
            current_->id = attribute (line, "id");
            current_->reversible = reversible_attribute (line);
        }
        if (has (line, "</reaction")) {
            if (current_) model_.reactions.push_back (std::move (*current_));
            current_.reset ();
        }
        scan_lists (line);
        if (has (line, "<celldesigner:modelDisplay")) {
            model_.raw.size_x = attribute (line, "sizeX");
            model_.raw.size_y = attribute (line, "sizeY");
        }
        if (has (line, "<speciesReference ")) scan_reference (line);
        if (has (line, "<modifierSpeciesReference")) scan_modifier (line);
        if (has (line, "<celldesigner:modification")) {
            types_[std::string (attribute (line, "modifiers"))] = attribute (line, "type");
        }
    }

    void scan_species (std::string_view line) {
        const std::string id (attribute (line, "id"));
        std::string name (attribute (line, "name"));
        if (name.empty ()) name = id;
        names_[id] = name;
        model_.species.emplace_back (id, std::move (name));
    }

    void scan_lists (std::string_view line) {
        if (has (line, "<listOfReactants>") || has (line, "<listOfProducts>")) list_.clear ();
        if (has (line, "</listOfReactants>")) close_list (&Reaction::substrates);
        if (has (line, "</listOfProducts>")) close_list (&Reaction::products);
    }

    void close_list (std::vector<std::string> Reaction::*side) {
        if (!current_) return;
        for (const std::string& name : list_) {
            model_.elements.try_emplace (name);
            ((*current_).*side).push_back (name);
        }
    }

    void scan_reference (std::string_view line) {
        const std::string name = name_of (attribute (line, "species"));
        if (!current_ || name.empty ()) return;
        if (has (line, "sboTerm=")) {
            const std::string_view term = attribute (line, "sboTerm");
            if (term == "SBO:0000460") current_->enzymes.push_back (name);
            if (term == "SBO:0000020") add_inhibitor (name);
        }
        list_.push_back (name);
    }

    void scan_modifier (std::string_view line) {
        const std::string_view id = attribute (line, "species");
        const std::string name = name_of (id);
        const auto type = types_.find (id);
        if (!current_ || name.empty () || type == types_.end ()) return;
        if (type->second == "CATALYSIS") current_->enzymes.push_back (name);
        if (type->second == "INHIBITION") add_inhibitor (name);
    }

    void add_inhibitor (const std::string& name) {
        current_->inhibitors.push_back (name);
        model_.elements.try_emplace (name);
    }

    std::string name_of (std::string_view id) const {
        const auto found = names_.find (id);
        return found == names_.end () ? std::string (id) : found->second;
    }

    void record_raw (std::string_view line) {
        for (std::size_t i = 0; i < kept_elements.size (); ++i) {
            if (auto text = recorders_[i].take (line)) {
                (model_.raw.*kept_elements[i].list).push_back (std::move (*text));
            }
        }
        if (has (line, "<reaction ")) reaction_id_ = attribute (line, "id");
        if (auto text = reaction_.take (line)) {
            model_.raw.reactions.emplace_back (reaction_id_, std::move (*text));
        }
    }

    SbmlModel model_;
    std::map<std::string, std::string, std::less<>> names_; // by species id
    std::map<std::string, std::string, std::less<>> types_; // modification type by species id
    std::vector<std::string> list_;                         // names of the open list of references
    std::optional<Reaction> current_;
    std::vector<RawRecorder> recorders_;
    RawRecorder reaction_{"<reaction ", "</reaction>"};
    std::string reaction_id_;
};

} // namespace

SbmlModel read_sbml_lines (std::string_view text, const std::stop_token& stop) {
    SbmlModel model = Reader ().read (text, stop);
    model.opened = true;
    return model;
}

SbmlModel sbmlReader (const TextFile& file, const std::stop_token& stop) {
    if (!file.text) {
        write_standard_output ("sbmlReader: Impossible d'ouvrir le fichier en lecture.\n");
        return {};
    }
    return read_sbml_lines (*file.text, stop);
}

} // namespace ostrand::gates
