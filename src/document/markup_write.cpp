// The writer's state: running style, bytes of letters, the order of arcs.
#include "document/markup.h"

#include "document/network.h"

#include <algorithm>

namespace ostrand::document {

void PrintState::write_style (unsigned new_font, unsigned new_color) {
    if (new_font != font && new_font != no_font) {
        out += '<';
        append_int (out, static_cast<int> (new_font));
        out += "F>";
        font = new_font;
    }
    if (new_color != color && new_color != no_color) {
        out += '<';
        append_color (out, new_color);
        out += "C>";
        color = new_color;
    }
}

void PrintState::start_record (int depth) {
    if (depth <= 0) return;
    out += '\n';
    out.append (static_cast<std::size_t> (depth - 1), '\t');
}

void append_code (std::string& out, unsigned code) {
    if (code >= 192) {
        out += '\xC3';
        out += static_cast<char> (code - 64);
    } else if (code >= 128) {
        out += '\xC2';
        out += static_cast<char> (code);
    } else {
        out += static_cast<char> (code);
    }
}

unsigned settled_font (unsigned font) {
    constexpr unsigned exact_in_a_float = 1U << 24;
    if (font < exact_in_a_float) return font;
    return to_word (static_cast<float> (static_cast<int> (font)));
}

std::string settled_user_data (std::string_view data) {
    std::string safe;
    for (const char c : data) {
        if (c != ']' && c != '\0') safe += c;
    }
    static constexpr std::string_view flags = "F.%;$";
    if (!safe.empty () && flags.find (safe.front ()) != std::string_view::npos) {
        safe.insert (safe.begin (), ' ');
    }
    return safe;
}

namespace {

/// True when the object's network is `root` or nested in it.
bool is_within (const GraphBase& g, const Network& root) {
    for (const Network* network = g.owner_network (); network != nullptr;
         network = network->holder () == nullptr ? nullptr : network->holder ()->network ()) {
        if (network == &root) return true;
    }
    return false;
}

} // namespace

ArcOrder::ArcOrder (const Network& root, const Numbering& numbering, bool is_alone)
    : root_ (root), numbering_ (numbering), is_alone_ (is_alone) {}

bool ArcOrder::is_lost (const GraphBase* end) const {
    return end == nullptr || (!is_alone_ && !is_within (*end, root_)) ||
           (!lost_.empty () && lost_.contains (end));
}

bool ArcOrder::goes_now (NumberedArc& a) {
    const GraphBase* const end = a.arc->dest ();
    if (is_lost (end)) {
        lost_.insert (a.arc);
        return false;
    }
    a.dest = numbering_.of (end); // which has none yet when it comes later
    const bool waits =
        a.dest == no_id || a.id <= a.dest || (!behind_.empty () && behind_.contains (end));
    if (waits) {
        behind_[a.arc];
        held_.push_back (a);
    }
    return !waits;
}

std::vector<NumberedArc> ArcOrder::held_back () {
    std::vector<NumberedArc> ready;
    for (NumberedArc& a : held_) {
        const GraphBase* const end = a.arc->dest ();
        a.dest = numbering_.of (end);
        const auto before = behind_.find (end);
        if (before != behind_.end ()) {
            before->second.push_back (a);
        } else if (a.dest != no_id && !is_lost (end)) {
            ready.push_back (a);
        }
    }
    std::vector<NumberedArc> order;
    for (const NumberedArc& first : ready) {
        std::vector<NumberedArc> open{first};
        while (!open.empty ()) {
            const NumberedArc a = open.back ();
            open.pop_back ();
            order.push_back (a);
            const std::vector<NumberedArc>& behind = behind_[a.arc];
            open.insert (open.end (), behind.rbegin (), behind.rend ());
        }
    }
    return order;
}

void to_file_order (std::vector<NumberedArc>& arcs, const Network& root, const Numbering& numbering,
                    bool is_alone) {
    ArcOrder order (root, numbering, is_alone);
    std::erase_if (arcs, [&order] (NumberedArc& a) { return !order.goes_now (a); });
    const std::vector<NumberedArc> held = order.held_back ();
    arcs.insert (arcs.end (), held.begin (), held.end ());
}

} // namespace ostrand::document
