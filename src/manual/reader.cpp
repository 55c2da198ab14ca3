// The structure of a page and its elements.
#include "manual/reader.h"

#include "base/text.h"
#include "manual/lexer.h"
#include "manual/styles.h"

#include <algorithm>
#include <utility>

namespace ostrand::manual {
namespace {

constexpr int smallest_step = 1;
constexpr int largest_step = 7;
constexpr int first_size = 12;
constexpr int size_step = 2;

constexpr const char* syntax_error = "syntax error\n";
constexpr const char* no_head = "No </head>...\n";

/// Attributes of one tag in order.
using Attributes = std::vector<std::pair<int, std::string>>;

const std::string* find (const Attributes& attributes, TokenId id) {
    const auto found = std::ranges::find (attributes, id, &Attributes::value_type::first);
    return found == attributes.end () ? nullptr : &found->second;
}

/// "#%x" as the toolkit's colour; nothing when it is not one.
std::optional<unsigned> colour_of (const std::string* text) {
    if (text == nullptr || !text->starts_with ('#')) return std::nullopt;
    const auto value = scan_hexadecimal (std::string_view (*text).substr (1));
    if (!value) return std::nullopt;
    return *value << 8;
}

class Reader {
  public:
    Reader (std::string_view source, Document& page)
        : lexer_ (source), page_ (page), styles_ (Face{}) {}

    void read ();

  private:
    struct OpenList {
        bool ordered = false;
        int number = 0;
    };

    void fault (const char* text) { page_.faults.emplace_back (text); }
    void advance ();
    void skip_blanks ();
    bool expect (int tag);
    bool body_follows () const;
    Attributes attributes ();
    void read_head ();
    void read_body ();
    void element (int id);
    bool structure (int id, const Attributes& found);
    bool style (int id, const Attributes& found);
    bool anchor (int id, const Attributes& found);
    bool table (int id);
    void close_list (bool ordered);
    void image (const Attributes& found);
    void preformatted ();
    void heading (int id);

    template <typename Made>
    Made& add (std::unique_ptr<Made> block);
    void add_word (std::string text);
    void add_blank ();
    void end_row ();
    bool stands_in_line () const;

    Lexer lexer_;
    Document& page_;
    StyleStack styles_;
    Token token_;
    const Link* link_ = nullptr;
    std::vector<OpenList> lists_;
    int quotes_ = 0;
    int centers_ = 0;
    bool glued_ = false;    // the next word follows the last block without a blank
    bool may_merge_ = true; // and may become a part of it
};

void Reader::advance () { token_ = lexer_.next (); }

void Reader::skip_blanks () {
    while (token_.id == token_blank || token_.id == token_line_end) advance ();
}

/// Passes over a tag that must stand here, with its attributes; otherwise tells so and stays.
bool Reader::expect (int tag) {
    skip_blanks ();
    if (token_.id != tag) {
        fault (syntax_error);
        return false;
    }
    attributes ();
    return true;
}

/// The attributes of the tag in hand; passes over its end.
Attributes Reader::attributes () {
    Attributes found;
    for (advance (); token_.id != token_end_of_tag; advance ()) {
        if (token_.id == token_end_of_source) return found;
        if (token_.id == token_word || token_.id == token_quoted) {
            if (!found.empty ()) found.back ().second = std::move (token_.text);
        } else {
            found.emplace_back (token_.id, std::string ());
        }
    }
    advance ();
    return found;
}

void Reader::read () {
    advance ();
    if (expect (token_html)) read_head ();
    read_body ();
    if (token_.id == token_end_of_source) return;
    if (!expect (-token_html)) return;
    skip_blanks ();
    // One word about all that stands behind the end.
    if (token_.id != token_end_of_source) fault (syntax_error);
}

void Reader::read_head () {
    if (!expect (token_head)) return;
    skip_blanks ();
    if (token_.id == token_title) {
        while (token_.id != -token_title && token_.id != -token_head &&
               token_.id != token_end_of_source) {
            advance ();
        }
        if (token_.id == -token_title) attributes ();
    }
    skip_blanks ();
    if (token_.id != -token_head) {
        fault (no_head);
        return;
    }
    attributes ();
}

void Reader::read_body () {
    skip_blanks ();
    const bool has_body = token_.id == token_body || body_follows ();
    if (!has_body) fault (syntax_error); // its elements are read all the same
    for (; has_body && token_.id != token_body; skip_blanks ()) {
        fault (syntax_error);
        token_.id == token_word ? advance () : static_cast<void> (attributes ());
    }
    if (token_.id == token_body) {
        const Attributes found = attributes ();
        page_.background = colour_of (find (found, token_bgcolor)).value_or (page_.background);
        page_.text = colour_of (find (found, token_text)).value_or (page_.text);
    }
    styles_ = StyleStack (Face{TextStyle{}, page_.text});
    while (token_.id != token_end_of_source && token_.id != -token_body) {
        switch (token_.id) {
        case token_word:
            add_word (std::move (token_.text));
            advance ();
            break;
        case token_blank:
            add_blank ();
            advance ();
            break;
        default: element (token_.id);
        }
    }
    if (token_.id == -token_body) {
        attributes ();
    } else {
        fault (syntax_error); // the end is out of place
    }
}

/// True when a "body" begins behind the token in hand.
bool Reader::body_follows () const {
    Lexer ahead = lexer_;
    bool in_tag = ahead.inside_tag ();
    for (Token token = ahead.next (); token.id != token_end_of_source; token = ahead.next ()) {
        if (token.id == token_body && !in_tag) return true;
        in_tag = ahead.inside_tag ();
    }
    return false;
}

void Reader::element (int id) {
    if (id == token_h1 || id == token_h2 || id == token_h3) return heading (id);
    if (id == token_pre) return preformatted ();
    const Attributes found = attributes ();
    if (id == token_unknown) return;
    if (structure (id, found) || style (id, found) || anchor (id, found) || table (id)) return;
    fault (syntax_error);
}

/// Elements that make blocks.
bool Reader::structure (int id, const Attributes& found) {
    switch (id) {
    case token_br: add (std::make_unique<Breaker> ()); return true;
    case token_p: add (std::make_unique<Breaker> (paragraph_gap)); return true;
    case -token_p: return true; // the next one begins by itself
    case token_ul:
    case token_ol:
        lists_.push_back ({id == token_ol, 0});
        add (std::make_unique<List> (true));
        return true;
    case -token_ul:
    case -token_ol: close_list (id == -token_ol); return true;
    case token_li: {
        int number = 0;
        if (!lists_.empty () && lists_.back ().ordered) number = ++lists_.back ().number;
        add (std::make_unique<Item> (number, static_cast<int> (lists_.size ()),
                                     styles_.now ().colour));
        return true;
    }
    case -token_li: return true;
    case token_blockquote:
        ++quotes_;
        add (std::make_unique<BlockQ> (true));
        return true;
    case -token_blockquote:
        if (quotes_ == 0) return false;
        --quotes_;
        add (std::make_unique<BlockQ> (false));
        return true;
    case token_center:
        ++centers_;
        add (std::make_unique<Center> (true));
        return true;
    case -token_center:
        if (centers_ == 0) return false;
        --centers_;
        add (std::make_unique<Center> (false));
        return true;
    case token_img: image (found); return true;
    default: return false;
    }
}

void Reader::close_list (bool ordered) {
    if (lists_.empty () || lists_.back ().ordered != ordered) return fault (syntax_error);
    lists_.pop_back ();
    add (std::make_unique<List> (false));
}

void Reader::image (const Attributes& found) {
    const std::string* const source = find (found, token_src);
    const bool joined = glued_;
    add (std::make_unique<Img> (source == nullptr ? std::string () : *source)).joined = joined;
    glued_ = true;
}

/// Elements that change the letters within them.
bool Reader::style (int id, const Attributes& found) {
    StyleChange change{.tag = id};
    switch (id) {
    case token_b: change.bold = true; break;
    case token_i: change.italic = true; break;
    case token_tt:
    case token_kbd: change.fixed = true; break;
    case token_font:
        if (const std::string* const step = find (found, token_size)) {
            change.size = size_of_step (parse_atoi (*step));
        }
        change.colour = colour_of (find (found, token_color));
        break;
    case -token_b:
    case -token_i:
    case -token_tt:
    case -token_kbd:
    case -token_font: return styles_.close (-id);
    default: return false;
    }
    styles_.open (change);
    return true;
}

bool Reader::anchor (int id, const Attributes& found) {
    if (id == -token_a) {
        link_ = nullptr;
        return true;
    }
    if (id != token_a) return false;
    link_ = nullptr;
    if (const std::string* const name = find (found, token_name)) {
        page_.anchors.emplace (*name, page_.blocks.size ());
        may_merge_ = false; // the next word is a block of its own, to be found
    }
    const std::string* const href = find (found, token_href);
    if (href != nullptr && !href->empty ()) {
        page_.links.push_back (std::make_unique<Link> (Link{*href}));
        link_ = page_.links.back ().get ();
    }
    return true;
}

/// Tables are lines, their cells words.
bool Reader::table (int id) {
    switch (id) {
    case token_table:
    case -token_table:
    case token_tr:
    case -token_tr: end_row (); return true;
    case token_td: add_blank (); return true;
    case -token_td: return true;
    default: return false;
    }
}

void Reader::preformatted () {
    end_row ();
    lexer_.set_preformatted (true);
    attributes ();
    bool first = true; // a line end directly behind the tag is none
    while (token_.id != -token_pre && token_.id != -token_body &&
           token_.id != token_end_of_source) {
        if (token_.id == token_word) {
            const Face& face = styles_.now ();
            add (std::make_unique<Preformat> (std::move (token_.text), face.style, face.colour));
            advance ();
        } else if (token_.id == token_line_end) {
            if (!first) add (std::make_unique<Breaker> ());
            advance ();
        } else {
            const int id = token_.id;
            const Attributes found = attributes ();
            if (id != token_unknown && !style (id, found) && !anchor (id, found)) {
                fault (syntax_error);
            }
            continue;
        }
        first = false;
    }
    lexer_.set_preformatted (false);
    if (token_.id == -token_pre) attributes ();
    end_row ();
}

/// A heading is one block, whatever styles stand in it.
void Reader::heading (int id) {
    constexpr int sizes[] = {22, 20, 16};
    std::string text;
    attributes ();
    while (token_.id != -id && token_.id != token_end_of_source && token_.id != -token_body) {
        if (token_.id == token_word || token_.id == token_blank) {
            text += token_.text;
            advance ();
            continue;
        }
        const int inner = token_.id;
        const Attributes found = attributes ();
        anchor (inner, found);
    }
    if (token_.id == -id) attributes ();
    const TextStyle style{.size = sizes[id - token_h1], .bold = true};
    add (std::make_unique<Word> (std::move (text), style, styles_.now ().colour,
                                 BlockKind::heading));
    link_ = nullptr;
}

template <typename Made>
Made& Reader::add (std::unique_ptr<Made> block) {
    Made& made = *block;
    made.link = link_;
    made.joined = false;
    glued_ = false;
    may_merge_ = true;
    page_.blocks.push_back (std::move (block));
    return made;
}

void Reader::add_word (std::string text) {
    const Face& face = styles_.now ();
    Block* const last = page_.blocks.empty () ? nullptr : page_.blocks.back ().get ();
    if (glued_ && may_merge_ && last->kind == BlockKind::word && last->link == link_) {
        Word& word = static_cast<Word&> (*last);
        if (word.style == face.style && word.colour == face.colour) {
            word.text += text;
            return;
        }
    }
    const bool joined = glued_;
    add (std::make_unique<Word> (std::move (text), face.style, face.colour)).joined = joined;
    glued_ = true;
}

/// White space counts once, and not where a line begins.
void Reader::add_blank () {
    glued_ = false;
    if (!stands_in_line () || page_.blocks.back ()->kind == BlockKind::blank) return;
    add (std::make_unique<Blank> (styles_.now ().style));
}

void Reader::end_row () {
    if (stands_in_line ()) add (std::make_unique<Breaker> ());
}

/// True when the next word would stand behind another block of its line.
bool Reader::stands_in_line () const {
    if (page_.blocks.empty ()) return false;
    const Block& last = *page_.blocks.back ();
    return last.is_inline () && last.kind != BlockKind::breaker;
}

} // namespace

int size_of_step (int step) {
    return first_size + size_step * std::clamp (step, smallest_step, largest_step);
}

Document read_html (std::string_view source) {
    Document page;
    Reader (source, page).read ();
    return page;
}

} // namespace ostrand::manual
