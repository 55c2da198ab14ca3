// Reads the text of a boolean formula into a tree.
// Layer: formula.
#pragma once
#include "formula/operator.h"

#include <set>
#include <string>
#include <string_view>

namespace ostrand::formula {

/// Operators that may stand inside each other; a deeper formula is refused with a message. It keeps
/// recursion over trees far from the stack's end and is no limit that a network could reach.
inline constexpr int nesting_bound = 1000;
/// Names and operators that a formula may have, for the same reason.
inline constexpr int size_bound = 4000;

/// The reader of formulas; collects the names that it meets.
///
/// Names are runs of letters and digits, or stand in quotes (' or ") when they hold other signs;
/// the first byte behind the opening quote must then be a letter or digit. "!" is NOT, "." AND,
/// "+" OR. AND and OR have the same rank and group from the left: "a + b . c" is (a + b) . c.
/// Every other byte is skipped. No text is refused: a ")" too many ends the formula, and what is
/// still open at the end is closed.
class FormCreator {
  public:
    virtual ~FormCreator () = default;
    /// The tree of a formula, as written; null when the text holds no name and no operator, or is
    /// beyond one of the bounds.
    OperatorPtr parse (std::string_view formula);
    /// True when a formula was beyond a bound, which was told as it was read.
    bool refused () const { return refused_; }
    /// Names of all formulas parsed so far.
    const std::set<std::string>& variables () const { return variables_; }

  private:
    std::set<std::string> variables_;
    bool refused_ = false;
};

} // namespace ostrand::formula
