// A plain integrator of SBML models, by other means than the readers: every formula evaluated as it
// stands, step by step.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <sbml/SBMLTypes.h>

namespace ostrand::testing {

/// Amounts and parameters of a model as they run. Rules of assignment are followed; events and rate
/// rules are not.
class PlainOde {
  public:
    explicit PlainOde (const std::string& text);
    /// Goes on to a time in steps of at most `step`, by the classical method of fourth order.
    void run_to (double time, double step);
    /// Goes on to a time in steps that suit the model: each is done whole and in halves, and is as
    /// long as both agree to a millionth. False when that would take more steps than these.
    bool run_in_steps (double time, int most);
    /// Concentration in the model's units (amount / size of its compartment).
    double concentration (const std::string& species) const;
    const ::Model& model () const { return *document_->getModel (); }

  private:
    using Values = std::map<std::string, double>;
    double evaluate (const ::ASTNode& node, const Values& values, const Values* local) const;
    double symbol (const std::string& id, const Values& values) const;
    std::vector<double> derivative (const std::vector<double>& amounts) const;
    std::vector<double> stepped (const std::vector<double>& amounts, double step) const;
    Values values_of (const std::vector<double>& amounts) const;

    std::unique_ptr<::SBMLDocument> document_;
    Values constants_;
    std::vector<double> amounts_; // of the species, in their order
    double time_ = 0;
    double step_ = 1e-4; // that suited the model last
};

} // namespace ostrand::testing
