#include "sketchcommands.h"

#include "sketchstore.h"

#include "aced.h"
#include "cvxlogentry.h"
#include "dbarc.h"
#include "dbcircle.h"
#include "dbelipse.h"
#include "dbhatch.h"
#include "dbline.h"
#include "dbpl.h"
#include "dbspline.h"
#include "gemat3d.h"
#include "modulecommand.h"
#include "vexodatabasetools.h"
#include "vexoselectiontools.h"
#include "vexosmartopen.h"

namespace {

bool readName(CString& name) { return acedGetString(0, L"Sketch: ", name) == RTNORM; }

bool isFiled(const AcDbEntity& entity) {
    for (const AcRxClass* const kind :
         {AcDbLine::desc(), AcDbArc::desc(), AcDbPolyline::desc(), AcDbCircle::desc(), AcDbEllipse::desc(),
          AcDbSpline::desc(), AcDbHatch::desc()})
        if (entity.isA() == kind) return true;
    return false;
}

/// Copies of the entities that a sketch can file; `ids` keeps these.
ExampleSketch::Entities copiesOf(AcDbObjectIdArray& ids) {
    ExampleSketch::Entities copies;
    AcDbObjectIdArray copied;
    for (const AcDbObjectId id : ids) {
        const VEXOSmartOpen<AcDbEntity> entity(id, AcDb::kForWrite, false);
        if (entity.status() != Acad::eOk || !isFiled(*entity)) continue;
        std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity->clone()));
        if (!copy) continue;
        copies.push_back(std::move(copy));
        copied.append(id);
    }
    ids = copied;
    return copies;
}

bool erase(AcDbObjectId id) {
    const VEXOSmartOpen<AcDbObject> object(id, AcDb::kForWrite, false);
    return object.status() == Acad::eOk && object->erase() == Acad::eOk;
}

/// Into model space; of its look a sketch's entity has the colour alone.
bool put(const AcDbEntity& entity) {
    std::unique_ptr<AcDbEntity> copy(AcDbEntity::cast(entity.clone()));
    if (!copy) return false;
    copy->setDatabaseDefaults();
    (void)copy->setColorIndex(entity.colorIndex());
    AcDbObjectId id;
    if (VEXODatabaseTools::appendEntity(copy.get(), L"*Model_Space", id, nullptr) != 1) return false;
    copy.release()->close(); // the drawing's from here on
    return true;
}

void print(const NamedSketch& sketch) {
    const VEXOSmartOpen<ExampleSketch> open(sketch.id, AcDb::kForRead, false);
    if (open.status() != Acad::eOk) return;
    acutPrintf(L"%s: %d entities\n", static_cast<const wchar_t*>(sketch.name),
               static_cast<int>(open->entities().size()));
    for (const std::unique_ptr<AcDbEntity>& each : open->entities()) {
        AcDbExtents box;
        acutPrintf(L"  %-13s colour %-4d", each->isA()->name(), each->colorIndex());
        if (each->getGeomExtents(box) == Acad::eOk)
            acutPrintf(L" %g,%g to %g,%g", box.minPoint().x, box.minPoint().y, box.maxPoint().x,
                       box.maxPoint().y);
        acutPrintf(L"\n");
    }
}

} // namespace

void sketchTakeCommand() {
    CVxLogEntry entry(L"SKETCHES::sketchTakeCommand");
    CString name;
    if (!readName(name)) return;
    AcDbObjectIdArray ids;
    VEXOSelectionTools::selectEntity(L"Entities: ", nullptr, VEXOSelectionTools::eSelectAny, ids, nullptr,
                                     true);
    const int selected = ids.length();
    ExampleSketch::Entities copies = copiesOf(ids);
    if (copies.empty())
        return hostkit::failCommand(Acad::eInvalidInput, L"nothing was selected that a sketch can hold");
    const AcDbObjectId id = findOrMakeSketch(name);
    if (id.isNull()) return;
    const VEXOSmartOpen<ExampleSketch> sketch(id, AcDb::kForWrite, false);
    const Acad::ErrorStatus status =
        sketch.status() == Acad::eOk ? sketch->append(std::move(copies)) : sketch.status();
    if (status != Acad::eOk) return hostkit::failCommand(status, L"the sketch cannot be changed");
    for (const AcDbObjectId each : ids) erase(each);
    acutPrintf(L"%d entities taken", ids.length());
    if (selected > ids.length()) acutPrintf(L", %d of other kinds stay", selected - ids.length());
    acutPrintf(L"\n");
}

void sketchListCommand() {
    CVxLogEntry entry(L"SKETCHES::sketchListCommand");
    const std::vector<NamedSketch> sketches = allSketches();
    for (const NamedSketch& each : sketches) print(each);
    acutPrintf(L"%d sketches\n", static_cast<int>(sketches.size()));
}

void sketchMoveCommand() {
    CVxLogEntry entry(L"SKETCHES::sketchMoveCommand");
    CString name;
    ads_point from, to;
    if (!readName(name) || acedGetPoint(nullptr, L"From: ", from) != RTNORM ||
        acedGetPoint(from, L"To: ", to) != RTNORM)
        return;
    const AcDbObjectId id = findSketch(name);
    if (id.isNull()) return;
    AcGeMatrix3d motion;
    motion.setToTranslation(AcGeVector3d(to[0] - from[0], to[1] - from[1], to[2] - from[2]));
    const VEXOSmartOpen<ExampleSketch> sketch(id, AcDb::kForWrite, false);
    const Acad::ErrorStatus status =
        sketch.status() == Acad::eOk ? sketch->transformBy(motion) : sketch.status();
    if (status != Acad::eOk) hostkit::failCommand(status, L"the sketch cannot be moved");
}

void sketchPutCommand() {
    CVxLogEntry entry(L"SKETCHES::sketchPutCommand");
    CString name;
    if (!readName(name)) return;
    const AcDbObjectId id = findSketch(name);
    if (id.isNull()) return;
    int count = 0;
    {
        const VEXOSmartOpen<ExampleSketch> sketch(id, AcDb::kForRead, false);
        if (sketch.status() != Acad::eOk)
            return hostkit::failCommand(sketch.status(), L"the sketch cannot be opened");
        for (const std::unique_ptr<AcDbEntity>& each : sketch->entities()) {
            if (!put(*each))
                return hostkit::failCommand(Acad::eInvalidInput, L"an entity has no place in the drawing");
            ++count;
        }
    }
    if (!erase(id)) return hostkit::failCommand(Acad::eCannotBeErasedByCaller, L"the sketch stays");
    acutPrintf(L"%d entities put into model space\n", count);
}
