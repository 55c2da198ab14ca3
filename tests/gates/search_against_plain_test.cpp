// The fast search must equal the plain one: gates, counters, files, on random networks and on the
// measured ones.
#include "base/disk.h"
#include "base/text.h"
#include "gates/builders.h"
#include "gates/gate_csv.h"
#include "gates/plain_gate_file.h"
#include "gates/plain_search.h"
#include "gates/reaction_table.h"
#include "gates/summary_report.h"

#include <gtest/gtest.h>

namespace ostrand::gates {
namespace {

using namespace testing_builders;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int random_networks = 700;
#else
constexpr int random_networks = 3000;
#endif

struct Setting {
    int depth;
    int partitions;
    TrialRules rules;
    int threads = 1;
    std::string catalogue{builtin_catalogue_text ()};
};

std::vector<std::string> described (const std::vector<Gate>& gates) {
    std::vector<std::string> all;
    for (const Gate& gate : gates) {
        all.push_back (plain::described (gate_key (gate.inputs, gate.output), gate.type,
                                         gate.enzymes, gate.needed, gate.absent, gate.open_forks));
    }
    std::sort (all.begin (), all.end ());
    return all;
}

/// Compares both searches job by job and the gate files byte by byte; gives the number of gates.
std::size_t expect_equal (const std::vector<Reaction>& reactions,
                          const std::map<std::string, int>& elements, const Setting& setting) {
    const EquationGraph graph = build_equation_graph (reactions, elements);
    const plain::Graph plain_graph = plain::build (reactions, elements);
    std::vector<Catalogue> catalogues;
    for (int job = 1; job <= setting.partitions; ++job) {
        catalogues.push_back (load_catalogue (setting.catalogue, setting.partitions, job));
    }
    std::vector<const Catalogue*> shares;
    for (const Catalogue& catalogue : catalogues) shares.push_back (&catalogue);
    const SearchOutcome fast =
        search_gates (graph, shares,
                      {.limit = setting.depth, .rules = setting.rules, .threads = setting.threads});
    GateExtractor extractor; // as the writer of the gate file sees it
    extractor.request.input_path = "m.xml";
    extractor.model.reactions = reactions;
    extractor.graph = graph;
    // Of the reactions with several enzymes the table keeps one, so these find no partner.
    const std::vector<Reaction> table =
        read_reaction_table (reaction_table_text ("m.xml", reactions, seeded_numbers (3)));
    const plain::GateFile plain_file{plain_graph, reactions, table};
    std::string plain_text = plain::GateFile::head ("m.xml");
    std::size_t gates = 0;
    for (std::size_t job = 0; job < catalogues.size (); ++job) {
        plain::Search slow (plain_graph, catalogues[job], setting.depth,
                            setting.rules.evaluate_forks, setting.rules.multiple_firing);
        slow.run ();
        EXPECT_EQ (fast.circuits, slow.circuits);
        EXPECT_EQ (fast.jobs[job].counts.evaluated_gates, slow.evaluated_gates);
        EXPECT_EQ (fast.jobs[job].counts.evaluations, slow.evaluations);
        EXPECT_EQ (described (fast.jobs[job].gates), plain::described_gates (slow, plain_graph));
        gates += fast.jobs[job].gates.size ();
        extractor.jobs.emplace_back ().result = fast.jobs[job];
        plain_text += plain_file.lines (slow, catalogues[job]);
    }
    EXPECT_EQ (gate_csv_text (extractor, table), plain_text);
    return gates;
}

/// Networks whose plain search would take seconds are passed over.
bool is_small (const EquationGraph& graph) {
    return graph.length () - graph.enzyme_count () <= 8 && graph.rows.size () <= 16;
}

TEST (search_against_plain, random_networks_at_all_depths_and_partitions) {
    std::mt19937 random (20261121);
    std::size_t gates = 0;
    int compared = 0;
    while (compared < random_networks) {
        std::vector<Reaction> reactions = random_network (random);
        add_stand_in_enzymes (reactions);
        const auto elements = elements_of (reactions);
        const EquationGraph graph = build_equation_graph (reactions, elements);
        const Setting setting{.depth = static_cast<int> (random () % 7 + 1),
                              .partitions = static_cast<int> (random () % 13 + 1),
                              .rules = {random () % 2 == 0, random () % 2 == 0},
                              .threads = random () % 8 == 0 ? 3 : 1};
        if (!is_small (graph)) continue;
        gates += expect_equal (reactions, elements, setting);
        ++compared;
        ASSERT_FALSE (HasFailure ()) << "network " << compared << "\n" << model_text (reactions);
    }
    EXPECT_GT (gates, static_cast<std::size_t> (random_networks));
}

TEST (search_against_plain, catalogues_with_odd_tables) {
    const std::vector<std::string> catalogues{
        "GATE;TWICE;1;1;\n#;0;0;\n#;2;1;\nGATE;MINUS;2;1;\n#;0;0;0;\n#;-1;1;1;\n#;1;1;1;\n#;0;1;0;"
        "\n",
        "GATE;SHORT;2;1;\n#;1;1;1;\nGATE;EMPTY;3;1;\nGATE;LONG;1;1;\n#;0;0;\n#;1;1;\n#;0;1;\n",
        "GATE;NEVER;1;1;\n#;0;2;\n#;1;1;\nGATE;TWIN;1;1;\n#;0;0;\n#;1;1;\nGATE;TWIN;1;1;\n#;0;1;\n#"
        ";1;0;\n",
        "GATE;NONE;0;1;\n#;1;\nGATE;LESS;-3;1;\n#;1;\nGATE;FOUR;4;1;\n" +
            std::string ("#;1;1;1;1;1;\n#;0;0;0;0;0;\n") + "GATE;SEVEN;7;1;\n#;1;1;1;1;1;1;1;0;\n"};
    std::mt19937 random (5);
    for (int i = 0; i < random_networks / 10; ++i) {
        std::vector<Reaction> reactions = random_network (random);
        add_stand_in_enzymes (reactions);
        const auto elements = elements_of (reactions);
        if (!is_small (build_equation_graph (reactions, elements))) continue;
        expect_equal (reactions, elements,
                      {.depth = 3,
                       .partitions = static_cast<int> (random () % 3 + 1),
                       .rules = {random () % 2 == 0, random () % 2 == 0},
                       .catalogue = catalogues[random () % catalogues.size ()]});
        ASSERT_FALSE (HasFailure ()) << "network " << i << "\n" << model_text (reactions);
    }
}

TEST (search_against_plain, a_circuit_of_many_rows_needs_wide_counts) {
    // One enzyme with so many reactions that counts of tokens pass 16 bits.
    std::vector<Reaction> reactions;
    for (int i = 0; i < 130; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {i % 2 == 0 ? "A" : "B"},
                                       {i % 3 == 0 ? "C" : "D"}, {"E"}));
    }
    reactions.push_back (reaction ("last", {"D"}, {"F"}, {"E"}, {"I"}));
    const std::size_t gates =
        expect_equal (reactions, elements_of (reactions),
                      {.depth = 1, .partitions = 1, .rules = {}, .threads = 1});
    EXPECT_GT (gates, 0U);
}

TEST (search_against_plain, more_free_elements_than_one_block_of_tables) {
    // Thirteen free elements: the tables come in two blocks.
    std::vector<Reaction> reactions;
    for (int i = 0; i < 6; ++i) {
        const std::string n = std::to_string (i);
        reactions.push_back (reaction ("r" + n, {"A" + n, "B" + n}, {"C"}, {"E"}));
    }
    reactions.push_back (reaction ("r6", {"D"}, {"C"}, {"E"}));
    std::string catalogue = "GATE;YES;1;1;\n#;0;0;\n#;1;1;\nGATE;AND;2;1;\n#;0;0;0;\n#;0;1;0;\n"
                            "#;1;0;0;\n#;1;1;1;\n";
    const std::size_t gates =
        expect_equal (reactions, elements_of (reactions),
                      {.depth = 1, .partitions = 1, .rules = {}, .catalogue = catalogue});
    EXPECT_EQ (gates, 6U * 3U + 1U);
}

struct Measured {
    const char* model;
    std::uint64_t circuits, evaluated, evaluations;
    std::size_t gates, forks;
    std::vector<std::size_t> jobs;
};

TEST (search_against_plain, measured_networks_give_the_known_counters) {
    const std::vector<Measured> known{
        {"small", 16, 25242, 53012, 62, 12, {0, 9, 4, 0, 11, 20, 18, 0}},
        {"medium", 104, 365974, 755626, 386, 153, {3, 70, 43, 0, 79, 83, 46, 62}},
        {"large", 130, 4839546, 10247496, 1741, 949, {0, 381, 561, 76, 36, 300, 189, 198}}};
    for (const Measured& one : known) {
        const auto path =
            testing::source_path ("../shared/data/gates-" + std::string (one.model) + ".xml");
        const auto text = read_text_file (path);
        if (!text) GTEST_SKIP () << "no " << path;
        SbmlModel model = read_sbml_lines (*text);
        add_stand_in_enzymes (model.reactions);
        const EquationGraph graph = build_equation_graph (model.reactions, model.elements);
        std::vector<Catalogue> catalogues;
        for (int job = 1; job <= 8; ++job) {
            catalogues.push_back (load_catalogue (builtin_catalogue_text (), 8, job));
        }
        std::vector<const Catalogue*> shares;
        for (const Catalogue& catalogue : catalogues) shares.push_back (&catalogue);
        for (const int threads : {1, 2}) {
            const SearchOutcome outcome =
                search_gates (graph, shares, {.limit = 3, .rules = {}, .threads = threads});
            EXPECT_EQ (outcome.circuits, one.circuits);
            std::uint64_t evaluated = 0;
            std::uint64_t evaluations = 0;
            std::size_t gates = 0;
            std::size_t forks = 0;
            std::vector<std::size_t> jobs;
            for (const SearchResult& job : outcome.jobs) {
                evaluated += job.counts.evaluated_gates;
                evaluations += job.counts.evaluations;
                gates += job.gates.size ();
                jobs.push_back (job.gates.size ());
                for (const Gate& gate : job.gates) forks += gate.open_forks.empty () ? 0 : 1;
            }
            EXPECT_EQ (evaluated, one.evaluated);
            EXPECT_EQ (evaluations, one.evaluations);
            EXPECT_EQ (gates, one.gates);
            EXPECT_EQ (forks, one.forks);
            EXPECT_EQ (jobs, one.jobs);
        }
    }
}

TEST (search_against_plain, measured_networks_give_the_same_gate_file) {
    // The plain search of the large one takes a minute.
    for (const std::string name : {"small", "medium"}) {
        if (name == "medium" && random_networks < 3000) continue; // slower here
        const auto path = testing::source_path ("../shared/data/gates-" + name + ".xml");
        const auto text = read_text_file (path);
        if (!text) GTEST_SKIP () << "no " << path;
        SbmlModel model = read_sbml_lines (*text);
        add_stand_in_enzymes (model.reactions);
        EXPECT_GT (expect_equal (model.reactions, model.elements,
                                 {.depth = 3, .partitions = 8, .rules = {}, .threads = 2}),
                   60U);
    }
}

/// Every file of an extraction, by name; lines that tell seconds are taken out.
std::map<std::string, std::string> files_of (const std::string& model, ExtractionRequest request) {
    const testing::TemporaryFolder folder;
    request.input_path = folder.write ("m.xml", model);
    request.output_base = (folder / "m").string ();
    const std::vector<Reaction> reactions = read_sbml_lines (model).reactions;
    request.kinetics_path =
        folder.write ("table.csv", reaction_table_text ("m.xml", reactions, seeded_numbers (3)));
    const Outcome outcome = GateExtractor (std::move (request)).run ();
    EXPECT_TRUE (outcome.done ()) << outcome.reason;
    std::map<std::string, std::string> files;
    for (const std::string& name : folder.names ()) {
        std::string kept;
        std::string text = testing::file_text (folder / name);
        for (const std::string& line : split_fields (text, '\n')) {
            if (line.starts_with ("Temps")) continue;
            std::string shown = line;
            const std::size_t at = shown.find (folder.path ().string ());
            if (at != std::string::npos) shown.erase (at, folder.path ().string ().size ());
            kept += shown + "\n";
        }
        files[name] = kept;
    }
    return files;
}

/// The gate file of a model text as the plain search gives it, with the table of files_of.
std::string plain_gate_file (const std::string& model_text, const ExtractionRequest& settings) {
    SbmlModel model = read_sbml_lines (model_text);
    const std::vector<Reaction> table =
        read_reaction_table (reaction_table_text ("m.xml", model.reactions, seeded_numbers (3)));
    add_stand_in_enzymes (model.reactions);
    const plain::Graph graph = plain::build (model.reactions, model.elements);
    const plain::GateFile file{graph, model.reactions, table};
    std::string text = plain::GateFile::head ("/m.xml");
    for (int job = 1; job <= settings.partition_count; ++job) {
        const Catalogue share =
            load_catalogue (builtin_catalogue_text (), settings.partition_count, job);
        plain::Search search (graph, share, settings.depth, settings.evaluate_forks,
                              settings.multiple_firing);
        search.run ();
        text += file.lines (search, share);
    }
    return text;
}

TEST (search_against_plain, traced_and_threaded_extractions_write_the_same_files) {
    std::mt19937 random (99);
    int gates_seen = 0;
    for (int i = 0; i < 60; ++i) {
        const std::vector<Reaction> reactions = random_network (random);
        if (!is_small (graph_of (reactions))) continue;
        const std::string model = model_text (reactions);
        ExtractionRequest request;
        request.partition_count = static_cast<int> (random () % 8 + 1);
        request.depth = static_cast<int> (random () % 4 + 1);
        request.evaluate_forks = random () % 2 == 0;
        request.multiple_firing = random () % 2 == 0;
        request.verbose = true;
        const auto files = files_of (model, request);
        EXPECT_EQ (files.at ("m_gates.csv"), plain_gate_file (model, request));
        request.threads = 2;
        EXPECT_EQ (files, files_of (model, request));
        request.trace = true;
        auto traced = files_of (model, request);
        EXPECT_EQ (traced.size (),
                   files.size () + static_cast<std::size_t> (request.partition_count));
        for (const auto& [name, text] : files) EXPECT_EQ (text, traced[name]) << name;
        gates_seen += static_cast<int> (split_fields (files.at ("m_gates.csv"), '\n').size ()) - 1;
    }
    EXPECT_GT (gates_seen, 10);
}

} // namespace
} // namespace ostrand::gates
