// How many tokens the columns of a circuit must bring for its output to reach the target. A
// column's demand is the sum, over the rows that consume it, of the greatest demand among the row's
// products.
#include "gates/circuit.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace ostrand::gates {
namespace {

using LocalRow = Circuit::LocalRow;

std::size_t at (int index) { return static_cast<std::size_t> (index); }

/// The walk from the output to its ancestors.
class LevelWalk {
  public:
    LevelWalk (const Circuit& circuit, int output)
        : rows_ (circuit.local_rows ()), memory_ (circuit.memory ()),
          ancestor_ (at (circuit.local_count ()), memory_), done_ (ancestor_.size (), memory_),
          required_ (ancestor_.size (), memory_), extra_ (ancestor_.size (), memory_),
          producers_ (ancestor_.size (), memory_), consumers_ (ancestor_.size (), memory_),
          frontier_ (memory_), next_ (memory_) {
        for (const LocalRow& row : rows_) {
            for (const int column : row.needs) consumers_[at (column)].push_back (&row);
            for (const int column : row.gains) producers_[at (column)].push_back (&row);
        }
        find_ancestors (output);
        required_[at (output)] = target_level;
        done_[at (output)] = 1;
        for (const LocalRow* row : producers_[at (output)]) {
            for (const int column : row->needs) {
                if (ancestor_[at (column)] != 0) frontier_.insert (column);
            }
        }
    }

    std::pmr::vector<double> walk () {
        int forced = -1; // a column that is handled out of turn, to break a ring
        while (!frontier_.empty ()) {
            bool progress = false;
            next_.clear ();
            for (const int column : frontier_) {
                if (!is_ready (column) && column != forced) {
                    next_.insert (column);
                    continue;
                }
                handle (column);
                progress = true;
                forced = -1;
            }
            frontier_ = next_;
            if (!progress) forced = most_wanted ();
        }
        return std::move (required_);
    }

  private:
    /// Unlike the closure that candidate inputs come from, enzymes do not lead on here.
    void find_ancestors (int output) {
        ancestor_[at (output)] = 1;
        const auto is_in = [&] (int column) { return ancestor_[at (column)] != 0; };
        for (bool grown = true; grown;) {
            grown = false;
            for (const LocalRow& row : rows_) {
                if (!std::any_of (row.needs.begin (), row.needs.end (), is_in) &&
                    !std::any_of (row.gains.begin (), row.gains.end (), is_in)) {
                    continue;
                }
                for (const int column : row.needs) {
                    grown = grown || !is_in (column);
                    ancestor_[at (column)] = 1;
                }
            }
        }
    }

    bool is_ready (int column) const {
        for (const LocalRow* row : consumers_[at (column)]) {
            for (const int product : row->gains) {
                if (ancestor_[at (product)] != 0 && done_[at (product)] == 0) return false;
            }
        }
        return true;
    }

    void handle (int column) {
        double sum = 0; // whole: what is added is cut to a whole number each time
        for (const LocalRow* row : consumers_[at (column)]) {
            double greatest = 0;
            for (const int product : row->gains) {
                if (done_[at (product)] != 0 && ancestor_[at (product)] != 0) {
                    greatest = std::max (greatest, required_[at (product)]);
                }
            }
            sum = std::trunc (sum + greatest);
        }
        Columns partners (memory_); // a list: one that shares two rows inherits twice
        for (const LocalRow* row : consumers_[at (column)]) {
            for (const int other : row->needs) {
                if (other == column || done_[at (other)] != 0 || frontier_.contains (other)) {
                    continue;
                }
                next_.insert (other);
                partners.push_back (other);
            }
        }
        for (const LocalRow* row : producers_[at (column)]) {
            for (const int other : row->needs) {
                if (ancestor_[at (other)] != 0 && done_[at (other)] == 0) next_.insert (other);
            }
        }
        required_[at (column)] = extra_[at (column)] + sum;
        done_[at (column)] = 1;
        for (const int other : partners) extra_[at (other)] += sum;
    }

    int most_wanted () const {
        int found = -1;
        int most = -1;
        for (const int column : frontier_) {
            int pairs = 0;
            for (const LocalRow* row : consumers_[at (column)]) {
                for (const int product : row->gains) {
                    if (done_[at (product)] != 0 && ancestor_[at (product)] != 0) ++pairs;
                }
            }
            if (pairs >= most) {
                most = pairs;
                found = column;
            }
        }
        return found;
    }

    using RowLists = std::pmr::vector<std::pmr::vector<const LocalRow*>>;

    const std::pmr::vector<LocalRow>& rows_;
    std::pmr::memory_resource* memory_;
    std::pmr::vector<std::uint8_t> ancestor_;
    std::pmr::vector<std::uint8_t> done_;
    std::pmr::vector<double> required_;
    std::pmr::vector<double> extra_; // what a co-substrate inherits
    RowLists producers_;
    RowLists consumers_;
    std::pmr::set<int> frontier_;
    std::pmr::set<int> next_;
};

} // namespace

std::pmr::vector<double> Circuit::required_levels (int output) const {
    return LevelWalk (*this, local (output)).walk ();
}

} // namespace ostrand::gates
