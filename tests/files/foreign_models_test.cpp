// Models of other tools from the file to the drawing, with the figures that a drawing must keep.
#include "arrange/plain_crossings.h"
#include "files/document_io.h"
#include "files/native.h"
#include "support/support.h"
#include "tidy/measures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <unordered_map>

namespace ostrand::files {
namespace {

using ostrand::testing::CaughtMessages;
using ostrand::testing::NetworkMeasures;
using ::testing::HasSubstr;

const char* const foreign =
    "<?xml version=\"1.0\"?>\n<sbml xmlns=\"http://www.sbml.org/sbml/level2/version4\" level=\"2\" "
    "version=\"4\"><model id=\"m\"><listOfCompartments><compartment id=\"c\"/>"
    "</listOfCompartments><listOfSpecies><species id=\"A\" compartment=\"c\"/><species id=\"B\" "
    "compartment=\"c\"/></listOfSpecies><listOfReactions><reaction id=\"r\"><listOfReactants>"
    "<speciesReference species=\"A\"/></listOfReactants><listOfProducts><speciesReference "
    "species=\"B\" stoichiometry=\"2\"/></listOfProducts></reaction></listOfReactions></model>"
    "</sbml>\n";

TEST (ForeignFiles, content_decides_whatever_the_name) {
    const ostrand::testing::TemporaryFolder folder;
    for (const char* name : {"a.xml", "a.XML", "a.sbml", "a.txt", "a.net"}) {
        Document document;
        ASSERT_EQ (open_document (folder.write (name, foreign), {}, document), LoadStatus::loaded)
            << name;
        EXPECT_EQ (document.network->count_arcs (), 1) << name;
    }
}

TEST (ForeignFiles, what_is_not_understood_is_refused_and_the_document_stays) {
    const CaughtMessages messages;
    Document document;
    ASSERT_EQ (open_text (foreign, "m.xml", {}, document), LoadStatus::loaded);
    const document::Network* before = document.network.get ();
    std::string broken = foreign;
    broken.erase (broken.find ("</listOfReactants>"), 8);
    EXPECT_EQ (open_text (broken, "m.xml", {}, document), LoadStatus::not_readable);
    EXPECT_EQ (document.network.get (), before);
    ASSERT_EQ (messages.all.size (), 1U);
    EXPECT_THAT (messages.all[0], HasSubstr ("SBML, line 2: "));
}

TEST (ForeignFiles, without_arrangement_nodes_stand_on_a_grid) {
    Document document;
    ASSERT_EQ (open_text (foreign, "m.xml", {.arranging = Arranging::never}, document),
               LoadStatus::loaded);
    EXPECT_EQ (ostrand::testing::measure (*document.network).overlaps, 0);
}

TEST (ForeignFiles, an_arranged_document_is_the_same_every_time) {
    std::string texts[2];
    for (std::string& text : texts) {
        Document document;
        open_text (foreign, "m.xml", {.arranging = Arranging::always}, document);
        text = write_native (*document.network);
    }
    EXPECT_EQ (texts[0], texts[1]);
}

/// The drawing as straight lines between nodes and squares.
ostrand::testing::PlainDrawing plain_drawing (const document::Network& network) {
    ostrand::testing::PlainDrawing drawing;
    std::unordered_map<const document::Char*, int> number;
    for (const auto& n : network.nodes ()) {
        int box = -1;
        for (std::size_t c = 0; c < network.comps ().size (); ++c)
            if (network.comps ()[c]->contains (n->x (), n->y ())) box = static_cast<int> (c);
        number[n.get ()] = drawing.add (
            {n->x (), n->y ()}, {n->get_width (), static_cast<double> (n->get_height ())}, box);
    }
    for (document::Arque* a : network.all_arcs ()) {
        const document::Node* to = a->dest_node ();
        if (to == nullptr || !number.contains (to)) continue;
        const int square = drawing.add ({a->x () + 7.0, a->y () + 7.0}, {14, 14}, -1);
        drawing.join (number.at (a->source ()), square);
        drawing.join (square, number.at (to));
        for (const document::Arque* link : network.arcs_to (*a)) {
            const auto from = number.find (link->source ());
            if (from == number.end ()) continue;
            if (document::is_product_link (link->type ()))
                drawing.join (square, from->second);
            else
                drawing.join (from->second, square);
        }
    }
    return drawing;
}

/// Every real model with reactions (with sanitizers every third) is arranged so that all can be
/// seen.
TEST (RealModels, arranged_drawings_keep_their_figures) {
    const auto folder = ostrand::testing::models_folder ();
    if (!folder) GTEST_SKIP () << "the folder of models is not there";
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator (*folder / "biomodels")) {
        paths.push_back (entry.path ());
    }
    paths = ostrand::testing::those_in_time (std::move (paths));
    std::vector<double> use;
    double sides = 1;
    int texts = 0, texts_on = 0;
    int ours = 0, by_dot = 0, by_dot_in_boxes = 0;
    int without_boxes = 0, by_dot_without_boxes = 0; // in models without compartments' boxes
    for (const auto& path : paths) {
        const CaughtMessages messages;
        Document document;
        ASSERT_EQ (open_document (path.string (), {}, document), LoadStatus::loaded) << path;
        const NetworkMeasures m = ostrand::testing::measure (*document.network);
        EXPECT_EQ (m.overlaps, 0) << path;
        EXPECT_EQ (m.covered, 0) << path;
        EXPECT_EQ (m.off_page, 0) << path;
        EXPECT_EQ (m.strangers, 0) << path;
        if (document.network->count_arcs () == 0) continue;
        texts += m.texts;
        texts_on += m.texts_on;
        use.push_back (m.page_use);
        sides = std::max (sides, m.sides);
        EXPECT_LE (m.sides, 3) << path;
        const ostrand::testing::PlainDrawing plain = plain_drawing (*document.network);
        const int crossings = ostrand::testing::crossings (plain);
        const int dot = ostrand::testing::dot_crossings (plain);
        const int dot_in_boxes = ostrand::testing::dot_crossings (plain, true);
        ours += crossings;
        by_dot += dot;
        by_dot_in_boxes += dot_in_boxes;
        if (document.network->comps ().empty ()) {
            without_boxes += crossings;
            by_dot_without_boxes += dot;
        }
        std::printf ("%-20s %4d r use %4.1f %% sides %.2f texts on nodes %d of %d crossings %d dot "
                     "%d with boxes %d%s\n",
                     path.stem ().c_str (), m.reactions, 100 * m.page_use, m.sides, m.texts_on,
                     m.texts, crossings, dot, dot_in_boxes, crossings > dot ? " !" : "");
    }
    ASSERT_FALSE (use.empty ());
    std::sort (use.begin (), use.end ());
    std::printf (
        "median use %.1f %%, sides at most %.2f, texts on nodes %d of %d, crossings %d dot "
        "%d with boxes %d, in models without boxes %d dot %d\n",
        100 * use[use.size () / 2], sides, texts_on, texts, ours, by_dot, by_dot_in_boxes,
        without_boxes, by_dot_without_boxes);
    EXPECT_GE (use[use.size () / 2], 0.24);
    EXPECT_LE (without_boxes, by_dot_without_boxes);
    EXPECT_LE (5 * ours, by_dot_in_boxes);
    EXPECT_LE (texts_on, texts / 8);
}

} // namespace
} // namespace ostrand::files
