// The two halves of a table of ids.
#include "document/id_table.h"

#include <utility>

namespace ostrand::document {
namespace {

/// Ids up to a small multiple of the number of entries are worth a place in the row.
bool is_dense (int id, std::size_t count) {
    constexpr std::size_t always = 1024;
    return id >= 0 && static_cast<std::size_t> (id) < always + 4 * count;
}

} // namespace

const IdTable::Entry* IdTable::find (int id) const {
    if (id >= 0 && static_cast<std::size_t> (id) < dense_.size ()) {
        const Entry& entry = dense_[static_cast<std::size_t> (id)];
        if (entry.object != nullptr) return &entry;
    }
    if (sparse_.empty ()) return nullptr;
    const auto found = sparse_.find (id);
    return found == sparse_.end () ? nullptr : &found->second;
}

IdTable::Entry* IdTable::find (int id) {
    return const_cast<Entry*> (std::as_const (*this).find (id));
}

GraphBase* IdTable::object (int id) const {
    const Entry* const entry = find (id);
    return entry == nullptr ? nullptr : entry->object;
}

IdTable::Entry& IdTable::operator[] (int id) {
    if (Entry* const entry = find (id)) return *entry;
    ++count_;
    if (!is_dense (id, count_)) return sparse_[id];
    const auto place = static_cast<std::size_t> (id);
    if (place >= dense_.size ()) dense_.resize (place + place / 2 + 1);
    return dense_[place];
}

void IdTable::erase (int id) {
    Entry* const entry = find (id);
    if (entry == nullptr) return;
    --count_;
    *entry = {};
    sparse_.erase (id);
}

void IdTable::clear () {
    dense_.clear ();
    sparse_.clear ();
    count_ = 0;
}

void IdTable::swap (IdTable& other) noexcept {
    dense_.swap (other.dense_);
    sparse_.swap (other.sparse_);
    std::swap (count_, other.count_);
}

} // namespace ostrand::document
