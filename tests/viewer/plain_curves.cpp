// The plain drawing of curves.
#include "viewer/plain_curves.h"

#include <FL/gl.h>

namespace ostrand::viewer {

void draw_plain_curves (const ResultData& data, const ViewState& state, const ViewLayout& layout) {
    glLineWidth (2 * layout.size.unit);
    std::vector<float> places (std::size_t{data.n_points} * 3);
    glEnableClientState (GL_VERTEX_ARRAY);
    for (std::uint32_t plane = 0; plane < layout.planes; ++plane) {
        for (std::uint32_t species = 0; species < data.n_displayed; ++species) {
            if (!state.shows (species)) continue;
            const std::uint32_t* counts = data.series (state.selected_offset + plane, species);
            for (std::uint32_t t = 0; t < data.n_points; ++t) {
                places[std::size_t{t} * 3] = layout.x_of (t);
                places[std::size_t{t} * 3 + 1] = layout.y_of (counts[t], state.scale);
                places[std::size_t{t} * 3 + 2] = layout.z_of (plane);
            }
            const std::uint32_t colour = data.colours[species];
            glColor3ub (static_cast<GLubyte> (colour >> 24), static_cast<GLubyte> (colour >> 16),
                        static_cast<GLubyte> (colour >> 8));
            glVertexPointer (3, GL_FLOAT, 0, places.data ());
            glDrawArrays (GL_LINE_STRIP, 0, static_cast<GLsizei> (data.n_points));
        }
    }
    glDisableClientState (GL_VERTEX_ARRAY);
}

} // namespace ostrand::viewer
