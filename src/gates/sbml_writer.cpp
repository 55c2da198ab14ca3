// Writing a sub-model.
#include "gates/sbml_writer.h"

#include "base/disk.h"
#include "base/path.h"

#include <array>

namespace ostrand::gates {
namespace {

struct UnitDefinition {
    const char* name;
    const char* unit;
};
constexpr std::array unit_definitions{
    UnitDefinition{"substance", "<unit metaid=\"CDMT00010\" kind=\"mole\"/>"},
    UnitDefinition{"volume", "<unit metaid=\"CDMT00011\" kind=\"litre\"/>"},
    UnitDefinition{"area", "<unit metaid=\"CDMT00012\" kind=\"metre\" exponent=\"2\"/>"},
    UnitDefinition{"length", "<unit metaid=\"CDMT00013\" kind=\"metre\"/>"},
    UnitDefinition{"time", "<unit metaid=\"CDMT00014\" kind=\"second\"/>"}};

/// A list element around raw elements.
std::string list_of (const std::string& tag, const std::vector<std::string>& elements) {
    std::string text = "<" + tag + ">\n";
    for (const std::string& element : elements) text += element;
    return text + "</" + tag + ">\n";
}

std::string annotation (const RawElements& raw) {
    return "<annotation>\n<celldesigner:extension>\n"
           "<celldesigner:modelVersion>4.0</celldesigner:modelVersion>\n"
           "<celldesigner:modelDisplay sizeX=\"" +
           raw.size_x + "\" sizeY=\"" + raw.size_y + "\"/>\n" +
           list_of ("celldesigner:listOfCompartmentAliases", raw.compartment_aliases) +
           "<celldesigner:listOfComplexSpeciesAliases/>\n" +
           list_of ("celldesigner:listOfSpeciesAliases", raw.species_aliases) +
           "<celldesigner:listOfGroups/>\n" +
           list_of ("celldesigner:listOfProteins", raw.proteins) +
           "<celldesigner:listOfGenes/>\n<celldesigner:listOfRNAs/>\n"
           "<celldesigner:listOfAntisenseRNAs/>\n<celldesigner:listOfLayers/>\n"
           "<celldesigner:listOfBlockDiagrams/>\n"
           "</celldesigner:extension>\n</annotation>\n";
}

std::string unit_list () {
    std::string text = "<listOfUnitDefinitions>\n";
    for (const UnitDefinition& definition : unit_definitions) {
        const std::string name = definition.name;
        text += "\t<unitDefinition metaid=\"" + name + "\" id=\"" + name + "\" name=\"" + name +
                "\">\n<listOfUnits>\n\t" + definition.unit +
                "\n</listOfUnits>\n</unitDefinition>\n";
    }
    return text + "</listOfUnitDefinitions>\n";
}

} // namespace

std::string sub_model_text (const SbmlModel& model, std::string_view model_name,
                            std::span<const std::string> reaction_ids) {
    const std::string name (model_name);
    std::vector<std::string> reactions;
    for (const std::string& wanted : reaction_ids) {
        for (const auto& [id, lines] : model.raw.reactions) {
            if (id == wanted) reactions.push_back (lines);
        }
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<sbml xmlns=\"http://www.sbml.org/sbml/level2/version4\" "
           "xmlns:celldesigner=\"http://www.sbml.org/2001/ns/celldesigner\" "
           "level=\"2\" version=\"4\">\n"
           "<model metaid=\"" +
           name + "\" id=\"" + name + "\" name=\"" + name + "\">\n" + annotation (model.raw) +
           unit_list () + list_of ("listOfCompartments", model.raw.compartments) +
           list_of ("listOfSpecies", model.raw.species) + list_of ("listOfReactions", reactions) +
           "</model>\n</sbml>\n";
}

bool sbmlWriter (const SbmlModel& model, const std::string& path,
                 std::span<const std::string> reaction_ids) {
    std::string reason;
    if (write_file (path, sub_model_text (model, base_name (path), reaction_ids), reason)) {
        return true;
    }
    write_standard_output ("sbmlWriter: Impossible d'ouvrir le fichier.\n");
    return false;
}

} // namespace ostrand::gates
