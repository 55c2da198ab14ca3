// Functions that change something say whether they did: an editor writes a record and sets
// "modified" by what they say.
#include "document/markup.h"
#include "document/network.h"
#include "document/random_edits.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

/// a -> b with a catalysis of e, an inhibition of i and a further substrate s.
struct Reaction {
    Network network;
    Node& a = add ("a", 0);
    Node& b = add ("b", 200);
    Node& e = add ("e", 100, node::protein);
    Node& s = add ("s", 50);
    Arque& arc = *a.connect (b, arc::reaction);
    Arque& catalysis = *e.connect (arc, arc::catalysis);
    Arque& link = *s.connect (arc, arc::substrate);
    Arque& inhibition = *b.connect (arc, arc::inhibition);

    Node& add (const char* name, float x, unsigned type = node::molecule) {
        return network.add_node (std::make_unique<Node> (x, 50.0F, type, 3U, name));
    }
};

std::string written (const Network& network) {
    PrintState to;
    network.fprint (to, 0);
    return to.out;
}

TEST (ReportedChanges, the_kind_that_it_has_changes_nothing_of_an_arc) {
    Reaction r;
    r.inhibition.set_color (42);
    const std::string before = written (r.network);
    EXPECT_FALSE (r.inhibition.set_kind (static_cast<int> (arc::inhibition)));
    EXPECT_EQ (r.inhibition.color (), 42U);
    EXPECT_EQ (written (r.network), before);
    EXPECT_TRUE (r.inhibition.set_kind (static_cast<int> (arc::activation)));
    EXPECT_EQ (r.inhibition.color (), 68U);
}

TEST (ReportedChanges, the_kind_that_it_has_changes_nothing_of_a_node) {
    Reaction r;
    r.a.set_color (42);
    r.a.set_residu ("P");
    const std::string before = written (r.network);
    EXPECT_FALSE (r.a.set_kind (node::kind::molecule));
    EXPECT_EQ (written (r.network), before);
}

TEST (ReportedChanges, the_kind_that_it_has_changes_nothing_of_a_compartment) {
    Network network;
    Compart& c = network.add_compart (shape::rectangle, 0, 0, 100, 100);
    c.set_color (42);
    const std::string before = written (network);
    EXPECT_FALSE (c.set_kind (0));
    EXPECT_EQ (written (network), before);
    EXPECT_TRUE (c.set_kind (1));
    EXPECT_FALSE (c.set_kind (1));
}

TEST (ReportedChanges, fog_of_each_class) {
    Reaction r;
    Compart& c = r.network.add_compart (shape::rectangle, 0, 0, 100, 100);
    EXPECT_FALSE (r.arc.set_fog (false));
    EXPECT_TRUE (r.arc.set_fog (true));
    EXPECT_FALSE (r.arc.set_fog (true));
    EXPECT_FALSE (r.catalysis.set_fog (true)); // it hangs on the reaction
    EXPECT_TRUE (r.network.set_fog (false));
    EXPECT_FALSE (r.network.set_fog (false));
    EXPECT_TRUE (r.a.set_fog (true));
    EXPECT_FALSE (r.a.set_fog (true));
    EXPECT_TRUE (c.set_fog (true));
    EXPECT_FALSE (c.set_fog (true));
    Line line ("ab", 67, 0);
    EXPECT_TRUE (line.set_fog (true));
    EXPECT_FALSE (line.set_fog (true));
    line.insert_before (0, StdChar ('x', 67, 0)); // one letter alone is clear
    EXPECT_TRUE (line.set_fog (true));
}

TEST (ReportedChanges, default_labels_of_each_kind_of_arc) {
    Reaction r;
    for (Arque* const a : {&r.arc, &r.link, &r.inhibition}) {
        const DefaultLabels first = a->kinetic_labels (false);
        EXPECT_TRUE (first.handled && first.changed);
        const DefaultLabels again = a->kinetic_labels (false);
        EXPECT_TRUE (again.handled);
        EXPECT_FALSE (again.changed);
    }
    EXPECT_TRUE (r.arc.kinetic_labels (true).changed);
    EXPECT_FALSE (r.arc.kinetic_labels (true).changed);
    r.arc.take_stoech_dest (std::make_unique<Line> ("", 74, 72)); // one of two is empty
    EXPECT_TRUE (r.arc.kinetic_labels (true).changed);
    EXPECT_FALSE (r.catalysis.kinetic_labels (false).handled);
}

TEST (ReportedChanges, sharing_tells_of_types_display_marks_and_masters) {
    Network network;
    const auto add = [&network] () -> Node& {
        return network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::molecule, 3U, "ATP"));
    };
    Node& a = add ();
    EXPECT_FALSE (network.update_shared_nodes ());
    Node& b = add ();
    EXPECT_TRUE (network.update_shared_nodes ()); // types and a master
    EXPECT_FALSE (network.update_shared_nodes ());
    b.set_calyx_display (true);
    EXPECT_TRUE (network.update_shared_nodes ()); // the mark of the other
    EXPECT_TRUE (a.calyx_display ());
    EXPECT_FALSE (network.update_shared_nodes ());
    b.set_master (nullptr);
    EXPECT_TRUE (network.update_shared_nodes ()); // a master alone
    EXPECT_EQ (b.master (), &a);
    b.set_label ("other");
    EXPECT_TRUE (network.update_shared_nodes ());
    EXPECT_FALSE (network.update_shared_nodes ());
}

TEST (ReportedChanges, compartments_tell_of_their_order_and_of_what_they_hold) {
    Network network;
    Compart& small = network.add_compart (shape::rectangle, 10, 10, 100, 100);
    Node& n = network.add_node (std::make_unique<Node> (50.0F, 50.0F, 13U, 3U, "n"));
    EXPECT_TRUE (network.check_compartments ()); // the node's
    EXPECT_EQ (n.compart (), &small);
    EXPECT_FALSE (network.check_compartments ());
    Compart& large = network.add_compart (shape::rectangle, 0, 0, 400, 400);
    EXPECT_TRUE (network.check_compartments ()); // the order
    EXPECT_EQ (network.comps ()[0].get (), &large);
    EXPECT_FALSE (network.check_compartments ());
    n.set_position (900, 900);
    EXPECT_TRUE (network.check_compartments ());
    EXPECT_FALSE (network.check_compartments ());
}

TEST (ReportedChanges, what_is_there_already_is_no_change) {
    Reaction r;
    r.network.set_origin (10, 10);
    r.network.normalize_origin ();
    r.a.set_concentration ("10 uM");
    r.arc.kinetic_labels (false);
    const std::string before = written (r.network);
    EXPECT_FALSE (r.a.set_concentration ("10 uM"));
    EXPECT_FALSE (r.a.set_color (r.a.get_color ()));
    EXPECT_FALSE (r.a.set_own_color (r.a.color ()));
    EXPECT_FALSE (r.a.set_thickness (r.a.thickness ()));
    EXPECT_FALSE (r.a.set_selectable (true));
    EXPECT_FALSE (r.a.set_calyx_display (r.a.calyx_display ()));
    EXPECT_FALSE (r.a.set_multi_conc (false));
    EXPECT_FALSE (r.a.set_user_data ("10 uM"));
    EXPECT_FALSE (r.arc.label_line ()->set_offset (0, 0));
    EXPECT_FALSE (r.arc.label_line ()->set_style (no_font, no_color));
    EXPECT_FALSE (r.network.set_align (r.network.align ()));
    EXPECT_FALSE (r.network.set_origin (r.network.x (), r.network.y ()));
    EXPECT_FALSE (r.network.normalize_origin ());
    EXPECT_FALSE (r.network.clear_multi_conc ());
    EXPECT_FALSE (r.network.translate (0, 0));
    EXPECT_EQ (written (r.network), before);
}

/// What they say and what the text shows are the same: whatever they did, once more does nothing.
TEST (ReportedChanges, of_random_documents_are_what_the_text_shows) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        const auto network = testing::RandomDocument (seed).network ();
        testing::Dice dice (seed);
        for (int step = 0; step < 12 && network->nb_nodes () > 0; ++step) {
            Node& n =
                *network->nodes ()[static_cast<std::size_t> (dice.below (network->nb_nodes ()))];
            const std::string before = written (*network);
            bool said = false;
            const int what = dice.below (6);
            switch (what) {
            case 0: said = n.set_kind (dice.below (10)); break;
            case 1: said = n.set_color (static_cast<unsigned> (dice.below (3))); break;
            case 2: said = n.set_concentration (dice.one_in (2) ? "10 uM" : "20 uM"); break;
            case 3: said = network->color_species (1, 2, 3); break;
            case 4: said = network->normalize_origin (); break;
            default:
                if (n.nb_arcs () > 0) said = n.arcs ()[0]->kinetic_labels (true).changed;
            }
            if (written (*network) != before) {
                ASSERT_TRUE (said) << seed << " kind " << what;
            }
        }
    }
}

} // namespace
} // namespace ostrand::document
