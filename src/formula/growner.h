// The search itself: which sets of gates compute one tree without getting in each other's way?
// Layer: formula.
#pragma once
#include "base/long_work.h"
#include "formula/alternatives.h"
#include "formula/gate_index.h"
#include "formula/implementation.h"
#include "formula/minimal.h"
#include "formula/operator.h"

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace ostrand::formula {

/// Gates that one circuit may have, far beyond any that could be built; keeps the walk's recursion
/// along chains of YES gates from the stack's end.
inline constexpr std::size_t circuit_bound = 4000;

/// The owner of a search. Each tree is walked depth first, in pre-order: an operator takes each
/// gate of its type that makes the species asked for, its operands are then asked for that gate's
/// inputs, and a leaf is reached when the species asked for is its own name. At the root and at
/// leaves YES gates bridge from one species to another. A gate fits when its sets agree with those
/// of the gates already there (see Touch).
///
/// Four things keep the walk short and every answer the same. A tree that names a variable in two
/// places has no answer, for the gates there would both own it. A gate is tried only when each of
/// its inputs can, apart from conflicts, lead to its operand. A partial circuit that already holds
/// all reactions of a known answer and more is given up. A YES gate at an operator below another
/// one bridges nothing, since such an operator is always asked for its parent's input; it could
/// only add reactions, and is not tried.
class Growner {
  public:
    /// `library` must outlive the search.
    Growner (const Library& library, std::string output, std::set<std::string> formula_inputs,
             Patience patience = {});
    virtual ~Growner () = default;

    /// What the search can do with parts of trees, for the growing of variants.
    TreeUse tree_use ();
    /// Walks one variant.
    void try_variant (const OperatorPtr& tree);
    /// Minimal answers so far.
    std::size_t found_count () const { return found_.size (); }
    /// Ends the walk as soon as there are so many minimal answers; 0 never.
    void set_limit (std::size_t answers) { limit_ = answers; }
    /// Tells the number of answers as it changes.
    void set_progress (Progress* progress) { progress_ = progress; }
    /// True when it was late, a stop came or the limit was reached.
    bool stopped () const { return stopped_; }
    /// True when a circuit was given up at circuit_bound.
    bool left_out_long_circuits () const { return too_long_; }
    /// The answers so far, ordered by their lines of reaction ids; none when a stop comes.
    std::vector<Implementation> implementations ();

  private:
    /// One bit for each species.
    using SpeciesBits = std::vector<bool>;
    /// A node of the tree being walked.
    struct Place {
        OperatorType type = OperatorType::leaf;
        int species = -1; // of a leaf
        int parent = -1;
        std::size_t position = 0; // among its siblings
        int last_gate = -1;       // innermost gate on this node
        std::vector<int> children;
        const SpeciesBits* feasible = nullptr;
    };
    struct Undo {
        int species;
        std::uint8_t sets;
    };

    int shape_of (const OperatorPtr& tree);
    SpeciesBits feasible_wishes (const Operator& tree, const std::vector<int>& shapes) const;
    void spread_by_yes (SpeciesBits& wishes) const;
    void flatten (const OperatorPtr& tree, int parent, std::size_t position);
    void try_node (std::size_t index, int wanted);
    void try_leaf (std::size_t index, int wanted);
    void try_operator (std::size_t index, int wanted);
    bool operands_feasible (const Place& place, const IndexedGate& gate) const;
    bool enter (std::size_t index, int gate_index, int wanted);
    void leave (std::size_t index, int outer_gate);
    bool fits (const GateClaims& claims, int wanted) const;
    void complete ();
    bool tired ();

    std::string output_;
    std::set<std::string> formula_inputs_;
    Patience patience_;
    GateIndex index_;
    MinimalSets found_;
    std::size_t limit_ = 0;
    Progress* progress_ = nullptr; // may be null
    bool stopped_ = false;
    bool too_long_ = false;
    unsigned steps_ = 0;
    unsigned variants_ = 0;

    // Trees seen, by shape: type and either a leaf's species or the operands' shapes.
    std::map<std::vector<int>, int> shapes_;
    std::unordered_map<OperatorPtr, int> shape_of_tree_; // keeps the trees, so that each is itself
    std::vector<SpeciesBits> feasible_;          // for each shape: species that it can be asked for
    std::vector<std::vector<int>> bridged_from_; // for each species: what YES gates make of it
    SpeciesBits asked_at_root_;                  // the output and what YES gates make of it

    // The tree being walked.
    std::vector<Place> places_;
    SpeciesBits root_wishes_; // species from which the root's tree can be reached by YES gates

    // The partial circuit.
    std::vector<std::uint8_t> sets_; // TouchBit of each species
    std::vector<Undo> undo_;
    std::vector<std::size_t> undo_marks_;
    std::vector<int> circuit_;
    std::vector<std::vector<int>> reactions_; // of the first 0, 1, ... gates

    std::vector<Implementation> left_; // in the making when a stop came; much to free
};

} // namespace ostrand::formula
