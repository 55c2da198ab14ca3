// Texts of initial concentrations.
#include "sim/concentration.h"

#include "base/report.h"
#include "base/units.h"

#include <cmath>
#include <utility>

namespace ostrand::sim {
namespace {

constexpr double count_limit = 4294967296.0; // counts are 32 bits wide

/// The values of one species while they are read.
class Values {
  public:
    Values (Lexer& lexer, std::string_view species, InitialCounts& counts)
        : lexer_ (lexer), species_ (species), counts_ (counts) {}

    void append (float milli_molar) {
        if (counts_.count == max_concentrations) {
            lexer_.model_error ("too much initial concentrations (max = %d)",
                                static_cast<int> (max_concentrations));
            return;
        }
        ++counts_.count;
        replace_last (milli_molar);
    }
    void replace_last (float milli_molar) {
        const double molecules = molecules_of (milli_molar);
        if (molecules >= count_limit) {
            lexer_.model_error ("initial concentration of '%s' too high: %g mM (max = %g mM)",
                                std::string (species_).c_str (), static_cast<double> (milli_molar),
                                count_limit / 1000.0 / molecules_per_micromolar);
            return;
        }
        counts_.conc[counts_.count - 1] = static_cast<std::uint32_t> (molecules);
    }

  private:
    Lexer& lexer_;
    std::string_view species_;
    InitialCounts& counts_;
};

/// A series from the last value on; it always runs upward, so from the lower end. The running value
/// adds up in float arithmetic, and so may lose or win its last value by rounding.
void read_series (Lexer& lexer, Values& values, float& last) {
    float end = read_quantity (lexer);
    expect_token (lexer, TokenKind::colon);
    const float step = read_quantity (lexer);
    if (last > end) {
        std::swap (last, end);
        values.replace_last (last);
    }
    for (float value = last + step; value <= end && !lexer.failed (); value += step) {
        values.append (value);
        last = value;
    }
}

} // namespace

double molecules_of (float milli_molar) {
    return std::trunc (static_cast<double> (milli_molar) * 1000.0 * molecules_per_micromolar);
}

Token expect_token (Lexer& lexer, TokenKind kind) {
    const Token token = lexer.next_token ();
    const bool nameless = kind == TokenKind::ident && token.species < 0;
    if (token.kind == kind && !nameless) return token;
    lexer.model_error ("'%s' expected, got: '%s'", token_text (kind), shown (token).c_str ());
    return {};
}

float read_quantity (Lexer& lexer) {
    const float value = expect_token (lexer, TokenKind::number).number;
    const Token unit = lexer.next_token ();
    if (unit.kind == TokenKind::milli_molar) return value;
    if (unit.kind == TokenKind::micro_molar) return value / 1000.0F;
    lexer.model_error ("%s or %s expected, got %s", token_text (TokenKind::micro_molar),
                       token_text (TokenKind::milli_molar), token_text (unit.kind));
    return value;
}

void read_names (Lexer& lexer, const std::function<void (const Token& name)>& take) {
    take (expect_token (lexer, TokenKind::ident));
    while (!lexer.failed ()) {
        const Token token = lexer.next_token ();
        if (token.kind == TokenKind::close_paren) return;
        if (token.kind != TokenKind::comma) {
            lexer.model_error ("'%s' or '%s' expected, got '%s'", token_text (TokenKind::comma),
                               token_text (TokenKind::close_paren), token_text (token.kind));
            return;
        }
        take (expect_token (lexer, TokenKind::ident));
    }
}

void read_concentrations (Lexer& lexer, std::string_view species, InitialCounts& counts) {
    Values values (lexer, species, counts);
    float last = read_quantity (lexer);
    values.append (last);
    while (!lexer.failed ()) {
        const Token token = lexer.next_token ();
        if (token.kind == TokenKind::comma) {
            last = read_quantity (lexer);
            values.append (last);
        } else if (token.kind == TokenKind::arrow) {
            read_series (lexer, values, last);
        } else {
            lexer.unget_token (token);
            return;
        }
    }
}

namespace {

/// The values of a whole text; false when it is faulty, which was reported.
bool read_text (std::string_view text, InitialCounts& counts) {
    // As it stands in a statement: what ends the statement ends its last number and unit too.
    const std::string statement = std::string (text) + ";";
    Lexer lexer (statement, [] (std::string_view) { return 0; }, {});
    const Token token = lexer.next_token ();
    if (token.kind == TokenKind::open_paren) {
        read_names (lexer, [] (const Token&) {});
    } else {
        lexer.unget_token (token);
    }
    read_concentrations (lexer, "it", counts);
    expect_token (lexer, TokenKind::semicolon);
    expect_token (lexer, TokenKind::eof);
    return !lexer.failed ();
}

} // namespace

std::optional<std::string> concentration_fault (std::string_view text) {
    std::string fault;
    const MessageScope listening ([&fault] (std::string_view told) { fault = told; });
    InitialCounts counts;
    if (read_text (text, counts)) return std::nullopt;
    return fault;
}

std::size_t concentration_count (std::string_view text) {
    const MessageScope silence ([] (std::string_view) {});
    InitialCounts counts;
    return read_text (text, counts) ? counts.count : 0;
}

} // namespace ostrand::sim
