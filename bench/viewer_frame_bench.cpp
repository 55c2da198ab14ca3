// Drawing the curves of a large sweep beside the plain drawing of all their points, on a display:
//   scripts/with-display.sh build/bench/viewer_frame_bench
// Each round draws both; `ratio` is ours over theirs, median of the rounds. `frame_ratio` and
// `frame_ms` are of a whole frame: ground, curves, labels, legend, and the picture on the display.
#include "toolkit/display.h"
#include "toolkit/gl_text.h"
#include "viewer/curve_draw.h"
#include "viewer/plain_curves.h"

#include <FL/Fl.H>
#include <FL/Fl_Gl_Window.H>
#include <FL/gl.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <functional>
#include <vector>

namespace ostrand::viewer {
namespace {

double seconds_since (std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double> (std::chrono::steady_clock::now () - start).count ();
}

/// A sweep over 64 values with 10,000 seconds each.
/// noise  standard deviation of a step, molecules of about 6000
ResultData sweep (double noise) {
    constexpr std::uint32_t planes = 64;
    ResultData data;
    data.n_displayed = 1;
    data.n_points = 10000;
    data.n_simul = planes;
    data.names = {"glucose"};
    data.colours = {0xD0202000};
    VarConc dose;
    dose.name = "dose";
    dose.nb = planes;
    for (std::uint32_t plane = 0; plane < planes; ++plane) dose.values.push_back (602 * plane);
    data.vars.push_back (dose);
    data.n_var = 1;
    std::uint64_t random = 1;
    for (std::uint32_t plane = 0; plane < planes; ++plane) {
        double count = 3000;
        for (std::uint32_t t = 0; t < data.n_points; ++t) {
            double normal = -6; // the sum of twelve even numbers
            for (int i = 0; i < 12; ++i) {
                random = random * 6364136223846793005U + 1442695040888963407U;
                normal += static_cast<double> (random >> 40) / 16777216.0;
            }
            const double mean =
                (3000 + 20.0 * plane) * (1 + 0.3 * std::sin (t / 700.0 + plane * 0.1));
            count = std::max (count + 0.02 * (mean - count) + noise * normal, 0.0);
            data.counts.push_back (static_cast<std::uint32_t> (count));
            data.max = std::max (data.max, data.counts.back ());
        }
    }
    return data;
}

/// A window in the viewer's mode, in which the drawing is timed from outside.
class Canvas : public Fl_Gl_Window {
  public:
    Canvas () : Fl_Gl_Window (900, 600) {
        mode (FL_DOUBLE | FL_ALPHA | FL_MULTISAMPLE);
        show ();
        while (!drawn_) Fl::wait (0.1);
        make_current ();
    }
    void draw () override { drawn_ = true; }

  private:
    bool drawn_ = false;
};

void frame (benchmark::State& state) {
    if (!toolkit::display_is_there () || !toolkit::opengl_is_there ()) {
        state.SkipWithError ("no display: start it under scripts/with-display.sh");
        return;
    }
    const ResultData data = sweep (static_cast<double> (state.range (0)));
    Canvas canvas;
    set_line_blending ();
    const toolkit::TextWidth width = [] (const std::string& text, int font, int size) {
        return toolkit::gl_text_width (text, font, size, 1);
    };
    const ViewSize size = ViewSize::of (900, 600, 1);
    ViewState view;
    initial_pan (view, size);
    view.scale = fitting_scale (size.h (), data.max);
    const ViewLayout layout = layout_of (data, view, size, width);
    const auto time = [] (const std::function<void ()>& draw) {
        const auto start = std::chrono::steady_clock::now ();
        draw ();
        glFinish ();
        return seconds_since (start);
    };
    const auto ground = [&] {
        clear_picture (size, false);
        use_scene_projection (view, layout);
    };
    std::vector<double> ratios;
    std::vector<double> frames;
    std::vector<double> frame_ratios;
    for (auto _ : state) {
        view.rot_y += 0.5F; // as a drag does
        ground ();
        const double ours = time ([&] { draw_curves (data, view, layout); });
        ground ();
        const double plain = time ([&] { draw_plain_curves (data, view, layout); });
        ratios.push_back (ours / plain);
        state.SetIterationTime (ours);
        frames.push_back (time ([&] {
            const Scene scene = scene_of_box (data, view, layout, width);
            ground ();
            draw_grid (scene);
            draw_curves (data, view, layout);
            use_flat_projection (size);
            draw_frame (size);
            draw_flat_parts (scene, false);
            canvas.swap_buffers ();
        }));
        frame_ratios.push_back (frames.back () / plain);
    }
    const auto median = [] (std::vector<double>& values) {
        std::sort (values.begin (), values.end ());
        return values[values.size () / 2];
    };
    state.counters["ratio"] = median (ratios);
    state.counters["frame_ratio"] = median (frame_ratios);
    state.counters["frame_ms"] = median (frames) * 1000;
}
/// Smooth series, and steps of 1 and 20 molecules.
BENCHMARK (frame)
    ->Arg (0)
    ->Arg (1)
    ->Arg (20)
    ->UseManualTime ()
    ->Unit (benchmark::kMillisecond)
    ->Iterations (25);

} // namespace
} // namespace ostrand::viewer
