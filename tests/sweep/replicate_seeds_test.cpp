// The seeds of a sweep's simulations.
#include "sweep/replicate_seeds.h"

#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace ostrand::sweep {
namespace {

using Pair = std::pair<std::uint64_t, std::uint64_t>;

Pair pair_of (const sim::RandomState& state) { return {state.rd_state0, state.rd_state1}; }

TEST (replicate_seeds, the_first_replicates_without_a_seed_are_those_of_a_plain_run) {
    sim::SeedSequence process;
    sim::Seeds plain = process.take (1000);
    for (std::uint64_t i = 0; i < 1000; ++i) {
        const Pair expected = pair_of (plain.next ());
        ASSERT_EQ (pair_of (simulation_seed (std::nullopt, i, 0)), expected) << i;
    }
}

TEST (replicate_seeds, they_are_the_same_on_every_machine) {
    // Worked out by a program of its own, in another language.
    EXPECT_EQ (pair_of (simulation_seed (std::nullopt, 0, 1)),
               Pair (13362225538469396114U, 13737302790253881746U));
    EXPECT_EQ (pair_of (simulation_seed (std::nullopt, 7, 99999)),
               Pair (12650625278821592084U, 14184915506615127273U));
    EXPECT_EQ (pair_of (simulation_seed (0, 0, 0)),
               Pair (17369620415975809470U, 8365383979489357536U));
    EXPECT_EQ (pair_of (simulation_seed (42, 3, 4)),
               Pair (395748099231892290U, 9836662439882471114U));
}

TEST (replicate_seeds, no_two_simulations_of_any_seed_are_the_same) {
    // Neighbours in every direction, where a careless mixture would repeat itself.
    std::set<Pair> seen;
    std::size_t count = 0;
    std::vector<std::optional<std::uint64_t>> seeds{std::nullopt, (std::uint64_t{1} << 63) - 1};
    for (std::uint64_t seed = 0; seed < 20; ++seed) seeds.emplace_back (seed);
    for (const auto& seed : seeds) {
        for (std::uint64_t combination = 0; combination < 50; ++combination) {
            for (std::uint64_t replicate = 0; replicate < 50; ++replicate) {
                seen.insert (pair_of (simulation_seed (seed, combination, replicate)));
                ++count;
            }
        }
    }
    EXPECT_EQ (seen.size (), count);
}

TEST (replicate_seeds, a_seed_changes_the_first_simulation_too) {
    EXPECT_NE (pair_of (simulation_seed (0, 0, 0)), pair_of (simulation_seed (std::nullopt, 0, 0)));
    EXPECT_NE (pair_of (simulation_seed (1, 0, 0)), pair_of (simulation_seed (0, 0, 0)));
}

TEST (replicate_seeds, states_are_spread_over_all_bits) {
    // Each bit of neighbouring states is set about as often as not.
    constexpr int many = 4000;
    std::array<int, 128> set{};
    for (int i = 0; i < many; ++i) {
        const auto n = static_cast<std::uint64_t> (i);
        const sim::RandomState state = simulation_seed (n % 4, n / 4 % 30, n / 120);
        for (unsigned bit = 0; bit < 64; ++bit) {
            set[bit] += static_cast<int> (state.rd_state0 >> bit & 1);
            set[64 + bit] += static_cast<int> (state.rd_state1 >> bit & 1);
        }
    }
    for (const int count : set) {
        EXPECT_GT (count, many / 2 - 160);
        EXPECT_LT (count, many / 2 + 160);
    }
}

} // namespace
} // namespace ostrand::sweep
