// One node of a formula tree, its types and its canonical text.
// Layer: formula.
#pragma once
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::formula {

/// Codes of the operators. Neither the parser nor the rewriting rules make the last two.
enum class OperatorType : int {
    leaf = -1,
    unknown = 0,
    and_gate = 1,
    or_gate = 2,
    not_gate = 3,
    and_not = 4, // first and not second
    not_and = 5, // not first and second
    or_not = 6,  // first or not second
    not_or = 7,  // not first or second
    or3 = 8,
    and3 = 9,
};
inline constexpr int operator_type_count = 10; // leaves not counted

/// The gate type that a library is asked for: "AND", "ANDNOT"; empty for a leaf.
std::string_view gate_name (OperatorType type);

/// What stands between operands in the canonical text: " . "; "!" for a NOT, empty for a leaf.
std::string_view separator (OperatorType type);

class Operator;
/// Trees are never changed once made, so that the many variants of a formula share their parts.
using OperatorPtr = std::shared_ptr<const Operator>;

/// One node. Made by make_leaf and make_operator; a null pointer is the tree of a formula without
/// any name.
class Operator {
  public:
    Operator (OperatorType type, std::string name, std::vector<OperatorPtr> children);
    ~Operator ();
    Operator (const Operator&) = delete;
    Operator& operator= (const Operator&) = delete;

    OperatorType type () const { return type_; }
    /// The variable of a leaf; empty for an operator.
    const std::string& name () const { return name_; }
    const std::vector<OperatorPtr>& children () const { return children_; }
    /// The canonical text; see canonical_text.
    const std::string& text () const { return text_; }
    /// The text with the operands of mixed gates in their order, which the canonical text does not
    /// show: "( a !.! b )" may be a and not b or b and not a. Equal texts here are the same tree up
    /// to the order of operands that may change places.
    const std::string& ordered_text () const {
        return ordered_text_.empty () ? text_ : ordered_text_;
    }
    /// Nodes of the tree, leaves and this one too; saturates.
    std::size_t node_count () const { return node_count_; }
    /// False when somewhere an operator has no operand, as in "!": such a tree computes nothing.
    bool complete () const { return complete_; }

  private:
    OperatorType type_;
    bool complete_ = true;
    std::size_t node_count_ = 1;
    std::string name_;
    std::vector<OperatorPtr> children_;
    std::string text_;
    std::string ordered_text_; // empty when it is the same as text_
};

OperatorPtr make_leaf (std::string name);
OperatorPtr make_operator (OperatorType type, std::vector<OperatorPtr> children);

/// The text of a tree: a leaf's name, "!" and the operand for a NOT, else "( ", the operands'
/// texts, sorted and joined by the separator, and " )", with "?" in front for an unknown operator.
/// The order of operands does not show in it: equal texts are the same formula. A null tree has an
/// empty text, and a line on standard output tells of it.
std::string canonical_text (const Operator* tree);

/// The value of a formula. `truth` gives the value of a name; an unknown operator is false.
template <typename Truth>
bool evaluate (const Operator& tree, const Truth& truth) {
    const auto operand = [&] (std::size_t i) {
        return i < tree.children ().size () && evaluate (*tree.children ()[i], truth);
    };
    switch (tree.type ()) {
    case OperatorType::leaf: return truth (tree.name ());
    case OperatorType::unknown: return false;
    case OperatorType::and_gate:
    case OperatorType::and3:
        for (std::size_t i = 0; i < tree.children ().size (); ++i) {
            if (!operand (i)) return false;
        }
        return true;
    case OperatorType::or_gate:
    case OperatorType::or3:
        for (std::size_t i = 0; i < tree.children ().size (); ++i) {
            if (operand (i)) return true;
        }
        return false;
    case OperatorType::not_gate: return !operand (0);
    case OperatorType::and_not: return operand (0) && !operand (1);
    case OperatorType::not_and: return !operand (0) && operand (1);
    case OperatorType::or_not: return operand (0) || !operand (1);
    case OperatorType::not_or: return !operand (0) || operand (1);
    }
    return false;
}

/// Operator nodes made and destroyed since the last search began: a count for whoever looks for a
/// leak, and for nothing else. All process-wide state of this folder.
struct FormulaState {
    std::atomic<std::uint64_t> operators_made = 0;
    std::atomic<std::uint64_t> operators_destroyed = 0;
};
extern FormulaState formula_state;

} // namespace ostrand::formula
