#include "classadoption.h"
#include "drawingfiles.h"
#include "drawingparts.h"

#include "dbline.h"
#include "dbopaque.h"
#include "undohistory.h"

using namespace hostkit;
using namespace drawingtest;

namespace {

// An entity as an application makes it: a depth, filed behind a mark of its own.
class Pile : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Pile)
public:
    double depth = 0.0;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override {
        Acad::ErrorStatus status = AcDbLine::dxfInFields(filer);
        if (status != Acad::eOk || !filer->atSubclassData(L"Pile")) return status;
        for (AcDbDxfGroup group; (status = filer->readItem(group)) == Acad::eOk;) {
            if (group.code == 40)
                depth = group.real;
            else
                filer->rejectItem();
        }
        if (depth < 0.0) return Acad::eInvalidInput;
        return status == Acad::eEndOfObject ? Acad::eOk : status;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        const Acad::ErrorStatus status = AcDbLine::dxfOutFields(filer);
        filer->writeSubclassMark(L"Pile");
        filer->writeItem(40, depth);
        return status;
    }
};
ACRX_DXF_DEFINE_MEMBERS(Pile, AcDbLine, 0, 0, 0, VEXOPILE, PILES)

struct PileModule {
    PileModule() { Pile::rxInit(); }
    ~PileModule() { Pile::rxExit(); }
};

void addPile(AcDbDatabase& database, double depth) {
    auto* pile = new Pile;
    pile->depth = depth;
    pile->setEndPoint(AcGePoint3d(depth, 1, 0));
    appendToModelSpace(database, pile);
}

std::vector<AcDbObjectId> entitiesOf(const AcDbDatabase& database) {
    return AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId(), AcDb::kForRead)->entities();
}
bool isPile(AcDbObjectId id, double depth) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    const Pile* pile = Pile::desc() ? Pile::cast(entity.object()) : nullptr;
    return pile && pile->depth == depth && pile->endPoint().x == depth;
}
bool isOpaque(AcDbObjectId id) {
    return AcDbOpaqueEntity::cast(AcDbObjectPointer<AcDbEntity>(id, AcDb::kForRead).object());
}

// What stands between the class' marks and the next section.
std::size_t classRecords(const std::string& bytes) {
    return countOf(bytes, "CLASS\r\n  1\r\nVEXOPILE\r\n  2\r\nPile\r\n  3\r\nPILES\r\n");
}

} // namespace

TEST(ApplicationClasses, aDrawingKeepsTheirObjectsWithAndWithoutTheirModule) {
    for (const DrawingVersion version :
         {DrawingVersion::k2000, DrawingVersion::k2004, DrawingVersion::k2018}) {
        SCOPED_TRACE(nameOfVersion(version));
        std::string bytes;
        {
            const PileModule module;
            AcDbDatabase database;
            addPile(database, 3.0);
            addPile(database, 4.0);
            bytes = saved(database, version);
            EXPECT_EQ(classRecords(bytes), 1u);
            const auto again = openDrawingFromMemory(bytes, L"again", nullptr, quietReading);
            ASSERT_TRUE(again);
            EXPECT_TRUE(isPile(entitiesOf(*again)[0], 3.0) && isPile(entitiesOf(*again)[1], 4.0));
            addPile(*again, 5.0);
            EXPECT_EQ(classRecords(saved(*again)), 1u) << "the record is there already";
        }
        const auto without = openDrawingFromMemory(bytes, L"without", nullptr, quietReading);
        ASSERT_TRUE(without);
        EXPECT_TRUE(isOpaque(entitiesOf(*without)[0]));
        EXPECT_TRUE(saved(*without) == bytes);
        change<AcDbEntity>(entitiesOf(*without)[1], [](AcDbEntity& entity) { entity.setColorIndex(1); });
        const std::string recolored = saved(*without);
        const PileModule module;
        const auto with = openDrawingFromMemory(recolored, L"with", nullptr, quietReading);
        ASSERT_TRUE(with);
        EXPECT_TRUE(isPile(entitiesOf(*with)[1], 4.0)) << "changed by one that knows it not, it is whole";
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(entitiesOf(*with)[1], AcDb::kForRead)->colorIndex(), 1);
    }
}

TEST(ApplicationClasses, aClassComesIntoADrawingThatHasNoRecordOfIt) {
    const PileModule module;
    const auto database = openDrawingFromMemory(
        header("AC1015") + section("CLASSES", groups({{0, "CLASS"}, {1, "OTHER"}, {2, "Other"}, {3, "x"}})) +
            entities(line()),
        L"lines", nullptr, quietReading);
    ASSERT_TRUE(database);
    EXPECT_EQ(classRecords(saved(*database)), 0u);
    addPile(*database, 2.0);
    const std::string bytes = saved(*database);
    EXPECT_EQ(classRecords(bytes), 1u);
    EXPECT_EQ(countOf(bytes, "OTHER\r\n"), 1u);
    EXPECT_EQ(countOf(bytes, "CLASSES\r\n"), 1u);
    const auto bare =
        openDrawingFromMemory(header("AC1015") + entities(line()), L"bare", nullptr, quietReading);
    addPile(*bare, 2.0);
    const std::string made = saved(*bare);
    EXPECT_EQ(classRecords(made), 1u);
    EXPECT_LT(made.find("CLASSES"), made.find("ENTITIES"));
}

// What undo remembers of an object is of the class that it had.
TEST(ApplicationClasses, whatUndoRemembersStaysOpaque) {
    std::string bytes;
    {
        const PileModule module;
        AcDbDatabase database;
        addPile(database, 1.0);
        addPile(database, 2.0);
        bytes = saved(database);
    }
    const auto database = openDrawingFromMemory(bytes, L"piles", nullptr, quietReading);
    ASSERT_TRUE(database);
    database->disableUndoRecording(false);
    const std::vector<AcDbObjectId> ids = entitiesOf(*database);
    beginUndoGroup(*database, L"Colour");
    change<AcDbEntity>(ids[1], [](AcDbEntity& entity) { entity.setColorIndex(1); });
    endUndoGroup(*database);
    UndoReport report;
    EXPECT_EQ(undoLastGroup(*database, report), Acad::eOk);
    const PileModule module;
    EXPECT_EQ(adoptApplicationClasses(*database), 1u);
    EXPECT_TRUE(isPile(ids[0], 1.0) && isOpaque(ids[1]));
    EXPECT_EQ(redoLastGroup(*database, report), Acad::eOk);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids[1], AcDb::kForRead)->colorIndex(), 1);
}

TEST(ApplicationClasses, whatWasReadBeforeItsModuleCameIsTakenOver) {
    std::string bytes;
    {
        const PileModule module;
        AcDbDatabase database;
        for (const double depth : {1.0, 2.0, 3.0, -1.0, 4.0}) addPile(database, depth);
        const AcDbObjectId layer = addRecord<AcDbLayerTable>(database, L"Deep");
        change<AcDbEntity>(entitiesOf(database)[0], [&](AcDbEntity& pile) {
            pile.setLayer(layer);
            pile.createExtensionDictionary();
            pile.addPersistentReactor(layer);
        });
        bytes = saved(database);
    }
    const auto database = openDrawingFromMemory(bytes, L"piles", nullptr, quietReading);
    ASSERT_TRUE(database);
    EXPECT_EQ(adoptApplicationClasses(*database), 0u);
    const std::vector<AcDbObjectId> ids = entitiesOf(*database);
    change<AcDbEntity>(ids[1], [](AcDbEntity& entity) { entity.setColorIndex(1); });
    AcDbEntity* open = opened<AcDbEntity>(ids[2], AcDb::kForRead);
    const PileModule module;
    EXPECT_EQ(adoptApplicationClasses(*database), 2u);
    EXPECT_TRUE(isPile(ids[0], 1.0) && isPile(ids[4], 4.0));
    EXPECT_TRUE(isOpaque(ids[1])) << "it was changed";
    EXPECT_TRUE(isOpaque(ids[3])) << "its class does not take it";
    open->close();
    EXPECT_EQ(adoptApplicationClasses(*database), 1u);
    EXPECT_TRUE(isPile(ids[2], 3.0));
    const AcDbObjectPointer<AcDbEntity> first(ids[0], AcDb::kForRead);
    EXPECT_FALSE(first->extensionDictionary().isNull());
    EXPECT_TRUE(first->hasPersistentReactor(first->layerId()));
    EXPECT_EQ(first->ownerId(), database->modelSpaceId());
    change<AcDbEntity>(ids[1], [](AcDbEntity& entity) { entity.setColorIndex(256); });
    EXPECT_EQ(saved(*database), bytes) << "nothing of it was changed";
}
