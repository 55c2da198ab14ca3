// ostrand-tool layout: what the geometry made of a file, as one JSON object.
#include "base/text.h"
#include "files/native.h"
#include "tool/commands.h"
#include "tool/open_input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

namespace ostrand::tool {
namespace {

using namespace document;

constexpr int digits = 9; // of every number that is not whole

constexpr std::array options{
    ToolOption{"--align", nullptr, "first run the automatic alignment over all nodes"},
};

/// One JSON object or list that is being written, on one line or on several.
class Json {
  public:
    explicit Json (std::string& out) : out_ (out) {}

    void key (std::string_view name) {
        separate ();
        out_ += '"';
        out_ += name;
        out_ += "\": ";
    }
    void number (std::string_view name, double value) {
        key (name);
        append (value);
    }
    /// Null for nothing.
    void id (std::string_view name, const GraphBase* object) {
        key (name);
        if (object)
            append (object->id);
        else
            out_ += "null";
    }
    /// The plain text of an object; null for nothing.
    void text (std::string_view name, const Char* object) {
        key (name);
        if (object)
            append_quoted (object->name ());
        else
            out_ += "null";
    }
    void list (std::string_view name, std::initializer_list<float> values) {
        key (name);
        out_ += '[';
        const char* separator = "";
        for (const float value : values) {
            out_ += separator;
            append (value);
            separator = ", ";
        }
        out_ += ']';
    }
    void point (std::string_view name, Point p) { list (name, {p.x, p.y}); }

  private:
    void separate () {
        if (!first_) out_ += ", ";
        first_ = false;
    }
    /// JSON knows no infinity and no not-a-number.
    void append (double value) {
        if (std::isfinite (value))
            append_g (out_, value == 0 ? 0 : value, digits);
        else
            out_ += "null";
    }
    /// letters  two bytes for each code from 128 on, as in native text. Codes from 256 on have a
    ///          second byte there that no UTF-8 has, with which the whole would be no JSON.
    void append_quoted (std::string_view letters) {
        out_ += '"';
        for (std::size_t i = 0; i < letters.size (); ++i) {
            const char c = letters[i];
            const auto code = static_cast<unsigned char> (c);
            const auto next =
                static_cast<unsigned char> (i + 1 < letters.size () ? letters[i + 1] : 0);
            if (code == 0xC3 && next >= 0xC0) {
                out_ += {'\xC4', static_cast<char> (next & 0xBFU)};
                ++i;
                continue;
            }
            if (c == '"' || c == '\\')
                out_ += {'\\', c};
            else if (code < 32)
                out_ += format_text ("\\u%04x", code);
            else
                out_ += c;
        }
        out_ += '"';
    }

    std::string& out_;
    bool first_ = true;
};

double width_of (const Char* object) { return object ? object->get_width () : 0; }

void write_network (std::string& out, const Network& network) {
    Json json (out);
    json.number ("x", network.x);
    json.number ("y", network.y);
    json.number ("width", network.get_width ());
    json.number ("height", network.get_height ());
}

void write_compart (std::string& out, const Compart& c) {
    Json json (out);
    json.number ("id", c.id);
    json.number ("shape", c.shape);
    json.number ("x", c.x);
    json.number ("y", c.y);
    json.number ("width", c.get_width ());
    json.number ("height", c.get_height ());
    json.text ("label", c.label.get ());
}

void write_node (std::string& out, const Node& n) {
    Json json (out);
    const Char* const label = n.label.get ();
    const Line* const residu = n.residu.get ();
    json.number ("id", n.id);
    json.number ("type", n.type);
    json.number ("x", n.x);
    json.number ("y", n.y);
    json.number ("width", n.get_width ());
    json.number ("height", n.get_height ());
    json.text ("label", label);
    json.text ("residu", residu);
    json.id ("master", n.master ());
    json.id ("compart", n.compart);
    json.number ("label_x", label ? label->x : 0);
    json.number ("label_y", label ? label->y : 0);
    json.number ("label_width", width_of (label));
    json.number ("label_height", label ? label->get_height () : 0);
    json.number ("label_ascent", label ? label->get_ascent () : 0);
    json.number ("residu_x", residu ? residu->x : 0);
    json.number ("residu_y", residu ? residu->y : 0);
    json.number ("residu_width", width_of (residu));
}

void write_arc (std::string& out, const Arque& a) {
    Json json (out);
    json.number ("id", a.id);
    json.number ("type", a.type);
    json.id ("source", a.source ());
    json.id ("dest", a.dest ());
    json.number ("side", a.side);
    json.number ("x", a.x);
    json.number ("y", a.y);
    json.number ("width", a.get_width ());
    json.number ("height", a.get_height ());
    json.number ("angle", a.angle);
    json.point ("start", a.start);
    json.point ("end", a.end);
    json.point ("head", a.head);
    json.point ("mark_a", a.mark_a);
    json.point ("mark_b", a.mark_b);
    json.point ("inner", a.inner);
    json.point ("label_pos", a.label_pos);
    json.point ("residu_pos", a.residu_pos);
    json.list ("line", {a.line_a, a.line_b, a.line_c});
    json.text ("label", a.label.get ());
    json.number ("label_width", width_of (a.label.get ()));
    json.text ("residu", a.residu.get ());
    json.number ("residu_width", width_of (a.residu.get ()));
}

/// A list of objects, each on a line of its own.
template <typename Objects, typename Write>
void write_list (std::string& out, std::string_view name, const Objects& objects,
                 const Write& write) {
    out += ",\n  \"";
    out += name;
    out += "\": [";
    const char* separator = "\n    {";
    for (const auto& object : objects) {
        out += separator;
        write (out, *object);
        out += '}';
        separator = ",\n    {";
    }
    out += objects.empty () ? "]" : "\n  ]";
}

std::string layout_text (const Network& network) {
    files::write_native (network); // numbers the objects
    std::vector<Arque*> arcs = network.all_arcs ();
    std::ranges::stable_sort (arcs, {}, &Arque::id);
    std::string out = "{\n  \"network\": {";
    write_network (out, network);
    out += '}';
    write_list (out, "compartments", network.comps (), write_compart);
    write_list (out, "nodes", network.nodes (), write_node);
    write_list (out, "arcs", arcs, write_arc);
    return out + "\n}\n";
}

int run (const Arguments& arguments) {
    files::Document document;
    if (!open_input ("layout", arguments.words[0], document)) return status_failure;
    if (arguments.has ("--align")) document.network->align_all ();
    return print_result (layout_text (*document.network));
}

} // namespace

extern const ToolCommand layout_command{
    .name = "layout",
    .words = "FILE",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "print places and sizes of everything in a network as JSON",
    .details =
        "Objects have the numbers that saving gives them. A node's x and y are its centre, its\n"
        "label_x and label_y count from its corner; other places count from the network's\n"
        "origin. What is not there is null. Nested networks are not listed.\n",
    .options = options,
    .run = run,
};

} // namespace ostrand::tool
