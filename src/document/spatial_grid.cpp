// The cells of a spatial grid.
#include "document/spatial_grid.h"

#include <cmath>

namespace ostrand::document {
namespace {

/// Side of the cells of the first level in network pixels, about that of a node with its texts;
/// each further level has cells of twice the side.
constexpr double finest_cell = 128;
/// Places farther out are near everything: their columns would not fit.
constexpr double farthest = 1e8;

double cell_side (int level) { return std::ldexp (finest_cell, level); }

} // namespace

SpatialGrid::CellPlace SpatialGrid::cell_of (const Extent& box) {
    const double w = static_cast<double> (box.right) - box.x;
    const double h = static_cast<double> (box.bottom) - box.y;
    const double center_x = box.x + w / 2;
    const double center_y = box.y + h / 2;
    const double side = std::max (w, h);
    const bool is_somewhere = std::abs (center_x) < farthest && std::abs (center_y) < farthest;
    if (!is_somewhere || !(side <= cell_side (levels - 1))) {
        return {static_cast<std::int16_t> (levels), 0, 0};
    }
    int level = 0;
    while (side > cell_side (level)) ++level;
    const double cell = cell_side (level);
    return {static_cast<std::int16_t> (level),
            static_cast<std::int32_t> (std::floor (center_x / cell)),
            static_cast<std::int32_t> (std::floor (center_y / cell))};
}

std::uint64_t SpatialGrid::key (std::int64_t column, std::int64_t row) {
    return static_cast<std::uint64_t> (static_cast<std::uint32_t> (column)) << 32 |
           static_cast<std::uint32_t> (row);
}

SpatialGrid::Cell& SpatialGrid::cell_at (const CellPlace& place) {
    if (place.level == levels) return everywhere_;
    return grids_[static_cast<std::size_t> (place.level)][key (place.column, place.row)];
}

void SpatialGrid::put (std::uint32_t number, const Extent& box) {
    if (number >= placed_.size ()) placed_.resize (number + number / 2 + 1);
    const CellPlace wanted = cell_of (box);
    if (placed_[number].cell == wanted) return;
    take_out (number);
    Cell& cell = cell_at (wanted);
    placed_[number] = {wanted, static_cast<std::uint32_t> (cell.size ())};
    cell.push_back (number);
    ++size_;
}

void SpatialGrid::take_out (std::uint32_t number) {
    if (number >= placed_.size () || placed_[number].cell.level < 0) return;
    const Placed placed = placed_[number];
    Cell& cell = cell_at (placed.cell);
    cell[placed.index] = cell.back ();
    placed_[cell[placed.index]].index = placed.index;
    cell.pop_back ();
    placed_[number] = {};
    --size_;
    if (cell.empty () && placed.cell.level < levels) {
        grids_[static_cast<std::size_t> (placed.cell.level)].erase (
            key (placed.cell.column, placed.cell.row));
    }
}

/// The cells whose boxes may meet `box`.
SpatialGrid::CellRange SpatialGrid::range_around (const Extent& box, int level) {
    const double cell = cell_side (level);
    const auto place = [cell] (double at) {
        return static_cast<std::int64_t> (std::floor (std::clamp (at, -farthest, farthest) / cell));
    };
    return {place (box.x - cell / 2), place (box.right + cell / 2), place (box.y - cell / 2),
            place (box.bottom + cell / 2)};
}

bool SpatialGrid::near (const Extent& box, std::vector<std::uint32_t>& found) const {
    if (std::isnan (box.x + box.y + box.right + box.bottom)) return false;
    std::int64_t cells = static_cast<std::int64_t> (everywhere_.size ());
    for (int level = 0; level < levels; ++level) {
        if (!grids_[static_cast<std::size_t> (level)].empty ()) {
            cells += range_around (box, level).count ();
        }
    }
    if (cells > static_cast<std::int64_t> (size_ / 2)) return false;
    for (int level = 0; level < levels; ++level) {
        const auto& grid = grids_[static_cast<std::size_t> (level)];
        if (grid.empty ()) continue;
        const CellRange range = range_around (box, level);
        for (std::int64_t row = range.first_row; row <= range.last_row; ++row) {
            for (std::int64_t column = range.first_column; column <= range.last_column; ++column) {
                const auto cell = grid.find (key (column, row));
                if (cell == grid.end ()) continue;
                found.insert (found.end (), cell->second.begin (), cell->second.end ());
            }
        }
    }
    found.insert (found.end (), everywhere_.begin (), everywhere_.end ());
    return true;
}

} // namespace ostrand::document
