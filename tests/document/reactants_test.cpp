// Main reactants that change places, and nodes that leave a reaction: what comes to stand where.
#include "document/network.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

/// a -> b; a itself has a further substrate's link on that reaction, before it or behind it.
struct SameSource {
    Network network;
    Node& a = add ("a");
    Node& b = add ("b");
    Node& c = add ("c");
    Arque* first = nullptr;
    Arque* reaction = nullptr;
    Arque* link = nullptr;
    Arque* last = nullptr;

    explicit SameSource (bool reaction_first) {
        Arque* const other = c.connect (b, arc::reaction);
        first = a.connect (*other, arc::inhibition);
        if (reaction_first) {
            reaction = a.connect (b, arc::reaction);
            link = a.connect (*reaction, arc::substrate);
        } else {
            link = a.connect (*other, arc::substrate);
            reaction = a.connect (b, arc::reaction);
            link->set_dest (reaction);
        }
        last = a.connect (*other, arc::activation);
    }
    Node& add (const char* name) {
        return network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::molecule, 3U, name));
    }
};

TEST (MainReactant, of_one_node_swaps_the_places_of_reaction_and_link) {
    for (const bool reaction_first : {true, false}) {
        SameSource x (reaction_first);
        ASSERT_TRUE (x.network.swap_main_reactant (*x.reaction, x.a));
        ASSERT_EQ (x.a.nb_arcs (), 4);
        const std::size_t at = reaction_first ? 2 : 1;
        EXPECT_EQ (x.a.arcs ()[0].get (), x.first);
        EXPECT_EQ (x.a.arcs ()[at].get (), x.reaction) << reaction_first;
        EXPECT_EQ (x.a.arcs ()[3 - at]->dest (), x.reaction) << reaction_first;
        EXPECT_EQ (x.a.arcs ()[3 - at]->type (), arc::substrate);
        EXPECT_EQ (x.a.arcs ()[3].get (), x.last);
    }
}

TEST (MainReactant, that_takes_over_gives_its_colour_to_the_new_link) {
    Network network;
    const auto add = [&network] (const char* name) -> Node& {
        return network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::molecule, 3U, name));
    };
    Node& s = add ("s");
    Node& p = add ("p");
    Node& q = add ("q");
    Arque& reaction = *s.connect (p, arc::reaction);
    Arque& link = *q.connect (reaction, arc::reversible_product);
    link.set_own_color (44);
    ASSERT_TRUE (network.swap_main_reactant (reaction, q));
    ASSERT_EQ (p.nb_arcs (), 1);
    EXPECT_EQ (p.arcs ()[0]->color (), 44U);
    EXPECT_EQ (p.arcs ()[0]->type (), arc::reversible_product);
}

TEST (MainProduct, moves_its_constant_back_sideways_only) {
    Network network;
    const auto add = [&network] (const char* name) -> Node& {
        return network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::molecule, 3U, name));
    };
    Node& s = add ("s");
    Node& p = add ("p");
    Node& q = add ("q");
    Arque& reaction = *s.connect (p, arc::reaction);
    reaction.set_residu ("k");
    reaction.residu ()->set_offset (9, 12);
    ASSERT_TRUE (network.change_main_product (reaction, q));
    EXPECT_EQ (reaction.residu ()->x (), 0);
    EXPECT_EQ (reaction.residu ()->y (), 12);
}

TEST (Detaching, counts_links_by_what_the_node_is_to_the_arc) {
    Network network;
    const auto add = [&network] (const char* name) -> Node& {
        return network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::molecule, 3U, name));
    };
    Node& a = add ("a");
    Node& b = add ("b");
    Node& c = add ("c");
    Arque& ab = *a.connect (b, arc::reaction);
    Arque& bc = *b.connect (c, arc::reaction);
    EXPECT_TRUE (network.can_detach (ab, b));  // one arc of its own is left
    EXPECT_TRUE (network.can_detach (bc, b));  // one that ends on it is left
    EXPECT_FALSE (network.can_detach (ab, a)); // nothing would be left
    a.connect (c, arc::reaction);
    EXPECT_TRUE (network.can_detach (ab, a));
}

TEST (Detaching, leaves_the_copy_in_the_compartment) {
    Network network;
    Compart& cell = network.add_compart (shape::rectangle, 0, 0, 400, 400);
    Node& a = network.add_node (std::make_unique<Node> (50.0F, 50.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (90.0F, 50.0F, 13U, 3U, "b"));
    network.assign_compart (a);
    Arque& ab = *a.connect (b, arc::reaction);
    EXPECT_EQ (network.clone_node_for_arc (ab, a).compart (), &cell);
}

} // namespace
} // namespace ostrand::document
