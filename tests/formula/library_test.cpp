// The gate library: reading, claims, filing.
#include "formula/library.h"
#include "formula/made_up.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::formula {
namespace {

using Names = std::vector<std::string>;
using Set = std::set<std::string>;

/// The first gate of a file of one line.
const LibGate& first_gate (Lib_v1& library, const std::string& line) {
    library.read (line);
    return *library.gates ()[0];
}

TEST (library, a_line_is_read_field_by_field) {
    const std::string line =
        "E/S;1;A;1;C;YES;ENZ;2;e1;e2;ELNEC;1;n;ELABS;2;x;y;REACTIONS;2;"
        "REACBEGIN;R1;1;RANDOM_SEQ;SUBS;2;A;12.3 mM;k;0.1 mM;PROD;1;B;60;ENZY;1;e1;INHI;1;i;"
        "REACEND;REACBEGIN;R2;0;;SUBS;1;B;;PROD;1;C;;ENZY;1;e2;INHI;0;REACEND;";
    Lib_v1 library;
    library.read ("metabolism;/models/m.xml\n" + line + "\n");
    const LibGate& gate = *library.gates ()[0];
    EXPECT_EQ (gate.inputs, Names{"A"});
    EXPECT_EQ (gate.output, "C");
    EXPECT_EQ (gate.type, "YES");
    EXPECT_EQ (gate.enzymes, (Names{"e1", "e2"}));
    EXPECT_EQ (gate.needed, Set{"n"});
    EXPECT_EQ (gate.absent, (Set{"x", "y"}));
    EXPECT_EQ (gate.reaction_enzymes, (Set{"e1", "e2"}));
    EXPECT_EQ (gate.text, line);
    EXPECT_EQ (gate.metabolism, "/models/m.xml");
    ASSERT_EQ (gate.reactions.size (), 2U);
    const LibReaction& first = **gate.reactions.begin ();
    EXPECT_EQ (first.id, "R1");
    EXPECT_TRUE (first.reversible);
    EXPECT_EQ (first.kinetics, "RANDOM_SEQ");
    EXPECT_EQ (first.substrates, (Names{"A", "k"}));
    EXPECT_EQ (first.products, Names{"B"});
    EXPECT_EQ (first.enzymes, Names{"e1"});
    EXPECT_EQ (first.inhibitors, Names{"i"});
    EXPECT_EQ (first.substrate_coefficients.at ("A"), "12.3 mM");
    EXPECT_EQ (first.substrate_coefficients.at ("k"), "0.1 mM");
    EXPECT_EQ (first.product_coefficients.at ("B"), "60");
    const LibReaction& second = **std::next (gate.reactions.begin ());
    EXPECT_FALSE (second.reversible);
    EXPECT_EQ (second.kinetics, "");
    EXPECT_EQ (second.substrate_coefficients.at ("B"), "");
}

TEST (library, a_two_input_gate_is_filed_in_both_orders) {
    const std::pair<const char*, const char*> types[] = {{"ANDNOT", "NOTAND"}, {"NOTAND", "ANDNOT"},
                                                         {"ORNOT", "NOTOR"},   {"NOTOR", "ORNOT"},
                                                         {"AND", "AND"},       {"OR", "OR"}};
    for (const auto& [type, swapped] : types) {
        Lib_v1 library;
        library.read (std::string ("E/S;2;A;B;1;C;") + type +
                      ";ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;");
        ASSERT_EQ (library.gates ().size (), 2U + 3U); // and a demultiplicator for each species
        const auto as_swapped = library.find_signature ({"B", "A"}, "C");
        ASSERT_EQ (as_swapped.size (), 1U);
        EXPECT_EQ (as_swapped[0]->type, swapped);
        EXPECT_EQ (as_swapped[0]->inputs, (Names{"B", "A"}));
        const auto as_read = library.find_signature ({"A", "B"}, "C");
        ASSERT_EQ (as_read.size (), 1U);
        EXPECT_EQ (as_read[0]->type, type);
        // The swapped one is filed first.
        EXPECT_EQ (library.gates ()[0].get (), as_swapped[0]);
    }
}

TEST (library, a_three_input_gate_gives_six_gates_under_six_signatures) {
    Lib_v1 library;
    library.read ("E/S;3;A;B;C;1;D;AND;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;");
    const auto gates = library.query ("D", "AND");
    EXPECT_EQ (gates.size (), 6U);
    std::set<Names> orders;
    for (const LibGate* gate : gates) {
        orders.insert (gate->inputs);
        EXPECT_EQ (library.find_signature (gate->inputs, "D"), std::vector<const LibGate*>{gate});
    }
    EXPECT_EQ (orders.size (), 6U);
}

TEST (library, a_gate_with_no_reaction_has_only_its_inputs_as_its_own) {
    Lib_v1 library;
    const LibGate& gate =
        first_gate (library, "E/S;2;A;B;1;C;OR;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;");
    EXPECT_EQ (gate.owned, (Set{"A", "B"}));
    EXPECT_TRUE (gate.shared.empty ());
}

TEST (library, queries_keep_the_order_of_filing_and_the_same_gate_twice_is_filed_twice) {
    Lib_v1 library;
    const std::string line = "E/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\n";
    library.read (line + "E/S;1;B;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\n" + line);
    Names inputs;
    for (const LibGate* gate : library.query ("C", "YES")) inputs.push_back (gate->inputs[0]);
    EXPECT_EQ (inputs, (Names{"A", "B", "A"}));
    EXPECT_TRUE (library.query ("C", "AND").empty ());
    EXPECT_TRUE (library.query ("", "YES").empty ());
}

TEST (library, every_species_has_a_demultiplicator) {
    Lib_v1 library;
    library.read ("E/S;1;A;1;C;YES;ENZ;0;ELNEC;1;n;ELABS;0;REACTIONS;0;");
    EXPECT_EQ (library.species (), (Set{"A", "C"}));
    for (const char* name : {"A", "C"}) {
        const auto gates = library.query (name, "OR");
        ASSERT_EQ (gates.size (), 1U);
        EXPECT_EQ (gates[0]->inputs, Names{name});
        EXPECT_EQ (gates[0]->text, std::string ("DEMUTIPLICATOR ") + name);
        EXPECT_EQ (gates[0]->owned, Set{name});
        EXPECT_TRUE (gates[0]->reactions.empty ());
    }
}

/// One gate with inputs A and output C over the given reaction blocks.
std::string line_of (const std::string& count, const std::string& blocks) {
    return "E/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;" + count + ";" + blocks;
}

TEST (library, what_is_only_consumed_or_only_produced_is_shared) {
    Lib_v1 library;
    const LibGate& gate = first_gate (
        library,
        line_of ("1", "REACBEGIN;R;0;;SUBS;2;A;;k;;PROD;2;C;;w;;ENZY;1;e;INHI;0;REACEND;"));
    EXPECT_EQ (gate.owned, Set{"A"});
    EXPECT_EQ (gate.shared, (Set{"k", "w"})); // not the output, not the enzyme
}

TEST (library, what_is_made_and_used_is_owned) {
    Lib_v1 library;
    const LibGate& gate =
        first_gate (library, line_of ("2", "REACBEGIN;R1;0;;SUBS;1;A;;PROD;1;b;;ENZY;1;e;INHI;0;"
                                           "REACEND;REACBEGIN;R2;0;;SUBS;1;b;;PROD;1;C;;ENZY;1;f;"
                                           "INHI;0;REACEND;"));
    EXPECT_EQ (gate.owned, (Set{"A", "b"}));
    EXPECT_TRUE (gate.shared.empty ());
}

TEST (library, reversible_species_are_owned_when_they_occur_twice_or_on_another_side) {
    Lib_v1 library;
    const LibGate& gate = first_gate (
        library, line_of ("3", "REACBEGIN;R1;1;;SUBS;2;A;;k;;PROD;1;b;;ENZY;1;e;INHI;0;"
                               "REACEND;REACBEGIN;R2;1;;SUBS;1;b;;PROD;2;C;;m;;ENZY;1;f;"
                               "INHI;0;REACEND;REACBEGIN;R3;0;;SUBS;1;m;;PROD;1;w;;"
                               "ENZY;1;g;INHI;0;REACEND;"));
    EXPECT_EQ (gate.owned, (Set{"A", "b", "m"})); // b twice; m reversible and a substrate
    EXPECT_EQ (gate.shared, (Set{"k", "w"}));
}

TEST (library, inhibitors_are_owned_and_make_the_enzymes_owned) {
    Lib_v1 library;
    const LibGate& gate = first_gate (
        library, line_of ("1", "REACBEGIN;R;0;;SUBS;1;A;;PROD;1;C;;ENZY;2;e;f;INHI;1;i;REACEND;"));
    EXPECT_EQ (gate.owned, (Set{"A", "e", "f", "i"}));
    // An inhibitor that is the input counts too, though it is the gate's own already.
    Lib_v1 other;
    const LibGate& input = first_gate (
        other, line_of ("1", "REACBEGIN;R;0;;SUBS;1;k;;PROD;1;C;;ENZY;1;e;INHI;1;A;REACEND;"));
    EXPECT_EQ (input.owned, (Set{"A", "e"}));
    EXPECT_EQ (input.shared, Set{"k"});
}

TEST (library, the_output_is_not_owned_and_shared_only_where_it_is_a_substrate) {
    Lib_v1 library;
    const LibGate& gate =
        first_gate (library, line_of ("2", "REACBEGIN;R1;1;;SUBS;1;A;;PROD;1;C;;ENZY;1;e;INHI;1;C;"
                                           "REACEND;REACBEGIN;R2;0;;SUBS;1;C;;PROD;1;w;;ENZY;1;f;"
                                           "INHI;0;REACEND;"));
    EXPECT_EQ (gate.owned, (Set{"A", "e", "f"}));
    EXPECT_EQ (gate.shared, (Set{"C", "w"}));
}

TEST (library, a_reaction_is_kept_once_in_a_gate) {
    Lib_v1 library;
    const std::string block = "REACBEGIN;R;0;;SUBS;1;A;;PROD;1;C;;ENZY;1;e;INHI;0;REACEND;";
    EXPECT_EQ (first_gate (library, line_of ("2", block + block)).reactions.size (), 1U);
}

TEST (library, other_lines_are_ignored) {
    Lib_v1 library;
    library.read ("\nnothing here\nREACTIONS;1;\n;;;;\n");
    EXPECT_TRUE (library.gates ().empty ());
    library.read ("E/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\r\n");
    EXPECT_EQ (library.query ("C", "YES").size (), 1U);
}

TEST (library, a_gate_that_names_the_word_metabolism_is_still_a_gate) {
    Lib_v1 library;
    library.read ("E/S;1;metabolism;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\n");
    EXPECT_EQ (library.query ("C", "YES").size (), 1U);
}

TEST (library, a_file_that_cannot_be_opened_is_told_and_leaves_it_empty) {
    testing::TemporaryFolder folder;
    Lib_v1 library;
    ::testing::internal::CaptureStdout ();
    EXPECT_FALSE (library.load ((folder / "none").string ()));
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "CSVReader: Impossible d'ouvrir le fichier en lecture.\n");
    EXPECT_TRUE (library.gates ().empty ());
}

TEST (library, load_reads_the_file_of_its_base_in_text_mode) {
    testing::TemporaryFolder folder;
    folder.write ("net_gates.csv",
                  "metabolism;m.xml\r\nE/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;0;\r\n");
    Lib_v1 library;
    EXPECT_TRUE (library.load ((folder / "net").string ()));
    ASSERT_EQ (library.gates ().size (), 3U);
    EXPECT_EQ (library.gates ()[0]->metabolism, "m.xml");
}

TEST (library, counts_beyond_the_line_end_with_it) {
    for (const std::string line :
         {"E/S;2147483647;A;B", "E/S;1;A;1;C;YES;ENZ;99999999999;e", "E/S;-5;1;C;YES;",
          "E/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;2000000000;REACBEGIN;R",
          "E/S;1;A;1;C;YES;ENZ;0;ELNEC;0;ELABS;0;REACTIONS;1;REACBEGIN;R;0;;SUBS;1000000000;x",
          "E/S", "E/S;", "metabolism", "metabolism;", "x;E/S;;;;;;;;;;;;"}) {
        Lib_v1 library;
        library.read (line);
        EXPECT_LE (library.gates ().size (), 6U) << line;
    }
}

TEST (library, damaged_files_never_crash_or_hang) {
    const std::string whole = made_up::gate_file (1, {.gates = 12, .three_inputs = true});
    made_up::Numbers numbers (2);
    for (int round = 0; round < 400; ++round) {
        std::string damaged = whole;
        for (int i = 1 + numbers.below (8); i > 0; --i) {
            const auto place =
                static_cast<std::size_t> (numbers.below (static_cast<int> (damaged.size ())));
            switch (numbers.below (4)) {
            case 0: damaged.erase (place, static_cast<std::size_t> (numbers.below (40))); break;
            case 1: damaged[place] = static_cast<char> (numbers.below (256)); break;
            case 2: damaged.insert (place, "99999999;"); break;
            default: damaged.resize (place + 1); break;
            }
        }
        Lib_v1 library;
        library.read (damaged);
        EXPECT_LE (library.gates ().size (), 500U);
    }
}

} // namespace
} // namespace ostrand::formula
