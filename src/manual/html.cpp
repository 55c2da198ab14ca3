// Events of the viewer, turned into changes of page, view and search.
#include "manual/html.h"

#include "manual/layout.h"
#include "manual/reader.h"

#include <algorithm>
#include <cstdio>

namespace ostrand::manual {

void HTML::value (std::string_view text) {
    source_ = text;
    page_ = read_html (source_);
    for (const std::string& fault : page_.faults) std::fputs (fault.c_str (), stderr);
    measure_page (page_, measure_);
    clear_find ();
    layout ();
}

void HTML::resize (int width, int height) {
    const bool new_width = width != width_;
    width_ = width;
    if (!new_width) {
        scroll_.set_extent (width, height, page_.height_of_text);
        return;
    }
    const std::size_t at_top = visible_blocks (scroll_.scroll_y (), 1).first;
    const bool begun = scroll_.scroll_y () > 0 && at_top < page_.blocks.size ();
    const int above = begun ? scroll_.scroll_y () - page_.blocks[at_top]->y : 0;
    layout ();
    scroll_.set_extent (width, height, page_.height_of_text);
    if (begun) scroll_.keep_at (page_.blocks[at_top]->y + above);
}

void HTML::layout () {
    layout_page (page_, measure_, width_);
    scroll_.set_extent (width_, scroll_.window_height (), page_.height_of_text);
    text_copy_ = plain_text (page_);
    take_matches ();
}

/// Lines may have been broken elsewhere: the same matches at their new places.
void HTML::take_matches () {
    matches_ =
        mark_hits (page_, measure_, search_.find_all (text_copy_, pattern_), pattern_.size ());
    if (current_match_ >= static_cast<int> (matches_.size ())) current_match_ = -1;
    set_current (current_match_);
}

void HTML::set_current (int match) {
    current_match_ = match;
    const Match* const in_hand = match < 0 ? nullptr : &matches_[static_cast<std::size_t> (match)];
    mark_current (page_, in_hand, pattern_.size ());
}

int HTML::find (std::string_view pattern) {
    pattern_ = trimmed_pattern (pattern);
    current_match_ = -1;
    take_matches ();
    if (matches_.empty ()) return 0;
    const auto below = std::ranges::find_if (matches_, [&] (const Match& match) {
        return page_.blocks[match.first_block]->y >= scroll_.scroll_y ();
    });
    set_current (below == matches_.end () ? 0 : static_cast<int> (below - matches_.begin ()));
    show_current ();
    return static_cast<int> (matches_.size ());
}

bool HTML::next_match (bool forward) {
    const int count = static_cast<int> (matches_.size ());
    if (count == 0) return false;
    set_current ((current_match_ + (forward ? 1 : count - 1)) % count);
    show_current ();
    return true;
}

void HTML::show_current () {
    const Block& block =
        *page_.blocks[matches_[static_cast<std::size_t> (current_match_)].first_block];
    if (!is_in_view (block)) scroll_to (block.y - match_rise);
}

bool HTML::is_in_view (const Block& block) const {
    const int top = scroll_.scroll_y ();
    return block.y - block.ascent >= top &&
           block.y + block.descent <= top + scroll_.window_height ();
}

const Block* HTML::link_at (int x, int y) const {
    const int page_y = y + scroll_.scroll_y ();
    const auto [first, last] = visible_blocks (page_y, 1);
    for (std::size_t i = first; i < last; ++i) {
        const Block& block = *page_.blocks[i];
        const auto place = static_cast<float> (x);
        if (block.link == nullptr || place < block.x || place >= block.x + block.width) continue;
        if (page_y < block.y - block.ascent || page_y >= block.y + block.descent) continue;
        return page_.target_of (*block.link) ? &block : nullptr;
    }
    return nullptr;
}

bool HTML::follow_link (int x, int y) {
    const Block* const block = link_at (x, y);
    if (block == nullptr) return false;
    scroll_to (page_.blocks[*page_.target_of (*block->link)]->y - link_rise);
    return true;
}

std::pair<std::size_t, std::size_t> HTML::visible_blocks (int first_y, int height) const {
    const auto& lines = page_.lines;
    const auto begin = std::ranges::partition_point (
        lines, [&] (const PageLine& line) { return line.bottom <= first_y; });
    const auto end = std::partition_point (
        begin, lines.end (), [&] (const PageLine& line) { return line.top < first_y + height; });
    if (begin == end) return {page_.blocks.size (), page_.blocks.size ()};
    return {begin->first, std::prev (end)->last};
}

PaintList HTML::paint_list (int first_y, int height) const {
    PaintList list;
    const PageColours colours = page_.colours ();
    const auto [first, last] = visible_blocks (first_y, height);
    for (std::size_t i = first; i < last; ++i) page_.blocks[i]->draw (list, -first_y, colours);
    return list;
}

} // namespace ostrand::manual
