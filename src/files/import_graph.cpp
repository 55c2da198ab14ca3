// Which reactions follow which? Links, hubs, components and depths, and the order in which the
// chains are laid out: the longest of the biggest components first.
#include "base/report.h"
#include "files/import_steps.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

namespace ostrand::files {
namespace {

class GraphBuilder {
  public:
    explicit GraphBuilder (ImportTables& tables) : tables_ (tables), list_ (tables.reactions) {}

    bool run ();

  private:
    bool link ();
    bool make_hubs ();
    bool make_hub (ImportReaction& first, ImportReaction*& hub);
    bool join (ImportReaction& hub, ImportReaction& r);
    void find_components ();
    void flood (ImportReaction& from, int component);
    void find_depths ();
    int measure (ImportReaction& r);
    bool ranks_before (const ImportReaction* a, const ImportReaction* b) const;
    void clear_visited () {
        for (ImportReaction* r : list_) {
            r->visited = false;
        }
    }

    ImportTables& tables_;
    std::vector<ImportReaction*>& list_;
};

bool too_many_links (const ImportSpecies& species) {
    report_message ("Too many reactions at '%s' (max = %d).", species.name.c_str (),
                    static_cast<int> (most_links));
    return false;
}

bool GraphBuilder::link () {
    std::unordered_map<const ImportSpecies*, std::vector<ImportReaction*>> by_substrate;
    for (ImportReaction* r : list_) {
        by_substrate[r->substrate ()].push_back (r);
    }
    for (ImportReaction* r : list_) {
        r->product ()->produced = true;
        const auto found = by_substrate.find (r->product ());
        if (found == by_substrate.end ()) {
            continue;
        }
        for (ImportReaction* s : found->second) {
            if (s == r) {
                continue;
            }
            if (r->next.size () >= most_links || s->previous.size () >= most_links) {
                return too_many_links (*r->product ());
            }
            r->next.push_back (s);
            s->previous.push_back (r);
        }
    }
    std::unordered_map<const ImportSpecies*, std::vector<const Inhibition*>> by_enzyme;
    for (const Inhibition& i : tables_.inhibitions) {
        by_enzyme[i.enzyme].push_back (&i);
    }
    for (ImportReaction* r : list_) {
        r->is_start = !r->substrate ()->produced;
        const auto found = by_enzyme.find (r->enzyme);
        if (found == by_enzyme.end ()) {
            continue;
        }
        for (const Inhibition* i : found->second) {
            if (r->inhibitors.size () >= most_participants) {
                report_message ("Too many inhibitors of '%s' (max = %d).", r->enzyme->name.c_str (),
                                static_cast<int> (most_participants));
                return false;
            }
            r->inhibitors.push_back (i->inhibitor);
            r->inhibitor_rate.push_back (i->rate);
        }
    }
    return true;
}

bool GraphBuilder::join (ImportReaction& hub, ImportReaction& r) {
    if (hub.next.size () >= most_links || r.previous.size () >= most_links) {
        return too_many_links (*r.substrate ());
    }
    hub.next.push_back (&r);
    r.previous.push_back (&hub);
    return true;
}

bool GraphBuilder::make_hub (ImportReaction& first, ImportReaction*& hub) {
    if (list_.size () >= most_import_reactions) {
        report_message ("Too many reactions");
        return false;
    }
    ImportSpecies* foo = tables_.intern ("foo");
    ImportSpecies* enz = foo != nullptr ? tables_.intern ("enz") : nullptr;
    if (enz == nullptr) {
        report_message ("Species hashtable full");
        return false;
    }
    ImportSpecies* product = first.substrate (); // before the list may move
    hub = &tables_.add_reaction ();
    hub->substrates = {foo, tables_.first_slot ()};
    hub->products = {product};
    hub->enzyme = enz;
    hub->is_start = true;
    tables_.first_virtual = std::min (tables_.first_virtual, hub->index);
    return true;
}

/// Start reactions that share a main substrate leave one node: a reaction is made up that produces
/// it, and they follow that one.
bool GraphBuilder::make_hubs () {
    const std::size_t real = list_.size ();
    ImportReaction* hub = nullptr; // of the run that goes on
    for (std::size_t i = 1; i <= real; ++i) {
        ImportReaction* prev = list_[i - 1];
        ImportReaction* cur = i < real ? list_[i] : nullptr;
        if (hub == nullptr && (cur == nullptr || !cur->is_start)) {
            break;
        }
        if (cur != nullptr && cur->substrate () == prev->substrate ()) {
            prev->is_start = false;
            if (hub == nullptr && !make_hub (*prev, hub)) {
                return false;
            }
            if (!join (*hub, *prev)) {
                return false;
            }
        } else if (hub != nullptr) {
            if (!join (*hub, *prev)) {
                return false;
            }
            prev->is_start = false;
            hub = nullptr;
        }
    }
    return true;
}

void GraphBuilder::flood (ImportReaction& from, int component) {
    std::vector<ImportReaction*> open{&from};
    from.visited = true;
    while (!open.empty ()) {
        ImportReaction* r = open.back ();
        open.pop_back ();
        r->component = component;
        ++tables_.component_size[static_cast<std::size_t> (component)];
        for (const auto* links : {&r->next, &r->previous}) {
            for (ImportReaction* neighbour : *links) {
                if (neighbour->visited) {
                    continue;
                }
                neighbour->visited = true;
                open.push_back (neighbour);
            }
        }
    }
}

void GraphBuilder::find_components () {
    clear_visited ();
    std::unordered_map<const ImportSpecies*, std::vector<ImportReaction*>> starts;
    for (ImportReaction* r : list_) {
        if (r->is_start) {
            starts[r->substrate ()].push_back (r);
        }
    }
    int component = 0;
    for (ImportReaction* r : list_) {
        if (!r->is_start || r->visited) {
            continue;
        }
        tables_.component_size.push_back (0);
        flood (*r, component);
        for (ImportReaction* other : starts[r->substrate ()]) {
            if (!other->visited) {
                flood (*other, component);
            }
        }
        ++component;
    }
    // What is left hangs on no start: cycles, and what only they reach.
    for (ImportReaction* r : list_) {
        if (r->visited) {
            continue;
        }
        r->is_start = true;
        tables_.component_size.push_back (0);
        flood (*r, component++);
    }
}

bool GraphBuilder::ranks_before (const ImportReaction* a, const ImportReaction* b) const {
    const auto rank = [this] (const ImportReaction* r) {
        return std::tuple (
            r->depth, tables_.component_size[static_cast<std::size_t> (r->component)], r->index);
    };
    return rank (a) > rank (b);
}

int GraphBuilder::measure (ImportReaction& r) {
    r.visited = true;
    int result = 1;
    for (ImportReaction* s : r.next) {
        if (s->visited) {
            s->depth = 1;
            result = std::max (result, 2);
        } else {
            s->depth = measure (*s);
            result = std::max (result, s->depth + 1);
        }
    }
    std::sort (r.next.begin (), r.next.end (),
               [this] (const auto* a, const auto* b) { return ranks_before (a, b); });
    return result;
}

void GraphBuilder::find_depths () {
    clear_visited ();
    for (ImportReaction* r : list_) {
        if (!r->is_start) {
            continue;
        }
        r->depth = measure (*r);
        clear_visited ();
    }
}

bool GraphBuilder::run () {
    if (!link ()) {
        return false;
    }
    std::sort (list_.begin (), list_.end (), [] (const ImportReaction* a, const ImportReaction* b) {
        return std::tuple (a->is_start, a->substrate ()->slot, a->index) >
               std::tuple (b->is_start, b->substrate ()->slot, b->index);
    });
    if (!make_hubs ()) {
        return false;
    }
    find_components ();
    find_depths ();
    std::sort (list_.begin (), list_.end (),
               [this] (const auto* a, const auto* b) { return ranks_before (a, b); });
    return true;
}

} // namespace

bool build_graph (ImportTables& tables) { return GraphBuilder (tables).run (); }

} // namespace ostrand::files
