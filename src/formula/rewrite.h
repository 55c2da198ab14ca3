// The rules by which a formula grows into equivalent ones, one rule a function.
// Layer: formula.
#pragma once
#include "formula/operator.h"

namespace ostrand::formula {

/// A rule looks at one node of a normal tree and gives the nodes that may stand in its place, all
/// normal and equivalent; none when it does not apply.
using Rule = std::vector<OperatorPtr> (*) (const Operator& node);

/// a . (b + c) becomes (a . b) + (a . c), once for each operand of the AND that is an OR.
std::vector<OperatorPtr> distribute (const Operator& node);

/// (a . b) + (a . c) + d becomes (a . (b + c)) + d, once for each operand that several ANDs share.
std::vector<OperatorPtr> factor (const Operator& node);

/// a . b becomes !(!a + !b), and a + b becomes !(!a . !b).
std::vector<OperatorPtr> de_morgan (const Operator& node);

/// Every tree that a rule makes of `tree` by working at one of its nodes.
std::vector<OperatorPtr> rewritten (const OperatorPtr& tree, Rule rule);

} // namespace ostrand::formula
