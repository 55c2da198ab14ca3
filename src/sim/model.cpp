// The model tables.
#include "sim/model.h"

namespace ostrand::sim {

void ModelTables::reset () {
    species.clear ();
    names.clear ();
    steps.clear ();
    nb_gen = 0;
}

int ModelTables::intern_species (std::string_view text, bool lookup_only) {
    const NameTable::Place place = names.find (text);
    if (place.state == NameTable::State::taken) return place.index;
    if (place.state == NameTable::State::full) return name_table_full;
    if (lookup_only) return name_unknown;
    if (species.size () >= max_species) return name_table_full;
    const int index = static_cast<int> (species.size ());
    names.put (place.slot, text, index);
    auto fresh = std::make_unique<ModelSpecies> ();
    fresh->name = text;
    fresh->hash = place.slot;
    species.push_back (std::move (fresh));
    return index;
}

} // namespace ostrand::sim
