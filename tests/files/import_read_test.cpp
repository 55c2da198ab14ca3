// The import's reader of model texts: what it keeps, and every message.
#include "base/text.h"
#include "files/import.h"
#include "files/import_steps.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand::files {
namespace {

using ostrand::testing::CaughtMessages;

/// The tables after reading, kept until the end of the test.
class ImportReader : public ::testing::Test {
  protected:
    ImportTables& read (std::string_view text) {
        import_reset ();
        tables_.duration.reset ();
        tables_.displayed_name.clear ();
        good = read_statements (text, tables_);
        return tables_;
    }
    std::string message_of (std::string_view text) {
        CaughtMessages messages;
        EXPECT_FALSE (import_text (text)) << text;
        EXPECT_TRUE (import_tables ().reactions.empty ());
        EXPECT_FALSE (import_tables ().names[static_cast<std::size_t> (11)]);
        return messages.joined ();
    }
    void expect_message (std::string_view text, const std::string& message) {
        CaughtMessages messages;
        EXPECT_FALSE (import_text (text)) << text;
        ASSERT_EQ (messages.all.size (), 1U) << text;
        EXPECT_EQ (messages.all[0], message) << text;
    }
    void TearDown () override { import_reset (); }
    bool good = false;

  private:
    ImportTables& tables_ = import_tables ();
};

TEST_F (ImportReader, an_enzyme_statement_keeps_all_its_parts) {
    const ImportTables& t = read ("e : a + b -> c + d + f | 10 uM, 2 mM - 5 ;");
    ASSERT_TRUE (good);
    ASSERT_EQ (t.reactions.size (), 1U);
    const ImportReaction& r = *t.reactions[0];
    EXPECT_EQ (r.enzyme->name, "e");
    ASSERT_EQ (r.substrates.size (), 2U);
    ASSERT_EQ (r.products.size (), 3U);
    EXPECT_EQ (r.substrate ()->name, "a");
    EXPECT_EQ (r.products[2]->name, "f");
    ASSERT_EQ (r.km.size (), 2U);
    EXPECT_FLOAT_EQ (r.km[0], 0.01F);
    EXPECT_FLOAT_EQ (r.km[1], 2.0F);
    EXPECT_EQ (r.kcat, 5.0F);
    EXPECT_EQ (r.index, 1);
}

TEST_F (ImportReader, sixteen_substrates_and_products_are_kept_and_one_more_is_refused) {
    std::string side = "x1";
    for (int i = 2; i <= 16; ++i) {
        side += " + x" + std::to_string (i);
    }
    const ImportTables& t = read ("e : " + side + " -> " + side + " ;");
    ASSERT_TRUE (good);
    EXPECT_EQ (t.reactions[0]->substrates.size (), 16U);
    EXPECT_EQ (t.reactions[0]->products.size (), 16U);
    expect_message ("e : " + side + " + y -> p ;", "Too many substrates (max = 16).");
    expect_message ("e : s -> " + side + " + y ;", "Too many products (max = 16).");
}

TEST_F (ImportReader, kinetics_may_be_missing_before_the_semicolon) {
    const ImportTables& t = read ("e : a -> b ;");
    ASSERT_TRUE (good);
    EXPECT_TRUE (t.reactions[0]->km.empty ());
    EXPECT_EQ (t.reactions[0]->kcat, 0.0F);
}

TEST_F (ImportReader, mass_action_takes_the_species_in_slot_0_as_enzyme) {
    const ImportTables& t =
        read ("a -> b | 2 ; a + b -> c | 3 ; a -> b + c | 4 ; a + b -> c + d | 5 ;");
    ASSERT_TRUE (good);
    ASSERT_EQ (t.reactions.size (), 4U);
    EXPECT_EQ (t.reactions[0]->enzyme->name, "");
    EXPECT_EQ (t.reactions[3]->substrates.size (), 2U);
    EXPECT_EQ (t.reactions[3]->products.size (), 2U);
    EXPECT_EQ (t.reactions[3]->kcat, 5.0F);
}

TEST_F (ImportReader, inhibition_names_the_enzyme_first) {
    const ImportTables& t = read ("e : i | 3 uM ; e : j ;");
    ASSERT_TRUE (good);
    ASSERT_EQ (t.inhibitions.size (), 2U);
    EXPECT_EQ (t.inhibitions[0].enzyme->name, "e");
    EXPECT_EQ (t.inhibitions[0].inhibitor->name, "i");
    EXPECT_FLOAT_EQ (t.inhibitions[0].rate, 0.003F);
    EXPECT_EQ (t.inhibitions[1].rate, 0.0F);
}

TEST_F (ImportReader, roles_need_no_value) {
    ImportTables& t =
        read ("input [\"a\"] ; output [b]; excess [c] = 2 mM; [d] = 1 mM; e : a -> b;");
    ASSERT_TRUE (good);
    EXPECT_EQ (t.intern ("a")->role, SpeciesRole::input);
    EXPECT_EQ (t.intern ("b")->role, SpeciesRole::output);
    EXPECT_EQ (t.intern ("c")->role, SpeciesRole::excess);
    EXPECT_EQ (t.intern ("c")->conc, std::vector<float>{2.0F});
    EXPECT_EQ (t.intern ("d")->role, SpeciesRole::neither);
}

TEST_F (ImportReader, duration_is_in_whole_seconds) {
    EXPECT_EQ (read ("duration = 2.9 ;").duration, 2);
    EXPECT_EQ (read ("duration = 2 ; duration = 7 ;").duration, 7);
    EXPECT_EQ (read ("").duration, std::nullopt);
    EXPECT_EQ (read ("duration = 99999999999 ;").duration, 2147483647);
}

TEST_F (ImportReader, display_marks_species_and_passes_over_colours) {
    ImportTables& t = read ("display (a #ff0000 #123, \"b c\" , d);");
    ASSERT_TRUE (good);
    EXPECT_TRUE (t.intern ("a")->displayed);
    EXPECT_TRUE (t.intern ("b c")->displayed);
    EXPECT_TRUE (t.intern ("d")->displayed);
    EXPECT_FALSE (t.intern ("e")->displayed);
}

TEST_F (ImportReader, series_run_upwards_from_either_end) {
    const std::vector<float> five{1, 2, 3, 4, 5};
    EXPECT_EQ (read ("[a] = 1 mM -> 5 mM : 1 mM ;").intern ("a")->conc, five);
    EXPECT_EQ (read ("[a] = 5 mM -> 1 mM : 1 mM ;").intern ("a")->conc, five);
    EXPECT_EQ (read ("[a] = 1 mM -> 1 mM : 1 mM ;").intern ("a")->conc, std::vector<float>{1});
    EXPECT_EQ (read ("[a] = (b, c) 1 mM, 7 mM -> 9 mM : 2 mM ;").intern ("a")->conc,
               (std::vector<float>{1, 7, 9}));
    EXPECT_EQ (read ("[a] = 1 mM, 2 mM ; [a] = 3 mM ;").intern ("a")->conc, std::vector<float>{3});
}

TEST_F (ImportReader, a_species_with_several_concentrations_is_the_displayed_one) {
    EXPECT_EQ (read ("[a] = 1 mM, 2 mM ; [b] = 1 mM;").displayed_name, "a");
    EXPECT_EQ (read ("[a] = 1 mM ;").displayed_name, "");
}

TEST_F (ImportReader, a_sweep_from_0_is_told) {
    CaughtMessages messages;
    read ("[a] = 0 uM, 7 uM, 14 uM;");
    EXPECT_TRUE (good);
    read ("[a] = 0 uM;");
    ASSERT_EQ (messages.all.size (), 1U);
    EXPECT_EQ (messages.all[0], "The concentrations of 'a' from its first 0 on are left out.");
}

TEST_F (ImportReader, thirty_two_concentrations_are_the_most) {
    std::string list = "1 mM";
    for (int i = 1; i < 32; ++i) {
        list += ", 1 mM";
    }
    EXPECT_EQ (read ("[a] = " + list + ";").intern ("a")->conc.size (), 32U);
    expect_message ("[a] = " + list + ", 1 mM;", "too much initial concentrations (max = 32)");
    expect_message ("[a] = 1 mM -> 2 mM : 0 mM;", "too much initial concentrations (max = 32)");
    EXPECT_EQ (read ("[a] = 1 mM -> 32 mM : 1 mM;").intern ("a")->conc.size (), 32U);
    expect_message ("[a] = 1 mM -> 33 mM : 1 mM;", "too much initial concentrations (max = 32)");
}

TEST_F (ImportReader, quoted_keyword_is_the_keyword) {
    EXPECT_TRUE (read ("\"display\" (a);").intern ("a")->displayed);
    EXPECT_TRUE (good);
}

TEST_F (ImportReader, glued_units_read_and_a_plus_behind_them_makes_a_name) {
    EXPECT_EQ (read ("[a]=10mM;").intern ("a")->conc, std::vector<float>{10});
    expect_message ("[a] = 10uM+", "'<float>' expected, got: '10uM'");
    EXPECT_EQ (read ("[a] = 1 \xB5M;").intern ("a")->conc, std::vector<float>{0.001F});
    EXPECT_EQ (read ("[a] = 1\xB5M;").intern ("a")->conc, std::vector<float>{0.001F});
}

TEST_F (ImportReader, numbers_must_be_followed_by_white_space_semicolon_or_unit) {
    expect_message ("duration = 3,5 ;", "'<float>' expected, got: '3'");
    expect_message ("duration = 1.2.3 ;", "'<float>' expected, got: '1.2.3'");
    expect_message ("duration = 5", "'<float>' expected, got: '5'");
    EXPECT_EQ (read ("duration = 1-2;").duration, 1);
    EXPECT_EQ (read ("duration = 2e;").duration, 2);
    EXPECT_EQ (read ("duration = 1e1;").duration, 10);
    EXPECT_EQ (read ("duration = .5;").duration, 0);
    const ImportTables& t = read ("e : 2PG -> 3PG ;");
    EXPECT_EQ (t.reactions[0]->substrate ()->name, "2PG");
}

TEST_F (ImportReader, comments_and_line_ends_separate) {
    const ImportTables& t = read ("// first\ne\t:\r\na -> // here\nb;//end");
    ASSERT_TRUE (good);
    EXPECT_EQ (t.reactions[0]->product ()->name, "b");
}

TEST_F (ImportReader, the_text_ends_at_a_nul) {
    EXPECT_EQ (read (std::string_view ("e : a -> b ;\0garbage", 20)).reactions.size (), 1U);
    EXPECT_TRUE (good);
}

TEST_F (ImportReader, messages_of_fixed_tokens) {
    expect_message ("e : a -> b", "vertical bar expected, got EOF");
    expect_message ("duration = 5 ", "';' expected, got: 'EOF'");
    expect_message ("duration 5 ;", "'=' expected, got: '5'");
    expect_message ("duration = a ;", "'<float>' expected, got: 'a'");
    expect_message ("display a ;", "'(' expected, got: 'a'");
    expect_message ("[a = 1 mM;", "']' expected, got: '='");
    expect_message ("input a ;", "'[' expected, got: 'a'");
    expect_message ("[a] ;", "'=' expected, got: ';'");
    expect_message ("[5 ] = 1 mM;", "'<ident>' expected, got: '5'");
    expect_message ("[a] = 1 mM -> 5 mM 1 mM;", "':' expected, got: '1'");
    expect_message ("a + b c | 1 ;", "'->' expected, got: 'c'");
    expect_message ("a -> b + c 1 ;", "'|' expected, got: '1'");
    expect_message ("a -> b | x ;", "'<float>' expected, got: 'x'");
    expect_message ("[\"\"] = 1 mM;", "'<ident>' expected, got: ''");
    expect_message ("e : a -> \"\" ;", "'<ident>' expected, got: ''");
}

TEST_F (ImportReader, messages_of_statements) {
    expect_message ("; ", "syntax error: enzyme name expected");
    expect_message ("5 -> a ;", "syntax error: enzyme name expected");
    expect_message ("\"\" -> a ;", "syntax error: enzyme name expected");
    expect_message ("a b ;", "'->' or '+' expected, got '<ident>'");
    expect_message ("a -> b ;", "'|' expected, got ';'");
    expect_message ("linked (a b) ;", "',' or ')' expected, got '<ident>'");
    expect_message ("[a] = (b c) 1 mM ;", "',' or ')' expected, got '<ident>'");
    expect_message ("display (a = b) ;", "',', ')', #rrggbb or #rgb expected, got '='");
    expect_message ("[a] = 5 ;", "uM or mM expected, got ;");
    expect_message ("e : a + b , c ;", "arrow expected, got ,");
    expect_message ("e : a -> b - 5 ;", "vertical bar expected, got -");
    expect_message ("e : a -> b | 1 mM ;", "Kcat missing");
    expect_message ("e : s -> p | 1 mM, 2 mM - 3;", "more KM's (2) than substrates (1)");
    expect_message ("e : a + b -> p | 1 mM - 3;", "more substrates (2) than KM's (1)");
}

TEST_F (ImportReader, excess_km_is_reported_at_its_comma) {
    expect_message ("e : s -> p | 1 mM, nonsense", "more KM's (2) than substrates (1)");
}

TEST_F (ImportReader, messages_of_the_lexer) {
    expect_message ("[\"ab\ncd\"] = 1 mM;", "'\\n' inside a name: '\"ab\nc ...'");
    expect_message ("display (a #xyz);", "bad colour specification: '# xyz);'");
    expect_message ("display (a #12);", "bad colour specification: '#  12);'");
    expect_message ("display (a #12345 );", "bad colour specification: '#12345 '");
}

TEST_F (ImportReader, a_quoted_name_without_end_runs_to_the_end_of_the_text) {
    expect_message ("e : a -> \"b ;", "vertical bar expected, got EOF");
}

TEST_F (ImportReader, linked_species_are_read_and_not_kept) {
    read ("linked (a, b); linked (a); [a] = (b) 1 mM;");
    EXPECT_TRUE (good);
}

TEST_F (ImportReader, more_than_4086_reactions_are_too_many) {
    std::string text;
    for (int i = 0; i < 4086; ++i) {
        text += "e : a -> b ;\n";
    }
    read (text);
    EXPECT_TRUE (good);
    expect_message (text + "e : a -> b ;", "Too many reactions.");
}

TEST_F (ImportReader, the_name_table_holds_4096_names) {
    std::string text = "display (n0";
    for (int i = 1; i < 4096; ++i) {
        text += ", n" + std::to_string (i);
    }
    read (text + ");");
    EXPECT_TRUE (good);
    expect_message (text + ", more);", "Species hashtable full");
}

TEST_F (ImportReader, names_match_exactly) {
    ImportTables& t = read ("e : abcdefgh -> abc ;");
    EXPECT_NE (t.intern ("abc"), t.intern ("abcdefgh"));
    EXPECT_EQ (t.intern ("abc"), t.intern ("abc"));
}

TEST_F (ImportReader, nothing_survives_a_failed_import) {
    EXPECT_FALSE (message_of ("e : a -> b ; nonsense").empty ());
    const ImportTables& t = import_tables ();
    EXPECT_TRUE (t.owned.empty ());
    EXPECT_TRUE (t.inhibitions.empty ());
    EXPECT_EQ (t.first_virtual, no_virtual);
    EXPECT_EQ (t.last_node, 0);
}

TEST_F (ImportReader, a_file_that_cannot_be_opened_gives_no_message) {
    CaughtMessages messages;
    EXPECT_FALSE (import_file ("/nonexistent/model.ssa"));
    EXPECT_TRUE (messages.all.empty ());
}

TEST_F (ImportReader, a_file_is_read_in_text_mode) {
    const ostrand::testing::TemporaryFolder folder;
    const std::string path = folder.write ("m.ssa", "e : a -> b ;\r\nduration = 3\r\n;\r\n");
    const auto imported = import_file (path);
    ASSERT_TRUE (imported);
    EXPECT_EQ (imported->duration, 3);
}

TEST_F (ImportReader, the_result_keeps_duration_and_displayed_name) {
    const auto imported = import_text ("duration = 12 ; [a] = 1 mM, 2 mM ; e : a -> b ;");
    ASSERT_TRUE (imported);
    EXPECT_EQ (imported->duration, 12);
    EXPECT_EQ (imported->displayed_name, "a");
}

} // namespace
} // namespace ostrand::files
