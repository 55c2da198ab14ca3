// The import's tables: names by hash, reactions in a list.
#include "files/import_tables.h"

namespace ostrand::files {

ImportTables& import_tables () {
    static ImportTables tables;
    return tables;
}

ImportSpecies* ImportTables::intern (std::string_view name) {
    // The simulator's hash: reduced at each byte, the sign of the dividend kept.
    int hash = 11;
    for (const char c : name) {
        hash = ((hash * 19) ^ static_cast<signed char> (c)) % most_import_species;
    }
    if (hash < 0) {
        hash += most_import_species;
    }
    for (int tries = 0; tries < most_import_species; ++tries) {
        std::unique_ptr<ImportSpecies>& place = names[static_cast<std::size_t> (hash)];
        if (!place) {
            place = std::make_unique<ImportSpecies> ();
            place->name = name;
            place->slot = hash;
            return place.get ();
        }
        if (place->name == name) {
            return place.get ();
        }
        hash = (hash + 41) % most_import_species;
    }
    return nullptr;
}

ImportSpecies* ImportTables::first_slot () { return names[0] ? names[0].get () : &no_name; }

ImportReaction& ImportTables::add_reaction () {
    owned.push_back (std::make_unique<ImportReaction> ());
    ImportReaction& r = *owned.back ();
    reactions.push_back (&r);
    r.index = static_cast<int> (owned.size ());
    return r;
}

void ImportTables::reset () {
    for (std::unique_ptr<ImportSpecies>& place : names) {
        place.reset ();
    }
    no_name = ImportSpecies{};
    owned.clear ();
    reactions.clear ();
    inhibitions.clear ();
    component_size.clear ();
    first_virtual = no_virtual;
    last_node = 0;
    species_records = 0;
    min_x = 0;
}

} // namespace ostrand::files
