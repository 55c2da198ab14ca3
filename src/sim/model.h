// The model tables: species, elementary steps, names. What the reader fills and the engines walk.
// Layer: sim.
#pragma once
#include "sim/concentration.h"
#include "sim/name_table.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ostrand::sim {

/// Species of one model; index 4095 is left for the spare slot of a full table.
inline constexpr std::size_t max_species = 4095;
/// Elementary steps of one model.
inline constexpr std::size_t max_steps = 2048;

/// "No species": the second reactant of a mono-molecular step, and while reading an empty product.
inline constexpr std::uint16_t no_species = 4096;
/// "No colour given".
inline constexpr std::uint32_t no_colour = 0xFFFFFFFF;

struct ModelSpecies {
    std::array<std::uint32_t, max_concentrations> conc{}; // initial counts, molecules
    std::int32_t nb = 1;                                  // valid entries of conc
    std::string name;
    std::uint32_t hash = 0;           // its slot in the name table
    std::uint32_t colour = no_colour; // 0xRRGGBB00
    bool displayed = false;
    bool visited = false; // scratch mark of prepare_run
    // The chain of species whose concentrations vary together; owned by the tables.
    ModelSpecies* next_linked = nullptr;
    ModelSpecies* prev_linked = nullptr;
};

/// One elementary step, as small as the engines' innermost loop likes it.
struct ElemStep {
    std::uint16_t m;                // first reactant
    std::uint16_t q;                // second reactant; no_species: the step is mono-molecular
    std::array<std::uint16_t, 5> p; // products; an empty one is the spare slot once a model is read
    float k; // mono-molecular: probability per molecule and time step; else a factor of alpha
};

struct ModelTables {
    std::vector<std::unique_ptr<ModelSpecies>> species; // in order of first mention
    NameTable names;
    std::vector<ElemStep> steps;      // in order of creation, which is the order of sweeping
    std::uint32_t nb_gen = 0;         // length of the run, time steps
    std::int32_t complex_counter = 0; // kinetic statements so far; runs on over all models read

    std::uint32_t n_species () const { return static_cast<std::uint32_t> (species.size ()); }
    std::uint32_t n_reactions () const { return static_cast<std::uint32_t> (steps.size ()); }

    /// Empties everything but the complex counter.
    void reset ();

    /// What intern_species gives when nothing was found or made.
    static constexpr int name_unknown = 0;
    static constexpr int name_table_full = -2;

    /// Index of the species of that name, made on its first mention. With `lookup_only` nothing is
    /// made and an unknown name gives 0. A name is taken for one that begins with it when the
    /// longer one stands in its slot. -2 when every slot is taken or the species table is full.
    int intern_species (std::string_view text, bool lookup_only);
};

} // namespace ostrand::sim
