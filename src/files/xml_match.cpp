// How far does a text agree with a template?
#include "files/xml_match.h"

#include "base/text.h"

#include <cmath>

namespace ostrand::files {
namespace {

void skip_white (XmlCursor& cursor) {
    while (is_space (cursor.peek ())) {
        ++cursor.at;
    }
}

int take_int (XmlCursor& cursor) {
    const std::size_t start = cursor.at;
    if (cursor.at < cursor.text.size ()) {
        ++cursor.at;
    }
    while (is_digit (cursor.peek ())) {
        ++cursor.at;
    }
    return parse_atoi (cursor.text.substr (start, cursor.at - start));
}

float take_float (XmlCursor& cursor) {
    const std::size_t start = cursor.at;
    if (cursor.peek () == '-' || cursor.peek () == '+') {
        ++cursor.at;
    }
    while (is_digit (cursor.peek ()) || cursor.peek () == '.') {
        ++cursor.at;
    }
    const double mantissa = parse_atof (cursor.text.substr (start, cursor.at - start));
    if (cursor.peek () != 'e') {
        return static_cast<float> (mantissa);
    }
    const std::size_t exponent_at = ++cursor.at;
    if (cursor.peek () == '+') {
        ++cursor.at;
    }
    while (is_digit (cursor.peek ()) || cursor.peek () == '-') {
        ++cursor.at;
    }
    const int exponent = parse_atoi (cursor.text.substr (exponent_at, cursor.at - exponent_at));
    return static_cast<float> (mantissa * std::pow (10.0, exponent));
}

std::string take_until (XmlCursor& cursor, char stop, bool or_white) {
    const std::size_t start = cursor.at;
    while (cursor.at < cursor.text.size () && cursor.peek () != stop &&
           !(or_white && is_space (cursor.peek ()))) {
        ++cursor.at;
    }
    return std::string (cursor.text.substr (start, cursor.at - start));
}

} // namespace

int scan_template (XmlCursor& cursor, std::string_view pattern,
                   std::initializer_list<XmlValue> values) {
    int done = 0;
    const XmlValue* value = values.begin ();
    for (std::size_t i = 0; i < pattern.size (); ++i) {
        if (is_space (pattern[i])) {
            skip_white (cursor);
            continue;
        }
        if (pattern[i] != '%' || i + 1 >= pattern.size () || value == values.end ()) {
            if (cursor.peek () != pattern[i]) {
                return done;
            }
            ++cursor.at;
            continue;
        }
        const char conversion = pattern[++i];
        if (conversion != 'c') {
            skip_white (cursor);
        }
        switch (conversion) {
        case 'd':
        case 'i': *std::get<int*> (*value) = take_int (cursor); break;
        case 'f':
        case 'g': *std::get<float*> (*value) = take_float (cursor); break;
        case 'c':
            *std::get<char*> (*value) = cursor.peek ();
            if (cursor.at < cursor.text.size ()) {
                ++cursor.at;
            }
            break;
        case '[': { // "%[^x]s"
            const char stop = i + 2 < pattern.size () ? pattern[i + 2] : '\0';
            i += 4;
            *std::get<std::string*> (*value) = take_until (cursor, stop, false);
            break;
        }
        default: { // "%s"
            const char stop = i + 1 < pattern.size () && pattern[i + 1] == '"' ? '"' : '\0';
            *std::get<std::string*> (*value) = take_until (cursor, stop, true);
        }
        }
        ++value;
        ++done;
    }
    return done;
}

} // namespace ostrand::files
