// Which texts of concentrations the simulator takes, and what it says of the others.
#include "sim/concentration.h"
#include "sim/sim_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::sim {
namespace {

std::string fault (std::string_view text) {
    return concentration_fault (text).value_or ("(taken)");
}

TEST (concentration, values_lists_and_series_with_units_are_taken) {
    for (const char* text :
         {"12 mM", "12uM", "0.5 uM", ".5 mM", " 1 uM ", "1 uM, 2 uM", "1 uM,2mM , 3 uM",
          "1 mM -> 5 mM : 1 mM", "5 mM -> 1 mM : 1 mM", "1 uM, 2 uM -> 10 uM : 2 uM, 1 mM",
          "(a, \"b c\") 1 uM, 2 uM", "1 \xB5M", "1e-3 mM", "0 uM", "1 uM // said so\n"}) {
        EXPECT_EQ (fault (text), "(taken)") << text;
    }
}

TEST (concentration, the_reason_why_not_is_what_the_simulator_says) {
    EXPECT_EQ (fault (""), "'<float>' expected, got: ';'");
    EXPECT_EQ (fault ("12"), "uM or mM expected, got ;");
    EXPECT_EQ (fault ("12 km"), "uM or mM expected, got <ident>");
    EXPECT_EQ (fault ("12 kM"), "uM or mM expected, got <ident>");
    EXPECT_EQ (fault ("-1 uM"), "'<float>' expected, got: '-'");
    EXPECT_EQ (fault ("much"), "'<float>' expected, got: 'much'");
    EXPECT_EQ (fault ("1 uM 2 uM"), "';' expected, got: '2'");
    EXPECT_EQ (fault ("1 uM, "), "'<float>' expected, got: ';'");
    EXPECT_EQ (fault ("1 uM -> 2 uM"), "':' expected, got: ';'");
    EXPECT_EQ (fault ("1 uM -> 2 uM : 1"), "uM or mM expected, got ;");
    EXPECT_EQ (fault ("(a 1 uM"), "',' or ')' expected, got '<float>'");
    EXPECT_EQ (fault ("() 1 uM"), "'<ident>' expected, got: ')'");
    EXPECT_EQ (fault ("1 uM // and no end"), "';' expected, got: 'EOF'");
}

TEST (concentration, what_has_no_room_is_refused) {
    EXPECT_EQ (fault ("1 mM -> 2 mM : 0 mM"), "too much initial concentrations (max = 128)");
    EXPECT_EQ (fault ("0 mM -> 127 mM : 1 mM"), "(taken)");
    EXPECT_EQ (fault ("0 mM -> 128 mM : 1 mM"), "too much initial concentrations (max = 128)");
    EXPECT_THAT (fault ("8000 mM"), ::testing::HasSubstr ("too high: 8000 mM"));
}

TEST (concentration, nothing_of_another_statement_slips_in) {
    EXPECT_EQ (fault ("1 uM; [b] = 2 uM"), "'EOF' expected, got: '['");
    EXPECT_EQ (fault ("1 uM;"), "'EOF' expected, got: ';'");
    // What stands behind a NUL nobody reads, and nothing ends the unit.
    EXPECT_EQ (fault (std::string_view ("1 uM\0; 2", 8)), "uM or mM expected, got <ident>");
}

TEST (concentration, asking_reports_nothing) {
    const testing::CaughtMessages messages;
    EXPECT_NE (fault ("much"), "(taken)");
    EXPECT_TRUE (messages.all.empty ());
}

/// What the reader of models says of the text in a statement.
std::string fault_in_a_model (const std::string& text) {
    const ReadModel model ("[a] = " + text + ";");
    if (model.ok) return "(taken)";
    return model.reported.substr (0, model.reported.size () - 1);
}

TEST (concentration, the_answer_is_that_of_the_reader_of_models_on_random_texts) {
    constexpr const char* words[] = {"1",  "2.5", " ", "uM", "mM",  ",",  "->", ":",
                                     "(a", ")",   "-", "b",  "1e3", "\t", "//", "uM "};
    std::mt19937 random (11);
    int taken = 0;
    for (int i = 0; i < (testing::sanitized ? 6000 : 60000); ++i) {
        std::string text;
        for (auto n = random () % 9; n > 0; --n) text += words[random () % std::size (words)];
        const std::string told = fault (text);
        taken += told == "(taken)" ? 1 : 0;
        std::string by_reader = fault_in_a_model (text);
        // Only the name of the species differs.
        const std::size_t name = by_reader.find ("of 'a' too high");
        if (name != std::string::npos) by_reader.replace (name + 4, 1, "it");
        ASSERT_EQ (told, by_reader) << text;
    }
    EXPECT_GT (taken, testing::sanitized ? 10 : 100);
}

} // namespace
} // namespace ostrand::sim
