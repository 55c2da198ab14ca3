// Which equivalent trees are one step away?
#include "formula/rewrite.h"

#include "formula/normalise.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace ostrand::formula {
namespace {

/// Operands of a node that are no operators of its own type.
std::size_t foreign_operands (const Operator& node) {
    return static_cast<std::size_t> (
        std::count_if (node.children ().begin (), node.children ().end (),
                       [&] (const OperatorPtr& child) { return child->type () != node.type (); }));
}

/// `operands` without the one of index `left_out`.
std::vector<OperatorPtr> without (const std::vector<OperatorPtr>& operands, std::size_t left_out) {
    std::vector<OperatorPtr> rest = operands;
    rest.erase (rest.begin () + static_cast<std::ptrdiff_t> (left_out));
    return rest;
}

} // namespace

std::vector<OperatorPtr> distribute (const Operator& node) {
    std::vector<OperatorPtr> results;
    if (node.type () != OperatorType::and_gate || foreign_operands (node) < 2) return results;
    for (std::size_t i = 0; i < node.children ().size (); ++i) {
        const Operator& sum = *node.children ()[i];
        if (sum.type () != OperatorType::or_gate || sum.children ().size () < 2) continue;
        std::vector<OperatorPtr> products;
        for (const OperatorPtr& term : sum.children ()) {
            std::vector<OperatorPtr> factors = without (node.children (), i);
            factors.push_back (term);
            products.push_back (normal_operator (OperatorType::and_gate, factors));
        }
        results.push_back (normal_operator (OperatorType::or_gate, products));
    }
    return results;
}

std::vector<OperatorPtr> factor (const Operator& node) {
    std::vector<OperatorPtr> results;
    if (node.type () != OperatorType::or_gate || foreign_operands (node) < 2) return results;
    struct Place {
        std::size_t product; // operand of the OR
        std::size_t factor;  // operand of that AND
    };
    std::map<std::string_view, std::vector<Place>> places;
    for (std::size_t i = 0; i < node.children ().size (); ++i) {
        const Operator& product = *node.children ()[i];
        if (product.type () != OperatorType::and_gate) continue;
        for (std::size_t k = 0; k < product.children ().size (); ++k) {
            places[product.children ()[k]->text ()].push_back ({i, k});
        }
    }
    for (const auto& [text, shared_by] : places) {
        if (shared_by.size () < 2) continue;
        std::vector<OperatorPtr> rests;
        std::vector<OperatorPtr> terms = node.children ();
        for (const Place& place : shared_by) {
            rests.push_back (normal_operator (
                OperatorType::and_gate, without (terms[place.product]->children (), place.factor)));
        }
        const Place& first = shared_by.front ();
        const OperatorPtr common = terms[first.product]->children ()[first.factor];
        const OperatorPtr product = normal_operator (
            OperatorType::and_gate, {common, normal_operator (OperatorType::or_gate, rests)});
        for (auto place = shared_by.rbegin (); place != shared_by.rend (); ++place) {
            terms.erase (terms.begin () + static_cast<std::ptrdiff_t> (place->product));
        }
        terms.push_back (product);
        results.push_back (normal_operator (OperatorType::or_gate, terms));
    }
    return results;
}

std::vector<OperatorPtr> de_morgan (const Operator& node) {
    OperatorType other = OperatorType::and_gate;
    if (node.type () == OperatorType::and_gate) {
        other = OperatorType::or_gate;
    } else if (node.type () != OperatorType::or_gate) {
        return {};
    }
    std::vector<OperatorPtr> negated;
    for (const OperatorPtr& operand : node.children ()) negated.push_back (normal_not (operand));
    return {normal_not (normal_operator (other, negated))};
}

std::vector<OperatorPtr> rewritten (const OperatorPtr& tree, Rule rule) {
    std::vector<OperatorPtr> results = rule (*tree);
    for (std::size_t i = 0; i < tree->children ().size (); ++i) {
        for (const OperatorPtr& part : rewritten (tree->children ()[i], rule)) {
            std::vector<OperatorPtr> children = tree->children ();
            children[i] = part;
            results.push_back (normal_operator (tree->type (), children));
        }
    }
    return results;
}

} // namespace ostrand::formula
