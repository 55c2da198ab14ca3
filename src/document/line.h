// Line: a row of letters that ends with an end mark, and its editing.
// Layer: document.
#pragma once
#include "document/char.h"
#include "document/std_char.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ostrand::document {

struct MarkupReader;

/// What the last key did to a line.
enum class KeyStatus : std::uint8_t {
    changed = 0,
    layout_needed = 1,
    cursor_only = 2,
    not_handled = 3
};

/// Keys beyond the control letters, as the toolkit and the X window system number them.
namespace keys {
inline constexpr int backspace = 0xff08;
inline constexpr int escape = 0xff1b;
inline constexpr int left = 0xff51;
inline constexpr int up = 0xff52;
inline constexpr int right = 0xff53;
inline constexpr int down = 0xff54;
inline constexpr int delete_key = 0xffff;
inline constexpr int escape_code = 27;  // Escape as a control code
inline constexpr int delete_code = 127; // Delete as a control code
} // namespace keys

/// A key as the toolkit numbers it (X key symbols; control letters 1 to 26) with its shift state.
struct KeyPress {
    int key = 0;
    bool shift = false;
};

/// An entry of a line: where a cursor stands.
struct TextPlace {
    Line* line = nullptr;
    int index = 0;
    bool operator== (const TextPlace&) const = default;
};

/// Size of a text around its base line, in pixels.
struct TextSize {
    float width = 0;
    int ascent = 0;
    int descent = 0;
};

/// How far a drag of the mouse extends a selection.
enum class SelectBy { letters, words };

/// A row of letters, pictures and networks. Holds its letters by value and owns what hangs on them;
/// the last entry is always the end mark, which is never written. An entry is named by its index.
class Line : public Char {
  public:
    /// One letter per byte of `letters`, taken as they stand, no markup.
    Line (std::string_view letters, unsigned new_font, unsigned new_color);
    /// Items up to the closing "}", which is consumed; the "{" was consumed before.
    explicit Line (MarkupReader& reader);
    ~Line () override;

    // State of editing. Nothing but the cursor's picture depends on it.
    KeyStatus status = KeyStatus::changed; // effect of the last key
    int sel_start = -1;                    // selection as indices of entries; -1 none
    int sel_end = 0;
    int cursor = -1; // current entry; -1 none

    const std::vector<StdChar>& chars () const { return chars_; }
    /// Entries, the end mark included: at least 1.
    int count () const { return static_cast<int> (chars_.size ()); }
    /// Style in which the line began.
    unsigned font () const { return font_; }
    unsigned color () const { return color_; }
    /// Nothing but the end mark is there.
    bool is_empty () const { return chars_.size () == 1; }
    Line* sub (int index) const;
    Line* sup (int index) const;

    // Changes of the text. All of them end a selection and keep the cursor on its entry.

    /// Replaces the entries from `from` up to, not including, `to` by the items of `markup`.
    /// from    below 0 means 0; beyond the end mark nothing is changed and -1 given
    /// to      below 0 or beyond the end means the end mark, which stays
    /// markup  items; empty for none
    /// font, color  running style; no_font and no_color take those of the entry at `from`
    /// Gives the index of the entry now behind the inserted items.
    int replace (int from, int to, std::string_view markup, unsigned new_font = no_font,
                 unsigned new_color = no_color);
    /// Puts a letter before the entry `at`; at the end when `at` is no entry.
    void insert_before (int at, StdChar letter);
    /// Likewise a picture, a network or a line, in a style that what is typed beside it takes.
    void insert_before (int at, std::unique_ptr<Char> item, unsigned new_font, unsigned new_color);
    void set_script (int at, bool superscript, std::unique_ptr<Line> script);
    /// Replaces the selected entries by the items of `markup`; gives the index behind them, -1
    /// without a selection.
    int replace_selection (std::string_view markup);
    /// Items of `markup`, which was written from style (font, color) on, take the place of the
    /// selection or go before the cursor. True when the text changed.
    bool paste_markup (std::string_view markup, unsigned from_font = start_font,
                       unsigned from_color = 0);
    /// The same for plain letters in Latin-1, in the style of what is typed here; what cannot be
    /// typed is left out.
    bool paste_letters (std::string_view letters);
    /// Font and colour of the selected letters, without any of the letter at the cursor; no_font
    /// and no_color leave them. True when a letter changed.
    bool set_style (unsigned new_font, unsigned new_color);

    /// The entry before one; the first entry for the first and the second.
    static int prev_of (int index) { return std::max (index - 1, 0); }
    /// Of a script: the letter that carries it. Without a line for any other line.
    TextPlace holder () const;

    // Selection and cursor.
    void clear_selection ();
    /// Marks entries sel_start to sel_end, both included, selected and the others not.
    void select_range ();
    void select_all ();
    /// Selects the word around an entry, up to the nearest blanks.
    void select_word (int index);
    void selected_sprint (PrintState& to, float dx, float dy) const;
    /// The cursor goes to the entry that lies dx pixels from it; true when it moved.
    bool move_cursor_to (float dx);
    /// Selects from the cursor to the entry that lies dx pixels from it, or the words that these
    /// two stand in; the cursor stays. True when the selection changed.
    bool extend_selection_to (float dx, SelectBy by);
    /// Handles a key with the cursor at an entry; `status` and `cursor` tell what it did. Gives the
    /// cursor's new place, which may be in a script or in the line around this one.
    TextPlace key (KeyPress press, int at);

    /// Moves the line to (new_x, new_y), kept from going beyond the left and top limit; a line that
    /// is beyond a limit already is not pushed back by it. True when it moved.
    bool set_offset (float new_x, float new_y, float left_limit, int top_limit);
    bool set_offset (float new_x, float new_y);
    /// True when the entries of `pattern`, without its end mark, stand in this line in a row.
    bool contains (const Line& pattern) const;
    /// Codes of all letters, end mark dropped.
    std::string chars_only () const;
    /// Codes of the letters that carry no scripts.
    std::string plain_chars () const;

    /// Size of an entry with its scripts. The end mark is as wide as an n, for the cursor that may
    /// stand on it, and adds nothing to the line.
    TextSize size_at (int index) const { return size_of (at (index)); }
    float width_at (int index) const { return size_at (index).width; }
    /// Where a script's base begins, from the base of the letter that carries it.
    Point script_place (int index, bool superscript) const;

    bool set_fog (bool on) override;
    std::unique_ptr<Char> clone (Char* new_parent) const override;
    /// A copy as a Line.
    std::unique_ptr<Line> copy (Char* new_parent) const;
    CharKind kind () const override { return CharKind::line; }
    float get_width () const override { return size ().width; }
    int get_height () const override;
    int get_ascent () const override { return size ().ascent; }
    int get_descent () const override { return size ().descent; }
    void lay_out () override;
    void paint (PaintDevice& device, const PaintStyle& style, float left,
                float top) const override; // paint_line.cpp
    void sprint (PrintState& to, float dx, float dy) const override;
    void fprint (PrintState& to, int depth) const override;
    void text (std::string& out) const override;
    void xml_print (PrintState& to) const override;
    void print_plain (std::string& out) const override;
    bool equals (const Char& other) const override;
    bool add_identity (Identity& identity) const override;
    Hit find_at (float px, float py, const HitQuery& query) override;
    void content_changed () override;

  private:
    friend class ItemsReader;
    friend class Settler;
    Line (unsigned new_font, unsigned new_color) : font_ (new_font), color_ (new_color) {}
    const TextSize& size () const;
    bool measure (TextSize& size) const;
    static TextSize size_of (const StdChar& entry);
    StdChar& at (int index) { return chars_[static_cast<std::size_t> (index)]; }
    const StdChar& at (int index) const { return chars_[static_cast<std::size_t> (index)]; }
    void erase (int from, int to);
    void insert (int at, std::vector<StdChar> entries);
    bool erase_selection ();
    TextPlace enter_script (int index, bool superscript);
    TextPlace leave_script (int index);
    void own (StdChar& entry);
    void print_entry (PrintState& to, const StdChar& entry, int depth) const;
    bool has_selected_letter () const;
    int entry_at (int from, float dx) const;
    const StdChar& style_before (int index) const { return at (prev_of (index)); }

    bool plain_ = true; // no entry has parts
    unsigned font_;
    unsigned color_;
    mutable unsigned size_generation_ = 0; // of the metrics that size_ was made by; 0 never
    mutable TextSize size_;
    std::vector<StdChar> chars_;
};

} // namespace ostrand::document
