// The table behind a numbering.
#include "document/numbering.h"

#include <cstdint>

namespace ostrand::document {
namespace {

constexpr std::size_t fewest_slots = 16;

/// Objects take more than 2^8 bytes each. A few neighbours in memory stay neighbours in the table,
/// since they are mostly asked for one after the other; each such group goes anywhere.
constexpr int object_bits = 8;
constexpr int group_bits = 3;

std::size_t hash_of (const GraphBase* object) {
    const auto block = reinterpret_cast<std::uintptr_t> (object) >> object_bits;
    const std::uint64_t group = (block >> group_bits) * std::uint64_t{0x9E3779B97F4A7C15U} >> 24;
    return static_cast<std::size_t> (group << group_bits | (block & ((1U << group_bits) - 1)));
}

} // namespace

/// Where the object stands, or where it would be put. The table has free slots.
std::size_t Numbering::place_of (const GraphBase* object) const {
    const std::size_t mask = table_.size () - 1;
    std::size_t place = hash_of (object) & mask;
    while (table_[place].object != nullptr && table_[place].object != object) {
        place = (place + 1) & mask;
    }
    return place;
}

void Numbering::grow (std::size_t slots) {
    std::vector<Entry> old (slots);
    old.swap (table_);
    for (const Entry& entry : old) {
        if (entry.object != nullptr) table_[place_of (entry.object)] = entry;
    }
}

void Numbering::make_room (std::size_t objects) {
    std::size_t slots = fewest_slots;
    while (slots < 2 * (used_ + objects)) slots *= 2;
    if (slots > table_.size ()) grow (slots);
}

int Numbering::add (const GraphBase& object) {
    if (2 * (used_ + 1) > table_.size ()) make_room (used_ + 1);
    Entry& entry = table_[place_of (&object)];
    if (entry.object == nullptr) ++used_;
    entry = {&object, next_};
    return next_++;
}

int Numbering::of (const GraphBase* object) const {
    if (object == nullptr || table_.empty ()) return no_id;
    const Entry& entry = table_[place_of (object)];
    return entry.object == nullptr ? no_id : entry.number;
}

} // namespace ostrand::document
