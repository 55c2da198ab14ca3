// SpatialGrid: which boxes lie near a place.
// Layer: document.
#pragma once
#include "document/places.h"

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace ostrand::document {

/// Boxes by number, in cells of a grid. A box stands in the one cell that holds its centre, on the
/// first of several levels whose cells are as large as it is; so it reaches out of its cell by half
/// a cell at most. Boxes that are larger than the largest cell, or no boxes at all (infinite, no
/// number), are near everything.
class SpatialGrid {
  public:
    /// Puts a box in, or to another place. Numbers should be small: there is a row by them.
    void put (std::uint32_t number, const Extent& box);
    void take_out (std::uint32_t number);
    /// Appends the numbers of all boxes that meet `box`, and of some that stand near it, in no
    /// particular order. False, with nothing appended, when so many cells lie there that looking at
    /// all boxes costs no more.
    bool near (const Extent& box, std::vector<std::uint32_t>& found) const;
    std::size_t size () const { return size_; }

  private:
    static constexpr int levels = 16;
    using Cell = std::vector<std::uint32_t>;
    struct CellPlace {
        std::int16_t level = -1; // -1 not in the grid, `levels` among the boxes near everything
        std::int32_t column = 0;
        std::int32_t row = 0;
        bool operator== (const CellPlace&) const = default;
    };
    struct Placed {
        CellPlace cell;
        std::uint32_t index = 0; // in the cell
    };
    struct CellRange {
        std::int64_t first_column;
        std::int64_t last_column;
        std::int64_t first_row;
        std::int64_t last_row;
        std::int64_t count () const {
            return (last_column - first_column + 1) * (last_row - first_row + 1);
        }
    };

    static CellPlace cell_of (const Extent& box);
    static CellRange range_around (const Extent& box, int level);
    static std::uint64_t key (std::int64_t column, std::int64_t row);
    Cell& cell_at (const CellPlace& place);

    std::array<std::unordered_map<std::uint64_t, Cell>, levels> grids_;
    Cell everywhere_;
    std::vector<Placed> placed_; // by number
    std::size_t size_ = 0;
};

} // namespace ostrand::document
