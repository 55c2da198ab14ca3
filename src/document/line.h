// Line: a row of Chars that ends with an end mark, and its editing.
// Layer: document.
#pragma once
#include "document/char.h"
#include "document/std_char.h"

#include <string_view>
#include <vector>

namespace ostrand::document {

struct MarkupReader;

/// What the last key did to a line.
enum class KeyStatus { changed = 0, layout_needed = 1, cursor_only = 2, not_handled = 3 };

/// Keys beyond the control letters, as the toolkit and the X window system number them.
namespace keys {
inline constexpr int backspace = 0xff08;
inline constexpr int escape = 0xff1b;
inline constexpr int left = 0xff51;
inline constexpr int up = 0xff52;
inline constexpr int right = 0xff53;
inline constexpr int down = 0xff54;
inline constexpr int delete_key = 0xffff;
} // namespace keys

/// A row of letters, pictures and networks. Owns its entries; the last one is always the end mark,
/// which is never written, and every entry's parent is the line.
class Line : public Char {
  public:
    /// One letter per byte of `letters`, taken as they stand, no markup.
    Line (std::string_view letters, unsigned new_font, unsigned new_color);
    /// Items up to the closing "}", which is consumed; the "{" was consumed before.
    explicit Line (MarkupReader& reader);
    ~Line () override;

    KeyStatus status = KeyStatus::changed;
    int sel_start = -1; // selection as indices of entries; -1 none
    int sel_end = 0;
    Char* cursor = nullptr; // current entry, not owning; null when none or when it was deleted
    int frame = 0;          // thickness of a frame around the line, 0 none

    const std::vector<std::unique_ptr<Char>>& chars () const { return chars_; }
    /// Entries, the end mark included: at least 1.
    int count () const { return static_cast<int> (chars_.size ()); }

    /// Replaces the entries from `from` up to, not including, `to` by the items of `markup`.
    /// from    below 0 means 0; beyond the end mark nothing is changed and null given
    /// to      below 0 or beyond the end means the end mark, which stays
    /// markup  items; empty for none
    /// font, color  running style; no_font and no_color take those of the entry at `from`
    /// Gives the entry now behind the inserted items.
    Char* replace (int from, int to, std::string_view markup, unsigned new_font = no_font,
                   unsigned new_color = no_color);
    /// Puts c before the entry `at`; at the end when `at` is no entry of this line.
    void insert_before (const Char* at, std::unique_ptr<Char> c);
    /// The entry before c; the first entry for the first and the second. Null when c is no entry.
    Char* prev_of (const Char* c) const;
    /// Index of an entry, -1 when c is none.
    int index_of (const Char* c) const;

    void clear_selection ();
    /// Marks entries sel_start to sel_end, both included, selected and the others not.
    void select_range ();
    /// Replaces the selected entries by the items of `markup`; gives the entry behind them, null
    /// without a selection.
    Char* replace_selection (std::string_view markup);
    void selected_sprint (PrintState& to, float dx, float dy) const;
    /// Selects the word around c, up to the nearest blanks.
    void select_word (const Char* c);
    /// Font and colour of the selected letters; the line is laid out anew.
    void set_style (unsigned new_font, unsigned new_color);
    /// The cursor goes to the entry that lies dx pixels from it; `changed` tells whether it moved.
    Char* move_cursor_to (float dx, bool& changed);
    /// Likewise for the end of the selection, which is widened to whole words.
    Char* extend_selection_to (float dx, bool& changed);
    /// Moves the line to (new_x, new_y), kept from going beyond the left and top limit; true when
    /// it moved.
    bool set_offset (float new_x, float new_y, float left_limit, int top_limit);
    /// True when the entries of `pattern`, without its end mark, stand in this line in a row.
    bool contains (const Line& pattern) const;
    /// Codes of all letters, end mark dropped.
    std::string chars_only () const;
    /// Codes of the letters that carry no scripts.
    std::string plain_chars () const;
    /// True when nothing but the end mark is there.
    bool is_empty () const { return chars_.size () == 1; }

    void set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    /// A copy as a Line.
    std::unique_ptr<Line> copy (Char* new_parent) const;
    CharKind kind () const override { return CharKind::line; }
    float get_width () const override;
    int get_height () const override;
    int get_ascent () const override;
    int get_descent () const override;
    void paint (float left, float top, bool draw) override;
    Char* key (KeyPress press, Char* at, Line*& out_line) override;
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;
    void xml_print (PrintState& to) const override;
    void print_plain (std::string& out) const override;
    bool equals (const Char& other) const override;
    bool append_identity (std::string& identity) const override;
    Char* find_at (float px, float py, HitPlace& place) override;

  private:
    bool erase_selection ();
    Char* insert_letter (unsigned code, Char* at);
    Line (unsigned new_font, unsigned new_color) : Char (new_font, new_color) {}
    std::vector<std::unique_ptr<Char>> read_items (MarkupReader& reader);
    void erase (int from, int to);

    std::vector<std::unique_ptr<Char>> chars_;
};

} // namespace ostrand::document
