// A viewer running on a virtual display, and where its curves are expected.
#pragma once
#include "base/text.h"
#include "support/support.h"
#include "support/virtual_display.h"
#include "viewer/scene.h"
#include "viewer/series_view.h"

#include <chrono>
#include <cmath>
#include <thread>

namespace ostrand::viewer {
using testing::RunningProgram;
using testing::Screenshot;
using testing::TemporaryFolder;
using testing::VirtualDisplay;

inline constexpr std::uint32_t red = 0xE00000;
inline constexpr std::uint32_t blue = 0x0000E0;
inline constexpr std::uint32_t points = 50;

/// Where a curve of a constant count is expected.
struct Expectation {
    std::uint32_t colour;
    std::uint32_t plane;
    std::uint32_t count;
};

/// A viewer on a result whose curves are constants: in simulation i, red stands at 1000 + 500 * i,
/// blue at 200 + 100 * i. `sizes` are the numbers of values of the varying concentrations.
class Viewer {
  public:
    explicit Viewer (std::vector<std::uint32_t> sizes, std::vector<std::string> words = {},
                     float scaling = 1)
        : width (static_cast<int> (900 * scaling)), height (static_cast<int> (600 * scaling)),
          unit (scaling) {
        if (scaling != 1) setenv ("FLTK_SCALING_FACTOR", std::to_string (scaling).c_str (), 1);
        std::string text;
        std::uint32_t n_simul = 1;
        for (const std::uint32_t size : sizes) n_simul *= size;
        text = format_text ("%u 2 %u\nred\ne0000000\nblue\ne000\n", n_simul, points);
        text += std::to_string (sizes.size ()) + "\n";
        for (std::size_t v = 0; v < sizes.size (); ++v) {
            text += format_text ("var%zu@&\n%u\n", v, sizes[v]);
            for (std::uint32_t i = 0; i < sizes[v]; ++i)
                text += format_text ("%u\n", 602 * (i + 1));
        }
        for (std::uint32_t i = 0; i < n_simul; ++i) {
            for (const std::uint32_t count : {red_count (i), blue_count (i)}) {
                for (std::uint32_t t = 0; t < points; ++t) text += std::to_string (count) + "\n";
            }
        }
        max = red_count (n_simul - 1);
        planes = sizes.empty () ? 1 : sizes.back ();
        file = folder.write ("data", text);
        words.insert (words.begin (), {"ostrand", "-v", file});
        program = std::make_unique<RunningProgram> (words);
        unsetenv ("FLTK_SCALING_FACTOR");
        display.place_window ("Stochora");
        wait_until ([this] { return sees (state, {red, 0, red_count (0)}); });
    }
    static std::uint32_t red_count (std::uint32_t i) { return 1000 + 500 * i; }
    static std::uint32_t blue_count (std::uint32_t i) { return 200 + 100 * i; }

    /// The state after window and first drawing.
    ViewState start () const {
        ViewState fresh;
        initial_pan (fresh,
                     ViewSize{static_cast<float> (width), static_cast<float> (height), unit});
        return fresh;
    }

    /// True when the curve stands where a state says, at several places along it.
    bool sees (const ViewState& expected, Expectation curve) const {
        return sees (display.screenshot (), expected, curve);
    }
    bool sees (const Screenshot& shot, const ViewState& expected, Expectation curve) const {
        const ViewSize size =
            ViewSize{static_cast<float> (width), static_cast<float> (height), unit};
        ViewState view = expected;
        if (view.auto_scale) view.scale = fitting_scale (size.h (), max);
        ViewLayout layout;
        layout.size = size;
        layout.planes = planes;
        layout.depth = std::trunc ((size.hp - 100) / (size.h () / 5)) * (size.h () / 5);
        const Camera camera (view, layout);
        int found = 0;
        for (const float part : {0.35F, 0.5F, 0.65F}) {
            const auto place = camera.project (
                {size.w * part, layout.y_of (curve.count, view.scale), layout.z_of (curve.plane)});
            if (place && shot.has_near (place->x, place->y, curve.colour)) ++found;
        }
        return found == 3;
    }
    bool sees_all (const ViewState& expected, std::uint32_t offset = 0) const {
        const Screenshot shot = display.screenshot ();
        for (std::uint32_t plane = 0; plane < planes; ++plane) {
            if (!sees (shot, expected, {red, plane, red_count (offset + plane)}) ||
                !sees (shot, expected, {blue, plane, blue_count (offset + plane)})) {
                return false;
            }
        }
        return true;
    }

    /// Waits until it holds; false when it never does.
    template <class Condition>
    bool wait_until (Condition condition) const {
        const auto end = std::chrono::steady_clock::now () + std::chrono::seconds (5);
        while (!condition ()) {
            if (std::chrono::steady_clock::now () > end) return false;
            std::this_thread::sleep_for (std::chrono::milliseconds (30));
        }
        return true;
    }
    bool shows (const ViewState& expected, std::uint32_t offset = 0) const {
        return wait_until ([&] { return sees_all (expected, offset); });
    }
    void input (std::vector<std::string> words) const { display.input (std::move (words)); }
    void key (const std::string& name) const { input ({"mousemove", "450", "500", "key", name}); }
    void drag (const std::string& button, int dx, int dy) const {
        input ({"mousemove", "400", "300", "mousedown", button});
        input ({"mousemove", std::to_string (400 + dx / 2), std::to_string (300 + dy / 2)});
        input (
            {"mousemove", std::to_string (400 + dx), std::to_string (300 + dy), "mouseup", button});
    }
    void wheel (const std::string& modifier, const std::string& button) const {
        input ({"mousemove", "450", "300"});
        if (!modifier.empty ()) input ({"keydown", modifier});
        input ({"click", button});
        if (!modifier.empty ()) input ({"keyup", modifier});
    }

    TemporaryFolder folder;
    VirtualDisplay display;
    int width; // of the view, device pixels
    int height;
    float unit;
    std::uint32_t max = 0;
    std::uint32_t planes = 1;
    std::string file;
    ViewState state = start ();
    std::unique_ptr<RunningProgram> program;
};

} // namespace ostrand::viewer
