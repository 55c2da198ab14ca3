// The front end's flow.
#include "gates/front_end.h"

#include "base/platform.h"
#include "gates/temporary_table.h"

#include <filesystem>
#include <map>

namespace ostrand::gates {

namespace fs = std::filesystem;

GateFrontEnd::GateFrontEnd (std::string path, const std::stop_token& stop)
    : model_path (std::move (path)), model_file (model_path, stop),
      base (base_of_model (model_path)) {
    if (!model_file.text) return;
    reactions = read_front_end_reactions (*model_file.text, stop);
    gather_metabolites (stop);
    parsed = !stop.stop_requested ();
}

void GateFrontEnd::gather_metabolites (const std::stop_token& stop) {
    std::map<std::string, Metabolite> by_name; // compares bytes, as strcmp does
    for (const Reaction& reaction : reactions) {
        if (stop.stop_requested ()) return;
        if (reaction.enzymes.empty ()) continue;
        for (const std::string& name : reaction.substrates) {
            by_name[name].can_be_input = true;
            if (reaction.reversible) by_name[name].can_be_output = true;
        }
        for (const std::string& name : reaction.products) {
            by_name[name].can_be_output = true;
            if (reaction.reversible) by_name[name].can_be_input = true;
        }
    }
    for (auto& [name, metabolite] : by_name) {
        metabolite.name = name;
        metabolites.push_back (metabolite);
    }
}

bool GateFrontEnd::up_to_date () {
    std::error_code error;
    const fs::file_time_type gates = fs::last_write_time (base + "_gates.csv", error);
    if (error) return false;
    const fs::file_time_type model = fs::last_write_time (model_path, error);
    if (!error && model > gates) return false;
    extracted = true;
    return true;
}

FrontEndExtraction::FrontEndExtraction (GateFrontEnd& front_end, int depth)
    : front_end_ (front_end), extractor_ ({.input_path = front_end.model_path,
                                           .model_file = {},
                                           .output_base = front_end.base,
                                           .kinetics_path = {},
                                           .depth = depth,
                                           .threads = processor_count ()}) {}

Outcome FrontEndExtraction::work (const std::stop_token& stop) {
    // The same bytes every time.
    const TemporaryTable table (
        reaction_table_text (front_end_.model_path, front_end_.reactions, seeded_numbers (1)));
    extractor_.request.kinetics_path = table.name ();
    Outcome outcome = extractor_.begin (stop);
    if (!outcome.done ()) return outcome;
    front_end_.extracted = true;
    if (table.ok ()) return outcome;
    return Outcome::failure ("cannot write '" + table.name () + "': " + table.error () +
                             "; the gates have no kinetics");
}

} // namespace ostrand::gates
