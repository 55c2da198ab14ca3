// The windows "About Ostrand" and "Contributors".
// Layer: shell.
#pragma once

namespace ostrand::shell {

/// Shows the About window, which is made once.
void show_about_window ();

} // namespace ostrand::shell
