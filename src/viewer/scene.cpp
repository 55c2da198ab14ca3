// Grid, labels and legend of the 3-D view.
#include "viewer/scene.h"

#include "viewer/label_placer.h"
#include "viewer/legend.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

/// Room between an axis and its labels, units.
constexpr float label_gap = 6;

// Where the wall and the floor begin in the opening view, parts of the window's height.
constexpr float wall_part = 0.15F;
constexpr float floor_part = 0.8F;

// The name of what is swept.
constexpr int name_font = 1;
constexpr int name_size = 12;

/// A number of molecules on the axis at a height in pixels.
double molecules_at (float height, float scale) {
    return static_cast<double> (height) / static_cast<double> (scale);
}

class BoxScene {
  public:
    BoxScene (const ResultData& data, const ViewState& state, const ViewLayout& layout,
              const toolkit::TextWidth& text_width)
        : data_ (data), state_ (state), layout_ (layout), camera_ (state, layout),
          text_width_ (text_width), placer_ (layout.size, text_width, scene_),
          gap_ (label_gap * layout.size.unit), right_ (layout.x_of (data.n_points)),
          from_behind_ (seen_from_behind ()) {}

    Scene build () {
        const float height = layout_.size.hp;
        add_legend (data_, state_, layout_.size, {height * floor_part, height * wall_part},
                    text_width_, scene_, placer_);
        add_grid ();
        add_counts ();
        add_time_axis ();
        if (layout_.planes > 1) add_planes ();
        return std::move (scene_);
    }

  private:
    void line (const Point3& a, const Point3& b) { scene_.grid.push_back ({a, b, grid_colour}); }

    /// A label beside a point of the scene.
    /// shift  pixels from the point, x towards the side of time 0
    /// side   where the text goes from there: 0 centred, 1 towards the side of time 0, -1 away
    void add_label (LabelRow& row, const Point3& point, Point2 shift, float side, float down,
                    const std::string& text) const {
        const auto place = camera_.project (point);
        const float direction = from_behind_ ? 1 : -1; // of the side of time 0
        // A label without a place still counts, so that all ways of a row hold the same labels.
        row.push_back ({place.value_or (Point2{-1, -1}),
                        {direction * shift.x, shift.y},
                        0.5F - direction * side / 2,
                        down,
                        text});
    }

    /// True when time runs to the left in the window.
    bool seen_from_behind () const {
        const auto begin = camera_.project ({layout_.margin, floor (), 0});
        const auto end = camera_.project ({right_, floor (), 0});
        return begin && end && begin->x > end->x;
    }

    float floor () const { return layout_.size.h (); }
    int divisions () const { return static_cast<int> (state_.divisions); }
    float height_of (int division) const {
        return static_cast<float> (division) * floor () / state_.divisions;
    }

    /// Lines up the back wall and across the floor, as far apart here as there.
    void add_grid () {
        const float left = layout_.margin;
        for (int k = 0; k <= divisions (); ++k) {
            const float height = height_of (k);
            line ({left, floor () - height, 0}, {right_, floor () - height, 0});
            if (height <= layout_.depth) {
                line ({left, floor (), -height}, {right_, floor (), -height});
            }
        }
        line ({left, floor (), 0}, {left, 0, 0});
        line ({right_, floor (), 0}, {right_, 0, 0});
    }

    /// The labels of the vertical axis: concentrations at its left, or at the right end of the wall
    /// where the legend leaves no room for them; molecules at the right when the opening is least.
    void add_counts () {
        const bool molecules_too = state_.fov == 1;
        LabelRow molecules;
        float widest = 0;
        for (int k = 0; molecules_too && k <= divisions (); ++k) {
            const double count = std::min (molecules_at (height_of (k), state_.scale), 1e15);
            const std::string text = std::to_string (std::llround (count));
            add_label (molecules, {right_, floor () - height_of (k), 0}, {-gap_, 0}, -1, 0.5F,
                       text);
            widest = std::max (widest, text_width_ (text, 0, 10));
        }
        placer_.put_row ({molecules});

        LabelRow outside;
        LabelRow other_end;
        const float beside_molecules = molecules_too ? widest + 2 * gap_ : 0;
        for (int k = 0; k <= divisions (); ++k) {
            const std::string text = concentration_at (k);
            const float y = floor () - height_of (k);
            // The lowest one leaves the corner to the labels of the other axes.
            const float down = k == 0 ? 1 : 0.5F;
            add_label (outside, {layout_.margin, y, 0}, {gap_, 0}, 1, down, text);
            add_label (other_end, {right_, y, 0}, {-gap_ - beside_molecules, 0}, -1, down, text);
        }
        // One that is missing is better found near its place than all at the other end.
        for (const std::size_t lost : placer_.put_row ({outside, other_end}, {.spared = 1})) {
            if (!put_on_wall (static_cast<int> (lost))) placer_.put (other_end[lost]);
        }
    }

    std::string concentration_at (int division) const {
        return concentration_text (molecules_at (height_of (division), state_.scale));
    }

    /// Puts a label of the vertical axis above or below its line on the wall, as near to the axis
    /// as there is room.
    bool put_on_wall (int division) {
        constexpr int places = 16;
        for (int place = 0; place < places; ++place) {
            const float part = static_cast<float> (place) / places;
            const Point3 point{layout_.margin + part * (right_ - layout_.margin),
                               floor () - height_of (division), 0};
            for (const float shift : {-gap_ / 2, gap_ / 2, 2 * gap_}) {
                LabelRow row;
                add_label (row, point, {-gap_, shift}, -1, shift < 0 ? 1 : 0,
                           concentration_at (division));
                if (placer_.put (row[0])) return true;
            }
        }
        return false;
    }

    /// The depth axis: a label for each plane, the first and the last before the others, and the
    /// name of what is swept beyond the last.
    void add_planes () {
        const VarConc& swept = data_.vars.back ();
        const std::uint32_t last = layout_.planes - 1;
        const float unit = layout_.size.unit;
        const std::string name = toolkit::fitted_text (
            "[" + swept.name + "]", layout_.size.w - 20 * unit, text_width_, name_font, name_size);
        const auto first_place = camera_.project ({layout_.margin, floor (), 0});
        const auto last_place = camera_.project ({layout_.margin, floor (), -layout_.depth});
        const bool rises = first_place && last_place && last_place->y < first_place->y;
        const float name_shift = (rises ? -14 : 14) * unit;
        std::vector<LabelRow> ways;
        for (const float distance : {gap_, 2 * gap_, 3 * gap_}) {
            LabelRow row;
            const auto add_plane = [&] (std::uint32_t plane) {
                add_label (row, {layout_.margin, floor (), layout_.z_of (plane)},
                           {distance, distance}, 1, 0,
                           concentration_text (static_cast<double> (swept.values[plane])));
            };
            add_plane (last);
            add_label (row, {layout_.margin, floor (), -layout_.depth},
                       {distance, distance + name_shift}, 1, 0, name);
            row.back ().font = name_font;
            row.back ().size = name_size;
            for (std::uint32_t plane = 0; plane < last; ++plane) add_plane (plane);
            ways.push_back (std::move (row));
        }
        const std::vector<std::size_t> lost = placer_.put_row (ways, {.vital = 3}); // ends and name
        const bool name_lost = std::find (lost.begin (), lost.end (), 1U) != lost.end ();
        if (name_lost) put_name_beside_planes (name, text_width_ (ways[0][0].text, 0, 10));
    }

    /// At the window's lower edge the name of what is swept stands beside the labels of the planes.
    /// widest  width of such a label
    void put_name_beside_planes (const std::string& name, float widest) {
        for (const float part : {1.0F, 0.5F, 0.0F}) {
            LabelRow row;
            add_label (row, {layout_.margin, floor (), -layout_.depth * part},
                       {5 * gap_ + widest, gap_}, 1, 0, name);
            row[0].font = name_font;
            row[0].size = name_size;
            if (placer_.put (row[0])) return;
        }
    }

    void add_time_axis () {
        const std::uint32_t tick = time_tick (layout_.dx);
        const float depth = time_labels_at_front (state_.rot_x) ? 0 : -layout_.depth;
        std::vector<LabelRow> ways (2);
        for (std::uint64_t t = 0; t <= data_.n_points; t += tick) {
            const float x = layout_.x_of (static_cast<std::uint32_t> (t));
            line ({x, floor (), 0}, {x, floor (), -layout_.depth});
            for (std::size_t way = 0; way < ways.size (); ++way) {
                add_label (ways[way], {x, floor (), depth},
                           {0, gap_ * (0.5F + static_cast<float> (way))}, 0, 0, std::to_string (t));
            }
        }
        placer_.put_row (ways);
    }

    const ResultData& data_;
    const ViewState& state_;
    const ViewLayout& layout_;
    Camera camera_;
    const toolkit::TextWidth& text_width_;
    Scene scene_;
    LabelPlacer placer_;
    float gap_;
    float right_; // x of the end of time
    bool from_behind_;
};

} // namespace

Scene scene_of_box (const ResultData& data, const ViewState& state, const ViewLayout& layout,
                    const toolkit::TextWidth& text_width) {
    return BoxScene (data, state, layout, text_width).build ();
}

} // namespace ostrand::viewer
