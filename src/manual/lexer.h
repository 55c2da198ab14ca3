// Tokens of the manual's HTML.
// Layer: manual.
#pragma once
#include <string>
#include <string_view>

namespace ostrand::manual {

/// What a token is. A tag has the number of its name, a closing one the same number negative;
/// attributes share the names. The numbers of the first thirty-one names are those of their places
/// in the sorted table; headings came later.
enum TokenId : int {
    token_none = 0,
    token_a = 1,
    token_b,
    token_bgcolor,
    token_blockquote,
    token_body,
    token_br,
    token_center,
    token_color,
    token_face,
    token_font,
    token_head,
    token_href,
    token_html,
    token_i,
    token_img,
    token_kbd,
    token_li,
    token_name,
    token_offset,
    token_ol,
    token_p,
    token_pre,
    token_size,
    token_src,
    token_table,
    token_td,
    token_text,
    token_title,
    token_tr,
    token_tt,
    token_ul,
    token_h1,
    token_h2,
    token_h3,

    token_word = 100,   // letters without a blank; in a tag, a value without quotes
    token_quoted,       // a value in quotes
    token_blank,        // white space between words
    token_line_end,     // of a line of "pre"
    token_unknown,      // a tag or an attribute of another name; a closing tag's begins with "/"
    token_end_of_tag,   // ">"
    token_end_of_source // from then on, for ever
};

/// The number of a tag's or attribute's name in small letters; token_none for another name.
TokenId token_of_name (std::string_view name);

struct Token {
    int id = token_none;
    std::string text; // of words, values and blanks, entities decoded; of unknown names

    bool operator== (const Token&) const = default;
};

/// Reads tokens from front to end. Within a tag, from its name to its ">", attributes and values
/// come one by one. Comments and declarations are passed over. Any bytes can be read.
class Lexer {
  public:
    explicit Lexer (std::string_view source) : source_ (source) {}

    Token next ();

    /// True between a tag's name and its end: names that come now are attributes.
    bool inside_tag () const { return in_tag_; }

    /// In "pre" a word is a piece of a line, its blanks included, and line ends are tokens.
    void set_preformatted (bool on) { preformatted_ = on; }

  private:
    bool at_tag () const;
    void skip_declarations ();
    Token tag ();
    Token in_tag ();
    Token value ();
    Token word ();
    Token line_piece ();
    void entity (std::string& text);

    std::string_view source_;
    std::size_t cursor_ = 0;
    bool in_tag_ = false;
    bool value_follows_ = false; // behind the "=" of an attribute
    bool preformatted_ = false;
    std::size_t column_ = 0; // of a line of "pre", for its tabs
};

} // namespace ostrand::manual
