// From bytes to tokens.
#include "manual/lexer.h"

#include "base/text.h"

#include <algorithm>
#include <array>

namespace ostrand::manual {
namespace {

struct NameRow {
    std::string_view name;
    TokenId id;
};

constexpr std::array<NameRow, 34> names{{
    {"a", token_a},
    {"b", token_b},
    {"bgcolor", token_bgcolor},
    {"blockquote", token_blockquote},
    {"body", token_body},
    {"br", token_br},
    {"center", token_center},
    {"color", token_color},
    {"face", token_face},
    {"font", token_font},
    {"h1", token_h1},
    {"h2", token_h2},
    {"h3", token_h3},
    {"head", token_head},
    {"href", token_href},
    {"html", token_html},
    {"i", token_i},
    {"img", token_img},
    {"kbd", token_kbd},
    {"li", token_li},
    {"name", token_name},
    {"offset", token_offset},
    {"ol", token_ol},
    {"p", token_p},
    {"pre", token_pre},
    {"size", token_size},
    {"src", token_src},
    {"table", token_table},
    {"td", token_td},
    {"text", token_text},
    {"title", token_title},
    {"tr", token_tr},
    {"tt", token_tt},
    {"ul", token_ul},
}};
static_assert (std::ranges::is_sorted (names, {}, &NameRow::name), "found by binary search");

struct EntityRow {
    std::string_view name; // behind the "&"
    std::string_view text;
};

// A hard blank is a blank within a word.
constexpr std::array<EntityRow, 6> entities{{
    {"nbsp;", " "},
    {"lt;", "<"},
    {"gt;", ">"},
    {"amp;", "&"},
    {"le;", "\u2264"},
    {"ge;", "\u2265"},
}};

constexpr std::size_t tab_width = 8;

constexpr bool is_letter (char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool is_name_byte (char c) { return is_letter (c) || is_digit (c) || c == '-'; }

std::string small_letters (std::string_view text) {
    std::string small (text);
    for (char& c : small) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char> (c - 'A' + 'a');
    }
    return small;
}

} // namespace

TokenId token_of_name (std::string_view name) {
    const auto* const row = std::ranges::lower_bound (names, name, {}, &NameRow::name);
    return row != names.end () && row->name == name ? row->id : token_none;
}

Token Lexer::next () {
    if (in_tag_) return in_tag ();
    skip_declarations ();
    if (cursor_ >= source_.size ()) return {token_end_of_source, ""};
    if (at_tag ()) return tag ();
    if (preformatted_) return line_piece ();
    if (!is_space (source_[cursor_])) return word ();
    while (cursor_ < source_.size () && is_space (source_[cursor_])) ++cursor_;
    return {token_blank, " "};
}

/// "<" is a letter like any other unless a name follows.
bool Lexer::at_tag () const {
    if (source_[cursor_] != '<') return false;
    const std::size_t name = cursor_ + (source_.substr (cursor_).starts_with ("</") ? 2 : 1);
    return name < source_.size () && is_letter (source_[name]);
}

void Lexer::skip_declarations () {
    for (;;) {
        const std::string_view rest = source_.substr (std::min (cursor_, source_.size ()));
        std::string_view end;
        if (rest.starts_with ("<!--")) {
            end = "-->";
        } else if (rest.starts_with ("<!") || rest.starts_with ("<?")) {
            end = ">";
        } else {
            return;
        }
        const std::size_t found = rest.find (end, 2);
        cursor_ = found == std::string_view::npos ? source_.size () : cursor_ + found + end.size ();
    }
}

Token Lexer::tag () {
    ++cursor_;
    const bool closing = source_[cursor_] == '/';
    if (closing) ++cursor_;
    const std::size_t begin = cursor_;
    while (cursor_ < source_.size () && is_name_byte (source_[cursor_])) ++cursor_;
    const std::string name = small_letters (source_.substr (begin, cursor_ - begin));
    in_tag_ = true;
    value_follows_ = false;
    const TokenId id = token_of_name (name);
    if (id == token_none) return {token_unknown, closing ? "/" + name : name};
    return {closing ? -id : id, ""};
}

Token Lexer::in_tag () {
    // A "/" at the end of a tag and stray signs say nothing.
    while (cursor_ < source_.size ()) {
        const char c = source_[cursor_];
        if (value_follows_ && !is_space (c) && c != '>') return value ();
        if (is_name_byte (c) || c == '>' || c == '<') break;
        ++cursor_;
    }
    // A tag that is not closed ends where the next one begins.
    if (cursor_ >= source_.size () || source_[cursor_] == '>' || source_[cursor_] == '<') {
        if (cursor_ < source_.size () && source_[cursor_] == '>') ++cursor_;
        in_tag_ = false;
        return {token_end_of_tag, ""};
    }
    const std::size_t begin = cursor_;
    while (cursor_ < source_.size () && is_name_byte (source_[cursor_])) ++cursor_;
    const std::string name = small_letters (source_.substr (begin, cursor_ - begin));
    std::size_t sign = cursor_;
    while (sign < source_.size () && is_space (source_[sign])) ++sign;
    value_follows_ = sign < source_.size () && source_[sign] == '=';
    if (value_follows_) cursor_ = sign + 1;
    const TokenId id = token_of_name (name);
    if (id == token_none) return {token_unknown, name};
    return {id, ""};
}

Token Lexer::value () {
    value_follows_ = false;
    const char quote = source_[cursor_];
    if (quote == '"' || quote == '\'') {
        const std::size_t begin = ++cursor_;
        const std::size_t end = source_.find (quote, begin);
        cursor_ = end == std::string_view::npos ? source_.size () : end + 1;
        return {token_quoted, std::string (source_.substr (begin, end - begin))};
    }
    const std::size_t begin = cursor_;
    while (cursor_ < source_.size () && !is_space (source_[cursor_]) && source_[cursor_] != '>') {
        ++cursor_;
    }
    return {token_word, std::string (source_.substr (begin, cursor_ - begin))};
}

Token Lexer::word () {
    Token token{token_word, ""};
    // The first byte belongs to the word even if it is a "<".
    do {
        if (source_[cursor_] == '&') {
            entity (token.text);
        } else {
            token.text += source_[cursor_++];
        }
    } while (cursor_ < source_.size () && !is_space (source_[cursor_]) && source_[cursor_] != '<');
    return token;
}

Token Lexer::line_piece () {
    if (source_[cursor_] == '\n') {
        ++cursor_;
        column_ = 0;
        return {token_line_end, ""};
    }
    Token token{token_word, ""};
    do {
        const char c = source_[cursor_];
        if (c == '&') {
            entity (token.text);
            ++column_;
            continue;
        }
        ++cursor_;
        if (c == '\r') continue;
        if (c == '\t') {
            const std::size_t blanks = tab_width - column_ % tab_width;
            token.text.append (blanks, ' ');
            column_ += blanks;
            continue;
        }
        token.text += c;
        // The further bytes of a letter in UTF-8 take no column.
        if ((static_cast<unsigned char> (c) & 0xc0U) != 0x80U) ++column_;
    } while (cursor_ < source_.size () && source_[cursor_] != '\n' && source_[cursor_] != '<');
    return token;
}

void Lexer::entity (std::string& text) {
    const std::string_view behind = source_.substr (cursor_ + 1);
    const auto* const row = std::ranges::find_if (
        entities, [&] (const EntityRow& entity) { return behind.starts_with (entity.name); });
    if (row == entities.end ()) {
        text += source_[cursor_++];
        return;
    }
    text += row->text;
    cursor_ += 1 + row->name.size ();
}

} // namespace ostrand::manual
