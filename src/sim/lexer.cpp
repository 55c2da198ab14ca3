// Tokens of the model language.
#include "sim/lexer.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <utility>

namespace ostrand::sim {
namespace {

constexpr std::array token_texts{
    "RINGUR", "EOF",   "<ident>", "<float>", "<colour>", "mM", "uM", "duration", "display",
    "linked", "input", "output",  "excess",  ":",        ";",  ",",  "|",        "+",
    "-",      "->",    "=",       "[",       "]",        "(",  ")",
};
static_assert (token_texts.size () == static_cast<std::size_t> (TokenKind::close_paren) + 1);

constexpr std::string_view name_ends = " \t\n:;,|/+-=[]()";
constexpr std::string_view unit_ends = " \t\n-+|:;,";
// A unit that is glued to its number may not be followed by | or +.
constexpr std::string_view glued_unit_ends = " \t\n,-:;";

constexpr char micro_sign = static_cast<char> (181); // Latin-1

constexpr bool begins_unit (char c) { return c == 'm' || c == 'u' || c == micro_sign; }

TokenKind single_character (char c) {
    switch (c) {
    case ';': return TokenKind::semicolon;
    case ':': return TokenKind::colon;
    case '=': return TokenKind::equals;
    case '[': return TokenKind::open_bracket;
    case ']': return TokenKind::close_bracket;
    case '|': return TokenKind::bar;
    case '+': return TokenKind::plus;
    case ',': return TokenKind::comma;
    case '(': return TokenKind::open_paren;
    case ')': return TokenKind::close_paren;
    default: return TokenKind::none;
    }
}

Token plain_token (TokenKind kind) {
    Token token;
    token.kind = kind;
    return token;
}

} // namespace

const char* token_text (TokenKind kind) { return token_texts[static_cast<std::size_t> (kind)]; }

TokenKind keyword_of (std::string_view word) {
    for (const TokenKind kind : {TokenKind::duration, TokenKind::display, TokenKind::linked,
                                 TokenKind::input, TokenKind::output, TokenKind::excess}) {
        if (word == token_text (kind)) return kind;
    }
    return TokenKind::none;
}

std::string quoted (std::string_view name) {
    std::string out = "\"";
    for (const char c : name) {
        if (c == '"') out += c;
        out += c;
    }
    return out + '"';
}

std::string shown (const Token& token) {
    switch (token.kind) {
    case TokenKind::ident: return std::string (token.text);
    case TokenKind::number: return format_g (static_cast<double> (token.number));
    default: return token_text (token.kind);
    }
}

Lexer::Lexer (std::string_view text, NameIndex name_index, std::string table_full)
    : text_ (text.substr (0, text.find ('\0'))), name_index_ (std::move (name_index)),
      table_full_ (std::move (table_full)) {}

bool Lexer::model_error (const char* format, ...) {
    if (std::exchange (failed_, true)) return false;
    va_list arguments;
    va_start (arguments, format);
    const std::string message = format_text_v (format, arguments);
    va_end (arguments);
    report_message ("%s", message.c_str ());
    return false;
}

int Lexer::intern (std::string_view name) {
    if (failed_) return 0;
    const int index = name_index_ (name);
    if (index < 0) model_error ("%s", table_full_.c_str ());
    return std::max (index, 0);
}

/// Looks for a stop at every 256th call.
bool Lexer::is_stopped () {
    if (++looks_ % 256 == 0 && stop_.stop_requested ()) failed_ = true;
    return failed_;
}

/// As the text's own search, but a stop is looked for on a long way; the end when there is none.
std::size_t Lexer::find_first_of (std::string_view set, std::size_t from) {
    constexpr std::size_t piece = 1 << 12;
    while (from < text_.size () && !is_stopped ()) {
        const std::size_t at = text_.substr (from, piece).find_first_of (set);
        if (at != std::string_view::npos) return from + at;
        from += piece;
    }
    return text_.size ();
}

Token Lexer::next_token () {
    if (failed_ || is_stopped ()) return plain_token (TokenKind::eof);
    if (pushback_.kind != TokenKind::none) return std::exchange (pushback_, {});
    const Token token = read_token ();
    return failed_ ? plain_token (TokenKind::eof) : token;
}

void Lexer::skip_blanks_and_comments () {
    for (;;) {
        const char c = at (cursor_);
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            ++cursor_;
            if (is_stopped ()) return;
        } else if (c == '/' && at (cursor_ + 1) == '/') {
            cursor_ = find_first_of ("\n", cursor_);
        } else {
            return;
        }
    }
}

bool Lexer::unit_at (std::size_t place, std::string_view followers) const {
    // Nothing follows at the end of the text, so a unit cannot be the very last thing in it.
    return begins_unit (at (place)) && at (place + 1) == 'M' && at (place + 2) != '\0' &&
           followers.find (at (place + 2)) != std::string_view::npos;
}

Token Lexer::read_token () {
    skip_blanks_and_comments ();
    const char c = at (cursor_);
    if (c == '\0') return plain_token (TokenKind::eof);
    if (c == '-') {
        const bool arrow = at (cursor_ + 1) == '>';
        cursor_ += arrow ? 2 : 1;
        return plain_token (arrow ? TokenKind::arrow : TokenKind::minus);
    }
    if (const TokenKind single = single_character (c); single != TokenKind::none) {
        ++cursor_;
        return plain_token (single);
    }
    if (unit_at (cursor_, unit_ends)) {
        cursor_ += 2;
        return plain_token (c == 'm' ? TokenKind::milli_molar : TokenKind::micro_molar);
    }
    if (c == '"') return read_quoted_name ();
    if (c == '#') return read_colour ();
    if (Token number; (is_digit (c) || c == '.') && read_number (number)) return number;
    const std::size_t end = find_first_of (name_ends, cursor_);
    return read_name (text_.substr (cursor_, end - cursor_), end);
}

Token Lexer::read_name (std::string_view name, std::size_t after) {
    Token token = plain_token (TokenKind::ident);
    if (name.empty ()) return token; // names nothing: whoever wants a name reports it
    cursor_ = after;
    const TokenKind keyword = keyword_of (name);
    if (keyword != TokenKind::none) return plain_token (keyword);
    token.text = name;
    token.species = intern (name);
    return token;
}

/// Two quotes side by side are one letter of the name: two names never stand side by side. A pair
/// alone is a name of no length.
Token Lexer::read_quoted_name () {
    const std::size_t first = cursor_ + 1;
    std::string unescaped; // up to `from`, once a quote was met in the name
    std::size_t from = first;
    for (;;) {
        const std::size_t end = std::min (text_.find_first_of ("\"\n", from), text_.size ());
        if (at (end) == '\n') {
            const std::string rest (text_.substr (first, 4));
            model_error ("'\\n' inside a name: '\"%4.4s ...'", rest.c_str ());
            return {};
        }
        if (at (end) == '"' && at (end + 1) == '"') {
            unescaped += text_.substr (from, end + 1 - from);
            from = end + 2;
            continue;
        }
        const std::size_t after = std::min (end + 1, text_.size ());
        const std::string_view rest = text_.substr (from, end - from);
        if (from == first) return read_name (rest, after);
        names_with_quotes_.push_back (unescaped.append (rest));
        return read_name (names_with_quotes_.back (), after);
    }
}

Token Lexer::read_colour () {
    const std::size_t first = cursor_ + 1;
    // All digits make the value, up to 64 bits, and the low 24 are taken: scan_hexadecimal has 32.
    const std::string digits (text_.substr (first, 64));
    unsigned long value = 0;
    const bool read = std::sscanf (digits.c_str (), "%lx", &value) == 1; // NOLINT(cert-err34-c)
    Token token = plain_token (TokenKind::colour);
    if (read && is_hex_digit (at (first + 5))) {
        token.colour = static_cast<std::uint32_t> (value << 8);
        cursor_ += 7;
    } else if (read && is_hex_digit (at (first + 2)) && !is_hex_digit (at (first + 3))) {
        const auto doubled = [value] (int shift) {
            return static_cast<std::uint32_t> (value >> shift & 0xF) * 0x11;
        };
        token.colour = doubled (8) << 24 | doubled (4) << 16 | doubled (0) << 8;
        cursor_ += 4;
    } else {
        model_error ("bad colour specification: '#%6.6s'", digits.c_str ());
    }
    return token;
}

/// Tries a number: false when the word is a name after all.
bool Lexer::read_number (Token& token) {
    std::size_t end = cursor_;
    bool point = false;
    for (;; ++end) {
        const char c = at (end);
        if (c == '.') {
            if (std::exchange (point, true)) return false;
        } else if (!is_digit (c) && c != '-' && c != 'e') {
            break;
        }
    }
    const char after = at (end);
    const bool ends = after == '\t' || after == '\n' || after == ' ' || after == ';';
    if (!ends && !unit_at (end, glued_unit_ends)) return false;
    token = plain_token (TokenKind::number);
    token.number = static_cast<float> (parse_atof (text_.substr (cursor_, end - cursor_)));
    cursor_ = end;
    return true;
}

} // namespace ostrand::sim
