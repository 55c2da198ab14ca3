// What a dead editor left behind, offered and restored.
#include "shell/running_editor.h"

#include <gtest/gtest.h>

namespace ostrand::testing {
namespace {

/// An editor that died with a new protein in a network without a name.
void die_with_a_protein (Editor& editor) {
    editor.start ({}, "Ostrand");
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (
        wait_until ([&] { return editor.undo_file ().find ("protein") != std::string::npos; }));
    editor.kill ();
    editor.program ().wait ();
    ASSERT_EQ (editor.undo_file_count (), 1);
}

TEST (recovery_window, restore_takes_everything_without_a_question) {
    Editor editor;
    die_with_a_protein (editor);
    const std::string left = editor.undo_file ();
    editor.start ({"--restore"}, "Ostrand\\*?");
    EXPECT_TRUE (editor.shows_colour (100, canvas_y, 300, 150, 0xC0FFFF, 300)); // the protein
    // Its history is there: undo takes the protein back.
    editor.key ("ctrl+z");
    EXPECT_TRUE (wait_until ([&] {
        return editor.display ().screenshot ().count (100, canvas_y, 300, 150, 0xC0FFFF) == 0;
    }));
    editor.key ("ctrl+y");
    EXPECT_TRUE (editor.shows_colour (100, canvas_y, 300, 150, 0xC0FFFF, 300));
}

TEST (recovery_window, no_restore_leaves_all_as_it_is) {
    Editor editor;
    die_with_a_protein (editor);
    const std::string left = editor.undo_file ();
    editor.start ({"--no-restore"}, "Ostrand");
    EXPECT_EQ (editor.undo_file_count (), 2);
    EXPECT_EQ (editor.undo_file (), left);
    editor.key ("ctrl+q");
    EXPECT_EQ (editor.program ().wait (), 0);
    EXPECT_EQ (editor.undo_file (), left);
}

TEST (recovery_window, is_asked_at_the_start_and_enter_restores) {
    Editor editor;
    die_with_a_protein (editor);
    editor.launch ({});
    std::this_thread::sleep_for (std::chrono::milliseconds (1500));
    editor.key ("Return");
    EXPECT_TRUE (editor.shows_colour (0, 0, 1200, 900, 0xC0FFFF, 1000));
}

TEST (recovery_window, escape_is_later_and_loses_nothing) {
    Editor editor;
    die_with_a_protein (editor);
    const std::string left = editor.undo_file ();
    editor.launch ({});
    std::this_thread::sleep_for (std::chrono::milliseconds (1500));
    editor.key ("Escape");
    std::this_thread::sleep_for (std::chrono::milliseconds (500));
    EXPECT_TRUE (editor.program ().running ());
    EXPECT_EQ (editor.undo_file (), left);
}

TEST (recovery_window, a_terminated_editor_leaves_its_undo_files) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (
        wait_until ([&] { return editor.undo_file ().find ("protein") != std::string::npos; }));
    editor.signal (SIGTERM);
    editor.program ().wait ();
    EXPECT_FALSE (editor.program ().running ());
    EXPECT_EQ (editor.undo_file_count (), 1);
}

TEST (recovery_window, what_a_running_editor_holds_is_not_offered) {
    Editor editor;
    editor.start ({}, "Ostrand");
    editor.click (new_protein_x, tool_bar_y);
    ASSERT_TRUE (
        wait_until ([&] { return editor.undo_file ().find ("protein") != std::string::npos; }));
    const std::string held = editor.undo_file ();
    const Environment at_home ("HOME", editor.home ().path ().string ());
    RunningProgram second ({"ostrand", "--restore"});
    EXPECT_TRUE (wait_until ([&] { return editor.undo_file_count () == 2; }));
    std::this_thread::sleep_for (std::chrono::milliseconds (300));
    EXPECT_EQ (editor.undo_file (), held);
    EXPECT_EQ (editor.undo_file (1).find ("protein"), std::string::npos);
}

} // namespace
} // namespace ostrand::testing
