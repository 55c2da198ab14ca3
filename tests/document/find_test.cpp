// The order in which a search finds nodes.
#include "document/line.h"
#include "document/network.h"
#include "support/random_document.h"

#include <gtest/gtest.h>

#include <vector>

using namespace ostrand;
using namespace ostrand::document;

namespace {

Node& add (Network& network, const char* name, float x, float y) {
    return network.add_node (std::make_unique<Node> (x, y, node::molecule, 3U, name));
}

TEST (Find, hits_come_row_by_row_from_the_left_whatever_their_order_in_the_network) {
    ostrand::testing::Dice dice (4);
    for (int count = 1; count <= 40; ++count) {
        std::vector<int> order (static_cast<std::size_t> (count));
        for (std::size_t i = 0; i < order.size (); ++i) {
            order[i] = static_cast<int> (i);
            std::swap (order[i],
                       order[static_cast<std::size_t> (dice.below (static_cast<int> (i) + 1))]);
        }
        Network network;
        std::vector<Node*> expected (order.size ());
        for (const int i : order) {
            // Rows of seven, well apart; within a row the heights differ.
            expected[static_cast<std::size_t> (i)] =
                &add (network, "hit", static_cast<float> (100 * (i % 7)),
                      static_cast<float> (200 * (i / 7) + dice.below (60)));
        }
        EXPECT_EQ (network.find_nodes (Line ("hit", 67, 0)), count);
        EXPECT_EQ (network.find_hits (), expected) << count;
    }
}

TEST (Find, hits_at_one_place_keep_the_order_of_the_network) {
    Network network;
    std::vector<Node*> expected;
    for (int i = 0; i < 13; ++i) expected.push_back (&add (network, "hit", 50, 50));
    network.find_nodes (Line ("hit", 67, 0));
    EXPECT_EQ (network.find_hits (), expected);
}

} // namespace
