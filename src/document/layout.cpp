// Layout: places and sizes of what changed, and of what depends on it.
//
// A node depends on its texts. An arc depends on its source, on what it ends on and on its texts.
// So the nodes come first, then the arcs, an arc behind the arc that it ends on. A network in a
// node's label is laid out with its node.
#include "document/layout_index.h"
#include "document/network.h"
#include "document/parallel_arcs.h"

#include <algorithm>

namespace ostrand::document {
namespace {

/// Arcs that end on one another in a circle, and objects of nested networks that depend on what is
/// around these, might go on for ever; all others come to rest in one or two rounds.
constexpr int most_rounds = 8;

/// Number of networks around a node's own.
int depth_of (const Node& n) {
    int depth = 0;
    for (const Node* holder = n.network ()->holder (); holder != nullptr;
         holder = holder->network () == nullptr ? nullptr : holder->network ()->holder ()) {
        ++depth;
    }
    return depth;
}

/// The walk over a document meets the arcs of one node before those of another. Nested networks are
/// walked before what is around them.
bool walks_before (const Node& a, const Node& b) {
    const Node* one = &a;
    const Node* other = &b;
    const int depth = depth_of (a);
    const int other_depth = depth_of (b);
    if (depth != other_depth) return depth > other_depth;
    while (one->network () != other->network ()) {
        one = one->network ()->holder ();
        other = other->network ()->holder ();
        if (one == nullptr || other == nullptr) return true; // of two documents
    }
    return one->network ()->place_of (*one) <= other->network ()->place_of (*other);
}

} // namespace

/// One round of a network's layout.
class LayoutPass {
  public:
    explicit LayoutPass (Network& network)
        : network_ (network), waiting_ (network.passes_ += 3), begun_ (waiting_ + 1),
          done_ (waiting_ + 2) {}
    void run ();

  private:
    void lay_out_everything ();
    void lay_out_noted ();
    void note_from_elsewhere ();
    void take (Arque& a);
    static void choose_side (Arque& arc);
    void settle_sides (Arque& arc);
    bool is_to_be_computed (const Arque& a) const;
    void compute (Arque& arc);
    void compute_from (Arque& arc);
    void compute_circles (const std::vector<Arque*>& arcs);
    void count_in (Point edge);

    Network& network_;
    // Marks of arcs, larger than those of all passes before.
    std::uint32_t waiting_;
    std::uint32_t begun_;
    std::uint32_t done_;
    bool everything_ = false;
    std::vector<Arque*> arcs_;  // that were taken, of this network
    std::vector<Arque*> group_; // parallel arcs
    std::vector<Arque*> chain_;
    Point edge_; // right and bottom edge of what was laid out
    bool has_circle_ = false;
};

/// An arc is to be computed: by this pass when it is ours, else by its own network.
void LayoutPass::take (Arque& a) {
    if (a.owner_network () != &network_) {
        a.note ();
    } else if (!everything_ && a.walk_ < waiting_) {
        a.walk_ = waiting_;
        arcs_.push_back (&a);
    }
}

void LayoutPass::count_in (Point edge) {
    edge_.x = std::max (edge_.x, edge.x);
    edge_.y = std::max (edge_.y, edge.y);
}

void LayoutPass::lay_out_everything () {
    // Nothing needs a note while all is being looked at.
    Network::Notes& notes = network_.notes_;
    for (GraphBase* const g : notes.changed) g->note_place_ = GraphBase::nowhere;
    notes.changed.clear ();
    notes.everything = true;
    const bool is_new = network_.laid_out_generation_ == 0;
    network_.index_.reset ();
    for (const auto& c : network_.comps_) {
        c->lay_out ();
        count_in (far_edge (*c));
    }
    bool is_alone = network_.holder_ == nullptr;
    for (const auto& n : network_.nodes_) {
        n->lay_out ();
        count_in (far_edge (*n));
        is_alone = is_alone && n->nested () == nullptr;
        // In a new network the first of parallel arcs settles all of them, before any is computed.
        for (const auto& a : n->arcs_) {
            if (!is_new && a->side_stale_) settle_sides (*a);
        }
    }
    notes.everything = false;
    network_.laid_out_generation_ = metrics_generation ();
    for (const auto& n : network_.nodes_) {
        for (const auto& a : n->arcs_) {
            compute_from (*a);
            count_in (far_edge (*a));
        }
    }
    if (has_circle_) compute_circles (network_.all_arcs ());
    // An arc may have been computed behind what ends on it.
    if (has_circle_) edge_ = network_.measured_size ();
    if (!is_alone) note_from_elsewhere ();
}

/// Arcs of other networks that end here.
void LayoutPass::note_from_elsewhere () {
    const auto note_on = [this] (const GraphBase& g) {
        for (Arque* const b : g.incoming ()) take (*b);
    };
    for (const auto& c : network_.comps_) note_on (*c);
    for (const auto& n : network_.nodes_) {
        note_on (*n);
        for (const auto& a : n->arcs_) note_on (*a);
    }
}

void LayoutPass::lay_out_noted () {
    std::vector<GraphBase*> changed;
    changed.swap (network_.notes_.changed);
    for (GraphBase* const g : changed) g->note_place_ = GraphBase::nowhere;
    for (GraphBase* const g : changed) g->lay_out ();
    for (GraphBase* const g : changed) {
        if (g->kind () == CharKind::arque) {
            take (static_cast<Arque&> (*g));
            continue;
        }
        if (g->kind () == CharKind::node) {
            for (const auto& a : static_cast<Node&> (*g).arcs ()) take (*a);
        }
        for (Arque* const a : g->incoming ()) take (*a);
    }
    for (std::size_t i = 0; i < arcs_.size (); ++i) {
        if (arcs_[i]->side_stale_) settle_sides (*arcs_[i]);
    }
    for (std::size_t i = 0; i < arcs_.size (); ++i) {
        const Arque& a = *arcs_[i];
        for (Arque* const b : a.incoming ()) take (*b); // what ends on an arc follows it
        if (a.type_ == arc::catalysis && a.dest_arc () != nullptr) {
            // Links of a reaction reach as far as the label of its catalysis does.
            for (Arque* const b : a.dest_->incoming ()) take (*b);
        }
    }
    for (Arque* const a : arcs_) compute_from (*a);
    if (has_circle_) compute_circles (arcs_);
    LayoutIndex& index = network_.index ();
    for (GraphBase* const g : changed) {
        if (g->kind () != CharKind::arque) index.update (*g);
    }
    for (Arque* const a : arcs_) index.update (*a);
    edge_ = index.far_edge ();
}

void LayoutPass::choose_side (Arque& arc) {
    const Node* const to = arc.dest_node ();
    if (arc.side_ != 0 || to == nullptr) return;
    bool parallel = false;
    each_arc_between (*arc.source_, *to, [&] (Arque& b) {
        if (&b == &arc) return;
        parallel = true;
        if (arc.side_ == -2) {
            b.side_ = 2;
        } else {
            arc.side_ = b.side_ != -2 ? -2 : 2;
        }
    });
    if (parallel) return;
    each_arc_between (*to, *arc.source_, [&] (Arque& b) {
        if (arc.side_ == 1) {
            b.side_ = -1;
        } else {
            arc.side_ = b.side_ == 1 ? -1 : 1;
        }
    });
}

/// Parallel arcs step aside: two in one direction to either side, two in opposite directions
/// likewise. All of a group choose anew, in the order of the walk, so that their sides follow from
/// the arcs that are there and not from how they came there.
void LayoutPass::settle_sides (Arque& arc) {
    arc.side_stale_ = false;
    const Node* const from = arc.source_;
    const Node* const to = arc.dest_node ();
    group_.clear ();
    if (to != nullptr && to->network () != nullptr) {
        const bool in_order = walks_before (*from, *to);
        const auto add = [this] (Arque& b) { group_.push_back (&b); };
        each_arc_between (in_order ? *from : *to, in_order ? *to : *from, add);
        if (from != to) each_arc_between (in_order ? *to : *from, in_order ? *from : *to, add);
    }
    if (group_.size () < 2 && from != to) {
        arc.side_ = 0;
        return;
    }
    std::vector<ArcSide> before;
    before.reserve (group_.size ());
    for (Arque* const b : group_) {
        before.push_back (b->side_);
        b->side_ = 0;
        b->side_stale_ = false;
    }
    for (Arque* const b : group_) choose_side (*b);
    for (std::size_t i = 0; i < group_.size (); ++i) {
        if (group_[i]->side_ != before[i]) take (*group_[i]);
    }
}

bool LayoutPass::is_to_be_computed (const Arque& a) const {
    if (!everything_) return a.walk_ == waiting_;
    return a.walk_ < begun_ && a.owner_network () == &network_;
}

void LayoutPass::compute (Arque& arc) {
    if (everything_) {
        arc.lay_out ();
        if (arc.side_stale_) settle_sides (arc);
    }
    arc.compute_geometry ();
    arc.walk_ = done_;
}

/// Computes an arc behind the arcs that it hangs on by its end.
void LayoutPass::compute_from (Arque& arc) {
    if (!is_to_be_computed (arc)) return;
    Arque* on = arc.dest_arc ();
    if (on == nullptr) {
        compute (arc);
        return;
    }
    arc.walk_ = begun_;
    chain_.assign (1, &arc);
    for (; on != nullptr && is_to_be_computed (*on); on = on->dest_arc ()) {
        on->walk_ = begun_;
        chain_.push_back (on);
    }
    if (on != nullptr && on->walk_ == begun_) has_circle_ = true;
    for (auto a = chain_.rbegin (); a != chain_.rend (); ++a) compute (**a);
}

void LayoutPass::compute_circles (const std::vector<Arque*>& arcs) {
    bool changed = true;
    for (int round = 0; changed && round < most_rounds; ++round) {
        changed = false;
        for (Arque* const a : arcs) {
            const ArcGeometry before = a->geometry_;
            a->compute_geometry ();
            changed = changed || !(before == a->geometry_);
        }
    }
}

void LayoutPass::run () {
    everything_ =
        network_.notes_.everything || network_.laid_out_generation_ != metrics_generation ();
    network_.notes_.something_left = false;
    if (everything_) {
        lay_out_everything ();
    } else {
        lay_out_noted ();
    }
    network_.width_ = edge_.x;
    network_.height_ = edge_.y;
}

// The network's side of it

bool Network::is_clean () const {
    return !notes_.everything && !notes_.something_left && notes_.changed.empty ();
}

bool Network::is_laid_out () const {
    return is_clean () && laid_out_generation_ == metrics_generation ();
}

void Network::stir () {
    if (holder_ != nullptr) {
        holder_->content_changed ();
    } else if (parent_ != nullptr && parent_->kind () == CharKind::line) {
        parent_->content_changed ();
    }
}

void Network::note (GraphBase& g) {
    if (notes_.everything || g.note_place_ != GraphBase::nowhere) return;
    const bool was_clean = is_clean ();
    g.note_place_ = static_cast<std::uint32_t> (notes_.changed.size ());
    notes_.changed.push_back (&g);
    if (was_clean) stir ();
}

void Network::start_anew () {
    const bool was_clean = is_clean ();
    for (GraphBase* const g : notes_.changed) g->note_place_ = GraphBase::nowhere;
    notes_.changed.clear ();
    notes_.everything = true;
    index_.reset ();
    forget_ids ();
    if (was_clean) stir ();
}

void Network::lay_out () {
    for (int round = 0; !is_laid_out () && round < most_rounds; ++round) LayoutPass (*this).run ();
    for (GraphBase* const g : notes_.changed) g->note_place_ = GraphBase::nowhere;
    notes_.changed.clear ();
}

void Network::layout () {
    const float old_width = width_;
    const float old_height = height_;
    lay_out ();
    if (width_ != old_width || height_ != old_height) stir ();
}

LayoutIndex& Network::index () const {
    // A cache: it says nothing that the objects do not say.
    if (!index_) index_ = std::make_unique<LayoutIndex> (const_cast<Network&> (*this));
    return *index_;
}

} // namespace ostrand::document
