// The current OpenGL picture as pixels and as a PNG file.
#include "toolkit/gl_picture.h"

#include "support/off_screen.h"
#include "support/support.h"

#include <FL/gl.h>
#include <gtest/gtest.h>
#include <png.h>

namespace ostrand::toolkit {
namespace {

constexpr int width = 60;
constexpr int height = 40;
using Pixels = std::vector<unsigned char>;

/// A green ground, with a red triangle in the upper left half, whose long edge is slanted.
void draw () {
    glViewport (0, 0, width, height);
    glMatrixMode (GL_PROJECTION);
    glLoadIdentity ();
    glOrtho (0, width, height, 0, -1, 1);
    glMatrixMode (GL_MODELVIEW);
    glLoadIdentity ();
    glClearColor (0, 1, 0, 1);
    glClear (GL_COLOR_BUFFER_BIT);
    glColor3f (1, 0, 0);
    glBegin (GL_TRIANGLES);
    glVertex2f (0, 0);
    glVertex2f (width, 0);
    glVertex2f (0, height);
    glEnd ();
}

unsigned char red_at (const Pixels& pixels, int x, int y) {
    return pixels[static_cast<std::size_t> (y * width + x) * 3];
}

int between (const Pixels& pixels) {
    int found = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const unsigned char red = red_at (pixels, x, y);
            found += red > 30 && red < 225;
        }
    }
    return found;
}

TEST (gl_picture, the_first_row_is_the_highest) {
    for (const int samples : {0, 4}) {
        const testing::OffScreen screen (width, height, samples);
        if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
        draw ();
        const Pixels pixels = read_gl_pixels (width, height);
        ASSERT_EQ (pixels.size (), std::size_t{3} * width * height);
        EXPECT_EQ (red_at (pixels, 2, 2), 255);
        EXPECT_EQ (red_at (pixels, 2, 30), 255);
        EXPECT_EQ (red_at (pixels, 40, 2), 255);
        EXPECT_EQ (red_at (pixels, 40, 30), 0);
        EXPECT_EQ (pixels.back (), 0);
        EXPECT_EQ (pixels[pixels.size () - 2], 255);
        EXPECT_EQ (glGetError (), static_cast<GLenum> (GL_NO_ERROR));
    }
}

TEST (gl_picture, slanted_edges_are_as_smooth_as_on_the_display) {
    const testing::OffScreen screen (width, height, 4);
    if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
    draw ();
    EXPECT_GT (between (read_gl_pixels (width, height)), 20);
}

TEST (gl_picture, reading_leaves_what_is_drawn_next_on_the_same_buffer) {
    const testing::OffScreen screen (width, height, 4);
    if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
    draw ();
    read_gl_pixels (width, height);
    glClearColor (1, 0, 0, 1);
    glClear (GL_COLOR_BUFFER_BIT);
    EXPECT_EQ (red_at (read_gl_pixels (width, height), 50, 35), 255);
}

TEST (gl_picture, the_file_holds_the_pixels) {
    const testing::OffScreen screen (width, height, 4);
    if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
    draw ();
    const testing::TemporaryFolder folder;
    const std::string path = (folder / "p.png").string ();
    std::string error;
    ASSERT_TRUE (write_gl_picture (path, width, height, error)) << error;
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE (png_image_begin_read_from_file (&image, path.c_str ()), 0);
    EXPECT_EQ (image.width, static_cast<png_uint_32> (width));
    EXPECT_EQ (image.height, static_cast<png_uint_32> (height));
    image.format = PNG_FORMAT_RGB;
    Pixels pixels (PNG_IMAGE_SIZE (image));
    ASSERT_NE (png_image_finish_read (&image, nullptr, pixels.data (), 0, nullptr), 0);
    EXPECT_EQ (pixels, read_gl_pixels (width, height));
}

TEST (gl_picture, a_file_that_cannot_be_written_is_told) {
    const testing::OffScreen screen (width, height);
    if (!screen.good ()) GTEST_SKIP () << "no OpenGL without a screen here";
    draw ();
    std::string error;
    EXPECT_FALSE (write_gl_picture ("/nowhere/p.png", width, height, error));
    EXPECT_NE (error, "");
}

} // namespace
} // namespace ostrand::toolkit
