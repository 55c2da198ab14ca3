// File names as texts, and what a folder holds.
#include "base/directory.h"
#include "base/path.h"
#include "support/support.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace ostrand {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using testing::TemporaryFolder;

/// Puts the remembered directory and the home back.
struct Place {
    Place () : directory (current_directory ()) {}
    ~Place () {
        set_current_directory (directory + "/xxx");
        setenv ("HOME", home.c_str (), 1);
        unsetenv ("USERPROFILE");
    }
    std::string directory;
    std::string home = std::getenv ("HOME") == nullptr ? "" : std::getenv ("HOME");
};

TEST (path, parts_of_names) {
    EXPECT_EQ (lower_extension ("/a.b/c.NET"), ".net");
    EXPECT_EQ (lower_extension ("/a.b/c"), "");
    EXPECT_EQ (base_name ("/a/b.c.net"), "b.c");
    EXPECT_EQ (base_name (".hidden"), ".hidden");
    EXPECT_EQ (folder_of ("/a/b"), "/a/");
    EXPECT_EQ (folder_of ("b"), "");
}

TEST (path, the_normal_form_has_no_dots_and_no_doubled_or_final_separators) {
    EXPECT_EQ (normalise_path ("/a/./b/../c//d/"), "/a/c/d");
    EXPECT_EQ (normalise_path ("a/b/.."), "a");
    EXPECT_EQ (normalise_path ("/a/."), "/a");
    EXPECT_EQ (normalise_path ("a/.."), ".");
    EXPECT_EQ (normalise_path (""), "");
    EXPECT_EQ (normalise_path ("a/..b/...c"), "a/..b/...c");
}

TEST (path, the_first_separator_stays) {
    EXPECT_EQ (normalise_path ("/"), "/");
    EXPECT_EQ (normalise_path ("//"), "/");
    EXPECT_EQ (normalise_path ("/.."), "/");
    EXPECT_EQ (normalise_path ("/../a"), "/a");
    EXPECT_EQ (normalise_path ("../../a"), "../../a");
    EXPECT_EQ (normalise_path ("a/../../b"), "../b");
}

TEST (path, the_normal_form_of_a_normal_form_is_itself_and_the_same_file) {
    std::mt19937 random (7);
    for (int i = 0; i < 20000; ++i) {
        std::string path (random () % 2 == 0 ? "/" : "");
        for (int part = static_cast<int> (random () % 8); part > 0; --part) {
            constexpr const char* parts[] = {"a", "bb", ".", "..", "", "...", "c.d"};
            path += std::string (parts[random () % 7]) + "/";
        }
        const std::string normal = normalise_path (path);
        ASSERT_EQ (normalise_path (normal), normal) << path;
        if (path.empty ()) continue;
        std::string expected = fs::path (path).lexically_normal ().string ();
        while (expected.size () > 1 && expected.ends_with ('/')) expected.pop_back ();
        ASSERT_EQ (normal, expected) << path;
    }
}

TEST (path, absolute_paths) {
    const Place place;
    setenv ("HOME", "/home/me", 1);
    set_current_directory ("/place/here/xxx");
    EXPECT_EQ (absolute_path ("", ""), "/place/here");
    EXPECT_EQ (absolute_path ("/base", ""), "/base");
    EXPECT_EQ (absolute_path ("", "a"), "/place/here/a");
    EXPECT_EQ (absolute_path ("", "."), "/place/here");
    EXPECT_EQ (absolute_path ("", "../a/"), "/place/a");
    EXPECT_EQ (absolute_path ("/base/b", "../a"), "/base/a");
    EXPECT_EQ (absolute_path ("/base", "/x/./y"), "/x/y");
    EXPECT_EQ (absolute_path ("", "/"), "/");
    EXPECT_EQ (absolute_path ("", "~"), "/home/me");
    EXPECT_EQ (absolute_path ("/base", "~/a"), "/home/me/a");
    EXPECT_EQ (absolute_path ("", "~a"), "/place/here/~a");
    EXPECT_EQ (absolute_path ("", "a/~"), "/place/here/a/~");
}

TEST (path, without_a_home_the_tilde_stays) {
    const Place place;
    unsetenv ("HOME");
    unsetenv ("USERPROFILE");
    EXPECT_EQ (absolute_path ("/base", "~/a"), "~/a");
    setenv ("USERPROFILE", "/other", 1);
    EXPECT_EQ (absolute_path ("/base", "~/a"), "/other/a");
}

TEST (path, the_current_directory_is_the_processs_until_it_is_set_and_never_moves_the_process) {
    const Place place;
    const fs::path process = fs::current_path ();
    EXPECT_EQ (current_directory (), process.string ());
    set_current_directory ("/somewhere/else/name");
    EXPECT_EQ (current_directory (), "/somewhere/else");
    set_current_directory ("name only"); // no folder in it
    EXPECT_EQ (current_directory (), "/somewhere/else");
    set_current_directory ("../up/name");
    EXPECT_EQ (current_directory (), "/somewhere/up");
    set_current_directory ("/name");
    EXPECT_EQ (current_directory (), "/");
    EXPECT_EQ (absolute_path ("", "a"), "/a");
    EXPECT_EQ (fs::current_path (), process);
}

TEST (wildcard, stars_marks_and_sets) {
    EXPECT_TRUE (wildcard_match ("*.net", "a.net"));
    EXPECT_TRUE (wildcard_match ("*.net", ".net"));
    EXPECT_FALSE (wildcard_match ("*.net", "a.nets"));
    EXPECT_TRUE (wildcard_match ("a*", "a"));
    EXPECT_TRUE (wildcard_match ("*", ""));
    EXPECT_TRUE (wildcard_match ("", ""));
    EXPECT_FALSE (wildcard_match ("", "a"));
    EXPECT_FALSE (wildcard_match ("a", ""));
    EXPECT_TRUE (wildcard_match ("a?c", "abc"));
    EXPECT_FALSE (wildcard_match ("a?c", "ac"));
    EXPECT_TRUE (wildcard_match ("[a-cx]1", "b1"));
    EXPECT_TRUE (wildcard_match ("[a-cx]1", "x1"));
    EXPECT_FALSE (wildcard_match ("[a-cx]1", "d1"));
    EXPECT_TRUE (wildcard_match ("[a-]", "-"));
    EXPECT_TRUE (wildcard_match ("*[0-9]", "ab7"));
    EXPECT_FALSE (wildcard_match ("A", "a")); // case counts
}

TEST (wildcard, a_set_without_its_end_is_a_bracket) {
    EXPECT_TRUE (wildcard_match ("[ab", "[ab"));
    EXPECT_FALSE (wildcard_match ("[ab", "a"));
    EXPECT_TRUE (wildcard_match ("a[", "a["));
    EXPECT_FALSE (wildcard_match ("[]", "[]")); // an empty set, which nothing fits
}

TEST (wildcard, letters_of_all_bytes_have_their_order) {
    EXPECT_TRUE (wildcard_match ("[\xE0-\xFF]", "\xE9"));
    EXPECT_FALSE (wildcard_match ("[a-z]", "\xE9"));
}

TEST (wildcard, many_stars_take_no_time) {
    std::string pattern;
    for (int i = 0; i < 60; ++i) pattern += "a*";
    EXPECT_FALSE (wildcard_match (pattern + "b", std::string (3000, 'a')));
    EXPECT_TRUE (wildcard_match (pattern, std::string (3000, 'a')));
}

/// The rule as it is told: a star tries every run.
bool plain_match (std::string_view pattern, std::string_view text) {
    if (pattern.empty ()) return text.empty ();
    if (pattern[0] == '*') {
        if (pattern.size () == 1) return true;
        for (std::size_t i = 0; i <= text.size (); ++i) {
            if (plain_match (pattern.substr (1), text.substr (i))) return true;
        }
        return false;
    }
    if (text.empty ()) return false;
    return (pattern[0] == '?' || pattern[0] == text[0]) &&
           plain_match (pattern.substr (1), text.substr (1));
}

TEST (wildcard, agrees_with_trying_everything) {
    std::mt19937 random (3);
    const auto word = [&random] (std::string_view letters, std::size_t longest) {
        std::string made;
        for (std::size_t n = random () % (longest + 1); n > 0; --n) {
            made += letters[random () % letters.size ()];
        }
        return made;
    };
    int fitting = 0;
    for (int i = 0; i < 50000; ++i) {
        const std::string pattern = word ("ab*?", 6);
        const std::string text = word ("ab", 8);
        ASSERT_EQ (wildcard_match (pattern, text), plain_match (pattern, text))
            << pattern << " " << text;
        fitting += wildcard_match (pattern, text) ? 1 : 0;
    }
    EXPECT_GT (fitting, 1000);
}

TEST (wildcard, a_filter_is_patterns_divided_by_blanks) {
    EXPECT_TRUE (matches_filter ("*.net *.xml", "a.xml"));
    EXPECT_FALSE (matches_filter ("*.net *.xml", "a.ssa"));
    EXPECT_TRUE (matches_filter ("", "anything"));
    EXPECT_TRUE (matches_filter ("  ", "anything"));
}

/// "kind name" of each entry.
std::vector<std::string> told (const DirectoryListing& listing) {
    std::vector<std::string> all;
    for (const DirectoryEntry& entry : listing.entries) {
        const char* kind = entry.kind == EntryKind::directory    ? "folder "
                           : entry.kind == EntryKind::executable ? "program "
                           : entry.kind == EntryKind::plain      ? ""
                                                                 : "grey ";
        all.push_back (kind + entry.name);
    }
    return all;
}

struct directory : ::testing::Test {
    void SetUp () override {
        fs::create_directory (folder / "sub");
        folder.write ("b.net", "");
        folder.write ("B.xml", "");
        folder.write (".hidden", "");
        chmod (folder.write ("run.sh", "").c_str (), 0755);
    }
    TemporaryFolder folder;
};

TEST_F (directory, names_are_sorted_by_their_bytes_and_have_their_kind) {
    const auto listing = list_directory (folder.path ().string (), "", false);
    ASSERT_TRUE (listing);
    EXPECT_THAT (told (*listing), ElementsAre ("B.xml", "b.net", "program run.sh", "folder sub"));
    EXPECT_EQ (listing->matches, 4U);
    EXPECT_EQ (listing->common, "");
}

TEST_F (directory, hidden_names_and_the_folder_above_are_shown_when_asked_for) {
    EXPECT_THAT (
        told (*list_directory (folder.path ().string (), "", true)),
        ElementsAre ("folder ..", ".hidden", "B.xml", "b.net", "program run.sh", "folder sub"));
    EXPECT_THAT (told (*list_directory (folder.path ().string (), ".", true)),
                 ElementsAre ("folder ..", ".hidden"));
    const auto root = list_directory ("/", "..", true);
    ASSERT_TRUE (root);
    EXPECT_TRUE (root->entries.empty ());
}

TEST_F (directory, only_names_with_the_prefix_count_and_their_common_start_is_told) {
    folder.write ("result-1.gz", "");
    folder.write ("result-22.gz", "");
    const auto listing = list_directory (folder.path ().string (), "re", false);
    EXPECT_THAT (told (*listing), ElementsAre ("result-1.gz", "result-22.gz"));
    EXPECT_EQ (listing->common, "result-");
    const auto one = list_directory (folder.path ().string (), "result-2", false);
    EXPECT_EQ (one->matches, 1U);
    EXPECT_EQ (one->common, "result-22.gz");
    const auto none = list_directory (folder.path ().string (), "zz", false);
    EXPECT_EQ (none->matches, 0U);
    EXPECT_EQ (none->common, "zz");
}

TEST_F (directory, what_the_filter_does_not_name_is_grey_but_folders_never) {
    EXPECT_THAT (told (*list_directory (folder.path ().string (), "", false, "*.net *.xml")),
                 ElementsAre ("B.xml", "b.net", "grey run.sh", "folder sub"));
}

TEST_F (directory, a_link_is_what_it_points_to) {
    fs::create_symlink ("sub", folder / "to-folder");
    fs::create_symlink ("nothing", folder / "to-nothing");
    EXPECT_THAT (told (*list_directory (folder.path ().string (), "to-", false)),
                 ElementsAre ("folder to-folder", "to-nothing"));
}

TEST_F (directory, of_600_names_512_are_listed_and_all_shorten_what_is_common) {
    for (int i = 0; i < 600; ++i) {
        folder.write ("x" + std::to_string (1000 + i), "");
    }
    folder.write ("xyz", ""); // the very last
    const auto listing = list_directory (folder.path ().string (), "x", false);
    EXPECT_EQ (listing->entries.size (), 512U);
    EXPECT_EQ (listing->matches, 601U);
    EXPECT_EQ (listing->common, "x");
}

TEST_F (directory, long_names_fill_the_list_earlier) {
    for (int i = 0; i < 200; ++i) {
        folder.write ("y" + std::string (240, 'y') + std::to_string (1000 + i), "");
    }
    const auto listing = list_directory (folder.path ().string (), "y", false);
    EXPECT_EQ (listing->entries.size (), 32768U / (245 + 2));
    EXPECT_EQ (listing->matches, 200U);
}

TEST_F (directory, a_folder_that_cannot_be_read_gives_nothing) {
    EXPECT_FALSE (list_directory ((folder / "none").string (), "", false));
    EXPECT_FALSE (list_directory ((folder / "b.net").string (), "", false));
}

TEST_F (directory, a_dot_is_the_remembered_directory) {
    const Place place;
    set_current_directory ((folder / "xxx").string ());
    EXPECT_EQ (list_directory (".", "", false)->matches, 4U);
    EXPECT_EQ (list_directory ("sub", "", false)->matches, 0U);
}

} // namespace
} // namespace ostrand
