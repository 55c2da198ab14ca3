// Which tree does a formula's text stand for?
#include "formula/parse.h"

#include "base/report.h"

#include <algorithm>
#include <utility>

namespace ostrand::formula {
namespace {

constexpr bool is_name_byte (char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}
constexpr bool is_quote (char c) { return c == '\'' || c == '"'; }

/// A node whose type and operands are still being found.
struct OpenNode {
    OperatorType type = OperatorType::unknown;
    std::string name;
    std::vector<std::unique_ptr<OpenNode>> children;
    int height = 1;
};
using OpenNodePtr = std::unique_ptr<OpenNode>;

OperatorPtr closed (const OpenNode* node) {
    if (node == nullptr) return nullptr;
    if (node->type == OperatorType::leaf) return make_leaf (node->name);
    std::vector<OperatorPtr> children;
    children.reserve (node->children.size ());
    for (const OpenNodePtr& child : node->children) children.push_back (closed (child.get ()));
    return make_operator (node->type, std::move (children));
}

/// One pass over the text with a stack of open nodes.
class Scan {
  public:
    explicit Scan (std::set<std::string>& variables) : variables_ (variables) {}

    OperatorPtr run (std::string_view formula) {
        bool quoted = false;
        for (std::size_t i = 0; i < formula.size () && !stopped_; ++i) {
            const char c = formula[i];
            if (is_name_byte (c)) {
                std::size_t end = i;
                while (end < formula.size () &&
                       (quoted ? !is_quote (formula[end]) : is_name_byte (formula[end]))) {
                    ++end;
                }
                name (std::string (formula.substr (i, end - i)));
                i = quoted ? end : end - 1; // the closing quote goes with its name
                quoted = false;
            } else if (is_quote (c)) {
                quoted = true;
            } else if (!quoted) {
                sign (c);
            }
        }
        return finish ();
    }

    bool beyond_bounds () const { return too_deep_ || too_large_; }

  private:
    void name (std::string text) {
        auto leaf = std::make_unique<OpenNode> ();
        leaf->type = OperatorType::leaf;
        leaf->name = text;
        variables_.insert (std::move (text));
        add (*current_, std::move (leaf));
        close_nots ();
    }

    void sign (char c) {
        switch (c) {
        case '(': open (OperatorType::unknown); break;
        case ')': close_group (); break;
        case '+': join (OperatorType::or_gate, OperatorType::and_gate); break;
        case '.': join (OperatorType::and_gate, OperatorType::or_gate); break;
        case '!': open (OperatorType::not_gate); break;
        default: break;
        }
    }

    void open (OperatorType type) {
        stack_.push_back (std::move (current_));
        current_ = std::make_unique<OpenNode> ();
        current_->type = type;
    }

    /// `other` of the same rank stands to the left: it becomes the first operand.
    void join (OperatorType type, OperatorType other) {
        if (current_->type == other) {
            auto whole = std::make_unique<OpenNode> ();
            add (*whole, std::move (current_));
            current_ = std::move (whole);
        }
        current_->type = type;
    }

    void close_group () {
        if (stack_.empty ()) {
            stopped_ = true;
            return;
        }
        fold ();
        pop ();
        close_nots ();
    }

    void close_nots () {
        while (current_->type == OperatorType::not_gate && !stack_.empty () && !too_deep_) {
            pop ();
        }
    }

    /// A group without an operator is what it holds; two operands without one stay as they are.
    void fold () {
        while (current_ && current_->type == OperatorType::unknown &&
               current_->children.size () <= 1) {
            OpenNodePtr inner;
            if (!current_->children.empty ()) inner = std::move (current_->children[0]);
            current_ = std::move (inner);
        }
    }

    /// The node below takes the current one as an operand and becomes current.
    void pop () {
        OpenNodePtr below = std::move (stack_.back ());
        stack_.pop_back ();
        if (current_) add (*below, std::move (current_));
        current_ = std::move (below);
    }

    void add (OpenNode& parent, OpenNodePtr child) {
        parent.height = std::max (parent.height, child->height + 1);
        too_deep_ = too_deep_ || parent.height > nesting_bound;
        too_large_ = too_large_ || ++size_ > size_bound;
        stopped_ = stopped_ || too_deep_ || too_large_;
        parent.children.push_back (std::move (child));
    }

    OperatorPtr finish () {
        while (!stack_.empty () && !too_deep_) pop ();
        if (too_deep_) {
            report_message ("The formula is nested deeper than %d operators.", nesting_bound);
            return nullptr;
        }
        if (too_large_) {
            report_message ("The formula has more than %d names and operators.", size_bound);
            return nullptr;
        }
        fold ();
        return closed (current_.get ());
    }

    std::set<std::string>& variables_;
    std::vector<OpenNodePtr> stack_;
    OpenNodePtr current_ = std::make_unique<OpenNode> ();
    int size_ = 0;           // nodes that became operands
    bool stopped_ = false;   // a ")" too many, or beyond a bound
    bool too_deep_ = false;  // from then on nothing is read
    bool too_large_ = false; // likewise
};

} // namespace

OperatorPtr FormCreator::parse (std::string_view formula) {
    Scan scan (variables_);
    OperatorPtr tree = scan.run (formula);
    refused_ = refused_ || scan.beyond_bounds ();
    return tree;
}

} // namespace ostrand::formula
