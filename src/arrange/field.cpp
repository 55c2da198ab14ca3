// How do the costs change when nodes move? A grid of cells tells what is near.
#include "arrange/field.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrand::arrange {
namespace {

// How far an element looks for others, by its kind: the largest gap that it keeps.
constexpr float node_reach = 13;
constexpr float square_reach = 10;
constexpr float line_reach = 10;
constexpr double most_cells_per_element = 8;

std::size_t at (int i) { return static_cast<std::size_t> (i); }

/// Counts stamps up; when they are used up all begin anew.
template <typename Numbers>
void next_number (std::uint32_t& number, Numbers& stamps) {
    if (++number != 0) return;
    std::fill (stamps.begin (), stamps.end (), 0);
    number = 1;
}

} // namespace

Field::Field (Drawing& drawing, const Wishes& wishes) : drawing_ (drawing), wishes_ (wishes) {
    first_square_ = static_cast<int> (drawing.nodes.size ());
    first_arc_ = first_square_ + static_cast<int> (drawing.reactions.size ());
    first_link_ = first_arc_ + static_cast<int> (drawing.reactions.size ());
    count_ = first_link_ + static_cast<int> (drawing.links.size ());
    arcs_.resize (drawing.reactions.size ());
    square_reach_.resize (drawing.reactions.size ());
    segments_.resize (drawing.reactions.size () + drawing.links.size ());
    boxes_.resize (at (count_));
    alone_.resize (at (count_));
    pairs_.resize (at (count_));
    seen_.assign (at (count_), 0);
    in_trial_.assign (at (count_), 0);
    rigid_mark_.assign (at (count_), 0);

    const Box bounds = bounds_of (drawing);
    const double spare = 0.2 * std::max (bounds.width (), bounds.height ()) + 100;
    origin_x_ = static_cast<float> (bounds.left - spare);
    origin_y_ = static_cast<float> (bounds.top - spare);
    const double width = bounds.width () + 2 * spare;
    const double height = bounds.height () + 2 * spare;
    const double most = count_ * most_cells_per_element + 400;
    while ((width / cell_) * (height / cell_) > most) cell_ *= 1.5F;
    columns_ = std::max (1, static_cast<int> (width / cell_) + 1);
    rows_ = std::max (1, static_cast<int> (height / cell_) + 1);
    for (auto* const cells : {&solid_cells_, &line_cells_})
        cells->resize (at (columns_) * at (rows_));

    for (std::size_t r = 0; r < drawing.reactions.size (); ++r)
        place_reaction (static_cast<int> (r));
    for (std::size_t l = 0; l < drawing.links.size (); ++l) place_link (static_cast<int> (l));
    // Each element looks at those that stand in the grid before it.
    trial_ = 1;
    for (int e = 0; e < count_; ++e) {
        boxes_[at (e)] = box_of (e);
        alone_[at (e)] = alone (e);
        around (e, std::numeric_limits<double>::infinity ());
        insert (e);
    }
    for (const TrialPair& p : trial_pairs_) {
        pairs_[at (p.a)].push_back ({p.b, p.cost});
        pairs_[at (p.b)].push_back ({p.a, p.cost});
    }
    trial_pairs_.clear ();
}

void Field::place_reaction (int r) {
    const DrawnReaction& reaction = drawing_.reactions[at (r)];
    ArcPlace& arc = arcs_[at (r)];
    arc = arc_place (drawing_.nodes[at (reaction.from)], drawing_.nodes[at (reaction.to)],
                     reaction.side);
    segments_[at (r)] = {arc.start, arc.end};
    const double dx = std::abs (arc.end.x - arc.start.x);
    const double dy = std::abs (arc.end.y - arc.start.y);
    const double length = std::max (arc.length, 1e-9);
    square_reach_[at (r)] = square_size / 2 * std::max (1.0, (dx + dy) / length);
}

void Field::place_link (int l) {
    const DrawnLink& link = drawing_.links[at (l)];
    const ArcPlace& arc = arcs_[at (link.reaction)];
    const DrawnNode& node = drawing_.nodes[at (link.node)];
    Point target = link.end == LinkEnd::substrate ? arc.substrate_end
                   : link.end == LinkEnd::product ? arc.product_end
                                                  : arc.square;
    Segment& segment = segments_[drawing_.reactions.size () + at (l)];
    segment.from = leaving_point (node, target);
    if (link.end == LinkEnd::square) {
        const double dx = node.at.x - target.x;
        const double dy = node.at.y - target.y;
        const double reach = std::max (std::abs (dx), std::abs (dy));
        const double t = reach > square_size / 2 ? square_size / 2 / reach : 0;
        target = {target.x + t * dx, target.y + t * dy};
    }
    segment.to = target;
}

Field::SmallBox Field::box_of (int element) const {
    const auto box = [] (double left, double top, double right, double bottom) {
        return SmallBox{static_cast<float> (left), static_cast<float> (top),
                        static_cast<float> (right), static_cast<float> (bottom)};
    };
    switch (kind_of (element)) {
    case Kind::node: {
        const DrawnNode& node = drawing_.nodes[at (element)];
        return box (node.at.x - node.half_width, node.at.y - node.half_height,
                    node.at.x + node.half_width, node.at.y + node.half_height);
    }
    case Kind::square: {
        const Point p = arcs_[at (element - first_square_)].square;
        const double reach = square_reach_[at (element - first_square_)];
        return box (p.x - reach, p.y - reach, p.x + reach, p.y + reach);
    }
    case Kind::arc:
    case Kind::link: break;
    }
    const Segment& s = segment (element);
    return box (std::min (s.from.x, s.to.x), std::min (s.from.y, s.to.y),
                std::max (s.from.x, s.to.x), std::max (s.from.y, s.to.y));
}

/// Calls visit (cell) for the cells that an element, widened by `margin`, may touch, each once.
template <typename Visit>
void Field::cells_of (int element, float margin, Visit visit) const {
    const SmallBox& box = boxes_[at (element)];
    const float scale = 1 / cell_;
    const auto column = [&] (float x) {
        return static_cast<int> (
            std::clamp ((x - origin_x_) * scale, 0.0F, static_cast<float> (columns_ - 1)));
    };
    const auto row = [&] (float y) {
        return static_cast<int> (
            std::clamp ((y - origin_y_) * scale, 0.0F, static_cast<float> (rows_ - 1)));
    };
    const int top = row (box.top - margin);
    const int bottom = row (box.bottom + margin);
    const int left = column (box.left - margin);
    const int right = column (box.right + margin);
    const bool whole = element < first_arc_ || bottom - top < 2 || right - left < 2;
    for (int y = top; y <= bottom; ++y) {
        int first = left;
        int last = right;
        if (!whole) {
            // Only the part of the line that lies in this row (the outer rows hold what lies
            // beyond).
            const Segment& s = segment (element);
            const double dy = s.to.y - s.from.y;
            double t0 = 0;
            double t1 = 1;
            if (dy != 0) {
                const double upper =
                    y == 0 ? -1e30 : origin_y_ + static_cast<float> (y) * cell_ - margin;
                const double lower =
                    y == rows_ - 1 ? 1e30 : origin_y_ + static_cast<float> (y + 1) * cell_ + margin;
                t0 = (upper - s.from.y) / dy;
                t1 = (lower - s.from.y) / dy;
                if (t0 > t1) std::swap (t0, t1);
                t0 = std::clamp (t0, 0.0, 1.0);
                t1 = std::clamp (t1, 0.0, 1.0);
            }
            double x0 = s.from.x + t0 * (s.to.x - s.from.x);
            double x1 = s.from.x + t1 * (s.to.x - s.from.x);
            if (x0 > x1) std::swap (x0, x1);
            first = std::max (first, column (static_cast<float> (x0) - margin - 0.1F));
            last = std::min (last, column (static_cast<float> (x1) + margin + 0.1F));
        }
        for (int x = first; x <= last; ++x) visit (at (y) * at (columns_) + at (x));
    }
}

void Field::insert (int element) {
    const Entry entry{boxes_[at (element)], element};
    Cells& cells = element < first_arc_ ? solid_cells_ : line_cells_;
    cells_of (element, 0, [&] (std::size_t cell) { cells[cell].push_back (entry); });
}

void Field::remove (int element) {
    Cells& cells = element < first_arc_ ? solid_cells_ : line_cells_;
    cells_of (element, 0, [&] (std::size_t cell) {
        std::vector<Entry>& members = cells[cell];
        for (Entry& entry : members) {
            if (entry.element != element) continue;
            entry = members.back ();
            members.pop_back ();
            return;
        }
    });
}

/// Costs of an element with all others that stand in the grid and are not being tried elsewhere;
/// stops as soon as they reach `limit`. What costs something is noted in trial_pairs_.
double Field::around (int element, double limit) {
    next_number (query_, seen_);
    seen_[at (element)] = query_;
    // Nodes and squares first: they cost the most.
    double sum = around (element, solid_cells_, limit);
    if (sum < limit) sum += around (element, line_cells_, limit - sum);
    return sum;
}

double Field::around (int element, const Cells& cells, double limit) {
    double sum = 0;
    const float reach = element < first_square_ ? node_reach
                        : element < first_arc_  ? square_reach
                                                : line_reach;
    const SmallBox& own = boxes_[at (element)];
    const SmallBox near{own.left - reach, own.top - reach, own.right + reach, own.bottom + reach};
    cells_of (element, reach, [&] (std::size_t cell) {
        const std::vector<Entry>& entries = cells[cell];
        work_ += entries.size ();
        if (sum >= limit) return;
        // Most are not near, and no processor guesses which are: found without a branch.
        near_.resize (std::max (near_.size (), entries.size ()));
        std::size_t found = 0;
        for (const Entry& entry : entries) {
            near_[found] = entry.element;
            found += static_cast<std::size_t> (static_cast<int> (entry.box.left <= near.right) &
                                               static_cast<int> (entry.box.right >= near.left) &
                                               static_cast<int> (entry.box.top <= near.bottom) &
                                               static_cast<int> (entry.box.bottom >= near.top));
        }
        for (std::size_t i = 0; i < found && sum < limit; ++i) {
            const int other = near_[i];
            if (seen_[at (other)] == query_ || in_trial_[at (other)] == trial_) continue;
            seen_[at (other)] = query_;
            const double cost = pair (element, other);
            if (cost == 0) continue;
            trial_pairs_.push_back ({element, other, cost});
            sum += cost;
        }
    });
    return sum;
}

void Field::wishes_changed () {
    for (int e = 0; e < count_; ++e) alone_[at (e)] = alone (e);
}

void Field::nodes_in_the_way (int node, Point place, std::vector<int>& found) const {
    const DrawnNode& n = drawing_.nodes[at (node)];
    const double w = n.half_width + least_node_gap;
    const double h = n.half_height + least_node_gap;
    const auto column = [&] (double x) {
        return std::clamp (static_cast<int> ((x - origin_x_) / cell_), 0, columns_ - 1);
    };
    const auto row = [&] (double y) {
        return std::clamp (static_cast<int> ((y - origin_y_) / cell_), 0, rows_ - 1);
    };
    for (int y = row (place.y - h); y <= row (place.y + h); ++y) {
        for (int x = column (place.x - w); x <= column (place.x + w); ++x) {
            for (const Entry& entry : solid_cells_[at (y) * at (columns_) + at (x)]) {
                if (entry.element >= first_square_ || entry.element == node) continue;
                const SmallBox& b = entry.box;
                if (b.left < place.x + w && b.right > place.x - w && b.top < place.y + h &&
                    b.bottom > place.y - h)
                    found.push_back (entry.element);
            }
        }
    }
}

double Field::total () const {
    double sum = 0;
    for (int e = 0; e < count_; ++e) {
        sum += alone_[at (e)];
        for (const PairCost& p : pairs_[at (e)])
            if (p.other > e) sum += p.cost;
    }
    return sum;
}

/// Lists all elements that a shift of nodes moves: the nodes, then arcs, squares, and the links
/// that end on those.
void Field::collect (std::span<const Shift> shifts) {
    saved_.clear ();
    saved_arcs_.clear ();
    saved_lines_.clear ();
    before_.clear ();
    trial_pairs_.clear ();
    next_number (trial_, in_trial_);
    const auto add = [&] (int element) {
        if (in_trial_[at (element)] == trial_) return;
        in_trial_[at (element)] = trial_;
        saved_.push_back ({element, boxes_[at (element)], alone_[at (element)]});
    };
    for (const Shift& shift : shifts) {
        before_.push_back ({shift.node, drawing_.nodes[at (shift.node)].at});
        add (shift.node);
    }
    for (const Shift& shift : shifts) {
        for (const int r : drawing_.node_reactions[at (shift.node)]) {
            add (first_square_ + r);
            add (first_arc_ + r);
            for (const int l : drawing_.reaction_links[at (r)]) add (first_link_ + l);
        }
        for (const int l : drawing_.node_links[at (shift.node)]) add (first_link_ + l);
    }
}

/// Finds out which of the moved elements keep their places to each other: when all nodes move by
/// the same way, what lies between moved nodes only.
void Field::find_rigid (std::span<const Shift> shifts) {
    rigid_count_ = 0;
    rigid_.assign (saved_.size (), 0);
    if (shifts.size () < 2) return;
    const auto way = [] (const Shift& shift, const Shift& old) {
        return Point{shift.to.x - old.to.x, shift.to.y - old.to.y};
    };
    const Point first = way (shifts[0], before_[0]);
    for (std::size_t i = 1; i < shifts.size (); ++i)
        if (way (shifts[i], before_[i]) != first) return;
    // Nodes come first among the saved elements, and only moved nodes are marked.
    const auto moves = [&] (int node) { return in_trial_[at (node)] == trial_; };
    for (std::size_t i = 0; i < saved_.size (); ++i) {
        const int e = saved_[i].element;
        const auto whole = [&] (int r) {
            return moves (drawing_.reactions[at (r)].from) && moves (drawing_.reactions[at (r)].to);
        };
        bool rigid = true;
        if (e >= first_link_) {
            const DrawnLink& link = drawing_.links[at (e - first_link_)];
            rigid = moves (link.node) && whole (link.reaction);
        } else if (e >= first_square_) {
            rigid = whole (e >= first_arc_ ? e - first_arc_ : e - first_square_);
        }
        rigid_[i] = rigid;
        rigid_count_ += rigid;
        if (rigid) rigid_mark_[at (e)] = trial_;
    }
}

/// Costs of the i-th moved element with all others, those that move only as far as they come before
/// it.
double Field::around_moved (std::size_t i, double limit) {
    const int e = saved_[i].element;
    double sum = around (e, limit);
    if (sum >= limit) return sum;
    const bool rigid = rigid_[i] != 0;
    if (rigid) {
        for (const PairCost& p : pairs_[at (e)]) {
            if (p.other > e || in_trial_[at (p.other)] != trial_ ||
                rigid_mark_[at (p.other)] != trial_)
                continue;
            trial_pairs_.push_back ({e, p.other, p.cost});
            sum += p.cost;
        }
        if (rigid_count_ == saved_.size ()) return sum;
    }
    const SmallBox& own = boxes_[at (e)];
    work_ += i / 2;
    for (std::size_t j = 0; j < i; ++j) {
        if (rigid && rigid_[j]) continue;
        const int other = saved_[j].element;
        const SmallBox& box = boxes_[at (other)];
        if (box.left > own.right + node_reach || box.right < own.left - node_reach ||
            box.top > own.bottom + node_reach || box.bottom < own.top - node_reach)
            continue;
        const double cost = pair (e, other);
        if (cost == 0) continue;
        trial_pairs_.push_back ({e, other, cost});
        sum += cost;
    }
    return sum;
}

double Field::change (std::span<const Shift> shifts, double limit) {
    collect (shifts);
    find_rigid (shifts);
    double before = 0;
    for (const Saved& s : saved_) {
        before += s.alone;
        for (const PairCost& p : pairs_[at (s.element)]) {
            // Pairs of two moved elements are met twice.
            if (in_trial_[at (p.other)] != trial_ || p.other > s.element) before += p.cost;
        }
    }
    work_ += saved_.size () * 4;
    const double most = limit + before;
    double after = 0;
    // Most trials end at a node that has no room: nodes first.
    std::size_t i = 0;
    for (const Shift& shift : shifts) drawing_.nodes[at (shift.node)].at = shift.to;
    for (; i < saved_.size () && saved_[i].element < first_square_; ++i) {
        const int e = saved_[i].element;
        boxes_[at (e)] = box_of (e);
        after += alone_[at (e)] = alone (e);
        if (after < most) after += around_moved (i, most - after);
    }
    if (after >= most) return after - before;
    for (std::size_t k = i; k < saved_.size (); ++k) {
        const int e = saved_[k].element;
        if (e >= first_arc_) {
            saved_lines_.push_back ({e, segment (e)});
            if (e < first_link_) place_reaction (e - first_arc_);
        } else {
            const int r = e - first_square_;
            saved_arcs_.push_back ({r, arcs_[at (r)], square_reach_[at (r)]});
        }
    }
    for (const SavedLine& s : saved_lines_)
        if (s.element >= first_link_) place_link (s.element - first_link_);
    for (std::size_t k = i; k < saved_.size (); ++k) {
        const int e = saved_[k].element;
        boxes_[at (e)] = box_of (e);
        after += alone_[at (e)] = alone (e);
    }
    work_ += (saved_.size () - i) * 6;
    for (; i < saved_.size () && after < most; ++i) after += around_moved (i, most - after);
    return after - before;
}

void Field::keep () {
    for (Saved& s : saved_) {
        for (const PairCost& p : pairs_[at (s.element)]) {
            if (in_trial_[at (p.other)] == trial_) continue;
            std::vector<PairCost>& others = pairs_[at (p.other)];
            for (PairCost& q : others) {
                if (q.other != s.element) continue;
                q = others.back ();
                others.pop_back ();
                break;
            }
        }
        pairs_[at (s.element)].clear ();
        // The grid still has it at its old place.
        std::swap (boxes_[at (s.element)], s.box);
    }
    swap_lines ();
    for (const Saved& s : saved_) {
        remove (s.element);
        boxes_[at (s.element)] = s.box;
    }
    swap_lines ();
    for (const Saved& s : saved_) insert (s.element);
    for (const TrialPair& p : trial_pairs_) {
        pairs_[at (p.a)].push_back ({p.b, p.cost});
        pairs_[at (p.b)].push_back ({p.a, p.cost});
    }
    work_ += saved_.size () * 8;
}

/// Changes the saved lines with the present ones.
void Field::swap_lines () {
    for (SavedLine& s : saved_lines_) std::swap (segments_[at (s.element - first_arc_)], s.segment);
}

void Field::undo () {
    for (const Shift& old : before_) drawing_.nodes[at (old.node)].at = old.to;
    for (const Saved& s : saved_) {
        boxes_[at (s.element)] = s.box;
        alone_[at (s.element)] = s.alone;
    }
    for (const SavedArc& s : saved_arcs_) {
        arcs_[at (s.reaction)] = s.arc;
        square_reach_[at (s.reaction)] = s.reach;
    }
    swap_lines ();
}

double Field::burden (int link) const {
    const int e = first_link_ + link;
    const Segment& s = segment (e);
    double sum = std::hypot (s.to.x - s.from.x, s.to.y - s.from.y);
    for (const PairCost& p : pairs_[at (e)]) sum += p.cost;
    return sum;
}

} // namespace ostrand::arrange
