// The elementary steps of a model as the lane engines walk them: what each of them does is decided
// here, once, and not in every step.
// Layer: sim.
#pragma once
#include "sim/model.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ostrand::sim {

enum class LaneOp : std::uint8_t {
    mono,         // one reactant
    mono_large,   // one reactant, with a constant above 1: may take more than there is
    bi,           // two reactants
    bi_empty,     // two reactants, the second of which never comes up: only draws
    bind_release, // m + q -> p0 and then at once p0 -> m + q, of three different species
    release_bind, // the same two the other way round, for the backward sweep
    enzyme,       // bind_release and then at once p0 -> m + p1 + further products
    enzyme_back,  // the same three the other way round
};

/// One step, or a pair of steps that share their species. Rows are indices of species.
struct LaneStep {
    LaneOp op;
    bool two_products;      // p1 is one
    std::uint8_t more_size; // used entries of `more`
    bool follows;           // m is p0 of the pair right before
    std::uint32_t m;
    std::uint32_t q; // of ops with two reactants and of pairs
    std::uint32_t p0;
    std::uint32_t p1;
    std::array<std::uint32_t, 3> more; // further products of a closing step, added to one by one
    float k;       // of one reactant: as the step has it; of two: with the collision constant
    float release; // of a pair: the constant of p0 -> m + q
    float close;   // of an enzyme: the constant of its closing step
};

struct LaneProgram {
    std::vector<LaneStep> forward;  // one time step from the first elementary step to the last
    std::vector<LaneStep> backward; // and the one after it
    std::uint32_t n_species = 0;
    bool finite = true;      // no constant is infinite or not-a-number
    std::size_t n_steps = 0; // elementary steps that can do anything
};

/// The steps that can do anything when only the species with `present` exist at the start, in the
/// order of the table. A step whose first reactant never comes up neither fires nor draws a number,
/// so that leaving it out changes nothing. Without `draws` (the engine without chance) neither does
/// one whose second reactant never comes up.
/// present  by species
LaneProgram compile_lanes (std::span<const ElemStep> steps, std::uint32_t n_species,
                           std::vector<bool> present, bool draws);

} // namespace ostrand::sim
