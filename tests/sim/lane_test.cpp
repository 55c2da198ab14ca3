// The lane kernels against the plain engines, bit for bit, for every instruction set of this
// machine.
#include "sim/lane_group.h"
#include "sim/plain_simulator.h"
#include "sim/sim_support.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace ostrand::sim {
namespace {

using ::testing::ElementsAre;

/// A model's steps with the simulations that begin with them.
struct LaneCase {
    ModelTables tables;
    std::vector<std::vector<std::uint32_t>> starts; // by simulation, by species
    std::vector<RandomState> seeds;

    LaneModel model (bool stochastic) const {
        return {tables.steps, tables.n_species (), stochastic};
    }
    std::vector<SimulationState> states (bool stochastic, std::size_t count) const {
        std::vector<SimulationState> all;
        for (std::size_t i = 0; i < count; ++i) {
            all.push_back (
                initial_state (model (stochastic), starts[i % starts.size ()], seeds[i]));
        }
        return all;
    }
};

/// `simulations` simulations of a model, its own combinations of concentrations in turns.
LaneCase read_case (const std::string& text, std::size_t simulations) {
    LaneCase result;
    if (!read_model (text, result.tables)) throw std::runtime_error ("model does not read");
    SeedSequence seeds;
    Grid grid;
    if (!prepare_run (result.tables, seeds, std::uint64_t{1} << 30, grid)) {
        throw std::runtime_error ("grid does not fit");
    }
    for (std::size_t i = 0; i < grid.n_simul; ++i) {
        grid.plan.write_counts (i, result.starts.emplace_back (result.tables.n_species ()));
    }
    std::mt19937_64 random (simulations);
    for (std::size_t i = 0; i < simulations; ++i) result.seeds.push_back ({random (), random ()});
    return result;
}

/// What the plain deterministic engine makes of amounts in so many time steps, in its own words.
void sweep_deterministic (const std::vector<ElemStep>& steps, std::vector<double>& r,
                          std::uint32_t time_steps) {
    const std::size_t spare = r.size () - 1;
    const auto apply = [&] (const ElemStep& e) {
        const double a = r[e.m];
        if (a < 1) return;
        const double b0 = r[e.p[0]];
        const double b1 = r[e.p[1]];
        if (e.q == no_species) {
            const double n = static_cast<double> (e.k) * a;
            r[e.m] = a - n;
            r[e.p[0]] = b0 + n;
            r[e.p[1]] = b1 + n;
            if (e.p[2] != spare) {
                for (std::size_t i = 2; i < 5; ++i) r[e.p[i]] += n;
            }
            return;
        }
        const double c = r[e.q];
        if (c < 1) return;
        double n = static_cast<double> (e.k * alpha) * a * c;
        n = std::min (a, n);
        n = std::min (c, n);
        r[e.m] = a - n;
        r[e.q] = c - n;
        r[e.p[0]] = b0 + n;
        r[e.p[1]] = b1 + n;
    };
    for (std::uint32_t it = 0; it < time_steps; it += 2) {
        for (const ElemStep& e : steps) apply (e);
        for (std::size_t i = steps.size (); i-- > 0;) apply (steps[i]);
    }
}

std::vector<SimulationState> plain_states (const LaneCase& c, bool stochastic, std::size_t count,
                                           std::uint32_t time_steps) {
    std::vector<SimulationState> states = c.states (stochastic, count);
    for (SimulationState& state : states) {
        if (stochastic) {
            state.counts.push_back (0);
            sweep_stochastic (c.tables.steps, state.counts, state.random, time_steps);
            state.counts.pop_back ();
        } else {
            state.amounts.push_back (0);
            sweep_deterministic (c.tables.steps, state.amounts, time_steps);
            state.amounts.pop_back ();
        }
    }
    return states;
}

/// The same bits; any not-a-number is as good as another.
bool same_amounts (const std::vector<double>& a, const std::vector<double>& b) {
    for (std::size_t i = 0; i < a.size (); ++i) {
        if (std::isnan (a[i]) && std::isnan (b[i])) continue;
        if (std::memcmp (&a[i], &b[i], sizeof (double)) != 0) return false;
    }
    return a.size () == b.size ();
}

/// All kernels that this machine has against the plain engine.
/// pieces  time steps of the calls of `advance`, one after the other
void expect_equal (const LaneCase& c, bool stochastic, const std::vector<std::uint32_t>& pieces,
                   const std::string& what) {
    std::uint32_t time_steps = 0;
    for (const std::uint32_t piece : pieces) time_steps += piece;
    const std::vector<SimulationState> expected =
        plain_states (c, stochastic, c.seeds.size (), time_steps);
    for (const LaneKernel& kernel : lane_kernels ()) {
        // Full groups, and what is left over in the last one.
        for (std::size_t first = 0; first < c.seeds.size (); first += kernel.width) {
            const std::vector<SimulationState> all = c.states (stochastic, c.seeds.size ());
            const std::size_t size = std::min<std::size_t> (kernel.width, all.size () - first);
            LaneGroup group (c.model (stochastic), {&kernel, 1},
                             std::span (all).subspan (first, size));
            for (const std::uint32_t piece : pieces) group.advance (piece);
            for (std::size_t i = 0; i < size; ++i) {
                const SimulationState state = group.state (i);
                const SimulationState& other = expected[first + i];
                ASSERT_EQ (state.counts, other.counts)
                    << kernel.target << " " << kernel.width << ", simulation " << first + i << "\n"
                    << what;
                ASSERT_TRUE (same_amounts (state.amounts, other.amounts))
                    << kernel.target << " " << kernel.width << ", simulation " << first + i << "\n"
                    << what;
                if (!stochastic) continue;
                ASSERT_EQ (state.random.rd_state0, other.random.rd_state0) << what;
                ASSERT_EQ (state.random.rd_state1, other.random.rd_state1) << what;
            }
        }
    }
}

TEST (lanes, this_machine_has_kernels_and_every_target_a_narrow_one) {
    ASSERT_FALSE (lane_kernels ().empty ());
    for (const LaneKernel& kernel : lane_kernels ()) {
        EXPECT_TRUE (kernel.width == 1 || kernel.width == 4 || kernel.width == 8 ||
                     kernel.width == 16 || kernel.width == 32)
            << kernel.target;
    }
    EXPECT_EQ (choose_kernel (lane_kernels (), 1)->width, 1U);
}

TEST (lanes, the_narrowest_kernel_that_holds_all_is_chosen_or_the_widest) {
    const std::vector<LaneKernel> kernels{{"a", 16, nullptr, nullptr},
                                          {"a", 32, nullptr, nullptr},
                                          {"b", 1, nullptr, nullptr},
                                          {"b", 8, nullptr, nullptr},
                                          {"b", 16, nullptr, nullptr}};
    std::vector<unsigned> widths;
    for (const std::size_t simulations : {1U, 2U, 8U, 9U, 17U, 33U}) {
        widths.push_back (choose_kernel (kernels, simulations)->width);
    }
    EXPECT_THAT (widths, ElementsAre (1, 8, 8, 16, 32, 32));
    EXPECT_EQ (choose_kernel (kernels, 16), kernels.data ());
    EXPECT_EQ (widest (kernels), 32U);
}

TEST (lanes, random_models_equal_the_plain_engine) {
    for (unsigned seed = 1; seed <= (testing::sanitized ? 150U : 1500U); ++seed) {
        const std::string text = plain::random_model (seed).text ();
        const LaneCase c = read_case (text, 1 + seed % 37);
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {2, 30, 8}, text)) << "seed " << seed;
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, false, {2, 30, 8}, text)) << "seed " << seed;
    }
}

/// Steps between few species with constants and counts of all magnitudes, which real models do not
/// have: everything wraps and saturates.
LaneCase wild_case (unsigned seed) {
    std::mt19937 random (seed);
    const auto below = [&random] (unsigned n) { return static_cast<unsigned> (random () % n); };
    LaneCase c;
    const unsigned n_species = 2 + below (5);
    for (unsigned i = 0; i < n_species; ++i) {
        c.tables.intern_species ("s" + std::to_string (i), false);
    }
    const auto any = [&] { return static_cast<std::uint16_t> (below (n_species)); };
    const auto spare = static_cast<std::uint16_t> (n_species);
    const unsigned n_steps = 1 + below (8);
    for (unsigned i = 0; i < n_steps; ++i) {
        ElemStep e{any (), no_species, {any (), spare, spare, spare, spare}, 0};
        const bool two = below (2) == 0;
        if (two) e.q = any ();
        if (below (2) == 0) e.p[1] = any ();
        if (!two && below (3) == 0) {
            e.p[1] = any ();
            e.p[2] = any ();
            if (below (2) == 0) e.p[3] = any ();
        }
        const int lowest = two ? -30 : -40;
        e.k = std::ldexp (static_cast<float> (below (1U << 24)) / 0x1p24F,
                          lowest + static_cast<int> (below (two ? 90 : 50)));
        if (below (40) == 0) e.k = 1;
        if (below (200) == 0) e.k = std::numeric_limits<float>::infinity ();
        if (below (200) == 0) e.k = std::numeric_limits<float>::quiet_NaN ();
        c.tables.steps.push_back (e);
    }
    const unsigned simulations = 1 + below (35);
    std::mt19937_64 seeds (seed);
    for (unsigned i = 0; i < simulations; ++i) {
        std::vector<std::uint32_t> start;
        for (unsigned s = 0; s < n_species; ++s) {
            start.push_back (below (4) == 0 ? 0
                                            : static_cast<std::uint32_t> (random ()) >> below (32));
        }
        c.starts.push_back (start);
        c.seeds.push_back ({seeds (), seeds ()});
    }
    return c;
}

TEST (lanes, counts_that_wrap_and_saturate_equal_the_plain_engine) {
    for (unsigned seed = 1; seed <= (testing::sanitized ? 300U : 3000U); ++seed) {
        const LaneCase c = wild_case (seed);
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {2, 12, 6}, "")) << "seed " << seed;
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, false, {2, 12, 6}, "")) << "seed " << seed;
    }
}

TEST (lanes, a_count_that_grows_through_every_form_equals_the_plain_engine) {
    // a doubles, from 1 past 2^24, 2^31 and 2^32; c and d go up and down beside it.
    const std::string text = "[a] = 2 uM; [c] = 1 uM, 20 mM, 1000 mM; a -> a + b | 0.5; "
                             "c + b -> d | 0.001; d -> c | 0.1; c -> d | 0.01;";
    const LaneCase c = read_case (text, 9);
    for (std::uint32_t time_steps = 2; time_steps < 100; time_steps += 14) {
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {time_steps, 2}, text));
    }
}

TEST (lanes, the_last_bit_of_a_number_drawn_decides) {
    // One molecule whose constant is the number that will be drawn, or a neighbour of it: only
    // above it the step fires.
    std::mt19937_64 random (7);
    for (int i = 0; i < 200; ++i) {
        RandomState seed{random (), random ()};
        if (i % 4 == 0) seed = {random () >> 50, random () >> 30}; // small numbers
        RandomState next = seed;
        const float u = next.draw ();
        for (const float k : {std::nextafter (u, 0.0F), u, std::nextafter (u, 2.0F)}) {
            LaneCase c;
            c.tables.intern_species ("a", false);
            c.tables.intern_species ("b", false);
            c.tables.steps.push_back ({0, no_species, {1, 2, 2, 2, 2}, k});
            c.starts = {{1, 0}};
            c.seeds.assign (33, seed);
            ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {2}, "")) << i;
        }
    }
}

TEST (lanes, whole_numbers_and_numbers_near_them_fire_as_in_the_plain_engine) {
    // Means that are whole, or differ from a whole number by less than a float tells.
    std::mt19937_64 random (8);
    LaneCase c;
    c.tables.intern_species ("a", false);
    c.tables.intern_species ("b", false);
    c.tables.intern_species ("x", false);
    for (const float k : {0.5F, 0.25F, 0.125F, 1.0F, 0x1.fffffep-2F, 0x1.000002p-2F}) {
        c.tables.steps.push_back ({0, no_species, {1, 3, 3, 3, 3}, k});
        c.tables.steps.push_back ({1, no_species, {0, 3, 3, 3, 3}, k});
    }
    c.tables.steps.push_back ({2, no_species, {2, 3, 3, 3, 3}, 0.0F});
    for (int i = 0; i < 33; ++i) {
        const auto many = static_cast<std::uint32_t> (random () >> (34 + i % 26));
        c.starts.push_back ({many, many / 3, 1});
        c.seeds.push_back ({random (), random ()});
    }
    for (int i = 0; i < 30; ++i) {
        for (RandomState& seed : c.seeds) seed = {random (), random ()};
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {8}, "")) << i;
    }
}

TEST (lanes, where_nothing_reacts_any_more_nothing_changes_and_no_number_is_drawn) {
    // Without chance the last molecule stays a fraction; with it, all goes and the rest is silence.
    const std::string text = "[a] = 3 uM; [e] = 1 uM; a -> b | 0.9; e : b -> c | 1 uM - 10;"
                             "c -> d | 0.7; d + a -> x | 0.5;";
    const LaneCase c = read_case (text, 33);
    for (const bool stochastic : {true, false}) {
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, stochastic, {2, 5000, 1000}, text));
    }
}

TEST (lanes, a_generator_that_draws_nothing_but_zeros_is_no_silence) {
    // Its state stays as it is while every step fires.
    LaneCase c = read_case ("[a] = 1 uM; a -> b | 0.001; b -> a | 0.002;", 33);
    for (std::size_t i = 0; i < c.seeds.size (); i += 2) c.seeds[i] = {0, 0};
    ASSERT_NO_FATAL_FAILURE (expect_equal (c, true, {2, 400}, ""));
}

TEST (lanes, steps_that_take_what_the_pair_before_bound_equal_the_plain_engine) {
    const std::string text = "[e] = 2 uM; [s] = 30 uM, 2 uM; [t] = 20 uM; [u] = 10 uM;"
                             "e : s + t + u -> p + q | 1 uM, 2 uM, 3 uM - 50;";
    const LaneCase c = read_case (text, 33);
    for (const bool stochastic : {true, false}) {
        ASSERT_NO_FATAL_FAILURE (expect_equal (c, stochastic, {2, 998, 3000}, text));
    }
}

// ---- programs ------------------------------------------------------------------------------

LaneProgram compiled (const std::string& text, bool draws = true) {
    const LaneCase c = read_case (text, 1);
    std::vector<bool> present;
    for (const std::uint32_t count : c.starts[0]) present.push_back (count != 0);
    return compile_lanes (c.tables.steps, c.tables.n_species (), present, draws);
}

std::vector<LaneOp> ops (const std::vector<LaneStep>& steps) {
    std::vector<LaneOp> all;
    for (const LaneStep& step : steps) all.push_back (step.op);
    return all;
}

TEST (lane_program, an_enzyme_of_one_substrate_is_one_op) {
    const LaneProgram program = compiled ("[e] = 1 uM; [s] = 1 mM; e : s -> p | 1 mM - 10;");
    EXPECT_THAT (ops (program.forward), ElementsAre (LaneOp::enzyme));
    EXPECT_THAT (ops (program.backward), ElementsAre (LaneOp::enzyme_back));
    EXPECT_EQ (program.n_steps, 3U);
}

TEST (lane_program, an_enzyme_of_two_substrates_is_pairs) {
    const LaneProgram program =
        compiled ("[e] = 1 uM; [s] = 1 mM; [t] = 1 mM; e : s + t -> p + q | 1 mM, 1 mM - 10;");
    EXPECT_THAT (ops (program.forward),
                 ElementsAre (LaneOp::bind_release, LaneOp::bind_release, LaneOp::bind_release,
                              LaneOp::bind_release, LaneOp::mono));
    EXPECT_EQ (program.n_steps, 9U);
    std::vector<bool> follows;
    for (const LaneStep& step : program.forward) follows.push_back (step.follows);
    EXPECT_THAT (follows, ElementsAre (false, true, false, true, true));
    follows.clear ();
    for (const LaneStep& step : program.backward) follows.push_back (step.follows);
    EXPECT_THAT (follows, ElementsAre (false, false, false, false, false));
}

TEST (lane_program, species_that_meet_themselves_are_no_pair) {
    // The enzyme is its own substrate: writes override each other, so the steps stay single.
    const LaneProgram program = compiled ("[e] = 1 uM; e : e -> p | 1 mM - 10;");
    EXPECT_THAT (ops (program.forward), ElementsAre (LaneOp::bi, LaneOp::mono, LaneOp::mono));
    // The product is what the enzyme binds: the closing step stands alone.
    const LaneProgram circle = compiled ("[e] = 1 uM; [s] = 1 uM; e : s -> s | 1 mM - 10;");
    EXPECT_THAT (ops (circle.forward), ElementsAre (LaneOp::bind_release, LaneOp::mono));
}

TEST (lane_program, what_can_never_react_is_left_out) {
    const std::string text = "[a] = 1 uM; a -> b | 0.1; x -> y | 0.1; b + x -> y | 1; y -> a | 1;";
    const LaneProgram program = compiled (text);
    EXPECT_THAT (ops (program.forward), ElementsAre (LaneOp::mono, LaneOp::bi_empty));
    EXPECT_THAT (ops (compiled (text, false).forward), ElementsAre (LaneOp::mono));
}

TEST (lane_program, a_constant_above_one_and_odd_constants_are_noticed) {
    EXPECT_THAT (ops (compiled ("[a] = 1 uM; a -> b | 1.5;").forward),
                 ElementsAre (LaneOp::mono_large));
    EXPECT_TRUE (compiled ("[a] = 1 uM; a -> b | 1.5;").finite);
    EXPECT_FALSE (compiled ("[a] = 1 uM; a -> b | 1e99;").finite);
    EXPECT_FALSE (compiled ("[e] = 1 uM; [s] = 1 uM; e : s -> p | 0 mM - 1;").finite);
}

} // namespace
} // namespace ostrand::sim
