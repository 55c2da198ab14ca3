// Letters, scripts and styles of a label, written so that the reader of each format gets them back.
#include "files/label_text.h"

#include "document/line.h"
#include "sim/lexer.h"

#include <array>
#include <vector>

namespace ostrand::files {
namespace {

using document::Char;
using document::CharKind;
using document::Line;
using document::PrintState;
using document::StdChar;

enum class Form { drawing, model_name, sbml_name };

/// The entry as a letter; null for the end mark and for what is no letter.
const StdChar* letter_at (const Line& line, std::size_t i) {
    if (i >= line.chars ().size ()) return nullptr;
    const StdChar& entry = line.chars ()[i];
    return entry.is_letter () && entry.code != document::end_mark ? &entry : nullptr;
}

/// For each letter whether it is a brace without its counterpart in the line: only these would end
/// a script at another place.
std::vector<bool> unmatched_braces (const Line& line) {
    std::vector<bool> unmatched (line.chars ().size (), false);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < unmatched.size (); ++i) {
        const StdChar* const letter = letter_at (line, i);
        if (letter == nullptr) continue;
        if (letter->code == '{') {
            open.push_back (i);
        } else if (letter->code == '}') {
            if (open.empty ())
                unmatched[i] = true;
            else
                open.pop_back ();
        }
    }
    for (const std::size_t i : open) unmatched[i] = true;
    return unmatched;
}

class LabelWriter {
  public:
    LabelWriter (Form form, PrintState& to) : form_ (form), to_ (to) {}

    void write (const Line& line, bool in_script);

  private:
    void letter (const Line& line, std::size_t i, bool in_script, bool unmatched_brace);
    void scripts (const StdChar& letter);
    void code (unsigned code);
    bool follows_bare (const Line& line, std::size_t i, std::string_view codes) const;
    bool keeps_its_backslash (const Line& line, std::size_t i, bool in_script) const;

    Form form_;
    PrintState& to_;
};

/// A letter that is only itself.
void LabelWriter::code (unsigned code) {
    if (form_ == Form::sbml_name && code == '&')
        to_.out += "&amp;";
    else if (form_ == Form::sbml_name && code == '<')
        to_.out += "&lt;";
    else if (form_ == Form::sbml_name && code == '"')
        to_.out += "&quot;";
    else
        document::append_code (to_.out, code);
}

/// True when the letter behind entry i is one of `codes` and no mark of a style comes between.
bool LabelWriter::follows_bare (const Line& line, std::size_t i, std::string_view codes) const {
    const StdChar* const next = letter_at (line, i + 1);
    if (next == nullptr || next->code > 127 ||
        codes.find (static_cast<char> (next->code)) == std::string_view::npos)
        return false;
    if (form_ != Form::drawing) return true;
    return (next->font == to_.font || next->font == document::no_font) &&
           (next->color == to_.color || next->color == document::no_color);
}

/// A backslash takes the byte behind it as a letter. It is read as a letter itself where that byte
/// is the backslash of a blank, and at the end of a whole name; a name of SBML is looked at with
/// more care when it is read.
bool LabelWriter::keeps_its_backslash (const Line& line, std::size_t i, bool in_script) const {
    const StdChar& backslash = *letter_at (line, i);
    if (!backslash.is_plain ()) return false;
    if (form_ == Form::sbml_name) return true;
    if (follows_bare (line, i, " ")) return true;
    return form_ == Form::model_name && !in_script && i + 2 == line.chars ().size ();
}

void LabelWriter::letter (const Line& line, std::size_t i, bool in_script, bool unmatched_brace) {
    const StdChar& letter = *letter_at (line, i);
    switch (letter.code) {
    case ' ':
    case '^':
    case '_': to_.out += '\\'; break;
    case '\\':
        if (keeps_its_backslash (line, i, in_script)) break;
        if (form_ == Form::sbml_name) {
            to_.out += "&#92;";
            return;
        }
        to_.out += '\\';
        break;
    case '<':
        if (form_ == Form::drawing) to_.out += '\\';
        break;
    case '[': // begins a network, a picture or a letter with scripts
        if (form_ == Form::drawing && letter.is_plain () && follows_bare (line, i, "NPE"))
            to_.out += '\\';
        break;
    case '{':
    case '}':
        if (form_ == Form::sbml_name && in_script && unmatched_brace) {
            to_.out += letter.code == '{' ? "&#123;" : "&#125;";
            return;
        }
        if (form_ == Form::drawing || (in_script && unmatched_brace)) to_.out += '\\';
        break;
    default: break;
    }
    code (letter.code);
}

void LabelWriter::scripts (const StdChar& letter) {
    if (letter.sub () != nullptr) {
        to_.out += "_{";
        write (*letter.sub (), true);
        to_.out += '}';
    }
    if (letter.sup () != nullptr) {
        to_.out += "^{";
        write (*letter.sup (), true);
        to_.out += '}';
    }
}

void LabelWriter::write (const Line& line, bool in_script) {
    const std::vector<bool> unmatched = unmatched_braces (line);
    for (std::size_t i = 0; i < line.chars ().size (); ++i) {
        const StdChar* const one = letter_at (line, i);
        if (one == nullptr) {
            // What is no letter has no place in a name; in a drawing it says itself.
            const Char* const item = line.chars ()[i].item ();
            if (form_ == Form::drawing && item != nullptr) item->xml_print (to_);
            continue;
        }
        if (form_ == Form::drawing) to_.write_style (one->font, one->color);
        letter (line, i, in_script, unmatched[i]);
        scripts (*one);
    }
}

std::string name_text (const Char& label, Form form) {
    PrintState to;
    if (label.kind () == CharKind::line)
        LabelWriter (form, to).write (static_cast<const Line&> (label), false);
    else
        label.print_plain (to.out);
    return std::move (to.out);
}

/// The characters that stand as their number in an attribute of the drawing: the quote, and the "&"
/// of what would be read as such a number.
struct Numbered {
    char letter;
    std::string_view number;
};
constexpr std::array<Numbered, 2> numbered{{{'"', "&#34;"}, {'&', "&#38;"}}};

} // namespace

std::string model_name_text (const Char& label) {
    std::string name = name_text (label, Form::model_name);
    // Between quotes, too, these words belong to the language; the backslash vanishes on reading.
    if (sim::keyword_of (name) != sim::TokenKind::none) name.insert (0, "\\");
    return name;
}

std::string sbml_name_text (const Char& label) { return name_text (label, Form::sbml_name); }

void write_drawn_label (const Char& label, PrintState& to) {
    if (label.kind () == CharKind::line)
        LabelWriter (Form::drawing, to).write (static_cast<const Line&> (label), false);
    else
        label.xml_print (to);
}

std::string drawn_attribute (std::string_view text) {
    std::string out;
    out.reserve (text.size ());
    for (std::size_t i = 0; i < text.size (); ++i) {
        const std::string_view rest = text.substr (i);
        const bool looks_numbered =
            rest.starts_with (numbered[0].number) || rest.starts_with (numbered[1].number);
        if (text[i] == '"')
            out += numbered[0].number;
        else if (looks_numbered)
            out += numbered[1].number;
        else
            out += text[i];
    }
    return out;
}

std::string text_of_drawn_attribute (std::string_view value) {
    std::string out;
    out.reserve (value.size ());
    for (std::size_t i = 0; i < value.size (); ++i) {
        const std::string_view rest = value.substr (i);
        char letter = value[i];
        for (const Numbered& one : numbered) {
            if (!rest.starts_with (one.number)) continue;
            letter = one.letter;
            i += one.number.size () - 1;
            break;
        }
        out += letter;
    }
    return out;
}

} // namespace ostrand::files
