// From a folder of sources to rendered files, arrays and tables, and what of it is done again.
#include "image_maker/make_images.h"

#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace ostrand::image_maker {
namespace {

namespace fs = std::filesystem;

using ::testing::HasSubstr;

using testing::file_text;
using testing::TemporaryFolder;

/// A small folder of sources: two images of the interface, one of the manual, an icon in two sizes.
class MakeImages : public ::testing::Test {
  protected:
    MakeImages () {
        for (const char* name : {"interface", "manual", "icon"}) {
            fs::create_directories (assets_ / name);
        }
        assets_.write ("palette.txt", "ink #111111 #eeeeee\nred #cc0000 #cc0000\n");
        assets_.write ("images.txt", "# a comment\nmanual page\ninterface both-alike\n"
                                     "interface plain\nicon sign-16\nicon sign-20\n");
        write ("interface/plain.svg", 10, "#111111");
        write ("interface/both-alike.svg", 8, "#cc0000");
        write ("manual/page.svg", 12, "#111111");
        write ("icon/sign.svg", 64, "#123456");
        write ("icon/sign-16.svg", 16, "#654321");
    }
    void write (std::string_view name, int size, const std::string& color) {
        const std::string side = std::to_string (size);
        assets_.write (name, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + side +
                                 "\" height=\"" + side + "\">" + "<rect width=\"" + side +
                                 "\" height=\"" + side + "\" fill=\"" + color + "\"/></svg>\n");
    }
    bool make (const std::string& renderer = "rsvg-convert") {
        return make_images (assets_.path (), target_.path (), renderer, rendered_, error_);
    }
    /// The files of the target and when they were written.
    std::map<std::string, fs::file_time_type> times () const {
        std::map<std::string, fs::file_time_type> all;
        for (const auto& entry : fs::recursive_directory_iterator (target_.path ())) {
            if (entry.is_regular_file ()) all[entry.path ().string ()] = entry.last_write_time ();
        }
        return all;
    }
    std::string made (std::string_view name) const { return file_text (target_ / name); }

    TemporaryFolder assets_;
    TemporaryFolder target_;
    int rendered_ = -1;
    std::string error_;
};

TEST_F (MakeImages, everything_of_the_list_is_made) {
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 5);
    for (const char* file :
         {"interface/plain.png", "interface/plain@2x.png", "interface/plain-dark.png",
          "interface/plain-dark@2x.png", "interface/both-alike.png", "manual/page-dark@2x.png",
          "icon/sign-16.png", "icon/sign-20.png", "embedded_images.cpp"}) {
        EXPECT_TRUE (fs::exists (target_ / file)) << file;
    }
    EXPECT_FALSE (fs::exists (target_ / "interface/both-alike-dark.png"));
    EXPECT_FALSE (fs::exists (target_ / "icon/sign-16@2x.png"));
    const std::string arrays = made ("interface/plain.inc");
    for (const char* array : {"interface_plain_1x[]", "interface_plain_2x[]",
                              "interface_plain_dark_1x[]", "interface_plain_dark_2x[]"}) {
        EXPECT_THAT (arrays, HasSubstr (array));
    }
    EXPECT_THAT (made ("interface/both-alike.inc"),
                 HasSubstr ("auto& interface_both_alike_dark_2x = interface_both_alike_2x;"));
}

TEST_F (MakeImages, tables_keep_the_order_of_the_list) {
    ASSERT_TRUE (make ()) << error_;
    const std::string text = made ("embedded_images.cpp");
    const std::size_t table = text.find ("const ResourceImage interface_images[]");
    ASSERT_NE (table, std::string::npos);
    const std::size_t first = text.find ("\"both-alike.png\"", table);
    const std::size_t second = text.find ("\"plain.png\"", table);
    EXPECT_LT (first, second);
    EXPECT_LT (second, text.find ("nullptr", table));
}

TEST_F (MakeImages, a_second_time_nothing_is_rendered_and_no_file_is_touched) {
    ASSERT_TRUE (make ()) << error_;
    const auto before = times ();
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 0);
    EXPECT_EQ (times (), before);
}

TEST_F (MakeImages, a_changed_source_is_rendered_and_no_other) {
    ASSERT_TRUE (make ()) << error_;
    const auto before = times ();
    write ("interface/plain.svg", 11, "#111111");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 1);
    for (const auto& [file, time] : times ()) {
        if (file.find ("plain") == std::string::npos) {
            EXPECT_EQ (time, before.at (file)) << file;
        }
    }
}

TEST_F (MakeImages, a_source_that_only_looks_newer_is_not_rendered) {
    ASSERT_TRUE (make ()) << error_;
    write ("interface/plain.svg", 10, "#111111");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 0);
}

TEST_F (MakeImages, another_dark_color_renders_what_uses_it) {
    ASSERT_TRUE (make ()) << error_;
    assets_.write ("palette.txt", "ink #111111 #dddddd\nred #cc0000 #cc0000\n");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 2);
}

TEST_F (MakeImages, an_image_that_becomes_alike_on_both_grounds_loses_its_dark_files) {
    ASSERT_TRUE (make ()) << error_;
    write ("interface/plain.svg", 10, "#cc0000");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_FALSE (fs::exists (target_ / "interface/plain-dark.png"));
    EXPECT_FALSE (fs::exists (target_ / "interface/plain-dark@2x.png"));
    EXPECT_TRUE (fs::exists (target_ / "interface/plain@2x.png"));
}

TEST_F (MakeImages, what_a_failed_rendering_left_is_made_again) {
    EXPECT_FALSE (make ("/nowhere/rsvg-convert"));
    EXPECT_THAT (error_, HasSubstr ("/nowhere/rsvg-convert ended with status"));
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 5);
}

TEST_F (MakeImages, an_image_that_is_lost_is_made_again) {
    ASSERT_TRUE (make ()) << error_;
    fs::remove (target_ / "manual/page.inc");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 1);
    EXPECT_TRUE (fs::exists (target_ / "manual/page.inc"));
}

TEST_F (MakeImages, a_change_that_failed_and_was_taken_back_leaves_nothing_of_it) {
    ASSERT_TRUE (make ()) << error_;
    const std::string before = made ("interface/plain.inc");
    write ("interface/plain.svg", 11, "#111111");
    EXPECT_FALSE (make ("/nowhere/rsvg-convert"));
    write ("interface/plain.svg", 10, "#111111");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (made ("interface/plain.inc"), before);
    EXPECT_THAT (made ("interface/plain.svg"), HasSubstr ("width=\"10\""));
}

TEST_F (MakeImages, an_icon_without_a_source_of_its_size_is_the_large_one) {
    ASSERT_TRUE (make ()) << error_;
    EXPECT_THAT (made ("icon/sign-20.svg"), HasSubstr ("#123456"));
    EXPECT_THAT (made ("icon/sign-16.svg"), HasSubstr ("#654321"));
}

TEST_F (MakeImages, an_icon_whose_name_tells_another_size_is_refused) {
    write ("icon/sign-16.svg", 18, "#654321");
    EXPECT_FALSE (make ());
    EXPECT_THAT (error_, HasSubstr ("icon/sign-16"));
    assets_.write ("images.txt", "icon sign\n");
    EXPECT_FALSE (make ());
    EXPECT_THAT (error_, HasSubstr ("icon/sign"));
}

TEST_F (MakeImages, a_list_of_another_form_is_told) {
    for (const char* line : {"interface", "other plain", "interface plain 10"}) {
        assets_.write ("images.txt", std::string (line) + "\n");
        EXPECT_FALSE (make ()) << line;
        EXPECT_THAT (error_, HasSubstr (line));
    }
    fs::remove (assets_ / "images.txt");
    EXPECT_FALSE (make ());
    EXPECT_THAT (error_, HasSubstr ("cannot be read"));
}

TEST_F (MakeImages, an_image_that_was_taken_is_embedded_as_it_is) {
    fs::remove (assets_ / "manual/page.svg");
    for (const char* file : {"page.png", "page@2x.png", "page-dark.png"})
        assets_.write (std::string ("manual/") + file, std::string ("\x89PNG ") + file);
    EXPECT_FALSE (make ());
    EXPECT_THAT (error_, HasSubstr ("page-dark@2x.png: cannot be read"));
    // This one looks as on a light ground.
    assets_.write ("manual/page-dark@2x.png", "\x89PNG page@2x.png");
    ASSERT_TRUE (make ()) << error_;
    const std::string arrays = made ("manual/page.inc");
    EXPECT_THAT (arrays, HasSubstr (array_text ("manual_page_1x", "\x89PNG page.png")));
    EXPECT_THAT (arrays, HasSubstr (array_text ("manual_page_2x", "\x89PNG page@2x.png")));
    EXPECT_THAT (arrays, HasSubstr (array_text ("manual_page_dark_1x", "\x89PNG page-dark.png")));
    EXPECT_THAT (arrays, HasSubstr (alias_text ("manual_page_dark_2x", "manual_page_2x")));
    assets_.write ("manual/page.png", "\x89PNG another");
    ASSERT_TRUE (make ()) << error_;
    EXPECT_EQ (rendered_, 1);
}

TEST (embed, bytes_become_a_literal_that_holds_all_of_them) {
    const std::string bytes ("\x89PNG\0\"\\\n\xff", 9);
    const std::string text = array_text ("a", bytes);
    EXPECT_EQ (text, "constexpr unsigned char a[] =\n"
                     "    \"\\x89\\x50\\x4e\\x47\\x00\\x22\\x5c\\x0a\\xff\";\n");
    EXPECT_EQ (array_text ("a", ""), "constexpr unsigned char a[] = \"\";\n");
    // Lines of 24 bytes; the last is closed once.
    const std::string long_text = array_text ("a", std::string (48, 'x'));
    EXPECT_EQ (std::count (long_text.begin (), long_text.end (), '\n'), 3);
    EXPECT_EQ (std::count (long_text.begin (), long_text.end (), '"'), 4);
}

TEST (embed, array_names_tell_folder_image_ground_and_scale) {
    const ImageName image{"interface", "hp-mouse-1"};
    EXPECT_EQ (array_name (image, 1, false), "interface_hp_mouse_1_1x");
    EXPECT_EQ (array_name (image, 2, true), "interface_hp_mouse_1_dark_2x");
}

} // namespace
} // namespace ostrand::image_maker
