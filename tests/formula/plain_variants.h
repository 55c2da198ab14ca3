// The family of a formula's variants made the plain way: trees as values, every rule tried at every
// node until nothing new comes.
#pragma once
#include "formula/operator.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace ostrand::formula::plain {

struct Tree {
    OperatorType type = OperatorType::leaf;
    std::string name;
    std::vector<Tree> children;
};

inline Tree tree_of (const Operator& from) {
    Tree tree{from.type (), from.name (), {}};
    for (const OperatorPtr& child : from.children ()) tree.children.push_back (tree_of (*child));
    return tree;
}

/// Operands of AND and OR sorted, those of mixed gates in their order.
inline std::string text (const Tree& tree) {
    if (tree.type == OperatorType::leaf) return tree.name;
    if (tree.type == OperatorType::not_gate) return "!" + text (tree.children.at (0));
    std::vector<std::string> parts;
    for (const Tree& child : tree.children) parts.push_back (text (child));
    const bool mixed = tree.type == OperatorType::and_not || tree.type == OperatorType::or_not;
    if (!mixed) std::sort (parts.begin (), parts.end ());
    std::string all = tree.type == OperatorType::unknown ? "?( " : "( ";
    for (std::size_t i = 0; i < parts.size (); ++i) {
        if (i > 0) all += separator (tree.type);
        all += parts[i];
    }
    return all + " )";
}

inline std::size_t nodes (const Tree& tree) {
    std::size_t count = 1;
    for (const Tree& child : tree.children) count += nodes (child);
    return count;
}

inline bool is_and_or (const Tree& tree) {
    return tree.type == OperatorType::and_gate || tree.type == OperatorType::or_gate;
}

inline OperatorType other (OperatorType type) {
    return type == OperatorType::and_gate ? OperatorType::or_gate : OperatorType::and_gate;
}

inline Tree negation (const Tree& tree) { return {OperatorType::not_gate, "", {tree}}; }

/// One change towards the normal form; false when there is none left.
inline bool normalise_step (Tree& tree) {
    for (Tree& child : tree.children) {
        if (normalise_step (child)) return true;
    }
    if (tree.type == OperatorType::not_gate && tree.children[0].type == OperatorType::not_gate) {
        const Tree inner = tree.children[0].children[0];
        tree = inner;
        return true;
    }
    if (!is_and_or (tree)) return false;
    if (tree.children.size () == 1) {
        const Tree inner = tree.children[0];
        tree = inner;
        return true;
    }
    for (std::size_t i = 0; i < tree.children.size (); ++i) {
        if (tree.children[i].type == tree.type) {
            const Tree inner = tree.children[i];
            tree.children.erase (tree.children.begin () + static_cast<std::ptrdiff_t> (i));
            tree.children.insert (tree.children.end (), inner.children.begin (),
                                  inner.children.end ());
            return true;
        }
        for (std::size_t k = i + 1; k < tree.children.size (); ++k) {
            if (text (tree.children[i]) != text (tree.children[k])) continue;
            tree.children.erase (tree.children.begin () + static_cast<std::ptrdiff_t> (k));
            return true;
        }
    }
    return false;
}

inline Tree normal (Tree tree) {
    while (normalise_step (tree)) {
    }
    return tree;
}

/// What the three rules make of one node.
inline std::vector<Tree> rewritings (const Tree& node) {
    std::vector<Tree> all;
    if (!is_and_or (node)) return all;
    Tree negated{other (node.type), "", {}};
    for (const Tree& child : node.children) negated.children.push_back (negation (child));
    all.push_back (negation (negated));
    for (std::size_t i = 0; i < node.children.size (); ++i) {
        const Tree& chosen = node.children[i];
        if (node.type == OperatorType::and_gate && chosen.type == OperatorType::or_gate) {
            Tree sum{OperatorType::or_gate, "", {}};
            for (const Tree& term : chosen.children) {
                Tree product = node;
                product.children[i] = term;
                sum.children.push_back (product);
            }
            all.push_back (sum);
        }
        if (node.type == OperatorType::or_gate && chosen.type == OperatorType::and_gate) {
            for (const Tree& common : chosen.children) {
                Tree rest{OperatorType::or_gate, "", {}};
                Tree result{OperatorType::or_gate, "", {}};
                std::size_t sharing = 0;
                for (const Tree& product : node.children) {
                    Tree left = product;
                    std::erase_if (left.children,
                                   [&] (const Tree& one) { return text (one) == text (common); });
                    if (product.type == OperatorType::and_gate &&
                        left.children.size () < product.children.size ()) {
                        ++sharing;
                        rest.children.push_back (left);
                    } else {
                        result.children.push_back (product);
                    }
                }
                if (sharing < 2) continue;
                result.children.push_back ({OperatorType::and_gate, "", {common, rest}});
                all.push_back (result);
            }
        }
    }
    return all;
}

/// Puts two or more of an operator's operands, but not all, into a node of their own.
inline std::vector<Tree> splittings (const Tree& node) {
    std::vector<Tree> all;
    if (!is_and_or (node) || node.children.size () < 3) return all;
    for (std::size_t mask = 1; mask + 1 < (std::size_t{1} << node.children.size ()); ++mask) {
        Tree inner{node.type, "", {}};
        Tree outer{node.type, "", {}};
        for (std::size_t i = 0; i < node.children.size (); ++i) {
            ((mask >> i) & 1U ? inner : outer).children.push_back (node.children[i]);
        }
        if (inner.children.size () < 2) continue;
        outer.children.push_back (inner);
        all.push_back (outer);
    }
    return all;
}

inline std::vector<Tree> mixings (const Tree& node) {
    if (!is_and_or (node) || node.children.size () != 2) return {};
    const bool first = node.children[0].type == OperatorType::not_gate;
    if (first == (node.children[1].type == OperatorType::not_gate)) return {};
    return {{node.type == OperatorType::and_gate ? OperatorType::and_not : OperatorType::or_not,
             "",
             {node.children[first ? 1 : 0], node.children[first ? 0 : 1].children[0]}}};
}

/// All trees that a rule makes by working at one node.
inline std::vector<Tree> everywhere (const Tree& tree, std::vector<Tree> (*rule) (const Tree&)) {
    std::vector<Tree> all = rule (tree);
    for (std::size_t i = 0; i < tree.children.size (); ++i) {
        for (const Tree& part : everywhere (tree.children[i], rule)) {
            all.push_back (tree);
            all.back ().children[i] = part;
        }
    }
    return all;
}

/// Adds what a rule makes, again and again, until nothing new comes.
inline void close_under (std::vector<Tree>& trees, std::set<std::string>& texts,
                         std::vector<Tree> (*rule) (const Tree&), bool normalised) {
    for (std::size_t i = 0; i < trees.size (); ++i) {
        if (normalised && nodes (trees[i]) >= 12) continue;
        const Tree from = trees[i];
        for (const Tree& next : everywhere (from, rule)) {
            const Tree result = normalised ? normal (next) : next;
            if (texts.insert (text (result)).second) trees.push_back (result);
        }
    }
}

/// The ordered texts of all variants of a formula in which every operator has operands.
inline std::set<std::string> variant_texts (const Tree& parsed) {
    std::vector<Tree> trees{normal (parsed)};
    std::set<std::string> texts{text (trees[0])};
    close_under (trees, texts, rewritings, true);
    if (texts.insert (text (parsed)).second) trees.push_back (parsed);
    close_under (trees, texts, splittings, false);
    close_under (trees, texts, mixings, false);
    return texts;
}

} // namespace ostrand::formula::plain
