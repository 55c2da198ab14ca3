// How does a library look as numbers?
#include "formula/gate_index.h"

#include <algorithm>
#include <utility>

namespace ostrand::formula {
namespace {

/// The number of a gate type's name, -1 when no operator asks for it.
int type_number (std::string_view name) {
    if (name == "YES") return yes_type;
    for (int code = 0; code < operator_type_count; ++code) {
        if (name == gate_name (static_cast<OperatorType> (code))) return code;
    }
    return -1;
}

/// A species that must be absent may be neither owned nor shared by another gate; an owned one is
/// named by no other gate at all; a shared one may be shared only. The species that is being asked
/// for is at its place in owned and shared.
void set_blocks (Touch& touch) {
    if (touch.sets & in_absent) touch.blocked_if_asked = in_owned | in_shared;
    touch.blocked_by = touch.blocked_if_asked;
    if (touch.sets & in_owned) touch.blocked_by |= in_absent | in_owned | in_shared;
    if (touch.sets & in_shared) touch.blocked_by |= in_absent | in_owned;
}

} // namespace

GateIndex::GateIndex (const Library& library, const std::set<std::string>& variables,
                      const std::stop_token& stop)
    : by_type_ (indexed_type_count) {
    names_.emplace (std::string_view (), no_species);
    std::size_t input_count = 0;
    for (const auto& source : library.gates ()) input_count += source->inputs.size ();
    inputs_.reserve (input_count); // spans look at it from here on
    gates_.reserve (library.gates ().size ());
    for (const auto& source : library.gates ()) {
        if (stop.stop_requested ()) break;
        const int type = type_number (source->type);
        if (type < 0 || variables.contains (source->output)) continue;
        IndexedGate gate;
        gate.source = source.get ();
        gate.type = type;
        gate.output = intern (source->output);
        const std::size_t first = inputs_.size ();
        for (const std::string& name : source->inputs) inputs_.push_back (intern (name));
        gate.inputs = std::span<const int> (inputs_).subspan (first);
        gates_.push_back (gate);
    }
    claims_.resize (gates_.size ());
    askable_ = names_.size ();
    by_key_.resize (askable_ * indexed_type_count);
    for (std::size_t i = 0; i < gates_.size (); ++i) {
        const IndexedGate& gate = gates_[i];
        by_type_[static_cast<std::size_t> (gate.type)].push_back (static_cast<int> (i));
        by_key_[static_cast<std::size_t> (gate.output * indexed_type_count + gate.type)].push_back (
            static_cast<int> (i));
    }
}

void GateIndex::make_claims (const IndexedGate& gate, GateClaims& claims) {
    const auto touch = [&] (const std::set<std::string>& names, TouchBit bit) {
        for (const std::string& name : names) {
            const int species = intern (name);
            auto place = std::find_if (claims.touches.begin (), claims.touches.end (),
                                       [&] (const Touch& one) { return one.species == species; });
            if (place == claims.touches.end ()) {
                place = claims.touches.insert (place, {.species = species});
            }
            place->sets |= bit;
        }
    };
    touch (gate.source->owned, in_owned);
    touch (gate.source->shared, in_shared);
    touch (gate.source->absent, in_absent);
    for (Touch& one : claims.touches) set_blocks (one);
    for (const LibReaction* reaction : gate.source->reactions) {
        claims.reactions.push_back (intern_reaction (reaction->id));
    }
    std::sort (claims.reactions.begin (), claims.reactions.end ());
    claims.made = true;
}

int GateIndex::species (std::string_view name) const {
    const auto found = names_.find (name);
    return found == names_.end () || static_cast<std::size_t> (found->second) >= askable_
               ? -1
               : found->second;
}

std::span<const int> GateIndex::query (int output, int type) const {
    return by_key_[static_cast<std::size_t> (output * indexed_type_count + type)];
}

int GateIndex::intern (const std::string& name) {
    return names_.try_emplace (name, static_cast<int> (names_.size ())).first->second;
}

int GateIndex::intern_reaction (const std::string& id) {
    return reaction_ids_.try_emplace (id, static_cast<int> (reaction_ids_.size ())).first->second;
}

} // namespace ostrand::formula
