// SizeTree: the farthest of many points, kept as they change.
// Layer: document.
#pragma once
#include "document/places.h"

#include <cstddef>
#include <vector>

namespace ostrand::document {

/// For each number a point; `farthest` is the largest x and the largest y of all, at least 0. A
/// change costs a way up a tree, the question nothing.
class SizeTree {
  public:
    /// Room for numbers below `count`; points that are there stay.
    void reserve (std::size_t count) {
        if (count <= leaves_) return;
        std::size_t leaves = std::max<std::size_t> (leaves_, 1);
        while (leaves < count) leaves *= 2;
        std::vector<Point> tree (2 * leaves);
        std::copy (tree_.begin () + static_cast<std::ptrdiff_t> (leaves_), tree_.end (),
                   tree.begin () + static_cast<std::ptrdiff_t> (leaves));
        tree_.swap (tree);
        leaves_ = leaves;
        for (std::size_t i = leaves_ - 1; i > 0; --i) tree_[i] = higher (2 * i);
    }
    void set (std::size_t number, Point p) {
        reserve (number + 1);
        std::size_t i = leaves_ + number;
        if (tree_[i] == p) return;
        tree_[i] = p;
        for (i /= 2; i > 0; i /= 2) {
            const Point now = higher (2 * i);
            if (now == tree_[i]) break;
            tree_[i] = now;
        }
    }
    Point farthest () const { return leaves_ == 0 ? Point{} : tree_[1]; }

  private:
    /// The farther of two neighbours.
    Point higher (std::size_t i) const {
        return {std::max (tree_[i].x, tree_[i + 1].x), std::max (tree_[i].y, tree_[i + 1].y)};
    }

    std::vector<Point> tree_; // 1 is the root, the children of i are 2 i and 2 i + 1
    std::size_t leaves_ = 0;  // a power of two, or none
};

} // namespace ostrand::document
