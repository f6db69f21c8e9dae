#include "pickboxes.h"

#include "dbaccess.h"
#include "dbattdef.h"
#include "dbblockreference.h"
#include "dbdim.h"
#include "dbspline.h"
#include "entityshapes.h"
#include "movedblock.h"
#include "shapegeometry.h"
#include "shownspline.h"
#include "widepieces.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// More than what a chain of products and sums loses, and than the allowance of the tests.
double roomFor(double magnitude) {
    constexpr double ulps = 64.0;
    return AcGe::pointAllowance(AcGeContext::gTol, magnitude) + ulps * AcGe::ulpOf(magnitude);
}

double largestSide(const SearchBox& box) {
    double largest = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        largest = std::max({largest, std::abs(box.low[axis]), std::abs(box.high[axis])});
    return largest;
}

void grow(SearchBox& box, double room) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box.low[axis] -= room;
        box.high[axis] += room;
    }
}

SearchBox boxAround(const AcDbExtents& extents, double beyond) {
    if (extents.isEmpty()) return PickBoxes::emptyBox();
    const AcGePoint3d& low = extents.minPoint();
    const AcGePoint3d& high = extents.maxPoint();
    SearchBox box{{low.x, low.y, low.z}, {high.x, high.y, high.z}};
    grow(box, beyond + roomFor(largestSide(box)));
    return PickBoxes::isEndless(box) ? PickBoxes::endlessBox() : box;
}

SearchBox moved(const SearchBox& box, const AcGeMatrix3d& matrix) {
    if (PickBoxes::isEmpty(box) || PickBoxes::isEndless(box)) return box;
    SearchBox result{};
    double largest = 0.0;
    for (unsigned int row = 0; row < 3; ++row) {
        double middle = matrix(row, 3);
        double half = 0.0;
        double magnitude = std::abs(middle);
        for (unsigned int column = 0; column < 3; ++column) {
            const double center = (box.low[column] + box.high[column]) / 2.0;
            middle += matrix(row, column) * center;
            half += std::abs(matrix(row, column)) * (box.high[column] - box.low[column]) / 2.0;
            magnitude += std::abs(matrix(row, column) * center);
        }
        result.low[row] = middle - half;
        result.high[row] = middle + half;
        largest = std::max(largest, magnitude + half);
    }
    grow(result, roomFor(largest));
    return PickBoxes::isEndless(result) ? PickBoxes::endlessBox() : result;
}

/// The box and its copy in the last column or row.
void spread(SearchBox& box, const AcGeVector3d& step) {
    if (PickBoxes::isEmpty(box)) return;
    for (unsigned int axis = 0; axis < 3; ++axis) {
        box.low[axis] = std::min(box.low[axis], box.low[axis] + step[axis]);
        box.high[axis] = std::max(box.high[axis], box.high[axis] + step[axis]);
    }
    grow(box, roomFor(largestSide(box)));
}

SearchBox boxOfAttributes(const AcDbBlockReference& reference, PickBoxes& boxes) {
    SearchBox all = PickBoxes::emptyBox();
    const SubentityList& attributes = reference.attributes();
    for (std::size_t i = 0; i < attributes.count(); ++i)
        if (const AcDbEntity* attribute = attributes.isErasedAt(i) ? nullptr : attributes.at(i))
            all.extend(boxes.of(*attribute));
    return all;
}

SearchBox boxOfReference(const AcDbBlockReference& reference, PickBoxes& boxes) {
    SearchBox box = boxOfAttributes(reference, boxes);
    const AcDbObjectId id = reference.blockTableRecord();
    if (const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id); block && !id.isErased())
        box.extend(moved(boxes.of(*block), reference.blockTransform()));
    AcGeVector3d columns, rows;
    reference.getCopySpread(columns, rows);
    spread(box, columns);
    spread(box, rows);
    return PickBoxes::isEndless(box) ? PickBoxes::endlessBox() : box;
}

// A constant definition shows its text in a block and its tag in a space.
SearchBox boxOfDefinition(const AcDbAttributeDefinition& definition) {
    AcDbExtents extents;
    AcGePoint3d corners[4];
    for (const std::wstring* wording : {&definition.tagName(), &definition.text()})
        if (definition.letterBox(corners, wording))
            for (const AcGePoint3d& corner : corners) extents.addPoint(corner);
    return boxAround(extents, 0.0);
}

SearchBox boxOfFitPoints(const AcDbSpline& spline) {
    const AcGeNurbCurve3d curve = shownCurve(spline);
    AcDbExtents extents;
    for (int i = 0; i < curve.numControlPoints(); ++i) extents.addPoint(curve.controlPointAt(i));
    return boxAround(extents, 0.0);
}

} // namespace

SearchBox PickBoxes::emptyBox() {
    return {{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
}

SearchBox PickBoxes::endlessBox() {
    return {{-infinity, -infinity, -infinity}, {infinity, infinity, infinity}};
}

bool PickBoxes::isEndless(const SearchBox& box) {
    if (isEmpty(box) && box.low[0] == infinity) return false;
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (!std::isfinite(box.low[axis]) || !std::isfinite(box.high[axis])) return true;
    return false;
}

SearchBox PickBoxes::of(const AcDbEntity& entity) {
    if (const auto* reference = AcDbBlockReference::cast(&entity)) return boxOfReference(*reference, *this);
    if (const auto* dimension = AcDbDimension::cast(&entity)) {
        const AcDbObjectId id = dimension->dimBlockId();
        const auto* block = DatabaseAccess::objectOf<AcDbBlockTableRecord>(id);
        if (block) return id.isErased() ? emptyBox() : moved(of(*block), blockPlacement(*dimension));
    }
    if (const auto* definition = AcDbAttributeDefinition::cast(&entity)) return boxOfDefinition(*definition);
    if (isShownAsDrawn(entity)) return boxOfDrawing(entity);
    AcDbExtents extents;
    if (entity.getGeomExtents(extents) == Acad::eOk) return boxAround(extents, widthBeyondExtents(entity));
    const auto* spline = AcDbSpline::cast(&entity);
    if (spline && spline->isNull()) return boxOfFitPoints(*spline);
    return AcDbCurve::cast(&entity) ? endlessBox() : emptyBox();
}

// One that draws nothing is its extents to a region; applications tell them as they like.
SearchBox PickBoxes::boxOfDrawing(const AcDbEntity& entity) {
    const DrawnExtents drawn = drawnExtents(entity);
    for (const AcDbBlockTableRecord* block : drawn.blocks) (void)of(*block);
    if (!drawn.blocks.empty()) noteDrawn(entity, drawn.blocks);
    if (drawn.isEndless) return endlessBox();
    if (!drawn.box.isEmpty()) return boxAround(drawn.box, 0.0);
    AcDbExtents extents;
    if (entity.getGeomExtents(extents) == Acad::eOk) return boxAround(extents, 0.0);
    return AcDbCurve::cast(&entity) ? endlessBox() : emptyBox();
}

bool PickBoxes::findNear(const AcDbBlockTableRecord&, const std::function<bool(const SearchBox&)>&,
                         std::vector<std::uint32_t>&) {
    return false;
}

SearchBox PickBoxes::ofPart(const AcDbEntity& entity, const AcDbBlockTableRecord& block) {
    m_path.push_back(&block);
    const SearchBox box = of(entity);
    m_path.pop_back();
    return box;
}

const SearchBox& PickBoxes::of(const AcDbBlockTableRecord& block) {
    if (!m_path.empty()) noteShown(block, *m_path.back());
    if (const auto known = m_blocks.find(&block); known != m_blocks.end()) return known->second;
    static const SearchBox endless = endlessBox();
    constexpr std::size_t deepest = 64;
    const bool holdsItself = std::find(m_path.begin(), m_path.end(), &block) != m_path.end();
    if (holdsItself || m_path.size() >= deepest) return endless;
    m_path.push_back(&block);
    const SearchBox box = ofContents(block);
    m_path.pop_back();
    return m_blocks.insert_or_assign(&block, box).first->second;
}

SearchBox PickBoxes::ofContents(const AcDbBlockTableRecord& block) {
    SearchBox all = emptyBox();
    for (const AcDbObjectId id : block.entities()) {
        const auto* entity = id.isErased() ? nullptr : DatabaseAccess::objectOf<AcDbEntity>(id);
        if (entity) all.extend(of(*entity));
    }
    return isEndless(all) ? endlessBox() : all;
}

PlaneBox seen(const SearchBox& box, const ViewMap& toView) {
    if (PickBoxes::isEmpty(box)) return {};
    const SearchBox view = moved(box, toView.matrix);
    PlaneBox result;
    result.low.set(view.low[0], view.low[1]);
    result.high.set(view.high[0], view.high[1]);
    return result;
}

} // namespace hostkit
