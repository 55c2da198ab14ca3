// IdTable: objects by the ids that a text gives them.
// Layer: document.
#pragma once
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace ostrand::document {

class GraphBase;

/// From ids, most of which count up from 1, to objects.
class IdTable {
  public:
    struct Entry {
        GraphBase* object = nullptr;
        bool is_own_node = false; // the network that is being read has a node of this id
    };

    /// The entry of an id; null when there is none.
    const Entry* find (int id) const;
    Entry* find (int id);
    GraphBase* object (int id) const;
    /// The entry of an id, made when there is none.
    Entry& operator[] (int id);
    void erase (int id);
    /// Ids that have entries.
    std::size_t size () const { return count_; }
    void clear ();
    void swap (IdTable& other) noexcept;
    /// Calls visit (id, entry) for all, in no particular order.
    template <typename Visit>
    void each (const Visit& visit) {
        for (std::size_t id = 0; id < dense_.size (); ++id) {
            if (dense_[id].object != nullptr) visit (static_cast<int> (id), dense_[id]);
        }
        for (auto& [id, entry] : sparse_) visit (id, entry);
    }

  private:
    std::vector<Entry> dense_; // by id; without an object: no entry
    std::unordered_map<int, Entry> sparse_;
    std::size_t count_ = 0;
};

} // namespace ostrand::document
