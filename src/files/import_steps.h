// The steps of an import, in the order in which they run; each reports its own failure.
// Layer: files.
#pragma once
#include "files/import_tables.h"

#include <string>
#include <string_view>

namespace ostrand::files {

/// Fills the tables from a model text. False at the first fault.
bool read_statements (std::string_view text, ImportTables& tables);

/// Links the reactions, makes hubs, finds components and depths, and sorts the list so that the
/// heads of the longest chains come first.
bool build_graph (ImportTables& tables);

/// Gives each reaction its place and writes everything as native text.
/// most  bytes that the text may have; it is refused when fewer than 2048 are left
bool place_and_write (ImportTables& tables, std::string& out, std::size_t most);

// Parts of these that have their own files.

/// Places all reactions, strip by strip, and stacks the strips.
void place_reactions (ImportTables& tables);
/// Writes the records of one reaction.
/// written  by node number, for the component that is being written
void write_reaction (ImportTables& tables, const ImportReaction& r, std::string& written,
                     std::string& out);

/// Offset of the enzyme from the middle of a reaction that runs in this direction.
struct Offset {
    int x;
    int y;
};
struct SideOffsets {
    Offset enzyme;
    Offset substrate; // of each further substrate from the main one, times its number
    Offset product;
};
const SideOffsets& side_offsets (Direction direction);

} // namespace ostrand::files
