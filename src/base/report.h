// Where messages for the user go: the one sink of all subsystems.
// Layer: base.
#pragma once
#include <functional>
#include <string_view>

namespace ostrand {

/// Shows one line of text; an empty text clears the line.
using MessageSink = std::function<void (std::string_view text)>;

/// Shows a message, formatted as printf does. With a status line present the text goes there, cut
/// to 127 characters; without one it goes to standard error with a newline. A null format clears
/// the status line. Messages may be of any length. Safe to call from any thread.
void report_message (const char* format, ...) __attribute__ ((format (printf, 1, 2)));

/// Installs the status line of the main window; an empty function takes it away.
void set_status_line (MessageSink line);

/// While it lives, messages reach this sink, uncut, and nothing else: for tests, and for commands
/// that want to know what a reader said. Scopes nest.
class MessageScope {
  public:
    explicit MessageScope (MessageSink sink);
    ~MessageScope ();
    MessageScope (const MessageScope&) = delete;
    MessageScope& operator= (const MessageScope&) = delete;

  private:
    MessageSink outer_;
};

} // namespace ostrand
