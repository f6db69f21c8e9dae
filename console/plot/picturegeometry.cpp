#include "picturegeometry.h"

#include "aced.h"
#include "amodeler.h"
#include "dbattdef.h"
#include "dbblockreference.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbmodelergeometry.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbviewport.h"
#include "headervariables.h"
#include "linepattern.h"
#include "sheet.h"

#include <utility>

using hostkit::PicturePath;

namespace {

// Blocks within blocks may stand for any number of entities; a picture ends at these.
constexpr int deepestNesting = 50;
constexpr std::size_t mostEntities = 2'000'000;
constexpr std::size_t breakInterval = 256; // entities between looks for a break of the user
constexpr double densestLines = 0.3;       // millimetres between lines on paper
constexpr double toneOfLines = 0.3;        // opacity of the tone that stands for lines

// Texts of blanks are as good as drawn.
bool mayShowNothing(const AcDbEntity& entity) { return AcDbText::cast(&entity) || AcDbMText::cast(&entity); }

// References and viewports show what others are.
bool showsOthers(const AcDbEntity& entity) {
    return AcDbBlockReference::cast(&entity) || AcDbViewport::cast(&entity);
}

} // namespace

void PictureTraits::setColor(const Adesk::UInt16 color) {
    AcCmEntityColor told;
    if (told.setColorIndex(color) == Acad::eOk) change().color = told;
}

PictureDraw::PictureDraw(AcDbDatabase& database, LookTable& looks, PictureSink& sink)
    : m_sink(sink)
    , m_looks(looks)
    , m_context(database)
    , m_geometry(*this) {}

Adesk::Boolean PictureDraw::regenAbort() const {
    return m_report.isCut || (m_visited % breakInterval == 0 && acedUsrBrk());
}

double PictureDraw::deviation(const AcGiDeviationType, const AcGePoint3d&) const {
    constexpr double onPaper = 0.02; // millimetres
    return m_sink.scale() > 0.0 ? onPaper / m_sink.scale() : 0.0;
}

const Look& PictureDraw::look() {
    if (m_traits.takeChange()) m_look = m_looks.lookOf(m_traits.wanted(), m_around);
    return m_look;
}

void PictureDraw::count(const AcDbEntity& entity, bool isSeen) {
    if (showsOthers(entity)) return;
    if (isSeen || (mayShowNothing(entity) && !m_sink.showsLinesAlone())) {
        ++m_report.drawn;
        return;
    }
    const wchar_t* name = entity.dxfName();
    ++m_report.notDrawn[name ? name : L"?"];
}

void PictureDraw::drawEntity(AcDbEntity& entity) {
    if (++m_visited > mostEntities) m_report.isCut = true;
    if (regenAbort()) return;
    const PictureTraits before = m_traits;
    const Look lookBefore = std::move(m_look);
    m_traits = PictureTraits();
    const bool isInvisible = (entity.setAttributes(&m_traits) & AcGiDrawable::kDrawableIsInvisible) != 0;
    // References and viewports on a layer that is only off still show what stands on other layers.
    const AcDbObjectId layer = look().layer;
    const bool isFrozen = isInvisible || m_looks.isFrozen(layer);
    if (!isFrozen)
        if (const std::optional<SheetView> view = sheetViewOf(entity)) drawView(*view);
    if (!isFrozen && (AcDbBlockReference::cast(&entity) || !m_looks.isHidden(layer))) {
        const std::size_t marks = m_marks;
        const std::size_t notDrawn = m_report.notDrawn.size();
        if (m_sink.showsLinesAlone()) showBody(entity);
        entity.worldDraw(this);
        count(entity, m_marks > marks || m_report.notDrawn.size() > notDrawn);
    }
    m_traits = before;
    m_look = std::move(lookBefore);
}

void PictureDraw::showBody(const AcDbEntity& entity) {
    const auto* const solid = AcDbModelerGeometry::cast(&entity);
    AModeler::Body body;
    if (solid && solid->getBody(body) == Acad::eOk)
        m_sink.body(body, m_geometry.toWorld(), m_geometry.stroke());
}

// The model through a viewport: what is by block there belongs to no block.
void PictureDraw::drawView(const SheetView& view) {
    const AcDbObjectPointer<AcDbBlockTableRecord> model(m_context.database()->modelSpaceId(), AcDb::kForRead);
    if (!model.object() || m_isInView) return;
    const PictureTraits before = m_traits;
    const std::vector<AcDbObjectId> hidden = m_looks.hiddenToo();
    hostkit::PicturePath outline = view.outline;
    outline.transformBy(m_geometry.toWorld());
    if (m_sink.scale() == 0.0) m_sink.stroke(outline, StrokeStyle()); // of extents, whatever it shows
    m_sink.beginClip(outline);
    m_looks.hideAlso(view.frozen);
    m_isInView = true;
    if (m_context.database()->header().integer(L"PSLTSCALE", 1) != 0) m_dashScale = 1.0 / view.scale;
    m_geometry.pushModelTransform(view.modelToSheet);
    model->worldDraw(this);
    m_geometry.popModelTransform();
    m_dashScale = 1.0;
    m_isInView = false;
    m_looks.hideAlso(hidden);
    m_sink.endClip();
    m_traits = before;
    ++m_marks;
}

void PictureDraw::drawParts(AcGiDrawable& drawable) {
    if (m_depth >= deepestNesting) {
        m_report.isCut = true;
        return;
    }
    const Look reference = look();
    const Look* around = std::exchange(m_around, &reference);
    ++m_depth;
    drawable.worldDraw(this);
    --m_depth;
    m_around = around;
}

Adesk::Boolean PictureDraw::Geometry::draw(AcGiDrawable* drawable) const {
    if (!drawable) return Adesk::kFalse;
    if (AcDbEntity* entity = AcDbEntity::cast(drawable))
        m_owner.drawEntity(*entity);
    else
        m_owner.drawParts(*drawable);
    return m_owner.regenAbort();
}

StrokeStyle PictureDraw::Geometry::stroke() const {
    const Look& look = m_owner.look();
    StrokeStyle style;
    style.rgb = look.rgb;
    style.lineweight = look.lineweight;
    if (look.dashes.empty()) return style;
    const DashArray pattern = dashArray(look.dashes, hostkit::lengthScale(toWorld()) * m_owner.m_dashScale);
    style.dashes = pattern.dashes;
    style.dashStart = pattern.start;
    return style;
}

void PictureDraw::Geometry::strokePath(const PicturePath& path, double width) const {
    StrokeStyle style = stroke();
    style.width = width;
    m_owner.mark().stroke(path, style);
}

void PictureDraw::Geometry::fillPath(const PicturePath& path) const {
    if (m_owner.m_sink.showsLinesAlone()) return;
    m_owner.mark().fill(path, m_owner.look().rgb, 1.0);
}

void PictureDraw::Geometry::groundPath(const PicturePath& path, std::uint32_t rgb) const {
    if (m_owner.m_sink.showsLinesAlone()) return;
    const std::uint32_t white = 0xFFFFFF;
    m_owner.mark().fill(path, rgb == white ? m_owner.m_looks.paper().ground : rgb, 1.0);
}

void PictureDraw::Geometry::tonePath(const PicturePath& path) const {
    if (m_owner.m_sink.showsLinesAlone()) return;
    m_owner.mark().fill(path, m_owner.look().rgb, toneOfLines);
}

void PictureDraw::Geometry::placeLetters(const hostkit::PlacedText& text) const {
    if (m_owner.m_sink.showsLinesAlone()) return;
    hostkit::PlacedText colored = text;
    for (hostkit::TextRun& run : colored.runs)
        if (!run.hasOwnColor)
            run.rgb = m_owner.look().rgb;
        else if (run.rgb == 0)
            run.rgb = m_owner.m_looks.paper().ink();
    m_owner.mark().text(colored);
}

void PictureDraw::Geometry::placeDot(const AcGePoint3d& point) const {
    if (!m_owner.m_sink.showsLinesAlone()) m_owner.mark().dot(point, m_owner.look().rgb);
}

void PictureDraw::Geometry::placeEndless(const AcGePoint3d& point, const AcGeVector3d& direction,
                                         bool isBothWays) const {
    if (!m_owner.m_sink.showsLinesAlone()) m_owner.mark().endlessLine(point, direction, isBothWays, stroke());
}

void PictureDraw::Geometry::beginClip(const PicturePath& path) const { m_owner.m_sink.beginClip(path); }
void PictureDraw::Geometry::endClip() const { m_owner.m_sink.endClip(); }

bool PictureDraw::Geometry::areTooClose(double spacing) const {
    const double scale = m_owner.m_sink.scale();
    return !(scale > 0.0) || spacing * scale < densestLines;
}
