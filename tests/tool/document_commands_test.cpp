// The sub-commands check, convert and model, run as users run them.
#include "sbml_in/builders.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ostrand::testing {
namespace {

const char* reaction = "# Lattrix: 1.2\n[N3 1 2 10 10\n[C1 8 0 0 300 200 4{cell}{80:40+0+0+0}]\n"
                       "[S2 1 50 80 0 3 13{s}-%10 uM]\n[S3 0 250 80 0 3 13{p}-]\n"
                       "[S4 1 150 30 0 247 9{e}-]\n[A5 0 272 2 2 3{0.1 mM}{20}]\n"
                       "[A6 0 32 2 4 5{}{}]]\n";

TEST (CheckCommand, counts) {
    const TemporaryFolder folder;
    const auto result = run_program ({"ostrand-tool", "check", folder.write ("a.net", reaction)});
    EXPECT_EQ (result.status, 0) << result.error;
    EXPECT_EQ (result.out, "nodes: 3\narcs: 2\ncompartments: 1\nspecies: 3\nreactions: 1\n");
    EXPECT_EQ (result.error, "");
}

TEST (CheckCommand, counts_clones_as_one_species_and_nested_networks_too) {
    const TemporaryFolder folder;
    const auto result =
        run_program ({"ostrand-tool", "check",
                      folder.write ("a.net", "[N2 0 2[S1 0 0 0 0 3 9[N1 0 2[S2 0 0 0 0 3 13{a}-]]-]"
                                             "[S3 0 0 0 0 3 13{a}-]]")});
    EXPECT_EQ (result.out, "nodes: 3\narcs: 0\ncompartments: 0\nspecies: 2\nreactions: 0\n");
}

TEST (CheckCommand, faults_go_to_standard_error_and_into_the_status) {
    const TemporaryFolder folder;
    const auto result =
        run_program ({"ostrand-tool", "check", folder.write ("a.net", "[N2 0 2 8 8]")});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "Wrong number of nodes: 2 in header, 0 specified.\n");
    EXPECT_EQ (result.out.substr (0, 9), "nodes: 0\n");
    const std::string missing = (folder / "none.net").string ();
    const auto none = run_program ({"ostrand-tool", "check", missing});
    EXPECT_EQ (none.status, 1);
    EXPECT_EQ (none.error, "ostrand-tool check: cannot open '" + missing + "'\n");
    EXPECT_EQ (run_program ({"ostrand-tool", "check"}).status, 2);
}

TEST (ModelCommand, prints_the_model) {
    const TemporaryFolder folder;
    const std::string path = folder.write ("a.net", reaction);
    const auto result = run_program ({"ostrand-tool", "model", path});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "[\"s\"] = 10 uM;\n\ndisplay (\"s\");\nduration = 10;\n\n"
                           "\"e\" : \"s\" -> \"p\" | 0.1 mM - 20 ;\n");
    const auto longer = run_program ({"ostrand-tool", "model", path, "--duration", "60"});
    EXPECT_NE (longer.out.find ("duration = 60;"), std::string::npos);
    EXPECT_EQ (run_program ({"ostrand-tool", "model", path, "--duration", "x"}).status, 2);
}

TEST (ConvertCommand, native_text_is_a_fixpoint) {
    const TemporaryFolder folder;
    const std::string in = folder.write ("a.net", reaction);
    const std::string out = (folder / "b.net").string ();
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", in, out}).status, 0);
    EXPECT_EQ (file_text (out), reaction);
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", out, in}).status, 0);
    EXPECT_EQ (file_text (in), reaction);
}

/// Three molecules that would have to meet: the drawing has the reaction, a model text cannot.
TEST (ConvertCommand, names_rated_reactions_that_a_model_text_leaves_out) {
    const TemporaryFolder folder;
    const std::string in = folder.write (
        "a.xml", sbml_lists (sbml_species ("A", "9") + sbml_species ("B", "9") +
                                 sbml_species ("C", "9") + sbml_species ("P"),
                             sbml_reaction ({.id = "r",
                                             .reactants = "A B C",
                                             .products = "P",
                                             .math = mathml_of ("(* cell k A B C)"),
                                             .parameters = sbml_local ("k", "0.1")})));
    const auto result = run_program ({"ostrand-tool", "convert", in, (folder / "a.ssa").string ()});
    EXPECT_EQ (result.status, 0);
    EXPECT_NE (result.error.find ("more than two molecules would have to meet"), std::string::npos)
        << result.error;
    const auto drawing =
        run_program ({"ostrand-tool", "convert", in, (folder / "a.svg").string ()});
    EXPECT_EQ (drawing.error, "");
}

TEST (ConvertCommand, writes_model_text_and_drawings) {
    const TemporaryFolder folder;
    const std::string in = folder.write ("a.net", reaction);
    const auto convert = [&] (const char* name, std::vector<std::string> more = {}) {
        std::vector<std::string> words{"ostrand-tool", "convert", in, (folder / name).string ()};
        words.insert (words.end (), more.begin (), more.end ());
        EXPECT_EQ (run_program (words).status, 0) << name;
        return file_text (folder / name);
    };
    EXPECT_NE (convert ("a.ssa", {"--duration", "7"}).find ("duration = 7;"), std::string::npos);
    const std::string svg = convert ("a.svg");
    EXPECT_NE (svg.find ("<svg"), std::string::npos);
    EXPECT_NE (svg.find ("0.1"), std::string::npos);
    EXPECT_EQ (convert ("b.svg", {"--no-kinetics"}).find (">0.1 mM<"), std::string::npos);
    EXPECT_NE (convert ("c.svg", {"--dark"}), svg);
    EXPECT_EQ (convert ("a.pdf").substr (0, 5), "%PDF-");
}

TEST (ConvertCommand, that_fails_has_written_nothing) {
    const TemporaryFolder folder;
    const std::string in = folder.write ("a.net", "no network");
    const std::string out = folder.write ("b.net", "old");
    const auto result = run_program ({"ostrand-tool", "convert", in, out});
    EXPECT_EQ (result.status, 1);
    EXPECT_NE (result.error.find ("cannot read '" + in + "'"), std::string::npos) << result.error;
    EXPECT_EQ (file_text (out), "old");
    const std::string good = folder.write ("c.net", reaction);
    for (const char* name : {"no folder/x.net", "no folder/x.svg", "no folder/x.pdf"}) {
        EXPECT_EQ (
            run_program ({"ostrand-tool", "convert", good, (folder / name).string ()}).status, 1)
            << name;
    }
    EXPECT_EQ (folder.names (), (std::vector<std::string>{"a.net", "b.net", "c.net"}));
}

TEST (ConvertCommand, onto_a_full_disk_is_a_failure) {
    if (!std::filesystem::exists ("/dev/full")) GTEST_SKIP ();
    const TemporaryFolder folder;
    const std::string in = folder.write ("a.net", reaction);
    const auto result = run_program ({"ostrand-tool", "convert", in, "/dev/full"});
    EXPECT_EQ (result.status, 1);
    EXPECT_NE (result.error.find ("cannot write '/dev/full'"), std::string::npos) << result.error;
}

TEST (ConvertCommand, a_picture_of_pixels_has_the_scale_asked_for) {
    const TemporaryFolder folder;
    const std::string in = folder.write ("a.net", reaction);
    const auto convert = [&] (const char* scale, const char* name) {
        return run_program (
            {"ostrand-tool", "convert", in, (folder / name).string (), "--scale", scale});
    };
    EXPECT_EQ (convert ("1", "one.png").status, 0);
    EXPECT_EQ (convert ("3", "three.png").status, 0);
    /// Width and height stand behind the first 16 bytes, the high byte first.
    const auto side = [&] (const char* name, std::size_t at) {
        const std::string bytes = file_text (folder / name);
        return static_cast<unsigned char> (bytes.at (at)) * 256 +
               static_cast<unsigned char> (bytes.at (at + 1));
    };
    EXPECT_GT (side ("one.png", 18), 20);
    EXPECT_EQ (side ("three.png", 18), 3 * side ("one.png", 18));
    EXPECT_EQ (side ("three.png", 22), 3 * side ("one.png", 22));
    const auto refused = convert ("huge", "no.png");
    EXPECT_EQ (refused.status, 2);
    EXPECT_EQ (refused.error,
               "ostrand-tool convert: a scale is a number from 0.1 to 20, not 'huge'\n");
    EXPECT_FALSE (std::filesystem::exists (folder / "no.png"));
}

TEST (Examples, are_written_as_we_write_and_convert_to_everything) {
    const TemporaryFolder folder;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator (source_path ("examples"))) {
        if (entry.path ().extension () != ".net") continue;
        ++count;
        const std::string path = entry.path ().string ();
        for (const char* name : {"x.net", "x.svg", "x.pdf", "x.png", "x.ssa"}) {
            const auto result =
                run_program ({"ostrand-tool", "convert", path, (folder / name).string ()});
            ASSERT_EQ (result.status, 0) << path << ' ' << name << ' ' << result.error;
        }
        EXPECT_EQ (file_text (folder / "x.net"), file_text (path)) << path;
        EXPECT_NE (file_text (folder / "x.ssa").find ("duration"), std::string::npos);
    }
    EXPECT_GE (count, 7);
}

} // namespace
} // namespace ostrand::testing
