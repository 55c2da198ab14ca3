// Puts scenes and curves on the current OpenGL context.
#include "viewer/curve_draw.h"

#include <FL/gl.h>
#include <cmath>
#include <vector>

namespace ostrand::viewer {
namespace {

constexpr float curve_width = 2; // units

void use_colour (std::uint32_t colour) {
    glColor3ub (static_cast<GLubyte> (colour >> 24), static_cast<GLubyte> (colour >> 16),
                static_cast<GLubyte> (colour >> 8));
}

void draw_strip (const std::vector<Point2>& points) {
    glBegin (GL_LINE_STRIP);
    for (const Point2& point : points) glVertex2f (point.x, point.y);
    glEnd ();
}

} // namespace

void set_line_blending () {
    glEnable (GL_BLEND);
    glBlendFunc (GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable (GL_LINE_SMOOTH);
    glHint (GL_LINE_SMOOTH_HINT, GL_NICEST);
}

void clear_picture (const ViewSize& size, bool reverse_video) {
    glViewport (0, 0, static_cast<GLsizei> (size.w), static_cast<GLsizei> (size.hp));
    const GLclampf level = reverse_video ? 0.0F : 1.0F;
    glClearColor (level, level, level, 1);
    glClear (GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void use_flat_projection (const ViewSize& size) {
    glMatrixMode (GL_PROJECTION);
    glLoadIdentity ();
    glOrtho (0, static_cast<double> (size.w), static_cast<double> (size.hp), 0, -1, 1);
    glMatrixMode (GL_MODELVIEW);
    glLoadIdentity ();
}

void use_scene_projection (const ViewState& state, const ViewLayout& layout) {
    glMatrixMode (GL_PROJECTION);
    glLoadMatrixd (projection_matrix (state, layout.size).data ());
    glMatrixMode (GL_MODELVIEW);
    glLoadMatrixd (modelview_matrix (state, layout).data ());
}

void draw_frame (const ViewSize& size) {
    const float inset = std::trunc (2 * size.unit) + 0.5F; // through the middle of pixels
    use_colour (frame_colour);
    glLineWidth (size.unit);
    draw_strip ({{inset, inset},
                 {size.w - inset, inset},
                 {size.w - inset, size.hp - inset},
                 {inset, size.hp - inset},
                 {inset, inset}});
}

void draw_grid (const Scene& scene) {
    glLineWidth (1);
    glBegin (GL_LINES);
    for (const SceneLine& line : scene.grid) {
        use_colour (line.colour);
        glVertex3f (line.a.x, line.a.y, line.a.z);
        glVertex3f (line.b.x, line.b.y, line.b.z);
    }
    glEnd ();
}

void draw_curves (const ResultData& data, const ViewState& state, const ViewLayout& layout) {
    glLineWidth (curve_width * layout.size.unit);
    std::vector<float> places (std::size_t{data.n_points} * 2);
    glEnableClientState (GL_VERTEX_ARRAY);
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        glPushMatrix ();
        glTranslatef (0, 0, layout.z_of (plane));
        for (std::uint32_t species = 0; species < data.n_displayed; ++species) {
            if (!state.shows (species)) continue;
            const std::uint32_t* counts = data.series (state.selected_offset + plane, species);
            for (std::uint32_t t = 0; t < data.n_points; ++t) {
                places[std::size_t{t} * 2] = layout.x_of (t);
                places[std::size_t{t} * 2 + 1] = layout.y_of (counts[t], state.scale);
            }
            use_colour (data.colours[species]);
            glVertexPointer (2, GL_FLOAT, 0, places.data ());
            glDrawArrays (GL_LINE_STRIP, 0, static_cast<GLsizei> (data.n_points));
        }
        glPopMatrix ();
    }
    glDisableClientState (GL_VERTEX_ARRAY);
}

void draw_flat_parts (const Scene& scene, bool reverse_video) {
    const GLfloat paper = reverse_video ? 0.0F : 1.0F;
    glColor4f (paper, paper, paper, 0.7F);
    for (const FlatPatch& patch : scene.patches) {
        glRectf (patch.low.x, patch.low.y, patch.high.x, patch.high.y);
    }
    for (const FlatLine& line : scene.lines) {
        use_colour (line.colour);
        glLineWidth (line.width);
        draw_strip (line.points);
    }
    const GLfloat ink = reverse_video ? 1.0F : 0.0F;
    for (const FlatText& text : scene.texts) {
        glColor3f (ink, ink, ink);
        gl_font (text.font, text.size);
        gl_draw (text.text.data (), static_cast<int> (text.text.size ()), text.at.x, text.at.y);
    }
}

} // namespace ostrand::viewer
