// The companion's commands for formulas.
#include "formula/made_up.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

using testing::run_program;

const char* const two_gates =
    "metabolism;m.xml\n"
    "E/S;2;a;b;1;out;OR;ENZ;1;e1;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r9;0;RANDOM_SEQ;SUBS;2;a;1;"
    "b;1;PROD;1;out;1;ENZY;1;e1;INHI;0;REACEND;\n"
    "E/S;2;a;b;1;out;OR;ENZ;1;e1;ELNEC;0;ELABS;0;REACTIONS;2;REACBEGIN;r2;0;RANDOM_SEQ;SUBS;1;a;1;"
    "PROD;1;out;1;ENZY;1;e1;INHI;0;REACEND;REACBEGIN;r1;0;RANDOM_SEQ;SUBS;1;b;1;PROD;1;out;1;"
    "ENZY;1;e1;INHI;0;REACEND;\n";

class FormulaCommand : public ::testing::Test {
  protected:
    void SetUp () override {
        folder_.write ("net_gates.csv", two_gates);
        base_ = (folder_ / "net").string ();
    }
    testing::ProgramResult run (std::vector<std::string> words) const {
        words.insert (words.begin (), {"ostrand-tool", "formula"});
        return run_program (words);
    }
    testing::TemporaryFolder folder_;
    std::string base_;
};

TEST_F (FormulaCommand, lists_the_sorted_lines_behind_the_message) {
    const auto result = run ({base_, "a + b", "'out'"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "2 implementations found\nr1 r2\nr9\n");
    EXPECT_EQ (result.error, "");
}

TEST_F (FormulaCommand, tells_when_none_is_found) {
    const auto result = run ({base_, "a . b", "out"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "No implementation found for out = a . b\n");
}

TEST_F (FormulaCommand, refuses_an_empty_formula) {
    const auto result = run ({base_, "", "out"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.out, "");
    EXPECT_EQ (result.error, "A boolean formula must be entered.\n");
}

TEST_F (FormulaCommand, a_formula_beyond_the_bounds_fails_without_a_claim) {
    const std::string deep = std::string (1000, '!') + "a";
    for (const auto& result :
         {run ({base_, deep, "out"}), run ({base_, deep, "out", "--text", "0"}),
          run_program ({"ostrand-tool", "variants", deep})}) {
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (result.out, "");
        EXPECT_EQ (result.error, "The formula is nested deeper than 1000 operators.\n");
    }
}

TEST_F (FormulaCommand, fails_without_a_gate_file) {
    const auto result = run ({base_ + "x", "a + b", "out"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.out, "CSVReader: Impossible d'ouvrir le fichier en lecture.\n"
                           "No implementation found for out = a + b\n");
    EXPECT_EQ (result.error, "ostrand-tool formula: cannot read '" + base_ + "x_gates.csv'\n");
}

TEST_F (FormulaCommand, prints_the_text_of_a_line) {
    const auto first = run ({base_, "a + b", "out", "--text", "0"});
    EXPECT_EQ (first.status, 0);
    EXPECT_TRUE (first.out.starts_with ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    EXPECT_NE (first.out.find ("<lattrix:thresholds s1=\"25\" s2=\"500\" />"), std::string::npos);
    EXPECT_LT (first.out.find ("reaction id=\"r1\""), first.out.find ("reaction id=\"r2\""));
    const auto second = run ({base_, "a + b", "out", "--text", "1"});
    EXPECT_NE (second.out.find ("reaction id=\"r9\""), std::string::npos);
    const auto third = run ({base_, "a + b", "out", "--text", "2"});
    EXPECT_EQ (third.status, 1);
    EXPECT_EQ (third.out, "");
    EXPECT_EQ (third.error, "ostrand-tool formula: no implementation 2, the last is 1\n");
    const auto none = run ({base_, "a . b", "out", "--text", "0"});
    EXPECT_EQ (none.status, 1);
    EXPECT_EQ (none.error, "No implementation found for out = a . b\n");
}

TEST_F (FormulaCommand, writes_all_texts) {
    const auto result = run ({base_, "a + b", "out", "--write", (folder_ / "nets").string ()});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "2 implementations found\nr1 r2\nr9\n");
    const auto second = run ({base_, "a + b", "out", "--text", "1"});
    EXPECT_EQ (testing::file_text (folder_ / "nets/reseau_1.xml"), second.out);
    EXPECT_FALSE (testing::file_text (folder_ / "nets/reseau_0.xml").empty ());
    const auto failed = run ({base_, "a + b", "out", "--write", base_ + "_gates.csv"});
    EXPECT_EQ (failed.status, 1);
    EXPECT_NE (failed.error, "");
}

TEST_F (FormulaCommand, limits_stop_the_search_and_say_so) {
    const auto limited = run ({base_, "a + b", "out", "--limit", "1"});
    EXPECT_EQ (limited.status, 0);
    EXPECT_TRUE (limited.out.starts_with ("1 implementation found\nr"));
    EXPECT_EQ (limited.error,
               "Search stopped at the limit of 1 implementation, others may exist\n");
    // YES gates between all of many species: walks without number.
    std::string clique;
    for (char from = 'a'; from <= 'p'; ++from) {
        for (char to = 'a'; to <= 'p'; ++to) {
            if (from == to) continue;
            clique += std::string ("E/S;1;") + from + ";1;" + to +
                      ";YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r" + from + to +
                      ";0;;SUBS;1;" + from + ";;PROD;1;" + to + ";;ENZY;0;INHI;0;REACEND;\n";
        }
    }
    folder_.write ("clique_gates.csv", clique);
    const auto endless = run ({(folder_ / "clique").string (), "a", "p", "--time", "1"});
    EXPECT_EQ (endless.status, 0);
    EXPECT_EQ (endless.error, "Search stopped after 1 s, others may exist\n");
    EXPECT_EQ (run ({base_, "a", "out", "--limit", "0"}).status, 2);
    EXPECT_EQ (run ({base_, "a", "out", "--time", "x"}).status, 2);
    EXPECT_EQ (run ({base_, "a", "out", "--text", "-1"}).status, 2);
    EXPECT_EQ (run ({base_, "a"}).status, 2);
}

TEST_F (FormulaCommand, finds_the_worked_example_of_the_manual) {
    folder_.write (
        "demo_gates.csv",
        "metabolism;demo.xml\n"
        "E/S;2;glc;atp;1;g6p;AND;ENZ;1;hk;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r1;0;RANDOM_SEQ;"
        "SUBS;2;glc;4.1 mM;atp;1.5 mM;PROD;2;g6p;210;adp;210;ENZY;1;hk;INHI;0;REACEND;\n"
        "E/S;2;g6p;cit;1;pyr;ANDNOT;ENZ;1;pfk;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r2;0;"
        "RANDOM_SEQ;SUBS;1;g6p;0.7 mM;PROD;1;pyr;95;ENZY;1;pfk;INHI;1;cit;REACEND;\n"
        "E/S;1;pyr;1;lac;YES;ENZ;1;ldh;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;r3;1;RANDOM_SEQ;SUBS;"
        "1;pyr;2.2 mM;PROD;1;lac;310;ENZY;1;ldh;INHI;0;REACEND;\n");
    const auto result = run ({(folder_ / "demo").string (), "(glc . atp) . !cit", "lac"});
    EXPECT_EQ (result.out, "1 implementation found\nr1 r2 r3\n");
}

TEST_F (FormulaCommand, gives_the_same_bytes_every_time) {
    folder_.write (
        "big_gates.csv",
        made_up::gate_file (9, {.species = 40, .reactions = 300, .gates = 1200, .yes_percent = 3}));
    const std::string big = (folder_ / "big").string ();
    const auto first = run ({big, "m1 + m2", "m3"});
    EXPECT_EQ (first.status, 0);
    EXPECT_EQ (run ({big, "m1 + m2", "m3"}).out, first.out);
    EXPECT_NE (first.out.find (" found\n"), std::string::npos);
}

TEST (variants_command, prints_the_sorted_texts) {
    const auto result = run_program ({"ostrand-tool", "variants", "a . !b"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "!( !a + b )\n!( a !+! b )\n( !b . a )\n( a !.! b )\n");
    EXPECT_EQ (result.error, "");
    const auto wide = run_program ({"ostrand-tool", "variants", "a.b.c.d.e.f.g.h.i"});
    EXPECT_EQ (wide.status, 0);
    EXPECT_EQ (wide.out, "!( !a + !b + !c + !d + !e + !f + !g + !h + !i )\n"
                         "( a . b . c . d . e . f . g . h . i )\n");
    EXPECT_EQ (wide.error, "The formula has more variants than there is memory for, here are 2 of "
                           "them\n");
    const auto empty = run_program ({"ostrand-tool", "variants", ""});
    EXPECT_EQ (empty.status, 1);
    EXPECT_EQ (empty.error, "A boolean formula must be entered.\n");
}

} // namespace
} // namespace ostrand::formula
