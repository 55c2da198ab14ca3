// Where messages for the user go: the one sink of all subsystems.
// Layer: base.
#pragma once
#include <functional>
#include <memory>
#include <string_view>

namespace ostrand {

/// Shows one line of text; an empty text clears the line.
using MessageSink = std::function<void (std::string_view text)>;

/// Shows a message, formatted as printf does, where the calling thread's messages go: to the
/// innermost MessageScope of the thread; without one to the thread's status line, cut to 127
/// characters; without that to standard error with a newline. A null format clears the status line.
/// Messages may be of any length. Safe to call from any thread.
void report_message (const char* format, ...) __attribute__ ((format (printf, 1, 2)));

/// Installs the status line of the calling thread, which is the one of the main window; an empty
/// function takes it away. No other thread reaches it, so it may call the toolkit.
void set_status_line (MessageSink line);

/// A sink with the lock under which it is called. Only report.cpp looks inside.
struct MessageRoute;

/// Where the messages of one thread go, to be handed to threads that work for it; null when no
/// scope is open.
using MessageTarget = std::shared_ptr<MessageRoute>;

/// The innermost scope of the calling thread.
MessageTarget message_target ();

/// A sink as a target, for threads that are still to be made.
MessageTarget make_message_target (MessageSink sink);

/// While it lives, the calling thread's messages reach one sink, uncut, and nothing else: for
/// tests, for commands that want to know what a reader said, and for long work, whose messages
/// somebody collects. Scopes nest and end on the thread that made them.
class MessageScope {
  public:
    explicit MessageScope (MessageSink sink);
    /// Shares a sink, maybe that of another thread's scope. It is called on all threads that share
    /// it, on one at a time, and no more once the scope that brought it in has ended. Needs no
    /// memory.
    explicit MessageScope (MessageTarget target);
    ~MessageScope ();
    MessageScope (const MessageScope&) = delete;
    MessageScope& operator= (const MessageScope&) = delete;

  private:
    MessageTarget own_; // null when the sink is another scope's
    MessageTarget outer_;
};

} // namespace ostrand
