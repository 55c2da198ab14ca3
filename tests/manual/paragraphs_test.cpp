// Labels, shortcuts and paragraphs of the manual.
#include "manual/paragraphs.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

using editor::Binding;
using editor::Command;
using editor::CommandRow;
using editor::Shortcut;
using editor::ShortcutSet;

std::string paragraph (Command command, ShortcutSet set = ShortcutSet::standard) {
    return command_paragraph (editor::command_row (command), set, "/tmp");
}

const Binding& binding_of (unsigned code) {
    return *std::ranges::find (editor::bindings (), code, &Binding::code);
}

TEST (label, the_marked_letter_is_underlined_and_points_are_dropped) {
    EXPECT_EQ (manual_label ("&Open..."), "<u>O</u>pen");
    EXPECT_EQ (manual_label ("E&xport to PDF..."), "E<u>x</u>port to PDF");
    EXPECT_EQ (manual_label ("  Set d&uration ..."), "Set d<u>u</u>ration ");
    EXPECT_EQ (manual_label ("S&tart simulation  "), "S<u>t</u>art simulation  ");
    EXPECT_EQ (manual_label (""), "");
    EXPECT_EQ (manual_label ("   "), "");
}

TEST (label, a_mark_with_nothing_behind_it_is_dropped) { EXPECT_EQ (manual_label ("a&"), "a"); }

TEST (label, running_text_has_neither_mark_nor_blanks_at_its_end) {
    EXPECT_EQ (plain_label ("S&tart simulation  "), "Start simulation");
    EXPECT_EQ (plain_label ("&Open..."), "Open");
}

TEST (shortcut, letters_are_shown_as_capitals_behind_what_is_held) {
    EXPECT_EQ (shortcut_text ({.ctrl = true, .key = 'l'}), " (Ctrl+L)");
    EXPECT_EQ (shortcut_text ({.ctrl = true, .shift = true, .key = 'o'}), " (Ctrl+Shift+O)");
    EXPECT_EQ (shortcut_text ({.ctrl = true, .key = '+'}), " (Ctrl++)");
    EXPECT_EQ (shortcut_text ({.ctrl = true, .key = '0'}), " (Ctrl+0)");
}

TEST (shortcut, tab_has_a_name_and_other_keys_of_the_toolkit_a_number) {
    EXPECT_EQ (shortcut_text ({.key = editor::tab_key}), " (TAB)");
    EXPECT_EQ (shortcut_text ({.key = 0xffbf}), " (65471)");
}

TEST (menu_paragraph, shows_menu_and_label_shortcut_name_and_help) {
    EXPECT_EQ (paragraph (Command::undo),
               "<font color=#2020ff><u>E</u>dit -> <u>U</u>ndo (Ctrl+Z)</font>"
               "<font color=#902020>&nbsp;&nbsp;&nbsp; [undo-command]</font><br>\n"
               "Undo the previous commands that modified the currently edited bio-network. "
               "Everything is undoable, even loading a new file!<p>\n");
}

TEST (menu_paragraph, with_the_emacs_set_shows_the_other_shortcut) {
    EXPECT_NE (paragraph (Command::undo, ShortcutSet::emacs).find ("Undo"), std::string::npos);
    EXPECT_TRUE (
        paragraph (Command::undo, ShortcutSet::emacs)
            .starts_with ("<font color=#2020ff><u>E</u>dit -> <u>U</u>ndo (Ctrl+-)</font>"));
    EXPECT_TRUE (paragraph (Command::find_reactant, ShortcutSet::emacs)
                     .starts_with ("<font color=#2020ff><u>E</u>dit -> <u>F</u>ind Reactant "
                                   "(Ctrl+S)</font>"));
}

TEST (menu_paragraph, with_the_emacs_set_shows_the_key_text_where_an_item_has_no_shortcut) {
    EXPECT_TRUE (paragraph (Command::load_file, ShortcutSet::emacs)
                     .starts_with ("<font color=#2020ff><u>F</u>ile -> <u>L</u>oad (^X^R)</font>"));
    EXPECT_TRUE (paragraph (Command::zoom_in, ShortcutSet::emacs)
                     .starts_with ("<font color=#2020ff><u>V</u>iew -> Zoom <u>i</u>n (Esc +)"));
}

TEST (menu_paragraph, has_neither_where_there_is_neither) {
    EXPECT_TRUE (
        paragraph (Command::save_settings)
            .starts_with ("<font color=#2020ff><u>F</u>ile -> Sa<u>v</u>e settings</font>"));
}

TEST (menu_paragraph, of_the_start_item_keeps_tab_in_both_sets) {
    for (const ShortcutSet set : {ShortcutSet::standard, ShortcutSet::emacs}) {
        EXPECT_TRUE (paragraph (Command::start_simulation, set)
                         .starts_with ("<font color=#2020ff><u>S</u>imulation -> S<u>t</u>art "
                                       "simulation   (TAB)</font>"));
    }
}

TEST (menu_paragraph, without_a_row_is_a_blue_line_and_an_empty_paragraph) {
    EXPECT_EQ (
        paragraph (Command::gui_background),
        "<font color=#2020ff><u>V</u>iew -> <u>G</u>ui background (Ctrl+Shift+B)</font><p>\n");
}

TEST (menu_paragraph, of_the_implementations_shows_the_names_crossed_over) {
    EXPECT_NE (paragraph (Command::previous_implementation).find ("[tectrix-next-implementation]"),
               std::string::npos);
    EXPECT_NE (paragraph (Command::next_implementation).find ("[tectrix-previous-implementation]"),
               std::string::npos);
}

TEST (menu_paragraph, shows_the_pictures_of_its_help) {
    EXPECT_NE (paragraph (Command::fog_selection)
                   .find ("stands out.<center><img src=/tmp/fog.png></center><p>\n"),
               std::string::npos);
}

TEST (binding_paragraph, of_the_mouse_tells_place_gesture_name_and_help) {
    EXPECT_EQ (binding_paragraph (binding_of (0x4112), "/tmp"),
               "<b>Pointer in a molecule</b>&nbsp;&nbsp;&nbsp;"
               "<font color=#2020ff>Ctrl+Mouse-1 Click</font>"
               "<font color=#902020>&nbsp;&nbsp;&nbsp; [add-to-selection]</font><br>\n"
               "Add the molecule to the selection, or take it out when it is in it.<p>\n");
}

TEST (binding_paragraph, names_every_place) {
    const auto place = [] (unsigned code) {
        const std::string html = binding_paragraph ({code, "n", "", "h"}, "");
        return html.substr (0, html.find ("</b>"));
    };
    EXPECT_EQ (place (0x1110), "<b>Pointer in the background");
    EXPECT_EQ (place (0x2110), "<b>Pointer on a reaction");
    EXPECT_EQ (place (0x12110), "<b>Pointer on a selected reaction");
    EXPECT_EQ (place (0x3110), "<b>Pointer on a catalyse arc");
    EXPECT_EQ (place (0x13110), "<b>Pointer on a selected catalyse arc");
    EXPECT_EQ (place (0x4110), "<b>Pointer in a molecule");
    EXPECT_EQ (place (0x14110), "<b>Pointer in a selected molecule");
    EXPECT_EQ (place (0x5110), "<b>Pointer in a text field");
    EXPECT_EQ (place (0x6110), "<b>Pointer in a kinetics/stoichiometry reaction field");
}

TEST (binding_paragraph, names_every_gesture) {
    const auto gesture = [] (unsigned code) { return gesture_text ({code, "", "", ""}); };
    EXPECT_EQ (gesture (0x4110), "Mouse-1 Click");
    EXPECT_EQ (gesture (0x4120), "Mouse-2 Click");
    EXPECT_EQ (gesture (0x4130), "Mouse-3 Click");
    EXPECT_EQ (gesture (0x4210), "Mouse-1 Drag");
    EXPECT_EQ (gesture (0x4300), "Mouse Motion");
    EXPECT_EQ (gesture (0x4113), "Ctrl+Shift+Mouse-1 Click");
    EXPECT_EQ (gesture (0xf14400), "Arrow Key");
    EXPECT_EQ (gesture (0x1005401), "Shift+Up Arrow Key");
    EXPECT_EQ (gesture (0x1105401), "Shift+Down Arrow Key");
    EXPECT_EQ (gesture (0x1205400), "Left Arrow Key");
    EXPECT_EQ (gesture (0x1305400), "Right Arrow Key");
    EXPECT_EQ (gesture (0x1405400), "Backspace");
    EXPECT_EQ (gesture (0x1505400), "Delete");
    EXPECT_EQ (gesture (0x1706400), "Escape");
    EXPECT_EQ (gesture (0x4105402), "Ctrl+A");
}

TEST (binding_paragraph, a_blank_of_the_name_becomes_a_dash_and_the_next_character_stays) {
    const auto name = [] (std::string_view given) {
        const std::string html = binding_paragraph ({0x1110, given, "", ""}, "");
        const std::size_t begin = html.find ('[') + 1;
        return html.substr (begin, html.find (']') - begin);
    };
    EXPECT_EQ (name ("clear selection"), "clear-selection");
    EXPECT_EQ (name ("swap main reactant"), "swap-main-reactant");
    EXPECT_EQ (name ("a  b"), "a- b");
    EXPECT_EQ (name ("end "), "end-");
}

TEST (references, a_picture_is_centred) {
    EXPECT_EQ (expand_references ("a@fog.png@b", ShortcutSet::standard, "/tmp"),
               "a<center><img src=/tmp/fog.png></center>b");
    EXPECT_EQ (image_html ("", "fog.png"), "<center><img src=fog.png></center>");
}

TEST (references, a_folder_that_would_end_the_attribute_stands_in_quotes) {
    EXPECT_EQ (image_html ("/my files", "a.png"), "<center><img src=\"/my files/a.png\"></center>");
    EXPECT_EQ (image_html ("/a\"b", "a.png"), "<center><img src=\"/a%22b/a.png\"></center>");
}

TEST (references, a_command_is_named_with_the_keys_in_force) {
    EXPECT_EQ (expand_references ("@undo-command@", ShortcutSet::standard, ""),
               "<b>Edit -> Undo</b> (Ctrl+Z)");
    EXPECT_EQ (expand_references ("@undo-command@", ShortcutSet::emacs, ""),
               "<b>Edit -> Undo</b> (Ctrl+-)");
    EXPECT_EQ (expand_references ("@new-reaction@", ShortcutSet::standard, ""),
               "<b>Tool bar -> new reaction</b>");
}

TEST (references, what_is_neither_stays) {
    EXPECT_EQ (expand_references ("a@b", ShortcutSet::standard, ""), "a@b");
    EXPECT_EQ (expand_references ("me@home, you@work", ShortcutSet::standard, ""),
               "me@home, you@work");
    EXPECT_EQ (expand_references ("@@undo-command@", ShortcutSet::standard, ""),
               "@<b>Edit -> Undo</b> (Ctrl+Z)");
}

} // namespace
} // namespace ostrand::manual
