// What is a node of a formula, and how does it read as text?
#include "formula/operator.h"

#include "base/disk.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace ostrand::formula {
namespace {

struct TypeRow {
    std::string_view gate;
    std::string_view separator;
};
/// Indexed by the type's code.
constexpr std::array<TypeRow, operator_type_count> type_rows{{
    {"UNKNOW", " ? "},
    {"AND", " . "},
    {"OR", " + "},
    {"NOT", "!"},
    {"ANDNOT", " !.! "},
    {"NOTAND", " !.! "},
    {"ORNOT", " !+! "},
    {"NOTOR", " !+! "},
    {"OR3", " 3+3 "},
    {"AND3", " 3.3 "},
}};

bool is_mixed (OperatorType type) {
    return type >= OperatorType::and_not && type <= OperatorType::not_or;
}

std::string joined (OperatorType type, std::vector<std::string_view> texts, bool sorted) {
    std::size_t length = 6;
    for (const std::string_view text : texts) length += text.size () + 5;
    if (sorted) std::sort (texts.begin (), texts.end ());
    std::string text;
    text.reserve (length);
    text += type == OperatorType::unknown ? "?( " : "( ";
    std::string_view gap;
    for (const std::string_view part : texts) {
        text.append (gap).append (part);
        gap = separator (type);
    }
    text += " )";
    return text;
}

std::string text_of (OperatorType type, const std::string& name,
                     const std::vector<OperatorPtr>& children) {
    switch (type) {
    case OperatorType::leaf: return name;
    case OperatorType::not_gate:
        return "!" + canonical_text (children.empty () ? nullptr : children[0].get ());
    case OperatorType::unknown:
    case OperatorType::and_gate:
    case OperatorType::or_gate:
    case OperatorType::and_not:
    case OperatorType::not_and:
    case OperatorType::or_not:
    case OperatorType::not_or:
    case OperatorType::or3:
    case OperatorType::and3: {
        std::vector<std::string_view> texts;
        for (const OperatorPtr& child : children) texts.push_back (child->text ());
        return joined (type, std::move (texts), true);
    }
    }
    return {};
}

/// Empty when it is no other than the canonical text.
std::string ordered_text_of (OperatorType type, const std::string& text,
                             const std::vector<OperatorPtr>& children) {
    const bool shows = std::any_of (children.begin (), children.end (), [] (const OperatorPtr& c) {
        return c->ordered_text ().data () != c->text ().data ();
    });
    if (!shows && !is_mixed (type)) return {};
    std::string ordered;
    if (type == OperatorType::not_gate) {
        ordered = "!" + children[0]->ordered_text ();
    } else {
        std::vector<std::string_view> texts;
        for (const OperatorPtr& child : children) texts.push_back (child->ordered_text ());
        ordered = joined (type, std::move (texts), !is_mixed (type));
    }
    return ordered == text ? std::string () : ordered;
}

} // namespace

FormulaState formula_state;

std::string_view gate_name (OperatorType type) {
    return type == OperatorType::leaf ? std::string_view ()
                                      : type_rows[static_cast<std::size_t> (type)].gate;
}

std::string_view separator (OperatorType type) {
    return type == OperatorType::leaf ? std::string_view ()
                                      : type_rows[static_cast<std::size_t> (type)].separator;
}

Operator::Operator (OperatorType type, std::string name, std::vector<OperatorPtr> children)
    : type_ (type), name_ (std::move (name)), children_ (std::move (children)),
      text_ (text_of (type_, name_, children_)),
      ordered_text_ (ordered_text_of (type_, text_, children_)) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max () / 2;
    complete_ = type_ == OperatorType::leaf || !children_.empty ();
    for (const OperatorPtr& child : children_) {
        node_count_ = std::min (most, node_count_ + child->node_count ());
        complete_ = complete_ && child->complete ();
    }
    formula_state.operators_made.fetch_add (1, std::memory_order_relaxed);
}

Operator::~Operator () {
    formula_state.operators_destroyed.fetch_add (1, std::memory_order_relaxed);
}

OperatorPtr make_leaf (std::string name) {
    return std::make_shared<const Operator> (OperatorType::leaf, std::move (name),
                                             std::vector<OperatorPtr> ());
}

OperatorPtr make_operator (OperatorType type, std::vector<OperatorPtr> children) {
    return std::make_shared<const Operator> (type, std::string (), std::move (children));
}

std::string canonical_text (const Operator* tree) {
    if (tree == nullptr) {
        write_standard_output ("BUGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGGG\n");
        return {};
    }
    return tree->text ();
}

} // namespace ostrand::formula
