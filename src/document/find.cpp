// The search for nodes by their labels.
#include "document/network.h"

#include <algorithm>
#include <cmath>

namespace ostrand::document {
namespace {

/// Rows of nodes: two nodes that are this far apart stand in different ones.
constexpr float row_height = 70;

bool stands_before (const Node* a, const Node* b) {
    return std::fabs (a->y () - b->y ()) >= row_height ? a->y () < b->y () : a->x () < b->x ();
}

/// Sorts by merging. "Before" is no order in the strict sense, since rows run into one another, so
/// the library's sorts may not be used with it.
void sort_hits (std::vector<Node*>& hits) {
    std::vector<Node*> merged (hits.size ());
    for (std::size_t run = 1; run < hits.size (); run *= 2) {
        for (std::size_t from = 0; from < hits.size (); from += 2 * run) {
            const std::size_t middle = std::min (from + run, hits.size ());
            const std::size_t end = std::min (from + 2 * run, hits.size ());
            std::size_t a = from;
            std::size_t b = middle;
            for (std::size_t to = from; to < end; ++to) {
                const bool second = a == middle || (b < end && stands_before (hits[b], hits[a]));
                merged[to] = second ? hits[b++] : hits[a++];
            }
        }
        hits.swap (merged);
    }
}

} // namespace

int Network::find_nodes (const Line& pattern) {
    find_hits_.clear ();
    find_index_ = -1;
    for (const auto& n : nodes_) n->highlight = no_highlight;
    if (pattern.count () < 2) return 0;
    for (const auto& n : nodes_) {
        const Line* const line = n->label_line ();
        if (line != nullptr && line->contains (pattern)) find_hits_.push_back (n.get ());
    }
    sort_hits (find_hits_);
    if (!find_hits_.empty ()) {
        find_index_ = 0;
        find_hits_.front ()->highlight = find_highlight;
    }
    return static_cast<int> (find_hits_.size ());
}

Node* Network::find_next (bool forward) {
    const int next = find_index_ + (forward ? 1 : -1);
    if (find_index_ < 0 || next < 0 || next >= static_cast<int> (find_hits_.size ()))
        return nullptr;
    find_hits_[static_cast<std::size_t> (find_index_)]->highlight = no_highlight;
    find_index_ = next;
    Node* const hit = find_hits_[static_cast<std::size_t> (next)];
    hit->highlight = find_highlight;
    return hit;
}

/// A hit of a search goes; the current hit stays the current one, or the one before it becomes it.
void Network::forget_hit (const Node& n) {
    const auto hit = std::find (find_hits_.begin (), find_hits_.end (), &n);
    if (hit == find_hits_.end ()) return;
    const auto place = static_cast<int> (hit - find_hits_.begin ());
    find_hits_.erase (hit);
    if (find_index_ > place || find_index_ == static_cast<int> (find_hits_.size ())) --find_index_;
}

void Network::clear_find () {
    find_index_ = -1;
    for (const auto& n : nodes_) n->highlight = no_highlight;
}

} // namespace ostrand::document
