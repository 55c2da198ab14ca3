// The recursive reader of label markup and, through it, of whole documents.
#include "document/line.h"
#include "document/markup.h"
#include "document/network.h"
#include "document/numbers.h"
#include "document/picture.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <optional>

namespace ostrand::document {
namespace {

/// True for the bytes between records that mean nothing.
bool is_layout (char c) { return c == '\t' || c == '\n' || c == '\r'; }

/// The version of texts that do not tell one, and of all that are written.
constexpr double current_version = 1.2;

unsigned byte (char c) { return static_cast<unsigned char> (c); }

/// One level of what stands inside something else. Too deep a text ends there.
class NestingScope {
  public:
    explicit NestingScope (MarkupReader& reader) : reader_ (reader) {
        if (++reader.depth <= deepest_nesting) return;
        if (!reader.too_deep) {
            report_message ("Nesting deeper than %d levels: the rest is not read.",
                            deepest_nesting);
        }
        reader.too_deep = true;
        reader.at = reader.text.size ();
    }
    ~NestingScope () { --reader_.depth; }
    NestingScope (const NestingScope&) = delete;
    NestingScope& operator= (const NestingScope&) = delete;

  private:
    MarkupReader& reader_;
};

/// A comment line, the place on its "#": notes the version of a header line and goes behind it.
void read_comment (MarkupReader& reader, double& version) {
    const std::string_view rest = reader.rest ();
    const std::string_view line = rest.substr (0, rest.find ('\n'));
    static constexpr std::string_view word = "Lattrix:";
    std::size_t i = 1;
    while (i < line.size () && is_space (line[i])) ++i;
    if (line.substr (i, word.size ()) == word) {
        i += word.size ();
        while (i < line.size () && is_space (line[i])) ++i;
        std::size_t digit = i;
        if (digit < line.size () && (line[digit] == '-' || line[digit] == '+')) ++digit;
        if (digit < line.size () && line[digit] == '.') ++digit;
        if (digit < line.size () && is_digit (line[digit])) {
            // Kept as a float and compared as a double, so that 1.2 itself is not below 1.2.
            version = static_cast<float> (parse_atof (line.substr (i, 64)));
            if (version < 1.2) {
                report_message ("Old file version (%s) you are advised to save this network.",
                                format_g (version).c_str ());
            }
        }
    }
    reader.skip_to ('\n');
}

/// A line of one entry, with an end mark in its style.
std::unique_ptr<Line> line_of_entry (StdChar entry) {
    auto line = std::make_unique<Line> ("", entry.font, entry.color);
    line->insert_before (0, std::move (entry));
    return line;
}

std::optional<StdChar> read_entry (MarkupReader& reader);

/// A script: a line, or one entry that becomes a line. Null at the end of the text.
std::unique_ptr<Line> read_script (MarkupReader& reader) {
    while (is_layout (reader.peek ())) reader.skip ();
    if (reader.peek () == '{') return read_braced_line (reader);
    std::optional<StdChar> entry = read_entry (reader);
    return entry ? line_of_entry (std::move (*entry)) : nullptr;
}

/// "-" or a script behind "[E" and its code.
std::unique_ptr<Line> read_script_field (MarkupReader& reader) {
    if (reader.peek () == '-') {
        reader.skip ();
        return nullptr;
    }
    return read_script (reader);
}

/// The place is on the "E" of a letter with scripts.
std::optional<StdChar> read_scripted_letter (MarkupReader& reader) {
    const NestingScope scope (reader);
    reader.skip ();
    if (reader.at_end ()) return std::nullopt;
    StdChar letter (byte (reader.peek ()), reader.font, reader.color);
    reader.skip ();
    std::unique_ptr<Line> sub = read_script_field (reader);
    std::unique_ptr<Line> sup = read_script_field (reader);
    reader.skip (); // the closing bracket
    if (sub || sup) {
        letter.parts = std::make_unique<LetterParts> ();
        letter.parts->sub = std::move (sub);
        letter.parts->sup = std::move (sup);
    }
    return letter;
}

/// The place is on the "P" of a picture.
std::unique_ptr<Char> read_picture (MarkupReader& reader) {
    reader.skip ();
    const char digit = reader.peek ();
    reader.skip ();
    reader.skip_blanks ();
    const int width = read_int (reader);
    reader.skip_blanks ();
    const int height = read_int (reader);
    reader.skip_blanks ();
    const std::string_view rest = reader.rest ();
    const std::string_view path = rest.substr (0, rest.find (']'));
    reader.skip (path.size () + 1);
    auto picture = std::make_unique<Picture> (path, width, height);
    if (is_digit (digit)) picture->set_align (digit - '0');
    return picture;
}

/// The place is on the "N" of a network.
std::unique_ptr<Char> read_network_record (MarkupReader& reader, double version) {
    const NestingScope scope (reader);
    return std::make_unique<Network> (reader, version);
}

/// A backslash or the first of two bytes: the letter that it makes with the byte behind it.
std::optional<StdChar> read_marked_letter (MarkupReader& reader) {
    const char mark = reader.peek ();
    if (reader.peek (1) == '\0') {
        reader.skip ();
        return std::nullopt; // nothing follows that it could mean
    }
    const unsigned code = byte (reader.peek (1)) + (mark == '\xC3' ? 64U : 0U);
    reader.skip (2);
    return StdChar (code, reader.font, reader.color);
}

/// One entry of a line. Nothing at the end of the text, and for a mark that is the text's last
/// byte.
std::optional<StdChar> read_entry (MarkupReader& reader) {
    while (is_layout (reader.peek ())) reader.skip ();
    if (reader.at_end ()) return std::nullopt;
    const char c = reader.peek ();
    const unsigned font = reader.font;
    const unsigned color = reader.color;
    switch (c) {
    case '[':
        switch (reader.peek (1)) {
        case 'N':
            reader.skip ();
            return item_entry (read_network_record (reader, current_version), font, color);
        case 'P': reader.skip (); return item_entry (read_picture (reader), font, color);
        case 'E': reader.skip (); return read_scripted_letter (reader);
        default: break;
        }
        break;
    case '{': return item_entry (read_braced_line (reader), font, color);
    case '\\':
    case '\xC2':
    case '\xC3': return read_marked_letter (reader);
    default: break;
    }
    reader.skip ();
    return StdChar (byte (c), font, color);
}

/// A mark "<...F>" or "<...C>", the place on its "<".
void read_style_mark (MarkupReader& reader) {
    reader.skip ();
    const float value = read_number (reader);
    const char letter = reader.peek ();
    reader.skip ();
    if (letter == 'C') reader.color = to_word (value);
    if (letter == 'F') reader.font = to_word (value);
    if (reader.peek () != '>') report_message ("syntax error: '>' expected.");
    reader.skip ();
}

/// "_" or "^" and a script of `letter`, in a smaller size of the running font.
void read_marked_script (MarkupReader& reader, StdChar& letter) {
    const NestingScope scope (reader);
    const bool superscript = reader.peek () == '^';
    reader.skip ();
    const unsigned around = reader.font;
    reader.font = reduced_font (around);
    std::unique_ptr<Line> script = read_script (reader);
    reader.font = around;
    if (!script) return;
    if (!letter.parts) letter.parts = std::make_unique<LetterParts> ();
    (superscript ? letter.parts->sup : letter.parts->sub) = std::move (script);
}

/// A number of plain decimal digits, the common case. False, with the place unmoved, for any other
/// text: one with an exponent, a second point, too many digits.
bool read_plain_number (MarkupReader& reader, double& value) {
    static constexpr std::array<double, 16> powers{1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const std::string_view text = reader.text;
    std::size_t i = reader.at;
    const bool negative = i < text.size () && text[i] == '-';
    if (negative) ++i;
    const std::size_t first = i;
    std::uint64_t digits = 0;
    std::size_t decimals = 0;
    bool point = false;
    for (; i < text.size (); ++i) {
        const char c = text[i];
        if (is_digit (c)) {
            digits = digits * 10 + static_cast<std::uint64_t> (c - '0');
            if (point) ++decimals;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    const std::size_t length = i - first;
    if (length == 0 || length >= powers.size () || (point && length == 1)) return false;
    const char behind = i < text.size () ? text[i] : '\0';
    if (behind == '.' || (behind | 0x20) == 'e' || (behind | 0x20) == 'x') return false;
    // Both are exact, so the quotient is the nearest double, as for any reader of decimals.
    const double magnitude = static_cast<double> (digits) / powers[decimals];
    value = negative ? -magnitude : magnitude;
    reader.at = i;
    return true;
}

} // namespace

MarkupReader::MarkupReader (std::string_view new_text)
    : text (new_text.substr (0, new_text.find ('\0'))) {}

void MarkupReader::skip_blanks () {
    while (at < text.size () && byte (text[at]) < 33) ++at;
}

void MarkupReader::skip_to (char stop) { at = std::min (text.find (stop, at), text.size ()); }

float read_number (MarkupReader& reader) {
    if (reader.peek () == '#') {
        reader.skip ();
        std::uint32_t value = 0;
        for (int i = 0; i < 6 && is_hex_digit (reader.peek ()); ++i, reader.skip ()) {
            const char c = reader.peek ();
            const int digit = is_digit (c) ? c - '0' : (c | 0x20) - 'a' + 10;
            value = value << 4 | static_cast<std::uint32_t> (digit);
        }
        return static_cast<float> (value << 8); // exact: 24 bits
    }
    double plain = 0;
    if (read_plain_number (reader, plain)) return static_cast<float> (plain);
    const std::size_t start = reader.at;
    const std::string_view from = reader.rest ();
    if (reader.peek () == '-') reader.skip ();
    while (reader.peek () == '.' || reader.peek () == 'e' || is_digit (reader.peek ())) {
        reader.skip ();
    }
    // The value is that of the decimal number that stands here as a whole, also where the place
    // stops before its signed exponent.
    std::size_t digit = 0;
    while (digit < from.size () && is_space (from[digit])) ++digit;
    if (digit < from.size () && (from[digit] == '-' || from[digit] == '+')) ++digit;
    if (digit >= from.size () || (from[digit] != '.' && !is_digit (from[digit]))) return 0;
    const bool hexadecimal =
        from[digit] == '0' && digit + 1 < from.size () && (from[digit + 1] | 0x20) == 'x';
    if (hexadecimal) return 0;
    const std::size_t moved = reader.at - start;
    const double value = parse_atof (from.substr (0, std::max (moved, digit) + 32));
    return static_cast<float> (
        std::clamp (value, -static_cast<double> (FLT_MAX), static_cast<double> (FLT_MAX)));
}

int read_int (MarkupReader& reader) { return to_int (read_number (reader)); }

std::uint32_t read_word (MarkupReader& reader) { return to_word (read_number (reader)); }

std::unique_ptr<Char> read_item (MarkupReader& reader) {
    double version = current_version;
    while (true) {
        while (is_layout (reader.peek ())) reader.skip ();
        if (reader.peek () != '#') break;
        read_comment (reader, version);
    }
    if (reader.at_end ()) return nullptr;
    if (reader.peek () == '{') return read_braced_line (reader);
    if (reader.peek () == '[' && reader.peek (1) == 'N') {
        reader.skip ();
        return read_network_record (reader, version);
    }
    std::optional<StdChar> entry = read_entry (reader);
    if (!entry) return nullptr;
    if (!entry->is_letter ()) return std::move (entry->parts->item);
    return line_of_entry (std::move (*entry));
}

std::unique_ptr<Line> read_line_field (MarkupReader& reader) { return read_script (reader); }

std::unique_ptr<Line> read_braced_line (MarkupReader& reader) {
    const NestingScope scope (reader);
    reader.skip ();
    return std::make_unique<Line> (reader);
}

std::vector<StdChar> read_items (MarkupReader& reader) {
    // Letters gather behind those of the lines around this one, so that none is moved twice.
    std::vector<StdChar>& letters = reader.letters;
    const std::size_t first = letters.size ();
    while (!reader.at_end ()) {
        std::size_t layout = 0;
        while (is_layout (reader.peek (layout))) ++layout;
        if (reader.peek (layout) == '}') reader.skip (layout); // white space before it is nothing
        const char c = reader.peek ();
        if (c == '}') break;
        if (c == '<') {
            read_style_mark (reader);
        } else if (c == '_' || c == '^') {
            if (letters.size () > first && letters.back ().is_letter ()) {
                StdChar letter = std::move (letters.back ());
                letters.pop_back ();
                read_marked_script (reader, letter);
                letters.push_back (std::move (letter));
            } else {
                letters.emplace_back (byte (c), reader.font, reader.color);
                reader.skip ();
            }
        } else if (std::optional<StdChar> entry = read_entry (reader)) {
            letters.push_back (std::move (*entry));
        }
    }
    std::vector<StdChar> items;
    items.reserve (letters.size () - first + 1); // and the end mark
    const auto from = letters.begin () + static_cast<std::ptrdiff_t> (first);
    items.assign (std::make_move_iterator (from), std::make_move_iterator (letters.end ()));
    letters.erase (from, letters.end ());
    return items;
}

std::unique_ptr<Line> line_from_item (std::unique_ptr<Char> item) {
    if (!item) return nullptr;
    if (item->kind () == CharKind::line) {
        return std::unique_ptr<Line> (static_cast<Line*> (item.release ()));
    }
    return line_of_entry (item_entry (std::move (item), start_font, 0));
}

std::unique_ptr<Line> line_from_markup (std::string_view markup, unsigned font, unsigned color) {
    auto line = std::make_unique<Line> ("", font, color);
    line->replace (0, 0, markup, font, color);
    return line;
}

std::unique_ptr<Char> read_text (std::string_view text) {
    MarkupReader reader (text);
    return read_item (reader);
}

std::unique_ptr<Network> read_network (std::string_view text) {
    std::unique_ptr<Char> item = read_text (text);
    if (!item || item->kind () != CharKind::network) return nullptr;
    return std::unique_ptr<Network> (static_cast<Network*> (item.release ()));
}

} // namespace ostrand::document
