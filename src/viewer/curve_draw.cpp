// Puts scenes and curves on the current OpenGL context.
#include "viewer/curve_draw.h"

#include "toolkit/gl_text.h"
#include "toolkit/pixels.h"
#include "viewer/thin_curve.h"

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

/// Lines along an axis are drawn as rectangles: they fill whole pixels with every renderer.
void draw_line (const FlatLine& line) {
    const float half = line.width / 2;
    if (line.points.size () == 2) {
        const Point2 a = line.points[0];
        const Point2 b = line.points[1];
        if (a.y == b.y) {
            glRectf (a.x, a.y - half, b.x, a.y + half);
            return;
        }
        if (a.x == b.x) {
            glRectf (a.x - half, a.y, a.x + half, b.y);
            return;
        }
    }
    glLineWidth (line.width);
    draw_strip (line.points);
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
    const float width = toolkit::line_pixels (1, size.unit);
    const float inset = toolkit::device_pixels (2, size.unit) + width / 2;
    use_colour (frame_colour);
    const float right = size.w - inset;
    const float bottom = size.hp - inset;
    draw_line ({{{inset, inset}, {right, inset}}, frame_colour, width});
    draw_line ({{{inset, bottom}, {right, bottom}}, frame_colour, width});
    draw_line ({{{inset, inset}, {inset, bottom}}, frame_colour, width});
    draw_line ({{{right, inset}, {right, bottom}}, frame_colour, width});
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
    // Where each pixel has several samples, smooth edges need no transparency.
    GLint samples = 0;
    glGetIntegerv (GL_SAMPLES, &samples);
    if (samples > 1) glDisable (GL_BLEND);
    CurveThinner thinner (state, layout);
    glEnableClientState (GL_VERTEX_ARRAY);
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        glPushMatrix ();
        glTranslatef (0, 0, layout.z_of (plane));
        for (std::uint32_t species = 0; species < data.n_displayed; ++species) {
            if (!state.shows (species)) continue;
            const std::uint32_t* counts = data.series (state.selected_offset + plane, species);
            const std::vector<CurvePiece>& pieces = thinner.thin ({counts, data.n_points}, plane);
            if (pieces.empty ()) continue;
            use_colour (data.colours[species]);
            glVertexPointer (2, GL_FLOAT, sizeof (Point2), pieces.data ());
            glDrawArrays (GL_LINES, 0, static_cast<GLsizei> (pieces.size () * 2));
        }
        glPopMatrix ();
    }
    glDisableClientState (GL_VERTEX_ARRAY);
    if (samples > 1) glEnable (GL_BLEND);
}

void draw_flat_parts (const Scene& scene, bool reverse_video) {
    const GLfloat paper = reverse_video ? 0.0F : 1.0F;
    glColor4f (paper, paper, paper, 0.7F);
    for (const FlatBox& patch : scene.patches) {
        glRectf (patch.low.x, patch.low.y, patch.high.x, patch.high.y);
    }
    for (const std::vector<FlatLine>* lines : {&scene.lines, &scene.legend_lines}) {
        for (const FlatLine& line : *lines) {
            use_colour (line.colour);
            draw_line (line);
        }
    }
    const GLfloat ink = reverse_video ? 1.0F : 0.0F;
    for (const FlatText& text : scene.texts) {
        glColor3f (ink, ink, ink);
        toolkit::draw_gl_text (text.text, text.font, text.size, text.at.x, text.at.y);
    }
}

} // namespace ostrand::viewer
