// Plans of sweeps.
#include "sweep/sweep_plan.h"

#include "base/text.h"
#include "sim/colours.h"
#include "sim/engine.h"
#include "sim/read_model.h"
#include "sim/result_head.h"
#include "sweep/bytes.h"
#include "sweep/replicate_seeds.h"

#include <bit>
#include <limits>

namespace ostrand::sweep {
namespace {

/// 64 bits that any change of the bytes changes: words multiplied and folded, as Steele et al. 2014
/// (OOPSLA, SplittableRandom) mix theirs.
std::uint64_t hash_of (std::string_view bytes) {
    std::uint64_t hash = bytes.size ();
    for (std::size_t at = 0; at < bytes.size (); at += 8) {
        std::uint64_t word =
            ByteReader (std::string (bytes.substr (at, 8)) + std::string (8, '\0')).take_long ();
        word = (word ^ word >> 30) * 0xBF58476D1CE4E5B9;
        word = (word ^ word >> 27) * 0x94D049BB133111EB;
        hash = std::rotl (hash, 27) * 0x9E3779B97F4A7C15 + (word ^ word >> 31);
    }
    hash = (hash ^ hash >> 33) * 0xFF51AFD7ED558CCD;
    return hash ^ hash >> 33;
}

/// All of a model that a result or a simulation depends on.
std::string essence (const sim::ModelTables& tables, const sim::GridPlan& grid) {
    ByteWriter writer;
    writer.put_word (tables.nb_gen);
    writer.put_long (grid.n_simul ());
    for (const auto& species : tables.species) {
        writer.put_text (species->name);
        writer.put_word (species->colour);
        writer.put_byte (species->displayed ? 1 : 0);
        writer.put_word (static_cast<std::uint32_t> (species->nb));
    }
    for (const sim::GridPlan::Member& member : grid.members ()) {
        writer.put_word (static_cast<std::uint32_t> (member.index));
        writer.put_long (member.repeats);
        writer.put_words (std::span (member.species->conc).first (member.nb));
    }
    for (const sim::ElemStep& step : tables.steps) {
        writer.put_word (step.m);
        writer.put_word (step.q);
        for (const std::uint16_t product : step.p) writer.put_word (product);
        writer.put_word (std::bit_cast<std::uint32_t> (step.k));
    }
    return writer.bytes;
}

} // namespace

std::uint64_t SweepIdentity::first_simulation () const {
    const Shard shard = choice.shard.value_or (Shard ());
    // Simulations are below 2^32, and so are shards.
    return n_simul () * (shard.index - 1) / shard.count;
}

std::uint64_t SweepIdentity::end_simulation () const {
    const Shard shard = choice.shard.value_or (Shard ());
    return n_simul () * shard.index / shard.count;
}

std::string SweepIdentity::to_bytes () const {
    ByteWriter writer;
    writer.put_long (model_hash);
    writer.put_long (combinations);
    writer.put_word (n_displayed);
    writer.put_word (n_points);
    writer.put_word (choice.replicates);
    writer.put_byte (choice.stochastic ? 1 : 0);
    writer.put_byte (choice.seed ? 1 : 0);
    writer.put_long (choice.seed.value_or (0));
    writer.put_byte (choice.shard ? 1 : 0);
    const Shard shard = choice.shard.value_or (Shard ());
    writer.put_word (shard.index);
    writer.put_word (shard.count);
    writer.put_text (head);
    return std::move (writer.bytes);
}

std::optional<SweepIdentity> SweepIdentity::from_bytes (std::string_view bytes) {
    ByteReader reader (bytes);
    SweepIdentity identity;
    identity.model_hash = reader.take_long ();
    identity.combinations = reader.take_long ();
    identity.n_displayed = reader.take_word ();
    identity.n_points = reader.take_word ();
    identity.choice.replicates = reader.take_word ();
    identity.choice.stochastic = reader.take_byte () != 0;
    const bool seeded = reader.take_byte () != 0;
    const std::uint64_t seed = reader.take_long ();
    if (seeded) identity.choice.seed = seed;
    const bool sharded = reader.take_byte () != 0;
    Shard shard;
    shard.index = reader.take_word ();
    shard.count = reader.take_word ();
    if (sharded) identity.choice.shard = shard;
    identity.head = reader.take_text ();
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max ();
    const bool sound = reader.finished () && shard.index >= 1 && shard.index <= shard.count &&
                       identity.combinations <= most && identity.choice.replicates >= 1 &&
                       identity.n_simul () <= most;
    if (!sound) return std::nullopt;
    return identity;
}

std::string difference (const SweepIdentity& file, const SweepIdentity& own) {
    const auto seed_text = [] (const std::optional<std::uint64_t>& seed) {
        return seed ? format_text ("of seed %llu", static_cast<unsigned long long> (*seed))
                    : std::string ("without a seed");
    };
    if (file.model_hash != own.model_hash || file.combinations != own.combinations) {
        return "it is of another model";
    }
    if (file.choice.stochastic != own.choice.stochastic) {
        return file.choice.stochastic ? "it is of the stochastic engine"
                                      : "it is of the deterministic engine";
    }
    if (file.choice.replicates != own.choice.replicates) {
        return format_text ("it has %u replicates, not %u", file.choice.replicates,
                            own.choice.replicates);
    }
    if (file.choice.seed != own.choice.seed) {
        return "it is " + seed_text (file.choice.seed) + ", not " + seed_text (own.choice.seed);
    }
    if (file.head != own.head || file.lines_each () != own.lines_each ()) {
        return "it is of another version of this program";
    }
    return {};
}

std::string difference_of_shards (const std::optional<Shard>& file,
                                  const std::optional<Shard>& own) {
    if (file == own) return {};
    const auto text = [] (const std::optional<Shard>& shard) {
        return shard ? format_text ("shard %u/%u", shard->index, shard->count)
                     : std::string ("the whole sweep");
    };
    return "it is of " + text (file) + ", not of " + text (own);
}

std::unique_ptr<SweepPlan> SweepPlan::read (std::string_view model, const SweepChoice& choice,
                                            std::string& fault) {
    std::unique_ptr<SweepPlan> plan (new SweepPlan ());
    sim::ModelTables& tables = plan->tables_;
    if (!sim::read_model (model, tables)) return nullptr;
    sim::assign_colours (tables);
    plan->grid_ = sim::GridPlan (tables);
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max ();
    const std::uint64_t combinations = plan->grid_.n_simul ();
    if (combinations > most / choice.replicates) {
        fault =
            format_text ("too many simulations: %s%llu combinations of concentrations with %u "
                         "replicates, %llu simulations can be had",
                         combinations == std::numeric_limits<std::uint64_t>::max () ? "over " : "",
                         static_cast<unsigned long long> (combinations), choice.replicates,
                         static_cast<unsigned long long> (most));
        return nullptr;
    }
    for (std::uint32_t i = 0; i < tables.n_species (); ++i) {
        if (tables.species[i]->displayed) plan->displayed_.push_back (i);
    }
    SweepIdentity& identity = plan->identity_;
    identity.combinations = combinations;
    identity.n_displayed = static_cast<std::uint32_t> (plan->displayed_.size ());
    identity.n_points = tables.nb_gen / sim::stats;
    identity.choice = choice;
    identity.model_hash = hash_of (essence (tables, plan->grid_));
    identity.head =
        sim::format_head (tables, {.n_simul = static_cast<std::uint32_t> (identity.n_simul ()),
                                   .n_points = identity.n_points,
                                   .n_var_conc = plan->grid_.n_var_conc (),
                                   .replicates = choice.replicates});
    plan->units_ = sim::ResultUnits (identity.n_simul (), identity.lines_each ());
    return plan;
}

sim::LaneModel SweepPlan::model () const {
    return {tables_.steps, tables_.n_species (), identity_.choice.stochastic};
}

std::uint64_t SweepPlan::time_steps () const {
    return n_points () == 0 ? 0 : std::uint64_t{n_points () - 1} * sim::stats;
}

std::vector<std::uint32_t> SweepPlan::counts (std::uint64_t simulation) const {
    std::vector<std::uint32_t> counts (tables_.n_species ());
    grid_.write_counts (simulation / identity_.choice.replicates, counts);
    return counts;
}

sim::SimulationState SweepPlan::start (std::uint64_t simulation) const {
    const std::uint32_t replicates = identity_.choice.replicates;
    return sim::initial_state (
        model (), counts (simulation),
        simulation_seed (identity_.choice.seed, simulation / replicates, simulation % replicates));
}

} // namespace ostrand::sweep
