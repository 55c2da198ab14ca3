// Gates out of a metabolic network, and networks out of them that compute a formula.
// Layer: editor (uses gates, formula).
#pragma once
#include "formula/tectrix.h"
#include "gates/front_end.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ostrand::editor {

/// Reactions that a gate may be made of.
inline constexpr int least_depth = 1;
inline constexpr int most_depth = 7;
inline constexpr int first_depth = 3;

/// What the editor keeps between "Extract Gates", a formula and the steps through its
/// implementations.
class FormulaDesk {
  public:
    int depth = first_depth;

    /// The model whose gates are at hand, null when none is.
    gates::GateFrontEnd* front_end () { return front_end_.get (); }
    /// Another model: what was known of the one before is gone. False when it cannot be read.
    bool open_model (const std::string& path);
    void close_model ();
    bool gates_ready () const { return front_end_ != nullptr && front_end_->extracted; }
    /// Metabolites that can be the output of a formula, or stand in it, by name.
    std::vector<std::string> outputs () const;
    std::vector<std::string> inputs () const;

    /// The found implementations take the place of those before; the first one is shown.
    void take_result (formula::SearchResult result);
    std::size_t count () const { return result_ ? result_->implementations.size () : 0; }
    std::size_t index () const { return index_; }
    bool has_previous () const { return index_ > 0; }
    bool has_next () const { return index_ + 1 < count (); }
    /// One step; false at the end.
    bool step (bool forward);
    /// The network of the present implementation, as SBML.
    const std::string& text ();

  private:
    std::unique_ptr<gates::GateFrontEnd> front_end_;
    std::optional<formula::SearchResult> result_;
    std::size_t index_ = 0;
};

} // namespace ostrand::editor
