// Building the rows of a network.
#include "gates/equation_graph.h"

#include <algorithm>

namespace ostrand::gates {
namespace {

class Builder {
  public:
    Builder (const std::vector<Reaction>& reactions, const std::map<std::string, int>& elements,
             const std::stop_token& stop)
        : reactions_ (reactions), stop_ (stop) {
        number_enzymes ();
        for (const auto& [name, index] : elements) {
            graph_.columns[name] = graph_.length ();
            graph_.names.push_back (name);
        }
        for (const Reaction& reaction : reactions_) add_rows (reaction);
    }
    EquationGraph graph () { return std::move (graph_); }

  private:
    void number_enzymes () {
        for (const Reaction& reaction : reactions_) {
            for (const std::string& enzyme : reaction.enzymes) add_enzyme (enzyme);
            if (!reaction.reversible) continue;
            for (const std::string& enzyme : reaction.enzymes) add_enzyme (enzyme + "_R");
        }
        graph_.rows_of_enzyme.resize (graph_.enzymes.size ());
        graph_.partner.assign (graph_.enzymes.size (), -1);
    }

    void add_enzyme (const std::string& name) {
        const int column = graph_.length ();
        if (!graph_.enzymes.try_emplace (name, column).second) return;
        graph_.columns[name] = column;
        graph_.names.push_back (name);
    }

    void add_rows (const Reaction& reaction) {
        for (const std::string& enzyme : reaction.enzymes) {
            if (stop_.stop_requested ()) return;
            add_direction (graph_.enzymes.at (enzyme), reaction.substrates, reaction.products,
                           reaction.inhibitors);
        }
        if (!reaction.reversible) return;
        for (const std::string& enzyme : reaction.enzymes) {
            const int forward = graph_.enzymes.at (enzyme);
            const int reverse = graph_.enzymes.at (enzyme + "_R");
            graph_.partner[static_cast<std::size_t> (forward)] = reverse;
            graph_.partner[static_cast<std::size_t> (reverse)] = forward;
            add_reverse (reverse, reaction);
        }
    }

    /// A name on both sides counts as what is set last: in the forward direction the product, in
    /// the reverse one the product too, for both directions write substrates first.
    void add_direction (int enzyme, const std::vector<std::string>& substrates,
                        const std::vector<std::string>& products,
                        const std::vector<std::string>& inhibitors) {
        values_.clear ();
        set (substrates, substrate_value);
        set (products, product_value);
        values_[enzyme] = enzyme_mark;
        add_row (enzyme, true);
        for (const std::string& inhibitor : inhibitors) {
            values_.clear ();
            set (products, product_value);
            add_inhibition (enzyme, inhibitor);
        }
    }

    void add_reverse (int enzyme, const Reaction& reaction) {
        values_.clear ();
        set (reaction.substrates, product_value);
        set (reaction.products, substrate_value);
        values_[enzyme] = enzyme_mark;
        add_row (enzyme, true);
        for (const std::string& inhibitor : reaction.inhibitors) {
            values_.clear ();
            set (reaction.substrates, product_value);
            add_inhibition (enzyme, inhibitor);
        }
    }

    /// One token of the inhibitor and one of the enzyme are spent; the enzyme, no longer at its
    /// mark, is dead from then on.
    void add_inhibition (int enzyme, const std::string& inhibitor) {
        set ({inhibitor}, substrate_value);
        values_[enzyme] = inhibited_value;
        add_row (enzyme, false);
    }

    void set (const std::vector<std::string>& names, int value) {
        for (const std::string& name : names) {
            const auto column = graph_.columns.find (name);
            if (column != graph_.columns.end ()) values_[column->second] = value;
        }
    }

    void add_row (int enzyme, bool may_be_seed) {
        const int number = static_cast<int> (graph_.rows.size ());
        EquationRow& row = graph_.rows.emplace_back ();
        row.enzyme = enzyme;
        for (const auto& [column, value] : values_) row.entries.push_back ({column, value});
        std::vector<int>& rows = graph_.rows_of_enzyme[static_cast<std::size_t> (enzyme)];
        if (may_be_seed && rows.empty ()) graph_.equations.push_back (number);
        rows.push_back (number);
    }

    const std::vector<Reaction>& reactions_;
    const std::stop_token& stop_;
    EquationGraph graph_;
    std::map<int, int> values_; // of the row in the making, by column
};

} // namespace

int EquationRow::value (int column) const {
    const auto found =
        std::lower_bound (entries.begin (), entries.end (), column,
                          [] (const Entry& entry, int wanted) { return entry.column < wanted; });
    return found != entries.end () && found->column == column ? found->value : 0;
}

const std::string& EquationGraph::written_name (int enzyme) const {
    const auto index = static_cast<std::size_t> (enzyme);
    const int other = partner[index];
    if (other >= 0 && names[index] == names[static_cast<std::size_t> (other)] + "_R") {
        return names[static_cast<std::size_t> (other)];
    }
    return names[index];
}

void add_stand_in_enzymes (std::vector<Reaction>& reactions) {
    for (Reaction& reaction : reactions) {
        if (reaction.enzymes.empty ()) reaction.enzymes.push_back (reaction.id);
    }
}

EquationGraph build_equation_graph (const std::vector<Reaction>& reactions,
                                    const std::map<std::string, int>& elements,
                                    const std::stop_token& stop) {
    return Builder (reactions, elements, stop).graph ();
}

} // namespace ostrand::gates
