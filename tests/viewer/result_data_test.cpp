// The loader of result files: every message, every check.
#include "support/support.h"
#include "viewer/line_reader.h"
#include "viewer/result_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

namespace ostrand::viewer {
namespace {

using ::testing::ElementsAre;
using testing::TemporaryFolder;

struct Loaded {
    explicit Loaded (std::string_view text) {
        const TemporaryFolder folder;
        load (folder.write ("data", text));
    }
    static Loaded gzipped (std::string_view text, std::size_t cut = 0) {
        const TemporaryFolder folder;
        const std::string path = (folder / "data.gz").string ();
        gzFile out = gzopen (path.c_str (), "wb");
        gzwrite (out, text.data (), static_cast<unsigned> (text.size ()));
        gzclose (out);
        std::filesystem::resize_file (path, std::filesystem::file_size (path) - cut);
        Loaded loaded;
        loaded.load (path);
        return loaded;
    }
    ResultData data;
    std::string message;

  private:
    Loaded () = default;
    void load (const std::string& path) {
        gzFile stream = gzopen (path.c_str (), "rb");
        ::testing::internal::CaptureStderr ();
        load_result (&data, stream);
        message = ::testing::internal::GetCapturedStderr ();
        gzclose (stream);
    }
};

constexpr const char* whole = "2 2 3\nfirst\nff000000\nsecond\n1020300\n1\ndose\n2\n602\n301126\n"
                              "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n";

TEST (result_data, a_file_loads_gzipped_and_plain) {
    for (const Loaded& loaded : {Loaded (whole), Loaded::gzipped (whole)}) {
        EXPECT_FALSE (loaded.data.error);
        EXPECT_EQ (loaded.message, "");
        EXPECT_EQ (loaded.data.n_simul, 2U);
        EXPECT_EQ (loaded.data.n_points, 3U);
        EXPECT_THAT (loaded.data.names, ElementsAre ("first", "second"));
        EXPECT_THAT (loaded.data.colours, ElementsAre (0xFF000000U, 0x01020300U));
        EXPECT_EQ (loaded.data.max, 12U);
        EXPECT_EQ (loaded.data.series (1, 0)[2], 9U);
        EXPECT_EQ (loaded.data.series (0, 1)[0], 4U);
        ASSERT_EQ (loaded.data.n_var, 1U);
        EXPECT_EQ (loaded.data.vars[0].name, "dose");
        EXPECT_THAT (loaded.data.vars[0].values, ElementsAre (602, 301126));
        EXPECT_THAT (loaded.data.vars[0].labels,
                     ElementsAre ("  [dose] = 1 uM", "  [dose] = 500 uM"));
    }
}

TEST (result_data, labels_follow_the_size_of_the_value) {
    const Loaded loaded ("5 0 0\n1\nx\n5\n60\n0\n601648\n601650\n6022520\n");
    EXPECT_THAT (loaded.data.vars[0].labels,
                 ElementsAre ("  [x] = 0.1 uM", "  [x] = 0 uM", "  [x] = 999 uM", "  [x] = 1 mM",
                              "  [x] = 10 mM"));
}

TEST (result_data, cr_lf_reads_as_lf_and_what_stands_behind_is_ignored) {
    std::string text (whole);
    for (std::size_t at = 0; (at = text.find ('\n', at)) != std::string::npos; at += 2) {
        text.replace (at, 1, "\r\n");
    }
    const Loaded loaded (text + "more\n");
    EXPECT_FALSE (loaded.data.error) << loaded.message;
    EXPECT_THAT (loaded.data.names, ElementsAre ("first", "second"));
}

TEST (result_data, the_first_line_must_hold_three_numbers) {
    for (const char* text : {"", "\n", "1 2\n", "a b c\n", "1,2,3\n"}) {
        const Loaded loaded (text);
        EXPECT_TRUE (loaded.data.error);
        EXPECT_EQ (loaded.message, "Format error\n") << text;
    }
    EXPECT_FALSE (Loaded ("  1 0 0 and more\n").data.error);
}

TEST (result_data, names_and_colours_that_are_missing) {
    EXPECT_EQ (Loaded ("1 2 0\n").message, "Colour-name error: c = 0\n");
    EXPECT_EQ (Loaded ("1 2 0\na\nff\n").message, "Colour-name error: c = 1\n");
    EXPECT_EQ (Loaded ("1 2 0\na\n").message, "Colourmap-value error: c = 0\n");
    EXPECT_EQ (Loaded ("1 2 0\na\nff\nb\nxyz\n").message, "Colourmap-value error: c = 1\n");
    EXPECT_EQ (Loaded ("1 4000000000 0\na\nff\n").message, "Colour-name error: c = 1\n");
}

TEST (result_data, a_missing_number_of_variables_leaves_none) {
    EXPECT_FALSE (Loaded ("1 0 0\n").data.error);
    const Loaded loaded ("1 1 2\na\nff\nnonsense\n7\n8\n");
    EXPECT_FALSE (loaded.data.error);
    EXPECT_EQ (loaded.data.n_var, 0U);
    EXPECT_EQ (loaded.data.series (0, 0)[1], 8U);
}

TEST (result_data, variables_that_are_missing) {
    EXPECT_EQ (Loaded ("1 0 0\n1\n").message, "Variable-concentration error 1\n");
    EXPECT_EQ (Loaded ("1 0 0\n1\na\n").message, "Variable concentrations error 1: v = 0\n");
    EXPECT_EQ (Loaded ("1 0 0\n1\na\nx\n").message, "Variable concentrations error 1: v = 0\n");
    EXPECT_EQ (Loaded ("1 0 0\n1\na\n2\n5\n").message,
               "Variable concentrations error 2: v = 0, i = 1\n");
    EXPECT_EQ (Loaded ("2 0 0\n2\na\n2\n5\n6\nb\n1\nx\n").message,
               "Variable concentrations error 2: v = 1, i = 0\n");
    EXPECT_EQ (Loaded ("1 0 0\n4000000000\na\n1\n5\n").message, "Variable-concentration error 1\n");
    EXPECT_EQ (Loaded ("1 0 0\n1\na\n4000000000\n5\n").message,
               "Variable concentrations error 2: v = 0, i = 1\n");
}

TEST (result_data, a_variable_without_a_value_misses_its_first) {
    for (const char* text : {"1 0 0\n1\na\n0\n", "1 0 0\n1\na\n0\n5\n6\n"}) {
        EXPECT_EQ (Loaded (text).message, "Variable concentrations error 2: v = 0, i = 0\n");
    }
}

TEST (result_data, a_missing_last_line_is_told_by_its_indices) {
    std::string text (whole);
    text.resize (text.size () - 3);
    EXPECT_EQ (Loaded (text).message, "data error: <1, 1, 2>\n");
    EXPECT_EQ (Loaded ("1 1 2\na\nff\n0\n7\nx\n").message, "data error: <0, 0, 1>\n");
}

TEST (result_data, numbers_beyond_memory_end_at_the_first_that_is_missing) {
    EXPECT_EQ (Loaded ("4000000000 1 4000000000\na\nff\n0\n5\n").message,
               "data error: <0, 0, 1>\n");
    EXPECT_FALSE (Loaded ("4000000000 0 4000000000\n0\n").data.error);
    EXPECT_TRUE (Loaded ("4000000000 1 4000000000\na\nff\n0\n5\n").data.counts.empty ());
}

TEST (result_data, more_places_than_simulations_are_data_that_are_missing) {
    EXPECT_EQ (Loaded ("2 1 1\na\nff\n1\nb\n3\n1\n2\n3\n5\n5\n").message,
               "data error: <2, 0, 0>\n");
    EXPECT_FALSE (Loaded ("4 1 1\na\nff\n2\nb\n2\n1\n2\nc\n2\n1\n2\n5\n5\n5\n5\n").data.error);
    EXPECT_EQ (Loaded ("1 1 1\na\nff\n1\nb\n3\n1\n2\n3\n5\n").message, "data error: <1, 0, 0>\n");
    EXPECT_EQ (Loaded ("4 1 1\na\nff\n2\nb\n2\n1\n2\nc\n3\n1\n2\n3\n5\n5\n5\n5\n").message,
               "data error: <4, 0, 0>\n");
}

TEST (result_data, a_file_with_no_simulation_and_no_variable_is_sound) {
    for (const char* text : {"0 1 3\na\nff\n0\n", "0 1 3\na\nff\n", "0 0 0\n0\n"}) {
        const Loaded loaded (text);
        EXPECT_FALSE (loaded.data.error) << text;
        EXPECT_EQ (loaded.message, "");
        EXPECT_TRUE (loaded.data.empty ());
    }
    EXPECT_EQ (Loaded ("0 1 3\na\nff\n1\nb\n1\n5\n").message, "data error: <0, 0, 0>\n");
}

TEST (result_data, variables_that_swallow_counts_fail_where_the_counts_end) {
    // Six simulations of one point; the seven values take one of the counts.
    EXPECT_EQ (Loaded ("6 1 1\na\nff\n1\nb\n7\n1\n2\n3\n4\n5\n6\n10\n11\n12\n13\n14\n15\n").message,
               "data error: <5, 0, 0>\n");
    EXPECT_EQ (Loaded ("2 2 2\na\nff\nb\nff\n1\nc\n4\n1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n").message,
               "data error: <1, 1, 0>\n");
}

TEST (result_data, two_equal_values_need_one_simulation_only) {
    const Loaded loaded ("1 1 1\na\nff\n1\nb\n2\n7\n7\n5\n");
    EXPECT_FALSE (loaded.data.error) << loaded.message;
    EXPECT_EQ (count_planes (loaded.data), 1U);
    EXPECT_EQ (loaded.data.series (0, 0)[0], 5U);
    EXPECT_EQ (Loaded ("1 1 1\na\nff\n1\nb\n2\n7\n8\n5\n").message, "data error: <1, 0, 0>\n");
    // Under a slider, simulations stand two apart: the last place has one, the others have two.
    const std::string head = "1 1\na\nff\n2\nc\n3\n1\n2\n3\nb\n2\n7\n7\n";
    EXPECT_FALSE (Loaded ("5 " + head + "1\n2\n3\n4\n5\n").data.error);
    EXPECT_EQ (Loaded ("4 " + head + "1\n2\n3\n4\n").message, "data error: <4, 0, 0>\n");
}

TEST (result_data, planes_are_the_values_of_the_last_variable) {
    const auto planes = [] (const std::string& variables) {
        return count_planes (Loaded ("6 0 0\n" + variables).data);
    };
    EXPECT_EQ (planes ("0\n"), 1U);
    EXPECT_EQ (planes ("1\nb\n3\n1\n2\n3\n"), 3U);
    EXPECT_EQ (planes ("1\nb\n2\n1\n2\n"), 2U);
    EXPECT_EQ (planes ("1\nb\n2\n7\n7\n"), 1U);
    EXPECT_EQ (planes ("1\nb\n3\n7\n7\n7\n"), 3U);
    EXPECT_EQ (planes ("2\nc\n2\n7\n7\nb\n3\n1\n2\n3\n"), 3U);
}

TEST (result_data, a_truncated_gzip_is_read_as_far_as_it_goes) {
    std::string text = "1 1 20000\na\nff\n0\n";
    for (int i = 0; i < 20000; ++i) text += std::to_string (i * 7919 % 10007) + "\n";
    const Loaded loaded = Loaded::gzipped (text, 2000);
    EXPECT_TRUE (loaded.data.error);
    EXPECT_THAT (loaded.message, ::testing::MatchesRegex ("data error: <0, 0, [0-9]+>\n"));
    EXPECT_GT (loaded.data.counts.size (), 1000U);
}

TEST (result_data, the_largest_count_stays_0_for_a_file_of_zeros) {
    EXPECT_EQ (Loaded ("1 1 2\na\nff\n0\n0\n0\n").data.max, 0U);
}

TEST (result_data, a_name_of_255_characters_with_its_end_of_line_loads) {
    const std::string name (254, 'n');
    const Loaded loaded ("1 1 0\n" + name + "\nff\n0\n");
    EXPECT_FALSE (loaded.data.error);
    EXPECT_THAT (loaded.data.names, ElementsAre (name));
    EXPECT_FALSE (Loaded ("1 1 0\r\n" + name + "\r\nff\r\n0\r\n").data.error);
    EXPECT_EQ (Loaded ("1 1 0\r\n" + name + "x\r\nff\r\n0\r\n").message,
               "Colourmap-value error: c = 0\n");
    EXPECT_EQ (Loaded ("1 1 0\n" + name + "xx\nff\n0\n").message, "Colourmap-value error: c = 0\n");
}

TEST (line_reader, a_pipe_tells_the_bytes_that_came) {
    int ends[2];
    ASSERT_EQ (pipe (ends), 0);
    ASSERT_EQ (write (ends[1], "a\nbc\n", 5), 5);
    close (ends[1]);
    gzFile stream = gzdopen (ends[0], "rb");
    LineReader lines (stream);
    EXPECT_EQ (lines.next (), "a\n");
    std::uint64_t told = 0;
    lines.on_block ([&told] (std::uint64_t bytes) { told = bytes; });
    EXPECT_EQ (told, 5U);
    gzclose (stream);
}

TEST (line_reader, lines_come_in_pieces_of_255_bytes) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write ("lines", std::string (600, 'a') + "\nb\r\n\nlast without an end");
    gzFile stream = gzopen (path.c_str (), "rb");
    LineReader lines (stream);
    EXPECT_EQ (lines.next ()->size (), 255U);
    EXPECT_EQ (lines.next ()->size (), 255U);
    EXPECT_EQ (lines.next (), std::string (90, 'a') + "\n");
    EXPECT_EQ (lines.next (), "b\n");
    EXPECT_EQ (lines.next (), "\n");
    EXPECT_EQ (lines.next (), "last without an end");
    EXPECT_FALSE (lines.next ().has_value ());
    gzclose (stream);
}

} // namespace
} // namespace ostrand::viewer
