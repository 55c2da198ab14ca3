// Where do things stand, and in which colours?
#include "sbml_out/drawing.h"

#include "base/text.h"
#include "document/colors.h"

#include <algorithm>

#include <sbml/SBMLTypes.h>
#include <sbml/packages/layout/common/LayoutExtensionTypes.h>
#include <sbml/packages/render/common/RenderExtensionTypes.h>

namespace ostrand::sbml_out {
namespace {

using document::Arque;
using document::Node;

class DrawingWriter {
  public:
    DrawingWriter (const document::Network& network, const Ids& ids, ::Model& model)
        : network_ (network), ids_ (ids), model_ (model),
          plugin_ (*static_cast<::LayoutModelPlugin*> (model.getPlugin ("layout"))),
          layout_ (*plugin_.createLayout ()) {}

    void run (const std::vector<Equation>& equations);

  private:
    void box (::GraphicalObject& glyph, double x, double y, double width, double height);
    void text (const std::string& id, const std::string& of_glyph, const std::string& origin,
               const ::BoundingBox& around);
    void segment (::Curve& curve, document::Point a, document::Point b);
    void compartments ();
    void nodes ();
    void reaction (const Equation& e);
    void reference (::ReactionGlyph& glyph, const Part& p, bool is_product,
                    ::SpeciesReferenceRole_t role);
    void styles ();
    std::string glyph_of (const Node& n) const { return glyphs_.at (&n); }
    const std::string& species_of (const Node& n) const {
        return ids_.species.at (n.master () != nullptr ? n.master () : &n);
    }

    const document::Network& network_;
    const Ids& ids_;
    ::Model& model_;
    ::LayoutModelPlugin& plugin_;
    ::Layout& layout_;
    std::map<const Node*, std::string> glyphs_;
    /// Glyphs by fill, outline and shape.
    struct Look {
        unsigned fill;
        unsigned line;
        int shape; // 0 rectangle, 1 rounded, 2 ellipse, 3 nothing
        auto operator<=> (const Look&) const = default;
    };
    std::map<Look, std::vector<std::string>> looks_;
    std::map<unsigned, std::vector<std::string>> arcs_; // by colour
};

void DrawingWriter::box (::GraphicalObject& glyph, double x, double y, double width,
                         double height) {
    ::BoundingBox b (plugin_.getLevel (), plugin_.getVersion (), plugin_.getPackageVersion ());
    b.setX (x);
    b.setY (y);
    b.setWidth (std::max (width, 0.0));
    b.setHeight (std::max (height, 0.0));
    glyph.setBoundingBox (&b);
}

void DrawingWriter::text (const std::string& id, const std::string& of_glyph,
                          const std::string& origin, const ::BoundingBox& around) {
    ::TextGlyph& t = *layout_.createTextGlyph ();
    t.setId (id);
    t.setGraphicalObjectId (of_glyph);
    t.setOriginOfTextId (origin);
    t.setBoundingBox (&around);
}

void DrawingWriter::segment (::Curve& curve, document::Point a, document::Point b) {
    ::LineSegment& s = *curve.createLineSegment ();
    s.setStart (static_cast<double> (a.x), static_cast<double> (a.y));
    s.setEnd (static_cast<double> (b.x), static_cast<double> (b.y));
}

void DrawingWriter::compartments () {
    for (const auto& c : network_.comps ()) {
        const std::string& id = ids_.compartments.at (c.get ());
        ::CompartmentGlyph& g = *layout_.createCompartmentGlyph ();
        g.setId ("glyph_" + id);
        g.setCompartmentId (id);
        box (g, c->x (), c->y (), c->width (), c->height ());
        if (c->label () != nullptr) {
            text ("text_" + id, g.getId (), id, *g.getBoundingBox ());
        }
        looks_[{0xffffff00, c->color (), c->shape () == document::shape::ellipse ? 2 : 0}]
            .push_back (g.getId ());
    }
}

void DrawingWriter::nodes () {
    int number = 0;
    for (const auto& n : network_.nodes ()) {
        if (is_mark (*n)) continue;
        const std::string& species = species_of (*n);
        ::SpeciesGlyph& g = *layout_.createSpeciesGlyph ();
        const std::string id = "glyph_" + species + "_" + std::to_string (++number);
        glyphs_[n.get ()] = id;
        g.setId (id);
        g.setSpeciesId (species);
        const double width = n->get_width ();
        const double height = n->get_height ();
        box (g, n->x () - width / 2, n->y () - height / 2, width, height);
        text ("text_" + species + "_" + std::to_string (number), id, species, *g.getBoundingBox ());
        int shape = 0;
        if (n->group () == document::node::protein_group) shape = 1;
        if (n->group () == document::node::molecule_group) shape = 2;
        if (n->group () == 0) shape = 3;
        looks_[{n->bg_color (), n->color (), shape}].push_back (id);
    }
}

void DrawingWriter::reference (::ReactionGlyph& glyph, const Part& p, bool is_product,
                               ::SpeciesReferenceRole_t role) {
    ::SpeciesReferenceGlyph& g = *glyph.createSpeciesReferenceGlyph ();
    const auto reference = ids_.references.find ({p.arc, is_product});
    g.setId ("glyph_" + reference->second);
    g.setSpeciesGlyphId (glyph_of (*p.node));
    g.setSpeciesReferenceId (reference->second);
    g.setRole (role);
    const document::ArcGeometry& own = p.arc->geometry ();
    const bool is_main = document::is_reaction (p.arc->type ());
    if (!is_main) {
        // Product links start at their node in the network, in the drawing they lead to it.
        if (is_product)
            segment (*g.getCurve (), own.end, own.start);
        else
            segment (*g.getCurve (), own.start, own.end);
    } else if (is_product) {
        segment (*g.getCurve (), own.mark_b, own.end);
    } else {
        segment (*g.getCurve (), own.start, own.mark_a);
    }
    arcs_[p.arc->color ()].push_back (g.getId ());
}

void DrawingWriter::reaction (const Equation& e) {
    const auto id = ids_.reactions.find (e.arc);
    if (id == ids_.reactions.end ()) return;
    ::ReactionGlyph& g = *layout_.createReactionGlyph ();
    g.setId ("glyph_" + id->second);
    g.setReactionId (id->second);
    const document::ArcGeometry& own = e.arc->geometry ();
    segment (*g.getCurve (), e.reactants.empty () ? own.start : own.mark_a,
             e.products.empty () ? own.end : own.mark_b);
    arcs_[e.arc->color ()].push_back (g.getId ());
    for (const Part& p : e.reactants) {
        reference (g, p, false,
                   p.arc == e.arc ? ::SPECIES_ROLE_SUBSTRATE : ::SPECIES_ROLE_SIDESUBSTRATE);
    }
    for (const Part& p : e.products) {
        reference (g, p, true,
                   p.arc == e.arc ? ::SPECIES_ROLE_PRODUCT : ::SPECIES_ROLE_SIDEPRODUCT);
    }
    for (const Part& p : e.modifiers) {
        const unsigned type = p.arc->type ();
        reference (g, p, false,
                   type == document::arc::inhibition   ? ::SPECIES_ROLE_INHIBITOR
                   : type == document::arc::activation ? ::SPECIES_ROLE_ACTIVATOR
                                                       : ::SPECIES_ROLE_MODIFIER);
    }
}

/// A colour as the package writes it.
std::string hex (unsigned color) {
    return format_text ("#%06X", static_cast<unsigned> (document::color_rgb (color) >> 8));
}

void DrawingWriter::styles () {
    auto& plugin = *static_cast<::RenderLayoutPlugin*> (layout_.getPlugin ("render"));
    ::LocalRenderInformation& info = *plugin.createLocalRenderInformation ();
    info.setId ("colours");
    std::map<std::string, std::string> colors;
    const auto color = [&] (unsigned c) {
        const std::string text = hex (c);
        const auto [at, is_new] =
            colors.try_emplace (text, "colour_" + std::to_string (colors.size () + 1));
        if (is_new) {
            ::ColorDefinition& d = *info.createColorDefinition ();
            d.setId (at->second);
            d.setColorValue (text);
        }
        return at->second;
    };
    int number = 0;
    for (const auto& [look, ids] : looks_) {
        ::LocalStyle& style = *info.createStyle ("style_" + std::to_string (++number));
        for (const std::string& id : ids) style.addId (id);
        ::RenderGroup& group = *style.getGroup ();
        group.setStroke (color (look.line));
        group.setStrokeWidth (2);
        if (look.shape == 3) continue;
        group.setFillColor (color (look.fill));
        if (look.shape == 2) {
            ::Ellipse& e = *group.createEllipse ();
            e.setCenter2D (::RelAbsVector (0, 50), ::RelAbsVector (0, 50));
            e.setRadii (::RelAbsVector (0, 50), ::RelAbsVector (0, 50));
        } else {
            ::Rectangle& r = *group.createRectangle ();
            r.setCoordinates (::RelAbsVector (0, 0), ::RelAbsVector (0, 0), ::RelAbsVector (0, 0));
            r.setSize (::RelAbsVector (0, 100), ::RelAbsVector (0, 100));
            if (look.shape == 1) r.setRadii (::RelAbsVector (6, 0), ::RelAbsVector (6, 0));
        }
    }
    for (const auto& [line, ids] : arcs_) {
        ::LocalStyle& style = *info.createStyle ("style_" + std::to_string (++number));
        for (const std::string& id : ids) style.addId (id);
        style.getGroup ()->setStroke (color (line));
        style.getGroup ()->setStrokeWidth (2);
    }
}

void DrawingWriter::run (const std::vector<Equation>& equations) {
    layout_.setId ("drawing");
    ::Dimensions size (plugin_.getLevel (), plugin_.getVersion (), plugin_.getPackageVersion ());
    size.setWidth (network_.get_width ());
    size.setHeight (network_.get_height ());
    layout_.setDimensions (&size);
    compartments ();
    nodes ();
    for (const Equation& e : equations) reaction (e);
    styles ();
}

} // namespace

void write_drawing (const document::Network& network, const std::vector<Equation>& equations,
                    const Ids& ids, ::Model& model) {
    DrawingWriter (network, ids, model).run (equations);
}

} // namespace ostrand::sbml_out
