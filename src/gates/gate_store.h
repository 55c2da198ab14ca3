// The gates that were found, reduced so that the smallest reaction set of each remains.
// Layer: gates.
#pragma once
#include "gates/equation_graph.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <map>
#include <memory>
#include <span>
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

/// What all gates of one circuit and output have in common. All ascending.
struct GateSite {
    std::vector<int> enzymes;
    std::vector<int> upstream; // metabolites that may be inputs
    std::vector<int> forks;    // metabolites that more than one row consumes

    /// What must be absent: candidate inputs that are neither inputs nor needed.
    std::vector<int> absent (const std::vector<int>& inputs, const std::vector<int>& needed) const;
    /// Forks that are not needed.
    std::vector<int> open_forks (const std::vector<int>& needed) const;
};

/// The elements that each of several gates needs.
using NeededSets = std::vector<std::vector<int>>;

/// Keeps, of all gates of one key and one type, those with no other one below: a gate is below
/// another when its enzymes are a true part of the other's, or are the same and its needed elements
/// are among the other's. That order is transitive, so what remains does not depend on the order in
/// which gates arrive, and stores that several threads filled can be merged.
class GateStore {
  public:
    /// False when a gate with fewer enzymes is already there, below any gate with these.
    bool wants (std::span<const int> inputs, int output, int type,
                std::span<const int> enzymes) const;
    /// Adds gates of one site that differ in what they need only.
    void add (const std::vector<int>& inputs, int output, int type,
              std::shared_ptr<const GateSite> site, NeededSets needed);
    /// Takes over what another store holds.
    void merge (GateStore&& other);

    std::size_t size () const { return size_; }
    /// Empties the store. Gates come with keys in the order of their texts; within a key by type,
    /// enzymes, needed elements.
    std::vector<Gate> take_gates (const std::vector<std::string>& type_names);

  private:
    struct Circuit {
        int type = 0;
        std::shared_ptr<const GateSite> site;
        NeededSets needed;
    };
    struct Key {
        std::vector<int> inputs;
        int output;
    };
    /// A key to look up, which needs no copy of the inputs.
    struct KeyView {
        std::span<const int> inputs;
        int output;
    };
    struct KeyOrder {
        using is_transparent = void;
        template <class A, class B>
        bool operator() (const A& a, const B& b) const {
            const auto order = std::lexicographical_compare_three_way (
                a.inputs.begin (), a.inputs.end (), b.inputs.begin (), b.inputs.end ());
            return std::is_eq (order) ? a.output < b.output : std::is_lt (order);
        }
    };
    void add_to (std::vector<Circuit>& entry, Circuit circuit);

    std::map<Key, std::vector<Circuit>, KeyOrder> entries_;
    std::size_t size_ = 0;
};

} // namespace ostrand::gates
