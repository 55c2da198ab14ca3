// The preferences file.
#include "editor/preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace ostrand::editor {
namespace {

using ::testing::HasSubstr;

/// A file of these lines behind the two that every one begins with.
Preferences read (const std::string& lines) {
    return preferences_from_text (
        "<?xml version=\"1.0\"?>\n<lattrixprefs xmlns=\"x\" lastupdate=\"1\">\n" + lines +
        "</lattrixprefs>\n");
}

TEST (preferences, one_line_alone_leaves_all_else_at_its_default) {
    const Preferences preferences = read ("<pref zoom=\"50\">\n");
    EXPECT_EQ (preferences.zoom, 50U);
    Preferences defaults;
    defaults.zoom = 50;
    EXPECT_EQ (preferences_text (preferences, 0), preferences_text (defaults, 0));
}

TEST (preferences, a_number_is_hexadecimal_behind_a_hash_and_decimal_otherwise) {
    EXPECT_EQ (read ("<pref background=\"#102030\">\n").background, 0x102030U);
    EXPECT_EQ (read ("<pref background=\"1056816\">\n").background, 0x102030U);
    EXPECT_EQ (read ("<pref lift_background=\"#f0101000\">\n").lift_background, 0xf0101000U);
}

TEST (preferences, what_older_versions_do_not_know_is_written_only_when_it_is_off) {
    Preferences preferences;
    const std::string text = preferences_text (preferences, 0);
    EXPECT_THAT (text, ::testing::Not (HasSubstr ("arrange")));
    EXPECT_THAT (text, ::testing::Not (HasSubstr ("animate")));
    preferences.animate = preferences.arrange_opened = false;
    const Preferences again = preferences_from_text (preferences_text (preferences, 0));
    EXPECT_FALSE (again.animate);
    EXPECT_FALSE (again.arrange_opened);
}

TEST (preferences, another_first_line_means_all_defaults) {
    const Preferences preferences = preferences_from_text (
        "<?xmk version=\"1.0\"?>\n<lattrixprefs>\n<pref zoom=\"50\">\n</lattrixprefs>\n");
    EXPECT_EQ (preferences.zoom, 100U);
    EXPECT_EQ (
        preferences_from_text ("<?xml version=\"1.0\"?>\n<other>\n<pref zoom=\"50\">\n").zoom,
        100U);
    EXPECT_EQ (preferences_from_text ("").zoom, 100U);
}

TEST (preferences, several_values_are_taken_from_one_line) {
    const Preferences font = read ("<font face=\"Verdana\" size=\"20\" colour=\"Red\">\n");
    EXPECT_EQ (font.face, "Verdana");
    EXPECT_EQ (font.size, "20");
    EXPECT_EQ (font.colour, "Red");
    const Preferences spaced = read ("<font face=\"Times New Roman\" size=\"8\">\n");
    EXPECT_EQ (spaced.face, "Times New Roman");
    EXPECT_EQ (spaced.size, "8");
    const Preferences both = read ("<pref grid=\"true\" zoom=\"70\" kinetics=\"false\">\n");
    EXPECT_TRUE (both.grid);
    EXPECT_EQ (both.zoom, 70U);
    EXPECT_FALSE (both.kinetics);
}

TEST (preferences, a_boolean_that_is_neither_true_nor_false_stays) {
    EXPECT_FALSE (read ("<pref grid=\"True\">\n").grid);
    EXPECT_TRUE (read ("<pref boundary=\"0\">\n").boundary);
    EXPECT_FALSE (read ("<pref boundary=\"false\">\n").boundary);
}

TEST (preferences, unknown_keys_and_what_follows_the_end_are_ignored) {
    const Preferences preferences =
        preferences_from_text ("<?xml version=\"1.0\"?>\n<lattrixprefs date=\"1\">\n<pref "
                               "future=\"1\">\n<pref zoom=\"60\">\n"
                               "</lattrixprefs>\n<pref zoom=\"90\">\n");
    EXPECT_EQ (preferences.zoom, 60U);
}

TEST (preferences, a_line_is_read_to_its_thousandth_letter) {
    const std::string far (1015, ' ');
    EXPECT_EQ (read ("<pref " + far + "zoom=\"60\">\n").zoom, 100U);
    EXPECT_EQ (read ("<pref " + far.substr (100) + "zoom=\"60\">\n").zoom, 60U);
}

TEST (preferences, the_zoom_of_a_canvas_stays_within_its_limits) {
    EXPECT_EQ (read ("<pref zoom=\"5\">\n").canvas_zoom (), 10U);
    EXPECT_EQ (read ("<pref zoom=\"900\">\n").canvas_zoom (), 200U);
    EXPECT_EQ (read ("<pref zoom=\"33\">\n").canvas_zoom (), 33U);
}

TEST (preferences, only_ODE_is_the_deterministic_engine) {
    EXPECT_TRUE (read ("<pref simulation=\"ODE\">\n").deterministic ());
    EXPECT_FALSE (read ("<pref simulation=\"ode\">\n").deterministic ());
    EXPECT_FALSE (Preferences ().deterministic ());
}

TEST (preferences, the_text_is_written_line_by_line) {
    const std::string text = preferences_text (Preferences (), 1234567890);
    EXPECT_TRUE (text.starts_with ("<?xml version=\"1.0\"?>\n<lattrixprefs xmlns=\""));
    EXPECT_THAT (text, HasSubstr ("\" lastupdate=\"1234567890\">\n"
                                  "<pref boundary=\"true\">\n"
                                  "<pref kinetics=\"true\">\n"
                                  "<pref mousehelp=\"true\">\n"
                                  "<pref grid=\"false\">\n"
                                  "<pref smart_move=\"true\">\n"
                                  "<pref zoom=\"100\">\n"
                                  "<pref simulation=\"SSA\">\n"
                                  "<pref stoichiometry=\"false\">\n"
                                  "<pref smart_dialog=\"false\">\n"
                                  "<pref use_annotation=\"true\">\n"
                                  "<pref dark_mode=\"false\">\n"
                                  "<pref lift_always_visible=\"false\">\n"
                                  "<pref lift_background=\"#0\">\n"
                                  "<pref default_yes=\"false\">\n"
                                  "<pref emacs_keys=\"false\">\n"
                                  "<pref background=\"#f0f0f0\">\n"
                                  "<font face=\"Arial\" size=\"14\" colour=\"Black\">\n"
                                  "</lattrixprefs>\n"));
}

TEST (preferences, a_row_that_was_added_is_written_behind_the_others_when_it_is_not_the_default) {
    Preferences changed;
    changed.guides = false;
    EXPECT_THAT (preferences_text (changed, 7), HasSubstr ("<pref background=\"#f0f0f0\">\n"
                                                           "<pref guides=\"false\">\n"
                                                           "<font face="));
    EXPECT_FALSE (read ("<pref guides=\"false\">\n").guides);
    EXPECT_TRUE (read ("<pref guides=\"1\">\n").guides);
}

TEST (preferences, what_is_written_reads_back) {
    Preferences changed;
    changed.boundary = changed.kinetics = changed.mouse_help = changed.smart_move = false;
    changed.grid = changed.stoichiometry = changed.smart_dialog = changed.dark_mode = true;
    changed.lift_always_visible = changed.default_yes = changed.emacs_keys = true;
    changed.use_annotation = changed.guides = false;
    changed.snap_to_guides = true;
    changed.zoom = 145;
    changed.simulation = "ODE";
    changed.lift_background = 0x30303000;
    changed.background = 0xa0b0c0;
    changed.face = "Courier New";
    changed.size = "36";
    changed.colour = "#102030";
    const std::string text = preferences_text (changed, 7);
    EXPECT_EQ (preferences_text (preferences_from_text (text), 7), text);
}

} // namespace
} // namespace ostrand::editor
