// Storing gates and dropping those that a smaller one replaces.
#include "gates/gate_store.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace ostrand::gates {
namespace {

bool is_part (std::span<const int> part, std::span<const int> whole) {
    return part.size () <= whole.size () &&
           std::includes (whole.begin (), whole.end (), part.begin (), part.end ());
}

bool holds (const std::vector<int>& sorted, int column) {
    return std::binary_search (sorted.begin (), sorted.end (), column);
}

/// Adds what a gate needs to the sets of the same site.
void add_needed (NeededSets& all, std::vector<int> added) {
    for (const std::vector<int>& one : all) {
        if (is_part (one, added)) return;
    }
    std::erase_if (all, [&] (const std::vector<int>& one) { return is_part (added, one); });
    all.push_back (std::move (added));
}

} // namespace

std::string gate_key (const std::vector<int>& inputs, int output) {
    std::string key;
    for (const int input : inputs) {
        if (!key.empty ()) key += '+';
        key += std::to_string (input);
    }
    return key + "=" + std::to_string (output);
}

std::vector<int> GateSite::absent (const std::vector<int>& inputs,
                                   const std::vector<int>& needed) const {
    std::vector<int> found;
    for (const int column : upstream) {
        if (!holds (needed, column) && !holds (inputs, column)) found.push_back (column);
    }
    return found;
}

std::vector<int> GateSite::open_forks (const std::vector<int>& needed) const {
    std::vector<int> found;
    std::set_difference (forks.begin (), forks.end (), needed.begin (), needed.end (),
                         std::back_inserter (found));
    return found;
}

bool GateStore::wants (std::span<const int> inputs, int output, int type,
                       std::span<const int> enzymes) const {
    const auto entry = entries_.find (KeyView{inputs, output});
    return entry == entries_.end () ||
           std::none_of (entry->second.begin (), entry->second.end (), [&] (const Circuit& other) {
               return other.type == type && other.site->enzymes.size () < enzymes.size () &&
                      is_part (other.site->enzymes, enzymes);
           });
}

void GateStore::add (const std::vector<int>& inputs, int output, int type,
                     std::shared_ptr<const GateSite> site, NeededSets needed) {
    add_to (entries_[Key{inputs, output}], Circuit{type, std::move (site), std::move (needed)});
}

void GateStore::add_to (std::vector<Circuit>& entry, Circuit circuit) {
    const std::vector<int>& enzymes = circuit.site->enzymes;
    for (Circuit& other : entry) {
        if (other.type != circuit.type || !is_part (other.site->enzymes, enzymes)) continue;
        if (other.site->enzymes.size () < enzymes.size ()) return;
        size_ -= other.needed.size ();
        for (std::vector<int>& one : circuit.needed) {
            add_needed (other.needed, std::move (one));
        }
        size_ += other.needed.size ();
        return;
    }
    std::erase_if (entry, [&] (const Circuit& other) {
        const bool larger = other.type == circuit.type && is_part (enzymes, other.site->enzymes);
        if (larger) size_ -= other.needed.size ();
        return larger;
    });
    size_ += circuit.needed.size ();
    entry.push_back (std::move (circuit));
}

void GateStore::merge (GateStore&& other) {
    size_ += other.size_;
    entries_.merge (other.entries_); // leaves those whose keys are in both
    for (auto& [key, circuits] : other.entries_) {
        std::vector<Circuit>& entry = entries_[key];
        for (Circuit& circuit : circuits) {
            size_ -= circuit.needed.size ();
            add_to (entry, std::move (circuit));
        }
    }
    other = {};
}

std::vector<Gate> GateStore::take_gates (const std::vector<std::string>& type_names) {
    struct Entry {
        std::string key;
        decltype (entries_)::iterator place;
    };
    std::vector<Entry> by_text;
    by_text.reserve (entries_.size ());
    for (auto entry = entries_.begin (); entry != entries_.end (); ++entry) {
        by_text.push_back ({gate_key (entry->first.inputs, entry->first.output), entry});
    }
    std::sort (by_text.begin (), by_text.end (),
               [] (const Entry& a, const Entry& b) { return a.key < b.key; });
    std::vector<Gate> all;
    all.reserve (size ());
    for (const Entry& entry : by_text) {
        const Key& key = entry.place->first;
        std::vector<Circuit>& circuits = entry.place->second;
        std::sort (circuits.begin (), circuits.end (), [] (const Circuit& a, const Circuit& b) {
            return std::tie (a.type, a.site->enzymes) < std::tie (b.type, b.site->enzymes);
        });
        for (Circuit& circuit : circuits) {
            const GateSite& site = *circuit.site;
            std::sort (circuit.needed.begin (), circuit.needed.end ());
            for (std::vector<int>& needed : circuit.needed) {
                Gate& gate = all.emplace_back ();
                gate.inputs = key.inputs;
                gate.output = key.output;
                gate.type = type_names[static_cast<std::size_t> (circuit.type)];
                gate.absent = site.absent (key.inputs, needed);
                gate.open_forks = site.open_forks (needed);
                gate.enzymes = site.enzymes;
                gate.needed = std::move (needed);
            }
        }
    }
    entries_.clear ();
    size_ = 0;
    return all;
}

} // namespace ostrand::gates
