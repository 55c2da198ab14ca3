// Geometry and painting in their simplest form, until the real ones take their places.
#include "document/network.h"
#include "document/picture.h"

namespace ostrand::document {
namespace {

class EvenMetrics : public MetricsProvider {
  public:
    FontMetrics measure (unsigned key, int pixel_size) const override {
        FontMetrics metrics;
        metrics.key = key;
        metrics.pixel_size = pixel_size;
        metrics.descent = pixel_size / 5;
        metrics.ascent = pixel_size - metrics.descent;
        metrics.height = pixel_size;
        for (unsigned code = 32; code <= 252; ++code) {
            if (code != 128) metrics.widths[code] = static_cast<float> (pixel_size) * 0.5F;
        }
        return metrics;
    }
};

} // namespace

const MetricsProvider& headless_metrics () {
    static const EvenMetrics provider;
    return provider;
}

void StdChar::paint (float, float, bool) {}
void Line::paint (float, float, bool) {}
void Picture::paint (float, float, bool) {}
void Node::paint (float, float, bool) {}
void Arque::paint (float, float, bool) { compute_geometry (); }
void Arque::compute_geometry () {}
void Compart::paint (float, float, bool) {}
void Network::paint (float, float, bool) {}
void Network::layout () {}
bool Network::align_node (Node&, bool, bool) { return false; }
bool Network::align_all () { return false; }
void Network::align_around (Node&) {}
bool Compart::drag (float, float) { return false; }
Char* Node::find_at (float, float, HitPlace&) { return nullptr; }
Char* Arque::find_at (float, float, HitPlace&) { return nullptr; }
Char* Compart::find_at (float, float, HitPlace&) { return nullptr; }
Char* Network::find_at (float, float, HitPlace&) { return nullptr; }

} // namespace ostrand::document
