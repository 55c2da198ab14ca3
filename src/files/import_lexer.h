// Tokens of the model language, as the import reads them: names go straight into its tables.
// Layer: files.
#pragma once
#include "files/import_tables.h"

#include <cstdarg>
#include <string>
#include <string_view>

namespace ostrand::files {

/// Token kinds, in the order of their texts in messages; the first is never produced.
enum class TokenKind {
    none,
    end,
    name,
    number,
    colour,
    millimolar,
    micromolar,
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
    left_bracket,
    right_bracket,
    left_parenthesis,
    right_parenthesis,
};

/// What a kind is called in messages: "<ident>", "->" ...
const char* token_text (TokenKind kind);

struct Token {
    TokenKind kind = TokenKind::end;
    std::string_view name;            // of a name
    ImportSpecies* species = nullptr; // of a name; null for one of no length
    float number = 0;
};

/// Reads a model text token by token. It keeps its first failure, which is reported at once; from
/// then on each token reads as end of text.
class ImportLexer {
  public:
    /// The text ends at its first NUL.
    ImportLexer (std::string_view text, ImportTables& tables);

    Token next ();
    /// The token will be read again.
    void unget (const Token& token);
    /// Reports the first failure; gives false for the caller to hand on.
    bool fail (const char* format, ...) __attribute__ ((format (printf, 2, 3)));
    bool failed () const { return failed_; }

  private:
    char peek (std::size_t ahead = 0) const {
        return at_ + ahead < text_.size () ? text_[at_ + ahead] : '\0';
    }
    bool unit_stands_here (std::size_t ahead, std::string_view followers) const;
    Token single (TokenKind kind, std::size_t bytes);
    Token quoted_name ();
    Token colour ();
    bool number (Token& token);
    Token word (std::string_view name);

    std::string_view text_;
    std::size_t at_ = 0;
    ImportTables& tables_;
    bool failed_ = false;
    bool has_pushback_ = false;
    Token pushback_;
};

} // namespace ostrand::files
