// What kinetic statements become: elementary steps through complexes of enzyme and substrates.
// Layer: sim.
#pragma once
#include "sim/lexer.h"
#include "sim/model.h"

#include <cstdint>
#include <span>

namespace ostrand::sim {

/// Appends a step to the table; a full table is a fault.
void append_step (ModelTables& tables, Lexer& reader, const ElemStep& step);

/// Appends the random-order binding scheme of an enzyme that binds its substrates one at a time, in
/// every order, and lets go of the products at once.
/// substrates  1 to 4 species; more is a fault
/// km          mM, one for each substrate, in the same order
/// products    species; only the first four are made
/// kcat        per second
void expand_enzyme (ModelTables& tables, Lexer& reader, std::uint16_t enzyme,
                    std::span<const std::uint16_t> substrates, std::span<const float> km,
                    std::span<const std::uint16_t> products, float kcat);

/// Appends the two steps of a competitive inhibitor that sits on the free enzyme.
/// ki  mM
void expand_inhibitor (ModelTables& tables, Lexer& reader, std::uint16_t enzyme,
                       std::uint16_t inhibitor, float ki);

} // namespace ostrand::sim
