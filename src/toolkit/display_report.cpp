// Asking screen, OpenGL and fonts.
#include "toolkit/display_report.h"

#include "base/text.h"

#include <FL/Fl.H>
#include <FL/platform.H>
#include <GL/gl.h>
#include <set>
#ifdef FLTK_USE_X11
#include <GL/glx.h>
#include <X11/Xlib.h>
#endif

namespace ostrand::toolkit {
namespace {

std::string gl_line (const char* word, GLenum name) {
    const auto* const text =
        reinterpret_cast<const char*> (glGetString (name)); // bytes, by the API
    return text == nullptr ? std::string () : std::string (word) + ' ' + text + '\n';
}

#ifdef FLTK_USE_X11
/// Asks in a context on a window that is never mapped.
std::string opengl_lines () {
    // The toolkit's own connection, which it opened to tell the screens.
    Display* const display = fl_x11_display ();
    if (display == nullptr) return {};
    int wanted[] = {GLX_RGBA, GLX_ALPHA_SIZE, 1, None};
    std::string lines;
    if (XVisualInfo* const visual = glXChooseVisual (display, DefaultScreen (display), wanted)) {
        const Window root = RootWindow (display, visual->screen);
        XSetWindowAttributes attributes{};
        attributes.colormap = XCreateColormap (display, root, visual->visual, AllocNone);
        const Window window =
            XCreateWindow (display, root, 0, 0, 16, 16, 0, visual->depth, InputOutput,
                           visual->visual, CWColormap | CWBorderPixel, &attributes);
        if (GLXContext context = glXCreateContext (display, visual, nullptr, True)) {
            if (glXMakeCurrent (display, window, context) == True)
                lines = gl_line ("renderer", GL_RENDERER) + gl_line ("opengl", GL_VERSION);
            glXMakeCurrent (display, None, nullptr);
            glXDestroyContext (display, context);
        }
        XDestroyWindow (display, window);
        XFreeColormap (display, attributes.colormap);
        XFree (visual);
    }
    return lines;
}
#else
std::string opengl_lines () { return {}; }
#endif

} // namespace

std::string display_report () {
    std::string text;
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    Fl::screen_xywh (x, y, w, h, 0);
    text +=
        format_text ("screen %dx%d\nscale %g\n", w, h, static_cast<double> (Fl::screen_scale (0)));
    text += opengl_lines ();
    std::set<std::string> families;
    const Fl_Font count = Fl::set_fonts ("-*");
    for (Fl_Font font = 0; font < count; ++font) {
        int attributes = 0;
        const char* const name = Fl::get_font_name (font, &attributes);
        if (name != nullptr && attributes == 0) families.insert (name);
    }
    for (const std::string& family : families) text += "font " + family + '\n';
    return text;
}

} // namespace ostrand::toolkit
