// The legend.
#include "viewer/legend.h"

#include "base/text.h"
#include "toolkit/pixels.h"

#include <algorithm>
#include <cmath>

namespace ostrand::viewer {
namespace {

// Units. The first row and column stand where they always stood.
constexpr float first_row = 20;
constexpr float row_height = 20;
constexpr float line_left = 20;
constexpr float line_right = 50;
constexpr float line_width = 3;
constexpr float text_left = 58;
constexpr float base_line = 5; // below the line
constexpr int letters = 16;
constexpr int bold = 1;
constexpr float half_row = 8;     // what a row's letters and line take above and below
constexpr float border = 12;      // right of the last column and below the last row
constexpr float between = 18;     // from a column's names to the lines of the next
constexpr float least_room = 120; // for a name that is cut

constexpr float uncut = 1e9F; // wider than any name

struct Row {
    std::string text;
    float width = 0; // device pixels
    std::uint32_t colour = 0;
    bool has_line = true;
};

class Legend {
  public:
    Legend (const ViewSize& size, const toolkit::TextWidth& text_width)
        : size_ (size), text_width_ (text_width), unit_ (size.unit) {}

    void add_row (const std::string& text, std::uint32_t colour) {
        ++all_;
        // What no window of this size can show is counted and not measured.
        const float most_columns = size_.w / ((text_left - line_left + between) * unit_) + 1;
        const auto most = static_cast<float> (rows_above (size_.hp)) * most_columns;
        if (static_cast<float> (rows_.size ()) > most) return;
        rows_.push_back ({text, text_width_ (text, bold, letters), colour});
    }

    /// Finds the number of rows in a column, and cuts what does not fit.
    void arrange (const LegendRoom& room) {
        per_column_ = rows_above (room.column);
        if (columns () > 1) {
            per_column_ = rows_above (room.columns);
            const std::size_t highest = rows_above (size_.hp);
            while (per_column_ < highest && widest_columns (uncut) > room_of (columns ()))
                ++per_column_;
        }
        while (columns () > 1 && widest_columns (least_room * unit_) > room_of (columns ())) {
            leave_out ((columns () - 1) * per_column_);
        }
        cut_names ();
    }

    void draw (Scene& scene, LabelPlacer& placer) const {
        const float width = toolkit::line_pixels (line_width, unit_);
        float left = 0;
        for (std::size_t begin = 0; begin < rows_.size (); begin += per_column_) {
            const std::size_t end = std::min (begin + per_column_, rows_.size ());
            for (std::size_t i = begin; i < end; ++i) {
                const Row& row = rows_[i];
                const float y = (first_row + static_cast<float> (i - begin) * row_height) * unit_;
                if (row.has_line) {
                    const float place = toolkit::line_place (y, width);
                    scene.legend_lines.push_back (
                        {{{std::round (left + line_left * unit_), place},
                          {std::round (left + line_right * unit_), place}},
                         row.colour,
                         width});
                }
                const float text = std::round (left + text_left * unit_);
                scene.texts.push_back (
                    {{text, std::round (y + base_line * unit_)}, row.text, bold, letters});
                placer.reserve ({{left + line_left * unit_, y - half_row * unit_},
                                 {text + row.width, y + half_row * unit_}});
            }
            left += std::ceil ((text_left - line_left + between) * unit_ + widest (begin, uncut));
        }
    }

  private:
    std::size_t rows_above (float bottom) const {
        const float rows = (bottom - (border + first_row) * unit_) / (row_height * unit_);
        return static_cast<std::size_t> (std::max (rows, 0.0F)) + 1;
    }
    std::size_t columns () const { return (rows_.size () + per_column_ - 1) / per_column_; }

    /// What a row takes when names are cut to a width.
    static float width_of (const Row& row, float most) {
        return row.has_line ? std::min (row.width, most) : row.width;
    }
    /// The widest row of the column that begins with this one.
    float widest (std::size_t begin, float most) const {
        float widest = 0;
        for (std::size_t i = begin; i < std::min (begin + per_column_, rows_.size ()); ++i) {
            widest = std::max (widest, width_of (rows_[i], most));
        }
        return widest;
    }
    /// The widths of all columns' names together, when they are cut to a width.
    float widest_columns (float most) const {
        float sum = 0;
        for (std::size_t i = 0; i < rows_.size (); i += per_column_) sum += widest (i, most);
        return sum;
    }
    /// What the names of so many columns may take together.
    float room_of (std::size_t columns) const {
        const auto more = static_cast<float> (columns - 1);
        const float taken = text_left + border + more * (text_left - line_left + between);
        return size_.w - taken * unit_ - more; // each begins on a whole pixel
    }

    /// Leaves only so many rows, the last of which tells how many of all are missing.
    void leave_out (std::size_t shown) {
        rows_.resize (shown - 1);
        const std::string text = format_text ("(%zu more)", all_ - rows_.size ());
        rows_.push_back ({text, text_width_ (text, bold, letters), 0, false});
    }

    /// Cuts the names of the widest columns as far as needed.
    void cut_names () {
        const float room = room_of (columns ());
        if (widest_columns (uncut) <= room) return;
        float low = 0;
        float high = room;
        while (high - low > 0.5F) {
            const float middle = (low + high) / 2;
            (widest_columns (middle) <= room ? low : high) = middle;
        }
        for (Row& row : rows_) {
            if (row.width <= low || !row.has_line) continue;
            row.text = toolkit::fitted_text (row.text, low, text_width_, bold, letters);
            row.width = text_width_ (row.text, bold, letters);
        }
    }

    const ViewSize& size_;
    const toolkit::TextWidth& text_width_;
    float unit_;
    std::vector<Row> rows_;
    std::size_t all_ = 0; // species to show
    std::size_t per_column_ = 1;
};

} // namespace

void add_legend (const ResultData& data, const ViewState& state, const ViewSize& size,
                 const LegendRoom& room, const toolkit::TextWidth& text_width, Scene& scene,
                 LabelPlacer& placer) {
    Legend legend (size, text_width);
    bool any = false;
    for (std::uint32_t species = 0; species < data.n_displayed; ++species) {
        if (!state.shows (species)) continue;
        legend.add_row ("[" + data.names[species] + "]", data.colours[species]);
        any = true;
    }
    if (!any) return;
    legend.arrange (room);
    legend.draw (scene, placer);
}

} // namespace ostrand::viewer
