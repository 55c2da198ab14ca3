// Two documents that are open at once never touch each other.
#include "document/deep_difference.h"
#include "document/hit_test.h"
#include "document/markup.h"
#include "document/random_edits.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

using testing::DeepDifference;
using testing::RandomDocument;
using testing::RandomEdits;

std::string written (const Network& network) {
    PrintState to;
    network.fprint (to, 0);
    return to.out;
}

/// A document and somebody who works on it: edits, searches, copies, reads, writes, settles.
class Worker {
  public:
    explicit Worker (std::uint32_t seed)
        : network_ (RandomDocument (seed).network ()), edits_ (seed) {
        network_->layout ();
    }
    const Network& network () const { return *network_; }

    void work () {
        const testing::CaughtMessages messages;
        testing::Dice& dice = edits_.dice ();
        Network& network = *network_;
        switch (dice.below (12)) {
        case 0: network.settle (); break;
        case 1: {
            PrintState to;
            network.fprint (to, 0);
            network.adopt_numbering (to.numbering);
            break;
        }
        case 2: network.find_nodes (Line ("A", 67, 0)); break;
        case 3: network.find_next (dice.one_in (2)); break;
        case 4:
            if (network.nb_nodes () > 0) network.mark_multiple_conc (*network.nodes ().front ());
            break;
        case 5: network.set_multi_name (dice.one_in (2) ? "ATP" : ""); break;
        case 6:
            if (network.nb_nodes () > 0) network.distances_from (*network.nodes ().back ());
            break;
        case 7:
            if (network.nb_nodes () > 0) network.mark_same_species (*network.nodes ().front ());
            break;
        case 8:
            // Numbers that stand twice are given anew while a text is read.
            network.insert_text ("[N2 0 2 8 8[S1 0 9 9 0 3 13{x}-][S1 0 50 9 0 3 13{y}-]"
                                 "[A2 0 272 2 1 10000]]");
            break;
        case 9: // another file is opened here
            if (dice.one_in (3)) {
                const auto seed = static_cast<std::uint32_t> (dice.below (1000));
                network_ = read_network (written (*RandomDocument (seed).network ()));
            }
            break;
        default: edits_.edit (network);
        }
        network_->layout ();
        network_->find_by_id (3);
        network_->find_at (50, 50, {});
    }

    /// All that can be told of the document.
    std::string state () const {
        std::string told = written (*network_) + network_->multi_name ();
        for (const Node* const hit : network_->find_hits ()) {
            told += " " + std::to_string (network_->place_of (*hit));
        }
        told += " at " + std::to_string (network_->find_index ());
        list (*network_, told);
        return told;
    }

  private:
    static void list (const Network& network, std::string& told) {
        for (const auto& n : network.nodes ()) {
            told += "\n" + std::to_string (n->id ()) + (n->multi_conc () ? "m" : "") + " " +
                    std::to_string (n->highlight) + " " + std::to_string (n->get_width ());
            for (const auto& a : n->arcs ()) {
                told += " " + std::to_string (a->id ()) + " " + std::to_string (a->side ()) + " " +
                        std::to_string (a->geometry ().end.x);
            }
            if (n->nested () != nullptr) list (*n->nested (), told);
        }
    }

    std::unique_ptr<Network> network_;
    RandomEdits edits_;
};

TEST (TwoDocuments, work_on_one_leaves_the_other_as_it_is) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        Worker one (seed);
        Worker other (seed + 1000);
        for (int step = 0; step < 25; ++step) {
            const std::string before = other.state ();
            one.work ();
            ASSERT_EQ (other.state (), before) << seed;
            ASSERT_TRUE (other.network ().is_laid_out ());
            const std::string of_one = one.state ();
            other.work ();
            ASSERT_EQ (one.state (), of_one) << seed;
        }
    }
}

TEST (TwoDocuments, what_becomes_of_one_does_not_depend_on_the_other) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        Worker alone (seed);
        for (int step = 0; step < 25; ++step) alone.work ();
        Worker beside (seed);
        Worker other (seed + 2000);
        for (int step = 0; step < 25; ++step) {
            beside.work ();
            other.work ();
        }
        ASSERT_EQ (beside.state (), alone.state ()) << seed;
        ASSERT_EQ (DeepDifference (true).of (beside.network (), alone.network ()), "") << seed;
    }
}

TEST (TwoDocuments, the_displayed_name_belongs_to_its_document) {
    Network one;
    Network other;
    Node& a = one.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    Node& b = other.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    one.mark_multiple_conc (a);
    EXPECT_EQ (one.multi_name (), "ATP");
    EXPECT_EQ (other.multi_name (), "");
    EXPECT_TRUE (a.is_on_many_planes ());
    EXPECT_FALSE (b.is_on_many_planes ());
    const auto read = read_network (written (one));
    EXPECT_EQ (read->multi_name (), "ATP");
    EXPECT_EQ (other.multi_name (), "");
    const auto none = read_network (written (other)); // reading one clears no other
    EXPECT_EQ (none->multi_name (), "");
    EXPECT_EQ (one.multi_name (), "ATP");
}

} // namespace
} // namespace ostrand::document
