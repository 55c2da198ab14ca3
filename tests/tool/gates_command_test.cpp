// The companion's commands for gates: files, messages, statuses, interruption.
#include "base/disk.h"
#include "gates/builders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ostrand::tool {
namespace {

using gates::testing_builders::model_text;
using gates::testing_builders::reaction;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::run_program;

std::string small_model () {
    return model_text ({reaction ("r1", {"A"}, {"B"}, {"E"}, {"I"}),
                        reaction ("r2", {"B", "X"}, {"C"}, {"F"}, {}, true)});
}

TEST (gates_command, writes_the_gate_file_and_takes_the_table_away) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    const auto result = run_program ({"ostrand-tool", "gates", "m.xml"}, folder.path ());
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, "");
    EXPECT_THAT (result.out, HasSubstr ("m_gates.csv: "));
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml", "m_gates.csv"));
    const std::string gates = testing::file_text (folder / "m_gates.csv");
    EXPECT_TRUE (gates.starts_with ("metabolism;m.xml\nE/S;"));
    EXPECT_THAT (gates, HasSubstr (";RANDOM_SEQ;"));
}

TEST (gates_command, same_seed_same_bytes_whatever_the_threads) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    std::vector<std::string> texts;
    for (const char* threads : {"1", "3", "1"}) {
        run_program ({"ostrand-tool", "gates", "m.xml", "--seed", "5", "--threads", threads},
                     folder.path ());
        texts.push_back (testing::file_text (folder / "m_gates.csv"));
    }
    EXPECT_EQ (texts[0], texts[1]);
    EXPECT_EQ (texts[0], texts[2]);
    run_program ({"ostrand-tool", "gates", "m.xml", "--seed", "6"}, folder.path ());
    EXPECT_NE (texts[0], testing::file_text (folder / "m_gates.csv"));
}

TEST (gates_command, options_choose_the_files) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    folder.write ("k.csv", "");
    const auto result =
        run_program ({"ostrand-tool", "gates", "m.xml", "--jobs", "2", "--depth", "2", "--output",
                      "x", "--kinetics", "k.csv", "--verbose", "--trace", "--console"},
                     folder.path ());
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (folder.names (), ElementsAre ("k.csv", "m.xml", "x.csv", "x.txt", "x_N2_N1.txt",
                                               "x_N2_N2.txt", "x_gates.csv"));
    EXPECT_THAT (result.out, HasSubstr ("Portes : [OR , NAND , NOTAND , NOTOR][AND][NOT]\n"));
    EXPECT_THAT (testing::file_text (folder / "x.csv"), HasSubstr ("Nb Limite\t \t\t\t: ;2\n"));
}

TEST (gates_command, model_that_cannot_be_opened_ends_with_status_1_and_no_file) {
    const testing::TemporaryFolder folder;
    const auto result = run_program ({"ostrand-tool", "gates", "none.xml"}, folder.path ());
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.out, "sbmlReader: Impossible d'ouvrir le fichier en lecture.\n");
    EXPECT_EQ (result.error, "'none.xml': format error\n");
    EXPECT_TRUE (folder.names ().empty ());
}

TEST (gates_command, missing_gate_file_and_table_are_told_and_the_files_written) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    const auto result = run_program ({"ostrand-tool", "gates", "m.xml", "--jobs", "2",
                                      "--gate-file", "g.txt", "--kinetics", "k.csv"},
                                     folder.path ());
    EXPECT_EQ (result.status, 0);
    const std::string line = "gateNoticeReader: Impossible d'ouvrir le fichier en lecture.\n";
    EXPECT_TRUE (result.out.starts_with (
        line + line + "CSVCineticReader: Impossible d'ouvrir le fichier en lecture.\n"));
    EXPECT_THAT (result.error, HasSubstr ("cannot open the gate file 'g.txt'"));
    EXPECT_THAT (result.error, HasSubstr ("cannot open the reaction table 'k.csv'"));
    EXPECT_EQ (testing::file_text (folder / "m_gates.csv"), "metabolism;m.xml\n");
}

TEST (gates_command, model_and_gate_file_are_read_once_and_may_be_pipes) {
    const testing::TemporaryFolder folder;
    const std::string catalogue (gates::builtin_catalogue_text ());
    folder.write ("m.xml", small_model ());
    folder.write ("g.txt", catalogue);
    folder.write ("k.csv", "");
    const auto extract = [&] (const std::string& model, const std::string& gate_file,
                              const std::string& piped) {
        const auto result = run_program ({"ostrand-tool", "gates", model, "--gate-file", gate_file,
                                          "--kinetics", "k.csv", "--jobs", "3", "--output", "x"},
                                         folder.path (), piped);
        EXPECT_EQ (result.status, 0) << result.error;
        const std::string text = testing::file_text (folder / "x_gates.csv");
        return text.substr (text.find ('\n')); // behind the model's name
    };
    const std::string whole = extract ("m.xml", "g.txt", "");
    EXPECT_GT (whole.size (), 100U);
    EXPECT_EQ (extract ("/dev/stdin", "g.txt", small_model ()), whole);
    EXPECT_EQ (extract ("m.xml", "/dev/stdin", catalogue), whole);
}

TEST (gates_command, table_that_cannot_be_written_is_status_1_and_the_gates_are_there) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    std::filesystem::create_directory (folder / "tmp_kinetics.csv");
    const auto result = run_program ({"ostrand-tool", "gates", "m.xml"}, folder.path ());
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr ("cannot write 'tmp_kinetics.csv'"));
    EXPECT_GT (testing::file_text (folder / "m_gates.csv").size (), 100U);
    EXPECT_TRUE (std::filesystem::exists (folder / "tmp_kinetics.csv"));
}

TEST (gates_command, too_many_enzymes_are_told_and_the_file_written) {
    const testing::TemporaryFolder folder;
    std::vector<gates::Reaction> reactions;
    for (int i = 0; i < 241; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {"A"}, {"B"}, {}));
    }
    folder.write ("m.xml", model_text (reactions));
    const auto result = run_program ({"ostrand-tool", "gates", "m.xml"}, folder.path ());
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.error, HasSubstr ("the model has 241 enzymes"));
    EXPECT_EQ (testing::file_text (folder / "m_gates.csv"), "metabolism;m.xml\n");
}

TEST (gates_command, gate_file_that_cannot_be_written_is_status_1) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    const auto result =
        run_program ({"ostrand-tool", "gates", "m.xml", "--output", "no/where"}, folder.path ());
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr ("cannot write 'no/where_gates.csv'"));
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml"));
}

TEST (gates_command, wrong_numbers_are_wrong_usage) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    for (const std::vector<std::string>& options : {std::vector<std::string>{"--depth", "0"},
                                                    {"--jobs", "0"},
                                                    {"--jobs", "5000"},
                                                    {"--threads", "x"},
                                                    {"--seed", "-1"},
                                                    {"--nothing"}}) {
        std::vector<std::string> words{"ostrand-tool", "gates", "m.xml"};
        words.insert (words.end (), options.begin (), options.end ());
        EXPECT_EQ (run_program (words, folder.path ()).status, 2);
    }
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml"));
}

TEST (gates_command, interruption_leaves_neither_table_nor_part_of_a_file) {
    const testing::TemporaryFolder folder;
    std::vector<gates::Reaction> reactions; // far more work than the test waits for
    for (int i = 0; i < 60; ++i) {
        reactions.push_back (reaction ("r" + std::to_string (i), {"A", "M" + std::to_string (i)},
                                       {"B", "M" + std::to_string (i + 1)}, {}));
    }
    folder.write ("m.xml", model_text (reactions));
    const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";
    const pid_t child = fork ();
    if (child == 0) {
        if (chdir (folder.path ().c_str ()) != 0) _exit (126);
        execl (program.c_str (), program.c_str (), "gates", "m.xml", "--depth", "7", nullptr);
        _exit (127);
    }
    for (int i = 0; i < 1000 && folder.names ().size () < 2; ++i) usleep (10000);
    usleep (50000);
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml", "tmp_kinetics.csv"));
    kill (child, SIGINT);
    int status = 0;
    waitpid (child, &status, 0);
    EXPECT_TRUE (WIFSIGNALED (status) && WTERMSIG (status) == SIGINT);
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml"));
}

TEST (gates_command, reader_that_goes_away_leaves_no_table_behind) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    const auto result =
        run_program ({"bash", "-c", "\"$1\" gates m.xml --console | true; exit ${PIPESTATUS[0]}",
                      "bash", std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool"},
                     folder.path ());
    EXPECT_TRUE (result.status == 0 || result.status == 1) << result.status;
    EXPECT_THAT (folder.names (), ElementsAre ("m.xml", "m_gates.csv"));
}

TEST (metabolites_command, lists_names_and_roles) {
    const testing::TemporaryFolder folder;
    folder.write ("m.xml", small_model ());
    const auto result = run_program ({"ostrand-tool", "metabolites", "m.xml"}, folder.path ());
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "A\t1\t0\nB\t1\t1\nC\t1\t1\nX\t1\t1\n");
    const auto none = run_program ({"ostrand-tool", "metabolites", "none.xml"}, folder.path ());
    EXPECT_EQ (none.status, 1);
    EXPECT_EQ (none.error, "'none.xml': format error\n");
}

} // namespace
} // namespace ostrand::tool
