// Writing changes nothing: whatever form a network is written in, every field of every object stays
// as it was, numbers included. Questions change nothing either.
#include "document/deep_difference.h"
#include "document/hit_test.h"
#include "document/markup.h"
#include "document/paint_style.h"
#include "files/document_io.h"
#include "files/model_gaps.h"
#include "files/model_write.h"
#include "files/native.h"
#include "files/sbml_write.h"
#include "files/xml.h"
#include "support/random_document.h"
#include "support/recording_device.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <functional>

namespace ostrand::files {
namespace {

using document::GraphBase;
using document::Network;
using document::Node;
using document::PrintState;
using testing::DeepDifference;
using testing::RandomDocument;

/// Each object with its number and its marks; the order of search hits; what waits for a layout.
std::string marks_of (const Network& network) {
    std::string told = network.is_laid_out () ? "laid out " : "waits ";
    told += network.multi_name () + " " + std::to_string (network.find_index ());
    for (const Node* const hit : network.find_hits ()) {
        told += " " + std::to_string (network.place_of (*hit));
    }
    const auto object = [&told] (const GraphBase& g) {
        told += "\n" + std::to_string (g.id ()) + (g.selected ? " selected" : "");
        for (const document::Char* const text : g.texts ()) {
            if (text == nullptr) continue;
            told += text->selected ? " selected" : " -";
            if (text->kind () != document::CharKind::line) continue;
            const auto& line = static_cast<const document::Line&> (*text);
            told += std::to_string (line.cursor) + " " + std::to_string (line.sel_start) + " " +
                    std::to_string (line.sel_end);
            for (const document::StdChar& c : line.chars ()) told += c.selected ? "s" : ".";
        }
    };
    const std::function<void (const Network&)> walk = [&] (const Network& inner) {
        for (const auto& c : inner.comps ()) object (*c);
        for (const auto& n : inner.nodes ()) {
            object (*n);
            told += " " + std::to_string (n->highlight);
            for (const auto& a : n->arcs ()) object (*a);
            if (n->nested () != nullptr) walk (*n->nested ());
        }
    };
    walk (network);
    return told;
}

/// A random document with ids, a selection, search hits and shared species, as an editor has one.
std::unique_ptr<Network> live_document (std::uint32_t seed) {
    auto network = RandomDocument (seed).network ();
    testing::Dice dice (seed);
    network->update_shared_nodes ();
    PrintState to;
    network->fprint (to, 0);
    network->adopt_numbering (to.numbering);
    // Other numbers than a writer would give now, and objects without one.
    if (network->nb_nodes () > 2) network->nodes ()[1]->destroy ();
    network->add_node (std::make_unique<Node> (9.0F, 9.0F, document::node::molecule, 3U, "new"));
    network->find_nodes (document::Line ("A", 67, 0));
    for (const auto& n : network->nodes ()) {
        n->selected = dice.one_in (2);
        if (document::Line* const line = n->label_line ()) {
            line->cursor = dice.below (line->count ());
            if (dice.one_in (2)) line->select_all ();
        }
    }
    network->layout ();
    if (dice.one_in (3)) network->nodes ()[0]->set_position (77, 77); // it waits for a layout
    return network;
}

/// Runs `use` on live documents; says which field it changed.
void expect_no_change (const std::function<void (const Network&)>& use) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        const auto network = live_document (seed);
        const std::string marks = marks_of (*network);
        const std::string text = write_native (*network);
        const auto copy = network->copy (nullptr);
        copy->find_masters ();
        network->find_masters ();
        {
            const testing::CaughtMessages messages;
            use (*network);
        }
        ASSERT_EQ (marks_of (*network), marks) << seed;
        ASSERT_EQ (write_native (*network), text) << seed;
        network->layout ();
        copy->layout ();
        ASSERT_EQ (DeepDifference ().of (*network, *copy), "") << seed;
    }
}

std::vector<Node*> every_second (const Network& network) {
    std::vector<Node*> chosen;
    for (std::size_t i = 0; i < network.nodes ().size (); i += 2) {
        chosen.push_back (network.nodes ()[i].get ());
    }
    return chosen;
}

TEST (Writing, native_text_changes_nothing) {
    expect_no_change ([] (const Network& network) {
        document::Numbering numbering;
        write_native (network, numbering);
        PrintState to;
        network.sprint (to, 7, 8);
        network.fprint (to, 3);
    });
}

TEST (Writing, the_text_of_a_selection_changes_nothing) {
    expect_no_change ([] (const Network& network) {
        PrintState to;
        network.selection_sprint (to, every_second (network));
    });
}

TEST (Writing, xml_changes_nothing) {
    expect_no_change ([] (const Network& network) {
        PrintState to;
        write_xml_block (network, to, 2);
    });
}

TEST (Writing, sbml_changes_nothing) {
    expect_no_change ([] (const Network& network) { write_sbml (network, "model"); });
}

TEST (Writing, model_text_changes_nothing) {
    expect_no_change ([] (const Network& network) {
        write_model (network, 10, "ATP");
        model_gaps (network);
    });
}

TEST (Writing, a_picture_changes_nothing) {
    expect_no_change ([] (const Network& network) {
        testing::RecordingDevice device;
        document::PaintStyle style;
        style.stoichiometry = true;
        network.paint (device, style, 3, 4);
    });
}

TEST (Writing, questions_change_nothing) {
    expect_no_change ([] (const Network& network) {
        auto& asked = const_cast<Network&> (network); // hits may be changed by who asks
        network.get_width ();
        network.get_height ();
        for (int i = 0; i < 40; ++i) {
            asked.find_at (static_cast<float> (i * 37 % 900), static_cast<float> (i * 53 % 700),
                           {});
            network.find_by_id (i);
        }
        for (const auto& c : network.comps ()) {
            c->get_width ();
            c->get_height ();
            c->extent ();
        }
        for (const auto& n : network.nodes ()) {
            n->extent_with_arcs ();
            n->is_reactant ();
            n->is_on_many_planes ();
        }
        network.all_arcs ();
    });
}

TEST (Writing, the_asked_width_of_a_compartment_is_not_stored) {
    Network network;
    document::Compart& c = network.add_compart (document::shape::rectangle, 0, 0, 30, 30);
    c.set_label ("a name that is wider than that");
    EXPECT_GT (c.get_width (), 30);
    EXPECT_EQ (c.width (), 30);
    network.layout ();
    EXPECT_EQ (c.width (), c.get_width ());
}

TEST (Writing, a_copy_of_one_node_leaves_the_numbers_of_all) {
    const auto network = read_native ("[N3 0 2 8 8[S1 0 9 9 0 3 13{a}-][S2 0 50 9 0 3 13{b}-]"
                                      "[S3 0 90 9 0 3 13{c}-]]");
    ASSERT_TRUE (network);
    Node* const last = network->nodes ()[2].get ();
    PrintState to;
    network->selection_sprint (to, {last});
    EXPECT_EQ (last->id (), 3);
    EXPECT_EQ (network->find_by_id (3), last);
    EXPECT_EQ (network->find_by_id (1), network->nodes ()[0].get ());
}

TEST (Writing, a_saved_document_stays_as_it_is) {
    for (const char* const suffix : {".net", ".xml", ".ssa"}) {
        const testing::TemporaryFolder folder;
        Document document;
        document.network = live_document (7);
        const std::string marks = marks_of (*document.network);
        std::string error;
        {
            const testing::CaughtMessages messages;
            EXPECT_TRUE (save_document (
                document, (folder / ("saved" + std::string (suffix))).string (), error))
                << error;
        }
        EXPECT_EQ (marks_of (*document.network), marks) << suffix;
    }
}

} // namespace
} // namespace ostrand::files
