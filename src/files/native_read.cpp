// Native text read: is it one, and what network does it hold?
#include "files/native.h"

#include "document/markup.h"

#include "base/report.h"
#include "base/text.h"

namespace ostrand::files {
namespace {

/// How much of a first line is looked at.
constexpr std::size_t first_line_bytes = 254;

/// scanf's way through a text: literal bytes, white space of any length, whole numbers.
bool matches (std::string_view text, std::string_view pattern) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < pattern.size (); ++i) {
        if (pattern[i] == ' ') {
            while (at < text.size () && is_space (text[at])) ++at;
        } else if (pattern[i] == '#') { // a number
            while (at < text.size () && is_space (text[at])) ++at;
            if (at < text.size () && (text[at] == '-' || text[at] == '+')) ++at;
            if (at >= text.size () || !is_digit (text[at])) return false;
            while (at < text.size () && is_digit (text[at])) ++at;
        } else if (at < text.size () && text[at] == pattern[i]) {
            ++at;
        } else {
            return false;
        }
    }
    return true;
}

/// "# Lattrix: " and a number.
bool is_header (std::string_view line) {
    if (!line.starts_with ('#')) return false;
    std::string_view rest = line.substr (1);
    const auto skip_space = [&rest] {
        while (!rest.empty () && is_space (rest.front ())) rest.remove_prefix (1);
    };
    skip_space ();
    if (!rest.starts_with ("Lattrix:")) return false;
    rest.remove_prefix (8);
    skip_space ();
    if (rest.starts_with ('-') || rest.starts_with ('+')) rest.remove_prefix (1);
    if (rest.starts_with ('.')) rest.remove_prefix (1);
    return !rest.empty () && is_digit (rest.front ());
}

} // namespace

bool is_native_text (std::string_view text) {
    const std::string_view line = text.substr (0, text.find ('\n')).substr (0, first_line_bytes);
    return line.starts_with ('#') || matches (line, "[N# # #") || matches (line, "[U#: # # #");
}

bool is_insertable_text (std::string_view text) {
    const std::string_view line = text.substr (0, text.find ('\n')).substr (0, first_line_bytes);
    return matches (line, "[N# # #") || matches (line, "[U#: # # #") || is_header (line);
}

std::unique_ptr<document::Network> read_native (std::string_view text) {
    std::unique_ptr<document::Network> network = document::read_network (text);
    if (!network) report_message ("The file holds no network.");
    return network;
}

} // namespace ostrand::files
