// A network that settles is what a reader of its text would get, field by field; and a settled one
// is written, read and written again to the same text.
#include "document/deep_difference.h"
#include "document/random_edits.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::document {
namespace {

using testing::DeepDifference;
using testing::RandomDocument;
using testing::RandomDocumentOptions;
using testing::RandomEdits;

std::string written (const Network& network) {
    PrintState to;
    network.fprint (to, 0);
    return to.out;
}

/// What an editor has after it read a text: masters and clones found, types and marks as they are.
std::unique_ptr<Network> read_again (const std::string& text) {
    const testing::CaughtMessages messages;
    std::unique_ptr<Network> network = read_network (text);
    EXPECT_EQ (messages.joined (), "") << text;
    if (network) network->find_masters ();
    return network;
}

/// All objects of a document, nested ones too.
void list_objects (const Network& network, std::vector<const GraphBase*>& all) {
    for (const auto& c : network.comps ()) all.push_back (c.get ());
    for (const auto& n : network.nodes ()) {
        all.push_back (n.get ());
        for (const auto& a : n->arcs ()) all.push_back (a.get ());
        if (const Network* const inner = n->nested ()) list_objects (*inner, all);
    }
}

/// Settles a network and holds it against a reader's; says where they differ.
std::string settle_difference (Network& network) {
    PrintState to;
    network.fprint (to, 0);
    const auto read = read_again (to.out);
    if (!read) return "nothing could be read";
    std::vector<const GraphBase*> before;
    list_objects (network, before);
    network.settle ();
    network.adopt_numbering (to.numbering);
    std::vector<const GraphBase*> after;
    list_objects (network, after);
    std::sort (before.begin (), before.end ());
    std::sort (after.begin (), after.end ());
    if (before != after) return "objects are others now";
    const std::string found = DeepDifference (true).of (network, *read);
    if (!found.empty ()) return found;
    const std::string settled = written (network);
    if (settled != written (*read)) return "text";
    const auto again = read_again (settled);
    return written (*again) == settled ? "" : "text of the second reading";
}

TEST (Settle, makes_of_random_documents_what_a_reader_gets) {
    for (std::uint32_t seed = 0; seed < 400; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        ASSERT_EQ (settle_difference (*network), "") << seed;
    }
}

TEST (Settle, makes_of_edited_documents_what_a_reader_gets) {
    for (std::uint32_t seed = 0; seed < 150; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->layout ();
        RandomEdits edits (seed);
        std::string made;
        for (int step = 0; step < 30; ++step) {
            made = made + edits.edit (*network) + ", ";
            if (!edits.dice ().one_in (3)) continue;
            if (edits.dice ().one_in (2)) network->layout ();
            ASSERT_EQ (settle_difference (*network), "") << seed << ": " << made;
            made.clear ();
        }
    }
}

TEST (Settle, changes_nothing_when_it_is_called_again) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const auto network = RandomDocument (seed).network ();
        network->settle (); // finds the displayed name, as a first reading does
        network->settle (); // marks all nodes of that name, as the next one does
        const auto before = network->copy (nullptr);
        before->find_masters ();
        before->layout ();
        network->settle ();
        ASSERT_EQ (DeepDifference ().of (*network, *before), "") << seed;
    }
}

TEST (Settle, text_is_the_same_from_the_second_writing_on_for_any_document) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        const auto network = RandomDocument (seed).network ();
        const std::string second = written (*read_again (written (*network)));
        ASSERT_EQ (written (*read_again (second)), second) << seed;
    }
}

TEST (Settle, every_typed_letter_survives_in_every_text) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, node::protein, 3U, ""));
    Node& b = network.add_node (std::make_unique<Node> (200.0F, 0.0F, node::protein, 3U, "b"));
    Arque& arc = *a.connect (b, arc::reaction);
    for (int code = 32; code < 256; ++code) {
        if (!can_be_typed (code)) continue;
        const std::string letters{static_cast<char> (code), 'x', static_cast<char> (code)};
        a.set_label (letters);
        a.set_residu (letters);
        arc.set_label (letters);
        arc.set_residu (letters);
        arc.take_stoech_src (std::make_unique<Line> (letters, 67, 0));
        arc.take_stoech_dest (std::make_unique<Line> (letters, 67, 0));
        arc.label_line ()->set_script (0, true, std::make_unique<Line> (letters, 66, 0));
        arc.label_line ()->set_script (1, false, std::make_unique<Line> (letters, 66, 0));
        const std::string text = written (network);
        network.settle ();
        EXPECT_EQ (written (network), text) << code;
        EXPECT_EQ (a.label_line ()->chars_only (), letters);
        EXPECT_EQ (arc.label_line ()->sub (1)->chars_only (), letters);
        EXPECT_EQ (settle_difference (network), "") << code;
    }
}

TEST (Settle, coordinates_get_the_digits_that_are_written) {
    Network network;
    Node& n = network.add_node (std::make_unique<Node> (1234.5678F, 0.1F + 0.2F, 13U, 3U, "n"));
    Node& m = network.add_node (std::make_unique<Node> (5.0F, 5.0F, 13U, 3U, "m"));
    Arque& arc = *n.connect (m, arc::reaction);
    arc.set_label ("k");
    arc.label_line ()->set_offset (-1.23456789F, 100.0F / 3);
    network.settle ();
    EXPECT_EQ (n.x (), 1234.57F);
    EXPECT_EQ (arc.label ()->x (), -1.23457F);
    EXPECT_EQ (arc.label ()->y (), 33.3333F);
    EXPECT_EQ (m.x (), 5.0F);
    EXPECT_TRUE (network.is_laid_out ());
}

TEST (Settle, arcs_stand_as_they_are_read) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (90.0F, 0.0F, 13U, 3U, "b"));
    Node& c = network.add_node (std::make_unique<Node> (0.0F, 90.0F, 13U, 3U, "c"));
    Arque* const later = b.connect (c, arc::reaction);
    Arque* const waits = a.connect (*later, arc::substrate); // on an arc of a later node
    Arque* const plain = a.connect (b, arc::reaction);
    network.settle ();
    EXPECT_EQ (a.arcs ()[0].get (), plain);
    EXPECT_EQ (a.arcs ()[1].get (), waits);
}

TEST (Settle, end_marks_and_letters_without_a_style_take_what_runs) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
    Node& b = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U));
    a.take_label (std::make_unique<Line> ("A", 74, 4));
    b.take_label (std::make_unique<Line> ("", 99, 9));
    b.label_line ()->insert_before (0, StdChar ('x', no_font, no_color));
    network.settle ();
    EXPECT_EQ (b.label_line ()->chars ()[0].font, 74U);
    EXPECT_EQ (b.label_line ()->chars ()[0].color, 4U);
    EXPECT_EQ (b.label_line ()->chars ()[1].font, 74U);
    EXPECT_EQ (b.label_line ()->font (), 74U);
}

TEST (Settle, fields_that_do_not_read_back_go_and_lines_that_do_come) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "b"));
    Arque& arc = *a.connect (b, arc::reaction);
    arc.set_label ("");
    arc.set_residu ("");
    arc.take_stoech_dest (std::make_unique<Line> ("2", 74, 72));
    a.set_user_data ("");
    b.set_user_data ("%5]x");
    network.settle ();
    EXPECT_EQ (arc.label (), nullptr);
    EXPECT_EQ (arc.residu (), nullptr);
    ASSERT_NE (arc.stoech_src (), nullptr);
    EXPECT_TRUE (arc.stoech_src ()->is_empty ());
    EXPECT_EQ (a.user_data (), nullptr);
    EXPECT_EQ (*b.user_data (), " %5x");
}

TEST (Settle, masters_are_found_and_types_and_marks_stay) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    Node& b = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    a.set_calyx_display (true);
    network.settle ();
    EXPECT_EQ (b.master (), &a);
    EXPECT_EQ (a.type (), 13U); // no shared bit
    EXPECT_FALSE (b.calyx_display ());
}

TEST (Settle, all_nodes_of_the_displayed_name_are_marked) {
    Network network;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    Node& b = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "ATP"));
    Node& c = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "b"));
    EXPECT_TRUE (network.mark_multiple_conc (a));
    EXPECT_FALSE (network.mark_multiple_conc (a));
    EXPECT_FALSE (b.multi_conc ());
    network.settle ();
    EXPECT_TRUE (b.multi_conc ());
    EXPECT_FALSE (c.multi_conc ());
    EXPECT_EQ (network.multi_name (), "ATP");
    network.clear_multi_conc ();
    network.set_multi_name ("");
    network.settle ();
    EXPECT_EQ (network.multi_name (), "");
}

TEST (Settle, arcs_that_no_text_can_hold_go) {
    Network network;
    Network other;
    Node& a = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "a"));
    Node& b = network.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "b"));
    Node& away = other.add_node (std::make_unique<Node> (0.0F, 0.0F, 13U, 3U, "c"));
    Arque* const leaves = a.connect (away, arc::reaction);
    b.connect (*leaves, arc::catalysis);
    Arque* const stays = a.connect (b, arc::reaction);
    network.settle ();
    EXPECT_EQ (network.all_arcs (), std::vector<Arque*>{stays});
}

} // namespace
} // namespace ostrand::document
