// The normal form of formula trees, and pushing NOT downward.
// Layer: formula.
#pragma once
#include "formula/operator.h"

namespace ostrand::formula {

/// A tree in normal form: no AND, OR or unknown operator with one operand, no AND within an AND nor
/// OR within an OR, no operand twice in one AND or OR, no NOT of a NOT, no operator without
/// operand. Null when nothing is left.
OperatorPtr normalise (const OperatorPtr& tree);

/// The normal form of an operator whose operands are normal already; null when it has none.
OperatorPtr normal_operator (OperatorType type, const std::vector<OperatorPtr>& children);

/// Negation in normal form of a normal tree.
OperatorPtr normal_not (const OperatorPtr& operand);

/// Pushes every NOT down to a leaf by De Morgan (not (a and b) is not a or not b) and expands each
/// AND that holds an OR into an OR of products, until nothing changes; the result is normal.
/// An AND of n ORs has as many products as their operands multiplied.
OperatorPtr reduce (const OperatorPtr& tree);

} // namespace ostrand::formula
