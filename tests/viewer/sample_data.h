// Results for tests, and widths of letters that are the same on every machine.
#pragma once
#include "viewer/result_data.h"
#include "viewer/scene.h"
#include "viewer/series_view.h"

#include <string>
#include <utility>
#include <vector>

namespace ostrand::viewer {

/// Every letter is as wide as 0.6 of its size.
inline float plain_width (const std::string& text, int, int size) {
    return static_cast<float> (text.size ()) * 0.6F * static_cast<float> (size);
}

/// The same on a scaled display.
inline toolkit::TextWidth scaled_width (float unit) {
    return [unit] (const std::string& text, int font, int size) {
        return plain_width (text, font, size) * unit;
    };
}

inline VarConc swept (std::string name, std::vector<std::uint32_t> values) {
    VarConc var;
    var.name = std::move (name);
    var.nb = static_cast<std::uint32_t> (values.size ());
    var.values = std::move (values);
    return var;
}

/// Species "species 0" and so on that stay at 500 of at most 1000 molecules, and one variable
/// "glucose" with the given values as planes.
inline ResultData sample (std::uint32_t species, std::uint32_t points,
                          std::vector<std::uint32_t> values) {
    ResultData data;
    data.n_displayed = species;
    data.n_points = points;
    data.n_simul = values.empty () ? 1 : static_cast<std::uint32_t> (values.size ());
    for (std::uint32_t s = 0; s < species; ++s) {
        data.names.push_back ("species " + std::to_string (s));
        data.colours.push_back (0x10000000U * (s + 1));
    }
    data.counts.assign (std::size_t{data.n_simul} * species * points, 500);
    data.max = 1000;
    if (!values.empty ()) {
        data.vars.push_back (swept ("glucose", std::move (values)));
        data.n_var = 1;
    }
    return data;
}

/// A picture of a result before it is drawn.
struct Sketch {
    explicit Sketch (ResultData shown, int width = 900, int height = 600, float unit = 1)
        : data (std::move (shown)), size (ViewSize::of (width, height, unit)),
          text_width (scaled_width (unit)) {
        initial_pan (state, size);
    }
    ViewLayout layout (float height) {
        if (state.auto_scale) state.scale = fitting_scale (height, data.max);
        return layout_of (data, state, size, text_width);
    }
    Scene box () { return scene_of_box (data, state, layout (size.h ()), text_width); }
    Scene chart (bool reverse_video = false) {
        return scene_of_chart (data, state, layout (chart_height (size)), text_width,
                               reverse_video);
    }

    ResultData data;
    ViewState state;
    ViewSize size;
    toolkit::TextWidth text_width;
};

} // namespace ostrand::viewer
