// Making, showing and saving the manual.
#include "manual/manual.h"

#include "fixed_measure.h"
#include "manual/manual_images.h"
#include "manual/saved_page.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

namespace ostrand::manual {
namespace {

using editor::ShortcutSet;
using ostrand::testing::CaughtMessages;
using ostrand::testing::file_text;
using ostrand::testing::FixedMeasure;
using ostrand::testing::TemporaryFolder;

/// Every picture of the table, as a file that is none: what counts here is names.
std::vector<ResourceImage> all_images () {
    static const unsigned char bytes[] = {1, 2, 3};
    std::vector<ResourceImage> images;
    for (const std::string_view name : manual_image_names ())
        images.push_back ({name.data (), bytes, 3});
    return images;
}

struct Made {
    std::vector<ResourceImage> images = all_images ();
    TemporaryFolder folder;
    Manual manual{images, folder.path ()};
    FixedMeasure measure;
};

TEST (manual, is_made_the_first_time_and_when_ground_or_shortcuts_change) {
    Made made;
    EXPECT_TRUE (made.manual.update (false, ShortcutSet::standard));
    EXPECT_FALSE (made.manual.update (false, ShortcutSet::standard));
    EXPECT_TRUE (made.manual.update (true, ShortcutSet::standard));
    EXPECT_FALSE (made.manual.update (true, ShortcutSet::standard));
    EXPECT_TRUE (made.manual.update (true, ShortcutSet::emacs));
    EXPECT_NE (made.manual.text ().find ("bgcolor=#0 "), std::string::npos);
    EXPECT_NE (made.manual.text ().find ("(^X^C)"), std::string::npos);
}

TEST (manual, puts_its_pictures_where_its_text_says) {
    Made made;
    made.manual.update (false, ShortcutSet::standard);
    EXPECT_EQ (made.folder.names ().size (), 19U);
    const std::string text = made.manual.text ();
    const std::regex image ("<img src=([^>]*)>");
    int seen = 0;
    for (std::sregex_iterator i (text.begin (), text.end (), image), end; i != end; ++i) {
        EXPECT_TRUE (std::filesystem::exists (std::string ((*i)[1]))) << (*i)[1];
        ++seen;
    }
    EXPECT_GE (seen, 15);
}

TEST (manual, pictures_are_put_there_once) {
    Made made;
    made.manual.update (false, ShortcutSet::standard);
    std::filesystem::remove (made.folder / "fog.png");
    made.manual.update (true, ShortcutSet::standard);
    EXPECT_FALSE (std::filesystem::exists (made.folder / "fog.png"));
}

TEST (show_manual, gives_the_text_to_the_window_when_it_shows_another) {
    Made made;
    HTML html (made.measure);
    html.resize (850, 950);
    EXPECT_EQ (show_manual (made.manual, &html, nullptr, false, ShortcutSet::standard),
               ShowResult::show);
    EXPECT_EQ (html.source (), made.manual.text ());
    html.scroll_to (500);
    html.find ("Ostrand");
    const int match = html.current_match ();
    show_manual (made.manual, &html, nullptr, false, ShortcutSet::standard);
    EXPECT_EQ (html.current_match (), match); // nothing was given anew
}

TEST (show_manual, after_dark_mode_changed_shows_it_with_inverted_colours) {
    Made made;
    HTML html (made.measure);
    html.resize (850, 950);
    show_manual (made.manual, &html, nullptr, false, ShortcutSet::standard);
    EXPECT_EQ (html.background (), 0xffffff00U);
    show_manual (made.manual, &html, nullptr, true, ShortcutSet::standard);
    EXPECT_EQ (html.background (), 0U);
    EXPECT_EQ (html.page ().text, 0xffffff00U);
}

TEST (show_manual, a_window_made_after_a_save_gets_the_text) {
    Made made;
    const std::filesystem::path file = made.folder / "out.html";
    EXPECT_EQ (show_manual (made.manual, nullptr, &file, false, ShortcutSet::standard),
               ShowResult::saved);
    EXPECT_EQ (file_text (file), saved_page (made.manual.text ()));
    HTML html (made.measure);
    show_manual (made.manual, &html, nullptr, false, ShortcutSet::standard);
    EXPECT_EQ (html.source (), made.manual.text ());
}

TEST (show_manual, a_file_that_cannot_be_written_is_told) {
    Made made;
    const CaughtMessages messages;
    const std::filesystem::path file = made.folder / "none" / "out.html";
    EXPECT_EQ (show_manual (made.manual, nullptr, &file, false, ShortcutSet::standard),
               ShowResult::failed);
    EXPECT_THAT (messages.all, ::testing::ElementsAre ("Cannot save the user manual to '" +
                                                       file.string () + "'\n"));
}

TEST (show_manual, an_unwritable_picture_folder_does_not_keep_it_from_being_shown) {
    Made made;
    const std::string no_folder = made.folder.write ("file", "");
    Manual manual (made.images, no_folder);
    made.measure.images = {{"fog.png", {40, 30}}};
    HTML html (made.measure);
    html.resize (850, 950);
    ::testing::internal::CaptureStderr ();
    show_manual (manual, &html, nullptr, false, ShortcutSet::standard);
    const std::string warnings = ::testing::internal::GetCapturedStderr ();
    EXPECT_EQ (std::count (warnings.begin (), warnings.end (), '\n'), 19);
    bool shown = false;
    for (const auto& primitive : html.paint_list (0, html.height_of_text ())) {
        const auto* image = std::get_if<PlacedImage> (&primitive);
        shown = shown || (image != nullptr && image->name == "fog.png");
    }
    EXPECT_TRUE (shown);
}

TEST (manual_folder, holds_the_text_with_its_pictures_beside_it) {
    const TemporaryFolder folder;
    std::string error;
    ASSERT_TRUE (write_manual_folder (all_images (), folder / "manual", error)) << error;
    const std::string text = file_text (folder / "manual" / "OST-User-Manual.html");
    EXPECT_NE (text.find ("<img src=\"fog.png\""), std::string::npos);
    EXPECT_TRUE (std::filesystem::exists (folder / "manual" / "fog.png"));
    // Again over what is there.
    EXPECT_TRUE (write_manual_folder (all_images (), folder / "manual", error)) << error;
}

TEST (manual_folder, of_the_docs_is_what_the_program_would_write) {
    const std::filesystem::path docs = testing::source_path ("docs/manual");
    EXPECT_EQ (file_text (docs / suggested_manual_name), saved_page (generate_manual ({})))
        << "cmake --build build --target manual_folder writes it again";
    for (const std::string_view name : manual_image_names ())
        EXPECT_TRUE (file_text (docs / name).starts_with ("\x89PNG")) << name;
}

TEST (manual_folder, that_cannot_be_made_is_told) {
    const TemporaryFolder folder;
    const std::string no_folder = folder.write ("file", "");
    std::string error;
    EXPECT_FALSE (
        write_manual_folder (all_images (), std::filesystem::path (no_folder) / "x", error));
    EXPECT_FALSE (error.empty ());
}

} // namespace
} // namespace ostrand::manual
