// Texts of initial concentrations: a value, a list, a series, or any mix, with units. The one place
// that knows what the simulator reads of them, for whoever takes such a text from a user or a file.
// Layer: sim.
#pragma once
#include "sim/lexer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ostrand::sim {

/// Initial values that one species can have.
inline constexpr std::size_t max_concentrations = 128;

/// Initial counts of one species, in molecules.
struct InitialCounts {
    std::array<std::uint32_t, max_concentrations> conc{};
    std::size_t count = 0;
};

/// Why a text cannot stand behind the "=" of a concentration statement: what the simulator says of
/// it. Nothing when it can: "12 mM", "1 uM, 5 uM", "1 mM -> 5 mM : 1 mM", also behind a group
/// "(name, name)" of linked species. Reports nothing.
std::optional<std::string> concentration_fault (std::string_view text);

/// How many initial values such a text gives a species; 0 when it is faulty.
std::size_t concentration_count (std::string_view text);

/// Molecules of a concentration in mM, truncated; 2^32 or more when it does not fit a count.
double molecules_of (float milli_molar);

// What the readers of models put together. Each reads on from where the lexer is and reports its
// first fault there, with which the lexer has failed.

/// One token, which must be of this kind (and a name must be one); else a fault.
Token expect_token (Lexer& lexer, TokenKind kind);

/// A number and its unit, as mM.
float read_quantity (Lexer& lexer);

/// The names of a list behind its "(", up to its ")": at least one.
void read_names (Lexer& lexer, const std::function<void (const Token& name)>& take);

/// A quantity, then any mix of ", quantity" and "-> quantity : quantity"; the token behind is not
/// taken. `counts` has what was read before a fault.
/// species  for messages
void read_concentrations (Lexer& lexer, std::string_view species, InitialCounts& counts);

} // namespace ostrand::sim
