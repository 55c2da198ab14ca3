// The records of a network in native text, read: what each holds, and what survives a fault.
#include "document/layout_index.h"
#include "document/markup.h"
#include "document/network.h"
#include "document/numbers.h"

#include "base/report.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace ostrand::document {
namespace {

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
        place = {0, n.network ()->place_of (n)};
        network = n.network ();
    } else {
        network = g.owner_network ();
        const auto& comps = network->comps ();
        const auto found = std::find_if (comps.begin (), comps.end (),
                                         [&g] (const auto& c) { return c.get () == &g; });
        place = {static_cast<std::size_t> (found - comps.begin ()), network->nodes ().size ()};
    }
    while (network != &root && network->holder () != nullptr) {
        const Node& holder = *network->holder ();
        place.push_back (2);
        network = holder.network ();
        place.push_back (network->place_of (holder));
    }
    std::reverse (place.begin (), place.end ());
    return place;
}

/// Notes an object under its id. Of two with one id that one stays which a search would meet first;
/// what comes later never changes the order of two that are there.
void note (IdTable& table, int id, GraphBase& g, const Network& root) {
    IdTable::Entry& entry = table[id];
    if (entry.object == nullptr ||
        (entry.object != &g && walk_place (g, root) < walk_place (*entry.object, root))) {
        entry.object = &g;
    }
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
    void take_nested_ids (IdTable& nested);
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
    /// "-", which is read over.
    bool read_absence ();
    /// "-" or an item; a bare letter becomes a line.
    std::unique_ptr<Char> read_label ();

    Network& network_;
    MarkupReader& reader_;
    double version_;
    int announced_nodes_ = 0;
    IdTable ids_; // of all that find_by_id reaches
};

void NetworkReader::read_header () {
    reader_.skip (); // the N
    announced_nodes_ = field ();
    const int comps = field ();
    network_.align_ = field ();
    network_.x_ = 0;
    network_.y_ = 0;
    const auto number_follows = [this] {
        reader_.skip_blanks ();
        return reader_.peek () == '-' || is_digit (reader_.peek ());
    };
    if (number_follows ()) network_.x_ = static_cast<float> (field ());
    if (number_follows ()) network_.y_ = static_cast<float> (field ());
    // A header may announce anything; a record takes some bytes.
    const std::size_t most = reader_.rest ().size () / 8;
    network_.nodes_.reserve (
        std::min (most, static_cast<std::size_t> (std::max (announced_nodes_, 0))));
    network_.comps_.reserve (std::min (most, static_cast<std::size_t> (std::max (comps, 0))));
}

bool NetworkReader::read_absence () {
    reader_.skip_blanks ();
    if (reader_.peek () != '-') return false;
    reader_.skip ();
    return true;
}

std::unique_ptr<Char> NetworkReader::read_label () {
    if (read_absence ()) return nullptr;
    return read_item (reader_);
}

void NetworkReader::read_compart () {
    const int id = field ();
    const int shape = field ();
    const float x = number ();
    const float y = number ();
    const float width = number ();
    const auto height = static_cast<float> (field ());
    auto made = std::make_unique<Compart> (shape, x, y, width, height);
    made->set_id (id);
    made->set_own_color (word ());
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
        std::array<int, 5> values = made->user_values ();
        if (!scan_user_values (reader_.rest ().substr (0, 256), values)) {
            report_message ("Compartment geometry format error: '%10.10s",
                            std::string (reader_.rest ().substr (0, 10)).c_str ());
        }
        made->set_user_values (values);
        reader_.skip_to ('}');
        reader_.skip ();
    }
    end_record ();
    // A search meets compartments last, in their order: what has the number already keeps it.
    GraphBase& added = network_.add_compart (std::move (made));
    IdTable::Entry& entry = ids_[id];
    if (entry.object == nullptr) entry.object = &added;
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
    std::unique_ptr<Char> label = read_label ();
    IdTable nested_ids;
    if (label && label->kind () == CharKind::network) nested_ids.swap (reader_.nested_ids);
    std::unique_ptr<Line> residu = read_absence () ? nullptr : read_line_field (reader_);
    const auto is_taken = [this] (int wanted) {
        const IdTable::Entry* const entry = ids_.find (wanted);
        return entry != nullptr && entry->is_own_node;
    };
    if (is_taken (id)) {
        report_message ("Node with duplicated: %d.", id);
        do {
            id = reader_.dup_id++;
        } while (is_taken (id));
    }
    auto made = std::make_unique<Node> (x, y, type, bg_color);
    made->set_id (id);
    made->take_label (std::move (label));
    made->take_residu (std::move (residu));
    const auto flag = [this] (char letter) {
        if (reader_.peek () != letter) return false;
        reader_.skip ();
        return true;
    };
    if (flag ('F')) made->set_own_fog (true);
    if (flag ('.')) made->set_selectable (false);
    if (flag ('%')) made->set_calyx_display (true);
    if (flag (';')) {
        made->set_multi_conc (true);
        reader_.multi_name = made->name ();
    }
    while (reader_.peek () == '$') { // numbers that older files have
        reader_.skip_to ('}');
        reader_.skip ();
    }
    const std::string_view rest = reader_.rest ();
    const std::string_view data = rest.substr (0, rest.find (']'));
    if (!data.empty ()) made->set_user_data (std::string (data));
    reader_.skip (data.size () + 1);

    Node& added = network_.add_node (std::move (made));
    network_.assign_compart (added);
    note (ids_, id, added, network_);
    ids_[id].is_own_node = true;
    if (nested_ids.size () > 0) take_nested_ids (nested_ids);
}

/// What is nested in a node is found through its network as well.
void NetworkReader::take_nested_ids (IdTable& nested) {
    nested.each ([] (int, IdTable::Entry& entry) { entry.is_own_node = false; });
    if (nested.size () > ids_.size ()) nested.swap (ids_); // the smaller goes into the larger
    nested.each ([this] (int id, IdTable::Entry& entry) {
        note (ids_, id, *entry.object, network_);
        if (entry.is_own_node) ids_[id].is_own_node = true;
    });
}

bool NetworkReader::read_field (Arque& arc, int id, int which) {
    static constexpr std::array<const char*, 4> names{"label", "residu", "src stoech",
                                                      "dest stoech"};
    reader_.skip_blanks ();
    if (reader_.peek () != '{') return true;
    std::unique_ptr<Line> line = read_braced_line (reader_);
    if (which < 2 && line->is_empty ()) line = nullptr;
    if (line && arc.foggy ()) line->set_fog (true);
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
        line->set_offset (offset.x, offset.y);
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
    GraphBase* source = ids_.object (to_int (source_id));
    if (source == nullptr) {
        report_message ("arc(%d): unknown source node id: %s.", id, format_g (source_id).c_str ());
        return false;
    }
    GraphBase* dest = ids_.object (to_int (dest_id));
    if (dest == nullptr) {
        report_message ("arc(%d): unknown destination id: %s.", id, format_g (dest_id).c_str ());
        return false;
    }
    Arque* arc = source->connect (*dest, arc_type_of_version (type, version_));
    if (arc == nullptr) {
        report_message ("format error in arc #%d from %d to %d.", id, to_int (source_id),
                        to_int (dest_id));
        skip_record ();
        return true;
    }
    arc->set_id (id);
    note (ids_, id, *arc, network_);
    if (reader_.peek () == 'F') {
        reader_.skip ();
        arc->set_own_fog (true);
    }
    bool whole = true;
    for (int which = 0; which < 4 && whole; ++which) whole = read_field (*arc, id, which);
    arc->set_own_color (color);
    arc->set_thickness (static_cast<unsigned char> (thickness));
    if (whole) end_record ();
    return true;
}

void NetworkReader::finish () {
    if (network_.nb_nodes () != announced_nodes_) {
        report_message ("Wrong number of nodes: %d in header, %d specified.", announced_nodes_,
                        network_.nb_nodes ());
    }
}

void NetworkReader::read () {
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
    reader_.nested_ids.swap (ids_);
    if (reader_.networks > 0) return; // what is nested is laid out with what is around it
    network_.multi_name_ = reader_.multi_name;
    network_.layout ();
}

Network::Network (MarkupReader& reader, double version) {
    NetworkReader (*this, reader, version).read ();
}

} // namespace ostrand::document
