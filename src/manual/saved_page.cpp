// From the told text to a page for browsers: the reader's tokens become elements that are opened
// when something stands in them, and closed in turn.
#include "manual/saved_page.h"

#include "base/text.h"
#include "manual/lexer.h"
#include "manual/manual_images.h"
#include "manual/page_style.h"
#include "manual/reader.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace ostrand::manual {
namespace {

/// Lines of the page are broken at the first blank behind this column.
constexpr std::size_t line_width = 96;
/// The "font size" of the titles of the manual and of its chapters.
constexpr int heading_step = 4;

std::string escaped (std::string_view text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
        case '&': html += "&amp;"; break;
        case '<': html += "&lt;"; break;
        case '>': html += "&gt;"; break;
        case '"': html += "&quot;"; break;
        default: html += c;
        }
    }
    return html;
}

/// Letters of a word; a blank within one is hard.
std::string escaped_word (std::string_view word) {
    std::string html = escaped (word);
    for (std::size_t at = html.find (' '); at != std::string::npos; at = html.find (' ', at)) {
        html.replace (at, 1, "&nbsp;");
    }
    return html;
}

/// A path as an address: what would end the path or part it is coded.
std::string address (std::string_view path) {
    std::string coded;
    for (const char c : path) {
        if (c == '#' || c == '?' || c == ' ' || c == '\\' || c == '<' || c == '>' || c == '`') {
            coded += format_text ("%%%02X", static_cast<unsigned> (c));
        } else {
            coded += c;
        }
    }
    return escaped (coded);
}

/// An element that changes the words within it.
struct Style {
    int tag = token_none;
    std::string name;  // of the page's element; empty for one that shows nothing
    std::string begin; // what stands in the page's opening tag
    int step = 0;      // of "font size"; 0 for other elements

    bool operator== (const Style&) const = default;
};

class Writer {
  public:
    explicit Writer (std::string_view told) : lexer_ (told) {}

    /// What stands in the page's "body". Reads the title on the way.
    std::string body ();
    const std::string& title () const { return title_; }

  private:
    using Attributes = std::map<int, std::string>;

    Attributes attributes ();
    void read_title ();
    void element (int id, const std::string& name);
    bool structure (int id);
    void style (int id, const std::string& name, const Attributes& found);
    void begin_font (const Attributes& found);
    void end_style (int tag);
    void anchor (const Attributes& found);
    void image (const Attributes& found);
    void preformatted ();

    void begin_heading (const char* name);
    void end_list (std::string_view name);
    void begin_item ();
    void end_item ();
    void begin_block (const char* name);
    void end_quote ();
    std::size_t innermost_list () const;
    void close_down_to (std::size_t count);

    /// Directly in a list, where only items may stand.
    bool stands_in_list () const { return !open_.empty () && innermost_list () == open_.size (); }
    bool stands_in_line () const { return !line_.empty (); }
    bool in_heading () const { return line_.starts_with ('h'); }
    void begin_line ();
    void open_line (std::string name);
    void end_line ();
    void begin_word ();
    void write_gap ();
    std::vector<Style> shown_styles () const;
    std::string take_target ();
    void write (std::string_view text);

    Lexer lexer_;
    std::string title_;
    std::string page_;
    std::size_t line_begin_ = 0;    // of the page's last line
    std::vector<std::string> open_; // blocks around the words, outermost first
    std::string line_;              // what the words stand in: "p", "h2", "pre", "li"; or nothing
    std::string next_line_;         // what the next words stand in, where that is told
    std::vector<Style> wanted_;     // styles that the told text has open
    std::vector<Style> written_;    // those that the page has open
    std::string target_;            // the name of an "a" whose place comes next
    std::set<std::string> targets_; // of places that the page has
    int centers_ = 0;
    int breaks_ = 0;             // before the next word
    bool blank_ = false;         // before the next word
    bool item_is_empty_ = false; // the item that is open innermost
    bool has_main_heading_ = false;
};

Writer::Attributes Writer::attributes () {
    Attributes found;
    int name = token_none;
    for (Token token = lexer_.next (); token.id != token_end_of_tag; token = lexer_.next ()) {
        if (token.id == token_end_of_source) break;
        if (token.id == token_word || token.id == token_quoted) {
            found[name] = std::move (token.text);
        } else {
            name = token.id;
        }
    }
    return found;
}

void Writer::read_title () {
    for (Token token = lexer_.next (); token.id != token_end_of_source; token = lexer_.next ()) {
        if (token.id == token_word || token.id == token_blank) {
            title_ += token.text;
            continue;
        }
        attributes ();
        if (token.id == -token_title || token.id == -token_head) return;
    }
}

std::string Writer::body () {
    for (Token token = lexer_.next (); token.id != token_end_of_source; token = lexer_.next ()) {
        if (token.id == token_word) {
            begin_word ();
            write (escaped_word (token.text));
        } else if (token.id == token_blank) {
            blank_ = stands_in_line ();
        } else {
            element (token.id, token.text);
        }
    }
    end_line ();
    close_down_to (0);
    return std::move (page_);
}

void Writer::element (int id, const std::string& name) {
    if (id == token_pre) return preformatted ();
    const Attributes found = attributes ();
    if (id == token_title) return read_title ();
    if (id == token_img) return image (found);
    if (!structure (id)) style (id, name, found);
}

/// Elements that stand around lines or end them.
bool Writer::structure (int id) {
    switch (id) {
    case token_br: breaks_ += stands_in_line () ? 1 : 0; return true;
    case token_td: blank_ = stands_in_line (); return true;
    case token_p:
    case -token_p:
    case token_table:
    case -token_table:
    case token_tr:
    case -token_tr:
    case -token_h1:
    case -token_h2:
    case -token_h3: end_line (); return true;
    case token_h1: begin_heading ("h1"); return true;
    case token_h2: begin_heading ("h2"); return true;
    case token_h3: begin_heading ("h3"); return true;
    case token_ul: begin_block ("ul"); return true;
    case token_ol: begin_block ("ol"); return true;
    case -token_ul: end_list ("ul"); return true;
    case -token_ol: end_list ("ol"); return true;
    case token_li: begin_item (); return true;
    case -token_li: end_item (); return true;
    case token_blockquote: begin_block ("blockquote"); return true;
    case -token_blockquote: end_quote (); return true;
    case token_center:
        end_line ();
        ++centers_;
        return true;
    case -token_center:
        end_line ();
        centers_ = std::max (centers_ - 1, 0);
        return true;
    default: return false;
    }
}

/// Elements that change the words within them.
void Writer::style (int id, const std::string& name, const Attributes& found) {
    switch (id) {
    case token_b: wanted_.push_back ({id, "b", "b"}); return;
    case token_i: wanted_.push_back ({id, "i", "i"}); return;
    case token_tt: wanted_.push_back ({id, "code", "code"}); return;
    case token_kbd: wanted_.push_back ({id, "kbd", "kbd"}); return;
    case token_font: begin_font (found); return;
    case token_a: anchor (found); return;
    case -token_b:
    case -token_i:
    case -token_tt:
    case -token_kbd:
    case -token_font:
    case -token_a: end_style (-id); return;
    case token_unknown:
        if (name == "u") wanted_.push_back ({id, "u", "u"});
        if (name == "/u") end_style (id);
        return;
    default: return;
    }
}

void Writer::begin_font (const Attributes& found) {
    Style font;
    font.tag = token_font;
    std::string css;
    if (const auto size = found.find (token_size); size != found.end ()) {
        font.step = parse_atoi (size->second);
        css = format_text ("font-size: %dpx", size_of_step (font.step));
    }
    if (const auto colour = found.find (token_color); colour != found.end ()) {
        const std::string_view name = colour_class (colour->second);
        const std::string value = css_colour (colour->second);
        if (!name.empty ()) {
            font.begin.append (" class=\"").append (name).append ("\"");
        } else if (!value.empty ()) {
            css += (css.empty () ? "color: " : "; color: ") + value;
        }
    }
    if (!css.empty ()) font.begin += " style=\"" + css + "\"";
    if (!font.begin.empty ()) {
        font.name = "span";
        font.begin = "span" + font.begin;
    }
    wanted_.push_back (std::move (font));
}

/// Ends the innermost of its kind.
void Writer::end_style (int tag) {
    const auto last = std::ranges::find (wanted_.rbegin (), wanted_.rend (), tag, &Style::tag);
    if (last != wanted_.rend ()) wanted_.erase (std::prev (last.base ()));
}

/// Links do not hold each other, and lead to places of this page.
void Writer::anchor (const Attributes& found) {
    end_style (token_a);
    if (const auto name = found.find (token_name); name != found.end ()) target_ = name->second;
    const auto href = found.find (token_href);
    if (href == found.end () || !href->second.starts_with ('#')) return;
    wanted_.push_back ({token_a, "a", "a href=\"" + escaped (href->second) + "\""});
}

void Writer::image (const Attributes& found) {
    const auto source = found.find (token_src);
    const std::string path = source == found.end () ? std::string () : source->second;
    begin_word ();
    write ("<img src=\"" + address (path) + "\" alt=\"" + escaped (image_description (path)) +
           "\">");
}

/// Lines stay as they are; ends of lines at both ends of the element are none.
void Writer::preformatted () {
    end_line ();
    next_line_ = "pre";
    lexer_.set_preformatted (true);
    attributes ();
    std::size_t line_ends = 0;
    Token token = lexer_.next ();
    for (; token.id != token_end_of_source; token = lexer_.next ()) {
        if (token.id == -token_pre || token.id == -token_body) break;
        if (token.id == token_line_end) {
            line_ends += stands_in_line () ? 1 : 0;
        } else if (token.id == token_word) {
            begin_word ();
            write (std::string (std::exchange (line_ends, 0), '\n') + escaped (token.text));
        } else {
            style (token.id, token.text, attributes ());
        }
    }
    lexer_.set_preformatted (false);
    attributes ();
    end_line ();
}

void Writer::begin_heading (const char* name) {
    end_line ();
    next_line_ = name;
}

void Writer::begin_block (const char* name) {
    end_line ();
    if (stands_in_list ()) begin_item ();
    item_is_empty_ = false;
    write (format_text ("<%s>\n", name));
    open_.emplace_back (name);
}

/// How many blocks are open down to the innermost list, which counts; 0 without one.
std::size_t Writer::innermost_list () const {
    const auto last = std::ranges::find_if (open_.rbegin (), open_.rend (), [] (const auto& name) {
        return name == "ul" || name == "ol";
    });
    return static_cast<std::size_t> (open_.rend () - last);
}

void Writer::end_list (std::string_view name) {
    end_line ();
    const std::size_t count = innermost_list ();
    if (count > 0 && open_[count - 1] == name) close_down_to (count - 1);
}

void Writer::begin_item () {
    end_line ();
    if (innermost_list () == 0) begin_block ("ul");
    close_down_to (innermost_list ());
    write ("<li>");
    open_.emplace_back ("li");
    item_is_empty_ = true;
}

void Writer::end_item () {
    end_line ();
    if (const std::size_t count = innermost_list (); count > 0) close_down_to (count);
}

void Writer::end_quote () {
    end_line ();
    const auto last = std::ranges::find (open_.rbegin (), open_.rend (), "blockquote");
    if (last != open_.rend ()) close_down_to (static_cast<std::size_t> (open_.rend () - last) - 1);
}

void Writer::close_down_to (std::size_t count) {
    for (; open_.size () > count; open_.pop_back ()) write ("</" + open_.back () + ">\n");
    item_is_empty_ = false;
}

/// A line for the next words, where none is open.
void Writer::begin_line () {
    if (stands_in_line ()) return;
    std::string name = std::exchange (next_line_, {});
    if (stands_in_list ()) begin_item ();
    if (!name.empty ()) return open_line (std::move (name));
    const bool is_title =
        centers_ > 0 && std::ranges::find (wanted_, heading_step, &Style::step) != wanted_.end ();
    if (is_title) return open_line (std::exchange (has_main_heading_, true) ? "h2" : "h1");
    if (item_is_empty_ && centers_ == 0) {
        line_ = "li";
    } else {
        open_line ("p");
    }
    item_is_empty_ = false;
}

void Writer::open_line (std::string name) {
    write ("<" + name);
    if (centers_ > 0 && name == "p") write (" class=\"center\"");
    write (take_target () + ">");
    line_ = std::move (name);
    item_is_empty_ = false;
}

void Writer::end_line () {
    for (; !written_.empty (); written_.pop_back ()) write ("</" + written_.back ().name + ">");
    if (stands_in_line () && line_ != "li") write ("</" + line_ + ">\n");
    line_.clear ();
    next_line_.clear ();
    blank_ = false;
    breaks_ = 0;
}

/// The name of the place that comes now, as an attribute; nothing where none was given.
std::string Writer::take_target () {
    const std::string name = std::exchange (target_, {});
    if (name.empty () || !targets_.insert (name).second) return {};
    return " id=\"" + escaped (name) + "\"";
}

/// Styles of the next word. Headings have letters of their own.
std::vector<Style> Writer::shown_styles () const {
    std::vector<Style> shown;
    for (const Style& style : wanted_) {
        const bool of_heading = style.tag == token_b || style.step != 0;
        if (!style.name.empty () && !(in_heading () && of_heading)) shown.push_back (style);
    }
    return shown;
}

/// Opens the line and the styles that the next word stands in, and closes what it does not.
void Writer::begin_word () {
    begin_line ();
    const std::vector<Style> shown = shown_styles ();
    const auto same = std::ranges::mismatch (written_, shown);
    const auto kept = static_cast<std::size_t> (same.in1 - written_.begin ());
    for (; written_.size () > kept; written_.pop_back ()) {
        write ("</" + written_.back ().name + ">");
    }
    write_gap ();
    if (const std::string target = take_target (); !target.empty ()) {
        write ("<span" + target + "></span>");
    }
    for (; written_.size () < shown.size (); written_.push_back (shown[written_.size ()])) {
        write ("<" + shown[written_.size ()].begin + ">");
    }
}

/// What stands between the last word and the next one.
void Writer::write_gap () {
    if (breaks_ == 0 && blank_) write (page_.size () - line_begin_ > line_width ? "\n" : " ");
    for (; breaks_ > 0; --breaks_) write ("<br>\n");
    blank_ = false;
}

void Writer::write (std::string_view text) {
    page_ += text;
    if (const std::size_t end = text.rfind ('\n'); end != std::string_view::npos) {
        line_begin_ = page_.size () - text.size () + end + 1;
    }
}

} // namespace

std::string saved_page (std::string_view told) {
    const Document ground = read_html (told);
    Writer writer (told);
    const std::string body = writer.body ();
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<title>" +
           escaped (writer.title ()) + "</title>\n<style>\n" + page_style (ground) +
           "</style>\n</head>\n<body>\n" + body + "</body>\n</html>\n";
}

} // namespace ostrand::manual
