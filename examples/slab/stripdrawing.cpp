#include "stripdrawing.h"

#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "dblayertablerecord.h"
#include "dbmtext.h"
#include "dbobjptr.h"
#include "dbtext.h"
#include "numberplace.h"
#include "reporttext.h"
#include "stripfiling.h"
#include "vexodatabasetools.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr Adesk::UInt16 stripColor = 30; // orange, which formwork plans leave free
// Of a number in a strip: it fits the strip, and those of one slab look alike where there is room.
constexpr double heightInCircle = 0.9; // the number's box fits the free circle with that share of it
constexpr double heightInSlab = 0.02;  // of the root of the largest slab's area

Acad::ErrorStatus stripLayer(AcDbDatabase& database, const std::wstring& name, AcDbObjectId& id) {
    const AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
    if (!table.object()) return table.openStatus();
    if (table->getAt(name.c_str(), id) == Acad::eOk) return Acad::eOk;
    auto* record = new AcDbLayerTableRecord;
    AcCmColor color;
    color.setColorIndex(stripColor);
    record->setColor(color);
    Acad::ErrorStatus status = record->setName(name.c_str());
    if (status == Acad::eOk) status = table->add(id, record);
    if (status != Acad::eOk) {
        delete record;
        return status;
    }
    return record->close();
}

Acad::ErrorStatus eraseAll(const std::vector<AcDbObjectId>& ids) {
    Acad::ErrorStatus status = Acad::eOk;
    for (const AcDbObjectId id : ids) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus erased = entity.object() ? entity->erase() : entity.openStatus();
        if (status == Acad::eOk) status = erased;
    }
    return status;
}

// Puts entities into model space one by one; erases them again unless all of them came in.
class Drawing {
public:
    Drawing(AcDbDatabase& database, AcDbObjectId layer)
        : m_database(database)
        , m_layer(layer) {}
    ~Drawing() {
        if (!m_isKept) eraseAll(m_added);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// With the mark of a strip; a number drawn in one has no area.
    Acad::ErrorStatus add(std::unique_ptr<AcDbEntity> entity, int number, const double* area,
                          AcDbObjectId& id) {
        entity->setDatabaseDefaults(&m_database);
        entity->setColorIndex(256);
        Acad::ErrorStatus status = entity->setLayer(m_layer);
        if (status != Acad::eOk) return status;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(m_database.modelSpaceId(), AcDb::kForWrite);
        if (!space.object()) return space.openStatus();
        status = space->appendAcDbEntity(id, entity.get());
        if (status != Acad::eOk) return status;
        m_added.push_back(id);
        AcDbEntity* added = entity.release();
        const bool isMarked = markStrip(*added, number, area);
        status = added->close();
        return isMarked ? status : Acad::eInvalidInput;
    }
    const std::vector<AcDbObjectId>& added() const { return m_added; }
    void keep() { m_isKept = true; }

private:
    AcDbDatabase& m_database;
    AcDbObjectId m_layer;
    std::vector<AcDbObjectId> m_added;
    bool m_isKept = false;
};

// Read from below or from the right.
double readableAngle(double angle) {
    constexpr double quarter = std::numbers::pi / 2.0;
    if (angle > quarter) return angle - 2.0 * quarter;
    return angle <= -quarter ? angle + 2.0 * quarter : angle;
}

/// The boxes of all texts of model space but those that the run replaces.
std::vector<TakenBox> textsOf(const AcDbDatabase& database, const std::vector<AcDbObjectId>& replaced) {
    std::vector<TakenBox> boxes;
    AcDbObjectIdArray ids;
    VEXODatabaseTools::getFromModelSpace(ids, &const_cast<AcDbDatabase&>(database));
    for (const AcDbObjectId id : ids) {
        if (std::find(replaced.begin(), replaced.end(), id) != replaced.end()) continue;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        AcDbExtents box;
        const bool isText =
            entity.object() && (AcDbText::cast(entity.object()) || AcDbMText::cast(entity.object()));
        if (!isText || entity->getGeomExtents(box) != Acad::eOk) continue;
        boxes.push_back({{box.minPoint().x, box.minPoint().y}, {box.maxPoint().x, box.maxPoint().y}});
    }
    return boxes;
}

/// Its box stands in the strip's largest free circle: within the strip whatever way it is turned, and over no
/// text. Null where there is no room.
std::unique_ptr<AcDbEntity> numberOf(const AcDbDatabase& database, const SlabResult& slab, const Strip& strip,
                                     int number, const StripLook& look, double largestHeight,
                                     const std::vector<TakenBox>& texts) {
    const FreeCircle circle = largestFreeCircle(*strip.outline, texts);
    if (!(circle.radius > 0.0)) return nullptr;
    const AcGePoint3d place(circle.center.x, circle.center.y, slab.slab->contour->elevation);
    auto text =
        std::make_unique<AcDbText>(place, std::to_wstring(number).c_str(), database.textStyleStandard());
    text->setHorizontalMode(AcDb::kTextCenter);
    text->setVerticalMode(AcDb::kTextVertMid);
    text->setAlignmentPoint(place);
    text->setHeight(1.0);
    AcDbExtents box;
    const bool isMeasured = text->getGeomExtents(box) == Acad::eOk;
    const double width = isMeasured ? box.maxPoint().x - box.minPoint().x
                                    : static_cast<double>(std::to_wstring(number).size());
    text->setHeight(std::min(heightInCircle * 2.0 * circle.radius / std::hypot(1.0, width), largestHeight));
    text->setRotation(readableAngle(look.angle));
    return text;
}

Acad::ErrorStatus drawStrip(Drawing& drawing, const AcDbDatabase& database, const SlabResult& slab,
                            const Strip& strip, const StripLook& look, double largestHeight,
                            const std::vector<TakenBox>& texts, MadeStrip& made) {
    std::unique_ptr<AcDbPolyline> outline = copyOf(*strip.outline);
    outline->setElevation(slab.slab->contour->elevation);
    Acad::ErrorStatus status = drawing.add(std::move(outline), made.number, &strip.area, made.outline);
    if (status != Acad::eOk) return status;
    made.handle = handleText(made.outline.handle());
    if (!look.hasNumbers) return Acad::eOk;
    auto text = numberOf(database, slab, strip, made.number, look, largestHeight, texts);
    return text ? drawing.add(std::move(text), made.number, nullptr, made.label) : Acad::eOk;
}

} // namespace

Acad::ErrorStatus drawStrips(AcDbDatabase& database, StripRun& run, const StripLook& look) {
    AcDbObjectId layer;
    Acad::ErrorStatus status = stripLayer(database, look.layer, layer);
    if (status != Acad::eOk) return status;
    const std::vector<AcDbObjectId> replaced = filedStrips(database, look.layer);
    Drawing drawing(database, layer);
    double largestArea = 0.0;
    for (const SlabResult& slab : run.slabs) largestArea = std::max(largestArea, slab.cut.slabArea);
    const double largestHeight = std::sqrt(largestArea) * heightInSlab;
    std::vector<TakenBox> texts;
    if (look.hasNumbers) texts = textsOf(database, replaced);
    int number = 0;
    for (SlabResult& slab : run.slabs)
        for (const Strip& strip : slab.cut.strips) {
            MadeStrip made;
            made.number = ++number;
            status = drawStrip(drawing, database, slab, strip, look, largestHeight, texts, made);
            if (status != Acad::eOk) return status;
            slab.made.push_back(made);
        }
    status = fileStrips(database, look.layer, drawing.added());
    if (status != Acad::eOk) return status;
    drawing.keep();
    return eraseAll(replaced);
}
