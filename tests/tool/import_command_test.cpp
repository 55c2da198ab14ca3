// The companion's commands on model texts and SBML.
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace ostrand::tool {
namespace {

using ::testing::HasSubstr;
using testing::run_program;
using testing::TemporaryFolder;

const char* const model = "e : a -> b | 10 uM - 5 ;\nduration = 7 ;\n";
const char* const raw = "# Lattrix: 1.2\n[N3 0 2 10 10\n"
                        "[S1 1 60 20 0 #ffff00 13{a}-0 uM]\n"
                        "[S2 0 168 20 0 #ffff00 13{b}-0 uM]\n"
                        "[S3 1 114 -30 0 247 9{e}-0 uM]\n"
                        "[A4 0 272 2 1 2{<66F><4C>10 uM<67F><0C>}{<66F><4C>5<67F><0C>}{}{}]\n"
                        "[A5 0 32 2 3 4{}{}{}{}]\n]\n";

std::string sample (const char* name) {
    return testing::source_path (std::string ("tests/files/data/") + name).string ();
}

TEST (import_command, raw_prints_the_placement_itself) {
    const TemporaryFolder folder;
    const auto result =
        run_program ({"ostrand-tool", "import", folder.write ("m.ssa", model), "--raw"});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, raw);
    EXPECT_EQ (result.error, "");
}

TEST (import_command, otherwise_the_drawing_is_read_and_aligned) {
    const TemporaryFolder folder;
    const auto result = run_program ({"ostrand-tool", "import", folder.write ("m.ssa", model)});
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.out, HasSubstr ("# Lattrix: 1.2\n[N3 0 2 10 10\n[S1 1 60 20 "));
    EXPECT_NE (result.out, raw);
}

TEST (import_command, sbml_is_taken_by_its_name_and_laid_out_afresh) {
    const auto result =
        run_program ({"ostrand-tool", "import", sample ("level2_plain.xml"), "--raw"});
    EXPECT_EQ (result.status, 0);
    EXPECT_THAT (result.out, HasSubstr ("{no-enz}"));
    EXPECT_EQ (run_program ({"ostrand-tool", "import", sample ("level2_plain.xml")}).status, 0);
}

TEST (import_command, failures) {
    const TemporaryFolder folder;
    auto result = run_program ({"ostrand-tool", "import", "/nonexistent.ssa"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "ostrand-tool import: cannot open '/nonexistent.ssa'\n");
    const std::string bad = folder.write ("bad.ssa", "e : a -> b");
    for (const char* option : {"--raw", ""}) {
        std::vector<std::string> words{"ostrand-tool", "import", bad};
        if (*option != '\0') {
            words.emplace_back (option);
        }
        result = run_program (words);
        EXPECT_EQ (result.status, 1);
        EXPECT_EQ (result.out, "");
        EXPECT_EQ (result.error,
                   "vertical bar expected, got EOF\nostrand-tool import: cannot read '" + bad +
                       "'\n");
    }
    EXPECT_EQ (run_program ({"ostrand-tool", "import"}).status, 2);
}

TEST (sbml_to_model_command, prints_the_model_text) {
    auto result = run_program ({"ostrand-tool", "sbml-to-model", sample ("level2_plain.xml")});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.out, "\"E\" : \"A\" + \"C\" -> \"B\" ;\n\"E\" : \"s5\" ;\n"
                           "\"no-enz\" : \"B\" -> \"C\" ;\n");
    const TemporaryFolder folder;
    const std::string bad = folder.write ("bad.xml", "<sbml>\n</sbml>");
    result = run_program ({"ostrand-tool", "sbml-to-model", bad});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "SBML, line 2: no <model> was found.\n"
                             "ostrand-tool sbml-to-model: cannot read '" +
                                 bad + "' as SBML\n");
    result = run_program ({"ostrand-tool", "sbml-to-model", "/nonexistent.xml"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error, "ostrand-tool sbml-to-model: cannot open '/nonexistent.xml'\n");
}

TEST (convert_command, all_formats_both_ways) {
    const TemporaryFolder folder;
    const std::string ssa = folder.write ("m.ssa", model);
    const auto path = [&folder] (const char* name) { return (folder / name).string (); };
    EXPECT_EQ (run_program ({"ostrand-tool", "convert", ssa, path ("m.net")}).status, 0);
    EXPECT_EQ (run_program ({"ostrand-tool", "convert", ssa, path ("m.xml")}).status, 0);
    EXPECT_EQ (run_program ({"ostrand-tool", "convert", path ("m.xml"), path ("x.net")}).status, 0);
    EXPECT_EQ (testing::file_text (path ("x.net")), testing::file_text (path ("m.net")));
    EXPECT_EQ (
        run_program ({"ostrand-tool", "convert", path ("x.net"), path ("x.ssa"), "--duration", "7"})
            .status,
        0);
    EXPECT_EQ (testing::file_text (path ("x.ssa")),
               "duration = 7;\n\n\"e\" : \"a\" -> \"b\" | 10 uM - 5 ;\n");
    EXPECT_EQ (run_program ({"ostrand-tool", "convert", ssa, path ("y.ssa")}).status, 0);
    EXPECT_EQ (testing::file_text (path ("y.ssa")), testing::file_text (path ("x.ssa")));
}

TEST (convert_command, no_annotation_lays_out_afresh) {
    const TemporaryFolder folder;
    const auto path = [&folder] (const char* name) { return (folder / name).string (); };
    folder.write ("far.net",
                  "# Lattrix: 1.2\n[N2 0 2 8 8[S1 0 900 900 0 3 13{a}-][S2 0 990 900 0 3 "
                  "13{b}-][A3 0 272 2 1 2{}{}]]\n");
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", path ("far.net"), path ("far.xml")}).status,
               0);
    ASSERT_EQ (
        run_program ({"ostrand-tool", "convert", path ("far.xml"), path ("kept.net")}).status, 0);
    ASSERT_EQ (run_program ({"ostrand-tool", "convert", path ("far.xml"), path ("new.net"),
                             "--no-annotation"})
                   .status,
               0);
    EXPECT_THAT (testing::file_text (path ("kept.net")), HasSubstr (" 900 900 "));
    EXPECT_THAT (testing::file_text (path ("new.net")), HasSubstr (" 60 20 "));
    EXPECT_THAT (testing::file_text (path ("new.net")), HasSubstr ("{no-enz}"));
}

TEST (convert_command, what_cannot_be_read_writes_nothing) {
    const TemporaryFolder folder;
    const std::string bad = folder.write ("bad.xml", "<sbml></sbml>");
    const auto result =
        run_program ({"ostrand-tool", "convert", bad, (folder / "out.net").string ()});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.error,
               "SBML, line 1: no <model> was found.\nostrand-tool convert: cannot read '" + bad +
                   "' as SBML\n");
    EXPECT_EQ (folder.names (), std::vector<std::string>{"bad.xml"});
}

TEST (model_command, gaps_are_named_on_standard_error) {
    const TemporaryFolder folder;
    const std::string net =
        folder.write ("a.net", "# Lattrix: 1.2\n[N2 0 2 8 8[S1 0 9 9 0 3 13{a}-][S2 0 99 9 0 3 "
                               "13{b}-][A3 0 272 2 1 2{}{}]]\n");
    const std::string gap = "model text: left out: reaction \"a\" -> \"b\", nothing catalyses it\n";
    auto result = run_program ({"ostrand-tool", "model", net});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, gap);
    result = run_program ({"ostrand-tool", "check", net});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, gap);
    EXPECT_THAT (result.out, HasSubstr ("reactions: 1\n"));
}

} // namespace
} // namespace ostrand::tool
