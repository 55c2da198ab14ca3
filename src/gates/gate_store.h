// The gates that were found, reduced so that the smallest reaction set of each remains.
// Layer: gates.
#pragma once
#include "gates/equation_graph.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace ostrand::gates {

/// A small set of enzymes that behaves as a boolean function of some metabolites.
struct Gate {
    std::vector<int> inputs;     // columns, ascending
    int output = 0;              // column
    std::string type;            // name in the catalogue
    std::vector<int> needed;     // "Elements necessaires": must be abundant; ascending
    std::vector<int> absent;     // "Elements absents"; ascending
    std::vector<int> open_forks; // not empty: "Porte Fourche"; ascending
    std::vector<int> enzymes;    // all rows of these are its rows; ascending
};

/// "in1+in2=out", in column numbers.
std::string gate_key (const std::vector<int>& inputs, int output);

/// Elements that a gate asks for beside its inputs.
struct GateConditions {
    std::vector<int> needed;
    std::vector<int> absent;
    std::vector<int> open_forks;
};

/// Keeps, of all gates of one key and one type, those with no other one below: a gate is below
/// another when its enzymes are a true part of the other's, or are the same and its needed elements
/// are among the other's. That order is transitive, so what remains does not depend on the order in
/// which gates arrive, and stores filled by several threads can be merged.
class GateStore {
  public:
    /// Adds gates of one circuit that differ in their conditions only.
    void add (const std::vector<int>& inputs, int output, int type, const std::vector<int>& enzymes,
              std::vector<GateConditions> conditions);
    /// Takes over what another store holds.
    void merge (GateStore&& other);

    std::size_t size () const { return size_; }
    /// All gates: keys in the order of their texts; within a key by type, enzymes, needed elements.
    std::vector<Gate> gates (const std::vector<std::string>& type_names) const;

  private:
    struct Circuit {
        int type = 0;
        std::vector<int> enzymes;
        std::vector<GateConditions> conditions;
    };
    struct Key {
        std::vector<int> inputs;
        int output;
        auto operator<=> (const Key&) const =
            default; // NOLINT(modernize-use-nullptr): seen where none is
    };
    void add_to (std::vector<Circuit>& entry, Circuit circuit);

    std::map<Key, std::vector<Circuit>> entries_;
    std::size_t size_ = 0;
};

} // namespace ostrand::gates
