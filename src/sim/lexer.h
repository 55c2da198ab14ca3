// Tokens of the model language, for every reader of models: each brings its own table of names.
// Layer: sim.
#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

namespace ostrand::sim {

enum class TokenKind {
    none, // an empty pushback; never produced
    eof,
    ident,
    number,
    colour,
    milli_molar,
    micro_molar,
    duration,
    display,
    linked,
    input,
    output,
    excess,
    colon,
    semicolon,
    comma,
    bar,
    plus,
    minus,
    arrow,
    equals,
    open_bracket,
    close_bracket,
    open_paren,
    close_paren,
};

/// The text that stands for a kind of token in messages.
const char* token_text (TokenKind kind);

/// The keyword that a word is; none for any other word.
TokenKind keyword_of (std::string_view word);

struct Token {
    TokenKind kind = TokenKind::none;
    int species = -1;         // index of a name; -1 for a name of no length
    float number = 0;         // of a number
    std::uint32_t colour = 0; // of a colour, 0xRRGGBB00
    std::string_view text;    // bytes of a name; good as long as the lexer and its text are there
};

/// A name between quotes, as the lexer reads it back: quotes inside it are doubled, all else stands
/// as it is. A name that is a keyword, or holds a line end, cannot be told so.
std::string quoted (std::string_view name);

/// What messages show of a token: the bytes of a name, the value of a number, else its kind's text.
std::string shown (const Token& token);

/// The index of a name in the reader's table, which takes it in on its first mention; negative when
/// the table is full.
using NameIndex = std::function<int (std::string_view name)>;

/// Reads tokens off a text and keeps the first failure: it is reported at once, and from then on
/// each token reads as the end of the text, so that a reader returns by its ordinary ways.
class Lexer {
  public:
    /// text        must stay until the lexer is gone; it ends at its first NUL
    /// name_index  is asked for each name as it is read
    /// table_full  the message when there is no room for one
    Lexer (std::string_view text, NameIndex name_index, std::string table_full);

    Token next_token ();
    /// A stop that is asked for reads as a failure of which nothing is reported.
    void set_stop (std::stop_token stop) { stop_ = std::move (stop); }

    /// The next call of next_token gives this one again.
    void unget_token (const Token& token) { pushback_ = token; }

    /// Reports the fault, formatted as printf does, unless there was one before. Gives false for
    /// the caller to hand on.
    bool model_error (const char* format, ...) __attribute__ ((format (printf, 2, 3)));
    bool failed () const { return failed_; }

    /// A name's index in the table; a full table is a fault (and gives 0).
    int intern (std::string_view name);

  private:
    Token read_token ();
    Token read_name (std::string_view name, std::size_t after);
    Token read_quoted_name ();
    Token read_colour ();
    bool read_number (Token& token);
    bool unit_at (std::size_t place, std::string_view followers) const;
    void skip_blanks_and_comments ();
    std::size_t find_first_of (std::string_view set, std::size_t from);
    bool is_stopped ();

    /// The byte at a place; NUL behind the end.
    char at (std::size_t place) const { return place < text_.size () ? text_[place] : '\0'; }

    std::string_view text_;
    std::size_t cursor_ = 0;
    NameIndex name_index_;
    std::string table_full_;
    std::deque<std::string> names_with_quotes_; // for which the text has no bytes to show
    Token pushback_;
    std::stop_token stop_;
    unsigned looks_ = 0; // for a stop
    bool failed_ = false;
};

} // namespace ostrand::sim
