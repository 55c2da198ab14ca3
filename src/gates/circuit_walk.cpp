// Which circuits there are.
#include "gates/gate_search.h"

#include <bitset>

namespace ostrand::gates {
namespace {

using EnzymeSet = std::bitset<256>; // holds most_enzymes
static_assert (EnzymeSet ().size () >= most_enzymes);

std::size_t at (int index) { return static_cast<std::size_t> (index); }

class Walk {
  public:
    Walk (const EquationGraph& graph, int limit, const WalkVisitor& visitor,
          const std::stop_token& stop)
        : graph_ (graph), limit_ (limit), visitor_ (visitor), stop_ (stop),
          neighbours_ (find_neighbours ()) {}

    std::uint64_t run () {
        EnzymeSet available;
        for (int enzyme = 0; enzyme < graph_.enzyme_count (); ++enzyme) {
            if (!graph_.rows_of_enzyme[at (enzyme)].empty ()) available.set (at (enzyme));
        }
        for (std::size_t seed = 0; seed < graph_.equations.size (); ++seed) {
            if (stop_.stop_requested ()) break;
            const int enzyme = graph_.rows[at (graph_.equations[seed])].enzyme;
            available.reset (at (enzyme)); // for good: each set arises from its first enzyme only
            seed_ = static_cast<int> (seed);
            members_ = {enzyme};
            visitor_.circuit (members_, seed_);
            extend (neighbours_[at (enzyme)], available, 1);
            visitor_.seed_done (seed_);
        }
        return extended_;
    }

  private:
    /// Enzymes that share a column with each. Every row of an enzyme counts, inhibitions too.
    std::vector<EnzymeSet> find_neighbours () const {
        std::vector<EnzymeSet> touching (at (graph_.length ()));
        for (const EquationRow& row : graph_.rows) {
            for (const EquationRow::Entry& entry : row.entries) {
                touching[at (entry.column)].set (at (row.enzyme));
            }
        }
        std::vector<EnzymeSet> neighbours (at (graph_.enzyme_count ()));
        for (const EquationRow& row : graph_.rows) {
            for (const EquationRow::Entry& entry : row.entries) {
                neighbours[at (row.enzyme)] |= touching[at (entry.column)];
            }
        }
        return neighbours;
    }

    bool partner_is_member (int enzyme) const {
        const int partner = graph_.partner[at (enzyme)];
        for (const int member : members_) {
            if (member == partner) return true;
        }
        return false;
    }

    /// reachable  neighbours of the members
    /// available  enzymes that may still be taken
    void extend (const EnzymeSet& reachable, EnzymeSet available, int level) {
        ++extended_;
        std::vector<int> free;
        const EnzymeSet found = reachable & available;
        for (int enzyme = 0; enzyme < graph_.enzyme_count (); ++enzyme) {
            // A reversible reaction is never used in both directions.
            if (found[at (enzyme)] && !partner_is_member (enzyme)) free.push_back (enzyme);
        }
        visitor_.extend (level, extended_, free);
        for (const int enzyme : free) {
            if (stop_.stop_requested ()) return;
            available.reset (at (enzyme));
            members_.push_back (enzyme);
            visitor_.circuit (members_, seed_);
            if (limit_ > static_cast<int> (members_.size ())) {
                extend (reachable | neighbours_[at (enzyme)], available, level + 1);
            }
            members_.pop_back ();
        }
    }

    const EquationGraph& graph_;
    int limit_;
    const WalkVisitor& visitor_;
    const std::stop_token& stop_;
    std::vector<EnzymeSet> neighbours_;
    std::vector<int> members_;
    int seed_ = 0;
    std::uint64_t extended_ = 0;
};

} // namespace

std::uint64_t walk_circuits (const EquationGraph& graph, int limit, const WalkVisitor& visitor,
                             const std::stop_token& stop) {
    return Walk (graph, limit, visitor, stop).run ();
}

} // namespace ostrand::gates
