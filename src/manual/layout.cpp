// Filling lines with blocks.
#include "manual/layout.h"

#include <algorithm>

namespace ostrand::manual {
namespace {

constexpr int quote_rise = 4;    // the first line of a quote has so much more above it
constexpr int item_rise = 6;     // likewise the first line of an item
constexpr int heading_above = 8; // a heading has so much more above it
constexpr int heading_below = 4;

class Layout {
  public:
    Layout (Document& page, const PageMeasure& measure, int width)
        : page_ (page), ascent_ (measure.ascent (TextStyle{})),
          descent_ (measure.descent (TextStyle{})),
          limit_ (static_cast<float> (width - bar_width)) {}

    void run ();

  private:
    void begin_line (std::size_t first);
    void swallow_blank (std::size_t last);
    void end_line (std::size_t last);
    void end_filled_line (std::size_t last);
    void place_inline (std::size_t index);
    void place_blank (Blank& blank);
    void place_other (std::size_t index);
    void place_heading (std::size_t index);
    void put (Block& block);
    float run_width (std::size_t index) const;
    Block& block (std::size_t index) const { return *page_.blocks[index]; }

    Document& page_;
    int ascent_; // of the default font, which an empty line has
    int descent_;
    float limit_;
    float indent_ = left_margin;
    std::vector<Center*> centers_;

    // The line that is being filled.
    std::size_t first_ = 0;
    int top_ = 0;
    int rise_ = 0; // free pixels above it
    int line_ascent_ = 0;
    int line_descent_ = 0;
    float x_ = 0;
    bool filled_ = false;    // something stands in it
    bool has_words_ = false; // and it is not just an item's mark
    bool full_ = false;      // a blank had no room any more
};

void Layout::begin_line (std::size_t first) {
    first_ = first;
    rise_ = 0;
    line_ascent_ = ascent_;
    line_descent_ = descent_;
    x_ = indent_;
    filled_ = false;
    has_words_ = false;
    full_ = false;
}

/// At the end of a line a blank is nothing: the line's end is in its stead.
void Layout::swallow_blank (std::size_t last) {
    std::size_t i = last;
    while (i > first_ &&
           (!block (i - 1).is_inline () || block (i - 1).kind == BlockKind::breaker)) {
        --i;
    }
    if (i == first_ || block (i - 1).kind != BlockKind::blank) return;
    auto& blank = static_cast<Blank&> (block (i - 1));
    if (!blank.swallowed) x_ -= blank.width;
    blank.swallowed = true;
}

/// Ends the line in front of block `last`.
void Layout::end_line (std::size_t last) {
    swallow_blank (last);
    float shift = 0;
    if (!centers_.empty ()) {
        shift = std::max ((limit_ - x_) / 2, 0.0F);
        Center& center = *centers_.back ();
        center.width = std::max (center.width, x_ - indent_);
    }
    const int base = top_ + rise_ + line_ascent_;
    for (std::size_t i = first_; i < last; ++i) {
        block (i).y = base;
        block (i).x += shift;
    }
    const int bottom = base + line_descent_;
    if (last > first_) page_.lines.push_back ({first_, last, top_, bottom});
    top_ = bottom;
    begin_line (last);
}

void Layout::end_filled_line (std::size_t last) {
    if (filled_) end_line (last);
}

void Layout::put (Block& placed) {
    placed.x = x_;
    x_ += placed.width;
    line_ascent_ = std::max (line_ascent_, placed.ascent);
    line_descent_ = std::max (line_descent_, placed.descent);
    filled_ = true;
    has_words_ = true;
}

/// Width of a block with those behind it that no blank parts from it: a word in several styles is
/// not broken.
float Layout::run_width (std::size_t index) const {
    float width = block (index).width;
    for (++index; index < page_.blocks.size () && block (index).joined; ++index) {
        width += block (index).width;
    }
    return width;
}

void Layout::place_inline (std::size_t index) {
    Block& placed = block (index);
    const bool run_fits = placed.joined || x_ + run_width (index) <= limit_;
    const bool fits = x_ + placed.width <= limit_;
    // What does not fit into any line stands alone on one; lines of "pre" are never broken.
    const bool may_break = has_words_ && placed.kind != BlockKind::preformat;
    if (may_break && (full_ || !fits || !run_fits)) end_line (index);
    put (placed);
}

void Layout::place_blank (Blank& blank) {
    full_ = has_words_ && x_ + blank.width > limit_;
    blank.swallowed = full_ || !has_words_;
    blank.x = x_;
    if (!blank.swallowed) put (blank);
}

void Layout::place_heading (std::size_t index) {
    end_filled_line (index);
    rise_ += heading_above;
    put (block (index));
    end_line (index + 1);
    top_ += heading_below;
}

void Layout::place_other (std::size_t index) {
    Block& placed = block (index);
    if (placed.kind == BlockKind::heading) return place_heading (index);
    if (placed.kind == BlockKind::breaker) {
        placed.x = x_;
        return end_line (index + 1);
    }
    end_filled_line (index);
    placed.x = x_;
    switch (placed.kind) {
    case BlockKind::paragraph: top_ += static_cast<Breaker&> (placed).height; break;
    case BlockKind::list:
        indent_ += static_cast<List&> (placed).opens ? list_indent : -list_indent;
        x_ = indent_;
        break;
    case BlockKind::block_quote:
        if (static_cast<BlockQ&> (placed).opens) {
            indent_ += list_indent;
            rise_ += quote_rise;
        } else {
            indent_ -= list_indent;
        }
        x_ = indent_;
        break;
    case BlockKind::item:
        placed.x = indent_ - item_hang;
        rise_ += item_rise;
        filled_ = true;
        break;
    case BlockKind::center:
        if (static_cast<Center&> (placed).opens) {
            placed.width = 0;
            centers_.push_back (static_cast<Center*> (&placed));
        } else if (!centers_.empty ()) {
            placed.width = centers_.back ()->width;
            centers_.pop_back ();
            if (!centers_.empty ()) {
                centers_.back ()->width = std::max (centers_.back ()->width, placed.width);
            }
        }
        break;
    case BlockKind::word:
    case BlockKind::preformat:
    case BlockKind::blank:
    case BlockKind::img:
    case BlockKind::breaker:
    case BlockKind::heading: break;
    }
}

void Layout::run () {
    page_.lines.clear ();
    begin_line (0);
    for (std::size_t i = 0; i < page_.blocks.size (); ++i) {
        Block& placed = block (i);
        if (placed.kind == BlockKind::blank) {
            place_blank (static_cast<Blank&> (placed));
        } else if (placed.is_inline () && placed.kind != BlockKind::breaker) {
            place_inline (i);
        } else {
            place_other (i);
        }
    }
    // The line begun behind the last one does not count.
    const bool empty = !filled_;
    const int last_top = top_;
    end_line (page_.blocks.size ());
    page_.height_of_text = empty ? last_top : top_;
}

} // namespace

void measure_page (Document& page, const PageMeasure& measure) {
    for (const auto& block : page.blocks) block->take_size (measure);
}

void layout_page (Document& page, const PageMeasure& measure, int width) {
    Layout (page, measure, width).run ();
}

} // namespace ostrand::manual
