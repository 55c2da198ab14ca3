// Edges, centres and gaps, one axis at a time.
#include "editor/guides.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ostrand::editor {
namespace {

using document::Extent;

constexpr float in_line = 0.51F; // half a unit, and rounding
constexpr float beyond = 6;      // of a line behind the boxes it joins

/// A box seen along one axis: `low` to `high` on it, `near` to `far` across it.
struct Span {
    float low;
    float high;
    float near;
    float far;

    float centre () const { return (low + high) / 2; }
    bool beside (const Span& other) const { return near < other.far && other.near < far; }
};

Span span_of (const Extent& box, bool along_x) {
    return along_x ? Span{box.x, box.right, box.y, box.bottom}
                   : Span{box.y, box.bottom, box.x, box.right};
}

/// The smallest move that brings something in line.
class Nearest {
  public:
    explicit Nearest (float reach) : reach_ (reach) {}
    void offer (float move) {
        if (std::fabs (move) > reach_ || (move_ && std::fabs (move) >= std::fabs (*move_))) return;
        move_ = move;
    }
    int whole () const { return move_ ? static_cast<int> (std::lround (*move_)) : 0; }

  private:
    float reach_;
    std::optional<float> move_;
};

/// The boxes next to a span along its axis, nearest first, of those that stand beside it.
struct Row {
    std::vector<Span> before;
    std::vector<Span> behind;
};

Row row_of (const Span& box, const std::vector<Span>& others) {
    Row row;
    for (const Span& other : others) {
        if (!box.beside (other)) continue;
        if (other.high <= box.low) row.before.push_back (other);
        if (other.low >= box.high) row.behind.push_back (other);
    }
    std::ranges::sort (row.before, [] (const Span& a, const Span& b) { return a.high > b.high; });
    std::ranges::sort (row.behind, [] (const Span& a, const Span& b) { return a.low < b.low; });
    return row;
}

class AxisSearch {
  public:
    AxisSearch (const Span& box, const std::vector<Span>& others, bool along_x, float reach)
        : box_ (box), others_ (others), along_x_ (along_x), nearest_ (reach) {}

    void search (Guides& found) {
        edges (found);
        gaps (found);
        (along_x_ ? found.snap_x : found.snap_y) = nearest_.whole ();
    }

  private:
    void edges (Guides& found) {
        for (const auto place : {&Span::low, &Span::high}) side (found, box_.*place, place);
        // One line for each place, from the first to the last box that it touches.
        std::optional<Guide> line;
        for (const Span& other : others_) join (line, other.centre () - box_.centre (), other);
        if (line) found.lines.push_back (*line);
    }

    void side (Guides& found, float at, float Span::*place) {
        std::optional<Guide> line;
        for (const Span& other : others_) join (line, other.*place - at, other);
        if (!line) return;
        line->at = at;
        found.lines.push_back (*line);
    }

    void join (std::optional<Guide>& line, float away, const Span& other) {
        nearest_.offer (away);
        if (std::fabs (away) > in_line) return;
        if (!line)
            line = Guide{.kind = Guide::Kind::edge,
                         .vertical = along_x_,
                         .at = box_.centre (),
                         .from = box_.near - beyond,
                         .to = box_.far + beyond};
        line->from = std::min (line->from, other.near - beyond);
        line->to = std::max (line->to, other.far + beyond);
    }

    void gaps (Guides& found) {
        const Row row = row_of (box_, others_);
        if (!row.before.empty () && !row.behind.empty ()) {
            // Between two neighbours: half of the difference makes both gaps equal.
            const Span& a = row.before.front ();
            const Span& b = row.behind.front ();
            const float first = box_.low - a.high;
            const float second = b.low - box_.high;
            nearest_.offer ((second - first) / 2);
            if (std::fabs (second - first) <= 2 * in_line) {
                gap (found, a.high, box_.low);
                gap (found, box_.high, b.low);
            }
        }
        if (row.before.size () > 1) {
            const float present = row.before[0].low - row.before[1].high;
            const float own = box_.low - row.before[0].high;
            if (present > 0) {
                nearest_.offer (present - own);
                if (std::fabs (present - own) <= in_line) {
                    gap (found, row.before[1].high, row.before[0].low);
                    gap (found, row.before[0].high, box_.low);
                }
            }
        }
        if (row.behind.size () > 1) {
            const float present = row.behind[1].low - row.behind[0].high;
            const float own = row.behind[0].low - box_.high;
            if (present > 0) {
                nearest_.offer (own - present);
                if (std::fabs (present - own) <= in_line) {
                    gap (found, box_.high, row.behind[0].low);
                    gap (found, row.behind[0].high, row.behind[1].low);
                }
            }
        }
    }

    void gap (Guides& found, float from, float to) const {
        const Guide line{.kind = Guide::Kind::gap,
                         .vertical = !along_x_,
                         .at = (box_.near + box_.far) / 2,
                         .from = from,
                         .to = to};
        if (std::ranges::find (found.lines, line) == found.lines.end ())
            found.lines.push_back (line);
    }

    const Span& box_;
    const std::vector<Span>& others_;
    bool along_x_;
    Nearest nearest_;
};

} // namespace

Guides find_guides (const Extent& box, const std::vector<Extent>& neighbours, float reach) {
    Guides found;
    for (const bool along_x : {true, false}) {
        std::vector<Span> others;
        others.reserve (neighbours.size ());
        for (const Extent& one : neighbours) others.push_back (span_of (one, along_x));
        const Span own = span_of (box, along_x);
        AxisSearch (own, others, along_x, reach).search (found);
    }
    return found;
}

} // namespace ostrand::editor
