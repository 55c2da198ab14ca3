// Drawings written from the menu: names asked for, scales, all tabs at once.
#include "bench.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace ostrand::editor {
namespace {

using test::Bench;
namespace fs = std::filesystem;

constexpr const char* network = "[N1 0 2 8 8\n[S1 0 50 60 0 3 13{glc}-]\n]";

std::string first_bytes (const fs::path& path, std::size_t size) {
    return testing::file_text (path).substr (0, size);
}

TEST (export_commands, png_asks_for_a_name_and_a_scale) {
    Bench b;
    b.open_text (network);
    b.world.file_answers = {{(b.folder / "a.png").string ()}};
    b.world.value_answers = {"1"};
    b.run (Command::export_png);
    EXPECT_EQ (b.world.file_questions.back ().initial, (b.folder / "start.png").string ());
    EXPECT_TRUE (b.world.file_questions.back ().saving);
    EXPECT_EQ (first_bytes (b.folder / "a.png", 4), "\x89PNG");
    EXPECT_EQ (b.world.status, "Written: " + (b.folder / "a.png").string ());
}

TEST (export_commands, a_scale_that_is_none_writes_nothing_and_says_so) {
    Bench b;
    b.open_text (network);
    b.world.values_are_checked = false;
    b.world.file_answers = {{(b.folder / "a.png").string ()}};
    b.world.value_answers = {"100"};
    b.run (Command::export_png);
    EXPECT_FALSE (fs::exists (b.folder / "a.png"));
    EXPECT_EQ (b.world.status,
               "Nothing was written: a scale is a number from 0.1 to 20, not '100'");
}

TEST (export_commands, who_gives_up_at_the_name_or_the_scale_writes_nothing) {
    Bench b;
    b.open_text (network);
    const auto before = b.folder.names ();
    b.run (Command::export_png);
    b.world.file_answers = {{(b.folder / "a.png").string ()}};
    b.run (Command::export_png);
    b.run (Command::export_all_tabs);
    EXPECT_EQ (b.folder.names (), before);
}

TEST (export_commands, a_picture_that_cannot_be_written_is_told) {
    Bench b;
    b.open_text (network);
    b.world.file_answers = {{"/nowhere/a.png"}};
    b.world.value_answers = {"2"};
    b.run (Command::export_png);
    EXPECT_TRUE (b.world.status.starts_with ("Cannot write '/nowhere/a.png': ")) << b.world.status;
}

/// Three tabs: start.net, another start.net, and one that was never saved.
void open_three_tabs (Bench& b) {
    b.open_text (network);
    b.run (Command::new_tab);
    fs::create_directory (b.folder / "other");
    b.open_text (network, "other/start.net");
    b.run (Command::new_tab);
    b.run (Command::new_molecule);
}

TEST (export_commands, all_tabs_are_written_each_under_its_name) {
    for (const std::string suffix : {".pdf", ".svg", ".png"}) {
        Bench b;
        open_three_tabs (b);
        b.world.file_answers = {{(b.folder / ("figure" + suffix)).string ()}};
        b.world.value_answers = {"0.5"};
        b.run (Command::export_all_tabs);
        for (const std::string name : {"figure start", "figure start 2", "figure Untitled"})
            EXPECT_GT (testing::file_text (b.folder / (name + suffix)).size (), 100U) << name;
        EXPECT_FALSE (fs::exists (b.folder / ("figure" + suffix)));
        EXPECT_EQ (b.world.status, "Written: 3 drawings, " +
                                       (b.folder / ("figure Untitled" + suffix)).string () +
                                       " the last");
    }
}

TEST (export_commands, files_that_are_there_are_kept_unless_the_user_agrees) {
    Bench b;
    open_three_tabs (b);
    const fs::path kept = b.folder.write ("figure start.svg", "mine");
    b.folder.write ("figure Untitled.svg", "mine");
    b.world.file_answers = {{(b.folder / "figure.svg").string ()}};
    b.world.yes_no_answers = {false};
    b.run (Command::export_all_tabs);
    EXPECT_EQ (b.world.questions.back (), "Overwrite 'figure start.svg' and 1 more|[y/N]: |?");
    EXPECT_EQ (testing::file_text (kept), "mine");
    EXPECT_FALSE (fs::exists (b.folder / "figure start 2.svg"));
    b.world.file_answers = {{(b.folder / "figure.svg").string ()}};
    b.world.yes_no_answers = {true};
    b.run (Command::export_all_tabs);
    EXPECT_EQ (first_bytes (kept, 5), "<?xml");
}

TEST (export_commands, another_ending_is_refused_in_words) {
    Bench b;
    b.open_text (network);
    b.world.file_answers = {{(b.folder / "figure.gif").string ()}};
    b.run (Command::export_all_tabs);
    EXPECT_EQ (b.world.status, "Nothing was written: '" + (b.folder / "figure.gif").string () +
                                   "' ends in none of .pdf, .svg, .png");
}

TEST (export_commands, a_tab_that_cannot_be_written_ends_it_with_the_reason) {
    Bench b;
    b.open_text (network);
    b.world.file_answers = {{"/nowhere/figure.pdf"}};
    b.run (Command::export_all_tabs);
    EXPECT_TRUE (b.world.status.starts_with ("Cannot write '/nowhere/figure start.pdf': "))
        << b.world.status;
}

} // namespace
} // namespace ostrand::editor
