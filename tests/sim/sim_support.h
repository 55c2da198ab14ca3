// Helpers of the simulator's tests.
#pragma once
#include "sim/model.h"
#include "sim/read_model.h"
#include "sim/result_writer.h"
#include "sim/run.h"
#include "support/support.h"

#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sim {

/// A text read into tables of its own, with what was reported.
struct ReadModel {
    explicit ReadModel (std::string_view text) {
        const testing::CaughtMessages messages;
        ok = read_model (text, tables);
        reported = messages.joined ();
    }
    const ModelSpecies& species (std::string_view name) const {
        for (const auto& each : tables.species) {
            if (each->name == name) return *each;
        }
        throw std::runtime_error ("no species " + std::string (name));
    }
    std::vector<std::uint32_t> counts (std::string_view name) const {
        const ModelSpecies& found = species (name);
        return {found.conc.begin (), found.conc.begin () + found.nb};
    }
    std::vector<std::string> names () const {
        std::vector<std::string> all;
        for (const auto& each : tables.species) all.push_back (each->name);
        return all;
    }
    /// A step as "a + b -> c + d".
    std::string step (std::size_t index) const {
        const ElemStep& e = tables.steps.at (index);
        std::string text = tables.species[e.m]->name;
        if (e.q != no_species) text += " + " + tables.species[e.q]->name;
        text += " ->";
        for (std::size_t i = 0; i < e.p.size (); ++i) {
            if (e.p[i] >= tables.n_species ()) continue;
            text += (i > 0 ? " + " : " ") + tables.species[e.p[i]]->name;
        }
        return text;
    }
    std::vector<std::string> steps () const {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < tables.steps.size (); ++i) all.push_back (step (i));
        return all;
    }

    ModelTables tables;
    bool ok = false;
    std::string reported;
};

/// What reading a faulty text reports; "(read)" when it reads.
inline std::string fault_of (std::string_view text) {
    const ReadModel model (text);
    return model.ok ? "(read)" : model.reported;
}

/// A count of molecules as the reader makes it.
inline std::uint32_t molecules (float milli_molar) {
    return static_cast<std::uint32_t> (molecules_of (milli_molar));
}

/// Runs a text as the first run of a process; counts[simulation][species][point].
struct FinishedRun {
    FinishedRun (std::string_view text, bool stochastic = true);
    ModelTables tables;
    Grid grid;
    std::uint32_t count (std::size_t simulation, std::string_view name, std::uint32_t point) const;
};

} // namespace ostrand::sim
