// Nodes, arcs and compartments: kinds, texts, sizes, fog.
#include "document/markup.h"
#include "document/network.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

/// a -> b -> c with a catalysis of e on the first reaction.
struct Chain {
    Network network;
    Node& a = add ("a", 100);
    Node& b = add ("b", 200);
    Node& c = add ("c", 300);
    Node& e = add ("e", 150, node::protein);
    Arque& ab = *a.connect (b, arc::reaction);
    Arque& bc = *b.connect (c, arc::reaction);
    Arque& cat = *e.connect (ab, arc::catalysis);

    Node& add (const char* name, float x, unsigned type = node::molecule) {
        return network.add_node (std::make_unique<Node> (x, 50.0F, type, 3U, name));
    }
};

std::string letters (const Char* c) {
    return c != nullptr ? static_cast<const Line&> (*c).chars_only () : "none";
}

TEST (Node, without_label_is_two_by_two) {
    const Node n (0, 0, node::no_border, 7);
    EXPECT_EQ (n.get_width (), 2.0F);
    EXPECT_EQ (n.get_height (), 2);
}

TEST (Node, size_follows_label_group_sharing_and_residu) {
    Node n (0, 0, node::protein, 7, "a");
    const float w = n.label ()->get_width ();
    const int h = n.label ()->get_height ();
    EXPECT_EQ (n.get_width (), w + 10);
    EXPECT_EQ (n.get_height (), h + 8);
    n.set_residu ("P");
    EXPECT_EQ (n.get_height (), h + 12);
    n.set_type (n.type () | node::shared_bit);
    EXPECT_EQ (n.get_height (), h + 12); // once, not twice
    Node wide (0, 0, node::molecule, 7, "a long name of a molecule");
    ASSERT_GT (wide.label ()->get_width (), 50);
    EXPECT_EQ (wide.get_width (), wide.label ()->get_width () + 26);
    EXPECT_EQ (wide.get_height (), h + 12);
    wide.set_residu ("P");
    EXPECT_EQ (wide.get_height (), h + 12);
    const Node receptor (0, 0, node::receptor, 7, "a long name of a receptor");
    EXPECT_EQ (receptor.get_width (), receptor.label ()->get_width () + 10);
    EXPECT_EQ (receptor.get_height (), h + 12);
}

TEST (Node, empty_line_is_a_label) {
    const Node n (0, 0, node::protein, 7, "");
    EXPECT_EQ (n.get_width (), 10.0F);
    EXPECT_GT (n.get_height (), 8);
}

TEST (Node, kinds_by_the_place_in_the_menu) {
    Node n (0, 0, node::no_border, 99, "a");
    const std::vector<unsigned> types{17, 5, 7, 9, 11, 13, 15, 0};
    for (int k = 0; k < 8; ++k) {
        EXPECT_TRUE (n.set_kind (k)) << k;
        EXPECT_EQ (n.type (), types[static_cast<std::size_t> (k)]);
        EXPECT_FALSE (n.set_kind (k));
    }
    EXPECT_EQ (n.bg_color (), 7U); // it had none at the start
    n.set_color (42);
    n.set_kind (3); // from no border
    EXPECT_EQ (n.bg_color (), 7U);
    n.set_color (42);
    n.set_kind (5);
    EXPECT_EQ (n.bg_color (), 42U);
    EXPECT_FALSE (n.set_kind (10));
}

TEST (Node, state_of_a_gene_is_refused) {
    Node gene (0, 0, node::gene, 7, "g");
    EXPECT_FALSE (gene.set_kind (8));
    EXPECT_FALSE (gene.residu ());
    Node protein (0, 0, node::protein, 7, "p");
    EXPECT_TRUE (protein.set_kind (8));
    EXPECT_EQ (letters (protein.residu ()), "P");
    EXPECT_EQ (protein.residu ()->font (), 66U);
    EXPECT_FALSE (protein.set_kind (8));
    EXPECT_TRUE (protein.set_kind (9));
    EXPECT_FALSE (protein.residu ());
    EXPECT_FALSE (protein.set_kind (9));
}

TEST (Node, a_receptor_keeps_its_residu_and_a_gene_loses_it) {
    Node n (0, 0, node::protein, 7, "p");
    n.set_residu ("P");
    EXPECT_EQ (n.residu ()->font (), 107U);
    EXPECT_EQ (n.residu ()->color (), 4U);
    EXPECT_TRUE (n.set_kind (0));
    EXPECT_TRUE (n.residu ());
    EXPECT_TRUE (n.set_kind (1));
    EXPECT_FALSE (n.residu ());
}

TEST (Node, colour_means_the_fill) {
    Node n (0, 0, node::protein, 7, "p");
    EXPECT_TRUE (n.set_color (9));
    EXPECT_FALSE (n.set_color (9));
    EXPECT_EQ (n.get_color (), 9U);
    EXPECT_EQ (n.color (), 0U);
}

TEST (Node, is_a_reactant_by_its_arcs) {
    Chain chain;
    EXPECT_TRUE (chain.a.is_reactant ());
    EXPECT_FALSE (chain.c.is_reactant ());
    EXPECT_TRUE (chain.e.is_reactant ());
    Node& t = chain.add ("t", 10);
    t.connect (chain.ab, arc::product); // neither 0x110 nor 0x220 nor 48 nor 64
    EXPECT_FALSE (t.is_reactant ());
    t.connect (chain.ab, arc::inhibition);
    EXPECT_TRUE (t.is_reactant ());
}

TEST (Node, extent_keeps_halves) {
    Node n (10, 20, node::protein, 7);
    n.set_label ("a");
    const Extent box = n.extent ();
    EXPECT_EQ (box.x, 10 - n.get_width () * 0.5F);
    EXPECT_EQ (box.right - box.x, n.get_width ());
    EXPECT_EQ (box.y, 20 - static_cast<float> (n.get_height ()) * 0.5F);
    const Anchor anchor = n.anchor (arc::reaction);
    EXPECT_EQ (anchor.x, box.x);
    EXPECT_EQ (anchor.half_w, static_cast<int> (n.get_width () / 2));
}

TEST (Node, extent_with_arcs_holds_arcs_on_its_arcs) {
    Chain chain;
    chain.network.layout ();
    const Extent box = chain.a.extent_with_arcs ();
    const Extent cat = chain.cat.extent ();
    EXPECT_LE (box.y, cat.y);
    EXPECT_GE (box.right, chain.ab.extent ().right);
    EXPECT_LT (box.right, chain.bc.extent ().right);
}

TEST (Arque, defaults_of_a_new_arc) {
    document_state ().default_color = 88;
    Chain chain;
    document_state ().default_color = 0;
    EXPECT_EQ (chain.ab.color (), 88U);
    EXPECT_EQ (chain.ab.thickness (), 2);
    EXPECT_EQ (chain.ab.id (), -3);
    EXPECT_EQ (chain.ab.side (), 0);
    EXPECT_EQ (chain.ab.geometry ().mark_b.x, -1.0F);
    EXPECT_EQ (chain.ab.source (), &chain.a);
    EXPECT_EQ (chain.ab.dest (), &chain.b);
    EXPECT_EQ (chain.ab.connect (chain.a, arc::reaction), nullptr);
    EXPECT_EQ (Compart (8, 0, 0, 10, 10).connect (chain.a, arc::reaction), nullptr);
}

TEST (Arque, names_in_reports_are_latin_1) {
    EXPECT_STREQ (arc_type_name (0x110), "r\xE9"
                                         "action");
    EXPECT_STREQ (arc_type_name (0x111), "r\xE9"
                                         "action-r\xE9v");
    EXPECT_STREQ (arc_type_name (0x190), "transport");
    EXPECT_STREQ (arc_type_name (0x200), "substrat");
    EXPECT_STREQ (arc_type_name (0x211), "substrat-r\xE9v");
    EXPECT_STREQ (arc_type_name (0x401), "produit");
    EXPECT_STREQ (arc_type_name (0x411), "produit-r\xE9v");
    EXPECT_STREQ (arc_type_name (0x20), "catalyse");
    EXPECT_STREQ (arc_type_name (0x30), "inhibition");
    EXPECT_STREQ (arc_type_name (0x40), "activation");
    EXPECT_STREQ (arc_type_name (0x50), "influence");
    EXPECT_STREQ (arc_type_name (0xC0), "autre");
    EXPECT_STREQ (arc_type_name (12345), "autre");
}

TEST (Arque, kind_sets_the_colour_and_keeps_that_of_an_inhibition) {
    Chain chain;
    Arque& a = chain.cat;
    EXPECT_TRUE (a.set_kind (48));
    EXPECT_EQ (a.color (), 89U);
    a.set_own_color (5);
    EXPECT_FALSE (a.set_kind (48));
    EXPECT_EQ (a.color (), 5U);
    EXPECT_TRUE (a.set_kind (64));
    EXPECT_EQ (a.color (), 68U);
    EXPECT_TRUE (a.set_kind (32));
    EXPECT_EQ (a.color (), 0U);
}

TEST (Arque, default_labels_of_each_type) {
    Chain chain;
    EXPECT_TRUE (chain.ab.kinetic_labels (false).handled); // catalysed
    EXPECT_EQ (letters (chain.ab.label ()), "K");
    EXPECT_EQ (chain.ab.label ()->name (), "K_{m}");
    EXPECT_EQ (chain.ab.residu ()->name (), "K_{cat}");
    EXPECT_EQ (chain.ab.residu ()->chars ()[0].font, 66U);
    EXPECT_EQ (chain.ab.residu ()->chars ()[0].color, 4U);
    EXPECT_TRUE (chain.bc.kinetic_labels (false).handled);
    EXPECT_EQ (chain.bc.label ()->name (), "K_{off}");
    EXPECT_EQ (chain.bc.residu ()->name (), "K_{on}");
    EXPECT_TRUE (chain.bc.kinetic_labels (true).handled);
    EXPECT_EQ (letters (chain.bc.stoech_src ()), "1");
    EXPECT_EQ (letters (chain.bc.stoech_dest ()), "1");
    EXPECT_EQ (chain.bc.stoech_src ()->chars ()[0].font, 74U);
    EXPECT_EQ (chain.bc.stoech_src ()->chars ()[0].color, 72U);
    const auto labels = [&chain] (unsigned type, bool stoichiometry) {
        Arque& a = *chain.c.connect (chain.ab, type);
        const bool handled = a.kinetic_labels (stoichiometry).handled;
        std::string all = handled ? "yes " : "no ";
        all += (a.label () ? a.label ()->name () : "-") + " " +
               (a.residu () ? a.residu ()->name () : "-") + " " +
               (a.stoech_src () ? a.stoech_src ()->name () : "-") +
               (a.stoech_dest () ? " and a fourth" : "");
        a.destroy ();
        return all;
    };
    EXPECT_EQ (labels (0x30, false), "yes K_{eq} - -");
    EXPECT_EQ (labels (0x30, true), "no - - -");
    EXPECT_EQ (labels (0x40, false), "yes K_{eq} X_{fact} -");
    EXPECT_EQ (labels (0x40, true), "no - - -");
    EXPECT_EQ (labels (0x200, false), "yes K_{m} - -");
    EXPECT_EQ (labels (0x200, true), "yes - - 1");
    EXPECT_EQ (labels (0x401, false), "yes K_{cat} - -");
    EXPECT_EQ (labels (0x401, true), "yes - - 1");
    EXPECT_EQ (labels (0x20, false), "no - - -");
    EXPECT_EQ (labels (0x50, true), "no - - -");
}

TEST (Arque, labels_with_text_are_kept_and_empty_ones_filled) {
    Chain chain;
    chain.bc.kinetic_labels (false);
    chain.e.connect (chain.bc, arc::catalysis);
    chain.bc.residu ()->replace (0, -1, "");
    chain.bc.kinetic_labels (false);
    EXPECT_EQ (chain.bc.label ()->name (), "K_{off}"); // stays
    EXPECT_EQ (chain.bc.residu ()->name (), "K_{cat}");
}

TEST (Arque, stoichiometries_are_the_numbers_in_front) {
    Chain chain;
    int src = 7;
    int dst = 7;
    EXPECT_FALSE (chain.ab.stoichiometries (&src, &dst));
    EXPECT_EQ (src, 1); // a missing field
    EXPECT_EQ (dst, 1);
    dst = 7;
    chain.ab.take_stoech_src (std::make_unique<Line> ("2x", 67, 0));
    chain.ab.take_stoech_dest (std::make_unique<Line> ("x2", 67, 0));
    EXPECT_TRUE (chain.ab.stoichiometries (&src, nullptr));
    EXPECT_EQ (src, 2);
    EXPECT_EQ (dst, 7);
    EXPECT_TRUE (chain.ab.stoichiometries (nullptr, &dst));
    EXPECT_EQ (dst, 1);
}

TEST (Arque, neighbours_of_a_main_reaction) {
    Chain chain;
    Arque& p = *chain.c.connect (chain.ab, arc::product);
    Arque& s = *chain.c.connect (chain.ab, arc::reversible_substrate);
    std::vector<Arque*> substrates;
    std::vector<Arque*> products;
    EXPECT_TRUE (chain.ab.arc_neighbours (substrates, products));
    EXPECT_EQ (substrates, std::vector<Arque*>{&s});
    EXPECT_EQ (products, std::vector<Arque*>{&p});
    EXPECT_FALSE (chain.bc.arc_neighbours (substrates, products));
    chain.ab.set_type (arc::transport);
    EXPECT_FALSE (chain.ab.arc_neighbours (substrates, products));
}

TEST (Arque, anchor_by_the_kind_of_link) {
    Chain chain;
    chain.network.layout ();
    EXPECT_EQ (chain.ab.anchor (arc::substrate).x, chain.ab.geometry ().mark_a.x);
    EXPECT_EQ (chain.ab.anchor (arc::product).x, chain.ab.geometry ().mark_b.x);
    EXPECT_EQ (chain.ab.anchor (arc::product).half_w, 0);
    EXPECT_EQ (chain.ab.anchor (arc::catalysis).x, chain.ab.x ());
    EXPECT_EQ (chain.ab.anchor (arc::catalysis).half_w, 7);
    EXPECT_EQ (chain.cat.anchor (arc::catalysis).half_w, 0);
}

TEST (Arque, extent_is_never_a_line) {
    Chain chain;
    chain.network.layout ();
    const Extent box = chain.ab.extent (); // horizontal
    EXPECT_NEAR (box.bottom - box.y, 28, 0.01);
    EXPECT_NEAR (box.y, chain.ab.geometry ().start.y - 14, 0.01);
    chain.ab.set_label ("a very long text on an arc");
    chain.network.layout ();
    EXPECT_GE (chain.ab.extent ().right,
               chain.ab.geometry ().label_pos.x + chain.ab.label ()->get_width ());
}

TEST (Compart, kinds) {
    Compart c (8, 0, 0, 100, 80);
    EXPECT_EQ (c.color (), 4U);
    EXPECT_FALSE (c.set_kind (0));
    EXPECT_TRUE (c.set_kind (1));
    EXPECT_EQ (c.shape (), 12);
    EXPECT_FALSE (c.set_kind (2));
    EXPECT_EQ (c.user_values (), (std::array<int, 5>{80, 40, 0, 0, 0}));
}

TEST (Compart, grows_to_its_label_when_it_is_laid_out) {
    Network network;
    Compart& c = network.add_compart (std::make_unique<Compart> (8, 0.0F, 0.0F, 20.0F, 80.0F));
    c.set_label ("a long name");
    EXPECT_EQ (c.get_width (), c.label ()->get_width () + 10);
    EXPECT_EQ (c.width (), 20); // asking changes nothing
    network.layout ();
    EXPECT_EQ (c.width (), c.label ()->get_width () + 10);
}

TEST (Compart, left_edge_is_inside_and_right_edge_is_not) {
    const Compart c (8, 10, 20, 30, 40);
    EXPECT_TRUE (c.contains (10, 20));
    EXPECT_FALSE (c.contains (40, 30));
    EXPECT_FALSE (c.contains (20, 60));
    EXPECT_TRUE (c.contains (39.9F, 59.9F));
}

TEST (Compart, ellipse_holds_what_is_inside_its_outline) {
    const Compart c (12, 0, 0, 40, 20);
    EXPECT_TRUE (c.contains (20, 10));
    EXPECT_FALSE (c.contains (0, 10));
    EXPECT_FALSE (c.contains (3, 3));
    EXPECT_TRUE (c.contains (0.1F, 10));
    EXPECT_FALSE (Compart (12, 0, 0, 0, 20).contains (0, 10));
}

TEST (Fog, of_the_only_reaction_takes_both_its_nodes) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (99.0F, 0.0F, 13U, 3U, "b"));
    Node& alone = network.add_node (std::make_unique<Node> (9.0F, 9.0F, 13U, 3U, "c"));
    Arque& ab = *a.connect (b, arc::reaction);
    ab.set_label ("k");
    ab.set_fog (true);
    EXPECT_TRUE (ab.label ()->foggy ());
    EXPECT_TRUE (a.foggy ());
    EXPECT_TRUE (b.foggy ());
    EXPECT_TRUE (a.label ()->foggy ());
    EXPECT_TRUE (a.label_line ()->chars ()[0].foggy);
    EXPECT_FALSE (alone.foggy ());
    ab.set_fog (false);
    EXPECT_FALSE (a.foggy ());
    EXPECT_FALSE (ab.foggy ());
}

TEST (Fog, of_one_of_two_reactions_leaves_the_node_clear) {
    Chain chain;
    chain.ab.set_fog (true);
    EXPECT_TRUE (chain.a.foggy ());
    EXPECT_FALSE (chain.b.foggy ());  // bc is clear
    EXPECT_TRUE (chain.cat.foggy ()); // ends on ab
    EXPECT_TRUE (chain.e.foggy ());
    EXPECT_FALSE (chain.bc.foggy ());
}

TEST (Fog, of_a_node_takes_its_arcs_and_what_they_end_on) {
    Chain chain;
    chain.e.set_fog (true);
    EXPECT_TRUE (chain.cat.foggy ());
    EXPECT_TRUE (chain.ab.foggy ());
    EXPECT_TRUE (chain.a.foggy ());
    EXPECT_FALSE (chain.b.foggy ());
    Node& alone = chain.add ("x", 900);
    alone.set_fog (true);
    EXPECT_TRUE (alone.foggy ());
    chain.a.set_fog (false);
    EXPECT_FALSE (chain.ab.foggy ());
    EXPECT_FALSE (chain.e.foggy ());
    EXPECT_TRUE (alone.foggy ()); // isolated nodes stay as they are
}

TEST (Fog, of_the_network_takes_all) {
    Chain chain;
    chain.network.set_fog (true);
    for (const auto& n : chain.network.nodes ()) EXPECT_TRUE (n->foggy ());
    for (const Arque* a : chain.network.all_arcs ()) EXPECT_TRUE (a->foggy ());
}

} // namespace
} // namespace ostrand::document
