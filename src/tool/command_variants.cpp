// ostrand-tool variants: the equivalent forms of a formula.
#include "formula/parse.h"
#include "formula/variants.h"
#include "tool/commands.h"

#include <cstdio>

namespace ostrand::tool {
namespace {

int run (const Arguments& arguments) {
    if (arguments.words[0].empty ()) {
        std::fputs ("A boolean formula must be entered.\n", stderr);
        return status_failure;
    }
    formula::FormCreator creator;
    formula::Growth growth = formula::Growth::complete;
    const formula::OperatorPtr root = creator.parse (arguments.words[0]);
    if (creator.refused ()) return status_failure;
    const auto trees = formula::variants (root, {}, &growth);
    std::string text;
    const std::string* last = nullptr; // trees of one text stand behind each other
    for (const auto& tree : trees) {
        if (last == nullptr || *last != tree->text ()) text += tree->text () + '\n';
        last = &tree->text ();
    }
    if (growth != formula::Growth::complete) {
        std::fprintf (stderr,
                      "The formula has more variants than there is memory for, "
                      "here are %zu of them\n",
                      trees.size ());
    }
    return print_result (text);
}

} // namespace

extern const ToolCommand variants_command{
    .name = "variants",
    .words = "FORMULA",
    .fewest_words = 1,
    .most_words = 1,
    .summary = "print all equivalent forms of a boolean formula",
    .details =
        "Names are letters and digits, or stand in quotes; ! is NOT, . is AND, + is OR.\n"
        ". and + have one rank and group from the left: a + b . c is (a + b) . c.\n"
        "One form a line, sorted; !.! and !+! stand for AND and OR with one input negated.\n",
    .options = {},
    .run = run,
};

} // namespace ostrand::tool
