// The open-addressed table of species names.
#include "sim/name_table.h"

namespace ostrand::sim {

std::uint32_t NameTable::hash (std::string_view text) {
    int h = 11;
    for (const char c : text) {
        h = (h * 19) ^ static_cast<signed char> (c);
        h = h % static_cast<int> (slots);
    }
    if (h < 0) h += static_cast<int> (slots);
    return static_cast<std::uint32_t> (h);
}

NameTable::Place NameTable::find (std::string_view text) const {
    std::uint32_t slot = hash (text);
    for (std::uint32_t probe = 0; probe < slots; ++probe) {
        const Entry& entry = entries_[slot];
        if (entry.index < 0) return {State::empty, slot, -1};
        if (std::string_view (entry.text).starts_with (text)) {
            return {State::taken, slot, entry.index};
        }
        slot = (slot + probe_step) & (slots - 1);
    }
    return {State::full, slot, -1};
}

void NameTable::put (std::uint32_t slot, std::string_view text, int index) {
    entries_[slot].text = text;
    entries_[slot].index = index;
}

void NameTable::clear () { entries_.assign (slots, {}); }

} // namespace ostrand::sim
