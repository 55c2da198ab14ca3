// OpenGL in a buffer that no screen shows.
#include "support/off_screen.h"

#include <array>
#include <cstdint>
#include <dlfcn.h>

namespace ostrand::testing {
namespace {

// Numbers and signatures of EGL 1.4.
using Config = void*;
constexpr std::int32_t none = 0x3038;
constexpr unsigned surfaceless = 0x31DD;
constexpr unsigned opengl_api = 0x30A2;

} // namespace

template <typename Function>
Function OffScreen::find (const char* name) const {
    return reinterpret_cast<Function> (dlsym (library_, name));
}

OffScreen::OffScreen (int width, int height, int samples) {
    library_ = dlopen ("libEGL.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library_) return;
    const auto get_display = find<void* (*)(std::intptr_t)> ("eglGetDisplay");
    const auto get_platform =
        find<void* (*)(unsigned, void*, const std::intptr_t*)> ("eglGetPlatformDisplay");
    const auto initialize =
        find<unsigned (*) (void*, std::int32_t*, std::int32_t*)> ("eglInitialize");
    const auto bind = find<unsigned (*) (unsigned)> ("eglBindAPI");
    const auto choose =
        find<unsigned (*) (void*, const std::int32_t*, Config*, std::int32_t, std::int32_t*)> (
            "eglChooseConfig");
    const auto make_surface =
        find<void* (*)(void*, Config, const std::int32_t*)> ("eglCreatePbufferSurface");
    const auto make_context =
        find<void* (*)(void*, Config, void*, const std::int32_t*)> ("eglCreateContext");
    const auto make_current = find<unsigned (*) (void*, void*, void*, void*)> ("eglMakeCurrent");
    if (!get_display || !initialize || !bind || !choose || !make_surface || !make_context ||
        !make_current)
        return;
    display_ = get_platform ? get_platform (surfaceless, nullptr, nullptr) : nullptr;
    if (!display_) display_ = get_display (0);
    if (!display_ || !initialize (display_, nullptr, nullptr)) return;
    if (!bind (opengl_api)) return;
    // A buffer for pictures, for OpenGL, with 8 bits for each colour, and samples.
    const std::array<std::int32_t, 15> wanted{0x3033, 0x0001,  0x3040, 0x0008,
                                              0x3024, 8,       0x3023, 8,
                                              0x3022, 8,       0x3032, samples > 1 ? 1 : 0,
                                              0x3031, samples, none};
    Config config = nullptr;
    std::int32_t found = 0;
    if (!choose (display_, wanted.data (), &config, 1, &found) || found == 0) return;
    const std::array<std::int32_t, 5> size{0x3057, width, 0x3056, height, none};
    surface_ = make_surface (display_, config, size.data ());
    context_ = make_context (display_, config, nullptr, nullptr);
    good_ = surface_ && context_ && make_current (display_, surface_, surface_, context_);
}

OffScreen::~OffScreen () {
    if (!good_) return;
    find<unsigned (*) (void*, void*, void*, void*)> ("eglMakeCurrent") (display_, nullptr, nullptr,
                                                                        nullptr);
    find<unsigned (*) (void*, void*)> ("eglDestroyContext") (display_, context_);
    find<unsigned (*) (void*, void*)> ("eglDestroySurface") (display_, surface_);
}

} // namespace ostrand::testing
