// The estimate of a search's work.
#include "gates/search_work.h"

#include "gates/builders.h"

#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using namespace testing_builders;

/// M0 -> M1 -> ... with an enzyme each.
EquationGraph chain (int length) {
    std::vector<Reaction> reactions;
    for (int i = 0; i < length; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {"M" + std::to_string (i)},
                                       {"M" + std::to_string (i + 1)}, {}));
    }
    return graph_of (reactions);
}

/// n metabolites, each made into each other by an enzyme of its own.
EquationGraph web (int metabolites) {
    std::vector<Reaction> reactions;
    for (int from = 0; from < metabolites; ++from) {
        for (int to = 0; to < metabolites; ++to) {
            if (from == to) continue;
            reactions.push_back (reaction ("r" + std::to_string (from) + "_" + std::to_string (to),
                                           {"M" + std::to_string (from)},
                                           {"M" + std::to_string (to)}, {}));
        }
    }
    return graph_of (reactions);
}

TEST (search_work, circuits_of_a_chain_are_its_pieces) {
    // Ten of one enzyme, nine of two, eight of three, at costs 1, 4 and 9.
    const SearchWork work (chain (10), 3);
    const double all = 10 + 9 * 4 + 8 * 9;
    EXPECT_DOUBLE_EQ (work.part_done (1, 0), 0);
    EXPECT_DOUBLE_EQ (work.part_done (2, 0), 10 / all);
    EXPECT_DOUBLE_EQ (work.part_done (2, 5), 30 / all);
    EXPECT_DOUBLE_EQ (work.part_done (3, 8), 1);
    EXPECT_DOUBLE_EQ (work.part_done (3, 100), 1);
}

TEST (search_work, sizes_beyond_the_network_cost_nothing) {
    const SearchWork work (chain (3), 240);
    EXPECT_DOUBLE_EQ (work.part_done (3, 1), 1);
    EXPECT_DOUBLE_EQ (work.part_done (200, 0), 1);
}

TEST (search_work, sizes_with_very_many_circuits_are_estimated) {
    const SearchWork work (web (10), 10); // 90 enzymes; counting would take hours
    double before = 0;
    for (int size = 1; size <= 10; ++size) {
        const double part = work.part_done (size, 0);
        EXPECT_GE (part, before);
        before = part;
    }
    EXPECT_LT (work.part_done (5, 0), 0.01);
    EXPECT_GT (work.part_done (10, 0), 0);
    EXPECT_LT (work.part_done (10, 0), 1);
}

TEST (search_work, nothing_to_do_is_done) {
    EXPECT_DOUBLE_EQ (SearchWork (EquationGraph{}, 3).part_done (2, 0), 1);
}

} // namespace
} // namespace ostrand::gates
