// Filers in memory, whole records in the binary form, and classes of applications that file more than their
// parent.

#include "dbdeepclonefiler.h"
#include "dbline.h"
#include "dbmain.h"
#include "dbobjptr.h"
#include "dbopaque.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "memorydwgfiler.h"

#include "acarray.h"
#include "adsdef.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>

namespace {

using hostkit::MemoryDwgFiler;

struct ListDeleter {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
using List = std::unique_ptr<resbuf, ListDeleter>;

TEST(MemoryFilers, EveryItemComesBackInItsOrder) {
    MemoryDwgFiler filer(AcDb::kCopyFiler);
    const std::wstring text = L"Ausführung 第一 \U0001F600";
    const char bytes[] = {0, 1, 2, 3};
    AcDbDatabase database;
    const AcDbObjectId ids[] = {database.layerZero(), AcDbObjectId(), database.modelSpaceId(),
                                database.layerTableId()};
    filer.writeInt16(-32768);
    filer.writeInt32(-2147483647);
    filer.writeInt64(-9223372036854775807);
    filer.writeBool(true);
    filer.writeDouble(-0.0);
    filer.writeString(text.c_str());
    filer.writeString(nullptr);
    filer.writePoint2d(AcGePoint2d(1, 2));
    filer.writePoint3d(AcGePoint3d(1, 2, 3));
    filer.writeVector2d(AcGeVector2d(4, 5));
    filer.writeVector3d(AcGeVector3d(4, 5, 6));
    filer.writeScale3d(AcGeScale3d(7, 8, 9));
    filer.writeBytes(bytes, sizeof bytes);
    filer.writeSoftPointerId(ids[0]);
    filer.writeHardPointerId(ids[1]);
    filer.writeSoftOwnershipId(ids[2]);
    ASSERT_EQ(filer.writeHardOwnershipId(ids[3]), Acad::eOk);
    ASSERT_EQ(filer.seek(0, 0), Acad::eOk);

    Adesk::Int16 int16 = 0;
    Adesk::Int32 int32 = 0;
    Adesk::Int64 int64 = 0;
    bool truth = false;
    double real = 1;
    wchar_t* found = nullptr;
    EXPECT_TRUE(filer.readInt16(&int16) == Acad::eOk && int16 == -32768);
    EXPECT_TRUE(filer.readInt32(&int32) == Acad::eOk && int32 == -2147483647);
    EXPECT_TRUE(filer.readInt64(&int64) == Acad::eOk && int64 == -9223372036854775807);
    EXPECT_TRUE(filer.readBool(&truth) == Acad::eOk && truth);
    EXPECT_TRUE(filer.readDouble(&real) == Acad::eOk && std::signbit(real));
    for (const std::wstring& expected : {text, std::wstring()}) {
        ASSERT_EQ(filer.readString(&found), Acad::eOk);
        EXPECT_EQ(found, expected);
        acutDelString(found);
    }
    AcGePoint2d point2d;
    AcGePoint3d point3d;
    AcGeVector2d vector2d;
    AcGeVector3d vector3d;
    AcGeScale3d scale;
    char chunk[sizeof bytes] = {};
    EXPECT_TRUE(filer.readPoint2d(&point2d) == Acad::eOk && point2d == AcGePoint2d(1, 2));
    EXPECT_TRUE(filer.readPoint3d(&point3d) == Acad::eOk && point3d == AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(filer.readVector2d(&vector2d) == Acad::eOk && vector2d == AcGeVector2d(4, 5));
    EXPECT_TRUE(filer.readVector3d(&vector3d) == Acad::eOk && vector3d == AcGeVector3d(4, 5, 6));
    EXPECT_TRUE(filer.readScale3d(&scale) == Acad::eOk && scale.sy == 8);
    EXPECT_TRUE(filer.readBytes(chunk, sizeof chunk) == Acad::eOk && chunk[3] == 3);
    AcDbObjectId id;
    EXPECT_TRUE(filer.readSoftPointerId(&id) == Acad::eOk && id == ids[0]);
    EXPECT_TRUE(filer.readHardPointerId(&id) == Acad::eOk && id == ids[1]);
    EXPECT_TRUE(filer.readSoftOwnershipId(&id) == Acad::eOk && id == ids[2]);
    EXPECT_TRUE(filer.readHardOwnershipId(&id) == Acad::eOk && id == ids[3]);
    EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size()));
}

TEST(MemoryFilers, WhatWasNotWrittenIsNotRead) {
    MemoryDwgFiler filer(AcDb::kCopyFiler);
    filer.writeInt32(7);
    const Adesk::Int64 second = filer.tell();
    filer.writeBytes("abc", 3);
    const Adesk::Int64 end = filer.tell();
    for (const auto& [offset, method] :
         {std::pair<Adesk::Int64, int>{-1, 0}, {end + 1, 0}, {1, 2}, {-end - 1, 2}, {0, 3}})
        EXPECT_EQ(filer.seek(offset, method), Acad::eInvalidInput) << offset << " by " << method;
    EXPECT_EQ(filer.tell(), end);

    double real = 5;
    Adesk::Int32 number = 5;
    char bytes[4] = {'x'};
    wchar_t* text = nullptr;
    const auto refuses = [&](Adesk::Int64 place, auto&& read) {
        EXPECT_EQ(filer.seek(place, 0), Acad::eOk);
        EXPECT_EQ(read(), Acad::eDwgObjectImproperlyRead);
        EXPECT_EQ(filer.readInt32(&number), Acad::eDwgObjectImproperlyRead) << "the first failure stays";
        filer.resetFilerStatus();
    };
    refuses(0, [&] { return filer.readDouble(&real); });
    refuses(0, [&] { return filer.readString(&text); });
    refuses(0, [&] { return filer.readInt32(nullptr); });
    refuses(second, [&] { return filer.readBytes(bytes, 4); });
    refuses(second, [&] { return filer.readBytes(bytes, 2); });
    refuses(second + 2, [&] { return filer.readBytes(bytes, 3); });
    refuses(end, [&] { return filer.readInt32(&number); });
    EXPECT_TRUE(real == 5 && number == 5 && bytes[0] == 'x' && !text);

    EXPECT_EQ(filer.seek(-end - 1, 1), Acad::eInvalidInput);
    EXPECT_EQ(filer.seek(-3, 2), Acad::eOk);
    EXPECT_EQ(filer.seek(second, 0), Acad::eOk);
    filer.writeBool(true);
    EXPECT_LT(filer.size(), static_cast<std::size_t>(end)) << "what stood from there on is dropped";
}

// A class as an application makes it: its own items behind those of its parent.
class Beam : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Beam)
public:
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        const Acad::ErrorStatus status = AcDbLine::dwgOutFields(filer);
        return status == Acad::eOk ? filer->writeInt32(bars) : status;
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        const Acad::ErrorStatus status = AcDbLine::dwgInFields(filer);
        return status == Acad::eOk ? filer->readInt32(&bars) : status;
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        ++textCalls;
        return AcDbLine::dxfOutFields(filer);
    }
    Adesk::Int32 bars = 0;
    mutable int textCalls = 0;
};

} // namespace

ACRX_CONS_DEFINE_MEMBERS(Beam, AcDbLine, 1)

namespace {

TEST(BinaryRecords, AnApplicationsClassFilesItsItemsBehindItsParents) {
    Beam::rxInit();
    {
        Beam beam;
        beam.setStartPoint(AcGePoint3d(1, 2, 3));
        beam.bars = 12;
        AcDbDeepCloneFiler filer;
        ASSERT_EQ(beam.dwgOutFields(&filer), Acad::eOk);
        EXPECT_EQ(beam.textCalls, 0) << "the parent files its own groups, not those of the class below it";
        filer.seek(0, 0);
        Beam copy;
        ASSERT_EQ(copy.dwgInFields(&filer), Acad::eOk);
        EXPECT_TRUE(copy.startPoint() == AcGePoint3d(1, 2, 3));
        EXPECT_EQ(copy.bars, 12);
        filer.seek(0, 0);
        AcDbLine line;
        EXPECT_EQ(line.dwgInFields(&filer), Acad::eOk) << "a parent reads its part and stops";
        Adesk::Int32 bars = 0;
        EXPECT_TRUE(filer.readInt32(&bars) == Acad::eOk && bars == 12);
    }
    Beam::rxExit();
}

class BinaryRecordsInADrawing : public testing::Test {
protected:
    BinaryRecordsInADrawing() {
        AcDbSymbolTablePointer<AcDbRegAppTable> table(&database, AcDb::kForWrite);
        auto* const record = new AcDbRegAppTableRecord;
        record->setName(L"ORDANE");
        table->add(application, record);
        record->close();
        AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        line = new AcDbLine(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 5, 6));
        space->appendAcDbEntity(line);
    }
    ~BinaryRecordsInADrawing() override { line->close(); }

    AcDbDatabase database;
    AcDbObjectId application;
    AcDbLine* line;
};

TEST_F(BinaryRecordsInADrawing, AWholeRecordFilesItsTiesAndItsExtendedData) {
    const double corner[] = {7, 8, 9};
    const List data(
        acutBuildList(1001, L"ORDANE", 1000, L"k", 1071, -5, 1010, corner, 1005, L"1F", 1040, 0.1, 0));
    ASSERT_EQ(line->setXData(data.get()), Acad::eOk);
    line->addPersistentReactor(database.layerTableId());
    ASSERT_EQ(line->createExtensionDictionary(), Acad::eOk);
    const AcDbObjectId dictionary = line->extensionDictionary();
    const hostkit::GroupBlock before = *line->extendedData();
    MemoryDwgFiler filer(AcDb::kUndoFiler);
    ASSERT_EQ(line->dwgOut(&filer), Acad::eOk);

    // The application has another name by the time the record is read.
    {
        AcDbObjectPointer<AcDbRegAppTableRecord> record(application, AcDb::kForWrite);
        ASSERT_EQ(record->setName(L"RENAMED"), Acad::eOk);
    }
    line->setEndPoint(AcGePoint3d(0, 0, 0));
    line->setColorIndex(3);
    line->removePersistentReactor(database.layerTableId());
    filer.seek(0, 0);
    ASSERT_EQ(line->dwgIn(&filer), Acad::eOk);
    EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size()));
    EXPECT_TRUE(line->endPoint() == AcGePoint3d(4, 5, 6));
    EXPECT_TRUE(line->color().isByLayer());
    EXPECT_TRUE(line->hasPersistentReactor(database.layerTableId()));
    EXPECT_EQ(line->extensionDictionary(), dictionary);
    const List found(line->xData());
    EXPECT_STREQ(found->resval.rstring, L"RENAMED");
    hostkit::GroupBlock now;
    now.appendList(found->rbnext);
    hostkit::GroupBlock values;
    values.appendList(data->rbnext);
    EXPECT_TRUE(now == values);

    AcDbLine free;
    filer.seek(0, 0);
    ASSERT_EQ(free.dwgIn(&filer), Acad::eOk);
    EXPECT_TRUE(free.ownerId().isNull() && free.persistentReactors().isEmpty()) << "a copy belongs nowhere";
    EXPECT_TRUE(free.hasXData());
}

TEST_F(BinaryRecordsInADrawing, RecordsOfTablesAreFoundByTheNameTheyRead) {
    AcDbObjectId id;
    {
        AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
        auto* const layer = new AcDbLayerTableRecord;
        layer->setName(L"old");
        ASSERT_EQ(table->add(id, layer), Acad::eOk);
        MemoryDwgFiler filer(AcDb::kUndoFiler);
        EXPECT_EQ(layer->dwgOut(&filer), Acad::eOk);
        EXPECT_EQ(layer->setName(L"new"), Acad::eOk);
        filer.seek(0, 0);
        EXPECT_EQ(layer->dwgIn(&filer), Acad::eOk);
        layer->close();
        EXPECT_TRUE(table->has(L"old"));
        EXPECT_FALSE(table->has(L"new"));
    }
}

TEST_F(BinaryRecordsInADrawing, RefusalsChangeNothing) {
    MemoryDwgFiler filer(AcDb::kCopyFiler);
    EXPECT_EQ(line->dwgOutFields(nullptr), Acad::eNullObjectPointer);
    EXPECT_EQ(line->dwgInFields(nullptr), Acad::eNullObjectPointer);
    ASSERT_EQ(line->dwgOutFields(&filer), Acad::eOk);
    filer.seek(0, 0);
    line->downgradeOpen();
    EXPECT_EQ(line->dwgInFields(&filer), Acad::eNotOpenForWrite);
    EXPECT_EQ(filer.tell(), 0);
    line->upgradeOpen();
    AcDbXrecord other;
    EXPECT_EQ(other.dwgInFields(&filer), Acad::eOk) << "the groups of another class are passed over";
    EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size()));
    filer.seek(1, 0);
    EXPECT_EQ(line->dwgInFields(&filer), Acad::eDwgObjectImproperlyRead);
    EXPECT_TRUE(line->endPoint() == AcGePoint3d(4, 5, 6));

    AcDbOpaqueEntity opaque(L"PROXY");
    MemoryDwgFiler copying(AcDb::kDeepCloneFiler);
    MemoryDwgFiler undoing(AcDb::kUndoFiler);
    EXPECT_EQ(opaque.dwgOutFields(&copying), Acad::eNotApplicable);
    EXPECT_EQ(copying.size(), 0u);
    EXPECT_EQ(opaque.dwgOutFields(&undoing), Acad::eOk);
}

} // namespace
