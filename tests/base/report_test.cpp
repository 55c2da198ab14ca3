// The message sink and the platform.
#include "base/platform.h"
#include "base/report.h"
#include "support/support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

namespace ostrand {
namespace {

using ::testing::ElementsAre;

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

TEST (report, each_thread_has_its_own_status_line_and_scopes) {
    std::vector<std::string> line;
    set_status_line ([&line] (std::string_view text) { line.emplace_back (text); });
    std::vector<std::string> others;
    ::testing::internal::CaptureStderr ();
    std::thread ([&] {
        report_message ("nobody's");
        const MessageScope scope ([&] (std::string_view text) { others.emplace_back (text); });
        report_message ("the thread's");
    }).join ();
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "nobody's\n");
    report_message ("ours");
    EXPECT_THAT (line, ElementsAre ("ours"));
    EXPECT_THAT (others, ElementsAre ("the thread's"));
    set_status_line ({});
}

TEST (report, a_thread_may_share_the_scope_of_another) {
    testing::CaughtMessages messages;
    std::thread ([target = message_target ()] {
        const MessageScope shared (target);
        report_message ("for the other");
    }).join ();
    EXPECT_THAT (messages.all, ElementsAre ("for the other"));
}

TEST (report, a_shared_scope_that_has_ended_hears_no_more) {
    MessageTarget target;
    std::optional<testing::CaughtMessages> messages (std::in_place);
    target = message_target ();
    messages.reset ();
    ::testing::internal::CaptureStderr ();
    const MessageScope shared (target);
    report_message ("too late");
    EXPECT_EQ (::testing::internal::GetCapturedStderr (), "");
}

TEST (report, a_sink_may_report_itself) {
    std::vector<std::string> outer;
    const MessageScope first ([&] (std::string_view text) { outer.emplace_back (text); });
    const MessageScope second ([&] (std::string_view text) {
        if (text == "once") report_message ("twice");
        outer.emplace_back (text);
    });
    report_message ("once");
    EXPECT_THAT (outer, ElementsAre ("twice", "once"));
}

TEST (platform, tells_what_there_is) {
    EXPECT_GE (processor_count (), 1);
    EXPECT_GT (available_memory (), std::uint64_t{1} << 20);
    EXPECT_TRUE (std::filesystem::exists (executable_path ()));
    EXPECT_TRUE (std::filesystem::is_directory (temporary_directory ()));
}

} // namespace
} // namespace ostrand
