// Reads the reactions of a metabolic model, in the two SBML dialects that name enzymes and
// inhibitors: roles by sboTerm on the references, or by CellDesigner's modification lines.
// Layer: gates.
#pragma once
#include "base/disk.h"
#include "gates/reaction.h"

#include <map>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand::gates {

/// Raw lines of the elements that a sub-model repeats, each with its closing tag or, where the
/// element closes itself, as it stands.
struct RawElements {
    std::vector<std::string> compartments;
    std::vector<std::string> species;
    std::vector<std::string> species_aliases;
    std::vector<std::string> compartment_aliases;
    std::vector<std::string> proteins;
    std::vector<std::pair<std::string, std::string>> reactions; // id, lines
    std::string size_x;                                         // of the model's display
    std::string size_y;
};

struct SbmlModel {
    std::vector<Reaction> reactions;     // in model order
    std::map<std::string, int> elements; // all substrates, products and inhibitors, 0, 1 … by name
    std::vector<std::pair<std::string, std::string>> species; // id, name, in reading order
    RawElements raw;
    int line_count = 0;
    bool opened = false;
};

/// Reads a model's text. A species that no line declares keeps its id as its name; a reference
/// outside a reaction, or without a species, is ignored.
/// stop  ends the reading early
SbmlModel read_sbml_lines (std::string_view text, const std::stop_token& stop = {});

/// Reads a model file. One that could not be opened is told on standard output and gives empty
/// lists.
SbmlModel sbmlReader (const TextFile& file, const std::stop_token& stop = {});

} // namespace ostrand::gates
