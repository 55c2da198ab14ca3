// The reaction table: kinetic coefficients that the gate file has to repeat, one line a reaction.
// Layer: gates.
#pragma once
#include "base/disk.h"
#include "gates/reaction.h"

#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::gates {

/// Draws a number of at least 0.
using RandomNumbers = std::function<int ()>;

/// Numbers that are the same on every machine for one seed.
RandomNumbers seeded_numbers (unsigned seed);

/// The whole text: two legend lines, then the reactions with an enzyme, in model order. Of
/// substrates and products four are written, whatever their stated count. Coefficients are drawn:
/// substrates 0.1 to 50 mM, products 50 to 399.
std::string reaction_table_text (const std::string& model_path,
                                 const std::vector<Reaction>& reactions,
                                 const RandomNumbers& random);

/// Reads such a table. Of the enzymes the first is kept; a line without one is dropped, as is
/// whatever a line's counts promise beyond its fields.
/// A stop ends the reading early.
std::vector<Reaction> read_reaction_table (std::string_view text, const std::stop_token& stop = {});

/// The same from a file; one that could not be opened is told on standard output and gives nothing.
std::vector<Reaction> CSVCineticReader (const TextFile& file, const std::stop_token& stop = {});

} // namespace ostrand::gates
