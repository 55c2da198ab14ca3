// File names typed in the line above the canvas.
#include "editor/name_completion.h"

#include "base/path.h"
#include "base/text.h"
#include "support/support.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ostrand::editor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

constexpr const char* networks = "*.net *.xml";

/// A folder of files, which "." means while the test runs.
struct name_completion : ::testing::Test {
    name_completion () {
        set_current_directory (folder.path ().string () + "/");
        for (const char* const name : {"glycolysis.net", "glycine.net", "glossary.txt", ".hidden"})
            folder.write (name, "");
        fs::create_directories (folder / "models" / "real");
        folder.write ("models/cascade.xml", "");
    }
    ~name_completion () override { set_current_directory (before + "/"); }

    static std::vector<std::string> shown (const Completion& completion) {
        std::vector<std::string> names;
        for (const DirectoryEntry& entry : completion.listing.entries) names.push_back (entry.name);
        return names;
    }

    std::string before = current_directory ();
    testing::TemporaryFolder folder;
};

TEST_F (name_completion, a_typed_name_is_divided_at_the_last_slash) {
    EXPECT_EQ (split_typed_name ("a").folder, ".");
    EXPECT_EQ (split_typed_name ("a").prefix, "a");
    EXPECT_EQ (split_typed_name ("f/g/a").folder, "f/g");
    EXPECT_EQ (split_typed_name ("f/g/a").front, "f/g/");
    EXPECT_EQ (split_typed_name ("/a").folder, "/");
    EXPECT_EQ (split_typed_name ("/a").prefix, "a");
    EXPECT_EQ (split_typed_name ("f/").prefix, "");
}

TEST_F (name_completion, tab_goes_as_far_as_all_names_agree_and_shows_them) {
    const Completion several = complete_name ("gl", networks);
    EXPECT_EQ (several.text, "gl");
    EXPECT_TRUE (several.show_list);
    EXPECT_FALSE (several.finished);
    EXPECT_THAT (shown (several), ElementsAre ("glossary.txt", "glycine.net", "glycolysis.net"));
    EXPECT_EQ (complete_name ("gly", networks).text, "glyc");
}

TEST_F (name_completion, what_the_filter_does_not_name_stays_in_grey_and_can_be_typed) {
    const Completion several = complete_name ("gl", networks);
    EXPECT_EQ (several.listing.entries[0].kind, EntryKind::not_in_filter);
    EXPECT_EQ (several.listing.entries[1].kind, EntryKind::plain);
    const Completion typed = complete_name ("glo", networks);
    EXPECT_TRUE (typed.finished);
    EXPECT_EQ (typed.text, "glossary.txt");
}

TEST_F (name_completion, the_only_file_is_the_answer) {
    const Completion only = complete_name ("glycol", networks);
    EXPECT_TRUE (only.finished);
    EXPECT_FALSE (only.show_list);
    EXPECT_EQ (only.text, "glycolysis.net");
}

TEST_F (name_completion, the_only_folder_is_entered_and_its_names_are_shown) {
    for (const Completion& entered :
         {complete_name ("mod", networks), take_name ("models", networks),
          pick_name ("m", {EntryKind::directory, "models"}, networks)}) {
        EXPECT_EQ (entered.text, "models/");
        EXPECT_FALSE (entered.finished);
        EXPECT_TRUE (entered.show_list);
        EXPECT_THAT (shown (entered), ElementsAre ("cascade.xml", "real"));
    }
    // An empty folder has nothing to show.
    EXPECT_FALSE (complete_name ("models/r", networks).show_list);
    EXPECT_EQ (complete_name ("models/r", networks).text, "models/real/");
}

TEST_F (name_completion, what_nothing_begins_with_stays_for_tab_and_is_taken_by_enter) {
    const Completion tab = complete_name ("new.net", networks);
    EXPECT_EQ (tab.text, "new.net");
    EXPECT_FALSE (tab.finished);
    EXPECT_FALSE (tab.show_list);
    EXPECT_TRUE (take_name ("new.net", networks).finished);
    EXPECT_FALSE (take_name ("none/new.net", networks).show_list);
    EXPECT_FALSE (take_name ("", networks).finished);
}

TEST_F (name_completion, enter_takes_an_exact_name_though_others_begin_so_too) {
    folder.write ("gl", "");
    EXPECT_TRUE (take_name ("gl", networks).finished);
    EXPECT_EQ (take_name ("gl", networks).text, "gl");
    EXPECT_TRUE (take_name ("gly", networks).show_list);
}

TEST_F (name_completion, names_with_a_dot_show_when_one_is_typed) {
    EXPECT_THAT (shown (complete_name ("", networks)),
                 ElementsAre ("glossary.txt", "glycine.net", "glycolysis.net", "models"));
    EXPECT_THAT (shown (complete_name (".", networks)), ElementsAre ("..", ".hidden"));
    EXPECT_TRUE (complete_name (".h", networks).finished);
}

TEST_F (name_completion, of_600_names_512_are_shown_and_all_are_completed) {
    for (int i = 0; i < 600; ++i) folder.write (format_text ("sweep_run_%03d.net", i), "");
    const Completion all = complete_name ("sw", networks);
    EXPECT_EQ (all.text, "sweep_run_");
    EXPECT_EQ (all.listing.entries.size (), most_listed);
    EXPECT_EQ (all.listing.matches, 600U);
    // One that is not among the shown ones may end what they have in common.
    folder.write ("swap.net", "");
    EXPECT_EQ (complete_name ("sw", networks).text, "sw");
    EXPECT_TRUE (complete_name ("sweep_run_599", networks).finished);
}

TEST_F (name_completion, a_name_of_the_list_takes_the_place_of_what_was_typed) {
    const Completion picked = pick_name ("models/ca", {EntryKind::plain, "cascade.xml"}, networks);
    EXPECT_TRUE (picked.finished);
    EXPECT_EQ (picked.text, "models/cascade.xml");
}

/// Whatever is typed, Tab never loses a letter of it, and what it adds is there.
TEST_F (name_completion, tab_only_adds) {
    std::mt19937 random (7);
    const std::string letters = "glyc./mode~ *";
    for (int i = 0; i < 800; ++i) {
        std::string typed;
        for (std::size_t n = random () % 8; n > 0; --n)
            typed += letters[random () % letters.size ()];
        const Completion done = complete_name (typed, networks);
        EXPECT_EQ (done.text.substr (0, typed.size ()), typed);
        EXPECT_TRUE (!done.finished || fs::exists (absolute_path ("", done.text))) << typed;
    }
}

} // namespace
} // namespace ostrand::editor
