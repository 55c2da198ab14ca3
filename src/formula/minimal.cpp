// Which sets of reactions are minimal?
#include "formula/minimal.h"

#include <algorithm>
#include <utility>

namespace ostrand::formula {
namespace {

std::uint64_t mark_of (const std::vector<int>& ids) {
    std::uint64_t mark = 0;
    for (const int id : ids) mark |= std::uint64_t{1} << (static_cast<unsigned> (id) % 64);
    return mark;
}

std::uint64_t hash_of (const std::vector<int>& ids) {
    std::uint64_t hash = 14695981039346656037U; // FNV-1a, 64 bits
    for (const int id : ids) hash = (hash ^ static_cast<std::uint64_t> (id)) * 1099511628211U;
    return hash;
}

bool is_subset (const MinimalSets::Kept& small, std::uint64_t mark, const std::vector<int>& ids) {
    return (small.mark & ~mark) == 0 && small.ids.size () <= ids.size () &&
           std::includes (ids.begin (), ids.end (), small.ids.begin (), small.ids.end ());
}

} // namespace

bool MinimalSets::has_proper_subset (const std::vector<int>& ids) const {
    const std::uint64_t mark = mark_of (ids);
    return std::any_of (kept_.begin (), kept_.end (), [&] (const Kept& one) {
        return one.ids.size () < ids.size () && is_subset (one, mark, ids);
    });
}

void MinimalSets::add (const std::vector<int>& ids, const std::vector<const LibGate*>& gates) {
    const std::uint64_t hash = hash_of (ids);
    const auto [first, last] = by_hash_.equal_range (hash);
    for (auto place = first; place != last; ++place) {
        Kept& equal = kept_[place->second];
        if (equal.ids != ids) continue;
        equal.gates = gates;
        return;
    }
    if (has_proper_subset (ids)) return;
    Kept entry{ids, gates, mark_of (ids)};
    for (std::size_t i = kept_.size (); i-- > 0;) {
        if (is_subset (entry, kept_[i].mark, kept_[i].ids)) remove (i);
    }
    by_hash_.emplace (hash, kept_.size ());
    kept_.push_back (std::move (entry));
}

/// The last one takes the free place: the final list is ordered by its texts.
void MinimalSets::remove (std::size_t index) {
    const auto forget = [this] (std::size_t place) {
        const auto [first, last] = by_hash_.equal_range (hash_of (kept_[place].ids));
        by_hash_.erase (
            std::find_if (first, last, [&] (const auto& entry) { return entry.second == place; }));
    };
    forget (index);
    const std::size_t end = kept_.size () - 1;
    if (index != end) {
        forget (end);
        kept_[index] = std::move (kept_[end]);
        by_hash_.emplace (hash_of (kept_[index].ids), index);
    }
    kept_.pop_back ();
}

} // namespace ostrand::formula
