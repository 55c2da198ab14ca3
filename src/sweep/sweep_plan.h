// What a sweep is to do: the model with its combinations and replicates, the part of a shard, the
// head of the result and where its units lie. All ranks, shards and later goes of one sweep work
// out the same plan. Layer: sweep.
#pragma once
#include "sim/grid_plan.h"
#include "sim/lane_group.h"
#include "sim/model.h"
#include "sim/result_units.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::sweep {

/// A part of a sweep: number `index`, from 1, of `count`.
struct Shard {
    std::uint32_t index = 1;
    std::uint32_t count = 1;
    bool operator== (const Shard&) const = default;
};

/// What changes the result.
struct SweepChoice {
    std::uint32_t replicates = 1;
    bool stochastic = true;
    std::optional<std::uint64_t> seed = {}; // below 2^63
    std::optional<Shard> shard = {};        // none: the whole sweep
};

/// What a file of a sweep says of it: enough to know whether it belongs to a plan, and to put
/// shards together without the model.
struct SweepIdentity {
    std::uint64_t model_hash = 0; // of all that matters of the model; remarks do not
    std::uint64_t combinations = 0;
    std::uint32_t n_displayed = 0;
    std::uint32_t n_points = 0;
    SweepChoice choice;
    std::string head; // text of the result in front of the data

    std::uint64_t n_simul () const { return combinations * choice.replicates; }
    std::uint64_t lines_each () const { return std::uint64_t{n_displayed} * n_points; }
    /// Simulations of the shard, all of them without one: first and one behind the last.
    std::uint64_t first_simulation () const;
    std::uint64_t end_simulation () const;

    std::string to_bytes () const;
    /// Nothing when they are none.
    static std::optional<SweepIdentity> from_bytes (std::string_view bytes);
};

/// Why a file of another sweep does not belong to this one, in words ("it is of another model");
/// empty when it does. Which shard it is does not matter.
std::string difference (const SweepIdentity& file, const SweepIdentity& own);
/// Likewise with the shard.
std::string difference_of_shards (const std::optional<Shard>& file,
                                  const std::optional<Shard>& own);

class SweepPlan {
  public:
    /// Faults of the model are reported as its reader does, those of the plan are given back.
    /// Nothing when there is one.
    static std::unique_ptr<SweepPlan> read (std::string_view model, const SweepChoice& choice,
                                            std::string& fault);

    const SweepIdentity& identity () const { return identity_; }
    const sim::ResultUnits& units () const { return units_; }
    sim::LaneModel model () const;
    std::uint32_t n_points () const { return identity_.n_points; }
    /// Time steps until the last point is recorded. What comes behind it nobody sees.
    std::uint64_t time_steps () const;
    /// Species in the result, in its order.
    const std::vector<std::uint32_t>& displayed () const { return displayed_; }

    /// Initial counts, by species.
    std::vector<std::uint32_t> counts (std::uint64_t simulation) const;
    sim::SimulationState start (std::uint64_t simulation) const;

  private:
    SweepPlan () = default;

    sim::ModelTables tables_;
    sim::GridPlan grid_;
    std::vector<std::uint32_t> displayed_;
    sim::ResultUnits units_;
    SweepIdentity identity_;
};

} // namespace ostrand::sweep
