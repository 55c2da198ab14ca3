// Storing gates and dropping those that a smaller one replaces.
#include "gates/gate_store.h"

#include <algorithm>
#include <tuple>

namespace ostrand::gates {
namespace {

bool is_part (const std::vector<int>& part, const std::vector<int>& whole) {
    return part.size () <= whole.size () &&
           std::includes (whole.begin (), whole.end (), part.begin (), part.end ());
}

/// Adds conditions to those of the same circuit.
void add_conditions (std::vector<GateConditions>& all, GateConditions added) {
    for (const GateConditions& one : all) {
        if (is_part (one.needed, added.needed)) return;
    }
    std::erase_if (all,
                   [&] (const GateConditions& one) { return is_part (added.needed, one.needed); });
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

void GateStore::add (const std::vector<int>& inputs, int output, int type,
                     const std::vector<int>& enzymes, std::vector<GateConditions> conditions) {
    add_to (entries_[Key{inputs, output}], Circuit{type, enzymes, std::move (conditions)});
}

void GateStore::add_to (std::vector<Circuit>& entry, Circuit circuit) {
    for (Circuit& other : entry) {
        if (other.type != circuit.type || !is_part (other.enzymes, circuit.enzymes)) continue;
        if (other.enzymes.size () < circuit.enzymes.size ()) return;
        size_ -= other.conditions.size ();
        for (GateConditions& one : circuit.conditions) {
            add_conditions (other.conditions, std::move (one));
        }
        size_ += other.conditions.size ();
        return;
    }
    std::erase_if (entry, [&] (const Circuit& other) {
        const bool larger = other.type == circuit.type && is_part (circuit.enzymes, other.enzymes);
        if (larger) size_ -= other.conditions.size ();
        return larger;
    });
    size_ += circuit.conditions.size ();
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
            for (const GateConditions& one : circuit.conditions) {
                listed.push_back ({text, circuit.type,
                                   Gate{key.inputs, key.output,
                                        type_names[static_cast<std::size_t> (circuit.type)],
                                        one.needed, one.absent, one.open_forks, circuit.enzymes}});
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
