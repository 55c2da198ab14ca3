// report_message and its sinks.
#include "base/report.h"

#include "base/text.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace ostrand {
namespace {

constexpr std::size_t status_line_length = 127;

/// Process-wide state of the messages.
struct ReportState {
    std::mutex lock;
    MessageSink status_line;
    MessageSink scope;
};

ReportState& state () {
    static ReportState the_state;
    return the_state;
}

} // namespace

void report_message (const char* format, ...) {
    std::string text;
    if (format != nullptr) {
        va_list arguments;
        va_start (arguments, format);
        text = format_text_v (format, arguments);
        va_end (arguments);
    }
    MessageSink scope;
    MessageSink line;
    {
        const std::lock_guard guard (state ().lock);
        scope = state ().scope;
        line = state ().status_line;
    }
    if (scope) {
        scope (text);
    } else if (line) {
        line (std::string_view (text).substr (0, status_line_length));
    } else if (format != nullptr) {
        text += '\n';
        std::fwrite (text.data (), 1, text.size (), stderr);
        std::fflush (stderr);
    }
}

void set_status_line (MessageSink line) {
    const std::lock_guard guard (state ().lock);
    state ().status_line = std::move (line);
}

MessageScope::MessageScope (MessageSink sink) {
    const std::lock_guard guard (state ().lock);
    outer_ = std::exchange (state ().scope, std::move (sink));
}

MessageScope::~MessageScope () {
    const std::lock_guard guard (state ().lock);
    state ().scope = std::move (outer_);
}

} // namespace ostrand
