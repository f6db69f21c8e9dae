// Filers in memory, whole records in the binary form, and classes of applications that file more than their
// parent.

#include "beam.h"
#include "drawingparts.h"

#include "dbdeepclonefiler.h"
#include "dbopaque.h"
#include "memorydwgfiler.h"
#include "memorydxffiler.h"

#include <cmath>

namespace {

using namespace drawingtest;
using hostkit::MemoryDwgFiler;

TEST(MemoryFilers, EveryItemComesBackInItsOrder) {
    using Filer = MemoryDwgFiler;
    Filer filer(AcDb::kCopyFiler);
    AcDbDatabase database;
    char bytes[] = {0, 1, 2, 3};
    // Writes all items, and then reads them.
    for (const bool reads : {false, true}) {
        const auto item = [&](auto write, auto read, auto value) {
            auto found = value;
            if (reads) found = decltype(value)();
            EXPECT_EQ(reads ? (filer.*read)(&found) : (filer.*write)(value), Acad::eOk);
            EXPECT_TRUE(found == value);
        };
        const auto text = [&](const wchar_t* value) {
            wchar_t* found = nullptr;
            EXPECT_EQ(reads ? filer.readString(&found) : filer.writeString(value), Acad::eOk);
            if (reads) {
                EXPECT_STREQ(found, value ? value : L"");
            }
            acutDelString(found);
        };
        item(&Filer::writeInt16, &Filer::readInt16, Adesk::Int16{-32768});
        item(&Filer::writeInt32, &Filer::readInt32, Adesk::Int32{-2147483647});
        item(&Filer::writeInt64, &Filer::readInt64, Adesk::Int64{-9223372036854775807});
        item(&Filer::writeBool, &Filer::readBool, true);
        item(&Filer::writeDouble, &Filer::readDouble, 0.1);
        text(L"Ausführung 第一 \U0001F600");
        text(nullptr);
        item(&Filer::writePoint2d, &Filer::readPoint2d, AcGePoint2d(1, 2));
        item(&Filer::writePoint3d, &Filer::readPoint3d, AcGePoint3d(1, 2, 3));
        item(&Filer::writeVector2d, &Filer::readVector2d, AcGeVector2d(4, 5));
        item(&Filer::writeVector3d, &Filer::readVector3d, AcGeVector3d(4, 5, 6));
        item(&Filer::writeScale3d, &Filer::readScale3d, AcGeScale3d(7, 8, 9));
        EXPECT_EQ(reads ? filer.readBytes(bytes, 4) : filer.writeBytes(bytes, 4), Acad::eOk);
        item(&Filer::writeSoftPointerId, &Filer::readSoftPointerId, database.layerZero());
        item(&Filer::writeHardPointerId, &Filer::readHardPointerId, AcDbObjectId());
        item(&Filer::writeSoftOwnershipId, &Filer::readSoftOwnershipId, database.modelSpaceId());
        item(&Filer::writeHardOwnershipId, &Filer::readHardOwnershipId, database.layerTableId());
        double zero = reads ? 1.0 : -0.0;
        EXPECT_EQ(reads ? filer.readDouble(&zero) : filer.writeDouble(zero), Acad::eOk);
        EXPECT_TRUE(zero == 0.0 && std::signbit(zero));
        EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size()));
        EXPECT_EQ(std::string(bytes, 4), std::string("\0\1\2\3", 4));
        std::fill(std::begin(bytes), std::end(bytes), 'x');
        ASSERT_EQ(filer.seek(0, 0), Acad::eOk);
    }
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

TEST(MemoryFilers, TextGroupsComeBackAsTheyWereWritten) {
    hostkit::MemoryDxfFiler filer;
    const double point[] = {1, 2, 3};
    const auto write = [&] {
        filer.writeSubclassMark(L"First");
        filer.writeInt16(70, -5);
        filer.writeInt32(90, -2147483647);
        filer.writePoint(10, point, 2);
        filer.writePoint(10, point, 3);
        filer.writeSubclassMark(L"Second");
        filer.writeAngle(50, 0.1);
        filer.writeString(1, L"Ausführung \U0001F600");
    };
    write();
    for (int round = 0; round < 2; ++round, filer.rewind()) {
        AcDbDxfGroup group;
        const auto next = [&] { return filer.readItem(group) == Acad::eOk ? int{group.code} : -1; };
        EXPECT_EQ(next(), -1) << "a mark stands before it";
        ASSERT_TRUE(filer.atSubclassData(L"First"));
        EXPECT_TRUE(next() == 70 && group.integer == -5);
        filer.pushBackItem();
        EXPECT_TRUE(next() == 70 && group.integer == -5);
        EXPECT_TRUE(next() == 90 && group.integer == -2147483647);
        EXPECT_TRUE(next() == 10 && group.dimension == 2 && group.point[1] == 2 && group.point[2] == 0);
        EXPECT_FALSE(filer.atEndOfObject());
        EXPECT_TRUE(next() == 10 && group.dimension == 3 && group.point[2] == 3);
        EXPECT_TRUE(filer.atEndOfObject());
        EXPECT_EQ(filer.readItem(group), Acad::eEndOfObject);
        EXPECT_FALSE(filer.atSubclassData(L"Third"));
        ASSERT_TRUE(filer.atSubclassData(L"Second"));
        EXPECT_TRUE(next() == 50 && filer.angleOf(group) == 0.1);
        resbuf* const record = acutNewRb(0);
        EXPECT_EQ(filer.readResBuf(record), Acad::eOk);
        EXPECT_STREQ(record->resval.rstring, L"Ausführung \U0001F600");
        acutRelRb(record);
        EXPECT_EQ(next(), -1);
        EXPECT_EQ(filer.filerStatus(), Acad::eOk) << "an end is no failure";
    }
}

class BinaryRecordsInADrawing : public testing::Test {
protected:
    BinaryRecordsInADrawing() {
        application = addRecord<AcDbRegAppTable>(database, L"ORDANE");
        line = opened<AcDbLine>(appendToModelSpace(database, new AcDbLine({1, 2, 3}, {4, 5, 6})));
    }
    ~BinaryRecordsInADrawing() override { line->close(); }

    AcDbDatabase database;
    AcDbObjectId application;
    AcDbLine* line;
};

TEST(BinaryRecords, AnApplicationsClassFilesItsItemsBehindItsParents) {
    const BeamApplication application;
    Beam beam;
    beam.setStartPoint(AcGePoint3d(1, 2, 3));
    beam.setLoad(12);
    AcDbDeepCloneFiler filer;
    ASSERT_EQ(beam.dwgOutFields(&filer), Acad::eOk);
    EXPECT_EQ(beam.textCalls, 0) << "the parent files its own groups, not those of the class below it";
    filer.seek(0, 0);
    Beam copy;
    ASSERT_EQ(copy.dwgInFields(&filer), Acad::eOk);
    EXPECT_TRUE(copy.startPoint() == AcGePoint3d(1, 2, 3));
    EXPECT_EQ(copy.load(), 12);
    filer.seek(0, 0);
    AcDbLine line;
    EXPECT_EQ(line.dwgInFields(&filer), Acad::eOk) << "a parent reads its part and stops";
    double load = 0;
    EXPECT_TRUE(filer.readDouble(&load) == Acad::eOk && load == 12);
}

TEST_F(BinaryRecordsInADrawing, NoRecordIsReadUnderANameThatAnotherHas) {
    const AcDbObjectId walls = addRecord<AcDbLayerTable>(database, L"Walls");
    const AcDbObjectId slabs = addRecord<AcDbLayerTable>(database, L"Slabs");
    const AcDbSymbolTablePointer<AcDbLayerTable> layers(&database, AcDb::kForRead);
    MemoryDwgFiler filer(AcDb::kUndoFiler);
    change<AcDbLayerTableRecord>(walls,
                                 [&](auto& layer) { EXPECT_EQ(layer.dwgOutFields(&filer), Acad::eOk); });
    for (const bool isFree : {false, true}) {
        if (isFree) {
            EXPECT_EQ(erase(walls), Acad::eOk);
        }
        filer.seek(0, 0);
        change<AcDbLayerTableRecord>(slabs, [&](auto& layer) {
            EXPECT_EQ(layer.dwgInFields(&filer), isFree ? Acad::eOk : Acad::eDuplicateKey);
        });
        EXPECT_EQ(layers->find(L"walls"), isFree ? slabs : walls);
        EXPECT_EQ(layers->find(L"slabs"), isFree ? AcDbObjectId() : slabs);
    }
}

TEST_F(BinaryRecordsInADrawing, AWholeRecordFilesItsTiesAndItsExtendedData) {
    const double corner[] = {7, 8, 9};
    const List data(
        acutBuildList(1001, L"ORDANE", 1000, L"k", 1071, -5, 1010, corner, 1005, L"1F", 1040, 0.1, 0));
    ASSERT_EQ(line->setXData(data.get()), Acad::eOk);
    line->addPersistentReactor(database.layerTableId());
    ASSERT_EQ(line->createExtensionDictionary(), Acad::eOk);
    const AcDbObjectId dictionary = line->extensionDictionary();
    MemoryDwgFiler filer(AcDb::kUndoFiler);
    ASSERT_EQ(line->dwgOut(&filer), Acad::eOk);

    // The application has another name by the time the record is read.
    change<AcDbRegAppTableRecord>(application, [](auto& record) { record.setName(L"RENAMED"); });
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
    EXPECT_EQ(textOf(List(line->xData())), "1001 RENAMED, 1000 k, 1071 -5, 1010 7/8/9, 1005 1F, 1040 0.1");

    AcDbLine free;
    filer.seek(0, 0);
    ASSERT_EQ(free.dwgIn(&filer), Acad::eOk);
    EXPECT_TRUE(free.ownerId().isNull() && free.persistentReactors().isEmpty()) << "a copy belongs nowhere";
    EXPECT_TRUE(free.hasXData());
}

TEST_F(BinaryRecordsInADrawing, RecordsOfTablesAreFoundByTheNameTheyRead) {
    change<AcDbLayerTableRecord>(addRecord<AcDbLayerTable>(database, L"old"), [](auto& layer) {
        MemoryDwgFiler filer(AcDb::kUndoFiler);
        EXPECT_EQ(layer.dwgOut(&filer), Acad::eOk);
        EXPECT_EQ(layer.setName(L"new"), Acad::eOk);
        filer.seek(0, 0);
        EXPECT_EQ(layer.dwgIn(&filer), Acad::eOk);
    });
    const AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForRead);
    EXPECT_TRUE(table->has(L"old"));
    EXPECT_FALSE(table->has(L"new"));
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
