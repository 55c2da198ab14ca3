// The commands of the tool bar.
#include "document/compart.h"
#include "editor/command_functions.h"
#include "editor/edit_objects.h"
#include "editor/workbench.h"

namespace ostrand::editor::run {
namespace {

void new_node (Workbench& bench, std::string_view name, unsigned type, unsigned fill) {
    new_species (bench.current (), name, type, fill, bench.style ().font_word,
                 bench.style ().colour);
}

} // namespace

void new_protein (Workbench& bench) { new_node (bench, "protein", document::node::protein, 247); }

void new_molecule (Workbench& bench) { new_node (bench, "molecule", document::node::molecule, 3); }

void new_gene (Workbench& bench) { new_node (bench, "gene", document::node::gene, 7); }

void new_receptor (Workbench& bench) {
    new_node (bench, "receptor", document::node::receptor, 207);
}

void new_complex (Workbench& bench) { editor::new_complex (bench.current ()); }

void bold (Workbench& bench) { bench.toggle_bold (); }

void italic (Workbench& bench) { bench.toggle_italic (); }

void new_round_compartment (Workbench& bench) {
    new_compartment (bench.current (), document::shape::rectangle);
}

void new_oval_compartment (Workbench& bench) {
    new_compartment (bench.current (), document::shape::ellipse);
}

void new_reaction (Workbench& bench) { editor::new_reaction (bench.current ()); }

void add_substrate (Workbench& bench) {
    add_reactant (bench.current (), "sub", document::arc::substrate);
}

void add_product (Workbench& bench) {
    add_reactant (bench.current (), "prod", document::arc::product);
}

} // namespace ostrand::editor::run
