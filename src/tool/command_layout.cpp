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
    Json (std::string& out, const Numbering& numbering) : out_ (out), numbering_ (numbering) {}

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
        if (object != nullptr) {
            append (numbering_.of (object));
        } else {
            out_ += "null";
        }
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
    const Numbering& numbering_;
    bool first_ = true;
};

double width_of (const Char* object) { return object != nullptr ? object->get_width () : 0; }

void write_network (Json& json, const Network& network) {
    json.number ("x", network.x ());
    json.number ("y", network.y ());
    json.number ("width", network.get_width ());
    json.number ("height", network.get_height ());
}

void write_compart (Json& json, const Compart& c) {
    json.id ("id", &c);
    json.number ("shape", c.shape ());
    json.number ("x", c.x ());
    json.number ("y", c.y ());
    json.number ("width", c.get_width ());
    json.number ("height", c.get_height ());
    json.text ("label", c.label ());
}

void write_node (Json& json, const Node& n) {
    const Char* const label = n.label ();
    const Line* const residu = n.residu ();
    json.id ("id", &n);
    json.number ("type", n.type ());
    json.number ("x", n.x ());
    json.number ("y", n.y ());
    json.number ("width", n.get_width ());
    json.number ("height", n.get_height ());
    json.text ("label", label);
    json.text ("residu", residu);
    json.id ("master", n.master ());
    json.id ("compart", n.compart ());
    json.number ("label_x", label != nullptr ? label->x () : 0);
    json.number ("label_y", label != nullptr ? label->y () : 0);
    json.number ("label_width", width_of (label));
    json.number ("label_height", label != nullptr ? label->get_height () : 0);
    json.number ("label_ascent", label != nullptr ? label->get_ascent () : 0);
    json.number ("residu_x", residu != nullptr ? residu->x () : 0);
    json.number ("residu_y", residu != nullptr ? residu->y () : 0);
    json.number ("residu_width", width_of (residu));
}

void write_arc (Json& json, const Arque& a) {
    const ArcGeometry& at = a.geometry ();
    json.id ("id", &a);
    json.number ("type", a.type ());
    json.id ("source", a.source ());
    json.id ("dest", a.dest ());
    json.number ("side", a.side ());
    json.number ("x", a.x ());
    json.number ("y", a.y ());
    json.number ("width", a.get_width ());
    json.number ("height", a.get_height ());
    json.number ("angle", at.angle);
    json.point ("start", at.start);
    json.point ("end", at.end);
    json.point ("head", at.head);
    json.point ("mark_a", at.mark_a);
    json.point ("mark_b", at.mark_b);
    json.point ("inner", at.inner);
    json.point ("label_pos", at.label_pos);
    json.point ("residu_pos", at.residu_pos);
    json.list ("line", {at.line_a, at.line_b, at.line_c});
    json.text ("label", a.label ());
    json.number ("label_width", width_of (a.label ()));
    json.text ("residu", a.residu ());
    json.number ("residu_width", width_of (a.residu ()));
}

/// A list of objects, each on a line of its own.
template <typename Objects, typename Write>
void write_list (std::string& out, std::string_view name, const Objects& objects,
                 const Numbering& numbering, const Write& write) {
    out += ",\n  \"";
    out += name;
    out += "\": [";
    const char* separator = "\n    {";
    for (const auto& object : objects) {
        out += separator;
        Json json (out, numbering);
        write (json, *object);
        out += '}';
        separator = ",\n    {";
    }
    out += objects.empty () ? "]" : "\n  ]";
}

std::string layout_text (const Network& network) {
    Numbering numbering;
    files::write_native (network, numbering);
    std::vector<Arque*> arcs = network.all_arcs ();
    std::ranges::stable_sort (arcs, {}, [&] (const Arque* a) { return numbering.of (a); });
    std::string out = "{\n  \"network\": {";
    Json json (out, numbering);
    write_network (json, network);
    out += '}';
    write_list (out, "compartments", network.comps (), numbering, write_compart);
    write_list (out, "nodes", network.nodes (), numbering, write_node);
    write_list (out, "arcs", arcs, numbering, write_arc);
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
