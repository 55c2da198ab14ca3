// The search in its plainest form, one thing after the other and every set by name: what the fast
// one must equal.
#pragma once
#include "formula/library.h"
#include "formula/operator.h"
#include "formula/variants.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ostrand::formula::plain {

/// A tree node with the gates that the search has put on it.
struct Node {
    OperatorType type = OperatorType::leaf;
    std::string name;
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> children;
    int position = -1;
    std::vector<const LibGate*> gates; // the last one innermost
};

inline std::unique_ptr<Node> copy_tree (const Operator& tree, Node* parent, int position) {
    auto node = std::make_unique<Node> ();
    node->type = tree.type ();
    node->name = tree.name ();
    node->parent = parent;
    node->position = position;
    int next = 0;
    for (const OperatorPtr& child : tree.children ()) {
        node->children.push_back (copy_tree (*child, node.get (), next++));
    }
    return node;
}

inline void flatten (Node* node, std::vector<Node*>& list) {
    list.push_back (node);
    for (const auto& child : node->children) flatten (child.get (), list);
}

struct Answer {
    std::vector<const LibGate*> gates; // in the order in which they were put on the tree
    std::set<std::string> ids;
};

class Search {
  public:
    /// bridges_below  YES gates are also put on operators below another operator, where they bridge
    ///                nothing
    Search (const Library& library, std::string output, std::set<std::string> formula_inputs,
            bool bridges_below)
        : library_ (library), output_ (std::move (output)),
          formula_inputs_ (std::move (formula_inputs)), bridges_below_ (bridges_below) {}

    void try_variant (const Operator& tree) {
        if (!tree.complete ()) return;
        const auto root = copy_tree (tree, nullptr, 0);
        list_.clear ();
        flatten (root.get (), list_);
        list_.push_back (nullptr);
        needed_count_.clear ();
        absent_count_.clear ();
        owned_count_.clear ();
        shared_count_.clear ();
        enzyme_count_.clear ();
        current_.clear ();
        try_node (list_[0], 0, output_);
    }

    /// Gates tried so far.
    std::size_t steps () const { return steps_; }
    /// From so many steps on the walk is given up.
    void set_step_bound (std::size_t steps) { step_bound_ = steps; }
    bool gave_up () const { return steps_ >= step_bound_; }

    /// The minimal answers; of equal ones the last.
    std::vector<Answer> minimal () const {
        std::vector<Answer> kept;
        for (const Answer& fresh : found_) {
            bool keep = true;
            std::vector<Answer> still;
            for (std::size_t i = 0; i < kept.size () && keep; ++i) {
                const auto& ids = kept[i].ids;
                const bool covers =
                    std::includes (fresh.ids.begin (), fresh.ids.end (), ids.begin (), ids.end ());
                const bool covered =
                    std::includes (ids.begin (), ids.end (), fresh.ids.begin (), fresh.ids.end ());
                if (covers && !covered) {
                    keep = false;
                } else if (!covered) {
                    still.push_back (kept[i]);
                }
            }
            if (!keep) continue;
            still.push_back (fresh);
            kept = std::move (still);
        }
        std::sort (kept.begin (), kept.end (), [] (const Answer& a, const Answer& b) {
            return line (a) != line (b) ? line (a) < line (b) : a.ids < b.ids;
        });
        return kept;
    }

    static std::string line (const Answer& answer) {
        std::string text;
        for (const std::string& id : answer.ids) text += (text.empty () ? "" : " ") + id;
        return text;
    }

  private:
    using Counts = std::map<std::string, int>;

    static bool has (const Counts& counts, const std::string& name) {
        return counts.find (name) != counts.end ();
    }
    static void add (Counts& counts, const std::set<std::string>& names, int by) {
        for (const std::string& name : names) {
            counts[name] += by;
            if (counts[name] == 0) counts.erase (name);
        }
    }

    void try_node (Node* node, std::size_t index, std::string wanted) {
        if (node == nullptr) {
            Answer answer;
            for (const LibGate* gate : current_) {
                if (std::find (answer.gates.begin (), answer.gates.end (), gate) !=
                    answer.gates.end ()) {
                    continue;
                }
                answer.gates.push_back (gate);
                for (const LibReaction* reaction : gate->reactions)
                    answer.ids.insert (reaction->id);
            }
            found_.push_back (answer);
        } else if (node->type == OperatorType::leaf) {
            const LibGate* gate = nullptr;
            if (!node->gates.empty ()) {
                gate = node->gates.back ();
            } else if (node->parent != nullptr) {
                gate = node->parent->gates.back ();
            }
            if (gate != nullptr) {
                if (wanted.empty ()) wanted = input (gate, node->position);
                if (wanted == node->name) {
                    try_node (list_[index + 1], index + 1, "");
                    return;
                }
            }
            try_gates (node, index, wanted, "YES");
        } else {
            if (node->parent != nullptr) {
                wanted = input (node->parent->gates.back (), node->position);
            }
            try_gates (node, index, wanted, std::string (gate_name (node->type)));
            if (node->parent == nullptr || bridges_below_) try_gates (node, index, wanted, "YES");
        }
    }

    static std::string input (const LibGate* gate, int position) {
        return position < static_cast<int> (gate->inputs.size ())
                   ? gate->inputs[static_cast<std::size_t> (position)]
                   : std::string ();
    }

    void try_gates (Node* node, std::size_t index, const std::string& wanted,
                    const std::string& type) {
        for (const LibGate* gate : library_.query (wanted, type)) {
            if (++steps_ >= step_bound_) return;
            if (!fits (gate, wanted)) continue;
            if (type == "YES") {
                std::string next = input (gate, 0);
                if (next.empty () && node->type == OperatorType::leaf) {
                    next = input (gate, node->position);
                }
                if (next == wanted) continue; // it would be entered for ever
            }
            node->gates.push_back (gate);
            count (gate, 1);
            current_.push_back (gate);
            if (type == "YES") {
                try_node (node, index, input (gate, 0));
            } else {
                try_node (list_[index + 1], index + 1, "");
            }
            current_.pop_back ();
            count (gate, -1);
            node->gates.pop_back ();
        }
    }

    bool fits (const LibGate* gate, const std::string& wanted) const {
        for (const std::string& name : gate->absent) {
            if (has (owned_count_, name) || has (shared_count_, name)) return false;
        }
        for (const std::string& name : gate->owned) {
            if (name == wanted) continue;
            if (has (absent_count_, name) || has (owned_count_, name) ||
                has (shared_count_, name)) {
                return false;
            }
        }
        for (const std::string& name : gate->shared) {
            if (name == wanted) continue;
            if (has (absent_count_, name) || has (owned_count_, name)) return false;
        }
        return !formula_inputs_.contains (gate->output);
    }

    void count (const LibGate* gate, int by) {
        add (needed_count_, gate->needed, by);
        add (absent_count_, gate->absent, by);
        add (owned_count_, gate->owned, by);
        add (shared_count_, gate->shared, by);
        add (enzyme_count_, gate->reaction_enzymes, by);
    }

    const Library& library_;
    std::string output_;
    std::set<std::string> formula_inputs_;
    bool bridges_below_;
    Counts needed_count_, absent_count_, owned_count_, shared_count_, enzyme_count_;
    std::vector<const LibGate*> current_;
    std::vector<Node*> list_;
    std::vector<Answer> found_;
    std::size_t steps_ = 0;
    std::size_t step_bound_ = static_cast<std::size_t> (-1);
};

} // namespace ostrand::formula::plain
