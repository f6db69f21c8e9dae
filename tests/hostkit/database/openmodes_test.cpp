#include "drawingparts.h"

#include "actrans.h"
#include "db2dpolyline.h"
#include "db2dvertex.h"
#include "dbaccess.h"
#include "dbline.h"
#include "dbpoint.h"

#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <vector>

namespace {

using namespace drawingtest;

std::vector<std::string> cellsOf(const std::string& row) {
    std::vector<std::string> cells;
    std::istringstream stream(row.substr(1));
    for (std::string cell; std::getline(stream, cell, '|');) {
        const auto first = cell.find_first_not_of(' ');
        const auto last = cell.find_last_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    }
    return cells;
}

using Table = std::vector<std::vector<std::string>>;

/// The rows of the documented tables, the heading of each first.
std::vector<Table> documentedTables() {
    std::ifstream file(VEXO_SOURCE_DIR "/docs/open-modes.md");
    std::vector<Table> tables;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("| request |")) tables.emplace_back();
        if (line.starts_with("|") && !line.starts_with("|--")) tables.back().push_back(cellsOf(line));
    }
    return tables;
}

/// A drawing with one line, brought into a state by the table's name for it.
struct Subject {
    AcDbDatabase database;
    AcDbObjectId id;

    explicit Subject(const std::string& state) {
        id = appendToModelSpace(database, new AcDbLine({0, 0, 0}, {1, 0, 0}));
        if (state == "erased") erase(id);
        if (state.starts_with("read"))
            open(AcDb::kForRead, state == "read 2" ? 2 : state == "read 256" ? 256 : 1);
        if (state.starts_with("write")) open(AcDb::kForWrite);
        if (state.find("notify") != std::string::npos) open(AcDb::kForNotify);
        if (state.ends_with("held for read")) get(AcDb::kForRead);
        if (state.ends_with("held for write")) get(AcDb::kForWrite);
        EXPECT_EQ(state, this->state());
    }
    void open(AcDb::OpenMode mode, int times = 1) {
        AcDbObject* object = nullptr;
        while (times-- > 0) EXPECT_EQ(Acad::eOk, acdbOpenAcDbObject(object, id, mode));
    }
    /// In a transaction of its own.
    Acad::ErrorStatus get(AcDb::OpenMode mode, bool openErased = false) {
        AcDbObject* object = nullptr;
        const Acad::ErrorStatus status =
            transactions().startTransaction()->getObject(object, id, mode, openErased);
        EXPECT_EQ(status == Acad::eOk, object != nullptr);
        return status;
    }
    AcDbTransactionManager& transactions() { return *database.transactionManager(); }
    AcDbObject& object() const { return *id.stub()->object; }
    std::string state() const {
        const AcDbStub& stub = *id.stub();
        std::string name;
        if (stub.openMode & hostkit::kOpenForWrite) name = "write";
        if (stub.readers > 0) name = stub.readers == 1 ? "read" : "read " + std::to_string(stub.readers);
        if (stub.openMode & hostkit::kOpenForNotify) name += name.empty() ? "notify" : "+notify";
        for (const auto& [bit, held] : {std::pair{hostkit::kHeldForRead, "held for read"},
                                        std::pair{hostkit::kHeldForWrite, "held for write"}})
            if (stub.openMode & bit) name += std::string(name.empty() ? "" : "+") + held;
        if (name.empty()) name = id.isErased() ? "erased" : "closed";
        return name;
    }
};

using Request = std::function<Acad::ErrorStatus(Subject&)>;

Request opening(AcDb::OpenMode mode, bool openErased) {
    return [=](Subject& subject) {
        AcDbObject* object = nullptr;
        const Acad::ErrorStatus status = acdbOpenAcDbObject(object, subject.id, mode, openErased);
        EXPECT_EQ(status == Acad::eOk, object != nullptr);
        return status;
    };
}

Request getting(AcDb::OpenMode mode, bool openErased) {
    return [=](Subject& subject) { return subject.get(mode, openErased); };
}

const std::map<std::string, Request>& requests() {
    static const std::map<std::string, Request> all = {
        {"open for read", opening(AcDb::kForRead, false)},
        {"open for write", opening(AcDb::kForWrite, false)},
        {"open for notify", opening(AcDb::kForNotify, false)},
        {"open erased for read", opening(AcDb::kForRead, true)},
        {"open erased for write", opening(AcDb::kForWrite, true)},
        {"open as another class",
         [](Subject& subject) {
             AcDbPoint* point = nullptr;
             return acdbOpenObject(point, subject.id, AcDb::kForRead);
         }},
        {"get for read", getting(AcDb::kForRead, false)},
        {"get for write", getting(AcDb::kForWrite, false)},
        {"get for notify", getting(AcDb::kForNotify, false)},
        {"get erased for write", getting(AcDb::kForWrite, true)},
        {"get for write, change, end",
         [](Subject& subject) {
             const Acad::ErrorStatus status = subject.get(AcDb::kForWrite);
             if (status == Acad::eOk) {
                 EXPECT_EQ(Acad::eOk, AcDbLine::cast(&subject.object())->setEndPoint({6, 6, 6}));
             }
             EXPECT_EQ(Acad::eOk, subject.transactions().endTransaction());
             return status;
         }},
        {"end the transaction", [](Subject& subject) { return subject.transactions().endTransaction(); }},
        {"upgradeOpen", [](Subject& subject) { return subject.object().upgradeOpen(); }},
        {"downgradeOpen", [](Subject& subject) { return subject.object().downgradeOpen(); }},
        {"close", [](Subject& subject) { return subject.object().close(); }},
        {"cancel", [](Subject& subject) { return subject.object().cancel(); }},
        {"look", [](Subject& subject) { return subject.object().assertReadEnabled(); }},
        {"change",
         [](Subject& subject) {
             return AcDbLine::cast(&subject.object())->setEndPoint({5, 5, 5});
         }},
        {"erase", [](Subject& subject) { return subject.object().erase(); }}};
    return all;
}

bool asksToWrite(const std::string& request) {
    return request == "upgradeOpen" || request.find("for write") != std::string::npos;
}

/// `mayWrite`: whether somebody holds a lock on the drawing's document. Where nobody does, what a table
/// grants to writers is eLockViolation, and nothing changes.
void checkTable(const Table& table, bool mayWrite) {
    ASSERT_EQ(requests().size() + 1, table.size());
    const std::vector<std::string>& states = table[0];
    for (std::size_t row = 1; row < table.size(); ++row) {
        const auto request = requests().find(table[row][0]);
        ASSERT_NE(requests().end(), request) << table[row][0];
        ASSERT_EQ(states.size(), table[row].size()) << table[row][0];
        for (std::size_t column = 1; column < states.size(); ++column) {
            SCOPED_TRACE(table[row][0] + " when " + states[column]);
            std::string cell = table[row][column];
            if (!mayWrite && cell.starts_with("eOk") && asksToWrite(table[row][0])) cell = "eLockViolation";
            const auto colon = cell.find(": ");
            Subject subject(states[column]);
            hostkit::DatabaseAccess::setMayWrite(subject.database, mayWrite);
            const std::string status = narrow(acadErrorStatusText(request->second(subject)));
            EXPECT_EQ(cell.substr(0, colon), status);
            if (colon != std::string::npos) {
                EXPECT_EQ(cell.substr(colon + 2), subject.state());
            } else {
                EXPECT_EQ(states[column], subject.state());
            }
        }
    }
}

TEST(OpenModes, EveryStateAndRequestIsAsDocumented) {
    const std::vector<Table> tables = documentedTables();
    ASSERT_EQ(2u, tables.size());
    for (const Table& table : tables)
        for (const bool mayWrite : {true, false}) checkTable(table, mayWrite);
}

// The right to write is asked for when something is opened for write or comes in, not again for its parts.
TEST(OpenModes, WhatIsOpenForWriteStaysSoWithoutALock) {
    AcDbDatabase database;
    const AcDbObjectId id = appendToModelSpace(
        database, new AcDb2dPolyline(AcDb::k2dSimplePoly, pointsOf({{0, 0, 0}, {1, 0, 0}}), 0.0, false));
    auto* polyline = opened<AcDb2dPolyline>(id);
    hostkit::DatabaseAccess::setMayWrite(database, false);
    EXPECT_EQ(Acad::eOk, polyline->setColorIndex(3));
    const std::unique_ptr<AcDbObjectIterator> vertices(polyline->vertexIterator());
    const AcDbObjectId vertex = vertices->objectId();
    EXPECT_EQ(3, AcDbEntityPointer(vertex, AcDb::kForRead)->colorIndex());
    EXPECT_EQ(Acad::eOk, polyline->transformBy(AcGeMatrix3d::translation({5, 0, 0})));
    EXPECT_EQ(Acad::eOk, polyline->erase());
    EXPECT_TRUE(vertex.isErased());
    EXPECT_EQ(Acad::eOk, polyline->close());
}

TEST(OpenModes, NothingNewComesInWithoutALock) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId(), AcDb::kForWrite);
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
    auto* polyline = new AcDb2dPolyline;
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(polyline));
    hostkit::DatabaseAccess::setMayWrite(database, false);
    const Adesk::Int32 count = database.approxNumObjects();
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setName(L"Walls");
    auto line = std::make_unique<AcDbLine>();
    auto record = std::make_unique<AcDbXrecord>();
    auto vertex = std::make_unique<AcDb2dVertex>(AcGePoint3d(1, 1, 0));
    AcDbObjectId id;
    EXPECT_EQ(Acad::eLockViolation, layers->add(layer.get()));
    EXPECT_EQ(Acad::eLockViolation, space->appendAcDbEntity(line.get()));
    EXPECT_EQ(Acad::eLockViolation, root->setAt(L"new", record.get(), id));
    EXPECT_EQ(Acad::eLockViolation, polyline->appendVertex(id, vertex.get()));
    EXPECT_EQ(Acad::eLockViolation, polyline->createExtensionDictionary());
    EXPECT_EQ(Acad::eLockViolation, database.addAcDbObject(record.get()));
    EXPECT_EQ(count, database.approxNumObjects());
    EXPECT_EQ(Acad::eOk, polyline->close());
}

TEST(OpenModes, WhatLiesOnALockedLayerIsNotOpenedForWriting) {
    AcDbDatabase database;
    const AcDbObjectId layer = addRecord<AcDbLayerTable>(database, L"Locked");
    const AcDbObjectId lined = appendToModelSpace(database, new AcDbLine);
    auto* polyline = new AcDb2dPolyline;
    const AcDbObjectId vertexed = appendToModelSpace(database, polyline);
    AcDbObjectId vertex;
    change<AcDb2dPolyline>(vertexed, [&](AcDb2dPolyline& open) {
        auto* made = new AcDb2dVertex;
        open.appendVertex(vertex, made);
        made->close();
    });
    for (const AcDbObjectId id : {lined, vertexed})
        change<AcDbEntity>(id, [&](AcDbEntity& entity) { entity.setLayer(layer); });
    const auto statuses = [&](AcDbObjectId id) {
        std::vector<Acad::ErrorStatus> found;
        const AcDbObjectPointer<AcDbObject> reading(id, AcDb::kForRead);
        found.push_back(reading->upgradeOpen());
        if (found.back() == Acad::eOk) reading->downgradeOpen();
        AcTransaction* transaction = database.transactionManager()->startTransaction();
        AcDbObject* object = nullptr;
        found.push_back(transaction->getObject(object, id, AcDb::kForWrite));
        found.push_back(transaction->getObject(object, id, AcDb::kForRead));
        database.transactionManager()->abortTransaction();
        return found;
    };
    using Statuses = std::vector<Acad::ErrorStatus>;
    EXPECT_EQ(statuses(lined), (Statuses{Acad::eOk, Acad::eOk, Acad::eOk}));
    AcDbEntity* open = opened<AcDbEntity>(vertexed);
    change<AcDbLayerTableRecord>(layer, [](AcDbLayerTableRecord& record) { record.setIsLocked(true); });
    EXPECT_EQ(open->setColorIndex(1, true), Acad::eOk) << "what is open stays so, with its parts";
    open->close();
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(vertex, AcDb::kForRead)->colorIndex(), 1);
    for (const AcDbObjectId id : {lined, vertexed}) {
        EXPECT_EQ(statuses(id), (Statuses{Acad::eOnLockedLayer, Acad::eOnLockedLayer, Acad::eOk}));
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite).openStatus(), Acad::eOnLockedLayer);
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id, AcDb::kForNotify).openStatus(), Acad::eOk);
    }
    auto* fresh = new AcDbLine;
    fresh->setLayer(layer);
    appendToModelSpace(database, fresh); // new ones come in
}

TEST(OpenModes, RefusedChangesChangeNothing) {
    Subject subject("read");
    AcDbLine& line = *AcDbLine::cast(&subject.object());
    EXPECT_EQ(Acad::eNotOpenForWrite, line.setEndPoint({9, 9, 9}));
    EXPECT_EQ(Acad::eNotOpenForWrite, line.setColorIndex(3));
    EXPECT_EQ(Acad::eNotOpenForWrite, line.setLinetypeScale(2.0));
    EXPECT_EQ(Acad::eNotOpenForWrite, line.erase());
    EXPECT_EQ(AcGePoint3d(1, 0, 0), line.endPoint());
    EXPECT_TRUE(line.color().isByLayer());
    EXPECT_EQ(1.0, line.linetypeScale());
    EXPECT_FALSE(line.isModified());
}

TEST(OpenModes, ModifiedAndNewLastUntilTheClose) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    EXPECT_FALSE(line->isNewObject());
    AcDbObjectId id;
    ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(id, line));
    EXPECT_TRUE(line->isNewObject());
    EXPECT_TRUE(line->isWriteEnabled());
    line->close();
    auto* again = opened<AcDbLine>(id);
    EXPECT_FALSE(again->isNewObject());
    EXPECT_FALSE(again->isModified());
    EXPECT_EQ(Acad::eOk, again->setStartPoint({1, 1, 1}));
    EXPECT_TRUE(again->isModified());
    EXPECT_EQ(Acad::eOk, again->cancel());
}

TEST(OpenModes, AnyNumberOfOpensUnwindsByIsReallyClosing) {
    for (const char* state : {"read", "read 2", "read 256", "write", "write+notify", "read+notify"}) {
        SCOPED_TRACE(state);
        Subject subject(state);
        for (int closes = 0; !subject.object().isReallyClosing() && closes < 1000; ++closes)
            EXPECT_EQ(Acad::eOk, subject.object().close());
        EXPECT_EQ(Acad::eOk, subject.object().close());
        EXPECT_EQ("closed", subject.state());
        EXPECT_EQ(0, subject.database.numOpenObjects());
    }
}

TEST(OpenModes, IdsWithoutAnObject) {
    AcDbDatabase database;
    AcDbPoint point;
    AcDbObject* object = &point;
    EXPECT_EQ(Acad::eNullObjectId, acdbOpenAcDbObject(object, AcDbObjectId(), AcDb::kForRead));
    EXPECT_EQ(nullptr, object);
    AcDbObjectId reserved;
    ASSERT_EQ(Acad::eOk, database.getAcDbObjectId(reserved, true, AcDbHandle(0xABCDEF)));
    EXPECT_EQ(Acad::ePermanentlyErased, acdbOpenAcDbObject(object, reserved, AcDb::kForWrite, true));
}

TEST(OpenModes, ObjectsOfNoDrawingNeedNoOpening) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    EXPECT_TRUE(line.isReadEnabled() && line.isWriteEnabled() && line.isReallyClosing());
    EXPECT_EQ(Acad::eOk, line.setEndPoint({2, 0, 0}));
    for (const Acad::ErrorStatus status :
         {line.close(), line.cancel(), line.upgradeOpen(), line.downgradeOpen(), line.erase()})
        EXPECT_EQ(Acad::eNotInDatabase, status);
}

TEST(OpenModes, PointersOpenForAScope) {
    AcDbDatabase database;
    {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(database.layerZero(), AcDb::kForWrite);
        ASSERT_EQ(Acad::eOk, layer.openStatus());
        AcDbObjectPointer<AcDbLayerTableRecord> second(database.layerZero(), AcDb::kForRead);
        EXPECT_EQ(Acad::eWasOpenForWrite, second.openStatus());
        EXPECT_EQ(nullptr, second.object());
        AcDbObjectPointer<AcDbLine> wrong(database.layerZero(), AcDb::kForRead);
        EXPECT_EQ(Acad::eNotThatKindOfClass, wrong.openStatus());
        AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForRead);
        ASSERT_EQ(Acad::eOk, table.openStatus());
        EXPECT_TRUE(table->has(L"0"));
        EXPECT_TRUE(layer->isWriteEnabled());
        EXPECT_EQ(2, database.numOpenObjects());
    }
    EXPECT_EQ(0, database.numOpenObjects());
    AcDbObjectPointer<AcDbPoint> fresh;
    EXPECT_EQ(Acad::eNullObjectPointer, fresh.openStatus());
    EXPECT_EQ(Acad::eOk, fresh.create());
    EXPECT_TRUE(fresh->objectId().isNull());
}

} // namespace
