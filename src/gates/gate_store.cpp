// Storing gates and dropping those that a smaller one replaces.
#include "gates/gate_store.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace ostrand::gates {
namespace {

bool is_part (const std::vector<int>& part, const std::vector<int>& whole) {
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

bool GateStore::wants (const std::vector<int>& inputs, int output, int type,
                       const std::vector<int>& enzymes) const {
    const auto entry = entries_.find (Key{inputs, output});
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
    for (auto& [key, circuits] : other.entries_) {
        std::vector<Circuit>& entry = entries_[key];
        for (Circuit& circuit : circuits) add_to (entry, std::move (circuit));
    }
    other.entries_.clear ();
    other.size_ = 0;
}

std::vector<Gate> GateStore::gates (const std::vector<std::string>& type_names) const {
    struct Listed {
        std::string key;
        int type;
        Gate gate;
    };
    std::vector<Listed> listed;
    listed.reserve (size_);
    for (const auto& [key, circuits] : entries_) {
        const std::string text = gate_key (key.inputs, key.output);
        for (const Circuit& circuit : circuits) {
            const GateSite& site = *circuit.site;
            for (const std::vector<int>& needed : circuit.needed) {
                listed.push_back ({text, circuit.type,
                                   Gate{key.inputs, key.output,
                                        type_names[static_cast<std::size_t> (circuit.type)], needed,
                                        site.absent (key.inputs, needed), site.open_forks (needed),
                                        site.enzymes}});
            }
        }
    }
    std::sort (listed.begin (), listed.end (), [] (const Listed& a, const Listed& b) {
        return std::tie (a.key, a.type, a.gate.enzymes, a.gate.needed) <
               std::tie (b.key, b.type, b.gate.enzymes, b.gate.needed);
    });
    std::vector<Gate> all;
    all.reserve (listed.size ());
    for (Listed& one : listed) all.push_back (std::move (one.gate));
    return all;
}

} // namespace ostrand::gates
