// Where does each reaction stand? Chains run to the right from the head of a strip; what leaves or
// reaches a node besides the chain turns off to a free side; strips are stacked.
#include "files/import_steps.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <tuple>

namespace ostrand::files {
namespace {

constexpr long long vertical_length = 155;
constexpr int no_bound = 10000; // of the running bounds, before anything was placed

constexpr std::array<SideOffsets, 4> all_side_offsets{{
    {.enzyme = {0, -50}, .substrate = {60, 30}, .product = {-40, 30}},
    {.enzyme = {0, -50}, .substrate = {-60, 30}, .product = {40, 30}},
    {.enzyme = {-100, 0}, .substrate = {40, 30}, .product = {40, -30}},
    {.enzyme = {-100, 0}, .substrate = {40, -30}, .product = {40, 30}},
}};

/// Which sides of a node are tried in turn by what follows a reaction; the last is its own way
/// back.
constexpr std::array<std::array<Direction, 4>, 4> all_orders{{
    {Direction::right, Direction::down, Direction::up, Direction::left},
    {Direction::left, Direction::down, Direction::up, Direction::right},
    {Direction::down, Direction::right, Direction::left, Direction::up},
    {Direction::up, Direction::right, Direction::left, Direction::down},
}};

constexpr std::size_t index_of (Direction d) { return static_cast<std::size_t> (d); }

/// The sides of a node that are still free.
class FreeSides {
  public:
    explicit FreeSides (Direction direction) : order_ (all_orders[index_of (direction)]) {
        free_.fill (true);
        take (order_[3]);
    }
    void take (Direction d) { free_[index_of (d)] = false; }
    Direction pick () const {
        for (const std::size_t i : {1U, 2U, 0U}) {
            if (free_[index_of (order_[i])]) {
                return order_[i];
            }
        }
        return Direction::none;
    }

  private:
    const std::array<Direction, 4>& order_;
    std::array<bool, 4> free_{};
};

/// No place is farther away than this, however long the names: sums of two still fit an int.
constexpr long long farthest = 1'000'000'000;

int moved (int from, long long by) {
    return static_cast<int> (std::clamp (from + by, -farthest, farthest));
}

long long reaction_length (const ImportReaction& r) {
    const long long sides = r.substrates.size () > 1 || r.products.size () > 1 ? 200 : 100;
    return std::max (6LL * r.enzyme->name_length (), sides) +
           4LL * (r.substrate ()->name_length () + r.product ()->name_length ());
}

class Placer {
  public:
    explicit Placer (ImportTables& tables) : tables_ (tables) {}

    void run ();

  private:
    void place_strip (ImportReaction& head);
    void place (ImportReaction& r, Direction dir, int& x, int& y, const ImportReaction* stop);
    void take_place (ImportReaction& r, Direction dir, int& x, int& y);
    bool place_successors (ImportReaction& r, FreeSides& sides, const ImportReaction* stop);
    void place_others (ImportReaction& r, FreeSides& sides);
    ImportReaction* find_root (const ImportReaction& q);
    bool reaches (ImportReaction& from, const ImportReaction& q);
    long long path_length (ImportReaction& root, const ImportReaction& q, Direction d) const;
    void bound (int y) {
        low_ = std::min (low_, y);
        high_ = std::max (high_, y);
    }
    void stack_strips ();

    ImportTables& tables_;
    std::vector<ImportReaction*> round_; // placed in this strip
    int strip_ = 0;
    int low_ = no_bound;
    int high_ = -no_bound;
};

/// Steps that every placed reaction goes through: its ends, the room it needs, its node numbers.
void Placer::take_place (ImportReaction& r, Direction dir, int& x, int& y) {
    r.visited = true;
    r.strip = strip_;
    r.direction = dir;
    r.x1 = r.x2 = x;
    r.y1 = r.y2 = y;
    switch (dir) {
    case Direction::right: r.x2 = moved (x, reaction_length (r)); break;
    case Direction::left:
        r.x2 = moved (x, -reaction_length (r));
        tables_.min_x = std::min (tables_.min_x, r.x2);
        break;
    case Direction::down: r.y2 = moved (y, vertical_length); break;
    case Direction::up: r.y2 = moved (y, -vertical_length); break;
    case Direction::none: break;
    }
    const SideOffsets& o = side_offsets (dir);
    bound (r.y1);
    bound (r.y2);
    if (!r.inhibitors.empty ()) {
        bound ((r.y1 + r.y2) / 2 - o.enzyme.y);
    }
    for (std::size_t k = 1; k < r.substrates.size (); ++k) {
        bound (r.y1 + static_cast<int> (k) * o.substrate.y);
    }
    for (std::size_t k = 1; k < r.products.size (); ++k) {
        bound (r.y2 + static_cast<int> (k) * o.product.y);
    }
    round_.push_back (&r);
    x = r.x2;
    y = r.y2;
    if (r.substrate_id == 0) {
        r.substrate_id = ++tables_.last_node;
    }
    if (r.product_id == 0) {
        r.product_id = ++tables_.last_node;
    }
}

void Placer::place (ImportReaction& r, Direction dir, int& x, int& y, const ImportReaction* stop) {
    if (r.visited) {
        return;
    }
    take_place (r, dir, x, y);
    if (&r == stop || r.next.empty ()) {
        return;
    }
    FreeSides sides (dir);
    if (place_successors (r, sides, stop)) {
        place_others (r, sides);
    }
}

/// False when no side was left: what then remains heads strips of its own.
bool Placer::place_successors (ImportReaction& r, FreeSides& sides, const ImportReaction* stop) {
    Direction d = r.direction;
    for (std::size_t i = 0; i < r.next.size (); ++i) {
        ImportReaction& s = *r.next[i];
        if (s.visited) {
            continue;
        }
        sides.take (d);
        if (s.substrate_id == 0) {
            s.substrate_id = r.product_id;
        }
        int x = r.x2;
        int y = r.y2;
        place (s, d, x, y, stop);
        d = sides.pick ();
        if (d == Direction::none && i > 0) {
            for (std::size_t later = i + 1; later < r.next.size (); ++later) {
                r.next[later]->is_start = true;
            }
            return false;
        }
    }
    return true;
}

/// Other reactions that end on the same node: each is drawn from afar towards it.
void Placer::place_others (ImportReaction& r, FreeSides& sides) {
    for (ImportReaction* q : r.next.front ()->previous) {
        if (q->visited) {
            continue;
        }
        const Direction d = sides.pick ();
        if (d == Direction::none) {
            return;
        }
        sides.take (d);
        q->product_id = r.product_id;
        if (q->substrate () == r.substrate ()) {
            continue;
        }
        ImportReaction* root = find_root (*q);
        if (root == nullptr) {
            q->substrate_id = 0;
            continue;
        }
        const long long length = path_length (*root, *q, d);
        for (ImportReaction* any : tables_.reactions) {
            any->on_path = false;
        }
        int x = r.x2;
        int y = r.y2;
        Direction towards = Direction::none;
        switch (d) {
        case Direction::left:
            x = moved (x, -length);
            towards = Direction::right;
            break;
        case Direction::right:
            x = moved (x, length);
            towards = Direction::left;
            break;
        case Direction::down:
            y = moved (y, length);
            towards = Direction::up;
            break;
        case Direction::up:
            y = moved (y, -length);
            towards = Direction::down;
            break;
        case Direction::none: return;
        }
        place (*root, towards, x, y, q);
    }
}

/// The first start reaction, not yet placed, from which q can be reached; the way is marked.
ImportReaction* Placer::find_root (const ImportReaction& q) {
    ImportReaction* found = nullptr;
    for (ImportReaction* root : tables_.reactions) {
        // What an earlier root searched in vain needs no second search.
        if (root->is_start && !root->visited && reaches (*root, q)) {
            found = root;
            break;
        }
    }
    for (ImportReaction* r : tables_.reactions) {
        r->searched = false;
    }
    return found;
}

bool Placer::reaches (ImportReaction& from, const ImportReaction& q) {
    if (from.searched) {
        return false;
    }
    from.searched = true;
    const bool here = &from == &q || std::any_of (from.next.begin (), from.next.end (),
                                                  [&] (auto* s) { return reaches (*s, q); });
    if (here) {
        from.on_path = true;
    }
    return here;
}

long long Placer::path_length (ImportReaction& root, const ImportReaction& q, Direction d) const {
    if (&root == &q) {
        return 0;
    }
    const bool across = d == Direction::right || d == Direction::left;
    const auto length_of = [across] (const ImportReaction& r) {
        return across ? reaction_length (r) : vertical_length;
    };
    long long sum = 0;
    for (ImportReaction* r = &root; r != &q && r->product () != q.product ();) {
        sum += length_of (*r);
        const auto on = std::find_if (r->next.begin (), r->next.end (),
                                      [] (const auto* s) { return s->on_path; });
        if (on == r->next.end ()) {
            break;
        }
        (*on)->on_path = false;
        r = *on;
    }
    return sum + length_of (q);
}

void Placer::place_strip (ImportReaction& head) {
    int x = 0;
    int y = 0;
    place (head, Direction::right, x, y, nullptr);
    ++strip_;
    for (ImportReaction* r : round_) {
        r->strip_min_y = low_;
        r->strip_max_y = high_;
    }
    round_.clear ();
    low_ = no_bound;
    high_ = -no_bound;
}

void Placer::stack_strips () {
    std::vector<ImportReaction*>& list = tables_.reactions;
    std::sort (list.begin (), list.end (), [] (const ImportReaction* a, const ImportReaction* b) {
        return std::tuple (a->strip, a->index) < std::tuple (b->strip, b->index);
    });
    const ImportReaction* first = nullptr;
    int before = 0;
    long long offset = 0;
    int bottom = 0;
    for (ImportReaction* r : list) {
        if (tables_.is_virtual (*r)) {
            continue;
        }
        if (first == nullptr) {
            first = r;
            offset = 20LL - r->strip_min_y;
            bottom = r->strip_max_y;
        }
        if (r->strip != before) {
            offset += 50LL + bottom - r->strip_min_y;
            bottom = r->strip_max_y;
            before = r->strip;
        }
        r->y1 = moved (r->y1, offset);
        r->y2 = moved (r->y2, offset);
    }
}

void Placer::run () {
    for (ImportReaction* r : tables_.reactions) {
        r->visited = false;
    }
    for (ImportReaction* r : tables_.reactions) {
        if (r->is_start && !r->visited) {
            place_strip (*r);
        }
    }
    // Inside some cycles no rule reaches a reaction; it must be drawn all the same.
    for (ImportReaction* r : tables_.reactions) {
        if (!r->visited) {
            r->is_start = true;
            place_strip (*r);
        }
    }
    stack_strips ();
}

} // namespace

const SideOffsets& side_offsets (Direction direction) {
    return all_side_offsets[index_of (direction) % all_side_offsets.size ()];
}

void place_reactions (ImportTables& tables) { Placer (tables).run (); }

} // namespace ostrand::files
