// Trying gates by pattern. The end of a game depends on which candidate inputs are fed (at most as
// many as a gate has inputs) and which other elements are abundant. So all games of one output fill
// a table, by set of fed inputs and assignment, and every gate and choice of inputs reads from it:
// the rows of a truth table are the subsets of the chosen inputs, in the assignments in which no
// chosen input is abundant.
#include "gates/circuit_trial.h"
#include "gates/output_view.h"

#include <algorithm>
#include <array>
#include <bit>

namespace ostrand::gates {
namespace {

constexpr std::uint64_t all_lanes = ~std::uint64_t{0};
/// Words of tables that are cleared between two looks for a stop: 1 MiB.
constexpr std::size_t words_per_look = std::size_t{1} << 17;

/// By rank below 6: the assignments of a word in which that element is abundant.
constexpr std::array<std::uint64_t, 6> abundant_in_word{0xAAAAAAAAAAAAAAAA, 0xCCCCCCCCCCCCCCCC,
                                                        0xF0F0F0F0F0F0F0F0, 0xFF00FF00FF00FF00,
                                                        0xFFFF0000FFFF0000, 0xFFFFFFFF00000000};

/// The assignments of a word that hold no (or every) element of the low six ranks of `set`.
std::uint64_t lanes_without (std::uint64_t set) {
    std::uint64_t lanes = all_lanes;
    for (std::size_t rank = 0; rank < 6; ++rank) {
        if ((set >> rank & 1) != 0) lanes &= ~abundant_in_word[rank];
    }
    return lanes;
}
std::uint64_t lanes_with (std::uint64_t set) {
    std::uint64_t lanes = all_lanes;
    for (std::size_t rank = 0; rank < 6; ++rank) {
        if ((set >> rank & 1) != 0) lanes &= abundant_in_word[rank];
    }
    return lanes;
}

/// The next larger number with as many bits set. `set` is not 0.
std::uint64_t next_subset (std::uint64_t set) {
    const std::uint64_t low = set & (0 - set);
    const std::uint64_t ripple = set + low;
    return ripple | (((set ^ ripple) >> 2) / low);
}

/// Walks all subsets of `size` out of `count` (at most 62) as bit sets, in ascending order. A stop
/// ends the walk early.
template <class Visit>
void for_each_subset (int count, int size, const std::stop_token& stop, const Visit& visit) {
    if (size > count) return;
    if (size == 0) return visit (std::uint64_t{0});
    const std::uint64_t end = std::uint64_t{1} << count;
    for (std::uint64_t set = (std::uint64_t{1} << size) - 1; set < end && !stop.stop_requested ();
         set = next_subset (set)) {
        visit (set);
    }
}

using ChooseTable = std::array<std::array<std::uint64_t, 64>, most_pattern_inputs + 1>;

/// By k and n: the number of subsets of k out of n.
const ChooseTable& choose_table () {
    static const ChooseTable table = [] {
        ChooseTable made{};
        for (std::size_t k = 0; k < made.size (); ++k) {
            for (std::size_t n = 0; n < 64; ++n) made[k][n] = subset_count (n, k);
        }
        return made;
    }();
    return table;
}

/// The place of a subset in the walk over all subsets of its size, plus those of smaller sizes.
class SubsetRank {
  public:
    explicit SubsetRank (int count) {
        for (std::size_t size = 1; size < begin_.size (); ++size) {
            begin_[size] = begin_[size - 1] + choose_[size - 1][static_cast<std::size_t> (count)];
        }
    }
    std::uint64_t operator() (std::uint64_t set) const {
        std::uint64_t rank = begin_[static_cast<std::size_t> (std::popcount (set))];
        for (std::size_t k = 1; set != 0; ++k, set &= set - 1) {
            rank += choose_[k][static_cast<std::size_t> (std::countr_zero (set))];
        }
        return rank;
    }

  private:
    const ChooseTable& choose_ = choose_table ();
    std::array<std::uint64_t, most_pattern_inputs + 1> begin_{};
};

/// A set over the candidate inputs as a set over the free elements. Candidates hold the last ranks.
int first_candidate (std::span<const int> choosable) {
    return choosable.empty () ? 0 : choosable.front ();
}

/// Keeps the least of the assignments in `lanes` of a word that starts at assignment `base`. They
/// come in ascending order, so a part of a set comes before the set.
void keep_least (std::vector<std::uint64_t>& least, std::uint64_t base, std::uint64_t lanes) {
    for (const std::uint64_t kept : least) {
        if ((kept & ~base & ~std::uint64_t{63}) == 0) lanes &= ~lanes_with (kept);
    }
    while (lanes != 0) {
        const auto lane = static_cast<std::uint64_t> (std::countr_zero (lanes));
        least.push_back (base | lane);
        lanes &= ~lanes_with (lane);
    }
}

} // namespace

void CircuitTrial::play_block (const OutputView& view, std::uint64_t block) {
    const int candidates = static_cast<int> (view.choosable.size ());
    const int shift = first_candidate (view.choosable);
    const std::uint64_t block_base = block << view.block_bits;
    fed_sets_.clear ();
    for (int size = 0; size <= std::min (view.most_inputs, candidates); ++size) {
        for_each_subset (candidates, size, stop_,
                         [&] (std::uint64_t set) { fed_sets_.push_back (set << shift); });
    }
    const std::size_t words = fed_sets_.size () * view.block_words;
    reached_.clear ();
    reached_.reserve (words);
    while (reached_.size () < words && !stopped ()) { // memory is cleared at a few GB a second
        reached_.resize (std::min (words, reached_.size () + words_per_look));
    }

    if (view.block_bits < 5) { // several sets in one run
        const int slot = 1 << view.block_bits;
        const std::size_t together = static_cast<std::size_t> (lane_count / slot);
        for (std::size_t first = 0; first < fed_sets_.size () && !stopped (); first += together) {
            const std::size_t count = std::min (together, fed_sets_.size () - first);
            const std::uint32_t bits = player_.play ({.base = 0,
                                                      .slot_shift = view.block_bits,
                                                      .fed = &fed_sets_[first],
                                                      .slot_count = static_cast<int> (count)});
            const std::uint64_t slot_lanes = (std::uint64_t{1} << slot) - 1;
            for (std::size_t s = 0; s < count; ++s) {
                reached_[first + s] = bits >> (s * static_cast<std::size_t> (slot)) & slot_lanes;
            }
        }
        return;
    }
    const std::uint64_t runs = std::uint64_t{1} << (view.block_bits - 5);
    for (std::size_t set = 0; set < fed_sets_.size (); ++set) {
        const std::uint64_t fed = fed_sets_[set];
        for (std::uint64_t run = 0; run < runs; ++run) {
            if (stopped ()) return;
            const std::uint64_t base = block_base | run << 5;
            if ((fed & base) != 0) continue; // a fed input is not abundant
            const std::uint64_t bits = player_.play ({.base = base, .fed = &fed});
            reached_[set * view.block_words + (run >> 1)] |= bits << (run % 2 * 32);
        }
    }
}

void CircuitTrial::test_group (const OutputView& view, std::size_t group_index,
                               std::uint64_t block) {
    const PlannedGroup& group = plan_.groups[group_index];
    const int candidates = static_cast<int> (view.choosable.size ());
    if (!group.by_pattern || group.arity > candidates) return;
    const int shift = first_candidate (view.choosable);
    const SubsetRank rank (candidates);
    const std::uint64_t block_base = block << view.block_bits;
    const std::uint64_t lanes_of_block =
        view.block_bits < 6 ? (std::uint64_t{1} << (1U << view.block_bits)) - 1 : all_lanes;
    std::vector<std::vector<std::uint64_t>>& found = found_[group_index];
    const std::size_t choices =
        subset_count (view.choosable.size (), static_cast<std::uint64_t> (group.arity));
    if (found.size () < choices * group.gates.size ()) found.resize (choices * group.gates.size ());
    std::size_t choice = 0;
    std::array<const std::uint64_t*, std::size_t{1} << most_pattern_inputs> tables{};
    const std::size_t patterns = std::size_t{1} << group.arity;

    for_each_subset (candidates, group.arity, stop_, [&] (std::uint64_t set) {
        const std::size_t first_gate = choice++ * group.gates.size ();
        const std::uint64_t inputs = set << shift;
        if ((inputs & block_base) != 0) return;
        for (std::size_t pattern = 0; pattern < patterns; ++pattern) {
            std::uint64_t fed = 0;
            std::uint64_t rest = set;
            for (std::size_t bit = pattern; bit != 0; bit >>= 1, rest &= rest - 1) {
                if ((bit & 1) != 0) fed |= rest & (0 - rest);
            }
            tables[pattern] = &reached_[rank (fed) * view.block_words];
        }
        const std::uint64_t lanes = lanes_without (inputs) & lanes_of_block;
        for (std::size_t g = 0; g < group.gates.size (); ++g) {
            const PlannedGate& gate = group.gates[g];
            std::uint64_t games = 0;
            for (std::size_t word = 0; word < view.block_words; ++word) {
                const std::uint64_t base = block_base | word << 6;
                if ((inputs & base) != 0) continue;
                std::uint64_t alive = lanes;
                for (const PlannedGate::Row& row : gate.rows) {
                    games += static_cast<std::uint64_t> (std::popcount (alive));
                    const std::uint64_t on = tables[row.pattern][word];
                    alive &= row.wanted == 1 ? on : row.wanted == 0 ? ~on : 0;
                    if (alive == 0) break;
                }
                if (alive != 0 && gate.missing_rows != 0) {
                    games += static_cast<std::uint64_t> (std::popcount (alive));
                    alive &= ~tables[0][word];
                    games += static_cast<std::uint64_t> (std::popcount (alive)) *
                             (gate.missing_rows - 1);
                }
                if (alive != 0) keep_least (found[first_gate + g], base, alive);
            }
            std::uint64_t& count = counts[static_cast<std::size_t> (gate.job)].evaluations;
            count = saturated_sum (count, saturated_product (games, view.weight));
        }
    });
}

void CircuitTrial::store_found (const OutputView& view) {
    const int shift = first_candidate (view.choosable);
    const int candidates = static_cast<int> (view.choosable.size ());
    std::shared_ptr<const GateSite> site;
    std::vector<int> inputs;
    for (std::size_t g = 0; g < plan_.groups.size (); ++g) {
        const PlannedGroup& group = plan_.groups[g];
        std::size_t next = 0;
        if (!group.by_pattern || found_[g].empty ()) continue;
        for_each_subset (candidates, group.arity, stop_, [&] (std::uint64_t set) {
            inputs.clear ();
            for (std::uint64_t rest = set << shift; rest != 0; rest &= rest - 1) {
                inputs.push_back (view.free[static_cast<std::size_t> (std::countr_zero (rest))]);
            }
            for (const PlannedGate& gate : group.gates) {
                const std::vector<std::uint64_t>& least = found_[g][next++];
                if (least.empty ()) continue;
                const auto job = static_cast<std::size_t> (gate.job);
                const GateStore& known = smaller != nullptr ? (*smaller)[job] : stores[job];
                if (!known.wants (inputs, view.output, gate.type, view.circuit.enzymes)) continue;
                NeededSets needed;
                for (const std::uint64_t assignment : least) {
                    needed.push_back (elements_of (view, assignment));
                }
                if (site == nullptr) site = view.site ();
                stores[job].add (inputs, view.output, gate.type, site, std::move (needed));
            }
        });
    }
}

std::vector<int> CircuitTrial::elements_of (const OutputView& view, std::uint64_t assignment) {
    std::vector<int> elements (view.held.begin (), view.held.end ());
    for (std::uint64_t rest = assignment; rest != 0; rest &= rest - 1) {
        elements.push_back (view.free[static_cast<std::size_t> (std::countr_zero (rest))]);
    }
    std::sort (elements.begin (), elements.end ());
    return elements;
}

} // namespace ostrand::gates
