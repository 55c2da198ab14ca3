// Which token stands here? The rules are the simulator's, byte for byte, so that both readers
// understand the same texts.
#include "files/import_lexer.h"

#include "base/report.h"
#include "base/text.h"

#include <array>

namespace ostrand::files {
namespace {

constexpr std::array token_texts{
    "RINGUR", "EOF",   "<ident>", "<float>", "<colour>", "mM", "uM", "duration", "display",
    "linked", "input", "output",  "excess",  ":",        ";",  ",",  "|",        "+",
    "-",      "->",    "=",       "[",       "]",        "(",  ")",
};
static_assert (token_texts.size () == static_cast<std::size_t> (TokenKind::right_parenthesis) + 1);

constexpr std::string_view after_unit = " \t\n-+|:;,";
constexpr std::string_view after_glued_unit = " \t\n,-:;";
constexpr std::string_view after_word = " \t\n:;,|/+-=[]()";
constexpr char micro_sign = '\xB5'; // in Latin-1

bool is_one_of (char c, std::string_view set) {
    return c != '\0' && set.find (c) != std::string_view::npos;
}

TokenKind punctuation (char c) {
    switch (c) {
    case ';': return TokenKind::semicolon;
    case ':': return TokenKind::colon;
    case '=': return TokenKind::equals;
    case '[': return TokenKind::left_bracket;
    case ']': return TokenKind::right_bracket;
    case '|': return TokenKind::bar;
    case '+': return TokenKind::plus;
    case ',': return TokenKind::comma;
    case '(': return TokenKind::left_parenthesis;
    case ')': return TokenKind::right_parenthesis;
    default: return TokenKind::none;
    }
}

} // namespace

const char* token_text (TokenKind kind) { return token_texts[static_cast<std::size_t> (kind)]; }

ImportLexer::ImportLexer (std::string_view text, ImportTables& tables)
    : text_ (text.substr (0, text.find ('\0'))), tables_ (tables) {}

bool ImportLexer::fail (const char* format, ...) {
    if (failed_) {
        return false;
    }
    failed_ = true;
    va_list arguments;
    va_start (arguments, format);
    const std::string message = format_text_v (format, arguments);
    va_end (arguments);
    report_message ("%s", message.c_str ());
    return false;
}

void ImportLexer::unget (const Token& token) {
    has_pushback_ = true;
    pushback_ = token;
}

Token ImportLexer::single (TokenKind kind, std::size_t bytes) {
    at_ += bytes;
    Token token;
    token.kind = kind;
    return token;
}

bool ImportLexer::unit_stands_here (std::size_t ahead, std::string_view followers) const {
    const char c = peek (ahead);
    return (c == 'm' || c == 'u' || c == micro_sign) && peek (ahead + 1) == 'M' &&
           is_one_of (peek (ahead + 2), followers);
}

Token ImportLexer::next () {
    if (failed_) {
        return {};
    }
    if (has_pushback_) {
        has_pushback_ = false;
        return pushback_;
    }
    for (;;) {
        const char c = peek ();
        if (c == '\0') {
            return {};
        }
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            ++at_;
            continue;
        }
        if (c == '/' && peek (1) == '/') {
            at_ = text_.find ('\n', at_);
            if (at_ == std::string_view::npos) {
                at_ = text_.size ();
            }
            continue;
        }
        if (c == '-') {
            return peek (1) == '>' ? single (TokenKind::arrow, 2) : single (TokenKind::minus, 1);
        }
        if (const TokenKind kind = punctuation (c); kind != TokenKind::none) {
            return single (kind, 1);
        }
        if (unit_stands_here (0, after_unit)) {
            return single (c == 'm' ? TokenKind::millimolar : TokenKind::micromolar, 2);
        }
        if (c == '"') {
            return quoted_name ();
        }
        if (c == '#') {
            return colour ();
        }
        if (is_digit (c) || c == '.') {
            Token token;
            if (number (token)) {
                return token;
            }
        }
        const std::size_t end = text_.find_first_of (after_word, at_);
        const std::string_view name =
            text_.substr (at_, (end == std::string_view::npos ? text_.size () : end) - at_);
        at_ += name.size ();
        return word (name);
    }
}

Token ImportLexer::quoted_name () {
    const std::size_t start = at_ + 1;
    std::size_t end = text_.find_first_of ("\"\n", start);
    if (end == std::string_view::npos) {
        end = text_.size ();
    }
    if (end < text_.size () && text_[end] == '\n') {
        fail ("'\\n' inside a name: '\"%4.4s ...'", std::string (text_.substr (start, 4)).c_str ());
        return {};
    }
    const std::string_view name = text_.substr (start, end - start);
    if (!name.empty ()) {
        at_ = end < text_.size () ? end + 1 : end;
    }
    return word (name);
}

Token ImportLexer::colour () {
    const std::string_view behind = text_.substr (at_ + 1);
    Token token;
    token.kind = TokenKind::colour;
    if (scan_hexadecimal (behind)) {
        // The sixth digit decides first: "#abc, d..." is taken as six digits.
        if (is_hex_digit (peek (6))) {
            at_ += 7;
            return token;
        }
        if (is_hex_digit (peek (3)) && !is_hex_digit (peek (4))) {
            at_ += 4;
            return token;
        }
    }
    fail ("bad colour specification: '#%6.6s'", std::string (behind.substr (0, 6)).c_str ());
    return {};
}

bool ImportLexer::number (Token& token) {
    std::size_t end = at_;
    bool has_point = false;
    while (end < text_.size ()) {
        const char c = text_[end];
        if (c == '.') {
            if (has_point) {
                return false;
            }
            has_point = true;
        } else if (!is_digit (c) && c != '-' && c != 'e') {
            break;
        }
        ++end;
    }
    const std::size_t length = end - at_;
    if (!is_one_of (peek (length), "\t\n ;") && !unit_stands_here (length, after_glued_unit)) {
        return false;
    }
    token.kind = TokenKind::number;
    token.number = static_cast<float> (parse_atof (text_.substr (at_, length)));
    at_ = end;
    return true;
}

Token ImportLexer::word (std::string_view name) {
    Token token;
    for (TokenKind kind : {TokenKind::duration, TokenKind::display, TokenKind::linked,
                           TokenKind::input, TokenKind::output, TokenKind::excess}) {
        if (name == token_text (kind)) {
            token.kind = kind;
            return token;
        }
    }
    token.kind = TokenKind::name;
    token.name = name;
    if (name.empty ()) {
        return token;
    }
    token.species = tables_.intern (name);
    if (token.species == nullptr) {
        fail ("Species hashtable full");
        return {};
    }
    return token;
}

} // namespace ostrand::files
