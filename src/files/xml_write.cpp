// The XML block written.
#include "files/xml.h"

#include "files/label_text.h"

#include "document/numbers.h"

#include "base/text.h"

#include <array>
#include <unordered_set>

namespace ostrand::files {
namespace {

using document::Arque;
using document::Char;
using document::Network;
using document::Node;
using document::number_text;
using document::PrintState;

class BlockWriter {
  public:
    BlockWriter (PrintState& to, int depth) : to_ (to), depth_ (depth) {}

    void write (const Network& network);

  private:
    void start_line () {
        to_.out += '\n';
        if (depth_ > 0) {
            to_.out.append (static_cast<std::size_t> (depth_), '\t');
        }
    }
    void value (const char* name, const Char& text);
    void offset (const char* x_name, const char* y_name, const Char& text);
    void compart (const document::Compart& c);
    void node (const Node& n);
    void arc (const Arque& a);
    void field (const char* name, const char* x_name, const char* y_name, const Char* text);
    void gather_loose (const Network& nested);

    PrintState& to_;
    int depth_;
    std::vector<document::NumberedArc> arcs_;
};

void BlockWriter::value (const char* name, const Char& text) {
    to_.out += ' ';
    to_.out += name;
    to_.out += "=\"";
    const std::size_t start = to_.out.size ();
    if (text.kind () == document::CharKind::network) {
        text.fprint (to_, -1);
    } else {
        write_drawn_label (text, to_);
    }
    to_.out.replace (start, std::string::npos,
                     drawn_attribute (std::string_view (to_.out).substr (start)));
    to_.out += '"';
}

void BlockWriter::offset (const char* x_name, const char* y_name, const Char& text) {
    if (text.x () == 0 && text.y () == 0) {
        return;
    }
    to_.out += ' ';
    to_.out += x_name;
    to_.out += "=\"" + number_text (text.x ()) + "\" ";
    to_.out += y_name;
    to_.out += "=\"" + number_text (text.y ()) + '"';
}

void BlockWriter::compart (const document::Compart& c) {
    start_line ();
    const int id = to_.numbering.add (c);
    // A reader of this format stops at a width's point, so the width is whole.
    to_.out += format_text ("<lattrix:comp id=\"%d\" type=\"%d\" x=\"", id, c.shape ()) +
               number_text (c.x ()) + "\" y=\"" + number_text (c.y ()) +
               format_text ("\" width=\"%d\" height=\"%d\" color=\"", document::to_int (c.width ()),
                            c.get_height ()) +
               document::color_text (c.color ()) + '"';
    if (c.label () != nullptr) {
        value ("label", *c.label ());
    }
    const std::array<int, 5>& values = c.user_values ();
    to_.out += format_text (" user_data=\"{%d:%d+%d+%d+%d}\" />", values[0], values[1], values[2],
                            values[3], values[4]);
}

void BlockWriter::node (const Node& n) {
    start_line ();
    const int id = to_.numbering.add (n);
    to_.out += format_text ("<lattrix:node id=\"%d\" nb_arcs=\"%d\" x=\"", id, n.nb_arcs ()) +
               number_text (n.x ()) + "\" y=\"" + number_text (n.y ()) + "\" color=\"" +
               document::color_text (n.color ()) + "\" bg_color=\"" +
               document::color_text (n.bg_color ()) + format_text ("\" type=\"%u\"", n.type ());
    if (n.label () != nullptr) {
        value ("label", *n.label ());
        if (const Network* nested = n.nested ()) {
            gather_loose (*nested);
        }
    }
    if (n.residu () != nullptr) {
        value ("residu", *n.residu ());
    }
    if (n.foggy ()) {
        to_.out += " foggy=\"true\"";
    }
    if (!n.selectable ()) {
        to_.out += " selectable=\"false\"";
    }
    if (n.calyx_display ()) {
        to_.out += " calyx_display=\"true\"";
    }
    if (n.user_data () != nullptr) {
        to_.out += " user_data=\"" + drawn_attribute (*n.user_data ()) + '"';
    }
    to_.out += " />";
}

/// Arcs from inside a nested network to what is outside stand in the block around it: its own
/// record cannot name their ends.
void BlockWriter::gather_loose (const Network& nested) {
    const auto is_inside = [&nested] (const document::GraphBase& g) {
        for (const Network* network = g.owner_network (); network != nullptr;
             network = network->holder () == nullptr ? nullptr : network->holder ()->network ()) {
            if (network == &nested) {
                return true;
            }
        }
        return false;
    };
    std::vector<const Arque*> inner;
    std::vector<const Network*> open{&nested};
    while (!open.empty ()) {
        const Network* network = open.back ();
        open.pop_back ();
        for (const auto& n : network->nodes ()) {
            for (const auto& a : n->arcs ()) {
                inner.push_back (a.get ());
            }
            if (const Network* deeper = n->nested ()) {
                open.push_back (deeper);
            }
        }
    }
    std::unordered_set<const document::GraphBase*> loose;
    for (bool grows = true; grows;) {
        grows = false;
        for (const Arque* a : inner) {
            const bool leaves =
                a->dest () != nullptr && (!is_inside (*a->dest ()) || loose.contains (a->dest ()));
            if (leaves && loose.insert (a).second) {
                grows = true;
                arcs_.push_back ({a, 0});
            }
        }
    }
}

void BlockWriter::field (const char* name, const char* x_name, const char* y_name,
                         const Char* text) {
    if (text == nullptr) {
        return;
    }
    value (name, *text);
    offset (x_name, y_name, *text);
}

void BlockWriter::arc (const Arque& a) {
    if (a.source () == nullptr || a.dest () == nullptr) {
        return;
    }
    start_line ();
    to_.out +=
        format_text ("<lattrix:arc id=\"%d\" color=\"", to_.numbering.of (&a)) +
        document::color_text (a.color ()) +
        format_text ("\" type=\"%u\" thickness=\"%d\" src_id=\"%d\" dst_id=\"%d\"", a.type (),
                     a.thickness (), to_.numbering.of (a.source ()), to_.numbering.of (a.dest ()));
    if (a.foggy ()) {
        to_.out += " foggy=\"true\"";
    }
    field ("label", "lx", "ly", a.label ());
    field ("residu", "rx", "ry", a.residu ());
    field ("stoech_src", "stsx", "stsy", a.stoech_src ());
    field ("stoech_dest", "strx", "stry", a.stoech_dest ());
    to_.out += " />";
}

void BlockWriter::write (const Network& network) {
    if (depth_ > 0) {
        start_line ();
    }
    to_.out += format_text (
        "<lattrix:network nb_nodes=\"%d\" nb_comp=\"%d\" align=\"%d\" x=\"%d\" y=\"%d\" "
        "version=\"%s\">",
        network.nb_nodes (), network.nb_comp (), network.align (), document::to_int (network.x ()),
        document::to_int (network.y ()), format_g (1.2).c_str ());
    if (depth_ > 0) {
        ++depth_;
    }
    for (const auto& c : network.comps ()) {
        compart (*c);
    }
    for (const auto& n : network.nodes ()) {
        node (*n);
    }
    const std::vector<document::NumberedArc> loose = std::move (arcs_);
    arcs_.clear ();
    for (const auto& n : network.nodes ()) {
        for (const auto& a : n->arcs ()) {
            arcs_.push_back ({a.get (), 0});
        }
    }
    arcs_.insert (arcs_.end (), loose.begin (), loose.end ());
    std::erase_if (arcs_,
                   [] (const document::NumberedArc& a) { return a.arc->dest () == nullptr; });
    for (document::NumberedArc& a : arcs_) {
        a.id = to_.numbering.add (*a.arc);
    }
    document::to_file_order (arcs_, network, to_.numbering, true);
    for (const document::NumberedArc& a : arcs_) {
        arc (*a.arc);
    }
    if (depth_ > 0) {
        --depth_;
    }
    start_line ();
    to_.out += "</lattrix:network>\n";
}

} // namespace

void write_xml_block (const Network& network, PrintState& to, int depth) {
    to.numbering.restart ();
    BlockWriter (to, depth).write (network);
}

} // namespace ostrand::files
