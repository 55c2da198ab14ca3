// The message sink and the platform.
#include "base/platform.h"
#include "base/report.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace ostrand {
namespace {

TEST (report, goes_to_standard_error_with_a_newline) {
    ::testing::internal::CaptureStderr ();
    report_message ("%s is %d", "this", 5);
    report_message (nullptr);
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "this is 5\n");
}

TEST (report, the_status_line_gets_127_characters) {
    std::string line;
    set_status_line ([&line] (std::string_view text) { line = text; });
    report_message ("%s", std::string (200, 'x').c_str ());
    EXPECT_EQ (line, std::string (127, 'x'));
    report_message (nullptr);
    EXPECT_EQ (line, "");
    set_status_line ({});
}

TEST (report, a_scope_takes_messages_uncut_and_scopes_nest) {
    testing::CaughtMessages outer;
    {
        testing::CaughtMessages inner;
        report_message ("%s", std::string (200, 'x').c_str ());
        EXPECT_EQ (inner.all[0].size (), 200U);
    }
    report_message ("after");
    EXPECT_EQ (outer.joined (), "after\n");
}

TEST (platform, tells_what_there_is) {
    EXPECT_GE (processor_count (), 1);
    EXPECT_GT (available_memory (), std::uint64_t{1} << 20);
    EXPECT_TRUE (std::filesystem::exists (executable_path ()));
    EXPECT_TRUE (std::filesystem::is_directory (temporary_directory ()));
}

} // namespace
} // namespace ostrand
