// Where does the layout package put species and compartments?
#include "sbml_in/extract.h"

#include <cmath>
#include <map>

#include <sbml/packages/layout/common/LayoutExtensionTypes.h>

namespace ostrand::sbml_in {
namespace {

std::optional<Box> box_of (const ::GraphicalObject& glyph) {
    const ::BoundingBox* b = glyph.getBoundingBox ();
    if (b == nullptr) return std::nullopt;
    const Box box{b->x (), b->y (), b->width (), b->height ()};
    constexpr double far = 1e7; // beyond this no canvas reaches
    for (const double v : {box.x, box.y, box.width, box.height}) {
        if (!std::isfinite (v) || std::fabs (v) > far) return std::nullopt;
    }
    return box;
}

} // namespace

Places extract_places (const ::Model& from, const Model& model) {
    Places places;
    const auto* plugin = dynamic_cast<const ::LayoutModelPlugin*> (from.getPlugin ("layout"));
    if (plugin == nullptr || plugin->getNumLayouts () == 0) return places;
    std::map<std::string, int> species;
    std::map<std::string, int> reactions;
    std::map<std::string, int> compartments;
    for (std::size_t i = 0; i < model.species.size (); ++i) {
        species.try_emplace (model.species[i].id, static_cast<int> (i));
    }
    for (std::size_t i = 0; i < model.reactions.size (); ++i) {
        reactions.try_emplace (model.reactions[i].id, static_cast<int> (i));
    }
    for (std::size_t i = 0; i < model.compartments.size (); ++i) {
        compartments.try_emplace (model.compartments[i].id, static_cast<int> (i));
    }
    for (int l = 0; l < static_cast<int> (plugin->getNumLayouts ()) && places.empty (); ++l) {
        const ::Layout& layout = *plugin->getLayout (static_cast<unsigned> (l));
        std::map<std::string, int> glyph_of;
        for (unsigned i = 0; i < layout.getNumSpeciesGlyphs (); ++i) {
            const ::SpeciesGlyph& g = *layout.getSpeciesGlyph (i);
            const auto at = species.find (g.getSpeciesId ());
            const auto box = box_of (g);
            if (at == species.end () || !box) continue;
            glyph_of.try_emplace (g.getId (), static_cast<int> (places.glyphs.size ()));
            places.glyphs.push_back ({g.getId (), at->second, *box});
        }
        for (unsigned i = 0; i < layout.getNumCompartmentGlyphs (); ++i) {
            const ::CompartmentGlyph& g = *layout.getCompartmentGlyph (i);
            const auto at = compartments.find (g.getCompartmentId ());
            const auto box = box_of (g);
            if (at != compartments.end () && box && box->width > 0 && box->height > 0) {
                places.compartments.emplace_back (at->second, *box);
            }
        }
        for (unsigned i = 0; i < layout.getNumReactionGlyphs (); ++i) {
            const ::ReactionGlyph& r = *layout.getReactionGlyph (i);
            const auto reaction = reactions.find (r.getReactionId ());
            if (reaction == reactions.end ()) continue;
            for (unsigned k = 0; k < r.getNumSpeciesReferenceGlyphs (); ++k) {
                const auto glyph =
                    glyph_of.find (r.getSpeciesReferenceGlyph (k)->getSpeciesGlyphId ());
                if (glyph == glyph_of.end ()) continue;
                places.uses.push_back (
                    {reaction->second,
                     places.glyphs[static_cast<std::size_t> (glyph->second)].species,
                     glyph->second});
            }
        }
    }
    return places;
}

} // namespace ostrand::sbml_in
