// The contract of paint devices, kept by the OpenGL device in a buffer that no screen shows.
#include "contract/paint_device_contract.h"
#include "glpaint/coarse_device.h"
#include "glpaint/gl_device.h"
#include "support/off_screen.h"

#include <GL/gl.h>

#include <array>
#include <cstdint>

namespace ostrand::testing {
namespace {

/// Letters and pictures as blocks: where they stand is what is tested here.
class Blocks : public glpaint::GlContent {
  public:
    void draw_text (const document::FontMetrics& font, std::string_view letters, float x, float y,
                    float zoom) override {
        last_size = glpaint::shown_text_size (font, zoom);
        last_text = letters;
        float width = 0;
        for (const char c : letters) width += font.width_of (static_cast<unsigned char> (c));
        glRectf (x, y - static_cast<float> (font.ascent) / 2, x + width, y);
    }
    void draw_picture (std::string_view, float x, float y, float w, float h) override {
        glRectf (x, y, x + w, y + h);
    }
    int last_size = 0;
    std::string last_text;
};

struct GlPage {
    static Blocks& blocks () {
        static Blocks content;
        return content;
    }
    static std::optional<Raster> paint (const std::function<void (document::PaintDevice&)>& scene,
                                        float zoom = 1) {
        return painted (scene, zoom, false);
    }
    static std::optional<Raster> painted (const std::function<void (document::PaintDevice&)>& scene,
                                          float zoom, bool coarse) {
        static const OffScreen screen (100, 100);
        if (!screen.good ()) return std::nullopt;
        glViewport (0, 0, 100, 100);
        glMatrixMode (GL_PROJECTION);
        glLoadIdentity ();
        glOrtho (0, 100, 100, 0, -1, 1);
        glMatrixMode (GL_MODELVIEW);
        glLoadIdentity ();
        glDisable (GL_SCISSOR_TEST);
        glClearColor (1, 1, 1, 1);
        glClear (GL_COLOR_BUFFER_BIT);
        const glpaint::GlView view{.height = 100, .zoom = zoom};
        if (coarse) {
            glpaint::TriangleBatch batch;
            glpaint::CoarseDevice device (batch, blocks (), view);
            scene (device);
            batch.flush ();
        } else {
            glpaint::GlDevice device (blocks (), view);
            scene (device);
        }
        glFinish ();
        EXPECT_EQ (glGetError (), static_cast<GLenum> (GL_NO_ERROR));
        std::vector<std::uint8_t> bottom_up (std::size_t{3} * 100 * 100);
        glPixelStorei (GL_PACK_ALIGNMENT, 1);
        glReadPixels (0, 0, 100, 100, GL_RGB, GL_UNSIGNED_BYTE, bottom_up.data ());
        Raster raster{100, 100, std::vector<std::uint8_t> (bottom_up.size ())};
        for (std::ptrdiff_t y = 0; y < 100; ++y)
            std::copy_n (bottom_up.begin () + 300 * (99 - y), 300, raster.rgb.begin () + 300 * y);
        return raster;
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P (Gl, PaintDeviceContract, GlPage);

/// The same page by the device of small networks.
struct CoarsePage {
    static std::optional<Raster> paint (const std::function<void (document::PaintDevice&)>& scene,
                                        float zoom = 1) {
        return GlPage::painted (scene, zoom, true);
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P (Coarse, PaintDeviceContract, CoarsePage);

#define OSTRAND_PAINT(name, ...)                                                                   \
    const std::optional<Raster> name = GlPage::paint (__VA_ARGS__);                                \
    if (!name) GTEST_SKIP () << "no OpenGL without a screen here"

TEST (GlDevice, CoordinatesAreMultipliedByTheZoom) {
    const auto scene = [] (document::PaintDevice& device) {
        device.set_color (1);
        device.fill_rect (10, 10, 20, 20);
        device.set_clip (0, 0, 40, 40);
        device.fill_ellipse (30, 30, 30, 30, 64);
        device.end_clip ();
        device.draw_text (*document::font_metrics (67), "\xe9", 0, 20);
    };
    const std::optional<Raster> raster = GlPage::paint (scene, 2);
    if (!raster) GTEST_SKIP () << "no OpenGL without a screen here";
    EXPECT_EQ (raster->at (22, 22), red_pixel);
    EXPECT_EQ (raster->at (57, 57), red_pixel);
    EXPECT_EQ (raster->at (17, 17), white_pixel);
    EXPECT_EQ (raster->at (75, 75), red_pixel);
    EXPECT_EQ (raster->at (85, 85), white_pixel);
    EXPECT_EQ (GlPage::blocks ().last_size, 28);
    EXPECT_EQ (GlPage::blocks ().last_text, "\xe9");
}

TEST (GlDevice, TextIsAtLeastFourPixels) {
    const auto raster = GlPage::paint (
        [] (document::PaintDevice& device) {
            device.draw_text (*document::font_metrics (document::font_key (7, false, false, 3)),
                              "a1", 0, 20);
        },
        0.1F);
    if (!raster) GTEST_SKIP () << "no OpenGL without a screen here";
    EXPECT_EQ (GlPage::blocks ().last_size, 4);
    EXPECT_EQ (GlPage::blocks ().last_text, "a1");
}

TEST (GlDevice, DashedLineHasGaps) {
    OSTRAND_PAINT (raster, [] (document::PaintDevice& device) {
        device.set_color (1);
        device.set_line (1, document::LineStyle::dashed);
        device.stroke_rect (10.5F, 10.5F, 80, 80);
        device.set_line (1, document::LineStyle::solid);
    });
    // Pattern 0xAAAA times 4: four pixels off, four on.
    const int ink = raster->ink (12, 10, 88, 11);
    EXPECT_GT (ink, 28);
    EXPECT_LT (ink, 48);
}

TEST (GlDevice, FastDrawingLeavesOutlinesOut) {
    const auto ellipse = [] (bool fast) {
        return GlPage::paint ([fast] (document::PaintDevice& device) {
            static_cast<glpaint::GlDevice&> (device).fast = fast;
            device.set_color (1);
            device.fill_ellipse (10, 10, 80, 80, 6);
        });
    };
    const auto slow = ellipse (false);
    const auto fast = ellipse (true);
    if (!slow || !fast) GTEST_SKIP () << "no OpenGL without a screen here";
    EXPECT_GE (slow->ink (0, 0, 100, 100), fast->ink (0, 0, 100, 100));
    EXPECT_GT (fast->ink (0, 0, 100, 100), 3000);
}

} // namespace
} // namespace ostrand::testing
