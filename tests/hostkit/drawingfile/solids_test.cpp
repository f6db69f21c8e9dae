// Solids in drawings: their data go through every form, follow changes, and leave with their entity.
#include "drawingaudit.h"
#include "drawingfiles.h"

#include "bodydata.h"
#include "dbaccess.h"
#include "dbcircle.h"
#include "dbobjptr.h"
#include "dbregion.h"
#include "dbsol3d.h"
#include "modelercontent.h"

#include <map>
#include <numbers>

using namespace hostkit;
using namespace drawingtest;

namespace {

constexpr DrawingVersion forms[] = {DrawingVersion::kR14,  DrawingVersion::k2000, DrawingVersion::k2004,
                                    DrawingVersion::k2007, DrawingVersion::k2010, DrawingVersion::k2013,
                                    DrawingVersion::k2018};

/// A spline in place of a plane: data of which nobody here makes a body.
std::string strangeData() {
    std::string data = writeShape(modeler::Shape(), modeler::BodyForm::text, 400);
    return data + "face $-1 $-1 $-1 $-1 $-1 $1 forward single #\nspline-surface $-1 { @5 a # b } #\n";
}

template <class Entity>
Entity* append(AcDbDatabase& database, std::unique_ptr<Entity> entity) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    Entity* const added = entity.release();
    EXPECT_EQ(space->appendAcDbEntity(added), Acad::eOk);
    added->close();
    return added;
}

/// A region, a round solid, and with `strange` a body that is not understood.
std::unique_ptr<AcDbDatabase> solidDrawing(bool withStrange) {
    auto database = std::make_unique<AcDbDatabase>();
    AcDbVoidPtrArray curves, regions;
    AcDbCircle circle({1, 2, 3}, {0, 0, 1}, 2.0);
    curves.append(&circle);
    EXPECT_EQ(AcDbRegion::createFromCurves(curves, regions), Acad::eOk);
    std::unique_ptr<AcDbRegion> region(static_cast<AcDbRegion*>(regions[0]));
    auto solid = std::make_unique<AcDb3dSolid>();
    EXPECT_EQ(solid->extrude(region.get(), 5.0), Acad::eOk);
    append(*database, std::move(region));
    append(*database, std::move(solid));
    if (!withStrange) return database;
    auto strange = std::make_unique<AcDb3dSolid>();
    ModelerFiling::setContent(*strange, std::make_shared<const ModelerContent>(strangeData()));
    append(*database, std::move(strange));
    return database;
}

std::vector<AcDbModelerGeometry*> solidsOf(const AcDbDatabase& database) {
    std::vector<AcDbModelerGeometry*> all;
    DatabaseAccess::forEachObject(database, [&](AcDbObject& object) {
        auto* const solid = AcDbModelerGeometry::cast(&object);
        if (solid && !solid->isErased()) all.push_back(solid);
    });
    return all;
}

/// By handle: the number of faces, the volume of a solid, the area of a region.
using Measures = std::map<std::uint64_t, std::pair<std::size_t, double>>;

Measures measuresOf(const AcDbDatabase& database) {
    Measures all;
    for (const AcDbModelerGeometry* const solid : solidsOf(database)) {
        const ModelerContentPtr& content = ModelerFiling::content(*solid);
        if (!content || !content->shape()) continue;
        all[solid->handle().value()] = {content->shape()->faces.size(), solid->isKindOf(AcDbRegion::desc())
                                                                            ? content->area()
                                                                            : content->volume()};
    }
    return all;
}

void expectSame(const Measures& found, const Measures& wanted, double factor = 1.0) {
    ASSERT_EQ(found.size(), wanted.size());
    for (const auto& [handle, measure] : wanted) {
        ASSERT_TRUE(found.contains(handle));
        EXPECT_EQ(found.at(handle).first, measure.first);
        EXPECT_NEAR(found.at(handle).second, factor * measure.second,
                    1e-9 * std::abs(factor * measure.second));
    }
}

std::unique_ptr<AcDbDatabase> opened(const std::string& bytes) {
    return openDrawingFromMemory(bytes, L"solids", nullptr, quietReading);
}

void moveAll(AcDbDatabase& database, const AcGeMatrix3d& matrix, Acad::ErrorStatus wanted) {
    for (AcDbModelerGeometry* const solid : solidsOf(database)) {
        AcDbObjectPointer<AcDbEntity> entity(solid->objectId(), AcDb::kForWrite);
        ASSERT_EQ(entity->transformBy(matrix), wanted);
    }
}

std::size_t longestLine(const std::string& bytes) {
    std::size_t longest = 0;
    for (std::size_t begin = 0, end = 0; (end = bytes.find("\r\n", begin)) != std::string::npos;
         begin = end + 2)
        longest = std::max(longest, end - begin);
    return longest;
}

/// The newest data that readers of the form take.
int newestIn(DrawingVersion form) {
    switch (form) {
    case DrawingVersion::kR14:
        return 106;
    case DrawingVersion::k2000:
        return 400;
    case DrawingVersion::k2004:
        return 20800;
    case DrawingVersion::k2007:
        return 21200;
    case DrawingVersion::k2010:
        return 21500;
    case DrawingVersion::k2013:
        return 21800;
    default:
        return 22300;
    }
}

TEST(SolidsInDrawings, keepTheirBodiesFromEveryFormToEveryForm) {
    const auto made = solidDrawing(false);
    const Measures wanted = measuresOf(*made);
    ASSERT_EQ(wanted.size(), 2u);
    for (const DrawingVersion first : forms) {
        const auto read = opened(saved(*made, first));
        ASSERT_TRUE(read);
        expectSame(measuresOf(*read), wanted);
        for (const DrawingVersion second : forms) {
            SCOPED_TRACE(std::to_string(int(first)) + " to " + std::to_string(int(second)));
            const std::string bytes = saved(*read, second);
            EXPECT_EQ(countOf(bytes, "ACDSDATA"), second < DrawingVersion::k2013 ? 0u : 1u);
            EXPECT_LE(longestLine(bytes), 255u);
            const auto again = opened(bytes);
            ASSERT_TRUE(again);
            expectSame(measuresOf(*again), wanted);
            EXPECT_EQ(auditDrawing(*again).findings.size(), auditDrawing(*read).findings.size());
        }
    }
}

// Data of any version, as others have them in drawings: rewritten where the form is older than they are.
TEST(SolidsInDrawings, dataAreNeverNewerThanTheirForm) {
    for (const int version : {106, 400, 700, 20800, 21200, 21500}) {
        const auto drawing = solidDrawing(false);
        const Measures wanted = measuresOf(*drawing);
        for (AcDbModelerGeometry* const solid : solidsOf(*drawing))
            ModelerFiling::setContent(
                *solid, std::make_shared<const ModelerContent>(modeler::writeShape(
                            *ModelerFiling::content(*solid)->shape(), modeler::BodyForm::text, version)));
        for (const DrawingVersion form : forms) {
            const auto other = opened(saved(*drawing, form));
            expectSame(measuresOf(*other), wanted);
            for (const AcDbModelerGeometry* const solid : solidsOf(*other))
                EXPECT_LE(ModelerFiling::content(*solid)->version(), newestIn(form)) << version;
        }
    }
}

TEST(SolidsInDrawings, whatIsNotUnderstoodIsKeptMovedAndLeftOutWhereItHasNoPlace) {
    const auto made = solidDrawing(true);
    for (const DrawingVersion form : {DrawingVersion::k2000, DrawingVersion::k2018}) {
        auto read = opened(saved(*made, form));
        ASSERT_TRUE(read);
        const AcDbModelerGeometry* const strange = solidsOf(*read).back();
        EXPECT_EQ(strange->bodyFault(), L"the body has no faces");
        const std::string data = ModelerFiling::content(*strange)->data();
        EXPECT_NE(data.find("{ @5 a # b }"), std::string::npos);
        AcGeMatrix3d larger;
        larger.setToScaling(2.0);
        AcDbObjectPointer<AcDbEntity> entity(strange->objectId(), AcDb::kForWrite);
        EXPECT_EQ(entity->transformBy(larger), Acad::eNotApplicable);
        EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation({1, 2, 3})), Acad::eOk);
        entity->close();
        EXPECT_NE(ModelerFiling::content(*solidsOf(*opened(saved(*read))).back())
                      ->data()
                      .find("transform $-1 1 0 0 0 1 0 0 0 1 1 2 3 1"),
                  std::string::npos);
    }
    // A binary one has no place before 2013.
    std::string data = modeler::writeShape(*ModelerFiling::content(*solidsOf(*made).front())->shape(),
                                           modeler::BodyForm::binary, 21800);
    data.replace(data.find("plane"), 5, "blend");
    AcDbDatabase drawing;
    auto strange = std::make_unique<AcDb3dSolid>();
    ModelerFiling::setContent(*strange, std::make_shared<const ModelerContent>(data));
    append(drawing, std::move(strange));
    const auto read = opened(saved(drawing, DrawingVersion::k2018));
    EXPECT_EQ(ModelerFiling::content(*solidsOf(*read).back())->data(), data);
    WriteOptions older = quietWriting;
    older.version = DrawingVersion::k2004;
    WriteReport report;
    EXPECT_TRUE(solidsOf(*opened(saved(*read, older, &report))).empty());
    ASSERT_FALSE(report.changes.all().empty());
    EXPECT_EQ(report.changes.all().front().kind, L"3DSOLID");
    EXPECT_TRUE(report.changes.all().front().isLeftOut());
}

TEST(SolidsInDrawings, theStoreFollowsMovedCopiedAndErasedOnes) {
    const auto made = solidDrawing(false);
    auto read = opened(saved(*made, DrawingVersion::k2013));
    const std::string bytes = saved(*read);
    EXPECT_EQ(bytes, saved(*made, DrawingVersion::k2013));
    const auto recordsIn = [](const std::string& text) { return countOf(text, "\r\n320\r\n"); };
    EXPECT_EQ(recordsIn(bytes), 2u);
    const Measures wanted = measuresOf(*read);
    AcGeMatrix3d twice;
    twice.setToScaling(2.0, {1, 1, 1});
    moveAll(*read, twice, Acad::eOk);
    const auto moved = measuresOf(*opened(saved(*read)));
    auto solid = moved.begin(), before = wanted.begin();
    EXPECT_NEAR(solid->second.second, 4 * before->second.second, 1e-9) << "area";
    EXPECT_NEAR((++solid)->second.second, 8 * (++before)->second.second, 1e-9) << "volume";
    append(*read, std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(solidsOf(*read).back()->clone())));
    EXPECT_EQ(recordsIn(saved(*read)), 3u);
    for (AcDbModelerGeometry* const each : solidsOf(*read)) {
        AcDbObjectPointer<AcDbEntity> entity(each->objectId(), AcDb::kForWrite);
        EXPECT_EQ(entity->erase(), Acad::eOk);
    }
    const std::string without = saved(*read);
    EXPECT_EQ(recordsIn(without), 0u);
    EXPECT_TRUE(opened(without));
}

// A line of data is cut after 255 characters; the blank behind a caret counts and comes off again.
TEST(SolidsInDrawings, longLinesAndCaretsComeBack) {
    AcDbDatabase database;
    auto solid = std::make_unique<AcDb3dSolid>();
    std::string data = strangeData();
    data += "name-attrib $-1 @600 " + std::string(300, 'A') + std::string(300, 'x') + " #\n";
    ModelerFiling::setContent(*solid, std::make_shared<const ModelerContent>(data));
    append(database, std::move(solid));
    const std::string bytes = saved(database, DrawingVersion::k2000);
    EXPECT_EQ(countOf(bytes, "\r\n  3\r\n^ ^ "), 2u);
    for (std::size_t begin = 0, end = 0; (end = bytes.find("\r\n", begin)) != std::string::npos;
         begin = end + 2)
        EXPECT_LE(end - begin, 255u);
    EXPECT_EQ(ModelerFiling::content(*solidsOf(*opened(bytes)).back())->data(), data);
    // A binary drawing has no blanks there.
    WriteOptions binary = quietWriting;
    binary.version = DrawingVersion::k2000;
    binary.coding = DrawingCoding::kBinary;
    const std::string coded = saved(database, binary);
    EXPECT_EQ(countOf(coded, "^ ^"), 0u);
    EXPECT_EQ(ModelerFiling::content(*solidsOf(*opened(coded)).back())->data(), data);
}

class SolidsOfOthers : public DrawingsOfOthers {};

TEST_F(SolidsOfOthers, areTheSameInEveryFormAndWhenTheyAreMoved) {
    std::size_t count = 0;
    forEach([&](AcDbDatabase& database) {
        for (const AcDbModelerGeometry* const solid : solidsOf(database)) EXPECT_EQ(solid->bodyFault(), L"");
        const Measures wanted = measuresOf(database);
        if (wanted.empty()) return;
        count += wanted.size();
        for (const auto& [handle, measure] : wanted)
            if (handle == 0xD65 || handle == 0xD6A) {
                EXPECT_NEAR(measure.second, handle == 0xD65 ? 125 : 47.5393, 1e-4);
            }
        for (const DrawingVersion form : forms)
            expectSame(measuresOf(*opened(saved(database, form))), wanted);
        moveAll(database, AcGeMatrix3d::rotation(1.0, {1, 2, 3}, {4, 5, 6}), Acad::eOk);
        expectSame(measuresOf(*opened(saved(database))), wanted);
    });
    EXPECT_GT(count, 0u);
}

} // namespace
