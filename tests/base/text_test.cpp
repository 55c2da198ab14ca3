// Text helpers.
#include "base/progress.h"
#include "base/text.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace ostrand {
namespace {

using ::testing::ElementsAre;

TEST (text, format_g_is_what_printf_gives) {
    std::mt19937_64 random (1);
    for (int i = 0; i < 20000; ++i) {
        std::uint64_t bits = random ();
        double value = 0;
        std::memcpy (&value, &bits, sizeof value);
        if (std::isnan (value)) continue;
        for (const int digits : {2, 3, 6, 9, 17}) {
            char expected[64];
            std::snprintf (expected, sizeof expected, "%.*g", digits, value);
            ASSERT_EQ (format_g (value, digits), expected);
        }
    }
    EXPECT_EQ (format_g (0.1), "0.1");
    EXPECT_EQ (format_g (1e20), "1e+20");
    EXPECT_EQ (format_g (std::numeric_limits<double>::infinity ()), "inf");
}

TEST (text, format_text_takes_any_length) {
    EXPECT_EQ (format_text ("%s-%d", std::string (9000, 'x').c_str (), 7),
               std::string (9000, 'x') + "-7");
    EXPECT_EQ (format_text ("%s", ""), "");
}

TEST (text, numbers_are_read_from_the_front) {
    EXPECT_EQ (parse_atof ("  1.5x"), 1.5);
    EXPECT_EQ (parse_atof ("1-2"), 1);
    EXPECT_EQ (parse_atof ("2e"), 2);
    EXPECT_EQ (parse_atof ("."), 0);
    EXPECT_EQ (parse_atof ("1e999"), std::numeric_limits<double>::infinity ());
    EXPECT_EQ (parse_atoi (" -12z"), -12);
    EXPECT_EQ (parse_atoi ("\n"), 0);
    EXPECT_EQ (parse_atoi ("99999999999999999999"), std::numeric_limits<int>::max ());
    EXPECT_EQ (parse_atoi ("-99999999999999999999"), std::numeric_limits<int>::min ());
}

TEST (text, scanning_follows_scanf) {
    EXPECT_EQ (scan_unsigned (" 17 rest"), 17U);
    EXPECT_EQ (scan_unsigned ("+5"), 5U);
    EXPECT_EQ (scan_unsigned ("-1"), 4294967295U);
    EXPECT_EQ (scan_unsigned ("x"), std::nullopt);
    EXPECT_EQ (scan_unsigned (""), std::nullopt);
    EXPECT_EQ (scan_unsigned ("4294967295"), 4294967295U);
    EXPECT_EQ (scan_hexadecimal ("fF00"), 0xFF00U);
    EXPECT_EQ (scan_hexadecimal ("0x1a"), 0x1AU);
    EXPECT_EQ (scan_hexadecimal ("0xz"), 0U);
    EXPECT_EQ (scan_hexadecimal ("g"), std::nullopt);
}

TEST (text, fields_keep_an_empty_middle_and_drop_an_empty_end) {
    EXPECT_THAT (split_fields ("a;;b"), ElementsAre ("a", "", "b"));
    EXPECT_THAT (split_fields ("a;"), ElementsAre ("a"));
    EXPECT_THAT (split_fields ("a;;"), ElementsAre ("a", ""));
    EXPECT_THAT (split_fields ("a;\n"), ElementsAre ("a", "\n"));
    EXPECT_THAT (split_fields (""), ElementsAre ());
    EXPECT_THAT (split_fields (";"), ElementsAre (""));
}

TEST (progress, durations_and_bars) {
    EXPECT_EQ (format_duration (4.2), "5 s");
    EXPECT_EQ (format_duration (125), "2 min 05 s");
    EXPECT_EQ (format_duration (3725), "1 h 02 min");
    EXPECT_EQ (format_duration (std::numeric_limits<double>::infinity ()), "?");
    EXPECT_EQ (progress_bar (0.5, 4), "[##--]");
    EXPECT_EQ (progress_bar (2, 4), "[####]");
}

TEST (progress, nothing_is_shown_without_a_terminal) {
    ::testing::internal::CaptureStderr ();
    ProgressLine ().show ("text");
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "");
}

} // namespace
} // namespace ostrand
