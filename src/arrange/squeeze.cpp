// Which part of a drawing can come nearer to the rest?
#include "arrange/squeeze.h"

#include "arrange/arc_place.h"
#include "arrange/field.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace ostrand::arrange {
namespace {

constexpr double clarity = 3;
constexpr std::array<double, 3> steps = {16, 8, 4};
constexpr std::size_t most_lines = 40; // tried for each step
constexpr int most_steps = 60;
constexpr std::uint64_t most_work = 1000000; // comparisons: what is large gets less
constexpr double page_worth = 900;           // for each element, of a page that is all won

std::size_t at (int i) { return static_cast<std::size_t> (i); }

class Squeezer {
  public:
    explicit Squeezer (Drawing& drawing)
        : drawing_ (drawing), wishes_ (make_wishes (drawing)), field_ (drawing, wishes_) {
        for (const DrawnNode& n : drawing.nodes) area_ += 4 * n.half_width * n.half_height;
        area_ += static_cast<double> (drawing.reactions.size ()) * square_size * square_size;
    }

    void run () {
        for (int made = 0; made < most_steps && field_.work () < most_work; ++made) {
            const Box page = bounds_of (drawing_);
            // The longer side first.
            const bool level = page.width () >= page.height ();
            if (!squeeze (level, page) && !squeeze (!level, page)) return;
        }
    }

  private:
    static Wishes make_wishes (const Drawing& drawing) {
        Wishes wishes;
        wishes.wall_weight = 0;
        wishes.clarity = clarity;
        wishes.flows.assign (drawing.reactions.size (), 0);
        return wishes;
    }

    double place (int node, bool level) const {
        const DrawnNode& n = drawing_.nodes[at (node)];
        return level ? n.at.x : n.at.y;
    }

    /// One step, at the line where it costs least. False when none is worth it.
    bool squeeze (bool level, const Box& page) {
        std::vector<double> lines;
        for (std::size_t n = 0; n < drawing_.nodes.size (); ++n)
            lines.push_back (place (static_cast<int> (n), level));
        std::sort (lines.begin (), lines.end ());
        lines.erase (std::unique (lines.begin (), lines.end ()), lines.end ());
        const std::size_t stride = 1 + lines.size () / most_lines;
        for (const double step : steps) {
            double best = worth (step, level, page);
            std::vector<Shift> shifts;
            for (std::size_t i = 1; i < lines.size () && field_.work () < most_work; i += stride) {
                if (!collect (lines[i], step, level, page)) continue;
                const double change = field_.change (shifts_, best);
                field_.undo ();
                if (change >= best) continue;
                best = change;
                shifts = shifts_;
            }
            if (shifts.empty ()) continue;
            field_.change (shifts, 1e300);
            field_.keep ();
            return true;
        }
        return false;
    }

    /// What a page that is shorter by a step is worth.
    double worth (double step, bool level, const Box& page) const {
        const double side = level ? page.width () : page.height ();
        if (side <= step) return 0;
        const auto elements =
            static_cast<double> (drawing_.nodes.size () + drawing_.reactions.size ());
        const double use = area_ / (page.width () * page.height ());
        return page_worth * elements * use * (side / (side - step) - 1);
    }

    /// What stands at the line or beyond it, and what comes in the way of that. False when it would
    /// push the other border.
    bool collect (double line, double step, bool level, const Box& page) {
        shifts_.clear ();
        moves_.assign (drawing_.nodes.size (), 0);
        list_.clear ();
        for (std::size_t n = 0; n < drawing_.nodes.size (); ++n) {
            const int node = static_cast<int> (n);
            const DrawnNode& own = drawing_.nodes[n];
            const double end = level ? own.at.x + own.half_width : own.at.y + own.half_height;
            const double border = level ? page.right : page.bottom;
            if (place (node, level) < line && end <= border - step) continue;
            moves_[n] = 1;
            list_.push_back (node);
        }
        for (std::size_t i = 0; i < list_.size (); ++i) {
            const DrawnNode& own = drawing_.nodes[at (list_[i])];
            const Point to =
                level ? Point{own.at.x - step, own.at.y} : Point{own.at.x, own.at.y - step};
            const bool out =
                level ? to.x - own.half_width < page.left : to.y - own.half_height < page.top;
            if (out) return false;
            shifts_.push_back ({list_[i], to});
            in_the_way_.clear ();
            field_.nodes_in_the_way (list_[i], to, in_the_way_);
            for (const int other : in_the_way_) {
                if (moves_[at (other)]) continue;
                moves_[at (other)] = 1;
                list_.push_back (other);
            }
        }
        return list_.size () < drawing_.nodes.size ();
    }

    Drawing& drawing_;
    Wishes wishes_;
    Field field_;
    double area_ = 0;
    std::vector<Shift> shifts_;
    std::vector<char> moves_;
    std::vector<int> list_;
    std::vector<int> in_the_way_;
};

} // namespace

void squeeze (Drawing& drawing) {
    if (drawing.nodes.size () > 1) Squeezer (drawing).run ();
}

} // namespace ostrand::arrange
