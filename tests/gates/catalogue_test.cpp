// The gate catalogue: its text, its shares, odd definitions.
#include "gates/catalogue.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using ::testing::ElementsAre;
using Row = std::vector<int>;

std::vector<std::string> names (const Catalogue& catalogue) {
    std::vector<std::string> all;
    for (const GateGroup& group : catalogue) {
        for (const GateDefinition& gate : group.gates) {
            all.push_back (gate.name + std::to_string (group.arity));
        }
    }
    return all;
}

TEST (catalogue, built_in_gates_in_order) {
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    EXPECT_THAT (names (catalogue),
                 ElementsAre ("AND2", "OR2", "XOR2", "NAND2", "NOR2", "NOTAND2", "ANDNOT2",
                              "NOTOR2", "ORNOT2", "AND3", "OR3", "NOT1", "YES1"));
}

TEST (catalogue, built_in_tables_hold_four_integers_a_row) {
    const Catalogue catalogue = load_catalogue (builtin_catalogue_text (), 1, 1);
    const auto outputs = [] (const GateDefinition& gate, std::size_t inputs) {
        std::string text;
        for (const Row& row : gate.rows) {
            EXPECT_EQ (row.size (), 4U);
            text += std::to_string (row[inputs]);
        }
        return text;
    };
    std::vector<std::string> tables;
    for (const GateGroup& group : catalogue) {
        for (const GateDefinition& gate : group.gates) {
            tables.push_back (outputs (gate, static_cast<std::size_t> (group.arity)));
        }
    }
    EXPECT_THAT (tables, ElementsAre ("0001", "0111", "0110", "1110", "1000", "0100", "0010",
                                      "1101", "1011", "00000001", "01111111", "10", "01"));
    EXPECT_THAT (catalogue[0].gates[0].rows,
                 ElementsAre (Row{0, 0, 0, 0}, Row{0, 1, 0, 0}, Row{1, 0, 0, 0}, Row{1, 1, 1, 0}));
    EXPECT_THAT (catalogue[2].gates[0].rows, ElementsAre (Row{0, 1, 0, 0}, Row{1, 0, 0, 0}));
}

TEST (catalogue, built_in_text_has_its_exact_form) {
    const std::string_view text = builtin_catalogue_text ();
    EXPECT_TRUE (text.starts_with ("GATE;AND;2;1;\n#;0;0;0;\n#;0;1;0;\n#;1;0;0;\n#;1;1;1;\n;;;;\n"
                                   "GATE;OR;2;1;\n"));
    EXPECT_NE (text.find ("GATE;AND;3;1;\n#;0;0;0;0\n#;0;0;1;0\n"), std::string::npos);
    EXPECT_TRUE (text.ends_with (";;;;\nGATE;NOT;1;1;\n#;0;1;;\n#;1;0;;\n;;;;\n"
                                 "GATE;YES;1;1;\n#;0;0;;\n#;1;1;;\n"));
}

TEST (catalogue, shares_of_eight_jobs) {
    const std::vector<std::vector<std::string>> shares{
        {"NOTOR2"},        {"AND2", "ORNOT2"}, {"OR2", "AND3"}, {"XOR2", "OR3"},
        {"NAND2", "NOT1"}, {"NOR2", "YES1"},   {"NOTAND2"},     {"ANDNOT2"}};
    for (int job = 1; job <= 8; ++job) {
        EXPECT_EQ (names (load_catalogue (builtin_catalogue_text (), 8, job)),
                   shares[static_cast<std::size_t> (job - 1)]);
    }
}

TEST (catalogue, group_order_follows_the_share) {
    const Catalogue share = load_catalogue (builtin_catalogue_text (), 8, 5);
    ASSERT_EQ (share.size (), 2U);
    EXPECT_EQ (share[0].arity, 2);
    EXPECT_EQ (share[1].arity, 1);
}

TEST (catalogue, last_line_without_an_end_is_read) {
    const Catalogue catalogue = load_catalogue ("GATE;YES;1;1;\n#;0;0\n#;1;1", 1, 1);
    ASSERT_EQ (catalogue.size (), 1U);
    EXPECT_THAT (catalogue[0].gates[0].rows, ElementsAre (Row{0, 0}, Row{1, 1}));
}

TEST (catalogue, empty_text_has_no_group) { EXPECT_TRUE (load_catalogue ("", 1, 1).empty ()); }

TEST (catalogue, partition_of_one_keeps_every_gate) {
    EXPECT_EQ (names (load_catalogue (builtin_catalogue_text (), 1, 1)).size (), 13U);
}

TEST (catalogue, partition_that_receives_no_gate_has_no_group) {
    EXPECT_TRUE (load_catalogue (builtin_catalogue_text (), 20, 1).empty ());
    EXPECT_EQ (names (load_catalogue (builtin_catalogue_text (), 20, 2)).size (), 1U);
    EXPECT_TRUE (load_catalogue (builtin_catalogue_text (), 20, 20).empty ());
}

TEST (catalogue, row_without_a_header_is_not_stored) {
    const Catalogue catalogue = load_catalogue ("#;1;1;\nGATE;A;1;1;\n#;0;0;\n", 1, 1);
    ASSERT_EQ (catalogue.size (), 1U);
    EXPECT_EQ (catalogue[0].gates[0].rows.size (), 1U);
    EXPECT_TRUE (load_catalogue ("#;1;1;\n#;0;1;\n", 3, 1).empty ());
}

TEST (catalogue, odd_fields_read_as_numbers_do) {
    const Catalogue catalogue =
        load_catalogue ("whatever\n\n#\nGATE;X;2x;1;\n#\n#;;-3;a;7b;\nGATE\nGATE;Y\n", 1, 1);
    ASSERT_EQ (catalogue.size (), 2U);
    EXPECT_EQ (catalogue[0].arity, 2);
    EXPECT_THAT (catalogue[0].gates[0].rows, ElementsAre (Row{}, Row{0, -3, 0, 7, 0}));
    EXPECT_EQ (catalogue[1].arity, 0);
    ASSERT_EQ (catalogue[1].gates.size (), 1U); // a header without fields is none
    EXPECT_EQ (catalogue[1].gates[0].name, "Y");
}

TEST (catalogue, value_outside_the_table_is_zero) {
    const GateDefinition gate{"X", {{1}, {}}};
    EXPECT_EQ (gate.value (0, 0), 1);
    EXPECT_EQ (gate.value (0, 1), 0);
    EXPECT_EQ (gate.value (1, 0), 0);
    EXPECT_EQ (gate.value (9, 9), 0);
}

TEST (catalogue, file_that_cannot_be_opened_is_told_and_gives_nothing) {
    const testing::TemporaryFolder folder;
    ::testing::internal::CaptureStdout ();
    const Catalogue catalogue = gateNoticeReader (TextFile (folder / "none"), 1, 1);
    EXPECT_EQ (::testing::internal::GetCapturedStdout (),
               "gateNoticeReader: Impossible d'ouvrir le fichier en lecture.\n");
    EXPECT_TRUE (catalogue.empty ());
}

TEST (catalogue, file_reads_like_the_text) {
    const testing::TemporaryFolder folder;
    const TextFile file (folder.write ("gates.txt", builtin_catalogue_text ()));
    for (int job = 1; job <= 8; ++job) {
        EXPECT_EQ (names (gateNoticeReader (file, 8, job)),
                   names (load_catalogue (builtin_catalogue_text (), 8, job)));
    }
}

TEST (catalogue, type_names_by_position) {
    EXPECT_THAT (gate_type_names (), ElementsAre ("UNKNOW", "AND", "OR", "NOT", "ANDNOT", "NOTAND",
                                                  "ORNOT", "NOTOR", "OR3", "AND3", "YES"));
}

} // namespace
} // namespace ostrand::gates
