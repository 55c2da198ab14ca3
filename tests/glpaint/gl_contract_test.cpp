// The contract of paint devices, kept by the OpenGL device in a buffer that no screen shows.
#include "contract/paint_device_contract.h"
#include "glpaint/gl_device.h"

#include <GL/gl.h>
#include <dlfcn.h>

#include <array>
#include <cstdint>

namespace ostrand::testing {
namespace {

/// A context of 100 by 100 pixels made through EGL without a display. The library is looked for
/// when the test runs, since nothing else needs it.
class OffScreen {
  public:
    OffScreen () {
        library_ = dlopen ("libEGL.so.1", RTLD_NOW | RTLD_LOCAL);
        if (!library_) return;
        // Numbers and signatures of EGL 1.4.
        using Config = void*;
        constexpr std::int32_t none = 0x3038;
        const auto get_display = find<void* (*)(std::intptr_t)> ("eglGetDisplay");
        const auto get_platform =
            find<void* (*)(unsigned, void*, const std::intptr_t*)> ("eglGetPlatformDisplay");
        const auto initialize =
            find<unsigned (*) (void*, std::int32_t*, std::int32_t*)> ("eglInitialize");
        const auto bind = find<unsigned (*) (unsigned)> ("eglBindAPI");
        const auto choose =
            find<unsigned (*) (void*, const std::int32_t*, Config*, std::int32_t, std::int32_t*)> (
                "eglChooseConfig");
        const auto make_surface =
            find<void* (*)(void*, Config, const std::int32_t*)> ("eglCreatePbufferSurface");
        const auto make_context =
            find<void* (*)(void*, Config, void*, const std::int32_t*)> ("eglCreateContext");
        const auto make_current =
            find<unsigned (*) (void*, void*, void*, void*)> ("eglMakeCurrent");
        if (!get_display || !initialize || !bind || !choose || !make_surface || !make_context ||
            !make_current)
            return;
        constexpr unsigned surfaceless = 0x31DD;
        void* display = get_platform ? get_platform (surfaceless, nullptr, nullptr) : nullptr;
        if (!display) display = get_display (0);
        if (!display || !initialize (display, nullptr, nullptr)) return;
        constexpr unsigned opengl_api = 0x30A2;
        if (!bind (opengl_api)) return;
        const std::array<std::int32_t, 11> wanted{0x3033, 0x0001, 0x3040, 0x0008, 0x3024, 8,
                                                  0x3023, 8,      0x3022, 8,      none};
        Config config = nullptr;
        std::int32_t found = 0;
        if (!choose (display, wanted.data (), &config, 1, &found) || found == 0) return;
        const std::array<std::int32_t, 5> size{0x3057, 100, 0x3056, 100, none};
        void* const surface = make_surface (display, config, size.data ());
        void* const context = make_context (display, config, nullptr, nullptr);
        good_ = surface && context && make_current (display, surface, surface, context);
    }
    bool good () const { return good_; }

  private:
    template <typename Function>
    Function find (const char* name) const {
        return reinterpret_cast<Function> (dlsym (library_, name));
    }
    void* library_ = nullptr;
    bool good_ = false;
};

/// Letters and pictures as blocks: where they stand is what is tested here.
class Blocks : public glpaint::GlContent {
  public:
    void draw_text (const document::FontMetrics& font, std::string_view utf8, float x, float y,
                    int pixel_size) override {
        last_size = pixel_size;
        last_text = utf8;
        float width = 0;
        for (const char c : utf8) width += font.width_of (static_cast<unsigned char> (c));
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
        static const OffScreen screen;
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
        glpaint::GlDevice device (blocks (), view);
        scene (device);
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
    EXPECT_EQ (GlPage::blocks ().last_text, "\xc3\xa9");
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
    EXPECT_EQ (GlPage::blocks ().last_text, "α1");
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
