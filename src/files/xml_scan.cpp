// Which tag comes next? Made for SBML of any tool: quotes of both kinds, prefixes, comments, CDATA.
#include "files/xml_scan.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

namespace ostrand::files {
namespace {

bool is_word_end (char c) { return is_space (c) || c == '/' || c == '=' || c == '>' || c == '<'; }

/// The character that "name" or "#..." between "&" and ";" stands for.
std::optional<unsigned long> referenced (std::string_view name) {
    struct Entity {
        std::string_view name;
        char c;
    };
    static constexpr std::array<Entity, 5> entities{
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    for (const Entity& e : entities) {
        if (name == e.name) {
            return static_cast<unsigned char> (e.c);
        }
    }
    if (name.size () < 2 || name[0] != '#') {
        return std::nullopt;
    }
    const bool hexadecimal = name[1] == 'x' || name[1] == 'X';
    const std::string digits (name.substr (hexadecimal ? 2 : 1));
    const bool good = !digits.empty () && digits.size () <= 7 &&
                      std::all_of (digits.begin (), digits.end (), [&] (char c) {
                          return hexadecimal ? is_hex_digit (c) : is_digit (c);
                      });
    if (!good) {
        return std::nullopt;
    }
    const unsigned long code = std::strtoul (digits.c_str (), nullptr, hexadecimal ? 16 : 10);
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
        return std::nullopt;
    }
    return code;
}

/// True at the start of one of the elements that hold labels in our own drawings.
bool is_drawn_element (std::string_view text) {
    static constexpr std::array<std::string_view, 3> starts{"<lattrix:comp ", "<lattrix:node ",
                                                            "<lattrix:arc "};
    return std::any_of (starts.begin (), starts.end (),
                        [text] (std::string_view start) { return text.starts_with (start); });
}

} // namespace

const std::string_view* XmlTag::attribute (std::string_view wanted) const {
    for (const auto& [attribute_name, value] : attributes) {
        if (attribute_name == wanted) {
            return &value;
        }
    }
    return nullptr;
}

void XmlScanner::move_to (std::size_t place) {
    place = std::min (place, text_.size ());
    line_ +=
        static_cast<int> (std::count (text_.begin () + static_cast<std::ptrdiff_t> (at_),
                                      text_.begin () + static_cast<std::ptrdiff_t> (place), '\n'));
    at_ = place;
}

void XmlScanner::skip_space () {
    std::size_t place = at_;
    while (place < text_.size () && is_space (text_[place])) {
        ++place;
    }
    move_to (place);
}

/// Passes over one element of our own drawing. Its labels are markup, where "<" has a meaning of
/// its own, so that they are no place to look for tags; neither quotes nor line ends stand in a
/// value.
void XmlScanner::skip_drawn_element () {
    bool in_value = false;
    std::size_t place = at_;
    for (; place < text_.size () && text_[place] != '\n'; ++place) {
        if (text_[place] == '"') {
            in_value = !in_value;
        } else if (text_[place] == '>' && !in_value) {
            ++place;
            break;
        }
    }
    move_to (place);
}

/// Moves to the "<" of the next tag; false when there is none.
bool XmlScanner::to_next_tag () {
    struct Skipped {
        std::string_view opening;
        std::string_view closing;
    };
    static constexpr std::array<Skipped, 3> skipped{
        {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};
    for (;;) {
        const std::size_t place = text_.find ('<', at_);
        move_to (place);
        if (place == std::string_view::npos) {
            return false;
        }
        const std::string_view rest = text_.substr (at_);
        const auto* found = std::find_if (skipped.begin (), skipped.end (), [&] (const Skipped& s) {
            return rest.starts_with (s.opening);
        });
        if (found != skipped.end ()) {
            const std::size_t end = text_.find (found->closing, at_ + found->opening.size ());
            move_to (end == std::string_view::npos ? end : end + found->closing.size ());
        } else if (rest.starts_with ("<!")) {
            // A declaration may hold declarations in brackets.
            const std::size_t end = text_.find_first_of ("[>", at_);
            const bool has_subset = end != std::string_view::npos && text_[end] == '[';
            const std::size_t subset = has_subset ? text_.find (']', end) : end;
            const std::size_t close =
                subset == std::string_view::npos ? subset : text_.find ('>', subset);
            move_to (close == std::string_view::npos ? close : close + 1);
        } else if (is_drawn_element (rest)) {
            skip_drawn_element ();
        } else {
            return true;
        }
    }
}

std::string_view XmlScanner::peek_name (bool& is_end) const {
    std::size_t place = at_ + 1;
    while (place < text_.size () && is_space (text_[place])) {
        ++place;
    }
    is_end = place < text_.size () && text_[place] == '/';
    if (is_end) {
        ++place;
    }
    const std::size_t start = place;
    while (place < text_.size () && !is_word_end (text_[place])) {
        ++place;
    }
    return text_.substr (start, place - start);
}

/// The tag whose "<" stands here.
XmlTag XmlScanner::read_tag () {
    XmlTag tag;
    tag.line = line_;
    bool is_end = false;
    tag.name = peek_name (is_end);
    tag.kind = is_end ? XmlTag::Kind::end : XmlTag::Kind::start;
    move_to (static_cast<std::size_t> (tag.name.data () - text_.data ()) + tag.name.size ());
    for (;;) {
        skip_space ();
        if (at_ >= text_.size () || text_[at_] == '<') {
            return tag;
        }
        const char c = text_[at_];
        if (c == '>') {
            move_to (at_ + 1);
            return tag;
        }
        if (c == '/') {
            move_to (at_ + 1);
            skip_space (); // which separates tokens, also these two
            tag.is_empty = at_ < text_.size () && text_[at_] == '>';
            continue;
        }
        std::size_t end = at_;
        while (end < text_.size () && !is_word_end (text_[end])) {
            ++end;
        }
        const std::string_view word = text_.substr (at_, end - at_);
        move_to (end);
        skip_space ();
        if (at_ >= text_.size () || text_[at_] != '=') {
            continue;
        }
        move_to (at_ + 1);
        skip_space ();
        if (at_ >= text_.size ()) {
            return tag;
        }
        const char quote = text_[at_];
        std::string_view value;
        if (quote == '"' || quote == '\'') {
            std::size_t close = text_.find (quote, at_ + 1);
            if (close == std::string_view::npos) {
                close = text_.size ();
            }
            value = text_.substr (at_ + 1, close - at_ - 1);
            move_to (close + 1);
        } else {
            std::size_t close = at_;
            while (close < text_.size () && !is_word_end (text_[close])) {
                ++close;
            }
            value = text_.substr (at_, close - at_);
            move_to (close);
        }
        tag.attributes.emplace_back (word, value);
    }
}

XmlTag XmlScanner::next () {
    if (to_next_tag ()) {
        return read_tag ();
    }
    XmlTag none;
    none.line = line_;
    return none;
}

bool XmlScanner::skip_content (const XmlTag& opened) {
    if (opened.is_empty || opened.kind != XmlTag::Kind::start) {
        return true;
    }
    const std::string_view name = opened.name;
    for (int depth = 1; depth > 0;) {
        const XmlTag tag = find ([name] (std::string_view found, bool) { return found == name; });
        if (tag.kind == XmlTag::Kind::none) {
            return false;
        }
        if (tag.kind == XmlTag::Kind::end) {
            --depth;
        } else if (!tag.is_empty) {
            ++depth;
        }
    }
    return true;
}

std::string_view local_name (std::string_view name) {
    const std::size_t colon = name.rfind (':');
    return colon == std::string_view::npos ? name : name.substr (colon + 1);
}

std::string_view prefix_of (std::string_view name) {
    return name.substr (0, name.size () - local_name (name).size ());
}

void append_utf8 (std::string& out, unsigned long code) {
    const auto byte = [&out] (unsigned long value) { out += static_cast<char> (value); };
    if (code < 0x80) {
        byte (code);
    } else if (code < 0x800) {
        byte (0xC0 | (code >> 6));
        byte (0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte (0xE0 | (code >> 12));
        byte (0x80 | ((code >> 6) & 0x3F));
        byte (0x80 | (code & 0x3F));
    } else if (code <= 0x10FFFF) {
        byte (0xF0 | (code >> 18));
        byte (0x80 | ((code >> 12) & 0x3F));
        byte (0x80 | ((code >> 6) & 0x3F));
        byte (0x80 | (code & 0x3F));
    }
}

std::string decode_attribute (std::string_view raw, std::vector<bool>* by_number) {
    std::string out;
    const auto mark = [&out, by_number] (bool numbered) {
        if (by_number != nullptr) {
            by_number->resize (out.size (), numbered);
        }
    };
    for (std::size_t i = 0; i < raw.size (); ++i) {
        const char c = raw[i];
        if (c == '&') {
            const std::size_t end = raw.substr (0, i + 12).find (';', i);
            if (end != std::string_view::npos) {
                if (const auto code = referenced (raw.substr (i + 1, end - i - 1))) {
                    append_utf8 (out, *code);
                    mark (raw[i + 1] == '#');
                    i = end;
                    continue;
                }
            }
        }
        out += is_space (c) ? ' ' : c;
        mark (false);
    }
    return out;
}

} // namespace ostrand::files
