// Models of other tools from the file to the drawing, with the figures that a drawing must keep.
#include "files/document_io.h"
#include "files/native.h"
#include "support/support.h"
#include "tidy/measures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

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
        std::printf ("%-20s use %4.1f %% sides %.2f texts on nodes %d of %d\n",
                     path.stem ().c_str (), 100 * m.page_use, m.sides, m.texts_on, m.texts);
    }
    ASSERT_FALSE (use.empty ());
    std::sort (use.begin (), use.end ());
    std::printf ("median use %.1f %%, sides at most %.2f, texts on nodes %d of %d\n",
                 100 * use[use.size () / 2], sides, texts_on, texts);
    EXPECT_GE (use[use.size () / 2], 0.21);
    EXPECT_LE (texts_on, texts / 8);
}

} // namespace
} // namespace ostrand::files
