// Where do the parts of a drawing go that nothing joins?
//
// Shapes are drawn into a grid of cells and placed one after the other, large ones first, each at
// the free place that makes the whole smallest when measured by the wanted sides. This is how
// Freivalds, Dogrusoz and Kikusts (2002) pack disconnected graphs by polyominoes.
#include "arrange/pack.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace ostrand::arrange {
namespace {

constexpr double cells_of_all = 60000; // about so many cells hold all shapes
constexpr double least_cell = 8;

struct Polyomino {
    std::vector<std::pair<int, int>> cells; // column, row
    int columns = 0;
    int rows = 0;
    Point corner; // of its box, in its own coordinates
};

Box box_around (const Shape& shape) {
    Box box;
    bool first = true;
    for (const Box& b : shape.boxes) {
        if (first) box = b;
        first = false;
        box.left = std::min (box.left, b.left);
        box.top = std::min (box.top, b.top);
        box.right = std::max (box.right, b.right);
        box.bottom = std::max (box.bottom, b.bottom);
    }
    return box;
}

Polyomino polyomino_of (const Shape& shape, double gap, double cell) {
    Polyomino p;
    const Box box = box_around (shape);
    p.corner = {box.left, box.top};
    p.columns = static_cast<int> ((box.width () + gap) / cell) + 1;
    p.rows = static_cast<int> ((box.height () + gap) / cell) + 1;
    std::vector<char> taken (
        static_cast<std::size_t> (p.columns) * static_cast<std::size_t> (p.rows), 0);
    for (const Box& b : shape.boxes) {
        // Widened by the gap to the right and below only: so two shapes keep one gap apart.
        const int left = static_cast<int> ((b.left - box.left) / cell);
        const int top = static_cast<int> ((b.top - box.top) / cell);
        const int right = static_cast<int> ((b.right + gap - box.left) / cell);
        const int bottom = static_cast<int> ((b.bottom + gap - box.top) / cell);
        for (int y = top; y <= std::min (bottom, p.rows - 1); ++y)
            for (int x = left; x <= std::min (right, p.columns - 1); ++x)
                taken[static_cast<std::size_t> (y) * static_cast<std::size_t> (p.columns) +
                      static_cast<std::size_t> (x)] = 1;
    }
    for (int y = 0; y < p.rows; ++y)
        for (int x = 0; x < p.columns; ++x)
            if (taken[static_cast<std::size_t> (y) * static_cast<std::size_t> (p.columns) +
                      static_cast<std::size_t> (x)])
                p.cells.push_back ({x, y});
    return p;
}

/// The cells that are taken, growing as needed.
class Ground {
  public:
    explicit Ground (double aspect) : aspect_ (aspect) {}

    /// The best place for a shape: the whole stays smallest, then nearest to the corner.
    std::pair<int, int> place (const Polyomino& p) {
        double best = std::numeric_limits<double>::infinity ();
        std::pair<int, int> where{columns_, 0};
        // Beyond the taken part a shape is always free, so the search ends there.
        for (int y = 0; y <= rows_; ++y) {
            for (int x = 0; x <= columns_; ++x) {
                const double cost = cost_of (x + p.columns, y + p.rows, x, y);
                if (cost >= best) continue;
                if (!is_free (p, x, y)) continue;
                best = cost;
                where = {x, y};
            }
        }
        take (p, where.first, where.second);
        return where;
    }

  private:
    double cost_of (int right, int bottom, int x, int y) const {
        const double width = std::max (columns_, right);
        const double height = std::max (rows_, bottom);
        const double side = std::max (width, height * aspect_);
        return side * side + 1e-3 * (x + y * aspect_) + 0.05 * width * height;
    }

    bool is_free (const Polyomino& p, int x, int y) const {
        if (x >= columns_ || y >= rows_) return true;
        for (const auto& [cx, cy] : p.cells) {
            const int column = x + cx;
            const int row = y + cy;
            if (column < columns_ && row < rows_ && taken_[index (column, row)]) return false;
        }
        return true;
    }

    std::size_t index (int column, int row) const {
        return static_cast<std::size_t> (row) * static_cast<std::size_t> (capacity_) +
               static_cast<std::size_t> (column);
    }

    void take (const Polyomino& p, int x, int y) {
        const int columns = std::max (columns_, x + p.columns);
        const int rows = std::max (rows_, y + p.rows);
        if (columns > capacity_) {
            const int capacity = std::max (columns, 2 * capacity_);
            std::vector<char> wider (
                static_cast<std::size_t> (capacity) * static_cast<std::size_t> (rows_), 0);
            for (int row = 0; row < rows_; ++row)
                for (int column = 0; column < columns_; ++column)
                    wider[static_cast<std::size_t> (row) * static_cast<std::size_t> (capacity) +
                          static_cast<std::size_t> (column)] = taken_[index (column, row)];
            taken_ = std::move (wider);
            capacity_ = capacity;
        }
        columns_ = columns;
        rows_ = rows;
        taken_.resize (static_cast<std::size_t> (rows_) * static_cast<std::size_t> (capacity_), 0);
        for (const auto& [cx, cy] : p.cells) taken_[index (x + cx, y + cy)] = 1;
    }

    double aspect_;
    int columns_ = 0;
    int rows_ = 0;
    int capacity_ = 0;
    std::vector<char> taken_;
};

} // namespace

std::vector<Point> pack_shapes (const std::vector<Shape>& shapes, double gap, double aspect) {
    double area = 0;
    for (const Shape& shape : shapes) {
        const Box box = box_around (shape);
        area += (box.width () + gap) * (box.height () + gap);
    }
    // Many shapes share fewer cells: each is tried at each cell of the ground.
    const double cells =
        std::min (cells_of_all, 4e8 / (1 + 40 * static_cast<double> (shapes.size ())));
    const double cell = std::max (least_cell, std::sqrt (area / std::max (cells, 400.0)));
    std::vector<Polyomino> polyominoes;
    for (const Shape& shape : shapes) polyominoes.push_back (polyomino_of (shape, gap, cell));
    std::vector<std::size_t> order (shapes.size ());
    std::iota (order.begin (), order.end (), std::size_t{0});
    std::stable_sort (order.begin (), order.end (), [&] (std::size_t a, std::size_t b) {
        return polyominoes[a].columns + polyominoes[a].rows >
               polyominoes[b].columns + polyominoes[b].rows;
    });
    Ground ground (aspect);
    std::vector<Point> moves (shapes.size ());
    for (const std::size_t s : order) {
        const auto [x, y] = ground.place (polyominoes[s]);
        moves[s] = {x * cell - polyominoes[s].corner.x, y * cell - polyominoes[s].corner.y};
    }
    return moves;
}

} // namespace ostrand::arrange
