// The container and its operations: links, species, compartments, search, reactants, walks.
#include "document/link_rules.h"
#include "document/markup.h"
#include "document/network.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <map>

namespace ostrand::document {
namespace {

Node& add (Network& network, const char* name, float x = 0, float y = 0,
           unsigned type = node::molecule) {
    return network.add_node (std::make_unique<Node> (x, y, type, 3U, name));
}

TEST (LinkRules, third_reaction_between_two_molecules_is_refused) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b", 100);
    EXPECT_EQ (link_objects (a, b).arc->type (), arc::reaction);
    EXPECT_TRUE (link_objects (b, a).arc);
    const LinkOutcome third = link_objects (a, b);
    EXPECT_EQ (third.arc, nullptr);
    EXPECT_STREQ (third.refusal,
                  "No more than two reaction arcs between the same molecular species nodes.");
}

TEST (LinkRules, networks_may_not_be_mixed) {
    Network network;
    Network other;
    Node& a = add (network, "a");
    Node& b = add (other, "b");
    Node& c = add (other, "c", 100);
    EXPECT_STREQ (link_objects (a, b).refusal, "These nodes are not part of the same network.");
    Arque& bc = *link_objects (b, c).arc;
    EXPECT_STREQ (link_objects (a, bc).refusal,
                  "The node and the arc are not part of the same network.");
}

TEST (LinkRules, reaction_between_compartments_is_a_transport) {
    Network network;
    network.add_compart (8, 0, 0, 50, 50);
    Node& a = add (network, "a", 10, 10);
    Node& b = add (network, "b", 100, 10);
    Node& c = add (network, "c", 200, 10);
    for (const auto& n : network.nodes ()) network.assign_compart (*n);
    EXPECT_EQ (link_objects (a, b).arc->type (), arc::transport);
    EXPECT_EQ (link_objects (b, c).arc->type (), arc::reaction);
}

TEST (LinkRules, links_to_an_arc) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b", 100);
    Node& e = add (network, "e", 50, 50, node::protein);
    Node& s = add (network, "s", 50, 90);
    Arque& ab = *link_objects (a, b).arc;
    EXPECT_STREQ (link_objects (a, ab).refusal, "These are already linked.");
    EXPECT_EQ (link_objects (e, ab).arc->type (), arc::catalysis);
    EXPECT_STREQ (link_objects (e, ab).refusal, "These are already linked.");
    EXPECT_EQ (link_objects (s, ab).arc->type (), arc::substrate);
}

TEST (LinkRules, catalyser_on_a_transport_is_refused) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b", 100);
    Node& e = add (network, "e", 50, 50, node::protein);
    Arque& ab = *a.connect (b, arc::transport);
    EXPECT_STREQ (link_objects (e, ab).refusal, "The destination can only be a reaction arc.");
    EXPECT_EQ (network.count_arcs (), 1);
}

TEST (LinkRules, only_nodes_are_linked) {
    Network network;
    Node& a = add (network, "a");
    Compart& c = network.add_compart (8, 0, 0, 50, 50);
    EXPECT_EQ (link_objects (c, a).arc, nullptr);
    EXPECT_EQ (link_objects (a, c).refusal, nullptr);
    EXPECT_EQ (network.count_arcs (), 0);
}

TEST (SharedNodes, equal_label_and_group_are_one_species) {
    Network network;
    Node& a = add (network, "ATP");
    Node& gene = add (network, "ATP", 1, 1, node::gene);
    Node& b = add (network, "ATP", 2, 2);
    Node& c = add (network, "ATP", 3, 3);
    b.label_line ()->select_all ();
    b.label_line ()->set_style (74, 4); // neither font nor colour matter
    c.set_calyx_display (true);
    EXPECT_TRUE (network.update_shared_nodes ());
    EXPECT_EQ (a.master (), nullptr);
    EXPECT_EQ (b.master (), &a);
    EXPECT_EQ (c.master (), &a);
    EXPECT_EQ (gene.master (), nullptr);
    EXPECT_EQ (a.type (), 15U);
    EXPECT_EQ (gene.type (), 5U);
    EXPECT_TRUE (a.calyx_display () && b.calyx_display ());
    EXPECT_FALSE (gene.calyx_display ());
    EXPECT_FALSE (network.update_shared_nodes ());
}

TEST (SharedNodes, renaming_one_of_two_ends_the_sharing_of_both) {
    Network network;
    Node& a = add (network, "x");
    Node& b = add (network, "x");
    network.update_shared_nodes ();
    b.set_label ("y");
    EXPECT_TRUE (network.update_shared_nodes ());
    EXPECT_EQ (a.type (), 13U);
    EXPECT_EQ (b.type (), 13U);
    EXPECT_EQ (b.master (), nullptr);
}

TEST (SharedNodes, nodes_without_label_are_not_the_same_and_empty_labels_are) {
    Network network;
    for (int i = 0; i < 2; ++i) {
        network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
        add (network, "");
    }
    network.update_shared_nodes ();
    EXPECT_EQ (network.nodes ()[0]->type (), 13U);
    EXPECT_EQ (network.nodes ()[1]->type (), 15U);
}

TEST (SharedNodes, nested_nodes_count_and_nested_networks_are_compared) {
    auto network = read_network ("[N4 0 2 8 8[S1 0 0 0 0 0 9[N1 0 2 0 0[S2 0 0 0 0 0 9{x}-]]-]"
                                 "[S3 0 0 0 0 0 9[N1 0 2 0 0[S4 0 0 0 0 0 5{x}-]]-]"
                                 "[S5 0 0 0 0 0 9{x}-][S6 0 0 0 0 0 9[N1 0 2[S7 0 0 0 0 0 9-]]-]]");
    ASSERT_TRUE (network);
    network->update_shared_nodes ();
    const auto& nodes = network->nodes ();
    EXPECT_EQ (nodes[1]->master (), nodes[0].get ()); // labels of nodes are compared, not shapes
    EXPECT_EQ (nodes[2]->master (), nodes[0]->nested ()->nodes ()[0].get ());
    EXPECT_EQ (nodes[3]->master (), nullptr);
}

/// The rule itself, pair by pair.
void share_by_pairs (const std::vector<Node*>& all, std::map<const Node*, const Node*>& master,
                     std::map<const Node*, bool>& displayed) {
    for (const Node* n : all) displayed[n] = n->calyx_display ();
    for (std::size_t i = 0; i < all.size (); ++i) {
        for (std::size_t j = i + 1; j < all.size (); ++j) {
            if (all[i]->group () != all[j]->group () || !all[i]->label () || !all[j]->label ())
                continue;
            if (!all[i]->label ()->equals (*all[j]->label ())) continue;
            master.emplace (all[j], all[i]);
            master.emplace (all[i], nullptr);
            if (displayed[all[i]] != displayed[all[j]])
                displayed[all[i]] = displayed[all[j]] = true;
        }
    }
}

void list (const Network& network, std::vector<Node*>& all) {
    for (const auto& n : network.nodes ()) {
        all.push_back (n.get ());
        if (const Network* inner = n->nested ()) list (*inner, all);
    }
}

TEST (SharedNodes, agree_with_the_comparison_of_all_pairs) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        testing::RandomDocumentOptions options;
        options.nodes = 30;
        auto network = testing::RandomDocument (seed, options).network ();
        std::vector<Node*> all;
        list (*network, all);
        std::map<const Node*, const Node*> master;
        std::map<const Node*, bool> displayed;
        share_by_pairs (all, master, displayed);
        network->update_shared_nodes ();
        for (const Node* n : all) {
            const auto found = master.find (n);
            ASSERT_EQ (n->master (), found == master.end () ? nullptr : found->second) << seed;
            ASSERT_EQ (n->is_shared (), found != master.end ());
            ASSERT_EQ (n->calyx_display (), displayed[n]);
        }
    }
}

TEST (SharedNodes, display_and_concentration_keep_clones_in_step) {
    Network network;
    Node& a = add (network, "x");
    Node& b = add (network, "x");
    Node& c = add (network, "x");
    network.update_shared_nodes ();
    c.toggle_display ();
    EXPECT_TRUE (a.calyx_display () && b.calyx_display () && c.calyx_display ());
    a.toggle_display ();
    EXPECT_FALSE (a.calyx_display () || b.calyx_display () || c.calyx_display ());
    c.set_user_data ("3 uM");
    b.set_concentration ("5 mM");
    EXPECT_EQ (*a.user_data (), "5 mM");
    EXPECT_EQ (*b.user_data (), "5 mM");
    EXPECT_FALSE (c.user_data ());
    EXPECT_TRUE (c.calyx_display ());
    EXPECT_FALSE (a.calyx_display ());
}

TEST (SameSpecies, are_highlighted_until_asked_again) {
    Network network;
    Node& a = add (network, "x");
    Node& b = add (network, "x");
    add (network, "y");
    EXPECT_EQ (network.mark_same_species (a), 2);
    EXPECT_EQ (b.highlight, 239U);
    EXPECT_EQ (network.mark_same_species (b), -1);
    EXPECT_EQ (a.highlight, 255U);
    Node& bare = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
    EXPECT_EQ (network.mark_same_species (bare), 0);
}

TEST (Classes, of_consumed_produced_and_internal_molecules) {
    Network network;
    Node& s = add (network, "s");
    Node& i = add (network, "i", 100);
    Node& p = add (network, "p", 200);
    Node& more = add (network, "more", 50, 50);
    Node& waste = add (network, "waste", 150, 50);
    Node& e = add (network, "e", 50, -50, node::protein);
    Node& alone = add (network, "alone", 9, 9);
    Arque& si = *s.connect (i, arc::reaction);
    Arque& ip = *i.connect (p, arc::reversible_reaction);
    more.connect (si, arc::substrate);
    waste.connect (ip, arc::product);
    e.connect (ip, arc::catalysis);
    e.connect (si, arc::catalysis);
    network.color_species (100, 101, 102);
    EXPECT_EQ (s.bg_color (), 100U);
    EXPECT_EQ (i.bg_color (), 102U);
    EXPECT_EQ (p.bg_color (), 101U);
    EXPECT_EQ (more.bg_color (), 100U);
    EXPECT_EQ (waste.bg_color (), 101U);
    EXPECT_EQ (alone.bg_color (), 3U);
    EXPECT_EQ (e.bg_color (), 3U);
    EXPECT_EQ (network.classify_species ()[&e], species_class::consumed | species_class::produced);
    Node& clone = add (network, "s", 300);
    EXPECT_EQ (network.classify_species ()[&clone], species_class::consumed);
}

Compart& box (Network& network, int shape, float x, float y, float w, float h) {
    return network.add_compart (std::make_unique<Compart> (shape, x, y, w, h));
}

TEST (Compartments, overlap_is_reported_and_stops_nothing) {
    Network network;
    box (network, 8, 0, 0, 100, 100);
    box (network, 8, 50, 50, 100, 100);
    box (network, 8, 200, 0, 10, 10);
    Node& n = add (network, "n", 205, 5);
    const testing::CaughtMessages messages;
    network.check_compartments ();
    EXPECT_EQ (messages.all, std::vector<std::string>{"Compartment overlap."});
    EXPECT_EQ (n.compart (), network.comps ()[2].get ());
}

TEST (Compartments, inside_in_opposite_senses_is_an_overlap) {
    Network network;
    box (network, 8, 0, 40, 100, 20);
    box (network, 8, 40, 0, 20, 100);
    const testing::CaughtMessages messages;
    network.check_compartments ();
    EXPECT_EQ (messages.all.size (), 1U);
}

TEST (Compartments, touching_rectangles_are_disjoint) {
    Network network;
    box (network, 8, 0, 0, 50, 50);
    box (network, 8, 50, 0, 50, 50);   // right of it
    box (network, 8, -50, 0, 50, 50);  // left
    box (network, 8, 0, 50, 100, 50);  // below
    box (network, 8, 0, -50, 100, 50); // above
    const testing::CaughtMessages messages;
    network.check_compartments ();
    EXPECT_EQ (messages.joined (), "");
}

TEST (Compartments, the_larger_comes_first_and_takes_the_nodes) {
    Network network;
    Compart& small = box (network, 8, 20, 20, 20, 20);
    Compart& large = box (network, 8, 0, 0, 100, 100);
    Node& n = add (network, "n", 30, 30);
    network.assign_compart (n);
    EXPECT_EQ (n.compart (), &small);
    network.check_compartments ();
    EXPECT_EQ (network.comps ()[0].get (), &large);
    EXPECT_EQ (n.compart (), &large);
}

TEST (Compartments, ellipses_and_rectangles) {
    const auto outcome = [] (std::array<float, 5> a, std::array<float, 5> b) {
        Network network;
        box (network, static_cast<int> (a[0]), a[1], a[2], a[3], a[4]);
        Compart& second = box (network, static_cast<int> (b[0]), b[1], b[2], b[3], b[4]);
        const testing::CaughtMessages messages;
        network.check_compartments ();
        if (!messages.all.empty ()) return "overlap";
        return network.comps ()[0].get () == &second ? "swapped" : "kept";
    };
    EXPECT_STREQ (outcome ({12, 40, 40, 20, 20}, {8, 0, 0, 100, 100}), "swapped");
    EXPECT_STREQ (outcome ({8, 40, 40, 20, 20}, {12, 0, 0, 100, 100}), "swapped");
    EXPECT_STREQ (outcome ({12, 0, 0, 100, 100}, {12, 40, 40, 20, 20}), "kept");
    EXPECT_STREQ (outcome ({12, 40, 40, 20, 20}, {12, 0, 0, 100, 100}), "swapped");
    EXPECT_STREQ (outcome ({12, 0, 0, 100, 100}, {12, 60, 0, 100, 100}), "overlap");
    EXPECT_STREQ (outcome ({12, 0, 0, 100, 100}, {8, 2, 2, 20, 20}), "overlap");
    EXPECT_STREQ (outcome ({12, 0, 0, 100, 100}, {8, 0, 0, 10, 10}), "kept"); // beside the outline
    EXPECT_STREQ (outcome ({8, 0, 0, 10, 10}, {12, 0, 0, 100, 100}), "kept"); // disjoint, no order
}

TEST (Compartments, a_new_one_holds_the_network) {
    Network network;
    Node& n = add (network, "n", 100, 100);
    Compart& c = network.add_compart (12, 5, 6, 0, 0);
    EXPECT_EQ (c.width (), 100 + n.get_width () / 2 + 30);
    EXPECT_EQ (c.name (), "Default");
    EXPECT_EQ (c.label_line ()->font (), 67U);
    EXPECT_EQ (c.color (), 4U);
}

TEST (Find, hits_are_sorted_by_rows_and_walked) {
    Network network;
    Node& low = add (network, "ab low", 0, 200);
    Node& right = add (network, "xab", 100, 0);
    Node& left = add (network, "ab", 10, 60); // in one row with the one before
    add (network, "none", 0, 0);
    EXPECT_EQ (network.find_nodes (Line ("ab", 67, 0)), 3);
    EXPECT_EQ (network.find_hits (), (std::vector<Node*>{&left, &right, &low}));
    EXPECT_EQ (left.highlight, 239U);
    EXPECT_EQ (network.find_next (false), nullptr);
    EXPECT_EQ (network.find_next (true), &right);
    EXPECT_EQ (left.highlight, 255U);
    EXPECT_EQ (network.find_next (true), &low);
    EXPECT_EQ (network.find_next (true), nullptr); // keeps the last hit marked
    EXPECT_EQ (low.highlight, 239U);
    EXPECT_EQ (network.find_index (), 2);
    network.clear_find ();
    EXPECT_EQ (network.find_index (), -1);
    EXPECT_EQ (low.highlight, 255U);
    EXPECT_EQ (network.find_nodes (Line ("", 67, 0)), 0);
    EXPECT_EQ (network.find_next (true), nullptr);
}

TEST (Find, rows_that_run_into_one_another_do_no_harm) {
    Network network;
    testing::Dice dice (1);
    for (int i = 0; i < 1000; ++i) {
        add (network, "a", static_cast<float> (dice.below (900)),
             static_cast<float> (dice.below (900)));
    }
    EXPECT_EQ (network.find_nodes (Line ("a", 67, 0)), 1000);
}

TEST (FindById, meets_nodes_their_arcs_nested_ones_then_compartments) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b");
    Arque& ab = *a.connect (b, arc::reaction);
    Compart& c = network.add_compart (8, 0, 0, 9, 9);
    for (GraphBase* g : std::vector<GraphBase*>{&a, &b, &ab, &c}) g->set_id (5);
    EXPECT_EQ (network.find_by_id (5), &a);
    a.set_id (1);
    EXPECT_EQ (network.find_by_id (5), &ab);
    ab.set_id (2);
    EXPECT_EQ (network.find_by_id (5), &b);
    b.set_id (3);
    EXPECT_EQ (network.find_by_id (5), &c);
    EXPECT_EQ (network.find_by_id (6), nullptr);
}

/// s1 + s2 -> p1 + p2.
struct Reaction {
    Network network;
    Node& s1 = add (network, "s1");
    Node& s2 = add (network, "s2");
    Node& p1 = add (network, "p1");
    Node& p2 = add (network, "p2");
    Arque& r = *s1.connect (p1, arc::reaction);
    Arque& link_s = *s2.connect (r, arc::substrate);
    Arque& link_p = *p2.connect (r, arc::product);
    Reaction () {
        r.set_label ("kr");
        r.label_line ()->set_offset (5, 0);
        r.set_residu ("back");
        link_s.set_label ("ks");
        link_s.label_line ()->set_offset (0, 5);
        link_s.set_own_color (77);
        link_p.set_label ("kp");
    }
};

TEST (FindById, of_two_with_one_number_gives_the_first_that_is_left) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b");
    Node& c = add (network, "c");
    for (Node* const n : {&a, &b, &c}) n->set_id (5);
    EXPECT_EQ (network.find_by_id (5), &a);
    a.destroy ();
    EXPECT_EQ (network.find_by_id (5), &b);
    c.destroy ();
    EXPECT_EQ (network.find_by_id (5), &b);
    b.destroy ();
    EXPECT_EQ (network.find_by_id (5), nullptr);
}

TEST (MainReactant, swaps_with_a_substrate) {
    Reaction x;
    ASSERT_TRUE (x.network.swap_main_reactant (x.r, x.s2));
    EXPECT_EQ (x.r.source (), &x.s2);
    EXPECT_EQ (x.s2.arcs ()[0].get (), &x.r);
    EXPECT_EQ (x.r.label ()->name (), "ks");
    EXPECT_EQ (x.r.label ()->y (), 0.0F);
    ASSERT_EQ (x.s1.nb_arcs (), 1);
    const Arque& link = *x.s1.arcs ()[0];
    EXPECT_EQ (link.dest (), &x.r);
    EXPECT_EQ (link.type (), arc::substrate);
    EXPECT_EQ (link.color (), 77U);
    EXPECT_EQ (link.label ()->name (), "kr");
    EXPECT_EQ (link.label ()->x (), 0.0F);
    EXPECT_EQ (x.network.count_arcs (), 3);
    EXPECT_FALSE (x.network.swap_main_reactant (x.r, x.p1)); // has no such link
}

TEST (MainReactant, swaps_with_a_product) {
    Reaction x;
    ASSERT_TRUE (x.network.swap_main_reactant (x.r, x.p2));
    EXPECT_EQ (x.r.dest (), &x.p2);
    EXPECT_EQ (x.r.residu ()->name (), "kp");
    EXPECT_EQ (x.p2.nb_arcs (), 0);
    ASSERT_EQ (x.p1.nb_arcs (), 1);
    EXPECT_EQ (x.p1.arcs ()[0]->label ()->name (), "back");
    EXPECT_EQ (x.p1.arcs ()[0]->type (), arc::product);
    EXPECT_EQ (x.network.count_arcs (), 3);
}

TEST (MainReactant, other_links_change_nothing) {
    Reaction x;
    Node& e = add (x.network, "e", 0, 0, node::protein);
    e.connect (x.r, arc::catalysis);
    EXPECT_FALSE (x.network.swap_main_reactant (x.r, e));
    EXPECT_EQ (x.r.source (), &x.s1);
}

TEST (MainProduct, becomes_another_node_of_the_same_type) {
    Reaction x;
    x.r.residu ()->set_offset (9, 0);
    x.s2.set_type (x.s2.type () | node::shared_bit);
    EXPECT_TRUE (x.network.change_main_product (x.r, x.s2));
    EXPECT_EQ (x.r.dest (), &x.s2);
    EXPECT_EQ (x.r.residu ()->x (), 0.0F);
    Node& e = add (x.network, "e", 0, 0, node::protein);
    EXPECT_FALSE (x.network.change_main_product (x.r, e));
    EXPECT_FALSE (x.network.change_main_product (x.link_s, x.p1));
}

TEST (Detaching, never_leaves_a_node_without_any_link) {
    Reaction x;
    EXPECT_FALSE (x.network.can_detach (x.r, x.p1)); // its only link
    EXPECT_FALSE (x.network.can_detach (x.r, x.s1));
    EXPECT_FALSE (x.network.can_detach (x.r, x.s2));
    EXPECT_FALSE (x.network.can_detach (x.link_s, x.p1)); // no part of it
    x.p1.connect (x.p2, arc::reaction);
    EXPECT_TRUE (x.network.can_detach (x.r, x.p1));
    x.p2.connect (x.s1, arc::reaction);
    EXPECT_TRUE (x.network.can_detach (x.r, x.s1));
    EXPECT_TRUE (x.network.can_detach (x.r, x.p2));
}

TEST (Detaching, gives_the_reaction_a_copy_of_the_node) {
    Reaction x;
    x.p1.set_position (40, 50);
    Node& c = x.network.clone_node_for_arc (x.r, x.p1);
    EXPECT_EQ (x.r.dest (), &c);
    EXPECT_EQ (c.x (), 50.0F);
    EXPECT_EQ (c.y (), 60.0F);
    EXPECT_TRUE (c.label ()->equals (*x.p1.label ()));
    Node& d = x.network.clone_node_for_arc (x.r, x.s1);
    EXPECT_EQ (x.r.source (), &d);
    EXPECT_EQ (x.s1.nb_arcs (), 0);
    Node& f = x.network.clone_node_for_arc (x.r, x.s2);
    EXPECT_EQ (x.link_s.source (), &f);
    x.network.update_shared_nodes ();
    EXPECT_EQ (c.master (), &x.p1);
}

TEST (Fusing, is_refused_within_a_reaction) {
    Reaction x;
    EXPECT_FALSE (Network::can_fuse (x.s1, x.p1));
    EXPECT_FALSE (Network::can_fuse (x.s1, x.s2));
    EXPECT_FALSE (Network::can_fuse (x.s2, x.p1));
    EXPECT_FALSE (Network::can_fuse (x.s2, x.p2));
    Node& free = add (x.network, "free");
    EXPECT_TRUE (Network::can_fuse (x.s1, free));
    Network other;
    EXPECT_FALSE (Network::can_fuse (x.s1, add (other, "o")));
}

TEST (Fusing, moves_all_arcs) {
    Reaction x;
    Node& free = add (x.network, "free");
    x.network.fuse_nodes (free, x.p1);
    EXPECT_EQ (x.r.dest (), &free);
    x.network.fuse_nodes (free, x.s2);
    EXPECT_EQ (x.link_s.source (), &free);
    EXPECT_EQ (x.network.nb_nodes (), 3);
    EXPECT_EQ (x.network.count_arcs (), 3);
}

TEST (Duplicating, copies_nodes_and_the_arcs_among_them) {
    Reaction x;
    std::vector<Node*> selected{&x.s1, &x.p1, &x.s2};
    x.network.duplicate_selection (selected);
    ASSERT_EQ (selected.size (), 3U);
    EXPECT_EQ (selected[0]->x (), x.s1.x () + 10);
    EXPECT_EQ (selected[0]->nb_arcs (), 1);
    EXPECT_EQ (selected[0]->arcs ()[0]->dest (), selected[1]);
    EXPECT_EQ (selected[0]->arcs ()[0]->label ()->name (), "kr");
    EXPECT_EQ (selected[2]->arcs ()[0]->dest (), selected[0]->arcs ()[0].get ());
    EXPECT_EQ (selected[2]->arcs ()[0]->color (), 77U);
    std::vector<Node*> one{&x.s1};
    x.network.duplicate_selection (one);
    EXPECT_EQ (one[0]->nb_arcs (), 0); // its arc leads out of the selection
}

TEST (SelectionText, holds_the_nodes_and_the_arcs_among_them_from_20_20) {
    Reaction x;
    x.s1.set_position (100, 0);
    x.s2.set_position (0, 300);
    x.p1.set_position (250.5F, 0);
    PrintState to;
    x.network.selection_sprint (to, {&x.p1, &x.s1, &x.s2});
    EXPECT_EQ (to.out, "[N3 0 2 0 0[S1 0 270.5 20 0 3 13{p1}-][S2 1 120 20 0 3 13{s1}-]"
                       "[S3 1 20 320 0 3 13{s2}-][A4 0 272 2 2 1{kr}(5 0){<107F><4C>back}]"
                       "[A5 77 512 2 3 4{<67F><0C>ks}(0 5){}]]");
}

TEST (SelectionText, of_a_nested_network_holds_none_of_its_arcs) {
    auto network = read_network ("[N1 0 2 8 8[S1 0 50 50 0 0 9[N2 0 2 0 0[S2 0 7 7 0 0 9{x}-]"
                                 "[S3 0 0 0 0 0 9{y}-]]-][A4 0 272 2 2 3]]");
    PrintState to;
    network->selection_sprint (to, {network->nodes ()[0].get ()});
    EXPECT_EQ (to.out, "[N1 0 2 0 0[S1 0 20 20 0 0 9[N2 0 2 5 4[S2 1 7 7 0 0 9{x}-]"
                       "[S3 0 0 0 0 0 9{y}-]]-]]");
}

TEST (Insert, stands_to_the_right_and_leaves_a_husk) {
    Network network;
    Node& n = add (network, "n", 100, 50);
    const float width = network.get_width ();
    EXPECT_EQ (width, 100 + n.get_width () / 2);
    auto husk = network.insert_text ("[N2 1 2 0 0[C1 8 0 0 50 50 4{c}][S2 0 20 20 0 0 13{a}-]"
                                     "[S3 0 90 20 0 0 13{b}-][A4 0 272 2 2 3]]");
    ASSERT_TRUE (husk);
    EXPECT_TRUE (husk->is_empty ());
    ASSERT_EQ (network.nb_nodes (), 3);
    EXPECT_EQ (network.nodes ()[1]->x (), 20 + width + 20);
    EXPECT_EQ (network.comps ()[0]->x (), width + 20);
    EXPECT_EQ (network.nodes ()[1]->compart (), network.comps ()[0].get ());
    EXPECT_EQ (network.nodes ()[1]->network (), &network);
    husk.reset ();
    EXPECT_EQ (network.insert_text ("{no network}"), nullptr);
    EXPECT_EQ (network.nb_nodes (), 3);
}

TEST (Origin, takes_overhang_and_margin_so_that_nothing_jumps) {
    Network network;
    Node& n = add (network, "n", -20, 100);
    const float left = n.x () - n.get_width () / 2 - 5;
    const float top = n.y () - static_cast<float> (n.get_height ()) / 2 - 5;
    network.normalize_origin ();
    EXPECT_FLOAT_EQ (network.x (), 8 + left);
    EXPECT_FLOAT_EQ (network.y (), 8 + top);
    EXPECT_FLOAT_EQ (n.x (), -20 - left);
    EXPECT_FLOAT_EQ (n.y (), 100 - top);
    Network empty;
    empty.normalize_origin ();
    EXPECT_EQ (empty.x (), 8.0F);
}

TEST (Walks, distances_go_over_reactions_and_links) {
    Reaction x;
    Node& far = add (x.network, "far");
    x.p1.connect (far, arc::reaction);
    Node& alone = add (x.network, "alone");
    x.network.distances_from (x.s2);
    EXPECT_EQ (x.s2.residu ()->name (), "0");
    EXPECT_EQ (x.p1.residu ()->name (), "1");
    EXPECT_EQ (far.residu ()->name (), "2");
    EXPECT_EQ (far.residu ()->font (), 107U);
    EXPECT_FALSE (alone.residu ());
    EXPECT_FALSE (x.s1.residu ());
}

TEST (Walks, an_arc_that_leads_nowhere_is_told) {
    Network network;
    Node& a = add (network, "a");
    Node& b = add (network, "b");
    Arque& ab = *a.connect (b, arc::influence);
    Node& c = add (network, "c");
    c.connect (ab, arc::inhibition);
    ::testing::internal::CaptureStderr ();
    network.distances_from (c);
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "type d'arc : inhibition\n");
}

TEST (Walks, connected_part_takes_in_what_ends_on_it) {
    Reaction x;
    Node& e = add (x.network, "e", 0, 0, node::protein);
    e.connect (x.r, arc::catalysis);
    Node& alone = add (x.network, "alone");
    const std::vector<GraphBase*> marked = x.network.mark_connected (x.s1);
    const auto is_marked = [&marked] (const GraphBase& g) {
        return std::find (marked.begin (), marked.end (), &g) != marked.end ();
    };
    for (const Node* n : {&x.s1, &x.s2, &x.p1, &x.p2, &e}) EXPECT_TRUE (is_marked (*n));
    EXPECT_TRUE (is_marked (x.r));
    EXPECT_TRUE (is_marked (x.link_s));
    EXPECT_FALSE (is_marked (x.link_p)); // not followed from its product
    EXPECT_FALSE (is_marked (alone));
    EXPECT_EQ (marked.front (), &x.s1); // in their order
}

TEST (Network, equals_by_the_labels_in_order) {
    Network a;
    Network b;
    EXPECT_TRUE (a.equals (b));
    add (a, "x");
    EXPECT_FALSE (a.equals (b));
    add (b, "x", 50, 50, node::gene);
    EXPECT_TRUE (a.equals (b));
    b.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
    a.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
    EXPECT_FALSE (a.equals (b)); // a node without label
}

TEST (Network, arcs_to_come_in_network_order) {
    Reaction x;
    Arque& last = *x.s2.connect (x.r, arc::inhibition);
    Arque& first = *x.s1.connect (x.r, arc::catalysis);
    EXPECT_EQ (x.network.arcs_to (x.r), (std::vector<Arque*>{&first, &x.link_s, &last, &x.link_p}));
    std::unique_ptr<Node> s1 = x.network.detach_node (x.s1);
    x.network.add_node (std::move (s1));
    EXPECT_EQ (x.network.arcs_to (x.r).back (), &first);
}

TEST (Network, ascent_and_descent_follow_align) {
    Network network;
    add (network, "a", 50, 50);
    const int h = network.get_height ();
    EXPECT_EQ (network.get_ascent (), 0);
    EXPECT_EQ (network.get_descent (), h);
    network.set_align (0);
    EXPECT_EQ (network.get_ascent (), h);
    network.set_align (1);
    EXPECT_EQ (network.get_ascent (), h / 2);
}

} // namespace
} // namespace ostrand::document
