#include "shapegeometry.h"

#include "blockextents.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"

#include <algorithm>
#include <cmath>

namespace hostkit {

namespace {

constexpr int deepestNesting = 50;
constexpr std::size_t mostParts = 100'000;

// What one question of this thread may still look at: an answer may ask others in turn.
thread_local int depth = 0;
thread_local std::size_t partsLeft = 0;

class Level {
public:
    Level() {
        if (depth++ == 0) partsLeft = mostParts;
    }
    ~Level() { --depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    bool isAllowed() const { return depth <= deepestNesting && partsLeft > 0; }
};

double onCubic(const double (&p)[4], double t) {
    const double s = 1.0 - t;
    return s * s * s * p[0] + 3.0 * s * t * (s * p[1] + t * p[2]) + t * t * t * p[3];
}

// Where a coordinate of a cubic turns round: the roots of its derivative within (0, 1).
void addTurns(const double (&p)[4], double& low, double& high) {
    const double a = p[3] - p[0] + 3.0 * (p[1] - p[2]);
    const double b = 2.0 * (p[0] - 2.0 * p[1] + p[2]);
    const double c = p[1] - p[0];
    const double root = std::sqrt(std::max(0.0, b * b - 4.0 * a * c));
    const double q = -0.5 * (b + std::copysign(root, b));
    for (const double t : {q / a, c / q})
        if (t > 0.0 && t < 1.0) {
            low = std::min(low, onCubic(p, t));
            high = std::max(high, onCubic(p, t));
        }
}

void addCubic(AcDbExtents& box, const AcGePoint3d& from, const AcGePoint3d* points) {
    AcGePoint3d low = from, high = from;
    for (unsigned int axis = 0; axis < 3; ++axis) {
        const double p[4] = {from[axis], points[0][axis], points[1][axis], points[2][axis]};
        double least = std::min(p[0], p[3]), most = std::max(p[0], p[3]);
        addTurns(p, least, most);
        low[axis] = least;
        high[axis] = most;
    }
    box.addPoint(low);
    box.addPoint(high);
}

class ExtentsGeometry final : public ShapeGeometry {
public:
    mutable DrawnExtents result;

private:
    void part(AcDbEntity& entity) const override;
    void whole(const AcGiDrawable& drawable) const override {
        if (const auto* block = AcDbBlockTableRecord::cast(&drawable)) result.blocks.push_back(block);
    }
    void add(AcDbExtents box) const {
        if (clip() && !box.isEmpty()) box = clippedTo(box, *clip());
        result.box.addExt(box);
    }
    static AcDbExtents clippedTo(const AcDbExtents& box, const AcDbExtents& clip) {
        AcGePoint3d low, high;
        for (unsigned int axis = 0; axis < 3; ++axis) {
            low[axis] = std::max(box.minPoint()[axis], clip.minPoint()[axis]);
            high[axis] = std::min(box.maxPoint()[axis], clip.maxPoint()[axis]);
        }
        AcDbExtents common;
        (void)common.set(low, high);
        return common;
    }
    void strokePath(const PicturePath& path, double) const override { add(extentsOf(path)); }
    void fillPath(const PicturePath& path) const override { add(extentsOf(path)); }
    void placeDot(const AcGePoint3d& point) const override { add(AcDbExtents(point, point)); }
    void placeEndless(const AcGePoint3d&, const AcGeVector3d&, bool) const override {
        result.isEndless = true;
    }
};

// Kinds with fields know their boxes; others, and what shows blocks, are asked what they draw.
void ExtentsGeometry::part(AcDbEntity& entity) const {
    AcDbExtents box;
    BlockExtents().addEntity(box, entity, toWorld());
    add(box);
}

} // namespace

AcDbExtents extentsOf(const PicturePath& path) {
    AcDbExtents box;
    const AcGePoint3d* point = path.points().data();
    for (const PicturePath::Step step : path.steps()) {
        if (step == PicturePath::Step::close) continue;
        if (step == PicturePath::Step::curve) {
            addCubic(box, point[-1], point);
            point += 3;
        } else {
            box.addPoint(*point++);
        }
    }
    return box;
}

bool letterCorners(const PlacedText& text, AcGePoint3d (&corners)[4]) {
    const bool hasLetters = std::any_of(text.runs.begin(), text.runs.end(), [](const TextRun& run) {
        return run.text.find_first_not_of(L" \t\u00A0") != std::wstring::npos;
    });
    const TextReach reach = reachOf(text);
    if (!hasLetters || !(reach.end > reach.start)) return false;
    corners[0] = text.origin + text.along * reach.start;
    corners[1] = text.origin + text.along * reach.end;
    corners[2] = corners[1] + text.up;
    corners[3] = corners[0] + text.up;
    return true;
}

// --- Asking ------------------------------------------------------------------------------------------------

Adesk::Boolean ShapeGeometry::Draw::regenAbort() const { return partsLeft == 0; }

void ShapeGeometry::ask(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    const Level level;
    if (!level.isAllowed()) return;
    --partsLeft;
    m_draw.m_context.m_database = entity.database();
    m_traits = PlainTraits();
    setLook(m_traits, entity);
    pushModelTransform(matrix);
    // The host's drawables are not const when they draw; a drawing changes none.
    const_cast<AcDbEntity&>(entity).worldDraw(&m_draw);
    popModelTransform();
}

Adesk::Boolean ShapeGeometry::draw(AcGiDrawable* drawable) const {
    const Level level;
    if (!drawable || !level.isAllowed()) return Adesk::kFalse;
    --partsLeft;
    if (AcDbEntity* entity = AcDbEntity::cast(drawable)) {
        const PlainTraits before = m_traits;
        m_traits = PlainTraits();
        if (!(entity->setAttributes(&m_traits) & AcGiDrawable::kDrawableIsInvisible)) part(*entity);
        m_traits = before;
    } else {
        whole(*drawable);
        drawable->worldDraw(&m_draw);
    }
    return m_draw.regenAbort();
}

void ShapeGeometry::part(AcDbEntity& entity) const { askPart(entity); }
void ShapeGeometry::askPart(AcDbEntity& entity) const { entity.worldDraw(&m_draw); }

void ShapeGeometry::placeLetters(const PlacedText& text) const {
    AcGePoint3d corners[4];
    if (!letterCorners(text, corners)) return;
    PicturePath box;
    for (const AcGePoint3d& corner : corners) box.lineTo(corner);
    box.close();
    fillPath(box);
}

// Clips stand upright: what their outline says of z does not count.
void ShapeGeometry::beginClip(const PicturePath& path) const {
    AcDbExtents box = extentsOf(path);
    AcGePoint3d low = box.minPoint(), high = box.maxPoint();
    low.z = -HUGE_VAL;
    high.z = HUGE_VAL;
    if (const AcDbExtents* outer = clip())
        for (unsigned int axis = 0; axis < 2; ++axis) {
            low[axis] = std::max(low[axis], outer->minPoint()[axis]);
            high[axis] = std::min(high[axis], outer->maxPoint()[axis]);
        }
    m_clips.emplace_back(low, high);
}

void ShapeGeometry::endClip() const {
    if (!m_clips.empty()) m_clips.pop_back();
}

DrawnExtents drawnExtents(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    ExtentsGeometry geometry;
    geometry.ask(entity, matrix);
    return geometry.result;
}

} // namespace hostkit
