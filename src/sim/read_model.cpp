// The grammar of the model language.
#include "sim/read_model.h"

#include "base/text.h"
#include "base/units.h"
#include "sim/concentration.h"
#include "sim/expansion.h"
#include "sim/lexer.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ostrand::sim {
namespace {

constexpr double longest_duration = 429496; // seconds whose time steps fit 32 bits

class Reader {
  public:
    Reader (std::string_view text, ModelTables& tables, const std::stop_token& stop)
        : lexer_ (
              text,
              [&tables] (std::string_view name) { return tables.intern_species (name, false); },
              format_text ("too many species (max = %d)", static_cast<int> (max_species))),
          tables_ (tables) {
        lexer_.set_stop (stop);
    }

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
    std::vector<std::uint16_t> parse_sum (std::uint16_t first);
    std::vector<float> parse_km_list (std::size_t n_substrates);

    /// A number and its unit, as mM.
    float parse_quantity () { return read_quantity (lexer_); }

    Token expect (TokenKind kind) { return expect_token (lexer_, kind); }
    std::uint16_t expect_name () {
        return static_cast<std::uint16_t> (expect (TokenKind::ident).species);
    }
    float expect_number () { return expect (TokenKind::number).number; }
    /// Never null: after a fault a species that nobody sees.
    ModelSpecies* species_of (const Token& name) {
        return lexer_.failed () ? &dropped_
                                : tables_.species[static_cast<std::size_t> (name.species)].get ();
    }
    ModelSpecies* expect_species () { return species_of (expect (TokenKind::ident)); }

    Lexer lexer_;
    ModelTables& tables_;
    ModelSpecies dropped_;
};

/// Chains `next` behind `last`.
void link_species (ModelSpecies*& last, ModelSpecies* next) {
    last->next_linked = next;
    next->prev_linked = last;
    last = next;
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
    ModelSpecies* last = nullptr;
    const auto take = [&last] (ModelSpecies* next) {
        if (last != nullptr) {
            link_species (last, next);
            return;
        }
        next->next_linked = nullptr;
        next->prev_linked = nullptr;
        last = next;
    };
    if (first != nullptr) take (first);
    read_names (lexer_, [&] (const Token& name) { take (species_of (name)); });
}

void Reader::parse_concentration () {
    ModelSpecies* species = expect_species ();
    expect (TokenKind::close_bracket);
    expect (TokenKind::equals);
    const Token token = lexer_.next_token ();
    if (token.kind == TokenKind::open_paren) {
        parse_linked_names (species);
    } else {
        lexer_.unget_token (token);
    }
    InitialCounts counts;
    read_concentrations (lexer_, species->name, counts);
    std::copy_n (counts.conc.begin (), counts.count, species->conc.begin ());
    species->nb = static_cast<std::int32_t> (std::max<std::size_t> (counts.count, 1));
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

bool read_model (std::string_view text, ModelTables& tables, const std::stop_token& stop) {
    if (!Reader (text, tables, stop).read ()) return false;
    const auto spare = static_cast<std::uint16_t> (tables.n_species ());
    for (ElemStep& step : tables.steps) {
        for (std::size_t i = 1; i < step.p.size (); ++i) {
            if (step.p[i] == no_species) step.p[i] = spare;
        }
    }
    return true;
}

} // namespace ostrand::sim
