// Where an arc leaves its source, meets its destination, and carries its mark, head and texts.
//
// Points are floats as everywhere in the document; what lies between is computed in double, since
// the intercept of a steep line is a large number.
#include "document/arque.h"
#include "document/compart.h"
#include "document/node.h"

#include <cmath>

namespace ostrand::document {
namespace {

constexpr double degrees_per_radian = 57.29578;
constexpr double vertical_slope = 100000;
constexpr double least_slope = 1e-6; // of a horizontal line
constexpr double parallel_offset = 8;

/// A box that an arc meets, and the point that the line of centres goes through.
struct Box {
    double left;
    double top;
    double half_w;
    double half_h;
    double center_x;
    double center_y;
    double height;
    double right () const { return left + 2 * half_w; }
    double bottom () const { return top + 2 * half_h; }
    bool is_point () const { return half_w == 0 && half_h == 0; }
};

Box box_of (const GraphBase& object, unsigned arc_type) {
    const Anchor anchor = object.anchor (arc_type);
    Box box{anchor.x,
            anchor.y,
            static_cast<double> (anchor.half_w),
            static_cast<double> (anchor.half_h),
            0,
            0,
            static_cast<double> (object.get_height ())};
    if (object.kind () == CharKind::node) {
        box.center_x = object.x ();
        box.center_y = object.y ();
    } else {
        box.center_x = box.left + box.half_w;
        box.center_y = box.top + box.half_h;
    }
    return box;
}

/// The line of centres, y = slope x + intercept.
struct CenterLine {
    bool vertical;
    double slope;
    double intercept;
    double angle; // degrees, -90 to 270
    double center_x;
    double x_at (double y) const { return vertical ? center_x : (y - intercept) / slope; }
    double y_at (double x) const { return slope * x + intercept; }
};

CenterLine center_line (const Box& from, const Box& to) {
    const double vx = to.center_x - from.center_x;
    const double vy = to.center_y - from.center_y;
    CenterLine line{vx == 0, vertical_slope, 0, vy < 0 ? 270.0 : 90.0, from.center_x};
    if (!line.vertical) {
        line.slope = vy / vx;
        line.angle = std::atan (line.slope) * degrees_per_radian + (vx < 0 ? 180.0 : 0.0);
    }
    line.intercept = from.center_y - line.slope * from.center_x;
    if (line.slope == 0) line.slope = least_slope;
    return line;
}

Point point (double x, double y) { return {static_cast<float> (x), static_cast<float> (y)}; }

/// A vertical line always crosses the lower edge of a box that has a width: the interval, which is
/// open by one at its right, would miss the centre of a box 2 wide.
bool crosses_bottom (const CenterLine& line, const Box& box, double x) {
    if (line.vertical && !box.is_point ()) return true;
    return x >= box.left && x < box.right () - 1;
}

Point end_point (const CenterLine& line, const Box& from, const Box& to, double k) {
    double x = line.x_at (to.top);
    if (from.center_y < to.top + to.height && x >= to.left && x <= to.right ()) {
        return point (x - k, to.top);
    }
    x = line.x_at (to.bottom ());
    if (crosses_bottom (line, to, x)) return point (x + k, to.bottom () + 1);
    const double y = line.y_at (to.left);
    if (to.left > from.left && y >= to.top && y <= to.bottom ()) return point (to.left, y + k);
    return point (to.right (), (line.vertical ? to.top : line.y_at (to.right ())) - k);
}

Point start_point (const CenterLine& line, const Box& from, const Box& to, double k) {
    double x = line.x_at (from.top);
    if (from.top > to.top && x >= from.left && x <= from.right ()) return point (x + k, from.top);
    x = line.x_at (from.bottom ());
    if (crosses_bottom (line, from, x)) return point (x - k, from.bottom ());
    const double y = line.y_at (from.left);
    if (from.left + from.half_w <= to.left + to.half_w || y < from.top || y > from.bottom ()) {
        return point (from.right (), line.y_at (from.right ()) + k);
    }
    return point (from.left, y - k);
}

/// Where `end` and `head` go, back from the box that is met; one parameter for each, 1 is the box.
struct HeadPlaces {
    double end;
    double head;
};

HeadPlaces head_places (unsigned type, double length) {
    switch (head_of (type)) {
    case ArcHead::none:
        if (type == arc::product) return {(length - 5) / length, 1};
        return {1, 1};
    case ArcHead::catalysis: return {1 - 9 / length, 1 - 9 / length};
    case ArcHead::inhibition: return {1 - 6 / length, 1 - 6 / length};
    case ArcHead::activation: return {1 - 16 / length, 1 - 1 / length};
    case ArcHead::influence: return {1 - 16 / length, 1 - 10 / length};
    default: return {(length - 5) / length, 1};
    }
}

/// Width of the text that stands at a place: the first that is there; 0 for none.
double width_of (const Char* text, const Char* instead) {
    return text != nullptr ? text->get_width () : instead != nullptr ? instead->get_width () : 0.0;
}

/// Default place of the label, at the near end.
/// w  width of the text
Point label_place (unsigned type, Point p, Point e, double ux, double uy, const Anchor& target,
                   double w) {
    const double px = p.x;
    const double py = p.y;
    if (head_of (type) == ArcHead::catalysis || head_of (type) == ArcHead::influence) {
        return point (e.x > target.x ? target.x - w : target.x + 14.0,
                      e.y > target.y ? target.y - 5.0 : target.y + 28.0);
    }
    if (e.y < p.y) {
        if (p.x <= e.x) return point (px + 12 + ux * 11, py - 17 + ux * 28);
        return point (px + 8 + w * ux * 1.4 * ux * ux, py - 10 + uy * 10);
    }
    if (p.x <= e.x) return point (px + 4 + ux * 20, py - 7 + uy * 25);
    return point (px + 4 - w * ux * 1.3 * ux, py + 16 - ux * 3);
}

/// Default place of the residu, at the far end q.
Point residu_place (Point p, Point q, double ux, double uy, double w) {
    const double qx = q.x;
    const double qy = q.y;
    if (q.y < p.y) {
        if (p.x <= q.x) return point (qx + 4 - w * ux * 1.3 * ux, qy + 20 - ux * 3);
        return point (qx + 4 - ux * 20, qy - 6 - uy * 25);
    }
    if (p.x <= q.x) return point (qx - w * ux * 1.4 * ux, qy - 6 - uy * 8);
    return point (qx + 4 - ux * 11, qy - 17 - ux * 32);
}

} // namespace

void Arque::compute_geometry () {
    if (source_ == nullptr || dest_ == nullptr) return;
    ArcGeometry& at = geometry_;
    const double k = side_ == 0 ? 0 : side_ == -2 ? parallel_offset : -parallel_offset;
    const Box from = box_of (*source_, type_);
    const Box to = box_of (*dest_, type_);
    const CenterLine line = center_line (from, to);
    at.angle = static_cast<float> (line.angle);
    at.end = end_point (line, from, to, k);
    at.start = start_point (line, from, to, k);

    const double dx = static_cast<double> (at.end.x) - at.start.x;
    const double dy = static_cast<double> (at.end.y) - at.start.y;
    double length = std::sqrt (dx * dx + dy * dy);
    double t1 = -249999.5;
    double t2 = 250000.5;
    double t3 = -189999.0;
    if (length == 0) {
        length = 0.0001;
    } else {
        t1 = 0.5 - 25 / length;
        t2 = 0.5 + 25 / length;
        t3 = 1 - 19 / length;
    }
    const auto along = [dx, dy, origin = at.start] (double t) {
        return point (origin.x + t * dx, origin.y + t * dy);
    };
    at.mark_a = along (t1);
    at.mark_b = along (t2);
    at.inner = along (t3);
    const HeadPlaces places = head_places (type_, length);
    at.head = places.head == 1 ? at.end : along (places.head);
    if (places.end != 1) at.end = along (places.end);
    at.line_a = at.end.x - at.start.x;
    at.line_b = at.end.y - at.start.y;
    at.line_c = at.start.y * at.end.x - at.end.y * at.start.x;
    x_ = at.start.x + (at.end.x - at.start.x - get_width ()) / 2;
    y_ = at.start.y + (at.end.y - at.start.y - static_cast<float> (get_height ())) / 2;

    const double ux = dx / length;
    const double uy = dy / length;
    at.label_pos = {};
    at.residu_pos = {};
    if (label_ || stoech_src_) {
        at.label_pos = label_place (type_, at.start, at.end, ux, uy, dest_->anchor (type_),
                                    width_of (label_.get (), stoech_src_.get ()));
    }
    const bool has_place =
        is_reaction (type_) || type_ == arc::inhibition || type_ == arc::activation;
    if (has_place && (residu_ || stoech_dest_)) {
        at.residu_pos =
            residu_place (at.start, at.end, ux, uy, width_of (residu_.get (), stoech_dest_.get ()));
    }
}

} // namespace ostrand::document
