// Files, tabs, titles and questions, from the start to the end of a session.
#include "bench.h"

#include "editor/document_files.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;
namespace fs = std::filesystem;

constexpr const char* one_node = "[N1 0 2 8 8\n[S1 0 50 60 0 3 13{a}-]\n]";
constexpr const char* other_node = "[N1 0 2 8 8\n[S1 0 70 80 0 3 9{b}-]\n]";

void edit (Bench& b) { b.run (Command::new_protein); }

TEST (bring_up, the_start_is_one_empty_tab_without_a_name) {
    Bench b;
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    EXPECT_EQ (b.bench->window_title (), "Ostrand");
    EXPECT_EQ (b.bench->tab_label (0), "new tab");
    EXPECT_TRUE (b.canvas ().is_empty ());
    EXPECT_FALSE (b.canvas ().modified ());
    EXPECT_EQ (b.network ().x (), 8);
    EXPECT_EQ (b.network ().y (), 8);
    EXPECT_EQ (b.canvas ().mode, Mode::free);
    EXPECT_EQ (b.canvas ().duration (), 10);
    EXPECT_EQ (b.undo_bytes (), "");
}

TEST (bring_up, an_opened_file_gives_title_and_label_and_one_snapshot) {
    Bench b;
    b.open_text (one_node, "with a blank.net");
    EXPECT_EQ (b.bench->window_title (), "with a blank.net");
    EXPECT_EQ (b.bench->tab_label (0), "with a blank.net");
    EXPECT_FALSE (b.canvas ().modified ());
    EXPECT_EQ (b.records (), (std::vector<std::string>{"snapshot"}));
    EXPECT_NE (b.undo_bytes ().find ("with a blank.net\n#modified = 0\n[N1"), std::string::npos);
}

TEST (bring_up, an_edit_puts_stars_on_title_and_label_and_saving_takes_them_away) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    EXPECT_EQ (b.bench->window_title (), "start.net*");
    EXPECT_EQ (b.bench->tab_label (0), "start.net*");
    b.run (Command::save_file);
    EXPECT_EQ (b.bench->window_title (), "start.net");
    EXPECT_EQ (testing::file_text (b.folder / "start.net"),
               "# Lattrix: 1.2\n" + b.whole_text () + "\n");
    EXPECT_EQ (b.record_count (), 2U); // saving is no change
}

TEST (bring_up, what_was_saved_is_opened_again) {
    Bench b;
    b.open_rich ();
    edit (b);
    b.run (Command::save_file);
    const std::string saved = b.text ();
    edit (b);
    b.world.yes_no_answers = {true};
    b.run (Command::reopen_file);
    EXPECT_EQ (b.text (), saved);
    EXPECT_EQ (b.world.questions,
               (std::vector<std::string>{"Modified network, still want to reopen it|[y/n]: |?"}));
    EXPECT_FALSE (b.canvas ().modified ());
    b.canvas ().undo ();
    EXPECT_NE (b.text (), saved);
}

TEST (bring_up, opening_over_an_edit_asks_and_no_leaves_everything) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    const std::string before = b.text ();
    b.world.file_answers = {{b.folder.write ("o.net", other_node)}};
    b.world.yes_no_answers = {false};
    b.run (Command::open_file);
    EXPECT_EQ (b.world.questions, (std::vector<std::string>{
                                      "Modified network, still want to open a new one|[y/n]: |?"}));
    EXPECT_EQ (b.text (), before);
    b.world.yes_no_answers = {true};
    b.run (Command::open_file);
    EXPECT_EQ (b.bench->window_title (), "o.net");
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), before);
    EXPECT_EQ (b.bench->window_title (), "start.net*");
}

TEST (bring_up, a_file_that_cannot_be_read_leaves_what_is_there) {
    Bench b;
    b.open_text (one_node);
    const std::string before = b.text ();
    const std::string noise = b.folder.write ("noise.net", "something else");
    for (const std::string& path : {noise, (b.folder / "none.net").string ()}) {
        b.world.file_answers = {{path}};
        b.run (Command::open_file);
        EXPECT_EQ (b.world.status, "Cannot load " + path);
        EXPECT_EQ (b.text (), before);
        EXPECT_EQ (b.record_count (), 1U);
    }
    fs::remove (b.folder / "start.net");
    b.run (Command::reopen_file);
    EXPECT_EQ (b.world.status, "Cannot reload " + (b.folder / "start.net").string ());
    EXPECT_EQ (b.text (), before);
}

TEST (bring_up, a_file_is_not_opened_twice) {
    Bench b;
    b.open_text (one_node);
    const std::string path = (b.folder / "start.net").string ();
    for (const Command command : {Command::load_file, Command::open_file}) {
        b.world.alerts.clear ();
        b.world.file_answers = {{path}};
        b.run (command);
        EXPECT_EQ (b.world.alerts,
                   (std::vector<std::string>{"File already loaded in another tab..."}));
    }
    b.bench->smart_dialog = true;
    b.world.file_answers = {{path}};
    b.run (Command::load_file);
    EXPECT_EQ (b.world.status, "File already loaded in another tab...");
    EXPECT_EQ (b.world.alerts.size (), 1U);
    EXPECT_EQ (b.bench->tabs ().count (), 1);
}

TEST (bring_up, load_opens_a_tab_of_its_own_on_top_and_several_at_once) {
    Bench b;
    b.open_text (one_node);
    b.world.file_answers = {{b.folder.write ("o.net", other_node),
                             b.folder.write ("p.net", other_node),
                             (b.folder / "none.net").string ()}};
    b.run (Command::load_file);
    EXPECT_EQ (b.world.status, "Cannot load " + (b.folder / "none.net").string ());
    ASSERT_EQ (b.bench->tabs ().count (), 4);
    EXPECT_EQ (b.bench->tab_label (1), "o.net");
    EXPECT_EQ (b.bench->tab_label (2), "p.net");
    EXPECT_EQ (b.bench->tab_label (3), "New tab");
    EXPECT_EQ (b.bench->tabs ().active (), 3);
    EXPECT_EQ (b.bench->window_title (), "Ostrand");
    b.bench->select_tab (1);
    EXPECT_EQ (b.bench->window_title (), "o.net");
}

TEST (bring_up, there_are_no_more_than_32_tabs) {
    Bench b;
    for (int i = 1; i < 32; ++i) b.run (Command::new_tab);
    EXPECT_EQ (b.bench->tabs ().count (), 32);
    b.run (Command::new_tab);
    EXPECT_EQ (b.world.status, "no more than 32 tabs");
    b.world.status.clear ();
    b.world.file_answers = {{b.folder.write ("o.net", other_node)}};
    b.run (Command::load_file);
    EXPECT_EQ (b.world.status, "no more than 32 tabs");
    EXPECT_EQ (b.bench->tabs ().count (), 32);
    b.bench->close_tab (0);
    b.run (Command::new_tab);
    EXPECT_EQ (b.bench->tabs ().count (), 32);
}

TEST (bring_up, insert_merges_to_the_right_and_keeps_the_name) {
    Bench b;
    b.open_text (one_node);
    const std::string before = b.text ();
    b.world.file_answers = {{b.folder.write ("o.net", other_node)}};
    b.run (Command::insert_file);
    EXPECT_EQ (b.network ().nb_nodes (), 2);
    EXPECT_GT (b.node ("b").x (), b.node ("a").x ());
    EXPECT_EQ (b.bench->window_title (), "start.net*");
    EXPECT_EQ (b.undo_and_redo (), "");
    b.canvas ().undo ();
    EXPECT_EQ (b.text (), before);
    b.world.file_answers = {{b.folder.write ("noise.net", "nothing of ours")}};
    b.run (Command::insert_file);
    EXPECT_EQ (b.text (), before);
    EXPECT_EQ (b.world.status, "Cannot load " + (b.folder / "noise.net").string ());
}

TEST (bring_up, insert_into_an_empty_tab_opens) {
    Bench b;
    b.world.file_answers = {{b.folder.write ("o.net", other_node)}};
    b.run (Command::insert_file);
    EXPECT_EQ (b.bench->window_title (), "o.net");
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (bring_up, saving_without_a_name_asks_for_one_and_suggests_untitled) {
    Bench b;
    edit (b);
    b.run (Command::save_file);
    ASSERT_EQ (b.world.file_questions.size (), 1U);
    EXPECT_EQ (b.world.file_questions[0].prompt, "Save as: ");
    EXPECT_EQ (b.world.file_questions[0].initial, "Untitled.net");
    EXPECT_TRUE (b.canvas ().modified ());
    const std::string path = (b.folder / "new.net").string ();
    b.world.file_answers = {{path}};
    b.run (Command::save_file);
    EXPECT_EQ (b.canvas ().file_name (), path);
    EXPECT_EQ (b.bench->tab_label (0), "new.net");
    EXPECT_TRUE (fs::exists (path));
}

TEST (bring_up, a_save_that_fails_leaves_star_and_name) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    const std::string path = (b.folder / "no folder" / "x.net").string ();
    b.world.file_answers = {{path}};
    b.run (Command::save_as);
    EXPECT_EQ (b.world.status, "Cannot save '" + path + "'");
    EXPECT_EQ (b.bench->window_title (), "start.net*");
}

TEST (bring_up, a_name_given_later_holds_for_what_was_before) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    const std::string path = (b.folder / "later.net").string ();
    b.world.file_answers = {{path}};
    b.run (Command::save_as);
    edit (b);
    b.canvas ().undo ();
    b.canvas ().undo ();
    EXPECT_EQ (b.canvas ().file_name (), path);
    EXPECT_EQ (b.bench->tab_label (0), "later.net*"); // not what the file holds
    b.canvas ().undo ();
    EXPECT_TRUE (b.canvas ().is_empty ());
    b.canvas ().redo ();
    EXPECT_EQ (b.canvas ().file_name (), path);
}

TEST (bring_up, a_model_text_that_is_saved_says_what_it_does_not_hold) {
    Bench b;
    b.open_rich ();
    b.world.file_answers = {{(b.folder / "m.ssa").string ()}};
    b.run (Command::save_as);
    EXPECT_EQ (b.world.status, "Saved as a model text: the drawing is not in that file.");
}

TEST (bring_up, saving_in_other_formats_leaves_the_document_as_it_is) {
    Bench b;
    b.open_text ("[N2 0 2 8 8\n[S1 0 50 60 0 3 13{a}-]\n[S2 0 150 60 0 3 13{a}-]\n]");
    const std::string before = b.text ();
    for (const char* name : {"x.xml", "x.ssa"}) {
        b.world.file_answers = {{(b.folder / name).string ()}};
        b.run (Command::save_as);
        EXPECT_EQ (b.text (), before) << name;
    }
}

TEST (bring_up, a_file_that_another_program_wrote_is_not_overwritten_without_a_word) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    const std::string path = b.folder.write ("start.net", "somebody else's");
    b.run (Command::save_file);
    EXPECT_EQ (
        b.world.questions,
        (std::vector<std::string>{"Another program changed this file, overwrite it|[y/N]: |?"}));
    EXPECT_EQ (testing::file_text (path), "somebody else's");
    EXPECT_TRUE (b.canvas ().modified ());
    b.world.yes_no_answers = {true};
    b.run (Command::save_file);
    EXPECT_FALSE (b.canvas ().modified ());
    b.run (Command::save_file); // our own writing is no change
    EXPECT_EQ (b.world.questions.size (), 2U);
}

TEST (bring_up, quitting_asks_only_when_something_is_modified) {
    Bench b;
    b.run (Command::quit);
    EXPECT_TRUE (b.world.ended);
    b.world.ended = false;
    edit (b);
    b.run (Command::new_tab);
    b.run (Command::quit);
    EXPECT_FALSE (b.world.ended);
    EXPECT_EQ (b.world.questions,
               (std::vector<std::string>{"Modified network, still quit|[y/n]: |?"}));
    b.world.yes_no_answers = {true};
    b.run (Command::quit);
    EXPECT_TRUE (b.world.ended);
}

TEST (bring_up, the_cross_of_a_tab_asks_for_what_would_be_lost) {
    Bench b;
    b.bench->close_tab (0);
    edit (b);
    b.bench->close_tab (0);
    b.run (Command::new_tab);
    b.bench->close_tab (1); // nothing in it
    EXPECT_EQ (b.bench->tabs ().count (), 1);
    b.run (Command::new_tab);
    b.bench->close_tab (0);
    EXPECT_EQ (b.world.questions, (std::vector<std::string>{
                                      "Really quit|[y/n]: |?",
                                      "Modified network, still quit|[y/n]: |?",
                                      "Modified network, still close|[y/n]: |?",
                                  }));
    EXPECT_EQ (b.bench->tabs ().count (), 2);
    EXPECT_FALSE (b.world.ended);
}

TEST (bring_up, the_end_leaves_no_undo_file) {
    Bench b;
    edit (b);
    b.run (Command::new_tab);
    edit (b);
    EXPECT_EQ (fs::exists (b.home () + "/.kill_stack_0.dat"), true);
    EXPECT_EQ (fs::exists (b.home () + "/.kill_stack_1.dat"), true);
    b.bench->close_all ();
    EXPECT_TRUE (fs::is_empty (b.home ()));
}

TEST (bring_up, files_of_the_command_line_each_have_a_tab_the_last_on_top) {
    Bench b;
    b.folder.write ("a.net", one_node);
    b.folder.write ("b.net", other_node);
    b.bench->open_command_line ({"a.net", "b.net"});
    ASSERT_EQ (b.bench->tabs ().count (), 2);
    EXPECT_EQ (b.bench->tab_label (0), "a.net");
    EXPECT_EQ (b.bench->window_title (), "b.net");
}

TEST (bring_up, a_first_name_that_cannot_be_read_is_kept_for_saving) {
    Bench b;
    b.bench->open_command_line ({"new.net"});
    EXPECT_EQ (b.canvas ().file_name (), (b.folder / "new.net").string ());
    edit (b);
    b.run (Command::save_file);
    EXPECT_TRUE (fs::exists (b.folder / "new.net"));
}

TEST (bring_up, dropped_names_open_tabs) {
    Bench b;
    const std::string one = b.folder.write ("a.net", one_node);
    const std::string two = b.folder.write ("b.net", other_node);
    b.bench->accept_dropped_paths ("file://" + one + "\r\n" + two + "\n" + one + "\n");
    EXPECT_EQ (b.bench->tabs ().count (), 3);
    EXPECT_EQ (b.bench->window_title (), "b.net");
}

TEST (bring_up, a_new_canvas_undoes_nothing) {
    Bench b;
    b.canvas ().undo ();
    b.canvas ().redo ();
    EXPECT_TRUE (b.canvas ().is_empty ());
    EXPECT_EQ (b.record_count (), 0U);
}

TEST (bring_up, a_load_undone_is_an_empty_untitled_unmodified_network_and_redo_brings_it_back) {
    Bench b;
    b.open_text (one_node);
    const std::string loaded = b.text ();
    b.canvas ().undo ();
    EXPECT_TRUE (b.canvas ().is_empty ());
    EXPECT_EQ (b.canvas ().file_name (), std::nullopt);
    EXPECT_EQ (b.bench->window_title (), "Ostrand");
    EXPECT_FALSE (b.canvas ().modified ());
    EXPECT_EQ (b.network ().x (), 8);
    b.canvas ().redo ();
    EXPECT_EQ (b.text (), loaded);
    EXPECT_EQ (b.bench->window_title (), "start.net");
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (bring_up, undo_after_a_save_is_modified_again) {
    Bench b;
    b.open_text (one_node);
    edit (b);
    b.run (Command::save_file);
    b.canvas ().undo ();
    EXPECT_TRUE (b.canvas ().modified ()); // the file holds the edit
    b.canvas ().redo ();
    EXPECT_TRUE (b.canvas ().modified ()); // the flag of the record
}

TEST (bring_up, a_new_record_takes_the_place_of_what_was_undone) {
    Bench b;
    b.open_text (one_node);
    b.click (b.on (b.node ("a")));
    b.key (document::keys::right);
    b.canvas ().undo ();
    EXPECT_TRUE (b.canvas ().history ().can_redo ());
    b.world.popup_answers = {4};
    b.click (b.on (b.node ("a"), test::ctrl), 3);
    EXPECT_FALSE (b.canvas ().history ().can_redo ());
    EXPECT_EQ (b.records (), (std::vector<std::string>{"snapshot", "selection 1", "colour 1 4"}));
    EXPECT_EQ (b.undo_bytes ().size (), static_cast<std::size_t> (b.canvas ().history ().end ()));
}

TEST (bring_up, undo_of_a_selection_brings_the_former_one_and_nothing_else) {
    Bench b;
    b.open_rich ();
    const std::string text = b.text ();
    b.click (b.on (b.node ("G")));
    const std::vector<std::int32_t> first = b.selected ();
    b.click (b.on (b.node ("R")));
    b.canvas ().undo ();
    EXPECT_EQ (b.selected (), first);
    EXPECT_EQ (b.text (), text);
    EXPECT_FALSE (b.canvas ().modified ());
}

TEST (bring_up, deleted_objects_return_selected) {
    Bench b;
    b.open_rich ();
    b.click (b.on (b.node ("G")));
    const std::vector<std::int32_t> chosen = b.selected ();
    b.key (document::keys::delete_key);
    EXPECT_EQ (b.network ().nb_nodes (), 9);
    b.canvas ().undo ();
    EXPECT_EQ (b.network ().nb_nodes (), 10);
    EXPECT_EQ (b.selected (), chosen);
    EXPECT_TRUE (b.node ("G").selected);
}

} // namespace
} // namespace ostrand::editor
