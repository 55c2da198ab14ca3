// OpenGL in a buffer that no screen shows.
#pragma once

namespace ostrand::testing {

/// A context of a size in pixels, made through EGL without a display and current while it lives.
/// The library is looked for when the test runs, since nothing else needs it.
class OffScreen {
  public:
    /// samples  for each pixel; 0 or 1 for one
    OffScreen (int width, int height, int samples = 0);
    OffScreen (const OffScreen&) = delete;
    OffScreen& operator= (const OffScreen&) = delete;
    ~OffScreen ();

    /// False where this machine has no such thing.
    bool good () const { return good_; }

  private:
    template <typename Function>
    Function find (const char* name) const;

    void* library_ = nullptr;
    void* display_ = nullptr;
    void* surface_ = nullptr;
    void* context_ = nullptr;
    bool good_ = false;
};

} // namespace ostrand::testing
