// The viewer of the manual without its window: a page, the view on it, a search in it.
// Layer: manual.
#pragma once
#include "manual/document.h"
#include "manual/paint_list.h"
#include "manual/scroll.h"
#include "manual/search.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand::manual {

/// A small HTML viewer. A window gives it texts, sizes and events, and paints its list. All
/// coordinates are pixels; y of the page grows downward from 0.
class HTML {
  public:
    /// measure  what the window's toolkit knows of letters and pictures; outlives the viewer
    explicit HTML (const PageMeasure& measure) : measure_ (measure) {}

    /// Shows a page. Faults of the text go to standard error. The view stays where it was, as far
    /// as the new page reaches; a search ends.
    void value (std::string_view text);
    /// The text that is shown.
    const std::string& source () const { return source_; }
    /// Lays the page out for a window. What stood at the top of the view stays there.
    void resize (int width, int height);

    /// Looks for a text and marks all hits. The first one at or below the top of the view is in
    /// hand, the first of the page when there is none; it is brought into view. Gives their number.
    /// An empty pattern, and one of more than longest_pattern characters, ends the search.
    int find (std::string_view pattern);
    /// Goes to the next match, or to the one before, around the ends of the page. False when there
    /// is none.
    bool next_match (bool forward);
    void clear_find () { find ({}); }
    const std::vector<Match>& matches () const { return matches_; }
    /// Index of the match in hand, or -1.
    int current_match () const { return current_match_; }

    /// Puts a place of the page at the top of the view, as far as the page allows.
    void scroll_to (int y) { scroll_.scroll_to (y); }
    PageScroll& scroll () { return scroll_; }
    const PageScroll& scroll () const { return scroll_; }

    /// The block at a place of the window that leads somewhere; null for none. Over it the pointer
    /// is a hand.
    const Block* link_at (int x, int y) const;
    /// A click: goes to the target of the link there. False when there is none.
    bool follow_link (int x, int y);

    /// What the window shows from `first_y` of the page on, with y relative to it. Only blocks in
    /// view are visited.
    PaintList paint_list (int first_y, int height) const;
    /// The blocks that paint_list visits: first, and last not included.
    std::pair<std::size_t, std::size_t> visible_blocks (int first_y, int height) const;

    const Document& page () const { return page_; }
    const std::string& text_copy () const { return text_copy_; }
    unsigned background () const { return page_.background; }
    int height_of_text () const { return page_.height_of_text; }

  private:
    void layout ();
    void take_matches ();
    void set_current (int match);
    void show_current ();
    bool is_in_view (const Block& block) const;

    const PageMeasure& measure_;
    std::string source_;
    Document page_;
    int width_ = 0;
    PageScroll scroll_;
    std::string text_copy_;
    TextSearch search_;
    std::string pattern_;
    std::vector<Match> matches_;
    int current_match_ = -1;
};

} // namespace ostrand::manual
