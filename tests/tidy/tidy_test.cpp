// Arranged networks: nothing overlaps, nothing is lost, the same every time.
#include "tidy/tidy.h"

#include "document/markup.h"
#include "support/random_document.h"
#include "support/support.h"
#include "tidy/labels.h"
#include "tidy/measures.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

namespace ostrand::tidy {
namespace {

using document::Network;
using document::Node;

/// A connected network: a chain of main reactions, with a cofactor and an enzyme at each.
std::unique_ptr<Network> metabolism (int reactions, bool compartments, unsigned seed) {
    ostrand::testing::Dice dice (seed);
    auto network = std::make_unique<Network> ();
    if (compartments) {
        for (const float x : {0.F, 5000.F}) {
            auto c = std::make_unique<document::Compart> (8, x, 0.F, 4000.F, 4000.F);
            c->set_label (x == 0 ? "cytosol" : "nucleus");
            network->add_compart (std::move (c));
        }
    }
    const auto node = [&] (const std::string& name, bool inner) -> Node& {
        return network->add_node (std::make_unique<Node> (
            inner ? 5100.F : 100.F, static_cast<float> (100 + network->nb_nodes ()), 13U, 3U,
            name));
    };
    std::vector<Node*> metabolites{&node ("M0", false)};
    Node& atp = node ("ATP", false);
    Node& adp = node ("ADP", false);
    for (int i = 1; i <= reactions; ++i) {
        metabolites.push_back (&node ("M" + std::to_string (i), compartments && i % 3 == 0));
        Node& from = *metabolites[static_cast<std::size_t> (dice.below (i))];
        document::Arque& r = *from.connect (*metabolites.back (), document::arc::reaction);
        if (dice.one_in (2)) {
            atp.connect (r, document::arc::substrate);
            adp.connect (r, document::arc::product);
        }
        if (dice.one_in (3)) node ("E" + std::to_string (i), false).connect (r, 0x20);
    }
    network->check_compartments ();
    network->update_shared_nodes ();
    network->layout ();
    return network;
}

/// What is drawn, by names: (type, source, destination), the destination of a link being the names
/// at the ends of its reaction.
std::multiset<std::tuple<unsigned, std::string, std::string>> links (const Network& network) {
    std::multiset<std::tuple<unsigned, std::string, std::string>> all;
    for (const document::Arque* a : network.all_arcs ()) {
        std::string to;
        if (const Node* n = a->dest_node ()) to = n->name ();
        if (const document::Arque* r = a->dest_arc ()) {
            to = r->source ()->name () + ">" + r->dest_node ()->name ();
        }
        all.emplace (a->type (), a->source ()->name (), to);
    }
    return all;
}

/// Where the texts of arcs stand beside their own places.
std::multiset<std::pair<float, float>> texts_of (const Network& network) {
    std::multiset<std::pair<float, float>> all;
    for (const document::Arque* a : network.all_arcs ())
        if (a->label () != nullptr) all.emplace (a->label ()->x (), a->label ()->y ());
    return all;
}

void expect_clear (const ostrand::testing::NetworkMeasures& m) {
    EXPECT_EQ (m.overlaps, 0);
    EXPECT_EQ (m.covered, 0);
    EXPECT_EQ (m.off_page, 0);
}

TEST (Tidy, no_two_nodes_overlap_and_no_square_is_covered) {
    for (const unsigned seed : {1U, 2U}) {
        for (const int size : {1, 4, 15, 30}) {
            const auto network = metabolism (size, false, seed);
            arrange_network (*network);
            SCOPED_TRACE (std::to_string (size) + " reactions, seed " + std::to_string (seed));
            expect_clear (ostrand::testing::measure (*network));
        }
    }
}

TEST (Tidy, every_link_stays_between_the_same_species) {
    for (const bool compartments : {false, true}) {
        const auto network = metabolism (16, compartments, 7);
        const auto before = links (*network);
        arrange_network (*network);
        EXPECT_EQ (links (*network), before);
        arrange_network (*network);
        EXPECT_EQ (links (*network), before);
    }
}

TEST (Tidy, a_cofactor_of_many_reactions_gets_copies) {
    const auto network = metabolism (25, false, 5);
    arrange_network (*network);
    int atp = 0;
    for (const auto& n : network->nodes ()) {
        if (n->name () != "ATP") continue;
        ++atp;
        EXPECT_TRUE (n->is_shared ());
    }
    EXPECT_GT (atp, 2);
}

TEST (Tidy, the_same_network_gives_the_same_places) {
    std::vector<std::pair<float, float>> places[2];
    for (auto& list : places) {
        const auto network = metabolism (20, true, 11);
        arrange_network (*network);
        for (const auto& n : network->nodes ()) list.emplace_back (n->x (), n->y ());
    }
    EXPECT_EQ (places[0], places[1]);
}

TEST (Labels, a_text_leaves_the_node_that_it_lies_on_and_a_free_one_stays) {
    Network network;
    const auto node = [&] (const char* name, float x, float y) -> Node& {
        return network.add_node (std::make_unique<Node> (x, y, 13U, 3U, name));
    };
    Node& a = node ("A", 60, 60);
    Node& b = node ("B", 60, 260);
    node ("D", 400, 160); // the page is wide
    document::Arque& arc = *a.connect (b, document::arc::reaction);
    arc.set_label ("0.5 /s");
    network.layout ();
    EXPECT_FALSE (place_labels (network));
    const document::Point own = arc.geometry ().label_pos;
    node ("C", own.x + 20, own.y);
    network.layout ();
    EXPECT_EQ (ostrand::testing::measure (network).texts_on, 1);
    EXPECT_TRUE (place_labels (network));
    EXPECT_EQ (ostrand::testing::measure (network).texts_on, 0);
}

/// A constant of an arc has its own place only where nothing else stands.
TEST (Tidy, texts_of_arcs_keep_off_nodes_and_stay_when_arranged_again) {
    const auto network = metabolism (20, false, 4);
    for (document::Arque* a : network->all_arcs ()) {
        if (document::is_reaction (a->type ())) a->set_label ("0.02 /uM/s");
    }
    network->layout ();
    arrange_network (*network);
    const auto m = ostrand::testing::measure (*network);
    EXPECT_GE (m.texts, 20);
    const auto once = texts_of (*network);
    arrange_network (*network);
    EXPECT_EQ (texts_of (*network), once);
    for (document::Arque* a : network->all_arcs ()) {
        if (a->label () != nullptr) static_cast<document::Line*> (a->label ())->set_offset (0, 0);
    }
    const auto own = ostrand::testing::measure (*network);
    EXPECT_GE (own.texts_on, 4);
    EXPECT_LE (3 * m.texts_on, 2 * own.texts_on);
}

TEST (Tidy, species_stay_in_their_compartments) {
    const auto network = metabolism (24, true, 13);
    std::map<std::string, const document::Compart*> before;
    for (const auto& n : network->nodes ()) before[n->name ()] = n->compart ();
    arrange_network (*network);
    for (const auto& n : network->nodes ()) EXPECT_EQ (n->compart (), before[n->name ()]);
    expect_clear (ostrand::testing::measure (*network));
}

TEST (Tidy, a_network_without_reactions_and_an_empty_one_are_arranged) {
    Network empty;
    arrange_network (empty);
    EXPECT_EQ (empty.nb_nodes (), 0);
    Network lonely;
    for (int i = 0; i < 7; ++i) {
        lonely.add_node (std::make_unique<Node> (5.F, 5.F, 13U, 3U, "n" + std::to_string (i)));
    }
    arrange_network (lonely);
    expect_clear (ostrand::testing::measure (lonely));
}

TEST (Tidy, random_documents_of_any_kind_are_arranged_without_harm) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        const std::unique_ptr<Network> network =
            ostrand::testing::RandomDocument (seed, {.nesting = 1, .pictures = false}).network ();
        const int arcs = network->count_arcs ();
        arrange_network (*network);
        EXPECT_EQ (network->count_arcs (), arcs) << seed;
        EXPECT_EQ (ostrand::testing::measure (*network).overlaps, 0) << seed;
    }
}

} // namespace
} // namespace ostrand::tidy
