// A library as numbers: what the search looks at in its innermost loop.
// Layer: formula.
#pragma once
#include "formula/library.h"
#include "formula/operator.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostrand::formula {

/// Types are numbered by their operator's code; YES gates, which bridge, come behind.
inline constexpr int yes_type = operator_type_count;
inline constexpr int indexed_type_count = operator_type_count + 1;

/// Which sets of the gates in a partial circuit hold a species.
enum TouchBit : std::uint8_t { in_absent = 1, in_owned = 2, in_shared = 4 };

/// One species that a gate names in its sets.
struct Touch {
    int species = 0;
    std::uint8_t sets = 0;             // TouchBit of the gate's own sets
    std::uint8_t blocked_by = 0;       // TouchBit in the circuit that forbid the gate
    std::uint8_t blocked_if_asked = 0; // likewise when the species is the one asked for
};

/// What a gate takes of a partial circuit; of most gates nobody ever asks for it.
struct GateClaims {
    bool made = false;
    std::vector<Touch> touches;
    std::vector<int> reactions; // ascending, each once
};

/// One gate that an operator or a bridge can ask for.
struct IndexedGate {
    const LibGate* source = nullptr;
    int type = 0;
    int output = 0;
    std::span<const int> inputs; // numbers that the index keeps

    /// The species of an input; `no_species` when the gate has no such input.
    int input (std::size_t position) const {
        return position < inputs.size () ? inputs[position] : 0;
    }
};

/// The number of the empty name, which stands for "no such input" too.
inline constexpr int no_species = 0;

class GateIndex {
  public:
    /// Gates that make one of the formula's variables are left out: they would feed an input.
    /// stop  ends the indexing early; what there is then is of no use
    GateIndex (const Library& library, const std::set<std::string>& variables,
               const std::stop_token& stop = {});
    GateIndex (const GateIndex&) = delete; // the gates look at its numbers
    GateIndex& operator= (const GateIndex&) = delete;

    /// Number of a species, -1 when it is output or input of no gate.
    int species (std::string_view name) const;
    /// Names met so far; grows as claims are made.
    std::size_t species_count () const { return names_.size (); }
    /// Species that are the output or an input of some gate are numbered below this.
    std::size_t askable_count () const { return askable_; }
    const IndexedGate& gate (int index) const { return gates_[static_cast<std::size_t> (index)]; }
    /// The claims of a gate, made on first asking.
    const GateClaims& claims (int index) {
        GateClaims& claims = claims_[static_cast<std::size_t> (index)];
        if (!claims.made) make_claims (gate (index), claims);
        return claims;
    }
    /// Gates of a type that make a species, in the order of filing.
    std::span<const int> query (int output, int type) const;
    /// All gates of a type, in the order of filing.
    std::span<const int> of_type (int type) const {
        return by_type_[static_cast<std::size_t> (type)];
    }

  private:
    int intern (const std::string& name);
    int intern_reaction (const std::string& id);
    void make_claims (const IndexedGate& gate, GateClaims& claims);

    std::unordered_map<std::string_view, int> names_; // views of the library's texts
    std::unordered_map<std::string_view, int> reaction_ids_;
    std::vector<IndexedGate> gates_;
    std::vector<int> inputs_; // of all gates
    std::vector<GateClaims> claims_;
    std::size_t askable_ = 0; // species that can be asked for have the lowest numbers
    std::vector<std::vector<int>> by_type_;
    std::vector<std::vector<int>> by_key_; // output * indexed_type_count + type
};

} // namespace ostrand::formula
