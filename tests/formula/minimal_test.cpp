// Minimal sets of reactions.
#include "formula/made_up.h"
#include "formula/minimal.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace ostrand::formula {
namespace {

using Ids = std::vector<int>;

std::set<Ids> kept (const MinimalSets& sets) {
    std::set<Ids> all;
    for (const auto& one : sets.kept ()) all.insert (one.ids);
    return all;
}

TEST (minimal, a_superset_is_not_kept_and_a_subset_takes_its_place) {
    MinimalSets sets;
    sets.add ({1, 2, 3}, {});
    sets.add ({1, 2, 3, 4}, {});
    EXPECT_EQ (kept (sets), std::set<Ids> ({{1, 2, 3}}));
    sets.add ({4, 5}, {});
    sets.add ({1, 3}, {});
    EXPECT_EQ (kept (sets), (std::set<Ids>{{1, 3}, {4, 5}}));
    EXPECT_TRUE (sets.has_proper_subset ({1, 3, 9}));
    EXPECT_FALSE (sets.has_proper_subset ({1, 3}));
}

TEST (minimal, of_equal_sets_the_later_stays) {
    LibGate first, second;
    MinimalSets sets;
    sets.add ({7}, {&first});
    sets.add ({7}, {&second});
    ASSERT_EQ (sets.size (), 1U);
    EXPECT_EQ (sets.kept ()[0].gates, std::vector<const LibGate*>{&second});
}

TEST (minimal, the_empty_set_is_a_subset_of_all) {
    MinimalSets sets;
    sets.add ({1}, {});
    sets.add ({}, {});
    sets.add ({2}, {});
    EXPECT_EQ (kept (sets), std::set<Ids>{Ids ()});
}

TEST (minimal, random_sets_leave_those_without_a_proper_subset) {
    made_up::Numbers numbers (3);
    for (int round = 0; round < 50; ++round) {
        MinimalSets sets;
        std::set<Ids> all;
        for (int i = 0; i < 60; ++i) {
            std::set<int> ids;
            const int count = 1 + numbers.below (5);
            for (int k = 0; k < count; ++k) ids.insert (numbers.below (9) * 13);
            all.insert (Ids (ids.begin (), ids.end ()));
            sets.add (Ids (ids.begin (), ids.end ()), {});
        }
        std::set<Ids> expected;
        for (const Ids& one : all) {
            const bool minimal = std::none_of (all.begin (), all.end (), [&] (const Ids& other) {
                return other != one &&
                       std::includes (one.begin (), one.end (), other.begin (), other.end ());
            });
            if (minimal) expected.insert (one);
        }
        EXPECT_EQ (kept (sets), expected);
    }
}

} // namespace
} // namespace ostrand::formula
