// Every file that a command writes on a disk that is full, and every file that it reads that never
// ends: a message with name and reason, status 1, and the old file whole.
#include "gates/builders.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace ostrand::tool {
namespace {

using gates::testing_builders::model_text;
using gates::testing_builders::reaction;
using ::testing::HasSubstr;
using testing::ProgramResult;
using testing::TemporaryFolder;

/// A folder with inputs of each kind, in which commands run that may write files of 1 KiB at most.
/// What the kernel does to a process that writes more is what a shell leaves it at: it ends it.
struct full_disk : ::testing::Test {
    void SetUp () override {
        std::string network = "# Lattrix: 1.2\n[N60 0 2 10 10\n";
        for (int i = 1; i <= 60; ++i) {
            network += "[S" + std::to_string (i) + " 0 " + std::to_string (i * 30) +
                       " 80 0 3 13{species number " + std::to_string (i) + "}-%10 uM]\n";
        }
        folder.write ("in.net", network + "]\n");
        std::vector<gates::Reaction> reactions;
        for (int i = 0; i < 60; ++i) {
            const std::string n = std::to_string (i);
            reactions.push_back (reaction ("r" + n, {"A" + n}, {"B" + n}, {"E" + n}, {"I" + n}));
        }
        folder.write ("m.xml", model_text (reactions));
        folder.write ("k.csv", "");
        std::string gate = "E/S;1;a;1;b;YES;ENZ;1;e;ELNEC;0;ELABS;0;REACTIONS;9;";
        for (int i = 0; i < 9; ++i) {
            gate += "REACBEGIN;r" + std::to_string (i) +
                    ";0;;SUBS;1;a;;PROD;1;b;;ENZY;1;e;INHI;0;REACEND;";
        }
        folder.write ("net_gates.csv", gate + "\n");
    }
    ProgramResult run (const std::string& command) const {
        const std::string program = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";
        return testing::run_program ({"bash", "-c", "ulimit -f 1; exec \"$0\" " + command, program},
                                     folder.path ());
    }
    /// Runs a command that wants to write over `file`, and looks at what is left.
    void expect_lost (const std::string& command, const std::string& file,
                      const std::string& message) const {
        folder.write (file, "old");
        const auto before = folder.names ();
        const auto result = run (command);
        EXPECT_EQ (result.status, 1) << command;
        EXPECT_THAT (result.error, HasSubstr (message)) << command;
        EXPECT_EQ (testing::file_text (folder / file), "old") << command;
        EXPECT_EQ (folder.names (), before) << command;
    }
    TemporaryFolder folder;
};

TEST_F (full_disk, loses_no_old_file_to_convert) {
    for (const std::string ending : {"net", "ssa", "xml", "svg", "pdf"}) {
        const std::string file = "out." + ending;
        expect_lost ("convert in.net " + file, file,
                     "ostrand-tool convert: cannot write '" + file + "': File too large\n");
        const auto full = run ("convert in.net /dev/full");
        EXPECT_EQ (full.status, 1);
        EXPECT_THAT (full.error, HasSubstr ("'/dev/full': No space left on device\n"));
    }
}

TEST_F (full_disk, loses_no_old_gate_file) {
    expect_lost ("gates m.xml --kinetics k.csv --output x", "x_gates.csv",
                 "ostrand-tool gates: cannot write 'x_gates.csv': File too large\n");
}

TEST_F (full_disk, fails_a_summary_but_not_in_silence) {
    // The gate file has room: of one job without gates it is one line.
    folder.write ("g.txt", "");
    for (const std::string file : {"x.txt", "x.csv"}) {
        folder.write ("x.txt", "old");
        folder.write ("x.csv", "old");
        const auto result =
            run ("gates m.xml --kinetics k.csv --output x --verbose --gate-file g.txt");
        EXPECT_EQ (result.status, 1);
        EXPECT_THAT (result.error, HasSubstr ("ostrand-tool gates: cannot write '" + file +
                                              "': File too large\n"));
        EXPECT_EQ (testing::file_text (folder / file), "old");
        EXPECT_THAT (result.out, HasSubstr ("x_gates.csv: 0 gates"));
    }
}

TEST_F (full_disk, fails_a_trace_but_not_in_silence) {
    folder.write ("g.txt", "");
    folder.write ("x_N2_N1.txt", "old");
    const auto result =
        run ("gates m.xml --kinetics k.csv --output x --trace --jobs 2 --gate-file g.txt");
    EXPECT_EQ (result.status, 1);
    for (const std::string file : {"x_N2_N1.txt", "x_N2_N2.txt"}) {
        EXPECT_THAT (result.error, HasSubstr ("ostrand-tool gates: cannot write '" + file +
                                              "': File too large\n"));
    }
    EXPECT_EQ (testing::file_text (folder / "x_N2_N1.txt"), "old");
    EXPECT_FALSE (std::filesystem::exists (folder / "x_N2_N2.txt"));
}

TEST_F (full_disk, fails_the_reaction_table) {
    const auto result = run ("gates m.xml --output x --gate-file k.csv");
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (
        result.error,
        HasSubstr ("ostrand-tool gates: cannot write 'tmp_kinetics.csv': File too large\n"));
    EXPECT_FALSE (std::filesystem::exists (folder / "tmp_kinetics.csv"));
}

TEST_F (full_disk, fails_networks_of_formulas) {
    std::filesystem::create_directory (folder / "d");
    folder.write ("d/reseau_0.xml", "old");
    const auto result = run ("formula net a b --write d");
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr ("d/reseau_0.xml: File too large\n"));
    EXPECT_EQ (testing::file_text (folder / "d/reseau_0.xml"), "old");
}

TEST_F (full_disk, fails_what_is_printed_into_a_file) {
    for (const std::string command :
         {"man", "import --raw m.xml", "layout in.net", "model in.net", "sbml-to-model m.xml",
          "variants 'a.b.c.d.e'", "formula net a b --text 0",
          "gates m.xml --kinetics k.csv --console --gate-file k.csv --jobs 20 --output x"}) {
        const auto result = run (command + " >printed");
        EXPECT_EQ (result.status, 1) << command;
        EXPECT_THAT (result.error, HasSubstr ("tandard output: File too large\n")) << command;
    }
}

TEST_F (full_disk, fails_a_result) {
    folder.write ("model", "duration = 3000; display (a, b, c); [a] = 1 mM; a -> b | 0.0000001 ;"
                           "b -> c | 0.0000003 ;");
    folder.write ("data.gz", "old");
    const auto result = testing::run_program ({"bash", "-c", "ulimit -f 1; exec \"$0\" -a model",
                                               std::string (OSTRAND_BUILD_DIR) + "/ostrand"},
                                              folder.path ());
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "Cannot write 'data.gz': File too large\n");
    EXPECT_EQ (testing::file_text (folder / "data.gz"), "old");
}

/// Commands whose input has no end, with a bound that does not take a minute to reach.
struct endless_input : ::testing::Test {
    void SetUp () override {
        setenv ("OSTRAND_INPUT_BOUND", "3000000", 1);
        for (const char* name : {"zero.net", "zero.xml", "zero.ssa", "zero_gates.csv"}) {
            std::filesystem::create_symlink ("/dev/zero", folder / name);
        }
        folder.write ("m.xml", model_text ({reaction ("r", {"A"}, {"B"}, {"E"})}));
    }
    void TearDown () override { unsetenv ("OSTRAND_INPUT_BOUND"); }
    ProgramResult run (std::vector<std::string> words) const {
        return testing::run_program (std::move (words), folder.path ());
    }
    static std::string told (const std::string& file) {
        return "'" + file + "' has more than 3000000 bytes, the most that is read\n";
    }
    TemporaryFolder folder;
};

TEST_F (endless_input, ends_every_command_that_reads_a_network) {
    for (const std::string command : {"check", "layout", "model", "import", "sbml-to-model"}) {
        for (const std::string file : {"zero.net", "zero.xml", "zero.ssa"}) {
            const auto result = run ({"ostrand-tool", command, file});
            EXPECT_EQ (result.status, 1) << command;
            EXPECT_EQ (result.error,
                       told (file) + "ostrand-tool " + command + ": cannot open '" + file + "'\n");
        }
    }
    const auto result = run ({"ostrand-tool", "convert", "zero.net", "out.svg"});
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr (told ("zero.net")));
    EXPECT_FALSE (std::filesystem::exists (folder / "out.svg"));
}

TEST_F (endless_input, ends_the_simulator) {
    const auto result = run ({"ostrand", "-a", "zero.ssa"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, told ("zero.ssa") + "Cannot open 'zero.ssa'\n");
}

TEST_F (endless_input, ends_the_extraction_of_gates) {
    const auto model = run ({"ostrand-tool", "gates", "zero.xml"});
    EXPECT_EQ (model.status, 1);
    EXPECT_EQ (model.error, "ostrand-tool gates: " + told ("zero.xml"));
    const auto catalogue = run ({"ostrand-tool", "gates", "m.xml", "--gate-file", "/dev/zero"});
    EXPECT_EQ (catalogue.status, 1);
    EXPECT_EQ (catalogue.error, "ostrand-tool gates: " + told ("/dev/zero"));
    const auto table = run ({"ostrand-tool", "gates", "m.xml", "--kinetics", "/dev/zero"});
    EXPECT_EQ (table.status, 1);
    EXPECT_EQ (table.error, "ostrand-tool gates: " + told ("/dev/zero"));
    const auto metabolites = run ({"ostrand-tool", "metabolites", "zero.xml"});
    EXPECT_EQ (metabolites.status, 1);
    EXPECT_EQ (metabolites.error, told ("zero.xml") + "'zero.xml': format error\n");
    EXPECT_FALSE (std::filesystem::exists (folder / "m_gates.csv"));
    EXPECT_FALSE (std::filesystem::exists (folder / "tmp_kinetics.csv"));
}

TEST_F (endless_input, ends_the_search_of_a_formula) {
    const auto result = run ({"ostrand-tool", "formula", "zero", "a", "b"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "ostrand-tool formula: " + told ("zero_gates.csv"));
}

TEST_F (endless_input, through_a_pipe_ends_too) {
    const auto result =
        testing::run_program ({"bash", "-c", "yes | \"$0\" check /dev/stdin; exit ${PIPESTATUS[1]}",
                               std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool"});
    EXPECT_EQ (result.status, 1);
    EXPECT_THAT (result.error, HasSubstr (told ("/dev/stdin")));
}

} // namespace
} // namespace ostrand::tool
