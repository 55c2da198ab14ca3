// Where copies, merged networks and origins come to stand.
#include "document/markup.h"
#include "document/network.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

Node& add (Network& network, const char* name, float x, float y) {
    return network.add_node (std::make_unique<Node> (x, y, node::molecule, 3U, name));
}

TEST (SelectionText, begins_at_20_20_wherever_the_nodes_stand) {
    for (const float away : {-3000.0F, 5000.0F, 90000.0F}) {
        Network network;
        Node& a = add (network, "a", away, 7);
        Node& b = add (network, "b", away + 50, away);
        PrintState to;
        network.selection_sprint (to, {&a, &b});
        const auto read = read_network (to.out);
        ASSERT_TRUE (read);
        const Node& left = *read->nodes ()[0];
        const Node& right = *read->nodes ()[1];
        EXPECT_EQ (left.x (), 20) << away;
        EXPECT_EQ (right.x (), 70) << away;
        EXPECT_EQ (std::min (left.y (), right.y ()), 20) << away;
    }
}

TEST (Origin, takes_the_room_before_the_network_in_each_direction_by_itself) {
    Network network;
    Node& n = add (network, "n", 300, 900);
    const float left = n.x () - n.get_width () / 2 - 5;
    const float top = n.y () - static_cast<float> (n.get_height ()) / 2 - 5;
    const float x = network.x ();
    const float y = network.y ();
    EXPECT_TRUE (network.normalize_origin ());
    EXPECT_FLOAT_EQ (n.x (), 300 - left);
    EXPECT_FLOAT_EQ (n.y (), 900 - top);
    EXPECT_FLOAT_EQ (network.x (), x + left);
    EXPECT_FLOAT_EQ (network.y (), y + top);
}

TEST (Origin, counts_compartments_in_and_moves_them_too) {
    Network network;
    Node& n = add (network, "n", 300, 300);
    Compart& c = network.add_compart (shape::rectangle, 40, -60, 100, 100);
    EXPECT_TRUE (network.normalize_origin ());
    EXPECT_EQ (c.x (), 0);
    EXPECT_EQ (c.y (), 0);
    EXPECT_EQ (n.x (), 260);
    EXPECT_EQ (n.y (), 360);
    c.set_position (-30, 10);
    EXPECT_TRUE (network.normalize_origin ());
    EXPECT_EQ (c.x (), 0);
    EXPECT_EQ (n.x (), 290);
}

TEST (Insert, moves_what_comes_to_the_right_and_nothing_down) {
    Network network;
    add (network, "n", 100, 50);
    const float shift = network.get_width () + 20;
    ASSERT_TRUE (network.insert_text ("[N1 1 2 0 0[C1 8 5 6 50 50 4{c}][S2 0 20 33 0 0 13{a}-]]"));
    EXPECT_EQ (network.comps ()[0]->x (), shift + 5);
    EXPECT_EQ (network.comps ()[0]->y (), 6);
    EXPECT_EQ (network.nodes ()[1]->x (), shift + 20);
    EXPECT_EQ (network.nodes ()[1]->y (), 33);
    EXPECT_TRUE (network.is_laid_out ());
}

TEST (Duplicating, gives_copies_the_compartment_and_the_texts_of_arcs) {
    Network network;
    Compart& cell = network.add_compart (shape::rectangle, 0, 0, 400, 400);
    Node& a = add (network, "a", 50, 50);
    Node& b = add (network, "b", 150, 50);
    Node& e = add (network, "e", 100, 20);
    for (Node* const n : {&a, &b, &e}) network.assign_compart (*n);
    Arque& reaction = *a.connect (b, arc::transport);
    reaction.set_residu ("far");
    reaction.set_own_color (33);
    Arque& catalysis = *e.connect (reaction, arc::catalysis);
    e.connect (catalysis, arc::inhibition)->set_label ("on_arc");
    std::vector<Node*> chosen{&e, &b, &a};
    network.duplicate_selection (chosen);
    ASSERT_EQ (chosen.size (), 3U);
    const Node& copy_of_e = *chosen[0];
    const Node& copy_of_a = *chosen[2];
    EXPECT_EQ (copy_of_e.compart (), &cell);
    ASSERT_EQ (copy_of_a.nb_arcs (), 1);
    const Arque& copied = *copy_of_a.arcs ()[0];
    EXPECT_EQ (copied.type (), arc::transport);
    EXPECT_EQ (copied.color (), 33U);
    EXPECT_EQ (copied.residu ()->name (), "far");
    ASSERT_EQ (copy_of_e.nb_arcs (), 2);
    EXPECT_EQ (copy_of_e.arcs ()[0]->dest (), &copied);
    EXPECT_EQ (copy_of_e.arcs ()[1]->dest (), copy_of_e.arcs ()[0].get ());
    EXPECT_EQ (copy_of_e.arcs ()[1]->label_line ()->chars_only (), "on_arc");
}

} // namespace
} // namespace ostrand::document
