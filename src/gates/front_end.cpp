// The front end's flow.
#include "gates/front_end.h"

#include "base/disk.h"
#include "base/platform.h"

#include <filesystem>
#include <map>

namespace ostrand::gates {

namespace fs = std::filesystem;

GateFrontEnd::GateFrontEnd (std::string path)
    : model_path (std::move (path)), model_file (model_path), base (base_of_model (model_path)) {
    parsed = model_file.text.has_value ();
    if (!parsed) return;
    reactions = read_front_end_reactions (*model_file.text);
    gather_metabolites ();
}

void GateFrontEnd::gather_metabolites () {
    std::map<std::string, Metabolite> by_name; // compares bytes, as strcmp does
    for (const Reaction& reaction : reactions) {
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

bool GateFrontEnd::extract (int depth, std::string& error) {
    // The same bytes every time. Without a table the gates are found all the same, with no
    // kinetics.
    const TableScope table (*this, seeded_numbers (1));
    GateExtractor extractor;
    extractor.input_path = model_path;
    extractor.output_base = base;
    extractor.kinetics_path = temporary_kinetics;
    extractor.depth = depth;
    extractor.threads = processor_count ();
    if (!extractor.run (error)) return false;
    extracted = true;
    return true;
}

GateFrontEnd::TableScope::TableScope (const GateFrontEnd& front_end, const RandomNumbers& random) {
    std::error_code ignored;
    path_ = fs::absolute (temporary_kinetics, ignored).string ();
    guard_ = std::make_unique<InterruptionGuard> (path_);
    write_file (path_, reaction_table_text (front_end.model_path, front_end.reactions, random),
                error_);
}

GateFrontEnd::TableScope::~TableScope () {
    std::error_code ignored;
    if (error_.empty ()) fs::remove (path_, ignored);
}

} // namespace ostrand::gates
