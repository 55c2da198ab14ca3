// The worked examples do what their page says.
#include "support/result_amounts.h"
#include "support/support.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::tool {
namespace {

using testing::final_amounts;
using ::testing::HasSubstr;
using testing::run_program;
namespace fs = std::filesystem;

std::string page () { return testing::source_file ("examples/README.md"); }

/// A copy of the examples, where a user works with them.
struct examples : ::testing::Test {
    examples () {
        for (const auto& entry : fs::directory_iterator (testing::source_path ("examples")))
            if (entry.is_regular_file ())
                fs::copy_file (entry, folder / entry.path ().filename ().string ());
    }
    testing::ProgramResult run (std::vector<std::string> words) const {
        testing::ProgramResult result = run_program (std::move (words), folder.path ());
        EXPECT_EQ (result.status, 0) << result.error;
        return result;
    }
    /// What the deterministic engine ends with, in uM.
    std::vector<std::map<std::string, double>> simulated (const std::string& model) const {
        run ({"ostrand", "-a", model, "-d", "-o", "r.gz"});
        return final_amounts (folder / "r.gz");
    }
    testing::TemporaryFolder folder;
};

TEST_F (examples, each_is_told_on_the_page_and_opens) {
    for (const std::string& name : folder.names ()) {
        if (name == "README.md") continue;
        const std::string stem = fs::path (name).stem ().string ();
        EXPECT_THAT (page (), HasSubstr (stem)) << name;
        run ({"ostrand-tool", "convert", name, "picture.svg"});
    }
}

TEST_F (examples, every_chapter_of_the_manual_has_one) {
    for (const char* const chapter :
         {"Tutorial", "The drawing", "The tool bar", "Files", "Simulation", "The curve viewer",
          "Logic gates", "Formulas", "Menubar commands"})
        EXPECT_THAT (page (), HasSubstr (std::string ("\n## ") + chapter + "\n"));
}

TEST_F (examples, a_pathway_of_another_program_is_arranged_and_simulated) {
    const auto check = run ({"ostrand-tool", "check", "three-steps-l3.xml"});
    EXPECT_THAT (check.out, HasSubstr ("reactions: 3"));
    run ({"ostrand-tool", "convert", "three-steps-l3.xml", "three.ssa", "--duration", "100"});
    const auto amounts = simulated ("three.ssa");
    ASSERT_EQ (amounts.size (), 1U);
    EXPECT_NEAR (amounts[0].at ("acid\\ (medium)"), 454, 0.5);
}

TEST_F (examples, doses_of_an_inhibitor_halve_the_product_where_the_page_says) {
    const auto amounts = simulated ("inhibitor-doses.ssa");
    ASSERT_EQ (amounts.size (), 7U);
    EXPECT_NEAR (amounts[0].at ("nitroaniline"), 47, 0.5);
    EXPECT_NEAR (amounts[3].at ("nitroaniline"), 24, 0.5);
    EXPECT_NEAR (amounts[6].at ("nitroaniline"), 5, 0.5);
}

TEST_F (examples, of_two_substrates_the_scarcer_one_bounds_the_product) {
    const auto amounts = simulated ("two-substrate-sweep.ssa");
    ASSERT_EQ (amounts.size (), 24U);
    std::size_t i = 0;
    for (const double atp : {250, 500, 1000, 2000})
        for (const double glucose : {250, 500, 750, 1000, 1250, 1500})
            EXPECT_NEAR (amounts[i++].at ("G6P"), std::min (atp, glucose), 1);
}

TEST_F (examples, glucose_beyond_2_mM_stays_behind) {
    const auto amounts = simulated ("glucose-sweep.ssa");
    ASSERT_EQ (amounts.size (), 5U);
    EXPECT_NEAR (amounts[1].at ("fructose-1,6-BP"), 2000, 10);
    for (const std::size_t more : {2U, 3U, 4U}) {
        EXPECT_NEAR (amounts[more].at ("fructose-1,6-BP"), 1000, 60);
        EXPECT_NEAR (amounts[more].at ("ATP"), 0, 1);
    }
}

TEST_F (examples, gates_and_formulas_are_those_of_the_page) {
    EXPECT_THAT (run ({"ostrand-tool", "gates", "glycolysis-upper.xml"}).out,
                 HasSubstr (": 210 gates"));
    run ({"ostrand-tool", "gates", "pentose-salvage.xml"});
    EXPECT_EQ (run ({"ostrand-tool", "formula", "glycolysis-upper", "ATP . G6P", "GAP"}).out,
               "1 implementation found\nALD PFK PGI\n");
    EXPECT_THAT (run ({"ostrand-tool", "formula", "pentose-salvage", "E4P", "Ru5P"}).out,
                 HasSubstr ("2 implementations found"));
    const auto truth = simulated ("gap-logic.ssa");
    ASSERT_EQ (truth.size (), 4U);
    for (std::size_t row = 0; row < 3; ++row) EXPECT_EQ (truth[row].at ("GAP"), 0);
    EXPECT_GT (truth[3].at ("GAP"), 100);
}

} // namespace
} // namespace ostrand::tool
