// The records of a network in native text, read: what each holds, and what survives a fault.
#include "document/markup.h"
#include "document/network.h"
#include "document/numbers.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace ostrand::document {
namespace {

using IdIndex = std::unordered_map<int, GraphBase*>;

/// Where find_by_id of `root` meets an object: compared as a word, the smaller is met first.
std::vector<std::size_t> walk_place (const GraphBase& g, const Network& root) {
    std::vector<std::size_t> place; // built from the end
    const Network* network = nullptr;
    if (g.kind () == CharKind::arque) {
        const auto& a = static_cast<const Arque&> (g);
        place = {a.source ()->place_of (a), 1, a.owner_network ()->place_of (*a.source ())};
        network = a.owner_network ();
    } else if (g.kind () == CharKind::node) {
        const auto& n = static_cast<const Node&> (g);
        place = {0, n.network->place_of (n)};
        network = n.network;
    } else {
        network = g.owner_network ();
        const auto& comps = network->comps ();
        const auto found = std::find_if (comps.begin (), comps.end (),
                                         [&g] (const auto& c) { return c.get () == &g; });
        place = {static_cast<std::size_t> (found - comps.begin ()), network->nodes ().size ()};
    }
    while (network != &root && network->holder != nullptr) {
        const Node& holder = *network->holder;
        place.push_back (2);
        network = holder.network;
        place.push_back (network->place_of (holder));
    }
    std::reverse (place.begin (), place.end ());
    return place;
}

/// Notes an object under its id. Of two with one id that one stays which a search would meet first;
/// what comes later never changes the order of two that are there.
void note (IdIndex& index, int id, GraphBase& g, const Network& root) {
    const auto [slot, fresh] = index.emplace (id, &g);
    if (fresh || slot->second == &g) return;
    if (walk_place (g, root) < walk_place (*slot->second, root)) slot->second = &g;
}

/// scanf's "%d" in a text: white space, sign, digits; the place goes behind them. The "+" that
/// parts the numbers of a file may stand before the sign of a negative one.
bool scan_int (std::string_view text, std::size_t& at, int& value) {
    std::size_t i = at;
    while (i < text.size () && is_space (text[i])) ++i;
    if (text.substr (i).starts_with ("+-")) ++i;
    std::size_t digits = i;
    if (digits < text.size () && (text[digits] == '-' || text[digits] == '+')) ++digits;
    if (digits >= text.size () || !is_digit (text[digits])) return false;
    at = digits;
    while (at < text.size () && is_digit (text[at])) ++at;
    value = parse_atoi (text.substr (i, at - i));
    return true;
}

/// The five numbers of "{a:b+c+d+e}", the text standing behind the "{"; false when some are
/// missing. Those that are there are taken.
bool scan_user_values (std::string_view text, std::array<int, 5>& values) {
    std::size_t at = 0;
    for (std::size_t i = 0; i < values.size (); ++i) {
        if (i == 1) {
            if (at >= text.size () || text[at] != ':') return false;
            ++at;
        }
        if (!scan_int (text, at, values[i])) return false;
    }
    return true;
}

/// Arc types of files up to version 1.0, where the two kinds of links were the other way round.
unsigned type_of_version (unsigned type, double version) {
    if (version > 1.0) return type;
    switch (type) {
    case 0x400:
    case 0x410: return arc::substrate;
    case 0x201: return arc::product;
    case 0x211: return arc::reversible_product;
    case 0x411: return arc::reversible_substrate;
    default: return type;
    }
}

} // namespace

/// Reads the records of one network.
class NetworkReader {
  public:
    NetworkReader (Network& network, MarkupReader& reader, double version)
        : network_ (network), reader_ (reader), version_ (version) {}

    void read ();

  private:
    void read_header ();
    void read_compart ();
    void read_node ();
    bool read_arc ();
    bool read_field (Arque& arc, int id, int which);
    void finish ();
    int field () {
        reader_.skip_blanks ();
        return read_int (reader_);
    }
    float number () {
        reader_.skip_blanks ();
        return read_number (reader_);
    }
    std::uint32_t word () {
        reader_.skip_blanks ();
        return read_word (reader_);
    }
    void skip_record () {
        reader_.skip_to (']');
        reader_.skip ();
    }
    void end_record () {
        reader_.skip_blanks ();
        if (reader_.peek () == ']') reader_.skip ();
    }
    /// "-" or an item; a bare letter becomes a line.
    std::unique_ptr<Char> read_text_field ();
    GraphBase* find (int id) const {
        const auto found = index_.find (id);
        return found == index_.end () ? nullptr : found->second;
    }

    Network& network_;
    MarkupReader& reader_;
    double version_;
    int announced_nodes_ = 0;
    IdIndex index_;                    // of all that find_by_id reaches
    std::unordered_set<int> node_ids_; // of this network's own nodes
};

void NetworkReader::read_header () {
    reader_.skip (); // the N
    announced_nodes_ = field ();
    const int comps = field ();
    network_.align = field ();
    network_.x = 0;
    network_.y = 0;
    const auto number_follows = [this] {
        reader_.skip_blanks ();
        return reader_.peek () == '-' || is_digit (reader_.peek ());
    };
    if (number_follows ()) network_.x = static_cast<float> (field ());
    if (number_follows ()) network_.y = static_cast<float> (field ());
    // A header may announce anything; a record takes some bytes.
    const std::size_t most = reader_.rest ().size () / 8;
    network_.nodes_.reserve (
        std::min (most, static_cast<std::size_t> (std::max (announced_nodes_, 0))));
    network_.comps_.reserve (std::min (most, static_cast<std::size_t> (std::max (comps, 0))));
}

std::unique_ptr<Char> NetworkReader::read_text_field () {
    reader_.skip_blanks ();
    if (reader_.peek () == '-') {
        reader_.skip ();
        return nullptr;
    }
    std::unique_ptr<Char> item = read_item (reader_);
    if (item && item->kind () == CharKind::std_char) return line_from_item (std::move (item));
    return item;
}

void NetworkReader::read_compart () {
    const int id = field ();
    const int shape = field ();
    const float x = number ();
    const float y = number ();
    const float width = number ();
    const auto height = static_cast<float> (field ());
    auto made = std::make_unique<Compart> (shape, x, y, width, height);
    made->id = id;
    made->color = word ();
    reader_.skip_blanks ();
    if (reader_.peek () == '{') {
        made->take_label (read_braced_line (reader_));
    } else {
        if (reader_.peek () == '-') reader_.skip ();
        made->take_label (std::make_unique<Line> (format_text ("Comp%d", id),
                                                  document_state ().default_font,
                                                  document_state ().default_color));
    }
    reader_.skip_blanks ();
    if (reader_.peek () == '{') {
        reader_.skip ();
        if (!scan_user_values (reader_.rest ().substr (0, 256), made->user_values)) {
            report_message ("Compartment geometry format error: '%10.10s",
                            std::string (reader_.rest ().substr (0, 10)).c_str ());
        }
        reader_.skip_to ('}');
        reader_.skip ();
    }
    end_record ();
    // A search meets compartments last, in their order: what has the number already keeps it.
    index_.emplace (id, &network_.add_compart (std::move (made)));
}

void NetworkReader::read_node () {
    int id = field ();
    field (); // the number of arcs: they tell themselves
    const float x = number ();
    const float y = number ();
    word (); // the outline is black whatever the file says
    const unsigned bg_color = word ();
    const unsigned type = word ();
    reader_.nested_ids.clear ();
    std::unique_ptr<Char> label = read_text_field ();
    IdIndex nested_ids;
    if (label && label->kind () == CharKind::network) nested_ids.swap (reader_.nested_ids);
    std::unique_ptr<Line> residu = line_from_item (read_text_field ());
    if (node_ids_.contains (id)) {
        report_message ("Node with duplicated: %d.", id);
        int& next = document_state ().dup_id;
        do {
            id = next++;
        } while (node_ids_.contains (id));
    }
    auto made = std::make_unique<Node> (x, y, type, bg_color);
    made->id = id;
    made->take_label (std::move (label));
    made->take_residu (std::move (residu));
    const auto flag = [this] (char letter) {
        if (reader_.peek () != letter) return false;
        reader_.skip ();
        return true;
    };
    if (flag ('F')) {
        made->foggy = true;
        if (made->label) made->label->set_fog (true);
        if (made->residu) made->residu->set_fog (true);
    }
    if (flag ('.')) made->selectable = false;
    if (flag ('%')) made->calyx_display = true;
    if (flag (';')) {
        made->multi_conc = true;
        document_state ().multi_name = made->name ();
    }
    while (reader_.peek () == '$') { // numbers that older files have
        reader_.skip_to ('}');
        reader_.skip ();
    }
    const std::string_view rest = reader_.rest ();
    const std::string_view data = rest.substr (0, rest.find (']'));
    if (!data.empty ()) made->user_data = std::string (data);
    reader_.skip (data.size () + 1);

    Node& added = network_.add_node (std::move (made));
    network_.assign_compart (added);
    node_ids_.insert (id);
    note (index_, id, added, network_);
    if (nested_ids.size () > index_.size ()) {
        // The smaller goes into the larger.
        nested_ids.swap (index_);
    }
    for (const auto& [nested_id, g] : nested_ids) note (index_, nested_id, *g, network_);
}

bool NetworkReader::read_field (Arque& arc, int id, int which) {
    static constexpr std::array<const char*, 4> names{"label", "residu", "src stoech",
                                                      "dest stoech"};
    reader_.skip_blanks ();
    if (reader_.peek () != '{') return true;
    std::unique_ptr<Line> line = read_braced_line (reader_);
    if (which < 2 && line->is_empty ()) line = nullptr;
    if (line && arc.foggy) line->set_fog (true);
    Point offset;
    bool well_formed = true;
    if (reader_.peek () == '(') {
        reader_.skip ();
        offset.x = number ();
        offset.y = number ();
        well_formed = reader_.peek () == ')';
        if (well_formed) reader_.skip ();
    }
    if (line) {
        line->x = offset.x;
        line->y = offset.y;
        switch (which) {
        case 0: arc.take_label (std::move (line)); break;
        case 1: arc.take_residu (std::move (line)); break;
        case 2: arc.take_stoech_src (std::move (line)); break;
        default: arc.take_stoech_dest (std::move (line));
        }
    }
    if (!well_formed) {
        report_message ("format error in %s offset (arc #%d).",
                        names[static_cast<std::size_t> (which)], id);
        skip_record ();
    }
    return well_formed;
}

bool NetworkReader::read_arc () {
    const int id = field ();
    const std::uint32_t color = word ();
    const std::uint32_t type = word ();
    const int thickness = field ();
    const float source_id = number ();
    const float dest_id = number ();
    GraphBase* source = find (to_int (source_id));
    if (source == nullptr) {
        report_message ("arc(%d): unknown source node id: %s.", id, format_g (source_id).c_str ());
        return false;
    }
    GraphBase* dest = find (to_int (dest_id));
    if (dest == nullptr) {
        report_message ("arc(%d): unknown destination id: %s.", id, format_g (dest_id).c_str ());
        return false;
    }
    Arque* arc = source->connect (*dest, type_of_version (type, version_));
    if (arc == nullptr) {
        report_message ("format error in arc #%d from %d to %d.", id, to_int (source_id),
                        to_int (dest_id));
        skip_record ();
        return true;
    }
    arc->id = id;
    note (index_, id, *arc, network_);
    if (reader_.peek () == 'F') {
        reader_.skip ();
        arc->foggy = true;
    }
    bool whole = true;
    for (int which = 0; which < 4 && whole; ++which) whole = read_field (*arc, id, which);
    arc->color = color;
    arc->thickness = static_cast<unsigned char> (thickness);
    if (whole) end_record ();
    return true;
}

void NetworkReader::finish () {
    if (network_.nb_nodes () != announced_nodes_) {
        report_message ("Wrong number of nodes: %d in header, %d specified.", announced_nodes_,
                        network_.nb_nodes ());
    }
    document_state ().next_id =
        network_.nb_nodes () + network_.nb_comp () + network_.count_arcs () + 1;
}

void NetworkReader::read () {
    mark_layout_dirty ();
    ++reader_.networks;
    read_header ();
    bool open = true;
    while (open) {
        const char c = reader_.peek ();
        switch (c) {
        case ' ':
        case '\t':
        case '\n':
        case '\r': reader_.skip (); continue;
        case '#': reader_.skip_to ('\n'); continue;
        case ']':
            reader_.skip ();
            finish ();
            open = false;
            continue;
        case '[': {
            reader_.skip ();
            const char kind = reader_.peek ();
            if (kind != 'C' && kind != 'S' && kind != 'A') continue;
            reader_.skip ();
            if (kind == 'C') {
                read_compart ();
            } else if (kind == 'S') {
                read_node ();
            } else {
                open = read_arc ();
            }
            continue;
        }
        default: {
            if (reader_.too_deep) {
                open = false; // told already
                continue;
            }
            const std::size_t before = std::min<std::size_t> (reader_.at, 10);
            report_message ("Format error: s-10 = '%30.30s'",
                            std::string (reader_.text.substr (reader_.at - before, 30)).c_str ());
            open = false;
        }
        }
    }
    --reader_.networks;
    reader_.nested_ids = std::move (index_);
    // What is nested in this network is laid out with it.
    if (reader_.networks == 0) network_.layout ();
}

Network::Network (MarkupReader& reader, double version) {
    NetworkReader (*this, reader, version).read ();
}

} // namespace ostrand::document
