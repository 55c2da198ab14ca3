// The gate catalogue and its reader.
#include "gates/catalogue.h"

#include "base/disk.h"
#include "base/text.h"
#include "gates/text_lines.h"

#include <algorithm>
#include <array>
#include <optional>

namespace ostrand::gates {
namespace {

constexpr std::string_view builtin_text = "GATE;AND;2;1;\n"
                                          "#;0;0;0;\n#;0;1;0;\n#;1;0;0;\n#;1;1;1;\n"
                                          ";;;;\n"
                                          "GATE;OR;2;1;\n"
                                          "#;0;0;0;\n#;0;1;1;\n#;1;0;1;\n#;1;1;1;\n"
                                          ";;;;\n"
                                          "GATE;XOR;2;1;\n"
                                          "#;0;0;0;\n#;0;1;1;\n#;1;0;1;\n#;1;1;0;\n"
                                          ";;;;\n"
                                          "GATE;NAND;2;1;\n"
                                          "#;0;0;1;\n#;0;1;1;\n#;1;0;1;\n#;1;1;0;\n"
                                          ";;;;\n"
                                          "GATE;NOR;2;1;\n"
                                          "#;0;0;1;\n#;0;1;0;\n#;1;0;0;\n#;1;1;0;\n"
                                          ";;;;\n"
                                          "GATE;NOTAND;2;1;\n"
                                          "#;0;0;0;\n#;0;1;1;\n#;1;0;0;\n#;1;1;0;\n"
                                          ";;;;\n"
                                          "GATE;ANDNOT;2;1;\n"
                                          "#;0;0;0;\n#;0;1;0;\n#;1;0;1;\n#;1;1;0;\n"
                                          ";;;;\n"
                                          "GATE;NOTOR;2;1;\n"
                                          "#;0;0;1;\n#;0;1;1;\n#;1;0;0;\n#;1;1;1;\n"
                                          ";;;;\n"
                                          "GATE;ORNOT;2;1;\n"
                                          "#;0;0;1;\n#;0;1;0;\n#;1;0;1;\n#;1;1;1;\n"
                                          ";;;;\n"
                                          "GATE;AND;3;1;\n"
                                          "#;0;0;0;0\n#;0;0;1;0\n#;0;1;0;0\n#;0;1;1;0\n"
                                          "#;1;0;0;0\n#;1;0;1;0\n#;1;1;0;0\n#;1;1;1;1\n"
                                          ";;;;\n"
                                          "GATE;OR;3;1;\n"
                                          "#;0;0;0;0\n#;0;0;1;1\n#;0;1;0;1\n#;0;1;1;1\n"
                                          "#;1;0;0;1\n#;1;0;1;1\n#;1;1;0;1\n#;1;1;1;1\n"
                                          ";;;;\n"
                                          "GATE;NOT;1;1;\n"
                                          "#;0;1;;\n#;1;0;;\n"
                                          ";;;;\n"
                                          "GATE;YES;1;1;\n"
                                          "#;0;0;;\n#;1;1;;\n";

constexpr std::array<std::string_view, 11> type_names{
    "UNKNOW", "AND", "OR", "NOT", "ANDNOT", "NOTAND", "ORNOT", "NOTOR", "OR3", "AND3", "YES"};

GateGroup& group_of_arity (Catalogue& catalogue, int arity) {
    const auto found = std::find_if (catalogue.begin (), catalogue.end (),
                                     [&] (const GateGroup& group) { return group.arity == arity; });
    if (found != catalogue.end ()) return *found;
    return catalogue.emplace_back (GateGroup{arity, {}});
}

} // namespace

std::string_view builtin_catalogue_text () { return builtin_text; }

Catalogue load_catalogue (std::string_view text, int partitions, int job,
                          const std::stop_token& stop) {
    Catalogue catalogue;
    std::size_t current = 0; // group of the last header of this job
    bool has_current = false;
    int counter = 0;
    TextLines lines (text, stop);
    while (lines.next ()) {
        // The line keeps its end, so that a row that ends in ";" has one integer more, a 0.
        const std::vector<std::string> fields = split_fields (lines.line_with_end ());
        if (fields.empty ()) continue;
        if (fields[0] == "GATE") ++counter;
        if (partitions < 1 || counter % partitions != job - 1) continue;
        if (fields[0] == "GATE") {
            const int arity = fields.size () > 2 ? parse_atoi (fields[2]) : 0;
            GateGroup& group = group_of_arity (catalogue, arity);
            std::string name = fields.size () > 1 ? fields[1] : std::string ();
            if (name.ends_with ('\n')) name.pop_back ();
            group.gates.push_back ({std::move (name), {}});
            current = static_cast<std::size_t> (&group - catalogue.data ());
            has_current = true;
        } else if ((fields[0] == "#" || fields[0] == "#\n") && has_current) {
            std::vector<int> row;
            for (std::size_t i = 1; i < fields.size (); ++i) row.push_back (parse_atoi (fields[i]));
            catalogue[current].gates.back ().rows.push_back (std::move (row));
        }
    }
    return catalogue;
}

Catalogue gateNoticeReader (const TextFile& file, int partitions, int job,
                            const std::stop_token& stop) {
    if (!file.text) {
        write_standard_output ("gateNoticeReader: Impossible d'ouvrir le fichier en lecture.\n");
        return {};
    }
    return load_catalogue (*file.text, partitions, job, stop);
}

std::span<const std::string_view> gate_type_names () { return type_names; }

} // namespace ostrand::gates
