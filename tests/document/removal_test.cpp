// Removal in any order: nothing dangles, and what hung on a thing goes with it. The sanitizers see
// every pointer that is followed after its object has gone.
#include "document/link_rules.h"
#include "document/markup.h"
#include "document/network.h"
#include "support/random_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace ostrand::document {
namespace {

/// Two nodes, a reaction, a catalysis on it, an arc on the catalysis, a way back, a compartment.
struct Small {
    Network network;
    std::vector<std::function<GraphBase*()>> objects; // by id, so that gone ones give null

    Small () {
        network.add_compart (8, 0, 0, 400, 300);
        for (const char* name : {"a", "b", "e", "a"}) {
            Node& n =
                network.add_node (std::make_unique<Node> (50.0F, 50.0F, node::molecule, 3U, name));
            network.assign_compart (n);
        }
        const auto node = [this] (std::size_t i) -> Node& { return *network.nodes ()[i]; };
        Arque* ab = node (0).connect (node (1), arc::reaction);
        node (1).connect (node (0), arc::reaction);
        Arque* cat = node (2).connect (*ab, arc::catalysis);
        node (3).connect (*cat, arc::inhibition);
        network.update_shared_nodes ();
        network.distances_from (node (0));
        network.find_nodes (Line ("a", 67, 0));
        network.layout ();
        PrintState to; // gives ids 1 to 9
        network.fprint (to, 0);
        network.adopt_numbering (to.numbering);
    }
};

/// Follows every pointer that the document keeps.
void follow_all (Network& network) {
    PrintState to;
    network.fprint (to, 0);
    for (const auto& n : network.nodes ()) {
        EXPECT_EQ (n->network (), &network);
        EXPECT_TRUE (n->compart () == nullptr || n->compart ()->network () == &network);
        EXPECT_TRUE (n->master () == nullptr || network.is_in (n->master ()));
        for (const auto& a : n->arcs ()) {
            EXPECT_EQ (a->source (), n.get ());
            EXPECT_TRUE (network.is_in (a->dest ()));
            EXPECT_TRUE (std::count (a->dest ()->incoming ().begin (),
                                     a->dest ()->incoming ().end (), a.get ()) == 1);
        }
        for (const Arque* a : n->incoming ()) EXPECT_EQ (a->dest (), n.get ());
    }
    for (const Node* hit : network.find_hits ()) EXPECT_TRUE (network.is_in (hit));
    network.find_next (true);
    network.layout ();
    network.update_shared_nodes ();
}

TEST (Removal, every_order_of_nine_objects) {
    std::vector<int> order{1, 2, 3, 4, 5, 6, 7, 8, 9};
    // All pairs and triples in front, then the rest in turn: what goes last has little left to
    // hang on, so longer fronts say nothing new.
    for (int first = 1; first <= 9; ++first) {
        for (int second = 1; second <= 9; ++second) {
            for (int third = 1; third <= 9; ++third) {
                Small small;
                for (const int id : {first, second, third, 1, 2, 3, 4, 5, 6, 7, 8, 9}) {
                    // Ids are given anew by every writing, so the object is looked up by its place
                    // among those that are left.
                    std::vector<GraphBase*> left;
                    for (const auto& c : small.network.comps ()) left.push_back (c.get ());
                    for (const auto& n : small.network.nodes ()) left.push_back (n.get ());
                    for (Arque* a : small.network.all_arcs ()) left.push_back (a);
                    if (left.empty ()) break;
                    left[static_cast<std::size_t> (id) % left.size ()]->destroy ();
                    follow_all (small.network);
                }
                while (small.network.nb_nodes () > 0) small.network.nodes ()[0]->destroy ();
            }
        }
    }
}

TEST (Removal, of_a_node_takes_the_arcs_at_both_ends_and_those_on_them) {
    Small small;
    small.network.nodes ()[0]->destroy ();
    EXPECT_EQ (small.network.nb_nodes (), 3);
    EXPECT_EQ (small.network.count_arcs (), 0);
}

TEST (Removal, of_an_arc_takes_what_ends_on_it_and_centres_the_other) {
    Small small;
    Arque* ab = small.network.all_arcs ()[0];
    Arque* ba = small.network.all_arcs ()[1];
    ab->destroy ();
    EXPECT_EQ (small.network.all_arcs (), std::vector<Arque*>{ba});
    EXPECT_EQ (ba->side (), 0);
}

TEST (Removal, of_a_compartment_leaves_its_nodes) {
    Small small;
    small.network.comps ()[0]->destroy ();
    EXPECT_EQ (small.network.nb_comp (), 0);
    EXPECT_EQ (small.network.nb_nodes (), 4);
    EXPECT_EQ (small.network.nodes ()[0]->compart (), nullptr);
}

TEST (Removal, of_a_label_that_is_a_network_takes_the_arcs_into_it) {
    auto network = read_network ("[N2 0 2 8 8[S1 0 0 0 0 0 9[N1 0 2 0 0[S2 0 0 0 0 0 9{x}-]]-]"
                                 "[S3 0 9 9 0 0 13{y}-][A4 0 272 2 3 2][A5 0 272 2 2 3]]");
    ASSERT_TRUE (network);
    ASSERT_EQ (network->nodes ()[1]->nb_arcs (), 1);
    network->nodes ()[0]->set_label ("plain");
    EXPECT_EQ (network->nodes ()[1]->nb_arcs (), 0);
    EXPECT_TRUE (network->nodes ()[1]->incoming ().empty ());
}

TEST (Removal, random_documents_in_random_orders) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        auto network = testing::RandomDocument (seed).network ();
        network->update_shared_nodes ();
        testing::Dice dice (seed);
        while (!network->is_empty ()) {
            std::vector<GraphBase*> left;
            for (const auto& c : network->comps ()) left.push_back (c.get ());
            for (const auto& n : network->nodes ()) left.push_back (n.get ());
            for (Arque* a : network->all_arcs ()) left.push_back (a);
            left[static_cast<std::size_t> (dice.below (static_cast<int> (left.size ())))]
                ->destroy ();
            PrintState to;
            network->fprint (to, 0);
        }
    }
}

TEST (Removal, a_detached_node_lives_on_by_itself) {
    Small small;
    std::unique_ptr<Node> taken = small.network.detach_node (*small.network.nodes ()[3]);
    ASSERT_TRUE (taken);
    EXPECT_EQ (taken->network (), nullptr);
    EXPECT_EQ (small.network.detach_node (*taken), nullptr);
    EXPECT_EQ (taken->nb_arcs (), 1);
    taken->destroy ();
    EXPECT_EQ (taken->nb_arcs (), 0);
}

TEST (Removal, chains_of_arcs_on_arcs_go_without_deep_recursion) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (9.0F, 0.0F, 13U, 3U, "b"));
    Arque* last = a.connect (b, arc::reaction);
    for (int i = 0; i < 100000; ++i) last = b.connect (*last, arc::catalysis);
    a.arcs ()[0]->destroy ();
    EXPECT_EQ (network.count_arcs (), 0);
}

TEST (Copy, of_a_network_is_its_equal_and_stands_alone) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        auto network = testing::RandomDocument (seed).network ();
        auto copy = network->copy (nullptr);
        const auto text = [] (const Network& n) {
            PrintState to;
            n.fprint (to, 0);
            return to.out;
        };
        const std::string before = text (*network);
        network.reset ();
        EXPECT_EQ (text (*copy), before);
    }
}

} // namespace
} // namespace ostrand::document
