// What do the statements of a model text say? Keeps what a drawing needs.
#include "base/report.h"
#include "files/import_steps.h"
#include "sim/lexer.h"

#include <algorithm>
#include <limits>

namespace ostrand::files {
namespace {

using sim::Token;
using sim::token_text;
using sim::TokenKind;

class StatementReader {
  public:
    StatementReader (std::string_view text, ImportTables& tables)
        : lexer_ (
              text,
              [&tables] (std::string_view name) {
                  const ImportSpecies* species = tables.intern (name);
                  return species == nullptr ? -1 : species->slot;
              },
              "Species hashtable full"),
          tables_ (tables) {}

    bool read_all ();

  private:
    bool statement ();
    bool duration_statement ();
    bool display_statement ();
    bool linked_statement ();
    bool concentration_statement (SpeciesRole role, bool value_optional);
    bool concentration_values (ImportSpecies& species);
    bool series (std::vector<float>& values, float end, float step);
    bool mass_action (ImportSpecies* first);
    bool enzyme_statement (ImportSpecies* enzyme);
    bool kinetics (ImportReaction& r);

    bool expect (TokenKind kind, Token* token = nullptr);
    bool name (ImportSpecies*& species);
    bool number (float& value);
    bool quantity (float& millimolar);
    bool names_to_parenthesis ();
    /// The species of a name that is not empty.
    ImportSpecies* species_of (const Token& token) {
        return tables_.names[static_cast<std::size_t> (token.species)].get ();
    }
    bool add (std::vector<ImportSpecies*>& list, ImportSpecies* species, const char* what);
    bool append (std::vector<float>& values, float value);
    bool unexpected (TokenKind wanted, const Token& got);

    sim::Lexer lexer_;
    ImportTables& tables_;
};

bool StatementReader::unexpected (TokenKind wanted, const Token& got) {
    return lexer_.model_error ("'%s' expected, got: '%s'", token_text (wanted),
                               sim::shown (got).c_str ());
}

bool StatementReader::expect (TokenKind kind, Token* token) {
    const Token got = lexer_.next_token ();
    if (got.kind != kind || (kind == TokenKind::ident && got.species < 0)) {
        return unexpected (kind, got);
    }
    if (token != nullptr) {
        *token = got;
    }
    return !lexer_.failed ();
}

bool StatementReader::name (ImportSpecies*& species) {
    Token token;
    if (!expect (TokenKind::ident, &token)) {
        return false;
    }
    species = species_of (token);
    return true;
}

bool StatementReader::number (float& value) {
    Token token;
    if (!expect (TokenKind::number, &token)) {
        return false;
    }
    value = token.number;
    return true;
}

bool StatementReader::quantity (float& millimolar) {
    if (!number (millimolar)) {
        return false;
    }
    const Token unit = lexer_.next_token ();
    if (unit.kind == TokenKind::micro_molar) {
        millimolar = millimolar / 1000.0F;
        return true;
    }
    if (unit.kind == TokenKind::milli_molar) {
        return true;
    }
    return lexer_.model_error ("%s or %s expected, got %s", token_text (TokenKind::micro_molar),
                               token_text (TokenKind::milli_molar), token_text (unit.kind));
}

bool StatementReader::read_all () {
    for (;;) {
        const Token token = lexer_.next_token ();
        if (lexer_.failed ()) {
            return false;
        }
        if (token.kind == TokenKind::eof) {
            return true;
        }
        lexer_.unget_token (token);
        if (!statement () || !expect (TokenKind::semicolon)) {
            return false;
        }
        if (tables_.reactions.size () > most_read_reactions) {
            return lexer_.model_error ("Too many reactions.");
        }
    }
}

bool StatementReader::statement () {
    const Token first = lexer_.next_token ();
    switch (first.kind) {
    case TokenKind::duration: return duration_statement ();
    case TokenKind::display: return display_statement ();
    case TokenKind::linked: return linked_statement ();
    case TokenKind::open_bracket:
        lexer_.unget_token (first);
        return concentration_statement (SpeciesRole::neither, false);
    case TokenKind::input: return concentration_statement (SpeciesRole::input, true);
    case TokenKind::output: return concentration_statement (SpeciesRole::output, true);
    case TokenKind::excess: return concentration_statement (SpeciesRole::excess, true);
    default: break;
    }
    if (first.kind != TokenKind::ident || first.species < 0) {
        return lexer_.model_error ("syntax error: enzyme name expected");
    }
    const Token second = lexer_.next_token ();
    if (second.kind == TokenKind::colon) {
        return enzyme_statement (species_of (first));
    }
    if (second.kind == TokenKind::plus || second.kind == TokenKind::arrow) {
        lexer_.unget_token (second);
        return mass_action (species_of (first));
    }
    return lexer_.model_error ("'%s' or '%s' expected, got '%s'", token_text (TokenKind::arrow),
                               token_text (TokenKind::plus), token_text (second.kind));
}

bool StatementReader::duration_statement () {
    float seconds = 0;
    if (!expect (TokenKind::equals) || !number (seconds)) {
        return false;
    }
    const double whole = static_cast<double> (seconds);
    constexpr double most = std::numeric_limits<int>::max ();
    tables_.duration = whole >= most ? std::numeric_limits<int>::max () : static_cast<int> (whole);
    return true;
}

bool StatementReader::display_statement () {
    if (!expect (TokenKind::open_paren)) {
        return false;
    }
    for (;;) {
        ImportSpecies* species = nullptr;
        if (!name (species)) {
            return false;
        }
        species->displayed = true;
        Token token = lexer_.next_token ();
        while (token.kind == TokenKind::colour) {
            token = lexer_.next_token ();
        }
        if (token.kind == TokenKind::close_paren) {
            return true;
        }
        if (token.kind != TokenKind::comma) {
            return lexer_.model_error (
                "'%s', '%s', #rrggbb or #rgb expected, got '%s'", token_text (TokenKind::comma),
                token_text (TokenKind::close_paren), token_text (token.kind));
        }
    }
}

/// name { , name } ) behind the opening parenthesis: a drawing has no use for linked species.
bool StatementReader::names_to_parenthesis () {
    for (;;) {
        ImportSpecies* species = nullptr;
        if (!name (species)) {
            return false;
        }
        const Token token = lexer_.next_token ();
        if (token.kind == TokenKind::close_paren) {
            return true;
        }
        if (token.kind != TokenKind::comma) {
            return lexer_.model_error (
                "'%s' or '%s' expected, got '%s'", token_text (TokenKind::comma),
                token_text (TokenKind::close_paren), token_text (token.kind));
        }
    }
}

bool StatementReader::linked_statement () {
    return expect (TokenKind::open_paren) && names_to_parenthesis ();
}

bool StatementReader::concentration_statement (SpeciesRole role, bool value_optional) {
    ImportSpecies* species = nullptr;
    if (!expect (TokenKind::open_bracket) || !name (species) ||
        !expect (TokenKind::close_bracket)) {
        return false;
    }
    if (role != SpeciesRole::neither) {
        species->role = role;
    }
    const Token token = lexer_.next_token ();
    if (value_optional && token.kind == TokenKind::semicolon) {
        lexer_.unget_token (token);
        return true;
    }
    if (token.kind != TokenKind::equals) {
        return unexpected (TokenKind::equals, token);
    }
    return concentration_values (*species);
}

bool StatementReader::append (std::vector<float>& values, float value) {
    if (values.size () >= most_import_concentrations) {
        return lexer_.model_error ("too much initial concentrations (max = %d)",
                                   static_cast<int> (most_import_concentrations));
    }
    values.push_back (value);
    return true;
}

bool StatementReader::series (std::vector<float>& values, float end, float step) {
    const float recent = values.back ();
    float value = recent + step;
    float last = end;
    if (recent > end) {
        // Given downwards, it still runs upwards, from its end.
        values.pop_back ();
        value = end;
        last = recent;
    }
    while (value <= last) {
        if (!append (values, value)) {
            return false;
        }
        value += step;
    }
    return true;
}

bool StatementReader::concentration_values (ImportSpecies& species) {
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::open_paren) {
        if (!names_to_parenthesis ()) {
            return false;
        }
    } else {
        lexer_.unget_token (token);
    }
    std::vector<float> values (1);
    if (!quantity (values[0])) {
        return false;
    }
    for (;;) {
        token = lexer_.next_token ();
        float value = 0;
        if (token.kind == TokenKind::comma) {
            if (!quantity (value) || !append (values, value)) {
                return false;
            }
        } else if (token.kind == TokenKind::arrow) {
            float step = 0;
            if (!quantity (value) || !expect (TokenKind::colon) || !quantity (step) ||
                !series (values, value, step)) {
                return false;
            }
        } else {
            lexer_.unget_token (token);
            break;
        }
    }
    if (values.size () > 1) {
        tables_.displayed_name = species.name;
    }
    const bool has_zero = std::find (values.begin (), values.end (), 0.0F) != values.end ();
    if (has_zero && values.size () > 1 && !lexer_.failed ()) {
        // A drawing's list ends at its first 0; a sweep from 0 must not shrink in silence.
        report_message ("The concentrations of '%s' from its first 0 on are left out.",
                        species.name.c_str ());
    }
    species.conc = std::move (values);
    return !lexer_.failed ();
}

bool StatementReader::add (std::vector<ImportSpecies*>& list, ImportSpecies* species,
                           const char* what) {
    if (list.size () >= most_participants) {
        return lexer_.model_error ("Too many %s (max = %d).", what,
                                   static_cast<int> (most_participants));
    }
    list.push_back (species);
    return true;
}

bool StatementReader::mass_action (ImportSpecies* first) {
    ImportReaction r;
    r.substrates.push_back (first);
    Token token = lexer_.next_token ();
    ImportSpecies* species = nullptr;
    if (token.kind == TokenKind::plus) {
        if (!name (species) || !expect (TokenKind::arrow)) {
            return false;
        }
        r.substrates.push_back (species);
    }
    if (!name (species)) {
        return false;
    }
    r.products.push_back (species);
    token = lexer_.next_token ();
    if (token.kind == TokenKind::plus) {
        if (!name (species) || !expect (TokenKind::bar)) {
            return false;
        }
        r.products.push_back (species);
    } else if (token.kind != TokenKind::bar) {
        return lexer_.model_error ("'%s' expected, got '%s'", token_text (TokenKind::bar),
                                   token_text (token.kind));
    }
    if (!number (r.kcat)) {
        return false;
    }
    r.enzyme = tables_.first_slot ();
    ImportReaction& made = tables_.add_reaction ();
    r.index = made.index;
    made = std::move (r);
    return true;
}

/// Behind "enzyme :".
bool StatementReader::enzyme_statement (ImportSpecies* enzyme) {
    ImportReaction r;
    r.enzyme = enzyme;
    ImportSpecies* species = nullptr;
    if (!name (species)) {
        return false;
    }
    r.substrates.push_back (species);
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::bar || token.kind == TokenKind::semicolon) {
        // The name in front is the enzyme, the one behind the colon its inhibitor.
        float rate = 0;
        if (token.kind == TokenKind::semicolon) {
            lexer_.unget_token (token);
        } else if (!quantity (rate)) {
            return false;
        }
        tables_.inhibitions.push_back ({species, enzyme, rate});
        return true;
    }
    while (token.kind == TokenKind::plus) {
        if (!name (species) || !add (r.substrates, species, "substrates")) {
            return false;
        }
        token = lexer_.next_token ();
    }
    if (token.kind != TokenKind::arrow) {
        return lexer_.model_error ("arrow expected, got %s", token_text (token.kind));
    }
    do {
        if (!name (species) || !add (r.products, species, "products")) {
            return false;
        }
        token = lexer_.next_token ();
    } while (token.kind == TokenKind::plus);
    lexer_.unget_token (token);
    if (!kinetics (r)) {
        return false;
    }
    ImportReaction& made = tables_.add_reaction ();
    r.index = made.index;
    made = std::move (r);
    return true;
}

/// | Km, Km - Kcat; nothing at all directly before ";".
bool StatementReader::kinetics (ImportReaction& r) {
    Token token = lexer_.next_token ();
    if (token.kind == TokenKind::semicolon) {
        lexer_.unget_token (token);
        return true;
    }
    if (token.kind != TokenKind::bar) {
        return lexer_.model_error ("vertical bar expected, got %s", token_text (token.kind));
    }
    const int substrates = static_cast<int> (r.substrates.size ());
    do {
        const int count = static_cast<int> (r.km.size ());
        if (count == substrates) {
            return lexer_.model_error ("more KM's (%d) than substrates (%d)", count + 1,
                                       substrates);
        }
        float km = 0;
        if (!quantity (km)) {
            return false;
        }
        r.km.push_back (km);
        token = lexer_.next_token ();
    } while (token.kind == TokenKind::comma);
    if (token.kind != TokenKind::minus) {
        return lexer_.model_error ("Kcat missing");
    }
    if (static_cast<int> (r.km.size ()) < substrates) {
        return lexer_.model_error ("more substrates (%d) than KM's (%d)", substrates,
                                   static_cast<int> (r.km.size ()));
    }
    return number (r.kcat);
}

} // namespace

bool read_statements (std::string_view text, ImportTables& tables) {
    return StatementReader (text, tables).read_all ();
}

} // namespace ostrand::files
