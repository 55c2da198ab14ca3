// From a gate file to a drawing: what the formula search writes opens with its roles in colour.
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::tool {
namespace {

using testing::run_program;

constexpr const char* gates =
    "metabolism;demo.xml\n"
    "E/S;2;glc;atp;1;g6p;AND;ENZ;1;hk;ELNEC;1;mg;ELABS;0;REACTIONS;1;REACBEGIN;r1;0;RANDOM_SEQ;"
    "SUBS;3;glc;4.1 mM;atp;1.5 mM;mg;1 mM;PROD;2;g6p;210;adp;210;ENZY;1;hk;INHI;0;REACEND;\n"
    "E/S;2;g6p;cit;1;pyr;ANDNOT;ENZ;1;pfk;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r2;0;RANDOM_SEQ;"
    "SUBS;1;g6p;0.7 mM;PROD;1;pyr;95;ENZY;1;pfk;INHI;1;cit;REACEND;\n";

TEST (formula_to_drawing, inputs_outputs_and_excess_are_coloured_by_role) {
    const testing::TemporaryFolder folder;
    folder.write ("demo_gates.csv", gates);
    const std::vector<std::string> search{"ostrand-tool", "formula", "demo", "(glc . atp) . !cit",
                                          "pyr"};
    const auto list = run_program (search, folder.path ());
    EXPECT_EQ (list.status, 0);
    EXPECT_EQ (list.out, "1 implementation found\nr1 r2\n");

    std::vector<std::string> with_text = search;
    with_text.insert (with_text.end (), {"--text", "0"});
    const auto text = run_program (with_text, folder.path ());
    folder.write ("network.xml", text.out);
    const auto converted =
        run_program ({"ostrand-tool", "convert", "network.xml", "network.net"}, folder.path ());
    EXPECT_EQ (converted.status, 0) << converted.error;
    const std::string drawing = testing::file_text (folder / "network.net");
    for (const char* input : {"glc", "atp", "cit"}) {
        EXPECT_THAT (drawing, ::testing::ContainsRegex (std::string ("#7fffbf [0-9]*[{]") + input));
    }
    EXPECT_THAT (drawing, ::testing::ContainsRegex ("#ffb67f [0-9]*[{]pyr"));
    EXPECT_THAT (drawing, ::testing::ContainsRegex ("#[0-9a-f]* [0-9]*[{]mg"));
    EXPECT_THAT (drawing, ::testing::Not (::testing::ContainsRegex ("#ffff00 [0-9]*[{]mg")));
}

} // namespace
} // namespace ostrand::tool
