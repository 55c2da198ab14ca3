// The viewer's window around the view and its sliders, and its life.
// Layer: viewer.
#pragma once
#include "viewer/result_data.h"

namespace ostrand::viewer {

/// Shows the data until the window is closed. False, with a message, when there is no display or it
/// has no OpenGL.
///
/// When the environment variable OSTRAND_PICTURE names a file, the first picture is written there
/// as PNG and the window closes by itself: for scripts that want a picture of a result. False, told,
/// when it cannot be written.
bool run_viewer_window (ResultData& data, bool reverse_video);

} // namespace ostrand::viewer
