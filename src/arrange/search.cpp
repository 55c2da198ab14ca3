// Which moves make a drawing better?
#include "arrange/search.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ostrand::arrange {
namespace {

constexpr double lattice = 4; // centres stand on multiples of it, so that straight lines come about
constexpr std::size_t most_followers = 60;
constexpr std::uint64_t steps_of_heat = 32; // it falls by steps of so many trials

std::size_t at (int i) { return static_cast<std::size_t> (i); }

double on_lattice (double value) { return std::round (value / lattice) * lattice; }

class Search {
  public:
    Search (Drawing& drawing, Field& field, const Wishes& wishes, const SearchPlan& plan,
            Random& random)
        : drawing_ (drawing), field_ (field), wishes_ (wishes), plan_ (plan), random_ (random) {
        for (std::size_t n = 0; n < drawing.nodes.size (); ++n) {
            if (!drawing.nodes[n].fixed) movable_.push_back (static_cast<int> (n));
            hangs_.push_back (drawing.hangs (static_cast<int> (n)));
        }
    }

    void run () {
        if (movable_.empty ()) return;
        const std::uint64_t begin = field_.work ();
        const double ratio = plan_.cold / plan_.hot;
        // Work that does nothing counts, too, so that the loop ends.
        std::uint64_t idle = 0;
        std::uint64_t steps = 0;
        while (true) {
            const double done = static_cast<double> (field_.work () - begin + idle) /
                                static_cast<double> (std::max<std::uint64_t> (plan_.work, 1));
            if (done >= 1) break;
            if (steps++ % steps_of_heat == 0) heat_ = plan_.hot * std::pow (ratio, done);
            reach_ = plan_.far + done * (plan_.near - plan_.far);
            idle += 20;
            propose ();
            if (shifts_.empty ()) continue;
            const double limit = -heat_ * std::log (1 - random_.unit () + 1e-300);
            if (field_.change (shifts_, limit) < limit) {
                field_.keep ();
            } else {
                field_.undo ();
            }
        }
    }

  private:
    void propose () {
        shifts_.clear ();
        const int v = movable_[at (random_.below (movable_.size ()))];
        const double kind = random_.unit ();
        if (kind < plan_.crowds) {
            if (random_.unit () < 0.12)
                shift_side (v);
            else
                push (v);
            return;
        }
        if (hangs_[at (v)] && kind < 0.7) {
            beside_anchor (v);
        } else if (kind < 0.15) {
            swap (v);
        } else if (kind < 0.3) {
            align (v);
        } else if (kind < 0.45) {
            towards_neighbours (v);
        } else if (kind < 0.5) {
            reflect (v);
        } else {
            jitter (v);
        }
    }

    /// Moves v and what hangs on it.
    void move_with_followers (int v, Point to) {
        to = {on_lattice (to.x), on_lattice (to.y)};
        const Point from = drawing_.nodes[at (v)].at;
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        if (dx == 0 && dy == 0) return;
        shifts_.push_back ({v, to});
        for (const int r : drawing_.node_reactions[at (v)]) {
            const DrawnReaction& reaction = drawing_.reactions[at (r)];
            const int other = reaction.from == v ? reaction.to : reaction.from;
            // An end that has only this arc follows whole, the square then, too.
            double part = 0.5;
            if (other != v && drawing_.degree (other) == 1 && drawing_.degree (v) > 1) {
                follow (other, dx, dy);
                part = 1;
            }
            for (const int l : drawing_.reaction_links[at (r)]) {
                const int node = drawing_.links[at (l)].node;
                if (hangs_[at (node)]) follow (node, part * dx, part * dy);
            }
        }
    }

    void follow (int node, double dx, double dy) {
        if (shifts_.size () > most_followers || drawing_.nodes[at (node)].fixed) return;
        // What hangs on two squares is met twice.
        for (const Shift& shift : shifts_)
            if (shift.node == node) return;
        const Point p = drawing_.nodes[at (node)].at;
        shifts_.push_back ({node, {on_lattice (p.x + dx), on_lattice (p.y + dy)}});
    }

    void jitter (int v) {
        const Point p = drawing_.nodes[at (v)].at;
        const double reach = reach_ * (0.1 + random_.unit ());
        move_with_followers (
            v, {p.x + reach * random_.symmetric (), p.y + reach * random_.symmetric ()});
    }

    /// Moves v towards the middle of the walls, and what stands in its way before it.
    void push (int v) {
        const Point middle{(wishes_.walls.left + wishes_.walls.right) / 2,
                           (wishes_.walls.top + wishes_.walls.bottom) / 2};
        const Point p = drawing_.nodes[at (v)].at;
        const double step = lattice * (1 + random_.below (5));
        Point by{middle.x > p.x ? step : -step, 0};
        if (random_.unit () < 0.5) by = {0, middle.y > p.y ? step : -step};
        pushed_.assign (1, v);
        if (++push_ == 0) return;
        push_mark_.resize (drawing_.nodes.size (), 0);
        push_mark_[at (v)] = push_;
        for (std::size_t i = 0; i < pushed_.size (); ++i) {
            const int n = pushed_[i];
            if (drawing_.nodes[at (n)].fixed || pushed_.size () > most_followers)
                return shifts_.clear ();
            const Point to{drawing_.nodes[at (n)].at.x + by.x, drawing_.nodes[at (n)].at.y + by.y};
            shifts_.push_back ({n, to});
            in_the_way_.clear ();
            field_.nodes_in_the_way (n, to, in_the_way_);
            for (const int m : in_the_way_) {
                if (push_mark_[at (m)] == push_) continue;
                push_mark_[at (m)] = push_;
                pushed_.push_back (m);
            }
        }
    }

    /// Moves everything on v's side of the drawing, from v outwards, towards the middle.
    void shift_side (int v) {
        const Point middle{(wishes_.walls.left + wishes_.walls.right) / 2,
                           (wishes_.walls.top + wishes_.walls.bottom) / 2};
        const Point p = drawing_.nodes[at (v)].at;
        const double step = lattice * (1 + random_.below (4));
        const bool level = random_.unit () < 0.5;
        const double sign = (level ? p.x < middle.x : p.y < middle.y) ? 1 : -1;
        for (std::size_t n = 0; n < drawing_.nodes.size (); ++n) {
            const DrawnNode& node = drawing_.nodes[n];
            const double beyond = level ? p.x - node.at.x : p.y - node.at.y;
            if (node.fixed || sign * beyond < 0) continue;
            shifts_.push_back (
                {static_cast<int> (n), level ? Point{node.at.x + sign * step, node.at.y}
                                             : Point{node.at.x, node.at.y + sign * step}});
        }
    }

    /// The places that v's arcs lead to: other ends of main arcs and squares.
    void gather_neighbours (int v) {
        neighbours_.clear ();
        for (const int r : drawing_.node_reactions[at (v)]) {
            const DrawnReaction& reaction = drawing_.reactions[at (r)];
            neighbours_.push_back (
                drawing_.nodes[at (reaction.from == v ? reaction.to : reaction.from)].at);
        }
        for (const int l : drawing_.node_links[at (v)])
            neighbours_.push_back (field_.arc (drawing_.links[at (l)].reaction).square);
    }

    void towards_neighbours (int v) {
        gather_neighbours (v);
        if (neighbours_.empty ()) return;
        Point sum;
        for (const Point& p : neighbours_) {
            sum.x += p.x;
            sum.y += p.y;
        }
        const auto n = static_cast<double> (neighbours_.size ());
        const double spread = neighbours_.size () == 1 ? 120 : 60;
        move_with_followers (v, {sum.x / n + spread * random_.symmetric (),
                                 sum.y / n + spread * random_.symmetric ()});
    }

    /// Upright above or below, or level beside a neighbour.
    void align (int v) {
        gather_neighbours (v);
        if (neighbours_.empty ()) return;
        const Point q = neighbours_[at (random_.below (neighbours_.size ()))];
        const Point p = drawing_.nodes[at (v)].at;
        move_with_followers (v, random_.unit () < 0.5 ? Point{q.x, p.y} : Point{p.x, q.y});
    }

    /// A leaf takes a place around the square it hangs on.
    void beside_anchor (int v) {
        const DrawnLink& link = drawing_.links[at (drawing_.node_links[at (v)][0])];
        const ArcPlace& arc = field_.arc (link.reaction);
        const Point anchor = link.end == LinkEnd::substrate ? arc.substrate_end
                             : link.end == LinkEnd::product ? arc.product_end
                                                            : arc.square;
        const DrawnNode& node = drawing_.nodes[at (v)];
        const double angle = 2 * std::numbers::pi * random_.unit ();
        const double c = std::cos (angle);
        const double s = std::sin (angle);
        // From the anchor to the edge of the box, and on to its middle.
        const double inside =
            std::min (std::abs (c) > 1e-9 ? node.half_width / std::abs (c) : 1e9,
                      std::abs (s) > 1e-9 ? node.half_height / std::abs (s) : 1e9);
        const double square = link.end == LinkEnd::square ? square_size / 2 : 0;
        const double distance =
            inside + ideal_link + square + 30 * random_.unit () * random_.unit ();
        const Point to{on_lattice (anchor.x + c * distance), on_lattice (anchor.y + s * distance)};
        if (to == node.at) return;
        shifts_.push_back ({v, to});
    }

    void swap (int v) {
        const int w = movable_[at (random_.below (movable_.size ()))];
        if (v == w) return;
        const Point p = drawing_.nodes[at (v)].at;
        const Point q = drawing_.nodes[at (w)].at;
        if (std::abs (p.x - q.x) + std::abs (p.y - q.y) > 6 * reach_) return;
        shifts_.push_back ({v, q});
        shifts_.push_back ({w, p});
    }

    /// All leaves of a reaction change to the other side of its arc.
    void reflect (int v) {
        const auto& reactions = drawing_.node_reactions[at (v)];
        int r = -1;
        if (!reactions.empty ()) {
            r = reactions[at (random_.below (reactions.size ()))];
        } else if (!drawing_.node_links[at (v)].empty ()) {
            r = drawing_.links[at (drawing_.node_links[at (v)][0])].reaction;
        }
        if (r < 0) return;
        const ArcPlace& arc = field_.arc (r);
        if (arc.length <= 0) return;
        const double ux = (arc.end.x - arc.start.x) / arc.length;
        const double uy = (arc.end.y - arc.start.y) / arc.length;
        for (const int l : drawing_.reaction_links[at (r)]) {
            const int n = drawing_.links[at (l)].node;
            if (!hangs_[at (n)] || drawing_.nodes[at (n)].fixed) continue;
            const Point p = drawing_.nodes[at (n)].at;
            const double across = (p.x - arc.start.x) * uy - (p.y - arc.start.y) * ux;
            if (std::any_of (shifts_.begin (), shifts_.end (),
                             [&] (const Shift& shift) { return shift.node == n; }))
                continue;
            shifts_.push_back (
                {n, {on_lattice (p.x - 2 * across * uy), on_lattice (p.y + 2 * across * ux)}});
            if (shifts_.size () > most_followers) break;
        }
    }

    Drawing& drawing_;
    Field& field_;
    const Wishes& wishes_;
    const SearchPlan& plan_;
    Random& random_;
    std::vector<int> movable_;
    std::vector<char> hangs_;
    std::vector<Shift> shifts_;
    std::vector<Point> neighbours_;
    std::vector<int> pushed_;
    std::vector<int> in_the_way_;
    std::vector<std::uint32_t> push_mark_;
    std::uint32_t push_ = 0;
    double heat_ = 1;
    double reach_ = 1;
};

} // namespace

void search (Drawing& drawing, Field& field, const Wishes& wishes, const SearchPlan& plan,
             Random& random) {
    Search (drawing, field, wishes, plan, random).run ();
}

} // namespace ostrand::arrange
