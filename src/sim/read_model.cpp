// The grammar of the model language.
#include "sim/read_model.h"

#include "base/text.h"
#include "base/units.h"
#include "sim/expansion.h"
#include "sim/lexer.h"

#include <cmath>
#include <optional>
#include <vector>

namespace ostrand::sim {
namespace {

constexpr double count_limit = 4294967296.0; // counts are 32 bits wide
constexpr double longest_duration = 429496;  // seconds whose time steps fit 32 bits

class Reader {
  public:
    Reader (std::string_view text, ModelTables& tables)
        : lexer_ (
              text,
              [&tables] (std::string_view name) { return tables.intern_species (name, false); },
              format_text ("too many species (max = %d)", static_cast<int> (max_species))),
          tables_ (tables) {}

    bool read () {
        for (Token token = lexer_.next_token (); token.kind != TokenKind::eof;
             token = lexer_.next_token ()) {
            lexer_.unget_token (token);
            parse_statement ();
            expect (TokenKind::semicolon);
        }
        return !lexer_.failed ();
    }

  private:
    void parse_statement ();
    void parse_duration ();
    void parse_display ();
    void parse_concentration ();
    void parse_reaction (const Token& first);
    void parse_mass_action (const Token& first);
    void parse_enzyme (const Token& enzyme);
    void parse_inhibitor (const Token& enzyme, const Token& inhibitor);

    void parse_linked_names (ModelSpecies* first);
    void parse_series (class Values& values, float& last);
    std::vector<std::uint16_t> parse_sum (std::uint16_t first);
    std::vector<float> parse_km_list (std::size_t n_substrates);

    /// A number and its unit, as mM.
    float parse_quantity ();

    Token expect (TokenKind kind);
    std::uint16_t expect_name () {
        return static_cast<std::uint16_t> (expect (TokenKind::ident).species);
    }
    float expect_number () { return expect (TokenKind::number).number; }
    /// Never null: after a fault a species that nobody sees.
    ModelSpecies* expect_species () {
        const std::uint16_t index = expect_name ();
        return lexer_.failed () ? &dropped_ : tables_.species[index].get ();
    }

    Lexer lexer_;
    ModelTables& tables_;
    ModelSpecies dropped_;
};

/// The initial values of one species while they are read.
class Values {
  public:
    Values (Lexer& lexer, ModelSpecies& species) : lexer_ (lexer), species_ (species) {}

    void append (float milli_molar) {
        if (count_ == max_concentrations) {
            lexer_.model_error ("too much initial concentrations (max = %d)",
                                static_cast<int> (max_concentrations));
            return;
        }
        ++count_;
        replace_last (milli_molar);
    }
    void replace_last (float milli_molar) {
        const double molecules = molecules_of (milli_molar);
        if (molecules >= count_limit) {
            lexer_.model_error ("initial concentration of '%s' too high: %g mM (max = %g mM)",
                                species_.name.c_str (), static_cast<double> (milli_molar),
                                count_limit / 1000.0 / molecules_per_micromolar);
            return;
        }
        species_.conc[count_ - 1] = static_cast<std::uint32_t> (molecules);
    }
    void finish () { species_.nb = static_cast<std::int32_t> (count_); }

  private:
    Lexer& lexer_;
    ModelSpecies& species_;
    std::size_t count_ = 0;
};

/// Chains `next` behind `last`.
void link_species (ModelSpecies*& last, ModelSpecies* next) {
    last->next_linked = next;
    next->prev_linked = last;
    last = next;
}

Token Reader::expect (TokenKind kind) {
    const Token token = lexer_.next_token ();
    const bool nameless = kind == TokenKind::ident && token.species < 0;
    if (token.kind == kind && !nameless) return token;
    lexer_.model_error ("'%s' expected, got: '%s'", token_text (kind), shown (token).c_str ());
    return {};
}

float Reader::parse_quantity () {
    const float value = expect_number ();
    const Token unit = lexer_.next_token ();
    if (unit.kind == TokenKind::milli_molar) return value;
    if (unit.kind == TokenKind::micro_molar) return value / 1000.0F;
    lexer_.model_error ("%s or %s expected, got %s", token_text (TokenKind::micro_molar),
                        token_text (TokenKind::milli_molar), token_text (unit.kind));
    return value;
}

void Reader::parse_statement () {
    const Token token = lexer_.next_token ();
    switch (token.kind) {
    case TokenKind::duration: parse_duration (); return;
    case TokenKind::display: parse_display (); return;
    case TokenKind::linked:
        expect (TokenKind::open_paren);
        parse_linked_names (nullptr);
        return;
    case TokenKind::input:
    case TokenKind::output:
    case TokenKind::excess:
        expect (TokenKind::open_bracket);
        parse_concentration ();
        return;
    case TokenKind::open_bracket: parse_concentration (); return;
    case TokenKind::ident:
        if (token.species < 0) break;
        parse_reaction (token);
        return;
    default: break;
    }
    lexer_.model_error ("syntax error: enzyme name expected");
}

void Reader::parse_duration () {
    expect (TokenKind::equals);
    const double seconds = std::trunc (static_cast<double> (expect_number ()));
    if (!(seconds <= longest_duration)) {
        lexer_.model_error ("duration too long: %g s (max = %g s)", seconds, longest_duration);
        return;
    }
    tables_.nb_gen = static_cast<std::uint32_t> (seconds) * time_steps_per_second;
}

void Reader::parse_display () {
    expect (TokenKind::open_paren);
    while (!lexer_.failed ()) {
        ModelSpecies* species = expect_species ();
        species->displayed = true;
        Token token = lexer_.next_token ();
        for (; token.kind == TokenKind::colour; token = lexer_.next_token ()) {
            species->colour = token.colour;
        }
        if (token.kind == TokenKind::close_paren) return;
        if (token.kind != TokenKind::comma) {
            lexer_.model_error ("'%s', '%s', #rrggbb or #rgb expected, got '%s'",
                                token_text (TokenKind::comma), token_text (TokenKind::close_paren),
                                token_text (token.kind));
        }
    }
}

/// The names of a list behind its "(". They are chained behind `first`; without one, the list's own
/// first name begins the chain. The links of the chain's first species are cleared before.
void Reader::parse_linked_names (ModelSpecies* first) {
    ModelSpecies* last = first;
    if (last == nullptr) last = expect_species ();
    last->next_linked = nullptr;
    last->prev_linked = nullptr;
    if (first != nullptr) link_species (last, expect_species ());
    while (!lexer_.failed ()) {
        const Token token = lexer_.next_token ();
        if (token.kind == TokenKind::close_paren) return;
        if (token.kind != TokenKind::comma) {
            lexer_.model_error ("'%s' or '%s' expected, got '%s'", token_text (TokenKind::comma),
                                token_text (TokenKind::close_paren), token_text (token.kind));
            return;
        }
        link_species (last, expect_species ());
    }
}

void Reader::parse_concentration () {
    ModelSpecies* species = expect_species ();
    expect (TokenKind::close_bracket);
    expect (TokenKind::equals);
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::open_paren) {
        parse_linked_names (species);
    } else {
        lexer_.unget_token (token);
    }
    Values values (lexer_, *species);
    float last = parse_quantity ();
    values.append (last);
    while (!lexer_.failed ()) {
        token = lexer_.next_token ();
        if (token.kind == TokenKind::comma) {
            last = parse_quantity ();
            values.append (last);
        } else if (token.kind == TokenKind::arrow) {
            parse_series (values, last);
        } else {
            lexer_.unget_token (token);
            values.finish ();
            return;
        }
    }
}

/// A series from the last value on; it always runs upward, so from the lower end. The running value
/// adds up in float arithmetic, and so may lose or win its last value by rounding.
void Reader::parse_series (Values& values, float& last) {
    float end = parse_quantity ();
    expect (TokenKind::colon);
    const float step = parse_quantity ();
    if (last > end) {
        std::swap (last, end);
        values.replace_last (last);
    }
    for (float value = last + step; value <= end && !lexer_.failed (); value += step) {
        values.append (value);
        last = value;
    }
}

void Reader::parse_reaction (const Token& first) {
    const Token token = lexer_.next_token ();
    switch (token.kind) {
    case TokenKind::plus:
    case TokenKind::arrow:
        lexer_.unget_token (token);
        parse_mass_action (first);
        return;
    case TokenKind::colon: parse_enzyme (first); return;
    default:
        lexer_.model_error ("'%s' or '%s' expected, got '%s'", token_text (TokenKind::arrow),
                            token_text (TokenKind::plus), token_text (token.kind));
    }
}

void Reader::parse_mass_action (const Token& first) {
    ElemStep step{static_cast<std::uint16_t> (first.species), no_species, {}, 0};
    step.p.fill (no_species);
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::plus) {
        step.q = expect_name ();
    } else {
        lexer_.unget_token (token);
    }
    expect (TokenKind::arrow);
    step.p[0] = expect_name ();
    token = lexer_.next_token ();
    if (token.kind == TokenKind::plus) {
        step.p[1] = expect_name ();
        expect (TokenKind::bar);
    } else if (token.kind != TokenKind::bar) {
        lexer_.model_error ("'%s' expected, got '%s'", token_text (TokenKind::bar),
                            token_text (token.kind));
    }
    step.k = expect_number ();
    if (lexer_.failed ()) return;
    ++tables_.complex_counter;
    append_step (tables_, lexer_, step);
}

/// The names of "first + name + name": what is left of it behind the first.
std::vector<std::uint16_t> Reader::parse_sum (std::uint16_t first) {
    std::vector<std::uint16_t> names{first};
    Token token = lexer_.next_token ();
    for (; token.kind == TokenKind::plus; token = lexer_.next_token ()) {
        names.push_back (expect_name ());
    }
    lexer_.unget_token (token);
    return names;
}

/// One Km for each substrate, and the "-" behind them.
std::vector<float> Reader::parse_km_list (std::size_t n_substrates) {
    std::vector<float> km{parse_quantity ()};
    Token token = lexer_.next_token ();
    for (; token.kind == TokenKind::comma; token = lexer_.next_token ()) {
        if (km.size () >= n_substrates) {
            lexer_.model_error ("more KM's (%d) than substates (%d)",
                                static_cast<int> (km.size () + 1), static_cast<int> (n_substrates));
            return km;
        }
        km.push_back (parse_quantity ());
    }
    if (token.kind != TokenKind::minus) lexer_.model_error ("Kcat missing");
    if (km.size () < n_substrates) {
        lexer_.model_error ("more substates (%d) than KM's (%d)", static_cast<int> (n_substrates),
                            static_cast<int> (km.size ()));
    }
    return km;
}

void Reader::parse_enzyme (const Token& enzyme) {
    Token second;
    second.species = expect_name ();
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::bar) {
        parse_inhibitor (enzyme, second);
        return;
    }
    lexer_.unget_token (token);
    const auto substrates = parse_sum (static_cast<std::uint16_t> (second.species));
    token = lexer_.next_token ();
    if (token.kind != TokenKind::arrow) {
        lexer_.model_error ("arrow expected, got %s", token_text (token.kind));
    }
    const auto products = parse_sum (expect_name ());
    token = lexer_.next_token ();
    if (token.kind != TokenKind::bar) {
        lexer_.model_error ("vertical bar expected, got %s", token_text (token.kind));
    }
    const std::vector<float> km = parse_km_list (substrates.size ());
    const float kcat = expect_number ();
    if (lexer_.failed ()) return;
    ++tables_.complex_counter;
    expand_enzyme (tables_, lexer_, static_cast<std::uint16_t> (enzyme.species), substrates, km,
                   products, kcat);
}

void Reader::parse_inhibitor (const Token& enzyme, const Token& inhibitor) {
    const float ki = parse_quantity ();
    if (lexer_.failed ()) return;
    ++tables_.complex_counter;
    expand_inhibitor (tables_, lexer_, static_cast<std::uint16_t> (enzyme.species),
                      static_cast<std::uint16_t> (inhibitor.species), ki);
}

} // namespace

double molecules_of (float milli_molar) {
    return std::trunc (static_cast<double> (milli_molar) * 1000.0 * molecules_per_micromolar);
}

bool read_model (std::string_view text, ModelTables& tables) {
    if (!Reader (text, tables).read ()) return false;
    const auto spare = static_cast<std::uint16_t> (tables.n_species ());
    for (ElemStep& step : tables.steps) {
        for (std::size_t i = 1; i < step.p.size (); ++i) {
            if (step.p[i] == no_species) step.p[i] = spare;
        }
    }
    return true;
}

} // namespace ostrand::sim
