// The recursive reader of label markup and, through it, of whole documents.
#include "document/line.h"
#include "document/markup.h"
#include "document/network.h"
#include "document/numbers.h"
#include "document/picture.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <cfloat>

namespace ostrand::document {
namespace {

/// True for the bytes between records that mean nothing.
bool is_layout (char c) { return c == '\t' || c == '\n' || c == '\r'; }

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

/// "-" or an item behind "[E" and its code.
std::unique_ptr<Line> read_script_field (MarkupReader& reader) {
    if (reader.peek () == '-') {
        reader.skip ();
        return nullptr;
    }
    return line_from_item (read_item (reader, true));
}

/// The place is on the "E" of a letter with scripts.
std::unique_ptr<Char> read_scripted_letter (MarkupReader& reader) {
    const NestingScope scope (reader);
    reader.skip ();
    if (reader.at_end ()) return nullptr;
    auto letter = std::make_unique<StdChar> (byte (reader.peek ()), reader.font, reader.color);
    reader.skip ();
    letter->set_script (false, read_script_field (reader));
    letter->set_script (true, read_script_field (reader));
    reader.skip (); // the closing bracket
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
    auto picture = std::make_unique<Picture> (path, reader.font, reader.color, width, height);
    if (is_digit (digit)) picture->set_align (digit - '0');
    return picture;
}

std::unique_ptr<Char> read_letter (MarkupReader& reader, unsigned code, std::size_t bytes) {
    reader.skip (bytes);
    return std::make_unique<StdChar> (code, reader.font, reader.color);
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

std::unique_ptr<Char> read_item (MarkupReader& reader, bool in_line) {
    double version = 1.2;
    while (true) {
        while (is_layout (reader.peek ())) reader.skip ();
        if (in_line || reader.peek () != '#') break;
        read_comment (reader, version);
    }
    if (reader.at_end ()) return nullptr;
    const char c = reader.peek ();
    switch (c) {
    case '[':
        switch (reader.peek (1)) {
        case 'N': {
            const NestingScope scope (reader);
            reader.skip ();
            return std::make_unique<Network> (reader, version);
        }
        case 'P': reader.skip (); return read_picture (reader);
        case 'E': reader.skip (); return read_scripted_letter (reader);
        default: return read_letter (reader, '[', 1);
        }
    case '{': return read_braced_line (reader);
    case '\\':
    case '\xC2':
    case '\xC3': {
        if (reader.peek (1) == '\0') {
            reader.skip ();
            return nullptr; // nothing follows that it could mean
        }
        const unsigned code = byte (reader.peek (1)) + (c == '\xC3' ? 64U : 0U);
        return read_letter (reader, code, 2);
    }
    default: return read_letter (reader, byte (c), 1);
    }
}

std::unique_ptr<Line> read_braced_line (MarkupReader& reader) {
    const NestingScope scope (reader);
    reader.skip ();
    return std::make_unique<Line> (reader);
}

std::vector<std::unique_ptr<Char>> Line::read_items (MarkupReader& reader) {
    std::vector<std::unique_ptr<Char>> items;
    while (!reader.at_end ()) {
        std::size_t layout = 0;
        while (is_layout (reader.peek (layout))) ++layout;
        if (reader.peek (layout) == '}') reader.skip (layout); // white space before it is nothing
        const char c = reader.peek ();
        if (c == '}') break;
        if (c == '<') {
            reader.skip ();
            const float value = read_number (reader);
            const char letter = reader.peek ();
            reader.skip ();
            if (letter == 'C') reader.color = to_word (value);
            if (letter == 'F') reader.font = to_word (value);
            if (reader.peek () != '>') report_message ("syntax error: '>' expected.");
            reader.skip ();
            continue;
        }
        const bool script = (c == '_' || c == '^') && !items.empty () &&
                            items.back ()->kind () == CharKind::std_char;
        if (script) {
            const NestingScope scope (reader);
            reader.skip ();
            const unsigned around = reader.font;
            reader.font = reduced_font (around);
            std::unique_ptr<Line> read = line_from_item (read_item (reader, true));
            reader.font = around;
            auto& letter = static_cast<StdChar&> (*items.back ());
            if (read) letter.set_script (c == '^', std::move (read));
            continue;
        }
        std::unique_ptr<Char> item =
            c == '_' || c == '^' ? std::make_unique<StdChar> (byte (c), reader.font, reader.color)
                                 : nullptr;
        if (item) {
            reader.skip ();
        } else {
            item = read_item (reader, true);
        }
        if (item) items.push_back (std::move (item));
    }
    return items;
}

std::unique_ptr<Line> line_from_item (std::unique_ptr<Char> item) {
    if (!item) return nullptr;
    if (item->kind () == CharKind::line) {
        return std::unique_ptr<Line> (static_cast<Line*> (item.release ()));
    }
    auto line = std::make_unique<Line> ("", item->font, item->color);
    line->insert_before (nullptr, std::move (item));
    return line;
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
