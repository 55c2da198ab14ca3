// Standard SBML: valid by the library's own checks, and the same network when it is read back.
#include "sbml_out/standard_write.h"

#include "document/markup.h"
#include "files/document_io.h"
#include "files/native.h"
#include "sbml_in/read_sbml.h"
#include "support/random_document.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include <sbml/SBMLTypes.h>

namespace ostrand::sbml_out {
namespace {

using document::Network;
using ostrand::testing::CaughtMessages;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// What the library has against a text, with all its checks.
std::vector<std::string> faults (const std::string& text) {
    const std::unique_ptr<::SBMLDocument> document (::readSBMLFromString (text.c_str ()));
    document->checkConsistency ();
    std::vector<std::string> all;
    for (unsigned i = 0; i < document->getNumErrors () && i < 5; ++i) {
        const ::SBMLError& e = *document->getError (i);
        all.push_back (std::to_string (e.getLine ()) + ": " + e.getMessage ());
    }
    return all;
}

std::unique_ptr<Network> network_of (std::string_view native) {
    auto network = files::read_native (native);
    network->update_shared_nodes ();
    network->layout ();
    return network;
}

/// Read back with its own drawing.
std::string read_back (const std::string& text) {
    files::Document document;
    EXPECT_EQ (files::open_text (text, "m.xml", {}, document), files::LoadStatus::loaded);
    return document.network ? files::write_native (*document.network) : std::string ();
}

TEST (StandardSbml, random_networks_are_valid_and_come_back_the_same) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const auto random =
            ostrand::testing::RandomDocument (seed, {.nesting = 1, .settled = true}).network ();
        const CaughtMessages messages; // of pictures that are not there
        const auto network = network_of (files::write_native (*random));
        const std::string text = write_standard (*network, "random");
        EXPECT_THAT (faults (text), IsEmpty ()) << seed;
        EXPECT_TRUE (read_back (text) == files::write_native (*network)) << seed;
    }
}

const char* const kinetic =
    "# Lattrix: 1.2\n[N8 1 2 8 8[C1 8 0 0 600 600 4{cell}{80:40+0+0+0}]"
    "[S2 0 100 100 0 3 13{S}-10 uM][S3 0 300 100 0 3 13{P}-1 mM][S4 0 200 40 0 247 9{E}-0.5 uM]"
    "[S5 0 200 200 0 3 13{I}-][S6 0 100 300 0 3 13{A}-2 uM][S7 0 300 300 0 #bf91bf 13{B}-]"
    "[S8 0 500 300 0 3 13--][S9 0 500 100 0 3 13{\"\\<&>\\_x}-]"
    "[A10 0 272 2 2 3{10 uM}{5}][A11 0 32 2 4 10{}{}][A12 0 48 2 5 10{4 uM}{}]"
    "[A13 0 273 2 6 7{0.1 /uM/s}{3 /s}{2}{}][A14 0 272 2 8 9{2 uM/s}{}]"
    "[A15 0 272 2 2 9{7 uM}{3 uM/s}]]\n";

TEST (StandardSbml, kinetics_are_those_of_the_simulator) {
    const auto network = network_of (kinetic);
    const std::string text = write_standard (*network, "my model");
    EXPECT_THAT (faults (text), IsEmpty ());
    const std::unique_ptr<::SBMLDocument> document (::readSBMLFromString (text.c_str ()));
    const ::Model& model = *document->getModel ();
    EXPECT_EQ (model.getId (), "my_model");
    const auto law = [&model] (unsigned i) {
        char* formula =
            ::SBML_formulaToL3String (model.getReaction (i)->getKineticLaw ()->getMath ());
        const std::string out = formula;
        std::free (formula);
        return out;
    };
    ASSERT_EQ (model.getNumReactions (), 4U);
    EXPECT_EQ (law (0), "c1 * (kcat * s3 * s1 / (Km1 + Km1 * s4 / Ki1 + s1))");
    EXPECT_EQ (law (1), "c1 * (Vmax * s1 / (Km1 + s1))");
    EXPECT_EQ (law (2), "c1 * (k * s5^2 - k_reverse * s6)");
    EXPECT_EQ (law (3), "c1 * k");
    EXPECT_EQ (model.getSpecies ("s2")->getInitialConcentration (), 1000);
    EXPECT_TRUE (model.getSpecies ("s6")->getBoundaryCondition ());
    EXPECT_EQ (model.getSpecies ("s7")->getName (), "\"<&>_x");
    EXPECT_EQ (model.getNumCompartments (), 1U);
}

TEST (StandardSbml, without_our_drawing_the_equations_and_numbers_come_back) {
    const auto network = network_of (kinetic);
    const std::string text = write_standard (*network, "m");
    sbml_in::Reading reading = sbml_in::read_sbml (text, false);
    ASSERT_NE (reading.network, nullptr);
    EXPECT_THAT (reading.notes, IsEmpty ());
    const std::string again = write_standard (*reading.network, "m");
    const auto equations = [] (const std::string& whole) {
        const std::size_t from = whole.find ("<listOfReactions>");
        std::string list = whole.substr (from, whole.find ("</listOfReactions>") - from);
        // The only compartment of a model is no box in its drawing.
        const std::string box = "<ci> c1 </ci>";
        for (std::size_t at = 0; (at = list.find (box, at)) != std::string::npos;) {
            list.replace (at, box.size (), "<ci> default_compartment </ci>");
        }
        return list;
    };
    EXPECT_EQ (equations (again), equations (text));
}

TEST (StandardSbml, the_layout_package_holds_the_places) {
    const auto network = network_of (kinetic);
    std::string text = write_standard (*network, "m");
    const std::size_t from = text.find ("<annotation>");
    text.erase (from, text.find ("</annotation>") + 13 - from);
    const sbml_in::Reading reading = sbml_in::read_sbml (text);
    ASSERT_TRUE (reading.has_places);
    for (const auto& n : network->nodes ()) {
        if (n->label () == nullptr) continue;
        bool found = false;
        for (const auto& other : reading.network->nodes ()) {
            if (other->label () == nullptr || other->name () != n->name ()) continue;
            found = std::abs (other->x () - n->x ()) < 1e-3F &&
                    std::abs (other->y () - n->y ()) < 1e-3F;
        }
        EXPECT_TRUE (found) << n->name ();
    }
}

TEST (StandardSbml, an_empty_network_is_valid) {
    Network empty;
    empty.layout ();
    EXPECT_THAT (faults (write_standard (empty, "")), IsEmpty ());
}

TEST (StandardSbml, the_command_writes_it_and_refuses_other_names) {
    const ostrand::testing::TemporaryFolder folder;
    folder.write ("m.net", kinetic);
    auto result = ostrand::testing::run_program (
        {"ostrand-tool", "convert", "m.net", "m.xml", "--standard"}, folder.path ());
    EXPECT_EQ (result.status, 0) << result.error;
    EXPECT_THAT (ostrand::testing::file_text (folder / "m.xml"), HasSubstr ("level3/version2"));
    result = ostrand::testing::run_program ({"ostrand-tool", "convert", "m.xml", "back.net"},
                                            folder.path ());
    EXPECT_EQ (result.error, "");
    EXPECT_EQ (ostrand::testing::file_text (folder / "back.net"),
               files::write_native (*network_of (kinetic)));
    result = ostrand::testing::run_program (
        {"ostrand-tool", "convert", "m.net", "m.svg", "--standard"}, folder.path ());
    EXPECT_EQ (result.status, 2);
    EXPECT_THAT (result.error, HasSubstr ("--standard writes .xml, not 'm.svg'"));
}

/// Every real model (with sanitizers every third): it opens, and its export is valid and comes back.
TEST (RealModels, exports_are_valid_and_come_back_the_same) {
    const auto folder = ostrand::testing::models_folder ();
    if (!folder) GTEST_SKIP () << "the folder of models is not there";
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator (*folder)) {
        if (entry.path ().extension () == ".xml") paths.push_back (entry.path ());
    }
    EXPECT_GE (paths.size (), 64U);
    for (const auto& path : ostrand::testing::those_in_time (std::move (paths))) {
        const CaughtMessages messages;
        files::Document document;
        ASSERT_EQ (
            files::open_document (path.string (), {.arranging = files::Arranging::never}, document),
            files::LoadStatus::loaded)
            << path;
        const std::string text = write_standard (*document.network, "m");
        EXPECT_THAT (faults (text), IsEmpty ()) << path;
        const auto network = network_of (files::write_native (*document.network));
        EXPECT_TRUE (read_back (write_standard (*network, "m")) == files::write_native (*network))
            << path;
    }
}

} // namespace
} // namespace ostrand::sbml_out
