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
    if (has_empty_) return !ids.empty ();
    const std::uint64_t mark = mark_of (ids);
    return std::any_of (ids.begin (), ids.end (), [&] (int id) {
        const auto anchor = static_cast<std::size_t> (id);
        if (anchor >= by_anchor_.size ()) return false;
        return std::any_of (by_anchor_[anchor].begin (), by_anchor_[anchor].end (),
                            [&] (std::size_t place) {
                                const Kept& one = kept_[place];
                                return one.ids.size () < ids.size () && is_subset (one, mark, ids);
                            });
    });
}

void MinimalSets::add (const std::vector<int>& ids, const std::vector<const LibGate*>& gates) {
    const auto [first, last] = by_hash_.equal_range (hash_of (ids));
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
    insert (std::move (entry));
}

void MinimalSets::insert (Kept entry) {
    if (entry.ids.empty ()) {
        has_empty_ = true;
    } else {
        const auto highest = static_cast<std::size_t> (entry.ids.back ());
        if (by_anchor_.size () <= highest) by_anchor_.resize (highest + 1);
        const auto sharing = [&] (int id) {
            return by_anchor_[static_cast<std::size_t> (id)].size ();
        };
        entry.anchor = *std::min_element (entry.ids.begin (), entry.ids.end (),
                                          [&] (int a, int b) { return sharing (a) < sharing (b); });
        by_anchor_[static_cast<std::size_t> (entry.anchor)].push_back (kept_.size ());
    }
    by_hash_.emplace (hash_of (entry.ids), kept_.size ());
    kept_.push_back (std::move (entry));
}

/// The last one takes the free place: the final list is ordered by its texts.
void MinimalSets::remove (std::size_t index) {
    const std::size_t end = kept_.size () - 1;
    forget (index);
    if (index != end) {
        forget (end);
        std::swap (kept_[index], kept_[end]);
        const Kept& moved = kept_[index];
        by_hash_.emplace (hash_of (moved.ids), index);
        by_anchor_[static_cast<std::size_t> (moved.anchor)].push_back (index);
    }
    kept_.pop_back ();
}

/// Takes a set's place out of both tables. The empty set, which has no anchor, never comes here: no
/// set is a proper subset of it.
void MinimalSets::forget (std::size_t index) {
    const Kept& one = kept_[index];
    const auto [first, last] = by_hash_.equal_range (hash_of (one.ids));
    by_hash_.erase (
        std::find_if (first, last, [&] (const auto& entry) { return entry.second == index; }));
    std::erase (by_anchor_[static_cast<std::size_t> (one.anchor)], index);
}

} // namespace ostrand::formula
