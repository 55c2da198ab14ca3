// Keeps the minimal ones among sets of reactions.
// Layer: formula.
#pragma once
#include "formula/library.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ostrand::formula {

/// The sets seen so far of which no proper subset was seen. Of equal sets the later one stays.
class MinimalSets {
  public:
    struct Kept {
        std::vector<int> ids; // ascending, each once
        std::vector<const LibGate*> gates;
        std::uint64_t mark = 0; // one bit for each id, folded; a subset has no other bits
        int anchor = -1;        // the id that finds it
    };

    /// Offers a set. `ids` ascending, each once.
    void add (const std::vector<int>& ids, const std::vector<const LibGate*>& gates);
    /// True when a kept set is a proper subset of `ids`: neither this set nor any larger one will
    /// ever be kept.
    bool has_proper_subset (const std::vector<int>& ids) const;
    std::size_t size () const { return kept_.size (); }
    const std::vector<Kept>& kept () const { return kept_; }

  private:
    void insert (Kept entry);
    void remove (std::size_t index);
    void forget (std::size_t index);

    std::vector<Kept> kept_;
    std::unordered_multimap<std::uint64_t, std::size_t> by_hash_; // whole set to its place
    /// Places of the kept sets by one id of each, the one that fewest shared when it came; the
    /// empty set stands nowhere.
    std::vector<std::vector<std::size_t>> by_anchor_;
    bool has_empty_ = false;
};

} // namespace ostrand::formula
