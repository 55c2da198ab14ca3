// Images composed of others.
#include "image_maker/compose.h"

#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ostrand::image_maker {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using testing::TemporaryFolder;

/// A folder of sources with a palette of two colours.
class Compose : public ::testing::Test {
  protected:
    Compose () {
        fs::create_directories (folder_ / "manual");
        fs::create_directories (folder_ / "parts");
    }
    std::optional<ComposedImage> compose (std::string_view name, bool dark = false) {
        std::string ignored;
        const auto palette = Palette::read ("a #111111 #eeeeee\nb #ffffff #000000\n", ignored);
        return compose_image (folder_.path (), name, dark, &*palette, error_);
    }
    void write (const std::string& name, const std::string& content) {
        const bool whole = content.starts_with ("<svg");
        folder_.write (name,
                       whole ? content : "<svg width=\"30\" height=\"20\">" + content + "</svg>\n");
    }

    TemporaryFolder folder_;
    std::string error_;
};

TEST_F (Compose, a_plain_image_stays_as_it_is) {
    write ("manual/a.svg", "<rect fill=\"#111111\"/>");
    const auto image = compose ("manual/a");
    ASSERT_TRUE (image) << error_;
    EXPECT_EQ (image->svg, "<svg width=\"30\" height=\"20\"><rect fill=\"#111111\"/></svg>\n");
    EXPECT_EQ (image->width, 30);
    EXPECT_EQ (image->height, 20);
}

TEST_F (Compose, another_image_is_inserted_without_its_outermost_element) {
    write ("parts/b.svg", "<!-- what it is --><b/>");
    write ("manual/a.svg", "<a/><!-- insert parts/b.svg --><!-- insert parts/b.svg --><c/>");
    const auto image = compose ("manual/a");
    ASSERT_TRUE (image) << error_;
    EXPECT_EQ (image->svg, "<svg width=\"30\" height=\"20\"><a/><!-- what it is --><b/>"
                           "<!-- what it is --><b/><c/></svg>\n");
}

TEST_F (Compose, an_inserted_image_inserts_others) {
    write ("parts/c.svg", "<c/>");
    write ("parts/b.svg", "<b><!-- insert parts/c.svg --></b>");
    write ("manual/a.svg", "<!-- insert parts/b.svg -->");
    const auto image = compose ("manual/a");
    ASSERT_TRUE (image) << error_;
    EXPECT_THAT (image->svg, HasSubstr ("<b><c/></b>"));
}

TEST_F (Compose, colors_of_all_parts_become_dark) {
    write ("parts/b.svg", "<b fill=\"#ffffff\"/>");
    write ("manual/a.svg", "<a fill=\"#111111\"/><!-- insert parts/b.svg -->");
    const auto image = compose ("manual/a", true);
    ASSERT_TRUE (image) << error_;
    EXPECT_THAT (image->svg, HasSubstr ("<a fill=\"#eeeeee\"/><b fill=\"#000000\"/>"));
}

TEST_F (Compose, a_file_that_is_not_there_is_told) {
    EXPECT_FALSE (compose ("manual/a"));
    EXPECT_THAT (error_, HasSubstr ("manual/a.svg: cannot be read"));
    write ("manual/a.svg", "<!-- insert parts/b.svg -->");
    EXPECT_FALSE (compose ("manual/a"));
    EXPECT_THAT (error_, HasSubstr ("parts/b.svg: cannot be read"));
}

TEST_F (Compose, a_color_outside_the_palette_is_told_with_its_file) {
    write ("parts/b.svg", "<b fill=\"#123456\"/>");
    write ("manual/a.svg", "<!-- insert parts/b.svg -->");
    EXPECT_FALSE (compose ("manual/a"));
    EXPECT_THAT (error_, HasSubstr ("parts/b.svg: the colour #123456 is not in the palette"));
}

TEST_F (Compose, without_a_palette_any_color_is_right_and_stays) {
    write ("manual/a.svg", "<b fill=\"#123456\"/>");
    const auto image = compose_image (folder_.path (), "manual/a", true, nullptr, error_);
    ASSERT_TRUE (image) << error_;
    EXPECT_THAT (image->svg, HasSubstr ("#123456"));
}

TEST_F (Compose, an_image_that_inserts_itself_is_told) {
    write ("parts/b.svg", "<!-- insert parts/b.svg -->");
    write ("manual/a.svg", "<!-- insert parts/b.svg -->");
    EXPECT_FALSE (compose ("manual/a"));
    EXPECT_THAT (error_, HasSubstr ("inserts itself"));
}

TEST_F (Compose, an_image_without_a_size_is_told) {
    for (const char* text : {"<svg height=\"20\"></svg>", "<svg width=\"30\"></svg>",
                             "<svg width=\"0\" height=\"20\"></svg>"}) {
        write ("manual/a.svg", text);
        EXPECT_FALSE (compose ("manual/a")) << text;
        EXPECT_THAT (error_, HasSubstr ("no width and height"));
    }
    folder_.write ("manual/a.svg", "nothing");
    EXPECT_FALSE (compose ("manual/a"));
}

} // namespace
} // namespace ostrand::image_maker
