// What is the normal form of a tree?
#include "formula/normalise.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace ostrand::formula {
namespace {

bool is_and_or (OperatorType type) {
    return type == OperatorType::and_gate || type == OperatorType::or_gate;
}

OperatorType opposite (OperatorType type) {
    return type == OperatorType::and_gate ? OperatorType::or_gate : OperatorType::and_gate;
}

/// Products of an AND with an OR among its operands, taken at the first such OR; null when there is
/// none.
OperatorPtr expanded (const OperatorPtr& tree) {
    const auto& operands = tree->children ();
    const auto sum = std::find_if (operands.begin (), operands.end (), [] (const OperatorPtr& o) {
        return o->type () == OperatorType::or_gate;
    });
    if (sum == operands.end ()) return nullptr;
    std::vector<OperatorPtr> products;
    for (const OperatorPtr& term : (*sum)->children ()) {
        std::vector<OperatorPtr> factors = operands;
        factors[static_cast<std::size_t> (sum - operands.begin ())] = term;
        products.push_back (normal_operator (OperatorType::and_gate, factors));
    }
    return normal_operator (OperatorType::or_gate, products);
}

OperatorPtr reduce_once (const OperatorPtr& tree) {
    if (tree->type () == OperatorType::leaf) return tree;
    if (tree->type () == OperatorType::not_gate) {
        const OperatorPtr& inner = tree->children ()[0];
        if (is_and_or (inner->type ())) {
            std::vector<OperatorPtr> negated;
            for (const OperatorPtr& operand : inner->children ()) {
                negated.push_back (reduce_once (normal_not (operand)));
            }
            return normal_operator (opposite (inner->type ()), negated);
        }
    }
    std::vector<OperatorPtr> children;
    for (const OperatorPtr& child : tree->children ()) children.push_back (reduce_once (child));
    OperatorPtr result = normal_operator (tree->type (), children);
    if (result->type () == OperatorType::and_gate) {
        if (OperatorPtr sum = expanded (result)) return sum;
    }
    return result;
}

} // namespace

OperatorPtr normal_not (const OperatorPtr& operand) {
    if (operand == nullptr) return nullptr;
    if (operand->type () == OperatorType::not_gate) return operand->children ()[0];
    return make_operator (OperatorType::not_gate, {operand});
}

OperatorPtr normal_operator (OperatorType type, const std::vector<OperatorPtr>& children) {
    std::vector<OperatorPtr> operands;
    operands.reserve (children.size ());
    for (const OperatorPtr& child : children) {
        if (child == nullptr) continue;
        if (is_and_or (type) && child->type () == type) {
            operands.insert (operands.end (), child->children ().begin (),
                             child->children ().end ());
        } else {
            operands.push_back (child);
        }
    }
    if (operands.empty ()) return nullptr;
    if (type == OperatorType::not_gate) return normal_not (operands[0]);
    if (is_and_or (type)) {
        std::unordered_set<std::string_view> seen;
        std::vector<OperatorPtr> kept;
        for (const OperatorPtr& operand : operands) {
            if (seen.insert (operand->text ()).second) kept.push_back (operand);
        }
        operands = std::move (kept);
    }
    // An operator of mixed gates names two places and keeps them.
    if (operands.size () == 1 && (is_and_or (type) || type == OperatorType::unknown)) {
        return operands[0];
    }
    return make_operator (type, std::move (operands));
}

OperatorPtr normalise (const OperatorPtr& tree) {
    if (tree == nullptr || tree->type () == OperatorType::leaf) return tree;
    std::vector<OperatorPtr> children;
    children.reserve (tree->children ().size ());
    for (const OperatorPtr& child : tree->children ()) children.push_back (normalise (child));
    return normal_operator (tree->type (), children);
}

OperatorPtr reduce (const OperatorPtr& tree) {
    OperatorPtr result = normalise (tree);
    while (result != nullptr) {
        const OperatorPtr next = reduce_once (result);
        if (next->text () == result->text ()) break;
        result = next;
    }
    return result;
}

} // namespace ostrand::formula
