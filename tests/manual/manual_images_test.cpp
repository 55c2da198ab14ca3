// The pictures of the manual.
#include "manual/manual_images.h"

#include "support/full_disk.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::manual {
namespace {

using ostrand::testing::TemporaryFolder;

/// The first bytes of a PNG file of 3 x 258 pixels.
constexpr unsigned char png[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n', 0, 0, 0, 13,
                                 'I',  'H', 'D', 'R', 0,    0,    0,    3,    0, 0, 1, 2};

const std::vector<ResourceImage>& images () {
    static const std::vector<ResourceImage> all{
        {"fog.png", png, sizeof png}, {"swap.png", png, sizeof png}, {"cut.png", png, 10}};
    return all;
}

TEST (manual_images, are_named_in_the_tables_order) {
    EXPECT_THAT (std::vector<std::string_view> (manual_image_names ().begin (),
                                                manual_image_names ().end ()),
                 ::testing::ElementsAre (
                     "Trivex.png", "align-after.png", "align-before.png", "banner.png",
                     "duplicate.png", "file-selection-box.png", "fog.png", "formula-box.png",
                     "calyx-window.png", "keyboard-commands.png", "menu-type.png", "menubar.png",
                     "mouse-commands.png", "mouse-help.png", "mouse-keyboard.png", "merivale.png",
                     "rubber-band-selection.png", "ostrand.png", "swap.png"));
}

TEST (manual_images, are_looked_up_by_the_last_part_of_the_source) {
    EXPECT_EQ (image_name ("C:\\Windows\\Temp\\fog.png"), "fog.png");
    EXPECT_EQ (image_name ("/tmp/fog.png"), "fog.png");
    EXPECT_EQ (image_name ("fog.png"), "fog.png");
    EXPECT_EQ (image_name ("C:\\a/b.png"), "a/b.png"); // "\" counts first
    EXPECT_EQ (image_name (""), "");
    const ImageBox box = find_image (images (), "/tmp/swap.png");
    EXPECT_EQ (box.name, "swap.png");
    EXPECT_EQ (box.width, 3);
    EXPECT_EQ (box.height, 258);
}

TEST (manual_images, a_name_that_is_not_there_gives_the_first_one_without_size) {
    const ImageBox box = find_image (images (), "none.png");
    EXPECT_EQ (box.name, "fog.png");
    EXPECT_EQ (box.width, 0);
    EXPECT_EQ (box.height, 0);
    EXPECT_EQ (find_image ({}, "none.png").name, "");
}

TEST (manual_images, one_without_a_whole_head_has_no_size) {
    EXPECT_EQ (find_image (images (), "cut.png").width, 0);
}

TEST (extraction, writes_every_picture) {
    const TemporaryFolder folder;
    extract_manual_images (images (), folder.path ());
    EXPECT_THAT (folder.names (), ::testing::ElementsAre ("cut.png", "fog.png", "swap.png"));
    EXPECT_EQ (ostrand::testing::file_text (folder / "fog.png"),
               std::string (reinterpret_cast<const char*> (png), sizeof png));
}

TEST (extraction, keeps_what_is_there_whatever_it_holds) {
    const TemporaryFolder folder;
    folder.write ("fog.png", "mine");
    extract_manual_images (images (), folder.path ());
    EXPECT_EQ (ostrand::testing::file_text (folder / "fog.png"), "mine");
}

TEST (extraction, a_second_call_writes_nothing) {
    const TemporaryFolder folder;
    extract_manual_images (images (), folder.path ());
    const auto before = std::filesystem::last_write_time (folder / "swap.png");
    ::testing::internal::CaptureStderr ();
    extract_manual_images (images (), folder.path ());
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "");
    EXPECT_EQ (std::filesystem::last_write_time (folder / "swap.png"), before);
}

TEST (extraction, into_a_folder_that_cannot_be_written_warns_once_for_each) {
    const TemporaryFolder folder;
    const std::string no_folder = folder.write ("file", "");
    ::testing::internal::CaptureStderr ();
    extract_manual_images (images (), no_folder);
    EXPECT_EQ (::testing::internal::GetCapturedStderr (),
               "Warning: cannot create '" + no_folder + "/fog.png'\n" + "Warning: cannot create '" +
                   no_folder + "/swap.png'\n" + "Warning: cannot create '" + no_folder +
                   "/cut.png'\n");
}

TEST (extraction, does_not_follow_a_link_that_somebody_laid) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink (folder / "target", folder / "fog.png");
    ::testing::internal::CaptureStderr ();
    extract_manual_images (images (), folder.path ());
    EXPECT_NE (::testing::internal::GetCapturedStderr ().find ("fog.png"), std::string::npos);
    EXPECT_FALSE (std::filesystem::exists (folder / "target"));
}

TEST (extraction, a_picture_that_could_not_be_written_whole_leaves_nothing) {
    const std::vector<unsigned char> large (1 << 20);
    const ResourceImage image{"large.png", large.data (), static_cast<unsigned> (large.size ())};
    const TemporaryFolder folder;
    ::testing::internal::CaptureStderr ();
    {
        const testing::FileSizeLimit limit (1 << 16);
        extract_manual_images ({&image, 1}, folder.path ());
    }
    EXPECT_EQ (::testing::internal::GetCapturedStderr (),
               "Warning: cannot create '" + (folder / "large.png").string () + "'\n");
    EXPECT_THAT (folder.names (), ::testing::IsEmpty ());
}

} // namespace
} // namespace ostrand::manual
