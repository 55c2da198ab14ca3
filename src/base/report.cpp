// report_message and its sinks.
#include "base/report.h"

#include "base/text.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace ostrand {

struct MessageRoute {
    std::recursive_mutex lock; // a sink may report
    MessageSink sink;
};

namespace {

constexpr std::size_t status_line_length = 127;

/// Where the messages of one thread go.
struct ThreadMessages {
    MessageTarget scope; // the innermost one
    MessageSink status_line;
};

ThreadMessages& of_this_thread () {
    static thread_local ThreadMessages messages;
    return messages;
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
    // Copies: what is called may open or close scopes itself.
    const MessageTarget scope = of_this_thread ().scope;
    if (scope) {
        const std::lock_guard guard (scope->lock);
        if (scope->sink) scope->sink (text);
    } else if (const MessageSink line = of_this_thread ().status_line) {
        line (std::string_view (text).substr (0, status_line_length));
    } else if (format != nullptr) {
        text += '\n';
        std::fwrite (text.data (), 1, text.size (), stderr);
        std::fflush (stderr);
    }
}

void set_status_line (MessageSink line) { of_this_thread ().status_line = std::move (line); }

MessageTarget message_target () { return of_this_thread ().scope; }

MessageTarget make_message_target (MessageSink sink) {
    auto route = std::make_shared<MessageRoute> ();
    route->sink = std::move (sink);
    return route;
}

MessageScope::MessageScope (MessageSink sink)
    : own_ (make_message_target (std::move (sink))),
      outer_ (std::exchange (of_this_thread ().scope, own_)) {}

MessageScope::MessageScope (MessageTarget target)
    : outer_ (std::exchange (of_this_thread ().scope, std::move (target))) {}

MessageScope::~MessageScope () {
    of_this_thread ().scope = std::move (outer_);
    if (!own_) return;
    // A thread that shares the sink may live on: what it says from now on reaches nobody.
    const std::lock_guard guard (own_->lock);
    own_->sink = nullptr;
}

} // namespace ostrand
