// The gates that a metabolism offers, indexed for the search.
// Layer: formula.
#pragma once
#include "base/disk.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::formula {

/// One reaction of a gate, as the gate file gives it.
struct LibReaction {
    std::vector<std::string> inhibitors;
    std::vector<std::string> enzymes;
    std::vector<std::string> substrates; // the first is the main one
    std::vector<std::string> products;   // likewise
    std::string id;
    bool reversible = false;
    /// Species name to coefficient, "12.3 mM" or "240". A species on both sides has one for each.
    std::map<std::string, std::string> substrate_coefficients;
    std::map<std::string, std::string> product_coefficients;
    std::string kinetics; // kinetic type, "RANDOM_SEQ"; may be empty
};

/// Orders reactions by id: the one id is the one reaction, wherever it was read.
struct ReactionOrder {
    bool operator() (const LibReaction* a, const LibReaction* b) const { return a->id < b->id; }
};
using ReactionSet = std::set<const LibReaction*, ReactionOrder>;

/// One gate.
struct LibGate {
    std::vector<std::string> inputs;
    std::vector<std::string> enzymes;
    std::string output;
    std::string type; // "AND", "YES", ...
    std::set<std::string> needed;
    std::set<std::string> absent;
    std::set<std::string> owned;  // species that nobody else may touch
    std::set<std::string> shared; // species that others may touch too
    std::set<std::string> reaction_enzymes;
    std::string text;       // its line in the file
    std::string metabolism; // path of the model that it was found in
    ReactionSet reactions;  // owned by the library
};

/// What the search asks of a library.
class Library {
  public:
    virtual ~Library () = default;
    /// Gates with exactly these inputs in this order.
    virtual std::vector<const LibGate*> find_signature (const std::vector<std::string>& inputs,
                                                        const std::string& output) const = 0;
    /// Gates of a type that make this output, in the order of filing.
    virtual std::vector<const LibGate*> query (const std::string& output,
                                               const std::string& type) const = 0;
    /// Files a gate as it is.
    virtual void add_gate (std::unique_ptr<LibGate> gate) = 0;
    /// Reads `base`_gates.csv; false when it cannot be opened, told on standard output.
    virtual bool load (const std::string& base) = 0;
    /// All gates in the order of filing.
    virtual std::span<const std::unique_ptr<LibGate>> gates () const = 0;
};

/// A library out of a gate file, which stands as "key;count;names..." sections in a line per gate.
/// Gates live as long as it does.
class Lib_v1 : public Library {
  public:
    std::vector<const LibGate*> find_signature (const std::vector<std::string>& inputs,
                                                const std::string& output) const override;
    std::vector<const LibGate*> query (const std::string& output,
                                       const std::string& type) const override;
    void add_gate (std::unique_ptr<LibGate> gate) override;
    bool load (const std::string& base) override;
    /// The same for whoever wants to know more.
    /// file  out: as it was read
    bool load (const std::string& base, const std::stop_token& stop, Input& file);
    std::span<const std::unique_ptr<LibGate>> gates () const override { return gates_; }

    /// Reads a gate file's text; what `load` does behind opening. Counts that promise more than a
    /// line holds end with the line. A stop ends the reading early.
    void read (std::string_view text, const std::stop_token& stop = {});
    /// Names that are input or output of any gate.
    const std::set<std::string>& species () const { return species_; }

  private:
    void read_gate (std::string_view line);
    void file (std::unique_ptr<LibGate> gate);

    std::vector<std::unique_ptr<LibGate>> gates_;
    std::vector<std::unique_ptr<LibReaction>> reactions_;
    std::unordered_map<std::string, std::vector<const LibGate*>> by_signature_;
    std::unordered_map<std::string, std::vector<const LibGate*>> by_key_;
    std::set<std::string> species_;
    std::string metabolism_;
};

/// Fills `owned` and `shared` of a gate from its inputs, output and these reactions, which are all
/// that were read for it.
void claim_species (LibGate& gate, std::span<const std::unique_ptr<LibReaction>> reactions);

} // namespace ostrand::formula
