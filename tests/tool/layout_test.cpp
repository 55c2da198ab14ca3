// ostrand-tool layout: the JSON of what the geometry computed.
#include "support/support.h"

#include <gtest/gtest.h>

using namespace ostrand::testing;

namespace {

// Courier 10: letters 6 wide, a line 12 high, 9 of it above its base.
constexpr std::string_view drawing = "# Lattrix: 1.2\n"
                                     "[N3 1 2 10 20\n"
                                     "[C7 8 0 0 400 200 4 {<97F>Cell}{80:40+0+0+0}]\n"
                                     "[S1 0 100 100 0 7 9{AAAAA}{P}]\n"
                                     "[S2 0 300 100 0 7 13{\"\xc3\xa9}-]\n"
                                     "[S3 0 900 100 0 7 0--]\n"
                                     "[A9 0 272 2 1 2{ab}{cd}]\n"
                                     "]\n";

TEST (Layout, EverythingIsNumberedAsSavingDoes) {
    const TemporaryFolder folder;
    const ProgramResult result =
        run_program ({"ostrand-tool", "layout", folder.write ("a.net", drawing)});
    EXPECT_EQ (result.status, 0);
    EXPECT_EQ (result.error, "");
    EXPECT_EQ (
        result.out,
        "{\n"
        "  \"network\": {\"x\": 10, \"y\": 20, \"width\": 901, \"height\": 200},\n"
        "  \"compartments\": [\n"
        "    {\"id\": 1, \"shape\": 8, \"x\": 0, \"y\": 0, \"width\": 400, \"height\": 200, "
        "\"label\": \"Cell\"}\n"
        "  ],\n"
        "  \"nodes\": [\n"
        "    {\"id\": 2, \"type\": 9, \"x\": 100, \"y\": 100, \"width\": 40, \"height\": 24, "
        "\"label\": \"AAAAA\", \"residu\": \"P\", \"master\": null, \"compart\": 1, "
        "\"label_x\": 5, \"label_y\": 15, \"label_width\": 30, \"label_height\": 12, "
        "\"label_ascent\": 9, \"residu_x\": 90, \"residu_y\": 88, \"residu_width\": 6},\n"
        "    {\"id\": 3, \"type\": 13, \"x\": 300, \"y\": 100, \"width\": 22, \"height\": 20, "
        "\"label\": \"\\\"\xc3\xa9\", \"residu\": null, \"master\": null, \"compart\": 1, "
        "\"label_x\": 5, \"label_y\": 13, \"label_width\": 12, \"label_height\": 12, "
        "\"label_ascent\": 9, \"residu_x\": 0, \"residu_y\": 0, \"residu_width\": 0},\n"
        "    {\"id\": 4, \"type\": 0, \"x\": 900, \"y\": 100, \"width\": 2, \"height\": 2, "
        "\"label\": null, \"residu\": null, \"master\": null, \"compart\": null, "
        "\"label_x\": 0, \"label_y\": 0, \"label_width\": 0, \"label_height\": 0, "
        "\"label_ascent\": 0, \"residu_x\": 0, \"residu_y\": 0, \"residu_width\": 0}\n"
        "  ],\n"
        "  \"arcs\": [\n"
        "    {\"id\": 5, \"type\": 272, \"source\": 2, \"dest\": 3, \"side\": 0, "
        "\"x\": 195, \"y\": 93.0001984, \"width\": 14, \"height\": 14, \"angle\": 0, "
        "\"start\": [120, 100.000122], \"end\": [284, 100.000282], \"head\": [289, 100.00029], "
        "\"mark_a\": [179.5, 100.000183], \"mark_b\": [229.5, 100.000229], "
        "\"inner\": [270, 100.000275], \"label_pos\": [144, 93.000145], "
        "\"residu_pos\": [267.200012, 94.0002747], "
        "\"line\": [164, 0.000160217285, 16400], \"label\": \"ab\", \"label_width\": 12, "
        "\"residu\": \"cd\", \"residu_width\": 12}\n"
        "  ]\n"
        "}\n");
}

TEST (Layout, LettersBeyondLatin1AreUtf8) {
    const TemporaryFolder folder;
    const ProgramResult result = run_program (
        {"ostrand-tool", "layout",
         folder.write ("a.net", "[N1 0 2 8 8\n[S1 0 9 9 0 7 13{\xc3\xc0\xc3\xff\xc3\xbf}-]]\n")});
    EXPECT_EQ (result.status, 0);
    EXPECT_NE (result.out.find ("\"label\": \"\xc4\x80\xc4\xbf\xc3\xbf\""), std::string::npos)
        << result.out;
}

TEST (Layout, AFullStandardOutputIsTold) {
    if (!std::filesystem::exists ("/dev/full")) GTEST_SKIP () << "no device that is always full";
    const TemporaryFolder folder;
    const std::string path = folder.write ("a.net", drawing);
    const std::string tool = std::string (OSTRAND_BUILD_DIR) + "/ostrand-tool";
    for (const std::string command : {"layout", "check", "model"}) {
        const ProgramResult result = run_program (
            {"/bin/sh", "-c", "exec \"$0\" " + command + " \"$1\" >/dev/full", tool, path});
        EXPECT_EQ (result.status, 1) << command;
        EXPECT_NE (result.error.find ("Cannot write standard output: "), std::string::npos)
            << command << ": " << result.error;
    }
}

TEST (Layout, NumbersHaveNineDigits) {
    const TemporaryFolder folder;
    const ProgramResult result = run_program (
        {"ostrand-tool", "layout",
         folder.write ("a.net", "# Lattrix: 1.2\n[N2 0 2 10 20\n[S1 0 100.125 100 0 7 9{<97F>A}-]\n"
                                "[S2 0 333.3333 217.7 0 7 9{A}-]\n[A3 0 272 2 1 2{}{}]\n]\n")});
    EXPECT_NE (result.out.find ("\"x\": 333.333313, \"y\": 217.699997"), std::string::npos)
        << result.out;
}

TEST (Layout, AlignRunsTheAlignmentFirst) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write ("a.net", "# Lattrix: 1.2\n[N2 0 2 10 20\n[S1 0 100 100 0 7 9{A}-]\n"
                               "[S2 0 300 110 0 7 9{B}-]\n[A3 0 272 2 1 2{}{}]\n]\n");
    EXPECT_NE (run_program ({"ostrand-tool", "layout", path}).out.find ("\"x\": 100, \"y\": 100"),
               std::string::npos);
    EXPECT_NE (run_program ({"ostrand-tool", "layout", "--align", path})
                   .out.find ("\"x\": 100, \"y\": 110"),
               std::string::npos);
}

TEST (Layout, ListsOfNothingAreEmpty) {
    const TemporaryFolder folder;
    EXPECT_EQ (run_program ({"ostrand-tool", "layout",
                             folder.write ("a.net", "# Lattrix: 1.2\n[N0 0 2 10 20\n]\n")})
                   .out,
               "{\n  \"network\": {\"x\": 10, \"y\": 20, \"width\": 0, \"height\": 0},\n"
               "  \"compartments\": [],\n  \"nodes\": [],\n  \"arcs\": []\n}\n");
}

TEST (Layout, FileThatIsNotThereIsToldAndFails) {
    const ProgramResult result = run_program ({"ostrand-tool", "layout", "/nowhere/a.net"});
    EXPECT_EQ (result.status, 1);
    EXPECT_EQ (result.out, "");
    EXPECT_NE (result.error, "");
}

} // namespace
