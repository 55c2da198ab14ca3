// What an editor asks of gate extraction: the metabolites of a model, whether its gates on disk are
// still good, and the extraction itself.
// Layer: gates.
#pragma once
#include "base/disk.h"
#include "gates/gate_extractor.h"
#include "gates/reaction.h"
#include "gates/reaction_table.h"

#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::gates {

/// A metabolite of a reaction that has an enzyme.
struct Metabolite {
    std::string name;
    bool can_be_input = false;  // a substrate, or either side of a reversible reaction
    bool can_be_output = false; // a product, or either side of a reversible reaction
};

/// The reactions of a model's text, as the front end reads them: like the search's own reader, but
/// the references of a list get their roles when the list is closed.
/// stop  ends the reading early
std::vector<Reaction> read_front_end_reactions (std::string_view text,
                                                const std::stop_token& stop = {});

/// One model file, as an editor works with it.
class GateFrontEnd {
  public:
    /// Reads the model. Where it cannot be read, `parsed` tells so and all lists are empty.
    /// stop  ends the reading early, as if the file could not be read
    explicit GateFrontEnd (std::string path, const std::stop_token& stop = {});

    bool parsed = false;
    std::vector<Reaction> reactions;
    std::vector<Metabolite> metabolites; // by name, in the order of the bytes
    std::string model_path;
    TextFile model_file;
    std::string base;       // the path without its extension
    bool extracted = false; // the gates of this model are ready

    /// Whether "<base>_gates.csv" exists and is not older than the model; sets `extracted` if so.
    /// The depth it was made with is not looked at.
    bool up_to_date ();

  private:
    void gather_metabolites (const std::stop_token& stop);
};

/// The extraction that an editor asks for: writes the reaction table, extracts with the built-in
/// catalogue, 8 jobs and all processors, deletes the table. When it is done, `extracted` of the
/// front end is set; it is set too when all that failed is the table, for the gates are there then,
/// without kinetics. Stopped, it leaves the gate file of before.
class FrontEndExtraction : public LongWork {
  public:
    /// front_end  must outlive the work, and nobody else touches it meanwhile
    FrontEndExtraction (GateFrontEnd& front_end, int depth);

    const SearchProgress& progress () const override { return extractor_.progress (); }
    void tidy () override { extractor_.tidy (); }

  protected:
    Outcome work (const std::stop_token& stop) override;

  private:
    GateFrontEnd& front_end_;
    GateExtractor extractor_;
};

} // namespace ostrand::gates
