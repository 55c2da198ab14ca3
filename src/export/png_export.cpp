// Pictures of pixels: the SVG of a drawing, painted by librsvg.
#include "export/png_export.h"

#include "base/disk.h"
#include "base/text.h"
#include "document/document_state.h"
#include "export/export.h"

#include <cairo.h>
#include <charconv>
#include <cmath>
#include <librsvg/rsvg.h>
#include <memory>

namespace ostrand::drawing {
namespace {

/// Calls what frees an object of a C library.
template <auto free_it>
struct Freer {
    template <class Object>
    void operator() (Object* object) const {
        free_it (object);
    }
};
using Svg = std::unique_ptr<RsvgHandle, Freer<g_object_unref>>;
using Stream = std::unique_ptr<GInputStream, Freer<g_object_unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Freer<cairo_surface_destroy>>;
using Painter = std::unique_ptr<cairo_t, Freer<cairo_destroy>>;

constexpr double longest_side = 32767; // of a picture of cairo's

/// What went wrong in GLib, which the caller is to free.
std::string taken (GError* fault) {
    if (fault == nullptr) return "unknown fault";
    std::string text = fault->message;
    g_error_free (fault);
    return text;
}

cairo_status_t append (void* bytes, const unsigned char* data, unsigned length) noexcept {
    try {
        static_cast<std::string*> (bytes)->append (reinterpret_cast<const char*> (data), length);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

} // namespace

std::optional<double> read_png_scale (std::string_view text, std::string& error) {
    double scale = 0;
    const auto [end, fault] = std::from_chars (text.data (), text.data () + text.size (), scale);
    const bool whole = fault == std::errc () && end == text.data () + text.size ();
    if (whole && scale >= least_png_scale && scale <= largest_png_scale) return scale;
    error = format_text ("a scale is a number from %g to %g", least_png_scale, largest_png_scale);
    return {};
}

std::string png_bytes (const document::Network& network, double scale, std::string& error) {
    const std::string text = svg_text (network);
    GError* fault = nullptr;
    // Of any size: the text is ours.
    const Stream stream (g_memory_input_stream_new_from_data (
        text.data (), static_cast<gssize> (text.size ()), nullptr));
    const Svg svg (rsvg_handle_new_from_stream_sync (stream.get (), nullptr,
                                                     RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &fault));
    if (!svg) {
        error = taken (fault);
        return {};
    }
    const DrawingPage page = drawing_page (network);
    const double width = std::ceil (page.width * scale);
    const double height = std::ceil (page.height * scale);
    if (width > longest_side || height > longest_side) {
        error = format_text ("%.0f x %.0f pixels are too many", width, height);
        return {};
    }
    const Surface surface (cairo_image_surface_create (CAIRO_FORMAT_RGB24, static_cast<int> (width),
                                                       static_cast<int> (height)));
    const Painter painter (cairo_create (surface.get ()));
    if (!document::document_state ().dark_mode) {
        cairo_set_source_rgb (painter.get (), 1, 1, 1);
        cairo_paint (painter.get ());
    }
    const RsvgRectangle whole{0, 0, page.width * scale, page.height * scale};
    if (!rsvg_handle_render_document (svg.get (), painter.get (), &whole, &fault)) {
        error = taken (fault);
        return {};
    }
    std::string bytes;
    const cairo_status_t status =
        cairo_surface_write_to_png_stream (surface.get (), append, &bytes);
    if (status == CAIRO_STATUS_SUCCESS) return bytes;
    error = cairo_status_to_string (status);
    return {};
}

bool export_png (const document::Network& network, const std::filesystem::path& path, double scale,
                 std::string& error) {
    const std::string bytes = png_bytes (network, scale, error);
    return !bytes.empty () && write_file (path.string (), bytes, error);
}

} // namespace ostrand::drawing
