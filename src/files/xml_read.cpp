// The XML block read: templates line by line, what a line has in another order is passed over.
#include "files/xml.h"

#include "files/label_text.h"
#include "files/xml_match.h"

#include "document/numbers.h"

#include "base/report.h"
#include "base/text.h"

#include <array>
#include <unordered_map>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Char;
using document::GraphBase;
using document::Line;
using document::MarkupReader;
using document::Network;
using document::Node;

constexpr std::string_view block_start = "<lattrix:network";
constexpr std::string_view block_end = "</lattrix:network";

/// A colour text as a colour.
unsigned color_of (const std::string& text) {
    MarkupReader reader (text);
    return document::read_word (reader);
}

class BlockReader {
  public:
    explicit BlockReader (std::string_view text)
        : cursor_{text}, network_ (std::make_unique<Network> ()) {}

    std::unique_ptr<Network> read ();

  private:
    bool read_elements ();
    void read_compart ();
    void read_node ();
    void read_arc ();
    void finish ();

    bool starts (std::string_view wanted) const { return cursor_.rest ().starts_with (wanted); }
    void skip_line () {
        const std::size_t end = cursor_.text.find ('\n', cursor_.at);
        cursor_.at = end == std::string_view::npos ? cursor_.text.size () : end + 1;
    }
    bool attribute (std::string_view name, std::string& value);
    bool number_attribute (std::string_view name, float& value);
    bool flag (std::string_view name, bool fallback = false);
    MarkupReader reader_of (std::string_view value) const;
    void take_style (const MarkupReader& reader);
    std::unique_ptr<Line> line (std::string_view value);
    std::unique_ptr<Char> node_label (std::string_view value);
    std::unique_ptr<Line> arc_field_line (std::string_view value);
    std::unique_ptr<Line> arc_field (std::string_view name, std::string_view x_name,
                                     std::string_view y_name);
    void note (GraphBase& g);
    void note_nested (const Network& nested);
    GraphBase* find (int id) const;

    XmlCursor cursor_;
    std::unique_ptr<Network> network_;
    double version_ = 1.0;
    int announced_nodes_ = 0;
    unsigned font_ = document::start_font; // the running style
    unsigned color_ = 0;
    bool font_mark_met_ = false; // in a field of an arc
    int dup_id_ = document::first_dup_id;
    std::unordered_map<int, GraphBase*> ids_;
    bool id_twice_ = false;
};

/// ` name="value"`, the cursor standing on the one blank before it. Absent: false, and the cursor
/// stays.
bool BlockReader::attribute (std::string_view name, std::string& value) {
    const std::size_t start = cursor_.at;
    if (cursor_.peek () == ' ' && cursor_.rest ().substr (1).starts_with (name)) {
        cursor_.at += 1 + name.size ();
        if (starts ("=\"")) {
            // White space at the front of a value belongs to it no more than that of a number.
            cursor_.at += 2;
            if (scan_template (cursor_, "%[^\"]s", {&value}) == 1 && cursor_.peek () == '"') {
                ++cursor_.at;
                value = text_of_drawn_attribute (value);
                return true;
            }
        }
    }
    cursor_.at = start;
    return false;
}

bool BlockReader::number_attribute (std::string_view name, float& value) {
    std::string text;
    if (!attribute (name, text)) {
        return false;
    }
    XmlCursor number{text};
    scan_template (number, "%g", {&value});
    return true;
}

/// True when the value begins with a "t".
bool BlockReader::flag (std::string_view name, bool fallback) {
    std::string value;
    return attribute (name, value) ? value.starts_with ('t') : fallback;
}

MarkupReader BlockReader::reader_of (std::string_view value) const {
    MarkupReader reader (value);
    reader.font = font_;
    reader.color = color_;
    reader.dup_id = dup_id_;
    return reader;
}

void BlockReader::take_style (const MarkupReader& reader) {
    font_ = reader.font;
    color_ = reader.color;
    dup_id_ = reader.dup_id;
}

std::unique_ptr<Line> BlockReader::line (std::string_view value) {
    MarkupReader reader = reader_of (value);
    auto made = std::make_unique<Line> (reader);
    take_style (reader);
    return made;
}

std::unique_ptr<Char> BlockReader::node_label (std::string_view value) {
    if (value.empty ()) {
        return nullptr;
    }
    if (!value.starts_with ("[N")) {
        return line (value);
    }
    MarkupReader reader = reader_of (value);
    std::unique_ptr<Char> item = document::read_item (reader);
    take_style (reader);
    return item;
}

/// A text of an arc: small and blue until marks say otherwise.
std::unique_ptr<Line> BlockReader::arc_field_line (std::string_view value) {
    constexpr unsigned blue = 4;
    MarkupReader reader = reader_of (value);
    if (reader.color == 0) {
        reader.color = blue;
    }
    const bool was_black = color_ == 0;
    const unsigned small = document::reduced_font (font_);
    if (!font_mark_met_) {
        reader.font = small;
    }
    auto made = std::make_unique<Line> (reader);
    color_ = was_black && reader.color == blue ? 0 : reader.color;
    if (font_mark_met_) {
        font_ = reader.font;
    } else if (reader.font != small) {
        font_ = reader.font;
        font_mark_met_ = true;
    }
    return made;
}

std::unique_ptr<Line> BlockReader::arc_field (std::string_view name, std::string_view x_name,
                                              std::string_view y_name) {
    std::string value;
    if (!attribute (name, value)) {
        return nullptr;
    }
    std::unique_ptr<Line> made = arc_field_line (value);
    float x = 0;
    float y = 0;
    if (number_attribute (x_name, x)) {
        number_attribute (y_name, y);
    }
    made->set_offset (x, y);
    return made;
}

void BlockReader::note (GraphBase& g) {
    if (!ids_.try_emplace (g.id (), &g).second) {
        id_twice_ = true;
    }
}

void BlockReader::note_nested (const Network& nested) {
    for (const auto& n : nested.nodes ()) {
        note (*n);
        for (const auto& a : n->arcs ()) {
            note (*a);
        }
        if (const Network* deeper = n->nested ()) {
            note_nested (*deeper);
        }
    }
    for (const auto& c : nested.comps ()) {
        note (*c);
    }
}

GraphBase* BlockReader::find (int id) const {
    if (id_twice_) {
        return network_->find_by_id (id);
    }
    const auto found = ids_.find (id);
    return found == ids_.end () ? nullptr : found->second;
}

void BlockReader::read_compart () {
    int id = 0;
    int shape = 0;
    float x = 0;
    float y = 0;
    int width = 0;
    int height = 0;
    std::string color;
    const int done = scan_template (cursor_,
                                    "<lattrix:comp id=\"%d\" type=\"%d\" x=\"%g\" y=\"%g\" "
                                    "width=\"%d\" height=\"%d\" color=\"%s\"",
                                    {&id, &shape, &x, &y, &width, &height, &color});
    auto made = std::make_unique<document::Compart> (shape, x, y, static_cast<float> (width),
                                                     static_cast<float> (height));
    made->set_id (id);
    made->set_own_color (color_of (color));
    std::string text;
    if (done == 7 && attribute ("label", text) && !text.empty ()) {
        made->take_label (line (text));
    } else {
        made->take_label (std::make_unique<Line> (format_text ("Comp%d", id),
                                                  document::document_state ().default_font,
                                                  document::document_state ().default_color));
    }
    if (done == 7 && attribute ("user_data", text)) {
        XmlCursor values{text};
        std::array<int, 5> v = made->user_values ();
        scan_template (values, "{%d:%d+%d+%d+%d}", {&v[0], &v[1], &v[2], &v[3], &v[4]});
        made->set_user_values (v);
    }
    skip_line ();
    note (network_->add_compart (std::move (made)));
}

void BlockReader::read_node () {
    int id = 0;
    int arcs = 0;
    float x = 0;
    float y = 0;
    std::string color;
    std::string bg_color;
    int type = 0;
    const int done = scan_template (cursor_,
                                    "<lattrix:node id=\"%d\" nb_arcs=\"%d\" x=\"%g\" y=\"%g\" "
                                    "color=\"%s\" bg_color=\"%s\" type=\"%d\"",
                                    {&id, &arcs, &x, &y, &color, &bg_color, &type});
    auto made = std::make_unique<Node> (x, y, static_cast<unsigned> (type), color_of (bg_color));
    made->set_id (id);
    made->set_own_color (color_of (color));
    if (done == 7) {
        std::string text;
        if (attribute ("label", text)) {
            made->take_label (node_label (text));
        }
        if (attribute ("residu", text) && !text.empty ()) {
            made->take_residu (line (text));
        }
        if (flag ("foggy")) {
            made->set_own_fog (true);
        }
        made->set_selectable (flag ("selectable", true));
        made->set_calyx_display (flag ("calyx_display"));
        std::string threshold; // of files that were never written; both are read and dropped
        attribute ("treshold1", threshold);
        attribute ("treshold2", threshold);
        if (attribute ("user_data", text)) {
            made->set_user_data (text);
        }
    }
    skip_line ();
    Node& added = network_->add_node (std::move (made));
    network_->assign_compart (added);
    note (added);
    if (const Network* nested = added.nested ()) {
        note_nested (*nested);
    }
}

void BlockReader::read_arc () {
    int id = 0;
    std::string color;
    int type = 0;
    int thickness = 2;
    int source_id = 0;
    int dest_id = 0;
    const int done = scan_template (cursor_,
                                    "<lattrix:arc id=\"%d\" color=\"%s\" type=\"%d\" "
                                    "thickness=\"%d\" src_id=\"%d\" dst_id=\"%d\"",
                                    {&id, &color, &type, &thickness, &source_id, &dest_id});
    GraphBase* source = find (source_id);
    GraphBase* dest = find (dest_id);
    Arque* arc = nullptr;
    if (source != nullptr && dest != nullptr) {
        arc = source->connect (
            *dest, document::arc_type_of_version (static_cast<unsigned> (type), version_));
    }
    if (arc == nullptr) {
        report_message ("format error in arc #%d from %d to %d.", id, source_id, dest_id);
        skip_line ();
        return;
    }
    arc->set_id (id);
    note (*arc);
    if (done == 6) {
        const bool foggy = flag ("foggy");
        std::unique_ptr<Line> label = arc_field ("label", "lx", "ly");
        if (label && !label->is_empty ()) {
            arc->take_label (std::move (label));
        }
        std::unique_ptr<Line> residu = arc_field ("residu", "rx", "ry");
        if (residu && !residu->is_empty ()) {
            arc->take_residu (std::move (residu));
        }
        if (auto text = arc_field ("stoech_src", "stsx", "stsy")) {
            arc->take_stoech_src (std::move (text));
        }
        if (auto text = arc_field ("stoech_dest", "strx", "stry")) {
            arc->take_stoech_dest (std::move (text));
        }
        // Only the arc and its texts: what hangs on it tells its own fog.
        if (foggy) {
            arc->set_own_fog (true);
        }
    }
    arc->set_own_color (color_of (color));
    arc->set_thickness (static_cast<unsigned char> (thickness));
    skip_line ();
}

/// False at the end of the reading by a fault.
bool BlockReader::read_elements () {
    for (;;) {
        const char c = cursor_.peek ();
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '/' || c == '>') {
            ++cursor_.at;
        } else if (starts ("</lattrix:network>")) {
            return true;
        } else if (starts ("<lattrix:comp ")) {
            read_compart ();
        } else if (starts ("<lattrix:node ")) {
            read_node ();
        } else if (starts ("<lattrix:arc ")) {
            read_arc ();
        } else {
            report_message ("Format error: s = '%10.10s'.",
                            std::string (cursor_.rest ().substr (0, 10)).c_str ());
            return false;
        }
    }
}

void BlockReader::finish () {
    if (network_->nb_nodes () != announced_nodes_) {
        report_message ("Wrong number of nodes.");
    }
    network_->update_shared_nodes ();
}

std::unique_ptr<Network> BlockReader::read () {
    int comps = 0;
    int align = network_->align ();
    int x = 0;
    int y = 0;
    float version = 1.0F;
    scan_template (cursor_,
                   "<lattrix:network nb_nodes=\"%d\" nb_comp=\"%d\" align=\"%d\" x=\"%d\" "
                   "y=\"%d\" version=\"%g\">",
                   {&announced_nodes_, &comps, &align, &x, &y, &version});
    network_->set_align (align);
    network_->set_origin (static_cast<float> (x), static_cast<float> (y));
    version_ = static_cast<double> (version);
    if (version_ < 1.2) {
        report_message ("Old file version (%s), you are advised to save this network.",
                        format_g (version_).c_str ());
    }
    const bool whole = read_elements ();
    network_->layout ();
    if (whole) {
        finish ();
    }
    return std::move (network_);
}

/// Where a line that starts with `wanted` begins, from `from` on, which is the start of a line.
std::size_t find_line (std::string_view text, std::string_view wanted, std::size_t from) {
    while (from < text.size ()) {
        if (text.substr (from).starts_with (wanted)) {
            return from;
        }
        from = text.find ('\n', from);
        if (from == std::string_view::npos) {
            break;
        }
        ++from;
    }
    return std::string_view::npos;
}

} // namespace

std::string_view find_xml_block (std::string_view text) {
    const std::size_t start = find_line (text, block_start, 0);
    if (start == std::string_view::npos) {
        return {};
    }
    const std::size_t next = text.find ('\n', start);
    if (next == std::string_view::npos) {
        return {};
    }
    const std::size_t last = find_line (text, block_end, next + 1);
    if (last == std::string_view::npos) {
        return {};
    }
    const std::size_t close = text.find ('>', last);
    return text.substr (start, close == std::string_view::npos ? close : close + 1 - start);
}

std::unique_ptr<Network> read_xml_block (std::string_view text) {
    return BlockReader (text.substr (0, text.find ('\0'))).read ();
}

} // namespace ostrand::files
